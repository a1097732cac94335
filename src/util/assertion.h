// Assertions that are active in every build.
#pragma once

namespace zerlin {

// Prints the line "source:line: function: Assertion `expression' failed." to standard error and aborts.
[[noreturn]] void assertionFailed(const char* expression, const char* source, const char* function, int line);

// The caller passes the texts of the message, because they need not agree with this source. Function and line
// are by default those of the caller.
inline void assertThat(bool condition, const char* expression, const char* source,
    const char* function = __builtin_FUNCTION(), int line = __builtin_LINE())
{
    if (!condition) [[unlikely]]
        assertionFailed(expression, source, function, line);
}

} // namespace zerlin
