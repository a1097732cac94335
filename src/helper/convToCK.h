// From Java values to freshly made native ones. A failure is told by a pending Java exception; the caller
// asks for it after every conversion. Buffers come from malloc and belong to the caller.
#pragma once

#include <jni.h>

#include "helper/memory.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

// Whether the conversion of a handle, a constant or a number failed. The JVM is asked only where the value is
// one that a failure returns.
inline bool hasFailed(JNIEnv* env, CK_ULONG value)
{
    return (value == 0 || value == CK_UNAVAILABLE_INFORMATION) && env->ExceptionCheck();
}

// The value inside a handle or typed constant object. A null object gives 0xFFFFFFFF; an object of another
// class, or a failed lookup, gives 0 from the first three and 0xFFFFFFFF from the others.
CK_OBJECT_HANDLE jObjectHandleToCKObjectHandle(JNIEnv* env, jobject object);
CK_SESSION_HANDLE jSessionHandleToCKSessionHandle(JNIEnv* env, jobject object);
CK_ATTRIBUTE_TYPE jAttributeTypeToCKAttributeType(JNIEnv* env, jobject object);
CK_CERTIFICATE_TYPE jCertificateTypeToCKCertificateType(JNIEnv* env, jobject object);
CK_HW_FEATURE_TYPE jHWFeatureTypeToCKHWFeatureType(JNIEnv* env, jobject object);
CK_KEY_TYPE jKeyTypeToCKKeyType(JNIEnv* env, jobject object);
CK_MECHANISM_TYPE jMechanismTypeToCKMechanismType(JNIEnv* env, jobject object);
CK_OBJECT_CLASS jObjectClassToCKObjectClass(JNIEnv* env, jobject object);
CK_RSA_PKCS_OAEP_SOURCE_TYPE jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType(JNIEnv* env, jobject object);
CK_RV jRVToCKRV(JNIEnv* env, jobject object);
CK_STATE jStateToCKState(JNIEnv* env, jobject object);
CK_USER_TYPE jUserTypeToCKUserType(JNIEnv* env, jobject object);

// CK_TRUE for a CK_BBOOL object that holds true; CK_FALSE for everything else, failures included.
CK_BBOOL jBBoolToCKBBool(JNIEnv* env, jobject object);

// One boxed value in a new buffer of its native size, or null with an exception pending.
CK_ULONG_PTR jLongObjectToCKULongPtr(JNIEnv* env, jobject object);
CK_ULONG_PTR jIntegerObjectToCKULongPtr(JNIEnv* env, jobject object);
CK_BBOOL* jBooleanObjectToCKBBoolPtr(JNIEnv* env, jobject object);
CK_BYTE_PTR jByteObjectToCKBytePtr(JNIEnv* env, jobject object);
// Always fails with the class lookup's exception: it asks for "java/lang/Char", and that is wanted.
CK_CHAR_PTR jCharObjectToCKCharPtr(JNIEnv* env, jobject object);
// Null without an exception when the object is not a CK_DATE. The month goes over the year's first two bytes
// and bytes 4 and 5 stay unset: wanted.
CK_DATE* jDateObjectToCKDatePtr(JNIEnv* env, jobject object);

// A whole Java array in a new buffer with a spare byte at its end. A null array gives a null pointer and
// length 0. The length counts elements, except for handles and mechanism types, where it counts bytes. After
// a failure in the middle of those two the buffer is there all the same, to be freed, zero from that element
// on, and the length counts elements.
void jByteArrayToCKByteArray(JNIEnv* env, jbyteArray array, CK_BYTE_PTR* data, CK_ULONG* length);
void jBooleanArrayToCKBBoolArray(JNIEnv* env, jbooleanArray array, CK_BBOOL** data, CK_ULONG* length);
void jCharArrayToCKCharArray(JNIEnv* env, jcharArray array, CK_CHAR_PTR* data, CK_ULONG* length);
void jLongArrayToCKULongArray(JNIEnv* env, jlongArray array, CK_ULONG_PTR* data, CK_ULONG* length);
void jObjectHandleArrayToCKObjectHandleArray(
    JNIEnv* env, jobjectArray array, CK_OBJECT_HANDLE_PTR* data, CK_ULONG* length);
void jMechanismTypeArrayToCKMechanismTypeArray(
    JNIEnv* env, jobjectArray array, CK_MECHANISM_TYPE_PTR* data, CK_ULONG* length);

// The string's modified UTF-8 bytes, NUL-terminated; the length leaves the NUL out.
void jStringToCKCharArray(JNIEnv* env, jstring string, CK_CHAR_PTR* data, CK_ULONG* length);

// One bare value of any class that a template takes (valueClasses.h), in a new buffer; a null value gives a
// null pointer and length 0, another class UnsupportedOperationException. The length counts bytes, but
// elements for long[] and int[].
void jObjectToPrimitiveCKObjectPtrPtr(JNIEnv* env, jobject value, CK_VOID_PTR* data, CK_ULONG* length);
// The same for a native: into the memory of the call, unless that is null. False with an exception pending.
bool convertBareValue(JNIEnv* env, CallMemory* memory, jobject value, CK_VOID_PTR* data, CK_ULONG* length);

// One attribute. Its pValue is the caller's to free, also when an exception is pending; the length is the one
// that the Java object declares, but for a numeric attribute that declares 4 bytes it is that of the value. A
// null object gives a type that no token knows, 0xFFFFFFFF, without a value.
CK_ATTRIBUTE jAttributeToCKAttribute(JNIEnv* env, jobject object);

// A whole template, with a spare byte at its end. After a failure in the middle the count is that of the Java
// array all the same, and the records from there on have no values.
void jAttributeArrayToCKAttributeArray(
    JNIEnv* env, jobjectArray array, CK_ATTRIBUTE_PTR* data, CK_ULONG* count);
// The same for a native: records and values lie in the memory of the call, unless that is null. False with an
// exception pending.
bool convertTemplate(
    JNIEnv* env, CallMemory* memory, jobjectArray array, CK_ATTRIBUTE_PTR* data, CK_ULONG* count);

// A mechanism with its parameter. The length is the one that the Java object declares;
// FreeCKMechanismParameter aborts the process when that differs from the structure's size. After a failure
// the record holds what was converted.
CK_MECHANISM jMechanismToCKMechanism(JNIEnv* env, jobject object);
void jMechanismParameterToCKMechanismParameter(
    JNIEnv* env, jobject object, CK_VOID_PTR* ckpParamPtr, CK_ULONG* ckpLength);

// Frees what the conversion of the same, unchanged Java mechanism made. May be called while an exception is
// pending, and keeps it.
void FreeCKMechanismParameter(JNIEnv* env, jobject jMechanism, CK_MECHANISM_PTR mechanism);

// The same for a native, which remembers in between what structure the parameter has, if any: quicker, and
// safe from a Java mechanism that changes meanwhile. convertMechanism fills a cleared record and returns
// false with an exception pending; a parameter may have been made all the same. assertParameterLength aborts
// the process when the length that the Java object declares is not that of the structure.
struct Structure;
bool convertMechanism(JNIEnv* env, jobject object, CK_MECHANISM& mechanism, const Structure*& structure);
void assertParameterLength(const Structure* structure, CK_ULONG paramLen);
void freeMechanismParameter(const Structure* structure, const CK_MECHANISM& mechanism);

} // namespace zerlin
