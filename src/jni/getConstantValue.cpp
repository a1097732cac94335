// GetConstantValue of the class CK: a constant that depends on the width of CK_ULONG, by its name.
#include <cstring>

#include "halvorn_zerlin_constants_CK.h"
#include "helper/jutil.h"
#include "util/fileVersion.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jlong JNICALL Java_halvorn_zerlin_constants_CK_GetConstantValue(JNIEnv* env, jclass, jstring name)
{
    if (env->ExceptionCheck()) return 0;
    if (name == nullptr) {
        throwNullPointer(env, "the name of the constant is null");
        return 0;
    }
    char* const text = copyString(env, name);
    if (text == nullptr) return 0;
    const bool isKnown = std::strcmp(text, "UNAVAILABLE_INFORMATION") == 0;
    if (!isKnown) throwUnsupported(env, "Constant %s not recognised", text);
    std::free(text);
    return isKnown ? static_cast<jlong>(CK_UNAVAILABLE_INFORMATION) : 0;
}
