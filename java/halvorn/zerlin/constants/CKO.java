// The constants with the prefix CKO_: those of cryptoki.h, in its order, and those that only the standard has.
package halvorn.zerlin.constants;

/**
 * Object classes, the values of {@link CKA#CLASS}.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_OBJECT_CLASS} where a native needs one.
 */
public final class CKO {
    /** {@code CKO_DATA}: data of an application. */
    public static final long DATA = 0x0L;
    /** {@code CKO_CERTIFICATE}: a certificate. */
    public static final long CERTIFICATE = 0x1L;
    /** {@code CKO_PUBLIC_KEY}: a public key. */
    public static final long PUBLIC_KEY = 0x2L;
    /** {@code CKO_PRIVATE_KEY}: a private key. */
    public static final long PRIVATE_KEY = 0x3L;
    /** {@code CKO_SECRET_KEY}: a secret key. */
    public static final long SECRET_KEY = 0x4L;
    /** {@code CKO_HW_FEATURE}: a feature of the token's hardware. */
    public static final long HW_FEATURE = 0x5L;
    /** {@code CKO_DOMAIN_PARAMETERS}: the domain parameters of keys. */
    public static final long DOMAIN_PARAMETERS = 0x6L;

    // Of the standard; the natives of CTUtil do not know these names
    /** {@code CKO_MECHANISM}: a mechanism. */
    public static final long MECHANISM = 0x7L;
    /** {@code CKO_OTP_KEY}: a key for one-time passwords. */
    public static final long OTP_KEY = 0x8L;
    /** {@code CKO_VENDOR_DEFINED}: the first value that a vendor may define. */
    public static final long VENDOR_DEFINED = 0x80000000L;

    // Of the standard up to v3.1, and not in cryptoki.h; the natives of CTUtil do not know these names
    /** {@code CKO_PROFILE}: a profile of the standard that the token supports, see {@link CKA#PROFILE_ID}. */
    public static final long PROFILE = 0x9L;

    // Of the vendor
    /** {@code CKO_CERTIFICATE_REQUEST}: a request for a certificate. */
    public static final long CERTIFICATE_REQUEST = 0x80000201L;
    /** {@code CKO_CRL}: a list of revoked certificates. */
    public static final long CRL = 0x80000202L;
    /** {@code CKO_ADAPTER} */
    public static final long ADAPTER = 0x8000020AL;
    /** {@code CKO_SLOT} */
    public static final long SLOT = 0x8000020BL;
    /** {@code CKO_FM} */
    public static final long FM = 0x8000020CL;

    private CKO() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKO_DATA"} or {@code "DATA"}, case-sensitive; must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKO.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKO_DATA"}; of several names the one that this class declares first; null if
     *         there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKO.class, value);
    }
}
