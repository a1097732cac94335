// The exception that CK_RV.orThrow throws for a PKCS#11 return value.
package halvorn.zerlin;

import halvorn.zerlin.constants.CKR;
import halvorn.zerlin.constants.CK_RV;

/**
 * A PKCS#11 function returned a value that the caller did not accept. {@link CK_RV#orThrow()} throws it; the
 * natives never do. Its message says the call, if that is known, the value, and what to do about it, for example
 * {@code "C_CreateObject: CKR_SESSION_READ_ONLY (0xb5): open the session with CKF.RW_SESSION"}.
 */
public class CryptokiException extends RuntimeException {
    private static final long serialVersionUID = 2L;

    /** The return value. */
    private final long rv;

    /** The name of the function; may be null. */
    private final String call;

    /**
     * Creates an exception whose message names the return value and says what to do.
     *
     * @param rv the return value; must not be null
     */
    public CryptokiException(CK_RV rv) {
        this(null, rv);
    }

    /**
     * Creates an exception whose message names the call and the return value and says what to do.
     *
     * @param call the name of the function, for example {@code "C_Login"}; null if it is not known
     * @param rv the return value; must not be null
     */
    public CryptokiException(String call, CK_RV rv) {
        super((call == null ? "" : call + ": ") + describe(rv));
        this.call = call;
        this.rv = rv.m_value;
    }

    private static String describe(CK_RV rv) {
        String name = rv.toString();
        if (name.startsWith("0x") && (rv.m_value & CKR.VENDOR_DEFINED) != 0) {
            name = "Vendor defined (" + name + ")";
        }
        String advice = Advice.of(rv.m_value);
        return advice == null ? name : name + ": " + advice;
    }

    /**
     * Returns the return value.
     *
     * @return a new object that holds it
     */
    public CK_RV getRV() {
        return new CK_RV(rv);
    }

    /**
     * Returns the name of the function.
     *
     * @return for example {@code "C_Login"}; null if it is not known
     */
    public String getCall() {
        return call;
    }

    /**
     * Compares the return value with a constant.
     *
     * @param value a value of {@link CKR}
     * @return true if the return value has that value
     */
    public boolean is(long value) {
        return rv == value;
    }
}
