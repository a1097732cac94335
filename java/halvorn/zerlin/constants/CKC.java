// The constants of the prefix CKC_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Certificate types, values of {@link CKA#CERTIFICATE_TYPE}, for {@link CK_CERTIFICATE_TYPE}.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKC {
    /** {@code CKC_X_509} */
    public static final long X_509 = 0x0L;
    /** {@code CKC_X_509_ATTR_CERT} */
    public static final long X_509_ATTR_CERT = 0x1L;
    /** {@code CKC_WTLS} */
    public static final long WTLS = 0x2L;
    /** {@code CKC_VENDOR_DEFINED} */
    public static final long VENDOR_DEFINED = 0x80000000L;

    private CKC() {
    }
}
