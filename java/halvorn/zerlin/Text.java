// Turns the fields of the information classes into readable text.
package halvorn.zerlin;

import static java.nio.charset.StandardCharsets.UTF_8;

final class Text {
    private static final long UNAVAILABLE_INFORMATION = NativeValue.ULONG_SIZE == 8 ? -1 : 0xFFFFFFFFL;

    private Text() {
    }

    // Removes the padding at the end. Tokens pad with blanks, some with NUL bytes.
    static String of(byte[] padded) {
        if (padded == null) {
            return "";
        }
        int end = padded.length;
        while (end > 0 && (padded[end - 1] == ' ' || padded[end - 1] == 0)) {
            end--;
        }
        return new String(padded, 0, end, UTF_8);
    }

    static String count(long count) {
        return count == UNAVAILABLE_INFORMATION ? "unavailable" : Long.toString(count);
    }

    static String flags(long flags) {
        return "0x" + Long.toHexString(flags);
    }
}
