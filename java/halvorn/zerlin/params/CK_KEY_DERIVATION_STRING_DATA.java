// The parameter of key derivation with data.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_CONCATENATE_BASE_AND_DATA}, {@code CKM_XOR_BASE_AND_DATA} and their kin
 * (PKCS#11 v2.20, chapter 12).
 */
public class CK_KEY_DERIVATION_STRING_DATA {
    /** The data. */
    public byte[] pData;
    /**
     * The length of {@link #pData} in bytes. Not checked: a greater one makes the library read beyond the
     * array.
     */
    public long len;

    /** Makes an empty parameter. */
    public CK_KEY_DERIVATION_STRING_DATA() {
    }

    /**
     * Makes a parameter with the lengths that belong to its arrays.
     *
     * @param pData the data
     */
    public CK_KEY_DERIVATION_STRING_DATA(byte[] pData) {
        this.pData = pData;
        len = Bytes.length(pData);
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_KEY_DERIVATION_STRING_DATA[pData=" + Bytes.describe(pData) + ", len=" + len + "]";
    }
}
