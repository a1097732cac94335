// The typed holder of a PKCS#11 return value, with methods that check it.
package halvorn.zerlin.constants;

import halvorn.zerlin.CryptokiException;

/**
 * A PKCS#11 return value, one of {@link CKR}: the result of every native of {@link halvorn.zerlin.Cryptoki}.
 * A native returns a new object each time.
 *
 * <pre>{@code
 * Cryptoki.C_Login(session, new CK_USER_TYPE(CKU.USER), pin, pin.length).orThrow(CKR.USER_ALREADY_LOGGED_IN);
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
        if (!isOk()) {
            throw new CryptokiException(this);
        }
        return this;
    }

    /**
     * Throws an exception if the call failed in a way that the caller does not accept.
     *
     * @param accepted values of {@link CKR} that the caller accepts besides {@code CKR_OK}; must not be null
     * @return this object, if it is {@code CKR_OK} or an accepted value
     * @throws CryptokiException if this object has any other value
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
