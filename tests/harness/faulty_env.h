// A JNI environment that fails on request and watches how it is used.
#pragma once

#include <functional>
#include <jni.h>
#include <string>
#include <string_view>
#include <vector>

// What is to go wrong. By default nothing does.
struct Fault {
    // The n-th of the calls that can raise an exception, counted from 1, only raises
    // java.lang.RuntimeException: injected.
    int call = 0;
    // This function, which creates a reference, returns null without an exception.
    std::string_view silent = {};
};

struct Watched {
    int calls = 0;      // those that can raise an exception
    std::string failed; // the function that the fault hit; "" when the fault was not met
    // Deletions of local references that belong to the caller or are deleted already. What else JNI forbids,
    // -Xcheck:jni reports: see takeJniWarnings.
    std::vector<std::string> violations;
    // The numbers that were read from fields, and the lengths of the bytes that were read, in their order.
    std::vector<jlong> read;
    std::size_t maxLocalRefs = 0; // created by the work and alive at the same time
    // What the work created and did not release. The characters of a string count as a buffer.
    std::vector<jobject> globalRefs;
    std::vector<const void*> buffers;
};

// Runs the work, which must not throw, and watches this thread's environment. Calls that Java's own natives
// make meanwhile, for example when NewObject runs a constructor, are neither counted nor made to fail.
Watched watch(JNIEnv* env, const Fault& fault, const std::function<void()>& work) noexcept;
