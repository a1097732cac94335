// Finds and loads the module, and looks up its functions.
#include "module.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

namespace softtoken {
namespace {

constexpr const char* DEFAULT_MODULE = "/usr/lib/softhsm/libsofthsm2.so";
constexpr const char* DEFAULT_PACKAGE = sizeof(void*) == 4 ? "libsofthsm2:i386" : "libsofthsm2";

template <typename... Args>
using Function = CK_RV (*)(Args...);

template <typename... Args>
CK_RV generalError(Args...)
{
    return CKR_GENERAL_ERROR;
}

template <typename... Args>
CK_RV notSupported(Args...)
{
    return CKR_FUNCTION_NOT_SUPPORTED;
}

// Visits all functions but C_GetFunctionList, which this library implements itself.
template <typename Visit>
void forEachFunction(Visit visit)
{
    visit("C_Initialize", &CK_FUNCTION_LIST::C_Initialize);
    visit("C_Finalize", &CK_FUNCTION_LIST::C_Finalize);
    visit("C_GetInfo", &CK_FUNCTION_LIST::C_GetInfo);
    visit("C_GetSlotList", &CK_FUNCTION_LIST::C_GetSlotList);
    visit("C_GetSlotInfo", &CK_FUNCTION_LIST::C_GetSlotInfo);
    visit("C_GetTokenInfo", &CK_FUNCTION_LIST::C_GetTokenInfo);
    visit("C_GetMechanismList", &CK_FUNCTION_LIST::C_GetMechanismList);
    visit("C_GetMechanismInfo", &CK_FUNCTION_LIST::C_GetMechanismInfo);
    visit("C_InitToken", &CK_FUNCTION_LIST::C_InitToken);
    visit("C_InitPIN", &CK_FUNCTION_LIST::C_InitPIN);
    visit("C_SetPIN", &CK_FUNCTION_LIST::C_SetPIN);
    visit("C_OpenSession", &CK_FUNCTION_LIST::C_OpenSession);
    visit("C_CloseSession", &CK_FUNCTION_LIST::C_CloseSession);
    visit("C_CloseAllSessions", &CK_FUNCTION_LIST::C_CloseAllSessions);
    visit("C_GetSessionInfo", &CK_FUNCTION_LIST::C_GetSessionInfo);
    visit("C_GetOperationState", &CK_FUNCTION_LIST::C_GetOperationState);
    visit("C_SetOperationState", &CK_FUNCTION_LIST::C_SetOperationState);
    visit("C_Login", &CK_FUNCTION_LIST::C_Login);
    visit("C_Logout", &CK_FUNCTION_LIST::C_Logout);
    visit("C_CreateObject", &CK_FUNCTION_LIST::C_CreateObject);
    visit("C_CopyObject", &CK_FUNCTION_LIST::C_CopyObject);
    visit("C_DestroyObject", &CK_FUNCTION_LIST::C_DestroyObject);
    visit("C_GetObjectSize", &CK_FUNCTION_LIST::C_GetObjectSize);
    visit("C_GetAttributeValue", &CK_FUNCTION_LIST::C_GetAttributeValue);
    visit("C_SetAttributeValue", &CK_FUNCTION_LIST::C_SetAttributeValue);
    visit("C_FindObjectsInit", &CK_FUNCTION_LIST::C_FindObjectsInit);
    visit("C_FindObjects", &CK_FUNCTION_LIST::C_FindObjects);
    visit("C_FindObjectsFinal", &CK_FUNCTION_LIST::C_FindObjectsFinal);
    visit("C_EncryptInit", &CK_FUNCTION_LIST::C_EncryptInit);
    visit("C_Encrypt", &CK_FUNCTION_LIST::C_Encrypt);
    visit("C_EncryptUpdate", &CK_FUNCTION_LIST::C_EncryptUpdate);
    visit("C_EncryptFinal", &CK_FUNCTION_LIST::C_EncryptFinal);
    visit("C_DecryptInit", &CK_FUNCTION_LIST::C_DecryptInit);
    visit("C_Decrypt", &CK_FUNCTION_LIST::C_Decrypt);
    visit("C_DecryptUpdate", &CK_FUNCTION_LIST::C_DecryptUpdate);
    visit("C_DecryptFinal", &CK_FUNCTION_LIST::C_DecryptFinal);
    visit("C_DigestInit", &CK_FUNCTION_LIST::C_DigestInit);
    visit("C_Digest", &CK_FUNCTION_LIST::C_Digest);
    visit("C_DigestUpdate", &CK_FUNCTION_LIST::C_DigestUpdate);
    visit("C_DigestKey", &CK_FUNCTION_LIST::C_DigestKey);
    visit("C_DigestFinal", &CK_FUNCTION_LIST::C_DigestFinal);
    visit("C_SignInit", &CK_FUNCTION_LIST::C_SignInit);
    visit("C_Sign", &CK_FUNCTION_LIST::C_Sign);
    visit("C_SignUpdate", &CK_FUNCTION_LIST::C_SignUpdate);
    visit("C_SignFinal", &CK_FUNCTION_LIST::C_SignFinal);
    visit("C_SignRecoverInit", &CK_FUNCTION_LIST::C_SignRecoverInit);
    visit("C_SignRecover", &CK_FUNCTION_LIST::C_SignRecover);
    visit("C_VerifyInit", &CK_FUNCTION_LIST::C_VerifyInit);
    visit("C_Verify", &CK_FUNCTION_LIST::C_Verify);
    visit("C_VerifyUpdate", &CK_FUNCTION_LIST::C_VerifyUpdate);
    visit("C_VerifyFinal", &CK_FUNCTION_LIST::C_VerifyFinal);
    visit("C_VerifyRecoverInit", &CK_FUNCTION_LIST::C_VerifyRecoverInit);
    visit("C_VerifyRecover", &CK_FUNCTION_LIST::C_VerifyRecover);
    visit("C_DigestEncryptUpdate", &CK_FUNCTION_LIST::C_DigestEncryptUpdate);
    visit("C_DecryptDigestUpdate", &CK_FUNCTION_LIST::C_DecryptDigestUpdate);
    visit("C_SignEncryptUpdate", &CK_FUNCTION_LIST::C_SignEncryptUpdate);
    visit("C_DecryptVerifyUpdate", &CK_FUNCTION_LIST::C_DecryptVerifyUpdate);
    visit("C_GenerateKey", &CK_FUNCTION_LIST::C_GenerateKey);
    visit("C_GenerateKeyPair", &CK_FUNCTION_LIST::C_GenerateKeyPair);
    visit("C_WrapKey", &CK_FUNCTION_LIST::C_WrapKey);
    visit("C_UnwrapKey", &CK_FUNCTION_LIST::C_UnwrapKey);
    visit("C_DeriveKey", &CK_FUNCTION_LIST::C_DeriveKey);
    visit("C_SeedRandom", &CK_FUNCTION_LIST::C_SeedRandom);
    visit("C_GenerateRandom", &CK_FUNCTION_LIST::C_GenerateRandom);
    visit("C_GetFunctionStatus", &CK_FUNCTION_LIST::C_GetFunctionStatus);
    visit("C_CancelFunction", &CK_FUNCTION_LIST::C_CancelFunction);
    visit("C_WaitForSlotEvent", &CK_FUNCTION_LIST::C_WaitForSlotEvent);
}

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
void set(Function<Args...>& function, void* symbol)
{
    function = reinterpret_cast<Function<Args...>>(symbol);
}

template <typename... Args>
void resolve(Function<Args...>& function, void* symbol)
{
    if (symbol != nullptr) set(function, symbol);
    if (function == nullptr) function = notSupported<Args...>;
}

template <typename... Args>
void fail(Function<Args...>& function)
{
    function = generalError<Args...>;
}

Module unusable(const char* path, const char* reason)
{
    std::fprintf(stderr,
        "zerlin: cannot use the PKCS#11 module %s (%s); install the package %s, "
        "or set ZERLIN_MODULE to the path of another %zu-bit module\n",
        path, reason, DEFAULT_PACKAGE, 8 * sizeof(void*));
    Module result{};
    forEachFunction([&](const char*, auto member) { fail(result.functions.*member); });
    fail(result.copyObject);
    fail(result.initToken);
    fail(result.resetToken);
    return result;
}

// Prefers the functions that the module exports to those in its function list. If a program is linked with
// this library, the dynamic linker fills the module's list with our functions instead of the module's own.
Module resolved(void* handle, const void* image, const CK_FUNCTION_LIST* list)
{
    // C_WaitForSlotEvent was added at the end of the list in version 2.01: older lists are shorter.
    const bool complete = list->version.major > 2 || list->version.minor >= 1;
    Module result{};
    result.usable = true;
    std::memcpy(&result.functions, list,
        complete ? sizeof(CK_FUNCTION_LIST) : offsetof(CK_FUNCTION_LIST, C_WaitForSlotEvent));
    forEachFunction([&](const char* name, auto member) {
        resolve(result.functions.*member, exported(handle, image, name));
    });
    set(result.copyObject, exported(handle, image, "CT_CopyObject"));
    set(result.initToken, exported(handle, image, "CT_InitToken"));
    set(result.resetToken, exported(handle, image, "CT_ResetToken"));
    return result;
}

} // namespace

Module loadModule()
{
    const char* const chosen = secure_getenv("ZERLIN_MODULE");
    const char* const path = chosen != nullptr && *chosen != '\0' ? chosen : DEFAULT_MODULE;

    void* const handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) return unusable(path, dlerror());
    void* const getList = dlsym(handle, "C_GetFunctionList");
    if (getList == nullptr) return unusable(path, "it has no C_GetFunctionList");
    const void* const image = imageOf(getList);
    if (image == imageOf(reinterpret_cast<const void*>(loadModule)))
        return unusable(path, "it is this library");

    CK_FUNCTION_LIST_PTR list = nullptr;
    const CK_RV rv = reinterpret_cast<CK_C_GetFunctionList>(getList)(&list);
    if (rv != CKR_OK || list == nullptr) return unusable(path, "its C_GetFunctionList fails");
    if (list->version.major < 2) return unusable(path, "it is older than PKCS#11 2.0");
    return resolved(handle, image, list);
}

} // namespace softtoken
