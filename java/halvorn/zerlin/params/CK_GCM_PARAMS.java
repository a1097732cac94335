// The parameter of AES in Galois/counter mode.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_AES_GCM} (PKCS#11 v3.0 Current Mechanisms, 2.13; v3.1, 6.13).
 *
 * <p>Text and header of PKCS#11 v2.40 disagree about {@link #ulIvBits}, and modules from before about 2020 may
 * expect the structure without it. Such a module returns {@code CKR_MECHANISM_PARAM_INVALID} or
 * {@code CKR_ARGUMENTS_BAD} from {@link halvorn.zerlin.Cryptoki#C_EncryptInit C_EncryptInit}: take
 * {@link CK_GCM_PARAMS_OLD} then.
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.AES_GCM, new CK_GCM_PARAMS(iv, aad, 128))
 * }</pre>
 */
public class CK_GCM_PARAMS {
    /** The initialisation vector, usually 12 bytes. Never use one twice with a key. */
    public byte[] pIv;
    /**
     * The length of {@link #pIv} in bytes. It must equal the length of the array, and 0 for null: any other
     * value aborts the process.
     */
    public long ulIvLen;
    /**
     * The length of {@link #pIv} in bits. Most modules ignore it; others expect 8 times the length in
     * bytes.
     */
    public long ulIvBits;
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
    public CK_GCM_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param pIv       the initialisation vector, usually 12 bytes
     * @param pAAD      the additional data, or null for none
     * @param ulTagBits the length of the authentication tag in bits
     */
    public CK_GCM_PARAMS(byte[] pIv, byte[] pAAD, long ulTagBits) {
        this.pIv = pIv;
        ulIvLen = Bytes.length(pIv);
        ulIvBits = 8 * ulIvLen;
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
        return "CK_GCM_PARAMS[pIv=" + Bytes.describe(pIv) + ", ulIvLen=" + ulIvLen
                + ", ulIvBits=" + ulIvBits + ", pAAD=" + Bytes.describe(pAAD) + ", ulAADLen=" + ulAADLen
                + ", ulTagBits=" + ulTagBits + "]";
    }
}
