// A Cryptoki library with functions of its own that are named like functions of libzerlin.so.
// C_GetAttributeValue calls them all and returns 0x80000000 and how many of its own it has reached; the
// others fail.
#include "cryptoki/functions.h"

// Never defined here: what is called must not be compiled in.
extern "C" {
const char* strError(CK_RV value);
CK_RV valError(const char* name);
CK_LONG numAttr(const CK_ATTRIBUTE* attr);
CK_ATTRIBUTE* FindAttribute(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count);
int isPbeMech(CK_MECHANISM_TYPE mechanism);
}

namespace {

CK_RV reached = 0;

CK_RV getAttributeValue(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR attributes, CK_ULONG count)
{
    CK_BYTE value = 1;
    const CK_ATTRIBUTE number = {CKA_TOKEN, &value, 1};
    reached = 0;
    strError(CKR_OK);
    valError("CKR_OK");
    numAttr(&number);
    FindAttribute(CKA_TOKEN, attributes, count);
    isPbeMech(CKM_AES_CBC);
    return 0x80000000 + reached;
}

} // namespace

const char* strError(CK_RV)
{
    ++reached;
    return "the namesake's";
}

CK_RV valError(const char*)
{
    return ++reached;
}

CK_LONG numAttr(const CK_ATTRIBUTE*)
{
    ++reached;
    return 0;
}

CK_ATTRIBUTE* FindAttribute(CK_ATTRIBUTE_TYPE, const CK_ATTRIBUTE*, CK_ULONG)
{
    ++reached;
    return nullptr;
}

int isPbeMech(CK_MECHANISM_TYPE)
{
    ++reached;
    return 0;
}

namespace zerlin {

std::atomic<const Functions*> foundFunctions;

const Functions& findFunctions()
{
    static const Functions functions = [] {
        Functions made = failingFunctions();
        made.standard.C_GetAttributeValue = getAttributeValue;
        return made;
    }();
    foundFunctions = &functions;
    return functions;
}

} // namespace zerlin

CK_RV CT_CopyObject(
    CK_SESSION_HANDLE, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR)
{
    return CKR_GENERAL_ERROR;
}

CK_RV CT_InitToken(CK_SESSION_HANDLE, CK_ULONG, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR)
{
    return CKR_GENERAL_ERROR;
}

CK_RV CT_ResetToken(CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR)
{
    return CKR_GENERAL_ERROR;
}
