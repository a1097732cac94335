// The recording Cryptoki library: how each kind of argument is written down, then the functions themselves.
#include "recorder.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <tuple>
#include <type_traits>

namespace {

using recorder::script;

std::mutex linesMutex;
std::vector<std::string> lines;

// Arguments that are shown together, or a pointer that is not shown as a number. `raw` gives back what was
// passed.

struct Bytes {
    CK_BYTE_PTR values;
    CK_ULONG length;
    auto raw() const { return std::tuple(values, length); }
};

struct Label {
    CK_UTF8CHAR_PTR values;
    auto raw() const { return std::tuple(values); }
};

struct Template {
    CK_ATTRIBUTE_PTR attributes;
    CK_ULONG count;
    auto raw() const { return std::tuple(attributes, count); }
};

// The capacity is a CK_ULONG or a pointer to one.
template <typename Element, typename Capacity>
struct Buffer {
    Element* elements;
    Capacity capacity;
    auto raw() const { return std::tuple(elements, capacity); }
};

template <typename T>
struct Value {
    T* value;
    auto raw() const { return std::tuple(value); }
};

template <typename Pointer>
struct Reference {
    Pointer pointer;
    auto raw() const { return std::tuple(pointer); }
};

struct InitArgs {
    CK_VOID_PTR arguments;
    auto raw() const { return std::tuple(arguments); }
};

std::string text(CK_ULONG number)
{
    if (number < 0x80000000) return std::to_string(number);
    char hex[2 * sizeof number + 3];
    std::snprintf(hex, sizeof hex, "0x%lx", number);
    return hex;
}

std::string hex(const void* values, CK_ULONG length)
{
    if (values == nullptr) return "null";
    const CK_ULONG readable = std::min(length, script().byteLimit);
    const auto* const bytes = static_cast<const std::uint8_t*>(values);
    std::string result = "[";
    for (CK_ULONG i = 0; i < readable; ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", bytes[i]);
        result += digits;
    }
    return result + (readable < length ? "..]" : "]");
}

std::string triple(CK_ULONG type, const void* values, CK_ULONG length)
{
    return "{" + text(type) + ", " + hex(values, length) + ", " + text(length) + "}";
}

std::string text(Bytes bytes)
{
    return hex(bytes.values, bytes.length) + ", " + text(bytes.length);
}

std::string text(Label label)
{
    return hex(label.values, script().labelLength);
}

std::string text(Template shown)
{
    if (shown.attributes == nullptr) return "null, " + text(shown.count);
    const CK_ULONG readable = std::min(shown.count, script().attributeLimit);
    std::string result = "{";
    for (CK_ULONG i = 0; i < readable; ++i) {
        const CK_ATTRIBUTE& attribute = shown.attributes[i];
        result += (i > 0 ? ", " : "") + triple(attribute.type, attribute.pValue, attribute.ulValueLen);
    }
    return result + (readable < shown.count ? ", ..}, " : "}, ") + text(shown.count);
}

std::string text(CK_MECHANISM_PTR mechanism)
{
    if (mechanism == nullptr) return "null";
    return triple(mechanism->mechanism, mechanism->pParameter, mechanism->ulParameterLen);
}

CK_ULONG value(CK_ULONG capacity)
{
    return capacity;
}

CK_ULONG value(CK_ULONG_PTR capacity)
{
    return *capacity;
}

template <typename Element, typename Capacity>
std::string text(Buffer<Element, Capacity> buffer)
{
    return (buffer.elements == nullptr ? "null(" : "out(") + text(value(buffer.capacity)) + ")";
}

template <typename T>
std::string text(Value<T> output)
{
    return output.value == nullptr ? "null" : "out";
}

template <typename Pointer>
std::string text(Reference<Pointer> reference)
{
    return recorder::address(reinterpret_cast<const void*>(reference.pointer));
}

std::string text(InitArgs passed)
{
    if (passed.arguments == nullptr) return "null";
    const auto& arguments = *static_cast<const CK_C_INITIALIZE_ARGS*>(passed.arguments);
    const auto function = [](auto pointer) { return pointer == nullptr ? "null, " : "set, "; };
    return std::string("{") + function(arguments.CreateMutex) + function(arguments.DestroyMutex) +
           function(arguments.LockMutex) + function(arguments.UnlockMutex) + text(arguments.flags) + ", " +
           recorder::address(arguments.pReserved) + "}";
}

template <typename T>
auto raw(T argument)
{
    if constexpr (std::is_scalar_v<T>) {
        return std::tuple(argument);
    } else {
        return argument.raw();
    }
}

template <typename Function, typename... Arguments>
CK_RV note(const char* name, const std::function<Function>& handler, Arguments... arguments)
{
    std::string line;
    ((line += (line.empty() ? "" : ", ") + text(arguments)), ...);
    {
        const std::lock_guard lock(linesMutex);
        lines.push_back(name + ("(" + line + ")"));
    }
    if (!handler) return script().result;
    return std::apply(handler, std::tuple_cat(raw(arguments)...));
}

} // namespace

