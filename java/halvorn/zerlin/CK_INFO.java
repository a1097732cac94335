// What C_GetInfo tells about the library.
package halvorn.zerlin;

/**
 * Information on the library (PKCS#11 v2.20, 9.1), filled by {@link Cryptoki#C_GetInfo}. The native replaces
 * the arrays and versions by new ones.
 */
public class CK_INFO {
    /** The PKCS#11 version that the library implements. */
    public CK_VERSION cryptokiVersion;
    /** The maker of the library: 32 bytes, UTF-8, padded with blanks. */
    public byte[] manufacturerID;
    /** Always 0. */
    public long flags;
    /** What the library is: 32 bytes, UTF-8, padded with blanks. */
    public byte[] libraryDescription;
    /** The version of this binding, 3.10, whatever the Cryptoki library beneath reports. */
    public CK_VERSION libraryVersion;

    /** Makes an empty record for the native to fill. */
    public CK_INFO() {
    }

    /**
     * The maker as text.
     *
     * @return {@link #manufacturerID} without the padding, empty when not filled
     */
    public String getManufacturerID() {
        return Text.of(manufacturerID);
    }

    /**
     * The description as text.
     *
     * @return {@link #libraryDescription} without the padding, empty when not filled
     */
    public String getLibraryDescription() {
        return Text.of(libraryDescription);
    }

    /**
     * Tells all fields.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_INFO[cryptokiVersion=" + cryptokiVersion + ", manufacturerID=" + getManufacturerID()
                + ", flags=" + Text.flags(flags) + ", libraryDescription=" + getLibraryDescription()
                + ", libraryVersion=" + libraryVersion + "]";
    }
}
