// The parameter of the SET OAEP key wrap.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_KEY_WRAP_SET_OAEP} (PKCS#11 v2.20, chapter 12). A successful
 * {@link halvorn.zerlin.Cryptoki#C_UnwrapKey C_UnwrapKey} writes {@link #pX} and {@link #XLen}.
 */
public class CK_KEY_WRAP_SET_OAEP_PARAMS {
    /** The block contents byte. */
    public byte bBC;
    /**
     * The hash of the plain text and the extra data, one after the other; null for neither. Filled in place,
     * as far as it is long.
     */
    public byte[] pX;
    /**
     * In: the length of {@link #pX} in bytes; must equal that of the array, otherwise the process is aborted.
     * Out: the length that the library reports; when that is another, make a new object for the next use.
     */
    public long XLen;

    /** Makes an empty parameter. */
    public CK_KEY_WRAP_SET_OAEP_PARAMS() {
    }

    /**
     * Makes a parameter with the lengths that belong to its arrays.
     *
     * @param bBC the block contents byte
     * @param pX  the hash of the plain text and the extra data, or an array to receive them, or null
     */
    public CK_KEY_WRAP_SET_OAEP_PARAMS(int bBC, byte[] pX) {
        this.bBC = (byte) bBC;
        this.pX = pX;
        XLen = Bytes.length(pX);
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_KEY_WRAP_SET_OAEP_PARAMS[bBC=" + bBC + ", pX=" + Bytes.describe(pX)
                + ", XLen=" + XLen + "]";
    }
}
