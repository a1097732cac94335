// The utility natives: names and values of constants, and single attributes of objects found by their label.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_ATTRIBUTE_TYPE;
import halvorn.zerlin.constants.CK_KEY_TYPE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_OBJECT_CLASS;
import halvorn.zerlin.constants.CK_RV;
import halvorn.zerlin.constants.CK_STATE;
import halvorn.zerlin.constants.TypedValue;

/**
 * Names of constants, values of names, and single attributes of objects. The first use of the class loads
 * {@code libzerlin.so}, see {@link NativeLibrary}; what {@link Cryptoki} says of return values, exceptions
 * and arguments holds here too.
 *
 * <h2 id="names">From value to name</h2>
 * The {@code CTU_Get...String} natives write the name of a value, without its prefix and without a
 * terminating NUL, into a byte array. A return value has a message ("PIN locked") and a session state a
 * phrase ("Read Only User Functions"). A value without a name is told as "UNKNOWN (0x9999)", one of the
 * vendor's range as "Vendor defined (0x80001234)", a null as "null".
 * <ul>
 * <li>A null array asks for the length: {@code CKR_OK}.
 * <li>A capacity below the length answers {@code CKR_DATA_LEN_RANGE}, not {@code CKR_BUFFER_TOO_SMALL}, and
 *     leaves the array as it was. The capacity is compared as the signed 64-bit number that it is.
 * <li>The length is written into the {@link LongRef} each time, but for {@code CKR_ARGUMENTS_BAD}, the answer
 *     to a null one. An array shorter than the name gets as much as it holds.
 * </ul>
 * The texts for values without a name pass through one buffer of the whole process: two threads that ask for
 * such at the same moment may see each other's. {@link TypedValue#toString()} names values without the native
 * library.
 *
 * <h2 id="values">From name to value</h2>
 * The {@code CTU_Get...Value} natives look an ASCII name up, with or without its prefix, case-sensitive. Of a
 * longer name the first 511 bytes count, and a NUL ends it. An unknown name yields the value 4294967295.
 *
 * <p>For a null name they return a {@link CK_RV} of {@code CKR_ARGUMENTS_BAD} instead of their own kind.
 * Their result is therefore of the type that the caller expects, and a wrong expectation is a
 * {@code ClassCastException} at the caller:
 *
 * <pre>{@code
 * CK_KEY_TYPE type = CTUtil.CTU_GetKeyTypeValue("CKK_AES".getBytes(StandardCharsets.US_ASCII));
 * CK_RV bad = CTUtil.CTU_GetKeyTypeValue(null);
 * }</pre>
 */
public final class CTUtil {
    static {
        NativeLibrary.load();
    }

    private CTUtil() {
    }

    /**
     * Gives the name of an attribute type.
     *
     * @param value      the value, or null
     * @param pName      receives the name; null to ask for the length
     * @param pulNameLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetAttributeTypeString(CK_ATTRIBUTE_TYPE value, byte[] pName,
            LongRef pulNameLen);

    /**
     * Gives the message of a return value.
     *
     * @param value      the value, or null
     * @param pName      receives the name; null to ask for the length
     * @param pulNameLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetErrorString(CK_RV value, byte[] pName, LongRef pulNameLen);

    /**
     * Gives the name of a key type.
     *
     * @param value      the value, or null
     * @param pName      receives the name; null to ask for the length
     * @param pulNameLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetKeyTypeString(CK_KEY_TYPE value, byte[] pName, LongRef pulNameLen);

    /**
     * Gives the name of a mechanism type.
     *
     * @param value      the value, or null
     * @param pName      receives the name; null to ask for the length
     * @param pulNameLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetMechanismTypeString(CK_MECHANISM_TYPE value, byte[] pName,
            LongRef pulNameLen);

    /**
     * Gives the name of an object class.
     *
     * @param value      the value, or null
     * @param pName      receives the name; null to ask for the length
     * @param pulNameLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetObjectClassString(CK_OBJECT_CLASS value, byte[] pName,
            LongRef pulNameLen);

    /**
     * Gives the phrase of a session state.
     *
     * @param value      the value, or null
     * @param pName      receives the name; null to ask for the length
     * @param pulNameLen in: capacity in bytes; out: length in bytes; never null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetSessionStateString(CK_STATE value, byte[] pName, LongRef pulNameLen);

    /**
     * Gives the attribute type of a name, with or without the prefix {@code CKA_}.
     *
     * @param <T>  {@link CK_ATTRIBUTE_TYPE}, or {@link CK_RV} when the name is null
     * @param name the name in ASCII
     * @return a new {@link CK_ATTRIBUTE_TYPE}, 4294967295 for an unknown name; {@link CK_RV} of
     *         {@code CKR_ARGUMENTS_BAD} for null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetAttributeTypeValue(byte[] name);

    /**
     * Gives the return value of a message, with or without the prefix {@code CKR_}: "PIN locked", not
     * "PIN_LOCKED".
     *
     * @param name the name in ASCII
     * @return a new {@link CK_RV}, 4294967295 for an unknown name; {@code CKR_ARGUMENTS_BAD} for null
     * @see <a href="#values">From name to value</a>
     */
    public static native CK_RV CTU_GetErrorValue(byte[] name);

