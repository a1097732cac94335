// The parameter of the PKCS#12 import.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.LongRef;

import java.util.Arrays;

/**
 * The parameter of {@code CKM_PKCS12_PBE_IMPORT}, a vendor mechanism: unwraps a PKCS#12 file. After a
 * successful {@link halvorn.zerlin.Cryptoki#C_UnwrapKey C_UnwrapKey} the certificates found are in
 * {@link #hCert}.
 */
public class CK_PKCS12_PBE_IMPORT_PARAMS {
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
    /** The attributes for the certificates, no element null; null for none. */
    public CK_ATTRIBUTE[] certAttr;
    /**
     * The number of attributes to use. Not checked: more than {@link #certAttr} has make the library read
     * beyond it.
     */
    public long certAttrCount;
    /** Receives the handles of the certificates: existing objects, changed in place. */
    public CK_OBJECT_HANDLE[] hCert;
    /**
     * In: the capacity of {@link #hCert} in elements, at most its length (not checked); with 0 the array is
     * not looked at. Out: the number of certificates found, which may be more than fit. Never null.
     */
    public LongRef hCertCount = new LongRef();

    /** Makes an empty parameter. */
    public CK_PKCS12_PBE_IMPORT_PARAMS() {
    }

    /**
     * Makes a parameter with the lengths that belong to its arrays.
     *
     * @param passwordAuthSafe the password of the authenticated safe
     * @param passwordHMAC     the password of the integrity check
     * @param certAttr         the attributes for the certificates, or null for none
     * @param maxCerts         how many certificates to make room for
     */
    public CK_PKCS12_PBE_IMPORT_PARAMS(byte[] passwordAuthSafe, byte[] passwordHMAC, CK_ATTRIBUTE[] certAttr,
            int maxCerts) {
        this.passwordAuthSafe = passwordAuthSafe;
        passwordAuthSafeLen = Bytes.length(passwordAuthSafe);
        this.passwordHMAC = passwordHMAC;
        passwordHMACLen = Bytes.length(passwordHMAC);
        this.certAttr = certAttr;
        certAttrCount = certAttr == null ? 0 : certAttr.length;
        hCert = CK_OBJECT_HANDLE.array(maxCerts);
        hCertCount.value = maxCerts;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_PKCS12_PBE_IMPORT_PARAMS[passwordAuthSafe=" + Bytes.describe(passwordAuthSafe)
                + ", passwordAuthSafeLen=" + passwordAuthSafeLen
                + ", passwordHMAC=" + Bytes.describe(passwordHMAC)
                + ", passwordHMACLen=" + passwordHMACLen
                + ", certAttr=" + (certAttr == null ? 0 : certAttr.length)
                + ", certAttrCount=" + certAttrCount + ", hCert=" + Arrays.toString(hCert)
                + ", hCertCount=" + hCertCount + "]";
    }
}
