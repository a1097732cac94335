// Wraps those entries of the JNI function table that a library like this one can use. The table of the real
// environment is replaced, not the environment: the JVM finds its thread by the environment's address.
#include "faulty_env.h"

#include <algorithm>
#include <stdexcept>
#include <type_traits>

namespace {

using Table = JNINativeInterface_;

enum class Kind {
    raises,      // can raise an exception
    makesGlobal, // these two raise as well, and give no local reference
    makesWeak,
    plain,   // cannot raise, must not be called with an exception pending
    allowed, // may be called with an exception pending, like those that follow
    deletesLocal,
    deletesGlobal,
    releases,
};

// One run of `watch`; while it lives the environment's table is its own.
struct Run {
    Run(JNIEnv* jniEnv, const Fault& wanted);
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    JNIEnv* env;
    const Table* real;
    Table table;
    Fault fault;
    Watched seen = {};
    bool inReal = false; // a call that arrives meanwhile comes from Java's own natives
};

Run* active = nullptr;

template <auto Member>
constexpr std::string_view name()
{
    const std::string_view text = __PRETTY_FUNCTION__; // "... JNINativeInterface_::FindClass; ..."
    const std::string_view owner = "JNINativeInterface_::";
    const std::size_t begin = text.find(owner) + owner.size();
    return text.substr(begin, text.find_first_of(";]", begin) - begin);
}

template <typename T>
bool remove(std::vector<T>& live, T gone)
{
    const auto found = std::find(live.begin(), live.end(), gone);
    if (found == live.end()) return false;
    live.erase(found);
    return true;
}

void raise(const char* errorPath, const char* message)
{
    JNIEnv* const env = active->env;
    const jclass cls = active->real->FindClass(env, errorPath);
    active->real->ThrowNew(env, cls, message);
    active->real->DeleteLocalRef(env, cls);
}

const char* lookupError(std::string_view function)
{
    if (function == "FindClass") return "java/lang/NoClassDefFoundError";
    if (function == "GetFieldID") return "java/lang/NoSuchFieldError";
    if (function == "GetMethodID") return "java/lang/NoSuchMethodError";
    return nullptr;
}

const char* lookedUp()
{
    return "";
}

template <typename... Rest>
const char* lookedUp(const char* path, Rest...)
{
    return path;
}

template <typename First, typename... Rest>
const char* lookedUp(First, Rest... rest)
{
    return lookedUp(rest...);
}

bool failsNow(std::string_view function, const char* pathOrName)
{
    const bool injected = ++active->seen.calls == active->fault.call;
    const char* const error = lookupError(function);
    const bool isMissing = error != nullptr && active->fault.lookup == pathOrName;
    if (!injected && !isMissing) return false;
    active->seen.failed = function;
    if (injected) {
        raise("java/lang/RuntimeException", "injected");
    } else {
        raise(error, pathOrName);
    }
    return true;
}

template <Kind kind, typename R>
void noteResult(R result)
{
    Watched& seen = active->seen;
    if (result == R()) return;
    if constexpr (kind == Kind::makesWeak) {
        return;
    } else if constexpr (kind == Kind::makesGlobal) {
        seen.globalRefs.push_back(result);
    } else if constexpr (std::is_convertible_v<R, jobject>) {
        seen.localRefs.push_back(result);
        seen.maxLocalRefs = std::max(seen.maxLocalRefs, seen.localRefs.size());
    } else if constexpr (std::is_pointer_v<R> && !std::is_class_v<std::remove_pointer_t<R>>) {
        seen.buffers.push_back(result);
    }
}

void noteDeletedLocal(jobject reference)
{
    if (reference == nullptr || remove(active->seen.localRefs, reference)) return;
    active->seen.violations.push_back("DeleteLocalRef of a reference that is the caller's or gone");
}

template <typename Array, typename Element, typename... Mode>
void noteReleased(Array, Element* buffer, Mode... mode)
{
    const bool keeps = ((mode == JNI_COMMIT) || ...);
    if (!keeps) remove(active->seen.buffers, static_cast<const void*>(buffer));
}

struct Entered {
    explicit Entered(bool& flag) : entered(flag) { entered = true; }
    ~Entered() { entered = false; }
    Entered(const Entered&) = delete;
    Entered& operator=(const Entered&) = delete;

    bool& entered;
};

template <Kind kind, auto Member>
struct Wrapped;

template <Kind kind, typename R, typename... A, R (JNICALL* Table::*Member)(JNIEnv*, A...)>
struct Wrapped<kind, Member> {
    static R JNICALL call(JNIEnv* env, A... arguments)
    {
        if (active->inReal) return (active->real->*Member)(env, arguments...);
        const Entered entered(active->inReal);
        return watched(env, arguments...);
    }

