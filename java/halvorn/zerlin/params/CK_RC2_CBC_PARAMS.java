// The parameter of RC2 in CBC mode.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_RC2_CBC} and {@code CKM_RC2_CBC_PAD} (PKCS#11 v2.20, chapter 12).
 */
public class CK_RC2_CBC_PARAMS {
    /** The effective bits of the RC2 search space. */
    public long effectiveBits;
    /** The initialisation vector, 8 bytes; the rest of a shorter one is zero, of a longer one ignored. */
    public byte[] iv;

    /** Makes an empty parameter. */
    public CK_RC2_CBC_PARAMS() {
    }

    /**
     * Makes a parameter.
     *
     * @param effectiveBits the effective bits of the RC2 search space
     * @param iv            the initialisation vector, 8 bytes
     */
    public CK_RC2_CBC_PARAMS(long effectiveBits, byte[] iv) {
        this.effectiveBits = effectiveBits;
        this.iv = iv;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_RC2_CBC_PARAMS[effectiveBits=" + effectiveBits + ", iv=" + Bytes.describe(iv) + "]";
    }
}
