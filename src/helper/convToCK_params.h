// One mechanism parameter structure from Java to native, and its release.
#pragma once

#include <jni.h>

#include "helper/parameters.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

// A new native structure for the object, or null with an exception pending; null without one when there is no
// memory for the structure. A length that contradicts its array aborts the process; the assertion names the
// function.
void* newStructure(JNIEnv* env, const Structure& structure, jobject object, const char* function);

// Wipes and frees a structure and all that it owns; null is allowed.
void freeStructure(const Structure& structure, void* data);

} // namespace zerlin
