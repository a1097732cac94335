// The parameter of the PKCS#12 import.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.LongRef;

import java.util.Arrays;

/**
 * The parameter of {@code CKM_PKCS12_PBE_IMPORT}, a vendor mechanism that unwraps a PKCS#12 file. After a
 * successful {@link halvorn.zerlin.Cryptoki#C_UnwrapKey C_UnwrapKey} the handles of the certificates in the
 * file are in {@link #hCert}.
 */
public class CK_PKCS12_PBE_IMPORT_PARAMS {
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
    /**
     * The attributes that the certificates receive, or null for none. A null element reaches the library as
     * an attribute of type {@code CK_UNAVAILABLE_INFORMATION} without a value.
     */
    public CK_ATTRIBUTE[] certAttr;
    /**
     * The number of attributes in {@link #certAttr}. It is not checked and never aborts the process. Behind
     * a shorter array the library finds zeroes, up to 64 KiB, and crashes behind those.
     */
    public long certAttrCount;
    /**
     * Receives the handles of the certificates, written into its existing elements. What belongs to a null
     * element is lost.
     */
    public CK_OBJECT_HANDLE[] hCert;
    /**
     * In: the capacity of {@link #hCert} in elements, at most its length. It is not checked: handles
     * beyond the array are lost, and beyond 64 KiB the library crashes. With 0 the array is not used. Out:
     * the number of certificates in the file, which may be greater than the capacity. If this object is null,
     * the capacity is 0 and the number is lost.
     */
    public LongRef hCertCount = new LongRef();

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_PKCS12_PBE_IMPORT_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param passwordAuthSafe the password of the authenticated safe
     * @param passwordHMAC     the password of the integrity check
     * @param certAttr         the attributes that the certificates receive, or null for none
     * @param maxCerts         the greatest number of certificates whose handles can be received
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
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
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
