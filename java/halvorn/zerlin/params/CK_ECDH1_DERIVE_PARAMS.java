// The parameter of key agreement with elliptic curves.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_ECDH1_DERIVE} (PKCS#11 v2.20, 12.3). With a library of another vendor, use
 * {@link halvorn.zerlin.constants.CKM#ECDH1_DERIVE_STD CKM.ECDH1_DERIVE_STD}, which has the standard's value.
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.ECDH1_DERIVE, new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, point))
 * }</pre>
 */
public class CK_ECDH1_DERIVE_PARAMS {
    /** The key derivation function, a value of {@link halvorn.zerlin.constants.CKD CKD}. */
    public long kdf;
    /**
     * The length of {@link #pSharedData} in bytes; 0 if the array is not to be used. Any other value must
     * equal the length of the array: a different one aborts the process. With a null or empty array it is not
     * checked: the library gets a null pointer, or finds zeroes up to 64 KiB and crashes behind those.
     */
    public long ulSharedDataLen;
    /** The data that both sides share, or null for none. */
    public byte[] pSharedData;
    /**
     * The length of {@link #pPublicData} in bytes; 0 if the array is not to be used. Any other value must
     * equal the length of the array: a different one aborts the process. With a null or empty array it is not
     * checked: the library gets a null pointer, or finds zeroes up to 64 KiB and crashes behind those.
     */
    public long ulPublicDataLen;
    /** The public point of the other side. */
    public byte[] pPublicData;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_ECDH1_DERIVE_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param kdf         the key derivation function, a value of {@link halvorn.zerlin.constants.CKD CKD}
     * @param pSharedData the data that both sides share, or null for none
     * @param pPublicData the public point of the other side
     */
    public CK_ECDH1_DERIVE_PARAMS(long kdf, byte[] pSharedData, byte[] pPublicData) {
        this.kdf = kdf;
        ulSharedDataLen = Bytes.length(pSharedData);
        this.pSharedData = pSharedData;
        ulPublicDataLen = Bytes.length(pPublicData);
        this.pPublicData = pPublicData;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_ECDH1_DERIVE_PARAMS[kdf=" + kdf + ", ulSharedDataLen=" + ulSharedDataLen
                + ", pSharedData=" + Bytes.describe(pSharedData)
                + ", ulPublicDataLen=" + ulPublicDataLen
                + ", pPublicData=" + Bytes.describe(pPublicData) + "]";
    }
}
