// The holder of an object or key handle.
package halvorn.zerlin;

/**
 * The handle of an object or a key. Natives that create or find objects write it, and natives that use
 * objects read it. Create a new one for each use.
 */
public class CK_OBJECT_HANDLE {
    /**
     * The handle; 0 is {@code CK_INVALID_HANDLE}. In a 32-bit JVM only the low 32 bits reach the library.
     */
    public long m_value;

    /** Creates a holder of {@code CK_INVALID_HANDLE}, into which a native can write. */
    public CK_OBJECT_HANDLE() {
    }

    /**
     * Creates a holder of a handle.
     *
     * @param value the handle
     */
    public CK_OBJECT_HANDLE(long value) {
        m_value = value;
    }

    /**
     * Creates an array for {@link Cryptoki#C_FindObjects}, which writes into the elements and creates none.
     *
     * @param n the number of elements
     * @return a new array, filled with new objects
     */
    public static CK_OBJECT_HANDLE[] array(int n) {
        CK_OBJECT_HANDLE[] handles = new CK_OBJECT_HANDLE[n];
        for (int i = 0; i < n; i++) {
            handles[i] = new CK_OBJECT_HANDLE();
        }
        return handles;
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
                && m_value == ((CK_OBJECT_HANDLE) other).m_value;
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
     * @return for example {@code "object 5"}
     */
    @Override
    public String toString() {
        return "object " + m_value;
    }
}
