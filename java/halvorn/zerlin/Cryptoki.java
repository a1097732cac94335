// The PKCS#11 functions, declared as natives.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_RV;
import halvorn.zerlin.constants.CK_USER_TYPE;

/**
 * The functions of PKCS#11 (Cryptoki) and three extensions of the vendor as native methods: one native for
 * each function, with the standard's name and order of arguments. Section numbers are those of PKCS#11 v2.20;
 * section 11.<i>n</i> there is section 5.<i>n</i> in v2.40.
 *
 * <pre>{@code
 * Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
 * LongRef count = new LongRef();
 * Cryptoki.C_GetSlotList(true, null, count).orThrow();          // how many?
 * long[] slots = new long[(int) count.value];
 * Cryptoki.C_GetSlotList(true, slots, count).orThrow();         // which?
 * }</pre>
 *
 * <p>The first use of this class loads {@code libzerlin.so}. If loading fails, the message of the
 * {@code UnsatisfiedLinkError} says what to do (see {@link NativeLibrary}).
 *
 * <h2>Words</h2>
 * <ul>
 * <li><i>The library</i> is the Cryptoki library {@code libcryptoki.so}, which the natives call. <i>The
 *     binding</i> is what lies between it and a Java program: these classes and {@code libzerlin.so}.
 * <li>A <i>slot</i> is a place for a <i>token</i>, and a token is the device that stores keys and works with
 *     them. A <i>session</i> is a connection of this program with a token.
 * <li>A <i>handle</i> is the number that the library has given to a session, or to an object such as a key.
 * <li>A <i>mechanism</i> is an algorithm together with its parameter.
 * <li>The <i>native form</i> of a Java value is the bytes that the library receives for it.
 * <li>A <i>holder</i> is a mutable object with one value, such as {@link LongRef}, a handle or a typed
 *     constant. Natives write results into the holders that they are given, so create a new one for each use.
 * </ul>
 *
 * <h2>Return values</h2>
 * Each native returns a new {@link CK_RV} with the return value of the library, unchanged. The
 * {@code @return} lines name the values that a caller should expect. Besides them, every native may return:
 * <ul>
 * <li>{@code CKR_CRYPTOKI_NOT_INITIALIZED}: {@link #C_Initialize} was not called;
 * <li>{@code CKR_GENERAL_ERROR}, {@code CKR_FUNCTION_FAILED}, {@code CKR_FUNCTION_NOT_SUPPORTED}: the library
 *     failed, or does not have the function;
 * <li>{@code CKR_HOST_MEMORY}, {@code CKR_DEVICE_MEMORY}: this computer or the token has not enough memory;
 * <li>{@code CKR_DEVICE_ERROR}, {@code CKR_DEVICE_REMOVED}: the token failed or is gone;
 * <li>with a session argument, {@code CKR_SESSION_HANDLE_INVALID}, {@code CKR_SESSION_CLOSED} and
 *     {@code CKR_USER_NOT_LOGGED_IN}.
 * </ul>
 * An argument that must not be null and is null makes the native return {@code CKR_ARGUMENTS_BAD}. The
 * library is not called then, and nothing is changed.
 *
 * <h2>Exceptions</h2>
 * No return value becomes an exception by itself; {@link CK_RV#orThrow()} throws one.
 * <ul>
 * <li>{@code UnsupportedOperationException}: a value in a template or the parameter of a mechanism is of a
 *     class that has no native form. The library was not called.
 * <li>{@code OutOfMemoryError}: the memory for the native form of an argument cannot be allocated. The
 *     library was not called.
 * <li>An exception after the call, for example for an attribute value that cannot be written, replaces the
 *     return value. The call itself has taken effect.
 * <li>Whatever a locking callback of {@link CK_C_INITIALIZE_ARGS} throws.
 * </ul>
 *
 * <h2>Arguments</h2>
 * <ul>
 * <li>Numbers are {@code long}s. In a 64-bit JVM a {@code long} and a CK_ULONG are the same 64 bits, and
 *     {@link halvorn.zerlin.constants.CK#UNAVAILABLE_INFORMATION CK_UNAVAILABLE_INFORMATION} (all ones) is
 *     -1. In a 32-bit JVM the library receives the low 32 bits of a {@code long}; numbers that come back are
 *     0 to 4294967295, which is all ones, and never negative.
 * <li>Lengths are in bytes and counts in elements. They reach the library unchanged and are not compared with
 *     the length of the array. With a length that is greater than its array, the library finds zeroes
 *     behind the bytes of the array, up to 64 KiB, and crashes behind those.
 * <li>A null array reaches the library as a null pointer. If its length or count is positive, a PIN, a seed
 *     or a template makes the native return {@code CKR_ARGUMENTS_BAD}. The input of the cryptographic
 *     functions is not checked in this way: null with a positive length reaches the library.
 * <li>A null handle or typed constant reaches the library as {@code CK_UNAVAILABLE_INFORMATION}, which it
 *     refuses.
 * <li>Arrays and objects belong to the caller. A native copies its input and never changes it, writes its
 *     results into the objects that it was given, and keeps none of them when it returns. The only exception
 *     is the argument of {@link #C_Initialize}. Do not change an argument while a native runs.
 * </ul>
 *
 * <h2 id="output">Output arrays</h2>
 * An output array has a {@link LongRef} beside it. In: the capacity that the library may fill. Out: the
 * length that the library reports, written after every call of the library, whatever the return value.
 * <ul>
 * <li>A null array asks for the length: the native returns {@code CKR_OK} and the length in the
 *     {@code LongRef}.
 * <li>A capacity that is too small makes the native return {@code CKR_BUFFER_TOO_SMALL} with the needed
 *     length, and leaves the array as it was. The operation is not ended, so call again with a longer array.
 * <li>On {@code CKR_OK} the array is filled up to the smaller of its own length and the reported one. So make
 *     the array as long as the capacity: a shorter one receives only the beginning of the result, without an
 *     error.
 * <li>A capacity for which no memory can be allocated makes the native return {@code CKR_HOST_MEMORY}. The
 *     library is not called, and nothing is changed.
 * </ul>
 * The elements of an array of objects are changed in place. The native creates none, and what belongs to a
 * null element is lost.
 *
 * <h2 id="templates">Templates</h2>
 * A template is an array of {@link CK_ATTRIBUTE} and a count. The count must be at most the length of the
 * array; this is not checked. Null with count 0 is an empty template. Null with a positive count makes the
 * native return {@code CKR_ARGUMENTS_BAD}. A null element reaches the library as an attribute of type
 * {@code CK_UNAVAILABLE_INFORMATION} without a value, which it refuses. The {@code valueLen} of each
 * attribute is not checked, so let the constructors of {@link CK_ATTRIBUTE} set it.
 *
 * <h2 id="mechanisms">Mechanisms</h2>
 * A null {@link CK_MECHANISM} makes the native return {@code CKR_ARGUMENTS_BAD}. Let its constructors set
 * {@code parameterLen}, because a wrong one can abort the process. If the memory for the structure of a
 * parameter cannot be allocated, the library is called with a null parameter, which it refuses: deliberate.
 *
 * <h2>Threads</h2>
 * Any number of threads may call natives at once. The library must know of it: pass
 * {@link CK_C_INITIALIZE_ARGS} to {@link #C_Initialize}. A session has only one operation of each kind at a
 * time, so give each thread its own session.
 */
