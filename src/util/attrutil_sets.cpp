// Creates, reads, writes and frees sets of attributes. Values are overwritten before they are freed.
#include "zerlin/attrutil.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "util/attributes.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace {

using zerlin::byteCount;
using zerlin::entries;
using zerlin::hasBytes;

constexpr int CLEARED = 0xAA;
constexpr CK_ULONG MAX_COUNT = SIZE_MAX / sizeof(CK_ATTRIBUTE);

// The modes of doWriteAttr.
enum Mode { WRITE = 0, COPY = 1, ADD = 2 };

void freeValue(const CK_ATTRIBUTE& attr)
{
    void* const value = attr.pValue;
    if (value == nullptr) return;
    std::memset(value, CLEARED, byteCount(attr.ulValueLen));
    __asm__ volatile("" : : "r"(value) : "memory"); // otherwise the compiler removes the memset
    std::free(value);
}

// The copy is null if there are no bytes. Returns false if memory cannot be allocated.
bool copyValue(const void* value, CK_ULONG len, void*& copy)
{
    copy = nullptr;
    const CK_ULONG bytes = byteCount(len);
    if (value == nullptr || bytes == 0) return true;
    copy = std::malloc(bytes);
    if (copy == nullptr) return false;
    std::memcpy(copy, value, bytes);
    return true;
}

CK_RV replace(CK_ATTRIBUTE& attr, const void* value, CK_ULONG len)
{
    void* copy;
    const bool copied = copyValue(value, len, copy); // first: value may be the old one
    freeValue(attr);
    attr = {attr.type, copy, len};
    return copied ? CKR_OK : CKR_HOST_MEMORY;
}

CK_RV append(AttributeSet& set, CK_ATTRIBUTE_TYPE type, const void* value, CK_ULONG len)
{
    if (set.count >= MAX_COUNT) return CKR_HOST_MEMORY;
    CK_ATTRIBUTE added = {type, nullptr, len};
    if (!copyValue(value, len, added.pValue)) return CKR_HOST_MEMORY;
    void* const grown = std::realloc(set.attrs, (set.count + 1) * sizeof(CK_ATTRIBUTE));
    if (grown == nullptr) {
        freeValue(added);
        return CKR_HOST_MEMORY;
    }
    set.attrs = static_cast<CK_ATTRIBUTE*>(grown);
    set.attrs[set.count] = added;
    ++set.count;
    return CKR_OK;
}

// CopyAttr for an attribute of a template: a refused one makes the whole template inconsistent.
CK_RV copyFromTemplate(const CK_ATTRIBUTE& attr, AttributeSet* set)
{
    const CK_RV rv = CopyAttr(attr.pValue, attr.ulValueLen, attr.type, set);
    return rv == CKR_ATTRIBUTE_READ_ONLY ? CKR_TEMPLATE_INCONSISTENT : rv;
}

} // namespace

AttributeSet* NewAttributeSet(CK_ULONG count)
{
    auto* const set = static_cast<AttributeSet*>(std::malloc(sizeof(AttributeSet)));
    if (set == nullptr) return nullptr;
    *set = {nullptr, count};
    if (count > 0 && count <= MAX_COUNT) {
        set->attrs = static_cast<CK_ATTRIBUTE*>(std::calloc(count, sizeof(CK_ATTRIBUTE)));
    }
    return set;
}

void FreeAttributeSet(AttributeSet* set)
{
    if (set == nullptr) return;
    FreeAttributes(set->attrs, set->count);
    std::free(set);
}

AttributeSet* DupAttributes(const CK_ATTRIBUTE* array, CK_ULONG count)
{
    AttributeSet* const set = NewAttributeSet(count);
    if (set == nullptr) return nullptr;
    bool complete = set->attrs != nullptr || count == 0;
    for (CK_ULONG i = 0; complete && i < count; ++i) {
        CK_ATTRIBUTE& copy = set->attrs[i];
        copy = {array[i].type, nullptr, array[i].ulValueLen};
        complete = copyValue(array[i].pValue, array[i].ulValueLen, copy.pValue);
    }
    if (complete) return set;
    FreeAttributeSet(set);
    return nullptr;
}

AttributeSet* DupAttributeSet(const AttributeSet* set)
{
    return set == nullptr ? nullptr : DupAttributes(entries(set).data(), entries(set).size());
}

void FreeAttributes(CK_ATTRIBUTE* array, CK_ULONG count)
{
    if (array == nullptr) return;
    for (CK_ULONG i = 0; i < count; ++i) {
        freeValue(array[i]);
    }
    std::free(array);
}

