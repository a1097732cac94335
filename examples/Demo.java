// What the example programs share: a token with PINs, and aligned rows of text.

import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.token.Library;
import halvorn.zerlin.token.Slot;

import token.FreshToken;

final class Demo {
    static final String TOKEN_LABEL = "Zerlin demo";

    private Demo() {
    }

    /**
     * Returns the slot of the examples' token, and prepares one that was never initialised. A program of your own
     * writes {@code library.token("its label")}.
     */
    static Slot token(Library library) {
        Slot slot = newOrLabelled(library, TOKEN_LABEL);
        if (!FreshToken.isInitialised(slot.tokenInfo())) {
            FreshToken.initialise(slot.id(), TOKEN_LABEL);
        }
        return slot;
    }

    /** Returns the first slot whose token has that label or was never initialised. No other token is ever changed. */
    static Slot newOrLabelled(Library library, String label) {
        for (Slot slot : library.slots(true)) {
            CK_TOKEN_INFO info = slot.tokenInfo();
            if (info.getLabel().equals(label) || !FreshToken.isInitialised(info)) {
                return slot;
            }
        }
        throw new IllegalStateException("No token is labelled \"" + label + "\" or was never initialised");
    }

    /** Returns the user's PIN, new for each login, which overwrites it. A real program asks its user for it. */
    static byte[] userPin() {
        return FreshToken.USER_PIN.clone();
    }

    static void title(String text) {
        System.out.println("\n" + text);
    }

    static void row(String name, Object value) {
        System.out.printf("  %-24s %s%n", name, value);
    }

    /** Prints a result that the JDK's own cryptography has confirmed, and fails if it has not. */
    static void checked(String name, Object result, boolean right) {
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
