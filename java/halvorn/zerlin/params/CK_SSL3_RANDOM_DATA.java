// The random data of an SSL 3.0 or TLS handshake.
package halvorn.zerlin.params;

/**
 * The random data of client and server, a part of the SSL 3.0 parameters (PKCS#11 v2.20, chapter 12); no
 * parameter by itself.
 */
public class CK_SSL3_RANDOM_DATA {
    /** The random data of the client. */
    public byte[] pClientRandom;
    /**
     * The length of {@link #pClientRandom} in bytes; must equal that of the array, otherwise the process is
     * aborted.
     */
    public long clientRandomLen;
    /** The random data of the server. */
    public byte[] pServerRandom;
    /**
     * The length of {@link #pServerRandom} in bytes; must equal that of the array, otherwise the process is
     * aborted.
     */
    public long serverRandomLen;

    /** Makes an empty part of a parameter. */
    public CK_SSL3_RANDOM_DATA() {
    }

    /**
     * Makes a part of a parameter with the lengths that belong to its arrays.
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
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_SSL3_RANDOM_DATA[pClientRandom=" + Bytes.describe(pClientRandom)
                + ", clientRandomLen=" + clientRandomLen
                + ", pServerRandom=" + Bytes.describe(pServerRandom)
                + ", serverRandomLen=" + serverRandomLen + "]";
    }
}