void FreeAttributesNoClear(CK_ATTRIBUTE* array, CK_ULONG count)
{
    if (array == nullptr) return;
    for (CK_ULONG i = 0; i < count; ++i) {
        std::free(array[i].pValue);
    }
    std::free(array);
}

int ReadAttr(
    void* out, CK_ULONG outSize, CK_ULONG* lengthOut, CK_ATTRIBUTE_TYPE type, const AttributeSet* set)
{
    if (set == nullptr) return 0;
    const CK_ATTRIBUTE* const attr = FindAttr(type, set);
    if (attr == nullptr) return 0;
    if (outSize > 0) {
        std::memset(out, 0, outSize);
        if (hasBytes(*attr)) std::memcpy(out, attr->pValue, std::min(attr->ulValueLen, outSize));
    }
    if (lengthOut != nullptr) *lengthOut = attr->ulValueLen;
    return 1;
}

CK_RV GetObjectClassAndKeyType(const AttributeSet* set, CK_OBJECT_CLASS* classOut, CK_KEY_TYPE* keyTypeOut)
{
    const bool found = ReadAttr(classOut, sizeof *classOut, nullptr, CKA_CLASS, set) &&
                       ReadAttr(keyTypeOut, sizeof *keyTypeOut, nullptr, CKA_KEY_TYPE, set);
    return found ? CKR_OK : CKR_KEY_HANDLE_INVALID;
}

void WriteAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set)
{
    doWriteAttr(value, len, type, set, WRITE);
}

CK_RV CopyAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set)
{
    return doWriteAttr(value, len, type, set, COPY);
}

CK_RV AddAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set)
{
    return doWriteAttr(value, len, type, set, ADD);
}

CK_RV doWriteAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set, int mode)
{
    if (set == nullptr) return CKR_HOST_MEMORY;
    CK_ATTRIBUTE* const attr = FindAttr(type, set);
    if (attr == nullptr) return append(*set, type, value, len);
    if (mode != WRITE && !canModifyAttr(set, attr, mode == COPY)) {
        return attrcmpbuf(attr, value, len) == 0 ? CKR_OK : CKR_ATTRIBUTE_READ_ONLY;
    }
    return replace(*attr, value, len);
}

CK_RV DelAttr(CK_ATTRIBUTE_TYPE type, AttributeSet* set)
{
    if (set == nullptr) return CKR_HOST_MEMORY;
    CK_ATTRIBUTE* const attr = FindAttr(type, set);
    if (attr == nullptr) return CKR_ATTRIBUTE_TYPE_INVALID;
    freeValue(*attr);
    std::copy(attr + 1, set->attrs + set->count, attr);
    --set->count;
    if (set->count == 0) {
        std::free(set->attrs);
        set->attrs = nullptr;
        return CKR_OK;
    }
    void* const shrunk = std::realloc(set->attrs, set->count * sizeof(CK_ATTRIBUTE));
    if (shrunk == nullptr) return CKR_HOST_MEMORY;
    set->attrs = static_cast<CK_ATTRIBUTE*>(shrunk);
    return CKR_OK;
}

CK_ATTRIBUTE* CopyAttribute(
    CK_ATTRIBUTE_TYPE type, AttributeSet* destinationSet, const AttributeSet* sourceSet)
{
    const CK_ATTRIBUTE* const source = FindAttr(type, sourceSet);
    if (source != nullptr) WriteAttr(source->pValue, source->ulValueLen, type, destinationSet);
    return FindAttr(type, destinationSet);
}

CK_RV AddAttributeSets(AttributeSet** out, const AttributeSet* base, const AttributeSet* extra)
{
    *out = DupAttributeSet(base);
    if (*out == nullptr || extra == nullptr) return CKR_HOST_MEMORY;
    for (const CK_ATTRIBUTE& attr : entries(extra)) {
        const CK_RV rv = copyFromTemplate(attr, *out);
        if (rv == CKR_OK) continue;
        FreeAttributeSet(*out);
        *out = nullptr;
        return rv;
    }
    return CKR_OK;
}

CK_RV ConcatAttributeSets(AttributeSet* set, const AttributeSet* extra)
{
    if (entries(extra).empty()) return CKR_OK;
    if (set == nullptr) return CKR_HOST_MEMORY;
    if (numAttrLookup(CKA_MODIFIABLE, set->attrs, set->count) == CK_FALSE) return CKR_ATTRIBUTE_READ_ONLY;
    for (const CK_ATTRIBUTE& attr : entries(extra)) {
        if (FindAttr(attr.type, set) != nullptr) continue;
        const CK_RV rv = copyFromTemplate(attr, set);
        if (rv != CKR_OK) return rv;
    }
    return CKR_OK;
}
