// The parameter of key agreement by X9.42 Diffie-Hellman.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_X9_42_DH_DERIVE} (PKCS#11 v3.0 Current Mechanisms, 2.4; v3.1, 6.4).
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.X9_42_DH_DERIVE, new CK_X9_42_DH1_DERIVE_PARAMS(CKD.NULL, null, publicValue))
 * }</pre>
 */
public class CK_X9_42_DH1_DERIVE_PARAMS {
    /** The key derivation function, a value of {@link halvorn.zerlin.constants.CKD CKD}. */
    public long kdf;
    /**
     * The length of {@link #pOtherInfo} in bytes; 0 if the array is not to be used. Any other value must
     * equal the length of the array: a different one aborts the process. With a null or empty array it is not
     * checked: the library gets a null pointer, or finds zeroes up to 64 KiB and crashes behind those.
     */
    public long ulOtherInfoLen;
    /** The data that both sides share, or null for none. */
    public byte[] pOtherInfo;
    /**
     * The length of {@link #pPublicData} in bytes; 0 if the array is not to be used. Any other value must
     * equal the length of the array: a different one aborts the process. With a null or empty array it is not
     * checked: the library gets a null pointer, or finds zeroes up to 64 KiB and crashes behind those.
     */
    public long ulPublicDataLen;
    /** The public value of the other side. */
    public byte[] pPublicData;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_X9_42_DH1_DERIVE_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param kdf         the key derivation function, a value of {@link halvorn.zerlin.constants.CKD CKD}
     * @param pOtherInfo  the data that both sides share, or null for none
     * @param pPublicData the public value of the other side
     */
    public CK_X9_42_DH1_DERIVE_PARAMS(long kdf, byte[] pOtherInfo, byte[] pPublicData) {
        this.kdf = kdf;
        ulOtherInfoLen = Bytes.length(pOtherInfo);
        this.pOtherInfo = pOtherInfo;
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
        return "CK_X9_42_DH1_DERIVE_PARAMS[kdf=" + kdf + ", ulOtherInfoLen=" + ulOtherInfoLen
                + ", pOtherInfo=" + Bytes.describe(pOtherInfo) + ", ulPublicDataLen=" + ulPublicDataLen
                + ", pPublicData=" + Bytes.describe(pPublicData) + "]";
    }
}
