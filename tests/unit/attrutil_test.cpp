// Attribute templates and sets: lookup, numbers, kinds, the rules of what may change, memory.
#include "failing_alloc.h"
#include "zerlin/attrutil.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>

namespace {

using Types = std::vector<CK_ATTRIBUTE_TYPE>;
using Strings = std::vector<std::string>;

struct Entry {
    CK_ATTRIBUTE_TYPE type;
    std::string value;
};
using Entries = std::vector<Entry>;

struct SetDeleter {
    void operator()(AttributeSet* set) const { FreeAttributeSet(set); }
};
using OwnedSet = std::unique_ptr<AttributeSet, SetDeleter>;

CK_ATTRIBUTE attribute(const Entry& entry)
{
    return {entry.type, const_cast<char*>(entry.value.data()), entry.value.size()};
}

OwnedSet make(const Entries& entries)
{
    std::vector<CK_ATTRIBUTE> attributes;
    std::ranges::transform(entries, std::back_inserter(attributes), attribute);
    return OwnedSet(DupAttributes(attributes.data(), attributes.size()));
}

std::string bytes(CK_ULONG number)
{
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

// Such as " 3=ab 11=", with a null value as " 11=null(2)".
std::string text(const AttributeSet* set)
{
    if (set == nullptr) return " no set";
    if (set->attrs == nullptr) return " no array, " + std::to_string(set->count);
    std::string result;
    for (CK_ULONG i = 0; i < set->count; ++i) {
        const auto [type, value, length] = set->attrs[i];
        std::ostringstream out;
        out << ' ' << std::hex << type << '=' << std::string(static_cast<char*>(value), value ? length : 0);
        if (value == nullptr && length > 0) out << "null(" << length << ")";
        result += out.str();
    }
    return result;
}

Types operator+(Types types, const Types& more)
{
    types.insert(types.end(), more.begin(), more.end());
    std::ranges::sort(types);
    return types;
}

// Of all types in the standard and the vendor range, with this value, those that the predicate accepts.
Types accepted(const std::string& value, const std::function<bool(const CK_ATTRIBUTE*)>& predicate)
{
    Types result;
    CK_ATTRIBUTE attr = {0, const_cast<char*>(value.data()), value.size()};
    for (const CK_ATTRIBUTE_TYPE start : {0x0UL, 0x80000000UL}) {
        for (attr.type = start; attr.type <= start + 0x400; ++attr.type) {
            if (predicate(&attr)) result.push_back(attr.type);
        }
    }
    return result;
}

TEST(AttrutilDeathTest, programmingErrorsAbort)
{
    CK_ATTRIBUTE a = {CKA_ID, nullptr, 0};
    const CK_ATTRIBUTE b = {CKA_LABEL, nullptr, 0};
    EXPECT_DEATH(
        FindAttribute(0, nullptr, 1), "^findattr.c:[0-9]+: FindAttribute: Assertion `attr' failed\\.\n");
    EXPECT_DEATH(FindAttr(0, nullptr), "^findattr.c:[0-9]+: FindAttr: Assertion `attrData' failed\\.\n");
    EXPECT_DEATH(
        at_assign(&a, &b), "^attrutil.c:[0-9]+: at_assign: Assertion `tgtNa->type == srcNa->type' failed");
}

TEST(Attrutil, theFirstOfATypeIsFoundAndItsNumberRead)
{
    CK_BYTE value[] = {0xFE, 0xFF, 0x03, 0x80, 0x01};
    const CK_ATTRIBUTE array[] = {{3, value, 0}, {0x11, value, 1}, {0x11, value, 2}, {4, value, 3},
        {5, value, 4}, {6, value, 5}, {7, nullptr, 4}};
    EXPECT_EQ(FindAttribute(0x11, array, 3), &array[1]);
    EXPECT_EQ(FindAttribute(0x11, array, 1), nullptr);
    EXPECT_EQ(FindAttribute(0xFFFF, array, 3), &array[0]);
    EXPECT_EQ(FindAttribute(0xFFFF, nullptr, 0), nullptr);

    const CK_ULONG numbers[] = {~0UL, 0xFE, 0xFFFE, ~0UL, 0x8003FFFE, ~0UL, ~0UL};
    for (CK_ULONG i = 0; i < std::size(numbers); ++i) {
        const CK_LONG expected = static_cast<CK_LONG>(numbers[i]);
        EXPECT_EQ(std::pair(numAttr(&array[i]), intAttr(&array[i])), std::pair(expected, expected)) << i;
    }
    EXPECT_EQ(numAttrLookup(0x11, array, 7), 0xFE);
    EXPECT_EQ(intAttrLookup(8, array, 7), -1);
}

const Types booleanTypes = {0x1, 0x2, 0x86, 0x103, 0x104, 0x105, 0x106, 0x107, 0x108, 0x109, 0x10A, 0x10B,
    0x10C, 0x162, 0x163, 0x164, 0x165, 0x170, 0x301, 0x302, 0x80000127, 0x80000128, 0x80000129, 0x8000012A,
    0x8000012B, 0x80000139, 0x8000013A, 0x80000145, 0x8000014B, 0x80000170};
const Types enumeratedTypes = {0x0, 0x80, 0x100, 0x300};
const Types numericTypes = {0x0, 0x80, 0x100, 0x121, 0x133, 0x134, 0x160, 0x161, 0x166, 0x300, 0x80000101,
    0x8000012C, 0x80000132, 0x80000136, 0x80000137, 0x80000140, 0x80000141, 0x80000142, 0x80000143,
    0x80000144, 0x80000148, 0x8000014C, 0x8000014D, 0x8000014E, 0x80000151, 0x80000155, 0x80000156,
    0x80000158, 0x80000159, 0x80000185, 0x80000186, 0x80000187, 0x80000189, 0x8000018A, 0x80000200};
const Types listTypes = {0x80000104};

TEST(Attrutil, kindsGoByTypeAndLength)
{
    for (std::string value; value.size() <= 9; value += '\1') {
        const bool fits = value.size() >= 1 && value.size() <= 4;
        const bool isList = value.size() == 4 || value.size() == 8;
        EXPECT_EQ(accepted(value, isBooleanAttr), fits ? booleanTypes : Types{}) << value.size();
        EXPECT_EQ(accepted(value, isEnumeratedAttr), fits ? enumeratedTypes : Types{}) << value.size();
        EXPECT_EQ(
            accepted(value, isNumericAttr), (fits ? numericTypes : Types{}) + (isList ? listTypes : Types{}));
    }
    const auto isNumericType = [](const CK_ATTRIBUTE* attr) { return isNumericAttrType(attr->type); };
    EXPECT_EQ(accepted("", isNumericType), numericTypes + listTypes);
}

TEST(Attrutil, sensitiveIsWhatTheClassMakesSensitive)
{
    const Types secrets = {0x11, 0x123, 0x124, 0x125, 0x126, 0x127, 0x128};
    const Types value = {0x11};
    const std::tuple<Entry, Types> rows[] = {{{CKA_CLASS, bytes(CKO_PRIVATE_KEY)}, secrets},
        {{CKA_CLASS, "\x3"}, secrets}, {{CKA_CLASS, bytes(CKO_HW_FEATURE)}, {}}, {{CKA_LABEL, "abc"}, {}},
        {{CKA_CLASS, bytes(CKO_DATA)}, value}, {{CKA_CLASS, bytes(CKO_PUBLIC_KEY)}, value},
        {{CKA_CLASS, bytes(CKO_SECRET_KEY)}, value}, {{CKA_CLASS, "abc"}, value}};
    for (const auto& [entry, expected] : rows) {
        const OwnedSet set = make({entry});
        const auto isSensitive = [&](const CK_ATTRIBUTE* attr) { return isSensitiveAttr(set.get(), attr); };
        EXPECT_EQ(accepted("", isSensitive), expected) << entry.type << entry.value;
        EXPECT_FALSE(isSensitiveAttr(set.get(), nullptr));
    }
    EXPECT_FALSE(isSensitiveAttr(nullptr, make({{CKA_VALUE, ""}})->attrs));
}

TEST(Attrutil, assigningWidensNumbersAndAnswersLengths)
{
    // The source; the room; the result, the target's length and what eight dots become.
    const std::tuple<Entry, CK_ULONG, CK_RV, CK_ULONG, std::string> rows[] = {
        {{CKA_CLASS, "\x3"}, 4, CKR_OK, 4, bytes(3) + "...."},
        {{CKA_CLASS, "\x3"}, 2, CKR_OK, 2, std::string("\x3\0......", 8)},
        {{CKA_CLASS, "\x3"}, 1, CKR_OK, 1, "\x3......."},
        {{CKA_VALUE_LEN, "\xFE\xFF"}, 4, CKR_OK, 4, bytes(0xFFFE) + "...."},
        {{CKA_CLASS, "abc"}, 4, CKR_OK, 4, bytes(~0UL) + "...."}, // no number, written as one
        {{CKA_CLASS, "\x3"}, 3, CKR_GENERAL_ERROR, 3, "........"},
        {{CKA_CLASS, "\x3"}, 8, CKR_GENERAL_ERROR, 8, "........"},
        {{CKA_CLASS, "abcd"}, 2, CKR_BUFFER_TOO_SMALL, 2, "........"},
        {{CKA_CLASS, "abcdefg"}, 8, CKR_OK, 7, "abcdefg."},
        {{CKA_MECHANISM_LIST, "abcdABCD"}, 8, CKR_OK, 8, "abcdABCD"},
        {{CKA_MECHANISM_LIST, "ab"}, 4, CKR_OK, 2, "ab......"},
        {{CKA_SENSITIVE, "\x1"}, 4, CKR_OK, 1, "\x1......."},
        {{CKA_LABEL, ""}, 8, CKR_OK, 0, "........"},
        {{CKA_LABEL, "abc"}, 2, CKR_BUFFER_TOO_SMALL, 2, "........"},
    };
    for (const auto& [entry, room, rv, length, result] : rows) {
        std::string buffer(8, '.');
        CK_ATTRIBUTE target = {entry.type, buffer.data(), room};
        const CK_ATTRIBUTE source = attribute(entry);
        EXPECT_EQ(at_assign(&target, &source), rv) << entry.value << room;
        EXPECT_EQ(target.ulValueLen, length) << entry.value << room;
        EXPECT_EQ(buffer, result) << entry.value << room;
    }
    char room[] = "room";
    CK_ATTRIBUTE a = {CKA_LABEL, nullptr, 9};
    CK_ATTRIBUTE b = {CKA_LABEL, room, 4};
    EXPECT_EQ(at_assign(&b, &a), CKR_OK);
    EXPECT_EQ(b.ulValueLen, 9U);
    EXPECT_EQ(at_assign(&(a = {CKA_LABEL, nullptr, 0}), &b), CKR_OK);
    EXPECT_EQ(a.ulValueLen, 9U);
}

TEST(Attrutil, transferGoesOnAndTellsTheLastResult)
{
    char buffer[] = "........";
    char source[] = "abcd";
    const CK_ATTRIBUTE sources[] = {{CKA_LABEL, source, 3}, {CKA_ID, source, 4}, {CKA_VALUE, source, 1}};
    CK_ATTRIBUTE targets[] = {{CKA_LABEL, buffer, 1}, {0xFFFF, buffer, 2}, {CKA_LABEL, buffer, 8}};
    EXPECT_EQ(TransferAttr(targets, sources, 2), CKR_BUFFER_TOO_SMALL);
    targets[1].ulValueLen = 4;
    EXPECT_EQ(TransferAttr(targets, sources, 2), CKR_OK);
    EXPECT_EQ(targets[1].type, CKA_ID);
    EXPECT_STREQ(buffer, "abcd....");
    EXPECT_EQ(TransferAttr(targets, sources, 3), CKR_GENERAL_ERROR);
    EXPECT_EQ(TransferAttr(nullptr, nullptr, 0), CKR_OK);
}

// For each object: which types must not change. With each type's present value, in and out of copy mode.
TEST(AttrutilRules, whatMayChangeDependsOnTheObjectTheValueAndTheMode)
{
    const Types always = {
        0x0, 0x80, 0x100, 0x163, 0x166, 0x80000101, 0x80000102, 0x80000103, 0x80000151, 0x80000200};
    const Types once = {0x110, 0x111, 0x80000201};
    const Types outsideCopies = {0x1, 0x2, 0x170};
    const Types whenFalse = {0x162, 0x80000129};
    const Types whenTrue = {0x103};
    const Types inSecretKeys = {0x11, 0x161};
    const Types inPairs = {0x11, 0x120, 0x121, 0x122, 0x123, 0x124, 0x125, 0x126, 0x127, 0x128, 0x130, 0x131,
        0x132, 0x133, 0x134, 0x160, 0x180, 0x181, 0x8000012C};
    const Types inDsa = {0x104, 0x105, 0x106, 0x107, 0x80000128, 0x8000012B};
    const std::string yes = "\x1";
    const std::string no("\0", 1);
    const auto object = [](CK_ULONG objectClass, CK_ULONG keyType = CKK_RSA) {
        return Entries{{CKA_CLASS, bytes(objectClass)}, {CKA_KEY_TYPE, bytes(keyType)}};
    };
    const std::tuple<Entries, Types> rows[] = {{{}, {}}, {object(CKO_DATA), {}},
        {object(CKO_CERTIFICATE), {}}, {object(0x80000201, CKK_DSA), {}},
        {object(CKO_SECRET_KEY, CKK_DSA), inSecretKeys}, {{{CKA_CLASS, "\x4"}}, inSecretKeys},
        {object(CKO_PUBLIC_KEY), inPairs}, {object(CKO_PUBLIC_KEY, CKK_DSA), inPairs + inDsa},
        {object(CKO_PRIVATE_KEY), inPairs}, {object(CKO_PRIVATE_KEY, CKK_DSA), inPairs + inDsa},
        {{{CKA_CLASS, "\x2"}}, inPairs}, {{{CKA_SENSITIVE, yes}}, {0x11}},
        {{{CKA_TRUSTED, bytes(1)}}, {0x11}}, {{{CKA_SENSITIVE, no}, {CKA_TRUSTED, "\x2"}}, {}}};
    for (const auto& [entries, refused] : rows) {
        const OwnedSet set = make(entries);
        for (const std::string& value : {std::string(), no, yes, "\x2" + no, no + yes}) {
            Types expected = always + refused;
            if (!value.empty()) expected = expected + once + (value[0] != 0 ? whenTrue : whenFalse);
            for (const int copyMode : {1, 0}) {
                if (copyMode == 0) expected = expected + outsideCopies;
                const auto isRefused = [&](const CK_ATTRIBUTE* attr) {
                    return canModifyAttr(set.get(), attr, copyMode) == 0;
                };
                EXPECT_EQ(accepted(value, isRefused), expected) << text(set.get()) << value << copyMode;
            }
        }
        EXPECT_FALSE(canModifyAttr(nullptr, set->attrs, 1) || canModifyAttr(set.get(), nullptr, 1));
    }
}

TEST(AttrutilSets, readingCutsAndPads)
{
    const OwnedSet set = make({{CKA_LABEL, "abc"}, {CKA_CLASS, "\x4"}});
    std::string out = ".....";
    CK_ULONG length = 7;
    EXPECT_FALSE(ReadAttr(out.data(), 5, &length, CKA_ID, set.get()));
    EXPECT_FALSE(ReadAttr(out.data(), 5, &length, CKA_LABEL, nullptr));
    EXPECT_EQ(out + std::to_string(length), ".....7");
    EXPECT_EQ(ReadAttr(out.data(), 2, &length, CKA_LABEL, set.get()), 1);
    EXPECT_EQ(out + std::to_string(length), "ab...3");
    EXPECT_EQ(ReadAttr(out.data(), 5, nullptr, CKA_LABEL, set.get()), 1);
    EXPECT_EQ(out, std::string("abc\0\0", 5));

    CK_OBJECT_CLASS objectClass = 99;
    CK_KEY_TYPE keyType = 99;
    EXPECT_EQ(GetObjectClassAndKeyType(nullptr, &objectClass, &keyType), CKR_KEY_HANDLE_INVALID);
    EXPECT_EQ(GetObjectClassAndKeyType(set.get(), &objectClass, &keyType), CKR_KEY_HANDLE_INVALID);
    EXPECT_EQ(keyType, 99U);
    WriteAttr("\x1F", 1, CKA_KEY_TYPE, set.get());
    EXPECT_EQ(GetObjectClassAndKeyType(set.get(), &objectClass, &keyType), CKR_OK);
    EXPECT_EQ(std::pair(objectClass, keyType), std::pair(CKO_SECRET_KEY, CKK_AES));
}

// The operation's code and what the set is then: when the n-th allocation fails, and, last, when none does.
TEST(AttrutilSets, writesKeepToTheirRulesAndSurviveFailedAllocations)
{
    using Operation = std::function<CK_RV(OwnedSet&, const AttributeSet& with)>;
    const Operation fresh = [](auto& set, auto&) { return set.reset(NewAttributeSet(2)), CKR_OK; };
    const Operation dup = [](auto& set, auto& with) { return set.reset(DupAttributeSet(&with)), CKR_OK; };
    const Operation force = [](auto& set, auto& with) {
        return WriteAttr(with.attrs->pValue, with.attrs->ulValueLen, with.attrs->type, set.get()), CKR_OK;
    };
    const Operation copy = [](auto& set, auto& with) {
        return CopyAttr(with.attrs->pValue, with.attrs->ulValueLen, with.attrs->type, set.get());
    };
    const Operation add = [](auto& set, auto& with) {
        return AddAttr(with.attrs->pValue, with.attrs->ulValueLen, with.attrs->type, set.get());
    };
    const Operation copyOwn = [](auto& set, auto&) {
        return CopyAttr(set->attrs->pValue, 2, set->attrs->type, set.get());
    };
    const Operation copyNull = [](auto& set, auto&) {
        return CopyAttr(nullptr, 2, set->attrs->type, set.get());
    };
    const Operation del = [](auto& set, auto& with) { return DelAttr(with.attrs->type, set.get()); };
    // Of the first entry's type, from the others; CKR_OK when the set's entry comes back.
    const Operation transfer = [](auto& set, auto& with) {
        const AttributeSet source = {with.attrs + 1, with.count - 1};
        const CK_ATTRIBUTE* const entry = CopyAttribute(with.attrs->type, set.get(), &source);
        return entry != nullptr && entry == FindAttr(with.attrs->type, set.get()) ? CKR_OK : CKR_HOST_MEMORY;
    };
    const Operation concat = [](auto& set, auto& with) { return ConcatAttributeSets(set.get(), &with); };
    const Operation addSet = [](auto& set, auto& with) {
        AttributeSet* out = nullptr;
        const CK_RV rv = AddAttributeSets(&out, set.get(), &with);
        return set.reset(out), rv;
    };
    const Entry token = {CKA_TOKEN, "T"};
    const Entry local = {CKA_LOCAL, "L"};
    const Entry sensitive = {CKA_SENSITIVE, "YY"};
    const Entry key = {CKA_VALUE, "secret"};
    const Entry id = {CKA_ID, "id"};
    const std::string nul("\0", 1);
    const Entry unmodifiable = {CKA_MODIFIABLE, nul};
    const std::tuple<Entries, Operation, Entries, Strings> rows[] = {
        {{}, fresh, {}, {"0 no set", "0 no array, 2", "0 0= 0="}},
        {{}, dup, {}, {"0 no set", "0 no array, 0"}},
        {{}, dup, {key, id, {3, ""}},
            {"0 no set", "0 no set", "0 no set", "0 no set", "0 11=secret 102=id 3="}},
        {{}, copy, {id}, {"2 no array, 0", "2 no array, 0", "0 102=id"}},
        {{key}, add, {id}, {"2 11=secret", "2 11=secret", "0 11=secret 102=id"}},
        {{key}, add, {{CKA_LOCAL, ""}}, {"2 11=secret", "0 11=secret 163="}},
        {{key, id}, add, {{CKA_VALUE, "new"}}, {"2 11=null(3) 102=id", "0 11=new 102=id"}},
        {{key}, copy, {{CKA_VALUE, ""}}, {"0 11="}},
        {{key}, copyOwn, {}, {"2 11=null(2)", "0 11=se"}},
        {{key}, copyNull, {}, {"0 11=null(2)"}},
        {{token}, copy, {{CKA_TOKEN, "F"}}, {"2 1=null(1)", "0 1=F"}},
        {{token}, add, {{CKA_TOKEN, "F"}}, {"16 1=T"}},
        {{token}, add, {{CKA_TOKEN, "T"}}, {"0 1=T"}},
        {{sensitive}, copy, {{CKA_SENSITIVE, "YN"}}, {"16 103=YY"}},
        {{sensitive}, copy, {{CKA_SENSITIVE, "Y"}}, {"16 103=YY"}},
        {{sensitive}, copy, {sensitive}, {"0 103=YY"}},
        {{sensitive}, force, {{CKA_SENSITIVE, "N"}}, {"0 103=null(1)", "0 103=N"}},
        {{key, id, token}, del, {key}, {"2 102=id 1=T", "0 102=id 1=T"}},
        {{key, id}, del, {id}, {"2 11=secret", "0 11=secret"}},
        {{key}, del, {key}, {"0 no array, 0"}},
        {{key}, del, {id}, {"18 11=secret"}},
        {{token}, transfer, {key, id, key}, {"2 1=T", "2 1=T", "0 1=T 11=secret"}},
        {{local}, transfer, {local, {CKA_LOCAL, "new"}}, {"0 163=null(3)", "0 163=new"}},
        {{local}, transfer, {local, id}, {"0 163=L"}},
        {{local}, transfer, {key, id}, {"2 163=L"}},
        {{}, concat, {{CKA_ID, ""}, {CKA_LABEL, ""}}, {"2 no array, 0", "2 102=", "0 102= 3="}},
        {{local}, concat, {{CKA_LOCAL, "new"}, token}, {"2 163=L", "2 163=L", "0 163=L 1=T"}},
        {{unmodifiable}, concat, {id}, {"16 170=" + nul}},
        {{unmodifiable}, concat, {}, {"0 170=" + nul}},
        {{key}, addSet, {{CKA_ID, ""}, {CKA_VALUE, "new"}},
            {"2 no set", "2 no set", "2 no set", "2 no set", "2 no set", "0 11=new 102="}},
        {{local}, addSet, {local}, {"2 no set", "2 no set", "2 no set", "0 163=L"}},
        {{local}, addSet, {id, {CKA_LOCAL, ""}},
            {"2 no set", "2 no set", "2 no set", "2 no set", "2 no set", "209 no set"}},
    };
    for (const auto& [start, operation, with, expected] : rows) {
        HeapWatch heap;
        Strings results;
        for (int n = 1; n == 1 || allocationFailed(); ++n) {
            failAllocation(0);
            OwnedSet set = make(start);
            const OwnedSet other = make(with);
            failAllocation(n);
            const CK_RV rv = operation(set, *other);
            results.push_back(std::to_string(rv) + text(set.get()));
        }
        failAllocation(0);
        EXPECT_EQ(results, expected);
        EXPECT_TRUE(heap.blocks.empty()) << expected.back();
        const auto isSecret = [](const std::string& block) { return block.find("secret") != block.npos; };
        EXPECT_TRUE(std::ranges::none_of(heap.freed, isSecret)) << expected.back();
    }
}

TEST(AttrutilSets, valuesAreClearedBeforeTheyAreFreed)
{
    const auto freed = [](void (*free)(CK_ATTRIBUTE*, CK_ULONG)) {
        HeapWatch heap;
        const OwnedSet set = make({{CKA_VALUE, "secret"}, {CKA_ID, "id"}});
        WriteAttr("new", 3, CKA_ID, set.get());
        free(std::exchange(set->attrs, nullptr), set->count);
        heap.freed.pop_back(); // the array
        return heap.freed;
    };
    EXPECT_EQ(freed(FreeAttributes), (Strings{"\xAA\xAA", "\xAA\xAA\xAA\xAA\xAA\xAA", "\xAA\xAA\xAA"}));
    EXPECT_EQ(freed(FreeAttributesNoClear), (Strings{"\xAA\xAA", "secret", "new"}));
}

TEST(AttrutilSets, nullSetsAndImpossibleCountsAreAnswered)
{
    const OwnedSet set = make({{CKA_ID, "id"}});
    AttributeSet* out = nullptr;
    FreeAttributeSet(nullptr);
    FreeAttributes(nullptr, 1);
    FreeAttributesNoClear(nullptr, 1);
    EXPECT_EQ(DupAttributeSet(nullptr), nullptr);
    EXPECT_EQ(CopyAttr("a", 1, CKA_ID, nullptr), CKR_HOST_MEMORY);
    EXPECT_EQ(DelAttr(CKA_ID, nullptr), CKR_HOST_MEMORY);
    EXPECT_EQ(ConcatAttributeSets(nullptr, nullptr), CKR_OK);
    EXPECT_EQ(ConcatAttributeSets(nullptr, set.get()), CKR_HOST_MEMORY);
    EXPECT_EQ(AddAttributeSets(&out, nullptr, set.get()), CKR_HOST_MEMORY);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(AddAttributeSets(&out, set.get(), nullptr), CKR_HOST_MEMORY);
    EXPECT_EQ(text(OwnedSet(out).get()), " 102=id");
    constexpr CK_ULONG tooMany = ~0UL / sizeof(CK_ATTRIBUTE) + 1;
    EXPECT_EQ(text(OwnedSet(NewAttributeSet(tooMany)).get()), " no array, " + std::to_string(tooMany));
    EXPECT_EQ(DupAttributes(nullptr, tooMany), nullptr);
}

TEST(AttrutilComparison, attributesCompareByTypeLengthAndBytes)
{
    // One, other, the sign of attrcmp, CmpAttributes with values.
    const std::tuple<Entry, Entry, int, int> rows[] = {{{3, "ab"}, {3, "ab"}, 0, 0},
        {{3, "ab"}, {3, "ac"}, -1, 2}, {{3, "b"}, {3, "\x80"}, -1, 2}, {{3, "b"}, {3, "abcde"}, -1, 2},
        {{3, "abcde"}, {3, "b"}, 1, 2}, {{3, ""}, {3, ""}, 0, 0}, {{3, "ab"}, {4, "ab"}, 0, 1}};
    for (const auto& [one, other, order, compared] : rows) {
        const CK_ATTRIBUTE a = attribute(one);
        const CK_ATTRIBUTE b = attribute(other);
        EXPECT_EQ(attrcmp(&a, &b) <=> 0, order <=> 0) << one.value << other.value;
        EXPECT_EQ(CmpAttributes(&a, &b, 1), compared) << one.value << other.value;
        EXPECT_EQ(CmpAttributes(&a, &b, 0), one.type != other.type);
    }
    const OwnedSet set = make({{3, "ab"}, {0x102, "id"}});
    const CK_ATTRIBUTE absent = {3, nullptr, 2};
    EXPECT_EQ(attrcmpbuf(set->attrs, "abcde", 5), -1);
    EXPECT_EQ(attrcmpbuf(set->attrs, nullptr, 0), 1);
    EXPECT_EQ(attrcmpbuf(set->attrs, nullptr, ~0UL), 1);
    EXPECT_EQ(attrcmp(&absent, set->attrs), -1);
    EXPECT_EQ(attrcmp(set->attrs, &absent), 1);
    const auto search = [&set](const Entry& entry, int compareValues) {
        const CK_ATTRIBUTE attr = attribute(entry);
        return SearchAttribute(set.get(), &attr, compareValues);
    };
    EXPECT_EQ(search({3, "ab"}, 1), 0);
    EXPECT_EQ(search({3, "xx"}, 0), 0);
    EXPECT_EQ(search({3, "xx"}, 1), 1);
    EXPECT_EQ(search({0x102, "xx"}, 1), 2);
    EXPECT_EQ(SearchAttribute(make({}).get(), &absent, 0), 1);
}

TEST(AttrutilComparison, setsCompareByTypesAndMatchByValues)
{
    const std::string nul("\0", 1);
    // One, other, CmpAttributeSets, MatchAttributeSet.
    const std::tuple<Entries, Entries, int, int> rows[] = {{{}, {}, 0, 1}, {{}, {{1, "a"}}, 1, 1},
        {{{1, "a"}}, {}, 1, 0}, {{{1, "a"}, {3, "b"}}, {{3, "b"}, {1, "a"}}, 0, 1},
        {{{1, "a"}, {3, "b"}}, {{1, "x"}, {3, "y"}}, 0, 0},
        {{{1, "a"}, {3, "b"}}, {{1, "a"}, {4, "b"}}, 2, 0},
        {{{1, "a"}, {1, "a"}}, {{1, "a"}, {1, "b"}}, 2, 1}, {{{1, "b"}}, {{1, "a"}, {1, "b"}}, 1, 0},
        {{{3, "abc"}}, {{3, "abc" + nul}}, 0, 1}, {{{3, "abc" + nul}}, {{3, "abc"}}, 0, 1},
        {{{3, ""}}, {{3, nul}}, 0, 1}, {{{3, "abc"}}, {{3, "abcd"}}, 0, 0},
        {{{3, "abc"}}, {{3, "abx" + nul}}, 0, 0}, {{{3, "abc"}}, {{3, "abc" + nul + nul}}, 0, 0},
        {{{2, "abc"}}, {{2, "abc" + nul}}, 0, 0}};
    for (const auto& [one, other, compared, matched] : rows) {
        const OwnedSet a = make(one);
        const OwnedSet b = make(other);
        const std::string shown = text(a.get()) + text(b.get());
        EXPECT_EQ(CmpAttributeSets(a.get(), b.get()), compared) << shown;
        EXPECT_EQ(MatchAttributeSet(a.get(), b.get()), matched) << shown;
        EXPECT_EQ(MatchAttributeSet(a.get(), nullptr), a->count == 0) << shown;
        EXPECT_EQ(MatchAttributeSet(nullptr, a.get()), a->count == 0) << shown;
    }
    const OwnedSet twice = make({{1, "a"}, {1, "b"}});
    EXPECT_EQ(MatchAttributeSet(twice.get(), twice.get()), 1);
    EXPECT_EQ(MatchAttributeSet(nullptr, nullptr), 1);
}

} // namespace
