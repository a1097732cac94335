// From native results into the Java objects that the caller passed. A null on either side, or a target of
// another class, does nothing. A failure leaves a Java exception pending, and what was written before it
// stays; those that natives call at their end return false then, so that the JVM need not be asked.
#pragma once

#include <jni.h>

#include "helper/jutil.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

// The information records. Text becomes a new byte[] of the field's width, a version a new CK_VERSION; the
// CK_STATE of a session info is changed in place, where there is one.
bool CopyCKInfoToJInfo(JNIEnv* env, const CK_INFO* source, jobject target);
bool CopyCKSlotInfoToJSlotInfo(JNIEnv* env, const CK_SLOT_INFO* source, jobject target);
bool CopyCKTokenInfoToJTokenInfo(JNIEnv* env, const CK_TOKEN_INFO* source, jobject target);
bool CopyCKSessionInfoToJSessionInfo(JNIEnv* env, const CK_SESSION_INFO* source, jobject target);
bool CopyCKMechanismInfoToJMechanismInfo(JNIEnv* env, const CK_MECHANISM_INFO* source, jobject target);

// Fills the arrays that the date already holds, the month from the year's first two digits: deliberate. The
// length is not used.
void CopyCKDateToJDate(JNIEnv* env, const CK_DATE* source, CK_ULONG length, jobject target);

// min(count, length of the array) elements; the rest of the array keeps what it held. The object arrays'
// elements are changed in place and null ones skipped.
bool CopyCKByteArrayToJByteArray(JNIEnv* env, const CK_BYTE* source, CK_ULONG count, jbyteArray target);
bool CopyCKULongArrayToJLongArray(JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jlongArray target);
bool CopyCKULongArrayToJObjectHandleArray(
    JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target);
bool CopyCKULongArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_ULONG* source, CK_ULONG count, jobjectArray target);
bool CopyCKMechanismTypeArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_MECHANISM_TYPE* source, CK_ULONG count, jobjectArray target);

// A served template back into the caller's CK_ATTRIBUTE objects, for the elements below both the count and
// the array's length. Each value is written into the object that pValue holds, as that object's class
// demands; valueLen becomes the native length. An attribute of type CKA_WILDCARD takes the native type; a
// caller who knows that there is none saves the search.
struct NewTemplate;
bool writeTemplateBack(
    JNIEnv* env, const NewTemplate& made, CK_ULONG count, jobjectArray target, bool mayHaveWildcards);
// Does nothing where the native value is too short for the object; UnsupportedOperationException for a class
// that cannot be written to. Long and Boolean objects are changed in place: deliberate.
bool CopyCKObjectPtrToJObjectPrimitive(JNIEnv* env, const void* pValue, CK_ULONG length, jobject target);
// The same from a value that was made for it: the reported length decides whether it is written, and not more
// is read than was made.
struct NewValue;
bool writeValueBack(JNIEnv* env, const NewValue& made, CK_ULONG length, jobject target);

// What a mechanism has returned through its parameter, into the Java parameter object from which the native
// parameter was made, with that structure.
struct Structure;
bool writeMechanismBack(JNIEnv* env, const CK_MECHANISM& source, const Structure& made, jobject target);

// Calls the setValue(long) of the object's class. Does nothing for a null object.
bool setLongValue(JNIEnv* env, jobject object, JavaMethod& setValue, CK_ULONG value);

// No native calls the rest of this header: a version, one attribute, and templates and mechanisms of which
// nobody knows what their native side was made of.
void CopyCKVersionToJVersion(JNIEnv* env, const CK_VERSION* source, jobject target);
void CopyCKAttributeToJAttribute(JNIEnv* env, const CK_ATTRIBUTE* source, jobject target);
bool CopyCKAttributeArrayToJAttributeArray(
    JNIEnv* env, const CK_ATTRIBUTE* source, CK_ULONG count, jobjectArray target);
bool CopyCKMechanismToJMechanism(JNIEnv* env, const CK_MECHANISM* source, jobject target);

} // namespace zerlin
