// Looks up the name of a value and the value of a name.
#include "util/nametables_rows.h"

#include "util/fileVersion.h"
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>

FILE_VERSION("1.1.1.2");

using namespace zerlin;

namespace {

constexpr std::size_t PREFIX_LENGTH = 4;

// The text for the last unknown value. All tables and threads share it. The bytes after the longest text stay
// 0, so the text is terminated at every moment, also while several threads write.
char buff[256];

// Writes byte by byte, without a lock. Threads that look up the same unknown value write the same bytes, so
// they read exactly its text.
void publish(const char (&text)[sizeof buff])
{
    const std::size_t size = std::strlen(text) + 1;
    for (std::size_t i = 0; i < size; ++i)
        std::atomic_ref<char>(buff[i]).store(text[i], std::memory_order_relaxed);
}

CK_ULONG valueOf(const char* name, const char* prefix, const NameTableRow* table, int rows)
{
    const bool prefixed = std::strncmp(name, prefix, PREFIX_LENGTH) == 0;
    return valTab(prefixed ? name + PREFIX_LENGTH : name, table, rows);
}

} // namespace

const char* strTab(CK_ULONG value, const NameTableRow* table, int count)
{
    for (int i = 0; i < count; ++i)
        if (table[i].value == value) return table[i].name;

    const bool vendor = static_cast<std::int32_t>(value) < 0;
    char text[sizeof buff];
    std::snprintf(text, sizeof text, vendor ? "Vendor defined (0x%lx)" : "UNKNOWN (0x%lx)", value);
    publish(text);
    return buff;
}

CK_ULONG valTab(const char* name, const NameTableRow* table, int count)
{
    for (int i = 0; i < count; ++i)
        if (std::strcmp(table[i].name, name) == 0) return table[i].value;
    return CK_UNAVAILABLE_INFORMATION;
}

const char* strObjClass(CK_OBJECT_CLASS value)
{
    return strTab(value, ObjClassTable, OBJ_CLASS_ROWS);
}

const char* strKeyType(CK_KEY_TYPE value)
{
    return strTab(value, KeyTypeTable, KEY_TYPE_ROWS);
}

const char* strAttribute(CK_ATTRIBUTE_TYPE value)
{
    return strTab(value, AttributeTable, ATTRIBUTE_ROWS);
}

const char* strMechanism(CK_MECHANISM_TYPE value)
{
    return strTab(value, MechanismTable, MECHANISM_ROWS);
}

const char* strSesState(CK_STATE value)
{
    return strTab(value, SesStateTable, SES_STATE_ROWS);
}

const char* strError(CK_RV value)
{
    return strTab(value, ErrorTable, ERROR_ROWS);
}

CK_OBJECT_CLASS valObjClass(const char* name)
{
    return valueOf(name, "CKO_", ObjClassTable, OBJ_CLASS_ROWS);
}

CK_KEY_TYPE valKeyType(const char* name)
{
    return valueOf(name, "CKK_", KeyTypeTable, KEY_TYPE_ROWS);
}

CK_ATTRIBUTE_TYPE valAttribute(const char* name)
{
    return valueOf(name, "CKA_", AttributeTable, ATTRIBUTE_ROWS);
}

CK_MECHANISM_TYPE valMechanism(const char* name)
{
    return valueOf(name, "CKM_", MechanismTable, MECHANISM_ROWS);
}

// The prefix is "CKM_", not "CKS_": deliberate.
CK_STATE valSesState(const char* name)
{
    return valueOf(name, "CKM_", SesStateTable, SES_STATE_ROWS);
}

CK_RV valError(const char* name)
{
    return valueOf(name, "CKR_", ErrorTable, ERROR_ROWS);
}
