// The parameter of the RC2 MAC of free length.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_RC2_MAC_GENERAL} (PKCS#11 v2.20, chapter 12).
 */
public class CK_RC2_MAC_GENERAL_PARAMS {
    /** The effective bits of the RC2 search space. */
    public long effectiveBits;
    /** The length of the MAC in bytes. */
    public long macLength;

    /** Makes an empty parameter. */
    public CK_RC2_MAC_GENERAL_PARAMS() {
    }

    /**
     * Makes a parameter.
     *
     * @param effectiveBits the effective bits of the RC2 search space
     * @param macLength     the length of the MAC in bytes
     */
    public CK_RC2_MAC_GENERAL_PARAMS(long effectiveBits, long macLength) {
        this.effectiveBits = effectiveBits;
        this.macLength = macLength;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_RC2_MAC_GENERAL_PARAMS[effectiveBits=" + effectiveBits + ", macLength=" + macLength + "]";
    }
}
