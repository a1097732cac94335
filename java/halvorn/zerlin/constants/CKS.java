// The constants of the prefix CKS_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Session states, for {@link CK_STATE}.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKS {
    /** {@code CKS_RO_PUBLIC_SESSION} */
    public static final long RO_PUBLIC_SESSION = 0x0L;
    /** {@code CKS_RO_USER_FUNCTIONS} */
    public static final long RO_USER_FUNCTIONS = 0x1L;
    /** {@code CKS_RW_PUBLIC_SESSION} */
    public static final long RW_PUBLIC_SESSION = 0x2L;
    /** {@code CKS_RW_USER_FUNCTIONS} */
    public static final long RW_USER_FUNCTIONS = 0x3L;
    /** {@code CKS_RW_SO_FUNCTIONS} */
    public static final long RW_SO_FUNCTIONS = 0x4L;

    private CKS() {
    }
}
