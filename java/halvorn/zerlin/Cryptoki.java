// The PKCS#11 functions, declared as natives.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_RV;
import halvorn.zerlin.constants.CK_USER_TYPE;

/**
 * The functions of PKCS#11 (Cryptoki) and three vendor extensions, one native method each, with the
 * standard's names and order of arguments. Sections are those of PKCS#11 v2.20; section 11.<i>n</i> there is
 * 5.<i>n</i> in v2.40.
 *
 * <pre>{@code
 * Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
 * LongRef count = new LongRef();
 * Cryptoki.C_GetSlotList(true, null, count).orThrow();          // how many?
 * long[] slots = new long[(int) count.value];
 * Cryptoki.C_GetSlotList(true, slots, count).orThrow();         // which?
 * }</pre>
 *
 * <p>The first use of the class loads {@code libzerlin.so}; when that fails, the {@code UnsatisfiedLinkError}
 * tells what to do (see {@link NativeLibrary}).
 *
 * <h2>Return values</h2>
 * Each native returns a new {@link CK_RV} with the library's return value, unchanged. The {@code @return}
 * lines name the values that a caller should expect; beside them every native may answer
 * {@code CKR_CRYPTOKI_NOT_INITIALIZED}, {@code CKR_GENERAL_ERROR}, {@code CKR_FUNCTION_FAILED},
 * {@code CKR_FUNCTION_NOT_SUPPORTED}, {@code CKR_HOST_MEMORY}, {@code CKR_DEVICE_ERROR},
 * {@code CKR_DEVICE_MEMORY} and {@code CKR_DEVICE_REMOVED}; with a session
 * {@code CKR_SESSION_HANDLE_INVALID}, {@code CKR_SESSION_CLOSED} and {@code CKR_USER_NOT_LOGGED_IN}. A
 * missing argument that is needed answers {@code CKR_ARGUMENTS_BAD}; nothing is called or changed then.
 *
 * <h2>Exceptions</h2>
 * A return value never becomes an exception by itself; {@link CK_RV#orThrow()} makes one. A value in a
 * template or a mechanism parameter whose class has no native form throws
 * {@code UnsupportedOperationException}, before the library is called when it is on the way in. An exception
 * on the way out, as from an attribute value that cannot be filled, hides the return value of a call that has
 * taken effect.
 *
 * <h2>Arguments</h2>
 * <ul>
 * <li>Numbers are {@code long}s of which the low 32 bits count; numbers that come back are 0 to 4294967295,
 *     never negative.
 * <li>Lengths are in bytes, counts in elements. They are handed to the library as they are, whatever the
 *     length of the array: one that is greater than the array makes the library read beyond its memory. A
 *     null array is a null pointer. A null PIN, seed or template with a positive length answers
 *     {@code CKR_ARGUMENTS_BAD}; the data of the cryptographic functions is not checked so: null with a
 *     positive length reaches the library.
 * <li>A null handle or typed constant arrives as 4294967295, an object of a wrong class as a value that the
 *     library refuses.
 * <li>Arrays and objects belong to the caller. Input is copied for the call and never changed; results are
 *     written into the objects given, and none is kept when the native returns, except the argument of
 *     {@link #C_Initialize}.
 * </ul>
 *
 * <h2 id="output">Output arrays</h2>
 * An output array has a {@link LongRef} beside it: in, the capacity that the library is told; out, the length
 * that the library reports, written back whatever the return value.
 * <ul>
 * <li>A null array asks for the length: {@code CKR_OK}, and the length in the {@code LongRef}.
 * <li>A capacity that is too small answers {@code CKR_BUFFER_TOO_SMALL} with the needed length, and leaves
 *     the array as it was. The operation goes on, so call again.
 * <li>On {@code CKR_OK} the array is filled up to the smaller of its own length and the reported one: an
 *     array shorter than the capacity promised gets a silently cut result.
 * </ul>
 * Elements of object arrays are changed in place and must exist.
 *
 * <h2 id="templates">Templates</h2>
 * A template is an array of {@link CK_ATTRIBUTE} and a count of at most its length, which is not checked. A
 * null element reaches the library as an attribute of type 4294967295 without a value, which it refuses. Null
 * with count 0 is an empty template; null with a positive count answers {@code CKR_ARGUMENTS_BAD}. The
 * {@code valueLen} of each attribute is trusted, so let its constructors set it.
 *
 * <h2 id="mechanisms">Mechanisms</h2>
 * A null {@link CK_MECHANISM} answers {@code CKR_ARGUMENTS_BAD}. Let its constructors set
 * {@code parameterLen}: a wrong one can abort the process. Do not change mechanism or parameter while the
 * native runs.
 *
 * <h2>Threads</h2>
 * Any number of threads may call natives at once; whether the library beneath is safe then is told to it with
 * {@link #C_Initialize}. A session has one operation of a kind at a time, so give each thread its own.
 */
