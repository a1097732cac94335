// One attribute of a template, with constructors that keep its three fields consistent.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_ATTRIBUTE_TYPE;

import java.util.Arrays;

/**
 * An attribute of an object: type, value and length (PKCS#11 v2.20, 9.4).
 *
 * <p>The Java class of the value, never the attribute's type, decides its native form:
 * <ul>
 * <li>{@code byte[]}: the bytes;
 * <li>{@code Long}, {@code Integer}, the typed holders of {@link halvorn.zerlin.constants},
 *     {@link CK_OBJECT_HANDLE}, {@link CK_SESSION_HANDLE}: a CK_ULONG of 4 bytes (the low 32 bits);
 * <li>{@link CK_BBOOL}, {@code Boolean}, {@code Byte}: 1 byte;
 * <li>{@link CK_DATE}: 8 bytes, with the parts misplaced: see its warning and use {@link CK_DATE#toBytes};
 * <li>{@code String}: its modified UTF-8 bytes, which for text without NUL characters and surrogates is
 *     UTF-8;
 * <li>{@code CK_MECHANISM_TYPE[]}, {@code long[]}, {@code int[]}: 4 bytes for each element;
 * <li>{@code boolean[]}, {@code char[]}: 1 byte for each element (the low 8 bits of a char).
 * </ul>
 * A value of any other class, {@code Character} included, makes the native throw
 * {@code UnsupportedOperationException}.
 *
 * <p>{@link Cryptoki#C_GetAttributeValue} writes into the value object that it is given. It can fill
 * {@code byte[]}, {@code Long}, {@code Boolean}, {@link CK_BBOOL}, {@link CK_DATE}, handles, typed holders
 * and {@code CK_MECHANISM_TYPE[]} whose elements exist; other classes make it throw
 * {@code UnsupportedOperationException}.
 *
 * <p><b>Warning.</b> A {@code Long} or {@code Boolean} is overwritten in place although Java holds it
 * immutable. A cached one ({@code Long.valueOf(1)}, {@code Boolean.TRUE}) would change for the whole JVM: for
 * a template that is read, use the constructors that take a primitive value, which make a fresh object.
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
    /** The attribute's type. The native changes it only when it is 65535, which stands for any type. */
    public CK_ATTRIBUTE_TYPE type;
    /**
     * The value, or null to ask for its length only. Do not set an {@code int[]} here: the native side takes it
     * for the {@code long[]} of the same memory, so that every second element is lost; the constructors replace
     * one by an equal {@code long[]}.
     */
    public Object pValue;
    /**
     * In: the length of the value in bytes; with a {@code byte[]} to be read into, the capacity. The library
     * trusts it: a length greater than the value makes it read and write beyond the memory of the value. Out:
     * the length in bytes that the library reports; 4294967295 ({@code CK_UNAVAILABLE_INFORMATION}) for an
     * attribute that cannot be read.
     */
    public long valueLen;

    /** Makes an attribute of type 0 without a value. */
    public CK_ATTRIBUTE() {
        type = new CK_ATTRIBUTE_TYPE();
    }

    /**
     * Makes an attribute with the length that belongs to its value.
     *
     * @param type  a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param value the value, kept as it is (an {@code int[]} as an equal {@code long[]}); null to ask for
     *              the length
     * @throws IllegalArgumentException when the value's class has no native form
     */
    public CK_ATTRIBUTE(long type, Object value) {
        this(new CK_ATTRIBUTE_TYPE(type), value);
    }

    /**
     * Makes an attribute with the length that belongs to its value.
     *
     * @param type  the type, kept as it is
     * @param value the value, kept as it is (an {@code int[]} as an equal {@code long[]}); null to ask for
     *              the length
     * @throws IllegalArgumentException when the value's class has no native form
     */
    public CK_ATTRIBUTE(CK_ATTRIBUTE_TYPE type, Object value) {
        this.type = type;
        pValue = NativeValue.withoutIntArray(value);
        valueLen = NativeValue.length(value);
        if (valueLen == NativeValue.UNKNOWN) {
            throw new IllegalArgumentException("No native form for " + value.getClass().getName()
                    + ": use null, byte[], String, Long, Integer, Byte, Boolean, CK_BBOOL, CK_DATE, a handle,"
                    + " a typed constant, CK_MECHANISM_TYPE[], long[], int[], boolean[] or char[]");
        }
    }

    /**
     * Makes a numeric attribute of 4 bytes, in a fresh {@code Long} that a native may overwrite.
     *
     * @param type  a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param value the value
     */
    public CK_ATTRIBUTE(long type, long value) {
        this(new CK_ATTRIBUTE_TYPE(type), value);
    }

    /**
     * Makes a numeric attribute of 4 bytes, in a fresh {@code Long} that a native may overwrite.
     *
     * @param type  the type, kept as it is
     * @param value the value
     */
    @SuppressWarnings({"deprecation", "removal"}) // Long.valueOf would hand out a shared object
    public CK_ATTRIBUTE(CK_ATTRIBUTE_TYPE type, long value) {
        this(type, (Object) new Long(value));
    }

    /**
     * Makes a boolean attribute of 1 byte, in a fresh {@link CK_BBOOL}.
     *
     * @param type  a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param value the value
     */
    public CK_ATTRIBUTE(long type, boolean value) {
        this(new CK_ATTRIBUTE_TYPE(type), value);
    }

    /**
     * Makes a boolean attribute of 1 byte, in a fresh {@link CK_BBOOL}.
     *
     * @param type  the type, kept as it is
     * @param value the value
     */
    public CK_ATTRIBUTE(CK_ATTRIBUTE_TYPE type, boolean value) {
        this(type, (Object) new CK_BBOOL(value));
    }

    /**
     * Makes an attribute with a length of the caller's choice; nothing is checked.
     *
     * @param type     a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param value    the value, kept as it is (an {@code int[]} as an equal {@code long[]}), or null
     * @param valueLen the length in bytes, at most that of the value
     */
    public CK_ATTRIBUTE(long type, Object value, long valueLen) {
        this.type = new CK_ATTRIBUTE_TYPE(type);
        this.pValue = NativeValue.withoutIntArray(value);
        this.valueLen = valueLen;
    }

    /**
     * Makes an attribute to be read as bytes.
     *
     * @param type a value of {@link halvorn.zerlin.constants.CKA CKA}
     * @param size the capacity in bytes
     * @return an attribute whose value is a new {@code byte[size]}
     */
    public static CK_ATTRIBUTE buffer(long type, int size) {
        return new CK_ATTRIBUTE(type, new byte[size]);
    }

    /**
     * Gives the value that was read into a {@code byte[]}, cut to the length that the library reported.
     *
     * @return a new array; null when the value is no {@code byte[]} or the reported length is greater than
     *         the array, as it is for an attribute that could not be read
     */
    public byte[] getBytes() {
        if (!(pValue instanceof byte[]) || valueLen > ((byte[]) pValue).length) {
            return null;
        }
        return Arrays.copyOf((byte[]) pValue, (int) valueLen);
    }

    /**
     * Tells type, value and length; of bytes and text, which may be secret, only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_ATTRIBUTE[type=" + type + ", pValue=" + NativeValue.describe(pValue)
                + ", valueLen=" + Text.count(valueLen) + "]";
    }
}
