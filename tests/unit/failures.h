// Lets one JNI call or one allocation of a piece of work fail after the other, and catches the last words of
// a process that an assertion ends.
#pragma once

#include "failing_alloc.h"
#include "faulty_env.h"
#include "jvm.h"
#include "natives.h"

#include <csignal>
#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

namespace jni {

// Once with every lookup made anew, once with all remembered: the exception comes out, no JNI call follows
// that it forbids, and nothing native is left. The work is prepared anew each time. Answers how many calls
// failed.
inline int failEachJniCall(JNIEnv* env, const std::function<std::function<void()>()>& prepare)
{
    int failed = 0;
    for (const bool remembers : {false, true}) {
        for (int number = 1;; ++number) {
            const LocalFrame frame(env);
            if (!remembers) JNI_OnUnload(jvm(), nullptr);
            const std::function<void()> work = prepare();
            const HeapWatch heap;
            const Watched watched = watch(env, {.call = number}, work);
            const bool wasMet = !watched.failed.empty();
            EXPECT_EQ(takeException(env), wasMet ? "java.lang.RuntimeException: injected" : "")
                << watched.failed << ", call " << number;
            EXPECT_EQ(watched.violations, Lines{}) << watched.failed << ", call " << number;
            EXPECT_EQ(heap.blocks.size(), 0U) << "left after " << watched.failed << ", call " << number;
            EXPECT_TRUE(watched.buffers.empty());
            EXPECT_LE(watched.maxLocalRefs, 16U);
            if (!wasMet) break;
            ++failed;
        }
    }
    return failed;
}

// What each failed allocation led to: the pending exception, or else what the work answers. Nothing is left.
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

// What the work, in a child process, says on standard error before it aborts, without the line number.
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
