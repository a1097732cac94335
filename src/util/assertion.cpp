// Ends the process after a failed assertion.
#include "util/assertion.h"

#include "util/fileVersion.h"
#include <cstdio>
#include <cstdlib>

FILE_VERSION("1.1.1.2");

namespace zerlin {
void assertionFailed(const char* expression, const char* source, const char* function, int line)
{
    std::fprintf(stderr, "%s:%d: %s: Assertion `%s' failed.\n", source, line, function, expression);
    std::abort();
}

} // namespace zerlin
