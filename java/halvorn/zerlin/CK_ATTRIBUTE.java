// One attribute of a template. Its constructors set a length that fits the value.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_ATTRIBUTE_TYPE;

import java.util.Arrays;

/**
 * An attribute of an object: type, value and length (PKCS#11 v2.20, 9.4).
 *
 * <p>The Java class of the value decides its native form, whatever the type of the attribute is:
 * <ul>
 * <li>{@code byte[]}: the bytes;
 * <li>{@code Long}, {@code Integer}, the typed holders of {@link halvorn.zerlin.constants},
 *     {@link CK_OBJECT_HANDLE}, {@link CK_SESSION_HANDLE}: a CK_ULONG, 4 bytes in a 32-bit JVM (the
 *     low 32 bits) and 8 in a 64-bit one;
 * <li>{@link CK_BBOOL}, {@code Boolean}, {@code Byte}: 1 byte;
 * <li>{@link CK_DATE}: 8 bytes, but with the month in the wrong place; see the warning there and use
 *     {@link CK_DATE#toBytes};
 * <li>{@code String}: its bytes in modified UTF-8, which is UTF-8 unless the text contains NUL characters or
 *     surrogates;
 * <li>{@code CK_MECHANISM_TYPE[]}, {@code long[]}: a CK_ULONG for each element;
 * <li>{@code boolean[]}, {@code char[]}: 1 byte for each element (the low 8 bits of a char).
 * </ul>
 * A value of any other class makes the native throw {@code UnsupportedOperationException}, except that a
 * {@code Character} makes it throw {@code NoClassDefFoundError}: deliberate. Use a {@code Byte} instead. The
 * constructors that set the length themselves refuse all these classes. Every constructor replaces an
 * {@code int[]} by a {@code long[]} with the same numbers.
 *
 * <p>{@link Cryptoki#C_GetAttributeValue} writes into the value object that it is given. It can write into
 * {@code byte[]}, {@code Long}, {@code Boolean}, {@link CK_BBOOL}, {@link CK_DATE}, handles, typed holders
 * and {@code CK_MECHANISM_TYPE[]} whose elements are not null. Any other class makes it throw
 * {@code UnsupportedOperationException} after the call of the library.
 *
 * <p><b>Warning.</b> The natives write into a {@code Long} or {@code Boolean} although Java treats it as
 * immutable: deliberate. A box that the JVM shares ({@code Boolean.TRUE}, {@code Long.valueOf(1)}) would then
 * change for the whole JVM. The constructors replace such a box by a new one with the same value. What you
 * assign to {@link #pValue} yourself is written in place.
 *
 * <p>Read the value from {@link #pValue} after the call, not from a variable that you passed to the
 * constructor: the attribute may hold another object, and compiled Java code may keep the number of an
 * autoboxed {@code Long} or {@code Boolean} ({@code Long size = 0L}) and not see that it was written.
 *
 * <pre>{@code
 * CK_ATTRIBUTE size = new CK_ATTRIBUTE(CKA.VALUE_LEN, new Long(0)); // or: (CKA.VALUE_LEN, 0)
 * Cryptoki.C_GetAttributeValue(session, key, new CK_ATTRIBUTE[] {size}, 1).orThrow();
 * long bytes = (Long) size.pValue;
 * }</pre>
 *
 * <pre>{@code
 * CK_ATTRIBUTE[] template = {
 *     new CK_ATTRIBUTE(CKA.CLASS, new CK_OBJECT_CLASS(CKO.SECRET_KEY)),
 *     new CK_ATTRIBUTE(CKA.TOKEN, true),
 *     new CK_ATTRIBUTE(CKA.VALUE_LEN, 32),
 *     new CK_ATTRIBUTE(CKA.LABEL, "my key")};
 * }</pre>
 */
public class CK_ATTRIBUTE {
    /**
     * The type of the attribute; null reaches the library as {@code CK_UNAVAILABLE_INFORMATION}. The natives
     * change it only if it is 65535, {@link halvorn.zerlin.constants.CKA#WILDCARD}, which stands for any
     * type: it then receives the type that was found.
     */
    public CK_ATTRIBUTE_TYPE type;
    /**
     * The value, or null to ask for its length only. Do not assign an {@code int[]}: only its 1st, 3rd, 5th
     * ... element reach the library, followed by zeros: deliberate. The constructors replace an {@code int[]}
     * by a {@code long[]} with the same numbers. Do not assign a box that the JVM shares, such as
     * {@code Boolean.TRUE}, if the attribute is to be read: the natives write into the object.
     */
    public Object pValue;
    /**
     * In: the length of the value in bytes; for a value that is read, the capacity. It is not checked: with a
     * length that is too great the library finds zeroes behind the value, up to 64 KiB, and crashes behind
     * those.
     *
     * <p>Out: the length in bytes that the library reports, {@code CK_UNAVAILABLE_INFORMATION} for an
     * attribute that cannot be read. After an error before the library came to this attribute, such as an
     * invalid handle, it is still the length that the library got: look at the return value first. Set it
     * anew before you use the attribute again: {@code CK_UNAVAILABLE_INFORMATION} would be the capacity.
     */
    public long valueLen;

