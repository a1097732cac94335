// The constants of the prefix CKO_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Object classes, values of {@link CKA#CLASS}, for {@link CK_OBJECT_CLASS}.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKO {
    /** {@code CKO_DATA} */
    public static final long DATA = 0x0L;
    /** {@code CKO_CERTIFICATE} */
    public static final long CERTIFICATE = 0x1L;
    /** {@code CKO_PUBLIC_KEY} */
    public static final long PUBLIC_KEY = 0x2L;
    /** {@code CKO_PRIVATE_KEY} */
    public static final long PRIVATE_KEY = 0x3L;
    /** {@code CKO_SECRET_KEY} */
    public static final long SECRET_KEY = 0x4L;
    /** {@code CKO_HW_FEATURE} */
    public static final long HW_FEATURE = 0x5L;
    /** {@code CKO_DOMAIN_PARAMETERS} */
    public static final long DOMAIN_PARAMETERS = 0x6L;

    // Standard, not in the name tables
    /** {@code CKO_MECHANISM} */
    public static final long MECHANISM = 0x7L;
    /** {@code CKO_OTP_KEY} */
    public static final long OTP_KEY = 0x8L;
    /** {@code CKO_VENDOR_DEFINED} */
    public static final long VENDOR_DEFINED = 0x80000000L;

    // Vendor
    /** {@code CKO_CERTIFICATE_REQUEST} */
    public static final long CERTIFICATE_REQUEST = 0x80000201L;
    /** {@code CKO_CRL} */
    public static final long CRL = 0x80000202L;
    /** {@code CKO_ADAPTER} */
    public static final long ADAPTER = 0x8000020AL;
    /** {@code CKO_SLOT} */
    public static final long SLOT = 0x8000020BL;
    /** {@code CKO_FM} */
    public static final long FM = 0x8000020CL;

    private CKO() {
    }
}