public final class Cryptoki {
    static {
        NativeLibrary.load();
    }

    private Cryptoki() {
    }

    // General purpose functions

    /**
     * Initialises the library (PKCS#11 v2.20, 11.4). Call it once, before every other native.
     *
     * <p>The binding keeps an argument that has callbacks until {@link #C_Finalize} succeeds, even if this
     * call fails. While it keeps one, every further call passes null to the library, whatever
     * {@code pInitArgs} is: deliberate. The library then assumes that only one thread uses it, and returns
     * {@code CKR_OK}. <b>Warning.</b> This also happens to the usual fallback, {@code osLocking()} after
     * {@code CKR_CANT_LOCK} for callbacks. So after a failed call with callbacks, call
     * {@code C_Initialize(null)} and {@code C_Finalize(null)}, and try again with another argument only when
     * both have succeeded. Or let the library choose in one call: callbacks with the flag
     * {@code CKF_OS_LOCKING_OK}.
     *
     * @param pInitArgs a {@link CK_C_INITIALIZE_ARGS}, or null if only one thread uses the library; an object
     *                  of another class makes the native return {@code CKR_ARGUMENTS_BAD}
     * @return {@code CKR_OK}, or for example {@code CKR_CRYPTOKI_ALREADY_INITIALIZED}, {@code CKR_CANT_LOCK},
     *         {@code CKR_NEED_TO_CREATE_THREADS}
     */
    public static native CK_RV C_Initialize(Object pInitArgs);

    /**
     * Ends the use of the library (PKCS#11 v2.20, 11.4). No other native may be running. On success the
     * binding releases the argument with callbacks that it kept for {@link #C_Initialize}.
     *
     * @param pReserved must be null; an object reaches the library as a pointer that is not null, which it
     *                  refuses
     * @return {@code CKR_OK}, or for example {@code CKR_CRYPTOKI_NOT_INITIALIZED}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_Finalize(Object pReserved);

    /**
     * Reads what the library says about itself (PKCS#11 v2.20, 11.4). {@code libraryVersion} is always the
     * version of this binding, 3.10, and not that of the library: deliberate.
     *
     * @param pInfo filled on success; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetInfo(CK_INFO pInfo);

    // Slot and token management

    /**
     * Lists the slots (PKCS#11 v2.20, 11.5).
     *
     * @param tokenPresent true to list only slots that contain a token
     * @param pSlotList    receives the slot identifiers; null asks for their number
     * @param pulCount     in: the capacity of {@code pSlotList} in elements; out: the number of slots; must
     *                     not be null
     * @return {@code CKR_OK}, or for example {@code CKR_BUFFER_TOO_SMALL}, {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_GetSlotList(boolean tokenPresent, long[] pSlotList, LongRef pulCount);

    /**
     * Reads the description of a slot (PKCS#11 v2.20, 11.5).
     *
     * @param slotID the slot
     * @param pInfo  filled on success; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_SLOT_ID_INVALID}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetSlotInfo(long slotID, CK_SLOT_INFO pInfo);

    /**
     * Reads the description of the token in a slot (PKCS#11 v2.20, 11.5).
     *
     * @param slotID the slot
     * @param pInfo  filled on success; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_SLOT_ID_INVALID}, {@code CKR_TOKEN_NOT_PRESENT},
     *         {@code CKR_TOKEN_NOT_RECOGNIZED}
     */
    public static native CK_RV C_GetTokenInfo(long slotID, CK_TOKEN_INFO pInfo);

    /**
     * Waits until a token is inserted or removed, or asks whether one was (PKCS#11 v2.20, 11.5).
     *
     * @param flags     0 to wait, {@code CKF_DONT_BLOCK} to ask without waiting
     * @param pSlot     receives the slot in which it happened, on success only; must not be null
     * @param pReserved must be null; an object reaches the library as a pointer that is not null, which it
     *                  refuses
     * @return {@code CKR_OK}, or for example {@code CKR_NO_EVENT}, {@code CKR_FUNCTION_NOT_SUPPORTED},
     *         {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_WaitForSlotEvent(long flags, LongRef pSlot, Object pReserved);

    /**
     * Lists the mechanisms of a token (PKCS#11 v2.20, 11.5).
     *
     * @param slotID         the slot
     * @param pMechanismList receives the mechanism types, written into its existing elements: create it with
     *                       {@link CK_MECHANISM_TYPE#array}; null asks for their number
     * @param pulCount       in: the capacity of {@code pMechanismList} in elements; out: the number of
     *                       mechanisms; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_BUFFER_TOO_SMALL}, {@code CKR_SLOT_ID_INVALID},
     *         {@code CKR_TOKEN_NOT_PRESENT}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_GetMechanismList(long slotID, CK_MECHANISM_TYPE[] pMechanismList,
            LongRef pulCount);

    /**
     * Reads the description of a mechanism of a token (PKCS#11 v2.20, 11.5).
     *
     * @param slotID the slot
     * @param type   the mechanism
     * @param pInfo  filled on success; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_MECHANISM_INVALID}, {@code CKR_SLOT_ID_INVALID},
     *         {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetMechanismInfo(long slotID, CK_MECHANISM_TYPE type,
            CK_MECHANISM_INFO pInfo);

    /**
     * Initialises the token in a slot (PKCS#11 v2.20, 11.5). Every object on the token that can be destroyed
     * is destroyed.
     *
     * @param slotID   the slot
     * @param pPin     the PIN of the security officer; null with length 0 if it is entered at the token
     *                 itself
     * @param ulPinLen the length of {@code pPin} in bytes
     * @param pLabel   the label: 32 bytes, padded with blanks, see {@link CK_TOKEN_INFO#paddedLabel}; the
     *                 library finds zeroes behind a shorter array; null reaches the library as a null pointer
     * @return {@code CKR_OK}, or for example {@code CKR_PIN_INCORRECT}, {@code CKR_PIN_LEN_RANGE},
     *         {@code CKR_SESSION_EXISTS}
     */
    public static native CK_RV C_InitToken(long slotID, byte[] pPin, long ulPinLen, byte[] pLabel);

