// Information records, versions, dates and arrays from native into existing Java objects.
#include "helper/copyToJava.h"

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
        if (state != nullptr) setLongValue(env, stateClass, state, numberAt(member));
        return !env->ExceptionCheck();
    }
    }
    return true;
}

void writeRecord(
    JNIEnv* env, const void* record, jobject target, Literal path, std::span<const RecordField> fields)
{
    const jclass cls = FindClass(env, path);
    if (cls == nullptr || record == nullptr || target == nullptr) return;
    if (!env->IsInstanceOf(target, cls)) return;
    for (const RecordField& field : fields) {
        if (!writeField(env, cls, target, field, static_cast<const CK_BYTE*>(record))) return;
    }
}

// The array's elements up to count, each handed to write, which answers whether to go on. The class of the
// array vouches for theirs.
template <jsize STEP, typename Write>
void writeObjects(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target, Literal arrayPath,
    jclass elementClass, Write write)
{
    const jclass arrayClass = FindClass(env, arrayPath);
    if (arrayClass == nullptr || elementClass == nullptr || source == nullptr || target == nullptr) return;
    if (!env->IsInstanceOf(target, arrayClass)) return;
    forEachElement<STEP>(env, target, elementsToCopy(env, target, count),
        [&](jsize i, jobject element) { return write(element, source[i]); });
}

// Calls setValue on every mechanism type of the array.
void writeMechanismTypes(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE");
    writeObjects<4>(env, source, count, target, "[Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;", cls,
        [env, cls](jobject element, CK_ULONG value) {
            setLongValue(env, cls, element, value);
            return !env->ExceptionCheck();
        });
}

} // namespace

void CopyCKInfoToJInfo(JNIEnv* env, const CK_INFO* source, jobject target)
{
    writeRecord(env, source, target, "halvorn/zerlin/CK_INFO", INFO_FIELDS);
}

void CopyCKSlotInfoToJSlotInfo(JNIEnv* env, const CK_SLOT_INFO* source, jobject target)
{
    writeRecord(env, source, target, "halvorn/zerlin/CK_SLOT_INFO", SLOT_INFO_FIELDS);
}

void CopyCKTokenInfoToJTokenInfo(JNIEnv* env, const CK_TOKEN_INFO* source, jobject target)
{
    writeRecord(env, source, target, "halvorn/zerlin/CK_TOKEN_INFO", TOKEN_INFO_FIELDS);
}

void CopyCKSessionInfoToJSessionInfo(JNIEnv* env, const CK_SESSION_INFO* source, jobject target)
{
    if (FindClass(env, "halvorn/zerlin/CK_SESSION_INFO") == nullptr) return;
    if (FindClass(env, "halvorn/zerlin/constants/CK_STATE") == nullptr) return;
    writeRecord(env, source, target, "halvorn/zerlin/CK_SESSION_INFO", SESSION_INFO_FIELDS);
}

void CopyCKMechanismInfoToJMechanismInfo(JNIEnv* env, const CK_MECHANISM_INFO* source, jobject target)
{
    writeRecord(env, source, target, "halvorn/zerlin/CK_MECHANISM_INFO", MECHANISM_INFO_FIELDS);
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

void CopyCKByteArrayToJByteArray(JNIEnv* env, const CK_BYTE* source, CK_ULONG count, jbyteArray target)
{
    if (source == nullptr || target == nullptr) return;
    const jsize elements = elementsToCopy(env, target, count);
    env->SetByteArrayRegion(target, 0, elements, reinterpret_cast<const jbyte*>(source));
}

void CopyCKULongArrayToJLongArray(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jlongArray target)
{
    if (source == nullptr || target == nullptr) return;
    writeElements(env, target, elementsToCopy(env, target, count), source);
}

void CopyCKULongArrayToJObjectHandleArray(
    JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_OBJECT_HANDLE");
    writeObjects<14>(env, source, count, target, "[Lhalvorn/zerlin/CK_OBJECT_HANDLE;", cls,
        [env, cls](
            jobject element, CK_ULONG value) { return SetLongField(env, cls, element, "m_value", value); });
}

void CopyCKULongArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target)
{
    writeMechanismTypes(env, source, count, target);
}

void CopyCKMechanismTypeArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_MECHANISM_TYPE* source, CK_ULONG count, jobjectArray target)
{
    writeMechanismTypes(env, source, count, target);
}

void setLongValue(JNIEnv* env, jclass cls, jobject object, CK_ULONG value)
{
    const jmethodID setValue = GetMethodID(env, cls, "setValue", "(J)V");
    if (setValue == nullptr || object == nullptr) return;
    env->CallVoidMethod(object, setValue, static_cast<jlong>(value));
}

} // namespace zerlin