public final class Cryptoki {
    static {
        NativeLibrary.load();
    }

    private Cryptoki() {
    }

    // General purpose functions

    /**
     * Initialises the library (PKCS#11 v2.20, 11.4). Call it once, before everything else. The callbacks of
     * the argument stay registered until {@link #C_Finalize} succeeds, also when this call fails; while some
     * are registered, the library gets a null argument instead of a new one.
     *
     * @param pInitArgs a {@link CK_C_INITIALIZE_ARGS}, or null when only one thread uses the library; an
     *                  object of another class answers {@code CKR_ARGUMENTS_BAD}
     * @return {@code CKR_OK}, or for example {@code CKR_CRYPTOKI_ALREADY_INITIALIZED}, {@code CKR_CANT_LOCK},
     *         {@code CKR_NEED_TO_CREATE_THREADS}
     */
    public static native CK_RV C_Initialize(Object pInitArgs);

    /**
     * Ends the use of the library; no other call may be running (PKCS#11 v2.20, 11.4). Success releases the
     * callbacks that {@link #C_Initialize} registered.
     *
     * @param pReserved must be null; an object reaches the library as a pointer that is not null, which it
     *                  refuses
     * @return {@code CKR_OK}, or for example {@code CKR_CRYPTOKI_NOT_INITIALIZED}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_Finalize(Object pReserved);

    /**
     * Describes the library (PKCS#11 v2.20, 11.4). {@code libraryVersion} is the version of this binding,
     * 3.10, whatever the library beneath reports.
     *
     * @param pInfo is filled on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetInfo(CK_INFO pInfo);

    // Slot and token management

    /**
     * Lists the slots (PKCS#11 v2.20, 11.5).
     *
     * @param tokenPresent true for the slots with a token only
     * @param pSlotList    receives the slot identifiers; null to ask for their number
     * @param pulCount     in: capacity in elements; out: number of slots; never null
     * @return {@code CKR_OK}, or for example {@code CKR_BUFFER_TOO_SMALL}, {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_GetSlotList(boolean tokenPresent, long[] pSlotList, LongRef pulCount);

    /**
     * Describes a slot (PKCS#11 v2.20, 11.5).
     *
     * @param slotID the slot
     * @param pInfo  is filled on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_SLOT_ID_INVALID}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetSlotInfo(long slotID, CK_SLOT_INFO pInfo);

    /**
     * Describes the token in a slot (PKCS#11 v2.20, 11.5).
     *
     * @param slotID the slot
     * @param pInfo  is filled on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_SLOT_ID_INVALID}, {@code CKR_TOKEN_NOT_PRESENT},
     *         {@code CKR_TOKEN_NOT_RECOGNIZED}
     */
    public static native CK_RV C_GetTokenInfo(long slotID, CK_TOKEN_INFO pInfo);

    /**
     * Waits until a token is inserted or removed, or asks whether one was (PKCS#11 v2.20, 11.5).
     *
     * @param flags     0 to wait, {@code CKF_DONT_BLOCK} to ask
     * @param pSlot     receives the slot, only on success; never null
     * @param pReserved must be null; an object reaches the library as a pointer that is not null
     * @return {@code CKR_OK}, or for example {@code CKR_NO_EVENT}, {@code CKR_FUNCTION_NOT_SUPPORTED},
     *         {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_WaitForSlotEvent(long flags, LongRef pSlot, Object pReserved);

    /**
     * Lists the mechanisms of a token (PKCS#11 v2.20, 11.5).
     *
     * @param slotID         the slot
     * @param pMechanismList receives the types in its existing elements, see {@link CK_MECHANISM_TYPE#array};
     *                       null to ask for their number
     * @param pulCount       in: capacity in elements; out: number of mechanisms; never null
     * @return {@code CKR_OK}, or for example {@code CKR_BUFFER_TOO_SMALL}, {@code CKR_SLOT_ID_INVALID},
     *         {@code CKR_TOKEN_NOT_PRESENT}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_GetMechanismList(long slotID, CK_MECHANISM_TYPE[] pMechanismList,
            LongRef pulCount);

    /**
     * Describes a mechanism of a token (PKCS#11 v2.20, 11.5).
     *
     * @param slotID the slot
     * @param type   the mechanism
     * @param pInfo  is filled on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_MECHANISM_INVALID}, {@code CKR_SLOT_ID_INVALID},
     *         {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetMechanismInfo(long slotID, CK_MECHANISM_TYPE type,
            CK_MECHANISM_INFO pInfo);

    /**
     * Initialises the token in a slot; every object on it is destroyed (PKCS#11 v2.20, 11.5).
     *
     * @param slotID   the slot
     * @param pPin     the PIN of the security officer; null with length 0 to enter it at the token
     * @param ulPinLen its length in bytes
     * @param pLabel   the label: 32 bytes, padded with blanks, see {@link CK_TOKEN_INFO#paddedLabel}; the
     *                 library reads beyond a shorter array
     * @return {@code CKR_OK}, or for example {@code CKR_PIN_INCORRECT}, {@code CKR_PIN_LEN_RANGE},
     *         {@code CKR_SESSION_EXISTS}
     */
    public static native CK_RV C_InitToken(long slotID, byte[] pPin, long ulPinLen, byte[] pLabel);

