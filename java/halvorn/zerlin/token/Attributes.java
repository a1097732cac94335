// The attributes of an object: a template to send, or what was read.
package halvorn.zerlin.token;

import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_DATE;
import halvorn.zerlin.constants.CK;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CK_ATTRIBUTE_TYPE;
import halvorn.zerlin.constants.CK_KEY_TYPE;
import halvorn.zerlin.constants.CK_OBJECT_CLASS;

import java.math.BigInteger;
import java.time.LocalDate;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.NoSuchElementException;

/**
 * Attributes of an object with their values: a template, or what {@link Session#read} returns. {@link Encoding} says
 * which Java class a value has. A template holds what was put there, and nothing else. No method calls a native.
 *
 * <pre>{@code
 * Attributes key = Attributes.of(CKO.SECRET_KEY).with(CKA.KEY_TYPE, CKK.AES).with(CKA.LABEL, "my key")
 *         .with(CKA.VALUE_LEN, 32).yes(CKA.TOKEN, CKA.SENSITIVE, CKA.ENCRYPT).no(CKA.EXTRACTABLE);
 * }</pre>
 *
 * <p>Values are kept as bytes. A {@code byte[]} is neither copied on the way in nor on the way out: who created it may
 * wipe it, and a change of it changes the attribute. Threads may share an object that nobody changes any more.
 */
public final class Attributes {
    // The width of a CK_ULONG in bytes.
    private static final int ULONG = CK.UNAVAILABLE_INFORMATION == -1 ? Long.BYTES : Integer.BYTES;

    private final Map<Long, byte[]> values = new LinkedHashMap<>();

    /** Creates an empty set; as a template for {@link Session#find}, it finds every object. */
    public Attributes() {
    }

    /**
     * Creates a set with the attribute {@link CKA#CLASS}.
     *
     * @param objectClass a value of {@link halvorn.zerlin.constants.CKO CKO}
     * @return a new set
     */
    public static Attributes of(long objectClass) {
        return new Attributes().with(CKA.CLASS, objectClass);
    }

    /**
     * Sets an attribute; replaces its value if it is there already.
     *
     * @param type  a value of {@link CKA}
     * @param value a value of a class that {@link Encoding} names for this type, or of any of those classes if the type
     *              is not in that table; a {@code byte[]} is kept without a copy; must not be null
     * @return this object
     * @throws IllegalArgumentException if the value has another class or is null, for example
     *         {@code "CKA_VALUE_LEN (0x161) is NUMBER, not String"}, or is a negative {@code BigInteger}
     * @throws java.time.DateTimeException if the year of a date does not have four digits
     */
    public Attributes with(long type, Object value) {
        Encoding encoding = Encoding.of(type);
        byte[] bytes = encoding == null || encoding.takes(value) ? encode(value) : null;
        if (bytes == null) {
            throw new IllegalArgumentException(name(type) + (encoding == null ? " takes no " : " is " + encoding + ", not ")
                    + (value == null ? "null" : value.getClass().getSimpleName()));
        }
        return put(type, bytes);
    }

    /**
     * Sets attributes to true.
     *
     * @param types values of {@link CKA}
     * @return this object
     * @throws IllegalArgumentException if one of them is not a {@link Encoding#BOOLEAN}
     */
    public Attributes yes(long... types) {
        Arrays.stream(types).forEach(type -> with(type, true));
        return this;
    }

    /**
     * Sets attributes to false.
     *
     * @param types values of {@link CKA}
     * @return this object
     * @throws IllegalArgumentException if one of them is not a {@link Encoding#BOOLEAN}
     */
    public Attributes no(long... types) {
        Arrays.stream(types).forEach(type -> with(type, false));
        return this;
    }

    /**
     * Lists the attributes that are there.
     *
     * @return a new array of values of {@link CKA}, in the order in which they were set or asked for
     */
    public long[] types() {
        return values.keySet().stream().mapToLong(Long::longValue).toArray();
    }

    /**
     * Returns whether an attribute is there. What the token did not give to {@link Session#read} is not.
     *
     * @param type a value of {@link CKA}
     * @return true if it is there, even if it is empty
     */
    public boolean has(long type) {
        return values.containsKey(type);
    }

    /**
     * Returns a boolean.
     *
     * @param type a value of {@link CKA}
     * @return true unless the value is 0
     * @throws NoSuchElementException if the attribute is not there
     * @throws IllegalArgumentException if the value does not have 1 to 8 bytes
     */
    public boolean is(long type) {
        return number(type) != 0;
    }

    /**
     * Returns a number.
     *
     * @param type a value of {@link CKA}
     * @return the number; in a 32-bit JVM from 0 to 4294967295; {@link CK#UNAVAILABLE_INFORMATION} is all ones
     * @throws NoSuchElementException if the attribute is not there
     * @throws IllegalArgumentException if the value does not have 1 to 8 bytes
     */
    public long number(long type) {
        byte[] value = bytes(type);
        if (value.length < 1 || value.length > Long.BYTES) {
            throw new IllegalArgumentException(name(type) + " has " + value.length + " bytes, so it is no number");
        }
        return decode(value, 0, value.length);
    }

    /**
     * Returns several numbers.
     *
     * @param type a value of {@link CKA}
     * @return a new array
     * @throws NoSuchElementException if the attribute is not there
     */
    public long[] numbers(long type) {
        byte[] value = bytes(type);
        long[] numbers = new long[value.length / ULONG];
        for (int i = 0; i < numbers.length; i++) {
            numbers[i] = decode(value, i * ULONG, ULONG);
        }
        return numbers;
    }

