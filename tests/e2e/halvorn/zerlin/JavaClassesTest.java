// What users and the native side rely on in the Java classes: one sweep over all classes that have fields, and what
// single classes add. That the natives find every field is tested by the unit tests.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.ascii;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.CK_SSL3_KEY_MAT_OUT;
import halvorn.zerlin.params.CK_SSL3_KEY_MAT_PARAMS;

import java.io.File;
import java.lang.reflect.*;
import java.net.URI;
import java.time.*;
import java.util.*;
import java.util.concurrent.*;
import java.util.jar.JarFile;
import java.util.stream.Stream;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.*;

class JavaClassesTest {
    // As text, as numbers, in hexadecimal digits and in Base64.
    private static final List<String> SECRET = List.of("hidden", "104, 105, 100", "686964", "aGlk", "[B@", "[C@");
    private static final Set<Class<?>> OTHERS = Set.of(CK_DATE.class, CK_C_INITIALIZE_ARGS.class);

    static Stream<Class<?>> classesWithFields() throws Exception {
        List<Class<?>> found = new ArrayList<>();
        URI jarFile = Cryptoki.class.getProtectionDomain().getCodeSource().getLocation().toURI();
        try (JarFile jar = new JarFile(new File(jarFile))) {
            for (var entry : Collections.list(jar.entries())) {
                String name = entry.getName();
                if (name.matches("halvorn/zerlin/[^$]*\\.class")) {
                    Class<?> cls = Class.forName(name.replace('/', '.').replaceFirst("\\.class$", ""), false,
                            JavaClassesTest.class.getClassLoader());
                    if (!Modifier.isAbstract(cls.getModifiers()) && !fields(cls).isEmpty() && !OTHERS.contains(cls)) {
                        found.add(cls);
                    }
                }
            }
        }
        assertTrue(found.size() > 40, "found only " + found);
        return found.stream();
    }

    private static List<Field> fields(Class<?> cls) {
        return Stream.of(cls.getFields()).filter(field -> !Modifier.isStatic(field.getModifiers())).toList();
    }

    // Calls the constructor that takes most. No two arguments are alike: lengths are odd, numbers multiples of 8.
    private static Object make(Class<?> cls, List<Object> arguments) throws Exception {
        Constructor<?> widest = Collections.max(List.of(cls.getConstructors()),
                Comparator.comparing(Constructor::getParameterCount));
        for (Class<?> type : widest.getParameterTypes()) {
            int number = 16 + 8 * arguments.size();
            Object secret = ascii("hidden".repeat(30).substring(0, number - 1));
            arguments.add(type == boolean.class ? Boolean.TRUE : type == int.class ? (Object) number
                    : type == long.class ? (Object) (long) number
                    : type == CK_OBJECT_HANDLE.class ? new CK_OBJECT_HANDLE(number)
                    : type == CK_MECHANISM_TYPE.class ? new CK_MECHANISM_TYPE(number)
                    : type == CK_ATTRIBUTE[].class ? new CK_ATTRIBUTE[] {new CK_ATTRIBUTE(CKA.LABEL, secret)} : secret);
        }
        return widest.newInstance(arguments.toArray());
    }

    // The numbers, arrays and booleans in an object and in its parts, in the order of the fields.
    private static List<Object> leaves(Object object) throws Exception {
        if (object == null || object.getClass().isArray() || object instanceof Boolean) {
            return Collections.singletonList(object);
        }
        if (object instanceof Number) {
            return List.of(((Number) object).longValue());
        }
        List<Object> all = new ArrayList<>();
        for (Field field : fields(object.getClass())) {
            all.addAll(leaves(field.get(object)));
        }
        return all;
    }

    @ParameterizedTest
    @MethodSource("classesWithFields")
    void constructorsFillTheFieldsAndSetTheLengths(Class<?> cls) throws Exception {
        List<Object> arguments = new ArrayList<>();
        Object made = make(cls, arguments);
        List<Object> given = new ArrayList<>();
        for (Object argument : arguments) {
            given.addAll(leaves(argument));
        }
        List<Object> kept = new ArrayList<>(leaves(made));
        kept.retainAll(given);
        if (cls != CK_SSL3_KEY_MAT_OUT.class) {
            assertEquals(given, kept);
        }
        for (Field array : fields(cls)) {
            for (Field length : fields(cls)) {
                if (length.getType() == long.class && !length.equals(array) && stem(length).equals(stem(array))
                        && !given.contains(length.get(made))) {
                    assertEquals(Array.getLength(array.get(made)), length.getLong(made), length.getName());
                }
            }
        }
    }

