// The parameter of wrapping a key with RSA and AES.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_RSA_AES_KEY_WRAP} (PKCS#11 v3.0 Current Mechanisms, 2.1; v3.1, 6.1). The module
 * makes an AES key, wraps the key with it, and encrypts the AES key with RSA OAEP.
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.RSA_AES_KEY_WRAP,
 *     new CK_RSA_AES_KEY_WRAP_PARAMS(256, new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null)))
 * }</pre>
 */
public class CK_RSA_AES_KEY_WRAP_PARAMS {
    /** The length of the AES key in bits: 128, 192 or 256. */
    public long ulAESKeyBits;
    /** How the AES key is encrypted. If it is null, the library receives a null pointer. */
    public CK_RSA_PKCS_OAEP_PARAMS pOAEPParams = new CK_RSA_PKCS_OAEP_PARAMS();

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_RSA_AES_KEY_WRAP_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param ulAESKeyBits the length of the AES key in bits
     * @param pOAEPParams  how the AES key is encrypted, kept without a copy
     */
    public CK_RSA_AES_KEY_WRAP_PARAMS(long ulAESKeyBits, CK_RSA_PKCS_OAEP_PARAMS pOAEPParams) {
        this.ulAESKeyBits = ulAESKeyBits;
        this.pOAEPParams = pOAEPParams;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_RSA_AES_KEY_WRAP_PARAMS[ulAESKeyBits=" + ulAESKeyBits
                + ", pOAEPParams=" + pOAEPParams + "]";
    }
}
