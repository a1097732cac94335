// Looks up which key types and mechanisms belong together.
#include "zerlin/mech.h"

#include <algorithm>
#include <cstdlib>

#include "util/assertion.h"
#include "util/fileVersion.h"
#include "util/mech_tables.h"

FILE_VERSION("1.1.1.2");

using namespace zerlin;

namespace {

const MechanismRow& rowOfMechanism(CK_MECHANISM_TYPE mechanism)
{
    for (const MechanismRow& row : BY_MECHANISM)
        if (mechanism >= row.mechanisms.first && mechanism <= row.mechanisms.last) return row;
    return ANY_MECHANISM;
}

const KeyTypeRow& rowOfKeyType(CK_KEY_TYPE keyType)
{
    for (const KeyTypeRow& row : BY_KEY_TYPE)
        if (row.keyType == keyType) return row;
    return ANY_KEY_TYPE;
}

// Returns the list itself, not a copy. NONE is a null pointer and count 0.
const CK_ULONG* staticList(List list, CK_ULONG* pCount)
{
    *pCount = list.size();
    return list.data();
}

CK_MECHANISM_TYPE* allocate(CK_ULONG count)
{
    return static_cast<CK_MECHANISM_TYPE*>(std::calloc(count, sizeof(CK_MECHANISM_TYPE)));
}

CK_MECHANISM_TYPE* copyOf(List list, CK_ULONG* pCount)
{
    CK_MECHANISM_TYPE* const copy = allocate(list.size());
    if (copy == nullptr) return nullptr;
    std::copy(list.begin(), list.end(), copy);
    *pCount = list.size();
    return copy;
}

List entries(const MechData& mechData)
{
    return {mechData.array, mechData.count};
}

CK_ULONG occurrences(List list, CK_MECHANISM_TYPE mechanism)
{
    return static_cast<CK_ULONG>(std::count(list.begin(), list.end(), mechanism));
}

} // namespace

int LookupMech(const MechData* pMech, CK_MECHANISM_TYPE mechanism)
{
    assertThat(pMech != nullptr, "pMech", "mech.c");
    return occurrences(entries(*pMech), mechanism) != 0;
}

void FreeMechData(MechData* pMech)
{
    if (pMech == nullptr) return;
    std::free(pMech->array);
    std::free(pMech);
}

int isPbeMech(CK_MECHANISM_TYPE mechanism)
{
    return (mechanism >= CKM_PBE_MD2_DES_CBC && mechanism <= CKM_PBE_SHA1_RC2_40_CBC) ||
           mechanism == CKM_PBA_SHA1_WITH_SHA1_HMAC;
}

int isRc2Mech(CK_MECHANISM_TYPE mechanism)
{
    return (mechanism >= CKM_RC2_ECB && mechanism <= CKM_RC2_CBC_PAD) || mechanism == CKM_RC2_ECB_PAD;
}

const CK_KEY_TYPE* ktFromMech(CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount)
{
    return staticList(rowOfMechanism(mechanism).keyTypes, pCount);
}

const CK_MECHANISM_TYPE* genkMechanismFromMechanism(CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount)
{
    return staticList(rowOfMechanism(mechanism).keyGenerators, pCount);
}

const CK_MECHANISM_TYPE* genkpMechanismFromMechanism(CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount)
{
    return staticList(rowOfMechanism(mechanism).keyPairGenerators, pCount);
}

CK_MECHANISM_TYPE* genMechanismTabFromMechanismTab(const MechData* pMech, CK_ULONG* pCount, int pair)
{
    // One slot more than the list has entries, because the last mechanism may add two generators.
    CK_MECHANISM_TYPE* const generators = allocate(pMech->count + 1);
    if (generators == nullptr) return nullptr;

    CK_ULONG count = 0;
    for (const CK_MECHANISM_TYPE mechanism : entries(*pMech)) {
        if (count >= pMech->count) break; // ignores the rest of the list: deliberate
        const MechanismRow& row = rowOfMechanism(mechanism);
        for (const CK_MECHANISM_TYPE generator : pair ? row.keyPairGenerators : row.keyGenerators)
            if (occurrences({generators, count}, generator) == 0) generators[count++] = generator;
    }
    if (count == 0) {
        std::free(generators);
        return nullptr;
    }
    *pCount = count;
    return generators;
}

CK_MECHANISM_TYPE* genkMechanismTabFromMechanismTab(const MechData* pMech, CK_ULONG* pCount)
{
    return genMechanismTabFromMechanismTab(pMech, pCount, 0);
}

CK_MECHANISM_TYPE* genkpMechanismTabFromMechanismTab(const MechData* pMech, CK_ULONG* pCount)
{
    return genMechanismTabFromMechanismTab(pMech, pCount, 1);
}

CK_MECHANISM_TYPE* mechFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount)
{
    return copyOf(rowOfKeyType(keyType).ciphers, pCount);
}

CK_MECHANISM_TYPE* mechFromTokKt(const MechData* pTokMech, CK_KEY_TYPE keyType, CK_ULONG* pCount)
{
    const List ofKeyType = rowOfKeyType(keyType).ciphers;
    const List ofToken = entries(*pTokMech);
    CK_ULONG count = 0;
    for (const CK_MECHANISM_TYPE mechanism : ofKeyType)
        count += occurrences(ofToken, mechanism);
    if (count == 0) return nullptr;
    CK_MECHANISM_TYPE* const matches = allocate(count);
    if (matches == nullptr) return nullptr;

    *pCount = count;
    std::fill_n(matches, count, CK_UNAVAILABLE_INFORMATION);
    // Searches only the first `count` mechanisms of the key type, so later matches are missing: deliberate.
    CK_MECHANISM_TYPE* next = matches;
    for (const CK_MECHANISM_TYPE mechanism : ofKeyType.first(std::min<std::size_t>(count, ofKeyType.size())))
        next = std::fill_n(next, occurrences(ofToken, mechanism), mechanism);
    return matches;
}

CK_MECHANISM_TYPE* mechDeriveFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount)
{
    return copyOf(rowOfKeyType(keyType).derivations, pCount);
}

CK_MECHANISM_TYPE* mechSignFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount)
{
    return copyOf(rowOfKeyType(keyType).signatures, pCount);
}

CK_MECHANISM_TYPE* mechSignRecFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount)
{
    return copyOf(rowOfKeyType(keyType).recoveries, pCount);
}

const CK_MECHANISM_TYPE* hashMech(CK_ULONG* pCount)
{
    return staticList(HASHES, pCount);
}

const CK_MECHANISM_TYPE* kgMech(CK_ULONG* pCount)
{
    return staticList(KEY_GENERATORS, pCount);
}

const CK_MECHANISM_TYPE* kpgMech(CK_ULONG* pCount)
{
    return staticList(KEY_PAIR_GENERATORS, pCount);
}
