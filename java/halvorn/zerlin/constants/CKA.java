// The constants with the prefix CKA_: those of cryptoki.h, in its order, and those that only the standard has.
package halvorn.zerlin.constants;

/**
 * Attribute types. PKCS#11 explains those of the standard; the documentation of the HSM explains those of the
 * vendor.
 *
 * <p><b>Names that mislead.</b> The vendor has given some names of the standard to values of its own:
 * deliberate. Such a name has the vendor's value, and the same name with {@code _STD} has the value of the
 * standard. With a library of another vendor, use the one with {@code _STD}.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_ATTRIBUTE_TYPE} where a native needs one.
 */
public final class CKA {
    /** {@code CKA_CLASS} */
    public static final long CLASS = 0x0L;
    /** {@code CKA_TOKEN} */
    public static final long TOKEN = 0x1L;
    /** {@code CKA_PRIVATE} */
    public static final long PRIVATE = 0x2L;
    /** {@code CKA_LABEL} */
    public static final long LABEL = 0x3L;
    /** {@code CKA_APPLICATION} */
    public static final long APPLICATION = 0x10L;
    /** {@code CKA_VALUE} */
    public static final long VALUE = 0x11L;
    /** {@code CKA_OBJECT_ID} */
    public static final long OBJECT_ID = 0x12L;
    /** {@code CKA_CERTIFICATE_TYPE} */
    public static final long CERTIFICATE_TYPE = 0x80L;
    /** {@code CKA_ISSUER} */
    public static final long ISSUER = 0x81L;
    /** {@code CKA_SERIAL_NUMBER} */
    public static final long SERIAL_NUMBER = 0x82L;
    /** {@code CKA_AC_ISSUER} */
    public static final long AC_ISSUER = 0x83L;
    /** {@code CKA_OWNER} */
    public static final long OWNER = 0x84L;
    /** {@code CKA_ATTR_TYPES} */
    public static final long ATTR_TYPES = 0x85L;
    /** {@code CKA_TRUSTED} */
    public static final long TRUSTED = 0x86L;
    /** {@code CKA_KEY_TYPE} */
    public static final long KEY_TYPE = 0x100L;
    /** {@code CKA_SUBJECT} */
    public static final long SUBJECT = 0x101L;
    /** {@code CKA_ID} */
    public static final long ID = 0x102L;
    /** {@code CKA_SENSITIVE} */
    public static final long SENSITIVE = 0x103L;
    /** {@code CKA_ENCRYPT} */
    public static final long ENCRYPT = 0x104L;
    /** {@code CKA_DECRYPT} */
    public static final long DECRYPT = 0x105L;
    /** {@code CKA_WRAP} */
    public static final long WRAP = 0x106L;
    /** {@code CKA_UNWRAP} */
    public static final long UNWRAP = 0x107L;
    /** {@code CKA_SIGN} */
    public static final long SIGN = 0x108L;
    /** {@code CKA_SIGN_RECOVER} */
    public static final long SIGN_RECOVER = 0x109L;
    /** {@code CKA_VERIFY} */
    public static final long VERIFY = 0x10AL;
    /** {@code CKA_VERIFY_RECOVER} */
    public static final long VERIFY_RECOVER = 0x10BL;
    /** {@code CKA_DERIVE} */
    public static final long DERIVE = 0x10CL;
    /** {@code CKA_START_DATE} */
    public static final long START_DATE = 0x110L;
    /** {@code CKA_END_DATE} */
    public static final long END_DATE = 0x111L;
    /** {@code CKA_MODULUS} */
    public static final long MODULUS = 0x120L;
    /** {@code CKA_MODULUS_BITS} */
    public static final long MODULUS_BITS = 0x121L;
    /** {@code CKA_PUBLIC_EXPONENT} */
    public static final long PUBLIC_EXPONENT = 0x122L;
    /** {@code CKA_PRIVATE_EXPONENT} */
    public static final long PRIVATE_EXPONENT = 0x123L;
    /** {@code CKA_PRIME_1} */
    public static final long PRIME_1 = 0x124L;
    /** {@code CKA_PRIME_2} */
    public static final long PRIME_2 = 0x125L;
    /** {@code CKA_EXPONENT_1} */
    public static final long EXPONENT_1 = 0x126L;
    /** {@code CKA_EXPONENT_2} */
    public static final long EXPONENT_2 = 0x127L;
    /** {@code CKA_COEFFICIENT} */
    public static final long COEFFICIENT = 0x128L;
    /** {@code CKA_PRIME_BITS} */
    public static final long PRIME_BITS = 0x133L;
    /** {@code CKA_SUB_PRIME_BITS} */
    public static final long SUB_PRIME_BITS = 0x134L;
    /** Alias of {@link #SUB_PRIME_BITS}. */
    public static final long SUBPRIME_BITS = 0x134L;
    /** {@code CKA_PRIME} */
    public static final long PRIME = 0x130L;
    /** {@code CKA_SUBPRIME} */
    public static final long SUBPRIME = 0x131L;
    /** {@code CKA_BASE} */
    public static final long BASE = 0x132L;
    /** {@code CKA_VALUE_BITS} */
    public static final long VALUE_BITS = 0x160L;
    /** {@code CKA_VALUE_LEN} */
    public static final long VALUE_LEN = 0x161L;
    /** {@code CKA_EXTRACTABLE} */
    public static final long EXTRACTABLE = 0x162L;
    /** {@code CKA_LOCAL} */
    public static final long LOCAL = 0x163L;
    /** {@code CKA_NEVER_EXTRACTABLE} */
    public static final long NEVER_EXTRACTABLE = 0x164L;
    /** {@code CKA_ALWAYS_SENSITIVE} */
    public static final long ALWAYS_SENSITIVE = 0x165L;
    /** {@code CKA_KEY_GEN_MECHANISM} */
    public static final long KEY_GEN_MECHANISM = 0x166L;
    /** {@code CKA_MODIFIABLE} */
    public static final long MODIFIABLE = 0x170L;
    /** {@code CKA_EC_PARAMS} */
    public static final long EC_PARAMS = 0x180L;
    /** {@code CKA_EC_POINT} */
    public static final long EC_POINT = 0x181L;
    /** {@code CKA_SECONDARY_AUTH} */
    public static final long SECONDARY_AUTH = 0x200L;
    /** {@code CKA_AUTH_PIN_FLAGS} */
    public static final long AUTH_PIN_FLAGS = 0x201L;
    /** {@code CKA_HW_FEATURE_TYPE} */
    public static final long HW_FEATURE_TYPE = 0x300L;
    /** {@code CKA_RESET_ON_INIT} */
    public static final long RESET_ON_INIT = 0x301L;
    /** {@code CKA_HAS_RESET} */
    public static final long HAS_RESET = 0x302L;

