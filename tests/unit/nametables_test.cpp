// The name tables row by row, and the lookups in them: every value and name, those that are not there, the
// prefixes, and threads that share the text of a miss.
#include "nametables_expected.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <set>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "util/nametables.h"

namespace {

constexpr CK_ULONG NOT_FOUND = 0xFFFFFFFF;

struct Kind {
    const char* title;
    const NameTableRow* table;
    int count;
    std::span<const expected::Row> rows;
    const char* (*nameOf)(CK_ULONG);
    CK_ULONG (*valueOf)(const char*);
    const char* prefix;
};

const Kind KINDS[] = {
    {"object classes", zerlin::ObjClassTable, 12, expected::ObjClassTable, strObjClass, valObjClass, "CKO_"},
    {"key types", zerlin::KeyTypeTable, 24, expected::KeyTypeTable, strKeyType, valKeyType, "CKK_"},
    {"attributes", zerlin::AttributeTable, 119, expected::AttributeTable, strAttribute, valAttribute, "CKA_"},
    {"mechanisms", zerlin::MechanismTable, 256, expected::MechanismTable, strMechanism, valMechanism, "CKM_"},
    {"session states", zerlin::SesStateTable, 5, expected::SesStateTable, strSesState, valSesState, "CKM_"},
    {"errors", zerlin::ErrorTable, 138, expected::ErrorTable, strError, valError, "CKR_"},
};

std::string missText(CK_ULONG value)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, "%lx", value);
    return std::string(value < 0x80000000 ? "UNKNOWN (0x" : "Vendor defined (0x") + digits + ")";
}

TEST(NameTables, holdEveryRowInOrderAndAClosingOne)
{
    for (const Kind& kind : KINDS) {
        SCOPED_TRACE(kind.title);
        ASSERT_EQ(kind.rows.size(), static_cast<std::size_t>(kind.count));
        for (int i = 0; i < kind.count; ++i) {
            const auto& [value, name] = kind.rows[static_cast<std::size_t>(i)];
            EXPECT_EQ(kind.table[i].value, value) << "row " << i;
            EXPECT_STREQ(kind.table[i].name, name) << "row " << i;
        }
        EXPECT_EQ(kind.table[kind.count].value, 0u);
        EXPECT_EQ(kind.table[kind.count].name, nullptr);
    }
}

TEST(NameTables, findEachNameAndTheFirstNameOfEachValue)
{
    for (const Kind& kind : KINDS) {
        SCOPED_TRACE(kind.title);
        for (const auto& [value, name] : kind.rows) {
            EXPECT_EQ(kind.valueOf(name), value) << name;
            EXPECT_EQ(kind.valueOf((std::string(kind.prefix) + name).c_str()), value) << name;
            const auto first = std::ranges::find(kind.rows, value, &expected::Row::first);
            EXPECT_STREQ(kind.nameOf(value), first->second) << name;
        }
    }
    EXPECT_STREQ(strKeyType(0x18), "CAST128");
    EXPECT_STREQ(strMechanism(0x3A4), "PBE_MD5_CAST128_CBC");
    EXPECT_STREQ(strMechanism(0x3A5), "PBE_SHA1_CAST128_CBC");
}

// Neighbours of everything that is in any table, and the ends of both halves.
std::set<CK_ULONG> valuesAround()
{
    std::set<CK_ULONG> values = {0x7FFFFFFF, 0x80000000, 0x80009999, 0xFFFFFFFE, 0xFFFFFFFF};
    for (const Kind& kind : KINDS)
        for (const auto& [value, name] : kind.rows)
            values.insert({value - 1, value, value + 1, value ^ 0x80000000});
    return values;
}

TEST(NameTables, nameNothingElse)
{
    const char* const buff = strAttribute(NOT_FOUND);
    for (const Kind& kind : KINDS) {
        SCOPED_TRACE(kind.title);
        for (const CK_ULONG value : valuesAround()) {
            if (std::ranges::find(kind.rows, value, &expected::Row::first) != kind.rows.end()) continue;
            EXPECT_EQ(kind.nameOf(value), buff);
            EXPECT_EQ(buff, missText(value));
        }
    }
}

TEST(NameTables, tellTheMissesOfBothHalves)
{
    struct Case {
        CK_ULONG value;
        const char* text;
    };
    const Case cases[] = {
        {0x9999, "UNKNOWN (0x9999)"}, {0x7FFFFFFF, "UNKNOWN (0x7fffffff)"},
        {0x80000000, "Vendor defined (0x80000000)"}, {0x80001234, "Vendor defined (0x80001234)"},
        {0xFFFFFFFF, "Vendor defined (0xffffffff)"}, {0xA, "UNKNOWN (0xa)"}, // shorter than what stood there
    };
    for (const auto& [value, text] : cases)
        EXPECT_STREQ(strSesState(value), text);
}

