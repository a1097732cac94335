// The parameter of password-based key generation.
package halvorn.zerlin.params;

/**
 * The parameter of the {@code CKM_PBE_...} mechanisms and of {@code CKM_PBA_SHA1_WITH_SHA1_HMAC} (PKCS#11
 * v2.20, chapter 12).
 */
public class CK_PBE_PARAMS {
    /**
     * Receives the initialisation vector that the key generation makes: 8 bytes, never fewer, or null for
     * none. A shorter array makes the library write beyond its memory.
     */
    public byte[] pInitVector = new byte[8];
    /** The password. */
    public byte[] pPassword;
    /**
     * The length of {@link #pPassword} in bytes; must equal that of the array, otherwise the process is
     * aborted.
     */
    public long passwordLen;
    /** The salt. */
    public byte[] pSalt;
    /**
     * The length of {@link #pSalt} in bytes; must equal that of the array, otherwise the process is aborted.
     */
    public long saltLen;
    /** The number of iterations. */
    public long iteration;

    /** Makes an empty parameter. */
    public CK_PBE_PARAMS() {
    }

    /**
     * Makes a parameter with the lengths that belong to its arrays.
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
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_PBE_PARAMS[pInitVector=" + Bytes.describe(pInitVector)
                + ", pPassword=" + Bytes.describe(pPassword) + ", passwordLen=" + passwordLen
                + ", pSalt=" + Bytes.describe(pSalt) + ", saltLen=" + saltLen
                + ", iteration=" + iteration + "]";
    }
}