namespace recorder {

Script& script()
{
    static Script current;
    return current;
}

std::vector<std::string> calls()
{
    const std::lock_guard lock(linesMutex);
    return lines;
}

void reset()
{
    const std::lock_guard lock(linesMutex);
    lines.clear();
    script() = {};
}

std::string address(const void* reference)
{
    if (reference == nullptr) return "null";
    char digits[2 * sizeof reference + 2];
    std::snprintf(digits, sizeof digits, "@%zx", reinterpret_cast<std::uintptr_t>(reference));
    return digits;
}

} // namespace recorder

CK_RV C_Initialize(CK_VOID_PTR pInitArgs)
{
    return note(__func__, script().C_Initialize, InitArgs{pInitArgs});
}

CK_RV C_Finalize(CK_VOID_PTR pReserved)
{
    return note(__func__, script().C_Finalize, Reference{pReserved});
}

CK_RV C_GetInfo(CK_INFO_PTR pInfo)
{
    return note(__func__, script().C_GetInfo, Value{pInfo});
}

CK_RV C_GetSlotList(CK_BBOOL tokenPresent, CK_SLOT_ID_PTR pSlotList, CK_ULONG_PTR pulCount)
{
    return note(__func__, script().C_GetSlotList, tokenPresent, Buffer{pSlotList, pulCount});
}

CK_RV C_GetSlotInfo(CK_SLOT_ID slotID, CK_SLOT_INFO_PTR pInfo)
{
    return note(__func__, script().C_GetSlotInfo, slotID, Value{pInfo});
}

CK_RV C_GetTokenInfo(CK_SLOT_ID slotID, CK_TOKEN_INFO_PTR pInfo)
{
    return note(__func__, script().C_GetTokenInfo, slotID, Value{pInfo});
}

CK_RV C_GetMechanismList(CK_SLOT_ID slotID, CK_MECHANISM_TYPE_PTR pMechanismList, CK_ULONG_PTR pulCount)
{
    return note(__func__, script().C_GetMechanismList, slotID, Buffer{pMechanismList, pulCount});
}

CK_RV C_GetMechanismInfo(CK_SLOT_ID slotID, CK_MECHANISM_TYPE type, CK_MECHANISM_INFO_PTR pInfo)
{
    return note(__func__, script().C_GetMechanismInfo, slotID, type, Value{pInfo});
}

CK_RV C_InitToken(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_UTF8CHAR_PTR pLabel)
{
    return note(__func__, script().C_InitToken, slotID, Bytes{pPin, ulPinLen}, Label{pLabel});
}

CK_RV C_InitPIN(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen)
{
    return note(__func__, script().C_InitPIN, hSession, Bytes{pPin, ulPinLen});
}

CK_RV C_SetPIN(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pOldPin, CK_ULONG ulOldLen,
    CK_UTF8CHAR_PTR pNewPin, CK_ULONG ulNewLen)
{
    return note(__func__, script().C_SetPIN, hSession, Bytes{pOldPin, ulOldLen}, Bytes{pNewPin, ulNewLen});
}

CK_RV C_OpenSession(CK_SLOT_ID slotID, CK_FLAGS flags, CK_VOID_PTR pApplication, CK_NOTIFY Notify,
    CK_SESSION_HANDLE_PTR phSession)
{
    return note(__func__, script().C_OpenSession, slotID, flags, Reference{pApplication}, Reference{Notify},
        Value{phSession});
}

CK_RV C_CloseSession(CK_SESSION_HANDLE hSession)
{
    return note(__func__, script().C_CloseSession, hSession);
}

CK_RV C_CloseAllSessions(CK_SLOT_ID slotID)
{
    return note(__func__, script().C_CloseAllSessions, slotID);
}

CK_RV C_GetSessionInfo(CK_SESSION_HANDLE hSession, CK_SESSION_INFO_PTR pInfo)
{
    return note(__func__, script().C_GetSessionInfo, hSession, Value{pInfo});
}

