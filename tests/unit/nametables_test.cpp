// The name tables, and the lookups: of every value and name, and of those that do not exist.
#include "digest.h"
#include "util/nametables_rows.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

using namespace zerlin;

struct NameTable {
    const NameTableRow* rows;
    const char* (*nameOf)(CK_ULONG);
    CK_ULONG (*valueOf)(const char*);
    std::string prefix;
    const char* digest; // of the rows in their order, each a line "80000201=MD4"
};
const NameTable NAME_TABLES[] = {
    {ObjClassTable, strObjClass, valObjClass, "CKO_", "12 lines, 531447301"},
    {KeyTypeTable, strKeyType, valKeyType, "CKK_", "24 lines, 2921923967"},
    {AttributeTable, strAttribute, valAttribute, "CKA_", "119 lines, 2324626881"},
    {MechanismTable, strMechanism, valMechanism, "CKM_", "256 lines, 3671781150"},
    {SesStateTable, strSesState, valSesState, "CKM_", "5 lines, 907118158"}, // not "CKS_": deliberate
    {ErrorTable, strError, valError, "CKR_", "138 lines, 3231902061"},
};

TEST(NameTables, eachValueHasItsFirstNameAndEachNameItsValue)
{
    for (const auto& [rows, nameOf, valueOf, prefix, expected] : NAME_TABLES) {
        std::map<CK_ULONG, std::string> firstNames;
        std::ostringstream lines;
        for (const NameTableRow* row = rows; row->name != nullptr; ++row) {
            lines << std::hex << row->value << '=' << row->name << '\n';
            EXPECT_EQ(valueOf(row->name), row->value) << row->name;
            EXPECT_EQ(valueOf((prefix + row->name).c_str()), row->value) << row->name;
            firstNames.emplace(row->value, row->name);
        }
        EXPECT_EQ(digest(lines.str()), expected) << prefix << '\n' << lines.str();
        for (const auto& [value, first] : firstNames) {
            for (const CK_ULONG near : {value - 1, value, value + 1, value ^ 0x80000000}) {
                std::ostringstream miss;
                miss << (near < 0x80000000 ? "UNKNOWN (0x" : "Vendor defined (0x") << std::hex << near << ')';
                EXPECT_EQ(nameOf(near), firstNames.contains(near) ? firstNames[near] : miss.str());
            }
        }
    }
    EXPECT_STREQ(strMechanism(0x3A5), "PBE_SHA1_CAST128_CBC"); // the second name is PBE_SHA1_CAST5_CBC
    EXPECT_STREQ(strError(0x80002006), "WLD_ERROR a WLD configuration has the slot description too long ");
}

TEST(NameTables, namesMatchExactlyAndTheSearchEndsAtTheCount)
{
    for (const char* name : {"cka_label", "CKM_LABEL", "CKA_CKA_LABEL", "LABE", "LABELS", "CKA_", ""})
        EXPECT_EQ(valAttribute(name), 0xFFFFFFFF) << '"' << name << '"';
    const NameTableRow rows[] = {{7, "first"}, {8, "first"}, {7, "second"}, {9, "last"}, {0, nullptr}};
    EXPECT_STREQ(strTab(7, rows, 4), "first");
    EXPECT_STREQ(strTab(9, rows, 3), "UNKNOWN (0x9)");
    EXPECT_EQ(valTab("first", rows, 4), 7U);
    EXPECT_EQ(valTab("last", rows, 3), 0xFFFFFFFF);
    EXPECT_STREQ(strTab(0, rows, 4), "UNKNOWN (0x0)");
}

} // namespace
