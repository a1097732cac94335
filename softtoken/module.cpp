// Finds and loads the module, and looks up its functions.
#include "module.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

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

const char* variable(const char* name)
{
    const char* const value = secure_getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

const char* modulePath()
{
    const char* const chosen = variable("ZERLIN_MODULE");
    return chosen != nullptr ? chosen : DEFAULT_MODULE;
}

// Says what the return value does not: which file or parameters the module reads when it starts.
void printRefusal(CK_RV rv)
{
    const char* const path = modulePath();
    const bool hasParameters = variable("ZERLIN_MODULE_ARGS") != nullptr;
    std::fprintf(
        stderr, "zerlin: the PKCS#11 module %s does not start (C_Initialize returns 0x%lx); ", path, rv);
    if (std::strstr(path, "softhsm") != nullptr && !hasParameters) {
        const char* const configuration = variable("SOFTHSM2_CONF");
        std::fprintf(stderr,
            "SoftHSM reads %s%s: this user must be able to read that file, and to write in the folder "
            "that it names in directories.tokendir\n",
            configuration != nullptr ? configuration : "/etc/softhsm/softhsm2.conf",
            configuration != nullptr ? "" : ", because SOFTHSM2_CONF is not set");
    } else if (!hasParameters) {
        std::fprintf(stderr, "see its documentation; if it needs parameters, set ZERLIN_MODULE_ARGS\n");
    } else {
        std::fprintf(stderr,
            "see its documentation, whether it takes parameters, and look at those in ZERLIN_MODULE_ARGS\n");
    }
}

// The initialisation structure of modules that take parameters: the standard's, with the text before its end.
struct InitArgsWithParameters {
    CK_CREATEMUTEX CreateMutex;
    CK_DESTROYMUTEX DestroyMutex;
    CK_LOCKMUTEX LockMutex;
    CK_UNLOCKMUTEX UnlockMutex;
    CK_FLAGS flags;
    const char* parameters;
    CK_VOID_PTR pReserved;
};
static_assert(offsetof(InitArgsWithParameters, parameters) == offsetof(CK_C_INITIALIZE_ARGS, pReserved));

decltype(&C_Initialize) moduleInitialize;

// Stands in for the module's C_Initialize.
CK_RV initialize(CK_VOID_PTR pInitArgs)
{
    InitArgsWithParameters args{};
    args.parameters = variable("ZERLIN_MODULE_ARGS");
    if (args.parameters != nullptr) {
        if (const auto* const given = static_cast<const CK_C_INITIALIZE_ARGS*>(pInitArgs)) {
            std::memcpy(&args, given, offsetof(CK_C_INITIALIZE_ARGS, pReserved));
            args.pReserved = given->pReserved;
        }
        pInitArgs = &args;
    }
    const CK_RV rv = moduleInitialize(pInitArgs);
    if (rv != CKR_OK && rv != CKR_CRYPTOKI_ALREADY_INITIALIZED && rv != CKR_CANT_LOCK) printRefusal(rv);
    return rv;
}

// Loads the module that the environment variable ZERLIN_MODULE names, or else the default one. The variable
// is ignored in set-user-ID programs. The module is never unloaded, because other threads may still run its
// code while the process ends.
Functions loadModule()
{
    const char* const path = modulePath();
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
    Functions found = resolved(handle, image, list);
    moduleInitialize = std::exchange(found.standard.C_Initialize, initialize);
    return found;
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
