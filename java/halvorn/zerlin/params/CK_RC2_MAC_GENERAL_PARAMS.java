// The parameter of the RC2 MAC whose length the caller chooses.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_RC2_MAC_GENERAL} (PKCS#11 v2.20, chapter 12).
 */
public class CK_RC2_MAC_GENERAL_PARAMS {
    /** The effective number of bits in the RC2 search space. */
    public long effectiveBits;
    /** The length of the MAC in bytes. */
    public long macLength;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_RC2_MAC_GENERAL_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param effectiveBits the effective number of bits in the RC2 search space
     * @param macLength     the length of the MAC in bytes
     */
    public CK_RC2_MAC_GENERAL_PARAMS(long effectiveBits, long macLength) {
        this.effectiveBits = effectiveBits;
        this.macLength = macLength;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_RC2_MAC_GENERAL_PARAMS[effectiveBits=" + effectiveBits + ", macLength=" + macLength + "]";
    }
}
