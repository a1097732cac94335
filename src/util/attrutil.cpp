// Classifies attributes, reads their numbers, and copies values between the caller's templates.
#include "zerlin/attrutil.h"

#include <cstdint>
#include <cstring>

#include "util/assertion.h"
#include "util/attributes.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace {

constexpr CK_ATTRIBUTE_TYPE BOOLEAN_TYPES[] = {CKA_TOKEN, CKA_PRIVATE, CKA_TRUSTED, CKA_SENSITIVE,
    CKA_ENCRYPT, CKA_DECRYPT, CKA_WRAP, CKA_UNWRAP, CKA_SIGN, CKA_SIGN_RECOVER, CKA_VERIFY,
    CKA_VERIFY_RECOVER, CKA_DERIVE, CKA_EXTRACTABLE, CKA_LOCAL, CKA_NEVER_EXTRACTABLE, CKA_ALWAYS_SENSITIVE,
    CKA_MODIFIABLE, CKA_RESET_ON_INIT, CKA_HAS_RESET, CKA_SIGN_LOCAL_CERT, CKA_EXPORT, CKA_EXPORTABLE,
    CKA_DELETABLE, CKA_IMPORT, CKA_PURGE, CKA_EVENT_LOG_FULL, CKA_TAMPER_CMD, CKA_RTC_AAC_ENABLED,
    CKA_VERIFY_OS};

constexpr CK_ATTRIBUTE_TYPE ENUMERATED_TYPES[] = {
    CKA_CLASS, CKA_CERTIFICATE_TYPE, CKA_KEY_TYPE, CKA_HW_FEATURE_TYPE};

constexpr CK_ATTRIBUTE_TYPE NUMERIC_TYPES[] = {CKA_CLASS, CKA_CERTIFICATE_TYPE, CKA_KEY_TYPE,
    CKA_MODULUS_BITS, CKA_PRIME_BITS, CKA_SUB_PRIME_BITS, CKA_VALUE_BITS, CKA_VALUE_LEN,
    CKA_KEY_GEN_MECHANISM, CKA_HW_FEATURE_TYPE, CKA_USAGE_COUNT, CKA_MECHANISM_LIST, CKA_KEY_SIZE,
    CKA_SERIAL_NUMBER_INT, CKA_RECORD_COUNT, CKA_RECORD_NUMBER, CKA_SECURITY_MODE, CKA_TRANSPORT_MODE,
    CKA_BATCH, CKA_HW_STATUS, CKA_FREE_MEM, CKA_APPLICATION_COUNT, CKA_RTC_AAC_GUARD_SECONDS,
    CKA_RTC_AAC_GUARD_COUNT, CKA_AAC_GUARD_DURATION, CKA_SLOT_ID, CKA_MAX_SESSIONS, CKA_MIN_PIN_LEN,
    CKA_MAX_PIN_FAIL, CKA_FLAGS, CKA_ROM_SPACE, CKA_RAM_SPACE, CKA_FM_STATUS, CKA_FM_STARTUP_STATUS,
    CKA_FM_ID, CKA_USAGE_LIMIT};

constexpr CK_ATTRIBUTE_TYPE PRIVATE_KEY_SECRETS[] = {CKA_VALUE, CKA_PRIVATE_EXPONENT, CKA_PRIME_1,
    CKA_PRIME_2, CKA_EXPONENT_1, CKA_EXPONENT_2, CKA_COEFFICIENT};

bool fitsUlong(const CK_ATTRIBUTE& attr)
{
    return attr.ulValueLen >= 1 && attr.ulValueLen <= sizeof(CK_ULONG);
}

template <typename Word>
CK_LONG load(const void* value)
{
    Word word;
    std::memcpy(&word, value, sizeof word);
    return static_cast<CK_LONG>(word);
}

template <typename Word>
void store(CK_LONG number, void* target)
{
    const auto word = static_cast<Word>(number);
    std::memcpy(target, &word, sizeof word);
}

CK_RV assignNumber(const CK_ATTRIBUTE& target, CK_LONG number)
{
    switch (target.ulValueLen) {
    case sizeof(std::uint8_t):
        store<std::uint8_t>(number, target.pValue);
        return CKR_OK;
    case sizeof(std::uint16_t):
        store<std::uint16_t>(number, target.pValue);
        return CKR_OK;
    case sizeof(std::uint32_t):
        store<std::uint32_t>(number, target.pValue);
        return CKR_OK;
    default:
        if (target.ulValueLen != sizeof(CK_ULONG)) return CKR_GENERAL_ERROR;
        store<CK_ULONG>(number, target.pValue);
        return CKR_OK;
    }
}

} // namespace

