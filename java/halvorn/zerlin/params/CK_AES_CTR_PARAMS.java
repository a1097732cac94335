// The parameter of AES in counter mode.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_AES_CTR} (PKCS#11 v3.0 Current Mechanisms, 2.11; v3.1, 6.11).
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.AES_CTR, new CK_AES_CTR_PARAMS(32, block))
 * }</pre>
 */
public class CK_AES_CTR_PARAMS {
    /**
     * How many of the last bits of the block count, for example 32 or 128. They bound how much can be
     * encrypted.
     */
    public long ulCounterBits;
    /**
     * The first counter block, 16 bytes: a nonce, and the counter. Never use one twice with a key. Missing
     * bytes are 0, all of them if the array is null; the rest of a longer array is ignored.
     */
    public byte[] cb;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_AES_CTR_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param ulCounterBits how many of the last bits of the block count
     * @param cb            the first counter block, 16 bytes
     */
    public CK_AES_CTR_PARAMS(long ulCounterBits, byte[] cb) {
        this.ulCounterBits = ulCounterBits;
        this.cb = cb;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_AES_CTR_PARAMS[ulCounterBits=" + ulCounterBits + ", cb=" + Bytes.describe(cb) + "]";
    }
}
