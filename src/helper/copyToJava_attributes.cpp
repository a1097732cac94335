// Attribute values from native into the Java objects that a template already holds.
#include <algorithm>
#include <cstdint>

#include "helper/attributeFields.h"
#include "helper/copyToJava.h"
#include "helper/elements.h"
#include "helper/valueClasses.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

// What the native value must have at least; a shorter one is not written.
CK_ULONG minimumLength(ValueKind kind)
{
    switch (kind) {
    case ValueKind::ByteArray:
    case ValueKind::BBool:
    case ValueKind::Boolean:
        return 1;
    case ValueKind::Date:
        return sizeof(CK_DATE);
    default:
        return sizeof(CK_ULONG);
    }
}

// False with an exception pending.
bool writeValue(
    JNIEnv* env, const ValueClass& row, jobject target, const void* pValue, CK_ULONG length, CK_ULONG size)
{
    const auto* const bytes = static_cast<const CK_BYTE*>(pValue);
    switch (row.kind) {
    case ValueKind::ByteArray:
        return CopyCKByteArrayToJByteArray(
            env, bytes, std::min(length, size), static_cast<jbyteArray>(target));
    case ValueKind::Long:
        return SetLongField(env, target, java::LONG.value, numberAt(bytes));
    case ValueKind::BBool: {
        const jmethodID setValue = GetMethodID(env, java::BBOOL.setValue);
        if (setValue == nullptr) return false;
        env->CallVoidMethod(target, setValue, *bytes == CK_TRUE ? JNI_TRUE : JNI_FALSE);
        return !env->ExceptionCheck();
    }
    case ValueKind::Date:
        CopyCKDateToJDate(env, static_cast<const CK_DATE*>(pValue), length, target);
        return !env->ExceptionCheck();
    case ValueKind::Handle:
        return SetLongField(env, target, *row.m_value, numberAt(bytes));
    case ValueKind::Constant:
        return setLongValue(env, target, *row.setValue, numberAt(bytes));
    case ValueKind::MechanismTypeArray:
        if (length % sizeof(CK_MECHANISM_TYPE) != 0) return true;
        return CopyCKMechanismTypeArrayToJMechanismTypeArray(env,
            static_cast<const CK_MECHANISM_TYPE*>(pValue), std::min(length, size) / sizeof(CK_MECHANISM_TYPE),
            static_cast<jobjectArray>(target));
    default: {
        const jfieldID value = GetFieldID(env, java::BOOLEAN.value);
        if (value == nullptr) return false;
        env->SetBooleanField(target, value, *bytes); // a Boolean: the raw byte, deliberate
        return true;
    }
    }
}

// Writes a native value into a Java one; the likely row is tested first. The length is the reported one, and
// decides whether the value is written; not more than the size is read. False with an exception pending.
bool writeObject(
    JNIEnv* env, std::size_t likely, const void* pValue, CK_ULONG length, CK_ULONG size, jobject target)
{
    if (target == nullptr || pValue == nullptr || length == 0) return true;
    const std::size_t row = valueClassOf(env, WRITABLE_VALUE_ROWS, target, likely);
    if (row == WRITABLE_VALUE_ROWS) {
        throwUnsupportedClass(env, "Can not copy from CK type to %s", target);
        return false;
    }
    const ValueClass& valueClass = VALUE_CLASSES[row];
    return std::min(length, size) < minimumLength(valueClass.kind) ||
           writeValue(env, valueClass, target, pValue, length, size);
}

// The target is a CK_ATTRIBUTE or null; the value has the given size at most, whatever the record says. False
// with an exception pending.
bool writeAttribute(JNIEnv* env, const AttributeFields& fields, const CK_ATTRIBUTE& source,
    const void* pValue, CK_ULONG size, bool mayBeWildcard, jobject target)
{
    if (target == nullptr) return true;
    if (mayBeWildcard) {
        const jobject type = env->GetObjectField(target, fields.type);
        const bool isWildcard = typeOf(env, fields, type) == CKA_WILDCARD;
        if (isWildcard && !setLongValue(env, type, java::ATTRIBUTE_TYPE.setValue, source.type)) return false;
    }
    const jobject value = env->GetObjectField(target, fields.pValue);
    const std::size_t likely = likelyRow(source.type);
    if (!writeObject(env, likely, pValue, source.ulValueLen, size, value)) return false;
    const auto length = static_cast<jlong>(source.ulValueLen);
    if (env->GetLongField(target, fields.valueLen) == length) return true; // reading costs less than writing
    env->SetLongField(target, fields.valueLen, length);
    return true;
}

// Hands the index of each element below the count to write, which returns whether to continue. False with an
// exception pending.
template <typename Write>
bool writeElements(JNIEnv* env, CK_ULONG count, jobjectArray target, Write write)
{
    const jclass cls = FindClass(env, java::ATTRIBUTE_ARRAY);
    if (cls == nullptr) return false;
    if (target == nullptr || !env->IsInstanceOf(target, cls)) return true;
    const jsize length = elementsToCopy(env, target, count);
    if (length == 0) return true;
    AttributeFields fields;
    if (!findAttributeFields(env, fields)) return false;
    if (!FindClasses(env, WRITABLE_VALUES)) return false;
    return forEachElement<3>(env, target, length,
        [&](jsize i, jobject element) { return write(fields, static_cast<CK_ULONG>(i), element); });
}

} // namespace

bool CopyCKAttributeArrayToJAttributeArray(
    JNIEnv* env, const CK_ATTRIBUTE* source, CK_ULONG count, jobjectArray target)
{
    const auto write = [&](const AttributeFields& fields, CK_ULONG i, jobject element) {
        return writeAttribute(env, fields, source[i], source[i].pValue, ~CK_ULONG{0}, true, element);
    };
    return writeElements(env, source == nullptr ? 0 : count, target, write);
}

bool writeTemplateBack(
    JNIEnv* env, const NewTemplate& made, CK_ULONG count, jobjectArray target, bool mayHaveWildcards)
{
    const auto write = [&](const AttributeFields& fields, CK_ULONG i, jobject element) {
        const NewValue& value = made.values[i];
        return writeAttribute(env, fields, made.records[i], value.data, static_cast<CK_ULONG>(value.size),
            mayHaveWildcards, element);
    };
    return writeElements(env, std::min(count, made.count), target, write);
}

void CopyCKAttributeToJAttribute(JNIEnv* env, const CK_ATTRIBUTE* source, jobject target)
{
    AttributeFields fields;
    if (!findAttributeFields(env, fields) || source == nullptr) return;
    if (!FindClasses(env, WRITABLE_VALUES)) return;
    const jobject attribute = attributeOrNull(env, fields, false, target);
    writeAttribute(env, fields, *source, source->pValue, ~CK_ULONG{0}, true, attribute);
}

bool CopyCKObjectPtrToJObjectPrimitive(JNIEnv* env, const void* pValue, CK_ULONG length, jobject target)
{
    return FindClasses(env, WRITABLE_VALUES) && writeObject(env, 0, pValue, length, length, target);
}

bool writeValueBack(JNIEnv* env, const NewValue& made, CK_ULONG length, jobject target)
{
    const auto size = static_cast<CK_ULONG>(made.size);
    return FindClasses(env, WRITABLE_VALUES) && writeObject(env, 0, made.data, length, size, target);
}

} // namespace zerlin
