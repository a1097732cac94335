// A tour of the natives themselves: the library, slots and mechanisms, the token and its PINs, sessions, objects,
// encryption, digest and signature. The other examples use the classes of halvorn.zerlin.token, which save most of
// these lines.

import static token.FreshToken.*;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

import java.nio.charset.StandardCharsets;
import java.security.GeneralSecurityException;
import java.security.MessageDigest;
import java.util.Arrays;

public final class FirstCalls {
    private static final byte[] FIRST_PIN = ascii("first-secret");
    private static final byte[] TEXT = ascii("The quick brown fox jumps over the lazy dog.");

    public static void main(String[] arguments) throws GeneralSecurityException {
        // Always ask for locking: without it, some libraries crash when a second thread calls. A native returns a
        // CK_RV and throws nothing; orThrow() makes an exception of every value but CKR_OK.
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
        try {
            showLibraryAndSlots();
            long slot = find(Demo.TOKEN_LABEL);
            showMechanisms(slot);
            initialiseToken(slot);
            useSessions(slot);
            CK_SESSION_HANDLE session = openSession(slot, READ_WRITE);
            login(session, CKU.USER, USER_PIN).orThrow();
            useKey(session);
            sign(session);
            showToken(slot);
            Cryptoki.C_CloseSession(session).orThrow();
        } finally {
            Cryptoki.C_Finalize(null).orThrow();
            System.out.println("\nFinished: sessions closed, library finalised.");
        }
    }

    private static void showLibraryAndSlots() {
        CK_INFO info = new CK_INFO(); // the native fills it
        Cryptoki.C_GetInfo(info).orThrow();
        Demo.title("Library");
        Demo.row("description", info.getLibraryDescription());
        Demo.row("manufacturer", info.getManufacturerID());
        Demo.row("Cryptoki version", info.cryptokiVersion);
        Demo.row("binding version", info.libraryVersion);

        // Every list takes two calls: without an array, the call returns only the number of entries.
        LongRef count = new LongRef();
        Cryptoki.C_GetSlotList(true, null, count).orThrow();
        long[] slots = new long[(int) count.value];
        Cryptoki.C_GetSlotList(true, slots, count).orThrow();
        Demo.title("Slots with a token: " + slots.length);
        for (long slot : slots) {
            CK_SLOT_INFO slotInfo = new CK_SLOT_INFO();
            Cryptoki.C_GetSlotInfo(slot, slotInfo).orThrow();
            Demo.row("slot " + slot, slotInfo.getSlotDescription());
        }
    }

    private static void showMechanisms(long slot) {
        LongRef count = new LongRef();
        Cryptoki.C_GetMechanismList(slot, null, count).orThrow();
        // The list is written into existing objects, so the array must be filled with new ones.
        CK_MECHANISM_TYPE[] mechanisms = CK_MECHANISM_TYPE.array((int) count.value);
        Cryptoki.C_GetMechanismList(slot, mechanisms, count).orThrow();
        Demo.title("Mechanisms of slot " + slot + ": " + count.value);
        for (CK_MECHANISM_TYPE mechanism : Arrays.copyOf(mechanisms, Math.min(5, mechanisms.length))) {
            CK_MECHANISM_INFO info = new CK_MECHANISM_INFO();
            Cryptoki.C_GetMechanismInfo(slot, mechanism, info).orThrow();
            System.out.printf("  %-36s %s%n", mechanism, info);
        }
        System.out.println("  ...");
    }

    private static void initialiseToken(long slot) {
        Demo.title("Initialise the token of slot " + slot);
        byte[] label = CK_TOKEN_INFO.paddedLabel(Demo.TOKEN_LABEL);
        Demo.row("C_InitToken", Cryptoki.C_InitToken(slot, SO_PIN, SO_PIN.length, label).orThrow());
        CK_SESSION_HANDLE session = new CK_SESSION_HANDLE();
        long flags = CKF.SERIAL_SESSION | CKF.RW_SESSION;
        Demo.row("C_OpenSession", Cryptoki.C_OpenSession(slot, flags, null, null, session).orThrow());
        CK_USER_TYPE officer = new CK_USER_TYPE(CKU.SO), user = new CK_USER_TYPE(CKU.USER);
        Demo.row("C_Login (SO)", Cryptoki.C_Login(session, officer, SO_PIN, SO_PIN.length).orThrow());
        Demo.row("C_InitPIN", Cryptoki.C_InitPIN(session, FIRST_PIN, FIRST_PIN.length).orThrow());
        Demo.row("C_Logout", Cryptoki.C_Logout(session).orThrow());
        Demo.row("C_Login (user)", Cryptoki.C_Login(session, user, FIRST_PIN, FIRST_PIN.length).orThrow());
        Demo.row("C_SetPIN",
                Cryptoki.C_SetPIN(session, FIRST_PIN, FIRST_PIN.length, USER_PIN, USER_PIN.length).orThrow());
        Demo.row("C_CloseSession", Cryptoki.C_CloseSession(session).orThrow());
    }

