// What users and the native side rely on in the Java classes: one sweep over all classes that have fields, and what
// single classes add. That the natives find every field is tested by the unit tests.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.*;
import static org.junit.platform.commons.support.ReflectionSupport.*;
import static token.FreshToken.ascii;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.lang.reflect.*;
import java.nio.file.*;
import java.time.DateTimeException;
import java.util.*;
import java.util.concurrent.CompletableFuture;
import java.util.regex.Pattern;
import java.util.stream.Stream;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.*;

class JavaClassesTest {
    static List<Class<?>> classesWithFields() {
        return findAllClassesInPackage("halvorn.zerlin", cls -> cls.getConstructors().length > 1 && !fields(cls).isEmpty(),
                name -> !name.matches(".*CK_(DATE|C_INITIALIZE_ARGS)"));
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
            arguments.add(type == boolean.class ? Boolean.TRUE
                    : type == int.class ? (Object) number : type == long.class ? (Object) (long) number
                    : type == CK_OBJECT_HANDLE.class ? new CK_OBJECT_HANDLE(number)
                    : type == CK_MECHANISM_TYPE.class ? new CK_MECHANISM_TYPE(number)
                    : type == CK_RSA_PKCS_OAEP_PARAMS.class ? new CK_RSA_PKCS_OAEP_PARAMS(number, number + 1, null)
                    : type == CK_ATTRIBUTE[].class ? new CK_ATTRIBUTE[] {new CK_ATTRIBUTE(CKA.LABEL, secret)} : secret);
        }
        return widest.newInstance(arguments.toArray());
    }

    // The numbers, arrays and booleans in an object and in its parts, in the order of the fields.
    private static Stream<Object> leaves(Object object) {
        List<Field> fields = object == null ? List.of() : fields(object.getClass());
        return !fields.isEmpty()
            ? fields.stream().flatMap(field -> leaves(tryToReadFieldValue(field, object).toOptional().orElse(null)))
            : Stream.ofNullable(object instanceof Number ? (Object) ((Number) object).longValue() : object);
    }

    // "password" for pPassword and passwordLen.
    private static String stem(Field field) {
        return field.getName().replaceFirst("^len$", "data").replaceAll("^(p|ul)(?=[A-Z])|(Len|Count)(?=\\d?$)", "")
            .toLowerCase(Locale.ROOT);
    }

    @ParameterizedTest
    @MethodSource("classesWithFields")
    void objectsHoldTheirArgumentsShowNoSecretAndEqualTheirLike(Class<?> cls) throws Exception {
        List<Object> arguments = new ArrayList<>();
        Object made = make(cls, arguments);
        List<Object> given = arguments.stream().flatMap(JavaClassesTest::leaves).toList();
        // The one class is given the length of its vectors only.
        assertEquals(cls == CK_SSL3_KEY_MAT_OUT.class ? List.of() : given, leaves(made).filter(given::contains).toList());
        // As text, as numbers, in hexadecimal digits and in Base64.
        String text = made.toString();
        assertFalse(text.matches(".*(hidden|104, 105, 100|686964|aGlk|\\[B@|\\[C@).*"), text);
        for (Field field : fields(cls)) {
            assertTrue(!text.contains("=") || text.contains(field.getName() + "="), text);
            long value = field.getType() == long.class ? field.getLong(made) : 0;
            assertTrue(value == 0 || text.contains("" + value) || text.contains("0x" + Long.toHexString(value)), text);
            boolean mayBeLength = value != 0 && !given.contains(value);
            for (Field other : fields(cls)) {
                boolean isItsArray = mayBeLength && other.getType().isArray() && stem(other).equals(stem(field));
                assertTrue(!isItsArray || Array.getLength(other.get(made)) == value, text);
            }
        }
        Object same = make(cls, new ArrayList<>());
        boolean isValue = cls.getMethod("equals", Object.class).getDeclaringClass() != Object.class;
        assertEquals(isValue, made.equals(same));
        assertTrue(!isValue || made.hashCode() == same.hashCode());
        Object empty = cls.getConstructor().newInstance();
        assertNotEquals(made, empty, empty.toString());
        assertEquals(cls == CK_RV.class, made.equals(new CK_RV(16)));
    }

    @Test
    void datesAreEightDigitsAndLabelsPaddedWithBlanks() {
        CK_DATE date = new CK_DATE(824, 7, 15);
        assertArrayEquals(ascii("08240715"), date.toBytes());
        assertEquals(date, CK_DATE.fromBytes(ascii("08240715")));
        assertEquals("0824-07-15", date.toLocalDate().toString());
        assertArrayEquals(new byte[8], new CK_DATE(new byte[0], null, new byte[3]).toBytes());
        assertThrows(DateTimeException.class, () -> new CK_DATE(10_000, 1, 1));
        CK_TOKEN_INFO info = new CK_TOKEN_INFO();
        info.label = CK_TOKEN_INFO.paddedLabel("\u00e4 b");
        assertArrayEquals(ascii(" ".repeat(28)), Arrays.copyOfRange(info.label, 4, 32));
        info.model = ascii("m \0 \0");
        assertEquals("\u00e4 b, m", info.getLabel() + ", " + info.getModel());
        info.sessionCount = CK.UNAVAILABLE_INFORMATION;
        assertTrue(info.toString().contains(", sessionCount=unavailable, "), info::toString);
    }

    private static final int ULONG = NativeValue.ULONG_SIZE;

    // Values, their native lengths, and whether the JVM shares the box: a native would change it for the whole JVM.
    static Object[][] values() {
        return new Object[][] {{null, 0, false}, {new byte[5], 5, false}, {"a\0b\u07ff\u0800\ud83d\ude00", 15, false},
            {1L << 40, ULONG, false}, {-128L, ULONG, true}, {127, ULONG, true}, {(byte) 1, 1, true}, {true, 1, true},
            {false, 1, true}, {new CK_BBOOL(true), 1, false}, {new CK_DATE(2024, 7, 15), 8, false},
            {new CK_OBJECT_HANDLE(1), ULONG, false}, {new CK_KEY_TYPE(CKK.AES), ULONG, false},
            {CK_MECHANISM_TYPE.array(3), 3 * ULONG, false}, {new long[2], 2 * ULONG, false}, {new char[3], 3, false}};
    }

    @ParameterizedTest
    @MethodSource("values")
    void attributesKnowTheLengthOfTheirValueAndReplaceSharedBoxes(Object value, long length, boolean isShared) {
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_CBC, value);
        assertEquals(length, mechanism.parameterLen);
        for (CK_ATTRIBUTE attribute : List.of(new CK_ATTRIBUTE(3, value), new CK_ATTRIBUTE(3, value, length))) {
            assertEquals(length, attribute.valueLen);
            assertEquals(value, attribute.pValue);
            assertEquals(isShared, attribute.pValue != value);
            String text = attribute + " " + mechanism;
            boolean isSecret = value instanceof String || value != null && value.getClass().isArray();
            assertEquals(isSecret, text.matches("(?s).* of " + length + " bytes.* of " + length + " bytes.*"), text);
        }
    }

    @Test
    void attributesReturnWhatTheirLengthBounds() {
        CK_ATTRIBUTE attribute = CK_ATTRIBUTE.buffer(CKA.LABEL, 4);
        assertArrayEquals(new byte[4], attribute.getBytes());
        attribute.valueLen = 2;
        assertArrayEquals(new byte[2], attribute.getBytes());
        attribute.valueLen = CK.UNAVAILABLE_INFORMATION;
        assertNull(attribute.getBytes());
        // Of an int[], the natives pass every second element only.
        assertArrayEquals(new long[] {7, -1}, (long[]) new CK_ATTRIBUTE(CKA.ID, new int[] {7, -1}).pValue);
        assertArrayEquals(new long[] {7, -1}, (long[]) new CK_MECHANISM(1, new int[] {7, -1}).pParameter);
    }

    // PKCS#11 lets a thread unlock what another one has locked. That locks exclude is tested by Callers.
    @Test
    void javaMutexesAreUnlockedByAnyThread() {
        CK_C_INITIALIZE_ARGS java = CK_C_INITIALIZE_ARGS.javaLocking();
        Object mutex = java.createMutex.CreateMutex();
        assertEquals(CKR.OK, java.lockMutex.LockMutex(mutex));
        assertEquals(CKR.OK, CompletableFuture.supplyAsync(() -> java.unlockMutex.UnlockMutex(mutex)).join());
        assertEquals(CKR.MUTEX_NOT_LOCKED, java.unlockMutex.UnlockMutex(mutex));
        assertEquals(CKR.MUTEX_BAD, java.lockMutex.LockMutex("mutex"));
    }

    // CKN_ has no class, because this library passes on no notification callbacks. For what only Java has, compare the
    // printed list with the standard before you change the digest.
    @Test
    void constantsAreThoseOfTheHeaderAndOfTheStandard() throws Exception {
        Set<String> header = new TreeSet<>();
        Pattern.compile("(?m)^#define ((?!CKN_)CK[A-Z]_\\w+)\\s+(0x[0-9A-F]+)UL\\b")
            .matcher(Files.readString(Path.of(System.getProperty("zerlin.header")))).results()
            .forEach(define -> header.add(define.group(1) + " = " + Long.decode(define.group(2))));
        Set<String> java = new TreeSet<>();
        for (Class<?> holder : findAllClassesInPackage("halvorn.zerlin.constants",
                cls -> cls.getSimpleName().matches("CK[A-Z]"), name -> true)) {
            Map<Object, String> first = new HashMap<>();
            for (Field field : holder.getFields()) {
                String name = holder.getSimpleName() + "_" + field.getName();
                Object value = field.get(null);
                java.add(name + " = " + value);
                first.putIfAbsent(value, name);
                Method of = holder.getMethod("of", String.class);
                assertEquals(List.of(value, value), List.of(of.invoke(null, name), of.invoke(null, field.getName())));
                assertEquals(first.get(value), holder.getMethod("nameOf", long.class).invoke(null, value));
            }
        }
        Set<String> onlyJava = new TreeSet<>(java);
        onlyJava.removeAll(header);
        header.removeAll(java);
        assertEquals(Set.of(), header);
        assertEquals("f3b6f3c0", Integer.toHexString(onlyJava.toString().hashCode()), onlyJava::toString);
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', value = {"LABLE | There is no CKA_LABLE; the nearest name is CKA_LABEL",
        "CKA_ValueLen | There is no CKA_ValueLen; the nearest name is CKA_VALUE_LEN",
        "CKM_AES_CBC | CKM_AES_CBC does not begin with CKA_: look it up with CKM.of",
        "'' | There is no CKA_; see the constants of halvorn.zerlin.constants.CKA"})
    void unknownNamesAreRefusedWithTheNearest(String name, String message) {
        assertEquals(message, assertThrows(IllegalArgumentException.class, () -> CKA.of(name)).getMessage());
        assertNull(CKA.nameOf(0x7fffffff));
    }

    // An object, two flags with their names, and the 32 bits without those that have names.
    static Object[][] flags() {
        return new Object[][] {{new CK_SLOT_INFO(), 5, "TOKEN_PRESENT|HW_SLOT", 0xfffffff8L},
            {new CK_TOKEN_INFO(), 0x40004, "LOGIN_REQUIRED|USER_PIN_LOCKED", 0xfe00f090L},
            {new CK_SESSION_INFO(), 6, "RW_SESSION|SERIAL_SESSION", 0xfffffff9L},
            {new CK_MECHANISM_INFO(), 0x800002, "MESSAGE_ENCRYPT|EC_NAMEDCURVE", 0x780000c0L}};
    }

    @ParameterizedTest
    @MethodSource("flags")
    void flagsPrintByNameAndUnknownOnesInHexadecimal(Object info, long two, String names, long unnamed) throws Exception {
        Field flags = info.getClass().getField("flags");
        assertTrue(info.toString().contains("flags=0"), info::toString);
        flags.setLong(info, two | 0x40000000);
        assertTrue(info.toString().contains("flags=" + names + "|0x40000000"), info::toString);
        flags.setLong(info, 0xffffffffL);
        assertTrue(info.toString().contains("|0x" + Long.toHexString(unnamed)), info::toString);
    }

    // Of two names for one value the first prints, so that the value must print too.
    @Test
    void typedValuesPrintTheirNamesAndThrow() {
        assertEquals("[CKR_OK (0x0), 0x80001234, CKM_AES_CBC (0x1082), CKU_USER (0x1), CKK_AES (0x1f), CKA_LABEL (0x3), "
                + "CKM_AES_CMAC_GENERAL (0x1089), CKM_AES_CMAC_GENERAL_STD (0x108b), CKK_CAST128 (0x18)]",
                List.of(new CK_RV(0), new CK_RV(0x80001234L), new CK_MECHANISM_TYPE(0x1082), new CK_USER_TYPE(1),
                    new CK_KEY_TYPE(0x1f), new CK_ATTRIBUTE_TYPE(3), new CK_MECHANISM_TYPE(CKM.AES_CTS),
                    new CK_MECHANISM_TYPE(CKM.AES_CMAC_GENERAL_STD), new CK_KEY_TYPE(CKK.CAST5)).toString());
        CK_RV bad = new CK_RV(CKR.PIN_INCORRECT);
        assertSame(bad, bad.orThrow(CKR.CANCEL, CKR.PIN_INCORRECT));
        CryptokiException thrown = assertThrows(CryptokiException.class, () -> bad.orThrow("C_Login", CKR.CANCEL));
        assertTrue(thrown.is(CKR.PIN_INCORRECT) && thrown.getRV().equals(bad) && thrown.getCall().equals("C_Login"));
    }
}
