// The rows of the six name tables, for the lookups and the tests.
#pragma once

#include <algorithm>
#include <cstddef>

#include "zerlin/nametables.h"

namespace zerlin {

// Numbers of rows to search. Each table has one more row, the closing {0, null}.
constexpr int OBJ_CLASS_ROWS = 12;
constexpr int KEY_TYPE_ROWS = 24;
constexpr int ATTRIBUTE_ROWS = 119;
constexpr int MECHANISM_ROWS = 256;
constexpr int SES_STATE_ROWS = 5;
constexpr int ERROR_ROWS = 138;

// Lookups search from the first row on. If two rows have the same value, the first one gives its name.
extern const NameTableRow ObjClassTable[OBJ_CLASS_ROWS + 1];
extern const NameTableRow KeyTypeTable[KEY_TYPE_ROWS + 1];
extern const NameTableRow AttributeTable[ATTRIBUTE_ROWS + 1];
extern const NameTableRow MechanismTable[MECHANISM_ROWS + 1];
extern const NameTableRow SesStateTable[SES_STATE_ROWS + 1];
extern const NameTableRow ErrorTable[ERROR_ROWS + 1];

// Does the table have exactly that many rows with a name, and then the closing row?
template <std::size_t size>
consteval bool hasRows(const NameTableRow (&table)[size], int rows)
{
    const auto named = [](const NameTableRow& row) { return row.name != nullptr; };
    return size == static_cast<std::size_t>(rows) + 1 && std::all_of(table, table + rows, named) &&
           table[rows].value == 0 && table[rows].name == nullptr;
}

} // namespace zerlin
