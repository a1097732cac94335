// The least that any binding of this interface must spend: each native does one unavoidable thing, the
// fastest way.
#include <cstdlib>

#include "Floor.h"

namespace {

jclass rvClass = nullptr;
jfieldID rvValue = nullptr;
jmethodID setValue = nullptr;

} // namespace

JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*)
{
    void* environment = nullptr;
    if (vm->GetEnv(&environment, JNI_VERSION_1_6) != JNI_OK) return JNI_ERR;
    auto* const env = static_cast<JNIEnv*>(environment);
    const jclass rv = env->FindClass("halvorn/zerlin/constants/CK_RV");
    if (rv == nullptr) return JNI_ERR;
    rvClass = static_cast<jclass>(env->NewGlobalRef(rv));
    rvValue = env->GetFieldID(rv, "m_value", "J");
    const jclass mechanismType = env->FindClass("halvorn/zerlin/constants/CK_MECHANISM_TYPE");
    if (mechanismType == nullptr) return JNI_ERR;
    setValue = env->GetMethodID(mechanismType, "setValue", "(J)V");
    return rvValue != nullptr && setValue != nullptr ? JNI_VERSION_1_6 : JNI_ERR;
}

JNIEXPORT void JNICALL Java_Floor_empty(JNIEnv*, jclass) {}

JNIEXPORT jobject JNICALL Java_Floor_newRv(JNIEnv* env, jclass)
{
    const jobject rv = env->AllocObject(rvClass);
    if (rv != nullptr) env->SetLongField(rv, rvValue, 0);
    return rv;
}

JNIEXPORT void JNICALL Java_Floor_setValues(JNIEnv* env, jclass, jobjectArray elements, jlong value)
{
    const jsize count = env->GetArrayLength(elements);
    for (jsize i = 0; i < count; ++i) {
        const jobject element = env->GetObjectArrayElement(elements, i);
        env->CallVoidMethod(element, setValue, value);
        env->DeleteLocalRef(element);
    }
}

// Allocates one byte more for each buffer, as the library does.
JNIEXPORT void JNICALL Java_Floor_copyInAndOut(JNIEnv* env, jclass, jbyteArray input, jbyteArray output)
{
    const jsize inputLen = env->GetArrayLength(input);
    const jsize outputLen = env->GetArrayLength(output);
    auto* const in = static_cast<jbyte*>(std::malloc(static_cast<std::size_t>(inputLen) + 1));
    auto* const out = static_cast<jbyte*>(std::malloc(static_cast<std::size_t>(outputLen) + 1));
    if (in != nullptr && out != nullptr) {
        env->GetByteArrayRegion(input, 0, inputLen, in);
        env->SetByteArrayRegion(output, 0, outputLen, out);
    }
    std::free(out);
    std::free(in);
}
