// The typed holder of a PKCS#11 return value, with the checks that callers make on it.
package halvorn.zerlin.constants;

import halvorn.zerlin.CryptokiException;

/**
 * A PKCS#11 return value, one of {@link CKR}: the result of every native of {@link halvorn.zerlin.Cryptoki}.
 *
 * <p>A native returns a new object each time. It returns null only while a Java exception is pending, so a
 * caller never sees that null.
 *
 * <pre>{@code
 * Cryptoki.C_Login(session, new CK_USER_TYPE(CKU.USER), pin, pin.length).orThrow(CKR.USER_ALREADY_LOGGED_IN);
 * }</pre>
 */
public class CK_RV extends TypedValue {
    /** Makes a holder of 0, {@code CKR_OK}. */
    public CK_RV() {
    }

    /**
     * Makes a holder of a value.
     *
     * @param value a value of {@link CKR}
     */
    public CK_RV(long value) {
        super(value);
    }

    /**
     * Tells success.
     *
     * @return true for {@code CKR_OK}
     */
    public boolean isOk() {
        return m_value == CKR.OK;
    }

    /**
     * Compares with a plain constant.
     *
     * @param value a value of {@link CKR}
     * @return true when this return value is that one
     */
    public boolean is(long value) {
        return m_value == value;
    }

    /**
     * Turns a failure into an exception.
     *
     * @return this object, when it is {@code CKR_OK}
     * @throws CryptokiException for every other value
     */
    public CK_RV orThrow() {
        if (!isOk()) {
            throw new CryptokiException(this);
        }
        return this;
    }

    /**
     * Turns a failure that the caller does not expect into an exception.
     *
     * @param accepted values of {@link CKR} that are no failure here, beside {@code CKR_OK}
     * @return this object, when it is {@code CKR_OK} or an accepted value
     * @throws CryptokiException for every other value
     */
    public CK_RV orThrow(long... accepted) {
        for (long value : accepted) {
            if (m_value == value) {
                return this;
            }
        }
        return orThrow();
    }

    @Override
    Class<?> constants() {
        return CKR.class;
    }
}
