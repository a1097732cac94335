// The constants with the prefix CKG_, with the names and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Mask generation functions, for the {@code mgf} of OAEP and PSS parameters. Each name ends with the hash
 * function that it uses.
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
