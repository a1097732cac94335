// The parameter of the PKCS#12 export.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

/**
 * The parameter of {@code CKM_PKCS12_PBE_EXPORT}, a vendor mechanism that wraps a key and its certificate as
 * a PKCS#12 file.
 */
public class CK_PKCS12_PBE_EXPORT_PARAMS {
    /**
     * The handle of the certificate of the key; null reaches the library as {@code
     * CK_UNAVAILABLE_INFORMATION}.
     */
    public CK_OBJECT_HANDLE keyCert = new CK_OBJECT_HANDLE();
    /** The password of the authenticated safe, the part of the file that contains keys and certificates. */
    public byte[] passwordAuthSafe;
    /**
     * The length of {@link #passwordAuthSafe} in bytes. It is not checked and never aborts the process.
     * Behind a shorter array the library finds zeroes, up to 64 KiB, and crashes behind those.
     */
    public long passwordAuthSafeLen;
    /** The password of the integrity check, an HMAC. */
    public byte[] passwordHMAC;
    /**
     * The length of {@link #passwordHMAC} in bytes. It is not checked and never aborts the process. Behind
     * a shorter array the library finds zeroes, up to 64 KiB, and crashes behind those.
     */
    public long passwordHMACLen;
    /** The mechanism that generates the key for the safe bags. */
    public CK_MECHANISM_TYPE safeBagKgMech = new CK_MECHANISM_TYPE();
    /** The mechanism that generates the key for the safe contents. */
    public CK_MECHANISM_TYPE safeContentKgMech = new CK_MECHANISM_TYPE();
    /** The mechanism that generates the key for the integrity check. */
    public CK_MECHANISM_TYPE hmacKgMech = new CK_MECHANISM_TYPE();

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_PKCS12_PBE_EXPORT_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param keyCert           the handle of the certificate of the key
     * @param passwordAuthSafe  the password of the authenticated safe
     * @param passwordHMAC      the password of the integrity check
     * @param safeBagKgMech     the mechanism that generates the key for the safe bags, a value of
     *                          {@link halvorn.zerlin.constants.CKM CKM}
     * @param safeContentKgMech the mechanism that generates the key for the safe contents, a value of
     *                          {@link halvorn.zerlin.constants.CKM CKM}
     * @param hmacKgMech        the mechanism that generates the key for the integrity check, a value of
     *                          {@link halvorn.zerlin.constants.CKM CKM}
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
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
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
