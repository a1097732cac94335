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
}
