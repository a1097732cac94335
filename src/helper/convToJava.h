// From native values to new Java objects. Each routine returns a new local reference, or null when the native
// pointer is null or a Java exception is pending. Objects are made without running a constructor.
#pragma once

#include <jni.h>

#include "zerlin/cryptoki.h"

namespace zerlin {

// A new typed constant that holds the value: the results of natives.
jobject ckRVToJRV(JNIEnv* env, CK_RV value);
jobject ckAttributeTypeToJAttributeType(JNIEnv* env, CK_ATTRIBUTE_TYPE value);
jobject ckKeyTypeToJKeyType(JNIEnv* env, CK_KEY_TYPE value);
jobject ckMechanismTypeToJMechanismType(JNIEnv* env, CK_MECHANISM_TYPE value);
jobject ckObjectClassToJObjectClass(JNIEnv* env, CK_OBJECT_CLASS value);
jobject ckStateToJState(JNIEnv* env, CK_STATE value);

// What the information records are filled with: a new version, and a new byte[] of n bytes.
jobject ckVersionPtrToJVersion(JNIEnv* env, const CK_VERSION* version);
jbyteArray ckCharArrayToJByteArray(JNIEnv* env, const CK_CHAR* source, CK_ULONG n);
jbyteArray ckByteArrayToJByteArray(JNIEnv* env, const CK_BYTE* source, CK_ULONG n);

// No native calls the rest of this header: it is there for whoever makes whole Java templates and mechanisms
// of native ones.

// A new handle, typed constant or LongRef that holds the value.
jobject ckObjectHandleToJObjectHandle(JNIEnv* env, CK_OBJECT_HANDLE value);
jobject ckSessionHandleToJSessionHandle(JNIEnv* env, CK_SESSION_HANDLE value);
jobject ckCertificateTypeToJCertificateType(JNIEnv* env, CK_CERTIFICATE_TYPE value);
jobject ckHWFeatureTypeToJHWFeatureType(JNIEnv* env, CK_HW_FEATURE_TYPE value);
jobject ckRsaPkcsOaepSourceTypeToJRsaPkcsOaepSourceType(JNIEnv* env, CK_RSA_PKCS_OAEP_SOURCE_TYPE value);
jobject ckUserTypeToJUserType(JNIEnv* env, CK_USER_TYPE value);
jobject LongRefObj(JNIEnv* env, CK_ULONG value);

// A new CK_BBOOL, true for the byte 1 alone.
jobject ckBBoolToJBBool(JNIEnv* env, CK_BBOOL value);
// A new java.lang.Long. The pointer must not be null.
jobject ckULongPtrToJLongObject(JNIEnv* env, const CK_ULONG* value);
jobject ckDatePtrToJDateObject(JNIEnv* env, const CK_DATE* date);

// New arrays of length n; the elements of the object arrays are new objects.
jlongArray ckULongArrayToJLongArray(JNIEnv* env, const CK_ULONG* source, CK_ULONG n);
jobjectArray ckObjHandleArrayToJObjHandleArray(JNIEnv* env, const CK_OBJECT_HANDLE* source, CK_ULONG n);
jobjectArray ckMechanismTypeArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_MECHANISM_TYPE* source, CK_ULONG n);

// New attributes; the attribute's type decides the class of the value. A value without a pointer or a length
// is null.
jobject ckAttributeValueToJObject(JNIEnv* env, const CK_ATTRIBUTE* attribute);
jobject ckAttributePtrToJAttribute(JNIEnv* env, const CK_ATTRIBUTE* attribute);
jobjectArray ckAttributeArrayToJAttributeArray(JNIEnv* env, const CK_ATTRIBUTE* source, CK_ULONG count);

// A new mechanism with a new parameter object. The mechanism and the length of the parameter decide the
// parameter's class; a pair that is not known becomes a byte[].
jobject ckMechanismToJMechanism(JNIEnv* env, const CK_MECHANISM* mechanism);
jobject ckMechanismParameterToJMechanismParameter(JNIEnv* env, const CK_MECHANISM* mechanism);

} // namespace zerlin