    private static void useSessions(long slot) {
        Demo.title("Sessions");
        CK_SESSION_HANDLE readOnly = openSession(slot, READ_ONLY), readWrite = openSession(slot, READ_WRITE);
        showState("before the login", readOnly);
        Demo.row("the old PIN", login(readOnly, CKU.USER, FIRST_PIN)); // refused: a value, no exception
        Demo.row("the new PIN", login(readOnly, CKU.USER, USER_PIN).orThrow());
        showState("one session", readOnly);
        showState("the other session", readWrite); // a login holds for all sessions with the token
        Demo.row("C_Logout", Cryptoki.C_Logout(readOnly).orThrow());
        showState("after the logout", readWrite);
        Demo.row("C_CloseAllSessions", Cryptoki.C_CloseAllSessions(slot).orThrow());
        Demo.row("a closed session", Cryptoki.C_GetSessionInfo(readOnly, new CK_SESSION_INFO()));
    }

    private static void useKey(CK_SESSION_HANDLE session) {
        Demo.title("Make, find and read a key");
        // An object is a list of attributes. Texts become UTF-8, numbers a CK_ULONG, booleans one byte.
        CK_ATTRIBUTE[] template = {
            new CK_ATTRIBUTE(CKA.LABEL, "first key"), new CK_ATTRIBUTE(CKA.TOKEN, true), // stays on the token
            new CK_ATTRIBUTE(CKA.SENSITIVE, true), new CK_ATTRIBUTE(CKA.EXTRACTABLE, false),
            new CK_ATTRIBUTE(CKA.ENCRYPT, true), new CK_ATTRIBUTE(CKA.DECRYPT, true), new CK_ATTRIBUTE(CKA.VALUE_LEN, 32)};
        Demo.row("C_GenerateKey", Cryptoki.C_GenerateKey(session, new CK_MECHANISM(CKM.AES_KEY_GEN), template,
                template.length, new CK_OBJECT_HANDLE()).orThrow());
        CK_ATTRIBUTE[] wanted = {new CK_ATTRIBUTE(CKA.CLASS, CKO.SECRET_KEY), new CK_ATTRIBUTE(CKA.LABEL, "first key")};
        CK_OBJECT_HANDLE[] page = CK_OBJECT_HANDLE.array(10); // to find more, call again until none comes
        LongRef count = new LongRef();
        Cryptoki.C_FindObjectsInit(session, wanted, wanted.length).orThrow();
        Cryptoki.C_FindObjects(session, page, page.length, count).orThrow();
        Cryptoki.C_FindObjectsFinal(session).orThrow();
        CK_OBJECT_HANDLE key = page[0];
        Demo.row("C_FindObjects", count + " found");
        // Each value is written into the object given here, so every object must be a new one.
        CK_ATTRIBUTE[] read = {new CK_ATTRIBUTE(CKA.KEY_TYPE, new CK_KEY_TYPE()),
            CK_ATTRIBUTE.buffer(CKA.LABEL, 64), CK_ATTRIBUTE.buffer(CKA.VALUE, 64)};
        // The value is sensitive: it is refused, and the others are returned all the same.
        Demo.row("C_GetAttributeValue", Cryptoki.C_GetAttributeValue(session, key, read, read.length));
        Demo.row("CKA_KEY_TYPE", read[0].pValue);
        Demo.row("CKA_LABEL", new String(read[1].getBytes(), StandardCharsets.UTF_8));
        Demo.row("CKA_VALUE", read[2].valueLen == CK.UNAVAILABLE_INFORMATION ? "unavailable" : "in the clear!");

        encrypt(session, key);
        Demo.row("C_DestroyObject", Cryptoki.C_DestroyObject(session, key).orThrow());
    }

