// The constants with the prefix CKP_, of the standard up to v3.1; cryptoki.h does not have them.
package halvorn.zerlin.constants;

/**
 * Profiles, the values of {@link CKA#PROFILE_ID}, and the pseudo-random functions of PKCS#5 PBKDF2. The
 * standard gives both the same prefix, and so some values have two names.
 */
public final class CKP {
    // Profiles
    /** {@code CKP_INVALID_ID}: no profile. */
    public static final long INVALID_ID = 0x0L;
    /** {@code CKP_BASELINE_PROVIDER}: the functions that every module should have. */
    public static final long BASELINE_PROVIDER = 0x1L;
    /** {@code CKP_EXTENDED_PROVIDER}: the baseline and more. */
    public static final long EXTENDED_PROVIDER = 0x2L;
    /** {@code CKP_AUTHENTICATION_TOKEN}: a token with which users prove who they are. */
    public static final long AUTHENTICATION_TOKEN = 0x3L;
    /** {@code CKP_PUBLIC_CERTIFICATES_TOKEN}: its certificates and public keys are found without a login. */
    public static final long PUBLIC_CERTIFICATES_TOKEN = 0x4L;
    /** {@code CKP_COMPLETE_PROVIDER}: all functions of the standard. */
    public static final long COMPLETE_PROVIDER = 0x5L;
    /** {@code CKP_HKDF_TLS_TOKEN}: HKDF as TLS 1.3 uses it. */
    public static final long HKDF_TLS_TOKEN = 0x6L;

    // Pseudo-random functions of CKM_PKCS5_PBKD2
    /** {@code CKP_PKCS5_PBKD2_HMAC_SHA1} */
    public static final long PKCS5_PBKD2_HMAC_SHA1 = 0x1L;
    /** {@code CKP_PKCS5_PBKD2_HMAC_GOSTR3411} */
    public static final long PKCS5_PBKD2_HMAC_GOSTR3411 = 0x2L;
    /** {@code CKP_PKCS5_PBKD2_HMAC_SHA224} */
    public static final long PKCS5_PBKD2_HMAC_SHA224 = 0x3L;
    /** {@code CKP_PKCS5_PBKD2_HMAC_SHA256} */
    public static final long PKCS5_PBKD2_HMAC_SHA256 = 0x4L;
    /** {@code CKP_PKCS5_PBKD2_HMAC_SHA384} */
    public static final long PKCS5_PBKD2_HMAC_SHA384 = 0x5L;
    /** {@code CKP_PKCS5_PBKD2_HMAC_SHA512} */
    public static final long PKCS5_PBKD2_HMAC_SHA512 = 0x6L;
    /** {@code CKP_PKCS5_PBKD2_HMAC_SHA512_224} */
    public static final long PKCS5_PBKD2_HMAC_SHA512_224 = 0x7L;
    /** {@code CKP_PKCS5_PBKD2_HMAC_SHA512_256} */
    public static final long PKCS5_PBKD2_HMAC_SHA512_256 = 0x8L;

    private CKP() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKP_BASELINE_PROVIDER"} or {@code "BASELINE_PROVIDER"}, case-sensitive;
     *             must not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKP.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKP_BASELINE_PROVIDER"}; null if there is none. Some values have several
     *         names for different places; this is the first one of this class
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKP.class, value);
    }
}
