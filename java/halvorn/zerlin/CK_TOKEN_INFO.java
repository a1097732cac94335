// What C_GetTokenInfo says about a token.
package halvorn.zerlin;

import static java.nio.charset.StandardCharsets.UTF_8;

import java.util.Arrays;

/**
 * Information on a token (PKCS#11 v2.20, 9.2), filled by {@link Cryptoki#C_GetTokenInfo}. The native replaces
 * the arrays and the versions by new ones.
 *
 * <p>A count or an amount that the token does not report is
 * {@link halvorn.zerlin.constants.CK#UNAVAILABLE_INFORMATION}.
 */
public class CK_TOKEN_INFO {
    private static final int LABEL_LENGTH = 32;

    /** The label that the token received when it was initialised: 32 bytes, UTF-8, padded with blanks. */
    public byte[] label;
    /** The manufacturer of the token: 32 bytes, UTF-8, padded with blanks. */
    public byte[] manufacturerID;
    /** The model: 16 bytes, UTF-8, padded with blanks. */
    public byte[] model;
    /** The serial number: 16 bytes, padded with blanks. */
    public byte[] serialNumber;
    /** Bits such as {@code CKF_TOKEN_INITIALIZED}, see {@link halvorn.zerlin.constants.CKF CKF}. */
    public long flags;
    /**
     * The greatest number of sessions that one program may have open at a time; 0 means no practical limit.
     */
    public long maxSessionCount;
    /** The number of sessions that this program has open. */
    public long sessionCount;
    /**
     * The greatest number of read/write sessions that one program may have open at a time; 0 means no
     * practical limit.
     */
    public long maxRwSessionCount;
    /** The number of read/write sessions that this program has open. */
    public long rwSessionCount;
    /** The greatest length of a PIN, in bytes. */
    public long maxPinLen;
    /** The smallest length of a PIN, in bytes. */
    public long minPinLen;
    /** The memory for public objects, free and used, in bytes. */
    public long totalPublicMemory;
    /** The free memory for public objects, in bytes. */
    public long freePublicMemory;
    /** The memory for private objects, free and used, in bytes. */
    public long totalPrivateMemory;
    /** The free memory for private objects, in bytes. */
    public long freePrivateMemory;
    /** The version of the token's hardware. */
    public CK_VERSION hardwareVersion;
    /** The version of the token's firmware. */
    public CK_VERSION firmwareVersion;
    /**
     * The time of the token in UTC as 16 ASCII digits YYYYMMDDhhmmss00, if the token has a clock
     * ({@code CKF_CLOCK_ON_TOKEN}).
     */
    public byte[] utcTime;

    /** Creates an empty record for the native to fill. */
    public CK_TOKEN_INFO() {
    }

    /**
     * Creates a label for {@link Cryptoki#C_InitToken}.
     *
     * @param text the text of the label; must not be null
     * @return a new array of 32 bytes: the text in UTF-8, padded with blanks
     * @throws IllegalArgumentException when the text takes more than 32 bytes
     */
    public static byte[] paddedLabel(String text) {
        byte[] bytes = text.getBytes(UTF_8);
        if (bytes.length > LABEL_LENGTH) {
            throw new IllegalArgumentException("A token label has at most 32 bytes, not " + bytes.length);
        }
        byte[] label = Arrays.copyOf(bytes, LABEL_LENGTH);
        Arrays.fill(label, bytes.length, LABEL_LENGTH, (byte) ' ');
        return label;
    }

    /**
     * Returns the label as text.
     *
     * @return {@link #label} without the padding; empty if the record is not filled
     */
    public String getLabel() {
        return Text.of(label);
    }

    /**
     * Returns the manufacturer as text.
     *
     * @return {@link #manufacturerID} without the padding; empty if the record is not filled
     */
    public String getManufacturerID() {
        return Text.of(manufacturerID);
    }

    /**
     * Returns the model as text.
     *
     * @return {@link #model} without the padding; empty if the record is not filled
     */
    public String getModel() {
        return Text.of(model);
    }

    /**
     * Returns the serial number as text.
     *
     * @return {@link #serialNumber} without the padding; empty if the record is not filled
     */
    public String getSerialNumber() {
        return Text.of(serialNumber);
    }

    /**
     * Returns the token's time as text.
     *
     * @return {@link #utcTime} without the padding; empty if the record is not filled
     */
    public String getUtcTime() {
        return Text.of(utcTime);
    }

    /**
     * Describes all fields; the flags by their names.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_TOKEN_INFO[label=" + getLabel() + ", manufacturerID=" + getManufacturerID()
                + ", model=" + getModel() + ", serialNumber=" + getSerialNumber()
                + ", flags=" + Text.flags(flags, Text.TOKEN_FLAGS) + ", maxSessionCount=" + Text.count(maxSessionCount)
                + ", sessionCount=" + Text.count(sessionCount)
                + ", maxRwSessionCount=" + Text.count(maxRwSessionCount)
                + ", rwSessionCount=" + Text.count(rwSessionCount)
                + ", maxPinLen=" + Text.count(maxPinLen) + ", minPinLen=" + Text.count(minPinLen)
                + ", totalPublicMemory=" + Text.count(totalPublicMemory)
                + ", freePublicMemory=" + Text.count(freePublicMemory)
                + ", totalPrivateMemory=" + Text.count(totalPrivateMemory)
                + ", freePrivateMemory=" + Text.count(freePrivateMemory)
                + ", hardwareVersion=" + hardwareVersion + ", firmwareVersion=" + firmwareVersion
                + ", utcTime=" + getUtcTime() + "]";
    }
}
