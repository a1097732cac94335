// DER, as much of it as public keys, signatures and small certificates need.
package halvorn.zerlin.token;

import java.io.ByteArrayOutputStream;
import java.math.BigInteger;
import java.nio.BufferUnderflowException;
import java.nio.ByteBuffer;
import java.util.Arrays;

/**
 * Creates DER (ITU-T X.690): what public keys, signatures and small certificates need. No method calls a native, and
 * each returns a new array.
 *
 * <pre>{@code
 * byte[] algorithm = Der.sequence(Der.oid("1.2.840.113549.1.1.11"), Der.of(0x05));   // sha256WithRSAEncryption, NULL
 * }</pre>
 */
public final class Der {
    private Der() {
    }

    /**
     * Returns an element.
     *
     * @param tag      the tag, one byte, for example 0x31 for a SET
     * @param contents its content, in parts
     * @return the tag, the length and the content
     */
    public static byte[] of(int tag, byte[]... contents) {
        int length = Arrays.stream(contents).mapToInt(content -> content.length).sum();
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        out.write(tag);
        if (length < 0x80) {
            out.write(length);
        } else {
            int octets = (39 - Integer.numberOfLeadingZeros(length)) / 8;
            out.write(0x80 | octets);
            for (int i = octets - 1; i >= 0; i--) {
                out.write(length >>> 8 * i);
            }
        }
        for (byte[] content : contents) {
            out.write(content, 0, content.length);
        }
        return out.toByteArray();
    }

    /**
     * Returns a SEQUENCE.
     *
     * @param elements the DER of its elements
     * @return its DER
     */
    public static byte[] sequence(byte[]... elements) {
        return of(0x30, elements);
    }

    /**
     * Returns an INTEGER.
     *
     * @param number the number
     * @return its DER
     */
    public static byte[] integer(BigInteger number) {
        return of(0x02, number.toByteArray());
    }

    /**
     * Returns a BIT STRING of whole bytes.
     *
     * @param bytes the bytes
     * @return its DER
     */
    public static byte[] bitString(byte[] bytes) {
        return of(0x03, new byte[1], bytes);
    }

    /**
     * Returns an OBJECT IDENTIFIER.
     *
     * @param dotted its numbers, at least two, for example {@code "1.2.840.10045.2.1"}; each below 2<sup>63</sup>
     * @return its DER
     * @throws NumberFormatException if one is not a number
     */
    public static byte[] oid(String dotted) {
        String[] arcs = dotted.split("\\.");
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        for (int i = 1; i < arcs.length; i++) {
            long arc = Long.parseLong(arcs[i]) + (i == 1 ? 40 * Long.parseLong(arcs[0]) : 0);
            for (int shift = (63 - Long.numberOfLeadingZeros(arc | 1)) / 7 * 7; shift > 0; shift -= 7) {
                out.write((int) (arc >>> shift) | 0x80);
            }
            out.write((int) arc & 0x7F);
        }
        return of(0x06, out.toByteArray());
    }

    /** Reads the contents of elements, which must have these tags, and behind which nothing may follow. */
    static byte[][] contents(byte[] der, int... tags) {
        byte[][] contents = new byte[tags.length][];
        try {
            ByteBuffer in = ByteBuffer.wrap(der);
            boolean isDer = true;
            for (int i = 0; i < tags.length; i++) {
                isDer &= (in.get() & 0xFF) == tags[i];
                int length = in.get() & 0xFF;
                isDer &= length <= 0x82 && length != 0x80;
                contents[i] = new byte[length == 0x81 ? in.get() & 0xFF : length == 0x82 ? in.getShort() & 0xFFFF : length];
                in.get(contents[i]);
            }
            if (isDer && !in.hasRemaining()) {
                return contents;
            }
        } catch (BufferUnderflowException tooShort) {
            // Not DER either.
        }
        throw new IllegalArgumentException("This is not the DER that was expected");
    }
}
