// The parameter of encryption with elliptic curves.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_ECIES}, a vendor mechanism that encrypts with elliptic curves. The vendor
 * defines the numbers of the primitives and schemes.
 */
public class CK_ECIES_PARAMS {
    /** The key agreement primitive, a number that the vendor defines. */
    public long dhPrimitive;
    /** The key derivation function, a value of {@link halvorn.zerlin.constants.CKD CKD}. */
    public long kdf;
    /**
     * The length of {@link #pSharedData1} in bytes; 0 if the array is not to be used. Any other value must
     * equal the length of the array: a different one aborts the process. With a null or empty array it is not
     * checked: the library gets a null pointer, or finds zeroes up to 64 KiB and crashes behind those.
     */
    public long ulSharedDataLen1;
    /** The data for the key derivation that both sides share, or null for none. */
    public byte[] pSharedData1;
    /** The encryption scheme, a number that the vendor defines. */
    public long encScheme;
    /** The length of the encryption key in bits. */
    public long ulEncKeyLenInBits;
    /** The MAC scheme, a number that the vendor defines. */
    public long macScheme;
    /** The length of the MAC key in bits. */
    public long ulMacKeyLenInBits;
    /** The length of the MAC in bits. */
    public long ulMacLenInBits;
    /**
     * The length of {@link #pSharedData2} in bytes; 0 if the array is not to be used. Any other value must
     * equal the length of the array: a different one aborts the process. With a null or empty array it is not
     * checked: the library gets a null pointer, or finds zeroes up to 64 KiB and crashes behind those.
     */
    public long ulSharedDataLen2;
    /** The data for the MAC that both sides share, or null for none. */
    public byte[] pSharedData2;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_ECIES_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param dhPrimitive       the key agreement primitive
     * @param kdf               the key derivation function, a value of
     *                          {@link halvorn.zerlin.constants.CKD CKD}
     * @param pSharedData1      the data for the key derivation that both sides share, or null for none
     * @param encScheme         the encryption scheme
     * @param ulEncKeyLenInBits the length of the encryption key in bits
     * @param macScheme         the MAC scheme
     * @param ulMacKeyLenInBits the length of the MAC key in bits
     * @param ulMacLenInBits    the length of the MAC in bits
     * @param pSharedData2      the data for the MAC that both sides share, or null for none
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
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
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
