// The typed holder of the source of the OAEP encoding parameter.
package halvorn.zerlin.constants;

/**
 * The source of the encoding parameter of RSA OAEP, one of {@link CKZ}.
 */
public class CK_RSA_PKCS_OAEP_SOURCE_TYPE extends TypedValue {
    /** Creates a holder of 0. */
    public CK_RSA_PKCS_OAEP_SOURCE_TYPE() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKZ}
     */
    public CK_RSA_PKCS_OAEP_SOURCE_TYPE(long value) {
        super(value);
    }

    @Override
    Class<?> constants() {
        return CKZ.class;
    }
}
