// The holder of a length, a count or a slot that goes into a native and comes out of it.
package halvorn.zerlin;

/**
 * A length or count that a native reads and writes, in the unit that the native's description gives.
 */
public class LongRef {
    /** In: the capacity that the caller offers. Out: the length or count that the library reports. */
    public long value;

    /** Makes a holder of 0. */
    public LongRef() {
    }

    /**
     * Makes a holder of a value.
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
     * The hash code that belongs to {@link #equals}.
     *
     * @return the hash code of the value
     */
    @Override
    public int hashCode() {
        return Long.hashCode(value);
    }

    /**
     * Tells the value.
     *
     * @return the value in decimal digits
     */
    @Override
    public String toString() {
        return Long.toString(value);
    }
}
