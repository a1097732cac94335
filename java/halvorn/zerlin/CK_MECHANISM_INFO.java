// What C_GetMechanismInfo tells about a mechanism.
package halvorn.zerlin;

/**
 * Information on a mechanism (PKCS#11 v2.20, 9.5), filled by {@link Cryptoki#C_GetMechanismInfo}.
 */
public class CK_MECHANISM_INFO {
    /** The least key size, in bits or bytes as the mechanism has it. */
    public long minKeySize;
    /** The greatest key size, in the same unit. */
    public long maxKeySize;
    /** Bits such as {@code CKF_ENCRYPT}, see {@link halvorn.zerlin.constants.CKF CKF}. */
    public long flags;

    /** Makes a record for the native to fill. */
    public CK_MECHANISM_INFO() {
    }

    /**
     * Tells all fields.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_MECHANISM_INFO[minKeySize=" + minKeySize + ", maxKeySize=" + maxKeySize
                + ", flags=" + Text.flags(flags) + "]";
    }
}
