// The constants with the prefix CKR_: those of cryptoki.h, in its order, and those that only the standard has.
package halvorn.zerlin.constants;

/**
 * Return values. {@link CK_RV} holds them. For the values of the vendor, the comment is the message that
 * {@link halvorn.zerlin.CTUtil#CTU_GetErrorString CTU_GetErrorString} returns, spelling mistakes included.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_RV} where a native needs one.
 */
public final class CKR {
    /** {@code CKR_OK}: the call succeeded. */
    public static final long OK = 0x0L;
    /** {@code CKR_CANCEL}: a notification callback asks the library to stop the operation. */
    public static final long CANCEL = 0x1L;
    /** {@code CKR_HOST_MEMORY}: this computer has not enough memory for the call. */
    public static final long HOST_MEMORY = 0x2L;
    /** {@code CKR_SLOT_ID_INVALID}: there is no such slot. */
    public static final long SLOT_ID_INVALID = 0x3L;
    /** {@code CKR_GENERAL_ERROR}: the library met an error from which it cannot recover. */
    public static final long GENERAL_ERROR = 0x5L;
    /** {@code CKR_FUNCTION_FAILED}: the call failed for a reason that no other value describes. */
    public static final long FUNCTION_FAILED = 0x6L;
    /** {@code CKR_ARGUMENTS_BAD}: an argument is missing or wrong. */
    public static final long ARGUMENTS_BAD = 0x7L;
    /** {@code CKR_NO_EVENT}: no token was inserted or removed. */
    public static final long NO_EVENT = 0x8L;
    /** {@code CKR_NEED_TO_CREATE_THREADS}: the library cannot work unless it may create threads. */
    public static final long NEED_TO_CREATE_THREADS = 0x9L;
    /** {@code CKR_CANT_LOCK}: the library cannot lock in the way that the caller asked for. */
    public static final long CANT_LOCK = 0xAL;
    /** {@code CKR_ATTRIBUTE_READ_ONLY}: the attribute cannot be set or changed. */
    public static final long ATTRIBUTE_READ_ONLY = 0x10L;
    /** {@code CKR_ATTRIBUTE_SENSITIVE}: the attribute cannot be read, because it is secret. */
    public static final long ATTRIBUTE_SENSITIVE = 0x11L;
    /** {@code CKR_ATTRIBUTE_TYPE_INVALID}: there is no such attribute, or the object does not have it. */
    public static final long ATTRIBUTE_TYPE_INVALID = 0x12L;
    /** {@code CKR_ATTRIBUTE_VALUE_INVALID}: the attribute cannot have this value. */
    public static final long ATTRIBUTE_VALUE_INVALID = 0x13L;
    /** {@code CKR_DATA_INVALID}: the mechanism cannot process this data. */
    public static final long DATA_INVALID = 0x20L;
    /** {@code CKR_DATA_LEN_RANGE}: the mechanism cannot process data of this length. */
    public static final long DATA_LEN_RANGE = 0x21L;
    /** {@code CKR_DEVICE_ERROR}: the token or the slot failed. */
    public static final long DEVICE_ERROR = 0x30L;
    /** {@code CKR_DEVICE_REMOVED}: the token was removed during the call. */
    public static final long DEVICE_REMOVED = 0x32L;
    /** {@code CKR_DEVICE_MEMORY}: the token has not enough memory. */
    public static final long DEVICE_MEMORY = 0x31L;
    /** {@code CKR_ENCRYPTED_DATA_INVALID}: the encrypted data is damaged. */
    public static final long ENCRYPTED_DATA_INVALID = 0x40L;
    /** {@code CKR_ENCRYPTED_DATA_LEN_RANGE}: encrypted data cannot have this length. */
    public static final long ENCRYPTED_DATA_LEN_RANGE = 0x41L;
    /** {@code CKR_FUNCTION_CANCELED}: the call was cancelled. */
    public static final long FUNCTION_CANCELED = 0x50L;
    /** {@code CKR_FUNCTION_NOT_SUPPORTED}: the library does not have this function. */
    public static final long FUNCTION_NOT_SUPPORTED = 0x54L;
    /** {@code CKR_KEY_HANDLE_INVALID}: there is no such key. */
    public static final long KEY_HANDLE_INVALID = 0x60L;
    /** {@code CKR_KEY_SIZE_RANGE}: the key is too short or too long for the mechanism. */
    public static final long KEY_SIZE_RANGE = 0x62L;
    /** {@code CKR_KEY_TYPE_INCONSISTENT}: the mechanism cannot use a key of this type. */
    public static final long KEY_TYPE_INCONSISTENT = 0x63L;
    /** {@code CKR_KEY_CHANGED}: the key is not the one with which the state was saved. */
    public static final long KEY_CHANGED = 0x65L;
    /** {@code CKR_KEY_NOT_NEEDED}: the saved state needs no key, but one was given. */
    public static final long KEY_NOT_NEEDED = 0x64L;
    /** {@code CKR_KEY_NEEDED}: the saved state needs a key. */
    public static final long KEY_NEEDED = 0x66L;
    /** {@code CKR_KEY_INDIGESTIBLE}: the value of this key cannot be digested. */
    public static final long KEY_INDIGESTIBLE = 0x67L;
    /** {@code CKR_KEY_FUNCTION_NOT_PERMITTED}: the attributes of the key do not allow this use. */
    public static final long KEY_FUNCTION_NOT_PERMITTED = 0x68L;
    /** {@code CKR_KEY_NOT_WRAPPABLE}: this mechanism and wrapping key cannot wrap the key. */
    public static final long KEY_NOT_WRAPPABLE = 0x69L;
    /** {@code CKR_KEY_UNEXTRACTABLE}: the attributes of the key do not allow it to leave the token. */
    public static final long KEY_UNEXTRACTABLE = 0x6AL;
    /** Message: "Key length should be devidable by 512". */
    public static final long KEY_LENGTH_NOT_DIVISIBLE_BY_512 = 0x6CL;
    /** {@code CKR_MECHANISM_INVALID}: the token does not have the mechanism, or not for this function. */
    public static final long MECHANISM_INVALID = 0x70L;
    /** {@code CKR_MECHANISM_PARAM_INVALID}: the parameter of the mechanism is wrong. */
    public static final long MECHANISM_PARAM_INVALID = 0x71L;
    /** {@code CKR_OBJECT_HANDLE_INVALID}: there is no such object. */
    public static final long OBJECT_HANDLE_INVALID = 0x82L;
    /** {@code CKR_OPERATION_ACTIVE}: the session has another operation that must end first. */
    public static final long OPERATION_ACTIVE = 0x90L;
    /** {@code CKR_OPERATION_NOT_INITIALIZED}: the operation was not begun in this session. */
    public static final long OPERATION_NOT_INITIALIZED = 0x91L;
    /** {@code CKR_PIN_INCORRECT}: the PIN is wrong. */
    public static final long PIN_INCORRECT = 0xA0L;
    /** {@code CKR_PIN_INVALID}: the new PIN contains characters that are not allowed. */
    public static final long PIN_INVALID = 0xA1L;
    /** {@code CKR_PIN_LEN_RANGE}: the PIN is too short or too long. */
    public static final long PIN_LEN_RANGE = 0xA2L;
    /** {@code CKR_PIN_EXPIRED}: the PIN has expired and must be changed. */
    public static final long PIN_EXPIRED = 0xA3L;
    /** {@code CKR_PIN_LOCKED}: the PIN is locked after too many wrong attempts. */
    public static final long PIN_LOCKED = 0xA4L;
    /** {@code CKR_SESSION_CLOSED}: the session was closed during the call. */
    public static final long SESSION_CLOSED = 0xB0L;
    /** {@code CKR_SESSION_COUNT}: the token allows no more sessions. */
    public static final long SESSION_COUNT = 0xB1L;
    /** {@code CKR_SESSION_HANDLE_INVALID}: there is no such session. */
    public static final long SESSION_HANDLE_INVALID = 0xB3L;
    /**
     * {@code CKR_SESSION_PARALLEL_NOT_SUPPORTED}: a session must be opened with {@link CKF#SERIAL_SESSION}.
     */
    public static final long SESSION_PARALLEL_NOT_SUPPORTED = 0xB4L;
    /** {@code CKR_SESSION_READ_ONLY}: the session is read-only. */
    public static final long SESSION_READ_ONLY = 0xB5L;
    /** {@code CKR_SESSION_EXISTS}: a session with the token is open. */
    public static final long SESSION_EXISTS = 0xB6L;
    /**
     * {@code CKR_SESSION_READ_ONLY_EXISTS}: a read-only session is open, so the security officer cannot log
     * in.
     */
    public static final long SESSION_READ_ONLY_EXISTS = 0xB7L;
    /**
     * {@code CKR_SESSION_READ_WRITE_SO_EXISTS}: the security officer is logged in, so no read-only session
     * can be opened.
     */
    public static final long SESSION_READ_WRITE_SO_EXISTS = 0xB8L;
    /** {@code CKR_SIGNATURE_INVALID}: the signature is wrong. */
    public static final long SIGNATURE_INVALID = 0xC0L;
    /**
     * {@code CKR_SIGNATURE_LEN_RANGE}: the signature is wrong, because a signature cannot have this length.
     */
    public static final long SIGNATURE_LEN_RANGE = 0xC1L;
    /** {@code CKR_TEMPLATE_INCOMPLETE}: the template lacks a necessary attribute. */
    public static final long TEMPLATE_INCOMPLETE = 0xD0L;
    /** {@code CKR_TEMPLATE_INCONSISTENT}: the attributes of the template contradict each other. */
    public static final long TEMPLATE_INCONSISTENT = 0xD1L;
    /** {@code CKR_TOKEN_NOT_PRESENT}: the slot contains no token. */
    public static final long TOKEN_NOT_PRESENT = 0xE0L;
    /** {@code CKR_TOKEN_NOT_RECOGNIZED}: the library does not know this kind of token. */
    public static final long TOKEN_NOT_RECOGNIZED = 0xE1L;
    /** {@code CKR_TOKEN_WRITE_PROTECTED}: the token is protected against writing. */
    public static final long TOKEN_WRITE_PROTECTED = 0xE2L;
    /** {@code CKR_UNWRAPPING_KEY_HANDLE_INVALID}: there is no such key to unwrap with. */
    public static final long UNWRAPPING_KEY_HANDLE_INVALID = 0xF0L;
    /** {@code CKR_UNWRAPPING_KEY_SIZE_RANGE}: the key to unwrap with is too short or too long. */
    public static final long UNWRAPPING_KEY_SIZE_RANGE = 0xF1L;
    /** {@code CKR_UNWRAPPING_KEY_TYPE_INCONSISTENT}: the mechanism cannot unwrap with a key of this type. */
    public static final long UNWRAPPING_KEY_TYPE_INCONSISTENT = 0xF2L;
    /** {@code CKR_USER_ALREADY_LOGGED_IN}: this user is logged in already. */
    public static final long USER_ALREADY_LOGGED_IN = 0x100L;
    /** {@code CKR_USER_NOT_LOGGED_IN}: the call is only allowed to a user who is logged in. */
    public static final long USER_NOT_LOGGED_IN = 0x101L;
    /** {@code CKR_USER_PIN_NOT_INITIALIZED}: the security officer has not set the PIN of the user yet. */
    public static final long USER_PIN_NOT_INITIALIZED = 0x102L;
    /** {@code CKR_USER_TYPE_INVALID}: there is no such user type. */
    public static final long USER_TYPE_INVALID = 0x103L;
    /** {@code CKR_USER_ANOTHER_ALREADY_LOGGED_IN}: another user is logged in. */
    public static final long USER_ANOTHER_ALREADY_LOGGED_IN = 0x104L;
    /** {@code CKR_USER_TOO_MANY_TYPES}: too many different users are logged in. */
    public static final long USER_TOO_MANY_TYPES = 0x105L;
    /** {@code CKR_WRAPPED_KEY_INVALID}: the wrapped key is damaged. */
    public static final long WRAPPED_KEY_INVALID = 0x110L;
    /** {@code CKR_WRAPPED_KEY_LEN_RANGE}: a wrapped key cannot have this length. */
    public static final long WRAPPED_KEY_LEN_RANGE = 0x112L;
    /** {@code CKR_WRAPPING_KEY_HANDLE_INVALID}: there is no such key to wrap with. */
    public static final long WRAPPING_KEY_HANDLE_INVALID = 0x113L;
    /** {@code CKR_WRAPPING_KEY_SIZE_RANGE}: the key to wrap with is too short or too long. */
    public static final long WRAPPING_KEY_SIZE_RANGE = 0x114L;
    /** {@code CKR_WRAPPING_KEY_TYPE_INCONSISTENT}: the mechanism cannot wrap with a key of this type. */
    public static final long WRAPPING_KEY_TYPE_INCONSISTENT = 0x115L;
    /** {@code CKR_RANDOM_SEED_NOT_SUPPORTED}: the random number generator accepts no seed. */
    public static final long RANDOM_SEED_NOT_SUPPORTED = 0x120L;
    /** {@code CKR_RANDOM_NO_RNG}: the token has no random number generator. */
    public static final long RANDOM_NO_RNG = 0x121L;
    /** {@code CKR_DOMAIN_PARAMS_INVALID}: the domain parameters are wrong or not supported. */
    public static final long DOMAIN_PARAMS_INVALID = 0x130L;
    /** {@code CKR_BUFFER_TOO_SMALL}: the capacity of the output array is too small. */
    public static final long BUFFER_TOO_SMALL = 0x150L;
    /** {@code CKR_SAVED_STATE_INVALID}: the saved state is wrong. */
    public static final long SAVED_STATE_INVALID = 0x160L;
    /** {@code CKR_INFORMATION_SENSITIVE}: the information cannot be read, because it is secret. */
    public static final long INFORMATION_SENSITIVE = 0x170L;
    /** {@code CKR_STATE_UNSAVEABLE}: the state of the operation cannot be saved. */
    public static final long STATE_UNSAVEABLE = 0x180L;
    /** {@code CKR_CRYPTOKI_NOT_INITIALIZED}: {@code C_Initialize} was not called. */
    public static final long CRYPTOKI_NOT_INITIALIZED = 0x190L;
    /** {@code CKR_CRYPTOKI_ALREADY_INITIALIZED}: {@code C_Initialize} was called already. */
    public static final long CRYPTOKI_ALREADY_INITIALIZED = 0x191L;
    /** {@code CKR_MUTEX_BAD}: the mutex is wrong. */
    public static final long MUTEX_BAD = 0x1A0L;
    /** {@code CKR_MUTEX_NOT_LOCKED}: the mutex is not locked. */
    public static final long MUTEX_NOT_LOCKED = 0x1A1L;

