// The parameter of AES in Galois/counter mode as older modules expect it.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_AES_GCM} without the length of the initialisation vector in bits, as modules
 * from before about 2020 may expect it (PKCS#11 v2.40 Current Mechanisms, 2.11). In C it is named
 * {@code CK_GCM_PARAMS} too.
 *
 * <p>Try {@link CK_GCM_PARAMS} first, and this class if the module refuses that one with
 * {@code CKR_MECHANISM_PARAM_INVALID} or {@code CKR_ARGUMENTS_BAD}. A module that expects the other structure
 * refuses this one in the same way.
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.AES_GCM, new CK_GCM_PARAMS_OLD(iv, aad, 128))
 * }</pre>
 */
public class CK_GCM_PARAMS_OLD {
    /** The initialisation vector, usually 12 bytes. Never use one twice with a key. */
    public byte[] pIv;
    /**
     * The length of {@link #pIv} in bytes. It must equal the length of the array, and 0 for null: any other
     * value aborts the process.
     */
    public long ulIvLen;
    /** The additional data, which is authenticated and not encrypted, or null for none. */
    public byte[] pAAD;
    /**
     * The length of {@link #pAAD} in bytes. It must equal the length of the array, and 0 for null: any other
     * value aborts the process.
     */
    public long ulAADLen;
    /**
     * The length of the authentication tag in bits, for example 128. The tag is the end of the encrypted
     * data.
     */
    public long ulTagBits;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_GCM_PARAMS_OLD() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param pIv       the initialisation vector, usually 12 bytes
     * @param pAAD      the additional data, or null for none
     * @param ulTagBits the length of the authentication tag in bits
     */
    public CK_GCM_PARAMS_OLD(byte[] pIv, byte[] pAAD, long ulTagBits) {
        this.pIv = pIv;
        ulIvLen = Bytes.length(pIv);
        this.pAAD = pAAD;
        ulAADLen = Bytes.length(pAAD);
        this.ulTagBits = ulTagBits;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_GCM_PARAMS_OLD[pIv=" + Bytes.describe(pIv) + ", ulIvLen=" + ulIvLen
                + ", pAAD=" + Bytes.describe(pAAD) + ", ulAADLen=" + ulAADLen
                + ", ulTagBits=" + ulTagBits + "]";
    }
}
