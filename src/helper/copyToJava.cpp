// Information records, versions, dates and arrays from native into existing Java objects.
#include "helper/copyToJava.h"

#include <algorithm>
#include <span>

#include "helper/convToJava.h"
#include "helper/elements.h"
#include "helper/javaNames.h"
#include "helper/records.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

// One field of an information record. False with an exception pending. The few references of a record live as
// long as the call.
bool writeField(JNIEnv* env, jobject target, const RecordField& row, const CK_BYTE* record)
{
    const CK_BYTE* const member = record + row.offset;
    switch (row.kind) {
    case RecordFieldKind::Number:
        return SetLongField(env, target, row.field, numberAt(member));
    case RecordFieldKind::Text: {
        const jbyteArray text = ckCharArrayToJByteArray(env, member, row.width);
        return text != nullptr && SetObjectField(env, target, row.field, text);
    }
    case RecordFieldKind::Version: {
        const jobject version = ckVersionPtrToJVersion(env, reinterpret_cast<const CK_VERSION*>(member));
        return version != nullptr && SetObjectField(env, target, row.field, version);
    }
    case RecordFieldKind::State: {
        const jobject state = GetObjectField(env, target, row.field);
        if (state == nullptr) return !env->ExceptionCheck();
        return setLongValue(env, state, java::STATE.setValue, numberAt(member));
    }
    }
    return true;
}

// False with an exception pending.
bool writeRecord(JNIEnv* env, const void* record, jobject target, JavaClass& recordClass,
    std::span<const RecordField> rows)
{
    const jclass cls = FindClass(env, recordClass);
    if (cls == nullptr) return false;
    if (record == nullptr || target == nullptr || !env->IsInstanceOf(target, cls)) return true;
    return std::ranges::all_of(rows, [&](const RecordField& row) {
        return writeField(env, target, row, static_cast<const CK_BYTE*>(record));
    });
}

// The array's elements up to count, each handed to write, which returns whether to continue. The class of the
// array guarantees theirs. False with an exception pending.
template <jsize ELEMENTS_PER_FRAME, typename Write>
bool writeObjects(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target,
    JavaClass& elementClass, JavaClass& arrayClass, Write write)
{
    if (FindClass(env, elementClass) == nullptr || FindClass(env, arrayClass) == nullptr) return false;
    if (source == nullptr || target == nullptr || !IsInstanceOf(env, target, arrayClass)) return true;
    return forEachElement<ELEMENTS_PER_FRAME>(env, target, elementsToCopy(env, target, count),
        [&](jsize i, jobject element) { return write(element, source[i]); });
}

// Calls setValue on every mechanism type of the array.
bool writeMechanismTypes(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target)
{
    return writeObjects<4>(env, source, count, target, java::MECHANISM_TYPE.cls, java::MECHANISM_TYPE_ARRAY,
        [env](jobject element, CK_ULONG value) {
            return element == nullptr || setLongValue(env, element, java::MECHANISM_TYPE.setValue, value);
        });
}

} // namespace

bool CopyCKInfoToJInfo(JNIEnv* env, const CK_INFO* source, jobject target)
{
    return writeRecord(env, source, target, java::INFO.cls, INFO_FIELDS);
}

bool CopyCKSlotInfoToJSlotInfo(JNIEnv* env, const CK_SLOT_INFO* source, jobject target)
{
    return writeRecord(env, source, target, java::SLOT_INFO.cls, SLOT_INFO_FIELDS);
}

bool CopyCKTokenInfoToJTokenInfo(JNIEnv* env, const CK_TOKEN_INFO* source, jobject target)
{
    return writeRecord(env, source, target, java::TOKEN_INFO.cls, TOKEN_INFO_FIELDS);
}

bool CopyCKSessionInfoToJSessionInfo(JNIEnv* env, const CK_SESSION_INFO* source, jobject target)
{
    if (FindClass(env, java::SESSION_INFO.cls) == nullptr) return false;
    if (FindClass(env, java::STATE.cls) == nullptr) return false;
    return writeRecord(env, source, target, java::SESSION_INFO.cls, SESSION_INFO_FIELDS);
}

bool CopyCKMechanismInfoToJMechanismInfo(JNIEnv* env, const CK_MECHANISM_INFO* source, jobject target)
{
    return writeRecord(env, source, target, java::MECHANISM_INFO.cls, MECHANISM_INFO_FIELDS);
}

void CopyCKVersionToJVersion(JNIEnv* env, const CK_VERSION* source, jobject target)
{
    const jclass cls = FindClass(env, java::VERSION.cls);
    if (cls == nullptr || source == nullptr || target == nullptr) return;
    if (!env->IsInstanceOf(target, cls)) return;
    if (!SetByteField(env, target, java::VERSION.major, static_cast<jbyte>(source->major))) return;
    SetByteField(env, target, java::VERSION.minor, static_cast<jbyte>(source->minor));
}

void CopyCKDateToJDate(JNIEnv* env, const CK_DATE* source, CK_ULONG, jobject target)
{
    const jclass cls = FindClass(env, java::DATE.cls);
    if (cls == nullptr || source == nullptr || target == nullptr) return;
    if (!env->IsInstanceOf(target, cls)) return;
    const auto* const date = reinterpret_cast<const CK_BYTE*>(source);
    for (const DatePiece& piece : DATE_PIECES) {
        const LocalRef<jbyteArray> digits(env, GetByteArrayField(env, target, piece.field));
        if (digits == nullptr && env->ExceptionCheck()) return;
        CopyCKByteArrayToJByteArray(env, date + piece.copiedOffset, piece.width, digits);
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
    return writeObjects<14>(env, source, count, target, java::OBJECT_HANDLE.cls, java::OBJECT_HANDLE_ARRAY,
        [env](jobject element, CK_ULONG value) {
            return SetLongField(env, element, java::OBJECT_HANDLE.m_value, value);
        });
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

bool setLongValue(JNIEnv* env, jobject object, JavaMethod& setValue, CK_ULONG value)
{
    const jmethodID method = GetMethodID(env, setValue);
    if (method == nullptr) return false;
    if (object == nullptr) return true;
    env->CallVoidMethod(object, method, static_cast<jlong>(value));
    return !env->ExceptionCheck();
}

} // namespace zerlin
