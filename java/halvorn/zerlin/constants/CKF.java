// The constants with the prefix CKF_: those of cryptoki.h, in its order, and those that only the standard has.
package halvorn.zerlin.constants;

/**
 * Flags: single bits. The comment of each flag says where it is used, because one bit has different meanings
 * in different places.
 */
public final class CKF {
    // CK_SLOT_INFO
    /** {@code CKF_TOKEN_PRESENT}, of a slot: it contains a token. */
    public static final long TOKEN_PRESENT = 0x1L;
    /** {@code CKF_REMOVABLE_DEVICE}, of a slot: its tokens can be removed. */
    public static final long REMOVABLE_DEVICE = 0x2L;
    /** {@code CKF_HW_SLOT}, of a slot: it is hardware, not software. */
    public static final long HW_SLOT = 0x4L;

    // CK_TOKEN_INFO
    /** {@code CKF_RNG}, of a token: it has a random number generator. */
    public static final long RNG = 0x1L;
    /** {@code CKF_WRITE_PROTECTED}, of a token: it is protected against writing. */
    public static final long WRITE_PROTECTED = 0x2L;
    /** {@code CKF_LOGIN_REQUIRED}, of a token: some functions need a logged-in user. */
    public static final long LOGIN_REQUIRED = 0x4L;
    /** {@code CKF_USER_PIN_INITIALIZED}, of a token: the PIN of the user is set. */
    public static final long USER_PIN_INITIALIZED = 0x8L;
    /** {@code CKF_RESTORE_KEY_NOT_NEEDED}, of a token: restoring a saved state never needs a key. */
    public static final long RESTORE_KEY_NOT_NEEDED = 0x20L;
    /** {@code CKF_CLOCK_ON_TOKEN}, of a token: it has a clock. */
    public static final long CLOCK_ON_TOKEN = 0x40L;
    /** {@code CKF_PROTECTED_AUTHENTICATION_PATH}, of a token: the PIN can be entered at the token itself. */
    public static final long PROTECTED_AUTHENTICATION_PATH = 0x100L;
    /**
     * {@code CKF_DUAL_CRYPTO_OPERATIONS}, of a token: a session can do two cryptographic operations at once.
     */
    public static final long DUAL_CRYPTO_OPERATIONS = 0x200L;
    /** {@code CKF_TOKEN_INITIALIZED}, of a token: it was initialised. */
    public static final long TOKEN_INITIALIZED = 0x400L;
    /**
     * {@code CKF_SECONDARY_AUTHENTICATION}, of a token: private keys can have a PIN of their own
     * (deprecated).
     */
    public static final long SECONDARY_AUTHENTICATION = 0x800L;
    /**
     * {@code CKF_USER_PIN_COUNT_LOW}, of a token: a wrong PIN of the user was entered since the last login.
     */
    public static final long USER_PIN_COUNT_LOW = 0x10000L;
    /** {@code CKF_USER_PIN_FINAL_TRY}, of a token: the next wrong PIN of the user locks it. */
    public static final long USER_PIN_FINAL_TRY = 0x20000L;
    /** {@code CKF_USER_PIN_LOCKED}, of a token: the PIN of the user is locked. */
    public static final long USER_PIN_LOCKED = 0x40000L;
    /** {@code CKF_USER_PIN_TO_BE_CHANGED}, of a token: the PIN of the user must be changed. */
    public static final long USER_PIN_TO_BE_CHANGED = 0x80000L;
    /**
     * {@code CKF_SO_PIN_COUNT_LOW}, of a token: a wrong PIN of the security officer was entered since the
     * last login.
     */
    public static final long SO_PIN_COUNT_LOW = 0x100000L;
    /** {@code CKF_SO_PIN_FINAL_TRY}, of a token: the next wrong PIN of the security officer locks it. */
    public static final long SO_PIN_FINAL_TRY = 0x200000L;
    /** {@code CKF_SO_PIN_LOCKED}, of a token: the PIN of the security officer is locked. */
    public static final long SO_PIN_LOCKED = 0x400000L;
    /** {@code CKF_SO_PIN_TO_BE_CHANGED}, of a token: the PIN of the security officer must be changed. */
    public static final long SO_PIN_TO_BE_CHANGED = 0x800000L;
    /** {@code CKF_ERROR_STATE}, of a token: a self-test failed, and the token does not work. */
    public static final long ERROR_STATE = 0x1000000L;

