// The constants with the prefix CKD_: those of cryptoki.h, in its order, and those that only the standard has.
package halvorn.zerlin.constants;

/**
 * Key derivation functions, for the {@code kdf} of ECDH and ECIES parameters.
 */
public final class CKD {
    /** {@code CKD_NULL}: no function, the shared secret is used as it is. */
    public static final long NULL = 0x1L;
    /** {@code CKD_SHA1_KDF} */
    public static final long SHA1_KDF = 0x2L;
    /** {@code CKD_SHA1_KDF_ASN1} */
    public static final long SHA1_KDF_ASN1 = 0x3L;
    /** {@code CKD_SHA1_KDF_CONCATENATE} */
    public static final long SHA1_KDF_CONCATENATE = 0x4L;
    /** {@code CKD_SHA224_KDF} */
    public static final long SHA224_KDF = 0x5L;
    /** {@code CKD_SHA256_KDF} */
    public static final long SHA256_KDF = 0x6L;
    /** {@code CKD_SHA384_KDF} */
    public static final long SHA384_KDF = 0x7L;
    /** {@code CKD_SHA512_KDF} */
    public static final long SHA512_KDF = 0x8L;

    // Of the standard up to v3.1, and not in cryptoki.h
    /** {@code CKD_CPDIVERSIFY_KDF}: diversification by the algorithm of CryptoPro, for GOST keys. */
    public static final long CPDIVERSIFY_KDF = 0x9L;
    /** {@code CKD_SHA3_224_KDF} */
    public static final long SHA3_224_KDF = 0xAL;
    /** {@code CKD_SHA3_256_KDF} */
    public static final long SHA3_256_KDF = 0xBL;
    /** {@code CKD_SHA3_384_KDF} */
    public static final long SHA3_384_KDF = 0xCL;
    /** {@code CKD_SHA3_512_KDF} */
    public static final long SHA3_512_KDF = 0xDL;
    /** {@code CKD_SHA1_KDF_SP800}: of NIST SP 800-56A. */
    public static final long SHA1_KDF_SP800 = 0xEL;
    /** {@code CKD_SHA224_KDF_SP800} */
    public static final long SHA224_KDF_SP800 = 0xFL;
    /** {@code CKD_SHA256_KDF_SP800} */
    public static final long SHA256_KDF_SP800 = 0x10L;
    /** {@code CKD_SHA384_KDF_SP800} */
    public static final long SHA384_KDF_SP800 = 0x11L;
    /** {@code CKD_SHA512_KDF_SP800} */
    public static final long SHA512_KDF_SP800 = 0x12L;
    /** {@code CKD_SHA3_224_KDF_SP800} */
    public static final long SHA3_224_KDF_SP800 = 0x13L;
    /** {@code CKD_SHA3_256_KDF_SP800} */
    public static final long SHA3_256_KDF_SP800 = 0x14L;
    /** {@code CKD_SHA3_384_KDF_SP800} */
    public static final long SHA3_384_KDF_SP800 = 0x15L;
    /** {@code CKD_SHA3_512_KDF_SP800} */
    public static final long SHA3_512_KDF_SP800 = 0x16L;
    /** {@code CKD_BLAKE2B_160_KDF} */
    public static final long BLAKE2B_160_KDF = 0x17L;
    /** {@code CKD_BLAKE2B_256_KDF} */
    public static final long BLAKE2B_256_KDF = 0x18L;
    /** {@code CKD_BLAKE2B_384_KDF} */
    public static final long BLAKE2B_384_KDF = 0x19L;
    /** {@code CKD_BLAKE2B_512_KDF} */
    public static final long BLAKE2B_512_KDF = 0x1AL;

    private CKD() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKD_SHA256_KDF"} or {@code "SHA256_KDF"}, case-sensitive; must
     *             not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKD.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKD_SHA256_KDF"}; of several names the one that this class declares first;
     *         null if there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKD.class, value);
    }
}