    // "password" for pPassword and passwordLen.
    private static String stem(Field field) {
        return field.getName().replaceFirst("^len$", "pDataLen").replaceFirst("^(p|ul)(?=[A-Z])", "")
            .replaceFirst("(Len|Count)(?=\\d?$)", "").toLowerCase(Locale.ROOT);
    }

    @ParameterizedTest
    @MethodSource("classesWithFields")
    void textsNameEveryFieldAndShowNoSecret(Class<?> cls) throws Exception {
        cls.getConstructor().newInstance().toString();
        Object made = make(cls, new ArrayList<>());
        String text = made.toString();
        for (String secret : SECRET) {
            assertFalse(text.contains(secret), text);
        }
        for (Field field : fields(cls)) {
            String start = text.contains("=") ? field.getName() + "=" : "";
            if (field.getType() == long.class) {
                long value = field.getLong(made);
                assertTrue(text.contains(start + value) || text.contains("0x" + Long.toHexString(value)), text);
            }
            assertTrue(!text.contains("[") || text.contains(start), text);
        }
    }

    @ParameterizedTest
    @MethodSource("classesWithFields")
    void equalObjectsHaveEqualFields(Class<?> cls) throws Exception {
        Object made = make(cls, new ArrayList<>());
        assertFalse(made.equals(null));
        assertFalse(made.equals(new CK_RV(16)) && cls != CK_RV.class);
        if (cls.getMethod("equals", Object.class).getDeclaringClass() != Object.class) {
            Object same = make(cls, new ArrayList<>());
            assertEquals(made, same);
            assertEquals(made.hashCode(), same.hashCode());
            for (Field field : fields(cls)) {
                Object changed = make(cls, new ArrayList<>());
                field.set(changed, field.get(cls.getConstructor().newInstance()));
                assertNotEquals(made, changed, field.getName());
            }
        }
    }

    @Test
    void datesAreEightDigits() {
        CK_DATE date = new CK_DATE(824, 7, 15);
        assertArrayEquals(ascii("08240715"), date.toBytes());
        assertEquals("0824-07-15", CK_DATE.fromBytes(ascii("08240715")).toString());
        assertEquals(date, CK_DATE.fromBytes(ascii("08240715")));
        assertEquals(date.hashCode(), CK_DATE.fromBytes(ascii("08240715")).hashCode());
        assertEquals(LocalDate.of(824, 7, 15), new CK_DATE(LocalDate.of(824, 7, 15)).toLocalDate());
        assertNotEquals(date, new CK_DATE(824, 7, 16));
        assertArrayEquals(new byte[8], new CK_DATE(new byte[0], null, new byte[1]).toBytes());
        assertThrows(IllegalArgumentException.class, () -> CK_DATE.fromBytes(new byte[7]));
        assertThrows(DateTimeException.class, () -> new CK_DATE(10_000, 1, 1));
        assertThrows(DateTimeException.class, () -> new CK_DATE(-100, 1, 1));
    }

    private static final int ULONG = NativeValue.ULONG_SIZE;

    static Object[][] valuesAndLengths() {
        return new Object[][] {
            {null, 0}, {new byte[5], 5}, {"", 0}, {"a\0b", 4}, {"\u07ff\u0800", 5}, {"\ud83d\ude00", 6},
            {1L << 40, ULONG}, {1, ULONG}, {(byte) 1, 1}, {true, 1}, {new CK_BBOOL(true), 1},
            {new CK_DATE(2024, 7, 15), 8}, {new CK_OBJECT_HANDLE(1), ULONG}, {new CK_SESSION_HANDLE(1), ULONG},
            {new CK_KEY_TYPE(CKK.AES), ULONG}, {CK_MECHANISM_TYPE.array(3), 3 * ULONG}, {new long[2], 2 * ULONG}, {new int[3], 3 * ULONG},
            {new boolean[3], 3}, {new char[3], 3}};
    }

