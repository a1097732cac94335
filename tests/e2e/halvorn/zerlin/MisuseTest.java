// What users do wrong, and the text that they see.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;
import static token.Session.template;

import halvorn.zerlin.constants.*;

import java.util.Objects;
import java.util.stream.Stream;

import org.junit.jupiter.api.*;
import org.junit.jupiter.api.function.Executable;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.*;
import token.Session;

class MisuseTest {
    private static final CK_OBJECT_HANDLE NONE = new CK_OBJECT_HANDLE(77);
    private static final byte[] DATA = new byte[15];
    private static long slot;
    private static Session session;
    private static CK_OBJECT_HANDLE key;

    @BeforeAll
    static void logIn() {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow(CKR.CRYPTOKI_ALREADY_INITIALIZED);
        slot = create("misuse");
        session = new Session(slot);
        login(session.handle, CKU.USER, USER_PIN).orThrow();
        key = session.create(template(CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, CKK.AES, CKA.VALUE, new byte[16],
                CKA.TOKEN, false, CKA.SENSITIVE, true, CKA.EXTRACTABLE, false, CKA.ENCRYPT, true, CKA.SIGN, false));
    }

    private static CK_RV encrypt(long mechanism, byte[] iv, CK_OBJECT_HANDLE with, byte[] out) {
        CK_SESSION_HANDLE own = openSession(slot, READ_ONLY);
        try {
            CK_RV rv = Cryptoki.C_EncryptInit(own, new CK_MECHANISM(mechanism, iv), with);
            return rv.isOk() ? Cryptoki.C_Encrypt(own, DATA, DATA.length, out, new LongRef(out.length)) : rv;
        } finally {
            Cryptoki.C_CloseSession(own);
        }
    }

    private static CK_RV createObject(CK_SESSION_HANDLE where, Object... typesAndValues) {
        CK_ATTRIBUTE[] template = template(typesAndValues);
        return Cryptoki.C_CreateObject(where, template, template.length, new CK_OBJECT_HANDLE());
    }

    private static CK_RV setPin(byte[] old, byte[] pin) {
        return Cryptoki.C_SetPIN(session.handle, old, old.length, pin, pin.length);
    }

    private static Arguments row(Executable misuse, String text) {
        return Arguments.of(misuse, text);
    }

    // NSS allows this, or returns another value.
    private static Arguments notNss(Executable misuse, String text) {
        return Session.IS_NSS ? null : row(misuse, text);
    }