    /**
     * Gives the key type of a name, with or without the prefix {@code CKK_}.
     *
     * @param <T>  {@link CK_KEY_TYPE}, or {@link CK_RV} when the name is null
     * @param name the name in ASCII
     * @return a new {@link CK_KEY_TYPE}, 4294967295 for an unknown name; {@link CK_RV} of
     *         {@code CKR_ARGUMENTS_BAD} for null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetKeyTypeValue(byte[] name);

    /**
     * Gives the mechanism type of a name, with or without the prefix {@code CKM_}.
     *
     * @param <T>  {@link CK_MECHANISM_TYPE}, or {@link CK_RV} when the name is null
     * @param name the name in ASCII
     * @return a new {@link CK_MECHANISM_TYPE}, 4294967295 for an unknown name; {@link CK_RV} of
     *         {@code CKR_ARGUMENTS_BAD} for null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetMechanismTypeValue(byte[] name);

    /**
     * Gives the object class of a name, with or without the prefix {@code CKO_}.
     *
     * @param <T>  {@link CK_OBJECT_CLASS}, or {@link CK_RV} when the name is null
     * @param name the name in ASCII
     * @return a new {@link CK_OBJECT_CLASS}, 4294967295 for an unknown name; {@link CK_RV} of
     *         {@code CKR_ARGUMENTS_BAD} for null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetObjectClassValue(byte[] name);

    /**
     * Gives the session state of a phrase. The prefix that may stand before it is {@code CKM_}, not
     * {@code CKS_}, and {@code RO_PUBLIC_SESSION} is no name of a state.
     *
     * @param <T>  {@link CK_STATE}, or {@link CK_RV} when the name is null
     * @param name the name in ASCII
     * @return a new {@link CK_STATE}, 4294967295 for an unknown name; {@link CK_RV} of
     *         {@code CKR_ARGUMENTS_BAD} for null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetSessionStateValue(byte[] name);

    /**
     * Finds an object by class and label. It uses the one search that a session has; of several such objects
     * the first that the token reports is taken.
     *
     * @param hSession    the session
     * @param objectClass the class
     * @param label       the label, up to its first NUL; never null
     * @param phObject    receives the object, only on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_GENERAL_ERROR}, {@code CKR_OPERATION_ACTIVE},
     *         {@code CKR_ARGUMENTS_BAD}; {@code CKR_GENERAL_ERROR} also when there is no such object
     */
    public static native CK_RV CTU_FindObject(CK_SESSION_HANDLE hSession, CK_OBJECT_CLASS objectClass,
            byte[] label, CK_OBJECT_HANDLE phObject);

    /**
     * Reads one attribute of an object into a value object, in place and under the same rules as
     * {@link Cryptoki#C_GetAttributeValue}.
     *
     * <pre>{@code
     * CK_KEY_TYPE type = new CK_KEY_TYPE();
     * CTUtil.CTU_GetAttributeValue(session, key, new CK_ATTRIBUTE_TYPE(CKA.KEY_TYPE), type, 4, length);
     * }</pre>
     *
     * @param hSession    the session
     * @param hObject     the object
     * @param type        the attribute
     * @param pValue      receives the value: an object of a class that {@link CK_ATTRIBUTE} lists as
     *                    readable, no cached {@code Long} or {@code Boolean}; may be null with length 0
     * @param ulValueLen  capacity in bytes, at most that of the value's native form, which is not checked; 0
     *                    to ask for the length
     * @param pulValueLen out only: length in bytes, on success; never null
     * @return {@code CKR_OK}, or for example {@code CKR_ATTRIBUTE_TYPE_INVALID} (also when the capacity is
     *         too small), {@code CKR_ATTRIBUTE_SENSITIVE}, {@code CKR_ARGUMENTS_BAD}
     */
    public static native CK_RV CTU_GetAttributeValue(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE_TYPE type, Object pValue, long ulValueLen, LongRef pulValueLen);

    /**
     * Changes one attribute of an object.
     *
     * @param hSession   the session
     * @param hObject    the object
     * @param type       the attribute
     * @param pValue     the value, of a class that {@link CK_ATTRIBUTE} lists (no {@code int[]}), or null
     *                   with length 0
     * @param ulValueLen the length of the value's native form in bytes: a greater one is not checked and
     *                   makes the library read beyond it
     * @return {@code CKR_OK}, or for example {@code CKR_ATTRIBUTE_READ_ONLY},
     *         {@code CKR_ATTRIBUTE_VALUE_INVALID}, {@code CKR_ATTRIBUTE_TYPE_INVALID}
     */
    public static native CK_RV CTU_SetAttributeValue(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE_TYPE type, Object pValue, long ulValueLen);
}
