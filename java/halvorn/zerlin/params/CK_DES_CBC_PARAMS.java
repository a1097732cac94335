// The parameter of key derivation by encryption in CBC mode, 8 bytes of data.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_DES_DERIVE_CBC}, a vendor mechanism: the derived key is 8 bytes of data
 * encrypted in CBC mode.
 */
public class CK_DES_CBC_PARAMS {
    /** The initialisation vector, 8 bytes; the rest of a shorter one is zero, of a longer one ignored. */
    public byte[] iv;
    /** The data, 8 bytes; the rest of a shorter array is zero, of a longer one ignored. */
    public byte[] data;

    /** Makes an empty parameter. */
    public CK_DES_CBC_PARAMS() {
    }

    /**
     * Makes a parameter.
     *
     * @param iv   the initialisation vector, 8 bytes
     * @param data the data, 8 bytes
     */
    public CK_DES_CBC_PARAMS(byte[] iv, byte[] data) {
        this.iv = iv;
        this.data = data;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_DES_CBC_PARAMS[iv=" + Bytes.describe(iv) + ", data=" + Bytes.describe(data) + "]";
    }
}
