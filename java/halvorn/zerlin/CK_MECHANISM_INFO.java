// What C_GetMechanismInfo says about a mechanism.
package halvorn.zerlin;

/**
 * Information on a mechanism (PKCS#11 v2.20, 9.5), filled by {@link Cryptoki#C_GetMechanismInfo}.
 */
public class CK_MECHANISM_INFO {
    /** The smallest size of a key. The mechanism defines whether it is in bits or in bytes. */
    public long minKeySize;
    /** The greatest size of a key, in the same unit. */
    public long maxKeySize;
    /** Bits such as {@code CKF_ENCRYPT}, see {@link halvorn.zerlin.constants.CKF CKF}. */
    public long flags;

    /** Creates a record for the native to fill. */
    public CK_MECHANISM_INFO() {
    }

    /**
     * Describes all fields; the flags by their names.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_MECHANISM_INFO[minKeySize=" + minKeySize + ", maxKeySize=" + maxKeySize
                + ", flags=" + Text.flags(flags, Text.MECHANISM_FLAGS) + "]";
    }
}
