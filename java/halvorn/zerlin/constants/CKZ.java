// The constants with the prefix CKZ_, with the names and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Sources of the OAEP encoding parameter.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_RSA_PKCS_OAEP_SOURCE_TYPE} where a native needs one.
 */
public final class CKZ {
    /** {@code CKZ_DATA_SPECIFIED}: the encoding parameter is in the parameter of the mechanism. */
    public static final long DATA_SPECIFIED = 0x1L;
    /** {@code CKZ_SALT_SPECIFIED}: for PKCS#5 PBKDF2: the salt is in the parameter of the mechanism. */
    public static final long SALT_SPECIFIED = 0x1L;

    private CKZ() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKZ_DATA_SPECIFIED"} or {@code "DATA_SPECIFIED"}, case-sensitive;
     *             must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKZ.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKZ_DATA_SPECIFIED"}; null if there is none. Some values have several
     *         names for different places; this is the first one of this class
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKZ.class, value);
    }
}
