#include "harness/natives.h"

namespace jni {

jobject session(JNIEnv* env, jlong value)
{
    return make(env, "halvorn/zerlin/CK_SESSION_HANDLE", "(J)V", value);
}

jobject object(JNIEnv* env, jlong value)
{
    return make(env, "halvorn/zerlin/CK_OBJECT_HANDLE", "(J)V", value);
}

jobject longRef(JNIEnv* env, jlong value)
{
    return make(env, "halvorn/zerlin/LongRef", "(J)V", value);
}

jobject mechanismType(JNIEnv* env, jlong value)
{
    return make(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", "(J)V", value);
}

std::string text(JNIEnv* env, const std::vector<jobject>& shown)
{
    const jobject all = objects(env, "java/lang/Object", shown);
    const jobject printed =
        callStatic(env, "java/util/Arrays", "deepToString", "([Ljava/lang/Object;)Ljava/lang/String;", all);
    return toString(env, static_cast<jstring>(printed));
}

// Overwrites the stack below, where the next call finds what is then not zero by chance.
[[gnu::noinline]] static void dirtyStack()
{
    char rubbish[1 << 16];
    std::memset(rubbish, 0x5a, sizeof rubbish);
    __asm__ volatile("" : : "r"(rubbish) : "memory");
}

jobject Call::operator()(JNIEnv* env) const
{
    dirtyStack();
    return native(env, arguments);
}

std::string Call::objects(JNIEnv* env) const
{
    std::vector<jobject> shown;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (areObjects[i]) shown.push_back(arguments[i].l);
    return text(env, shown);
}

jobject callbacks(JNIEnv* env, const char* initials, jlong answer, const char* mutex)
{
    return callStatic(env, "TestCallbacks", "answering",
        "(Ljava/lang/String;Ljava/lang/Object;J)Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS;", string(env, initials),
        mutex == nullptr ? nullptr : string(env, mutex), answer);
}

void initialiseWithCallbacks(JNIEnv* env)
{
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1Initialize), callbacks(env))(env)), script().result);
}

void expectCall(JNIEnv* env, const Call& made, const std::string& line)
{
    recorder::takeCalls();
    script().result = 0x80000100;
    EXPECT_EQ(rvOf(env, made(env)), 0x80000100) << line;
    EXPECT_EQ(recorder::takeCalls(), Lines{line});
}

void expectRefused(JNIEnv* env, const Call& made, CK_RV rv)
{
    const std::string before = made.objects(env);
    recorder::takeCalls();
    EXPECT_EQ(rvOf(env, made(env)), rv);
    EXPECT_EQ(recorder::takeCalls(), Lines{});
    EXPECT_EQ(made.objects(env), before);
}

} // namespace jni
