// What the example programs share: a session on a prepared token, output arrays, and aligned rows of text.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.LongRef;
import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKU;
import halvorn.zerlin.constants.CK_RV;
import halvorn.zerlin.constants.CK_USER_TYPE;

import java.nio.charset.StandardCharsets;
import java.util.Arrays;

final class Demo {
    static final String TOKEN_LABEL = "Zerlin demo";
    static final byte[] SO_PIN = ascii("so-secret");
    static final byte[] USER_PIN = ascii("user-secret");

    private Demo() {
    }

    /** A program that works in a session. */
    interface Program {
        void run(CK_SESSION_HANDLE session) throws Exception;
    }

    /** A call that fills an array, such as C_Digest, with its other arguments bound. */
    interface Output {
        CK_RV fill(byte[] array, LongRef length);
    }

    /** Runs a program in a read/write session in which the user is logged in. */
    static void inSession(Program program) throws Exception {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
        try {
            long slot = demoSlot();
            if (!isInitialised(tokenInfo(slot))) {
                prepare(slot);
            }
            CK_SESSION_HANDLE session = openSession(slot, CKF.SERIAL_SESSION | CKF.RW_SESSION);
            login(session, CKU.USER, USER_PIN).orThrow();
            program.run(session);
            Cryptoki.C_CloseSession(session).orThrow();
        } finally {
            Cryptoki.C_Finalize(null).orThrow();
        }
        System.out.println("\nFinished: session closed, library finalised.");
    }

    /** Finds the token of the examples, or one that was never initialised. No other token is ever changed. */
    static long demoSlot() {
        for (long slot : slots()) {
            CK_TOKEN_INFO info = tokenInfo(slot);
            if (info.getLabel().equals(TOKEN_LABEL) || !isInitialised(info)) {
                return slot;
            }
        }
        throw new IllegalStateException("There is no token for the examples");
    }

    private static void prepare(long slot) {
        byte[] label = CK_TOKEN_INFO.paddedLabel(TOKEN_LABEL);
        Cryptoki.C_InitToken(slot, SO_PIN, SO_PIN.length, label).orThrow();
        CK_SESSION_HANDLE session = openSession(slot, CKF.SERIAL_SESSION | CKF.RW_SESSION);
        login(session, CKU.SO, SO_PIN).orThrow();
        Cryptoki.C_InitPIN(session, USER_PIN, USER_PIN.length).orThrow();
        Cryptoki.C_CloseSession(session).orThrow();
    }

    static CK_TOKEN_INFO tokenInfo(long slot) {
        CK_TOKEN_INFO info = new CK_TOKEN_INFO();
        Cryptoki.C_GetTokenInfo(slot, info).orThrow();
        return info;
    }

    static boolean isInitialised(CK_TOKEN_INFO info) {
        return (info.flags & CKF.TOKEN_INITIALIZED) != 0;
    }

    /** Lists the slots with a token. */
    static long[] slots() {
        // Every list takes two calls: without an array, the call returns only the number of entries.
        LongRef count = new LongRef();
        Cryptoki.C_GetSlotList(true, null, count).orThrow();
        long[] slots = new long[(int) count.value];
        Cryptoki.C_GetSlotList(true, slots, count).orThrow();
        return slots;
    }

    static CK_SESSION_HANDLE openSession(long slot, long flags) {
        CK_SESSION_HANDLE session = new CK_SESSION_HANDLE();
        Cryptoki.C_OpenSession(slot, flags, null, null, session).orThrow();
        return session;
    }

    static CK_RV login(CK_SESSION_HANDLE session, long user, byte[] pin) {
        return Cryptoki.C_Login(session, new CK_USER_TYPE(user), pin, pin.length);
    }

    /** Returns the output of a call: asks for its length first, then for the bytes. */
    static byte[] bytes(Output output) {
        LongRef length = new LongRef();
        output.fill(null, length).orThrow();
        byte[] bytes = new byte[(int) length.value];
        output.fill(bytes, length).orThrow();
        return Arrays.copyOf(bytes, (int) length.value);
    }

    static void title(String text) {
        System.out.println("\n" + text);
    }

    static void row(String name, Object value) {
        System.out.printf("  %-24s %s%n", name, value);
    }

    /** Prints a result that the JDK's own cryptography has confirmed, and fails if it has not. */
    static void checked(String name, String result, boolean right) {
        if (!right) {
            throw new IllegalStateException(name + " is wrong: " + result);
        }
        System.out.printf("  %-24s %-32s checked by the JDK%n", name, result);
    }

    /** Returns the first bytes in hexadecimal digits, and the length. */
    static String hex(byte[] bytes) {
        StringBuilder digits = new StringBuilder();
        for (int i = 0; i < Math.min(8, bytes.length); i++) {
            digits.append(String.format("%02x", bytes[i]));
        }
        return digits + (bytes.length > 8 ? "... " : " ") + bytes.length + " bytes";
    }

    static byte[] ascii(String text) {
        return text.getBytes(StandardCharsets.US_ASCII);
    }
}
