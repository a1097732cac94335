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
}
