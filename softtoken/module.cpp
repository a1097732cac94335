// Finds and loads the module, and looks up its functions.
#include "module.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

namespace softtoken {
namespace {

using zerlin::Functions;

constexpr const char* DEFAULT_MODULE = "/usr/lib/softhsm/libsofthsm2.so";
constexpr const char* DEFAULT_PACKAGE = sizeof(void*) == 4 ? "libsofthsm2:i386" : "libsofthsm2";

// The loaded file (program or library) that contains an address.
const void* imageOf(const void* address)
{
    Dl_info info;
    return dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

// The symbol of that name that the module itself exports; null if there is none. Symbols of the libraries
// that it is linked with do not count.
void* exported(void* handle, const void* image, const char* name)
{
    void* const symbol = dlsym(handle, name);
    return symbol != nullptr && imageOf(symbol) == image ? symbol : nullptr;
}

template <typename... Args>
CK_RV notSupported(Args...)
{
    return CKR_FUNCTION_NOT_SUPPORTED;
}

template <typename... Args>
void resolve(CK_RV (*&function)(Args...), void* symbol)
{
    if (symbol != nullptr) zerlin::setFunction(function, symbol);
    if (function == nullptr) function = notSupported<Args...>;
}

Functions unusable(const char* path, const char* reason)
{
    std::fprintf(stderr,
        "zerlin: cannot use the PKCS#11 module %s (%s); install the package %s, "
        "or set ZERLIN_MODULE to the path of another %zu-bit module\n",
        path, reason, DEFAULT_PACKAGE, 8 * sizeof(void*));
    return zerlin::failingFunctions();
}

// Prefers the functions that the module exports to those in its function list. If a program is linked with
// this library, the dynamic linker fills the module's list with our functions instead of the module's own.
Functions resolved(void* handle, const void* image, const CK_FUNCTION_LIST* list)
{
    // C_WaitForSlotEvent was added at the end of the list in version 2.01: older lists are shorter.
    const bool complete = list->version.major > 2 || list->version.minor >= 1;
    Functions found{};
    std::memcpy(&found.standard, list,
        complete ? sizeof(CK_FUNCTION_LIST) : offsetof(CK_FUNCTION_LIST, C_WaitForSlotEvent));
    zerlin::forEachStandardFunction([&](const char* name, auto member) {
        resolve(found.standard.*member, exported(handle, image, name));
    });
    zerlin::forEachVendorFunction([&](const char* name, auto member) {
        zerlin::setFunction(found.*member, exported(handle, image, name));
    });
    return found;
}

// Loads the module that the environment variable ZERLIN_MODULE names, or else the default one. The variable
// is ignored in set-user-ID programs. The module is never unloaded, because other threads may still run its
// code while the process ends.
Functions loadModule()
{
    const char* const chosen = secure_getenv("ZERLIN_MODULE");
    const char* const path = chosen != nullptr && *chosen != '\0' ? chosen : DEFAULT_MODULE;

    void* const handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) return unusable(path, dlerror());
    void* const getList = dlsym(handle, "C_GetFunctionList");
    if (getList == nullptr) return unusable(path, "it has no C_GetFunctionList");
    const void* const image = imageOf(getList);
    if (image == imageOf(reinterpret_cast<const void*>(isUsable)))
        return unusable(path, "it is this library");

    CK_FUNCTION_LIST_PTR list = nullptr;
    const CK_RV rv = reinterpret_cast<CK_C_GetFunctionList>(getList)(&list);
    if (rv != CKR_OK || list == nullptr) return unusable(path, "its C_GetFunctionList fails");
    if (list->version.major < 2) return unusable(path, "it is older than PKCS#11 2.0");
    return resolved(handle, image, list);
}

} // namespace

bool isUsable()
{
    return zerlin::functions().version.major != 0;
}

} // namespace softtoken

namespace zerlin {

std::atomic<const Functions*> foundFunctions;

const Functions& findFunctions()
{
    static const Functions found = softtoken::loadModule();
    foundFunctions.store(&found, std::memory_order_release);
    return found;
}

} // namespace zerlin
