// What the SSL 3.0 key and MAC derivation gives back.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_OBJECT_HANDLE;

/**
 * The keys and initialisation vectors of an SSL 3.0 key derivation, a part of {@link CK_SSL3_KEY_MAT_PARAMS}
 * (PKCS#11 v2.20, chapter 12). All of it is changed in place, so none of the handles may be null.
 */
public class CK_SSL3_KEY_MAT_OUT {
    /** Receives the MAC key of the client. */
    public CK_OBJECT_HANDLE hClientMacSecret = new CK_OBJECT_HANDLE();
    /** Receives the MAC key of the server. */
    public CK_OBJECT_HANDLE hServerMacSecret = new CK_OBJECT_HANDLE();
    /** Receives the key of the client. */
    public CK_OBJECT_HANDLE hClientKey = new CK_OBJECT_HANDLE();
    /** Receives the key of the server. */
    public CK_OBJECT_HANDLE hServerKey = new CK_OBJECT_HANDLE();
    /**
     * Receives the IV of the client. The array must have at least (IVSizeInBits + 7) / 8 bytes: the library
     * writes as many, beyond the memory of a shorter one.
     */
    public byte[] pIVClient;
    /** Receives the IV of the server; as long as that of the client. */
    public byte[] pIVServer;

    /** Makes an empty part of a parameter. */
    public CK_SSL3_KEY_MAT_OUT() {
    }

    /**
     * Makes a part of a parameter.
     *
     * @param ivLength the length of each initialisation vector in bytes
     */
    public CK_SSL3_KEY_MAT_OUT(int ivLength) {
        pIVClient = new byte[ivLength];
        pIVServer = new byte[ivLength];
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_SSL3_KEY_MAT_OUT[hClientMacSecret=" + hClientMacSecret
                + ", hServerMacSecret=" + hServerMacSecret + ", hClientKey=" + hClientKey
                + ", hServerKey=" + hServerKey + ", pIVClient=" + Bytes.describe(pIVClient)
                + ", pIVServer=" + Bytes.describe(pIVServer) + "]";
    }
}
