// From Java values into native memory that the caller owns. At most the capacity is written, and the rest of
// the destination keeps what it held, except behind a short string. A null Java value or a null destination
// copies nothing and is no error. A failure leaves a Java exception pending, and what was copied before it
// stays.
#pragma once

#include <jni.h>

#include "zerlin/cryptoki.h"

namespace zerlin {

// min(capacity, length of the array) bytes.
void CopyJByteArrayToCKByteArray(JNIEnv* env, jbyteArray array, CK_BYTE_PTR destination, CK_ULONG capacity);

// The digits of the month replace the year's first two, and bytes 4 and 5 are not written: deliberate.
void CopyJDateToCKDate(JNIEnv* env, jobject object, CK_DATE* destination);

// No native calls the rest of this header: it is there for whoever fills native structures of their own.

// The same for elements; the capacity counts elements.
void CopyJLongArrayToCKULongArray(JNIEnv* env, jlongArray array, CK_ULONG_PTR destination, CK_ULONG capacity);
void CopyJIntArrayToCKULongArray(JNIEnv* env, jintArray array, CK_ULONG_PTR destination, CK_ULONG capacity);
void CopyJBooleanArrayToCKBBoolArray(
    JNIEnv* env, jbooleanArray array, CK_BBOOL* destination, CK_ULONG capacity);
void CopyJCharArrayToCKCharArray(JNIEnv* env, jcharArray array, CK_CHAR_PTR destination, CK_ULONG capacity);

// As strncpy: NUL bytes up to the capacity behind a shorter string, no NUL behind a longer one.
void CopyJStringToCKCharArray(JNIEnv* env, jstring string, CK_CHAR_PTR destination, CK_ULONG capacity);

// Exactly capacity elements: a shorter array leaves ArrayIndexOutOfBoundsException pending. Deliberate.
void CopyJMechanismTypeArrayToCKMechanismTypeArray(
    JNIEnv* env, jobjectArray array, CK_MECHANISM_TYPE_PTR destination, CK_ULONG capacity);

void CopyJVersionToCKVersion(JNIEnv* env, jobject object, CK_VERSION* destination);

// One value of any class that a template takes, the capacity in bytes (but in elements for long[] and int[]).
// UnsupportedOperationException for another class and for a scalar that the capacity does not hold.
void CopyJObjectPrimativeToCKObjectPtr(
    JNIEnv* env, jobject value, CK_VOID_PTR destination, CK_ULONG capacity);

// The type, the value into the buffer that pValue and ulValueLen describe, then ulValueLen from valueLen.
void CopyJAttributeToCKAttribute(JNIEnv* env, jobject object, CK_ATTRIBUTE_PTR destination);
void CopyJAttributeArrayToCKAttributeArray(
    JNIEnv* env, jobjectArray array, CK_ATTRIBUTE_PTR destination, CK_ULONG count);

// The information records; text shorter than its field leaves the rest of the field as it was.
void CopyJInfoToCKInfo(JNIEnv* env, jobject object, CK_INFO* destination);
void CopyJSlotInfoToCKSlotInfo(JNIEnv* env, jobject object, CK_SLOT_INFO* destination);
void CopyJTokenInfoToCKTokenInfo(JNIEnv* env, jobject object, CK_TOKEN_INFO* destination);
void CopyJSessionInfoToCKSessionInfo(JNIEnv* env, jobject object, CK_SESSION_INFO* destination);
void CopyJMechInfoToCKMechInfo(JNIEnv* env, jobject object, CK_MECHANISM_INFO* destination);

} // namespace zerlin
