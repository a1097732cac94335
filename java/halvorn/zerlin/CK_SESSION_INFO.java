// What C_GetSessionInfo says about a session.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_STATE;

/**
 * Information on a session (PKCS#11 v2.20, 9.3), filled by {@link Cryptoki#C_GetSessionInfo}.
 */
public class CK_SESSION_INFO {
    /** The slot that contains the token of the session. */
    public long slotID;
    /** The state of the session. The native writes into this object; if it is null, the state is lost. */
    public CK_STATE state = new CK_STATE();
    /** Bits such as {@code CKF_RW_SESSION}, see {@link halvorn.zerlin.constants.CKF CKF}. */
    public long flags;
    /** An error code that the token defines; 0 for none. */
    public long deviceError;

    /** Creates a record for the native to fill. */
    public CK_SESSION_INFO() {
    }

    /**
     * Describes all fields; the flags by their names.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_SESSION_INFO[slotID=" + slotID + ", state=" + state
                + ", flags=" + Text.flags(flags, Text.SESSION_FLAGS) + ", deviceError=" + deviceError + "]";
    }
}
