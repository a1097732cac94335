// What the typed constant classes have in common: a PKCS#11 value that knows its own name.
package halvorn.zerlin.constants;

/**
 * A mutable holder of one PKCS#11 value of a certain kind: a return value, a mechanism type, a key type and
 * so on. The plain constants are {@code long}s ({@link CKM}, {@link CKA}, ...). An object of a subclass
 * passes one of them to a native or back.
 *
 * <p>The natives write into the objects that they are given. So create a new object for each use, do not
 * share one as a constant, and do not use it as a key of a hash map while a native may still change it.
 *
 * <p>The constants are unsigned 32-bit numbers, also in a 64-bit JVM and also those of a vendor.
 */
public abstract class TypedValue {
    /** The value. In a 32-bit JVM only the low 32 bits reach the library. */
    public long m_value;

    TypedValue() {
    }

    TypedValue(long value) {
        m_value = value;
    }

    // A method, not a field: the natives create these objects without running a constructor.
    abstract Class<?> constants();

    /**
     * Returns the value.
     *
     * @return the value
     */
    public long getValue() {
        return m_value;
    }

    /**
     * Changes the value. The natives call this method, so a method that overrides it must change the value
     * too.
     *
     * @param value the new value
     */
    public void setValue(long value) {
        m_value = value;
    }

    /**
     * Compares kind and value.
     *
     * @param other the object to compare with
     * @return true if the other object has the same class and the same value
     */
    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass() && m_value == ((TypedValue) other).m_value;
    }

    /**
     * Returns the hash code that belongs to {@link #equals}.
     *
     * @return the hash code of the value
     */
    @Override
    public int hashCode() {
        return Long.hashCode(m_value);
    }

    /**
     * Names the value; works without the native library. Of several names for one value it takes the one that
     * the class of the constants declares first. For some mechanisms that is the vendor's: look at the value.
     *
     * @return for example {@code "CKR_BUFFER_TOO_SMALL (0x150)"}, or {@code "0x80001234"} for a value without
     *         a name
     */
    @Override
    public String toString() {
        String name = Names.nameOf(constants(), m_value);
        String hex = "0x" + Long.toHexString(m_value);
        return name == null ? hex : name + " (" + hex + ")";
    }
}