TEST(NameTables, takeNamesExactly)
{
    struct Case {
        CK_ULONG (*valueOf)(const char*);
        const char* name;
        CK_ULONG value;
    };
    const Case cases[] = {
        {valAttribute, "CKA_LABEL", 0x3},
        {valAttribute, "LABEL", 0x3},
        {valAttribute, "cka_label", NOT_FOUND},
        {valAttribute, "CKA_label", NOT_FOUND},
        {valAttribute, "cKA_LABEL", NOT_FOUND},
        {valAttribute, "CKM_LABEL", NOT_FOUND},
        {valAttribute, "CKA_CKA_LABEL", NOT_FOUND},
        {valAttribute, "CKALABEL", NOT_FOUND},
        {valAttribute, "LABE", NOT_FOUND},
        {valAttribute, "LABELS", NOT_FOUND},
        {valAttribute, " LABEL", NOT_FOUND},
        {valAttribute, "CKA_", NOT_FOUND},
        {valAttribute, "CKA", NOT_FOUND},
        {valAttribute, "C", NOT_FOUND},
        {valAttribute, "", NOT_FOUND},
        {valKeyType, "CKK_CAST5", 0x18},
        {valKeyType, "CKM_RSA", NOT_FOUND},
        {valMechanism, "PBE_MD5_CAST5_CBC", 0x3A4},
        {valSesState, "CKM_Read Only Public Session", 0x0},
        {valSesState, "CKS_Read Only Public Session", NOT_FOUND},
        {valSesState, "CKS_RW_SO_FUNCTIONS", NOT_FOUND},
        {valError, "CKR_host memory", 0x2},
        {valError, "CKR_HOST_MEMORY", NOT_FOUND},
        {valError, "WLD_ERROR a WLD configuration has the slot description too long", NOT_FOUND},
    };
    for (const auto& [valueOf, name, value] : cases)
        EXPECT_EQ(valueOf(name), value) << '"' << name << '"';
}

TEST(NameTables, searchAnyTableToItsCount)
{
    const NameTableRow rows[] = {{7, "first"}, {7, "second"}, {8, "first"}, {9, "last"}, {0, nullptr}};
    EXPECT_EQ(strTab(7, rows, 4), rows[0].name);
    EXPECT_EQ(strTab(9, rows, 4), rows[3].name);
    EXPECT_STREQ(strTab(9, rows, 3), "UNKNOWN (0x9)");
    EXPECT_STREQ(strTab(0, rows, 4), "UNKNOWN (0x0)");
    EXPECT_STREQ(strTab(7, rows, 0), "UNKNOWN (0x7)");
    EXPECT_STREQ(strTab(7, rows, -1), "UNKNOWN (0x7)");
    EXPECT_EQ(valTab("first", rows, 4), 7u);
    EXPECT_EQ(valTab("second", rows, 4), 7u);
    EXPECT_EQ(valTab("last", rows, 4), 9u);
    EXPECT_EQ(valTab("last", rows, 3), NOT_FOUND);
    EXPECT_EQ(valTab("first", rows, 0), NOT_FOUND);
}

// What the check says about every miss of four threads that look up these values over and over.
std::vector<std::string> missesOfThreads(
    const std::vector<CK_ULONG>& values, bool (*isGood)(const std::string&, CK_ULONG))
{
    constexpr int THREADS = 4;
    constexpr int ROUNDS = 20000;
    std::atomic<int> ready = 0;
    std::vector<std::string> bad[THREADS];
    std::vector<std::thread> threads;
    for (auto& found : bad)
        threads.emplace_back([&] {
            for (++ready; ready < THREADS;)
                std::this_thread::yield();
            for (int round = 0; round < ROUNDS && found.size() < 5; ++round) {
                const CK_ULONG value = values[static_cast<std::size_t>(round) % values.size()];
                const char* const text = strAttribute(value);
                const std::string seen(text, strnlen(text, 256));
                if (!isGood(seen, value)) found.push_back(seen);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    std::vector<std::string> all;
    for (const auto& found : bad)
        all.insert(all.end(), found.begin(), found.end());
    return all;
}

TEST(NameTables, threadsThatMissOnOneValueReadItsText)
{
    for (const CK_ULONG value : {0x9999UL, 0x80009999UL, 0x5UL}) {
        strAttribute(value);
        EXPECT_EQ(missesOfThreads({value},
                      [](const std::string& seen, CK_ULONG missed) { return seen == missText(missed); }),
            std::vector<std::string>{});
    }
}

TEST(NameTables, threadsThatMissOnDifferentValuesReadATerminatedText)
{
    const auto isTerminated = [](const std::string& seen, CK_ULONG) {
        return !seen.empty() && seen.size() <= missText(0xFFFFFFFF).size();
    };
    EXPECT_EQ(
        missesOfThreads({0x5, 0x80009999, 0x7FFFFFFF, 0x9999}, isTerminated), std::vector<std::string>{});
    EXPECT_STREQ(strAttribute(0x80009999), "Vendor defined (0x80009999)");
}

} // namespace
