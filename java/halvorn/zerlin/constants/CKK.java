// The constants with the prefix CKK_: those of cryptoki.h, in its order, and those that only the standard has.
package halvorn.zerlin.constants;

/**
 * Key types, the values of {@link CKA#KEY_TYPE}. PKCS#11 explains those of the standard; the
 * documentation of the HSM explains those of the vendor.
 *
 * <p><b>Names that mislead.</b> The vendor has given some names of the standard to values of its own:
 * deliberate. Such a name has the vendor's value, and the same name with {@code _STD} has the value of the
 * standard. With a library of another vendor, use the one with {@code _STD}.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_KEY_TYPE} where a native needs one.
 */
public final class CKK {
    /** {@code CKK_RSA} */
    public static final long RSA = 0x0L;
    /** {@code CKK_DSA} */
    public static final long DSA = 0x1L;
    /** {@code CKK_DH} */
    public static final long DH = 0x2L;
    /** {@code CKK_EC} */
    public static final long EC = 0x3L;
    /** {@code CKK_GENERIC_SECRET} */
    public static final long GENERIC_SECRET = 0x10L;
    /** {@code CKK_RC2} */
    public static final long RC2 = 0x11L;
    /** {@code CKK_RC4} */
    public static final long RC4 = 0x12L;
    /** {@code CKK_DES} */
    public static final long DES = 0x13L;
    /** {@code CKK_DES2} */
    public static final long DES2 = 0x14L;
    /** {@code CKK_DES3} */
    public static final long DES3 = 0x15L;
    /** {@code CKK_IDEA} */
    public static final long IDEA = 0x1AL;
    /** {@code CKK_CAST} */
    public static final long CAST = 0x16L;
    /** {@code CKK_CAST3} */
    public static final long CAST3 = 0x17L;
    /** {@code CKK_CAST128} */
    public static final long CAST128 = 0x18L;
    /** Alias of {@link #CAST128}. */
    public static final long CAST5 = 0x18L;
    /** {@code CKK_SKIPJACK} */
    public static final long SKIPJACK = 0x1BL;
    /** {@code CKK_BATON} */
    public static final long BATON = 0x1CL;
    /** {@code CKK_JUNIPER} */
    public static final long JUNIPER = 0x1DL;
    /** {@code CKK_CDMF} */
    public static final long CDMF = 0x1EL;
    /** {@code CKK_AES} */
    public static final long AES = 0x1FL;
    /** {@code CKK_ARIA} */
    public static final long ARIA = 0x26L;

    // Of the standard; the natives of CTUtil do not know these names
    /** {@code CKK_X9_42_DH} */
    public static final long X9_42_DH = 0x4L;
    /** {@code CKK_KEA} */
    public static final long KEA = 0x5L;
    /** {@code CKK_RC5} */
    public static final long RC5 = 0x19L;
    /** {@code CKK_BLOWFISH} */
    public static final long BLOWFISH = 0x20L;
    /** {@code CKK_TWOFISH} */
    public static final long TWOFISH = 0x21L;
    /** {@code CKK_SECURID} */
    public static final long SECURID = 0x22L;
    /** {@code CKK_HOTP} */
    public static final long HOTP = 0x23L;
    /** {@code CKK_ACTI} */
    public static final long ACTI = 0x24L;
    /** {@code CKK_CAMELLIA} */
    public static final long CAMELLIA = 0x25L;
    /** {@code CKK_MD5_HMAC} */
    public static final long MD5_HMAC = 0x27L;
    /** {@code CKK_SHA_1_HMAC} */
    public static final long SHA_1_HMAC = 0x28L;
    /** {@code CKK_RIPEMD128_HMAC} */
    public static final long RIPEMD128_HMAC = 0x29L;
    /** {@code CKK_RIPEMD160_HMAC} */
    public static final long RIPEMD160_HMAC = 0x2AL;
    /** {@code CKK_SHA256_HMAC} */
    public static final long SHA256_HMAC = 0x2BL;
    /** {@code CKK_SHA384_HMAC} */
    public static final long SHA384_HMAC = 0x2CL;
    /** {@code CKK_SHA512_HMAC} */
    public static final long SHA512_HMAC = 0x2DL;
    /** {@code CKK_SHA224_HMAC} */
    public static final long SHA224_HMAC = 0x2EL;
    /**
     * The standard's {@code CKK_SEED}. The name without {@code _STD} misleads: {@link #SEED} has the vendor's
     * value.
     */
    public static final long SEED_STD = 0x2FL;
    /** {@code CKK_VENDOR_DEFINED}: the first value that a vendor may define. */
    public static final long VENDOR_DEFINED = 0x80000000L;

