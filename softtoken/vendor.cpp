// The vendor functions: the module's own if it has them, otherwise what standard calls can do.
#include "module.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>
#include <span>
#include <vector>

namespace {

using zerlin::allFunctions;
using zerlin::functions;

using Types = std::span<const CK_ATTRIBUTE_TYPE>;

// The attributes that are copied, for each class of objects. Not copied are those that a token sets itself
// (such as CKA_LOCAL or CKA_MODULUS_BITS), and CKA_TRUSTED, which only the security officer of a token may
// set.
constexpr CK_ATTRIBUTE_TYPE ANY_OBJECT[] = {
    CKA_CLASS, CKA_TOKEN, CKA_PRIVATE, CKA_MODIFIABLE, CKA_DESTROYABLE, CKA_LABEL};
constexpr CK_ATTRIBUTE_TYPE DATA[] = {CKA_APPLICATION, CKA_OBJECT_ID, CKA_VALUE};
constexpr CK_ATTRIBUTE_TYPE CERTIFICATE[] = {CKA_CERTIFICATE_TYPE, CKA_CERTIFICATE_CATEGORY, CKA_START_DATE,
    CKA_END_DATE, CKA_SUBJECT, CKA_ID, CKA_ISSUER, CKA_SERIAL_NUMBER, CKA_VALUE, CKA_URL,
    CKA_HASH_OF_SUBJECT_PUBLIC_KEY, CKA_HASH_OF_ISSUER_PUBLIC_KEY, CKA_NAME_HASH_ALGORITHM,
    CKA_JAVA_MIDP_SECURITY_DOMAIN, CKA_OWNER, CKA_AC_ISSUER, CKA_ATTR_TYPES};
constexpr CK_ATTRIBUTE_TYPE PUBLIC_KEY[] = {CKA_KEY_TYPE, CKA_ID, CKA_START_DATE, CKA_END_DATE, CKA_DERIVE,
    CKA_ALLOWED_MECHANISMS, CKA_SUBJECT, CKA_ENCRYPT, CKA_VERIFY, CKA_VERIFY_RECOVER, CKA_WRAP, CKA_MODULUS,
    CKA_PUBLIC_EXPONENT, CKA_PRIME, CKA_SUBPRIME, CKA_BASE, CKA_EC_PARAMS, CKA_EC_POINT, CKA_VALUE};
constexpr CK_ATTRIBUTE_TYPE PRIVATE_KEY[] = {CKA_KEY_TYPE, CKA_ID, CKA_START_DATE, CKA_END_DATE, CKA_DERIVE,
    CKA_ALLOWED_MECHANISMS, CKA_SUBJECT, CKA_SENSITIVE, CKA_EXTRACTABLE, CKA_DECRYPT, CKA_SIGN,
    CKA_SIGN_RECOVER, CKA_UNWRAP, CKA_WRAP_WITH_TRUSTED, CKA_ALWAYS_AUTHENTICATE, CKA_MODULUS,
    CKA_PUBLIC_EXPONENT, CKA_PRIVATE_EXPONENT, CKA_PRIME_1, CKA_PRIME_2, CKA_EXPONENT_1, CKA_EXPONENT_2,
    CKA_COEFFICIENT, CKA_PRIME, CKA_SUBPRIME, CKA_BASE, CKA_EC_PARAMS, CKA_VALUE};
constexpr CK_ATTRIBUTE_TYPE SECRET_KEY[] = {CKA_KEY_TYPE, CKA_ID, CKA_START_DATE, CKA_END_DATE, CKA_DERIVE,
    CKA_ALLOWED_MECHANISMS, CKA_SENSITIVE, CKA_EXTRACTABLE, CKA_ENCRYPT, CKA_DECRYPT, CKA_SIGN, CKA_VERIFY,
    CKA_WRAP, CKA_UNWRAP, CKA_WRAP_WITH_TRUSTED, CKA_VALUE};
constexpr CK_ATTRIBUTE_TYPE DOMAIN_PARAMETERS[] = {CKA_KEY_TYPE, CKA_PRIME, CKA_SUBPRIME, CKA_BASE};

// At least one of these must be readable: the copy of a key would have no key value otherwise.
constexpr CK_ATTRIBUTE_TYPE PRIVATE_VALUES[] = {CKA_PRIVATE_EXPONENT, CKA_VALUE};
constexpr CK_ATTRIBUTE_TYPE SECRET_VALUES[] = {CKA_VALUE};

// Templates that restrict how a key is used. They cannot be copied, and a copy without them would be less
// restricted, so an object that has one is refused.
constexpr CK_ATTRIBUTE_TYPE NESTED[] = {CKA_WRAP_TEMPLATE, CKA_UNWRAP_TEMPLATE, CKA_DERIVE_TEMPLATE};

struct ObjectKind {
    CK_OBJECT_CLASS objectClass;
    Types attributes;
    Types values; // if not empty, the copy must have one of them
};

constexpr ObjectKind KINDS[] = {
    {CKO_DATA, DATA, {}},
    {CKO_CERTIFICATE, CERTIFICATE, {}},
    {CKO_PUBLIC_KEY, PUBLIC_KEY, {}},
    {CKO_PRIVATE_KEY, PRIVATE_KEY, PRIVATE_VALUES},
    {CKO_SECRET_KEY, SECRET_KEY, SECRET_VALUES},
    {CKO_DOMAIN_PARAMETERS, DOMAIN_PARAMETERS, {}},
};

struct WipeAndDelete {
    std::size_t length;
    void operator()(CK_BYTE* bytes) const
    {
        explicit_bzero(bytes, length);
        delete[] bytes;
    }
};

struct Source {
    CK_SESSION_HANDLE session;
    CK_OBJECT_HANDLE object;
};

// The template of the copy: first the caller's attributes, then those that were read, whose values are owned
// here.
struct Template {
    std::vector<CK_ATTRIBUTE> attributes;
    std::vector<std::unique_ptr<CK_BYTE[], WipeAndDelete>> values;
};

bool has(const Template& copy, CK_ATTRIBUTE_TYPE type)
{
    return std::ranges::find(copy.attributes, type, &CK_ATTRIBUTE::type) != copy.attributes.end();
}

// Reads the length of an attribute in bytes; 0 if the object has no such attribute.
CK_RV readLength(Source source, CK_ATTRIBUTE_TYPE type, CK_ULONG& length)
{
    CK_ATTRIBUTE attribute = {type, nullptr, 0};
    const CK_RV rv = functions().C_GetAttributeValue(source.session, source.object, &attribute, 1);
    const bool invalid = rv == CKR_ATTRIBUTE_TYPE_INVALID;
    length = invalid || attribute.ulValueLen == CK_UNAVAILABLE_INFORMATION ? 0 : attribute.ulValueLen;
    return invalid ? CKR_OK : rv;
}

// Adds an attribute of the source to the copy. Skips it if the caller has set it, or if the source has none
// or an empty one.
CK_RV addAttribute(Source source, CK_ATTRIBUTE_TYPE type, Template& copy)
{
    if (has(copy, type)) return CKR_OK;
    CK_ULONG length = 0;
    CK_RV rv = readLength(source, type, length);
    if (rv != CKR_OK || length == 0) return rv;

    copy.values.push_back({new CK_BYTE[length], WipeAndDelete{length}});
    CK_ATTRIBUTE attribute = {type, copy.values.back().get(), length};
    rv = functions().C_GetAttributeValue(source.session, source.object, &attribute, 1);
    if (rv == CKR_OK) copy.attributes.push_back(attribute);
    return rv;
}

CK_RV addAttributes(Source source, Types types, Template& copy)
{
    for (const CK_ATTRIBUTE_TYPE type : types) {
        const CK_RV rv = addAttribute(source, type, copy);
        if (rv != CKR_OK) return rv;
    }
    return CKR_OK;
}

// Refuses an object that may not be copied, or that cannot be copied completely.
CK_RV checkCopyable(Source source, const Template& copy)
{
    CK_BBOOL copyable = CK_TRUE;
    CK_ATTRIBUTE attribute = {CKA_COPYABLE, &copyable, sizeof copyable};
    const CK_RV known = functions().C_GetAttributeValue(source.session, source.object, &attribute, 1);
    if (known == CKR_OK && copyable == CK_FALSE) return CKR_ACTION_PROHIBITED;

    for (const CK_ATTRIBUTE_TYPE type : NESTED) {
        CK_ULONG length = 0;
        const CK_RV rv = readLength(source, type, length);
        if (rv != CKR_OK) return rv;
        if (length != 0 && !has(copy, type)) return CKR_FUNCTION_NOT_SUPPORTED;
    }
    return CKR_OK;
}

// Reads the object into the template.
CK_RV readObject(Source source, Template& copy)
{
    CK_OBJECT_CLASS objectClass = 0;
    CK_ATTRIBUTE attribute = {CKA_CLASS, &objectClass, sizeof objectClass};
    CK_RV rv = functions().C_GetAttributeValue(source.session, source.object, &attribute, 1);
    if (rv != CKR_OK) return rv;
    const auto kind = std::ranges::find(KINDS, objectClass, &ObjectKind::objectClass);
    if (kind == std::end(KINDS)) return CKR_FUNCTION_NOT_SUPPORTED;

    rv = checkCopyable(source, copy);
    if (rv == CKR_OK) rv = addAttributes(source, ANY_OBJECT, copy);
    if (rv == CKR_OK) rv = addAttributes(source, kind->attributes, copy);
    if (rv != CKR_OK) return rv;
    const auto present = [&](CK_ATTRIBUTE_TYPE type) { return has(copy, type); };
    const bool whole = kind->values.empty() || std::ranges::any_of(kind->values, present);
    return whole ? CKR_OK : CKR_KEY_UNEXTRACTABLE;
}

CK_RV slotOf(CK_SESSION_HANDLE session, CK_SLOT_ID& slot)
{
    CK_SESSION_INFO info = {};
    const CK_RV rv = functions().C_GetSessionInfo(session, &info);
    slot = info.slotID;
    return rv;
}

} // namespace