    static R watched(JNIEnv* env, A... arguments)
    {
        constexpr bool canRaise =
            kind == Kind::raises || kind == Kind::makesGlobal || kind == Kind::makesWeak;
        if constexpr (canRaise || kind == Kind::plain) {
            if (active->real->ExceptionCheck(env)) {
                active->seen.violations.push_back(std::string(name<Member>()) + " with an exception pending");
            } else if constexpr (canRaise) {
                if (failsNow(name<Member>(), lookedUp(arguments...))) return R();
            }
        }
        if constexpr (kind == Kind::deletesLocal) noteDeletedLocal(arguments...);
        if constexpr (kind == Kind::deletesGlobal) remove(active->seen.globalRefs, arguments...);
        if constexpr (kind == Kind::releases) noteReleased(arguments...);
        if constexpr (std::is_void_v<R>) {
            (active->real->*Member)(env, arguments...);
        } else {
            const R result = (active->real->*Member)(env, arguments...);
            noteResult<kind>(result);
            return result;
        }
    }
};

template <Kind kind, auto... Members>
void wrap(Table& table)
{
    ((table.*Members = Wrapped<kind, Members>::call), ...);
}

void wrapAll(Table& table)
{
    using T = Table;
    wrap<Kind::raises, &T::FindClass, &T::GetFieldID, &T::GetMethodID, &T::AllocObject, &T::NewObjectV,
        &T::CallObjectMethodV, &T::CallLongMethodV, &T::CallIntMethodV, &T::CallBooleanMethodV,
        &T::CallByteMethodV, &T::CallCharMethodV, &T::CallVoidMethodV, &T::NewString, &T::NewStringUTF,
        &T::NewByteArray, &T::NewLongArray, &T::NewObjectArray, &T::GetObjectArrayElement,
        &T::SetObjectArrayElement, &T::GetByteArrayRegion, &T::GetLongArrayRegion, &T::GetIntArrayRegion,
        &T::GetBooleanArrayRegion, &T::GetCharArrayRegion, &T::SetByteArrayRegion, &T::SetLongArrayRegion,
        &T::SetIntArrayRegion, &T::SetBooleanArrayRegion, &T::SetCharArrayRegion, &T::GetByteArrayElements,
        &T::GetLongArrayElements, &T::GetIntArrayElements, &T::GetBooleanArrayElements,
        &T::GetCharArrayElements, &T::GetPrimitiveArrayCritical, &T::GetStringUTFChars, &T::GetStringChars,
        &T::GetStringUTFRegion, &T::GetStringRegion, &T::ThrowNew>(table);
    wrap<Kind::makesGlobal, &T::NewGlobalRef>(table);
    wrap<Kind::makesWeak, &T::NewWeakGlobalRef>(table);
    wrap<Kind::plain, &T::GetObjectClass, &T::GetSuperclass, &T::IsInstanceOf, &T::IsAssignableFrom,
        &T::IsSameObject, &T::NewLocalRef, &T::GetArrayLength, &T::GetStringLength, &T::GetStringUTFLength,
        &T::GetObjectField, &T::GetLongField, &T::GetIntField, &T::GetByteField, &T::GetBooleanField,
        &T::GetCharField, &T::SetObjectField, &T::SetLongField, &T::SetIntField, &T::SetByteField,
        &T::SetBooleanField, &T::SetCharField, &T::Throw>(table);
    wrap<Kind::allowed, &T::ExceptionOccurred>(table);
    wrap<Kind::deletesLocal, &T::DeleteLocalRef>(table);
    wrap<Kind::deletesGlobal, &T::DeleteGlobalRef>(table);
    wrap<Kind::releases, &T::ReleaseByteArrayElements, &T::ReleaseLongArrayElements,
        &T::ReleaseIntArrayElements, &T::ReleaseBooleanArrayElements, &T::ReleaseCharArrayElements,
        &T::ReleasePrimitiveArrayCritical, &T::ReleaseStringUTFChars, &T::ReleaseStringChars>(table);
}

Run::Run(JNIEnv* jniEnv, const Fault& wanted)
    : env(jniEnv), real(jniEnv->functions), table(*real), fault(wanted)
{
    if (active != nullptr) throw std::logic_error("a watch inside a watch");
    wrapAll(table);
    active = this;
    env->functions = &table;
}

Run::~Run()
{
    env->functions = real;
    active = nullptr;
}

} // namespace

Watched watch(JNIEnv* env, const Fault& fault, const std::function<void()>& work)
{
    Run run(env, fault);
    work();
    return run.seen;
}
