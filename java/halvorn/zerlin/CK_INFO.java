// What C_GetInfo says about the library.
package halvorn.zerlin;

/**
 * Information on the library (PKCS#11 v2.20, 9.1), filled by {@link Cryptoki#C_GetInfo}. The native replaces
 * the arrays and the versions by new ones.
 */
public class CK_INFO {
    /** The PKCS#11 version that the library implements. */
    public CK_VERSION cryptokiVersion;
    /** The manufacturer of the library: 32 bytes, UTF-8, padded with blanks. */
    public byte[] manufacturerID;
    /** Bits that the standard reserves; 0. */
    public long flags;
    /** The description of the library: 32 bytes, UTF-8, padded with blanks. */
    public byte[] libraryDescription;
    /** The version of this binding, 3.10, and not that of the library: deliberate. */
    public CK_VERSION libraryVersion;

    /** Creates an empty record for the native to fill. */
    public CK_INFO() {
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
     * Returns the description as text.
     *
     * @return {@link #libraryDescription} without the padding; empty if the record is not filled
     */
    public String getLibraryDescription() {
        return Text.of(libraryDescription);
    }

    /**
     * Describes all fields.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_INFO[cryptokiVersion=" + cryptokiVersion + ", manufacturerID=" + getManufacturerID()
                + ", flags=" + Text.flags(flags) + ", libraryDescription=" + getLibraryDescription()
                + ", libraryVersion=" + libraryVersion + "]";
    }
}
