// What C_GetSlotInfo says about a slot.
package halvorn.zerlin;

/**
 * Information on a slot (PKCS#11 v2.20, 9.2), filled by {@link Cryptoki#C_GetSlotInfo}. The native replaces
 * the arrays and the versions by new ones.
 */
public class CK_SLOT_INFO {
    /** The description of the slot: 64 bytes, UTF-8, padded with blanks. */
    public byte[] slotDescription;
    /** The manufacturer of the slot: 32 bytes, UTF-8, padded with blanks. */
    public byte[] manufacturerID;
    /** Bits such as {@code CKF_TOKEN_PRESENT}, see {@link halvorn.zerlin.constants.CKF CKF}. */
    public long flags;
    /** The version of the slot's hardware. */
    public CK_VERSION hardwareVersion;
    /** The version of the slot's firmware. */
    public CK_VERSION firmwareVersion;

    /** Creates an empty record for the native to fill. */
    public CK_SLOT_INFO() {
    }

    /**
     * Returns the description as text.
     *
     * @return {@link #slotDescription} without the padding; empty if the record is not filled
     */
    public String getSlotDescription() {
        return Text.of(slotDescription);
    }

    /**
     * Returns the manufacturer as text.
     *
     * @return {@link #manufacturerID} without the padding; empty if the record is not filled
     */
    public String getManufacturerID() {
        return Text.of(manufacturerID);
    }

    /**
     * Describes all fields; the flags by their names.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_SLOT_INFO[slotDescription=" + getSlotDescription()
                + ", manufacturerID=" + getManufacturerID()
                + ", flags=" + Text.flags(flags, Text.SLOT_FLAGS) + ", hardwareVersion=" + hardwareVersion
                + ", firmwareVersion=" + firmwareVersion + "]";
    }
}
