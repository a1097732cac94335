// The lists that mech returns for all mechanisms and key types near those that it knows, and how it filters
// lists.
#include "mech_expected.h"
#include "zerlin/mech.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <sstream>

namespace {

using Values = std::vector<CK_ULONG>;

// Calls the function with every number that it knows and many others. Frees lists that are not const.
void expectLists(auto function, const char* expected)
{
    std::map<CK_ULONG, Values> lists;
    std::istringstream rules(expected);
    for (std::string rule; std::getline(rules, rule, ';');) {
        std::istringstream keys(rule.substr(0, rule.find(':')));
        std::istringstream numbers(rule.substr(rule.find(':') + 1));
        numbers >> std::hex;
        const Values list(std::istream_iterator<CK_ULONG>(numbers), {});
        for (std::string key; keys >> key;) {
            const CK_ULONG last = std::stoul(key.substr(key.find('-') + 1), nullptr, 16);
            for (CK_ULONG number = std::stoul(key, nullptr, 16); number != last + 1; ++number)
                lists[number] = list;
        }
    }
    for (CK_ULONG i = 0; i < 0x4400; ++i) {
        const CK_ULONG number = i / 2 | i % 2 << 31;
        CK_ULONG count = 0;
        auto* const list = function(number, &count);
        const Values& expectedList = lists[lists.contains(number) ? number : 0xFFFFFFFF];
        ASSERT_EQ(Values(list, list + count), expectedList) << expected << std::hex << " 0x" << number;
        if constexpr (std::is_same_v<decltype(list), CK_ULONG* const>) std::free(list);
    }
}

TEST(Mech, eachMechanismAndKeyTypeHasItsLists)
{
    expectLists(ktFromMech, expected::KEY_TYPES);
    expectLists(genkMechanismFromMechanism, expected::KEY_GENERATORS);
    expectLists(genkpMechanismFromMechanism, expected::KEY_PAIR_GENERATORS);
    expectLists(mechFromKt, expected::CIPHERS);
    expectLists(mechDeriveFromKt, expected::DERIVATIONS);
    expectLists(mechSignFromKt, expected::SIGNATURES);
    expectLists(mechSignRecFromKt, expected::RECOVERIES);
    expectLists([](CK_ULONG, CK_ULONG* count) { return hashMech(count); }, expected::HASH_MECH);
    expectLists([](CK_ULONG, CK_ULONG* count) { return kgMech(count); }, expected::KG_MECH);
    expectLists([](CK_ULONG, CK_ULONG* count) { return kpgMech(count); }, expected::KPG_MECH);
    for (CK_ULONG low = 0; low < 0x400; ++low) {
        EXPECT_EQ(isPbeMech(low), (low >= 0x3A0 && low <= 0x3AB) || low == 0x3C0) << low;
        EXPECT_EQ(isRc2Mech(low), low >= 0x101 && low <= 0x105) << low;
        EXPECT_EQ(isRc2Mech(low | 0x80000000), low == 0x101) << low;
    }
}

TEST(MechDeathTest, listsAreFilteredForGeneratorsAndKeyTypes)
{
    using Function = CK_MECHANISM_TYPE* (*)(const MechData*, CK_ULONG*);
    const Function keys = genkMechanismTabFromMechanismTab;
    const Function pairs = genkpMechanismTabFromMechanismTab;
    const Function rsa = [](auto* data, auto* count) { return mechFromTokKt(data, CKK_RSA, count); };
    const std::tuple<Function, Values, Values> rows[] = {
        {keys, {CKM_RC4, CKM_AES_CBC, CKM_AES_ECB}, {CKM_RC4_KEY_GEN, CKM_AES_KEY_GEN}},
        {keys, {CKM_DES3_CBC}, {CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN}}, // two, although the list has one entry
        // The result has at most as many entries as the list; the rest is ignored.
        {keys, {CKM_DES3_CBC, CKM_AES_CBC}, {CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN}},
        // The generator of RSA is 0, which must not be taken for an empty slot.
        {pairs, {CKM_ECDSA, CKM_RSA_PKCS, CKM_ECIES}, {CKM_EC_KEY_PAIR_GEN, CKM_RSA_PKCS_KEY_PAIR_GEN}},
        // A match behind the first m mechanisms of the key type leaves its slot as it was initialised.
        {rsa, {CKM_RSA_PKCS_OAEP, CKM_RSA_X_509}, {CKM_RSA_X_509, 0xFFFFFFFF}},
    };
    for (auto [function, input, output] : rows) {
        const MechData data = {input.data(), static_cast<CK_ULONG>(input.size())};
        CK_ULONG count = 0;
        CK_MECHANISM_TYPE* const list = function(&data, &count);
        EXPECT_EQ(Values(list, list + count), output) << testing::PrintToString(input);
        std::free(list);
    }
    EXPECT_DEATH(LookupMech(nullptr, CKM_AES_CBC), "mech\\.c:.*LookupMech.*pMech");
}

} // namespace
