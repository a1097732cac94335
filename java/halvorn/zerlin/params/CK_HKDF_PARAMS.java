// The parameter of key derivation with HMAC.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_BBOOL;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

/**
 * The parameter of {@code CKM_HKDF_DERIVE} and {@code CKM_HKDF_DATA} (PKCS#11 v3.0 Current Mechanisms, 2.62;
 * v3.1, 6.62), the key derivation function of RFC 5869.
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.HKDF_DERIVE,
 *     new CK_HKDF_PARAMS(true, true, CKM.SHA256, CKF.HKDF_SALT_DATA, salt, null, info))
 * }</pre>
 */
public class CK_HKDF_PARAMS {
    /** Whether to extract, the first step of the function; null means false. */
    public CK_BBOOL bExtract = new CK_BBOOL();
    /** Whether to expand, the second step; null means false. */
    public CK_BBOOL bExpand = new CK_BBOOL();
    /**
     * The hash function, for example {@code CKM_SHA256}; null reaches the library as {@code
     * CK_UNAVAILABLE_INFORMATION}.
     */
    public CK_MECHANISM_TYPE prfHashMechanism = new CK_MECHANISM_TYPE();
    /**
     * Where the salt of the first step is: {@code CKF_HKDF_SALT_NULL}, {@code CKF_HKDF_SALT_DATA} or
     * {@code CKF_HKDF_SALT_KEY} of {@link halvorn.zerlin.constants.CKF CKF}.
     */
    public long ulSaltType;
    /** The salt, for {@code CKF_HKDF_SALT_DATA}; otherwise null. */
    public byte[] pSalt;
    /**
     * The length of {@link #pSalt} in bytes. It must equal the length of the array, and 0 for null: any other
     * value aborts the process.
     */
    public long ulSaltLen;
    /**
     * The key that is the salt, for {@code CKF_HKDF_SALT_KEY}; null reaches the library as {@code
     * CK_UNAVAILABLE_INFORMATION}.
     */
    public CK_OBJECT_HANDLE hSaltKey = new CK_OBJECT_HANDLE();
    /** The information of the second step, or null for none. */
    public byte[] pInfo;
    /**
     * The length of {@link #pInfo} in bytes. It must equal the length of the array, and 0 for null: any other
     * value aborts the process.
     */
    public long ulInfoLen;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_HKDF_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param bExtract         whether to extract
     * @param bExpand          whether to expand
     * @param prfHashMechanism the hash function, a value of {@link halvorn.zerlin.constants.CKM CKM}
     * @param ulSaltType       where the salt is
     * @param pSalt            the salt, or null
     * @param hSaltKey         the key that is the salt, or null
     * @param pInfo            the information of the second step, or null for none
     */
    public CK_HKDF_PARAMS(boolean bExtract, boolean bExpand, long prfHashMechanism, long ulSaltType,
            byte[] pSalt, CK_OBJECT_HANDLE hSaltKey, byte[] pInfo) {
        this.bExtract.m_value = bExtract;
        this.bExpand.m_value = bExpand;
        this.prfHashMechanism = new CK_MECHANISM_TYPE(prfHashMechanism);
        this.ulSaltType = ulSaltType;
        this.pSalt = pSalt;
        ulSaltLen = Bytes.length(pSalt);
        this.hSaltKey = hSaltKey;
        this.pInfo = pInfo;
        ulInfoLen = Bytes.length(pInfo);
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_HKDF_PARAMS[bExtract=" + bExtract + ", bExpand=" + bExpand
                + ", prfHashMechanism=" + prfHashMechanism + ", ulSaltType=" + ulSaltType
                + ", pSalt=" + Bytes.describe(pSalt) + ", ulSaltLen=" + ulSaltLen
                + ", hSaltKey=" + hSaltKey + ", pInfo=" + Bytes.describe(pInfo)
                + ", ulInfoLen=" + ulInfoLen + "]";
    }
}
