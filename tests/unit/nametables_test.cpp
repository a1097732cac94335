// The name tables, and the lookups: of every value and name, and of those that do not exist.
#include "digest.h"
#include "util/nametables_rows.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

using namespace zerlin;

const std::tuple<const NameTableRow*, const char* (*)(CK_ULONG), CK_ULONG (*)(const char*), const char*>
    NAME_TABLES[] = {{ObjClassTable, strObjClass, valObjClass, "CKO_"},
        {KeyTypeTable, strKeyType, valKeyType, "CKK_"}, {AttributeTable, strAttribute, valAttribute, "CKA_"},
        {MechanismTable, strMechanism, valMechanism, "CKM_"}, {ErrorTable, strError, valError, "CKR_"},
        {SesStateTable, strSesState, valSesState, "CKM_"}}; // not "CKS_": deliberate

TEST(NameTables, eachValueHasItsFirstNameAndEachNameItsValue)
{
    std::ostringstream lines; // the rows of all tables in their order: "80000201=MD4"
    for (const auto& [rows, nameOf, valueOf, prefix] : NAME_TABLES) {
        std::map<CK_ULONG, std::string> names;
        for (const NameTableRow* row = rows; row->name != nullptr; ++row) {
            lines << std::hex << row->value << '=' << row->name << '\n';
            EXPECT_EQ(valueOf(row->name), row->value) << row->name;
            EXPECT_EQ(valueOf((prefix + std::string(row->name)).c_str()), row->value) << row->name;
            names.emplace(row->value, row->name);
        }
        for (const auto& [value, name] : names) {
            std::ostringstream miss;
            miss << (value < 0x7FFFFFFF ? "UNKNOWN (0x" : "Vendor defined (0x") << std::hex << value + 1
                 << ')';
            EXPECT_EQ(nameOf(value), name);
            EXPECT_EQ(nameOf(value + 1), names.contains(value + 1) ? names[value + 1] : miss.str());
        }
    }
    EXPECT_EQ(digest(lines.str()), "554 lines, 3415412219") << lines.str();
    EXPECT_STREQ(strMechanism(0x80000000), "Vendor defined (0x80000000)");
}

TEST(NameTables, namesMatchExactlyAndTheSearchEndsAtTheCount)
{
    for (const char* name : {"cka_label", "CKM_LABEL", "CKA_CKA_LABEL", "LABE", "LABELS", "CKA_", ""})
        EXPECT_EQ(valAttribute(name), ~CK_ULONG{0}) << '"' << name << '"';
    const NameTableRow rows[] = {{7, "first"}, {8, "first"}, {7, "second"}, {9, "last"}, {0, nullptr}};
    EXPECT_STREQ(strTab(7, rows, 4), "first");
    EXPECT_STREQ(strTab(9, rows, 3), "UNKNOWN (0x9)");
    EXPECT_EQ(valTab("first", rows, 4), 7U);
    EXPECT_EQ(valTab("last", rows, 3), ~CK_ULONG{0});
}

} // namespace
