// The parameter for wrapping a key with SET OAEP.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_KEY_WRAP_SET_OAEP} (PKCS#11 v2.20, chapter 12). A successful
 * {@link halvorn.zerlin.Cryptoki#C_UnwrapKey C_UnwrapKey} writes {@link #XLen} and writes into {@link #pX}.
 */
public class CK_KEY_WRAP_SET_OAEP_PARAMS {
    /** The block contents byte, which says what the block contains. */
    public byte bBC;
    /**
     * The hash of the plain text, followed by the extra data; null if there is neither. {@code C_UnwrapKey}
     * writes into this array up to its length.
     */
    public byte[] pX;
    /**
     * In: the length of {@link #pX} in bytes. It must equal the length of the array, and 0 for null: any
     * other value aborts the process. Out: the length that the library reports. If it differs from the length
     * of the array, create a new object for the next use.
     */
    public long XLen;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_KEY_WRAP_SET_OAEP_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param bBC the block contents byte, 0 to 255
     * @param pX  the hash of the plain text, followed by the extra data; or an array that receives them; or
     *            null
     */
    public CK_KEY_WRAP_SET_OAEP_PARAMS(int bBC, byte[] pX) {
        this.bBC = (byte) bBC;
        this.pX = pX;
        XLen = Bytes.length(pX);
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_KEY_WRAP_SET_OAEP_PARAMS[bBC=" + bBC + ", pX=" + Bytes.describe(pX)
                + ", XLen=" + XLen + "]";
    }
}
