// Runs a piece of work again and again while each of its JNI calls or allocations fails in turn, and catches
// the last output of a process that an assertion aborts.
#pragma once

#include "harness/failing_alloc.h"
#include "harness/faulty_env.h"
#include "harness/jvm.h"
#include "harness/natives.h"
#include "helper/jutil.h"

#include <algorithm>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace jni {

// Fails each JNI call in turn, with no lookup remembered. Each time the exception comes out, no JNI call
// follows that it forbids, the Cryptoki library is called as if nothing failed or not at all, and nothing
// native is left. The work is prepared again each time. Returns how many calls failed.
inline int failEachJniCall(
    JNIEnv* env, const std::function<std::function<void()>()>& prepare, bool callsAnyway = false)
{
    bool calledWhilePending = false;
    script().onCall = [&] { calledWhilePending |= env->ExceptionCheck() != JNI_FALSE; };
    std::string usual; // the exception of the work itself
    Lines lines;
    int calls = 0;
    for (int number = 0; number <= calls; ++number) { // 0: none fails
        const LocalFrame frame(env);
        JNI_OnUnload(jvm(), nullptr);
        const auto work = prepare();
        recorder::takeCalls();
        const HeapWatch heap;
        const Watched watched = watch(env, {.call = number}, [&] { work(), zerlin::forgetLookups(env); });
        const std::string exception = takeException(env);
        const Lines seen = recorder::takeCalls();
        if (number == 0) usual = exception, lines = seen, calls = watched.calls;
        SCOPED_TRACE(watched.failed + ", call " + std::to_string(number));
        EXPECT_EQ(exception, number > 0 ? "java.lang.RuntimeException: injected" : usual);
        EXPECT_TRUE(callsAnyway || std::ranges::mismatch(seen, lines).in1 == seen.end());
        EXPECT_EQ(watched.violations, Lines{});
        EXPECT_EQ(heap.blocks.size(), 0U);
        EXPECT_TRUE(watched.buffers.empty() && watched.globalRefs.empty());
        EXPECT_LE(watched.maxLocalRefs, 16U);
    }
    EXPECT_TRUE(callsAnyway || !calledWhilePending) << "a call while an exception is pending";
    script().onCall = {};
    return calls;
}

inline const char* const NO_MEMORY = "java.lang.OutOfMemoryError: no native memory left";

// Fails each allocation in turn. No memory is left. Returns what they led to other than that exception: other
// exceptions, and results of the work.
inline Lines failEachAllocation(JNIEnv* env, const std::function<std::string()>& work)
{
    Lines others;
    for (int number = 1;; ++number) {
        const LocalFrame frame(env);
        const HeapWatch heap;
        failAllocation(number);
        const std::string answer = work();
        const bool wasMet = allocationFailed();
        failAllocation(0);
        const std::string exception = takeException(env);
        EXPECT_EQ(heap.blocks.size(), 0U) << "left after allocation " << number;
        if (!wasMet) return others;
        if (exception != NO_MEMORY) others.push_back(exception.empty() ? answer : exception);
    }
}

// Runs the work in a child process and returns what it prints before it aborts, without the line number.
inline std::string lastWords(const std::function<void()>& work)
{
    testing::internal::CaptureStderr();
    if (fork() == 0) alarm(60), work(), _exit(0); // a lock may be held by a thread that the child has not
    int status = 0;
    wait(&status);
    const std::string said = testing::internal::GetCapturedStderr();
    if (WTERMSIG(status) != SIGABRT) return "not aborted: " + said;
    std::string words;
    for (std::size_t i = 0; i < said.size(); ++i) {
        const std::size_t end = said.find_first_not_of("0123456789", i + 1);
        if (said[i] == ':' && end > i + 1 && end < said.size() && said[end] == ':') i = end;
        words += said[i];
    }
    return words;
}

} // namespace jni
