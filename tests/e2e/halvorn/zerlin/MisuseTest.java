// What users do wrong, and the text that they see.
package halvorn.zerlin;

import static halvorn.zerlin.Cryptoki.*;
import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;
import static token.TokenObjects.*;

import halvorn.zerlin.constants.*;

import java.util.function.Supplier;
import java.util.stream.Stream;

import org.junit.jupiter.api.*;
import org.junit.jupiter.api.function.Executable;

class MisuseTest {
    private static final CK_OBJECT_HANDLE KEY = new CK_OBJECT_HANDLE();
    private static final CK_OBJECT_HANDLE NONE = new CK_OBJECT_HANDLE(77);
    private static final CK_SESSION_HANDLE GONE = new CK_SESSION_HANDLE(4711);
    private static final byte[] DATA = new byte[15];
    private static final byte[] BLOCK = new byte[16];
    private static long slot;
    private static CK_SESSION_HANDLE session;

    @BeforeAll
    static void logIn() {
        C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow(CKR.CRYPTOKI_ALREADY_INITIALIZED);
        slot = create("misuse");
        session = openSession(slot, READ_WRITE);
        login(session, CKU.USER, USER_PIN).orThrow();
        createObject(session, KEY, CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, CKK.AES, CKA.VALUE, BLOCK, CKA.TOKEN, false,
                CKA.SENSITIVE, true, CKA.EXTRACTABLE, false, CKA.ENCRYPT, true, CKA.SIGN, false).orThrow();
    }

    private static CK_RV encrypt(long mechanism, byte[] iv, CK_OBJECT_HANDLE with, byte[] out) {
        CK_SESSION_HANDLE own = openSession(slot, READ_ONLY);
        CK_RV rv = C_EncryptInit(own, new CK_MECHANISM(mechanism, iv), with);
        return rv.isOk() ? C_Encrypt(own, DATA, DATA.length, out, new LongRef(out.length)) : rv;
    }

    private static CK_RV setPin(byte[] old, byte[] pin) {
        return C_SetPIN(session, old, old.length, pin, pin.length);
    }

    private static DynamicTest thrown(String text, Executable misuse) {
        return DynamicTest.dynamicTest(text, () -> {
            String message = assertThrows(Throwable.class, misuse).getMessage();
            assertTrue(message.startsWith(text), message);
        });
    }

    private static DynamicTest returned(String text, Supplier<CK_RV> misuse) {
        return thrown("C_Any: " + text, () -> misuse.get().orThrow("C_Any"));
    }

    // NSS allows this, or returns another value.
    private static DynamicTest notNss(String text, Supplier<CK_RV> misuse) {
        return IS_NSS ? DynamicTest.dynamicTest(text, Assumptions::abort) : returned(text, misuse);
    }

    // What the system's loader or the JVM says, and the advice.
    private static DynamicTest unloadable(String loaderText, String advice) {
        return DynamicTest.dynamicTest(loaderText, () -> {
            String text = NativeLibrary.explain(loaderText, "Linux i386", "32");
            assertEquals(2, text.lines().count(), text);
            assertTrue(text.contains(": " + loaderText + "\n- ") && text.contains(advice), text);
            assertTrue(NativeLibrary.explain(loaderText, "Linux aarch64", "64").contains("JVM is for Linux aarch64"));
        });
    }

