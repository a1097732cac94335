// The typed holder of a certificate type.
package halvorn.zerlin.constants;

/**
 * A certificate type, one of {@link CKC}.
 */
public class CK_CERTIFICATE_TYPE extends TypedValue {
    /** Creates a holder of 0, {@code CKC_X_509}. */
    public CK_CERTIFICATE_TYPE() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKC}
     */
    public CK_CERTIFICATE_TYPE(long value) {
        super(value);
    }

    @Override
    Class<?> constants() {
        return CKC.class;
    }
}
