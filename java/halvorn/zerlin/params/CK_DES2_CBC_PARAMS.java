// The parameter for deriving a key by encrypting 16 bytes of data in CBC mode.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_DES3_DERIVE_CBC}, a vendor mechanism that derives a key: the new key is the 16
 * bytes of {@link #data}, encrypted in CBC mode.
 */
public class CK_DES2_CBC_PARAMS {
    /**
     * The initialisation vector, 8 bytes. Missing bytes are 0, all of them if the array is null; the rest of
     * a longer array is ignored.
     */
    public byte[] iv;
    /**
     * The data, 16 bytes. Missing bytes are 0, all of them if the array is null; the rest of a longer array
     * is ignored.
     */
    public byte[] data;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_DES2_CBC_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param iv   the initialisation vector, 8 bytes
     * @param data the data, 16 bytes
     */
    public CK_DES2_CBC_PARAMS(byte[] iv, byte[] data) {
        this.iv = iv;
        this.data = data;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_DES2_CBC_PARAMS[iv=" + Bytes.describe(iv) + ", data=" + Bytes.describe(data) + "]";
    }
}
