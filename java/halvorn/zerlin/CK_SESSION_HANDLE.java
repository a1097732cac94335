// The holder of a session handle.
package halvorn.zerlin;

/**
 * The handle of a session. {@link Cryptoki#C_OpenSession} writes it, and every native that works in a session
 * reads it.
 */
public class CK_SESSION_HANDLE {
    /**
     * The handle; 0 is {@code CK_INVALID_HANDLE}. In a 32-bit JVM only the low 32 bits reach the library.
     */
    public long m_value;

    /** Creates a holder of {@code CK_INVALID_HANDLE}, into which a native can write. */
    public CK_SESSION_HANDLE() {
    }

    /**
     * Creates a holder of a handle.
     *
     * @param value the handle
     */
    public CK_SESSION_HANDLE(long value) {
        m_value = value;
    }

    /**
     * Returns the handle.
     *
     * @return the handle
     */
    public long getValue() {
        return m_value;
    }

    /**
     * Changes the handle.
     *
     * @param value the new handle
     */
    public void setValue(long value) {
        m_value = value;
    }

    /**
     * Compares the handles.
     *
     * @param other the object to compare with
     * @return true for an object of the same class with the same handle
     */
    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass()
                && m_value == ((CK_SESSION_HANDLE) other).m_value;
    }

    /**
     * Returns the hash code that belongs to {@link #equals}.
     *
     * @return the hash code of the handle
     */
    @Override
    public int hashCode() {
        return Long.hashCode(m_value);
    }

    /**
     * Returns the handle.
     *
     * @return for example {@code "session 5"}
     */
    @Override
    public String toString() {
        return "session " + m_value;
    }
}
