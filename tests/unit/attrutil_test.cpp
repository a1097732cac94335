// Attribute templates and sets: lookup, kinds, the rules of what may change, copies, comparison, memory.
#include "digest.h"
#include "harness/failures.h"
#include "zerlin/attrutil.h"
#include "zerlin/mech.h"

#include <memory>
#include <sstream>

namespace {

using namespace std::string_literals;
using Entries = std::vector<std::pair<CK_ATTRIBUTE_TYPE, std::string>>;
using OwnedSet = std::unique_ptr<AttributeSet, decltype(&FreeAttributeSet)>;

constexpr CK_ULONG NO_LENGTH = CK_UNAVAILABLE_INFORMATION;

// A value "?ab" is one that C_GetAttributeValue could not read: "ab", but its length is all ones.
OwnedSet make(const Entries& entries)
{
    std::vector<CK_ATTRIBUTE> attributes;
    for (const auto& [type, value] : entries) {
        const std::size_t skipped = value.starts_with('?') ? 1 : 0;
        attributes.push_back({type, const_cast<char*>(value.data()) + skipped, value.size() - skipped});
    }
    OwnedSet set(DupAttributes(attributes.data(), attributes.size()), FreeAttributeSet);
    for (CK_ULONG i = 0; i < set->count; ++i)
        if (entries[i].second.starts_with('?')) set->attrs[i].ulValueLen = NO_LENGTH;
    return set;
}

// " 3=ab" for each attribute; " 3=null2" for a null value, with its length; " 3=?" if the length is all ones.
std::string text(const AttributeSet* set)
{
    std::ostringstream out;
    for (CK_ULONG i = 0; set != nullptr && i < set->count; ++i) {
        const auto [type, value, length] = set->attrs[i];
        const std::string null = length == NO_LENGTH ? "?" : "null" + std::to_string(length);
        const bool isNull = length == NO_LENGTH || value == nullptr;
        out << ' ' << std::hex << type << '='
            << (isNull ? null : std::string(static_cast<char*>(value), length));
    }
    return set == nullptr ? " no set" : out.str();
}

TEST(Attrutil, lookupsFindTheFirstOfATypeAndItsNumber)
{
    const OwnedSet set =
        make({{1, "\xFE"}, {2, "\xFE\xFF"}, {3, "abc"}, {4, "\1\0\0\x80"s}, {5, ""}, {1, "x"}});
    const CK_LONG numbers[] = {0xFE, 0xFFFE, -1, static_cast<CK_LONG>(0x80000001), -1, -1};
    for (CK_ULONG type = 1; type <= 6; ++type) {
        CK_ATTRIBUTE* const found = type == 6 ? nullptr : &set->attrs[type - 1];
        EXPECT_EQ(FindAttr(type, set.get()), found) << type;
        EXPECT_EQ(intAttr(found), numbers[type - 1]) << type;
        EXPECT_EQ(intAttrLookup(type, set->attrs, set->count), numbers[type - 1]) << type;
    }
    EXPECT_EQ(FindAttr(CKA_WILDCARD, set.get()), set->attrs);
    EXPECT_EQ(FindAttribute(CKA_WILDCARD, nullptr, 0), nullptr);
}

TEST(Attrutil, programmingErrorsAbort)
{
    CK_ATTRIBUTE id = {CKA_ID, nullptr, 0}, label = {CKA_LABEL, nullptr, 0};
    const std::tuple<std::function<void()>, const char*, const char*, const char*> rows[] = {
        {[] { FindAttribute(1, nullptr, 1); }, "findattr.c", "FindAttribute", "attr"},
        {[] { FindAttr(1, nullptr); }, "findattr.c", "FindAttr", "attrData"},
        {[&] { at_assign(&id, &label); }, "attrutil.c", "at_assign", "tgtNa->type == srcNa->type"},
        {[] { LookupMech(nullptr, CKM_AES_CBC); }, "mech.c", "LookupMech", "pMech"},
    };
    for (const auto& [work, source, function, expression] : rows)
        EXPECT_EQ(jni::lastWords(work), jni::assertion(source, function, expression));
}

// For each object a digest of its types, and for each type numbers for several values. A number adds up 1 for
// a boolean, 2 for an enumeration, 4 for a number, 8 for a numeric type, 16 for a secret, 32 if the attribute
// must not change in a copy and 64 if it must not change otherwise.
TEST(Attrutil, objectTypeAndValueDecideKindAndRules)
{
    const std::string values[] = {"", "\0"s, "\1\0"s, "abcd", "abcde", "abcdefgh", "?"};
    const std::pair<Entries, const char*> objects[] = {{{}, "71 lines, 1034108213"},
        {{{CKA_CLASS, "abc"}, {CKA_SENSITIVE, "\1"}}, "72 lines, 1499546161"},
        {{{CKA_CLASS, "\5"}, {CKA_TRUSTED, "\1"}}, "72 lines, 628668890"},
        {{{CKA_CLASS, "\4"}, {CKA_KEY_TYPE, "\1"}}, "72 lines, 2579837317"},
        {{{CKA_CLASS, "\2"}, {CKA_KEY_TYPE, "\1"}}, "85 lines, 3319708663"},
        {{{CKA_CLASS, "\3\0\0\0"s}, {CKA_KEY_TYPE, "\1"}}, "85 lines, 3244195423"},
        {{{CKA_CLASS, "\3"}, {CKA_KEY_TYPE, "\2"}}, "85 lines, 2365800107"}};
    for (const auto& [entries, expected] : objects) {
        const OwnedSet set = make(entries);
        std::ostringstream lines;
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
        EXPECT_EQ(digest(lines.str()), expected) << text(set.get()) << '\n' << lines.str();
    }
}

TEST(Attrutil, assignmentStaysWithinTheCapacity)
{
    // Type, value and capacity; then what is returned, the length, and what the target's eight dots become.
    using Result = std::tuple<CK_RV, CK_ULONG, std::string>;
    const std::tuple<CK_ATTRIBUTE_TYPE, std::string, CK_ULONG, Result> rows[] = {
        {CKA_CLASS, "\x3", 2, {CKR_OK, 2, "\x3\0......"s}},
        {CKA_CLASS, "\x3", 3, {CKR_GENERAL_ERROR, 3, "........"}},
        {CKA_CLASS, "\xFE\xFF", 4, {CKR_OK, 4, "\xFE\xFF\0\0...."s}},
        {CKA_CLASS, "abcd", 2, {CKR_BUFFER_TOO_SMALL, 2, "........"}},
        {CKA_CLASS, "abcdefg", 8, {CKR_OK, 7, "abcdefg."}},
        {CKA_MECHANISM_LIST, "abcdABCD", 8, {CKR_OK, 8, "abcdABCD"}},
        {CKA_SENSITIVE, "\x1", 4, {CKR_OK, 1, "\x1......."}}, {CKA_LABEL, "abc", 3, {CKR_OK, 3, "abc....."}},
        {CKA_LABEL, "abc", 2, {CKR_BUFFER_TOO_SMALL, 2, "........"}},
        {CKA_LABEL, "", 2, {CKR_OK, 0, "........"}}, {CKA_LABEL, "?abc", 2, {CKR_OK, NO_LENGTH, "........"}},
        {CKA_LABEL, "abc", NO_LENGTH, {CKR_BUFFER_TOO_SMALL, NO_LENGTH, "........"}}};
    for (const auto& [type, value, capacity, expected] : rows) {
        std::string buffer(8, '.');
        CK_ATTRIBUTE targets[] = {
            {CKA_WILDCARD, buffer.data(), capacity}, {CKA_ID, nullptr, 9}, {0, nullptr, 0}};
        const OwnedSet source = make({{type, value}, {CKA_ID, "id"}, {CKA_LABEL, "other"}});
        const CK_RV rv = TransferAttr(targets, source->attrs, 1);
        EXPECT_EQ(Result(rv, targets->ulValueLen, buffer), expected) << text(source.get());
        EXPECT_EQ(targets->type, type);
        EXPECT_EQ(TransferAttr(targets, source->attrs, 2), CKR_OK); // the last one's result
        EXPECT_EQ(targets[1].ulValueLen, 2U);
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
        WriteAttr(set->attrs->pValue, set->attrs->ulValueLen, set->attrs->type, set.get());
        return CKR_OK;
    };
    const Change addSets = [](auto& set, auto& with) {
        AttributeSet* out = nullptr;
        const CK_RV rv = AddAttributeSets(&out, set.get(), &with);
        return set.reset(out), rv;
    };
    const Change freeUncleared = [](auto& set, auto&) {
        FreeAttributesNoClear(set->attrs, set->count);
        return *set = {}, CKR_OK;
    };
    const Change copy = [](auto& set, auto& with) {
        return CopyAttribute(CKA_LOCAL, set.get(), &with) == nullptr ? CKR_HOST_MEMORY : CKR_OK;
    };
    const Change del = [](auto& set, auto& with) { return DelAttr(with.attrs->type, set.get()); };
    const Change concat = [](auto& set, auto& with) { return ConcatAttributeSets(set.get(), &with); };
    const Change dup = [](auto& set, auto&) { return set.reset(DupAttributeSet(set.get())), CKR_OK; };
    const Entries key = {{CKA_VALUE, "secret"}}, unread = {{CKA_VALUE, "?secret"}}, id = {{CKA_ID, "id"}};
    const Entries token = {{CKA_TOKEN, "T"}}, changed = {{CKA_TOKEN, "F"}}, fixed = {{CKA_MODIFIABLE, "\0"s}};
    const Entries local = {{CKA_LOCAL, "L"}}, other = {{CKA_LOCAL, "N"}};
    const std::tuple<Entries, Change, Entries, std::string, std::string> rows[] = {
        {key, add, id, "0 11=secret 102=id", "2 11=secret"},
        {key, add, {{CKA_VALUE, "new"}}, "0 11=new|######", "2 11=null3"},
        {token, add, changed, "16 1=T", ""},
        {token, add, token, "0 1=T", ""}, // the present value
        {token, writeOwn, {}, "0 1=T|#", "0 1=null1"},
        {unread, add, {{CKA_VALUE, "new"}}, "0 11=new|secret", "2 11=null3"},
        {key, add, unread, "0 11=?|######", ""},
        {key, add, {{CKA_ID, "?id"}}, "0 11=secret 102=?", "2 11=secret"},
        {key, del, key, "0|######", ""},
        {unread, del, key, "0|secret", ""},
        {{{CKA_VALUE, "secret"}, {1, "T"}, {3, "l"}}, del, key, "0 1=T 3=l|######", "2 1=T 3=l"},
        {key, del, id, "18 11=secret", ""},
        {key, concat, {{CKA_VALUE, "new"}, {CKA_ID, ""}}, "0 11=secret 102=null0", "2 11=secret"},
        {fixed, concat, {}, "0 170=\0"s, ""},
        {fixed, concat, key, "16 170=\0"s, ""},
        {token, addSets, changed, "0 1=F|#|#", "2 no set"},
        {local, addSets, other, "209 no set|#|#", "2 no set"},
        {key, copy, local, "0 11=secret 163=L", "2 11=secret"},
        {local, copy, other, "0 163=N|#", "0 163=null1"}, // which no rule forbids
        {local, copy, key, "0 163=L", ""},
        {key, dup, {}, "0 11=secret|######", "0 no set"},
        {unread, dup, {}, "0 11=?|secret", "0 no set"},
        {key, freeUncleared, {}, "0|secret", ""},
    };
    for (const auto& [start, change, with, expected, failed] : rows) {
        HeapWatch heap;
        for (int n = 1; n == 1 || allocationFailed(); ++n) {
            OwnedSet set = make(start);
            const OwnedSet given = make(with);
            heap.freed.clear();
            failAllocation(n);
            const CK_RV rv = change(set, *given);
            const std::string result = std::to_string(rv) + text(set.get());
            std::string values;
            for (std::string block : std::exchange(heap.freed, {})) {
                std::ranges::replace(block, '\xAA', '#');
                if (block.size() <= 6) values += '|' + block; // otherwise an array or a set
            }
            EXPECT_EQ(result + (allocationFailed() ? "" : values), allocationFailed() ? failed : expected);
            const bool isKept = expected.ends_with("|secret"); // not overwritten
            EXPECT_TRUE(isKept || values.find_first_not_of("|#") == std::string::npos) << failed << values;
        }
        failAllocation(0);
        EXPECT_TRUE(heap.blocks.empty()) << expected;
    }
}

TEST(AttrutilSets, readsAreCutOrFilledUpToTheBuffer)
{
    const OwnedSet set = make({{CKA_VALUE, "secret value"}, {CKA_ID, "?id"}, {CKA_CLASS, "\3\1"}});
    // The type, the buffer's size, the result, what becomes of 16 dots and of the length 77.
    const std::string dots(16, '.'), nuls(16, '\0');
    const std::tuple<CK_ATTRIBUTE_TYPE, CK_ULONG, int, std::string, CK_ULONG> rows[] = {
        {CKA_VALUE, 0, 1, dots, 12}, {CKA_VALUE, 3, 1, "sec" + dots, 12},
        {CKA_VALUE, 12, 1, "secret value....", 12}, {CKA_VALUE, 16, 1, "secret value" + nuls, 12},
        {CKA_ID, 15, 1, nuls.substr(1) + '.', NO_LENGTH}, {CKA_LABEL, 16, 0, dots, 77}};
    for (const auto& [type, size, found, result, length] : rows) {
        std::string out = dots;
        CK_ULONG seen = 77;
        EXPECT_EQ(ReadAttr(out.data(), size, &seen, type, set.get()), found) << result;
        EXPECT_EQ(out, result.substr(0, 16));
        EXPECT_EQ(seen, length) << result;
    }
    CK_ULONG objectClass = 77, keyType = 77;
    EXPECT_EQ(GetObjectClassAndKeyType(set.get(), &objectClass, &keyType), CKR_KEY_HANDLE_INVALID);
    EXPECT_EQ(objectClass, 0x103U);
    EXPECT_EQ(keyType, 77U);
    WriteAttr("\x1F\1", 2, CKA_KEY_TYPE, set.get());
    EXPECT_EQ(GetObjectClassAndKeyType(set.get(), &objectClass, &keyType), CKR_OK);
    EXPECT_EQ(keyType, 0x11FU);
}

TEST(AttrutilSets, nullSetsAreAnswered)
{
    const OwnedSet set = make({{CKA_VALUE, "secret"}});
    const CK_ATTRIBUTE& attr = *set->attrs;
    AttributeSet* out = nullptr;
    EXPECT_EQ(AddAttributeSets(&out, set.get(), nullptr), CKR_HOST_MEMORY);
    EXPECT_EQ(text(OwnedSet(out, FreeAttributeSet).get()), " 11=secret"); // the caller's to free: deliberate
    EXPECT_EQ(AddAttributeSets(&out, nullptr, set.get()), CKR_HOST_MEMORY);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(ConcatAttributeSets(nullptr, set.get()), CKR_HOST_MEMORY);
    EXPECT_EQ(ConcatAttributeSets(nullptr, nullptr), CKR_OK);
    EXPECT_EQ(CopyAttr("", 1, CKA_ID, nullptr), CKR_HOST_MEMORY);
    EXPECT_EQ(DelAttr(CKA_ID, nullptr), CKR_HOST_MEMORY);
    EXPECT_EQ(SearchAttribute(nullptr, &attr, 1), 1);
    for (const int answer : {canModifyAttr(nullptr, &attr, 1), canModifyAttr(set.get(), nullptr, 1),
             isSensitiveAttr(nullptr, &attr), isSensitiveAttr(set.get(), nullptr), isBooleanAttr(nullptr),
             isEnumeratedAttr(nullptr), isNumericAttr(nullptr), ReadAttr(&out, 4, nullptr, CKA_ID, nullptr)})
        EXPECT_EQ(answer, 0);
    FreeAttributes(nullptr, 1);
    FreeAttributesNoClear(nullptr, 1);
}

TEST(AttrutilSets, comparisonsReturnTheirCodes)
{
    // One, other, and the results: attrcmp and CmpAttributes of the first ones, SearchAttribute of one's
    // first in the other, CmpAttributeSets, MatchAttributeSet. One final NUL of a label does not count for a
    // match. In sets with doubles every pair of equal types counts, and the first entry is the one that must
    // match. Of unread values only the lengths are compared.
    using Codes = std::vector<int>;
    const std::tuple<Entries, Entries, Codes> rows[] = {{{{3, "ab"}}, {{3, "ab"}}, {0, 0, 0, 0, 1}},
        {{{2, "b"}}, {{2, "abcde"}}, {-1, 2, 2, 0, 0}}, {{{2, "a\xFF"}}, {{2, "ab"}}, {1, 2, 2, 0, 0}},
        {{{3, "ab"}}, {{4, "ab"}}, {0, 1, 1, 2, 0}}, {{{3, "c"}}, {{3, "c\0"s}}, {-1, 2, 2, 0, 1}},
        {{{3, "c\0"s}}, {{3, "c"}}, {1, 2, 2, 0, 1}}, {{{2, "c"}}, {{2, "c\0"s}}, {-1, 2, 2, 0, 0}},
        {{{3, "c"}}, {{3, "c\0\0"s}}, {-1, 2, 2, 0, 0}}, {{{3, "c"}}, {{3, "d\0"s}}, {-1, 2, 2, 0, 0}},
        {{{3, "c"}}, {{3, "cd"}}, {-1, 2, 2, 0, 0}}, {{{3, "b"}}, {{1, "a"}, {3, "b"}}, {1, 1, 0, 1, 1}},
        {{{1, "a"}, {3, "b"}}, {{1, "a"}, {4, "b"}}, {0, 0, 0, 2, 0}},
        {{{3, "a"}}, {{3, "b"}, {4, "a"}}, {-1, 2, 1, 1, 0}},
        {{{3, "b"}, {3, "a"}}, {{3, "b"}, {3, "a"}}, {0, 0, 0, 2, 0}},
        {{{3, "b"}, {3, "b"}}, {{3, "b"}, {4, "a"}}, {0, 0, 0, 0, 1}},
        {{{3, "?y"}}, {{3, "?x"}}, {0, 0, 0, 0, 1}}, {{{3, "?x"}}, {{3, ""}}, {-1, 2, 2, 0, 0}}};
    for (const auto& [one, other, expected] : rows) {
        const OwnedSet a = make(one), b = make(other);
        const int order = attrcmp(a->attrs, b->attrs);
        const Codes codes = {(order > 0) - (order < 0), CmpAttributes(a->attrs, b->attrs, 1),
            SearchAttribute(b.get(), a->attrs, 1), CmpAttributeSets(a.get(), b.get()),
            MatchAttributeSet(a.get(), b.get())};
        EXPECT_EQ(codes, expected) << text(a.get()) << " and" << text(b.get());
        EXPECT_EQ(CmpAttributes(a->attrs, b->attrs, 0), one[0].first != other[0].first);
    }
    const OwnedSet empty = make({}), label = make({{CKA_LABEL, "\0"s}});
    EXPECT_EQ(MatchAttributeSet(nullptr, empty.get()) + MatchAttributeSet(empty.get(), nullptr), 2);
    EXPECT_EQ(MatchAttributeSet(nullptr, label.get()) + MatchAttributeSet(label.get(), nullptr), 0);
    CK_ATTRIBUTE missing = {CKA_LABEL, nullptr, 1}; // less than any other value of its length
    EXPECT_LT(attrcmp(&missing, label->attrs), 0);
    EXPECT_GT(attrcmpbuf(label->attrs, nullptr, 1), 0);
    EXPECT_EQ(attrcmpbuf(&missing, nullptr, 1), 0);
    const AttributeSet unset = {&missing, 1};
    EXPECT_EQ(MatchAttributeSet(&unset, make({{CKA_LABEL, ""}}).get()), 0);
}

} // namespace