    /**
     * Sets the PIN of the user (PKCS#11 v2.20, 11.5). The security officer must be logged in.
     *
     * @param hSession the session
     * @param pPin     the new PIN; null with length 0 if it is entered at the token itself
     * @param ulPinLen the length of {@code pPin} in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_USER_NOT_LOGGED_IN}, {@code CKR_PIN_INVALID},
     *         {@code CKR_PIN_LEN_RANGE}
     */
    public static native CK_RV C_InitPIN(CK_SESSION_HANDLE hSession, byte[] pPin, long ulPinLen);

    /**
     * Changes the PIN of the logged-in user or security officer; if nobody is logged in, the PIN of the user
     * (PKCS#11 v2.20, 11.5).
     *
     * @param hSession the session
     * @param pOldPin  the old PIN; null with length 0 if it is entered at the token itself
     * @param ulOldLen the length of {@code pOldPin} in bytes
     * @param pNewPin  the new PIN; null with length 0 if it is entered at the token itself
     * @param ulNewLen the length of {@code pNewPin} in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_PIN_INCORRECT}, {@code CKR_PIN_INVALID},
     *         {@code CKR_PIN_LEN_RANGE}, {@code CKR_SESSION_READ_ONLY}
     */
    public static native CK_RV C_SetPIN(CK_SESSION_HANDLE hSession, byte[] pOldPin, long ulOldLen,
            byte[] pNewPin, long ulNewLen);

    /**
     * Initialises a token from a session: an extension of the vendor. The binding does not check any
     * argument.
     *
     * @param hSession the session
     * @param ulValue  the second argument of the function of the library, whose vendor defines its meaning
     * @param pPin     the PIN; null reaches the library as a null pointer, whatever the length
     * @param ulPinLen the length of {@code pPin} in bytes
     * @param pLabel   the label: 32 bytes, padded with blanks, see {@link CK_TOKEN_INFO#paddedLabel}; the
     *                 library finds zeroes behind a shorter array; null reaches the library as a null pointer
     * @return {@code CKR_OK}, or for example {@code CKR_FUNCTION_NOT_SUPPORTED},
     *         {@code CKR_USER_NOT_LOGGED_IN}
     */
    public static native CK_RV CT_InitToken(CK_SESSION_HANDLE hSession, long ulValue, byte[] pPin,
            long ulPinLen, byte[] pLabel);

    /**
     * Resets the token of a session: an extension of the vendor. The binding does not check any argument.
     *
     * @param hSession the session
     * @param pPin     the PIN; null reaches the library as a null pointer, whatever the length
     * @param ulPinLen the length of {@code pPin} in bytes
     * @param pLabel   the label: 32 bytes, padded with blanks, see {@link CK_TOKEN_INFO#paddedLabel}; the
     *                 library finds zeroes behind a shorter array; null reaches the library as a null pointer
     * @return {@code CKR_OK}, or for example {@code CKR_FUNCTION_NOT_SUPPORTED},
     *         {@code CKR_USER_NOT_LOGGED_IN}
     */
    public static native CK_RV CT_ResetToken(CK_SESSION_HANDLE hSession, byte[] pPin, long ulPinLen,
            byte[] pLabel);

    // Session management

    /**
     * Opens a session (PKCS#11 v2.20, 11.6).
     *
     * <pre>{@code
     * CK_SESSION_HANDLE session = new CK_SESSION_HANDLE();
     * Cryptoki.C_OpenSession(slot, CKF.SERIAL_SESSION | CKF.RW_SESSION, null, null, session).orThrow();
     * }</pre>
     *
     * @param slotID       the slot
     * @param flags        {@code CKF_SERIAL_SESSION}, and {@code CKF_RW_SESSION} as well for a session that
     *                     may write
     * @param pApplication must be null; an object reaches the library as a pointer without meaning
     * @param Notify       must be null: notification callbacks are not supported, and the library may call
     *                     the address of an object as if it were a function, which crashes the process
     * @param phSession    receives the handle of the session, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_SLOT_ID_INVALID}, {@code CKR_TOKEN_NOT_PRESENT},
     *         {@code CKR_SESSION_COUNT}, {@code CKR_SESSION_PARALLEL_NOT_SUPPORTED}
     */
    public static native CK_RV C_OpenSession(long slotID, long flags, Object pApplication, Object Notify,
            CK_SESSION_HANDLE phSession);

    /**
     * Closes a session (PKCS#11 v2.20, 11.6).
     *
     * @param hSession the session
     * @return {@code CKR_OK}, or for example {@code CKR_SESSION_HANDLE_INVALID}
     */
    public static native CK_RV C_CloseSession(CK_SESSION_HANDLE hSession);

