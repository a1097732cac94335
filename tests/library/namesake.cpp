// A Cryptoki library with a function of its own that is named like one of libzerlin.so. C_GetAttributeValue
// returns what that returns; the others fail.
#include "cryptoki/functions.h"

extern "C" CK_RV valError(const char*)
{
    return 0x80000005;
}

namespace zerlin {

std::atomic<const Functions*> foundFunctions;

const Functions& findFunctions()
{
    static Functions functions = failingFunctions();
    functions.standard.C_GetAttributeValue = [](CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR,
                                                 CK_ULONG) { return valError("CKR_OK"); };
    return functions;
}

} // namespace zerlin