    // CK_SESSION_INFO and C_OpenSession
    /** {@code CKF_RW_SESSION}, of a session: it may write. */
    public static final long RW_SESSION = 0x2L;
    /** {@code CKF_SERIAL_SESSION}, of a session: must always be set when a session is opened. */
    public static final long SERIAL_SESSION = 0x4L;

    // CK_MECHANISM_INFO
    /** {@code CKF_HW}, of a mechanism: a device performs it, not software. */
    public static final long HW = 0x1L;
    /** {@code CKF_ENCRYPT}, of a mechanism: it can encrypt. */
    public static final long ENCRYPT = 0x100L;
    /** {@code CKF_DECRYPT}, of a mechanism: it can decrypt. */
    public static final long DECRYPT = 0x200L;
    /** {@code CKF_DIGEST}, of a mechanism: it can digest. */
    public static final long DIGEST = 0x400L;
    /** {@code CKF_SIGN}, of a mechanism: it can sign. */
    public static final long SIGN = 0x800L;
    /** {@code CKF_SIGN_RECOVER}, of a mechanism: it can sign so that the data can be recovered. */
    public static final long SIGN_RECOVER = 0x1000L;
    /** {@code CKF_VERIFY}, of a mechanism: it can verify. */
    public static final long VERIFY = 0x2000L;
    /** {@code CKF_VERIFY_RECOVER}, of a mechanism: it can verify and recover the data. */
    public static final long VERIFY_RECOVER = 0x4000L;
    /** {@code CKF_GENERATE}, of a mechanism: it can generate a key. */
    public static final long GENERATE = 0x8000L;
    /** {@code CKF_GENERATE_KEY_PAIR}, of a mechanism: it can generate a key pair. */
    public static final long GENERATE_KEY_PAIR = 0x10000L;
    /** {@code CKF_WRAP}, of a mechanism: it can wrap keys. */
    public static final long WRAP = 0x20000L;
    /** {@code CKF_UNWRAP}, of a mechanism: it can unwrap keys. */
    public static final long UNWRAP = 0x40000L;
    /** {@code CKF_DERIVE}, of a mechanism: it can derive keys. */
    public static final long DERIVE = 0x80000L;
    /** {@code CKF_EC_F_P}, of a mechanism: it works with elliptic curves over a prime field. */
    public static final long EC_F_P = 0x100000L;
    /** {@code CKF_EC_F_2M}, of a mechanism: it works with elliptic curves over a binary field. */
    public static final long EC_F_2M = 0x200000L;
    /** {@code CKF_EC_ECPARAMETERS}, of a mechanism: its curve can be given by its parameters. */
    public static final long EC_ECPARAMETERS = 0x400000L;
    /** {@code CKF_EC_NAMEDCURVE}, of a mechanism: its curve can be given by its name. */
    public static final long EC_NAMEDCURVE = 0x800000L;
    /** {@code CKF_EC_UNCOMPRESS}, of a mechanism: it works with points in uncompressed form. */
    public static final long EC_UNCOMPRESS = 0x1000000L;
    /** {@code CKF_EC_COMPRESS}, of a mechanism: it works with points in compressed form. */
    public static final long EC_COMPRESS = 0x2000000L;
    /** {@code CKF_EXTENSION}, of a mechanism: reserved for an extension of the flags. */
    public static final long EXTENSION = 0x80000000L;

    // Attribute types
    /**
     * {@code CKF_ARRAY_ATTRIBUTE}, in an attribute type: the value is an array of attributes or of mechanism
     * types.
     */
    public static final long ARRAY_ATTRIBUTE = 0x40000000L;

    // CK_C_INITIALIZE_ARGS
    /** {@code CKF_LIBRARY_CANT_CREATE_OS_THREADS}, at initialisation: the library must not create threads. */
    public static final long LIBRARY_CANT_CREATE_OS_THREADS = 0x1L;
    /**
     * {@code CKF_OS_LOCKING_OK}, at initialisation: the library may lock with the means of the operating
     * system.
     */
    public static final long OS_LOCKING_OK = 0x2L;

