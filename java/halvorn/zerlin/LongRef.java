// The holder of a length, a count or a slot that a native reads or writes.
package halvorn.zerlin;

/**
 * A length, a count or a slot that a native reads or writes. The description of the native says which, and in
 * which unit.
 */
public class LongRef {
    /** In: the capacity that the caller offers. Out: the number that the library reports. */
    public long value;

    /** Creates a holder of 0. */
    public LongRef() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value the capacity to offer
     */
    public LongRef(long value) {
        this.value = value;
    }

    /**
     * Compares the values.
     *
     * @param other the object to compare with
     * @return true for an object of the same class with the same value
     */
    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass() && value == ((LongRef) other).value;
    }

    /**
     * Returns the hash code that belongs to {@link #equals}.
     *
     * @return the hash code of the value
     */
    @Override
    public int hashCode() {
        return Long.hashCode(value);
    }

    /**
     * Returns the value.
     *
     * @return the value in decimal digits
     */
    @Override
    public String toString() {
        return Long.toString(value);
    }
}