CK_RV C_GetOperationState(
    CK_SESSION_HANDLE hSession, CK_BYTE_PTR pOperationState, CK_ULONG_PTR pulOperationStateLen)
{
    return note(
        __func__, script().C_GetOperationState, hSession, Buffer{pOperationState, pulOperationStateLen});
}

CK_RV C_SetOperationState(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pOperationState,
    CK_ULONG ulOperationStateLen, CK_OBJECT_HANDLE hEncryptionKey, CK_OBJECT_HANDLE hAuthenticationKey)
{
    return note(__func__, script().C_SetOperationState, hSession, Bytes{pOperationState, ulOperationStateLen},
        hEncryptionKey, hAuthenticationKey);
}

CK_RV C_Login(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen)
{
    return note(__func__, script().C_Login, hSession, userType, Bytes{pPin, ulPinLen});
}

CK_RV C_Logout(CK_SESSION_HANDLE hSession)
{
    return note(__func__, script().C_Logout, hSession);
}

CK_RV C_CreateObject(
    CK_SESSION_HANDLE hSession, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phObject)
{
    return note(__func__, script().C_CreateObject, hSession, Template{pTemplate, ulCount}, Value{phObject});
}

CK_RV C_CopyObject(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate,
    CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phNewObject)
{
    return note(
        __func__, script().C_CopyObject, hSession, hObject, Template{pTemplate, ulCount}, Value{phNewObject});
}

CK_RV C_DestroyObject(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject)
{
    return note(__func__, script().C_DestroyObject, hSession, hObject);
}

CK_RV C_GetObjectSize(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ULONG_PTR pulSize)
{
    return note(__func__, script().C_GetObjectSize, hSession, hObject, Value{pulSize});
}

CK_RV C_GetAttributeValue(
    CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount)
{
    return note(__func__, script().C_GetAttributeValue, hSession, hObject, Template{pTemplate, ulCount});
}

CK_RV C_SetAttributeValue(
    CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount)
{
    return note(__func__, script().C_SetAttributeValue, hSession, hObject, Template{pTemplate, ulCount});
}

CK_RV C_FindObjectsInit(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount)
{
    return note(__func__, script().C_FindObjectsInit, hSession, Template{pTemplate, ulCount});
}

CK_RV C_FindObjects(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE_PTR phObject, CK_ULONG ulMaxObjectCount,
    CK_ULONG_PTR pulObjectCount)
{
    return note(__func__, script().C_FindObjects, hSession, Buffer{phObject, ulMaxObjectCount},
        Value{pulObjectCount});
}

CK_RV C_FindObjectsFinal(CK_SESSION_HANDLE hSession)
{
    return note(__func__, script().C_FindObjectsFinal, hSession);
}

CK_RV C_EncryptInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey)
{
    return note(__func__, script().C_EncryptInit, hSession, pMechanism, hKey);
}

CK_RV C_Encrypt(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pEncryptedData,
    CK_ULONG_PTR pulEncryptedDataLen)
{
    return note(__func__, script().C_Encrypt, hSession, Bytes{pData, ulDataLen},
        Buffer{pEncryptedData, pulEncryptedDataLen});
}

CK_RV C_EncryptUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen,
    CK_BYTE_PTR pEncryptedPart, CK_ULONG_PTR pulEncryptedPartLen)
{
    return note(__func__, script().C_EncryptUpdate, hSession, Bytes{pPart, ulPartLen},
        Buffer{pEncryptedPart, pulEncryptedPartLen});
}

CK_RV C_EncryptFinal(
    CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLastEncryptedPart, CK_ULONG_PTR pulLastEncryptedPartLen)
{
    return note(
        __func__, script().C_EncryptFinal, hSession, Buffer{pLastEncryptedPart, pulLastEncryptedPartLen});
}

CK_RV C_DecryptInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey)
{
    return note(__func__, script().C_DecryptInit, hSession, pMechanism, hKey);
}

CK_RV C_Decrypt(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedData, CK_ULONG ulEncryptedDataLen,
    CK_BYTE_PTR pData, CK_ULONG_PTR pulDataLen)
{
    return note(__func__, script().C_Decrypt, hSession, Bytes{pEncryptedData, ulEncryptedDataLen},
        Buffer{pData, pulDataLen});
}

CK_RV C_DecryptUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart, CK_ULONG ulEncryptedPartLen,
    CK_BYTE_PTR pPart, CK_ULONG_PTR pulPartLen)
{
    return note(__func__, script().C_DecryptUpdate, hSession, Bytes{pEncryptedPart, ulEncryptedPartLen},
        Buffer{pPart, pulPartLen});
}