    static Stream<Arguments> misuses() {
        byte[] block = new byte[16];
        CK_SESSION_HANDLE gone = new CK_SESSION_HANDLE(4711);
        return Stream.of(
            row(() -> Cryptoki.C_Initialize(null).orThrow("C_Initialize"),
                "C_Initialize: CKR_CRYPTOKI_ALREADY_INITIALIZED (0x191): the program has called C_Initialize already"),
            row(() -> Cryptoki.C_GetSlotList(false, null, null).orThrow(),
                "CKR_ARGUMENTS_BAD (0x7): an argument is null or"),
            row(() -> Cryptoki.C_GetTokenInfo(99999, new CK_TOKEN_INFO()).orThrow("C_GetTokenInfo"),
                "C_GetTokenInfo: CKR_SLOT_ID_INVALID (0x3): there is no such slot"),
            notNss(() -> Cryptoki.C_OpenSession(slot, 0, null, null, new CK_SESSION_HANDLE()).orThrow(),
                "CKR_SESSION_PARALLEL_NOT_SUPPORTED (0xb4): open the session with CKF.SERIAL_SESSION"),
            row(() -> Cryptoki.C_GetSessionInfo(gone, new CK_SESSION_INFO()).orThrow(),
                "CKR_SESSION_HANDLE_INVALID (0xb3): the session was closed, perhaps with all others of the token"),
            row(() -> login(session.handle, CKU.USER, USER_PIN).orThrow("C_Login"),
                "C_Login: CKR_USER_ALREADY_LOGGED_IN (0x100): the login holds for all sessions of the program"),
            notNss(() -> login(session.handle, CKU.SO, SO_PIN).orThrow(),
                "CKR_USER_ANOTHER_ALREADY_LOGGED_IN (0x104): the other user is logged in; log out"),
            notNss(() -> login(session.handle, 9, USER_PIN).orThrow(),
                "CKR_USER_TYPE_INVALID (0x103): take CKU.USER or CKU.SO"),
            row(() -> setPin(ascii("wrong"), USER_PIN).orThrow("C_SetPIN"),
                "C_SetPIN: CKR_PIN_INCORRECT (0xa0): the PIN is wrong; a few more wrong ones lock it"),
            notNss(() -> setPin(USER_PIN, ascii("1")).orThrow(),
                "CKR_PIN_LEN_RANGE (0xa2): the PIN is too short or too long"),
            row(() -> Cryptoki.C_InitPIN(session.handle, USER_PIN, USER_PIN.length).orThrow(),
                "CKR_USER_NOT_LOGGED_IN (0x101): log in with C_Login first"),
            notNss(() -> Cryptoki.C_InitToken(slot, SO_PIN, SO_PIN.length, CK_TOKEN_INFO.paddedLabel("x")).orThrow(),
                "CKR_SESSION_EXISTS (0xb6): close all sessions on the token first"),
            row(() -> Cryptoki.C_Encrypt(session.handle, DATA, 1, block, new LongRef(16)).orThrow("C_Encrypt"),
                "C_Encrypt: CKR_OPERATION_NOT_INITIALIZED (0x91): call the Init function first"),
            row(() -> encrypt(0x7654, null, key, block).orThrow(),
                "CKR_MECHANISM_INVALID (0x70): the token does not have this mechanism, or not for this operation"),
            notNss(() -> encrypt(CKM.AES_CBC, new byte[5], key, block).orThrow(),
                "CKR_MECHANISM_INVALID (0x70): the token does not have this mechanism, or not for this operation or with"),
            notNss(() -> encrypt(CKM.AES_CBC, block, NONE, block).orThrow(),
                "CKR_OBJECT_HANDLE_INVALID (0x82): there is no such object for this session"),
            row(() -> encrypt(CKM.AES_CBC, block, key, block).orThrow(),
                "CKR_DATA_LEN_RANGE (0x21): the input has a wrong length: with a block cipher"),
            row(() -> encrypt(CKM.AES_CBC_PAD, block, key, new byte[3]).orThrow("C_Encrypt"),
                "C_Encrypt: CKR_BUFFER_TOO_SMALL (0x150): the array is too small; the LongRef holds the length"),
            row(() -> encrypt(CKM.DES3_ECB, null, key, block).orThrow(),
                "CKR_KEY_TYPE_INCONSISTENT (0x63): the mechanism needs a key of another type"),
            notNss(() -> Cryptoki.C_SignInit(session.handle, new CK_MECHANISM(CKM.AES_CMAC), key).orThrow(),
                "CKR_KEY_FUNCTION_NOT_PERMITTED (0x68): the key's attributes do not allow this: CKA_SIGN"),
            row(() -> Cryptoki.C_WrapKey(session.handle, new CK_MECHANISM(CKM.AES_KEY_WRAP), key, key, null,
                    new LongRef()).orThrow(), "CKR_MECHANISM_INVALID (0x70)"),
            row(() -> createObject(session.handle, CKA.CLASS, CKO.SECRET_KEY).orThrow("C_CreateObject"),
                "C_CreateObject: CKR_TEMPLATE_INCOMPLETE (0xd0): the template lacks an attribute"),
            row(() -> createObject(session.handle, CKA.CLASS, (byte) 4).orThrow(),
                "CKR_TEMPLATE_INCOMPLETE (0xd0): the template lacks an attribute that this object must have"),
            row(() -> createObject(openSession(slot, READ_ONLY), CKA.CLASS, CKO.DATA, CKA.TOKEN, true).orThrow(),
                "CKR_SESSION_READ_ONLY (0xb5): open the session with CKF.RW_SESSION"),
            row(() -> Cryptoki.C_GetAttributeValue(session.handle, key, template(CKA.VALUE, new byte[16]), 1).orThrow(),
                "CKR_ATTRIBUTE_SENSITIVE (0x11): the value of one attribute does not leave the token"),
            row(() -> Cryptoki.C_GetAttributeValue(session.handle, key, template(CKA.MODULUS, DATA), 1).orThrow(),
                "CKR_ATTRIBUTE_TYPE_INVALID (0x12): the object does not have one of the attributes"),
            row(() -> Cryptoki.C_SetAttributeValue(session.handle, key, template(CKA.CLASS, CKO.DATA), 1).orThrow(),
                "CKR_ATTRIBUTE_READ_ONLY (0x10): one of the attributes cannot be set"),
            row(() -> Cryptoki.C_DestroyObject(session.handle, NONE).orThrow("C_DestroyObject"),
                "C_DestroyObject: CKR_OBJECT_HANDLE_INVALID (0x82): there is no such object for this session"),
            row(() -> Cryptoki.C_GetFunctionStatus(session.handle).orThrow(), "CKR_FUNCTION_NOT_PARALLEL (0x51)"),
            row(() -> new CK_RV(0x80000129L).orThrow("CT_InitToken"), "CT_InitToken: Vendor defined (0x80000129)"),
            row(() -> new CK_ATTRIBUTE(CKA.LABEL, (Object) 'c'),
                "No native form for java.lang.Character: use null, byte[], String,"),
            row(() -> CK_TOKEN_INFO.paddedLabel("x".repeat(33)), "A token label has at most 32 bytes, not 33"),
            row(() -> CK_DATE.fromBytes(new byte[6]), "A date has 8 bytes, not 6"),
            row(() -> NativeLibrary.onLoad(ascii("3.9.9"), ascii("/x/libzerlin.so")),
                "zerlin.jar " + NativeLibrary.VERSION + " needs libzerlin.so " + NativeLibrary.VERSION
                + ", found 3.9.9 at /x/libzerlin.so")).filter(Objects::nonNull);
    }