    /**
     * Closes all sessions of this program with a token (PKCS#11 v2.20, 11.6).
     *
     * @param slotID the slot
     * @return {@code CKR_OK}, or for example {@code CKR_SLOT_ID_INVALID}, {@code CKR_TOKEN_NOT_PRESENT}
     */
    public static native CK_RV C_CloseAllSessions(long slotID);

    /**
     * Reads the description of a session (PKCS#11 v2.20, 11.6).
     *
     * @param hSession the session
     * @param pInfo    filled on success, its {@code state} object in place; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_SESSION_HANDLE_INVALID}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetSessionInfo(CK_SESSION_HANDLE hSession, CK_SESSION_INFO pInfo);

    /**
     * Saves the state of the active operation of a session (PKCS#11 v2.20, 11.6).
     *
     * @param hSession             the session
     * @param pOperationState      receives the state; null asks for its length
     * @param pulOperationStateLen in: the capacity of {@code pOperationState} in bytes; out: the length in
     *                             bytes; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_STATE_UNSAVEABLE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_GetOperationState(CK_SESSION_HANDLE hSession, byte[] pOperationState,
            LongRef pulOperationStateLen);

    /**
     * Restores a saved state (PKCS#11 v2.20, 11.6). Unlike other natives with input bytes, it returns
     * {@code CKR_ARGUMENTS_BAD} for a null array and for a length of 0: deliberate.
     *
     * @param hSession            the session
     * @param pOperationState     the state; must not be null
     * @param ulOperationStateLen the length of {@code pOperationState} in bytes; must not be 0
     * @param hEncryptionKey      the key of the saved encryption or decryption; a handle of value 0 if there
     *                            is none
     * @param hAuthenticationKey  the key of the saved signature or verification; a handle of value 0 if there
     *                            is none
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_SAVED_STATE_INVALID},
     *         {@code CKR_KEY_NEEDED}, {@code CKR_KEY_NOT_NEEDED}, {@code CKR_KEY_CHANGED}
     */
    public static native CK_RV C_SetOperationState(CK_SESSION_HANDLE hSession, byte[] pOperationState,
            long ulOperationStateLen, CK_OBJECT_HANDLE hEncryptionKey, CK_OBJECT_HANDLE hAuthenticationKey);

    /**
     * Logs a user in. All sessions of this program with the token are then logged in (PKCS#11 v2.20, 11.6).
     *
     * @param hSession the session
     * @param userType who logs in, a value of {@link halvorn.zerlin.constants.CKU CKU}
     * @param pPin     the PIN; null with length 0 if it is entered at the token itself
     * @param ulPinLen the length of {@code pPin} in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_PIN_INCORRECT}, {@code CKR_PIN_LOCKED},
     *         {@code CKR_USER_ALREADY_LOGGED_IN}, {@code CKR_USER_PIN_NOT_INITIALIZED},
     *         {@code CKR_USER_TYPE_INVALID}
     */
    public static native CK_RV C_Login(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, byte[] pPin,
            long ulPinLen);

    /**
     * Logs the user out, in all sessions of this program with the token (PKCS#11 v2.20, 11.6).
     *
     * @param hSession the session
     * @return {@code CKR_OK}, or for example {@code CKR_USER_NOT_LOGGED_IN}
     */
    public static native CK_RV C_Logout(CK_SESSION_HANDLE hSession);

    // Object management

    /**
     * Creates an object (PKCS#11 v2.20, 11.7).
     *
     * @param hSession  the session
     * @param pTemplate the <a href="#templates">attributes</a> of the new object
     * @param ulCount   the number of attributes in {@code pTemplate}
     * @param phObject  receives the handle of the new object, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_TEMPLATE_INCOMPLETE},
     *         {@code CKR_TEMPLATE_INCONSISTENT}, {@code CKR_ATTRIBUTE_VALUE_INVALID},
     *         {@code CKR_SESSION_READ_ONLY}
     * @throws UnsupportedOperationException if a value in the template has no native form
     */
    public static native CK_RV C_CreateObject(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE[] pTemplate,
            long ulCount, CK_OBJECT_HANDLE phObject);

    /**
     * Copies an object (PKCS#11 v2.20, 11.7).
     *
     * @param hSession    the session
     * @param hObject     the object to copy
     * @param pTemplate   the <a href="#templates">attributes</a> in which the copy differs
     * @param ulCount     the number of attributes in {@code pTemplate}
     * @param phNewObject receives the handle of the copy, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_OBJECT_HANDLE_INVALID},
     *         {@code CKR_TEMPLATE_INCONSISTENT}, {@code CKR_ATTRIBUTE_READ_ONLY}
     * @throws UnsupportedOperationException if a value in the template has no native form
     */
    public static native CK_RV C_CopyObject(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE[] pTemplate, long ulCount, CK_OBJECT_HANDLE phNewObject);

    /**
     * Copies an object between two sessions: an extension of the vendor, whose library defines what each of
     * the sessions is for.
     *
     * @param hSession1   the first session
     * @param hSession2   the second session
     * @param hObject     the object to copy
     * @param pTemplate   the <a href="#templates">attributes</a> in which the copy differs
     * @param ulCount     the number of attributes in {@code pTemplate}
     * @param phNewObject receives the handle of the copy, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_FUNCTION_NOT_SUPPORTED},
     *         {@code CKR_OBJECT_HANDLE_INVALID}
     * @throws UnsupportedOperationException if a value in the template has no native form
     */
    public static native CK_RV CT_CopyObject(CK_SESSION_HANDLE hSession1, CK_SESSION_HANDLE hSession2,
            CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE[] pTemplate, long ulCount, CK_OBJECT_HANDLE phNewObject);

    /**
     * Destroys an object (PKCS#11 v2.20, 11.7).
     *
     * @param hSession the session
     * @param hObject  the object
     * @return {@code CKR_OK}, or for example {@code CKR_OBJECT_HANDLE_INVALID}, {@code CKR_SESSION_READ_ONLY}
     */
    public static native CK_RV C_DestroyObject(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject);

