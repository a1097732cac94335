// What C_GetSessionInfo tells about a session.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_STATE;

/**
 * Information on a session (PKCS#11 v2.20, 9.3), filled by {@link Cryptoki#C_GetSessionInfo}.
 */
public class CK_SESSION_INFO {
    /** The slot of the session's token. */
    public long slotID;
    /** The session's state. The native writes into this object, so it must not be null. */
    public CK_STATE state = new CK_STATE();
    /** Bits such as {@code CKF_RW_SESSION}, see {@link halvorn.zerlin.constants.CKF CKF}. */
    public long flags;
    /** An error code of the device, 0 for none. */
    public long deviceError;

    /** Makes a record for the native to fill. */
    public CK_SESSION_INFO() {
    }

    /**
     * Tells all fields.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_SESSION_INFO[slotID=" + slotID + ", state=" + state + ", flags=" + Text.flags(flags)
                + ", deviceError=" + deviceError + "]";
    }
}