    // Of the standard; the natives of CTUtil do not know these names
    /** {@code CKA_CERTIFICATE_CATEGORY} */
    public static final long CERTIFICATE_CATEGORY = 0x87L;
    /** {@code CKA_JAVA_MIDP_SECURITY_DOMAIN} */
    public static final long JAVA_MIDP_SECURITY_DOMAIN = 0x88L;
    /** {@code CKA_URL} */
    public static final long URL = 0x89L;
    /** {@code CKA_HASH_OF_SUBJECT_PUBLIC_KEY} */
    public static final long HASH_OF_SUBJECT_PUBLIC_KEY = 0x8AL;
    /** {@code CKA_HASH_OF_ISSUER_PUBLIC_KEY} */
    public static final long HASH_OF_ISSUER_PUBLIC_KEY = 0x8BL;
    /** {@code CKA_NAME_HASH_ALGORITHM} */
    public static final long NAME_HASH_ALGORITHM = 0x8CL;
    /**
     * The standard's {@code CKA_CHECK_VALUE}. The name without {@code _STD} misleads: {@link #CHECK_VALUE}
     * has the vendor's value.
     */
    public static final long CHECK_VALUE_STD = 0x90L;
    /** {@code CKA_PUBLIC_KEY_INFO} */
    public static final long PUBLIC_KEY_INFO = 0x129L;
    /** {@code CKA_COPYABLE} */
    public static final long COPYABLE = 0x171L;
    /** {@code CKA_DESTROYABLE} */
    public static final long DESTROYABLE = 0x172L;
    /** {@code CKA_ALWAYS_AUTHENTICATE} */
    public static final long ALWAYS_AUTHENTICATE = 0x202L;
    /** {@code CKA_WRAP_WITH_TRUSTED} */
    public static final long WRAP_WITH_TRUSTED = 0x210L;
    /** {@code CKA_PIXEL_X} */
    public static final long PIXEL_X = 0x400L;
    /** {@code CKA_PIXEL_Y} */
    public static final long PIXEL_Y = 0x401L;
    /** {@code CKA_RESOLUTION} */
    public static final long RESOLUTION = 0x402L;
    /** {@code CKA_CHAR_ROWS} */
    public static final long CHAR_ROWS = 0x403L;
    /** {@code CKA_CHAR_COLUMNS} */
    public static final long CHAR_COLUMNS = 0x404L;
    /** {@code CKA_COLOR} */
    public static final long COLOR = 0x405L;
    /** {@code CKA_BITS_PER_PIXEL} */
    public static final long BITS_PER_PIXEL = 0x406L;
    /** {@code CKA_CHAR_SETS} */
    public static final long CHAR_SETS = 0x480L;
    /** {@code CKA_ENCODING_METHODS} */
    public static final long ENCODING_METHODS = 0x481L;
    /** {@code CKA_MIME_TYPES} */
    public static final long MIME_TYPES = 0x482L;
    /** {@code CKA_MECHANISM_TYPE} */
    public static final long MECHANISM_TYPE = 0x500L;
    /** {@code CKA_REQUIRED_CMS_ATTRIBUTES} */
    public static final long REQUIRED_CMS_ATTRIBUTES = 0x501L;
    /** {@code CKA_DEFAULT_CMS_ATTRIBUTES} */
    public static final long DEFAULT_CMS_ATTRIBUTES = 0x502L;
    /** {@code CKA_SUPPORTED_CMS_ATTRIBUTES} */
    public static final long SUPPORTED_CMS_ATTRIBUTES = 0x503L;
    /** {@code CKA_WRAP_TEMPLATE}: an array of attributes, which no Java class has as its native form. */
    public static final long WRAP_TEMPLATE = 0x40000211L;
    /** {@code CKA_UNWRAP_TEMPLATE}: an array of attributes, which no Java class has as its native form. */
    public static final long UNWRAP_TEMPLATE = 0x40000212L;
    /** {@code CKA_DERIVE_TEMPLATE}: an array of attributes, which no Java class has as its native form. */
    public static final long DERIVE_TEMPLATE = 0x40000213L;
    /** {@code CKA_ALLOWED_MECHANISMS}: an array of mechanism types. */
    public static final long ALLOWED_MECHANISMS = 0x40000600L;
    /** {@code CKA_VENDOR_DEFINED}: the first value that a vendor may define. */
    public static final long VENDOR_DEFINED = 0x80000000L;