    /**
     * Returns how much memory an object takes on the token (PKCS#11 v2.20, 11.7).
     *
     * @param hSession the session
     * @param hObject  the object
     * @param pulSize  receives the size in bytes, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OBJECT_HANDLE_INVALID},
     *         {@code CKR_INFORMATION_SENSITIVE}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetObjectSize(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            LongRef pulSize);

    /**
     * Reads attributes of an object (PKCS#11 v2.20, 11.7). Whatever the return value, after the call of the
     * library:
     * <ul>
     * <li>each {@code valueLen} is the length that the library reports, {@code CK_UNAVAILABLE_INFORMATION}
     *     for an attribute that cannot be read; after an error before the library came to the attribute,
     *     such as an invalid handle, it is the length that the library got;
     * <li>each value that was read is in the existing {@code pValue} object, as {@link CK_ATTRIBUTE}
     *     explains.
     * </ul>
     * A null {@code pValue} asks for the length only.
     *
     * <pre>{@code
     * CK_ATTRIBUTE modulus = CK_ATTRIBUTE.buffer(CKA.MODULUS, 512);
     * Cryptoki.C_GetAttributeValue(session, key, new CK_ATTRIBUTE[] {modulus}, 1).orThrow();
     * byte[] bytes = modulus.getBytes();
     * }</pre>
     *
     * @param hSession  the session
     * @param hObject   the object
     * @param pTemplate the <a href="#templates">attributes</a> to read; changed in place
     * @param ulCount   the number of attributes in {@code pTemplate}
     * @return {@code CKR_OK}, or for example {@code CKR_ATTRIBUTE_SENSITIVE},
     *         {@code CKR_ATTRIBUTE_TYPE_INVALID}, {@code CKR_BUFFER_TOO_SMALL}, {@code CKR_ARGUMENTS_BAD}
     * @throws UnsupportedOperationException if a value in the template has no native form; also, after the
     *         call of the library, if a value cannot be written into its object
     */
    public static native CK_RV C_GetAttributeValue(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE[] pTemplate, long ulCount);

    /**
     * Changes attributes of an object (PKCS#11 v2.20, 11.7).
     *
     * @param hSession  the session
     * @param hObject   the object
     * @param pTemplate the <a href="#templates">attributes</a> with their new values
     * @param ulCount   the number of attributes in {@code pTemplate}
     * @return {@code CKR_OK}, or for example {@code CKR_ATTRIBUTE_READ_ONLY},
     *         {@code CKR_ATTRIBUTE_VALUE_INVALID}, {@code CKR_TEMPLATE_INCONSISTENT},
     *         {@code CKR_ARGUMENTS_BAD}
     * @throws UnsupportedOperationException if a value in the template has no native form
     */
    public static native CK_RV C_SetAttributeValue(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE[] pTemplate, long ulCount);

    /**
     * Begins a search for objects (PKCS#11 v2.20, 11.7). A session has only one search at a time; end it with
     * {@link #C_FindObjectsFinal}.
     *
     * @param hSession  the session
     * @param pTemplate the <a href="#templates">attributes</a> that an object must have to be found; null
     *                  with count 0 finds all objects
     * @param ulCount   the number of attributes in {@code pTemplate}
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE},
     *         {@code CKR_ATTRIBUTE_VALUE_INVALID}, {@code CKR_ARGUMENTS_BAD}
     * @throws UnsupportedOperationException if a value in the template has no native form
     */
    public static native CK_RV C_FindObjectsInit(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE[] pTemplate,
            long ulCount);

    /**
     * Continues a search; call it until it reports 0 objects (PKCS#11 v2.20, 11.7).
     *
     * @param hSession         the session
     * @param phObject         receives the handles, written into its existing elements: create it with
     *                         {@link CK_OBJECT_HANDLE#array}; null only if {@code ulMaxObjectCount} is 0
     * @param ulMaxObjectCount the greatest number of handles to report: the capacity of {@code phObject} in
     *                         elements
     * @param pulObjectCount   out only: the number of handles, written whatever the return value; must not be
     *                         null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_FindObjects(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE[] phObject,
            long ulMaxObjectCount, LongRef pulObjectCount);

    /**
     * Ends a search (PKCS#11 v2.20, 11.7).
     *
     * @param hSession the session
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_FindObjectsFinal(CK_SESSION_HANDLE hSession);

    // Encryption

    /**
     * Begins an encryption (PKCS#11 v2.20, 11.8).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hKey       the key to encrypt with
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     * @throws UnsupportedOperationException if the parameter of the mechanism has no native form
     */
    public static native CK_RV C_EncryptInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Encrypts all data at once (PKCS#11 v2.20, 11.8). This ends the encryption, except if the call only
     * asked for the length or the capacity was too small.
     *
     * @param hSession            the session
     * @param pData               the data to encrypt
     * @param ulDataLen           the length of {@code pData} in bytes
     * @param pEncryptedData      receives the encrypted data; null asks for its length
     * @param pulEncryptedDataLen in: the capacity of {@code pEncryptedData} in bytes; out: the length in
     *                            bytes; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_Encrypt(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pEncryptedData, LongRef pulEncryptedDataLen);

    /**
     * Encrypts the next part of the data (PKCS#11 v2.20, 11.8).
     *
     * @param hSession            the session
     * @param pPart               the data to encrypt
     * @param ulPartLen           the length of {@code pPart} in bytes
     * @param pEncryptedPart      receives the encrypted data; null asks for its length
     * @param pulEncryptedPartLen in: the capacity of {@code pEncryptedPart} in bytes; out: the length in
     *                            bytes; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_EncryptUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen,
            byte[] pEncryptedPart, LongRef pulEncryptedPartLen);

    /**
     * Ends an encryption in several parts (PKCS#11 v2.20, 11.8).
     *
     * @param hSession                the session
     * @param pLastEncryptedPart      receives the rest of the encrypted data; null asks for its length
     * @param pulLastEncryptedPartLen in: the capacity of {@code pLastEncryptedPart} in bytes; out: the length
     *                                in bytes; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_EncryptFinal(CK_SESSION_HANDLE hSession, byte[] pLastEncryptedPart,
            LongRef pulLastEncryptedPartLen);

    // Decryption

    /**
     * Begins a decryption (PKCS#11 v2.20, 11.9).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hKey       the key to decrypt with
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     * @throws UnsupportedOperationException if the parameter of the mechanism has no native form
     */
    public static native CK_RV C_DecryptInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Decrypts all data at once (PKCS#11 v2.20, 11.9). This ends the decryption, except if the call only
     * asked for the length or the capacity was too small.
     *
     * @param hSession           the session
     * @param pEncryptedData     the encrypted data
     * @param ulEncryptedDataLen the length of {@code pEncryptedData} in bytes
     * @param pData              receives the decrypted data; null asks for its length
     * @param pulDataLen         in: the capacity of {@code pData} in bytes; out: the length in bytes; must
     *                           not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_INVALID}, {@code CKR_ENCRYPTED_DATA_LEN_RANGE},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_Decrypt(CK_SESSION_HANDLE hSession, byte[] pEncryptedData,
            long ulEncryptedDataLen, byte[] pData, LongRef pulDataLen);

    /**
     * Decrypts the next part of the data (PKCS#11 v2.20, 11.9).
     *
     * @param hSession           the session
     * @param pEncryptedPart     the encrypted data
     * @param ulEncryptedPartLen the length of {@code pEncryptedPart} in bytes
     * @param pPart              receives the decrypted data; null asks for its length
     * @param pulPartLen         in: the capacity of {@code pPart} in bytes; out: the length in bytes; must
     *                           not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DecryptUpdate(CK_SESSION_HANDLE hSession, byte[] pEncryptedPart,
            long ulEncryptedPartLen, byte[] pPart, LongRef pulPartLen);

    /**
     * Ends a decryption in several parts (PKCS#11 v2.20, 11.9).
     *
     * @param hSession       the session
     * @param pLastPart      receives the rest of the decrypted data; null asks for its length
     * @param pulLastPartLen in: the capacity of {@code pLastPart} in bytes; out: the length in bytes; must
     *                       not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_INVALID}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DecryptFinal(CK_SESSION_HANDLE hSession, byte[] pLastPart,
            LongRef pulLastPartLen);

    // Message digesting

    /**
     * Begins a digest (PKCS#11 v2.20, 11.10).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_ARGUMENTS_BAD}
     * @throws UnsupportedOperationException if the parameter of the mechanism has no native form
     */
    public static native CK_RV C_DigestInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism);

