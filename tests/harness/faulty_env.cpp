// Wraps those entries of the JNI function table that the library uses. The table of the real environment is
// replaced, not the environment: the JVM finds its thread by the environment's address.
#include "harness/faulty_env.h"

#include <algorithm>
#include <tuple>
#include <type_traits>

namespace {

using Table = JNINativeInterface_;

// One run of `watch`. While it lives, the environment uses its table.
struct Run {
    JNIEnv* env;
    const Table* real;
    Fault fault;
    Table table = *real;
    Watched seen = {};
    std::vector<std::size_t> frames = {}; // how many local references there were when each was pushed
    bool inReal = false;                  // calls that arrive now come from Java's own natives

    ~Run();
};

Run* active = nullptr;

Run::~Run()
{
    env->functions = real;
    active = nullptr;
}

struct InReal {
    InReal() { active->inReal = true; }
    ~InReal() { active->inReal = false; }
};

template <auto Member>
constexpr std::string_view name()
{
    const std::string_view text = __PRETTY_FUNCTION__; // "... JNINativeInterface_::FindClass; ..."
    const std::size_t begin = text.find("_::") + 3;
    return text.substr(begin, text.find(';', begin) - begin);
}

// Returns the path of the class, or the name of the member, from a lookup's arguments.
template <typename... A>
const char* firstText(A... arguments)
{
    const char* text = nullptr;
    [[maybe_unused]] const auto look = [&](auto argument) {
        if constexpr (std::is_same_v<decltype(argument), const char*>) text = text ? text : argument;
    };
    (look(arguments), ...);
    return text;
}

bool failsNow(std::string_view function, const char* lookedUp)
{
    const bool injected = ++active->seen.calls == active->fault.call;
    const bool isMissing = lookedUp != nullptr && active->fault.lookup == lookedUp;
    if (!injected && !isMissing) return false;
    active->seen.failed = function;
    const char* const missing = function == "FindClass"    ? "java/lang/NoClassDefFoundError"
                                : function == "GetFieldID" ? "java/lang/NoSuchFieldError"
                                                           : "java/lang/NoSuchMethodError";
    JNIEnv* const env = active->env;
    const jclass cls = active->real->FindClass(env, injected ? "java/lang/RuntimeException" : missing);
    active->real->ThrowNew(env, cls, injected ? "injected" : lookedUp);
    active->real->DeleteLocalRef(env, cls);
    return true;
}

template <typename R>
void noteResult(std::string_view function, R result)
{
    Watched& seen = active->seen;
    if constexpr (std::is_convertible_v<R, jobject>) {
        if (result == nullptr || function == "NewWeakGlobalRef") return;
        (function == "NewGlobalRef" ? seen.globalRefs : seen.localRefs).push_back(result);
        seen.maxLocalRefs = std::max(seen.maxLocalRefs, seen.localRefs.size());
    } else if constexpr (std::is_same_v<R, const char*>) {
        if (result != nullptr) seen.buffers.push_back(result);
    } else if constexpr (std::is_same_v<R, jlong>) {
        seen.read.push_back(result);
    }
}

template <bool canRaise, auto Member>
struct Wrapped;

template <bool canRaise, typename R, typename... A, R (JNICALL* Table::*Member)(JNIEnv*, A...)>
struct Wrapped<canRaise, Member> {
    static R JNICALL call(JNIEnv* env, A... arguments)
    {
        if (active->inReal) return (active->real->*Member)(env, arguments...);
        const InReal inReal;
        constexpr std::string_view function = name<Member>();
        if (active->real->ExceptionCheck(env) && function != "ExceptionOccurred") {
            active->seen.violations.push_back(std::string(function) + " with an exception pending");
        } else if (canRaise && failsNow(function, firstText(arguments...))) {
            return R();
        }
        if constexpr (std::is_convertible_v<R, jobject>)
            if (active->fault.silent == function) return R();
        if constexpr (std::is_void_v<R>) {
            (active->real->*Member)(env, arguments...);
            if constexpr (name<Member>() == "GetByteArrayRegion")
                active->seen.read.push_back(std::get<2>(std::tuple(arguments...)));
        } else {
            const R result = (active->real->*Member)(env, arguments...);
            noteResult(function, result);
            return result;
        }
    }
};

// JNI allows these while an exception is pending.

void JNICALL deleteLocalRef(JNIEnv* env, jobject gone)
{
    if (!active->inReal && gone != nullptr && std::erase(active->seen.localRefs, gone) == 0) {
        active->seen.violations.push_back("DeleteLocalRef of a reference that is the caller's or gone");
    }
    active->real->DeleteLocalRef(env, gone);
}

jint JNICALL pushLocalFrame(JNIEnv* env, jint capacity)
{
    if (active->inReal) return active->real->PushLocalFrame(env, capacity);
    const InReal inReal;
    if (failsNow("PushLocalFrame", nullptr)) return JNI_ENOMEM;
    active->frames.push_back(active->seen.localRefs.size());
    return active->real->PushLocalFrame(env, capacity);
}

jobject JNICALL popLocalFrame(JNIEnv* env, jobject result)
{
    if (!active->inReal) {
        active->seen.localRefs.resize(active->frames.back());
        active->frames.pop_back();
    }
    return active->real->PopLocalFrame(env, result);
}

void JNICALL deleteGlobalRef(JNIEnv* env, jobject gone)
{
    std::erase(active->seen.globalRefs, gone);
    active->real->DeleteGlobalRef(env, gone);
}

void JNICALL releaseStringUTFChars(JNIEnv* env, jstring string, const char* gone)
{
    std::erase(active->seen.buffers, gone);
    active->real->ReleaseStringUTFChars(env, string, gone);
}

template <bool canRaise, auto... Members>
void wrap(Table& table)
{
    ((table.*Members = Wrapped<canRaise, Members>::call), ...);
}

void wrapAll(Table& table)
{
    using T = Table;
    wrap<true, &T::FindClass, &T::GetFieldID, &T::GetMethodID, &T::AllocObject, &T::NewObjectV,
        &T::CallObjectMethodV, &T::CallLongMethodV, &T::CallIntMethodV, &T::CallBooleanMethodV,
        &T::CallByteMethodV, &T::CallCharMethodV, &T::CallVoidMethodV, &T::NewByteArray, &T::NewLongArray,
        &T::NewObjectArray, &T::GetObjectArrayElement, &T::SetObjectArrayElement, &T::NewGlobalRef,
        &T::NewWeakGlobalRef, &T::GetStringUTFChars, &T::ThrowNew>(table);
    // The region functions raise an exception only if the region lies outside the array.
    wrap<false, &T::GetByteArrayRegion, &T::GetLongArrayRegion, &T::GetIntArrayRegion,
        &T::GetBooleanArrayRegion, &T::GetCharArrayRegion, &T::SetByteArrayRegion, &T::SetLongArrayRegion,
        &T::GetStringUTFRegion, &T::GetStringLength, &T::GetObjectClass, &T::IsInstanceOf, &T::NewLocalRef,
        &T::GetArrayLength, &T::GetStringUTFLength, &T::GetObjectField, &T::GetLongField, &T::GetIntField,
        &T::GetByteField, &T::GetBooleanField, &T::SetObjectField, &T::SetLongField, &T::SetIntField,
        &T::SetByteField, &T::SetBooleanField, &T::Throw, &T::ExceptionOccurred>(table);
    table.PushLocalFrame = pushLocalFrame;
    table.PopLocalFrame = popLocalFrame;
    table.DeleteLocalRef = deleteLocalRef;
    table.DeleteGlobalRef = deleteGlobalRef;
    table.ReleaseStringUTFChars = releaseStringUTFChars;
}

} // namespace

Watched watch(JNIEnv* env, const Fault& fault, const std::function<void()>& work)
{
    Run run{env, env->functions, fault};
    wrapAll(run.table);
    active = &run;
    env->functions = &run.table;
    work();
    return run.seen;
}
