// The parameter for copying a token to another one.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_REPLICATE_TOKEN_RSA_AES}, a vendor mechanism that copies a token to another
 * one.
 */
public class CK_REPLICATE_TOKEN_PARAMS {
    /**
     * The identifier of the other token, 16 bytes. Missing bytes are 0, all of them if the array is null; the
     * rest of a longer array is ignored.
     */
    public byte[] peerId;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_REPLICATE_TOKEN_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param peerId the identifier of the other token, 16 bytes
     */
    public CK_REPLICATE_TOKEN_PARAMS(byte[] peerId) {
        this.peerId = peerId;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_REPLICATE_TOKEN_PARAMS[peerId=" + Bytes.describe(peerId) + "]";
    }
}
