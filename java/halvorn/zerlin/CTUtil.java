// The utility natives: names and values of constants, and single attributes of objects.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_ATTRIBUTE_TYPE;
import halvorn.zerlin.constants.CK_KEY_TYPE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_OBJECT_CLASS;
import halvorn.zerlin.constants.CK_RV;
import halvorn.zerlin.constants.CK_STATE;
import halvorn.zerlin.constants.TypedValue;

/**
 * Names of constants, values of names, and single attributes of objects. {@link Cryptoki} explains the words;
 * its rules on return values, exceptions and arguments hold here too. The first use of this class loads
 * {@code libzerlin.so}, see {@link NativeLibrary}.
 *
 * <h2 id="names">From value to name</h2>
 * The {@code CTU_Get...String} natives write the name of a value into a byte array: in ASCII, without its
 * prefix and without a NUL byte at the end. They do not call the library. The name of a return value is a
 * message ("PIN locked"), and the name of a session state is a phrase ("Read Only User Functions"). A value
 * without a name becomes "UNKNOWN (0x9999)", or "Vendor defined (0x80001234)" if it is 0x80000000 or greater.
 * Null becomes "null".
 * <ul>
 * <li>A null array asks for the length: the native returns {@code CKR_OK}.
 * <li>A capacity that is smaller than the length makes the native return {@code CKR_DATA_LEN_RANGE}, not
 *     {@code CKR_BUFFER_TOO_SMALL}: deliberate. The array stays as it was. The capacity is compared as a
 *     signed 64-bit number, so a negative one is always too small.
 * <li>The length is written into the {@link LongRef} in all these cases. A null {@code LongRef} makes the
 *     native return {@code CKR_ARGUMENTS_BAD}.
 * <li>An array that is shorter than the name receives only the beginning of the name.
 * </ul>
 * All threads share one buffer for the texts of values without a name: deliberate. Two threads that ask for
 * two such values at the same moment may receive a wrong text. {@link TypedValue#toString()} and the look-ups
 * of the constants, such as {@link halvorn.zerlin.constants.CKM#of CKM.of}, are safe for any number of threads
 * and need no native library.
 *
 * <h2 id="values">From name to value</h2>
 * The {@code CTU_Get...Value} natives return the value of an ASCII name, which may have its prefix or not and
 * is case-sensitive. They do not call the library. Only the first 511 bytes of a name count, and a NUL byte
 * ends it. The value of an unknown name is {@code CK_UNAVAILABLE_INFORMATION}.
 *
 * <p>For a null name, these natives return a {@link CK_RV} with {@code CKR_ARGUMENTS_BAD} instead of their
 * own class: deliberate. So the type of the result is the one that the caller assigns it to, and a wrong type
 * throws {@code ClassCastException} at the caller. To avoid this, do not pass null.
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
     * Returns the name of an attribute type.
     *
     * @param value      the value; null has the name "null"
     * @param pName      receives the name; null asks for its length
     * @param pulNameLen in: the capacity of {@code pName} in bytes; out: the length in bytes; must not be
     *                   null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetAttributeTypeString(CK_ATTRIBUTE_TYPE value, byte[] pName,
            LongRef pulNameLen);

    /**
     * Returns the message of a return value.
     *
     * @param value      the value; null has the name "null"
     * @param pName      receives the message; null asks for its length
     * @param pulNameLen in: the capacity of {@code pName} in bytes; out: the length in bytes; must not be
     *                   null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetErrorString(CK_RV value, byte[] pName, LongRef pulNameLen);

    /**
     * Returns the name of a key type.
     *
     * @param value      the value; null has the name "null"
     * @param pName      receives the name; null asks for its length
     * @param pulNameLen in: the capacity of {@code pName} in bytes; out: the length in bytes; must not be
     *                   null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetKeyTypeString(CK_KEY_TYPE value, byte[] pName, LongRef pulNameLen);

    /**
     * Returns the name of a mechanism type.
     *
     * @param value      the value; null has the name "null"
     * @param pName      receives the name; null asks for its length
     * @param pulNameLen in: the capacity of {@code pName} in bytes; out: the length in bytes; must not be
     *                   null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetMechanismTypeString(CK_MECHANISM_TYPE value, byte[] pName,
            LongRef pulNameLen);

    /**
     * Returns the name of an object class.
     *
     * @param value      the value; null has the name "null"
     * @param pName      receives the name; null asks for its length
     * @param pulNameLen in: the capacity of {@code pName} in bytes; out: the length in bytes; must not be
     *                   null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetObjectClassString(CK_OBJECT_CLASS value, byte[] pName,
            LongRef pulNameLen);

    /**
     * Returns the phrase of a session state.
     *
     * @param value      the value; null has the name "null"
     * @param pName      receives the phrase; null asks for its length
     * @param pulNameLen in: the capacity of {@code pName} in bytes; out: the length in bytes; must not be
     *                   null
     * @return {@code CKR_OK}, {@code CKR_DATA_LEN_RANGE} or {@code CKR_ARGUMENTS_BAD}
     * @see <a href="#names">From value to name</a>
     */
    public static native CK_RV CTU_GetSessionStateString(CK_STATE value, byte[] pName, LongRef pulNameLen);

    /**
     * Returns the attribute type of a name, with or without the prefix {@code CKA_}.
     *
     * @param <T>  {@link CK_ATTRIBUTE_TYPE}, or {@link CK_RV} if {@code name} is null
     * @param name the name in ASCII
     * @return a new {@link CK_ATTRIBUTE_TYPE}, with the value {@code CK_UNAVAILABLE_INFORMATION} for an
     *         unknown name; a {@link CK_RV} with {@code CKR_ARGUMENTS_BAD} if {@code name} is null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetAttributeTypeValue(byte[] name);

    /**
     * Returns the return value of a message, with or without the prefix {@code CKR_}: the message is "PIN
     * locked", not "PIN_LOCKED".
     *
     * @param name the message in ASCII
     * @return a new {@link CK_RV}, with the value {@code CK_UNAVAILABLE_INFORMATION} for an unknown message;
     *         with {@code CKR_ARGUMENTS_BAD} if {@code name} is null
     * @see <a href="#values">From name to value</a>
     */
    public static native CK_RV CTU_GetErrorValue(byte[] name);

    /**
     * Returns the key type of a name, with or without the prefix {@code CKK_}.
     *
     * @param <T>  {@link CK_KEY_TYPE}, or {@link CK_RV} if {@code name} is null
     * @param name the name in ASCII
     * @return a new {@link CK_KEY_TYPE}, with the value {@code CK_UNAVAILABLE_INFORMATION} for an unknown
     *         name; a {@link CK_RV} with {@code CKR_ARGUMENTS_BAD} if {@code name} is null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetKeyTypeValue(byte[] name);

    /**
     * Returns the mechanism type of a name, with or without the prefix {@code CKM_}.
     *
     * @param <T>  {@link CK_MECHANISM_TYPE}, or {@link CK_RV} if {@code name} is null
     * @param name the name in ASCII
     * @return a new {@link CK_MECHANISM_TYPE}, with the value {@code CK_UNAVAILABLE_INFORMATION} for an
     *         unknown name; a {@link CK_RV} with {@code CKR_ARGUMENTS_BAD} if {@code name} is null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetMechanismTypeValue(byte[] name);

    /**
     * Returns the object class of a name, with or without the prefix {@code CKO_}.
     *
     * @param <T>  {@link CK_OBJECT_CLASS}, or {@link CK_RV} if {@code name} is null
     * @param name the name in ASCII
     * @return a new {@link CK_OBJECT_CLASS}, with the value {@code CK_UNAVAILABLE_INFORMATION} for an
     *         unknown name; a {@link CK_RV} with {@code CKR_ARGUMENTS_BAD} if {@code name} is null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetObjectClassValue(byte[] name);

    /**
     * Returns the session state of a phrase such as "Read Only User Functions". The prefix that may stand
     * before it is {@code CKM_}, not {@code CKS_}: deliberate. {@code RO_PUBLIC_SESSION} is no phrase, so it
     * is unknown.
     *
     * @param <T>  {@link CK_STATE}, or {@link CK_RV} if {@code name} is null
     * @param name the phrase in ASCII
     * @return a new {@link CK_STATE}, with the value {@code CK_UNAVAILABLE_INFORMATION} for an unknown
     *         phrase; a {@link CK_RV} with {@code CKR_ARGUMENTS_BAD} if {@code name} is null
     * @see <a href="#values">From name to value</a>
     */
    public static native <T extends TypedValue> T CTU_GetSessionStateValue(byte[] name);

    /**
     * Finds an object by its class and label. It calls {@link Cryptoki#C_FindObjectsInit},
     * {@link Cryptoki#C_FindObjects} and {@link Cryptoki#C_FindObjectsFinal}, so no other search may be
     * active in the session. Of several matching objects it takes the first that the token reports.
     *
     * <p>If {@code C_FindObjects} fails, the search stays active: deliberate. End it with
     * {@link Cryptoki#C_FindObjectsFinal} before the next search.
     *
     * @param hSession    the session
     * @param objectClass the class
     * @param label       the label, up to its first NUL byte; null stands for the empty label
     * @param phObject    receives the handle of the object, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_OPERATION_ACTIVE}, {@code CKR_ARGUMENTS_BAD};
     *         {@code CKR_GENERAL_ERROR} also if there is no such object
     */
    public static native CK_RV CTU_FindObject(CK_SESSION_HANDLE hSession, CK_OBJECT_CLASS objectClass,
            byte[] label, CK_OBJECT_HANDLE phObject);

    /**
     * Reads one attribute of an object into a value object, which is changed in place. It calls
     * {@link Cryptoki#C_GetAttributeValue} once for the length and, if {@code ulValueLen} is not 0, again for
     * the value.
     *
     * <pre>{@code
     * CK_KEY_TYPE type = new CK_KEY_TYPE();
     * long size = new CK_ATTRIBUTE(CKA.KEY_TYPE, type).valueLen; // 4 in a 32-bit JVM, 8 in a 64-bit one
     * CTUtil.CTU_GetAttributeValue(session, key, new CK_ATTRIBUTE_TYPE(CKA.KEY_TYPE), type, size, length);
     * }</pre>
     *
     * @param hSession    the session
     * @param hObject     the object
     * @param type        the type of the attribute
     * @param pValue      receives the value: an object of a class that {@link CK_ATTRIBUTE} lists as one that
     *                    natives can write into, but no cached {@code Long} or {@code Boolean}; null with
     *                    {@code ulValueLen} 0 asks for the length
     * @param ulValueLen  the capacity of {@code pValue} in bytes: at most the length of its native form,
     *                    which is not checked; 0 asks for the length
     * @param pulValueLen out only: the length of the value in bytes, on success only; must not be null
     * @return {@code CKR_OK}, or for example {@code CKR_ATTRIBUTE_SENSITIVE}, {@code CKR_ARGUMENTS_BAD};
     *         {@code CKR_ATTRIBUTE_TYPE_INVALID} if the object has no such attribute, and also if the
     *         capacity is too small, instead of {@code CKR_BUFFER_TOO_SMALL}: deliberate
     * @throws UnsupportedOperationException if the value has no native form; also, after the call of the
     *         library, if the value cannot be written into its object
     */
    public static native CK_RV CTU_GetAttributeValue(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE_TYPE type, Object pValue, long ulValueLen, LongRef pulValueLen);

    /**
     * Changes one attribute of an object. It calls {@link Cryptoki#C_SetAttributeValue} once.
     *
     * @param hSession   the session
     * @param hObject    the object
     * @param type       the type of the attribute
     * @param pValue     the value, of a class that {@link CK_ATTRIBUTE} lists; use a {@code long[]} instead
     *                   of an {@code int[]}, which would lose every second element; null only with length 0
     * @param ulValueLen the length of the native form of {@code pValue} in bytes; not checked: with a
     *                   greater one the library finds zeroes behind the value, up to 64 KiB, and crashes
     *                   behind those
     * @return {@code CKR_OK}, or for example {@code CKR_ATTRIBUTE_READ_ONLY},
     *         {@code CKR_ATTRIBUTE_VALUE_INVALID}, {@code CKR_ATTRIBUTE_TYPE_INVALID}
     * @throws UnsupportedOperationException if the value has no native form
     */
    public static native CK_RV CTU_SetAttributeValue(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject,
            CK_ATTRIBUTE_TYPE type, Object pValue, long ulValueLen);
}
