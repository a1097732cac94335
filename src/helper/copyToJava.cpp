// Information records, versions, dates and arrays from native into existing Java objects.
#include "helper/copyToJava.h"

#include <algorithm>
#include <span>

#include "helper/convToJava.h"
#include "helper/elements.h"
#include "helper/jutil.h"
#include "helper/records.h"

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/copyToJava $\" \"$Revision: 1.1.1.2 $\"";

// One field of an information record. False with an exception pending. The few references of a record live as
// long as the call.
bool writeField(JNIEnv* env, jclass cls, jobject target, const RecordField& field, const CK_BYTE* record)
{
    const CK_BYTE* const member = record + field.offset;
    switch (field.kind) {
    case RecordFieldKind::Number:
        return SetLongField(env, cls, target, field.name, numberAt(member));
    case RecordFieldKind::Text: {
        const jbyteArray text = ckCharArrayToJByteArray(env, member, field.width);
        return text != nullptr && SetObjectField(env, cls, target, field.name, "[B", text);
    }
    case RecordFieldKind::Version: {
        const jobject version = ckVersionPtrToJVersion(env, reinterpret_cast<const CK_VERSION*>(member));
        return version != nullptr &&
               SetObjectField(env, cls, target, field.name, "Lhalvorn/zerlin/CK_VERSION;", version);
    }
    case RecordFieldKind::State: {
        const jclass stateClass = FindClass(env, "halvorn/zerlin/constants/CK_STATE");
        const jobject state =
            GetObjectField(env, cls, target, field.name, "Lhalvorn/zerlin/constants/CK_STATE;");
        if (state == nullptr) return !env->ExceptionCheck();
        return setLongValue(env, stateClass, state, numberAt(member));
    }
    }
    return true;
}

// False with an exception pending.
bool writeRecord(
    JNIEnv* env, const void* record, jobject target, Literal path, std::span<const RecordField> fields)
{
    const jclass cls = FindClass(env, path);
    if (cls == nullptr) return false;
    if (record == nullptr || target == nullptr || !env->IsInstanceOf(target, cls)) return true;
    return std::ranges::all_of(fields, [&](const RecordField& field) {
        return writeField(env, cls, target, field, static_cast<const CK_BYTE*>(record));
    });
}

// The array's elements up to count, each handed to write, which answers whether to go on. The class of the
// array vouches for theirs. False with an exception pending.
template <jsize STEP, typename Write>
bool writeObjects(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target, Literal arrayPath,
    jclass elementClass, Write write)
{
    const jclass arrayClass = FindClass(env, arrayPath);
    if (arrayClass == nullptr || elementClass == nullptr) return false;
    if (source == nullptr || target == nullptr || !env->IsInstanceOf(target, arrayClass)) return true;
    return forEachElement<STEP>(env, target, elementsToCopy(env, target, count),
        [&](jsize i, jobject element) { return write(element, source[i]); });
}

// Calls setValue on every mechanism type of the array.
bool writeMechanismTypes(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE");
    return writeObjects<4>(env, source, count, target, "[Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;", cls,
        [env, cls](jobject element, CK_ULONG value) {
            return element == nullptr || setLongValue(env, cls, element, value);
        });
}

} // namespace

bool CopyCKInfoToJInfo(JNIEnv* env, const CK_INFO* source, jobject target)
{
    return writeRecord(env, source, target, "halvorn/zerlin/CK_INFO", INFO_FIELDS);
}

bool CopyCKSlotInfoToJSlotInfo(JNIEnv* env, const CK_SLOT_INFO* source, jobject target)
{
    return writeRecord(env, source, target, "halvorn/zerlin/CK_SLOT_INFO", SLOT_INFO_FIELDS);
}

bool CopyCKTokenInfoToJTokenInfo(JNIEnv* env, const CK_TOKEN_INFO* source, jobject target)
{
    return writeRecord(env, source, target, "halvorn/zerlin/CK_TOKEN_INFO", TOKEN_INFO_FIELDS);
}

