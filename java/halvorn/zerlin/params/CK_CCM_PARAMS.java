// The parameter of AES in counter mode with CBC-MAC.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_AES_CCM} (PKCS#11 v3.0 Current Mechanisms, 2.13; v3.1, 6.13).
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.AES_CCM, new CK_CCM_PARAMS(text.length, nonce, aad, 16))
 * }</pre>
 */
public class CK_CCM_PARAMS {
    /** The length of the clear text in bytes, also to decrypt: that of the encrypted data without the MAC. */
    public long ulDataLen;
    /** The nonce, 7 to 13 bytes. Never use one twice with a key. */
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
    /** The length of the MAC in bytes: 4, 6, 8, 10, 12, 14 or 16. The MAC is the end of the encrypted data. */
    public long ulMACLen;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_CCM_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param ulDataLen the length of the clear text in bytes
     * @param pNonce    the nonce, 7 to 13 bytes
     * @param pAAD      the additional data, or null for none
     * @param ulMACLen  the length of the MAC in bytes
     */
    public CK_CCM_PARAMS(long ulDataLen, byte[] pNonce, byte[] pAAD, long ulMACLen) {
        this.ulDataLen = ulDataLen;
        this.pNonce = pNonce;
        ulNonceLen = Bytes.length(pNonce);
        this.pAAD = pAAD;
        ulAADLen = Bytes.length(pAAD);
        this.ulMACLen = ulMACLen;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_CCM_PARAMS[ulDataLen=" + ulDataLen + ", pNonce=" + Bytes.describe(pNonce)
                + ", ulNonceLen=" + ulNonceLen + ", pAAD=" + Bytes.describe(pAAD)
                + ", ulAADLen=" + ulAADLen + ", ulMACLen=" + ulMACLen + "]";
    }
}
