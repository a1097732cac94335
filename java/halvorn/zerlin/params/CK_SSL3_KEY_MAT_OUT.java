// What the SSL 3.0 derivation of keys and MAC keys returns.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_OBJECT_HANDLE;

/**
 * The keys and initialisation vectors that an SSL 3.0 key derivation returns, a part of
 * {@link CK_SSL3_KEY_MAT_PARAMS} (PKCS#11 v2.20, chapter 12). Objects and arrays are changed in place. A
 * handle whose object is null is lost.
 */
public class CK_SSL3_KEY_MAT_OUT {
    /** Receives the handle of the MAC key of the client. */
    public CK_OBJECT_HANDLE hClientMacSecret = new CK_OBJECT_HANDLE();
    /** Receives the handle of the MAC key of the server. */
    public CK_OBJECT_HANDLE hServerMacSecret = new CK_OBJECT_HANDLE();
    /** Receives the handle of the key of the client. */
    public CK_OBJECT_HANDLE hClientKey = new CK_OBJECT_HANDLE();
    /** Receives the handle of the key of the server. */
    public CK_OBJECT_HANDLE hServerKey = new CK_OBJECT_HANDLE();
    /**
     * Receives the initialisation vector of the client; null only if {@code IVSizeInBits} is 0. The array
     * must have at least ({@code IVSizeInBits} + 7) / 8 bytes: a shorter one receives only a part.
     */
    public byte[] pIVClient;
    /**
     * Receives the initialisation vector of the server; null only if {@code IVSizeInBits} is 0. The array
     * must have at least ({@code IVSizeInBits} + 7) / 8 bytes: a shorter one receives only a part.
     */
    public byte[] pIVServer;

    /** Creates a part of a parameter whose fields are to be set one by one. */
    public CK_SSL3_KEY_MAT_OUT() {
    }

    /**
     * Creates a part of a parameter.
     *
     * @param ivLength the length of each initialisation vector in bytes
     */
    public CK_SSL3_KEY_MAT_OUT(int ivLength) {
        pIVClient = new byte[ivLength];
        pIVServer = new byte[ivLength];
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_SSL3_KEY_MAT_OUT[hClientMacSecret=" + hClientMacSecret
                + ", hServerMacSecret=" + hServerMacSecret + ", hClientKey=" + hClientKey
                + ", hServerKey=" + hServerKey + ", pIVClient=" + Bytes.describe(pIVClient)
                + ", pIVServer=" + Bytes.describe(pIVServer) + "]";
    }
}
