// Objects on a token as a store of named values.
#include "zerlin/tokenobject.h"

#include <cstring>
#include <iterator>

#include "util/fileVersion.h"
#include "zerlin/attrutil.h"

FILE_VERSION("1.1.1.2");

namespace {

CK_ATTRIBUTE classAttribute(CK_OBJECT_CLASS& objectClass)
{
    return {CKA_CLASS, &objectClass, sizeof objectClass};
}

CK_ATTRIBUTE labelAttribute(const char* label)
{
    return {CKA_LABEL, const_cast<char*>(label), static_cast<CK_ULONG>(std::strlen(label))};
}

CK_RV createTokenObject(CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label,
    CK_BBOOL isPrivate, CK_OBJECT_HANDLE* phObject)
{
    CK_BBOOL isToken = CK_TRUE;
    CK_ATTRIBUTE attributes[] = {
        classAttribute(objectClass),
        labelAttribute(label),
        {CKA_TOKEN, &isToken, sizeof isToken},
        {CKA_PRIVATE, &isPrivate, sizeof isPrivate},
    };
    return C_CreateObject(session, attributes, std::size(attributes), phObject);
}

} // namespace

CK_RV CT_CreateObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject)
{
    return createTokenObject(session, objectClass, label, CK_TRUE, phObject);
}

CK_RV CT_CreatePublicObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject)
{
    return createTokenObject(session, objectClass, label, CK_FALSE, phObject);
}

CK_RV CT_OpenObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject)
{
    CK_ATTRIBUTE attributes[] = {classAttribute(objectClass), labelAttribute(label)};
    CK_RV rv = C_FindObjectsInit(session, attributes, std::size(attributes));
    if (rv != CKR_OK) return rv;
    CK_ULONG found = 0;
    rv = C_FindObjects(session, phObject, 1, &found);
    if (rv != CKR_OK) return rv; // the search stays open: deliberate
    rv = C_FindObjectsFinal(session);
    if (rv != CKR_OK) return rv;
    return found == 1 ? CKR_OK : CKR_GENERAL_ERROR;
}

CK_RV CT_RenameObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* oldLabel, const char* newLabel)
{
    CK_OBJECT_HANDLE object = CK_INVALID_HANDLE;
    const CK_RV rv = CT_OpenObject(session, objectClass, oldLabel, &object);
    if (rv != CKR_OK) return rv;
    const CK_ATTRIBUTE label = labelAttribute(newLabel);
    return SetAttr(session, object, label.type, label.pValue, label.ulValueLen);
}

CK_RV CT_ReadObject(
    CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, void* buffer, CK_ULONG bufferLen, CK_ULONG* lengthOut)
{
    CK_ULONG length = 0;
    const CK_RV rv = GetAttr(session, object, CKA_VALUE, buffer, bufferLen, &length);
    if (lengthOut != nullptr) *lengthOut = length;
    return rv;
}

CK_RV CT_WriteObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, const void* value, CK_ULONG valueLen,
    CK_ULONG* lengthOut)
{
    if (lengthOut != nullptr) *lengthOut = valueLen;
    return SetAttr(session, object, CKA_VALUE, value, valueLen);
}
