// The constants with the prefix CKU_, with the names and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * User types.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_USER_TYPE} where a native needs one.
 */
public final class CKU {
    /** {@code CKU_SO}: the security officer, who initialises tokens and sets the PIN of the user. */
    public static final long SO = 0x0L;
    /** {@code CKU_USER}: the user. */
    public static final long USER = 0x1L;
    /** {@code CKU_CONTEXT_SPECIFIC}: the user again, for a key with {@code CKA_ALWAYS_AUTHENTICATE}. */
    public static final long CONTEXT_SPECIFIC = 0x2L;

    private CKU() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKU_USER"} or {@code "USER"}, case-sensitive; must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKU.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKU_USER"}; of several names the one that this class declares first; null if
     *         there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKU.class, value);
    }
}