    // C_WaitForSlotEvent
    /** {@code CKF_DONT_BLOCK}, for {@code C_WaitForSlotEvent}: do not wait. */
    public static final long DONT_BLOCK = 0x1L;

    // Of the standard up to v3.1, and not in cryptoki.h: CK_MECHANISM_INFO
    /** {@code CKF_MESSAGE_ENCRYPT}, of a mechanism: it can encrypt a series of messages with one key. */
    public static final long MESSAGE_ENCRYPT = 0x2L;
    /** {@code CKF_MESSAGE_DECRYPT}, of a mechanism: it can decrypt a series of messages with one key. */
    public static final long MESSAGE_DECRYPT = 0x4L;
    /** {@code CKF_MESSAGE_SIGN}, of a mechanism: it can sign a series of messages with one key. */
    public static final long MESSAGE_SIGN = 0x8L;
    /** {@code CKF_MESSAGE_VERIFY}, of a mechanism: it can verify a series of messages with one key. */
    public static final long MESSAGE_VERIFY = 0x10L;
    /** {@code CKF_MULTI_MESSAGE}, of a mechanism: it can process a message in parts. */
    public static final long MULTI_MESSAGE = 0x20L;
    /** Alias of {@link #EC_NAMEDCURVE}: its name since v3.0. */
    public static final long EC_OID = 0x800000L;
    /** {@code CKF_EC_CURVENAME}, of a mechanism: its curve can be given by its name as text. */
    public static final long EC_CURVENAME = 0x4000000L;

    // C_SessionCancel, message functions, interfaces
    /** {@code CKF_FIND_OBJECTS}, for {@code C_SessionCancel}: the search is cancelled. */
    public static final long FIND_OBJECTS = 0x40L;
    /** {@code CKF_END_OF_MESSAGE}, for the functions that process a message in parts: this part is the last. */
    public static final long END_OF_MESSAGE = 0x1L;
    /** {@code CKF_INTERFACE_FORK_SAFE}, of an interface: its functions also work in a forked process. */
    public static final long INTERFACE_FORK_SAFE = 0x1L;

    // CK_HKDF_PARAMS
    /** {@code CKF_HKDF_SALT_NULL}, for HKDF: no salt, which stands for zeroes. */
    public static final long HKDF_SALT_NULL = 0x1L;
    /** {@code CKF_HKDF_SALT_DATA}, for HKDF: the salt is in the parameter. */
    public static final long HKDF_SALT_DATA = 0x2L;
    /** {@code CKF_HKDF_SALT_KEY}, for HKDF: the salt is the value of a key. */
    public static final long HKDF_SALT_KEY = 0x4L;

    // One-time passwords, CK_OTP_FLAGS of the parameter
    /** {@code CKF_NEXT_OTP}, for one-time passwords: the next one, not the present one. */
    public static final long NEXT_OTP = 0x1L;
    /** {@code CKF_EXCLUDE_TIME}, for one-time passwords: leave the time out. */
    public static final long EXCLUDE_TIME = 0x2L;
    /** {@code CKF_EXCLUDE_COUNTER}, for one-time passwords: leave the counter out. */
    public static final long EXCLUDE_COUNTER = 0x4L;
    /** {@code CKF_EXCLUDE_CHALLENGE}, for one-time passwords: leave the challenge out. */
    public static final long EXCLUDE_CHALLENGE = 0x8L;
    /** {@code CKF_EXCLUDE_PIN}, for one-time passwords: leave the PIN out. */
    public static final long EXCLUDE_PIN = 0x10L;
    /** {@code CKF_USER_FRIENDLY_OTP}, for one-time passwords: in a form that people can read. */
    public static final long USER_FRIENDLY_OTP = 0x20L;

    private CKF() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKF_RNG"} or {@code "RNG"}, case-sensitive; must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKF.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKF_RNG"}; null if there is none. Some values have several names for
     *         different places; this is the first one of this class
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKF.class, value);
    }
}