/**
 * Copies hObject from hSession2 to the token of hSession1. If the copy is a session object, it belongs to
 * hSession1. The attributes in pTemplate replace the object's own.
 *
 * If both sessions are on one slot, this calls C_CopyObject. Otherwise it reads the object and creates a new
 * one, so the object's value must be readable. It then refuses, without creating anything:
 * - a sensitive or unextractable key, with the module's own return value, or with CKR_KEY_UNEXTRACTABLE if
 *   the module reports no error but no value either;
 * - an object whose CKA_COPYABLE is false, with CKR_ACTION_PROHIBITED;
 * - an object whose class is not data, certificate, public, private or secret key, or domain parameters, with
 *   CKR_FUNCTION_NOT_SUPPORTED;
 * - an object with CKA_WRAP_TEMPLATE, CKA_UNWRAP_TEMPLATE or CKA_DERIVE_TEMPLATE that pTemplate does not
 *   replace, with CKR_FUNCTION_NOT_SUPPORTED.
 *
 * Vendor-defined attributes and CKA_TRUSTED are not copied.
 */
CK_RV CT_CopyObject(CK_SESSION_HANDLE hSession1, CK_SESSION_HANDLE hSession2, CK_OBJECT_HANDLE hObject,
    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phNewObject)
try {
    if (allFunctions().copyObject != nullptr) {
        return allFunctions().copyObject(hSession1, hSession2, hObject, pTemplate, ulCount, phNewObject);
    }
    if (phNewObject == nullptr || (pTemplate == nullptr && ulCount > 0)) return CKR_ARGUMENTS_BAD;

    CK_SLOT_ID targetSlot = 0;
    CK_SLOT_ID sourceSlot = 0;
    CK_RV rv = slotOf(hSession1, targetSlot);
    if (rv == CKR_OK) rv = slotOf(hSession2, sourceSlot);
    if (rv != CKR_OK) return rv;
    if (targetSlot == sourceSlot) {
        CK_ATTRIBUTE none = {}; // some modules refuse a null template, even with count 0
        const CK_ATTRIBUTE_PTR changes = pTemplate != nullptr ? pTemplate : &none;
        return functions().C_CopyObject(hSession1, hObject, changes, ulCount, phNewObject);
    }

    Template copy;
    copy.attributes.assign(pTemplate, pTemplate + ulCount);
    rv = readObject({hSession2, hObject}, copy);
    if (rv != CKR_OK) return rv;
    const auto count = static_cast<CK_ULONG>(copy.attributes.size());
    return functions().C_CreateObject(hSession1, copy.attributes.data(), count, phNewObject);
} catch (const std::exception&) {
    return CKR_HOST_MEMORY;
}

