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

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKS_RW_USER_FUNCTIONS"} or {@code "RW_USER_FUNCTIONS"}, case-sensitive;
     *             must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKS.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKS_RW_USER_FUNCTIONS"}; of several names the one that this class declares first;
     *         null if there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKS.class, value);
    }
}
