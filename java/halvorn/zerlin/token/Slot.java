// A slot, and the token in it.
package halvorn.zerlin.token;

import static halvorn.zerlin.Cryptoki.*;

import halvorn.zerlin.CK_MECHANISM_INFO;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.CK_SLOT_INFO;
import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.LongRef;
import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKR;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_RV;

import java.util.Arrays;
import java.util.List;

/**
 * A slot, and the token in it. Threads may share it. Each description begins with the functions that the method calls,
 * in order. Every return value that a method does not expect is a {@link halvorn.zerlin.CryptokiException} that names
 * the call; every method that calls one may throw it with {@code CKR_SLOT_ID_INVALID} and
 * {@code CKR_TOKEN_NOT_PRESENT}.
 */
public final class Slot {
    private final long id;

    /**
     * Calls nothing: a slot that the program knows, for example from {@code C_GetSlotList}.
     *
     * @param id the identifier of the slot
     */
    public Slot(long id) {
        this.id = id;
    }

    /**
     * Calls nothing: returns the identifier for natives.
     *
     * @return the identifier of the slot
     */
    public long id() {
        return id;
    }

    /**
     * Calls {@code C_GetSlotInfo}.
     *
     * @return a new record
     */
    public CK_SLOT_INFO info() {
        CK_SLOT_INFO info = new CK_SLOT_INFO();
        Calls.check("C_GetSlotInfo", C_GetSlotInfo(id, info));
        return info;
    }

    /**
     * Calls {@code C_GetTokenInfo}.
     *
     * @return a new record
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_TOKEN_NOT_RECOGNIZED}
     */
    public CK_TOKEN_INFO tokenInfo() {
        CK_TOKEN_INFO info = new CK_TOKEN_INFO();
        Calls.check("C_GetTokenInfo", C_GetTokenInfo(id, info));
        return info;
    }

    /**
     * Calls {@code C_GetMechanismList} twice: asks for the number, then for the list.
     *
     * @return a new list of the mechanisms of the token
     */
    public List<CK_MECHANISM_TYPE> mechanisms() {
        LongRef count = new LongRef();
        Calls.check("C_GetMechanismList", C_GetMechanismList(id, null, count));
        CK_MECHANISM_TYPE[] mechanisms = CK_MECHANISM_TYPE.array((int) count.value);
        CK_RV rv = C_GetMechanismList(id, mechanisms, count);
        return Arrays.asList(mechanisms).subList(0, Calls.count("C_GetMechanismList", rv, count.value, mechanisms.length));
    }

    /**
     * Calls {@code C_GetMechanismInfo}: returns whether the token has a mechanism for certain operations.
     *
     * @param mechanism a value of {@link halvorn.zerlin.constants.CKM CKM}
     * @param flags     values of {@link CKF}, such as {@link CKF#ENCRYPT}, combined with {@code |}; 0 for any use
     * @return true if the mechanism has all the flags; false for {@code CKR_MECHANISM_INVALID}
     */
    public boolean supports(long mechanism, long flags) {
        CK_MECHANISM_INFO info = new CK_MECHANISM_INFO();
        CK_RV rv = C_GetMechanismInfo(id, new CK_MECHANISM_TYPE(mechanism), info);
        return rv.orThrow("C_GetMechanismInfo", CKR.MECHANISM_INVALID).isOk() && (info.flags & flags) == flags;
    }

    /**
     * Calls {@code C_InitToken}: initialises the token. Every object on it that can be destroyed is destroyed, and the
     * user's PIN is gone.
     *
     * @param soPin the PIN of the security officer: the present one, or a first one; wiped, also if the call fails
     * @param label the label, at most 32 bytes in UTF-8; padded with blanks
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_PIN_INCORRECT}, {@code CKR_SESSION_EXISTS}
     * @throws IllegalArgumentException if the label is too long
     */
    public void initToken(byte[] soPin, String label) {
        Calls.withPins("C_InitToken", () -> C_InitToken(id, soPin, soPin.length, CK_TOKEN_INFO.paddedLabel(label)), soPin);
    }

    /**
     * Calls {@code C_InitToken}, as {@link #initToken(byte[], String)}.
     *
     * @param soPin the PIN, which the token receives in UTF-8; wiped, and its UTF-8 form too, also if the call fails
     * @param label the label, at most 32 bytes in UTF-8; padded with blanks
     * @throws halvorn.zerlin.CryptokiException as {@link #initToken(byte[], String)}
     * @throws IllegalArgumentException if the label is too long
     */
    public void initToken(char[] soPin, String label) {
        initToken(Calls.utf8(soPin), label);
    }

    /**
     * Calls {@code C_OpenSession}: opens a session that cannot write token objects.
     *
     * @return a new session, which the caller closes
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_SESSION_COUNT},
     *         {@code CKR_SESSION_READ_WRITE_SO_EXISTS}
     */
    public Session openSession() {
        return open(CKF.SERIAL_SESSION);
    }

    /**
     * Calls {@code C_OpenSession}: opens a session that can write token objects.
     *
     * @return a new session, which the caller closes
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_SESSION_COUNT}, {@code CKR_TOKEN_WRITE_PROTECTED}
     */
    public Session openWritableSession() {
        return open(CKF.SERIAL_SESSION | CKF.RW_SESSION);
    }

    /**
     * Calls {@code C_CloseAllSessions}: closes all sessions of this program with the token, which ends the login. No
     * other thread may use one of them: SoftHSM has aborted the process then.
     */
    public void closeAllSessions() {
        Calls.check("C_CloseAllSessions", C_CloseAllSessions(id));
    }

    private Session open(long flags) {
        CK_SESSION_HANDLE handle = new CK_SESSION_HANDLE();
        Calls.check("C_OpenSession", C_OpenSession(id, flags, null, null, handle));
        return new Session(handle);
    }
}
