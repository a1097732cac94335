// The parameter of signatures with Edwards curves.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_BBOOL;

/**
 * The parameter of {@code CKM_EDDSA} (PKCS#11 v3.0 Current Mechanisms, 2.3; v3.1, 6.3). Plain Ed25519 takes no
 * parameter; Ed25519ph, Ed25519ctx and Ed448 take one.
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.EDDSA, new CK_EDDSA_PARAMS(false, context))
 * }</pre>
 */
public class CK_EDDSA_PARAMS {
    /** Whether the data is hashed before it is signed (Ed25519ph, Ed448ph); null means false. */
    public CK_BBOOL phFlag = new CK_BBOOL();
    /**
     * The length of {@link #pContextData} in bytes; 0 if the array is not to be used. Any other value must
     * equal the length of the array: a different one aborts the process. With a null or empty array it is not
     * checked: the library gets a null pointer, or finds zeroes up to 64 KiB and crashes behind those.
     */
    public long ulContextDataLen;
    /** The context, at most 255 bytes, or null for none. */
    public byte[] pContextData;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_EDDSA_PARAMS() {
    }

    /**
     * Creates a parameter and sets each length to that of its array.
     *
     * @param phFlag       whether the data is hashed before it is signed
     * @param pContextData the context, at most 255 bytes, or null for none
     */
    public CK_EDDSA_PARAMS(boolean phFlag, byte[] pContextData) {
        this.phFlag.m_value = phFlag;
        ulContextDataLen = Bytes.length(pContextData);
        this.pContextData = pContextData;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_EDDSA_PARAMS[phFlag=" + phFlag + ", ulContextDataLen=" + ulContextDataLen
                + ", pContextData=" + Bytes.describe(pContextData) + "]";
    }
}
