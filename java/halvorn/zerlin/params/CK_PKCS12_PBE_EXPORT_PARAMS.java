// The parameter of the PKCS#12 export.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

/**
 * The parameter of {@code CKM_PKCS12_PBE_EXPORT}, a vendor mechanism: wraps a key and its certificate as a
 * PKCS#12 file.
 */
public class CK_PKCS12_PBE_EXPORT_PARAMS {
    /** The certificate of the key. */
    public CK_OBJECT_HANDLE keyCert = new CK_OBJECT_HANDLE();
    /** The password of the authenticated safe. */
    public byte[] passwordAuthSafe;
    /**
     * The length of {@link #passwordAuthSafe} in bytes. Not checked: a greater one makes the library read
     * beyond the array.
     */
    public long passwordAuthSafeLen;
    /** The password of the integrity check. */
    public byte[] passwordHMAC;
    /**
     * The length of {@link #passwordHMAC} in bytes. Not checked: a greater one makes the library read beyond
     * the array.
     */
    public long passwordHMACLen;
    /** The mechanism that makes the key of the safe bags. */
    public CK_MECHANISM_TYPE safeBagKgMech = new CK_MECHANISM_TYPE();
    /** The mechanism that makes the key of the safe contents. */
    public CK_MECHANISM_TYPE safeContentKgMech = new CK_MECHANISM_TYPE();
    /** The mechanism that makes the key of the integrity check. */
    public CK_MECHANISM_TYPE hmacKgMech = new CK_MECHANISM_TYPE();

    /** Makes an empty parameter. */
    public CK_PKCS12_PBE_EXPORT_PARAMS() {
    }

    /**
     * Makes a parameter with the lengths that belong to its arrays.
     *
     * @param keyCert           the certificate of the key
     * @param passwordAuthSafe  the password of the authenticated safe
     * @param passwordHMAC      the password of the integrity check
     * @param safeBagKgMech     the mechanism that makes the key of the safe bags
     * @param safeContentKgMech the mechanism that makes the key of the safe contents
     * @param hmacKgMech        the mechanism that makes the key of the integrity check
     */
    public CK_PKCS12_PBE_EXPORT_PARAMS(CK_OBJECT_HANDLE keyCert, byte[] passwordAuthSafe, byte[] passwordHMAC,
            long safeBagKgMech, long safeContentKgMech, long hmacKgMech) {
        this.keyCert = keyCert;
        this.passwordAuthSafe = passwordAuthSafe;
        passwordAuthSafeLen = Bytes.length(passwordAuthSafe);
        this.passwordHMAC = passwordHMAC;
        passwordHMACLen = Bytes.length(passwordHMAC);
        this.safeBagKgMech = new CK_MECHANISM_TYPE(safeBagKgMech);
        this.safeContentKgMech = new CK_MECHANISM_TYPE(safeContentKgMech);
        this.hmacKgMech = new CK_MECHANISM_TYPE(hmacKgMech);
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_PKCS12_PBE_EXPORT_PARAMS[keyCert=" + keyCert
                + ", passwordAuthSafe=" + Bytes.describe(passwordAuthSafe)
                + ", passwordAuthSafeLen=" + passwordAuthSafeLen
                + ", passwordHMAC=" + Bytes.describe(passwordHMAC)
                + ", passwordHMACLen=" + passwordHMACLen + ", safeBagKgMech=" + safeBagKgMech
                + ", safeContentKgMech=" + safeContentKgMech + ", hmacKgMech=" + hmacKgMech + "]";
    }
}