    /**
     * Sets the PIN of the user, in a session of the security officer (PKCS#11 v2.20, 11.5).
     *
     * @param hSession the session
     * @param pPin     the new PIN; null with length 0 to enter it at the token
     * @param ulPinLen its length in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_USER_NOT_LOGGED_IN}, {@code CKR_PIN_INVALID},
     *         {@code CKR_PIN_LEN_RANGE}
     */
    public static native CK_RV C_InitPIN(CK_SESSION_HANDLE hSession, byte[] pPin, long ulPinLen);

    /**
     * Changes the PIN of the one who is logged in, or of the user when nobody is (PKCS#11 v2.20, 11.5).
     *
     * @param hSession the session
     * @param pOldPin  the old PIN; null with length 0 to enter it at the token
     * @param ulOldLen its length in bytes
     * @param pNewPin  the new PIN; null with length 0 to enter it at the token
     * @param ulNewLen its length in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_PIN_INCORRECT}, {@code CKR_PIN_INVALID},
     *         {@code CKR_PIN_LEN_RANGE}, {@code CKR_SESSION_READ_ONLY}
     */
    public static native CK_RV C_SetPIN(CK_SESSION_HANDLE hSession, byte[] pOldPin, long ulOldLen,
            byte[] pNewPin, long ulNewLen);

    /**
     * Initialises a token from a session, an extension of the library beneath. No argument is checked here.
     *
     * @param hSession the session
     * @param ulValue  the second argument of the library's function, which gives it its meaning
     * @param pPin     the PIN; handed on as it is
     * @param ulPinLen its length in bytes
     * @param pLabel   the label, 32 bytes as for {@link #C_InitToken}, or null
     * @return {@code CKR_OK}, or for example {@code CKR_FUNCTION_NOT_SUPPORTED},
     *         {@code CKR_USER_NOT_LOGGED_IN}
     */
    public static native CK_RV CT_InitToken(CK_SESSION_HANDLE hSession, long ulValue, byte[] pPin,
            long ulPinLen, byte[] pLabel);

    /**
     * Resets the token of a session, an extension of the library beneath. No argument is checked here.
     *
     * @param hSession the session
     * @param pPin     the PIN; handed on as it is
     * @param ulPinLen its length in bytes
     * @param pLabel   the label, 32 bytes as for {@link #C_InitToken}, or null
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
     * @param flags        {@code CKF_SERIAL_SESSION}, with {@code CKF_RW_SESSION} to write
     * @param pApplication must be null: not converted, an object reaches the library as an address without
     *                     meaning
     * @param Notify       must be null: no callback is provided, and an object would be called as a function
     * @param phSession    receives the session, only on success; never null
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
     * Closes all sessions of this application with a token (PKCS#11 v2.20, 11.6).
     *
     * @param slotID the slot
     * @return {@code CKR_OK}, or for example {@code CKR_SLOT_ID_INVALID}, {@code CKR_TOKEN_NOT_PRESENT}
     */
    public static native CK_RV C_CloseAllSessions(long slotID);

    /**
     * Describes a session (PKCS#11 v2.20, 11.6).
     *
     * @param hSession the session
     * @param pInfo    is filled on success, its {@code state} object in place; never null
     * @return {@code CKR_OK}, or for example {@code CKR_SESSION_HANDLE_INVALID}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetSessionInfo(CK_SESSION_HANDLE hSession, CK_SESSION_INFO pInfo);

    /**
     * Saves the state of the operation that runs in a session (PKCS#11 v2.20, 11.6).
     *
     * @param hSession             the session
     * @param pOperationState      receives the state; null to ask for the length
     * @param pulOperationStateLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_STATE_UNSAVEABLE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_GetOperationState(CK_SESSION_HANDLE hSession, byte[] pOperationState,
            LongRef pulOperationStateLen);

    /**
     * Restores a saved state (PKCS#11 v2.20, 11.6). Refuses a null array and a length of 0 with
     * {@code CKR_ARGUMENTS_BAD}, where other natives accept them.
     *
     * @param hSession            the session
     * @param pOperationState     the state; never null
     * @param ulOperationStateLen its length in bytes; never 0
     * @param hEncryptionKey      the key of a saved encryption or decryption, else a handle of value 0
     * @param hAuthenticationKey  the key of a saved signature or verification, else a handle of value 0
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_SAVED_STATE_INVALID},
     *         {@code CKR_KEY_NEEDED}, {@code CKR_KEY_NOT_NEEDED}, {@code CKR_KEY_CHANGED}
     */
    public static native CK_RV C_SetOperationState(CK_SESSION_HANDLE hSession, byte[] pOperationState,
            long ulOperationStateLen, CK_OBJECT_HANDLE hEncryptionKey, CK_OBJECT_HANDLE hAuthenticationKey);

