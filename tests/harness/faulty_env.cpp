// Wraps the entries of the JNI function table that can fail or that create, release or read something. The
// table of the real environment is replaced, not the environment: the JVM finds its thread by the
// environment's address.
#include "harness/faulty_env.h"

#include <algorithm>
#include <tuple>
#include <type_traits>
#include <utility>

namespace {

using Table = JNINativeInterface_;

const Table* real = nullptr;
Fault wanted;
Watched seen;
std::vector<jobject> localRefs;  // that the work created and that are alive
std::vector<std::size_t> frames; // how many local references there were when each was pushed
bool inReal = false;             // calls that arrive now come from Java's own natives

struct InReal {
    InReal() { inReal = true; }
    ~InReal() { inReal = false; }
};

template <auto Member>
constexpr std::string_view name()
{
    const std::string_view text = __PRETTY_FUNCTION__; // "... JNINativeInterface_::FindClass; ..."
    const std::size_t begin = text.find("_::") + 3;
    return text.substr(begin, text.find(';', begin) - begin);
}

bool failsNow(JNIEnv* env, std::string_view function)
{
    if (++seen.calls != wanted.call) return false;
    seen.failed = function;
    const jclass cls = real->FindClass(env, "java/lang/RuntimeException");
    real->ThrowNew(env, cls, "injected");
    real->DeleteLocalRef(env, cls);
    return true;
}

template <typename R>
R noted(std::string_view function, R result)
{
    if constexpr (std::is_convertible_v<R, jobject>) {
        if (result == nullptr) return result;
        (function.ends_with("GlobalRef") ? seen.globalRefs : localRefs).push_back(result);
        seen.maxLocalRefs = std::max(seen.maxLocalRefs, localRefs.size());
    } else if constexpr (std::is_same_v<R, const char*>) {
        if (result != nullptr) seen.buffers.push_back(result);
    } else if constexpr (std::is_same_v<R, jlong>) {
        seen.read.push_back(result);
    }
    return result;
}

template <bool canRaise, auto Member>
struct Wrapped;

template <bool canRaise, typename R, typename... A, R (JNICALL* Table::*Member)(JNIEnv*, A...)>
struct Wrapped<canRaise, Member> {
    static R JNICALL call(JNIEnv* env, A... arguments)
    {
        if (inReal) return (real->*Member)(env, arguments...);
        const InReal inside;
        constexpr std::string_view function = name<Member>();
        const std::tuple<JNIEnv*, A...> all(env, arguments...);
        [[maybe_unused]] const auto last = std::get<sizeof...(A)>(all);
        if constexpr (canRaise)
            if (failsNow(env, function)) {
                if constexpr (function == "PushLocalFrame") return JNI_ERR;
                return R();
            }
        if constexpr (std::is_convertible_v<R, jobject>)
            if (wanted.silent == function) return nullptr;
        if constexpr (function == "GetByteArrayRegion") seen.read.push_back(std::get<3>(all));
        if constexpr (function == "PushLocalFrame") frames.push_back(localRefs.size());
        if constexpr (function == "PopLocalFrame") {
            localRefs.resize(frames.back());
            frames.pop_back();
        }
        if constexpr (function == "ReleaseStringUTFChars") std::erase(seen.buffers, last);
        if constexpr (function.ends_with("GlobalRef")) std::erase(seen.globalRefs, last);
        if constexpr (function == "DeleteLocalRef")
            if (last != nullptr && std::erase(localRefs, last) == 0)
                seen.violations.push_back("DeleteLocalRef of a reference that is the caller's or gone");
        if constexpr (std::is_void_v<R>)
            (real->*Member)(env, arguments...);
        else
            return noted(function, (real->*Member)(env, arguments...));
    }
};

template <bool canRaise, auto... Members>
void wrap(Table& table)
{
    ((table.*Members = Wrapped<canRaise, Members>::call), ...);
}

} // namespace

Watched watch(JNIEnv* env, const Fault& fault, const std::function<void()>& work) noexcept
{
    using T = Table;
    T table = *env->functions;
    wrap<true, &T::FindClass, &T::GetFieldID, &T::GetMethodID, &T::AllocObject, &T::NewObjectV,
        &T::CallObjectMethodV, &T::CallLongMethodV, &T::CallIntMethodV, &T::CallBooleanMethodV,
        &T::CallByteMethodV, &T::CallCharMethodV, &T::CallVoidMethodV, &T::NewByteArray, &T::NewLongArray,
        &T::NewObjectArray, &T::GetObjectArrayElement, &T::SetObjectArrayElement, &T::NewGlobalRef,
        &T::NewWeakGlobalRef, &T::GetStringUTFChars, &T::ThrowNew, &T::PushLocalFrame>(table);
    wrap<false, &T::GetByteArrayRegion, &T::GetObjectClass, &T::NewLocalRef, &T::GetObjectField,
        &T::GetLongField, &T::ExceptionOccurred, &T::PopLocalFrame, &T::DeleteLocalRef, &T::DeleteGlobalRef,
        &T::DeleteWeakGlobalRef, &T::ReleaseStringUTFChars>(table);
    real = env->functions;
    wanted = fault;
    seen = {};
    localRefs.clear();
    env->functions = &table;
    work();
    env->functions = real;
    return seen;
}
