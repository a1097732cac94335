// What mech tells, over all mechanisms and key types near those that it knows, and what it makes of lists.
#include "zerlin/mech.h"

#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>

#include "mech_expected.h"

namespace {

using expected::Values;

constexpr CK_ULONG UNTOUCHED = 0xDEADBEEF;
constexpr CK_ULONG UNFILLED = 0xFFFFFFFF;

// Every mechanism that has a list, and far more that have none.
Values manyMechanisms()
{
    Values all = {0x4001, 0x4002, 0x7FFFFFFF, 0xFFFFFFFE, 0xFFFFFFFF};
    for (CK_ULONG low = 0; low < 0x2200; ++low)
        all.insert(all.end(), {low, low | 0x80000000});
    return all;
}

Values manyKeyTypes()
{
    Values all = {0x7FFFFFFF, 0xFFFFFFFF};
    for (CK_ULONG low = 0; low < 0x300; ++low)
        all.insert(all.end(), {low, low | 0x80000000});
    return all;
}

Values listOf(const std::vector<expected::ByMechanism>& rules, CK_ULONG mechanism)
{
    for (const auto& [ranges, list] : rules)
        for (const auto& [first, last] : ranges)
            if (mechanism >= first && mechanism <= last) return list;
    return {};
}

// What a heap list holds, freed; the count must be untouched where there is none.
Values takeList(CK_MECHANISM_TYPE* list, CK_ULONG count)
{
    const std::unique_ptr<CK_MECHANISM_TYPE, decltype(&std::free)> owner(list, std::free);
    if (list == nullptr) {
        EXPECT_EQ(count, UNTOUCHED);
        return {};
    }
    EXPECT_NE(count, 0u);
    return {list, list + count};
}

MechData dataOf(Values& mechanisms)
{
    return {mechanisms.data(), static_cast<CK_ULONG>(mechanisms.size())};
}

TEST(Mech, eachMechanismHasItsKeyTypesAndGenerators)
{
    struct Case {
        const char* title;
        const CK_ULONG* (*function)(CK_MECHANISM_TYPE, CK_ULONG*);
        const std::vector<expected::ByMechanism>& rules;
        Values others;
    };
    const Case cases[] = {
        {"ktFromMech", ktFromMech, expected::KEY_TYPES, {0x10}},
        {"genkMechanismFromMechanism", genkMechanismFromMechanism, expected::KEY_GENERATORS, {}},
        {"genkpMechanismFromMechanism", genkpMechanismFromMechanism, expected::KEY_PAIR_GENERATORS, {}},
    };
    for (const auto& [title, function, rules, others] : cases) {
        for (const CK_ULONG mechanism : manyMechanisms()) {
            CK_ULONG count = UNTOUCHED;
            const CK_ULONG* const list = function(mechanism, &count);
            const Values known = listOf(rules, mechanism);
            const Values& wanted = known.empty() ? others : known;
            ASSERT_EQ(list == nullptr, wanted.empty()) << title << std::hex << " 0x" << mechanism;
            ASSERT_EQ(Values(list, list + count), wanted) << title << std::hex << " 0x" << mechanism;
            ASSERT_EQ(function(mechanism, &count), list) << title << ": not a static list";
        }
    }
}

TEST(Mech, onlyTheFamiliesOfPbeAndRc2AreTaken)
{
    for (const CK_ULONG mechanism : manyMechanisms()) {
        const bool pbe = (mechanism >= 0x3A0 && mechanism <= 0x3AB) || mechanism == 0x3C0;
        const bool rc2 = (mechanism >= 0x101 && mechanism <= 0x105) || mechanism == 0x80000101;
        ASSERT_EQ(isPbeMech(mechanism), pbe ? 1 : 0) << std::hex << mechanism;
        ASSERT_EQ(isRc2Mech(mechanism), rc2 ? 1 : 0) << std::hex << mechanism;
    }
}

TEST(Mech, eachKeyTypeHasItsMechanisms)
{
    struct Case {
        const char* title;
        CK_MECHANISM_TYPE* (*function)(CK_KEY_TYPE, CK_ULONG*);
        const expected::ByKeyType& lists;
    };
    const Case cases[] = {
        {"mechFromKt", mechFromKt, expected::CIPHERS},
        {"mechDeriveFromKt", mechDeriveFromKt, expected::DERIVATIONS},
        {"mechSignFromKt", mechSignFromKt, expected::SIGNATURES},
        {"mechSignRecFromKt", mechSignRecFromKt, expected::RECOVERIES},
    };
    for (const auto& [title, function, lists] : cases) {
        for (const CK_ULONG keyType : manyKeyTypes()) {
            const auto own = lists.lists.find(keyType);
            CK_ULONG count = UNTOUCHED;
            CK_MECHANISM_TYPE* const list = function(keyType, &count);
            ASSERT_EQ(takeList(list, count), own == lists.lists.end() ? lists.any : own->second)
                << title << std::hex << " 0x" << keyType;
        }
    }
}

TEST(Mech, listsOfKeyTypesAreTheCallersOwn)
{
    CK_ULONG count = 0;
    CK_MECHANISM_TYPE* const list = mechFromKt(CKK_DSA, &count);
    list[0] = 0;
    std::free(list);
    CK_ULONG again = 0;
    CK_MECHANISM_TYPE* const fresh = mechFromKt(CKK_DSA, &again);
    EXPECT_EQ(takeList(fresh, again), Values{CKM_DSA});
}

TEST(Mech, theFixedListsAreWhole)
{
    struct Case {
        const CK_MECHANISM_TYPE* (*function)(CK_ULONG*);
        const Values& list;
        std::size_t size;
    };
    const Case cases[] = {
        {hashMech, expected::HASH_MECH, 15},
        {kgMech, expected::KG_MECH, 11},
        {kpgMech, expected::KPG_MECH, 5},
    };
    for (const auto& [function, wanted, size] : cases) {
        CK_ULONG count = UNTOUCHED;
        const CK_MECHANISM_TYPE* const list = function(&count);
        EXPECT_EQ(Values(list, list + count), wanted);
        EXPECT_EQ(count, size);
        EXPECT_EQ(function(&count), list);
    }
}

TEST(Mech, generatorsOfAListComeOnceAndInOrder)
{
    constexpr int KEY = 0;
    constexpr int PAIR = 1;
    struct Case {
        Values input;
        int pair;
        Values output;
    };
    const Case cases[] = {
        {{}, KEY, {}},
        {{}, PAIR, {}},
        {{CKM_AES_CBC_PAD, CKM_RSA_PKCS}, KEY, {}},
        {{CKM_AES_CBC, CKM_RSA_PKCS_KEY_PAIR_GEN}, PAIR, {}},
        {{CKM_AES_CBC, CKM_AES_ECB, CKM_RC4}, KEY, {CKM_AES_KEY_GEN, CKM_RC4_KEY_GEN}},
        {{CKM_RC4, CKM_AES_CBC}, KEY, {CKM_RC4_KEY_GEN, CKM_AES_KEY_GEN}},
        // The generator of RSA is 0, and may not be taken for a slot that is still empty.
        {{CKM_RSA_PKCS}, PAIR, {CKM_RSA_PKCS_KEY_PAIR_GEN}},
        {{CKM_ECDSA, CKM_RSA_PKCS, CKM_ECIES, CKM_DSA, CKM_DH_PKCS_DERIVE}, PAIR,
            {CKM_EC_KEY_PAIR_GEN, CKM_RSA_PKCS_KEY_PAIR_GEN, CKM_DSA_KEY_PAIR_GEN, CKM_DH_PKCS_KEY_PAIR_GEN}},
        {{CKM_ECDSA}, -1, {CKM_EC_KEY_PAIR_GEN}},
        // Two for one, over the count of the list.
        {{CKM_DES3_CBC}, KEY, {CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN}},
        {{CKM_DSA_PARAMETER_GEN}, KEY, {CKM_DH_PKCS_PARAMETER_GEN, CKM_DSA_PARAMETER_GEN}},
        {{CKM_AES_CBC, CKM_DES3_CBC}, KEY, {CKM_AES_KEY_GEN, CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN}},
        {{CKM_VISA_CVV, CKM_DES3_CBC}, KEY, {CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN}},
        // As many as the list has entries: the rest is not looked at.
        {{CKM_DES3_CBC, CKM_AES_CBC}, KEY, {CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN}},
        {{CKM_DES3_CBC, CKM_DES3_ECB, CKM_DSA_PARAMETER_GEN, CKM_AES_CBC}, KEY,
            {CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN, CKM_DH_PKCS_PARAMETER_GEN, CKM_DSA_PARAMETER_GEN}},
    };
    for (auto [input, pair, output] : cases) {
        const MechData data = dataOf(input);
        CK_ULONG count = UNTOUCHED;
        CK_MECHANISM_TYPE* const list = genMechanismTabFromMechanismTab(&data, &count, pair);
        EXPECT_EQ(takeList(list, count), output) << testing::PrintToString(input);

        const auto wrapper =
            pair == KEY ? genkMechanismTabFromMechanismTab : genkpMechanismTabFromMechanismTab;
        CK_ULONG wrapperCount = UNTOUCHED;
        CK_MECHANISM_TYPE* const wrapperList = wrapper(&data, &wrapperCount);
        EXPECT_EQ(takeList(wrapperList, wrapperCount), output) << testing::PrintToString(input);
    }
}

TEST(Mech, aTokensMechanismsForAKeyType)
{
    struct Case {
        Values token;
        CK_KEY_TYPE keyType;
        Values matches;
    };
    const Case cases[] = {
        {{}, CKK_RSA, {}},
        {{CKM_AES_CBC, CKM_SHA_1}, CKK_RSA, {}},
        {{CKM_RSA_PKCS_OAEP, CKM_RSA_9796, CKM_SHA_1, CKM_RSA_PKCS, CKM_RSA_X_509}, CKK_RSA,
            {CKM_RSA_X_509, CKM_RSA_PKCS, CKM_RSA_9796, CKM_RSA_PKCS_OAEP}},
        {{CKM_RSA_PKCS, CKM_RSA_X_509}, CKK_RSA, {CKM_RSA_X_509, CKM_RSA_PKCS}},
        // A match beyond the first m of the key type's mechanisms leaves its slot unfilled.
        {{CKM_RSA_PKCS_OAEP}, CKK_RSA, {UNFILLED}},
        {{CKM_RSA_PKCS_OAEP, CKM_RSA_X_509}, CKK_RSA, {CKM_RSA_X_509, UNFILLED}},
        {{CKM_RSA_9796, CKM_RSA_PKCS}, CKK_RSA, {CKM_RSA_PKCS, UNFILLED}},
        {{CKM_AES_KEY_WRAP_PAD, CKM_AES_KEY_WRAP}, CKK_AES, {UNFILLED, UNFILLED}},
        // Twice in the token's list is twice in the result, even when that is more than the key type has.
        {{CKM_DSA, CKM_RSA_PKCS, CKM_DSA, CKM_DSA}, CKK_DSA, {CKM_DSA, CKM_DSA, CKM_DSA}},
        {{CKM_RSA_9796, CKM_RSA_X_509, CKM_RSA_9796}, CKK_RSA, {CKM_RSA_X_509, CKM_RSA_9796, CKM_RSA_9796}},
        {expected::CIPHERS.any, CKK_CAST3, expected::CIPHERS.any},
    };
    for (auto [token, keyType, matches] : cases) {
        const MechData data = dataOf(token);
        CK_ULONG count = UNTOUCHED;
        CK_MECHANISM_TYPE* const list = mechFromTokKt(&data, keyType, &count);
        EXPECT_EQ(takeList(list, count), matches) << keyType << ": " << testing::PrintToString(token);
    }
}

TEST(Mech, aListIsLookedThroughAndFreed)
{
    auto* const data = static_cast<MechData*>(std::malloc(sizeof(MechData)));
    auto* const array = static_cast<CK_MECHANISM_TYPE*>(std::malloc(3 * sizeof(CK_MECHANISM_TYPE)));
    ASSERT_NE(data, nullptr);
    ASSERT_NE(array, nullptr);
    array[0] = CKM_AES_CBC;
    array[1] = CKM_RSA_PKCS;
    array[2] = CKM_ECIES;
    *data = {array, 2};
    EXPECT_EQ(LookupMech(data, CKM_AES_CBC), 1);
    EXPECT_EQ(LookupMech(data, CKM_RSA_PKCS), 1);
    EXPECT_EQ(LookupMech(data, CKM_ECIES), 0) << "beyond the count";
    EXPECT_EQ(LookupMech(data, CKM_AES_ECB), 0);
    FreeMechData(data);
    FreeMechData(nullptr);

    const MechData empty = {nullptr, 0};
    EXPECT_EQ(LookupMech(&empty, 0), 0);
}

TEST(MechDeathTest, noListAtAllIsAnAssertion)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(LookupMech(nullptr, CKM_AES_CBC), "mech\\.c:.*LookupMech.*pMech");
}

} // namespace