    /**
     * Logs a user in, in all sessions of this application with the token (PKCS#11 v2.20, 11.6).
     *
     * @param hSession the session
     * @param userType who logs in
     * @param pPin     the PIN; null with length 0 to enter it at the token
     * @param ulPinLen its length in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_PIN_INCORRECT}, {@code CKR_PIN_LOCKED},
     *         {@code CKR_USER_ALREADY_LOGGED_IN}, {@code CKR_USER_PIN_NOT_INITIALIZED},
     *         {@code CKR_USER_TYPE_INVALID}
     */
    public static native CK_RV C_Login(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, byte[] pPin,
            long ulPinLen);

    /**
     * Logs the user out, in all sessions of this application with the token (PKCS#11 v2.20, 11.6).
     *
     * @param hSession the session
     * @return {@code CKR_OK}, or for example {@code CKR_USER_NOT_LOGGED_IN}
     */
    public static native CK_RV C_Logout(CK_SESSION_HANDLE hSession);

    // Object management

    /**
     * Makes an object (PKCS#11 v2.20, 11.7).
     *
     * @param hSession  the session
     * @param pTemplate the <a href="#templates">attributes</a>
     * @param ulCount   the number of attributes
     * @param phObject  receives the new object, only on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_TEMPLATE_INCOMPLETE},
     *         {@code CKR_TEMPLATE_INCONSISTENT}, {@code CKR_ATTRIBUTE_VALUE_INVALID},
     *         {@code CKR_SESSION_READ_ONLY}
     */
    public static native CK_RV C_CreateObject(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE[] pTemplate,
            long ulCount, CK_OBJECT_HANDLE phObject);

    /**
     * Copies an object (PKCS#11 v2.20, 11.7).
     *
     * @param hSession    the session
     * @param hObject     the object to copy
     * @param pTemplate   the <a href="#templates">attributes</a> in which the copy differs
     * @param ulCount     the number of attributes
     * @param phNewObject receives the copy, only on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_OBJECT_HANDLE_INVALID},
     *         {@code CKR_TEMPLATE_INCONSISTENT}, {@code CKR_ATTRIBUTE_READ_ONLY}
     */
    public static native CK_RV C_CopyObject(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE[] pTemplate, long ulCount, CK_OBJECT_HANDLE phNewObject);