    @TestFactory
    Stream<DynamicTest> theTextSaysWhatWasWrongAndWhatToDo() {
        String version = NativeLibrary.VERSION;
        return Stream.of(
            returned("CKR_CRYPTOKI_ALREADY_INITIALIZED (0x191): the program has", () -> C_Initialize(null)),
            returned("CKR_ARGUMENTS_BAD (0x7): an argument is null or", () -> C_GetSlotList(false, null, null)),
            returned("CKR_SLOT_ID_INVALID (0x3): there is no such slot", () -> C_GetTokenInfo(99, new CK_TOKEN_INFO())),
            notNss("CKR_SESSION_PARALLEL_NOT_SUPPORTED (0xb4): open the session with CKF.SERIAL_SESSION",
                () -> C_OpenSession(slot, 0, null, null, new CK_SESSION_HANDLE())),
            returned("CKR_SESSION_HANDLE_INVALID (0xb3): the session was closed, perhaps with all", () -> C_Logout(GONE)),
            returned("CKR_USER_ALREADY_LOGGED_IN (0x100): the login holds", () -> login(session, CKU.USER, USER_PIN)),
            notNss("CKR_USER_ANOTHER_ALREADY_LOGGED_IN (0x104): the other user", () -> login(session, CKU.SO, SO_PIN)),
            notNss("CKR_USER_TYPE_INVALID (0x103): take CKU.USER or CKU.SO", () -> login(session, 9, USER_PIN)),
            returned("CKR_PIN_INCORRECT (0xa0): the PIN is wrong; a few more", () -> setPin(ascii("wrong"), USER_PIN)),
            notNss("CKR_PIN_LEN_RANGE (0xa2): the PIN is too short or too long", () -> setPin(USER_PIN, ascii("1"))),
            returned("CKR_USER_NOT_LOGGED_IN (0x101): log in with", () -> C_InitPIN(session, USER_PIN, USER_PIN.length)),
            notNss("CKR_SESSION_EXISTS (0xb6): close all", () -> C_InitToken(slot, SO_PIN, SO_PIN.length, new byte[32])),
            returned("CKR_OPERATION_NOT_INITIALIZED (0x91): call", () -> C_EncryptFinal(session, BLOCK, new LongRef(16))),
            returned("CKR_MECHANISM_INVALID (0x70): the token", () -> encrypt(0x7654, null, KEY, BLOCK)),
            notNss("CKR_MECHANISM_INVALID (0x70): the token", () -> encrypt(CKM.AES_CBC, new byte[5], KEY, BLOCK)),
            notNss("CKR_OBJECT_HANDLE_INVALID (0x82): there is no such", () -> encrypt(CKM.AES_CBC, BLOCK, NONE, BLOCK)),
            returned("CKR_DATA_LEN_RANGE (0x21): the input has a wrong", () -> encrypt(CKM.AES_CBC, BLOCK, KEY, BLOCK)),
            returned("CKR_BUFFER_TOO_SMALL (0x150): the capacity", () -> encrypt(CKM.AES_CBC_PAD, BLOCK, KEY, new byte[3])),
            returned("CKR_KEY_TYPE_INCONSISTENT (0x63): the mechanism", () -> encrypt(CKM.DES3_ECB, null, KEY, BLOCK)),
            notNss("CKR_KEY_FUNCTION_NOT_PERMITTED (0x68): the key's attributes do not allow this: CKA_SIGN",
                () -> C_SignInit(session, new CK_MECHANISM(CKM.AES_CMAC), KEY)),
            returned("CKR_MECHANISM_INVALID (0x70): the token does not have this mechanism, or not for this operation or",
                () -> C_WrapKey(session, new CK_MECHANISM(CKM.AES_KEY_WRAP), KEY, KEY, null, new LongRef())),
            returned("CKR_TEMPLATE_INCOMPLETE (0xd0)", () -> createObject(session, NONE, CKA.CLASS, CKO.SECRET_KEY)),
            returned("CKR_TEMPLATE_INCOMPLETE (0xd0): the template lacks an attribute that this object must have",
                () -> createObject(session, NONE, CKA.CLASS, (byte) 4)),
            returned("CKR_SESSION_READ_ONLY (0xb5): open the session with CKF.RW_SESSION",
                () -> createObject(openSession(slot, READ_ONLY), NONE, CKA.CLASS, CKO.DATA, CKA.TOKEN, true)),
            returned("CKR_ATTRIBUTE_SENSITIVE (0x11): the value of one attribute does not leave the token",
                () -> C_GetAttributeValue(session, KEY, template(CKA.VALUE, BLOCK), 1)),
            returned("CKR_ATTRIBUTE_TYPE_INVALID (0x12): the object does not have one of the attributes",
                () -> C_GetAttributeValue(session, KEY, template(CKA.MODULUS, DATA), 1)),
            returned("CKR_ATTRIBUTE_READ_ONLY (0x10): one of the attributes cannot be set",
                () -> C_SetAttributeValue(session, KEY, template(CKA.CLASS, CKO.DATA), 1)),
            returned("CKR_OBJECT_HANDLE_INVALID (0x82): there is no such object", () -> C_DestroyObject(session, NONE)),
            returned("CKR_FUNCTION_NOT_PARALLEL (0x51)", () -> C_GetFunctionStatus(session)),
            thrown("Vendor defined (0x80000129)", () -> new CK_RV(0x80000129L).orThrow()),
            thrown("0x7654", () -> new CK_RV(0x7654).orThrow()),
            thrown("No native form for java.lang.Character: use null,", () -> new CK_ATTRIBUTE(CKA.LABEL, (Object) 'c')),
            thrown("A token label has at most 32 bytes, not 34", () -> CK_TOKEN_INFO.paddedLabel("\u00e4".repeat(17))),
            thrown("A date has 8 bytes, not 6", () -> CK_DATE.fromBytes(new byte[6])),
            thrown("zerlin.jar " + version + " needs libzerlin.so " + version + ", found 3.9.9 at /x/libzerlin.so",
                () -> NativeLibrary.onLoad(ascii("3.9.9"), ascii("/x/libzerlin.so"))),
            unloadable("x/libzerlin.so: wrong ELF class: ELFCLASS64", "x/libzerlin.so is a 64-bit library, and this"),
            unloadable("libcryptoki.so: wrong ELF class: ELFCLASS64", "64-bit library, and this JVM is 32-bit: use"),
            unloadable("Illegal native access from: unnamed", "start it with --enable-native-access=ALL-UNNAMED"),
            unloadable("libcryptoki.so: cannot open shared object file: No such", "put it beside libzerlin.so or in"),
            unloadable("libcryptoki.so: undefined symbol: CT_CopyObject", "start with -Dhalvorn.zerlin.cryptoki=embedded"),
            unloadable("no zerlin in java.library.path: /usr/lib", "the JVM with -Djava.library.path=<its directory>"),
            unloadable("Can't load library: /x/libzerlin.so", "or with -Dhalvorn.zerlin.library=<the file>"),
            unloadable("Native Library /x already loaded in another classloader", "zerlin.jar in one class loader"),
            unloadable("libcryptoki.so is already loaded in this process, from /x", "use one JVM for each"),
            unloadable("Expecting an absolute path of the library: x", "zerlin.library must be an absolute path"),
            unloadable("zerlin.jar 3.10.1 needs libzerlin.so 3.10.1, found 3.10.0 at /x", "take both from one package"),
            unloadable("/tmp/x.so: failed to map segment from shared object", "(noexec): put the library elsewhere"),
            unloadable("Error relocating /x.so: __sprintf_chk: symbol not found", "does not run on musl (Alpine Linux)"),
            unloadable("/lib/libc.so.6: version `GLIBC_2.36' not found", "needs glibc 2.34 and the C++ library"),
            unloadable("/x/libhsm.so: cannot open shared object file", "correct halvorn.zerlin.cryptoki"),
            unloadable("libssl.so.3: cannot open shared object file", "needed has not found libssl.so.3: install it"));
    }
}
