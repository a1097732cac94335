// The parameter for deriving a key from another key and data.
package halvorn.zerlin.params;

/**
 * The parameter of mechanisms that derive a key from another key and data, such as
 * {@code CKM_CONCATENATE_BASE_AND_DATA}, {@code CKM_CONCATENATE_DATA_AND_BASE} and
 * {@code CKM_XOR_BASE_AND_DATA} (PKCS#11 v2.20, chapter 12).
 */
public class CK_KEY_DERIVATION_STRING_DATA {
    /** The data that the mechanism combines with the key. */
    public byte[] pData;
    /**
     * The length of {@link #pData} in bytes. It is not checked and never aborts the process. Behind a
     * shorter array the library finds zeroes, up to 64 KiB, and crashes behind those.
     */
    public long len;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_KEY_DERIVATION_STRING_DATA() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param pData the data that the mechanism combines with the key
     */
    public CK_KEY_DERIVATION_STRING_DATA(byte[] pData) {
        this.pData = pData;
        len = Bytes.length(pData);
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_KEY_DERIVATION_STRING_DATA[pData=" + Bytes.describe(pData) + ", len=" + len + "]";
    }
}
