// The parameter for generating a key from a password.
package halvorn.zerlin.params;

/**
 * The parameter of the {@code CKM_PBE_...} mechanisms and of {@code CKM_PBA_SHA1_WITH_SHA1_HMAC} (PKCS#11
 * v2.20, chapter 12).
 */
public class CK_PBE_PARAMS {
    /**
     * Receives the initialisation vector that the library generates with the key; null for none. An array
     * must have at least 8 bytes: a shorter one receives only a part.
     */
    public byte[] pInitVector = new byte[8];
    /** The password. */
    public byte[] pPassword;
    /**
     * The length of {@link #pPassword} in bytes. It must equal the length of the array, and 0 for null: any
     * other value aborts the process.
     */
    public long passwordLen;
    /** The salt. */
    public byte[] pSalt;
    /**
     * The length of {@link #pSalt} in bytes. It must equal the length of the array, and 0 for null: any other
     * value aborts the process.
     */
    public long saltLen;
    /** The number of iterations. */
    public long iteration;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_PBE_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param pPassword the password
     * @param pSalt     the salt
     * @param iteration the number of iterations
     */
    public CK_PBE_PARAMS(byte[] pPassword, byte[] pSalt, long iteration) {
        this.pPassword = pPassword;
        passwordLen = Bytes.length(pPassword);
        this.pSalt = pSalt;
        saltLen = Bytes.length(pSalt);
        this.iteration = iteration;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_PBE_PARAMS[pInitVector=" + Bytes.describe(pInitVector)
                + ", pPassword=" + Bytes.describe(pPassword) + ", passwordLen=" + passwordLen
                + ", pSalt=" + Bytes.describe(pSalt) + ", saltLen=" + saltLen
                + ", iteration=" + iteration + "]";
    }
}
