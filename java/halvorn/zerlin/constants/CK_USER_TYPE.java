// The typed holder of a user type.
package halvorn.zerlin.constants;

/**
 * A user type, one of {@link CKU}, for {@link halvorn.zerlin.Cryptoki#C_Login C_Login}.
 */
public class CK_USER_TYPE extends TypedValue {
    /** Creates a holder of 0, {@code CKU_SO}. */
    public CK_USER_TYPE() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKU}
     */
    public CK_USER_TYPE(long value) {
        super(value);
    }

    @Override
    Class<?> constants() {
        return CKU.class;
    }
}