bool CopyCKSessionInfoToJSessionInfo(JNIEnv* env, const CK_SESSION_INFO* source, jobject target)
{
    if (FindClass(env, "halvorn/zerlin/CK_SESSION_INFO") == nullptr) return false;
    if (FindClass(env, "halvorn/zerlin/constants/CK_STATE") == nullptr) return false;
    return writeRecord(env, source, target, "halvorn/zerlin/CK_SESSION_INFO", SESSION_INFO_FIELDS);
}

bool CopyCKMechanismInfoToJMechanismInfo(JNIEnv* env, const CK_MECHANISM_INFO* source, jobject target)
{
    return writeRecord(env, source, target, "halvorn/zerlin/CK_MECHANISM_INFO", MECHANISM_INFO_FIELDS);
}

void CopyCKVersionToJVersion(JNIEnv* env, const CK_VERSION* source, jobject target)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_VERSION");
    if (cls == nullptr || source == nullptr || target == nullptr) return;
    if (!env->IsInstanceOf(target, cls)) return;
    if (!SetByteField(env, cls, target, "major", static_cast<jbyte>(source->major))) return;
    SetByteField(env, cls, target, "minor", static_cast<jbyte>(source->minor));
}

void CopyCKDateToJDate(JNIEnv* env, const CK_DATE* source, CK_ULONG, jobject target)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_DATE");
    if (cls == nullptr || source == nullptr || target == nullptr) return;
    if (!env->IsInstanceOf(target, cls)) return;
    struct Piece {
        Literal name;
        const CK_CHAR* digits;
        CK_ULONG width;
    };
    const Piece pieces[] = {
        {"year", source->year, sizeof source->year},
        {"month", source->year, sizeof source->month}, // from the year's first two characters: wanted
        {"day", source->day, sizeof source->day},
    };
    for (const Piece& piece : pieces) {
        const LocalRef<jbyteArray> digits(env, GetByteArrayField(env, cls, target, piece.name));
        if (env->ExceptionCheck()) return;
        CopyCKByteArrayToJByteArray(env, piece.digits, piece.width, digits);
        if (env->ExceptionCheck()) return;
    }
}

bool CopyCKByteArrayToJByteArray(JNIEnv* env, const CK_BYTE* source, CK_ULONG count, jbyteArray target)
{
    if (source == nullptr || target == nullptr) return true;
    const jsize elements = elementsToCopy(env, target, count);
    env->SetByteArrayRegion(target, 0, elements, reinterpret_cast<const jbyte*>(source));
    return true; // within the array nothing is raised
}

bool CopyCKULongArrayToJLongArray(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jlongArray target)
{
    if (source == nullptr || target == nullptr) return true;
    writeElements(env, target, elementsToCopy(env, target, count), source);
    return true;
}

bool CopyCKULongArrayToJObjectHandleArray(
    JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_OBJECT_HANDLE");
    return writeObjects<14>(env, source, count, target, "[Lhalvorn/zerlin/CK_OBJECT_HANDLE;", cls,
        [env, cls](
            jobject element, CK_ULONG value) { return SetLongField(env, cls, element, "m_value", value); });
}

bool CopyCKULongArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target)
{
    return writeMechanismTypes(env, source, count, target);
}

bool CopyCKMechanismTypeArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_MECHANISM_TYPE* source, CK_ULONG count, jobjectArray target)
{
    return writeMechanismTypes(env, source, count, target);
}

bool setLongValue(JNIEnv* env, jclass cls, jobject object, CK_ULONG value)
{
    const jmethodID setValue = GetMethodID(env, cls, "setValue", "(J)V");
    if (setValue == nullptr) return false;
    if (object == nullptr) return true;
    env->CallVoidMethod(object, setValue, static_cast<jlong>(value));
    return !env->ExceptionCheck();
}

} // namespace zerlin
