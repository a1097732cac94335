// What benchmark, endurance programs and end-to-end tests share: tokens with PINs, and sessions on them.
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

public final class FreshToken {
    public static final byte[] SO_PIN = ascii("so-secret");
    public static final byte[] USER_PIN = ascii("user-secret");
    public static final long READ_ONLY = CKF.SERIAL_SESSION;
    public static final long READ_WRITE = CKF.SERIAL_SESSION | CKF.RW_SESSION;

    private FreshToken() {
    }

    /** Initialises a token that was never initialised, sets the PINs, and returns its slot. */
    public static long create(String label) {
        for (long slot : slots()) {
            CK_TOKEN_INFO info = new CK_TOKEN_INFO();
            Cryptoki.C_GetTokenInfo(slot, info).orThrow();
            if ((info.flags & CKF.TOKEN_INITIALIZED) == 0) {
                initialise(slot, label);
                return slot;
            }
        }
        throw new IllegalStateException("no slot with a token to be initialised");
    }

    /** Initialises the token in the slot, whatever it holds, and sets the PINs. */
    public static void initialise(long slot, String label) {
        Cryptoki.C_InitToken(slot, SO_PIN, SO_PIN.length, CK_TOKEN_INFO.paddedLabel(label)).orThrow();
        CK_SESSION_HANDLE session = openSession(slot, READ_WRITE);
        login(session, CKU.SO, SO_PIN).orThrow();
        Cryptoki.C_InitPIN(session, USER_PIN, USER_PIN.length).orThrow();
        Cryptoki.C_CloseSession(session).orThrow();
    }

    public static long[] slots() {
        LongRef count = new LongRef();
        Cryptoki.C_GetSlotList(true, null, count).orThrow();
        long[] slots = new long[(int) count.value];
        Cryptoki.C_GetSlotList(true, slots, count).orThrow();
        return slots;
    }

    public static CK_SESSION_HANDLE openSession(long slot, long flags) {
        CK_SESSION_HANDLE session = new CK_SESSION_HANDLE();
        Cryptoki.C_OpenSession(slot, flags, null, null, session).orThrow();
        return session;
    }

    public static CK_RV login(CK_SESSION_HANDLE session, long user, byte[] pin) {
        return Cryptoki.C_Login(session, new CK_USER_TYPE(user), pin, pin.length);
    }

    public static byte[] ascii(String text) {
        return text.getBytes(StandardCharsets.US_ASCII);
    }
}
