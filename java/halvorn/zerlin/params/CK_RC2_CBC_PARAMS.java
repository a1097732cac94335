// The parameter of RC2 in CBC mode.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_RC2_CBC} and {@code CKM_RC2_CBC_PAD} (PKCS#11 v2.20, chapter 12).
 */
public class CK_RC2_CBC_PARAMS {
    /** The effective number of bits in the RC2 search space. */
    public long effectiveBits;
    /**
     * The initialisation vector, 8 bytes. Missing bytes are 0, all of them if the array is null; the rest of
     * a longer array is ignored.
     */
    public byte[] iv;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_RC2_CBC_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param effectiveBits the effective number of bits in the RC2 search space
     * @param iv            the initialisation vector, 8 bytes
     */
    public CK_RC2_CBC_PARAMS(long effectiveBits, byte[] iv) {
        this.effectiveBits = effectiveBits;
        this.iv = iv;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_RC2_CBC_PARAMS[effectiveBits=" + effectiveBits + ", iv=" + Bytes.describe(iv) + "]";
    }
}