    private static void encrypt(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE key) {
        Demo.title("Encrypt");
        byte[] iv = new byte[16];
        Demo.row("C_GenerateRandom", Cryptoki.C_GenerateRandom(session, iv, iv.length).orThrow());
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_CBC_PAD, iv);
        LongRef length = new LongRef();
        Cryptoki.C_EncryptInit(session, mechanism, key).orThrow();
        Cryptoki.C_Encrypt(session, TEXT, TEXT.length, null, length).orThrow(); // how long?
        byte[] encrypted = new byte[(int) length.value];
        Cryptoki.C_Encrypt(session, TEXT, TEXT.length, encrypted, length).orThrow(); // and now the bytes
        encrypted = Arrays.copyOf(encrypted, (int) length.value); // the first answer may have been too great
        Demo.row("C_Encrypt", Demo.hex(encrypted));
        Cryptoki.C_DecryptInit(session, mechanism, key).orThrow();
        byte[] room = new byte[encrypted.length]; // text is never longer: one call is enough
        LongRef textLength = new LongRef(room.length);
        Cryptoki.C_Decrypt(session, encrypted, encrypted.length, room, textLength).orThrow();
        Demo.row("C_Decrypt", new String(room, 0, (int) textLength.value, StandardCharsets.UTF_8));
    }

    private static void sign(CK_SESSION_HANDLE session) throws GeneralSecurityException {
        Demo.title("Digest and sign");
        Cryptoki.C_DigestInit(session, new CK_MECHANISM(CKM.SHA256)).orThrow();
        // bytes() makes both calls, as above: with null, and with an array of the length that came back.
        byte[] digest = bytes((out, length) -> Cryptoki.C_Digest(session, TEXT, TEXT.length, out, length));
        byte[] expected = MessageDigest.getInstance("SHA-256").digest(TEXT);
        Demo.checked("C_Digest", Demo.hex(digest), Arrays.equals(expected, digest));
        CK_ATTRIBUTE[] publicPart = {
            new CK_ATTRIBUTE(CKA.MODULUS_BITS, 2048), new CK_ATTRIBUTE(CKA.PUBLIC_EXPONENT, new byte[] {1, 0, 1})};
        CK_ATTRIBUTE[] privatePart = {new CK_ATTRIBUTE(CKA.SENSITIVE, true), new CK_ATTRIBUTE(CKA.SIGN, true)};
        CK_OBJECT_HANDLE publicKey = new CK_OBJECT_HANDLE(), privateKey = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKeyPair(session, new CK_MECHANISM(CKM.RSA_PKCS_KEY_PAIR_GEN), publicPart, publicPart.length,
                privatePart, privatePart.length, publicKey, privateKey).orThrow();
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.SHA256_RSA_PKCS);
        Cryptoki.C_SignInit(session, mechanism, privateKey).orThrow();
        byte[] signature = bytes((out, length) -> Cryptoki.C_Sign(session, TEXT, TEXT.length, out, length));
        Demo.row("C_Sign", Demo.hex(signature));
        Cryptoki.C_VerifyInit(session, mechanism, publicKey).orThrow();
        Demo.row("C_Verify", Cryptoki.C_Verify(session, TEXT, TEXT.length, signature, signature.length).orThrow());
        signature[7] ^= 1;
        Cryptoki.C_VerifyInit(session, mechanism, publicKey).orThrow();
        Demo.row("with one wrong bit", Cryptoki.C_Verify(session, TEXT, TEXT.length, signature, signature.length));
    }

    private static void showToken(long slot) {
        CK_TOKEN_INFO info = tokenInfo(slot);
        Demo.title("Token of slot " + slot);
        Demo.row("label", info.getLabel());
        Demo.row("model, serial number", info.getModel() + ", " + info.getSerialNumber());
        Demo.row("PIN length", info.minPinLen + " - " + info.maxPinLen + " bytes");
        Demo.row("user PIN set", (info.flags & CKF.USER_PIN_INITIALIZED) != 0);
        Demo.row("open sessions", info.sessionCount == CK.UNAVAILABLE_INFORMATION ? "not told" : info.sessionCount);
    }

    private static void showState(String when, CK_SESSION_HANDLE session) {
        CK_SESSION_INFO info = new CK_SESSION_INFO();
        Cryptoki.C_GetSessionInfo(session, info).orThrow();
        Demo.row(when, info.state);
    }
}
