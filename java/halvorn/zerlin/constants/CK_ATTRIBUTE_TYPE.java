// The typed holder of an attribute type.
package halvorn.zerlin.constants;

/**
 * An attribute type, one of {@link CKA}. In a template that is read, the type 65535, {@link CKA#WILDCARD},
 * stands for any type: it receives the type that was found.
 */
public class CK_ATTRIBUTE_TYPE extends TypedValue {
    /** Creates a holder of 0, {@code CKA_CLASS}. */
    public CK_ATTRIBUTE_TYPE() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKA}
     */
    public CK_ATTRIBUTE_TYPE(long value) {
        super(value);
    }

    @Override
    Class<?> constants() {
        return CKA.class;
    }
}