    @ParameterizedTest
    @MethodSource("valuesAndLengths")
    void attributesAndMechanismsKnowTheLengthOfTheirValue(Object value, long length) {
        assertEquals(length, new CK_ATTRIBUTE(CKA.LABEL, value).valueLen);
        assertEquals(length, new CK_MECHANISM(CKM.AES_CBC, value).parameterLen);
    }

    @Test
    void lengthsBoundWhatIsReturned() {
        CK_ATTRIBUTE attribute = CK_ATTRIBUTE.buffer(CKA.LABEL, 4);
        assertArrayEquals(new byte[4], attribute.getBytes());
        attribute.valueLen = 2;
        assertArrayEquals(new byte[2], attribute.getBytes());
        attribute.valueLen = CK.UNAVAILABLE_INFORMATION;
        assertNull(attribute.getBytes());
        assertTrue(attribute.toString().endsWith("valueLen=unavailable]"), attribute.toString());
        assertThrows(IllegalArgumentException.class, () -> new CK_ATTRIBUTE(CKA.LABEL, new StringBuilder()));
        assertEquals(8, new CK_SSL3_KEY_MAT_PARAMS(0, 0, 57, false, null, null).pReturnedKeyMaterial.pIVServer.length);
        assertArrayEquals(new long[] {7, -1}, (long[]) new CK_ATTRIBUTE(CKA.ID, new int[] {7, -1}).pValue);
        assertArrayEquals(new long[] {7, -1}, (long[]) new CK_MECHANISM(1, new int[] {7, -1}).pParameter);
    }

    @Test
    void secretTextsAreShownByTheirLength() {
        for (Object secret : new Object[] {"hidden", "hidden".toCharArray(), ascii("hidden"), new long[] {104, 105, 100}}) {
            String texts = new CK_ATTRIBUTE(CKA.VALUE, secret) + " " + new CK_MECHANISM(CKM.AES_CBC, secret);
            assertTrue(SECRET.stream().noneMatch(texts::contains), texts);
        }
    }

    @Test
    void labelsArePaddedWithBlanks() {
        CK_TOKEN_INFO info = new CK_TOKEN_INFO();
        info.label = CK_TOKEN_INFO.paddedLabel("\u00e4 b");
        assertArrayEquals(ascii(" ".repeat(28)), Arrays.copyOfRange(info.label, 4, 32));
        assertEquals("\u00e4 b|", info.getLabel() + "|");
        info.model = ascii("m \0 \0");
        assertEquals("m", info.getModel());
        assertThrows(IllegalArgumentException.class, () -> CK_TOKEN_INFO.paddedLabel("x".repeat(33)));
    }

    // PKCS#11 lets a thread unlock what another one has locked.
    @Test
    void javaLockingLocks() throws Exception {
        CK_C_INITIALIZE_ARGS java = CK_C_INITIALIZE_ARGS.javaLocking();
        Object mutex = java.createMutex.CreateMutex();
        assertEquals(CKR.MUTEX_NOT_LOCKED, java.unlockMutex.UnlockMutex(mutex));
        assertEquals(CKR.OK, java.lockMutex.LockMutex(mutex));
        var second = CompletableFuture.supplyAsync(() -> java.lockMutex.LockMutex(mutex));
        assertThrows(TimeoutException.class, () -> second.get(20, TimeUnit.MILLISECONDS));
        assertEquals(CKR.OK, java.unlockMutex.UnlockMutex(mutex));
        assertEquals(CKR.OK, second.get(10, TimeUnit.SECONDS));
        assertEquals(CKR.OK, java.destroyMutex.DestroyMutex(mutex));
        for (Object bad : new Object[] {null, "mutex"}) {
            assertEquals(CKR.MUTEX_BAD, java.lockMutex.LockMutex(bad));
            assertEquals(CKR.MUTEX_BAD, java.unlockMutex.UnlockMutex(bad));
            assertEquals(CKR.MUTEX_BAD, java.destroyMutex.DestroyMutex(bad));
        }
    }

