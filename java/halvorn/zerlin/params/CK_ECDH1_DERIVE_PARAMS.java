// The parameter of elliptic curve key agreement.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_ECDH1_DERIVE} (PKCS#11 v2.20, 12.3).
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.ECDH1_DERIVE, new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, point))
 * }</pre>
 */
public class CK_ECDH1_DERIVE_PARAMS {
    /** The key derivation function, a value of {@link halvorn.zerlin.constants.CKD CKD}. */
    public long kdf;
    /**
     * The length of {@link #pSharedData} in bytes; with 0 the array is not looked at, else it must equal that
     * of the array, otherwise the process is aborted.
     */
    public long ulSharedDataLen;
    /** The data shared by both sides, or null. */
    public byte[] pSharedData;
    /**
     * The length of {@link #pPublicData} in bytes; with 0 the array is not looked at, else it must equal that
     * of the array, otherwise the process is aborted.
     */
    public long ulPublicDataLen;
    /** The other side's public point. */
    public byte[] pPublicData;

    /** Makes an empty parameter. */
    public CK_ECDH1_DERIVE_PARAMS() {
    }

    /**
     * Makes a parameter with the lengths that belong to its arrays.
     *
     * @param kdf         the key derivation function, a value of {@link halvorn.zerlin.constants.CKD CKD}
     * @param pSharedData the data shared by both sides, or null
     * @param pPublicData the other side's public point
     */
    public CK_ECDH1_DERIVE_PARAMS(long kdf, byte[] pSharedData, byte[] pPublicData) {
        this.kdf = kdf;
        ulSharedDataLen = Bytes.length(pSharedData);
        this.pSharedData = pSharedData;
        ulPublicDataLen = Bytes.length(pPublicData);
        this.pPublicData = pPublicData;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_ECDH1_DERIVE_PARAMS[kdf=" + kdf + ", ulSharedDataLen=" + ulSharedDataLen
                + ", pSharedData=" + Bytes.describe(pSharedData)
                + ", ulPublicDataLen=" + ulPublicDataLen
                + ", pPublicData=" + Bytes.describe(pPublicData) + "]";
    }
}
