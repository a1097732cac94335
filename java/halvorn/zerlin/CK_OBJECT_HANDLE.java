// The holder of an object or key handle.
package halvorn.zerlin;

/**
 * An object or key handle: written by the natives that make or find objects, read by those that use them.
 */
public class CK_OBJECT_HANDLE {
    /**
     * The handle, 0 to 4294967295; 0 is {@code CK_INVALID_HANDLE}. Only the low 32 bits reach the library.
     */
    public long m_value;

    /** Makes a holder of {@code CK_INVALID_HANDLE}, for a native to fill. */
    public CK_OBJECT_HANDLE() {
    }

    /**
     * Makes a holder of a handle.
     *
     * @param value the handle
     */
    public CK_OBJECT_HANDLE(long value) {
        m_value = value;
    }

    /**
     * Makes an array for {@link Cryptoki#C_FindObjects}: the native writes into the elements and makes none.
     *
     * @param n the number of elements
     * @return a new array filled with new objects
     */
    public static CK_OBJECT_HANDLE[] array(int n) {
        CK_OBJECT_HANDLE[] handles = new CK_OBJECT_HANDLE[n];
        for (int i = 0; i < n; i++) {
            handles[i] = new CK_OBJECT_HANDLE();
        }
        return handles;
    }

    /**
     * Tells the handle.
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
     * The hash code that belongs to {@link #equals}.
     *
     * @return the hash code of the handle
     */
    @Override
    public int hashCode() {
        return Long.hashCode(m_value);
    }

    /**
     * Tells the handle.
     *
     * @return for example {@code "object 5"}
     */
    @Override
    public String toString() {
        return "object " + m_value;
    }
}
