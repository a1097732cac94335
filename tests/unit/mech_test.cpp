// The lists that mech returns for all mechanisms and key types near those that it knows, and how it filters
// lists.
#include "digest.h"
#include "harness/failing_alloc.h"
#include "zerlin/mech.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>

namespace {

using MechList = std::vector<CK_ULONG>;

// Calls the function with every number that it knows and many others. Each line is the first number of a
// range that shares a list, and the list: "1081: 1080".
std::string listsOf(auto function, CK_ULONG end = 0x2200)
{
    std::ostringstream lines;
    MechList last = {0, 0, 0};
    for (CK_ULONG i = 0; i < 2 * end; ++i) {
        const CK_ULONG number = i % end + (i < end ? 0 : 0x80000000);
        CK_ULONG count = 0;
        auto* const list = function(number, &count);
        const MechList next(list, list + count);
        if constexpr (requires { std::free(list); }) std::free(list); // one that is not const is the caller's
        if (next == last) continue;
        lines << std::hex << number << ':';
        for (const CK_ULONG entry : last = next)
            lines << ' ' << entry;
        lines << '\n';
    }
    return lines.str() + '\n';
}

TEST(Mech, eachMechanismAndKeyTypeHasItsLists)
{
    const auto hashes = [](CK_ULONG, CK_ULONG* count) { return hashMech(count); };
    const auto keys = [](CK_ULONG, CK_ULONG* count) { return kgMech(count); };
    const auto pairs = [](CK_ULONG, CK_ULONG* count) { return kpgMech(count); };
    std::string lists =
        listsOf(ktFromMech) + listsOf(genkMechanismFromMechanism) + listsOf(genkpMechanismFromMechanism) +
        listsOf(mechFromKt, 0x400) + listsOf(mechDeriveFromKt, 0x400) + listsOf(mechSignFromKt, 0x400) +
        listsOf(mechSignRecFromKt, 0x400) + listsOf(hashes, 1) + listsOf(keys, 1) + listsOf(pairs, 1);
    for (CK_ULONG i = 0; i < 0x400; ++i)
        lists += std::to_string(isPbeMech(i) + 2 * isRc2Mech(i) + 4 * isRc2Mech(i | 0x80000000));
    EXPECT_EQ(digest(lists), "206 lines, 1601664053") << lists;
}

TEST(Mech, listsAreFilteredSearchedAndFreed)
{
    using Function = CK_MECHANISM_TYPE* (*)(const MechData*, CK_ULONG*);
    const Function keys = genkMechanismTabFromMechanismTab, pairs = genkpMechanismTabFromMechanismTab;
    const Function rsa = [](auto* data, auto* count) { return mechFromTokKt(data, CKK_RSA, count); };
    const std::tuple<Function, MechList, MechList> rows[] = {
        {keys, {CKM_RC4, CKM_AES_CBC, CKM_AES_ECB}, {CKM_RC4_KEY_GEN, CKM_AES_KEY_GEN}},
        {keys, {CKM_DES3_CBC}, {CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN}}, // two, although the list has one entry
        // The result has at most as many entries as the list; the rest is ignored.
        {keys, {CKM_DES3_CBC, CKM_AES_CBC}, {CKM_DES2_KEY_GEN, CKM_DES3_KEY_GEN}},
        // The generator of RSA is 0, which must not be taken for an empty slot.
        {pairs, {CKM_ECDSA, CKM_RSA_PKCS, CKM_ECIES}, {CKM_EC_KEY_PAIR_GEN, CKM_RSA_PKCS_KEY_PAIR_GEN}},
        {rsa, {CKM_RSA_PKCS, CKM_DES_CBC, CKM_RSA_X_509}, {CKM_RSA_X_509, CKM_RSA_PKCS}},
        // A match behind the first m mechanisms of the key type leaves its slot as it was initialised.
        {rsa, {CKM_RSA_PKCS_OAEP, CKM_RSA_X_509}, {CKM_RSA_X_509, ~CK_ULONG{0}}}, {rsa, {CKM_DES_CBC}, {}}};
    for (const auto& [function, input, output] : rows) {
        SCOPED_TRACE(testing::PrintToString(input) + testing::PrintToString(output));
        const HeapWatch heap;
        auto* const array = static_cast<CK_ULONG*>(std::calloc(8, sizeof(CK_ULONG)));
        std::ranges::copy(input, array);
        auto* const data = static_cast<MechData*>(std::malloc(sizeof(MechData)));
        *data = {array, static_cast<CK_ULONG>(input.size())};
        CK_ULONG count = 77;
        CK_MECHANISM_TYPE* const list = function(data, &count);
        EXPECT_TRUE(list == nullptr || heap.blocks.at(list) >= output.size() * sizeof(CK_ULONG));
        EXPECT_EQ(count, output.empty() ? 77 : output.size());
        EXPECT_EQ(MechList(list, list + output.size()), output);
        std::free(list);
        failAllocation(1);
        EXPECT_EQ(function(data, &count), nullptr);
        failAllocation(0);
        EXPECT_EQ(LookupMech(data, input.back()), 1);
        EXPECT_EQ(LookupMech(data, 0), 0); // not in the list, but behind it
        FreeMechData(data);
        EXPECT_TRUE(heap.blocks.empty());
    }
}

} // namespace