    @ParameterizedTest
    @CsvSource({"x/libzerlin.so: wrong ELF class: ELFCLASS64, 32, '\n- x/libzerlin.so is a 64-bit library, and this JVM is 32'",
        "x: libcryptoki.so: wrong ELF class: ELFCLASS32, 64, '\n- libcryptoki.so is a 32-bit library, and this JVM is 64'",
        "Illegal native access from x, 64, --enable-native-access=ALL-UNNAMED",
        "libcryptoki.so: cannot open, 32, put it beside libzerlin.so", "no zerlin in java.library.path, 32, -Djava.lib",
        "Can't load library: x, 32, -Dhalvorn.zerlin.library", "Expecting an absolute path, 32, must be an absolute",
        "already loaded in another classloader, 32, one class loader at a time"})
    void aFailedLoadIsExplained(String loaderText, String width, String help) {
        String text = NativeLibrary.explain(loaderText, "Linux i386", width);
        assertTrue(text.contains(loaderText) && text.contains("\n- ") && text.contains(help), text);
        assertEquals(2, text.lines().count(), text);
    }

    @SuppressWarnings({"deprecation", "removal"}) // The constructors of boxes create what valueOf does not.
    static Object[][] boxes() {
        return new Object[][] {
            {Boolean.TRUE, true}, {Boolean.FALSE, true}, {1L, true}, {-128L, true}, {127, true},
            {(byte) -1, true}, {Long.MAX_VALUE, false}, {new Long(1), false}, {new Boolean(true), false},
            {new CK_BBOOL(true), false}, {new byte[2], false}, {"text", false}};
    }

    // A native would change a cached box for the whole JVM.
    @ParameterizedTest
    @MethodSource("boxes")
    void attributesReplaceOnlyTheBoxesThatTheJvmShares(Object value, boolean replaced) {
        CK_ATTRIBUTE[] attributes = {new CK_ATTRIBUTE(CKA.VALUE, value),
            new CK_ATTRIBUTE(new CK_ATTRIBUTE_TYPE(CKA.VALUE), value), new CK_ATTRIBUTE(CKA.VALUE, value, 4)};
        for (CK_ATTRIBUTE attribute : attributes) {
            assertEquals(value, attribute.pValue);
            assertEquals(replaced, attribute.pValue != value);
        }
        if (replaced) {
            assertNotSame(attributes[0].pValue, attributes[1].pValue);
        }
    }

    static Object[][] typedValuesAndTexts() {
        return new Object[][] {
            {new CK_RV(0x150), "CKR_BUFFER_TOO_SMALL (0x150)"}, {new CK_RV(0x80001234L), "0x80001234"},
            {new CK_MECHANISM_TYPE(0x1082), "CKM_AES_CBC (0x1082)"}, {new CK_USER_TYPE(1), "CKU_USER (0x1)"},
            {new CK_KEY_TYPE(0x1f), "CKK_AES (0x1f)"}, {new CK_ATTRIBUTE_TYPE(3), "CKA_LABEL (0x3)"},
            {new CK_OBJECT_CLASS(4), "CKO_SECRET_KEY (0x4)"}, {new CK_CERTIFICATE_TYPE(0), "CKC_X_509 (0x0)"},
            {new CK_STATE(4), "CKS_RW_SO_FUNCTIONS (0x4)"}};
    }

    @ParameterizedTest
    @MethodSource("typedValuesAndTexts")
    void aTypedValuesTextIsItsName(TypedValue value, String text) {
        assertEquals(text, value.toString());
    }

    @Test
    void orThrowAcceptsWhatTheCallerAccepts() {
        CK_RV bad = new CK_RV(CKR.PIN_INCORRECT);
        assertTrue(new CK_RV(CKR.OK).orThrow(CKR.CANCEL).is(CKR.OK));
        assertSame(bad, bad.orThrow(CKR.CANCEL, CKR.PIN_INCORRECT));
        CryptokiException thrown = assertThrows(CryptokiException.class, () -> bad.orThrow("C_Login", CKR.CANCEL));
        assertTrue(thrown.getMessage().startsWith("C_Login: CKR_PIN_INCORRECT (0xa0): the PIN is wrong;"));
        assertEquals("Vendor defined (0x80000129)", new CryptokiException(new CK_RV(0x80000129L)).getMessage());
        assertTrue(thrown.is(CKR.PIN_INCORRECT) && thrown.getRV().equals(bad) && thrown.getCall().equals("C_Login"));
    }
}
