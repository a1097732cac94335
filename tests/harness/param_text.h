// Mechanism parameters as text, on both sides. Java objects are written as Fields reads them. Native memory
// is written as numbers, . and hex digits for bytes, [..] for bytes behind a pointer, ( .. ) for a structure
// behind one, and null.
#pragma once

#include "harness/natives.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <span>
#include <sstream>

namespace jni {

jobject read(JNIEnv* env, const std::string& javaText);
std::string show(JNIEnv* env, jobject shown);
jobject mechanism(JNIEnv* env, jlong type, jobject parameter, jlong parameterLen);

// The text of the memory, in the layout of the words up to a closing parenthesis.
std::string nativeText(const void* memory, std::istream& layout);
std::string nativeText(const void* memory, const std::string& expected);

// The parameter as the Cryptoki library receives it from a native.
std::string given(JNIEnv* env, jobject parameter, jlong size, const std::string& expected);

struct ParamRow {
    jlong size;
    std::string java;
    std::string native = java.substr(java.find(' ') + 1);
};

// One parameter of each class; those of modern mechanisms are the last.
extern const std::span<const ParamRow> PARAMS, MODERN;

// "CK_VERSION"
std::string classOf(const std::string& java);

// The row of the parameter's class.
const ParamRow& rowOf(const std::string& java);

// The row's parameter, with that many equal bytes in each of its arrays.
std::string filled(const std::string& java, std::size_t length, char byte);

} // namespace jni