CK_RV C_DecryptFinal(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLastPart, CK_ULONG_PTR pulLastPartLen)
{
    return note(__func__, script().C_DecryptFinal, hSession, Buffer{pLastPart, pulLastPartLen});
}

CK_RV C_DigestInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism)
{
    return note(__func__, script().C_DigestInit, hSession, pMechanism);
}

CK_RV C_Digest(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pDigest,
    CK_ULONG_PTR pulDigestLen)
{
    return note(
        __func__, script().C_Digest, hSession, Bytes{pData, ulDataLen}, Buffer{pDigest, pulDigestLen});
}

CK_RV C_DigestUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen)
{
    return note(__func__, script().C_DigestUpdate, hSession, Bytes{pPart, ulPartLen});
}

CK_RV C_DigestKey(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey)
{
    return note(__func__, script().C_DigestKey, hSession, hKey);
}

CK_RV C_DigestFinal(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pDigest, CK_ULONG_PTR pulDigestLen)
{
    return note(__func__, script().C_DigestFinal, hSession, Buffer{pDigest, pulDigestLen});
}

CK_RV C_SignInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey)
{
    return note(__func__, script().C_SignInit, hSession, pMechanism, hKey);
}

CK_RV C_Sign(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pSignature,
    CK_ULONG_PTR pulSignatureLen)
{
    return note(
        __func__, script().C_Sign, hSession, Bytes{pData, ulDataLen}, Buffer{pSignature, pulSignatureLen});
}

CK_RV C_SignUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen)
{
    return note(__func__, script().C_SignUpdate, hSession, Bytes{pPart, ulPartLen});
}

CK_RV C_SignFinal(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG_PTR pulSignatureLen)
{
    return note(__func__, script().C_SignFinal, hSession, Buffer{pSignature, pulSignatureLen});
}

CK_RV C_SignRecoverInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey)
{
    return note(__func__, script().C_SignRecoverInit, hSession, pMechanism, hKey);
}

CK_RV C_SignRecover(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pSignature,
    CK_ULONG_PTR pulSignatureLen)
{
    return note(__func__, script().C_SignRecover, hSession, Bytes{pData, ulDataLen},
        Buffer{pSignature, pulSignatureLen});
}

CK_RV C_VerifyInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey)
{
    return note(__func__, script().C_VerifyInit, hSession, pMechanism, hKey);
}

CK_RV C_Verify(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pSignature,
    CK_ULONG ulSignatureLen)
{
    return note(
        __func__, script().C_Verify, hSession, Bytes{pData, ulDataLen}, Bytes{pSignature, ulSignatureLen});
}

CK_RV C_VerifyUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen)
{
    return note(__func__, script().C_VerifyUpdate, hSession, Bytes{pPart, ulPartLen});
}

CK_RV C_VerifyFinal(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG ulSignatureLen)
{
    return note(__func__, script().C_VerifyFinal, hSession, Bytes{pSignature, ulSignatureLen});
}

CK_RV C_VerifyRecoverInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey)
{
    return note(__func__, script().C_VerifyRecoverInit, hSession, pMechanism, hKey);
}

CK_RV C_VerifyRecover(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG ulSignatureLen,
    CK_BYTE_PTR pData, CK_ULONG_PTR pulDataLen)
{
    return note(__func__, script().C_VerifyRecover, hSession, Bytes{pSignature, ulSignatureLen},
        Buffer{pData, pulDataLen});
}

CK_RV C_DigestEncryptUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen,
    CK_BYTE_PTR pEncryptedPart, CK_ULONG_PTR pulEncryptedPartLen)
{
    return note(__func__, script().C_DigestEncryptUpdate, hSession, Bytes{pPart, ulPartLen},
        Buffer{pEncryptedPart, pulEncryptedPartLen});
}

CK_RV C_DecryptDigestUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart,
    CK_ULONG ulEncryptedPartLen, CK_BYTE_PTR pPart, CK_ULONG_PTR pulPartLen)
{
    return note(__func__, script().C_DecryptDigestUpdate, hSession, Bytes{pEncryptedPart, ulEncryptedPartLen},
        Buffer{pPart, pulPartLen});
}

CK_RV C_SignEncryptUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen,
    CK_BYTE_PTR pEncryptedPart, CK_ULONG_PTR pulEncryptedPartLen)
{
    return note(__func__, script().C_SignEncryptUpdate, hSession, Bytes{pPart, ulPartLen},
        Buffer{pEncryptedPart, pulEncryptedPartLen});
}

