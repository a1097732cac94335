// The parameter of the SSL 3.0 master key derivation.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_VERSION;

/**
 * The parameter of {@code CKM_SSL3_MASTER_KEY_DERIVE} (PKCS#11 v2.20, chapter 12).
 */
public class CK_SSL3_MASTER_KEY_DERIVE_PARAMS {
    /**
     * The random data of client and server. If it is null, the library receives null pointers and lengths of
     * 0.
     */
    public CK_SSL3_RANDOM_DATA RandomInfo = new CK_SSL3_RANDOM_DATA();
    /**
     * Receives the protocol version of the client: an existing object, which is changed in place. If it is
     * null, the library receives a null pointer.
     */
    public CK_VERSION pVersion = new CK_VERSION();

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_SSL3_MASTER_KEY_DERIVE_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param pClientRandom the random data of the client
     * @param pServerRandom the random data of the server
     */
    public CK_SSL3_MASTER_KEY_DERIVE_PARAMS(byte[] pClientRandom, byte[] pServerRandom) {
        RandomInfo = new CK_SSL3_RANDOM_DATA(pClientRandom, pServerRandom);
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_SSL3_MASTER_KEY_DERIVE_PARAMS[RandomInfo=" + RandomInfo + ", pVersion=" + pVersion + "]";
    }
}
