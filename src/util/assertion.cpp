// The end of a failed assertion.
#include "util/assertion.h"

#include <cstdio>
#include <cstdlib>

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/util/assertion $\" \"$Revision: 1.1.1.2 $\"";

} // namespace

void assertionFailed(const char* expression, const char* source, const char* function, int line)
{
    std::fprintf(stderr, "%s:%d: %s: Assertion `%s' failed.\n", source, line, function, expression);
    std::abort();
}

} // namespace zerlin
