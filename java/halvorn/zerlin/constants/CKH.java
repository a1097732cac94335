// The constants with the prefix CKH_, with the names and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Hardware features, the values of {@link CKA#HW_FEATURE_TYPE}.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_HW_FEATURE_TYPE} where a native needs one.
 */
public final class CKH {
    /** {@code CKH_MONOTONIC_COUNTER}: a counter that only counts up. */
    public static final long MONOTONIC_COUNTER = 0x1L;
    /** {@code CKH_CLOCK}: a clock. */
    public static final long CLOCK = 0x2L;
    /** {@code CKH_USER_INTERFACE}: a user interface, such as a display. */
    public static final long USER_INTERFACE = 0x3L;
    /** {@code CKH_VENDOR_DEFINED}: the first value that a vendor may define. */
    public static final long VENDOR_DEFINED = 0x80000000L;

    private CKH() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKH_CLOCK"} or {@code "CLOCK"}, case-sensitive; must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKH.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKH_CLOCK"}; of several names the one that this class declares first; null if
     *         there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKH.class, value);
    }
}
