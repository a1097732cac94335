// The parameter of ChaCha20 and Salsa20 with Poly1305.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_CHACHA20_POLY1305} and {@code CKM_SALSA20_POLY1305} (PKCS#11 v3.0 Current
 * Mechanisms, 2.61; v3.1, 6.61).
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.CHACHA20_POLY1305, new CK_SALSA20_CHACHA20_POLY1305_PARAMS(nonce, aad))
 * }</pre>
 */
public class CK_SALSA20_CHACHA20_POLY1305_PARAMS {
    /**
     * The nonce: 12 bytes, some modules also allow 8, for ChaCha20; 8 or 24 for Salsa20. Never use one twice
     * with a key.
     */
    public byte[] pNonce;
    /**
     * The length of {@link #pNonce} in bytes. It must equal the length of the array, and 0 for null: any other
     * value aborts the process.
     */
    public long ulNonceLen;
    /** The additional data, which is authenticated and not encrypted, or null for none. */
    public byte[] pAAD;
    /**
     * The length of {@link #pAAD} in bytes. It must equal the length of the array, and 0 for null: any other
     * value aborts the process.
     */
    public long ulAADLen;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_SALSA20_CHACHA20_POLY1305_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param pNonce the nonce
     * @param pAAD   the additional data, or null for none
     */
    public CK_SALSA20_CHACHA20_POLY1305_PARAMS(byte[] pNonce, byte[] pAAD) {
        this.pNonce = pNonce;
        ulNonceLen = Bytes.length(pNonce);
        this.pAAD = pAAD;
        ulAADLen = Bytes.length(pAAD);
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_SALSA20_CHACHA20_POLY1305_PARAMS[pNonce=" + Bytes.describe(pNonce)
                + ", ulNonceLen=" + ulNonceLen + ", pAAD=" + Bytes.describe(pAAD)
                + ", ulAADLen=" + ulAADLen + "]";
    }
}