    /**
     * Digests all data at once (PKCS#11 v2.20, 11.10). This ends the digest, except if the call only asked
     * for the length or the capacity was too small.
     *
     * @param hSession     the session
     * @param pData        the data
     * @param ulDataLen    the length of {@code pData} in bytes
     * @param pDigest      receives the digest; null asks for its length
     * @param pulDigestLen in: the capacity of {@code pDigest} in bytes; out: the length in bytes; must not be
     *                     null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_Digest(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pDigest, LongRef pulDigestLen);

    /**
     * Digests the next part of the data (PKCS#11 v2.20, 11.10).
     *
     * @param hSession  the session
     * @param pPart     the data
     * @param ulPartLen the length of {@code pPart} in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_DigestUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen);

    /**
     * Digests the value of a secret key as the next part of the data (PKCS#11 v2.20, 11.10).
     *
     * @param hSession the session
     * @param hKey     the secret key
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_INDIGESTIBLE}
     */
    public static native CK_RV C_DigestKey(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey);

    /**
     * Ends a digest in several parts (PKCS#11 v2.20, 11.10).
     *
     * @param hSession     the session
     * @param pDigest      receives the digest; null asks for its length
     * @param pulDigestLen in: the capacity of {@code pDigest} in bytes; out: the length in bytes; must not be
     *                     null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DigestFinal(CK_SESSION_HANDLE hSession, byte[] pDigest,
            LongRef pulDigestLen);

    // Signing and MACing

    /**
     * Begins a signature or a MAC (PKCS#11 v2.20, 11.11).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hKey       the private or secret key to sign with
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     * @throws UnsupportedOperationException if the parameter of the mechanism has no native form
     */
    public static native CK_RV C_SignInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Signs all data at once (PKCS#11 v2.20, 11.11). This ends the signature, except if the call only asked
     * for the length or the capacity was too small.
     *
     * @param hSession        the session
     * @param pData           the data
     * @param ulDataLen       the length of {@code pData} in bytes
     * @param pSignature      receives the signature; null asks for its length
     * @param pulSignatureLen in: the capacity of {@code pSignature} in bytes; out: the length in bytes; must
     *                        not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_Sign(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pSignature, LongRef pulSignatureLen);

    /**
     * Signs the next part of the data (PKCS#11 v2.20, 11.11).
     *
     * @param hSession  the session
     * @param pPart     the data
     * @param ulPartLen the length of {@code pPart} in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_SignUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen);

    /**
     * Ends a signature in several parts (PKCS#11 v2.20, 11.11).
     *
     * @param hSession        the session
     * @param pSignature      receives the signature; null asks for its length
     * @param pulSignatureLen in: the capacity of {@code pSignature} in bytes; out: the length in bytes; must
     *                        not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_SignFinal(CK_SESSION_HANDLE hSession, byte[] pSignature,
            LongRef pulSignatureLen);

    /**
     * Begins a signature that contains the data, so that a verifier can recover it (PKCS#11 v2.20, 11.11).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hKey       the private key to sign with
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     * @throws UnsupportedOperationException if the parameter of the mechanism has no native form
     */
    public static native CK_RV C_SignRecoverInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Signs all data at once, so that a verifier can recover it from the signature (PKCS#11 v2.20, 11.11).
     * This ends the signature, except if the call only asked for the length or the capacity was too small.
     *
     * @param hSession        the session
     * @param pData           the data
     * @param ulDataLen       the length of {@code pData} in bytes
     * @param pSignature      receives the signature; null asks for its length
     * @param pulSignatureLen in: the capacity of {@code pSignature} in bytes; out: the length in bytes; must
     *                        not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_SignRecover(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pSignature, LongRef pulSignatureLen);

    // Verifying signatures and MACs

    /**
     * Begins the verification of a signature or a MAC (PKCS#11 v2.20, 11.12).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hKey       the public or secret key to verify with
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     * @throws UnsupportedOperationException if the parameter of the mechanism has no native form
     */
    public static native CK_RV C_VerifyInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Verifies the signature of all data at once and ends the verification (PKCS#11 v2.20, 11.12).
     *
     * @param hSession       the session
     * @param pData          the data
     * @param ulDataLen      the length of {@code pData} in bytes
     * @param pSignature     the signature
     * @param ulSignatureLen the length of {@code pSignature} in bytes
     * @return {@code CKR_OK} if the signature is right, or for example {@code CKR_SIGNATURE_INVALID},
     *         {@code CKR_SIGNATURE_LEN_RANGE}, {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_Verify(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pSignature, long ulSignatureLen);

    /**
     * Verifies the next part of the data (PKCS#11 v2.20, 11.12).
     *
     * @param hSession  the session
     * @param pPart     the data
     * @param ulPartLen the length of {@code pPart} in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_VerifyUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen);

    /**
     * Ends a verification in several parts (PKCS#11 v2.20, 11.12).
     *
     * @param hSession       the session
     * @param pSignature     the signature
     * @param ulSignatureLen the length of {@code pSignature} in bytes
     * @return {@code CKR_OK} if the signature is right, or for example {@code CKR_SIGNATURE_INVALID},
     *         {@code CKR_SIGNATURE_LEN_RANGE}, {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_VerifyFinal(CK_SESSION_HANDLE hSession, byte[] pSignature,
            long ulSignatureLen);

    /**
     * Begins the verification of a signature that contains the data (PKCS#11 v2.20, 11.12).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hKey       the public key to verify with
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     * @throws UnsupportedOperationException if the parameter of the mechanism has no native form
     */
    public static native CK_RV C_VerifyRecoverInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Verifies a signature and recovers the data from it (PKCS#11 v2.20, 11.12). This ends the verification,
     * except if the call only asked for the length or the capacity was too small.
     *
     * @param hSession       the session
     * @param pSignature     the signature
     * @param ulSignatureLen the length of {@code pSignature} in bytes
     * @param pData          receives the data; null asks for its length
     * @param pulDataLen     in: the capacity of {@code pData} in bytes; out: the length in bytes; must not be
     *                       null
     * @return {@code CKR_OK} if the signature is right, or for example {@code CKR_SIGNATURE_INVALID},
     *         {@code CKR_SIGNATURE_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_VerifyRecover(CK_SESSION_HANDLE hSession, byte[] pSignature,
            long ulSignatureLen, byte[] pData, LongRef pulDataLen);

    // Dual-purpose cryptographic functions

    /**
     * Digests the next part of the data and encrypts it (PKCS#11 v2.20, 11.13).
     *
     * @param hSession            the session
     * @param pPart               the data to encrypt
     * @param ulPartLen           the length of {@code pPart} in bytes
     * @param pEncryptedPart      receives the encrypted data; null asks for its length
     * @param pulEncryptedPartLen in: the capacity of {@code pEncryptedPart} in bytes; out: the length in
     *                            bytes; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DigestEncryptUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen,
            byte[] pEncryptedPart, LongRef pulEncryptedPartLen);

    /**
     * Decrypts the next part of the data and digests the clear text (PKCS#11 v2.20, 11.13).
     *
     * @param hSession           the session
     * @param pEncryptedPart     the encrypted data
     * @param ulEncryptedPartLen the length of {@code pEncryptedPart} in bytes
     * @param pPart              receives the decrypted data; null asks for its length
     * @param pulPartLen         in: the capacity of {@code pPart} in bytes; out: the length in bytes; must
     *                           not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DecryptDigestUpdate(CK_SESSION_HANDLE hSession, byte[] pEncryptedPart,
            long ulEncryptedPartLen, byte[] pPart, LongRef pulPartLen);

    /**
     * Signs the next part of the data and encrypts it (PKCS#11 v2.20, 11.13).
     *
     * @param hSession            the session
     * @param pPart               the data to encrypt
     * @param ulPartLen           the length of {@code pPart} in bytes
     * @param pEncryptedPart      receives the encrypted data; null asks for its length
     * @param pulEncryptedPartLen in: the capacity of {@code pEncryptedPart} in bytes; out: the length in
     *                            bytes; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_SignEncryptUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen,
            byte[] pEncryptedPart, LongRef pulEncryptedPartLen);

    /**
     * Decrypts the next part of the data and verifies the clear text (PKCS#11 v2.20, 11.13).
     *
     * @param hSession           the session
     * @param pEncryptedPart     the encrypted data
     * @param ulEncryptedPartLen the length of {@code pEncryptedPart} in bytes
     * @param pPart              receives the decrypted data; null asks for its length
     * @param pulPartLen         in: the capacity of {@code pPart} in bytes; out: the length in bytes; must
     *                           not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DecryptVerifyUpdate(CK_SESSION_HANDLE hSession, byte[] pEncryptedPart,
            long ulEncryptedPartLen, byte[] pPart, LongRef pulPartLen);

    // Key management

    /**
     * Generates a secret key or a set of domain parameters (PKCS#11 v2.20, 11.14). On success, results that
     * the mechanism returns are written into its parameter object.
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>; must not be null
     * @param pTemplate  the <a href="#templates">attributes</a> of the new key
     * @param ulCount    the number of attributes in {@code pTemplate}
     * @param phKey      receives the handle of the new key, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_TEMPLATE_INCOMPLETE}, {@code CKR_TEMPLATE_INCONSISTENT}
     * @throws UnsupportedOperationException if the parameter of the mechanism or a value in the template has
     *         no native form
     */
    public static native CK_RV C_GenerateKey(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_ATTRIBUTE[] pTemplate, long ulCount, CK_OBJECT_HANDLE phKey);

    /**
     * Generates a public and a private key (PKCS#11 v2.20, 11.14). On success, results that the mechanism
     * returns are written into its parameter object.
     *
     * @param hSession                   the session
     * @param pMechanism                 the <a href="#mechanisms">mechanism</a>; must not be null
     * @param pPublicKeyTemplate         the <a href="#templates">attributes</a> of the public key
     * @param ulPublicKeyAttributeCount  the number of attributes in {@code pPublicKeyTemplate}
     * @param pPrivateKeyTemplate        the <a href="#templates">attributes</a> of the private key
     * @param ulPrivateKeyAttributeCount the number of attributes in {@code pPrivateKeyTemplate}
     * @param phPublicKey                receives the handle of the public key, on success only; must not be
     *                                   null
     * @param phPrivateKey               receives the handle of the private key, on success only; must not be
     *                                   null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_TEMPLATE_INCOMPLETE}, {@code CKR_TEMPLATE_INCONSISTENT}
     * @throws UnsupportedOperationException if the parameter of the mechanism or a value in a template has no
     *         native form
     */
    public static native CK_RV C_GenerateKeyPair(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_ATTRIBUTE[] pPublicKeyTemplate, long ulPublicKeyAttributeCount,
            CK_ATTRIBUTE[] pPrivateKeyTemplate, long ulPrivateKeyAttributeCount, CK_OBJECT_HANDLE phPublicKey,
            CK_OBJECT_HANDLE phPrivateKey);

    /**
     * Encrypts a key with another key (PKCS#11 v2.20, 11.14).
     *
     * @param hSession         the session
     * @param pMechanism       the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hWrappingKey     the key to encrypt with; null reaches the library as the handle 0, unlike a
     *                         null handle elsewhere: deliberate
     * @param hKey             the key to be encrypted
     * @param pWrappedKey      receives the wrapped key; null asks for its length
     * @param pulWrappedKeyLen in: the capacity of {@code pWrappedKey} in bytes; out: the length in bytes;
     *                         must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_KEY_NOT_WRAPPABLE},
     *         {@code CKR_KEY_UNEXTRACTABLE}, {@code CKR_WRAPPING_KEY_HANDLE_INVALID},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @throws UnsupportedOperationException if the parameter of the mechanism has no native form
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_WrapKey(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hWrappingKey, CK_OBJECT_HANDLE hKey, byte[] pWrappedKey,
            LongRef pulWrappedKeyLen);

    /**
     * Decrypts a wrapped key and creates a new key from it (PKCS#11 v2.20, 11.14). On success, results that
     * the mechanism returns are written into its parameter object.
     *
     * @param hSession         the session
     * @param pMechanism       the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hUnwrappingKey   the key to decrypt with
     * @param pWrappedKey      the wrapped key; must not be null, even with length 0
     * @param ulWrappedKeyLen  the length of {@code pWrappedKey} in bytes
     * @param pTemplate        the <a href="#templates">attributes</a> of the new key
     * @param ulAttributeCount the number of attributes in {@code pTemplate}
     * @param phKey            receives the handle of the new key, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_WRAPPED_KEY_INVALID},
     *         {@code CKR_UNWRAPPING_KEY_HANDLE_INVALID}, {@code CKR_TEMPLATE_INCONSISTENT}
     * @throws UnsupportedOperationException if the parameter of the mechanism or a value in the template has
     *         no native form
     */
    public static native CK_RV C_UnwrapKey(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hUnwrappingKey, byte[] pWrappedKey, long ulWrappedKeyLen,
            CK_ATTRIBUTE[] pTemplate, long ulAttributeCount, CK_OBJECT_HANDLE phKey);

    /**
     * Derives a new key from another key (PKCS#11 v2.20, 11.14). On success, results that the mechanism
     * returns are written into its parameter object.
     *
     * @param hSession         the session
     * @param pMechanism       the <a href="#mechanisms">mechanism</a>; must not be null
     * @param hBaseKey         the key to derive from
     * @param pTemplate        the <a href="#templates">attributes</a> of the new key
     * @param ulAttributeCount the number of attributes in {@code pTemplate}
     * @param phKey            receives the handle of the new key, on success only; may be null for a
     *                         mechanism that returns its keys in its parameter; with any other mechanism null
     *                         loses the handle
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_KEY_HANDLE_INVALID},
     *         {@code CKR_MECHANISM_PARAM_INVALID}, {@code CKR_TEMPLATE_INCONSISTENT}
     * @throws UnsupportedOperationException if the parameter of the mechanism or a value in the template has
     *         no native form
     */
    public static native CK_RV C_DeriveKey(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hBaseKey, CK_ATTRIBUTE[] pTemplate, long ulAttributeCount,
            CK_OBJECT_HANDLE phKey);

    // Random numbers

    /**
     * Mixes a seed into the token's random number generator (PKCS#11 v2.20, 11.15).
     *
     * @param hSession  the session
     * @param pSeed     the seed; null only with length 0
     * @param ulSeedLen the length of {@code pSeed} in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_RANDOM_SEED_NOT_SUPPORTED},
     *         {@code CKR_RANDOM_NO_RNG}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_SeedRandom(CK_SESSION_HANDLE hSession, byte[] pSeed, long ulSeedLen);

    /**
     * Generates random bytes (PKCS#11 v2.20, 11.15).
     *
     * @param hSession    the session
     * @param pRandomData receives the random bytes, as many as fit; null only with length 0
     * @param ulRandomLen the number of bytes to generate
     * @return {@code CKR_OK}, or for example {@code CKR_RANDOM_NO_RNG}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GenerateRandom(CK_SESSION_HANDLE hSession, byte[] pRandomData,
            long ulRandomLen);

    // Parallel functions, kept for old programs

    /**
     * Does nothing in today's libraries: the standard keeps this function for old programs (PKCS#11 v2.20,
     * 11.16).
     *
     * @param hSession the session
     * @return {@code CKR_FUNCTION_NOT_PARALLEL} from most libraries
     */
    public static native CK_RV C_GetFunctionStatus(CK_SESSION_HANDLE hSession);

    /**
     * Does nothing in today's libraries: the standard keeps this function for old programs (PKCS#11 v2.20,
     * 11.16).
     *
     * @param hSession the session
     * @return {@code CKR_FUNCTION_NOT_PARALLEL} from most libraries
     */
    public static native CK_RV C_CancelFunction(CK_SESSION_HANDLE hSession);
}
