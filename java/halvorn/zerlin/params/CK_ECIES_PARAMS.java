// The parameter of elliptic curve encryption.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_ECIES}, a vendor mechanism. The schemes are numbers of the vendor.
 */
public class CK_ECIES_PARAMS {
    /** The key agreement primitive. */
    public long dhPrimitive;
    /** The key derivation function. */
    public long kdf;
    /**
     * The length of {@link #pSharedData1} in bytes; with 0 the array is not looked at, else it must equal
     * that of the array, otherwise the process is aborted.
     */
    public long ulSharedDataLen1;
    /** The data shared for the key derivation, or null. */
    public byte[] pSharedData1;
    /** The encryption scheme. */
    public long encScheme;
    /** The length of the encryption key in bits. */
    public long ulEncKeyLenInBits;
    /** The MAC scheme. */
    public long macScheme;
    /** The length of the MAC key in bits. */
    public long ulMacKeyLenInBits;
    /** The length of the MAC in bits. */
    public long ulMacLenInBits;
    /**
     * The length of {@link #pSharedData2} in bytes; with 0 the array is not looked at, else it must equal
     * that of the array, otherwise the process is aborted.
     */
    public long ulSharedDataLen2;
    /** The data shared for the MAC, or null. */
    public byte[] pSharedData2;

    /** Makes an empty parameter. */
    public CK_ECIES_PARAMS() {
    }

    /**
     * Makes a parameter with the lengths that belong to its arrays.
     *
     * @param dhPrimitive       the key agreement primitive
     * @param kdf               the key derivation function
     * @param pSharedData1      the data shared for the key derivation, or null
     * @param encScheme         the encryption scheme
     * @param ulEncKeyLenInBits the length of the encryption key in bits
     * @param macScheme         the MAC scheme
     * @param ulMacKeyLenInBits the length of the MAC key in bits
     * @param ulMacLenInBits    the length of the MAC in bits
     * @param pSharedData2      the data shared for the MAC, or null
     */
    public CK_ECIES_PARAMS(long dhPrimitive, long kdf, byte[] pSharedData1, long encScheme,
            long ulEncKeyLenInBits, long macScheme, long ulMacKeyLenInBits, long ulMacLenInBits,
            byte[] pSharedData2) {
        this.dhPrimitive = dhPrimitive;
        this.kdf = kdf;
        ulSharedDataLen1 = Bytes.length(pSharedData1);
        this.pSharedData1 = pSharedData1;
        this.encScheme = encScheme;
        this.ulEncKeyLenInBits = ulEncKeyLenInBits;
        this.macScheme = macScheme;
        this.ulMacKeyLenInBits = ulMacKeyLenInBits;
        this.ulMacLenInBits = ulMacLenInBits;
        ulSharedDataLen2 = Bytes.length(pSharedData2);
        this.pSharedData2 = pSharedData2;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_ECIES_PARAMS[dhPrimitive=" + dhPrimitive + ", kdf=" + kdf
                + ", ulSharedDataLen1=" + ulSharedDataLen1
                + ", pSharedData1=" + Bytes.describe(pSharedData1) + ", encScheme=" + encScheme
                + ", ulEncKeyLenInBits=" + ulEncKeyLenInBits + ", macScheme=" + macScheme
                + ", ulMacKeyLenInBits=" + ulMacKeyLenInBits + ", ulMacLenInBits=" + ulMacLenInBits
                + ", ulSharedDataLen2=" + ulSharedDataLen2
                + ", pSharedData2=" + Bytes.describe(pSharedData2) + "]";
    }
}