CK_LONG numAttr(const CK_ATTRIBUTE* attr)
{
    if (attr == nullptr || attr->pValue == nullptr) return -1;
    switch (attr->ulValueLen) {
    case sizeof(std::uint8_t):
        return load<std::uint8_t>(attr->pValue);
    case sizeof(std::uint16_t):
        return load<std::uint16_t>(attr->pValue);
    case sizeof(std::uint32_t):
        return load<std::uint32_t>(attr->pValue);
    default:
        return attr->ulValueLen == sizeof(CK_ULONG) ? load<CK_ULONG>(attr->pValue) : -1;
    }
}

CK_LONG intAttr(const CK_ATTRIBUTE* attr)
{
    return numAttr(attr);
}

CK_LONG numAttrLookup(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count)
{
    return numAttr(FindAttribute(type, array, count));
}

CK_LONG intAttrLookup(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count)
{
    return numAttrLookup(type, array, count);
}

int isBooleanAttr(const CK_ATTRIBUTE* attr)
{
    return attr != nullptr && zerlin::contains(BOOLEAN_TYPES, attr->type) && fitsUlong(*attr);
}

int isEnumeratedAttr(const CK_ATTRIBUTE* attr)
{
    return attr != nullptr && zerlin::contains(ENUMERATED_TYPES, attr->type) && fitsUlong(*attr);
}

int isNumericAttrType(CK_ATTRIBUTE_TYPE type)
{
    return zerlin::contains(NUMERIC_TYPES, type);
}

int isNumericAttr(const CK_ATTRIBUTE* attr)
{
    if (attr == nullptr || !isNumericAttrType(attr->type)) return 0;
    if (attr->type != CKA_MECHANISM_LIST) return fitsUlong(*attr);
    return attr->ulValueLen > 0 && attr->ulValueLen % sizeof(CK_MECHANISM_TYPE) == 0;
}

int isSensitiveAttr(const AttributeSet* set, const CK_ATTRIBUTE* attr)
{
    if (set == nullptr || attr == nullptr) return 0;
    const CK_ATTRIBUTE* const objectClass = FindAttr(CKA_CLASS, set);
    if (objectClass == nullptr) return 0;
    switch (static_cast<CK_OBJECT_CLASS>(numAttr(objectClass))) {
    case CKO_PRIVATE_KEY:
        return zerlin::contains(PRIVATE_KEY_SECRETS, attr->type);
    case CKO_HW_FEATURE:
        return 0;
    default:
        return attr->type == CKA_VALUE; // also of data and public keys: deliberate
    }
}

CK_RV at_assign(CK_ATTRIBUTE* target, const CK_ATTRIBUTE* source)
{
    zerlin::assertThat(target->type == source->type, "tgtNa->type == srcNa->type", "attrutil.c");
    if (target->pValue == nullptr || source->pValue == nullptr) {
        target->ulValueLen = source->ulValueLen;
        return CKR_OK;
    }
    const CK_ULONG len = zerlin::byteCount(source->ulValueLen);
    if (zerlin::byteCount(target->ulValueLen) < len) return CKR_BUFFER_TOO_SMALL;
    if (isNumericAttr(source) && fitsUlong(*source)) return assignNumber(*target, numAttr(source));
    std::memcpy(target->pValue, source->pValue, len);
    target->ulValueLen = source->ulValueLen;
    return CKR_OK;
}

CK_RV TransferAttr(CK_ATTRIBUTE* targetArray, const CK_ATTRIBUTE* sourceArray, CK_ULONG count)
{
    CK_RV last = CKR_OK; // only the last result is returned: deliberate
    for (CK_ULONG i = 0; i < count; ++i) {
        CK_ATTRIBUTE& target = targetArray[i];
        const CK_ATTRIBUTE& source = sourceArray[i];
        if (target.type != source.type && target.type != CKA_WILDCARD) return CKR_GENERAL_ERROR;
        target.type = source.type;
        last = at_assign(&target, &source);
    }
    return last;
}