    /**
     * Copies an object between two sessions, an extension of the library beneath, which gives the two
     * sessions their roles.
     *
     * @param hSession1   the first session
     * @param hSession2   the second session
     * @param hObject     the object to copy
     * @param pTemplate   the <a href="#templates">attributes</a> in which the copy differs
     * @param ulCount     the number of attributes
     * @param phNewObject receives the copy, only on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_FUNCTION_NOT_SUPPORTED},
     *         {@code CKR_OBJECT_HANDLE_INVALID}
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
     * Tells how much memory an object takes (PKCS#11 v2.20, 11.7).
     *
     * @param hSession the session
     * @param hObject  the object
     * @param pulSize  receives the size in bytes, only on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OBJECT_HANDLE_INVALID},
     *         {@code CKR_INFORMATION_SENSITIVE}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetObjectSize(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            LongRef pulSize);

    /**
     * Reads attributes of an object (PKCS#11 v2.20, 11.7). Whatever the return value, each {@code valueLen}
     * is set to the length that the library reports, and each value that was read is written into the
     * existing {@code pValue} object, as {@link CK_ATTRIBUTE} explains. An attribute that cannot be read has
     * the length 4294967295. A null {@code pValue} asks for the length only.
     *
     * <pre>{@code
     * CK_ATTRIBUTE modulus = CK_ATTRIBUTE.buffer(CKA.MODULUS, 512);
     * Cryptoki.C_GetAttributeValue(session, key, new CK_ATTRIBUTE[] {modulus}, 1).orThrow();
     * byte[] bytes = modulus.getBytes();
     * }</pre>
     *
     * @param hSession  the session
     * @param hObject   the object
     * @param pTemplate the <a href="#templates">attributes</a> to read, changed in place
     * @param ulCount   the number of attributes
     * @return {@code CKR_OK}, or for example {@code CKR_ATTRIBUTE_SENSITIVE},
     *         {@code CKR_ATTRIBUTE_TYPE_INVALID}, {@code CKR_BUFFER_TOO_SMALL}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GetAttributeValue(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE[] pTemplate, long ulCount);

    /**
     * Changes attributes of an object (PKCS#11 v2.20, 11.7).
     *
     * @param hSession  the session
     * @param hObject   the object
     * @param pTemplate the <a href="#templates">attributes</a>
     * @param ulCount   the number of attributes
     * @return {@code CKR_OK}, or for example {@code CKR_ATTRIBUTE_READ_ONLY},
     *         {@code CKR_ATTRIBUTE_VALUE_INVALID}, {@code CKR_TEMPLATE_INCONSISTENT},
     *         {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_SetAttributeValue(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE[] pTemplate, long ulCount);

    /**
     * Begins a search (PKCS#11 v2.20, 11.7). A session has one search at a time; end it with
     * {@link #C_FindObjectsFinal}.
     *
     * @param hSession  the session
     * @param pTemplate the <a href="#templates">attributes</a> that the objects must have; null with count 0
     *                  for all objects
     * @param ulCount   the number of attributes
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE},
     *         {@code CKR_ATTRIBUTE_VALUE_INVALID}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_FindObjectsInit(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE[] pTemplate,
            long ulCount);

    /**
     * Continues a search; call it until it reports 0 objects (PKCS#11 v2.20, 11.7).
     *
     * @param hSession         the session
     * @param phObject         receives the handles in its existing elements, see
     *                         {@link CK_OBJECT_HANDLE#array}; null only with a maximum of 0
     * @param ulMaxObjectCount how many handles to report at most: the capacity is taken from here
     * @param pulObjectCount   out only: number of handles, whatever the return value; never null
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
     * @param pMechanism the <a href="#mechanisms">mechanism</a>, never null
     * @param hKey       the key
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     */
    public static native CK_RV C_EncryptInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Encrypts in one part and ends the encryption, unless it only asked for the length or the capacity was
     * too small (PKCS#11 v2.20, 11.8).
     *
     * @param hSession            the session
     * @param pData               the clear text
     * @param ulDataLen           its length in bytes
     * @param pEncryptedData      receives the cipher text; null to ask for the length
     * @param pulEncryptedDataLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_Encrypt(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pEncryptedData, LongRef pulEncryptedDataLen);

    /**
     * Encrypts one part of several (PKCS#11 v2.20, 11.8).
     *
     * @param hSession            the session
     * @param pPart               the clear text
     * @param ulPartLen           its length in bytes
     * @param pEncryptedPart      receives the cipher text; null to ask for the length
     * @param pulEncryptedPartLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_EncryptUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen,
            byte[] pEncryptedPart, LongRef pulEncryptedPartLen);

    /**
     * Ends an encryption of several parts (PKCS#11 v2.20, 11.8).
     *
     * @param hSession                the session
     * @param pLastEncryptedPart      receives the last cipher text; null to ask for the length
     * @param pulLastEncryptedPartLen in: capacity in bytes; out: length in bytes; never null
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
     * @param pMechanism the <a href="#mechanisms">mechanism</a>, never null
     * @param hKey       the key
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     */
    public static native CK_RV C_DecryptInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Decrypts in one part and ends the decryption, unless it only asked for the length or the capacity was
     * too small (PKCS#11 v2.20, 11.9).
     *
     * @param hSession           the session
     * @param pEncryptedData     the cipher text
     * @param ulEncryptedDataLen its length in bytes
     * @param pData              receives the clear text; null to ask for the length
     * @param pulDataLen         in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_INVALID}, {@code CKR_ENCRYPTED_DATA_LEN_RANGE},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_Decrypt(CK_SESSION_HANDLE hSession, byte[] pEncryptedData,
            long ulEncryptedDataLen, byte[] pData, LongRef pulDataLen);

    /**
     * Decrypts one part of several (PKCS#11 v2.20, 11.9).
     *
     * @param hSession           the session
     * @param pEncryptedPart     the cipher text
     * @param ulEncryptedPartLen its length in bytes
     * @param pPart              receives the clear text; null to ask for the length
     * @param pulPartLen         in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DecryptUpdate(CK_SESSION_HANDLE hSession, byte[] pEncryptedPart,
            long ulEncryptedPartLen, byte[] pPart, LongRef pulPartLen);

    /**
     * Ends a decryption of several parts (PKCS#11 v2.20, 11.9).
     *
     * @param hSession       the session
     * @param pLastPart      receives the last clear text; null to ask for the length
     * @param pulLastPartLen in: capacity in bytes; out: length in bytes; never null
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
     * @param pMechanism the <a href="#mechanisms">mechanism</a>, never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_DigestInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism);

    /**
     * Digests in one part and ends the digest, unless it only asked for the length or the capacity was too
     * small (PKCS#11 v2.20, 11.10).
     *
     * @param hSession     the session
     * @param pData        the data
     * @param ulDataLen    its length in bytes
     * @param pDigest      receives the digest; null to ask for the length
     * @param pulDigestLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_Digest(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pDigest, LongRef pulDigestLen);

    /**
     * Digests one part of several (PKCS#11 v2.20, 11.10).
     *
     * @param hSession  the session
     * @param pPart     the data
     * @param ulPartLen its length in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_DigestUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen);

    /**
     * Digests the value of a secret key as one part of several (PKCS#11 v2.20, 11.10).
     *
     * @param hSession the session
     * @param hKey     the secret key
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_INDIGESTIBLE}
     */
    public static native CK_RV C_DigestKey(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey);

    /**
     * Ends a digest of several parts (PKCS#11 v2.20, 11.10).
     *
     * @param hSession     the session
     * @param pDigest      receives the digest; null to ask for the length
     * @param pulDigestLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DigestFinal(CK_SESSION_HANDLE hSession, byte[] pDigest,
            LongRef pulDigestLen);

    // Signing and MACing

    /**
     * Begins a signature or MAC (PKCS#11 v2.20, 11.11).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>, never null
     * @param hKey       the private or secret key
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     */
    public static native CK_RV C_SignInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Signs in one part and ends the signature, unless it only asked for the length or the capacity was too
     * small (PKCS#11 v2.20, 11.11).
     *
     * @param hSession        the session
     * @param pData           the data
     * @param ulDataLen       its length in bytes
     * @param pSignature      receives the signature; null to ask for the length
     * @param pulSignatureLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_Sign(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pSignature, LongRef pulSignatureLen);

    /**
     * Signs one part of several (PKCS#11 v2.20, 11.11).
     *
     * @param hSession  the session
     * @param pPart     the data
     * @param ulPartLen its length in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_SignUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen);

    /**
     * Ends a signature of several parts (PKCS#11 v2.20, 11.11).
     *
     * @param hSession        the session
     * @param pSignature      receives the signature; null to ask for the length
     * @param pulSignatureLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_SignFinal(CK_SESSION_HANDLE hSession, byte[] pSignature,
            LongRef pulSignatureLen);

    /**
     * Begins a signature from which the data can be recovered (PKCS#11 v2.20, 11.11).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>, never null
     * @param hKey       the private key
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     */
    public static native CK_RV C_SignRecoverInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Signs so that the data can be recovered, in one part (PKCS#11 v2.20, 11.11).
     *
     * @param hSession        the session
     * @param pData           the data
     * @param ulDataLen       its length in bytes
     * @param pSignature      receives the signature; null to ask for the length
     * @param pulSignatureLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_SignRecover(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pSignature, LongRef pulSignatureLen);

    // Verifying signatures and MACs

    /**
     * Begins the verification of a signature or MAC (PKCS#11 v2.20, 11.12).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>, never null
     * @param hKey       the public or secret key
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     */
    public static native CK_RV C_VerifyInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Verifies in one part and ends the verification (PKCS#11 v2.20, 11.12).
     *
     * @param hSession       the session
     * @param pData          the data
     * @param ulDataLen      its length in bytes
     * @param pSignature     the signature
     * @param ulSignatureLen its length in bytes
     * @return {@code CKR_OK} for a good signature, or for example {@code CKR_SIGNATURE_INVALID},
     *         {@code CKR_SIGNATURE_LEN_RANGE}, {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_Verify(CK_SESSION_HANDLE hSession, byte[] pData, long ulDataLen,
            byte[] pSignature, long ulSignatureLen);

    /**
     * Verifies one part of several (PKCS#11 v2.20, 11.12).
     *
     * @param hSession  the session
     * @param pPart     the data
     * @param ulPartLen its length in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_VerifyUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen);

    /**
     * Ends a verification of several parts (PKCS#11 v2.20, 11.12).
     *
     * @param hSession       the session
     * @param pSignature     the signature
     * @param ulSignatureLen its length in bytes
     * @return {@code CKR_OK} for a good signature, or for example {@code CKR_SIGNATURE_INVALID},
     *         {@code CKR_SIGNATURE_LEN_RANGE}, {@code CKR_OPERATION_NOT_INITIALIZED}
     */
    public static native CK_RV C_VerifyFinal(CK_SESSION_HANDLE hSession, byte[] pSignature,
            long ulSignatureLen);

    /**
     * Begins the verification of a signature from which the data is recovered (PKCS#11 v2.20, 11.12).
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>, never null
     * @param hKey       the public key
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_KEY_HANDLE_INVALID}, {@code CKR_KEY_TYPE_INCONSISTENT},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     */
    public static native CK_RV C_VerifyRecoverInit(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hKey);

    /**
     * Verifies a signature and recovers the data, in one part (PKCS#11 v2.20, 11.12).
     *
     * @param hSession       the session
     * @param pSignature     the signature
     * @param ulSignatureLen its length in bytes
     * @param pData          receives the data; null to ask for the length
     * @param pulDataLen     in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_SIGNATURE_INVALID}, {@code CKR_SIGNATURE_LEN_RANGE},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_VerifyRecover(CK_SESSION_HANDLE hSession, byte[] pSignature,
            long ulSignatureLen, byte[] pData, LongRef pulDataLen);

    // Dual-purpose cryptographic functions

    /**
     * Digests one part and encrypts it (PKCS#11 v2.20, 11.13).
     *
     * @param hSession            the session
     * @param pPart               the clear text
     * @param ulPartLen           its length in bytes
     * @param pEncryptedPart      receives the cipher text; null to ask for the length
     * @param pulEncryptedPartLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DigestEncryptUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen,
            byte[] pEncryptedPart, LongRef pulEncryptedPartLen);

    /**
     * Decrypts one part and digests it (PKCS#11 v2.20, 11.13).
     *
     * @param hSession           the session
     * @param pEncryptedPart     the cipher text
     * @param ulEncryptedPartLen its length in bytes
     * @param pPart              receives the clear text; null to ask for the length
     * @param pulPartLen         in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DecryptDigestUpdate(CK_SESSION_HANDLE hSession, byte[] pEncryptedPart,
            long ulEncryptedPartLen, byte[] pPart, LongRef pulPartLen);

    /**
     * Signs one part and encrypts it (PKCS#11 v2.20, 11.13).
     *
     * @param hSession            the session
     * @param pPart               the clear text
     * @param ulPartLen           its length in bytes
     * @param pEncryptedPart      receives the cipher text; null to ask for the length
     * @param pulEncryptedPartLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_SignEncryptUpdate(CK_SESSION_HANDLE hSession, byte[] pPart, long ulPartLen,
            byte[] pEncryptedPart, LongRef pulEncryptedPartLen);

    /**
     * Decrypts one part and verifies it (PKCS#11 v2.20, 11.13).
     *
     * @param hSession           the session
     * @param pEncryptedPart     the cipher text
     * @param ulEncryptedPartLen its length in bytes
     * @param pPart              receives the clear text; null to ask for the length
     * @param pulPartLen         in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_NOT_INITIALIZED},
     *         {@code CKR_ENCRYPTED_DATA_LEN_RANGE}, {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_DecryptVerifyUpdate(CK_SESSION_HANDLE hSession, byte[] pEncryptedPart,
            long ulEncryptedPartLen, byte[] pPart, LongRef pulPartLen);

    // Key management

    /**
     * Makes a secret key or a set of domain parameters (PKCS#11 v2.20, 11.14). On success the results that
     * the mechanism returns are written into its parameter object.
     *
     * @param hSession   the session
     * @param pMechanism the <a href="#mechanisms">mechanism</a>, never null
     * @param pTemplate  the <a href="#templates">attributes</a>
     * @param ulCount    the number of attributes
     * @param phKey      receives the new key, only on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_TEMPLATE_INCOMPLETE}, {@code CKR_TEMPLATE_INCONSISTENT}
     */
    public static native CK_RV C_GenerateKey(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_ATTRIBUTE[] pTemplate, long ulCount, CK_OBJECT_HANDLE phKey);

    /**
     * Makes a public and a private key (PKCS#11 v2.20, 11.14). On success the results that the mechanism
     * returns are written into its parameter object.
     *
     * @param hSession                   the session
     * @param pMechanism                 the <a href="#mechanisms">mechanism</a>, never null
     * @param pPublicKeyTemplate         the <a href="#templates">attributes</a> of the public key
     * @param ulPublicKeyAttributeCount  their number
     * @param pPrivateKeyTemplate        the attributes of the private key
     * @param ulPrivateKeyAttributeCount their number
     * @param phPublicKey                receives the public key, only on success; never null
     * @param phPrivateKey               receives the private key, only on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_MECHANISM_INVALID},
     *         {@code CKR_TEMPLATE_INCOMPLETE}, {@code CKR_TEMPLATE_INCONSISTENT}
     */
    public static native CK_RV C_GenerateKeyPair(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_ATTRIBUTE[] pPublicKeyTemplate, long ulPublicKeyAttributeCount,
            CK_ATTRIBUTE[] pPrivateKeyTemplate, long ulPrivateKeyAttributeCount, CK_OBJECT_HANDLE phPublicKey,
            CK_OBJECT_HANDLE phPrivateKey);

    /**
     * Encrypts a key with another one (PKCS#11 v2.20, 11.14).
     *
     * @param hSession         the session
     * @param pMechanism       the <a href="#mechanisms">mechanism</a>, never null
     * @param hWrappingKey     the key to encrypt with; null counts as the handle 0
     * @param hKey             the key to be encrypted
     * @param pWrappedKey      receives the wrapped key; null to ask for the length
     * @param pulWrappedKeyLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_KEY_NOT_WRAPPABLE},
     *         {@code CKR_KEY_UNEXTRACTABLE}, {@code CKR_WRAPPING_KEY_HANDLE_INVALID},
     *         {@code CKR_BUFFER_TOO_SMALL}
     * @see <a href="#output">Output arrays</a>
     */
    public static native CK_RV C_WrapKey(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hWrappingKey, CK_OBJECT_HANDLE hKey, byte[] pWrappedKey,
            LongRef pulWrappedKeyLen);

    /**
     * Decrypts a wrapped key and makes a key of it (PKCS#11 v2.20, 11.14). On success the results that the
     * mechanism returns are written into its parameter object.
     *
     * @param hSession         the session
     * @param pMechanism       the <a href="#mechanisms">mechanism</a>, never null
     * @param hUnwrappingKey   the key to decrypt with
     * @param pWrappedKey      the wrapped key; never null, not even with length 0
     * @param ulWrappedKeyLen  its length in bytes
     * @param pTemplate        the <a href="#templates">attributes</a> of the new key
     * @param ulAttributeCount the number of attributes
     * @param phKey            receives the new key, only on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_WRAPPED_KEY_INVALID},
     *         {@code CKR_UNWRAPPING_KEY_HANDLE_INVALID}, {@code CKR_TEMPLATE_INCONSISTENT}
     */
    public static native CK_RV C_UnwrapKey(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hUnwrappingKey, byte[] pWrappedKey, long ulWrappedKeyLen,
            CK_ATTRIBUTE[] pTemplate, long ulAttributeCount, CK_OBJECT_HANDLE phKey);

    /**
     * Derives a key from another one (PKCS#11 v2.20, 11.14). On success the results that the mechanism
     * returns are written into its parameter object.
     *
     * @param hSession         the session
     * @param pMechanism       the <a href="#mechanisms">mechanism</a>, never null
     * @param hBaseKey         the key to derive from
     * @param pTemplate        the <a href="#templates">attributes</a> of the new key
     * @param ulAttributeCount the number of attributes
     * @param phKey            receives the new key, only on success; may be null for mechanisms that return
     *                         their keys in the parameter, else the handle is lost
     * @return {@code CKR_OK}, or for example {@code CKR_ARGUMENTS_BAD}, {@code CKR_KEY_HANDLE_INVALID},
     *         {@code CKR_MECHANISM_PARAM_INVALID}, {@code CKR_TEMPLATE_INCONSISTENT}
     */
    public static native CK_RV C_DeriveKey(CK_SESSION_HANDLE hSession, CK_MECHANISM pMechanism,
            CK_OBJECT_HANDLE hBaseKey, CK_ATTRIBUTE[] pTemplate, long ulAttributeCount,
            CK_OBJECT_HANDLE phKey);

    // Random numbers

    /**
     * Mixes a seed into the token's random number generator (PKCS#11 v2.20, 11.15).
     *
     * @param hSession  the session
     * @param pSeed     the seed
     * @param ulSeedLen its length in bytes
     * @return {@code CKR_OK}, or for example {@code CKR_RANDOM_SEED_NOT_SUPPORTED},
     *         {@code CKR_RANDOM_NO_RNG}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_SeedRandom(CK_SESSION_HANDLE hSession, byte[] pSeed, long ulSeedLen);

    /**
     * Draws random bytes (PKCS#11 v2.20, 11.15).
     *
     * @param hSession    the session
     * @param pRandomData receives the bytes, as far as it is long; null only with length 0
     * @param ulRandomLen how many bytes to draw
     * @return {@code CKR_OK}, or for example {@code CKR_RANDOM_NO_RNG}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV C_GenerateRandom(CK_SESSION_HANDLE hSession, byte[] pRandomData,
            long ulRandomLen);

    // Parallel functions, kept for old programs

    /**
     * Does nothing in today's libraries (PKCS#11 v2.20, 11.16).
     *
     * @param hSession the session
     * @return {@code CKR_FUNCTION_NOT_PARALLEL} from most libraries
     */
    public static native CK_RV C_GetFunctionStatus(CK_SESSION_HANDLE hSession);

    /**
     * Does nothing in today's libraries (PKCS#11 v2.20, 11.16).
     *
     * @param hSession the session
     * @return {@code CKR_FUNCTION_NOT_PARALLEL} from most libraries
     */
    public static native CK_RV C_CancelFunction(CK_SESSION_HANDLE hSession);
}
