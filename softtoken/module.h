// The PKCS#11 module behind this library: found, loaded and resolved at the first call, once and for good.
#pragma once

// What the header declares is what this library exports; all else is hidden.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

namespace softtoken {

struct Module {
    bool usable;
    // No member is null but C_GetFunctionList. What the module lacks answers CKR_FUNCTION_NOT_SUPPORTED, and
    // without a usable module everything answers CKR_GENERAL_ERROR.
    CK_FUNCTION_LIST functions;
    // Null where the module lacks them; CKR_GENERAL_ERROR without a usable module.
    decltype(&CT_CopyObject) copyObject;
    decltype(&CT_InitToken) initToken;
    decltype(&CT_ResetToken) resetToken;
};

// Opens the module that ZERLIN_MODULE names, or else the default one; tells on standard error why it cannot.
Module loadModule();

// The module is never unloaded: other threads may still be in it while the process ends.
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
