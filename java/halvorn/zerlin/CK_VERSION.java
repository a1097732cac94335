// The holder of a PKCS#11 version number.
package halvorn.zerlin;

/**
 * A version number (PKCS#11 v2.20, 9.1). It is also the parameter of {@code CKM_SSL3_PRE_MASTER_KEY_GEN}.
 */
public class CK_VERSION {
    /** The number before the point, an unsigned byte. */
    public byte major;
    /** The number after the point, an unsigned byte. */
    public byte minor;

    /** Creates the version 0.0, into which a native can write. */
    public CK_VERSION() {
    }

    /**
     * Creates a version.
     *
     * @param major the number before the point, 0 to 255
     * @param minor the number after the point, 0 to 255
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
     * Returns the hash code that belongs to {@link #equals}.
     *
     * @return the hash code of both parts
     */
    @Override
    public int hashCode() {
        return (major & 0xFF) << 8 | minor & 0xFF;
    }

    /**
     * Returns the version.
     *
     * @return for example {@code "3.10"}
     */
    @Override
    public String toString() {
        return (major & 0xFF) + "." + (minor & 0xFF);
    }
}
