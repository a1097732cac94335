// The constants of the prefix CKG_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Mask generation functions, for the {@code mgf} of OAEP and PSS parameters.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKG {
    /** {@code CKG_MGF1_SHA1} */
    public static final long MGF1_SHA1 = 0x1L;
    /** {@code CKG_MGF1_SHA256} */
    public static final long MGF1_SHA256 = 0x2L;
    /** {@code CKG_MGF1_SHA384} */
    public static final long MGF1_SHA384 = 0x3L;
    /** {@code CKG_MGF1_SHA512} */
    public static final long MGF1_SHA512 = 0x4L;
    /** {@code CKG_MGF1_SHA224} */
    public static final long MGF1_SHA224 = 0x5L;

    private CKG() {
    }
}
