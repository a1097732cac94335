// The holder of a PKCS#11 date, and its eight-byte form, which the natives convert rightly.
package halvorn.zerlin;

import static java.nio.charset.StandardCharsets.US_ASCII;

import java.time.DateTimeException;
import java.time.LocalDate;
import java.util.Arrays;
import java.util.Locale;

/**
 * A PKCS#11 date in ASCII digits (PKCS#11 v2.20, 9.4).
 *
 * <p><b>Warning.</b> The natives convert a {@code CK_DATE} that is the value of an attribute wrongly, in both
 * directions: deliberate.
 * <ul>
 * <li>On the way to the token, the month overwrites the first two digits of the year, and the two bytes of
 *     the month itself are 0: 2024-07-15 arrives as "0724", two zero bytes and "15".
 * <li>On the way back into an existing object, the month receives the first two digits of the year:
 *     2024-07-15 comes back as year 2024, month 20, day 15.
 * </ul>
 * To avoid this, pass and read dates as eight bytes, with {@link #toBytes} and {@link #fromBytes}:
 *
 * <pre>{@code
 * new CK_ATTRIBUTE(CKA.START_DATE, new CK_DATE(2024, 7, 15).toBytes())
 * }</pre>
 */
public class CK_DATE {
    /** The year, four ASCII digits. A native writes into this array up to its length. */
    public byte[] year;
    /**
     * The month, two ASCII digits, "01" to "12". A native writes the first two digits of the year into this
     * array, up to its length.
     */
    public byte[] month;
    /** The day, two ASCII digits, "01" to "31". A native writes into this array up to its length. */
    public byte[] day;

    /** Creates an empty date of zero bytes, into which a native can write. */
    public CK_DATE() {
        this(new byte[4], new byte[2], new byte[2]);
    }

    /**
     * Creates a date from these arrays, which are kept without a copy.
     *
     * @param year  four ASCII digits
     * @param month two ASCII digits
     * @param day   two ASCII digits
     */
    public CK_DATE(byte[] year, byte[] month, byte[] day) {
        this.year = year;
        this.month = month;
        this.day = day;
    }

    /**
     * Creates a date.
     *
     * @param year  the year, 0 to 9999
     * @param month the month, 1 to 12
     * @param day   the day of the month, 1 to 31
     * @throws DateTimeException if there is no such day
     */
    public CK_DATE(int year, int month, int day) {
        this(LocalDate.of(year, month, day));
    }

    /**
     * Creates a date.
     *
     * @param date a day in the years 0 to 9999
     * @throws DateTimeException for another year
     */
    public CK_DATE(LocalDate date) {
        this(digits(date.getYear(), 4), digits(date.getMonthValue(), 2), digits(date.getDayOfMonth(), 2));
    }

    /**
     * Creates a date from the value of an attribute that was read as bytes.
     *
     * @param value eight ASCII digits: year, month, day; must not be null
     * @return a new date
     * @throws IllegalArgumentException if the value does not have eight bytes
     */
    public static CK_DATE fromBytes(byte[] value) {
        if (value.length != 8) {
            throw new IllegalArgumentException("A date has 8 bytes, not " + value.length);
        }
        return new CK_DATE(Arrays.copyOf(value, 4), Arrays.copyOfRange(value, 4, 6),
                Arrays.copyOfRange(value, 6, 8));
    }

    /**
     * Returns the date as the value of an attribute, with every part in its right place.
     *
     * @return eight bytes: year, month, day; zero bytes in place of a missing part
     */
    public byte[] toBytes() {
        byte[] value = new byte[8];
        place(year, value, 0, 4);
        place(month, value, 4, 2);
        place(day, value, 6, 2);
        return value;
    }

    /**
     * Returns the date as a Java date.
     *
     * @return the date
     * @throws DateTimeException if the digits are not a date
     */
    public LocalDate toLocalDate() {
        return LocalDate.parse(toString());
    }

    /**
     * Compares the digits.
     *
     * @param other the object to compare with
     * @return true for an object of the same class with the same digits
     */
    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass()
                && Arrays.equals(toBytes(), ((CK_DATE) other).toBytes());
    }

    /**
     * Returns the hash code that belongs to {@link #equals}.
     *
     * @return the hash code of the digits
     */
    @Override
    public int hashCode() {
        return Arrays.hashCode(toBytes());
    }

    /**
     * Returns the date.
     *
     * @return for example {@code "2024-07-15"}
     */
    @Override
    public String toString() {
        return Text.of(year) + "-" + Text.of(month) + "-" + Text.of(day);
    }

    private static byte[] digits(int number, int width) {
        byte[] digits = String.format(Locale.ROOT, "%0" + width + "d", number).getBytes(US_ASCII);
        if (digits.length != width || number < 0) {
            throw new DateTimeException("A PKCS#11 date has a year of four digits, not " + number);
        }
        return digits;
    }

    private static void place(byte[] part, byte[] value, int at, int width) {
        if (part != null) {
            System.arraycopy(part, 0, value, at, Math.min(part.length, width));
        }
    }
}
