// From Java values to new native ones. A failure leaves a Java exception pending; the caller asks for it
// after every conversion.
#pragma once

#include <cstddef>

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

// The value inside a handle or typed constant object. A null object is all ones; for an object of another
// class, and after a failed lookup, the first three return 0 and the others all ones.
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

// What the natives call: into the memory of the call. Each returns false with an exception pending.

// A new native value. The length is in bytes, but in elements for long[] and int[]; the size is always in
// bytes.
struct NewValue {
    CK_VOID_PTR data = nullptr;
    CK_ULONG length = 0;
    std::size_t size = 0;
};

// A new template. The Cryptoki library may change its records; the values are as they were made.
struct NewTemplate {
    CK_ATTRIBUTE_PTR records = nullptr;
    NewValue* values = nullptr;
    CK_ULONG count = 0; // of the Java array
};

// A whole template, in zeroed records with a spare byte at their end; null for a null array. The records are
// fenced where the caller's count is above the array's length, and each value where its declared length is
// above its size (CallMemory). Each attribute's length is the one that the Java object declares, except for a
// numeric attribute that declares the size of a CK_ULONG: then it is that of the value. A null element
// becomes a type of all ones, which no token knows, without a value. The values are kept where that is asked
// for.
bool convertTemplate(JNIEnv* env, CallMemory* memory, jobjectArray array, CK_ULONG ulCount, bool keepsValues,
    NewTemplate& made);

// One bare value of any class that a template takes (valueClasses.h); null and length 0 for a null value, and
// UnsupportedOperationException for another class.
bool convertBareValue(JNIEnv* env, CallMemory* memory, jobject value, NewValue& made);

// The same for a value whose row among those classes is known.
bool convertValueOfRow(JNIEnv* env, CallMemory* memory, std::size_t row, jobject value, NewValue& made);

// Moves the value behind a fence where the Cryptoki library is told a length that is above its size.
bool fence(JNIEnv* env, CallMemory& memory, CK_ULONG declared, NewValue& made);

// A mechanism with its parameter, into a zeroed record. The parameter is fenced where its declared length is
// above its size, and so is what it points to. What was made and its structure, if it has one, are
// remembered, so that a Java mechanism that changes meanwhile does no harm. The parameter of mechanism type 0
// comes from malloc and nobody frees it: deliberate. assertParameterLength aborts the process when the length
// that the Java object declares is not that of the structure.
struct Structure;
bool convertMechanism(JNIEnv* env, CallMemory* memory, jobject object, CK_MECHANISM& mechanism,
    const Structure*& structure, NewValue& parameter);
void assertParameterLength(const Structure* structure, CK_ULONG paramLen);

// What parameterLen must be for a Java parameter object, in bytes; 0 for null, and with an exception pending.
jlong parameterSize(JNIEnv* env, jobject parameter);

// No native calls the rest of this header: the same conversions for whoever has no memory of a call. Buffers
// come from malloc and belong to the caller. They are not fenced: what lies behind them is other memory.

// A whole Java array with a spare byte at its end; a null pointer and length 0 for a null array. The length
// counts bytes. After a failure in the middle of the handles the buffer is there all the same, for the caller
// to free: it is zero from that element on, and the length counts elements.
void jByteArrayToCKByteArray(JNIEnv* env, jbyteArray array, CK_BYTE_PTR* data, CK_ULONG* length);
void jObjectHandleArrayToCKObjectHandleArray(
    JNIEnv* env, jobjectArray array, CK_OBJECT_HANDLE_PTR* data, CK_ULONG* length);

// One boxed value in a buffer of its native size, or null with an exception pending.
CK_ULONG_PTR jLongObjectToCKULongPtr(JNIEnv* env, jobject object);
CK_ULONG_PTR jIntegerObjectToCKULongPtr(JNIEnv* env, jobject object);
CK_BBOOL* jBooleanObjectToCKBBoolPtr(JNIEnv* env, jobject object);
CK_BYTE_PTR jByteObjectToCKBytePtr(JNIEnv* env, jobject object);
// Always fails with the exception of the class lookup, since it asks for "java/lang/Char": deliberate.
CK_CHAR_PTR jCharObjectToCKCharPtr(JNIEnv* env, jobject object);
// Null without an exception when the object is not a CK_DATE. The digits of the month replace the year's
// first two, and bytes 4 and 5 are 0: deliberate.
CK_DATE* jDateObjectToCKDatePtr(JNIEnv* env, jobject object);

// Arrays as above. The length counts elements, but bytes for mechanism types, whose failures leave the buffer
// too.
void jBooleanArrayToCKBBoolArray(JNIEnv* env, jbooleanArray array, CK_BBOOL** data, CK_ULONG* length);
void jCharArrayToCKCharArray(JNIEnv* env, jcharArray array, CK_CHAR_PTR* data, CK_ULONG* length);
void jLongArrayToCKULongArray(JNIEnv* env, jlongArray array, CK_ULONG_PTR* data, CK_ULONG* length);
void jMechanismTypeArrayToCKMechanismTypeArray(
    JNIEnv* env, jobjectArray array, CK_MECHANISM_TYPE_PTR* data, CK_ULONG* length);

// The string's modified UTF-8 bytes, NUL-terminated; the length leaves the NUL out.
void jStringToCKCharArray(JNIEnv* env, jstring string, CK_CHAR_PTR* data, CK_ULONG* length);

// As convertBareValue and convertTemplate. The caller frees each pValue, also when an exception is pending;
// after a failure in the middle the count is that of the Java array, and the records from there on have no
// values.
void jObjectToPrimitiveCKObjectPtrPtr(JNIEnv* env, jobject value, CK_VOID_PTR* data, CK_ULONG* length);
CK_ATTRIBUTE jAttributeToCKAttribute(JNIEnv* env, jobject object);
void jAttributeArrayToCKAttributeArray(
    JNIEnv* env, jobjectArray array, CK_ATTRIBUTE_PTR* data, CK_ULONG* count);

// As convertMechanism. After a failure the record holds what was converted.
CK_MECHANISM jMechanismToCKMechanism(JNIEnv* env, jobject object);
void jMechanismParameterToCKMechanismParameter(
    JNIEnv* env, jobject object, CK_VOID_PTR* ckpParamPtr, CK_ULONG* ckpLength);

// Frees what the conversion of the same, unchanged Java mechanism made, with the assertion of
// assertParameterLength. May be called while an exception is pending, and keeps it.
void FreeCKMechanismParameter(JNIEnv* env, jobject jMechanism, CK_MECHANISM_PTR mechanism);

} // namespace zerlin