    // Of the standard up to v3.1, and not in cryptoki.h; the natives of CTUtil do not know these names
    /** Alias of {@link #EC}. */
    public static final long ECDSA = 0x3L;
    /** {@code CKK_GOSTR3410} */
    public static final long GOSTR3410 = 0x30L;
    /** {@code CKK_GOSTR3411} */
    public static final long GOSTR3411 = 0x31L;
    /** {@code CKK_GOST28147} */
    public static final long GOST28147 = 0x32L;
    /** {@code CKK_CHACHA20} */
    public static final long CHACHA20 = 0x33L;
    /** {@code CKK_POLY1305} */
    public static final long POLY1305 = 0x34L;
    /** {@code CKK_AES_XTS} */
    public static final long AES_XTS = 0x35L;
    /** {@code CKK_SHA3_224_HMAC} */
    public static final long SHA3_224_HMAC = 0x36L;
    /** {@code CKK_SHA3_256_HMAC} */
    public static final long SHA3_256_HMAC = 0x37L;
    /** {@code CKK_SHA3_384_HMAC} */
    public static final long SHA3_384_HMAC = 0x38L;
    /** {@code CKK_SHA3_512_HMAC} */
    public static final long SHA3_512_HMAC = 0x39L;
    /** {@code CKK_BLAKE2B_160_HMAC} */
    public static final long BLAKE2B_160_HMAC = 0x3AL;
    /** {@code CKK_BLAKE2B_256_HMAC} */
    public static final long BLAKE2B_256_HMAC = 0x3BL;
    /** {@code CKK_BLAKE2B_384_HMAC} */
    public static final long BLAKE2B_384_HMAC = 0x3CL;
    /** {@code CKK_BLAKE2B_512_HMAC} */
    public static final long BLAKE2B_512_HMAC = 0x3DL;
    /** {@code CKK_SALSA20} */
    public static final long SALSA20 = 0x3EL;
    /** {@code CKK_X2RATCHET} */
    public static final long X2RATCHET = 0x3FL;
    /** {@code CKK_EC_EDWARDS}: Ed25519 and Ed448. */
    public static final long EC_EDWARDS = 0x40L;
    /** {@code CKK_EC_MONTGOMERY}: X25519 and X448. */
    public static final long EC_MONTGOMERY = 0x41L;
    /** {@code CKK_HKDF} */
    public static final long HKDF = 0x42L;
    /** {@code CKK_SHA512_224_HMAC} */
    public static final long SHA512_224_HMAC = 0x43L;
    /** {@code CKK_SHA512_256_HMAC} */
    public static final long SHA512_256_HMAC = 0x44L;
    /** {@code CKK_SHA512_T_HMAC} */
    public static final long SHA512_T_HMAC = 0x45L;
    /** {@code CKK_HSS} */
    public static final long HSS = 0x46L;

    // Of the vendor
    /** {@code CKK_RSA_DISCRETE} */
    public static final long RSA_DISCRETE = 0x80000201L;
    /** {@code CKK_DSA_DISCRETE} */
    public static final long DSA_DISCRETE = 0x80000202L;
    /**
     * A name that misleads: the vendor's {@code CKK_SEED}. Other modules do not know this value; with them,
     * use {@link #SEED_STD}, the standard's.
     */
    public static final long SEED = 0x80000203L;

    private CKK() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKK_AES"} or {@code "AES"}, case-sensitive; must not be null
     * @return the value; for a name that the vendor has given to a value of its own, the vendor's, and with
     *         {@code _STD} behind it the standard's
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKK.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKK_AES"}; of several names the one that this class declares first; null if
     *         there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKK.class, value);
    }
}
