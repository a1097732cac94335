// The name tables row by row, and the lookups: of every value and name, and of those that do not exist.
#include "nametables_expected.h"
#include "util/nametables_rows.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <thread>

namespace {

TEST(NameTables, holdEveryRowInOrderAndNameNothingElse)
{
    using NameOf = const char* (*)(CK_ULONG);
    using ValueOf = CK_ULONG (*)(const char*);
    const std::tuple<const char*, const NameTableRow*, NameOf, ValueOf, std::string> kinds[] = {
        {expected::ObjClassTable, zerlin::ObjClassTable, strObjClass, valObjClass, "CKO_"},
        {expected::KeyTypeTable, zerlin::KeyTypeTable, strKeyType, valKeyType, "CKK_"},
        {expected::AttributeTable, zerlin::AttributeTable, strAttribute, valAttribute, "CKA_"},
        {expected::MechanismTable, zerlin::MechanismTable, strMechanism, valMechanism, "CKM_"},
        {expected::SesStateTable, zerlin::SesStateTable, strSesState, valSesState, "CKM_"},
        {expected::ErrorTable, zerlin::ErrorTable, strError, valError, "CKR_"},
    };
    for (const auto& [expected, table, nameOf, valueOf, prefix] : kinds) {
        std::map<CK_ULONG, std::string> firstNames;
        std::istringstream rows(expected);
        const NameTableRow* row = table;
        for (std::string text; std::getline(rows, text, '|'); ++row) {
            const CK_ULONG value = std::stoul(text, nullptr, 16);
            const std::string name = text.substr(text.find(' ') + 1);
            ASSERT_STREQ(row->name, name.c_str());
            EXPECT_EQ(row->value, value) << name;
            EXPECT_EQ(valueOf(name.c_str()), value) << name;
            EXPECT_EQ(valueOf((prefix + name).c_str()), value) << name;
            firstNames.emplace(value, name);
        }
        EXPECT_EQ(row->name, nullptr);
        for (const auto& [value, first] : firstNames) {
            for (const CK_ULONG near : {value - 1, value, value + 1, value ^ 0x80000000}) {
                std::ostringstream miss;
                miss << (near < 0x80000000 ? "UNKNOWN (0x" : "Vendor defined (0x") << std::hex << near << ')';
                EXPECT_EQ(nameOf(near), firstNames.contains(near) ? firstNames[near] : miss.str());
            }
        }
    }
}

TEST(NameTables, matchNamesExactlyAndSearchUpToTheCount)
{
    for (const char* name : {"cka_label", "CKM_LABEL", "CKA_CKA_LABEL", "LABE", "LABELS", "CKA_", ""})
        EXPECT_EQ(valAttribute(name), 0xFFFFFFFF) << '"' << name << '"';
    const NameTableRow rows[] = {{7, "first"}, {8, "first"}, {9, "last"}, {0, nullptr}};
    EXPECT_STREQ(strTab(9, rows, 2), "UNKNOWN (0x9)");
    EXPECT_EQ(valTab("last", rows, 2), 0xFFFFFFFF);
}

// All misses share one buffer. Threads that miss the same value read its text; others read at least a
// terminated text.
TEST(NameTables, threadsThatMissAtOnceReadTerminatedTexts)
{
    for (const std::vector<CK_ULONG>& values :
        {std::vector<CK_ULONG>{0x80009999, 0x80009999}, {0x5, 0x80009999}}) {
        strAttribute(values[0]);
        std::vector<std::thread> threads;
        for (const CK_ULONG value : values) {
            threads.emplace_back([value, isOne = values[0] == values[1]] {
                for (int i = 0; i < 20000; ++i) {
                    const std::string seen = strAttribute(value);
                    ASSERT_TRUE(isOne ? seen == "Vendor defined (0x80009999)" : seen.size() <= 27) << seen;
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    }
}

} // namespace
