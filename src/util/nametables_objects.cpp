// The names of the object classes and key types, and the phrases of the session states. CAST128 and CAST5
// have the same value. CAST128 is first, so it is the name of the value; CAST5 can only be looked up as a
// name.
#include "util/fileVersion.h"
#include "util/nametables_rows.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
// clang-format off
constexpr NameTableRow ObjClassTable[] = {
    {CKO_DATA, "DATA"},
    {CKO_CERTIFICATE, "CERTIFICATE"},
    {CKO_CERTIFICATE_REQUEST, "CERTIFICATE_REQUEST"},
    {CKO_CRL, "CRL"},
    {CKO_PUBLIC_KEY, "PUBLIC_KEY"},
    {CKO_PRIVATE_KEY, "PRIVATE_KEY"},
    {CKO_SECRET_KEY, "SECRET_KEY"},
    {CKO_HW_FEATURE, "HW_FEATURE"},
    {CKO_DOMAIN_PARAMETERS, "DOMAIN_PARAMETERS"},
    {CKO_ADAPTER, "ADAPTER"},
    {CKO_SLOT, "SLOT"},
    {CKO_FM, "FM"},
    {0, nullptr},
};
static_assert(hasRows(ObjClassTable, OBJ_CLASS_ROWS));

constexpr NameTableRow KeyTypeTable[] = {
    {CKK_RSA, "RSA"},
    {CKK_RSA_DISCRETE, "RSA_DISCRETE"},
    {CKK_DSA, "DSA"},
    {CKK_DSA_DISCRETE, "DSA_DISCRETE"},
    {CKK_DH, "DH"},
    {CKK_EC, "EC"},
    {CKK_GENERIC_SECRET, "GENERIC_SECRET"},
    {CKK_RC2, "RC2"},
    {CKK_RC4, "RC4"},
    {CKK_DES, "DES"},
    {CKK_DES2, "DES2"},
    {CKK_DES3, "DES3"},
    {CKK_IDEA, "IDEA"},
    {CKK_CAST, "CAST"},
    {CKK_CAST3, "CAST3"},
    {CKK_CAST128, "CAST128"},
    {CKK_CAST5, "CAST5"},
    {CKK_SKIPJACK, "SKIPJACK"},
    {CKK_BATON, "BATON"},
    {CKK_JUNIPER, "JUNIPER"},
    {CKK_CDMF, "CDMF"},
    {CKK_AES, "AES"},
    {CKK_ARIA, "ARIA"},
    {CKK_SEED, "SEED"},
    {0, nullptr},
};
static_assert(hasRows(KeyTypeTable, KEY_TYPE_ROWS));

constexpr NameTableRow SesStateTable[] = {
    {CKS_RO_PUBLIC_SESSION, "Read Only Public Session"},
    {CKS_RO_USER_FUNCTIONS, "Read Only User Functions"},
    {CKS_RW_PUBLIC_SESSION, "Read Write Public Session"},
    {CKS_RW_USER_FUNCTIONS, "Read Write User Functions"},
    {CKS_RW_SO_FUNCTIONS, "Read Write Security Officer Functions"},
    {0, nullptr},
};
static_assert(hasRows(SesStateTable, SES_STATE_ROWS));
// clang-format on

} // namespace zerlin
