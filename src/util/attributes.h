// Helpers that the attribute functions share.
#pragma once

#include <algorithm>
#include <span>

#include "zerlin/attrutil.h"

namespace zerlin {

// The entries of a set; none if the set is null or has no array.
inline std::span<CK_ATTRIBUTE> entries(const AttributeSet* set)
{
    if (set == nullptr || set->attrs == nullptr) return {};
    return {set->attrs, set->count};
}

// The bytes that a value of this length has. C_GetAttributeValue leaves CK_UNAVAILABLE_INFORMATION in an
// attribute that it could not read; there are no bytes then.
inline CK_ULONG byteCount(CK_ULONG len)
{
    return len == CK_UNAVAILABLE_INFORMATION ? 0 : len;
}

inline bool hasBytes(const CK_ATTRIBUTE& attr)
{
    return attr.pValue != nullptr && byteCount(attr.ulValueLen) > 0;
}

inline bool contains(std::span<const CK_ATTRIBUTE_TYPE> types, CK_ATTRIBUTE_TYPE type)
{
    return std::ranges::find(types, type) != types.end();
}

} // namespace zerlin
