// A JNI environment that fails on request and that watches what is done with it.
#pragma once

#include <functional>
#include <jni.h>
#include <string>
#include <string_view>
#include <vector>

// What is to go wrong; nothing does by default.
struct Fault {
    // Of the calls that can raise an exception, the n-th (from 1) does nothing but raise
    // java.lang.RuntimeException: injected.
    int call = 0;
    // FindClass of this path, or GetFieldID or GetMethodID of this name, raises what a missing one raises.
    std::string_view lookup = {};
    // This function, which makes a reference, returns null without an exception.
    std::string_view silent = {};
};

struct Watched {
    int calls = 0;      // that can raise
    std::string failed; // the function that the fault hit last; "" when the fault was not met
    // Calls that JNI forbids while an exception is pending; local references that were deleted although they
    // are the caller's or gone.
    std::vector<std::string> violations;
    std::size_t maxLocalRefs = 0; // made by the work and live at once
    // What the work made and has not released at its end: the characters of strings count as buffers, weak
    // references not at all.
    std::vector<jobject> localRefs;
    std::vector<jobject> globalRefs;
    std::vector<const void*> buffers;
};

// Runs the work with this thread's environment watched. Calls that Java's own natives make on the way (when
// NewObject runs a constructor, say) are neither counted nor hit.
Watched watch(JNIEnv* env, const Fault& fault, const std::function<void()>& work);
