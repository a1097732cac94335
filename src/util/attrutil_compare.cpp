// Compares attributes, and sets of them.
#include "zerlin/attrutil.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "util/attributes.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace {

using zerlin::entries;

// memcmp of values of this length, but a null value is allowed and is less than any other.
int compareBytes(const void* a, const void* b, CK_ULONG len)
{
    const CK_ULONG bytes = zerlin::byteCount(len);
    if (bytes == 0) return 0;
    if (a == nullptr || b == nullptr) return int{a != nullptr} - int{b != nullptr};
    return std::memcmp(a, b, bytes);
}

// Does the longer label equal the shorter one, followed by one NUL?
bool differsByNul(const CK_ATTRIBUTE& a, const CK_ATTRIBUTE& b)
{
    const auto [shorter, longer] =
        std::minmax(a, b, [](const auto& x, const auto& y) { return x.ulValueLen < y.ulValueLen; });
    if (longer.ulValueLen - shorter.ulValueLen != 1 || !zerlin::hasBytes(longer)) return false;
    if (static_cast<const CK_BYTE*>(longer.pValue)[shorter.ulValueLen] != 0) return false;
    return compareBytes(shorter.pValue, longer.pValue, shorter.ulValueLen) == 0;
}

bool matches(const CK_ATTRIBUTE& a, const CK_ATTRIBUTE& b)
{
    return attrcmp(&a, &b) == 0 || (a.type == CKA_LABEL && differsByNul(a, b));
}

} // namespace

int attrcmpbuf(const CK_ATTRIBUTE* attr, const void* buffer, CK_ULONG len)
{
    const auto difference = static_cast<CK_LONG>(attr->ulValueLen - len);
    if (difference != 0) return difference < 0 ? -1 : 1;
    return compareBytes(attr->pValue, buffer, len);
}

int attrcmp(const CK_ATTRIBUTE* a, const CK_ATTRIBUTE* b)
{
    return attrcmpbuf(a, b->pValue, b->ulValueLen);
}

int CmpAttributes(const CK_ATTRIBUTE* a, const CK_ATTRIBUTE* b, int compareValues)
{
    if (a->type != b->type) return 1;
    return compareValues != 0 && attrcmp(a, b) != 0 ? 2 : 0;
}

int SearchAttribute(const AttributeSet* set, const CK_ATTRIBUTE* attr, int compareValues)
{
    int last = 1;
    for (const CK_ATTRIBUTE& entry : entries(set)) {
        last = CmpAttributes(&entry, attr, compareValues);
        if (last == 0) break;
    }
    return last;
}

int CmpAttributeSets(const AttributeSet* a, const AttributeSet* b)
{
    if (entries(a).size() != entries(b).size()) return 1;
    std::size_t pairs = 0;
    for (const CK_ATTRIBUTE& entry : entries(a)) {
        pairs += static_cast<std::size_t>(std::ranges::count(entries(b), entry.type, &CK_ATTRIBUTE::type));
    }
    return pairs == entries(a).size() ? 0 : 2;
}

int MatchAttributeSet(const AttributeSet* a, const AttributeSet* b)
{
    if (a == b) return 1;
    const std::span others = entries(b);
    if (a == nullptr) return others.empty();
    return std::ranges::all_of(entries(a), [others](const CK_ATTRIBUTE& entry) {
        const auto other = std::ranges::find(others, entry.type, &CK_ATTRIBUTE::type);
        return other != others.end() && matches(entry, *other);
    });
}