    // Of the standard; the natives of CTUtil do not know these names
    /**
     * {@code CKR_ACTION_PROHIBITED}: the policy of the token or the attributes of the object prohibit the
     * action.
     */
    public static final long ACTION_PROHIBITED = 0x1BL;
    /** {@code CKR_FUNCTION_NOT_PARALLEL}: no function runs in parallel in this session. */
    public static final long FUNCTION_NOT_PARALLEL = 0x51L;
    /** {@code CKR_CURVE_NOT_SUPPORTED}: the token does not support the elliptic curve. */
    public static final long CURVE_NOT_SUPPORTED = 0x140L;
    /** {@code CKR_NEW_PIN_MODE}: the PIN of the one-time password device must be changed first. */
    public static final long NEW_PIN_MODE = 0x1B0L;
    /** {@code CKR_NEXT_OTP}: the next one-time password is needed. */
    public static final long NEXT_OTP = 0x1B1L;
    /**
     * {@code CKR_EXCEEDED_MAX_ITERATIONS}: an iterative algorithm failed after its greatest number of
     * iterations.
     */
    public static final long EXCEEDED_MAX_ITERATIONS = 0x1B5L;
    /** {@code CKR_FIPS_SELF_TEST_FAILED}: a FIPS self-test failed. */
    public static final long FIPS_SELF_TEST_FAILED = 0x1B6L;
    /** {@code CKR_LIBRARY_LOAD_FAILED}: the library could not load another library that it needs. */
    public static final long LIBRARY_LOAD_FAILED = 0x1B7L;
    /** {@code CKR_PIN_TOO_WEAK}: the new PIN is too easy to guess. */
    public static final long PIN_TOO_WEAK = 0x1B8L;
    /** {@code CKR_PUBLIC_KEY_INVALID}: the public key is wrong. */
    public static final long PUBLIC_KEY_INVALID = 0x1B9L;
    /** {@code CKR_FUNCTION_REJECTED}: the user has rejected the request. */
    public static final long FUNCTION_REJECTED = 0x200L;
    /** {@code CKR_VENDOR_DEFINED}: the first value that a vendor may define. */
    public static final long VENDOR_DEFINED = 0x80000000L;

