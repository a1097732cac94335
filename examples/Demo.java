// What the example programs share: a session on a prepared token, and aligned rows of text.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.constants.CKU;

import token.FreshToken;

final class Demo {
    static final String TOKEN_LABEL = "Zerlin demo";

    private Demo() {
    }

    /** A program that works in a session. */
    interface Program {
        void run(CK_SESSION_HANDLE session) throws Exception;
    }

    /** Runs a program in a read/write session in which the user is logged in. */
    static void inSession(CK_C_INITIALIZE_ARGS locking, Program program) throws Exception {
        Cryptoki.C_Initialize(locking).orThrow();
        try {
            long slot = FreshToken.find(TOKEN_LABEL); // no other token is ever changed
            if (!FreshToken.isInitialised(FreshToken.tokenInfo(slot))) {
                FreshToken.initialise(slot, TOKEN_LABEL);
            }
            CK_SESSION_HANDLE session = FreshToken.openSession(slot, FreshToken.READ_WRITE);
            FreshToken.login(session, CKU.USER, FreshToken.USER_PIN).orThrow();
            program.run(session);
            Cryptoki.C_CloseSession(session).orThrow();
        } finally {
            Cryptoki.C_Finalize(null).orThrow();
        }
        System.out.println("\nFinished: session closed, library finalised.");
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
}
