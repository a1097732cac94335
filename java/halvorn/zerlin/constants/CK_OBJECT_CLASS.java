// The typed holder of an object class.
package halvorn.zerlin.constants;

/**
 * An object class, one of {@link CKO}.
 */
public class CK_OBJECT_CLASS extends TypedValue {
    /** Creates a holder of 0, {@code CKO_DATA}. */
    public CK_OBJECT_CLASS() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKO}
     */
    public CK_OBJECT_CLASS(long value) {
        super(value);
    }

    @Override
    Class<?> constants() {
        return CKO.class;
    }
}
