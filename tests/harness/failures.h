// Runs a piece of work again and again while each of its JNI calls or allocations fails in turn, and catches
// the last output of a process that an assertion aborts.
#pragma once

#include "harness/failing_alloc.h"
#include "harness/faulty_env.h"
#include "harness/jvm.h"
#include "harness/natives.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

namespace jni {

// Fails each JNI call in turn, once with no lookup remembered and once with all. Each time the exception
// comes out, no JNI call follows that it forbids, the Cryptoki library is called as if nothing failed or not
// at all, and nothing native is left. The work is prepared again each time; a native returns null. Returns
// how many calls failed.
template <typename Prepare>
int failEachJniCall(JNIEnv* env, const Prepare& prepare, bool callsAnyway = false)
{
    int failed = 0;
    bool calledWhilePending = false;
    recorder::script().onCall = [&] { calledWhilePending |= env->ExceptionCheck() != JNI_FALSE; };
    for (const bool remembers : {false, true}) {
        std::string usual; // the exception of the work itself
        Lines lines;
        int calls = 0;
        for (int number = 0;; ++number) { // 0: none fails
            const LocalFrame frame(env);
            if (!remembers) JNI_OnUnload(jvm(), nullptr);
            const auto work = prepare();
            recorder::takeCalls();
            const HeapWatch heap;
            constexpr bool isNative = std::is_same_v<decltype(work()), jobject>;
            bool hasReturned = false;
            const Watched watched = watch(env, {.call = number}, [&] {
                if constexpr (isNative)
                    hasReturned = work() != nullptr;
                else
                    work();
            });
            const std::string exception = takeException(env);
            const Lines seen = recorder::takeCalls();
            if (number == 0) usual = exception, lines = seen, calls = watched.calls;
            const bool wasMet = !watched.failed.empty();
            SCOPED_TRACE(watched.failed + ", call " + std::to_string(number));
            EXPECT_EQ(exception, wasMet ? "java.lang.RuntimeException: injected" : usual);
            // A native still returns its CK_RV when only its value could not be set.
            const bool isUnset = number == calls && watched.failed == "GetFieldID";
            EXPECT_TRUE(!wasMet || !isNative || hasReturned == isUnset);
            EXPECT_TRUE(callsAnyway || std::ranges::mismatch(seen, lines).in1 == seen.end());
            EXPECT_EQ(watched.violations, Lines{});
            EXPECT_EQ(heap.blocks.size(), 0U);
            EXPECT_TRUE(watched.buffers.empty() && watched.globalRefs.empty());
            EXPECT_LE(watched.maxLocalRefs, 16U);
            if (number > 0 && !wasMet) break;
            if (number > 0) ++failed;
        }
    }
    EXPECT_TRUE(callsAnyway || !calledWhilePending) << "a call while an exception is pending";
    recorder::script().onCall = {};
    return failed;
}

// Fails each allocation in turn. Returns what each led to: the pending exception, or else the work's own
// result. No memory is left.
inline Lines failEachAllocation(JNIEnv* env, const std::function<std::string()>& work)
{
    Lines outcomes;
    for (int number = 1;; ++number) {
        const LocalFrame frame(env);
        const HeapWatch heap;
        failAllocation(number);
        const std::string answer = work();
        const bool wasMet = allocationFailed();
        failAllocation(0);
        const std::string exception = takeException(env);
        EXPECT_EQ(heap.blocks.size(), 0U) << "left after allocation " << number;
        if (!wasMet) return outcomes;
        outcomes.push_back(exception.empty() ? answer : exception);
    }
}

inline const char* const NO_MEMORY = "java.lang.OutOfMemoryError: no native memory left";

// Runs the work in a child process and returns what it prints before it aborts, without the line number.
inline std::string lastWords(const std::function<void()>& work)
{
    std::FILE* const output = std::tmpfile();
    const pid_t child = fork();
    if (child == 0) {
        dup2(fileno(output), STDERR_FILENO);
        work();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::rewind(output);
    char text[1024];
    std::string said(text, std::fread(text, 1, sizeof text, output));
    std::fclose(output);
    if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGABRT) return "not aborted: " + said;
    const std::size_t line = said.find(':');
    return said.erase(line, said.find(':', line + 1) - line);
}

inline std::string assertion(const char* source, const std::string& function, const std::string& expression)
{
    return std::string(source) + ": " + function + ": Assertion `" + expression + "' failed.\n";
}

} // namespace jni
