// The constants of the prefix CKU_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * User types, for {@link CK_USER_TYPE}.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKU {
    /** {@code CKU_SO} */
    public static final long SO = 0x0L;
    /** {@code CKU_USER} */
    public static final long USER = 0x1L;
    /** For keys with {@code CKA_ALWAYS_AUTHENTICATE}. */
    public static final long CONTEXT_SPECIFIC = 0x2L;

    private CKU() {
    }
}
