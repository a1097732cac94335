// The constants with the prefix CKS_, with the names and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Session states.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_STATE} where a native needs one.
 */
public final class CKS {
    /** {@code CKS_RO_PUBLIC_SESSION}: read-only, nobody is logged in. */
    public static final long RO_PUBLIC_SESSION = 0x0L;
    /** {@code CKS_RO_USER_FUNCTIONS}: read-only, the user is logged in. */
    public static final long RO_USER_FUNCTIONS = 0x1L;
    /** {@code CKS_RW_PUBLIC_SESSION}: read/write, nobody is logged in. */
    public static final long RW_PUBLIC_SESSION = 0x2L;
    /** {@code CKS_RW_USER_FUNCTIONS}: read/write, the user is logged in. */
    public static final long RW_USER_FUNCTIONS = 0x3L;
    /** {@code CKS_RW_SO_FUNCTIONS}: read/write, the security officer is logged in. */
    public static final long RW_SO_FUNCTIONS = 0x4L;

    private CKS() {
    }
}
