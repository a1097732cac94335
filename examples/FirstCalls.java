// The first calls of every program: initialise the library, look at slots, token and mechanisms, set up the
// token and its PINs, open sessions, log in and out, and finish.

import static token.FreshToken.*;

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.CK_INFO;
import halvorn.zerlin.CK_MECHANISM_INFO;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.CK_SESSION_INFO;
import halvorn.zerlin.CK_SLOT_INFO;
import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.LongRef;
import halvorn.zerlin.constants.CK;
import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKU;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

import java.util.Arrays;

public final class FirstCalls {
    private static final byte[] FIRST_PIN = ascii("first-secret");

    public static void main(String[] arguments) {
        // The library uses the system's locks; with CK_C_INITIALIZE_ARGS.javaLocking() it uses Java's own.
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
        try {
            showLibrary();
            showSlots();
            long slot = find(Demo.TOKEN_LABEL);
            showMechanisms(slot);
            initialiseToken(slot);
            useSessions(slot);
            showToken(slot);
        } finally {
            Cryptoki.C_Finalize(null).orThrow();
            System.out.println("\nFinished: sessions closed, library finalised.");
        }
    }

    private static void showLibrary() {
        CK_INFO info = new CK_INFO();
        Cryptoki.C_GetInfo(info).orThrow();
        Demo.title("Library");
        Demo.row("description", info.getLibraryDescription());
        Demo.row("manufacturer", info.getManufacturerID());
        Demo.row("Cryptoki version", info.cryptokiVersion);
        Demo.row("binding version", info.libraryVersion);
    }

    private static void showSlots() {
        long[] slots = slots();
        Demo.title("Slots with a token: " + slots.length);
        for (long slot : slots) {
            CK_SLOT_INFO info = new CK_SLOT_INFO();
            Cryptoki.C_GetSlotInfo(slot, info).orThrow();
            Demo.row("slot " + slot, info.getSlotDescription());
        }
    }

    private static void showMechanisms(long slot) {
        LongRef count = new LongRef();
        Cryptoki.C_GetMechanismList(slot, null, count).orThrow();
        // The list is written into existing objects, so the array must be filled with new ones.
        CK_MECHANISM_TYPE[] mechanisms = CK_MECHANISM_TYPE.array((int) count.value);
        Cryptoki.C_GetMechanismList(slot, mechanisms, count).orThrow();

        Demo.title("Mechanisms of slot " + slot + ": " + count.value);
        System.out.printf("  %-36s %16s  %s%n", "", "key sizes", "good for");
        for (CK_MECHANISM_TYPE mechanism : Arrays.copyOf(mechanisms, Math.min(12, mechanisms.length))) {
            CK_MECHANISM_INFO info = new CK_MECHANISM_INFO();
            Cryptoki.C_GetMechanismInfo(slot, mechanism, info).orThrow();
            String keySizes = info.minKeySize + " - " + info.maxKeySize;
            System.out.printf("  %-36s %16s  %s%n", mechanism, keySizes, uses(info));
        }
        System.out.println("  ...");
    }

    private static String uses(CK_MECHANISM_INFO info) {
        StringBuilder uses = new StringBuilder();
        use(uses, info, CKF.ENCRYPT, "encrypt");
        use(uses, info, CKF.DIGEST, "digest");
        use(uses, info, CKF.SIGN, "sign");
        use(uses, info, CKF.GENERATE, "generate");
        use(uses, info, CKF.GENERATE_KEY_PAIR, "generate pair");
        use(uses, info, CKF.WRAP, "wrap");
        use(uses, info, CKF.DERIVE, "derive");
        return uses.toString();
    }

    private static void use(StringBuilder uses, CK_MECHANISM_INFO info, long flag, String name) {
        if ((info.flags & flag) != 0) {
            uses.append(uses.length() == 0 ? "" : ", ").append(name);
        }
    }

    private static void initialiseToken(long slot) {
        Demo.title("Initialise the token of slot " + slot);
        byte[] label = CK_TOKEN_INFO.paddedLabel(Demo.TOKEN_LABEL);
        Demo.row("C_InitToken", Cryptoki.C_InitToken(slot, SO_PIN, SO_PIN.length, label).orThrow());

        CK_SESSION_HANDLE session = openSession(slot, READ_WRITE);
        Demo.row("C_Login (SO)", login(session, CKU.SO, SO_PIN).orThrow());
        Demo.row("C_InitPIN", Cryptoki.C_InitPIN(session, FIRST_PIN, FIRST_PIN.length).orThrow());
        Demo.row("C_Logout", Cryptoki.C_Logout(session).orThrow());
        Demo.row("C_Login (user)", login(session, CKU.USER, FIRST_PIN).orThrow());
        Demo.row("C_SetPIN", Cryptoki.C_SetPIN(session, FIRST_PIN, FIRST_PIN.length, USER_PIN,
                USER_PIN.length).orThrow());
        Demo.row("C_CloseSession", Cryptoki.C_CloseSession(session).orThrow());
    }

    private static void useSessions(long slot) {
        Demo.title("Sessions");
        CK_SESSION_HANDLE readOnly = openSession(slot, READ_ONLY);
        CK_SESSION_HANDLE readWrite = openSession(slot, READ_WRITE);
        showState("before the login", readOnly);
        Demo.row("the old PIN", login(readOnly, CKU.USER, FIRST_PIN));
        Demo.row("the new PIN", login(readOnly, CKU.USER, USER_PIN).orThrow());
        showState("one session", readOnly);
        showState("the other session", readWrite);
        Demo.row("C_Logout", Cryptoki.C_Logout(readOnly).orThrow());
        showState("after the logout", readWrite);
        Demo.row("C_CloseAllSessions", Cryptoki.C_CloseAllSessions(slot).orThrow());
        Demo.row("a closed session", Cryptoki.C_GetSessionInfo(readOnly, new CK_SESSION_INFO()));
    }

    private static void showToken(long slot) {
        CK_TOKEN_INFO info = tokenInfo(slot);
        Demo.title("Token of slot " + slot);
        Demo.row("label", info.getLabel());
        Demo.row("model", info.getModel());
        Demo.row("serial number", info.getSerialNumber());
        Demo.row("PIN length", info.minPinLen + " - " + info.maxPinLen + " bytes");
        Demo.row("initialised", isInitialised(info));
        Demo.row("user PIN set", (info.flags & CKF.USER_PIN_INITIALIZED) != 0);
        boolean told = info.sessionCount != CK.UNAVAILABLE_INFORMATION;
        Demo.row("open sessions", told ? info.sessionCount : "the token does not tell");
    }

    private static void showState(String when, CK_SESSION_HANDLE session) {
        CK_SESSION_INFO info = new CK_SESSION_INFO();
        Cryptoki.C_GetSessionInfo(session, info).orThrow();
        Demo.row(when, info.state);
    }
}
