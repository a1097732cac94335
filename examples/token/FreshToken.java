// Tokens with PINs, sessions on them, and output arrays: what examples, tests and benchmark share.
package token;

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

public final class FreshToken {
    // NSS lets the security officer log in only with an empty PIN; some tokens are delivered with PINs.
    public static final byte[] SO_PIN = ascii(System.getenv().getOrDefault("TOKEN_SO_PIN", "so-secret"));
    public static final byte[] USER_PIN = ascii(System.getenv().getOrDefault("TOKEN_USER_PIN", "user-secret"));
    public static final long READ_ONLY = CKF.SERIAL_SESSION;
    public static final long READ_WRITE = CKF.SERIAL_SESSION | CKF.RW_SESSION;

    private FreshToken() {
    }

    /** A call that fills an array, such as C_Digest, with its other arguments bound. */
    public interface Output {
        CK_RV fill(byte[] array, LongRef length);
    }

    /** Finds the token with that label, or one that was never initialised. */
    public static long find(String label) {
        for (long slot : slots()) {
            CK_TOKEN_INFO info = tokenInfo(slot);
            if (info.getLabel().equals(label) || !isInitialised(info)) {
                return slot;
            }
        }
        throw new IllegalStateException("No token is labelled \"" + label + "\" or was never initialised");
    }

    /** Initialises the token that is found, sets the PINs, and returns its slot. */
    public static long create(String label) {
        long slot = find(label);
        initialise(slot, label);
        return slot;
    }

    /** Initialises the token in the slot, whatever it holds, and sets the PINs. */
    public static void initialise(long slot, String label) {
        Cryptoki.C_InitToken(slot, SO_PIN, SO_PIN.length, CK_TOKEN_INFO.paddedLabel(label)).orThrow();
        CK_SESSION_HANDLE session = openSession(slot, READ_WRITE);
        login(session, CKU.SO, SO_PIN).orThrow();
        Cryptoki.C_InitPIN(session, USER_PIN, USER_PIN.length).orThrow();
        Cryptoki.C_CloseSession(session).orThrow();
    }

    /** Lists the slots with a token. */
    public static long[] slots() {
        // Every list takes two calls: without an array, the call returns only the number of entries.
        LongRef count = new LongRef();
        Cryptoki.C_GetSlotList(true, null, count).orThrow();
        long[] slots = new long[(int) count.value];
        Cryptoki.C_GetSlotList(true, slots, count).orThrow();
        return slots;
    }

    public static CK_TOKEN_INFO tokenInfo(long slot) {
        CK_TOKEN_INFO info = new CK_TOKEN_INFO();
        Cryptoki.C_GetTokenInfo(slot, info).orThrow();
        return info;
    }

    public static boolean isInitialised(CK_TOKEN_INFO info) {
        return (info.flags & CKF.TOKEN_INITIALIZED) != 0;
    }

    public static CK_SESSION_HANDLE openSession(long slot, long flags) {
        CK_SESSION_HANDLE session = new CK_SESSION_HANDLE();
        Cryptoki.C_OpenSession(slot, flags, null, null, session).orThrow();
        return session;
    }

    public static CK_RV login(CK_SESSION_HANDLE session, long user, byte[] pin) {
        return Cryptoki.C_Login(session, new CK_USER_TYPE(user), pin, pin.length);
    }

    /** Returns the output of a call: asks for its length first, then for the bytes. */
    public static byte[] bytes(Output output) {
        LongRef length = new LongRef();
        output.fill(null, length).orThrow();
        byte[] bytes = new byte[(int) length.value];
        output.fill(bytes, length).orThrow();
        return Arrays.copyOf(bytes, (int) length.value);
    }

    public static byte[] ascii(String text) {
        return text.getBytes(StandardCharsets.US_ASCII);
    }
}