CK_RV C_DecryptVerifyUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart,
    CK_ULONG ulEncryptedPartLen, CK_BYTE_PTR pPart, CK_ULONG_PTR pulPartLen)
{
    return note(__func__, script().C_DecryptVerifyUpdate, hSession, Bytes{pEncryptedPart, ulEncryptedPartLen},
        Buffer{pPart, pulPartLen});
}

CK_RV C_GenerateKey(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_ATTRIBUTE_PTR pTemplate,
    CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phKey)
{
    return note(
        __func__, script().C_GenerateKey, hSession, pMechanism, Template{pTemplate, ulCount}, Value{phKey});
}

CK_RV C_GenerateKeyPair(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism,
    CK_ATTRIBUTE_PTR pPublicKeyTemplate, CK_ULONG ulPublicKeyAttributeCount,
    CK_ATTRIBUTE_PTR pPrivateKeyTemplate, CK_ULONG ulPrivateKeyAttributeCount,
    CK_OBJECT_HANDLE_PTR phPublicKey, CK_OBJECT_HANDLE_PTR phPrivateKey)
{
    return note(__func__, script().C_GenerateKeyPair, hSession, pMechanism,
        Template{pPublicKeyTemplate, ulPublicKeyAttributeCount},
        Template{pPrivateKeyTemplate, ulPrivateKeyAttributeCount}, Value{phPublicKey}, Value{phPrivateKey});
}

CK_RV C_WrapKey(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hWrappingKey,
    CK_OBJECT_HANDLE hKey, CK_BYTE_PTR pWrappedKey, CK_ULONG_PTR pulWrappedKeyLen)
{
    return note(__func__, script().C_WrapKey, hSession, pMechanism, hWrappingKey, hKey,
        Buffer{pWrappedKey, pulWrappedKeyLen});
}

CK_RV C_UnwrapKey(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hUnwrappingKey,
    CK_BYTE_PTR pWrappedKey, CK_ULONG ulWrappedKeyLen, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulAttributeCount,
    CK_OBJECT_HANDLE_PTR phKey)
{
    return note(__func__, script().C_UnwrapKey, hSession, pMechanism, hUnwrappingKey,
        Bytes{pWrappedKey, ulWrappedKeyLen}, Template{pTemplate, ulAttributeCount}, Value{phKey});
}

CK_RV C_DeriveKey(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hBaseKey,
    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulAttributeCount, CK_OBJECT_HANDLE_PTR phKey)
{
    return note(__func__, script().C_DeriveKey, hSession, pMechanism, hBaseKey,
        Template{pTemplate, ulAttributeCount}, Value{phKey});
}

CK_RV C_SeedRandom(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSeed, CK_ULONG ulSeedLen)
{
    return note(__func__, script().C_SeedRandom, hSession, Bytes{pSeed, ulSeedLen});
}

CK_RV C_GenerateRandom(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pRandomData, CK_ULONG ulRandomLen)
{
    return note(__func__, script().C_GenerateRandom, hSession, Buffer{pRandomData, ulRandomLen});
}

CK_RV C_GetFunctionStatus(CK_SESSION_HANDLE hSession)
{
    return note(__func__, script().C_GetFunctionStatus, hSession);
}

CK_RV C_CancelFunction(CK_SESSION_HANDLE hSession)
{
    return note(__func__, script().C_CancelFunction, hSession);
}

CK_RV C_WaitForSlotEvent(CK_FLAGS flags, CK_SLOT_ID_PTR pSlot, CK_VOID_PTR pReserved)
{
    return note(__func__, script().C_WaitForSlotEvent, flags, Value{pSlot}, Reference{pReserved});
}

CK_RV CT_CopyObject(CK_SESSION_HANDLE hSession1, CK_SESSION_HANDLE hSession2, CK_OBJECT_HANDLE hObject,
    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phNewObject)
{
    return note(__func__, script().CT_CopyObject, hSession1, hSession2, hObject, Template{pTemplate, ulCount},
        Value{phNewObject});
}

CK_RV CT_InitToken(CK_SESSION_HANDLE hSession, CK_ULONG ulValue, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen,
    CK_UTF8CHAR_PTR pLabel)
{
    return note(__func__, script().CT_InitToken, hSession, ulValue, Bytes{pPin, ulPinLen}, Label{pLabel});
}

CK_RV CT_ResetToken(
    CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_UTF8CHAR_PTR pLabel)
{
    return note(__func__, script().CT_ResetToken, hSession, Bytes{pPin, ulPinLen}, Label{pLabel});
}
