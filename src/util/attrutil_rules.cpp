// The rules on which attributes of an object may change.
#include "zerlin/attrutil.h"

#include "util/attributes.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace {

constexpr CK_ATTRIBUTE_TYPE WRITTEN_ONCE[] = {CKA_START_DATE, CKA_END_DATE, CKA_ADMIN_CERT};

constexpr CK_ATTRIBUTE_TYPE FIXED[] = {CKA_CLASS, CKA_CERTIFICATE_TYPE, CKA_KEY_TYPE, CKA_LOCAL,
    CKA_KEY_GEN_MECHANISM, CKA_USAGE_COUNT, CKA_TIME_STAMP, CKA_CHECK_VALUE, CKA_SLOT_ID, CKA_USAGE_LIMIT};

constexpr CK_ATTRIBUTE_TYPE CHANGED_BY_COPYING[] = {CKA_TOKEN, CKA_PRIVATE, CKA_MODIFIABLE};

constexpr CK_ATTRIBUTE_TYPE FIXED_IN_SECRET_KEYS[] = {CKA_VALUE, CKA_VALUE_LEN};

constexpr CK_ATTRIBUTE_TYPE FIXED_IN_KEY_PAIRS[] = {CKA_VALUE, CKA_MODULUS, CKA_MODULUS_BITS,
    CKA_PUBLIC_EXPONENT, CKA_PRIVATE_EXPONENT, CKA_PRIME_1, CKA_PRIME_2, CKA_EXPONENT_1, CKA_EXPONENT_2,
    CKA_COEFFICIENT, CKA_PRIME, CKA_SUBPRIME, CKA_BASE, CKA_PRIME_BITS, CKA_SUB_PRIME_BITS, CKA_VALUE_BITS,
    CKA_EC_PARAMS, CKA_EC_POINT, CKA_KEY_SIZE};

constexpr CK_ATTRIBUTE_TYPE FIXED_IN_DSA_KEYS[] = {
    CKA_ENCRYPT, CKA_DECRYPT, CKA_WRAP, CKA_UNWRAP, CKA_EXPORT, CKA_IMPORT};

bool holdsNumber(const AttributeSet* set, CK_ATTRIBUTE_TYPE type, CK_ULONG number)
{
    return numAttrLookup(type, set->attrs, set->count) == static_cast<CK_LONG>(number);
}

// A flag may change if it is empty or still has this value. So it can leave that state, but not come back to
// it.
bool isEmptyOr(bool value, const CK_ATTRIBUTE& flag)
{
    return !zerlin::hasBytes(flag) || (*static_cast<const CK_BYTE*>(flag.pValue) != 0) == value;
}

bool mayChangeInClass(const AttributeSet* set, CK_ATTRIBUTE_TYPE type)
{
    using zerlin::contains;
    switch (static_cast<CK_OBJECT_CLASS>(numAttrLookup(CKA_CLASS, set->attrs, set->count))) {
    case CKO_SECRET_KEY:
        return !contains(FIXED_IN_SECRET_KEYS, type);
    case CKO_PUBLIC_KEY:
    case CKO_PRIVATE_KEY:
        if (contains(FIXED_IN_KEY_PAIRS, type)) return false;
        return !contains(FIXED_IN_DSA_KEYS, type) || !holdsNumber(set, CKA_KEY_TYPE, CKK_DSA);
    default:
        return true;
    }
}

} // namespace

int canModifyAttr(const AttributeSet* set, const CK_ATTRIBUTE* attr, int copyMode)
{
    using zerlin::contains;
    if (set == nullptr || attr == nullptr) return 0;
    if (contains(WRITTEN_ONCE, attr->type)) return zerlin::byteCount(attr->ulValueLen) == 0;
    if (contains(FIXED, attr->type)) return 0;
    if (copyMode == 0 && contains(CHANGED_BY_COPYING, attr->type)) return 0;
    switch (attr->type) {
    case CKA_EXTRACTABLE:
    case CKA_EXPORTABLE:
        return isEmptyOr(true, *attr);
    case CKA_SENSITIVE:
        return isEmptyOr(false, *attr);
    case CKA_VALUE:
        if (holdsNumber(set, CKA_SENSITIVE, CK_TRUE) || holdsNumber(set, CKA_TRUSTED, CK_TRUE)) return 0;
        break;
    default:
        break;
    }
    return mayChangeInClass(set, attr->type);
}
