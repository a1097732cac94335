// The typed holder of a hardware feature type.
package halvorn.zerlin.constants;

/**
 * A hardware feature type, one of {@link CKH}.
 */
public class CK_HW_FEATURE_TYPE extends TypedValue {
    /** Creates a holder of 0. */
    public CK_HW_FEATURE_TYPE() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKH}
     */
    public CK_HW_FEATURE_TYPE(long value) {
        super(value);
    }

    @Override
    Class<?> constants() {
        return CKH.class;
    }
}
