// The parameter of replicating a token.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_REPLICATE_TOKEN_RSA_AES}, a vendor mechanism.
 */
public class CK_REPLICATE_TOKEN_PARAMS {
    /**
     * The token on the other side, 16 bytes; the rest of a shorter array is zero, of a longer one ignored.
     */
    public byte[] peerId;

    /** Makes an empty parameter. */
    public CK_REPLICATE_TOKEN_PARAMS() {
    }

    /**
     * Makes a parameter.
     *
     * @param peerId the token on the other side, 16 bytes
     */
    public CK_REPLICATE_TOKEN_PARAMS(byte[] peerId) {
        this.peerId = peerId;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_REPLICATE_TOKEN_PARAMS[peerId=" + Bytes.describe(peerId) + "]";
    }
}
