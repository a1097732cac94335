// libcryptoki.so, the Cryptoki library whose functions the natives and the C functions call. It is loaded by
// JNI_OnLoad or, in a process that never called that, by the first call of a Cryptoki function.
#pragma once

#include <string>

namespace zerlin {

// Loads the Cryptoki library for Java, unless it is loaded: the file that is chosen, the embedded one if that
// is "embedded", or what the search finds if nothing is chosen. Returns an empty text, or why it cannot be
// used.
std::string loadLibrary(const std::string& chosen);

// The path of the file that holds this code; empty if the system cannot say.
std::string ownFile();

// Closes it: no native may run until loadLibrary has succeeded again. For a program that is linked with us it
// stays open.
void unloadLibrary();

} // namespace zerlin