    @ParameterizedTest
    @MethodSource("misuses")
    void theTextSaysWhatWasWrongAndWhatToDo(Executable misuse, String text) {
        String message = assertThrows(Throwable.class, misuse).getMessage();
        assertTrue(message.startsWith(text), message);
    }

    // What the system's loader or the JVM says, and the advice.
    @ParameterizedTest
    @CsvSource(delimiter = '|', value = {
        "x/libzerlin.so: wrong ELF class: ELFCLASS64 | x/libzerlin.so is a 64-bit library, and this JVM is 32-bit: use",
        "libcryptoki.so: wrong ELF class: ELFCLASS64 | libcryptoki.so is a 64-bit library, and this JVM is 32-bit: use",
        "Illegal native access from: unnamed | start it with --enable-native-access=ALL-UNNAMED",
        "libcryptoki.so: cannot open shared object file: No such file | put it beside libzerlin.so or in a directory of",
        "libcryptoki.so: undefined symbol: CT_CopyObject | start with -Dhalvorn.zerlin.cryptoki=embedded and name the module",
        "no zerlin in java.library.path: /usr/lib | start the JVM with -Djava.library.path=<its directory>",
        "Can't load library: /x/libzerlin.so | or with -Dhalvorn.zerlin.library=<the file>",
        "Native Library /x already loaded in another classloader | load zerlin.jar in one class loader",
        "libcryptoki.so is already loaded in this process, from /x | a JVM one HSM library",
        "Expecting an absolute path of the library: x | halvorn.zerlin.library must be an absolute path",
        "zerlin.jar 3.10.1 needs libzerlin.so 3.10.1, found 3.10.0 at /x | take both from one package",
        "/tmp/x.so: failed to map segment from shared object | (noexec): put the library elsewhere",
        "Error relocating /x.so: __sprintf_chk: symbol not found | it does not run on musl (Alpine Linux)",
        "/lib/libc.so.6: version `GLIBC_2.36' not found | the C library of Debian 12 (glibc 2.36) or later",
        "libssl.so.3: cannot open shared object file | a library that is needed has not found libssl.so.3: install it"})
    void aFailedLoadIsExplained(String loaderText, String advice) {
        String text = NativeLibrary.explain(loaderText, "Linux i386", "32");
        assertEquals(2, text.lines().count(), text);
        assertTrue(text.contains(": " + loaderText + "\n- ") && text.contains(advice), text);
        assertTrue(NativeLibrary.explain(loaderText, "Linux aarch64", "64").contains("this JVM is for Linux aarch64"));
    }
}