    /** Creates an attribute of type 0 without a value. */
    public CK_ATTRIBUTE() {
        type = new CK_ATTRIBUTE_TYPE();
    }

    /**
     * Creates an attribute and sets its length to that of the value.
     *
     * @param type  a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param value the value, kept without a copy, but an {@code int[]} as a {@code long[]} with the same
     *              numbers and a box that the JVM shares as a new one; null to ask for the length
     * @throws IllegalArgumentException if the class of the value has no native form
     */
    public CK_ATTRIBUTE(long type, Object value) {
        this(new CK_ATTRIBUTE_TYPE(type), value);
    }

    /**
     * Creates an attribute and sets its length to that of the value.
     *
     * @param type  the type, kept without a copy
     * @param value the value, kept without a copy, but an {@code int[]} as a {@code long[]} with the same
     *              numbers and a box that the JVM shares as a new one; null to ask for the length
     * @throws IllegalArgumentException if the class of the value has no native form
     */
    public CK_ATTRIBUTE(CK_ATTRIBUTE_TYPE type, Object value) {
        this.type = type;
        pValue = NativeValue.forAttribute(value);
        valueLen = NativeValue.length(value);
        if (valueLen == NativeValue.UNKNOWN) {
            throw new IllegalArgumentException("No native form for " + value.getClass().getName()
                    + ": use null, byte[], String, Long, Integer, Byte, Boolean, CK_BBOOL, CK_DATE, a handle,"
                    + " a typed constant, CK_MECHANISM_TYPE[], long[], int[], boolean[] or char[]");
        }
    }

    /**
     * Creates a numeric attribute, a CK_ULONG. Its value is a new {@code Long}, so a native may write into
     * it.
     *
     * @param type  a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param value the value
     */
    public CK_ATTRIBUTE(long type, long value) {
        this(new CK_ATTRIBUTE_TYPE(type), value);
    }

    /**
     * Creates a numeric attribute, a CK_ULONG. Its value is a new {@code Long}, so a native may write into
     * it.
     *
     * @param type  the type, kept without a copy
     * @param value the value
     */
    @SuppressWarnings({"deprecation", "removal"}) // Long.valueOf would return a shared object
    public CK_ATTRIBUTE(CK_ATTRIBUTE_TYPE type, long value) {
        this(type, (Object) new Long(value));
    }

    /**
     * Creates a boolean attribute of 1 byte. Its value is a new {@link CK_BBOOL}.
     *
     * @param type  a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param value the value
     */
    public CK_ATTRIBUTE(long type, boolean value) {
        this(new CK_ATTRIBUTE_TYPE(type), value);
    }

    /**
     * Creates a boolean attribute of 1 byte. Its value is a new {@link CK_BBOOL}.
     *
     * @param type  the type, kept without a copy
     * @param value the value
     */
    public CK_ATTRIBUTE(CK_ATTRIBUTE_TYPE type, boolean value) {
        this(type, (Object) new CK_BBOOL(value));
    }

    /**
     * Creates an attribute with a length that the caller chooses. Neither class nor length is checked.
     *
     * @param type     a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param value    the value, kept without a copy, but an {@code int[]} as a {@code long[]} with the same
     *                 numbers and a box that the JVM shares as a new one; or null
     * @param valueLen the length in bytes; at most that of the value
     */
    public CK_ATTRIBUTE(long type, Object value, long valueLen) {
        this.type = new CK_ATTRIBUTE_TYPE(type);
        this.pValue = NativeValue.forAttribute(value);
        this.valueLen = valueLen;
    }

    /**
     * Creates an attribute that is read as bytes.
     *
     * @param type a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param size the capacity in bytes
     * @return an attribute whose value is a new {@code byte[size]}
     */
    public static CK_ATTRIBUTE buffer(long type, int size) {
        return new CK_ATTRIBUTE(type, new byte[size]);
    }

    /**
     * Returns the value that was read into a {@code byte[]}, cut to the length that the library reported.
     *
     * @return a new array; null if the value is not a {@code byte[]}, or if the reported length is greater
     *         than the array, as it is for an attribute that could not be read
     */
    public byte[] getBytes() {
        if (!(pValue instanceof byte[]) || valueLen < 0 || valueLen > ((byte[]) pValue).length) {
            return null;
        }
        return Arrays.copyOf((byte[]) pValue, (int) valueLen);
    }

    /**
     * Describes type, value and length; of bytes and text, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_ATTRIBUTE[type=" + type + ", pValue=" + NativeValue.describe(pValue)
                + ", valueLen=" + Text.count(valueLen) + "]";
    }
}
