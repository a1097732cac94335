// The holder of a PKCS#11 version number.
package halvorn.zerlin;

/**
 * A version number (PKCS#11 v2.20, 9.1); also the parameter of {@code CKM_SSL3_PRE_MASTER_KEY_GEN}.
 */
public class CK_VERSION {
    /** The part before the point, an unsigned byte. */
    public byte major;
    /** The part after the point, an unsigned byte. */
    public byte minor;

    /** Makes the version 0.0, for a native to fill. */
    public CK_VERSION() {
    }

    /**
     * Makes a version.
     *
     * @param major the part before the point, 0 to 255
     * @param minor the part after the point, 0 to 255
     */
    public CK_VERSION(int major, int minor) {
        this.major = (byte) major;
        this.minor = (byte) minor;
    }

    /**
     * Compares both parts.
     *
     * @param other the object to compare with
     * @return true for an object of the same class with the same version
     */
    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass()
                && major == ((CK_VERSION) other).major && minor == ((CK_VERSION) other).minor;
    }

    /**
     * The hash code that belongs to {@link #equals}.
     *
     * @return the hash code of both parts
     */
    @Override
    public int hashCode() {
        return (major & 0xFF) << 8 | minor & 0xFF;
    }

    /**
     * Tells the version.
     *
     * @return for example {@code "3.10"}
     */
    @Override
    public String toString() {
        return (major & 0xFF) + "." + (minor & 0xFF);
    }
}
