// The exception that CK_RV.orThrow throws for a PKCS#11 return value.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_RV;

/**
 * A PKCS#11 function returned a value that the caller did not accept. {@link CK_RV#orThrow()} throws it; the
 * natives never do.
 */
public class CryptokiException extends RuntimeException {
    private static final long serialVersionUID = 1L;

    /** The return value. */
    private final long rv;

    /**
     * Creates an exception whose message names the return value, for example
     * {@code "CKR_PIN_INCORRECT (0xa0)"}.
     *
     * @param rv the return value; must not be null
     */
    public CryptokiException(CK_RV rv) {
        super(rv.toString());
        this.rv = rv.m_value;
    }

    /**
     * Returns the return value.
     *
     * @return a new object that holds it
     */
    public CK_RV getRV() {
        return new CK_RV(rv);
    }
}
