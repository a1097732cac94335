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

inline jobject session(JNIEnv* env, jlong value = 41)
{
    return make(env, "halvorn/zerlin/CK_SESSION_HANDLE", "(J)V", value);
}
inline jobject object(JNIEnv* env, jlong value)
{
    return make(env, "halvorn/zerlin/CK_OBJECT_HANDLE", "(J)V", value);
}
inline jobject longRef(JNIEnv* env, jlong value)
{
    return make(env, "halvorn/zerlin/LongRef", "(J)V", value);
}
inline jobject mechanismType(JNIEnv* env, jlong value)
{
    return make(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", "(J)V", value);
}

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
inline std::string text(JNIEnv* env, const std::vector<jobject>& shown)
{
    const jobject all = objects(env, "java/lang/Object", shown);
    const jobject printed =
        callStatic(env, "java/util/Arrays", "deepToString", "([Ljava/lang/Object;)Ljava/lang/String;", all);
    return toString(env, static_cast<jstring>(printed));
}

// Overwrites the stack below, where the next call finds what is then not zero by chance.
[[gnu::noinline]] inline void dirtyStack()
{
    char rubbish[1 << 16];
    std::memset(rubbish, 0x5a, sizeof rubbish);
    __asm__ volatile("" : : "r"(rubbish) : "memory");
}

// A native with its arguments.
struct Call {
    std::function<jobject(JNIEnv*, const std::vector<jvalue>&)> native;
    std::vector<jvalue> arguments;
    std::vector<bool> areObjects;

    jobject operator()(JNIEnv* env) const
    {
        dirtyStack();
        return native(env, arguments);
    }

    std::string objects(JNIEnv* env) const
    {
        std::vector<jobject> shown;
        for (std::size_t i = 0; i < arguments.size(); ++i)
            if (areObjects[i]) shown.push_back(arguments[i].l);
        return text(env, shown);
    }
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
inline jobject callbacks(
    JNIEnv* env, const char* initials = "cdlu", jlong answer = 0, const char* mutex = "m")
{
    return callStatic(env, "TestCallbacks", "answering",
        "(Ljava/lang/String;Ljava/lang/Object;J)Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS;", string(env, initials),
        mutex == nullptr ? nullptr : string(env, mutex), answer);
}

// Registers them. Without them no exception can come out of the Cryptoki library.
inline void initialiseWithCallbacks(JNIEnv* env)
{
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1Initialize), callbacks(env))(env)), script().result);
}

// The native makes the one Cryptoki call of that line, and returns what the Cryptoki library returned.
inline void expectCall(JNIEnv* env, const Call& made, const std::string& line)
{
    recorder::takeCalls();
    script().result = 0x80000100;
    EXPECT_EQ(rvOf(env, made(env)), 0x80000100) << line;
    EXPECT_EQ(recorder::takeCalls(), Lines{line});
}

// The native returns CKR_ARGUMENTS_BAD, or the other value given, and does nothing else.
inline void expectRefused(JNIEnv* env, const Call& made, CK_RV rv = CKR_ARGUMENTS_BAD)
{
    const std::string before = made.objects(env);
    recorder::takeCalls();
    EXPECT_EQ(rvOf(env, made(env)), rv);
    EXPECT_EQ(recorder::takeCalls(), Lines{});
    EXPECT_EQ(made.objects(env), before);
}

} // namespace jni
