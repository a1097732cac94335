// Runs a piece of work again and again while each of its JNI calls or allocations fails in turn, and catches
// the last output of a process that an assertion aborts.
#pragma once

#include "harness/failing_alloc.h"
#include "harness/faulty_env.h"
#include "harness/jvm.h"
#include "harness/natives.h"

#include <algorithm>

namespace jni {

// Fails each JNI call in turn, with no lookup remembered. Each time the exception comes out, no JNI call
// follows that it forbids, the Cryptoki library is called as if nothing failed or not at all, and nothing
// native is left. The work is prepared again each time. Returns how many calls failed.
int failEachJniCall(
    JNIEnv* env, const std::function<std::function<void()>()>& prepare, bool callsAnyway = false);

inline const char* const NO_MEMORY = "java.lang.OutOfMemoryError: no native memory left";

// Fails each allocation in turn. No memory is left. Returns what they led to other than that exception: other
// exceptions, and results of the work.
Lines failEachAllocation(JNIEnv* env, const std::function<std::string()>& work);

// Runs the work in a child process and returns what it prints before it aborts, without the line number.
std::string lastWords(const std::function<void()>& work);

} // namespace jni
