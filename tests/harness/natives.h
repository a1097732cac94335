// Calls natives as C functions, with Java arguments that a test can change one by one.
#pragma once

#include "fakes/recorder.h"
#include "halvorn_zerlin_Cryptoki.h"
#include "harness/jni_helpers.h"

#include <cstring>
#include <tuple>

#define NATIVE(name) Java_halvorn_zerlin_Cryptoki_##name

namespace jni {

using recorder::Argument, recorder::script;
using Lines = std::vector<std::string>;
using Arguments = std::span<const Argument>; // of a Cryptoki call

jobject session(JNIEnv* env, jlong value = 41);
jobject object(JNIEnv* env, jlong value);
jobject longRef(JNIEnv* env, jlong value);
jobject mechanismType(JNIEnv* env, jlong value);

// The object that a static Java method returns.
template <typename... Arguments>
jobject callStatic(
    JNIEnv* env, const char* path, const char* method, const char* signature, Arguments... args)
{
    const jclass cls = find(env, path);
    const jmethodID id = env->GetStaticMethodID(cls, method, signature);
    const jobject returned = env->CallStaticObjectMethod(cls, id, args...);
    check(env, method);
    env->DeleteLocalRef(cls);
    return returned;
}

// The objects as Java prints them, arrays with their contents: "[session 5, [1, 2], null]".
std::string text(JNIEnv* env, const std::vector<jobject>& shown);

// A native with its arguments.
struct Call {
    std::function<jobject(JNIEnv*, const std::vector<jvalue>&)> native;
    std::vector<jvalue> arguments;
    std::vector<bool> areObjects;

    jobject operator()(JNIEnv* env) const;
    std::string objects(JNIEnv* env) const; // as Java prints them
};

template <typename T>
jvalue pack(T value)
{
    jvalue packed{};
    std::memcpy(&packed, &value, sizeof value);
    return packed;
}

template <typename... Parameters>
Call call(
    jobject(JNICALL* native)(JNIEnv*, jclass, Parameters...), std::type_identity_t<Parameters>... arguments)
{
    const auto invoke = [native](JNIEnv* env, const std::vector<jvalue>& values) {
        auto next = values.begin();
        const std::tuple<JNIEnv*, jclass, Parameters...> all{
            env, nullptr, reinterpret_cast<const Parameters&>(*next++)...};
        return std::apply(native, all);
    };
    return {invoke, {pack(arguments)...}, {std::is_pointer_v<Parameters>...}};
}

// Locking callbacks; see TestCallbacks.java.
jobject callbacks(JNIEnv* env, const char* initials = "cdlu", jlong answer = 0, const char* mutex = "m");

// Registers them. Without them no exception can come out of the Cryptoki library.
void initialiseWithCallbacks(JNIEnv* env);

// The native makes the one Cryptoki call of that line, and returns what the Cryptoki library returned.
void expectCall(JNIEnv* env, const Call& made, const std::string& line);

// The native returns CKR_ARGUMENTS_BAD, or the other value given, and does nothing else.
void expectRefused(JNIEnv* env, const Call& made, CK_RV rv = CKR_ARGUMENTS_BAD);

} // namespace jni
