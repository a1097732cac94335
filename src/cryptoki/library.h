// libcryptoki.so, the Cryptoki library whose functions the natives and the C functions call. It is loaded by
// JNI_OnLoad or, in a process that never called that, by the first call of a Cryptoki function.
#pragma once

#include <string>

namespace zerlin {

// Loads libcryptoki.so for Java, unless it is loaded. Returns an empty text, or why it cannot be used.
std::string loadLibrary();

// Lets go of it: the natives are never called again, or loadLibrary comes first.
void unloadLibrary();

} // namespace zerlin
