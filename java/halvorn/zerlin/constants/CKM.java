// The constants with the prefix CKM_: those of cryptoki.h, in its order, and those that only the standard has.
package halvorn.zerlin.constants;

/**
 * Mechanism types. PKCS#11 explains those of the standard; the documentation of the HSM explains
 * those of the vendor.
 *
 * <p><b>Names that mislead.</b> The vendor has given some names of the standard to values of its own:
 * deliberate. Such a name has the vendor's value, and the same name with {@code _STD} has the value of the
 * standard. With a library of another vendor, use the one with {@code _STD}.
 *
 * <p>The constants are plain {@code long}s and not holders, because the natives write into holders: a shared
 * one would not stay constant. Create a new {@link CK_MECHANISM_TYPE} where a native needs one.
 */
public final class CKM {
    /** {@code CKM_RSA_PKCS_KEY_PAIR_GEN} */
    public static final long RSA_PKCS_KEY_PAIR_GEN = 0x0L;
    /** {@code CKM_RSA_PKCS} */
    public static final long RSA_PKCS = 0x1L;
    /** {@code CKM_RSA_9796} */
    public static final long RSA_9796 = 0x2L;
    /** {@code CKM_RSA_X_509} */
    public static final long RSA_X_509 = 0x3L;
    /** {@code CKM_MD2_RSA_PKCS} */
    public static final long MD2_RSA_PKCS = 0x4L;
    /** {@code CKM_MD5_RSA_PKCS} */
    public static final long MD5_RSA_PKCS = 0x5L;
    /** {@code CKM_SHA1_RSA_PKCS} */
    public static final long SHA1_RSA_PKCS = 0x6L;
    /** {@code CKM_RIPEMD128_RSA_PKCS} */
    public static final long RIPEMD128_RSA_PKCS = 0x7L;
    /** {@code CKM_RIPEMD160_RSA_PKCS} */
    public static final long RIPEMD160_RSA_PKCS = 0x8L;
    /** {@code CKM_RSA_PKCS_OAEP} */
    public static final long RSA_PKCS_OAEP = 0x9L;
    /** {@code CKM_RSA_X9_31_KEY_PAIR_GEN} */
    public static final long RSA_X9_31_KEY_PAIR_GEN = 0xAL;
    /** {@code CKM_RSA_X9_31} */
    public static final long RSA_X9_31 = 0xBL;
    /** {@code CKM_SHA1_RSA_X9_31} */
    public static final long SHA1_RSA_X9_31 = 0xCL;
    /** {@code CKM_SHA224_RSA_PKCS} */
    public static final long SHA224_RSA_PKCS = 0x46L;
    /** {@code CKM_SHA256_RSA_PKCS} */
    public static final long SHA256_RSA_PKCS = 0x40L;
    /** {@code CKM_SHA384_RSA_PKCS} */
    public static final long SHA384_RSA_PKCS = 0x41L;
    /** {@code CKM_SHA512_RSA_PKCS} */
    public static final long SHA512_RSA_PKCS = 0x42L;
    /** {@code CKM_RSA_PKCS_PSS} */
    public static final long RSA_PKCS_PSS = 0xDL;
    /** {@code CKM_SHA1_RSA_PKCS_PSS} */
    public static final long SHA1_RSA_PKCS_PSS = 0xEL;
    /** {@code CKM_SHA224_RSA_PKCS_PSS} */
    public static final long SHA224_RSA_PKCS_PSS = 0x47L;
    /** {@code CKM_SHA256_RSA_PKCS_PSS} */
    public static final long SHA256_RSA_PKCS_PSS = 0x43L;
    /** {@code CKM_SHA384_RSA_PKCS_PSS} */
    public static final long SHA384_RSA_PKCS_PSS = 0x44L;
    /** {@code CKM_SHA512_RSA_PKCS_PSS} */
    public static final long SHA512_RSA_PKCS_PSS = 0x45L;
    /** {@code CKM_DSA_KEY_PAIR_GEN} */
    public static final long DSA_KEY_PAIR_GEN = 0x10L;
    /** {@code CKM_DSA} */
    public static final long DSA = 0x11L;
    /** {@code CKM_DSA_SHA1} */
    public static final long DSA_SHA1 = 0x12L;
    /** {@code CKM_DH_PKCS_KEY_PAIR_GEN} */
    public static final long DH_PKCS_KEY_PAIR_GEN = 0x20L;
    /** {@code CKM_DH_PKCS_DERIVE} */
    public static final long DH_PKCS_DERIVE = 0x21L;
    /** {@code CKM_X9_42_DH_KEY_PAIR_GEN} */
    public static final long X9_42_DH_KEY_PAIR_GEN = 0x30L;
    /** {@code CKM_X9_42_DH_DERIVE} */
    public static final long X9_42_DH_DERIVE = 0x31L;
    /** {@code CKM_X9_42_DH_HYBRID_DERIVE} */
    public static final long X9_42_DH_HYBRID_DERIVE = 0x32L;
    /** {@code CKM_X9_42_MQV_DERIVE} */
    public static final long X9_42_MQV_DERIVE = 0x33L;
    /** {@code CKM_EC_KEY_PAIR_GEN} */
    public static final long EC_KEY_PAIR_GEN = 0x1040L;
    /** {@code CKM_ECDSA} */
    public static final long ECDSA = 0x1041L;
    /** {@code CKM_ECDSA_SHA1} */
    public static final long ECDSA_SHA1 = 0x1042L;
    /** {@code CKM_RC2_KEY_GEN} */
    public static final long RC2_KEY_GEN = 0x100L;
    /** {@code CKM_RC2_ECB} */
    public static final long RC2_ECB = 0x101L;
    /** {@code CKM_RC2_CBC} */
    public static final long RC2_CBC = 0x102L;
    /** {@code CKM_RC2_CBC_PAD} */
    public static final long RC2_CBC_PAD = 0x105L;
    /** {@code CKM_RC2_MAC} */
    public static final long RC2_MAC = 0x103L;
    /** {@code CKM_RC2_MAC_GENERAL} */
    public static final long RC2_MAC_GENERAL = 0x104L;
    /** {@code CKM_RC4_KEY_GEN} */
    public static final long RC4_KEY_GEN = 0x110L;
    /** {@code CKM_RC4} */
    public static final long RC4 = 0x111L;
    /** {@code CKM_RC5_KEY_GEN} */
    public static final long RC5_KEY_GEN = 0x330L;
    /** {@code CKM_RC5_ECB} */
    public static final long RC5_ECB = 0x331L;
    /** {@code CKM_RC5_CBC} */
    public static final long RC5_CBC = 0x332L;
    /** {@code CKM_RC5_CBC_PAD} */
    public static final long RC5_CBC_PAD = 0x335L;
    /** {@code CKM_RC5_MAC} */
    public static final long RC5_MAC = 0x333L;
    /** {@code CKM_DES_KEY_GEN} */
    public static final long DES_KEY_GEN = 0x120L;
    /** {@code CKM_DES_ECB} */
    public static final long DES_ECB = 0x121L;
    /** {@code CKM_DES_CBC} */
    public static final long DES_CBC = 0x122L;
    /** {@code CKM_DES_CBC_PAD} */
    public static final long DES_CBC_PAD = 0x125L;
    /** {@code CKM_DES_MAC} */
    public static final long DES_MAC = 0x123L;
    /** {@code CKM_DES_MAC_GENERAL} */
    public static final long DES_MAC_GENERAL = 0x124L;
    /** {@code CKM_DES2_KEY_GEN} */
    public static final long DES2_KEY_GEN = 0x130L;
    /** {@code CKM_DES3_KEY_GEN} */
    public static final long DES3_KEY_GEN = 0x131L;
    /** {@code CKM_DES3_ECB} */
    public static final long DES3_ECB = 0x132L;
    /** {@code CKM_DES3_CBC} */
    public static final long DES3_CBC = 0x133L;
    /** {@code CKM_DES3_CBC_PAD} */
    public static final long DES3_CBC_PAD = 0x136L;
    /** {@code CKM_DES3_MAC} */
    public static final long DES3_MAC = 0x134L;
    /** {@code CKM_DES3_CMAC} */
    public static final long DES3_CMAC = 0x138L;
    /** {@code CKM_DES3_MAC_GENERAL} */
    public static final long DES3_MAC_GENERAL = 0x135L;
    /** {@code CKM_DES3_CMAC_GENERAL} */
    public static final long DES3_CMAC_GENERAL = 0x137L;
    /** {@code CKM_CAST_KEY_GEN} */
    public static final long CAST_KEY_GEN = 0x300L;
    /** {@code CKM_CAST_ECB} */
    public static final long CAST_ECB = 0x301L;
    /** {@code CKM_CAST_CBC} */
    public static final long CAST_CBC = 0x302L;
    /** {@code CKM_CAST_CBC_PAD} */
    public static final long CAST_CBC_PAD = 0x305L;
    /** {@code CKM_CAST_MAC} */
    public static final long CAST_MAC = 0x303L;
    /** {@code CKM_CAST_MAC_GENERAL} */
    public static final long CAST_MAC_GENERAL = 0x304L;
    /** {@code CKM_CAST3_KEY_GEN} */
    public static final long CAST3_KEY_GEN = 0x310L;
    /** {@code CKM_CAST3_ECB} */
    public static final long CAST3_ECB = 0x311L;
    /** {@code CKM_CAST3_CBC} */
    public static final long CAST3_CBC = 0x312L;
    /** {@code CKM_CAST3_CBC_PAD} */
    public static final long CAST3_CBC_PAD = 0x315L;
    /** {@code CKM_CAST3_MAC} */
    public static final long CAST3_MAC = 0x313L;
    /** {@code CKM_CAST128_KEY_GEN} */
    public static final long CAST128_KEY_GEN = 0x320L;
    /** {@code CKM_CAST128_ECB} */
    public static final long CAST128_ECB = 0x321L;
    /** {@code CKM_CAST128_CBC} */
    public static final long CAST128_CBC = 0x322L;
    /** {@code CKM_CAST128_CBC_PAD} */
    public static final long CAST128_CBC_PAD = 0x325L;
    /** {@code CKM_CAST128_MAC} */
    public static final long CAST128_MAC = 0x323L;
    /** {@code CKM_CAST128_MAC_GENERAL} */
    public static final long CAST128_MAC_GENERAL = 0x324L;
    /** {@code CKM_IDEA_KEY_GEN} */
    public static final long IDEA_KEY_GEN = 0x340L;
    /** {@code CKM_IDEA_ECB} */
    public static final long IDEA_ECB = 0x341L;
    /** {@code CKM_IDEA_CBC} */
    public static final long IDEA_CBC = 0x342L;
    /** {@code CKM_IDEA_CBC_PAD} */
    public static final long IDEA_CBC_PAD = 0x345L;
    /** {@code CKM_IDEA_MAC} */
    public static final long IDEA_MAC = 0x343L;
    /** {@code CKM_IDEA_MAC_GENERAL} */
    public static final long IDEA_MAC_GENERAL = 0x344L;
    /** {@code CKM_GENERIC_SECRET_KEY_GEN} */
    public static final long GENERIC_SECRET_KEY_GEN = 0x350L;
    /** {@code CKM_CONCATENATE_BASE_AND_KEY} */
    public static final long CONCATENATE_BASE_AND_KEY = 0x360L;
    /** {@code CKM_CONCATENATE_BASE_AND_DATA} */
    public static final long CONCATENATE_BASE_AND_DATA = 0x362L;
    /** {@code CKM_CONCATENATE_DATA_AND_BASE} */
    public static final long CONCATENATE_DATA_AND_BASE = 0x363L;
    /** {@code CKM_XOR_BASE_AND_DATA} */
    public static final long XOR_BASE_AND_DATA = 0x364L;
    /** {@code CKM_EXTRACT_KEY_FROM_KEY} */
    public static final long EXTRACT_KEY_FROM_KEY = 0x365L;
    /** {@code CKM_SSL3_PRE_MASTER_KEY_GEN} */
    public static final long SSL3_PRE_MASTER_KEY_GEN = 0x370L;
    /** {@code CKM_SSL3_MASTER_KEY_DERIVE} */
    public static final long SSL3_MASTER_KEY_DERIVE = 0x371L;
    /** {@code CKM_SSL3_KEY_AND_MAC_DERIVE} */
    public static final long SSL3_KEY_AND_MAC_DERIVE = 0x372L;
    /** {@code CKM_SSL3_MASTER_KEY_DERIVE_DH} */
    public static final long SSL3_MASTER_KEY_DERIVE_DH = 0x373L;
    /** {@code CKM_TLS_PRE_MASTER_KEY_GEN} */
    public static final long TLS_PRE_MASTER_KEY_GEN = 0x374L;
    /** {@code CKM_TLS_MASTER_KEY_DERIVE} */
    public static final long TLS_MASTER_KEY_DERIVE = 0x375L;
    /** {@code CKM_TLS_KEY_AND_MAC_DERIVE} */
    public static final long TLS_KEY_AND_MAC_DERIVE = 0x376L;
    /** {@code CKM_TLS_MASTER_KEY_DERIVE_DH} */
    public static final long TLS_MASTER_KEY_DERIVE_DH = 0x377L;
    /** {@code CKM_SSL3_MD5_MAC} */
    public static final long SSL3_MD5_MAC = 0x380L;
    /** {@code CKM_SSL3_SHA1_MAC} */
    public static final long SSL3_SHA1_MAC = 0x381L;
    /** {@code CKM_MD2_KEY_DERIVATION} */
    public static final long MD2_KEY_DERIVATION = 0x391L;
    /** {@code CKM_MD5_KEY_DERIVATION} */
    public static final long MD5_KEY_DERIVATION = 0x390L;
    /** {@code CKM_SHA1_KEY_DERIVATION} */
    public static final long SHA1_KEY_DERIVATION = 0x392L;
    /** {@code CKM_SHA224_KEY_DERIVATION} */
    public static final long SHA224_KEY_DERIVATION = 0x396L;
    /** {@code CKM_SHA256_KEY_DERIVATION} */
    public static final long SHA256_KEY_DERIVATION = 0x393L;
    /** {@code CKM_SHA384_KEY_DERIVATION} */
    public static final long SHA384_KEY_DERIVATION = 0x394L;
    /** {@code CKM_SHA512_KEY_DERIVATION} */
    public static final long SHA512_KEY_DERIVATION = 0x395L;
    /** {@code CKM_PBE_MD2_DES_CBC} */
    public static final long PBE_MD2_DES_CBC = 0x3A0L;
    /** {@code CKM_PBE_MD5_DES_CBC} */
    public static final long PBE_MD5_DES_CBC = 0x3A1L;
    /** {@code CKM_PBE_MD5_CAST_CBC} */
    public static final long PBE_MD5_CAST_CBC = 0x3A2L;
    /** {@code CKM_PBE_MD5_CAST3_CBC} */
    public static final long PBE_MD5_CAST3_CBC = 0x3A3L;
    /** {@code CKM_PBE_MD5_CAST128_CBC} */
    public static final long PBE_MD5_CAST128_CBC = 0x3A4L;
    /** Alias of {@link #PBE_MD5_CAST128_CBC}. */
    public static final long PBE_MD5_CAST5_CBC = 0x3A4L;
    /** {@code CKM_PBE_SHA1_CAST128_CBC} */
    public static final long PBE_SHA1_CAST128_CBC = 0x3A5L;
    /** Alias of {@link #PBE_SHA1_CAST128_CBC}. */
    public static final long PBE_SHA1_CAST5_CBC = 0x3A5L;
    /** {@code CKM_PBE_SHA1_RC4_128} */
    public static final long PBE_SHA1_RC4_128 = 0x3A6L;
    /** {@code CKM_PBE_SHA1_RC4_40} */
    public static final long PBE_SHA1_RC4_40 = 0x3A7L;
    /** {@code CKM_PBE_SHA1_DES3_EDE_CBC} */
    public static final long PBE_SHA1_DES3_EDE_CBC = 0x3A8L;
    /** {@code CKM_PBE_SHA1_DES2_EDE_CBC} */
    public static final long PBE_SHA1_DES2_EDE_CBC = 0x3A9L;
    /** {@code CKM_PBE_SHA1_RC2_128_CBC} */
    public static final long PBE_SHA1_RC2_128_CBC = 0x3AAL;
    /** {@code CKM_PBE_SHA1_RC2_40_CBC} */
    public static final long PBE_SHA1_RC2_40_CBC = 0x3ABL;
    /** {@code CKM_PBA_SHA1_WITH_SHA1_HMAC} */
    public static final long PBA_SHA1_WITH_SHA1_HMAC = 0x3C0L;
    /** {@code CKM_KEY_WRAP_SET_OAEP} */
    public static final long KEY_WRAP_SET_OAEP = 0x401L;
    /** {@code CKM_MD2} */
    public static final long MD2 = 0x200L;
    /** {@code CKM_MD2_HMAC} */
    public static final long MD2_HMAC = 0x201L;
    /** {@code CKM_MD2_HMAC_GENERAL} */
    public static final long MD2_HMAC_GENERAL = 0x202L;
    /** {@code CKM_MD5} */
    public static final long MD5 = 0x210L;
    /** {@code CKM_MD5_HMAC} */
    public static final long MD5_HMAC = 0x211L;
    /** {@code CKM_MD5_HMAC_GENERAL} */
    public static final long MD5_HMAC_GENERAL = 0x212L;
    /** {@code CKM_SHA_1} */
    public static final long SHA_1 = 0x220L;
    /** {@code CKM_SHA_1_HMAC} */
    public static final long SHA_1_HMAC = 0x221L;
    /** {@code CKM_SHA_1_HMAC_GENERAL} */
    public static final long SHA_1_HMAC_GENERAL = 0x222L;
    /** {@code CKM_SHA224} */
    public static final long SHA224 = 0x255L;
    /** {@code CKM_SHA256} */
    public static final long SHA256 = 0x250L;
    /** {@code CKM_SHA224_HMAC} */
    public static final long SHA224_HMAC = 0x256L;
    /** {@code CKM_SHA256_HMAC} */
    public static final long SHA256_HMAC = 0x251L;
    /** {@code CKM_SHA224_HMAC_GENERAL} */
    public static final long SHA224_HMAC_GENERAL = 0x257L;
    /** {@code CKM_SHA256_HMAC_GENERAL} */
    public static final long SHA256_HMAC_GENERAL = 0x252L;
    /** {@code CKM_SHA384} */
    public static final long SHA384 = 0x260L;
    /** {@code CKM_SHA384_HMAC} */
    public static final long SHA384_HMAC = 0x261L;
    /** {@code CKM_SHA384_HMAC_GENERAL} */
    public static final long SHA384_HMAC_GENERAL = 0x262L;
    /** {@code CKM_SHA512} */
    public static final long SHA512 = 0x270L;
    /** {@code CKM_SHA512_HMAC} */
    public static final long SHA512_HMAC = 0x271L;
    /** {@code CKM_SHA512_HMAC_GENERAL} */
    public static final long SHA512_HMAC_GENERAL = 0x272L;
    /** {@code CKM_RIPEMD128} */
    public static final long RIPEMD128 = 0x230L;
    /** {@code CKM_RIPEMD128_HMAC} */
    public static final long RIPEMD128_HMAC = 0x231L;
    /** {@code CKM_RIPEMD128_HMAC_GENERAL} */
    public static final long RIPEMD128_HMAC_GENERAL = 0x232L;
    /** {@code CKM_RIPEMD160} */
    public static final long RIPEMD160 = 0x240L;
    /** {@code CKM_RIPEMD160_HMAC} */
    public static final long RIPEMD160_HMAC = 0x241L;
    /** {@code CKM_RIPEMD160_HMAC_GENERAL} */
    public static final long RIPEMD160_HMAC_GENERAL = 0x242L;
    /** {@code CKM_CDMF_KEY_GEN} */
    public static final long CDMF_KEY_GEN = 0x140L;
    /** {@code CKM_CDMF_ECB} */
    public static final long CDMF_ECB = 0x141L;
    /** {@code CKM_CDMF_CBC} */
    public static final long CDMF_CBC = 0x142L;
    /** {@code CKM_CDMF_MAC} */
    public static final long CDMF_MAC = 0x143L;
    /** {@code CKM_CDMF_MAC_GENERAL} */
    public static final long CDMF_MAC_GENERAL = 0x144L;
    /** {@code CKM_CDMF_CBC_PAD} */
    public static final long CDMF_CBC_PAD = 0x145L;
    /** {@code CKM_DH_PKCS_PARAMETER_GEN} */
    public static final long DH_PKCS_PARAMETER_GEN = 0x2001L;
    /** {@code CKM_DSA_PARAMETER_GEN} */
    public static final long DSA_PARAMETER_GEN = 0x2000L;
    /** {@code CKM_X9_42_DH_PARAMETER_GEN} */
    public static final long X9_42_DH_PARAMETER_GEN = 0x2002L;
    /** {@code CKM_AES_KEY_GEN} */
    public static final long AES_KEY_GEN = 0x1080L;
    /** {@code CKM_AES_ECB} */
    public static final long AES_ECB = 0x1081L;
    /** {@code CKM_AES_CBC} */
    public static final long AES_CBC = 0x1082L;
    /** {@code CKM_AES_MAC} */
    public static final long AES_MAC = 0x1083L;
    /** {@code CKM_AES_CMAC} */
    public static final long AES_CMAC = 0x108AL;
    /** {@code CKM_AES_MAC_GENERAL} */
    public static final long AES_MAC_GENERAL = 0x1084L;
    /**
     * A name that misleads: the vendor's {@code CKM_AES_CMAC_GENERAL}. To other modules this value is
     * {@code CKM_AES_CTS}; with them, use {@link #AES_CMAC_GENERAL_STD}, the standard's.
     */
    public static final long AES_CMAC_GENERAL = 0x1089L;
    /** {@code CKM_AES_CBC_PAD} */
    public static final long AES_CBC_PAD = 0x1085L;
    /**
     * A name that misleads: the vendor's {@code CKM_AES_KEY_WRAP_PAD}. To other modules this value is
     * {@code CKM_BLOWFISH_CBC}; with them, use {@link #AES_KEY_WRAP_PAD_STD}, the standard's.
     */
    public static final long AES_KEY_WRAP_PAD = 0x1091L;
    /**
     * A name that misleads: the vendor's {@code CKM_AES_KEY_WRAP}. To other modules this value is
     * {@code CKM_BLOWFISH_KEY_GEN}; with them, use {@link #AES_KEY_WRAP_STD}, the standard's.
     */
    public static final long AES_KEY_WRAP = 0x1090L;
    /** {@code CKM_ARIA_KEY_GEN} */
    public static final long ARIA_KEY_GEN = 0x560L;
    /** {@code CKM_ARIA_ECB} */
    public static final long ARIA_ECB = 0x561L;
    /** {@code CKM_ARIA_CBC} */
    public static final long ARIA_CBC = 0x562L;
    /** {@code CKM_ARIA_MAC} */
    public static final long ARIA_MAC = 0x563L;
    /** {@code CKM_ARIA_MAC_GENERAL} */
    public static final long ARIA_MAC_GENERAL = 0x564L;
    /** {@code CKM_ARIA_CBC_PAD} */
    public static final long ARIA_CBC_PAD = 0x565L;
    /**
     * A name that misleads: the vendor's {@code CKM_ECDH1_DERIVE}. To other modules this value is
     * {@code CKM_ECDSA_SHA224}; with them, use {@link #ECDH1_DERIVE_STD}, the standard's.
     */
    public static final long ECDH1_DERIVE = 0x1043L;

