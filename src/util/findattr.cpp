// Finds an attribute in a template, and reads or writes one on the token.
#include "zerlin/attrutil.h"

#include <algorithm>
#include <span>

#include "util/assertion.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

CK_ATTRIBUTE* FindAttribute(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count)
{
    zerlin::assertThat(array != nullptr || count == 0, "attr", "findattr.c");
    const std::span attributes(array, count);
    const auto found = std::ranges::find_if(
        attributes, [type](const CK_ATTRIBUTE& attr) { return type == CKA_WILDCARD || attr.type == type; });
    return found == attributes.end() ? nullptr : const_cast<CK_ATTRIBUTE*>(&*found);
}

CK_ATTRIBUTE* FindAttr(CK_ATTRIBUTE_TYPE type, const AttributeSet* set)
{
    zerlin::assertThat(set != nullptr, "attrData", "findattr.c");
    return FindAttribute(type, set->attrs, set->count);
}

CK_RV GetAttr(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type, void* buffer,
    CK_ULONG bufferLen, CK_ULONG* lengthOut)
{
    CK_ATTRIBUTE query = {type, nullptr, 0};
    const CK_RV rv = C_GetAttributeValue(session, object, &query, 1);
    if (rv != CKR_OK) return rv;
    if (lengthOut != nullptr) *lengthOut = query.ulValueLen;
    if (bufferLen == 0) return CKR_OK;
    // Not CKR_BUFFER_TOO_SMALL: deliberate.
    if (query.ulValueLen > bufferLen) return CKR_ATTRIBUTE_TYPE_INVALID;
    CK_ATTRIBUTE attribute = {type, buffer, query.ulValueLen};
    return C_GetAttributeValue(session, object, &attribute, 1);
}

CK_RV SetAttr(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type, const void* value,
    CK_ULONG valueLen)
{
    CK_ATTRIBUTE attribute = {type, const_cast<void*>(value), valueLen};
    return C_SetAttributeValue(session, object, &attribute, 1);
}
