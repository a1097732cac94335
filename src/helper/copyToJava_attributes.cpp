// Attribute values from native into the Java objects that a template already holds.
#include "helper/attributeFields.h"
#include "helper/copyToJava.h"
#include "helper/elements.h"
#include "helper/jutil.h"
#include "helper/valueClasses.h"

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/copyToJava_attributes $\" \"$Revision: 1.1.1.2 $\"";

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

void writeValue(JNIEnv* env, ValueKind kind, jclass cls, jobject target, const void* pValue, CK_ULONG length)
{
    const auto* const bytes = static_cast<const CK_BYTE*>(pValue);
    switch (kind) {
    case ValueKind::ByteArray:
        return CopyCKByteArrayToJByteArray(env, bytes, length, static_cast<jbyteArray>(target));
    case ValueKind::Long:
        SetLongField(env, cls, target, "value", numberAt(bytes));
        return;
    case ValueKind::BBool: {
        const jmethodID setValue = GetMethodID(env, cls, "setValue", "(Z)V");
        if (setValue == nullptr) return;
        return env->CallVoidMethod(target, setValue, *bytes == CK_TRUE ? JNI_TRUE : JNI_FALSE);
    }
    case ValueKind::Date:
        return CopyCKDateToJDate(env, static_cast<const CK_DATE*>(pValue), length, target);
    case ValueKind::Handle:
        SetLongField(env, cls, target, "m_value", numberAt(bytes));
        return;
    case ValueKind::Constant:
        return setLongValue(env, cls, target, numberAt(bytes));
    case ValueKind::MechanismTypeArray:
        if (length % sizeof(CK_MECHANISM_TYPE) != 0) return;
        return CopyCKMechanismTypeArrayToJMechanismTypeArray(env,
            static_cast<const CK_MECHANISM_TYPE*>(pValue), length / sizeof(CK_MECHANISM_TYPE),
            static_cast<jobjectArray>(target));
    default: {
        const jfieldID value = GetFieldID(env, cls, "value", "Z");
        if (value == nullptr) return;
        return env->SetBooleanField(target, value, *bytes); // a Boolean: the raw byte, wanted
    }
    }
}

// The caller asks for a pending exception.
void writeAttribute(JNIEnv* env, const AttributeFields& fields, const CK_ATTRIBUTE& source, jobject target)
{
    if (target == nullptr || !env->IsInstanceOf(target, fields.cls)) return;
    const LocalRef<jobject> type(env, env->GetObjectField(target, fields.type));
    if (typeOf(env, fields, type) == CKA_WILDCARD) {
        setLongValue(env, fields.typeClass, type, source.type);
        if (env->ExceptionCheck()) return;
    }
    const LocalRef<jobject> value(env, env->GetObjectField(target, fields.pValue));
    CopyCKObjectPtrToJObjectPrimitive(env, source.pValue, source.ulValueLen, value);
    if (env->ExceptionCheck()) return;
    env->SetLongField(target, fields.valueLen, static_cast<jlong>(source.ulValueLen));
}

} // namespace

void CopyCKAttributeArrayToJAttributeArray(
    JNIEnv* env, const CK_ATTRIBUTE* source, CK_ULONG count, jobjectArray target)
{
    const jclass cls = FindClass(env, "[Lhalvorn/zerlin/CK_ATTRIBUTE;");
    if (cls == nullptr || source == nullptr || target == nullptr) return;
    if (!env->IsInstanceOf(target, cls)) return;
    const jsize length = elementsToCopy(env, target, count);
    AttributeFields fields;
    if (length == 0 || !findAttributeFields(env, fields)) return;
    for (jsize i = 0; i < length; ++i) {
        const LocalRef<jobject> element(env, env->GetObjectArrayElement(target, i));
        if (element == nullptr && env->ExceptionCheck()) return;
        writeAttribute(env, fields, source[i], element);
        if (env->ExceptionCheck()) return;
    }
}

void CopyCKAttributeToJAttribute(JNIEnv* env, const CK_ATTRIBUTE* source, jobject target)
{
    AttributeFields fields;
    if (findAttributeFields(env, fields) && source != nullptr) writeAttribute(env, fields, *source, target);
}

void CopyCKObjectPtrToJObjectPrimitive(JNIEnv* env, const void* pValue, CK_ULONG length, jobject target)
{
    ValueClasses classes;
    constexpr std::size_t ROWS = WRITABLE_VALUE_CLASSES;
    if (!findValueClasses(env, classes, ROWS)) return;
    if (target == nullptr || pValue == nullptr || length == 0) return;
    const std::size_t row = valueClassOf(env, classes, ROWS, target);
    if (row == ROWS) return throwUnsupportedClass(env, "Can not copy from CK type to %s", target);
    const ValueKind kind = VALUE_CLASSES[row].kind;
    if (length < minimumLength(kind)) return;
    writeValue(env, kind, classes[row], target, pValue, length);
}

} // namespace zerlin
