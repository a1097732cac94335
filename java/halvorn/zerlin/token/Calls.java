// What the classes of the layer share: checked return values, outputs of unknown length, operations that end, PINs.
package halvorn.zerlin.token;

import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CryptokiException;
import halvorn.zerlin.LongRef;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.constants.CKR;
import halvorn.zerlin.constants.CK_RV;

import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.CodingErrorAction;
import java.util.Arrays;
import java.util.function.Supplier;

final class Calls {
    // Streams are read in parts of this many bytes.
    static final int PART = 65536;

    // The capacities, in bytes, that are offered first where the mechanism does not fix the length.
    static final int DIGEST = 64;
    static final int RESULT = 512;

    private Calls() {
    }

    /** A call that fills an array, such as C_Digest, with its other arguments bound. */
    interface Output {
        CK_RV fill(byte[] array, LongRef length);
    }

    /** What is done with each part of a stream. */
    interface Input {
        void take(byte[] part, int length) throws IOException;
    }

    /** A call that takes a part of the data and fills an array, such as C_EncryptUpdate. */
    interface Step {
        CK_RV take(byte[] part, long length, byte[] array, LongRef written);
    }

    /** What an operation does after its Init. */
    interface Work<T, E extends Exception> {
        T run() throws E;
    }

    /** An output array, which grows when a call asks for more. */
    static final class Room {
        private byte[] array;
        private final LongRef length = new LongRef();

        // An empty array would look like the question for the length.
        Room(int capacity) {
            array = new byte[Math.max(1, capacity)];
        }

        /** Returns the number of bytes; the second call is made only if the first one had too little room. */
        int fill(String call, Output output) {
            length.value = array.length;
            CK_RV rv = output.fill(array, length);
            if (rv.is(CKR.BUFFER_TOO_SMALL) && length.value <= array.length) {
                output.fill(null, length); // NSS does not report the length of a wrapped key without being asked
            }
            if (rv.is(CKR.BUFFER_TOO_SMALL) && length.value > array.length && isAvailable(length.value)) {
                Arrays.fill(array, (byte) 0);
                array = new byte[(int) length.value];
                rv = output.fill(array, length);
            }
            return count(call, rv, length.value, array.length);
        }

        int write(OutputStream out, String call, Output output) throws IOException {
            int written = fill(call, output);
            out.write(array, 0, written);
            return written;
        }
    }

    static void check(String call, CK_RV rv) {
        if (!rv.isOk()) {
            throw new CryptokiException(call, rv);
        }
    }

    /** Returns how much a call has written; a library that reports more than there is room for is not believed. */
    static int count(String call, CK_RV rv, long reported, int capacity) {
        check(call, rv.isOk() && (reported < 0 || reported > capacity) ? new CK_RV(CKR.BUFFER_TOO_SMALL) : rv);
        return (int) reported;
    }

    static boolean isValid(String call, CK_RV rv) {
        return rv.orThrow(call, CKR.SIGNATURE_INVALID, CKR.SIGNATURE_LEN_RANGE).isOk();
    }

    /** Whether a length that a library reports is one; CK_UNAVAILABLE_INFORMATION is not, in either width. */
    static boolean isAvailable(long length) {
        return length >= 0 && length <= Integer.MAX_VALUE;
    }

    /** Returns an output, without a copy if the guess was its length; the buffer of clear text is wiped. */
    static byte[] output(String call, int guess, boolean isClearText, Output output) {
        Room room = new Room(guess);
        byte[] result = null;
        try {
            int length = room.fill(call, output);
            result = length == room.array.length ? room.array : Arrays.copyOf(room.array, length);
            return result;
        } finally {
            if (isClearText && result != room.array) {
                Arrays.fill(room.array, (byte) 0);
            }
        }
    }

    /** Runs an operation of one part, and ends it if it fails; its argument {@code begun} is the result of the Init. */
    static byte[] single(String init, CK_RV begun, String call, int guess, boolean isClearText, Output output, Output end) {
        check(init, begun);
        try {
            return output(call, guess, isClearText, output);
        } catch (Throwable failed) {
            end(failed, end);
            throw failed;
        }
    }

    /** The same with any work. */
    static <T, E extends Exception> T operation(String init, CK_RV begun, Work<T, E> work, Output end) throws E {
        check(init, begun);
        try {
            return work.run();
        } catch (Throwable failed) {
            end(failed, end);
            throw failed;
        }
    }

    private static void end(Throwable failed, Output end) {
        try {
            if (!isLost(failed)) {
                Arrays.fill(output("final", PART, true, end), (byte) 0);
            }
        } catch (RuntimeException | Error notEnded) {
            // Most often, what failed has ended the operation already.
        }
    }

    /** Whether the session does not exist any more. Its number may be that of another session by now. */
    static boolean isLost(Throwable failed) {
        return is(failed, CKR.SESSION_HANDLE_INVALID, CKR.SESSION_CLOSED, CKR.DEVICE_REMOVED);
    }

    static boolean is(Throwable failed, long... values) {
        return failed instanceof CryptokiException && Arrays.stream(values).anyMatch(((CryptokiException) failed)::is);
    }

    static void read(InputStream in, Input input) throws IOException {
        byte[] part = new byte[PART];
        try {
            for (int length = in.read(part); length >= 0; length = in.read(part)) {
                input.take(part, length);
            }
        } finally {
            Arrays.fill(part, (byte) 0);
        }
    }

    static long pass(InputStream in, OutputStream out, String update, Step step, String last, Output end)
            throws IOException {
        Room room = new Room(PART + RESULT);
        long[] written = new long[1];
        try {
            read(in, (part, length) ->
                    written[0] += room.write(out, update, (array, n) -> step.take(part, length, array, n)));
            return written[0] + room.write(out, last, end);
        } finally {
            Arrays.fill(room.array, (byte) 0);
        }
    }

    /** Returns the length of the cipher text, or a guess where the mechanism does not fix it. */
    static int encryptedLength(CK_MECHANISM mechanism, int length) {
        long type = mechanism.mechanism.m_value;
        boolean isExact = type == CKM.AES_CBC || type == CKM.AES_ECB || type == CKM.AES_CTR || type == CKM.DES3_CBC
                || type == CKM.DES3_ECB;
        return type == CKM.AES_CBC_PAD ? (length | 15) + 1
            : type == CKM.DES3_CBC_PAD ? (length | 7) + 1
            : type == CKM.AES_GCM ? length + 16 // the longest tag
            : isExact ? length : Math.max(RESULT, length);
    }

    /** Makes a call with PINs, and wipes them also if it fails. */
    static void withPins(String call, Supplier<CK_RV> work, byte[]... pins) {
        try {
            check(call, work.get());
        } finally {
            for (byte[] pin : pins) {
                if (pin != null) {
                    Arrays.fill(pin, (byte) 0);
                }
            }
        }
    }

    /** Returns the PIN in UTF-8, and wipes it. The room suffices, so that the encoder leaves no shorter array behind. */
    static byte[] utf8(char[] pin) {
        ByteBuffer room = ByteBuffer.allocate(3 * pin.length);
        try {
            UTF_8.newEncoder().onMalformedInput(CodingErrorAction.REPLACE).encode(CharBuffer.wrap(pin), room, true);
            return Arrays.copyOf(room.array(), room.position());
        } finally {
            Arrays.fill(room.array(), (byte) 0);
            Arrays.fill(pin, '\0');
        }
    }
}