    /**
     * Returns text.
     *
     * @param type a value of {@link CKA}
     * @return the value, read as UTF-8
     * @throws NoSuchElementException if the attribute is not there
     */
    public String text(long type) {
        return new String(bytes(type), UTF_8);
    }

    /**
     * Returns an unsigned integer.
     *
     * @param type a value of {@link CKA}
     * @return the value, its most significant byte first; never negative, 0 if it is empty
     * @throws NoSuchElementException if the attribute is not there
     */
    public BigInteger integer(long type) {
        return new BigInteger(1, bytes(type));
    }

    /**
     * Returns a date.
     *
     * @param type a value of {@link CKA}
     * @return the date; null if the value is empty, as it is for a date that was not set
     * @throws NoSuchElementException if the attribute is not there
     * @throws IllegalArgumentException if the value does not have 8 bytes
     * @throws java.time.DateTimeException if its digits are not a date
     */
    public LocalDate date(long type) {
        byte[] value = bytes(type);
        return value.length == 0 ? null : CK_DATE.fromBytes(value).toLocalDate();
    }

    /**
     * Returns the bytes of a value, whatever its encoding is.
     *
     * @param type a value of {@link CKA}
     * @return the array of this object, not a copy; if it is secret, the caller wipes it after use
     * @throws NoSuchElementException if the attribute is not there
     */
    public byte[] bytes(long type) {
        byte[] value = values.get(type);
        if (value == null) {
            throw new NoSuchElementException(name(type) + " is not among the attributes");
        }
        return value;
    }

    /**
     * Returns the template for a native of {@link halvorn.zerlin.Cryptoki}.
     *
     * @return a new array, in the order in which the attributes were set; its values are the arrays of this object
     */
    public CK_ATTRIBUTE[] toArray() {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[values.size()];
        int i = 0;
        for (Map.Entry<Long, byte[]> value : values.entrySet()) {
            template[i++] = new CK_ATTRIBUTE(value.getKey(), (Object) value.getValue());
        }
        return template;
    }

    /**
     * Describes the attributes; of those that may be secret or are not in the table of {@link Encoding}, only the
     * length.
     *
     * @return the description, on one line (control characters of a text are question marks), for example
     *         {@code "Attributes[CKA_CLASS (0x0)=CKO_SECRET_KEY (0x4), CKA_LABEL (0x3)=KEK, CKA_VALUE (0x11)=32 bytes]"}
     */
    @Override
    public String toString() {
        StringBuilder text = new StringBuilder("Attributes[");
        values.forEach((type, value) -> text.append(text.charAt(text.length() - 1) == '[' ? "" : ", ").append(name(type))
                .append('=').append(describe(type, value)));
        return text.append(']').toString();
    }

    /** Sets an attribute to bytes, which are neither checked nor copied. */
    Attributes put(long type, byte[] value) {
        values.put(type, value);
        return this;
    }

    private static String name(long type) {
        return new CK_ATTRIBUTE_TYPE(type).toString();
    }

    // The bytes of a value; null if its class has none.
    private static byte[] encode(Object value) {
        return value instanceof byte[] ? (byte[]) value
            : value instanceof Boolean ? new byte[] {(byte) ((Boolean) value ? 1 : 0)}
            : value instanceof Long || value instanceof Integer ? ulongs(((Number) value).longValue())
            : value instanceof long[] ? ulongs((long[]) value)
            : value instanceof String ? ((String) value).getBytes(UTF_8)
            : value instanceof LocalDate ? new CK_DATE((LocalDate) value).toBytes()
            : value instanceof BigInteger ? unsigned((BigInteger) value)
            : null;
    }

    // Both widths have the least significant byte first.
    private static byte[] ulongs(long... numbers) {
        byte[] bytes = new byte[numbers.length * ULONG];
        for (int i = 0; i < bytes.length; i++) {
            bytes[i] = (byte) (numbers[i / ULONG] >>> 8 * (i % ULONG));
        }
        return bytes;
    }

    private static long decode(byte[] value, int from, int length) {
        long number = 0;
        for (int i = length - 1; i >= 0; i--) {
            number = number << 8 | value[from + i] & 0xFF;
        }
        return number;
    }

    private static byte[] unsigned(BigInteger number) {
        if (number.signum() < 0) {
            throw new IllegalArgumentException("An attribute has no sign, but the number is negative");
        }
        byte[] bytes = number.toByteArray();
        return bytes.length > 1 && bytes[0] == 0 ? Arrays.copyOfRange(bytes, 1, bytes.length) : bytes;
    }

    // Never throws, whatever a token has put into the value.
    private String describe(long type, byte[] value) {
        Encoding encoding = Encoding.of(type);
        boolean isNumber = value.length > 0 && value.length <= Long.BYTES;
        return encoding == Encoding.BOOLEAN && isNumber ? Boolean.toString(is(type))
            : encoding == Encoding.NUMBER && isNumber ? describe(type, number(type))
            : encoding == Encoding.NUMBERS ? Arrays.toString(numbers(type))
            : encoding == Encoding.TEXT || encoding == Encoding.DATE ? text(type).replaceAll("[\\p{Cc}\\p{Zl}\\p{Zp}]", "?")
            : (encoding == Encoding.INTEGER || encoding == Encoding.BYTES) && value.length > 0
                ? String.format("0x%0" + 2 * value.length + "x", integer(type))
            : value.length + " bytes";
    }

    private static String describe(long type, long number) {
        return number == CK.UNAVAILABLE_INFORMATION ? "unavailable"
            : type == CKA.CLASS ? new CK_OBJECT_CLASS(number).toString()
            : type == CKA.KEY_TYPE ? new CK_KEY_TYPE(number).toString()
            : Long.toString(number);
    }
}
