// The parameter of the SSL 3.0 derivation of keys and MAC keys.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_BBOOL;

/**
 * The parameter of {@code CKM_SSL3_KEY_AND_MAC_DERIVE} (PKCS#11 v2.20, chapter 12). After a successful
 * {@link halvorn.zerlin.Cryptoki#C_DeriveKey C_DeriveKey}, whose {@code phKey} may be null, the keys are in
 * {@link #pReturnedKeyMaterial}.
 */
public class CK_SSL3_KEY_MAT_PARAMS {
    /** The length of each MAC key in bits. */
    public long macSizeInBits;
    /** The length of each key in bits. */
    public long keySizeInBits;
    /** The length of each initialisation vector in bits; 0 for none. */
    public long IVSizeInBits;
    /** Whether the keys are for an export cipher; null means false. */
    public CK_BBOOL bIsExport = new CK_BBOOL();
    /**
     * The random data of client and server. If it is null, the library receives null pointers and lengths of
     * 0.
     */
    public CK_SSL3_RANDOM_DATA RandomInfo = new CK_SSL3_RANDOM_DATA();
    /**
     * Receives keys and initialisation vectors: an existing object, which is changed in place. If it is null,
     * the library receives a null pointer.
     */
    public CK_SSL3_KEY_MAT_OUT pReturnedKeyMaterial = new CK_SSL3_KEY_MAT_OUT();

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_SSL3_KEY_MAT_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param macSizeInBits the length of each MAC key in bits
     * @param keySizeInBits the length of each key in bits
     * @param IVSizeInBits  the length of each initialisation vector in bits; 0 for none
     * @param bIsExport     whether the keys are for an export cipher
     * @param pClientRandom the random data of the client
     * @param pServerRandom the random data of the server
     */
    public CK_SSL3_KEY_MAT_PARAMS(long macSizeInBits, long keySizeInBits, int IVSizeInBits, boolean bIsExport,
            byte[] pClientRandom, byte[] pServerRandom) {
        this.macSizeInBits = macSizeInBits;
        this.keySizeInBits = keySizeInBits;
        this.IVSizeInBits = IVSizeInBits;
        this.bIsExport.m_value = bIsExport;
        RandomInfo = new CK_SSL3_RANDOM_DATA(pClientRandom, pServerRandom);
        pReturnedKeyMaterial = new CK_SSL3_KEY_MAT_OUT((IVSizeInBits + 7) / 8);
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_SSL3_KEY_MAT_PARAMS[macSizeInBits=" + macSizeInBits
                + ", keySizeInBits=" + keySizeInBits + ", IVSizeInBits=" + IVSizeInBits
                + ", bIsExport=" + bIsExport + ", RandomInfo=" + RandomInfo
                + ", pReturnedKeyMaterial=" + pReturnedKeyMaterial + "]";
    }
}
