// The constants with the prefix CKD_, with the names and in the order of cryptoki.h.
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

    private CKD() {
    }
}