    // Of the standard; the natives of CTUtil do not know these names
    /**
     * The standard's {@code CKM_DSA_SHA224}. The name without {@code _STD} misleads: {@link #DSA_SHA224} has
     * the vendor's value.
     */
    public static final long DSA_SHA224_STD = 0x13L;
    /**
     * The standard's {@code CKM_DSA_SHA256}. The name without {@code _STD} misleads: {@link #DSA_SHA256} has
     * the vendor's value.
     */
    public static final long DSA_SHA256_STD = 0x14L;
    /** {@code CKM_DSA_SHA384} */
    public static final long DSA_SHA384 = 0x15L;
    /** {@code CKM_DSA_SHA512} */
    public static final long DSA_SHA512 = 0x16L;
    /** {@code CKM_SHA512_224} */
    public static final long SHA512_224 = 0x48L;
    /** {@code CKM_SHA512_224_HMAC} */
    public static final long SHA512_224_HMAC = 0x49L;
    /** {@code CKM_SHA512_224_HMAC_GENERAL} */
    public static final long SHA512_224_HMAC_GENERAL = 0x4AL;
    /** {@code CKM_SHA512_224_KEY_DERIVATION} */
    public static final long SHA512_224_KEY_DERIVATION = 0x4BL;
    /** {@code CKM_SHA512_256} */
    public static final long SHA512_256 = 0x4CL;
    /** {@code CKM_SHA512_256_HMAC} */
    public static final long SHA512_256_HMAC = 0x4DL;
    /** {@code CKM_SHA512_256_HMAC_GENERAL} */
    public static final long SHA512_256_HMAC_GENERAL = 0x4EL;
    /** {@code CKM_SHA512_256_KEY_DERIVATION} */
    public static final long SHA512_256_KEY_DERIVATION = 0x4FL;
    /** {@code CKM_SHA512_T} */
    public static final long SHA512_T = 0x50L;
    /** {@code CKM_SHA512_T_HMAC} */
    public static final long SHA512_T_HMAC = 0x51L;
    /** {@code CKM_SHA512_T_HMAC_GENERAL} */
    public static final long SHA512_T_HMAC_GENERAL = 0x52L;
    /** {@code CKM_SHA512_T_KEY_DERIVATION} */
    public static final long SHA512_T_KEY_DERIVATION = 0x53L;
    /**
     * The standard's {@code CKM_DES_OFB64}. The name without {@code _STD} misleads: {@link #DES_OFB64} has
     * the vendor's value.
     */
    public static final long DES_OFB64_STD = 0x150L;
    /** {@code CKM_DES_OFB8} */
    public static final long DES_OFB8 = 0x151L;
    /** {@code CKM_DES_CFB64} */
    public static final long DES_CFB64 = 0x152L;
    /** {@code CKM_DES_CFB8} */
    public static final long DES_CFB8 = 0x153L;
    /** {@code CKM_CAST3_MAC_GENERAL} */
    public static final long CAST3_MAC_GENERAL = 0x314L;
    /** Alias of {@link #CAST128_KEY_GEN}. */
    public static final long CAST5_KEY_GEN = 0x320L;
    /** Alias of {@link #CAST128_ECB}. */
    public static final long CAST5_ECB = 0x321L;
    /** Alias of {@link #CAST128_CBC}. */
    public static final long CAST5_CBC = 0x322L;
    /** Alias of {@link #CAST128_MAC}. */
    public static final long CAST5_MAC = 0x323L;
    /** Alias of {@link #CAST128_MAC_GENERAL}. */
    public static final long CAST5_MAC_GENERAL = 0x324L;
    /** Alias of {@link #CAST128_CBC_PAD}. */
    public static final long CAST5_CBC_PAD = 0x325L;
    /** {@code CKM_RC5_MAC_GENERAL} */
    public static final long RC5_MAC_GENERAL = 0x334L;
    /** {@code CKM_TLS_PRF} */
    public static final long TLS_PRF = 0x378L;
    /** {@code CKM_PKCS5_PBKD2} */
    public static final long PKCS5_PBKD2 = 0x3B0L;
    /** {@code CKM_WTLS_PRE_MASTER_KEY_GEN} */
    public static final long WTLS_PRE_MASTER_KEY_GEN = 0x3D0L;
    /** {@code CKM_WTLS_MASTER_KEY_DERIVE} */
    public static final long WTLS_MASTER_KEY_DERIVE = 0x3D1L;
    /** {@code CKM_WTLS_MASTER_KEY_DERIVE_DH_ECC} */
    public static final long WTLS_MASTER_KEY_DERIVE_DH_ECC = 0x3D2L;
    /** {@code CKM_WTLS_PRF} */
    public static final long WTLS_PRF = 0x3D3L;
    /** {@code CKM_WTLS_SERVER_KEY_AND_MAC_DERIVE} */
    public static final long WTLS_SERVER_KEY_AND_MAC_DERIVE = 0x3D4L;
    /** {@code CKM_WTLS_CLIENT_KEY_AND_MAC_DERIVE} */
    public static final long WTLS_CLIENT_KEY_AND_MAC_DERIVE = 0x3D5L;
    /** {@code CKM_TLS12_MAC} */
    public static final long TLS12_MAC = 0x3D8L;
    /** {@code CKM_TLS12_KDF} */
    public static final long TLS12_KDF = 0x3D9L;
    /** {@code CKM_TLS12_MASTER_KEY_DERIVE} */
    public static final long TLS12_MASTER_KEY_DERIVE = 0x3E0L;
    /** {@code CKM_TLS12_KEY_AND_MAC_DERIVE} */
    public static final long TLS12_KEY_AND_MAC_DERIVE = 0x3E1L;
    /** {@code CKM_TLS12_MASTER_KEY_DERIVE_DH} */
    public static final long TLS12_MASTER_KEY_DERIVE_DH = 0x3E2L;
    /** {@code CKM_TLS12_KEY_SAFE_DERIVE} */
    public static final long TLS12_KEY_SAFE_DERIVE = 0x3E3L;
    /** {@code CKM_TLS_MAC} */
    public static final long TLS_MAC = 0x3E4L;
    /** {@code CKM_TLS_KDF} */
    public static final long TLS_KDF = 0x3E5L;
    /** {@code CKM_KEY_WRAP_LYNKS} */
    public static final long KEY_WRAP_LYNKS = 0x400L;
    /** {@code CKM_CMS_SIG} */
    public static final long CMS_SIG = 0x500L;
    /** {@code CKM_CAMELLIA_KEY_GEN} */
    public static final long CAMELLIA_KEY_GEN = 0x550L;
    /** {@code CKM_CAMELLIA_ECB} */
    public static final long CAMELLIA_ECB = 0x551L;
    /** {@code CKM_CAMELLIA_CBC} */
    public static final long CAMELLIA_CBC = 0x552L;
    /** {@code CKM_CAMELLIA_MAC} */
    public static final long CAMELLIA_MAC = 0x553L;
    /** {@code CKM_CAMELLIA_MAC_GENERAL} */
    public static final long CAMELLIA_MAC_GENERAL = 0x554L;
    /** {@code CKM_CAMELLIA_CBC_PAD} */
    public static final long CAMELLIA_CBC_PAD = 0x555L;
    /** {@code CKM_CAMELLIA_ECB_ENCRYPT_DATA} */
    public static final long CAMELLIA_ECB_ENCRYPT_DATA = 0x556L;
    /** {@code CKM_CAMELLIA_CBC_ENCRYPT_DATA} */
    public static final long CAMELLIA_CBC_ENCRYPT_DATA = 0x557L;
    /** {@code CKM_ARIA_ECB_ENCRYPT_DATA} */
    public static final long ARIA_ECB_ENCRYPT_DATA = 0x566L;
    /** {@code CKM_ARIA_CBC_ENCRYPT_DATA} */
    public static final long ARIA_CBC_ENCRYPT_DATA = 0x567L;
    /**
     * The standard's {@code CKM_SEED_KEY_GEN}. The name without {@code _STD} misleads: {@link #SEED_KEY_GEN}
     * has the vendor's value.
     */
    public static final long SEED_KEY_GEN_STD = 0x650L;
    /**
     * The standard's {@code CKM_SEED_ECB}. The name without {@code _STD} misleads: {@link #SEED_ECB} has the
     * vendor's value.
     */
    public static final long SEED_ECB_STD = 0x651L;
    /**
     * The standard's {@code CKM_SEED_CBC}. The name without {@code _STD} misleads: {@link #SEED_CBC} has the
     * vendor's value.
     */
    public static final long SEED_CBC_STD = 0x652L;
    /**
     * The standard's {@code CKM_SEED_MAC}. The name without {@code _STD} misleads: {@link #SEED_MAC} has the
     * vendor's value.
     */
    public static final long SEED_MAC_STD = 0x653L;
    /**
     * The standard's {@code CKM_SEED_MAC_GENERAL}. The name without {@code _STD} misleads:
     * {@link #SEED_MAC_GENERAL} has the vendor's value.
     */
    public static final long SEED_MAC_GENERAL_STD = 0x654L;
    /**
     * The standard's {@code CKM_SEED_CBC_PAD}. The name without {@code _STD} misleads: {@link #SEED_CBC_PAD}
     * has the vendor's value.
     */
    public static final long SEED_CBC_PAD_STD = 0x655L;
    /** {@code CKM_SEED_ECB_ENCRYPT_DATA} */
    public static final long SEED_ECB_ENCRYPT_DATA = 0x656L;
    /** {@code CKM_SEED_CBC_ENCRYPT_DATA} */
    public static final long SEED_CBC_ENCRYPT_DATA = 0x657L;
    /** {@code CKM_SKIPJACK_KEY_GEN} */
    public static final long SKIPJACK_KEY_GEN = 0x1000L;
    /** {@code CKM_SKIPJACK_ECB64} */
    public static final long SKIPJACK_ECB64 = 0x1001L;
    /** {@code CKM_SKIPJACK_CBC64} */
    public static final long SKIPJACK_CBC64 = 0x1002L;
    /** {@code CKM_SKIPJACK_OFB64} */
    public static final long SKIPJACK_OFB64 = 0x1003L;
    /** {@code CKM_SKIPJACK_CFB64} */
    public static final long SKIPJACK_CFB64 = 0x1004L;
    /** {@code CKM_SKIPJACK_CFB32} */
    public static final long SKIPJACK_CFB32 = 0x1005L;
    /** {@code CKM_SKIPJACK_CFB16} */
    public static final long SKIPJACK_CFB16 = 0x1006L;
    /** {@code CKM_SKIPJACK_CFB8} */
    public static final long SKIPJACK_CFB8 = 0x1007L;
    /** {@code CKM_SKIPJACK_WRAP} */
    public static final long SKIPJACK_WRAP = 0x1008L;
    /** {@code CKM_SKIPJACK_PRIVATE_WRAP} */
    public static final long SKIPJACK_PRIVATE_WRAP = 0x1009L;
    /** {@code CKM_SKIPJACK_RELAYX} */
    public static final long SKIPJACK_RELAYX = 0x100AL;
    /** {@code CKM_KEA_KEY_PAIR_GEN} */
    public static final long KEA_KEY_PAIR_GEN = 0x1010L;
    /** {@code CKM_KEA_KEY_DERIVE} */
    public static final long KEA_KEY_DERIVE = 0x1011L;
    /** {@code CKM_FORTEZZA_TIMESTAMP} */
    public static final long FORTEZZA_TIMESTAMP = 0x1020L;
    /** {@code CKM_BATON_KEY_GEN} */
    public static final long BATON_KEY_GEN = 0x1030L;
    /** {@code CKM_BATON_ECB128} */
    public static final long BATON_ECB128 = 0x1031L;
    /** {@code CKM_BATON_ECB96} */
    public static final long BATON_ECB96 = 0x1032L;
    /** {@code CKM_BATON_CBC128} */
    public static final long BATON_CBC128 = 0x1033L;
    /** {@code CKM_BATON_COUNTER} */
    public static final long BATON_COUNTER = 0x1034L;
    /** {@code CKM_BATON_SHUFFLE} */
    public static final long BATON_SHUFFLE = 0x1035L;
    /** {@code CKM_BATON_WRAP} */
    public static final long BATON_WRAP = 0x1036L;
    /**
     * The standard's {@code CKM_ECDSA_SHA224}. The name without {@code _STD} misleads: {@link #ECDSA_SHA224}
     * has the vendor's value. This one prints as {@code CKM_ECDH1_DERIVE}, the vendor's name for it.
     */
    public static final long ECDSA_SHA224_STD = 0x1043L;
    /**
     * The standard's {@code CKM_ECDSA_SHA256}. The name without {@code _STD} misleads: {@link #ECDSA_SHA256}
     * has the vendor's value.
     */
    public static final long ECDSA_SHA256_STD = 0x1044L;
    /**
     * The standard's {@code CKM_ECDSA_SHA384}. The name without {@code _STD} misleads: {@link #ECDSA_SHA384}
     * has the vendor's value.
     */
    public static final long ECDSA_SHA384_STD = 0x1045L;
    /**
     * The standard's {@code CKM_ECDSA_SHA512}. The name without {@code _STD} misleads: {@link #ECDSA_SHA512}
     * has the vendor's value.
     */
    public static final long ECDSA_SHA512_STD = 0x1046L;
    /**
     * The standard's {@code CKM_ECDH1_DERIVE}. The name without {@code _STD} misleads: {@link #ECDH1_DERIVE}
     * has the vendor's value.
     */
    public static final long ECDH1_DERIVE_STD = 0x1050L;
    /** {@code CKM_ECDH1_COFACTOR_DERIVE} */
    public static final long ECDH1_COFACTOR_DERIVE = 0x1051L;
    /** {@code CKM_ECMQV_DERIVE} */
    public static final long ECMQV_DERIVE = 0x1052L;
    /** {@code CKM_JUNIPER_KEY_GEN} */
    public static final long JUNIPER_KEY_GEN = 0x1060L;
    /** {@code CKM_JUNIPER_ECB128} */
    public static final long JUNIPER_ECB128 = 0x1061L;
    /** {@code CKM_JUNIPER_CBC128} */
    public static final long JUNIPER_CBC128 = 0x1062L;
    /** {@code CKM_JUNIPER_COUNTER} */
    public static final long JUNIPER_COUNTER = 0x1063L;
    /** {@code CKM_JUNIPER_SHUFFLE} */
    public static final long JUNIPER_SHUFFLE = 0x1064L;
    /** {@code CKM_JUNIPER_WRAP} */
    public static final long JUNIPER_WRAP = 0x1065L;
    /** {@code CKM_FASTHASH} */
    public static final long FASTHASH = 0x1070L;
    /** {@code CKM_AES_CTR} */
    public static final long AES_CTR = 0x1086L;
    /** {@code CKM_AES_GCM} */
    public static final long AES_GCM = 0x1087L;
    /** {@code CKM_AES_CCM} */
    public static final long AES_CCM = 0x1088L;
    /**
     * {@code CKM_AES_CTS}. It prints as {@code CKM_AES_CMAC_GENERAL}, the vendor's name for this value, see
     * {@link #AES_CMAC_GENERAL}.
     */
    public static final long AES_CTS = 0x1089L;
    /**
     * The standard's {@code CKM_AES_CMAC_GENERAL}. The name without {@code _STD} misleads:
     * {@link #AES_CMAC_GENERAL} has the vendor's value.
     */
    public static final long AES_CMAC_GENERAL_STD = 0x108BL;
    /** {@code CKM_AES_XCBC_MAC} */
    public static final long AES_XCBC_MAC = 0x108CL;
    /** {@code CKM_AES_XCBC_MAC_96} */
    public static final long AES_XCBC_MAC_96 = 0x108DL;
    /** {@code CKM_AES_GMAC} */
    public static final long AES_GMAC = 0x108EL;
    /**
     * {@code CKM_BLOWFISH_KEY_GEN}. It prints as {@code CKM_AES_KEY_WRAP}, the vendor's name for this value,
     * see {@link #AES_KEY_WRAP}.
     */
    public static final long BLOWFISH_KEY_GEN = 0x1090L;
    /**
     * {@code CKM_BLOWFISH_CBC}. It prints as {@code CKM_AES_KEY_WRAP_PAD}, the vendor's name for this value,
     * see {@link #AES_KEY_WRAP_PAD}.
     */
    public static final long BLOWFISH_CBC = 0x1091L;
    /** {@code CKM_TWOFISH_KEY_GEN} */
    public static final long TWOFISH_KEY_GEN = 0x1092L;
    /** {@code CKM_TWOFISH_CBC} */
    public static final long TWOFISH_CBC = 0x1093L;
    /** {@code CKM_BLOWFISH_CBC_PAD} */
    public static final long BLOWFISH_CBC_PAD = 0x1094L;
    /** {@code CKM_TWOFISH_CBC_PAD} */
    public static final long TWOFISH_CBC_PAD = 0x1095L;
    /** {@code CKM_DES_ECB_ENCRYPT_DATA} */
    public static final long DES_ECB_ENCRYPT_DATA = 0x1100L;
    /** {@code CKM_DES_CBC_ENCRYPT_DATA} */
    public static final long DES_CBC_ENCRYPT_DATA = 0x1101L;
    /** {@code CKM_DES3_ECB_ENCRYPT_DATA} */
    public static final long DES3_ECB_ENCRYPT_DATA = 0x1102L;
    /** {@code CKM_DES3_CBC_ENCRYPT_DATA} */
    public static final long DES3_CBC_ENCRYPT_DATA = 0x1103L;
    /** {@code CKM_AES_ECB_ENCRYPT_DATA} */
    public static final long AES_ECB_ENCRYPT_DATA = 0x1104L;
    /** {@code CKM_AES_CBC_ENCRYPT_DATA} */
    public static final long AES_CBC_ENCRYPT_DATA = 0x1105L;
    /** {@code CKM_AES_OFB} */
    public static final long AES_OFB = 0x2104L;
    /** {@code CKM_AES_CFB64} */
    public static final long AES_CFB64 = 0x2105L;
    /** {@code CKM_AES_CFB8} */
    public static final long AES_CFB8 = 0x2106L;
    /** {@code CKM_AES_CFB128} */
    public static final long AES_CFB128 = 0x2107L;
    /** {@code CKM_AES_CFB1} */
    public static final long AES_CFB1 = 0x2108L;
    /**
     * The standard's {@code CKM_AES_KEY_WRAP}. The name without {@code _STD} misleads: {@link #AES_KEY_WRAP}
     * has the vendor's value.
     */
    public static final long AES_KEY_WRAP_STD = 0x2109L;
    /**
     * The standard's {@code CKM_AES_KEY_WRAP_PAD}. The name without {@code _STD} misleads:
     * {@link #AES_KEY_WRAP_PAD} has the vendor's value.
     */
    public static final long AES_KEY_WRAP_PAD_STD = 0x210AL;
    /** {@code CKM_RSA_PKCS_TPM_1_1} */
    public static final long RSA_PKCS_TPM_1_1 = 0x4001L;
    /** {@code CKM_RSA_PKCS_OAEP_TPM_1_1} */
    public static final long RSA_PKCS_OAEP_TPM_1_1 = 0x4002L;
    /** {@code CKM_VENDOR_DEFINED}: the first value that a vendor may define. */
    public static final long VENDOR_DEFINED = 0x80000000L;

