// The random data of an SSL 3.0 or TLS handshake.
package halvorn.zerlin.params;

/**
 * The random data of client and server, a part of the SSL 3.0 parameters (PKCS#11 v2.20, chapter 12). It is
 * not a parameter by itself.
 */
public class CK_SSL3_RANDOM_DATA {
    /** The random data of the client. */
    public byte[] pClientRandom;
    /**
     * The length of {@link #pClientRandom} in bytes. It must equal the length of the array, and 0 for null:
     * any other value aborts the process.
     */
    public long clientRandomLen;
    /** The random data of the server. */
    public byte[] pServerRandom;
    /**
     * The length of {@link #pServerRandom} in bytes. It must equal the length of the array, and 0 for null:
     * any other value aborts the process.
     */
    public long serverRandomLen;

    /** Creates a part of a parameter whose fields are to be set one by one. */
    public CK_SSL3_RANDOM_DATA() {
    }

    /**
     * Creates a part of a parameter and sets each length to that of its array.
     *
     * @param pClientRandom the random data of the client
     * @param pServerRandom the random data of the server
     */
    public CK_SSL3_RANDOM_DATA(byte[] pClientRandom, byte[] pServerRandom) {
        this.pClientRandom = pClientRandom;
        clientRandomLen = Bytes.length(pClientRandom);
        this.pServerRandom = pServerRandom;
        serverRandomLen = Bytes.length(pServerRandom);
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_SSL3_RANDOM_DATA[pClientRandom=" + Bytes.describe(pClientRandom)
                + ", clientRandomLen=" + clientRandomLen
                + ", pServerRandom=" + Bytes.describe(pServerRandom)
                + ", serverRandomLen=" + serverRandomLen + "]";
    }
}
