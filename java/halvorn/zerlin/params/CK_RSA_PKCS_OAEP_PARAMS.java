// The parameter of RSA OAEP.
package halvorn.zerlin.params;

import halvorn.zerlin.constants.CKZ;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_RSA_PKCS_OAEP_SOURCE_TYPE;

/**
 * The parameter of {@code CKM_RSA_PKCS_OAEP} (PKCS#11 v2.20, 12.1).
 */
public class CK_RSA_PKCS_OAEP_PARAMS {
    /**
     * The hash function, for example {@code CKM_SHA_1}; null reaches the library as {@code
     * CK_UNAVAILABLE_INFORMATION}.
     */
    public CK_MECHANISM_TYPE hashAlg = new CK_MECHANISM_TYPE();
    /** The mask generation function, a value of {@link halvorn.zerlin.constants.CKG CKG}. */
    public long mgf;
    /**
     * The source of the encoding parameter: {@code CKZ_DATA_SPECIFIED}; null reaches the library as
     * {@code CK_UNAVAILABLE_INFORMATION}.
     */
    public CK_RSA_PKCS_OAEP_SOURCE_TYPE source = new CK_RSA_PKCS_OAEP_SOURCE_TYPE(CKZ.DATA_SPECIFIED);
    /** The encoding parameter (the label), or null for an empty one. */
    public byte[] pSourceData;
    /**
     * The length of {@link #pSourceData} in bytes. It must equal the length of the array, and 0 for null: any
     * other value aborts the process.
     */
    public long sourceDataLen;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_RSA_PKCS_OAEP_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param hashAlg     the hash function, a value of {@link halvorn.zerlin.constants.CKM CKM}
     * @param mgf         the mask generation function, a value of {@link halvorn.zerlin.constants.CKG CKG}
     * @param pSourceData the encoding parameter (the label), or null for an empty one
     */
    public CK_RSA_PKCS_OAEP_PARAMS(long hashAlg, long mgf, byte[] pSourceData) {
        this.hashAlg = new CK_MECHANISM_TYPE(hashAlg);
        this.mgf = mgf;
        this.pSourceData = pSourceData;
        sourceDataLen = Bytes.length(pSourceData);
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_RSA_PKCS_OAEP_PARAMS[hashAlg=" + hashAlg + ", mgf=" + mgf + ", source=" + source
                + ", pSourceData=" + Bytes.describe(pSourceData) + ", sourceDataLen=" + sourceDataLen + "]";
    }
}
