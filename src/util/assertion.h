// Assertions that are active in every build.
#pragma once

namespace zerlin {

// Prints source:line: function: Assertion `expression' failed. to standard error and aborts.
[[noreturn]] void assertionFailed(const char* expression, const char* source, const char* function, int line);

// The texts are the caller's, whatever the condition looks like here; function and line are the caller's own
// unless given.
inline void assertThat(bool condition, const char* expression, const char* source,
    const char* function = __builtin_FUNCTION(), int line = __builtin_LINE())
{
    if (!condition) [[unlikely]]
        assertionFailed(expression, source, function, line);
}

} // namespace zerlin
