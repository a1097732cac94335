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

// The list as a copy. One that is not const is the caller's to free.
template <typename Element>
MechList taken(Element* list, CK_ULONG count)
{
    const MechList copy(list, list + count);
    if constexpr (!std::is_const_v<Element>) std::free(list);
    return copy;
}

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
        const MechList next = taken(list, count);
        if (next == last) continue;
        lines << std::hex << number << ':';
        for (const CK_ULONG entry : last = next)
            lines << ' ' << entry;
        lines << '\n';
    }
    return lines.str();
}

TEST(Mech, eachMechanismAndKeyTypeHasItsLists)
{
    const std::tuple<const char*, std::string, const char*> functions[] = {
        {"ktFromMech", listsOf(ktFromMech), "58 lines, 4217195872"},
        {"genkMechanismFromMechanism", listsOf(genkMechanismFromMechanism), "45 lines, 3484841172"},
        {"genkpMechanismFromMechanism", listsOf(genkpMechanismFromMechanism), "23 lines, 144559994"},
        {"mechFromKt", listsOf(mechFromKt, 0x400), "22 lines, 3263364651"},
        {"mechDeriveFromKt", listsOf(mechDeriveFromKt, 0x400), "17 lines, 3397910235"},
        {"mechSignFromKt", listsOf(mechSignFromKt, 0x400), "23 lines, 3733447311"},
        {"mechSignRecFromKt", listsOf(mechSignRecFromKt, 0x400), "5 lines, 1877234631"},
        {"hashMech", listsOf([](CK_ULONG, CK_ULONG* count) { return hashMech(count); }, 1),
            "1 lines, 907800670"},
        {"kgMech", listsOf([](CK_ULONG, CK_ULONG* count) { return kgMech(count); }, 1), "1 lines, 83006433"},
        {"kpgMech", listsOf([](CK_ULONG, CK_ULONG* count) { return kpgMech(count); }, 1),
            "1 lines, 3486188650"},
    };
    for (const auto& [name, lists, expected] : functions)
        EXPECT_EQ(digest(lists), expected) << name << '\n' << lists;
    for (CK_ULONG low = 0; low < 0x400; ++low) {
        EXPECT_EQ(isPbeMech(low), (low >= 0x3A0 && low <= 0x3AB) || low == 0x3C0) << low;
        EXPECT_EQ(isRc2Mech(low), low >= 0x101 && low <= 0x105) << low;
        EXPECT_EQ(isRc2Mech(low | 0x80000000), low == 0x101) << low;
    }
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
        {keys, {CKM_RSA_PKCS, CKM_AES_CBC_PAD}, {}},
        // The generator of RSA is 0, which must not be taken for an empty slot.
        {pairs, {CKM_ECDSA, CKM_RSA_PKCS, CKM_ECIES}, {CKM_EC_KEY_PAIR_GEN, CKM_RSA_PKCS_KEY_PAIR_GEN}},
        {rsa, {CKM_RSA_PKCS, CKM_DES_CBC, CKM_RSA_X_509}, {CKM_RSA_X_509, CKM_RSA_PKCS}},
        {rsa, {CKM_RSA_X_509, CKM_RSA_X_509}, {CKM_RSA_X_509, CKM_RSA_X_509}},
        // A match behind the first m mechanisms of the key type leaves its slot as it was initialised.
        {rsa, {CKM_RSA_PKCS_OAEP, CKM_RSA_X_509}, {CKM_RSA_X_509, 0xFFFFFFFF}},
        {rsa, {CKM_DES_CBC}, {}},
        {[](auto*, auto* count) { return mechFromKt(CKK_DSA, count); }, {CKM_MD5}, {CKM_DSA}},
    };
    for (auto [function, input, output] : rows) {
        SCOPED_TRACE(testing::PrintToString(input) + testing::PrintToString(output));
        const HeapWatch heap;
        auto* const data = static_cast<MechData*>(std::malloc(sizeof(MechData)));
        *data = {
            static_cast<CK_ULONG*>(std::calloc(8, sizeof(CK_ULONG))), static_cast<CK_ULONG>(input.size())};
        std::ranges::copy(input, data->array);
        for (const bool hasMemory : {true, false}) {
            CK_ULONG count = 77;
            failAllocation(hasMemory ? 0 : 1);
            CK_MECHANISM_TYPE* const list = function(data, &count);
            failAllocation(0);
            if (!hasMemory) output.clear();
            EXPECT_TRUE(list == nullptr || heap.blocks.at(list) >= output.size() * sizeof(CK_ULONG));
            EXPECT_EQ(count, output.empty() ? 77 : output.size());
            EXPECT_EQ(taken(list, list == nullptr ? 0 : count), output);
        }
        EXPECT_EQ(LookupMech(data, input.back()), 1);
        EXPECT_EQ(LookupMech(data, 0), 0); // not in the list, but behind it
        FreeMechData(data);
        FreeMechData(nullptr);
        EXPECT_TRUE(heap.blocks.empty());
    }
}

} // namespace
