// The holder of a PKCS#11 boolean.
package halvorn.zerlin;

/**
 * A PKCS#11 boolean: the value of a boolean attribute, or a field of a mechanism parameter. The natives write
 * into the object, so create a new one for each use.
 */
public class CK_BBOOL {
    /** The value. A value that was read from a token is true only if its byte is exactly 1. */
    public boolean m_value;

    /** Creates a holder of false. */
    public CK_BBOOL() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value the value
     */
    public CK_BBOOL(boolean value) {
        m_value = value;
    }

    /**
     * Returns the value.
     *
     * @return the value
     */
    public boolean getValue() {
        return m_value;
    }

    /**
     * Changes the value. The natives call this method, so a method that overrides it must change the value
     * too.
     *
     * @param value the new value
     */
    public void setValue(boolean value) {
        m_value = value;
    }

    /**
     * Compares the values.
     *
     * @param other the object to compare with
     * @return true for an object of the same class with the same value
     */
    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass() && m_value == ((CK_BBOOL) other).m_value;
    }

    /**
     * Returns the hash code that belongs to {@link #equals}.
     *
     * @return the hash code of the value
     */
    @Override
    public int hashCode() {
        return Boolean.hashCode(m_value);
    }

    /**
     * Returns the value.
     *
     * @return {@code "CK_TRUE"} or {@code "CK_FALSE"}
     */
    @Override
    public String toString() {
        return m_value ? "CK_TRUE" : "CK_FALSE";
    }
}