    // Of the standard up to v3.1, and not in cryptoki.h; the natives of CTUtil do not know these names
    /**
     * {@code CKR_AEAD_DECRYPT_FAILED}: the tag of the cipher text is wrong, so it is damaged or of another
     * key or IV.
     */
    public static final long AEAD_DECRYPT_FAILED = 0x42L;
    /**
     * {@code CKR_TOKEN_RESOURCE_EXCEEDED}: the token lacks a resource for the call, such as a power supply or
     * entropy.
     */
    public static final long TOKEN_RESOURCE_EXCEEDED = 0x201L;
    /** {@code CKR_OPERATION_CANCEL_FAILED}: the operation cannot be cancelled. */
    public static final long OPERATION_CANCEL_FAILED = 0x202L;
    /** {@code CKR_KEY_EXHAUSTED}: the key has made all signatures that it can make. */
    public static final long KEY_EXHAUSTED = 0x203L;

    // Of the vendor
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
    /**
     * Message: "WLD_ERROR a WLD configuration has the slot description too long", with a blank at its end.
     */
    public static final long WLD_ERROR_SLOT_DESCRIPTION_TOO_LONG = 0x80002006L;
    /** Message: "WLD_ERROR a WLD configuration has an invalid format". */
    public static final long WLD_ERROR_INVALID_FORMAT = 0x80002007L;
    /** Message: "WLD_ERROR the internal cache for login information is inconsistent". */
    public static final long WLD_ERROR_LOGIN_CACHE_INCONSISTENT = 0x80002010L;

    private CKR() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKR_OK"} or {@code "OK"}, case-sensitive; must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKR.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKR_OK"}; of several names the one that this class declares first; null if
     *         there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKR.class, value);
    }
}