/**
 * Initialises the token in slot ulValue with C_InitToken. hSession must be valid and should be on another
 * slot: the module returns CKR_SESSION_EXISTS while any session is open on slot ulValue. pLabel is 32 bytes,
 * padded with blanks; null returns CKR_ARGUMENTS_BAD.
 */
CK_RV CT_InitToken(CK_SESSION_HANDLE hSession, CK_ULONG ulValue, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen,
    CK_UTF8CHAR_PTR pLabel)
{
    if (allFunctions().initToken != nullptr)
        return allFunctions().initToken(hSession, ulValue, pPin, ulPinLen, pLabel);
    if (pLabel == nullptr) return CKR_ARGUMENTS_BAD;
    CK_SLOT_ID ownSlot = 0;
    const CK_RV rv = slotOf(hSession, ownSlot);
    return rv == CKR_OK ? functions().C_InitToken(ulValue, pPin, ulPinLen, pLabel) : rv;
}

/**
 * Initialises the token of hSession again with C_InitToken. A null pLabel keeps the present label.
 *
 * A token cannot be initialised while sessions are open on it, so this closes hSession. It closes no other
 * session, because other threads may be using it. If the module counts its sessions and there are others,
 * this returns CKR_SESSION_EXISTS and changes nothing. Otherwise hSession is closed, even if C_InitToken then
 * fails (because of other sessions or a wrong PIN); the objects on the token stay in that case.
 */
CK_RV CT_ResetToken(
    CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_UTF8CHAR_PTR pLabel)
{
    if (allFunctions().resetToken != nullptr)
        return allFunctions().resetToken(hSession, pPin, ulPinLen, pLabel);

    CK_SLOT_ID slot = 0;
    CK_TOKEN_INFO token = {};
    CK_RV rv = slotOf(hSession, slot);
    if (rv == CKR_OK) rv = functions().C_GetTokenInfo(slot, &token);
    if (rv != CKR_OK) return rv;
    const CK_ULONG sessions = token.ulSessionCount;
    if (sessions != CK_UNAVAILABLE_INFORMATION && sessions > 1) return CKR_SESSION_EXISTS;

    rv = functions().C_CloseSession(hSession);
    if (rv != CKR_OK) return rv;
    return functions().C_InitToken(slot, pPin, ulPinLen, pLabel != nullptr ? pLabel : token.label);
}
