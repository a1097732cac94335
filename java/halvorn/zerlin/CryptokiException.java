// The exception that CK_RV.orThrow makes of a PKCS#11 return value.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_RV;

/**
 * A PKCS#11 call answered with a return value that the caller did not accept. The natives never throw it; it
 * comes from {@link CK_RV#orThrow()}.
 */
public class CryptokiException extends RuntimeException {
    private static final long serialVersionUID = 1L;

    /** The return value. */
    private final long rv;

    /**
     * Makes an exception whose message names the return value, for example
     * {@code "CKR_PIN_INCORRECT (0xa0)"}.
     *
     * @param rv the return value
     */
    public CryptokiException(CK_RV rv) {
        super(rv.toString());
        this.rv = rv.m_value;
    }

    /**
     * Tells the return value.
     *
     * @return a new object that holds it
     */
    public CK_RV getRV() {
        return new CK_RV(rv);
    }
}
