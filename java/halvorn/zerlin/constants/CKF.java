// The constants of the prefix CKF_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Flags of slots, tokens, sessions, mechanisms and of initialisation.
 * One number means different things in different structures; the comments name them.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKF {
    // CK_SLOT_INFO
    /** {@code CKF_TOKEN_PRESENT} */
    public static final long TOKEN_PRESENT = 0x1L;
    /** {@code CKF_REMOVABLE_DEVICE} */
    public static final long REMOVABLE_DEVICE = 0x2L;
    /** {@code CKF_HW_SLOT} */
    public static final long HW_SLOT = 0x4L;

    // CK_TOKEN_INFO
    /** {@code CKF_RNG} */
    public static final long RNG = 0x1L;
    /** {@code CKF_WRITE_PROTECTED} */
    public static final long WRITE_PROTECTED = 0x2L;
    /** {@code CKF_LOGIN_REQUIRED} */
    public static final long LOGIN_REQUIRED = 0x4L;
    /** {@code CKF_USER_PIN_INITIALIZED} */
    public static final long USER_PIN_INITIALIZED = 0x8L;
    /** {@code CKF_RESTORE_KEY_NOT_NEEDED} */
    public static final long RESTORE_KEY_NOT_NEEDED = 0x20L;
    /** {@code CKF_CLOCK_ON_TOKEN} */
    public static final long CLOCK_ON_TOKEN = 0x40L;
    /** {@code CKF_PROTECTED_AUTHENTICATION_PATH} */
    public static final long PROTECTED_AUTHENTICATION_PATH = 0x100L;
    /** {@code CKF_DUAL_CRYPTO_OPERATIONS} */
    public static final long DUAL_CRYPTO_OPERATIONS = 0x200L;
    /** {@code CKF_TOKEN_INITIALIZED} */
    public static final long TOKEN_INITIALIZED = 0x400L;
    /** {@code CKF_SECONDARY_AUTHENTICATION} */
    public static final long SECONDARY_AUTHENTICATION = 0x800L;
    /** {@code CKF_USER_PIN_COUNT_LOW} */
    public static final long USER_PIN_COUNT_LOW = 0x10000L;
    /** {@code CKF_USER_PIN_FINAL_TRY} */
    public static final long USER_PIN_FINAL_TRY = 0x20000L;
    /** {@code CKF_USER_PIN_LOCKED} */
    public static final long USER_PIN_LOCKED = 0x40000L;
    /** {@code CKF_USER_PIN_TO_BE_CHANGED} */
    public static final long USER_PIN_TO_BE_CHANGED = 0x80000L;
    /** {@code CKF_SO_PIN_COUNT_LOW} */
    public static final long SO_PIN_COUNT_LOW = 0x100000L;
    /** {@code CKF_SO_PIN_FINAL_TRY} */
    public static final long SO_PIN_FINAL_TRY = 0x200000L;
    /** {@code CKF_SO_PIN_LOCKED} */
    public static final long SO_PIN_LOCKED = 0x400000L;
    /** {@code CKF_SO_PIN_TO_BE_CHANGED} */
    public static final long SO_PIN_TO_BE_CHANGED = 0x800000L;
    /** {@code CKF_ERROR_STATE} */
    public static final long ERROR_STATE = 0x1000000L;

    // CK_SESSION_INFO and C_OpenSession
    /** {@code CKF_RW_SESSION} */
    public static final long RW_SESSION = 0x2L;
    /** Always set it. */
    public static final long SERIAL_SESSION = 0x4L;

    // CK_MECHANISM_INFO
    /** {@code CKF_HW} */
    public static final long HW = 0x1L;
    /** {@code CKF_ENCRYPT} */
    public static final long ENCRYPT = 0x100L;
    /** {@code CKF_DECRYPT} */
    public static final long DECRYPT = 0x200L;
    /** {@code CKF_DIGEST} */
    public static final long DIGEST = 0x400L;
    /** {@code CKF_SIGN} */
    public static final long SIGN = 0x800L;
    /** {@code CKF_SIGN_RECOVER} */
    public static final long SIGN_RECOVER = 0x1000L;
    /** {@code CKF_VERIFY} */
    public static final long VERIFY = 0x2000L;
    /** {@code CKF_VERIFY_RECOVER} */
    public static final long VERIFY_RECOVER = 0x4000L;
    /** {@code CKF_GENERATE} */
    public static final long GENERATE = 0x8000L;
    /** {@code CKF_GENERATE_KEY_PAIR} */
    public static final long GENERATE_KEY_PAIR = 0x10000L;
    /** {@code CKF_WRAP} */
    public static final long WRAP = 0x20000L;
    /** {@code CKF_UNWRAP} */
    public static final long UNWRAP = 0x40000L;
    /** {@code CKF_DERIVE} */
    public static final long DERIVE = 0x80000L;
    /** {@code CKF_EC_F_P} */
    public static final long EC_F_P = 0x100000L;
    /** {@code CKF_EC_F_2M} */
    public static final long EC_F_2M = 0x200000L;
    /** {@code CKF_EC_ECPARAMETERS} */
    public static final long EC_ECPARAMETERS = 0x400000L;
    /** {@code CKF_EC_NAMEDCURVE} */
    public static final long EC_NAMEDCURVE = 0x800000L;
    /** {@code CKF_EC_UNCOMPRESS} */
    public static final long EC_UNCOMPRESS = 0x1000000L;
    /** {@code CKF_EC_COMPRESS} */
    public static final long EC_COMPRESS = 0x2000000L;
    /** {@code CKF_EXTENSION} */
    public static final long EXTENSION = 0x80000000L;

    // Attribute types
    /** {@code CKF_ARRAY_ATTRIBUTE} */
    public static final long ARRAY_ATTRIBUTE = 0x40000000L;

    // CK_C_INITIALIZE_ARGS
    /** {@code CKF_LIBRARY_CANT_CREATE_OS_THREADS} */
    public static final long LIBRARY_CANT_CREATE_OS_THREADS = 0x1L;
    /** {@code CKF_OS_LOCKING_OK} */
    public static final long OS_LOCKING_OK = 0x2L;

    // C_WaitForSlotEvent
    /** {@code CKF_DONT_BLOCK} */
    public static final long DONT_BLOCK = 0x1L;

    private CKF() {
    }
}