    // Of the standard up to v3.1, and not in cryptoki.h; the natives of CTUtil do not know these names
    /** {@code CKA_UNIQUE_ID}: an identifier that the token gives each object, in text; it never changes. */
    public static final long UNIQUE_ID = 0x4L;
    /** Alias of {@link #EC_PARAMS}. */
    public static final long ECDSA_PARAMS = 0x180L;
    /** {@code CKA_OTP_FORMAT} */
    public static final long OTP_FORMAT = 0x220L;
    /** {@code CKA_OTP_LENGTH} */
    public static final long OTP_LENGTH = 0x221L;
    /** {@code CKA_OTP_TIME_INTERVAL} */
    public static final long OTP_TIME_INTERVAL = 0x222L;
    /** {@code CKA_OTP_USER_FRIENDLY_MODE} */
    public static final long OTP_USER_FRIENDLY_MODE = 0x223L;
    /** {@code CKA_OTP_CHALLENGE_REQUIREMENT} */
    public static final long OTP_CHALLENGE_REQUIREMENT = 0x224L;
    /** {@code CKA_OTP_TIME_REQUIREMENT} */
    public static final long OTP_TIME_REQUIREMENT = 0x225L;
    /** {@code CKA_OTP_COUNTER_REQUIREMENT} */
    public static final long OTP_COUNTER_REQUIREMENT = 0x226L;
    /** {@code CKA_OTP_PIN_REQUIREMENT} */
    public static final long OTP_PIN_REQUIREMENT = 0x227L;
    /** {@code CKA_OTP_USER_IDENTIFIER} */
    public static final long OTP_USER_IDENTIFIER = 0x22AL;
    /** {@code CKA_OTP_SERVICE_IDENTIFIER} */
    public static final long OTP_SERVICE_IDENTIFIER = 0x22BL;
    /** {@code CKA_OTP_SERVICE_LOGO} */
    public static final long OTP_SERVICE_LOGO = 0x22CL;
    /** {@code CKA_OTP_SERVICE_LOGO_TYPE} */
    public static final long OTP_SERVICE_LOGO_TYPE = 0x22DL;
    /** {@code CKA_OTP_COUNTER} */
    public static final long OTP_COUNTER = 0x22EL;
    /** {@code CKA_OTP_TIME} */
    public static final long OTP_TIME = 0x22FL;
    /** {@code CKA_GOSTR3410_PARAMS} */
    public static final long GOSTR3410_PARAMS = 0x250L;
    /** {@code CKA_GOSTR3411_PARAMS} */
    public static final long GOSTR3411_PARAMS = 0x251L;
    /** {@code CKA_GOST28147_PARAMS} */
    public static final long GOST28147_PARAMS = 0x252L;
    /** {@code CKA_PROFILE_ID}: of a {@link CKO#PROFILE} object: one of {@link CKP}. */
    public static final long PROFILE_ID = 0x601L;
    /** {@code CKA_X2RATCHET_BAG} */
    public static final long X2RATCHET_BAG = 0x602L;
    /** {@code CKA_X2RATCHET_BAGSIZE} */
    public static final long X2RATCHET_BAGSIZE = 0x603L;
    /** {@code CKA_X2RATCHET_BOBS1STMSG} */
    public static final long X2RATCHET_BOBS1STMSG = 0x604L;
    /** {@code CKA_X2RATCHET_CKR} */
    public static final long X2RATCHET_CKR = 0x605L;
    /** {@code CKA_X2RATCHET_CKS} */
    public static final long X2RATCHET_CKS = 0x606L;
    /** {@code CKA_X2RATCHET_DHP} */
    public static final long X2RATCHET_DHP = 0x607L;
    /** {@code CKA_X2RATCHET_DHR} */
    public static final long X2RATCHET_DHR = 0x608L;
    /** {@code CKA_X2RATCHET_DHS} */
    public static final long X2RATCHET_DHS = 0x609L;
    /** {@code CKA_X2RATCHET_HKR} */
    public static final long X2RATCHET_HKR = 0x60AL;
    /** {@code CKA_X2RATCHET_HKS} */
    public static final long X2RATCHET_HKS = 0x60BL;
    /** {@code CKA_X2RATCHET_ISALICE} */
    public static final long X2RATCHET_ISALICE = 0x60CL;
    /** {@code CKA_X2RATCHET_NHKR} */
    public static final long X2RATCHET_NHKR = 0x60DL;
    /** {@code CKA_X2RATCHET_NHKS} */
    public static final long X2RATCHET_NHKS = 0x60EL;
    /** {@code CKA_X2RATCHET_NR} */
    public static final long X2RATCHET_NR = 0x60FL;
    /** {@code CKA_X2RATCHET_NS} */
    public static final long X2RATCHET_NS = 0x610L;
    /** {@code CKA_X2RATCHET_PNS} */
    public static final long X2RATCHET_PNS = 0x611L;
    /** {@code CKA_X2RATCHET_RK} */
    public static final long X2RATCHET_RK = 0x612L;
    /** {@code CKA_HSS_LEVELS} */
    public static final long HSS_LEVELS = 0x617L;
    /** {@code CKA_HSS_LMS_TYPE} */
    public static final long HSS_LMS_TYPE = 0x618L;
    /** {@code CKA_HSS_LMOTS_TYPE} */
    public static final long HSS_LMOTS_TYPE = 0x619L;
    /** {@code CKA_HSS_LMS_TYPES} */
    public static final long HSS_LMS_TYPES = 0x61AL;
    /** {@code CKA_HSS_LMOTS_TYPES} */
    public static final long HSS_LMOTS_TYPES = 0x61BL;
    /** {@code CKA_HSS_KEYS_REMAINING} */
    public static final long HSS_KEYS_REMAINING = 0x61CL;