    // Of the standard up to v3.1, and not in cryptoki.h; the natives of CTUtil do not know these names
    /** {@code CKM_DSA_SHA3_224} */
    public static final long DSA_SHA3_224 = 0x18L;
    /** {@code CKM_DSA_SHA3_256} */
    public static final long DSA_SHA3_256 = 0x19L;
    /** {@code CKM_DSA_SHA3_384} */
    public static final long DSA_SHA3_384 = 0x1AL;
    /** {@code CKM_DSA_SHA3_512} */
    public static final long DSA_SHA3_512 = 0x1BL;
    /** {@code CKM_SHA3_256_RSA_PKCS} */
    public static final long SHA3_256_RSA_PKCS = 0x60L;
    /** {@code CKM_SHA3_384_RSA_PKCS} */
    public static final long SHA3_384_RSA_PKCS = 0x61L;
    /** {@code CKM_SHA3_512_RSA_PKCS} */
    public static final long SHA3_512_RSA_PKCS = 0x62L;
    /** {@code CKM_SHA3_256_RSA_PKCS_PSS} */
    public static final long SHA3_256_RSA_PKCS_PSS = 0x63L;
    /** {@code CKM_SHA3_384_RSA_PKCS_PSS} */
    public static final long SHA3_384_RSA_PKCS_PSS = 0x64L;
    /** {@code CKM_SHA3_512_RSA_PKCS_PSS} */
    public static final long SHA3_512_RSA_PKCS_PSS = 0x65L;
    /** {@code CKM_SHA3_224_RSA_PKCS} */
    public static final long SHA3_224_RSA_PKCS = 0x66L;
    /** {@code CKM_SHA3_224_RSA_PKCS_PSS} */
    public static final long SHA3_224_RSA_PKCS_PSS = 0x67L;
    /** {@code CKM_SECURID_KEY_GEN} */
    public static final long SECURID_KEY_GEN = 0x280L;
    /** {@code CKM_SECURID} */
    public static final long SECURID = 0x282L;
    /** {@code CKM_HOTP_KEY_GEN} */
    public static final long HOTP_KEY_GEN = 0x290L;
    /** {@code CKM_HOTP} */
    public static final long HOTP = 0x291L;
    /** {@code CKM_ACTI} */
    public static final long ACTI = 0x2A0L;
    /** {@code CKM_ACTI_KEY_GEN} */
    public static final long ACTI_KEY_GEN = 0x2A1L;
    /** {@code CKM_SHA3_256} */
    public static final long SHA3_256 = 0x2B0L;
    /** {@code CKM_SHA3_256_HMAC} */
    public static final long SHA3_256_HMAC = 0x2B1L;
    /** {@code CKM_SHA3_256_HMAC_GENERAL} */
    public static final long SHA3_256_HMAC_GENERAL = 0x2B2L;
    /** {@code CKM_SHA3_256_KEY_GEN} */
    public static final long SHA3_256_KEY_GEN = 0x2B3L;
    /** {@code CKM_SHA3_224} */
    public static final long SHA3_224 = 0x2B5L;
    /** {@code CKM_SHA3_224_HMAC} */
    public static final long SHA3_224_HMAC = 0x2B6L;
    /** {@code CKM_SHA3_224_HMAC_GENERAL} */
    public static final long SHA3_224_HMAC_GENERAL = 0x2B7L;
    /** {@code CKM_SHA3_224_KEY_GEN} */
    public static final long SHA3_224_KEY_GEN = 0x2B8L;
    /** {@code CKM_SHA3_384} */
    public static final long SHA3_384 = 0x2C0L;
    /** {@code CKM_SHA3_384_HMAC} */
    public static final long SHA3_384_HMAC = 0x2C1L;
    /** {@code CKM_SHA3_384_HMAC_GENERAL} */
    public static final long SHA3_384_HMAC_GENERAL = 0x2C2L;
    /** {@code CKM_SHA3_384_KEY_GEN} */
    public static final long SHA3_384_KEY_GEN = 0x2C3L;
    /** {@code CKM_SHA3_512} */
    public static final long SHA3_512 = 0x2D0L;
    /** {@code CKM_SHA3_512_HMAC} */
    public static final long SHA3_512_HMAC = 0x2D1L;
    /** {@code CKM_SHA3_512_HMAC_GENERAL} */
    public static final long SHA3_512_HMAC_GENERAL = 0x2D2L;
    /** {@code CKM_SHA3_512_KEY_GEN} */
    public static final long SHA3_512_KEY_GEN = 0x2D3L;
    /** {@code CKM_SHA3_256_KEY_DERIVATION} */
    public static final long SHA3_256_KEY_DERIVATION = 0x397L;
    /** {@code CKM_SHA3_224_KEY_DERIVATION} */
    public static final long SHA3_224_KEY_DERIVATION = 0x398L;
    /** {@code CKM_SHA3_384_KEY_DERIVATION} */
    public static final long SHA3_384_KEY_DERIVATION = 0x399L;
    /** {@code CKM_SHA3_512_KEY_DERIVATION} */
    public static final long SHA3_512_KEY_DERIVATION = 0x39AL;
    /** {@code CKM_SHAKE_128_KEY_DERIVATION} */
    public static final long SHAKE_128_KEY_DERIVATION = 0x39BL;
    /** {@code CKM_SHAKE_256_KEY_DERIVATION} */
    public static final long SHAKE_256_KEY_DERIVATION = 0x39CL;
    /** {@code CKM_SP800_108_COUNTER_KDF} */
    public static final long SP800_108_COUNTER_KDF = 0x3ACL;
    /** {@code CKM_SP800_108_FEEDBACK_KDF} */
    public static final long SP800_108_FEEDBACK_KDF = 0x3ADL;
    /** {@code CKM_SP800_108_DOUBLE_PIPELINE_KDF} */
    public static final long SP800_108_DOUBLE_PIPELINE_KDF = 0x3AEL;
    /** {@code CKM_TLS10_MAC_SERVER} */
    public static final long TLS10_MAC_SERVER = 0x3D6L;
    /** {@code CKM_TLS10_MAC_CLIENT} */
    public static final long TLS10_MAC_CLIENT = 0x3D7L;
    /** {@code CKM_KIP_DERIVE} */
    public static final long KIP_DERIVE = 0x510L;
    /** {@code CKM_KIP_WRAP} */
    public static final long KIP_WRAP = 0x511L;
    /** {@code CKM_KIP_MAC} */
    public static final long KIP_MAC = 0x512L;
    /** {@code CKM_CAMELLIA_CTR} */
    public static final long CAMELLIA_CTR = 0x558L;
    /** {@code CKM_KEA_DERIVE} */
    public static final long KEA_DERIVE = 0x1012L;
    /** Alias of {@link #EC_KEY_PAIR_GEN}. */
    public static final long ECDSA_KEY_PAIR_GEN = 0x1040L;
    /** {@code CKM_ECDSA_SHA3_224} */
    public static final long ECDSA_SHA3_224 = 0x1047L;
    /** {@code CKM_ECDSA_SHA3_256} */
    public static final long ECDSA_SHA3_256 = 0x1048L;
    /** {@code CKM_ECDSA_SHA3_384} */
    public static final long ECDSA_SHA3_384 = 0x1049L;
    /** {@code CKM_ECDSA_SHA3_512} */
    public static final long ECDSA_SHA3_512 = 0x104AL;
    /** {@code CKM_ECDH_AES_KEY_WRAP} */
    public static final long ECDH_AES_KEY_WRAP = 0x1053L;
    /** {@code CKM_RSA_AES_KEY_WRAP} */
    public static final long RSA_AES_KEY_WRAP = 0x1054L;
    /** {@code CKM_EC_EDWARDS_KEY_PAIR_GEN} */
    public static final long EC_EDWARDS_KEY_PAIR_GEN = 0x1055L;
    /** {@code CKM_EC_MONTGOMERY_KEY_PAIR_GEN} */
    public static final long EC_MONTGOMERY_KEY_PAIR_GEN = 0x1056L;
    /** {@code CKM_EDDSA}: Ed25519 and Ed448. */
    public static final long EDDSA = 0x1057L;
    /** {@code CKM_AES_XTS} */
    public static final long AES_XTS = 0x1071L;
    /** {@code CKM_AES_XTS_KEY_GEN} */
    public static final long AES_XTS_KEY_GEN = 0x1072L;
    /** {@code CKM_GOSTR3410_KEY_PAIR_GEN} */
    public static final long GOSTR3410_KEY_PAIR_GEN = 0x1200L;
    /** {@code CKM_GOSTR3410} */
    public static final long GOSTR3410 = 0x1201L;
    /** {@code CKM_GOSTR3410_WITH_GOSTR3411} */
    public static final long GOSTR3410_WITH_GOSTR3411 = 0x1202L;
    /** {@code CKM_GOSTR3410_KEY_WRAP} */
    public static final long GOSTR3410_KEY_WRAP = 0x1203L;
    /** {@code CKM_GOSTR3410_DERIVE} */
    public static final long GOSTR3410_DERIVE = 0x1204L;
    /** {@code CKM_GOSTR3411} */
    public static final long GOSTR3411 = 0x1210L;
    /** {@code CKM_GOSTR3411_HMAC} */
    public static final long GOSTR3411_HMAC = 0x1211L;
    /** {@code CKM_GOST28147_KEY_GEN} */
    public static final long GOST28147_KEY_GEN = 0x1220L;
    /** {@code CKM_GOST28147_ECB} */
    public static final long GOST28147_ECB = 0x1221L;
    /** {@code CKM_GOST28147} */
    public static final long GOST28147 = 0x1222L;
    /** {@code CKM_GOST28147_MAC} */
    public static final long GOST28147_MAC = 0x1223L;
    /** {@code CKM_GOST28147_KEY_WRAP} */
    public static final long GOST28147_KEY_WRAP = 0x1224L;
    /** {@code CKM_CHACHA20_KEY_GEN} */
    public static final long CHACHA20_KEY_GEN = 0x1225L;
    /** {@code CKM_CHACHA20} */
    public static final long CHACHA20 = 0x1226L;
    /** {@code CKM_POLY1305_KEY_GEN} */
    public static final long POLY1305_KEY_GEN = 0x1227L;
    /** {@code CKM_POLY1305} */
    public static final long POLY1305 = 0x1228L;
    /** {@code CKM_EC_KEY_PAIR_GEN_W_EXTRA_BITS} */
    public static final long EC_KEY_PAIR_GEN_W_EXTRA_BITS = 0x140BL;
    /** {@code CKM_DSA_PROBABILISTIC_PARAMETER_GEN} */
    public static final long DSA_PROBABILISTIC_PARAMETER_GEN = 0x2003L;
    /** Alias of {@link #DSA_PROBABILISTIC_PARAMETER_GEN}, as v2.40 spells it. */
    public static final long DSA_PROBABLISTIC_PARAMETER_GEN = 0x2003L;
    /** {@code CKM_DSA_SHAWE_TAYLOR_PARAMETER_GEN} */
    public static final long DSA_SHAWE_TAYLOR_PARAMETER_GEN = 0x2004L;
    /** {@code CKM_DSA_FIPS_G_GEN} */
    public static final long DSA_FIPS_G_GEN = 0x2005L;
    /** {@code CKM_AES_KEY_WRAP_KWP}: AES key wrap with padding, RFC 5649. */
    public static final long AES_KEY_WRAP_KWP = 0x210BL;
    /** {@code CKM_AES_KEY_WRAP_PKCS7}: AES key wrap, RFC 3394, with PKCS#7 padding. */
    public static final long AES_KEY_WRAP_PKCS7 = 0x210CL;
    /** {@code CKM_SHA_1_KEY_GEN} */
    public static final long SHA_1_KEY_GEN = 0x4003L;
    /** {@code CKM_SHA224_KEY_GEN} */
    public static final long SHA224_KEY_GEN = 0x4004L;
    /** {@code CKM_SHA256_KEY_GEN} */
    public static final long SHA256_KEY_GEN = 0x4005L;
    /** {@code CKM_SHA384_KEY_GEN} */
    public static final long SHA384_KEY_GEN = 0x4006L;
    /** {@code CKM_SHA512_KEY_GEN} */
    public static final long SHA512_KEY_GEN = 0x4007L;
    /** {@code CKM_SHA512_224_KEY_GEN} */
    public static final long SHA512_224_KEY_GEN = 0x4008L;
    /** {@code CKM_SHA512_256_KEY_GEN} */
    public static final long SHA512_256_KEY_GEN = 0x4009L;
    /** {@code CKM_SHA512_T_KEY_GEN} */
    public static final long SHA512_T_KEY_GEN = 0x400AL;
    /** {@code CKM_NULL}: does nothing; for tests. */
    public static final long NULL = 0x400BL;
    /** {@code CKM_BLAKE2B_160} */
    public static final long BLAKE2B_160 = 0x400CL;
    /** {@code CKM_BLAKE2B_160_HMAC} */
    public static final long BLAKE2B_160_HMAC = 0x400DL;
    /** {@code CKM_BLAKE2B_160_HMAC_GENERAL} */
    public static final long BLAKE2B_160_HMAC_GENERAL = 0x400EL;
    /** {@code CKM_BLAKE2B_160_KEY_DERIVE} */
    public static final long BLAKE2B_160_KEY_DERIVE = 0x400FL;
    /** {@code CKM_BLAKE2B_160_KEY_GEN} */
    public static final long BLAKE2B_160_KEY_GEN = 0x4010L;
    /** {@code CKM_BLAKE2B_256} */
    public static final long BLAKE2B_256 = 0x4011L;
    /** {@code CKM_BLAKE2B_256_HMAC} */
    public static final long BLAKE2B_256_HMAC = 0x4012L;
    /** {@code CKM_BLAKE2B_256_HMAC_GENERAL} */
    public static final long BLAKE2B_256_HMAC_GENERAL = 0x4013L;
    /** {@code CKM_BLAKE2B_256_KEY_DERIVE} */
    public static final long BLAKE2B_256_KEY_DERIVE = 0x4014L;
    /** {@code CKM_BLAKE2B_256_KEY_GEN} */
    public static final long BLAKE2B_256_KEY_GEN = 0x4015L;
    /** {@code CKM_BLAKE2B_384} */
    public static final long BLAKE2B_384 = 0x4016L;
    /** {@code CKM_BLAKE2B_384_HMAC} */
    public static final long BLAKE2B_384_HMAC = 0x4017L;
    /** {@code CKM_BLAKE2B_384_HMAC_GENERAL} */
    public static final long BLAKE2B_384_HMAC_GENERAL = 0x4018L;
    /** {@code CKM_BLAKE2B_384_KEY_DERIVE} */
    public static final long BLAKE2B_384_KEY_DERIVE = 0x4019L;
    /** {@code CKM_BLAKE2B_384_KEY_GEN} */
    public static final long BLAKE2B_384_KEY_GEN = 0x401AL;
    /** {@code CKM_BLAKE2B_512} */
    public static final long BLAKE2B_512 = 0x401BL;
    /** {@code CKM_BLAKE2B_512_HMAC} */
    public static final long BLAKE2B_512_HMAC = 0x401CL;
    /** {@code CKM_BLAKE2B_512_HMAC_GENERAL} */
    public static final long BLAKE2B_512_HMAC_GENERAL = 0x401DL;
    /** {@code CKM_BLAKE2B_512_KEY_DERIVE} */
    public static final long BLAKE2B_512_KEY_DERIVE = 0x401EL;
    /** {@code CKM_BLAKE2B_512_KEY_GEN} */
    public static final long BLAKE2B_512_KEY_GEN = 0x401FL;
    /** {@code CKM_SALSA20} */
    public static final long SALSA20 = 0x4020L;
    /** {@code CKM_CHACHA20_POLY1305} */
    public static final long CHACHA20_POLY1305 = 0x4021L;
    /** {@code CKM_SALSA20_POLY1305} */
    public static final long SALSA20_POLY1305 = 0x4022L;
    /** {@code CKM_X3DH_INITIALIZE} */
    public static final long X3DH_INITIALIZE = 0x4023L;
    /** {@code CKM_X3DH_RESPOND} */
    public static final long X3DH_RESPOND = 0x4024L;
    /** {@code CKM_X2RATCHET_INITIALIZE} */
    public static final long X2RATCHET_INITIALIZE = 0x4025L;
    /** {@code CKM_X2RATCHET_RESPOND} */
    public static final long X2RATCHET_RESPOND = 0x4026L;
    /** {@code CKM_X2RATCHET_ENCRYPT} */
    public static final long X2RATCHET_ENCRYPT = 0x4027L;
    /** {@code CKM_X2RATCHET_DECRYPT} */
    public static final long X2RATCHET_DECRYPT = 0x4028L;
    /** {@code CKM_XEDDSA} */
    public static final long XEDDSA = 0x4029L;
    /** {@code CKM_HKDF_DERIVE} */
    public static final long HKDF_DERIVE = 0x402AL;
    /** {@code CKM_HKDF_DATA} */
    public static final long HKDF_DATA = 0x402BL;
    /** {@code CKM_HKDF_KEY_GEN} */
    public static final long HKDF_KEY_GEN = 0x402CL;
    /** {@code CKM_SALSA20_KEY_GEN} */
    public static final long SALSA20_KEY_GEN = 0x402DL;
    /** {@code CKM_IKE2_PRF_PLUS_DERIVE} */
    public static final long IKE2_PRF_PLUS_DERIVE = 0x402EL;
    /** {@code CKM_IKE_PRF_DERIVE} */
    public static final long IKE_PRF_DERIVE = 0x402FL;
    /** {@code CKM_IKE1_PRF_DERIVE} */
    public static final long IKE1_PRF_DERIVE = 0x4030L;
    /** {@code CKM_IKE1_EXTENDED_DERIVE} */
    public static final long IKE1_EXTENDED_DERIVE = 0x4031L;
    /** {@code CKM_HSS_KEY_PAIR_GEN} */
    public static final long HSS_KEY_PAIR_GEN = 0x4032L;
    /** {@code CKM_HSS} */
    public static final long HSS = 0x4033L;

