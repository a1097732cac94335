// The constants of the prefix CKZ_, name for name and in the order of cryptoki.h.
package halvorn.zerlin.constants;

/**
 * Sources of the OAEP encoding parameter, for {@link CK_RSA_PKCS_OAEP_SOURCE_TYPE}.
 *
 * <p>Plain longs, because the typed holder objects are mutable: the library writes into them, so one instance
 * must never stand for a constant. Make a fresh holder with the value where one is needed.
 */
public final class CKZ {
    /** {@code CKZ_DATA_SPECIFIED} */
    public static final long DATA_SPECIFIED = 0x1L;
    /** For PKCS#5 PBKD2. */
    public static final long SALT_SPECIFIED = 0x1L;

    private CKZ() {
    }
}
