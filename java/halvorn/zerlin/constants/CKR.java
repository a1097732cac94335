// The constants of the prefix CKR_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Return values, as {@link CK_RV} holds them. The vendor's carry the message that belongs to them.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKR {
    /** {@code CKR_OK} */
    public static final long OK = 0x0L;
    /** {@code CKR_CANCEL} */
    public static final long CANCEL = 0x1L;
    /** {@code CKR_HOST_MEMORY} */
    public static final long HOST_MEMORY = 0x2L;
    /** {@code CKR_SLOT_ID_INVALID} */
    public static final long SLOT_ID_INVALID = 0x3L;
    /** {@code CKR_GENERAL_ERROR} */
    public static final long GENERAL_ERROR = 0x5L;
    /** {@code CKR_FUNCTION_FAILED} */
    public static final long FUNCTION_FAILED = 0x6L;
    /** {@code CKR_ARGUMENTS_BAD} */
    public static final long ARGUMENTS_BAD = 0x7L;
    /** {@code CKR_NO_EVENT} */
    public static final long NO_EVENT = 0x8L;
    /** {@code CKR_NEED_TO_CREATE_THREADS} */
    public static final long NEED_TO_CREATE_THREADS = 0x9L;
    /** {@code CKR_CANT_LOCK} */
    public static final long CANT_LOCK = 0xAL;
    /** {@code CKR_ATTRIBUTE_READ_ONLY} */
    public static final long ATTRIBUTE_READ_ONLY = 0x10L;
    /** {@code CKR_ATTRIBUTE_SENSITIVE} */
    public static final long ATTRIBUTE_SENSITIVE = 0x11L;
    /** {@code CKR_ATTRIBUTE_TYPE_INVALID} */
    public static final long ATTRIBUTE_TYPE_INVALID = 0x12L;
    /** {@code CKR_ATTRIBUTE_VALUE_INVALID} */
    public static final long ATTRIBUTE_VALUE_INVALID = 0x13L;
    /** {@code CKR_DATA_INVALID} */
    public static final long DATA_INVALID = 0x20L;
    /** {@code CKR_DATA_LEN_RANGE} */
    public static final long DATA_LEN_RANGE = 0x21L;
    /** {@code CKR_DEVICE_ERROR} */
    public static final long DEVICE_ERROR = 0x30L;
    /** {@code CKR_DEVICE_REMOVED} */
    public static final long DEVICE_REMOVED = 0x32L;
    /** {@code CKR_DEVICE_MEMORY} */
    public static final long DEVICE_MEMORY = 0x31L;
    /** {@code CKR_ENCRYPTED_DATA_INVALID} */
    public static final long ENCRYPTED_DATA_INVALID = 0x40L;
    /** {@code CKR_ENCRYPTED_DATA_LEN_RANGE} */
    public static final long ENCRYPTED_DATA_LEN_RANGE = 0x41L;
    /** {@code CKR_FUNCTION_CANCELED} */
    public static final long FUNCTION_CANCELED = 0x50L;
    /** {@code CKR_FUNCTION_NOT_SUPPORTED} */
    public static final long FUNCTION_NOT_SUPPORTED = 0x54L;
    /** {@code CKR_KEY_HANDLE_INVALID} */
    public static final long KEY_HANDLE_INVALID = 0x60L;
    /** {@code CKR_KEY_SIZE_RANGE} */
    public static final long KEY_SIZE_RANGE = 0x62L;
    /** {@code CKR_KEY_TYPE_INCONSISTENT} */
    public static final long KEY_TYPE_INCONSISTENT = 0x63L;
    /** {@code CKR_KEY_CHANGED} */
    public static final long KEY_CHANGED = 0x65L;
    /** {@code CKR_KEY_NOT_NEEDED} */
    public static final long KEY_NOT_NEEDED = 0x64L;
    /** {@code CKR_KEY_NEEDED} */
    public static final long KEY_NEEDED = 0x66L;
    /** {@code CKR_KEY_INDIGESTIBLE} */
    public static final long KEY_INDIGESTIBLE = 0x67L;
    /** {@code CKR_KEY_FUNCTION_NOT_PERMITTED} */
    public static final long KEY_FUNCTION_NOT_PERMITTED = 0x68L;
    /** {@code CKR_KEY_NOT_WRAPPABLE} */
    public static final long KEY_NOT_WRAPPABLE = 0x69L;
    /** {@code CKR_KEY_UNEXTRACTABLE} */
    public static final long KEY_UNEXTRACTABLE = 0x6AL;
    /** Message: "Key length should be devidable by 512". */
    public static final long KEY_LENGTH_NOT_DIVISIBLE_BY_512 = 0x6CL;
    /** {@code CKR_MECHANISM_INVALID} */
    public static final long MECHANISM_INVALID = 0x70L;
    /** {@code CKR_MECHANISM_PARAM_INVALID} */
    public static final long MECHANISM_PARAM_INVALID = 0x71L;
    /** {@code CKR_OBJECT_HANDLE_INVALID} */
    public static final long OBJECT_HANDLE_INVALID = 0x82L;
    /** {@code CKR_OPERATION_ACTIVE} */
    public static final long OPERATION_ACTIVE = 0x90L;
    /** {@code CKR_OPERATION_NOT_INITIALIZED} */
    public static final long OPERATION_NOT_INITIALIZED = 0x91L;
    /** {@code CKR_PIN_INCORRECT} */
    public static final long PIN_INCORRECT = 0xA0L;
    /** {@code CKR_PIN_INVALID} */
    public static final long PIN_INVALID = 0xA1L;
    /** {@code CKR_PIN_LEN_RANGE} */
    public static final long PIN_LEN_RANGE = 0xA2L;
    /** {@code CKR_PIN_EXPIRED} */
    public static final long PIN_EXPIRED = 0xA3L;
    /** {@code CKR_PIN_LOCKED} */
    public static final long PIN_LOCKED = 0xA4L;
    /** {@code CKR_SESSION_CLOSED} */
    public static final long SESSION_CLOSED = 0xB0L;
    /** {@code CKR_SESSION_COUNT} */
    public static final long SESSION_COUNT = 0xB1L;
    /** {@code CKR_SESSION_HANDLE_INVALID} */
    public static final long SESSION_HANDLE_INVALID = 0xB3L;
    /** {@code CKR_SESSION_PARALLEL_NOT_SUPPORTED} */
    public static final long SESSION_PARALLEL_NOT_SUPPORTED = 0xB4L;
    /** {@code CKR_SESSION_READ_ONLY} */
    public static final long SESSION_READ_ONLY = 0xB5L;
    /** {@code CKR_SESSION_EXISTS} */
    public static final long SESSION_EXISTS = 0xB6L;
    /** {@code CKR_SESSION_READ_ONLY_EXISTS} */
    public static final long SESSION_READ_ONLY_EXISTS = 0xB7L;
    /** {@code CKR_SESSION_READ_WRITE_SO_EXISTS} */
    public static final long SESSION_READ_WRITE_SO_EXISTS = 0xB8L;
    /** {@code CKR_SIGNATURE_INVALID} */
    public static final long SIGNATURE_INVALID = 0xC0L;
    /** {@code CKR_SIGNATURE_LEN_RANGE} */
    public static final long SIGNATURE_LEN_RANGE = 0xC1L;
    /** {@code CKR_TEMPLATE_INCOMPLETE} */
    public static final long TEMPLATE_INCOMPLETE = 0xD0L;
    /** {@code CKR_TEMPLATE_INCONSISTENT} */
    public static final long TEMPLATE_INCONSISTENT = 0xD1L;
    /** {@code CKR_TOKEN_NOT_PRESENT} */
    public static final long TOKEN_NOT_PRESENT = 0xE0L;
    /** {@code CKR_TOKEN_NOT_RECOGNIZED} */
    public static final long TOKEN_NOT_RECOGNIZED = 0xE1L;
    /** {@code CKR_TOKEN_WRITE_PROTECTED} */
    public static final long TOKEN_WRITE_PROTECTED = 0xE2L;
    /** {@code CKR_UNWRAPPING_KEY_HANDLE_INVALID} */
    public static final long UNWRAPPING_KEY_HANDLE_INVALID = 0xF0L;
    /** {@code CKR_UNWRAPPING_KEY_SIZE_RANGE} */
    public static final long UNWRAPPING_KEY_SIZE_RANGE = 0xF1L;
    /** {@code CKR_UNWRAPPING_KEY_TYPE_INCONSISTENT} */
    public static final long UNWRAPPING_KEY_TYPE_INCONSISTENT = 0xF2L;
    /** {@code CKR_USER_ALREADY_LOGGED_IN} */
    public static final long USER_ALREADY_LOGGED_IN = 0x100L;
    /** {@code CKR_USER_NOT_LOGGED_IN} */
    public static final long USER_NOT_LOGGED_IN = 0x101L;
    /** {@code CKR_USER_PIN_NOT_INITIALIZED} */
    public static final long USER_PIN_NOT_INITIALIZED = 0x102L;
    /** {@code CKR_USER_TYPE_INVALID} */
    public static final long USER_TYPE_INVALID = 0x103L;
    /** {@code CKR_USER_ANOTHER_ALREADY_LOGGED_IN} */
    public static final long USER_ANOTHER_ALREADY_LOGGED_IN = 0x104L;
    /** {@code CKR_USER_TOO_MANY_TYPES} */
    public static final long USER_TOO_MANY_TYPES = 0x105L;
    /** {@code CKR_WRAPPED_KEY_INVALID} */
    public static final long WRAPPED_KEY_INVALID = 0x110L;
    /** {@code CKR_WRAPPED_KEY_LEN_RANGE} */
    public static final long WRAPPED_KEY_LEN_RANGE = 0x112L;
    /** {@code CKR_WRAPPING_KEY_HANDLE_INVALID} */
    public static final long WRAPPING_KEY_HANDLE_INVALID = 0x113L;
    /** {@code CKR_WRAPPING_KEY_SIZE_RANGE} */
    public static final long WRAPPING_KEY_SIZE_RANGE = 0x114L;
    /** {@code CKR_WRAPPING_KEY_TYPE_INCONSISTENT} */
    public static final long WRAPPING_KEY_TYPE_INCONSISTENT = 0x115L;
    /** {@code CKR_RANDOM_SEED_NOT_SUPPORTED} */
    public static final long RANDOM_SEED_NOT_SUPPORTED = 0x120L;
    /** {@code CKR_RANDOM_NO_RNG} */
    public static final long RANDOM_NO_RNG = 0x121L;
    /** {@code CKR_DOMAIN_PARAMS_INVALID} */
    public static final long DOMAIN_PARAMS_INVALID = 0x130L;
    /** {@code CKR_BUFFER_TOO_SMALL} */
    public static final long BUFFER_TOO_SMALL = 0x150L;
    /** {@code CKR_SAVED_STATE_INVALID} */
    public static final long SAVED_STATE_INVALID = 0x160L;
    /** {@code CKR_INFORMATION_SENSITIVE} */
    public static final long INFORMATION_SENSITIVE = 0x170L;
    /** {@code CKR_STATE_UNSAVEABLE} */
    public static final long STATE_UNSAVEABLE = 0x180L;
    /** {@code CKR_CRYPTOKI_NOT_INITIALIZED} */
    public static final long CRYPTOKI_NOT_INITIALIZED = 0x190L;
    /** {@code CKR_CRYPTOKI_ALREADY_INITIALIZED} */
    public static final long CRYPTOKI_ALREADY_INITIALIZED = 0x191L;
    /** {@code CKR_MUTEX_BAD} */
    public static final long MUTEX_BAD = 0x1A0L;
    /** {@code CKR_MUTEX_NOT_LOCKED} */
    public static final long MUTEX_NOT_LOCKED = 0x1A1L;

    // Standard, not in the name tables
    /** {@code CKR_ACTION_PROHIBITED} */
    public static final long ACTION_PROHIBITED = 0x1BL;
    /** {@code CKR_FUNCTION_NOT_PARALLEL} */
    public static final long FUNCTION_NOT_PARALLEL = 0x51L;
    /** {@code CKR_CURVE_NOT_SUPPORTED} */
    public static final long CURVE_NOT_SUPPORTED = 0x140L;
    /** {@code CKR_NEW_PIN_MODE} */
    public static final long NEW_PIN_MODE = 0x1B0L;
    /** {@code CKR_NEXT_OTP} */
    public static final long NEXT_OTP = 0x1B1L;
    /** {@code CKR_EXCEEDED_MAX_ITERATIONS} */
    public static final long EXCEEDED_MAX_ITERATIONS = 0x1B5L;
    /** {@code CKR_FIPS_SELF_TEST_FAILED} */
    public static final long FIPS_SELF_TEST_FAILED = 0x1B6L;
    /** {@code CKR_LIBRARY_LOAD_FAILED} */
    public static final long LIBRARY_LOAD_FAILED = 0x1B7L;
    /** {@code CKR_PIN_TOO_WEAK} */
    public static final long PIN_TOO_WEAK = 0x1B8L;
    /** {@code CKR_PUBLIC_KEY_INVALID} */
    public static final long PUBLIC_KEY_INVALID = 0x1B9L;
    /** {@code CKR_FUNCTION_REJECTED} */
    public static final long FUNCTION_REJECTED = 0x200L;
    /** {@code CKR_VENDOR_DEFINED} */
    public static final long VENDOR_DEFINED = 0x80000000L;

    // Vendor
    /** Message: "value not odd parity". */
    public static final long VALUE_NOT_ODD_PARITY = 0x80000140L;
    /** Message: "mirtal error". */
    public static final long MIRTAL_ERROR = 0x80000100L;
    /** Message: "time stamp". */
    public static final long TIME_STAMP = 0x80000101L;
    /** Message: "Acces Denied". */
    public static final long ACCESS_DENIED = 0x80000102L;
    /** Message: "cryptoki unusable". */
    public static final long CRYPTOKI_UNUSABLE = 0x80000103L;
    /** Message: "ENCODE_ERROR". */
    public static final long ENCODE_ERROR = 0x80000104L;
    /** Message: "V_CONFIG". */
    public static final long V_CONFIG = 0x80000105L;
    /** Message: "security officer not logged in". */
    public static final long SO_NOT_LOGGED_IN = 0x80000106L;
    /** Message: "certificate not validated". */
    public static final long CERTIFICATE_NOT_VALIDATED = 0x80000107L;
    /** Message: "PIN already initialized". */
    public static final long PIN_ALREADY_INITIALIZED = 0x80000108L;
    /** Message: "remote server error". */
    public static final long REMOTE_SERVER_ERROR = 0x8000010AL;
    /** Message: "CSA hardware error". */
    public static final long CSA_HARDWARE_ERROR = 0x8000010BL;
    /** Message: "No challenge exists". */
    public static final long NO_CHALLENGE = 0x80000110L;
    /** Message: "The response is not valid for challenge". */
    public static final long RESPONSE_INVALID = 0x80000111L;
    /** Message: "The Event Log is not full". */
    public static final long EVENT_LOG_NOT_FULL = 0x80000113L;
    /** Message: "Object read only". */
    public static final long OBJECT_READ_ONLY = 0x80000114L;
    /** Message: "Token read only". */
    public static final long TOKEN_READ_ONLY = 0x80000115L;
    /** Message: "Token not initialized". */
    public static final long TOKEN_NOT_INITIALIZED = 0x80000116L;
    /** Message: "Not admin token". */
    public static final long NOT_ADMIN_TOKEN = 0x80000117L;
    /** Message: "authentication required". */
    public static final long AUTHENTICATION_REQUIRED = 0x80000130L;
    /** Message: "operation not permitted". */
    public static final long OPERATION_NOT_PERMITTED = 0x80000131L;
    /** Message: "PKCS12 decode error". */
    public static final long PKCS12_DECODE_ERROR = 0x80000132L;
    /** Message: "PKCS12 unsupported safebag type". */
    public static final long PKCS12_UNSUPPORTED_SAFEBAG_TYPE = 0x80000133L;
    /** Message: "PKCS12 unsupported privacy mode". */
    public static final long PKCS12_UNSUPPORTED_PRIVACY_MODE = 0x80000134L;
    /** Message: "PKCS12 unsupported integrity mode". */
    public static final long PKCS12_UNSUPPORTED_INTEGRITY_MODE = 0x80000135L;
    /** Message: "Key or Cert is out of date or expired". */
    public static final long KEY_OR_CERT_EXPIRED = 0x80000136L;
    /** Message: "HOST_ERROR". */
    public static final long HOST_ERROR = 0x80001000L;
    /** Message: "Internal Error: Bad request received". */
    public static final long BAD_REQUEST = 0x80001001L;
    /** Message: "Internal Error: Attribute packing invalid". */
    public static final long BAD_ATTRIBUTE_PACKING = 0x80001002L;
    /** Message: "Internal Error: Attribute count is invalid". */
    public static final long BAD_ATTRIBUTE_COUNT = 0x80001003L;
    /** Message: "Internal Error: Mechanism parameter packing invalid". */
    public static final long BAD_PARAMETER_PACKING = 0x80001004L;
    /** Message: "HOST_ERROR no dma". */
    public static final long HOST_ERROR_NO_DMA = 0x80001386L;
    /** Message: "Requested Host Interface Master Key not found". */
    public static final long HOST_INTERFACE_MASTER_KEY_NOT_FOUND = 0x80001400L;
    /** Message: "MSG_ERROR". */
    public static final long MSG_ERROR = 0x80000300L;
    /** Message: "MSG_ERROR cannot derive keys". */
    public static final long MSG_ERROR_CANNOT_DERIVE_KEYS = 0x80000381L;
    /** Message: "MSG_ERROR bad request signature". */
    public static final long MSG_ERROR_BAD_REQUEST_SIGNATURE = 0x80000382L;
    /** Message: "MSG_ERROR bad reply signature". */
    public static final long MSG_ERROR_BAD_REPLY_SIGNATURE = 0x80000383L;
    /** Message: "MSG_ERROR general error". */
    public static final long MSG_ERROR_GENERAL_ERROR = 0x80000384L;
    /** Message: "MSG_ERROR bad protection". */
    public static final long MSG_ERROR_BAD_PROTECTION = 0x80000385L;
    /** Message: "MSG_ERROR device was reset". */
    public static final long MSG_ERROR_DEVICE_RESET = 0x80000386L;
    /** Message: "MSG_ERROR no session keys". */
    public static final long MSG_ERROR_NO_SESSION_KEYS = 0x80000387L;
    /** Message: "Bad Reply response". */
    public static final long BAD_REPLY_RESPONSE = 0x80000388L;
    /** Message: "Key Rollover". */
    public static final long KEY_ROLLOVER = 0x80000389L;
    /** Message: "MSG_ERROR need IV update". */
    public static final long MSG_ERROR_NEED_IV_UPDATE = 0x80000310L;
    /** Message: "MSG_ERROR duplicate IV found". */
    public static final long MSG_ERROR_DUPLICATE_IV = 0x80000311L;
    /** Message: "WLD_ERROR". */
    public static final long WLD_ERROR = 0x80002000L;
    /** Message: "WLD_ERROR not WLD configurations found". */
    public static final long WLD_ERROR_NO_CONFIGURATION = 0x80002001L;
    /** Message: "WLD_ERROR could not read a WLD configuration item". */
    public static final long WLD_ERROR_ITEM_UNREADABLE = 0x80002002L;
    /** Message: "WLD_ERROR a WLD configuration has no token label". */
    public static final long WLD_ERROR_NO_TOKEN_LABEL = 0x80002003L;
    /** Message: "WLD_ERROR a WLD configuration has the token label too long". */
    public static final long WLD_ERROR_TOKEN_LABEL_TOO_LONG = 0x80002004L;
    /** Message: "WLD_ERROR a WLD configuration has the token serial number too long". */
    public static final long WLD_ERROR_SERIAL_NUMBER_TOO_LONG = 0x80002005L;
    /** Message: "WLD_ERROR a WLD configuration has the slot description too long". */
    public static final long WLD_ERROR_SLOT_DESCRIPTION_TOO_LONG = 0x80002006L;
    /** Message: "WLD_ERROR a WLD configuration has an invalid format". */
    public static final long WLD_ERROR_INVALID_FORMAT = 0x80002007L;
    /** Message: "WLD_ERROR the internal cache for login information is inconsistent". */
    public static final long WLD_ERROR_LOGIN_CACHE_INCONSISTENT = 0x80002010L;

    private CKR() {
    }
}
