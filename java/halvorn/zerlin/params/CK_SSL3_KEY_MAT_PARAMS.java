// The parameter of the SSL 3.0 key and MAC derivation.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_BBOOL;

/**
 * The parameter of {@code CKM_SSL3_KEY_AND_MAC_DERIVE} (PKCS#11 v2.20, chapter 12). After a successful
 * {@link halvorn.zerlin.Cryptoki#C_DeriveKey C_DeriveKey}, whose {@code phKey} may be null, the keys are in
 * {@link #pReturnedKeyMaterial}.
 */
public class CK_SSL3_KEY_MAT_PARAMS {
    /** The length of the MAC keys in bits. */
    public long macSizeInBits;
    /** The length of the keys in bits. */
    public long keySizeInBits;
    /** The length of the initialisation vectors in bits, 0 for none. */
    public long IVSizeInBits;
    /** Whether keys for an export cipher are derived. */
    public CK_BBOOL bIsExport = new CK_BBOOL();
    /** The random data of client and server. Never null. */
    public CK_SSL3_RANDOM_DATA RandomInfo = new CK_SSL3_RANDOM_DATA();
    /** Receives keys and initialisation vectors: an existing object, changed in place. Never null. */
    public CK_SSL3_KEY_MAT_OUT pReturnedKeyMaterial = new CK_SSL3_KEY_MAT_OUT();

    /** Makes an empty parameter. */
    public CK_SSL3_KEY_MAT_PARAMS() {
    }

    /**
     * Makes a parameter.
     *
     * @param macSizeInBits the length of the MAC keys in bits
     * @param keySizeInBits the length of the keys in bits
     * @param IVSizeInBits  the length of the initialisation vectors in bits, 0 for none
     * @param bIsExport     whether keys for an export cipher are derived
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
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_SSL3_KEY_MAT_PARAMS[macSizeInBits=" + macSizeInBits
                + ", keySizeInBits=" + keySizeInBits + ", IVSizeInBits=" + IVSizeInBits
                + ", bIsExport=" + bIsExport + ", RandomInfo=" + RandomInfo
                + ", pReturnedKeyMaterial=" + pReturnedKeyMaterial + "]";
    }
}