    // Of the vendor
    /**
     * A name that misleads: the vendor's {@code CKM_DSA_SHA224}. Other modules do not know this value; with
     * them, use {@link #DSA_SHA224_STD}, the standard's.
     */
    public static final long DSA_SHA224 = 0x80000032L;
    /** {@code CKM_DSA_SHA1_PKCS} */
    public static final long DSA_SHA1_PKCS = 0x80000013L;
    /** {@code CKM_DSA_SHA224_PKCS} */
    public static final long DSA_SHA224_PKCS = 0x80000033L;
    /**
     * A name that misleads: the vendor's {@code CKM_DSA_SHA256}. Other modules do not know this value; with
     * them, use {@link #DSA_SHA256_STD}, the standard's.
     */
    public static final long DSA_SHA256 = 0x80000034L;
    /** {@code CKM_DSA_SHA256_PKCS} */
    public static final long DSA_SHA256_PKCS = 0x80000035L;
    /** {@code CKM_RC2_ECB_PAD} */
    public static final long RC2_ECB_PAD = 0x80000101L;
    /** {@code CKM_RC5_ECB_PAD} */
    public static final long RC5_ECB_PAD = 0x80000331L;
    /** {@code CKM_DES_ECB_PAD} */
    public static final long DES_ECB_PAD = 0x80000121L;
    /** {@code CKM_DES_BCF} */
    public static final long DES_BCF = 0x8000038EL;
    /** {@code CKM_DES3_ECB_PAD} */
    public static final long DES3_ECB_PAD = 0x80000132L;
    /** {@code CKM_DES3_DDD_CBC} */
    public static final long DES3_DDD_CBC = 0x80000964L;
    /** {@code CKM_CAST_ECB_PAD} */
    public static final long CAST_ECB_PAD = 0x80000301L;
    /** {@code CKM_DES3_BCF} */
    public static final long DES3_BCF = 0x8000038FL;
    /** {@code CKM_CAST3_ECB_PAD} */
    public static final long CAST3_ECB_PAD = 0x80000311L;
    /** {@code CKM_CAST128_ECB_PAD} */
    public static final long CAST128_ECB_PAD = 0x80000321L;
    /** {@code CKM_IDEA_ECB_PAD} */
    public static final long IDEA_ECB_PAD = 0x80000341L;
    /** {@code CKM_DES3_X919_MAC} */
    public static final long DES3_X919_MAC = 0x80000134L;
    /** {@code CKM_DES3_X919_MAC_GENERAL} */
    public static final long DES3_X919_MAC_GENERAL = 0x80000135L;
    /** {@code CKM_XOR_BASE_AND_KEY} */
    public static final long XOR_BASE_AND_KEY = 0x80000364L;
    /** {@code CKM_MD4} */
    public static final long MD4 = 0x80000201L;
    /** {@code CKM_SHA} */
    public static final long SHA = 0x80000202L;
    /** {@code CKM_DES_MDC_2_PAD1} */
    public static final long DES_MDC_2_PAD1 = 0x80000200L;
    /** {@code CKM_RIPEMD} */
    public static final long RIPEMD = 0x80000203L;
    /** {@code CKM_ARDFP} */
    public static final long ARDFP = 0x80000204L;
    /** {@code CKM_NVB} */
    public static final long NVB = 0x80000205L;
    /** {@code CKM_ENCODE_ATTRIBUTES} */
    public static final long ENCODE_ATTRIBUTES = 0x80000950L;
    /** {@code CKM_ENCODE_X_509} */
    public static final long ENCODE_X_509 = 0x80000951L;
    /** {@code CKM_ENCODE_PKCS_10} */
    public static final long ENCODE_PKCS_10 = 0x80000952L;
    /** {@code CKM_DECODE_X_509} */
    public static final long DECODE_X_509 = 0x80000953L;
    /** {@code CKM_ENCODE_PUBLIC_KEY} */
    public static final long ENCODE_PUBLIC_KEY = 0x80000954L;
    /** {@code CKM_WRAPKEY_DES3_ECB} */
    public static final long WRAPKEY_DES3_ECB = 0x80000961L;
    /** {@code CKM_WRAPKEY_DES3_CBC} */
    public static final long WRAPKEY_DES3_CBC = 0x80000962L;
    /** {@code CKM_WRAPKEY_AES_CBC} */
    public static final long WRAPKEY_AES_CBC = 0x80000963L;
    /** {@code CKM_WRAPKEYBLOB_DES3_CBC} */
    public static final long WRAPKEYBLOB_DES3_CBC = 0x80000971L;
    /** {@code CKM_WRAPKEYBLOB_AES_CBC} */
    public static final long WRAPKEYBLOB_AES_CBC = 0x80000970L;
    /** {@code CKM_VERIFY_CERTIFICATE} */
    public static final long VERIFY_CERTIFICATE = 0x80000980L;
    /** {@code CKM_ENCODE_PKCS_7} */
    public static final long ENCODE_PKCS_7 = 0x80000934L;
    /** {@code CKM_DECODE_PKCS_7} */
    public static final long DECODE_PKCS_7 = 0x80000935L;
    /** {@code CKM_RSA_PKCS_7} */
    public static final long RSA_PKCS_7 = 0x80000930L;
    /** {@code CKM_RSA_PKCS_7_ENC} */
    public static final long RSA_PKCS_7_ENC = 0x80000931L;
    /** {@code CKM_RSA_PKCS_7_SIGN} */
    public static final long RSA_PKCS_7_SIGN = 0x80000932L;
    /** {@code CKM_RSA_PKCS_7_SIGN_ENC} */
    public static final long RSA_PKCS_7_SIGN_ENC = 0x80000933L;
    /** {@code CKM_ENCODE_X_509_LOCAL_CERT} */
    public static final long ENCODE_X_509_LOCAL_CERT = 0x80000955L;
    /** {@code CKM_KEY_TRANSLATION} */
    public static final long KEY_TRANSLATION = 0x8000001BL;
    /** {@code CKM_OS_UPGRADE} */
    public static final long OS_UPGRADE = 0x80000990L;
    /**
     * A name that misleads: the vendor's {@code CKM_DES_OFB64}. Other modules do not know this value; with
     * them, use {@link #DES_OFB64_STD}, the standard's.
     */
    public static final long DES_OFB64 = 0x80000940L;
    /** {@code CKM_DES3_OFB64} */
    public static final long DES3_OFB64 = 0x80000941L;
    /** {@code CKM_FM_DOWNLOAD} */
    public static final long FM_DOWNLOAD = 0x80000991L;
    /** {@code CKM_OS_UPGRADE_2} */
    public static final long OS_UPGRADE_2 = 0x80000994L;
    /** {@code CKM_FM_DOWNLOAD_2} */
    public static final long FM_DOWNLOAD_2 = 0x80000995L;
    /** {@code CKM_RSA_FIPS_186_4_PRIME_KEY_PAIR_GEN} */
    public static final long RSA_FIPS_186_4_PRIME_KEY_PAIR_GEN = 0x80000400L;
    /** {@code CKM_DES_DERIVE_ECB} */
    public static final long DES_DERIVE_ECB = 0x80000500L;
    /** {@code CKM_DES_DERIVE_CBC} */
    public static final long DES_DERIVE_CBC = 0x80000501L;
    /** {@code CKM_DES3_DERIVE_ECB} */
    public static final long DES3_DERIVE_ECB = 0x80000502L;
    /** {@code CKM_DES3_DERIVE_CBC} */
    public static final long DES3_DERIVE_CBC = 0x80000503L;
    /** {@code CKM_SHA1_RSA_PKCS_TIMESTAMP} */
    public static final long SHA1_RSA_PKCS_TIMESTAMP = 0x80000600L;
    /** {@code CKM_DES3_RETAIL_CFB_MAC} */
    public static final long DES3_RETAIL_CFB_MAC = 0x80000510L;
    /** {@code CKM_PP_LOAD_SECRET} */
    public static final long PP_LOAD_SECRET = 0x800009A0L;
    /** {@code CKM_VISA_CVV} */
    public static final long VISA_CVV = 0x800009B0L;
    /** {@code CKM_ZKA_MDC_2_KEY_DERIVATION} */
    public static final long ZKA_MDC_2_KEY_DERIVATION = 0x800009C0L;
    /**
     * A name that misleads: the vendor's {@code CKM_SEED_KEY_GEN}. Other modules do not know this value; with
     * them, use {@link #SEED_KEY_GEN_STD}, the standard's.
     */
    public static final long SEED_KEY_GEN = 0x800009D0L;
    /**
     * A name that misleads: the vendor's {@code CKM_SEED_ECB}. Other modules do not know this value; with
     * them, use {@link #SEED_ECB_STD}, the standard's.
     */
    public static final long SEED_ECB = 0x800009D1L;
    /**
     * A name that misleads: the vendor's {@code CKM_SEED_CBC}. Other modules do not know this value; with
     * them, use {@link #SEED_CBC_STD}, the standard's.
     */
    public static final long SEED_CBC = 0x800009D2L;
    /**
     * A name that misleads: the vendor's {@code CKM_SEED_MAC}. Other modules do not know this value; with
     * them, use {@link #SEED_MAC_STD}, the standard's.
     */
    public static final long SEED_MAC = 0x800009D3L;
    /**
     * A name that misleads: the vendor's {@code CKM_SEED_MAC_GENERAL}. Other modules do not know this value;
     * with them, use {@link #SEED_MAC_GENERAL_STD}, the standard's.
     */
    public static final long SEED_MAC_GENERAL = 0x800009D4L;
    /** {@code CKM_SEED_ECB_PAD} */
    public static final long SEED_ECB_PAD = 0x800009D5L;
    /**
     * A name that misleads: the vendor's {@code CKM_SEED_CBC_PAD}. Other modules do not know this value; with
     * them, use {@link #SEED_CBC_PAD_STD}, the standard's.
     */
    public static final long SEED_CBC_PAD = 0x800009D6L;
    /** {@code CKM_REPLICATE_TOKEN_RSA_AES} */
    public static final long REPLICATE_TOKEN_RSA_AES = 0x800009E0L;
    /** {@code CKM_SECRET_SHARE_WITH_ATTRIBUTES} */
    public static final long SECRET_SHARE_WITH_ATTRIBUTES = 0x800009F0L;
    /** {@code CKM_SECRET_RECOVER_WITH_ATTRIBUTES} */
    public static final long SECRET_RECOVER_WITH_ATTRIBUTES = 0x800009F1L;
    /** {@code CKM_PKCS12_PBE_EXPORT} */
    public static final long PKCS12_PBE_EXPORT = 0x800009F2L;
    /** {@code CKM_PKCS12_PBE_IMPORT} */
    public static final long PKCS12_PBE_IMPORT = 0x800009F3L;
    /** {@code CKM_ECIES} */
    public static final long ECIES = 0x80000A00L;
    /** {@code CKM_SET_ATTRIBUTES} */
    public static final long SET_ATTRIBUTES = 0x80000A10L;
    /**
     * A name that misleads: the vendor's {@code CKM_ECDSA_SHA224}. Other modules do not know this value; with
     * them, use {@link #ECDSA_SHA224_STD}, the standard's.
     */
    public static final long ECDSA_SHA224 = 0x80000122L;
    /**
     * A name that misleads: the vendor's {@code CKM_ECDSA_SHA256}. Other modules do not know this value; with
     * them, use {@link #ECDSA_SHA256_STD}, the standard's.
     */
    public static final long ECDSA_SHA256 = 0x80000123L;
    /**
     * A name that misleads: the vendor's {@code CKM_ECDSA_SHA384}. Other modules do not know this value; with
     * them, use {@link #ECDSA_SHA384_STD}, the standard's.
     */
    public static final long ECDSA_SHA384 = 0x80000124L;
    /**
     * A name that misleads: the vendor's {@code CKM_ECDSA_SHA512}. Other modules do not know this value; with
     * them, use {@link #ECDSA_SHA512_STD}, the standard's.
     */
    public static final long ECDSA_SHA512 = 0x80000125L;

    private CKM() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKM_AES_CBC"} or {@code "AES_CBC"}, case-sensitive; must not be null
     * @return the value; for a name that the vendor has given to a value of its own, the vendor's, and with
     *         {@code _STD} behind it the standard's
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKM.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKM_AES_CBC"}; of several names the one that this class declares first;
     *         null if there is none
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKM.class, value);
    }
}
