// Attribute templates and sets: lookup, numbers, kinds, the rules of what may change, memory.
#include "harness/failing_alloc.h"
#include "zerlin/attrutil.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <sstream>

namespace {

using Types = std::set<CK_ATTRIBUTE_TYPE>;
using Entries = std::vector<std::pair<CK_ATTRIBUTE_TYPE, std::string>>;
using OwnedSet = std::unique_ptr<AttributeSet, decltype(&FreeAttributeSet)>;

OwnedSet make(const Entries& entries)
{
    std::vector<CK_ATTRIBUTE> attributes;
    for (const auto& [type, value] : entries)
        attributes.push_back({type, const_cast<char*>(value.data()), value.size()});
    return {DupAttributes(attributes.data(), attributes.size()), FreeAttributeSet};
}

// The same, after a C_GetAttributeValue that could not read any of the values.
OwnedSet makeUnavailable(const Entries& entries)
{
    OwnedSet set = make(entries);
    for (CK_ULONG i = 0; i < set->count; ++i)
        set->attrs[i].ulValueLen = CK_UNAVAILABLE_INFORMATION;
    return set;
}

// " 3=ab" for each attribute; a null value is " 11=null", a length of all ones " 11=?".
std::string text(const AttributeSet* set)
{
    std::ostringstream out;
    for (CK_ULONG i = 0; set != nullptr && i < set->count; ++i) {
        const auto [type, value, length] = set->attrs[i];
        out << ' ' << std::hex << type << '=';
        const bool available = length != CK_UNAVAILABLE_INFORMATION;
        out << (value == nullptr ? "null" : available ? std::string(static_cast<char*>(value), length) : "?");
    }
    return set == nullptr ? " no set" : out.str();
}

TEST(Attrutil, typeAndLengthDecideTheKindOfAnAttribute)
{
    const Types booleans = {0x1, 0x2, 0x86, 0x103, 0x104, 0x105, 0x106, 0x107, 0x108, 0x109, 0x10A, 0x10B,
        0x10C, 0x162, 0x163, 0x164, 0x165, 0x170, 0x301, 0x302, 0x80000127, 0x80000128, 0x80000129,
        0x8000012A, 0x8000012B, 0x80000139, 0x8000013A, 0x80000145, 0x8000014B, 0x80000170};
    const Types enumerated = {0x0, 0x80, 0x100, 0x300};
    const Types numeric = {0x0, 0x80, 0x100, 0x121, 0x133, 0x134, 0x160, 0x161, 0x166, 0x300, 0x80000101,
        0x8000012C, 0x80000132, 0x80000136, 0x80000137, 0x80000140, 0x80000141, 0x80000142, 0x80000143,
        0x80000144, 0x80000148, 0x8000014C, 0x8000014D, 0x8000014E, 0x80000151, 0x80000155, 0x80000156,
        0x80000158, 0x80000159, 0x80000185, 0x80000186, 0x80000187, 0x80000189, 0x8000018A, 0x80000200};
    const Types secrets = {0x11, 0x123, 0x124, 0x125, 0x126, 0x127, 0x128};
    const OwnedSet privateKey = make({{CKA_CLASS, "\3"}});
    for (CK_ULONG i = 0; i < 0x800; ++i) {
        for (const CK_ULONG length : {0, 1, 4, 5, 8}) {
            const CK_ATTRIBUTE attr = {i / 2 | i % 2 << 31, nullptr, length};
            const bool fits = length == 1 || length == 4;
            const bool isList = attr.type == 0x80000104;
            const bool isNumber = isList ? length == 4 || length == 8 : fits && numeric.contains(attr.type);
            ASSERT_EQ(isBooleanAttr(&attr), fits && booleans.contains(attr.type)) << attr.type;
            ASSERT_EQ(isEnumeratedAttr(&attr), fits && enumerated.contains(attr.type)) << attr.type;
            ASSERT_EQ(isNumericAttr(&attr), isNumber) << attr.type;
            ASSERT_EQ(isNumericAttrType(attr.type), isList || numeric.contains(attr.type)) << attr.type;
            ASSERT_EQ(isSensitiveAttr(privateKey.get(), &attr), secrets.contains(attr.type)) << attr.type;
            ASSERT_EQ(isSensitiveAttr(make({{CKA_CLASS, "\4"}}).get(), &attr), attr.type == CKA_VALUE);
        }
    }
}

// Each row names an object and the types that must not change, with every present value, in and out of copy
// mode.
TEST(Attrutil, objectValueAndModeDecideWhetherAnAttributeMayChange)
{
    const Types always = {
        0x0, 0x80, 0x100, 0x163, 0x166, 0x80000101, 0x80000102, 0x80000103, 0x80000151, 0x80000200};
    const Types whenTrue = {0x103, 0x110, 0x111, 0x80000201};
    const Types whenFalse = {0x110, 0x111, 0x162, 0x80000129, 0x80000201};
    const Types outsideCopies = {0x1, 0x2, 0x170};
    const Types inPairs = {0x11, 0x120, 0x121, 0x122, 0x123, 0x124, 0x125, 0x126, 0x127, 0x128, 0x130, 0x131,
        0x132, 0x133, 0x134, 0x160, 0x180, 0x181, 0x8000012C};
    const Types inDsa = {0x104, 0x105, 0x106, 0x107, 0x80000128, 0x8000012B};
    const std::tuple<Entries, Types, Types> rows[] = {
        {{{CKA_CLASS, "\4"}, {CKA_KEY_TYPE, "\1"}}, {0x11, 0x161}, {}},
        {{{CKA_CLASS, "\2"}, {CKA_KEY_TYPE, "\1"}}, inPairs, inDsa},
        {{{CKA_CLASS, std::string("\3\0\0\0", 4)}, {CKA_KEY_TYPE, "\1"}}, inPairs, inDsa},
        {{{CKA_CLASS, "\3"}, {CKA_KEY_TYPE, "\2"}}, inPairs, {}},
        {{{CKA_SENSITIVE, "\1"}}, {0x11}, {}},
        {{{CKA_TRUSTED, "\1"}}, {0x11}, {}},
    };
    for (const auto& [entries, refused, more] : rows) {
        const OwnedSet set = make(entries);
        for (std::string value : {std::string(), std::string("\0\1", 2), std::string("\1")}) {
            for (CK_ULONG i = 0; i < 0x800; ++i) {
                const CK_ATTRIBUTE_TYPE type = i / 2 | i % 2 << 31;
                const CK_ATTRIBUTE attr = {type, value.data(), value.size()};
                const bool byValue = !value.empty() && (value[0] ? whenTrue : whenFalse).contains(type);
                const bool isRefused =
                    always.contains(type) || refused.contains(type) || more.contains(type) || byValue;
                ASSERT_EQ(canModifyAttr(set.get(), &attr, 1), !isRefused) << text(set.get()) << type;
                ASSERT_EQ(canModifyAttr(set.get(), &attr, 0), !isRefused && !outsideCopies.contains(type));
            }
        }
    }
}

TEST(AttrutilDeathTest, numbersWidenAndAWrongTypeAborts)
{
    CK_ULONG number = 0xAAAAAAAA;
    CK_ATTRIBUTE target = {CKA_CLASS, &number, sizeof number};
    const OwnedSet source = make({{CKA_CLASS, "\xFE\xFF"}, {CKA_LABEL, ""}});
    EXPECT_EQ(at_assign(&target, source->attrs), CKR_OK);
    EXPECT_EQ(number, 0xFFFEU);
    EXPECT_DEATH(
        at_assign(&target, &source->attrs[1]), "attrutil.c:.*Assertion `tgtNa->type == srcNa->type'");
}

TEST(Attrutil, assignmentStaysWithinTheCapacity)
{
    struct Row {
        CK_ATTRIBUTE_TYPE type;
        std::string value;
        CK_ULONG room;
        CK_RV rv;
        CK_ULONG length;
        std::string result; // what the target's eight dots become
    };
    const Row rows[] = {
        {CKA_CLASS, "\x3", 2, CKR_OK, 2, std::string("\x3\0......", 8)},
        {CKA_CLASS, "\x3", 3, CKR_GENERAL_ERROR, 3, "........"},
        {CKA_CLASS, "abcd", 2, CKR_BUFFER_TOO_SMALL, 2, "........"},
        {CKA_CLASS, "abcdefg", 8, CKR_OK, 7, "abcdefg."},
        {CKA_MECHANISM_LIST, "abcdABCD", 8, CKR_OK, 8, "abcdABCD"},
        {CKA_SENSITIVE, "\x1", 4, CKR_OK, 1, "\x1......."},
        {CKA_LABEL, "abc", 2, CKR_BUFFER_TOO_SMALL, 2, "........"},
    };
    for (const Row& row : rows) {
        std::string buffer(8, '.');
        CK_ATTRIBUTE targets[] = {
            {CKA_WILDCARD, buffer.data(), row.room}, {CKA_ID, nullptr, 9}, {CKA_ID, nullptr, 0}};
        const OwnedSet source = make({{row.type, row.value}, {CKA_ID, "id"}, {CKA_LABEL, "other"}});
        EXPECT_EQ(TransferAttr(targets, source->attrs, 1), row.rv);
        EXPECT_EQ(targets[0].type, row.type);
        EXPECT_EQ(targets[0].ulValueLen, row.length) << row.value;
        EXPECT_EQ(buffer, row.result);
        EXPECT_EQ(TransferAttr(targets, source->attrs, 2), CKR_OK); // the last one's result
        EXPECT_EQ(targets[1].ulValueLen, 2U);
        EXPECT_EQ(TransferAttr(targets, source->attrs, 3), CKR_GENERAL_ERROR);
    }
}

// Expects the code and the set after each operation: with the n-th allocation failing, and last with none.
TEST(AttrutilSets, changesFollowTheirRulesAndSurviveFailedAllocations)
{
    using Operation = CK_RV (*)(OwnedSet & set, const AttributeSet& with);
    const Operation add = [](auto& set, auto& with) {
        return AddAttr(with.attrs->pValue, with.attrs->ulValueLen, with.attrs->type, set.get());
    };
    const Operation del = [](auto& set, auto& with) { return DelAttr(with.attrs->type, set.get()); };
    const Operation concat = [](auto& set, auto& with) { return ConcatAttributeSets(set.get(), &with); };
    const Operation addSet = [](auto& set, auto& with) {
        AttributeSet* out = nullptr;
        const CK_RV rv = AddAttributeSets(&out, set.get(), &with);
        return set.reset(out), rv;
    };
    const Entries key = {{CKA_VALUE, "secret"}};
    const Entries token = {{CKA_TOKEN, "T"}};
    const std::tuple<Entries, Operation, Entries, std::vector<std::string>> rows[] = {
        {key, add, token, {"2 11=secret", "2 11=secret", "0 11=secret 1=T"}},
        {key, add, {{CKA_VALUE, "new"}}, {"2 11=null", "0 11=new"}},
        {token, add, {{CKA_TOKEN, "F"}}, {"16 1=T"}},
        {token, add, token, {"0 1=T"}},
        {key, del, key, {"0"}},
        {key, concat, {{CKA_VALUE, "new"}, {CKA_ID, ""}}, {"2 11=secret", "0 11=secret 102=null"}},
        {{{CKA_MODIFIABLE, std::string(1, '\0')}}, concat, key, {"16 170=" + std::string(1, '\0')}},
        {token, addSet, {{CKA_TOKEN, "F"}}, {"2 no set", "2 no set", "2 no set", "2 no set", "0 1=F"}},
        {{{CKA_LOCAL, "L"}}, addSet, {{CKA_LOCAL, "N"}}, {"2 no set", "2 no set", "2 no set", "209 no set"}},
    };
    for (const auto& [start, operation, with, expected] : rows) {
        HeapWatch heap;
        std::vector<std::string> results;
        for (int n = 1; n == 1 || allocationFailed(); ++n) {
            OwnedSet set = make(start);
            const OwnedSet other = make(with);
            failAllocation(n);
            const CK_RV rv = operation(set, *other);
            results.push_back(std::to_string(rv) + text(set.get()));
        }
        failAllocation(0);
        EXPECT_EQ(results, expected);
        EXPECT_TRUE(heap.blocks.empty()) << expected.back();
    }
    HeapWatch heap;
    make({{CKA_VALUE, "secret"}}).reset();
    EXPECT_EQ(heap.freed.front(), std::string(6, '\xAA'));
}

// Expects the code, the set, and what the freed blocks held.
TEST(AttrutilSets, aLengthOfAllOnesCountsAsNoBytes)
{
    using Operation = CK_RV (*)(OwnedSet & set);
    const CK_ULONG none = CK_UNAVAILABLE_INFORMATION;
    const std::tuple<Operation, std::string, std::vector<std::string>> rows[] = {
        {[](auto&) { return CKR_OK; }, "0 11=?", {}},
        {[](auto& set) { return set.reset(), CKR_OK; }, "0 no set", {"secret"}},
        {[](auto& set) { return DelAttr(CKA_VALUE, set.get()); }, "0", {"secret"}},
        {[](auto& set) { return AddAttr("new", 3, CKA_VALUE, set.get()); }, "0 11=new", {"secret"}},
        {[](auto& set) { return AddAttr("new", none, CKA_VALUE, set.get()); }, "0 11=null", {"secret"}},
        {[](auto& set) { return AddAttr("new", none, CKA_ID, set.get()); }, "0 11=? 102=null", {}},
        {[](auto& set) {
             return ConcatAttributeSets(set.get(), makeUnavailable({{CKA_ID, "id"}}).get());
         },
            "0 11=? 102=null", {"id"}},
        {[](auto& set) { return set.reset(DupAttributeSet(set.get())), CKR_OK; }, "0 11=null", {"secret"}},
    };
    for (const auto& [operation, expected, freed] : rows) {
        HeapWatch heap;
        OwnedSet set = makeUnavailable({{CKA_VALUE, "secret"}});
        const CK_RV rv = operation(set);
        EXPECT_EQ(std::to_string(rv) + text(set.get()), expected);
        std::erase_if(heap.freed, [](const std::string& block) { return block.size() > 6; }); // not values
        EXPECT_EQ(heap.freed, freed) << expected;
        set.reset();
        EXPECT_TRUE(heap.blocks.empty()) << expected;
    }
}

TEST(AttrutilSets, anUnavailableValueIsNeitherReadNorOverrun)
{
    const OwnedSet set = makeUnavailable({{CKA_LABEL, ""}, {CKA_EXTRACTABLE, "1"}, {CKA_START_DATE, "1"}});
    std::string out = "....";
    CK_ULONG length = 0;
    EXPECT_EQ(ReadAttr(out.data(), out.size(), &length, CKA_EXTRACTABLE, set.get()), 1);
    EXPECT_EQ(out, std::string(4, '\0'));
    EXPECT_EQ(length, CK_UNAVAILABLE_INFORMATION);
    for (const CK_ULONG i : {1, 2})
        EXPECT_EQ(canModifyAttr(set.get(), &set->attrs[i], 1), 1) << i; // as if empty

    const OwnedSet other = makeUnavailable({{CKA_LABEL, "x"}, {CKA_EXTRACTABLE, "0"}, {CKA_START_DATE, "0"}});
    EXPECT_EQ(MatchAttributeSet(set.get(), other.get()), 1);
    EXPECT_EQ(attrcmpbuf(set->attrs, "", 0), -1); // lengths are compared as they are
    other->attrs->ulValueLen = CK_UNAVAILABLE_INFORMATION - 1;
    EXPECT_EQ(MatchAttributeSet(set.get(), other.get()), 0);
    other->attrs->ulValueLen = 1;

    out = "....";
    CK_ATTRIBUTE target = {CKA_LABEL, out.data(), CK_UNAVAILABLE_INFORMATION};
    EXPECT_EQ(at_assign(&target, other->attrs), CKR_BUFFER_TOO_SMALL);
    EXPECT_EQ(at_assign(&target, set->attrs), CKR_OK);
    target.ulValueLen = 4;
    EXPECT_EQ(at_assign(&target, set->attrs), CKR_OK);
    EXPECT_EQ(target.ulValueLen, CK_UNAVAILABLE_INFORMATION);
    EXPECT_EQ(out, "....");
}

TEST(AttrutilSets, comparisonsReturnTheirCodes)
{
    const std::string nul("\0", 1);
    // One, other, attrcmp, CmpAttributes with values, CmpAttributeSets, MatchAttributeSet.
    const std::tuple<Entries, Entries, int, int, int, int> rows[] = {
        {{{3, "ab"}}, {{3, "ab"}}, 0, 0, 0, 1},
        {{{2, "b"}}, {{2, "abcde"}}, -1, 2, 0, 0},
        {{{2, "abcde"}}, {{2, "b"}}, 1, 2, 0, 0},
        {{{3, "ab"}}, {{4, "ab"}}, 0, 1, 2, 0},
        {{{3, "c"}}, {{3, "c" + nul}}, -1, 2, 0, 1}, // a label's final NUL does not count
        {{{2, "c"}}, {{2, "c" + nul}}, -1, 2, 0, 0},
        {{{3, "c"}}, {{3, "c" + nul + nul}}, -1, 2, 0, 0},
        {{{3, "b"}}, {{1, "a"}, {3, "b"}}, 1, 1, 1, 1},
        {{{1, "a"}, {3, "b"}}, {{1, "a"}, {4, "b"}}, 0, 0, 2, 0},
    };
    for (const auto& [one, other, order, compared, comparedSets, matched] : rows) {
        const OwnedSet a = make(one), b = make(other);
        const std::string shown = text(a.get()) + text(b.get());
        EXPECT_EQ(attrcmp(a->attrs, b->attrs), order) << shown;
        EXPECT_EQ(CmpAttributes(a->attrs, b->attrs, 1), compared) << shown;
        EXPECT_EQ(CmpAttributes(a->attrs, b->attrs, 0), one[0].first != other[0].first) << shown;
        EXPECT_EQ(SearchAttribute(b.get(), a->attrs, 1), comparedSets == 1 ? 0 : compared) << shown;
        EXPECT_EQ(CmpAttributeSets(a.get(), b.get()), comparedSets) << shown;
        EXPECT_EQ(MatchAttributeSet(a.get(), b.get()), matched) << shown;
    }
    const OwnedSet empty = make({});
    EXPECT_EQ(MatchAttributeSet(nullptr, empty.get()) + MatchAttributeSet(empty.get(), nullptr), 2);
    EXPECT_EQ(attrcmpbuf(make({{2, "ab"}})->attrs, nullptr, 0), 1);
}

} // namespace
