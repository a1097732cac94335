// The fields of a Java CK_ATTRIBUTE, looked up once for a whole template.
#pragma once

#include <jni.h>

#include "helper/javaNames.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

struct AttributeFields {
    jclass cls;
    jfieldID type;
    jfieldID pValue;
    jfieldID valueLen;
    jfieldID typeValue;
};

// False with an exception pending when one of them is missing.
inline bool findAttributeFields(JNIEnv* env, AttributeFields& fields)
{
    fields.cls = FindClass(env, java::ATTRIBUTE.cls);
    fields.type = GetFieldID(env, java::ATTRIBUTE.type);
    fields.typeValue = GetFieldID(env, java::ATTRIBUTE_TYPE.m_value);
    fields.pValue = GetFieldID(env, java::ATTRIBUTE.pValue);
    fields.valueLen = GetFieldID(env, java::ATTRIBUTE.valueLen);
    return fields.valueLen != nullptr && fields.pValue != nullptr && fields.typeValue != nullptr &&
           fields.type != nullptr;
}

// The object where it is a CK_ATTRIBUTE; an element of a CK_ATTRIBUTE[] need not be asked.
inline jobject attributeOrNull(JNIEnv* env, const AttributeFields& fields, bool isElement, jobject object)
{
    return isElement || env->IsInstanceOf(object, fields.cls) ? object : nullptr;
}

// The value of an attribute's type object, as jAttributeTypeToCKAttributeType returns it: the declared type
// of the field guarantees the object's class.
inline CK_ATTRIBUTE_TYPE typeOf(JNIEnv* env, const AttributeFields& fields, jobject type)
{
    if (type == nullptr) return CK_UNAVAILABLE_INFORMATION;
    return static_cast<CK_ATTRIBUTE_TYPE>(env->GetLongField(type, fields.typeValue));
}

} // namespace zerlin
