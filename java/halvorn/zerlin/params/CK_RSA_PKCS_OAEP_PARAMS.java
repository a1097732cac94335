// The parameter of RSA OAEP.
package halvorn.zerlin.params;

import halvorn.zerlin.constants.CKZ;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_RSA_PKCS_OAEP_SOURCE_TYPE;

/**
 * The parameter of {@code CKM_RSA_PKCS_OAEP} (PKCS#11 v2.20, 12.1).
 */
public class CK_RSA_PKCS_OAEP_PARAMS {
    /** The hash, for example {@code CKM_SHA_1}. */
    public CK_MECHANISM_TYPE hashAlg = new CK_MECHANISM_TYPE();
    /** The mask generation function, a value of {@link halvorn.zerlin.constants.CKG CKG}. */
    public long mgf;
    /** Where the encoding parameter comes from: {@code CKZ_DATA_SPECIFIED}. */
    public CK_RSA_PKCS_OAEP_SOURCE_TYPE source = new CK_RSA_PKCS_OAEP_SOURCE_TYPE(CKZ.DATA_SPECIFIED);
    /** The encoding parameter (the label), or null for an empty one. */
    public byte[] pSourceData;
    /**
     * The length of {@link #pSourceData} in bytes; must equal that of the array, otherwise the process is
     * aborted.
     */
    public long sourceDataLen;

    /** Makes an empty parameter. */
    public CK_RSA_PKCS_OAEP_PARAMS() {
    }

    /**
     * Makes a parameter with the lengths that belong to its arrays.
     *
     * @param hashAlg     the hash, a value of {@link halvorn.zerlin.constants.CKM CKM}
     * @param mgf         the mask generation function, a value of {@link halvorn.zerlin.constants.CKG CKG}
     * @param pSourceData the encoding parameter, or null for an empty one
     */
    public CK_RSA_PKCS_OAEP_PARAMS(long hashAlg, long mgf, byte[] pSourceData) {
        this.hashAlg = new CK_MECHANISM_TYPE(hashAlg);
        this.mgf = mgf;
        this.pSourceData = pSourceData;
        sourceDataLen = Bytes.length(pSourceData);
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_RSA_PKCS_OAEP_PARAMS[hashAlg=" + hashAlg + ", mgf=" + mgf + ", source=" + source
                + ", pSourceData=" + Bytes.describe(pSourceData) + ", sourceDataLen=" + sourceDataLen + "]";
    }
}
