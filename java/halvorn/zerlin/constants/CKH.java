// The constants of the prefix CKH_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Hardware features, values of {@link CKA#HW_FEATURE_TYPE}, for {@link CK_HW_FEATURE_TYPE}.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKH {
    /** {@code CKH_MONOTONIC_COUNTER} */
    public static final long MONOTONIC_COUNTER = 0x1L;
    /** {@code CKH_CLOCK} */
    public static final long CLOCK = 0x2L;
    /** {@code CKH_USER_INTERFACE} */
    public static final long USER_INTERFACE = 0x3L;
    /** {@code CKH_VENDOR_DEFINED} */
    public static final long VENDOR_DEFINED = 0x80000000L;

    private CKH() {
    }
}
