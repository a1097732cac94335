// The PKCS#11 module behind this library. It is found and loaded once, at the first call, and stays loaded.
#pragma once

#include "cryptoki/functions.h"

namespace softtoken {

// Whether there is a module to call. A function that the module lacks returns CKR_FUNCTION_NOT_SUPPORTED; a
// vendor function that it lacks is null in zerlin::allFunctions.
bool isUsable();

} // namespace softtoken