    // Of the vendor
    /**
     * {@code CKA_WILDCARD}: stands for any type; in a template that is read, the attribute receives the
     * type that was found.
     */
    public static final long WILDCARD = 0xFFFFL;
    /** {@code CKA_EXPORTABLE} */
    public static final long EXPORTABLE = 0x80000129L;
    /** {@code CKA_EXPORT} */
    public static final long EXPORT = 0x80000128L;
    /** {@code CKA_IMPORT} */
    public static final long IMPORT = 0x8000012BL;
    /** {@code CKA_KEY_SIZE} */
    public static final long KEY_SIZE = 0x8000012CL;
    /** {@code CKA_USAGE_COUNT} */
    public static final long USAGE_COUNT = 0x80000101L;
    /** {@code CKA_USAGE_LIMIT} */
    public static final long USAGE_LIMIT = 0x80000200L;
    /** {@code CKA_ADMIN_CERT} */
    public static final long ADMIN_CERT = 0x80000201L;
    /** {@code CKA_TIME_STAMP} */
    public static final long TIME_STAMP = 0x80000102L;
    /**
     * A name that misleads: the vendor's {@code CKA_CHECK_VALUE}. Other modules do not know this value; with
     * them, use {@link #CHECK_VALUE_STD}, the standard's.
     */
    public static final long CHECK_VALUE = 0x80000103L;
    /** {@code CKA_MECHANISM_LIST} */
    public static final long MECHANISM_LIST = 0x80000104L;
    /** {@code CKA_ISSUER_STR} */
    public static final long ISSUER_STR = 0x80000130L;
    /** {@code CKA_SUBJECT_STR} */
    public static final long SUBJECT_STR = 0x80000131L;
    /** {@code CKA_SERIAL_NUMBER_INT} */
    public static final long SERIAL_NUMBER_INT = 0x80000132L;
    /** {@code CKA_VERIFY_OS} */
    public static final long VERIFY_OS = 0x80000170L;
    /** {@code CKA_SECURITY_MODE} */
    public static final long SECURITY_MODE = 0x80000140L;
    /** {@code CKA_TRANSPORT_MODE} */
    public static final long TRANSPORT_MODE = 0x80000141L;
    /** {@code CKA_BATCH} */
    public static final long BATCH = 0x80000142L;
    /** {@code CKA_HW_STATUS} */
    public static final long HW_STATUS = 0x80000143L;
    /** {@code CKA_FREE_MEM} */
    public static final long FREE_MEM = 0x80000144L;
    /** {@code CKA_DATE_OF_MANUFACTURE} */
    public static final long DATE_OF_MANUFACTURE = 0x80000146L;
    /** {@code CKA_TAMPER_CMD} */
    public static final long TAMPER_CMD = 0x80000145L;
    /** {@code CKA_HALT_CMD} */
    public static final long HALT_CMD = 0x80000147L;
    /** {@code CKA_SIGN_LOCAL_CERT} */
    public static final long SIGN_LOCAL_CERT = 0x80000127L;
    /** {@code CKA_PKI_ATTRIBUTE_BER_ENCODED} */
    public static final long PKI_ATTRIBUTE_BER_ENCODED = 0x80000230L;
    /** {@code CKA_CERTIFICATE_START_TIME} */
    public static final long CERTIFICATE_START_TIME = 0x80000190L;
    /** {@code CKA_CERTIFICATE_END_TIME} */
    public static final long CERTIFICATE_END_TIME = 0x80000191L;
    /** {@code CKA_SLOT_ID} */
    public static final long SLOT_ID = 0x80000151L;
    /** {@code CKA_MAX_SESSIONS} */
    public static final long MAX_SESSIONS = 0x80000155L;
    /** {@code CKA_MIN_PIN_LEN} */
    public static final long MIN_PIN_LEN = 0x80000156L;
    /** {@code CKA_MAX_PIN_FAIL} */
    public static final long MAX_PIN_FAIL = 0x80000158L;
    /** {@code CKA_FLAGS} */
    public static final long FLAGS = 0x80000159L;
    /** {@code CKA_RECORD_COUNT} */
    public static final long RECORD_COUNT = 0x80000136L;
    /** {@code CKA_RECORD_NUMBER} */
    public static final long RECORD_NUMBER = 0x80000137L;
    /** {@code CKA_PURGE} */
    public static final long PURGE = 0x80000139L;
    /** {@code CKA_EVENT_LOG_FULL} */
    public static final long EVENT_LOG_FULL = 0x8000013AL;
    /** {@code CKA_DELETABLE} */
    public static final long DELETABLE = 0x8000012AL;
    /** {@code CKA_HIFACE_MASTER} */
    public static final long HIFACE_MASTER = 0x80000250L;
    /** {@code CKA_VERSION} */
    public static final long VERSION = 0x80000181L;
    /** {@code CKA_MANUFACTURER} */
    public static final long MANUFACTURER = 0x80000182L;
    /** {@code CKA_BUILD_DATE} */
    public static final long BUILD_DATE = 0x80000183L;
    /** {@code CKA_FINGERPRINT} */
    public static final long FINGERPRINT = 0x80000184L;
    /** {@code CKA_ROM_SPACE} */
    public static final long ROM_SPACE = 0x80000185L;
    /** {@code CKA_RAM_SPACE} */
    public static final long RAM_SPACE = 0x80000186L;
    /** {@code CKA_FM_ID} */
    public static final long FM_ID = 0x8000018AL;
    /** {@code CKA_FM_STATUS} */
    public static final long FM_STATUS = 0x80000187L;
    /** {@code CKA_FM_STARTUP_STATUS} */
    public static final long FM_STARTUP_STATUS = 0x80000189L;
    /** {@code CKA_DELETE_FM} */
    public static final long DELETE_FM = 0x80000188L;
    /** {@code CKA_APPLICATION_COUNT} */
    public static final long APPLICATION_COUNT = 0x80000148L;
    /** {@code CKA_FW_VERSION} */
    public static final long FW_VERSION = 0x80000149L;
    /** {@code CKA_RESCAN_PERIPHERALS_CMD} */
    public static final long RESCAN_PERIPHERALS_CMD = 0x8000014AL;
    /** {@code CKA_RTC_AAC_ENABLED} */
    public static final long RTC_AAC_ENABLED = 0x8000014BL;
    /** {@code CKA_RTC_AAC_GUARD_SECONDS} */
    public static final long RTC_AAC_GUARD_SECONDS = 0x8000014CL;
    /** {@code CKA_RTC_AAC_GUARD_COUNT} */
    public static final long RTC_AAC_GUARD_COUNT = 0x8000014DL;
    /** {@code CKA_AAC_GUARD_DURATION} */
    public static final long AAC_GUARD_DURATION = 0x8000014EL;
    /** {@code CKA_HW_EXT_INFO_STR} */
    public static final long HW_EXT_INFO_STR = 0x8000014FL;
    /** {@code CKA_SEED} */
    public static final long SEED = 0x80000260L;
    /** {@code CKA_COUNTER} */
    public static final long COUNTER = 0x80000261L;
    /** {@code CKA_H_VALUE} */
    public static final long H_VALUE = 0x80000262L;
    /** {@code CKA_PINPAD_DESC} */
    public static final long PINPAD_DESC = 0x8000015AL;
    /** {@code CKA_TMP_PIN} */
    public static final long TMP_PIN = 0x80000281L;
    /** {@code CKA_AUTH_CHALLENGE} */
    public static final long AUTH_CHALLENGE = 0x80000280L;

    private CKA() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKA_LABEL"} or {@code "LABEL"}, case-sensitive; must not be null
     * @return the value; for a name that the vendor has given to a value of its own, the vendor's, and with
     *         {@code _STD} behind it the standard's
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKA.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKA_LABEL"}; of several names the one that this class declares first; null if
     *         there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKA.class, value);
    }
}
