// The typed holder of a mechanism type.
package halvorn.zerlin.constants;

/**
 * A mechanism type, one of {@link CKM}.
 */
public class CK_MECHANISM_TYPE extends TypedValue {
    /** Creates a holder of 0, {@code CKM_RSA_PKCS_KEY_PAIR_GEN}. */
    public CK_MECHANISM_TYPE() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKM}
     */
    public CK_MECHANISM_TYPE(long value) {
        super(value);
    }

    /**
     * Creates an array for {@link halvorn.zerlin.Cryptoki#C_GetMechanismList C_GetMechanismList} or for the
     * value of an attribute. The natives write into the elements and create none.
     *
     * @param n the number of elements
     * @return a new array, filled with new objects
     */
    public static CK_MECHANISM_TYPE[] array(int n) {
        CK_MECHANISM_TYPE[] types = new CK_MECHANISM_TYPE[n];
        for (int i = 0; i < n; i++) {
            types[i] = new CK_MECHANISM_TYPE();
        }
        return types;
    }

    @Override
    Class<?> constants() {
        return CKM.class;
    }
}
