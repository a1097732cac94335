// The typed holder of a session state.
package halvorn.zerlin.constants;

/**
 * A session state, one of {@link CKS}.
 */
public class CK_STATE extends TypedValue {
    /** Creates a holder of 0, {@code CKS_RO_PUBLIC_SESSION}. */
    public CK_STATE() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKS}
     */
    public CK_STATE(long value) {
        super(value);
    }

    @Override
    Class<?> constants() {
        return CKS.class;
    }
}
