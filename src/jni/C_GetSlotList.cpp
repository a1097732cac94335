// C_GetSlotList: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetSlotList(
    JNIEnv* env, jclass, jboolean tokenPresent, jlongArray pSlotList, jobject pulCount)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulCount == nullptr) return argumentsBad(env);

    CallMemory memory;
    return callWithOutput(env, memory, Content::Public, pulCount, pSlotList, CopyCKULongArrayToJLongArray,
        [tokenPresent](CK_SLOT_ID_PTR slots, CK_ULONG_PTR count) {
            return C_GetSlotList(tokenPresent == JNI_TRUE ? CK_TRUE : CK_FALSE, slots, count);
        });
}
