// The typed holder of a PKCS#11 return value, with methods that check it.
package halvorn.zerlin.constants;

import halvorn.zerlin.CryptokiException;

/**
 * A PKCS#11 return value, one of {@link CKR}: the result of every native of {@link halvorn.zerlin.Cryptoki}.
 * A native returns a new object each time.
 *
 * <pre>{@code
 * Cryptoki.C_Login(session, new CK_USER_TYPE(CKU.USER), pin, pin.length)
 *         .orThrow("C_Login", CKR.USER_ALREADY_LOGGED_IN);
 * }</pre>
 */
public class CK_RV extends TypedValue {
    /** Creates a holder of 0, {@code CKR_OK}. */
    public CK_RV() {
    }

    /**
     * Creates a holder of a value.
     *
     * @param value a value of {@link CKR}
     */
    public CK_RV(long value) {
        super(value);
    }

    /**
     * Returns whether the call succeeded.
     *
     * @return true for {@code CKR_OK}
     */
    public boolean isOk() {
        return m_value == CKR.OK;
    }

    /**
     * Compares this return value with a constant.
     *
     * @param value a value of {@link CKR}
     * @return true if this return value has that value
     */
    public boolean is(long value) {
        return m_value == value;
    }

    /**
     * Throws an exception if the call failed.
     *
     * @return this object, if it is {@code CKR_OK}
     * @throws CryptokiException if this object has any other value
     */
    public CK_RV orThrow() {
        return orThrow((String) null);
    }

    /**
     * Throws an exception if the call failed in a way that the caller does not accept.
     *
     * @param accepted values of {@link CKR} that the caller accepts besides {@code CKR_OK}; must not be null
     * @return this object, if it is {@code CKR_OK} or an accepted value
     * @throws CryptokiException if this object has any other value
     */
    public CK_RV orThrow(long... accepted) {
        return orThrow(null, accepted);
    }

    /**
     * Throws an exception that names the call, if the call failed in a way that the caller does not accept.
     *
     * @param call the name of the function, for example {@code "C_Login"}; null if it is not known
     * @param accepted values of {@link CKR} that the caller accepts besides {@code CKR_OK}; must not be null
     * @return this object, if it is {@code CKR_OK} or an accepted value
     * @throws CryptokiException if this object has any other value
     */
    public CK_RV orThrow(String call, long... accepted) {
        for (long value : accepted) {
            if (m_value == value) {
                return this;
            }
        }
        if (!isOk()) {
            throw new CryptokiException(call, this);
        }
        return this;
    }

    @Override
    Class<?> constants() {
        return CKR.class;
    }
}
