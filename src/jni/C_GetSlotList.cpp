// C_GetSlotList: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_GetSlotList $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetSlotList(
    JNIEnv* env, jclass, jboolean tokenPresent, jlongArray pSlotList, jobject pulCount)
{
    const jclass longRefClass = FindClass(env, "halvorn/zerlin/LongRef");
    if (longRefClass == nullptr) return nullptr;
    if (pulCount == nullptr) return argumentsBad(env);

    CallMemory memory;
    return callWithOutput(env, memory, Content::Public, longRefClass, pulCount, pSlotList,
        CopyCKULongArrayToJLongArray, [tokenPresent](CK_SLOT_ID_PTR slots, CK_ULONG_PTR count) {
            return C_GetSlotList(tokenPresent == JNI_TRUE ? CK_TRUE : CK_FALSE, slots, count);
        });
}
