// The PKCS#11 module behind this library. It is found and loaded once, at the first call, and stays loaded.
#pragma once

// This library exports exactly the functions that the header declares; everything else is hidden.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

namespace softtoken {

struct Module {
    bool usable;
    // All members but C_GetFunctionList can be called. A function that the module lacks returns
    // CKR_FUNCTION_NOT_SUPPORTED; without a usable module every function returns CKR_GENERAL_ERROR.
    CK_FUNCTION_LIST functions;
    // Null if the module lacks the function; without a usable module it returns CKR_GENERAL_ERROR.
    decltype(&CT_CopyObject) copyObject;
    decltype(&CT_InitToken) initToken;
    decltype(&CT_ResetToken) resetToken;
};

// Loads the module that the environment variable ZERLIN_MODULE names, or else the default one. If it cannot,
// it prints the reason on standard error. The variable is ignored in set-user-ID programs.
Module loadModule();

// The module is never unloaded, because other threads may still run its code while the process ends.
inline const Module& loaded()
{
    static const Module module = loadModule();
    return module;
}

inline const CK_FUNCTION_LIST& functions()
{
    return loaded().functions;
}

} // namespace softtoken
