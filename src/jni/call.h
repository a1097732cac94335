// How a native runs. A native is one statement: callCryptoki with the Cryptoki function and its arguments in
// that function's order, each of them a small struct of arguments.h that says what happens to it at each
// stage:
//
//   findClass(env)           finds the class of an object that receives a result
//   isMissing()              whether the argument must be refused, with CKR_ARGUMENTS_BAD
//   convert(env[, memory])   makes the native value
//   convertLast(env)         the same, after all others, and nobody asks whether it failed
//   allocate(env, memory)    makes room for a result; false: the native returns CKR_HOST_MEMORY
//   handOn()                 a tuple of the values that the function takes for this argument
//   afterCall(env, rv)       what must be done whatever the call left behind
//   writeBack(env, rv)       writes results into Java objects
//   writeBackLast(env, rv)   the same, after all others
//   release(isRaised)        frees what is not in the memory of the call, or checks a length
//
// findClass, convert and both writeBacks return false with an exception pending; isRaised says that one is.
// A struct has only the stages that it needs. Each stage runs for all arguments, in their order, before the
// next one; release runs on every way out once conversion has begun.
#pragma once

#include <tuple>
#include <type_traits>

#include <jni.h>

#include "helper/convToJava.h"
#include "helper/memory.h"
#include "jni/arguments.h"
#include "jni/mutexCallbacks.h"
#include "util/fileVersion.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

// A stage of one argument; a stage that the argument lacks does nothing.
namespace stage {

template <typename Argument>
bool findClass(JNIEnv* env, Argument& argument)
{
    if constexpr (requires { argument.findClass(env); }) return argument.findClass(env);
    return true;
}

template <typename Argument>
bool isMissing(const Argument& argument)
{
    if constexpr (requires { argument.isMissing(); }) return argument.isMissing();
    return false;
}

template <typename Argument, typename Memory>
bool convert(JNIEnv* env, Memory& memory, Argument& argument)
{
    if constexpr (requires { argument.convert(env, memory); })
        return argument.convert(env, memory);
    else if constexpr (requires { argument.convert(env); })
        return argument.convert(env);
    else
        return true;
}

template <typename Argument>
void convertLast(JNIEnv* env, Argument& argument)
{
    if constexpr (requires { argument.convertLast(env); }) argument.convertLast(env);
}

template <typename Argument, typename Memory>
bool allocate(JNIEnv* env, Memory& memory, Argument& argument)
{
    if constexpr (requires { argument.allocate(env, memory); }) return argument.allocate(env, memory);
    return true;
}

template <typename Argument>
void afterCall(JNIEnv* env, CK_RV rv, Argument& argument)
{
    if constexpr (requires { argument.afterCall(env, rv); }) argument.afterCall(env, rv);
}

template <typename Argument>
bool writeBack(JNIEnv* env, CK_RV rv, Argument& argument)
{
    if constexpr (requires { argument.writeBack(env, rv); }) return argument.writeBack(env, rv);
    return true;
}

template <typename Argument>
bool writeBackLast(JNIEnv* env, CK_RV rv, Argument& argument)
{
    if constexpr (requires { argument.writeBackLast(env, rv); }) return argument.writeBackLast(env, rv);
    return true;
}

template <typename Argument>
void release(bool isRaised, Argument& argument)
{
    if constexpr (requires { argument.release(isRaised); }) argument.release(isRaised);
}

} // namespace stage

// Whether an argument has a stage that takes memory of the call.
template <typename Argument>
constexpr bool CONVERTS_INTO_MEMORY = requires(Argument argument, JNIEnv* env, CallMemory& memory)
{
    argument.convert(env, memory);
};
template <typename Argument>
constexpr bool ALLOCATES = requires(Argument argument, JNIEnv* env, CallMemory& memory)
{
    argument.allocate(env, memory);
};

struct NoMemory {};

template <typename... Arguments>
using MemoryOf = std::conditional_t<((CONVERTS_INTO_MEMORY<Arguments> || ALLOCATES<Arguments>) || ...),
    CallMemory, NoMemory>;

// Whether an exception may be pending after the call. Only the Java locking callbacks can raise one within
// it, and an argument that is not checked after its conversion: without them the JVM need not be asked.
template <typename... Arguments>
bool mayRaise()
{
    return (requires { Arguments::IS_UNCHECKED; } || ...) || hasInitArgs();
}

// From conversion to the last write-back. False with an exception pending.
template <typename Memory, typename Function, typename... Arguments>
[[gnu::always_inline]] inline bool convertAndCall(
    JNIEnv* env, Memory& memory, CK_RV& rv, Function function, Arguments&... arguments)
{
    if (!(stage::convert(env, memory, arguments) && ...)) return false;
    (stage::convertLast(env, arguments), ...);
    if (!(stage::allocate(env, memory, arguments) && ...)) {
        rv = CKR_HOST_MEMORY;
        return true;
    }
    // Asked before and after the call: meanwhile a registration may end, or another thread may make one.
    const bool asksJVM = mayRaise<Arguments...>();
    rv = std::apply(function, std::tuple_cat(arguments.handOn()...));
    (stage::afterCall(env, rv, arguments), ...);
    if ((asksJVM || hasInitArgs()) && env->ExceptionCheck()) return false;
    return (stage::writeBack(env, rv, arguments) && ...) && (stage::writeBackLast(env, rv, arguments) && ...);
}

// Runs a native through its stages. Returns a new CK_RV, or null with an exception pending. No conversion and
// no call follows one that has left an exception pending; Java never enters a native with one.
template <typename Function, typename... Arguments>
[[gnu::always_inline]] inline jobject callCryptoki(JNIEnv* env, Function function, Arguments... arguments)
{
    if (!(stage::findClass(env, arguments) && ...)) return nullptr;
    if ((stage::isMissing(arguments) || ...)) return ckRVToJRV(env, CKR_ARGUMENTS_BAD);
    MemoryOf<Arguments...> memory;
    CK_RV rv = CKR_OK;
    const bool isDone = convertAndCall(env, memory, rv, function, arguments...);
    (stage::release(!isDone, arguments), ...);
    return isDone ? ckRVToJRV(env, rv) : nullptr;
}

} // namespace zerlin
