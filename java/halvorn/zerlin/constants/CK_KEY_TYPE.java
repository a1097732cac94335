// The typed holder of a key type.
package halvorn.zerlin.constants;

/**
 * A key type, one of {@link CKK}.
 */
public class CK_KEY_TYPE extends TypedValue {
    /** Creates a holder of 0, {@code CKK_RSA}. */
    public CK_KEY_TYPE() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKK}
     */
    public CK_KEY_TYPE(long value) {
        super(value);
    }

    @Override
    Class<?> constants() {
        return CKK.class;
    }
}
