// Attribute templates and sets: lookup, kinds, the rules of what may change, copies, comparison, memory.
#include "digest.h"
#include "harness/failures.h"
#include "zerlin/attrutil.h"

#include <memory>
#include <span>
#include <sstream>

namespace {

using namespace std::string_literals;
using Entries = std::vector<std::pair<CK_ATTRIBUTE_TYPE, std::string>>;
using OwnedSet = std::unique_ptr<AttributeSet, decltype(&FreeAttributeSet)>;

constexpr CK_ULONG NO_LENGTH = CK_UNAVAILABLE_INFORMATION, WIDTH = sizeof(CK_ULONG);

// A value that begins with '?' is one that C_GetAttributeValue could not read: its length is all ones.
OwnedSet make(const Entries& entries)
{
    std::vector<CK_ATTRIBUTE> attributes;
    for (const auto& [type, value] : entries)
        attributes.push_back({type, const_cast<char*>(value.data()), value.size()});
    OwnedSet set(DupAttributes(attributes.data(), attributes.size()), FreeAttributeSet);
    for (CK_ULONG i = 0; i < set->count; ++i)
        if (entries[i].second.starts_with('?')) set->attrs[i].ulValueLen = NO_LENGTH;
    return set;
}

// " 3=ab" for each attribute, " 3=null" without a value.
std::string text(const AttributeSet* set)
{
    if (set == nullptr) return " no set";
    std::ostringstream out;
    for (const auto& [type, value, length] : std::span(set->attrs, set->count)) {
        out << ' ' << std::hex << type << '=';
        const auto* const bytes = static_cast<const char*>(value == nullptr ? "null" : value);
        out.write(bytes, value == nullptr ? 4 : length == NO_LENGTH ? 1 : static_cast<long>(length));
    }
    return out.str();
}

TEST(Attrutil, lookupsFindTheFirstOfATypeAndProgrammingErrorsAbort)
{
    const OwnedSet set = make({{1, "\xFE"}, {2, "\xFE\xFF"}, {3, "abc"}, {4, "\1\0\0\x80"s}, {1, "x"}});
    const CK_LONG numbers[] = {0xFE, 0xFFFE, -1, static_cast<CK_LONG>(0x80000001), -1};
    for (CK_ULONG type = 1; type <= 5; ++type) {
        EXPECT_EQ(FindAttr(type, set.get()), type == 5 ? nullptr : &set->attrs[type - 1]);
        EXPECT_EQ(intAttrLookup(type, set->attrs, set->count), numbers[type - 1]) << type;
    }
    EXPECT_EQ(FindAttr(CKA_WILDCARD, set.get()), set->attrs);
    EXPECT_EQ(
        jni::lastWords([] { FindAttr(1, nullptr); }), "findattr.c: FindAttr: Assertion `attrData' failed.\n");
    EXPECT_EQ(jni::lastWords([&] { at_assign(set->attrs, set->attrs + 1); }),
        "attrutil.c: at_assign: Assertion `tgtNa->type == srcNa->type' failed.\n");
}

// For each object its types, and for each type numbers for several values. A number adds up 1 for a boolean,
// 2 for an enumeration, 4 for a number, 8 for a numeric type, 16 for a secret, 32 if the attribute must not
// change in a copy and 64 if it must not change otherwise.
TEST(Attrutil, objectTypeAndValueDecideKindAndRules)
{
    const std::string values[] = {"", "\0"s, "\1\0"s, std::string(WIDTH, 'a'), std::string(WIDTH + 1, 'a'),
        std::string(2 * WIDTH, 'a'), "?"};
    const Entries objects[] = {{}, {{CKA_CLASS, "abc"}, {CKA_SENSITIVE, "\1"}},
        {{CKA_CLASS, "\5"}, {CKA_TRUSTED, "\1"}}, {{CKA_CLASS, "\4"}, {CKA_KEY_TYPE, "\1"}},
        {{CKA_CLASS, "\2"}, {CKA_KEY_TYPE, "\1"}}, {{CKA_CLASS, "\3"}, {CKA_KEY_TYPE, "\2"}}};
    std::ostringstream lines;
    for (const Entries& entries : objects) {
        const OwnedSet set = make(entries);
        lines << text(set.get()) << '\n';
        for (CK_ULONG i = 0; i < 0x620; ++i) {
            const CK_ATTRIBUTE_TYPE type = i % 0x310 + (i < 0x310 ? 0 : 0x80000000);
            std::string line;
            for (std::string value : values) {
                const CK_ATTRIBUTE attr = {type, value.data(), value == "?" ? NO_LENGTH : value.size()};
                const int sum =
                    isBooleanAttr(&attr) + 2 * isEnumeratedAttr(&attr) + 4 * isNumericAttr(&attr) +
                    8 * isNumericAttrType(type) + 16 * isSensitiveAttr(set.get(), &attr) +
                    32 * !canModifyAttr(set.get(), &attr, 1) + 64 * !canModifyAttr(set.get(), &attr, 0);
                line += ' ' + std::to_string(sum);
            }
            if (line != " 0 0 0 0 0 0 0") lines << std::hex << type << line << '\n';
        }
    }
    EXPECT_EQ(digest(lines.str()), "463 lines, 3795476741") << lines.str();
}

TEST(Attrutil, assignmentStaysWithinTheCapacity)
{
    // Type, value and capacity; then what is returned, the length, and what the target's eight dots become.
    using Result = std::tuple<CK_RV, CK_ULONG, std::string>;
    const std::string longer(sizeof(CK_ULONG) + 1, 'a'); // than a number
    const std::tuple<CK_ATTRIBUTE_TYPE, std::string, CK_ULONG, Result> rows[] = {
        {CKA_CLASS, "\x3", 2, {CKR_OK, 2, "\x3\0......"s}},
        {CKA_CLASS, "\x3", 3, {CKR_GENERAL_ERROR, 3, "........"}},
        {CKA_CLASS, "\xFE\xFF", 4, {CKR_OK, 4, "\xFE\xFF\0\0...."s}},
        {CKA_CLASS, longer, 16, {CKR_OK, longer.size(), longer + "."}},
        {CKA_LABEL, "abc", 3, {CKR_OK, 3, "abc....."}},
        {CKA_LABEL, "abc", 2, {CKR_BUFFER_TOO_SMALL, 2, "........"}},
        {CKA_LABEL, "?abc", 2, {CKR_OK, NO_LENGTH, "........"}},
        {CKA_LABEL, "abc", NO_LENGTH, {CKR_BUFFER_TOO_SMALL, NO_LENGTH, "........"}}};
    for (const auto& [type, value, capacity, expected] : rows) {
        std::string buffer(16, '.');
        CK_ATTRIBUTE targets[] = {
            {CKA_WILDCARD, buffer.data(), capacity}, {CKA_ID, nullptr, 9}, {CKA_CLASS, nullptr, 0}};
        const OwnedSet source = make({{type, value}, {CKA_ID, "id"}, {CKA_LABEL, "other"}});
        const CK_RV rv = TransferAttr(targets, source->attrs, 1);
        const std::string begin = buffer.substr(0, std::get<2>(expected).size());
        EXPECT_EQ(Result(rv, targets->ulValueLen, begin), expected) << text(source.get());
        EXPECT_EQ(TransferAttr(targets, source->attrs, 2), CKR_OK); // the last one's result
        EXPECT_EQ(TransferAttr(targets, source->attrs, 3), CKR_GENERAL_ERROR);
    }
}

// Expects the return value, the set, and what the freed values held, with each byte 0xAA as '#'. If an
// allocation fails, it expects the other return value and set, and that the freed values are overwritten as
// well.
TEST(AttrutilSets, changesFollowTheRulesOverwriteValuesAndSurviveFailedAllocations)
{
    using Change = CK_RV (*)(OwnedSet & set, AttributeSet & with);
    const Change add = [](auto& set, auto& with) {
        return AddAttr(with.attrs->pValue, with.attrs->ulValueLen, with.attrs->type, set.get());
    };
    const Change writeOwn = [](auto& set, auto&) {
        const auto [type, value, length] = *set->attrs;
        return WriteAttr(value, length, type, set.get()), CKR_OK;
    };
    const Change addSets = [](auto& set, auto& with) {
        AttributeSet* out = nullptr;
        const CK_RV rv = AddAttributeSets(&out, set.get(), &with);
        return set.reset(out), rv;
    };
    const Change freeUncleared = [](auto& set, auto&) {
        return FreeAttributesNoClear(set->attrs, set->count), *set = {}, CKR_OK;
    };
    const Change copy = [](auto& set, auto& with) {
        return CK_RV{CopyAttribute(CKA_LOCAL, set.get(), &with) != FindAttr(CKA_LOCAL, set.get())};
    };
    const Change del = [](auto& set, auto& with) { return DelAttr(with.attrs->type, set.get()); };
    const Change concat = [](auto& set, auto& with) { return ConcatAttributeSets(set.get(), &with); };
    const Entries key = {{CKA_VALUE, "secret"}}, id = {{CKA_ID, "id"}}, changed = {{CKA_VALUE, "new"}};
    const Entries local = {{CKA_LOCAL, "L"}}, other = {{CKA_LOCAL, "N"}}, token = {{CKA_TOKEN, "T"}};
    const std::tuple<Entries, Change, Entries, std::string, std::string> rows[] = {
        {key, add, id, "0 11=secret 102=id", "2 11=secret"},
        {key, add, changed, "0 11=new|######", "2 11=null"}, {local, add, other, "16 163=L", ""},
        {local, add, local, "0 163=L", ""}, // the present value
        {local, writeOwn, {}, "0 163=L|#", "0 163=null"},
        {{{CKA_VALUE, "?cret"}}, add, changed, "0 11=new|?cret", "2 11=null"},
        {{{CKA_VALUE, "secret"}, {1, "T"}, {3, "l"}}, del, key, "0 1=T 3=l|######", "2 1=T 3=l"},
        {key, del, id, "18 11=secret", ""},
        {key, concat, {{CKA_VALUE, "new"}, {CKA_ID, ""}}, "0 11=secret 102=null", "2 11=secret"},
        {{{CKA_MODIFIABLE, "\0"s}}, concat, key, "16 170=\0"s, ""},
        {token, addSets, {{CKA_TOKEN, "F"}}, "0 1=F|#|#", "2 no set"},
        {local, addSets, other, "209 no set|#|#", "2 no set"},
        {local, copy, other, "0 163=N|#", "0 163=null"}, // which no rule forbids
        {key, freeUncleared, {}, "0|secret", ""}};
    for (const auto& [start, change, with, expected, failed] : rows) {
        HeapWatch heap;
        for (int n = 1; n == 1 || allocationFailed(); ++n) {
            OwnedSet set = make(start);
            const OwnedSet given = make(with);
            heap.freed.clear();
            failAllocation(n);
            const CK_RV rv = change(set, *given);
            std::string result = std::to_string(rv) + text(set.get());
            for (std::string block : std::exchange(heap.freed, {})) {
                std::ranges::replace(block, '\xAA', '#');
                if (!allocationFailed() && block.size() <= 6) result += '|' + block; // no array or set
                EXPECT_TRUE(!allocationFailed() || block[0] != 's') << failed << block;
            }
            EXPECT_EQ(result, allocationFailed() ? failed : expected);
        }
        failAllocation(0);
        EXPECT_TRUE(heap.blocks.empty()) << expected;
    }
}

TEST(AttrutilSets, readsAreCutOrFilledUpToTheBufferAndNullSetsAreAnswered)
{
    const OwnedSet set =
        make({{CKA_VALUE, "secret"}, {CKA_ID, "?id"}, {CKA_CLASS, "\3\1"}, {CKA_KEY_TYPE, "\x1F\1"}});
    // The type, the buffer's size, what becomes of 8 dots and of the length 77.
    const std::tuple<CK_ATTRIBUTE_TYPE, CK_ULONG, std::string, CK_ULONG> rows[] = {
        {CKA_VALUE, 3, "sec.....", 6}, {CKA_VALUE, 8, "secret\0\0"s, 6},
        {CKA_ID, 2, "\0\0......"s, NO_LENGTH}, {CKA_LABEL, 8, "........", 77}};
    for (const auto& [type, size, result, length] : rows) {
        std::string out(8, '.');
        CK_ULONG seen = 77;
        EXPECT_EQ(ReadAttr(out.data(), size, &seen, type, set.get()), type != CKA_LABEL);
        EXPECT_TRUE(out == result && seen == length) << result;
    }
    CK_ULONG objectClass = 77, keyType = 77;
    EXPECT_EQ(GetObjectClassAndKeyType(set.get(), &objectClass, &keyType), CKR_OK);
    EXPECT_TRUE(objectClass == 0x103 && keyType == 0x11F);

    AttributeSet* out = nullptr;
    EXPECT_EQ(AddAttributeSets(&out, set.get(), nullptr), CKR_HOST_MEMORY);
    EXPECT_EQ(OwnedSet(out, FreeAttributeSet)->count, 4U); // the caller's to free: deliberate
    EXPECT_TRUE(DelAttr(CKA_ID, nullptr) && CopyAttr("", 1, CKA_ID, nullptr));
    EXPECT_FALSE(canModifyAttr(nullptr, set->attrs, 1) || canModifyAttr(set.get(), nullptr, 1) ||
                 isSensitiveAttr(nullptr, set->attrs) || isBooleanAttr(nullptr) || isNumericAttr(nullptr) ||
                 isEnumeratedAttr(nullptr) || ReadAttr(&out, 4, nullptr, CKA_ID, nullptr));
}

// For each pair of sets: attrcmp and CmpAttributes (with and without the values) of the first ones,
// SearchAttribute of one's first in the other, CmpAttributeSets, MatchAttributeSet. One final NUL of a label
// does not count for a match. In sets with doubles every pair of equal types counts, and the first entry is
// the one that must match. Of unread values only the lengths are compared.
TEST(AttrutilSets, comparisonsReturnTheirCodes)
{
    const Entries sets[] = {{{3, "c"}}, {{3, "c\0"s}}, {{3, "cd"}}, {{2, "c"}}, {{2, "c\0"s}}, {{2, "\xFF"}},
        {{1, "a"}, {3, "c"}}, {{3, "c"}, {3, "a"}}, {{3, "c"}, {3, "c"}}, {{3, "?y"}}, {{3, "?x"}}};
    std::string lines;
    for (std::size_t i = 0; i < std::size(sets) * std::size(sets); ++i) {
        const OwnedSet a = make(sets[i % std::size(sets)]), b = make(sets[i / std::size(sets)]);
        const int order = attrcmp(a->attrs, b->attrs);
        for (const int code : {(order > 0) - (order < 0), CmpAttributes(a->attrs, b->attrs, 1),
                 CmpAttributes(a->attrs, b->attrs, 0), SearchAttribute(b.get(), a->attrs, 1),
                 CmpAttributeSets(a.get(), b.get()), MatchAttributeSet(a.get(), b.get())})
            lines += std::to_string(code) + ' ';
        lines += text(a.get()) + " and" + text(b.get()) + '\n';
    }
    EXPECT_EQ(digest(lines), "121 lines, 3910141152") << lines;
    const OwnedSet empty = make({}), label = make({{CKA_LABEL, "\0"s}});
    EXPECT_TRUE(MatchAttributeSet(nullptr, empty.get()) && !MatchAttributeSet(nullptr, label.get()));
    CK_ATTRIBUTE missing = {CKA_LABEL, nullptr, 1}; // less than any other value of its length
    EXPECT_TRUE(attrcmp(&missing, label->attrs) < 0 && attrcmpbuf(label->attrs, nullptr, 1) > 0);
}

} // namespace
