// The parameter of RSA PSS.
package halvorn.zerlin.params;

import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

/**
 * The parameter of {@code CKM_RSA_PKCS_PSS} and of the {@code CKM_..._RSA_PKCS_PSS} mechanisms (PKCS#11
 * v2.20, 12.1).
 */
public class CK_RSA_PKCS_PSS_PARAMS {
    /**
     * The hash function, for example {@code CKM_SHA_1}; null reaches the library as {@code
     * CK_UNAVAILABLE_INFORMATION}.
     */
    public CK_MECHANISM_TYPE hashAlg = new CK_MECHANISM_TYPE();
    /** The mask generation function, a value of {@link halvorn.zerlin.constants.CKG CKG}. */
    public long mgf;
    /** The length of the salt in bytes, usually that of the hash. */
    public long sLen;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_RSA_PKCS_PSS_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param hashAlg the hash function, a value of {@link halvorn.zerlin.constants.CKM CKM}
     * @param mgf     the mask generation function, a value of {@link halvorn.zerlin.constants.CKG CKG}
     * @param sLen    the length of the salt in bytes
     */
    public CK_RSA_PKCS_PSS_PARAMS(long hashAlg, long mgf, long sLen) {
        this.hashAlg = new CK_MECHANISM_TYPE(hashAlg);
        this.mgf = mgf;
        this.sLen = sLen;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_RSA_PKCS_PSS_PARAMS[hashAlg=" + hashAlg + ", mgf=" + mgf + ", sLen=" + sLen + "]";
    }
}
