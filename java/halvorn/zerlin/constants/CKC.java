// The constants with the prefix CKC_, with the names and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Certificate types, the values of {@link CKA#CERTIFICATE_TYPE}.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_CERTIFICATE_TYPE} where a native needs one.
 */
public final class CKC {
    /** {@code CKC_X_509}: an X.509 public key certificate. */
    public static final long X_509 = 0x0L;
    /** {@code CKC_X_509_ATTR_CERT}: an X.509 attribute certificate. */
    public static final long X_509_ATTR_CERT = 0x1L;
    /** {@code CKC_WTLS}: a WTLS certificate. */
    public static final long WTLS = 0x2L;
    /** {@code CKC_VENDOR_DEFINED}: the first value that a vendor may define. */
    public static final long VENDOR_DEFINED = 0x80000000L;

    private CKC() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKC_X_509"} or {@code "X_509"}, case-sensitive; must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKC.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKC_X_509"}; of several names the one that this class declares first; null if
     *         there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKC.class, value);
    }
}
