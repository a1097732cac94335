// Objects on the real soft token: made, copied, found, read, changed and destroyed.
package halvorn.zerlin;

import static halvorn.zerlin.SoftToken.*;
import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.*;

import halvorn.zerlin.constants.*;

import java.util.Arrays;
import java.util.HashSet;
import java.util.Set;
import java.util.stream.IntStream;
import java.util.stream.Stream;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.RegisterExtension;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.MethodSource;
import org.junit.jupiter.params.provider.ValueSource;

class ObjectsTest {
    private static final long UNAVAILABLE = 4294967295L;

    @RegisterExtension
    static final SoftToken token = new SoftToken();

    private static CK_OBJECT_HANDLE data(String label, Object... more) {
        Object[] first = {CKA.CLASS, CKO.DATA, CKA.LABEL, label, CKA.VALUE, ascii("value of " + label)};
        return token.create(Stream.concat(Stream.of(first), Stream.of(more)).toArray());
    }

    private static CK_OBJECT_HANDLE sensitiveKey(Object... more) {
        Object[] first = {CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, CKK.AES, CKA.VALUE, new byte[16],
            CKA.LABEL, "label", CKA.SENSITIVE, true};
        return token.create(Stream.concat(Stream.of(first), Stream.of(more)).toArray());
    }

    private static CK_RV getAttributes(CK_OBJECT_HANDLE object, CK_ATTRIBUTE... template) {
        return Cryptoki.C_GetAttributeValue(token.session, object, template, template.length);
    }

    private static CK_RV setAttributes(CK_OBJECT_HANDLE object, Object... typesAndValues) {
        CK_ATTRIBUTE[] template = template(typesAndValues);
        return Cryptoki.C_SetAttributeValue(token.session, object, template, template.length);
    }

    @Test
    void anObjectLivesFromCreateToDestroy() {
        CK_OBJECT_HANDLE object = data("first", CKA.APPLICATION, "tests \u20ac");
        assertArrayEquals(ascii("value of first"), token.read(object, CKA.VALUE));
        assertArrayEquals("tests \u20ac".getBytes(UTF_8), token.read(object, CKA.APPLICATION));
        assertAnswers(CKR.OK, setAttributes(object, CKA.LABEL, "renamed"));
        assertArrayEquals(ascii("renamed"), token.read(object, CKA.LABEL));
        assertAnswers(CKR.OK, setAttributes(object, CKA.LABEL, new byte[0]));
        assertArrayEquals(new byte[0], token.read(object, CKA.LABEL));

        CK_OBJECT_HANDLE copy = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] change = template(CKA.LABEL, "copy");
        assertAnswers(CKR.OK, Cryptoki.C_CopyObject(token.session, object, change, 1, copy));
        assertArrayEquals(ascii("copy"), token.read(copy, CKA.LABEL));
        assertArrayEquals(token.read(object, CKA.APPLICATION), token.read(copy, CKA.APPLICATION));

        LongRef size = new LongRef(-1);
        assertAnswers(CKR.OK, Cryptoki.C_GetObjectSize(token.session, object, size));
        assertEquals(UNAVAILABLE, size.value, "this token does not tell");
        assertAnswers(CKR.OK, Cryptoki.C_DestroyObject(token.session, object));
        for (CK_OBJECT_HANDLE gone : new CK_OBJECT_HANDLE[] {object, null, new CK_OBJECT_HANDLE()}) {
            assertAnswers(CKR.OBJECT_HANDLE_INVALID, Cryptoki.C_DestroyObject(token.session, gone));
            assertAnswers(CKR.OBJECT_HANDLE_INVALID, getAttributes(gone, new CK_ATTRIBUTE(CKA.LABEL, null)));
            size.value = 77;
            assertAnswers(CKR.OBJECT_HANDLE_INVALID, Cryptoki.C_GetObjectSize(token.session, gone, size));
            assertEquals(77, size.value);
        }
        assertArrayEquals(ascii("copy"), token.read(copy, CKA.LABEL));
    }

    static Object[][] refusedTemplates() {
        return new Object[][] {
            {CKR.ARGUMENTS_BAD, null, 1},
            {CKR.TEMPLATE_INCOMPLETE, template(CKA.LABEL, "no class"), 1},
            {CKR.ATTRIBUTE_TYPE_INVALID, template(CKA.CLASS, CKO.DATA, CKA.MODULUS, "9"), 2},
            {CKR.ATTRIBUTE_VALUE_INVALID, template(CKA.CLASS, CKO.DATA, CKA.TOKEN, "yes"), 2}};
    }

    @ParameterizedTest
    @MethodSource("refusedTemplates")
    void aBadTemplateMakesNoObject(long answer, CK_ATTRIBUTE[] template, long count) {
        CK_OBJECT_HANDLE object = new CK_OBJECT_HANDLE(77);
        assertAnswers(answer, Cryptoki.C_CreateObject(token.session, template, count, object));
        assertEquals(77, object.m_value);
    }

    // One call in which some attributes are served and some are refused.
    @Test
    void aMixedTemplateDeliversAllThatTheTokenServed() {
        // Not private: SoftHSM 2.6.1 cannot read the date of a private object.
        CK_OBJECT_HANDLE key = sensitiveKey(CKA.PRIVATE, false, CKA.ID, ascii("four"), CKA.ENCRYPT, true,
                CKA.START_DATE, new CK_DATE(2024, 7, 15).toBytes(),
                CKA.ALLOWED_MECHANISMS, new long[] {CKM.AES_CBC, CKM.AES_ECB});
        CK_MECHANISM_TYPE[] mechanisms = CK_MECHANISM_TYPE.array(3);
        mechanisms[2].m_value = 77;
        CK_ATTRIBUTE label = CK_ATTRIBUTE.buffer(CKA.LABEL, 64);
        CK_ATTRIBUTE secret = CK_ATTRIBUTE.buffer(CKA.VALUE, 16);
        Arrays.fill((byte[]) secret.pValue, (byte) 9);
        CK_ATTRIBUTE length = new CK_ATTRIBUTE(CKA.VALUE_LEN, 0);
        CK_ATTRIBUTE encrypt = new CK_ATTRIBUTE(CKA.ENCRYPT, false);
        CK_ATTRIBUTE unknown = new CK_ATTRIBUTE(CKA.MODULUS_BITS, 77);
        CK_ATTRIBUTE date = new CK_ATTRIBUTE(CKA.START_DATE, new CK_DATE());
        CK_ATTRIBUTE dateBytes = CK_ATTRIBUTE.buffer(CKA.START_DATE, 8);
        CK_ATTRIBUTE tooSmall = CK_ATTRIBUTE.buffer(CKA.ID, 3);
        CK_ATTRIBUTE keyType = new CK_ATTRIBUTE(CKA.KEY_TYPE, new CK_KEY_TYPE());
        CK_ATTRIBUTE objectClass = new CK_ATTRIBUTE(CKA.CLASS, new CK_OBJECT_CLASS());
        CK_ATTRIBUTE allowed = new CK_ATTRIBUTE(CKA.ALLOWED_MECHANISMS, mechanisms);
        CK_ATTRIBUTE lengthOnly = new CK_ATTRIBUTE(CKA.ID, null);

        CK_RV answer = getAttributes(key, label, secret, length, encrypt, unknown, date, dateBytes, tooSmall,
                keyType, objectClass, allowed, lengthOnly);
        assertTrue(answer.is(CKR.ATTRIBUTE_SENSITIVE) || answer.is(CKR.ATTRIBUTE_TYPE_INVALID)
                || answer.is(CKR.BUFFER_TOO_SMALL), answer.toString());
        assertArrayEquals(ascii("label"), label.getBytes());
        assertEquals(16L, length.pValue);
        assertEquals(new CK_BBOOL(true), encrypt.pValue);
        assertArrayEquals(ascii("20240715"), dateBytes.getBytes());
        // The month is filled from the year: wanted.
        assertEquals("2024-20-15", date.pValue.toString());
        assertEquals(new CK_KEY_TYPE(CKK.AES), keyType.pValue);
        assertEquals(new CK_OBJECT_CLASS(CKO.SECRET_KEY), objectClass.pValue);
        assertEquals(Set.of(CKM.AES_CBC, CKM.AES_ECB), Set.of(mechanisms[0].m_value, mechanisms[1].m_value));
        assertEquals(77, mechanisms[2].m_value);
        long[] lengths = Stream.of(length, encrypt, date, keyType, objectClass, allowed, lengthOnly)
            .mapToLong(attribute -> attribute.valueLen).toArray();
        assertArrayEquals(new long[] {4, 1, 8, 4, 4, 8, 4}, lengths);

        for (CK_ATTRIBUTE refused : new CK_ATTRIBUTE[] {secret, unknown, tooSmall}) {
            assertEquals(UNAVAILABLE, refused.valueLen, refused.toString());
        }
        assertEquals(77L, unknown.pValue);
        assertArrayEquals(new byte[3], (byte[]) tooSmall.pValue);
        byte[] nines = new byte[16];
        Arrays.fill(nines, (byte) 9);
        assertArrayEquals(nines, (byte[]) secret.pValue);
    }

    @Test
    void aValueOfAClassThatCannotBeFilledIsAnException() {
        CK_OBJECT_HANDLE object = data("unfillable");
        assertThrows(UnsupportedOperationException.class,
                () -> getAttributes(object, new CK_ATTRIBUTE(CKA.LABEL, "a String is immutable")));
        CK_ATTRIBUTE[] strange = {new CK_ATTRIBUTE(CKA.LABEL, new Object(), 4)};
        assertThrows(UnsupportedOperationException.class,
                () -> Cryptoki.C_SetAttributeValue(token.session, object, strange, 1));
        assertArrayEquals(ascii("unfillable"), token.read(object, CKA.LABEL));
    }

    @Test
    void changesThatTheTokenForbidsAreRefused() {
        CK_OBJECT_HANDLE object = data("fixed", CKA.MODIFIABLE, false);
        assertAnswers(CKR.ACTION_PROHIBITED, setAttributes(object, CKA.LABEL, "changed"));
        assertAnswers(CKR.ATTRIBUTE_READ_ONLY, setAttributes(data("free"), CKA.CLASS, CKO.DATA));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_SetAttributeValue(token.session, object, null, 1));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_GetAttributeValue(token.session, object, null, 1));

        CK_OBJECT_HANDLE onToken = data("on the token", CKA.TOKEN, true);
        CK_SESSION_HANDLE reader = openSession(token.slot, READ_ONLY);
        assertAnswers(CKR.SESSION_READ_ONLY, Cryptoki.C_DestroyObject(reader, onToken));
        assertAnswers(CKR.SESSION_READ_ONLY,
                Cryptoki.C_SetAttributeValue(reader, onToken, template(CKA.LABEL, "changed"), 1));
        assertAnswers(CKR.OK, Cryptoki.C_DestroyObject(token.session, onToken));
    }

    // 200 objects, page by page; the page size need not divide their number.
    @ParameterizedTest
    @ValueSource(ints = {1, 7, 100, 500})
    void aSearchDeliversEveryObjectOnce(int page) {
        Set<CK_OBJECT_HANDLE> expected = new HashSet<>();
        IntStream.range(0, 200).forEach(i -> expected.add(data("object " + i, CKA.APPLICATION, "this")));
        data("another application", CKA.APPLICATION, "other");

        LongRef count = new LongRef();
        CK_OBJECT_HANDLE[] untouched = {new CK_OBJECT_HANDLE(77)};
        assertAnswers(CKR.OPERATION_NOT_INITIALIZED,
                Cryptoki.C_FindObjects(token.session, untouched, 1, count));
        assertEquals(77, untouched[0].m_value);
        Cryptoki.C_FindObjectsInit(token.session, template(CKA.APPLICATION, "this"), 1).orThrow();
        assertAnswers(CKR.OPERATION_ACTIVE, Cryptoki.C_FindObjectsInit(token.session, null, 0));
        Set<CK_OBJECT_HANDLE> found = new HashSet<>();
        do {
            CK_OBJECT_HANDLE[] handles = CK_OBJECT_HANDLE.array(page);
            Cryptoki.C_FindObjects(token.session, handles, page, count).orThrow();
            for (int i = 0; i < page; i++) {
                assertEquals(i < count.value, handles[i].m_value != 0 && found.add(handles[i]));
            }
        } while (count.value > 0);
        assertAnswers(CKR.OK, Cryptoki.C_FindObjectsFinal(token.session));
        assertAnswers(CKR.OPERATION_NOT_INITIALIZED, Cryptoki.C_FindObjectsFinal(token.session));
        assertEquals(expected, found);
    }

    @Test
    void anObjectIsFoundAndUsedByItsLabel() {
        CK_OBJECT_HANDLE object = data("wanted");
        data("wanted too");
        CK_OBJECT_HANDLE found = new CK_OBJECT_HANDLE(77);
        CK_OBJECT_CLASS data = new CK_OBJECT_CLASS(CKO.DATA);
        for (String missing : new String[] {"absent", "WANTED", "want"}) {
            assertAnswers(CKR.GENERAL_ERROR,
                    CTUtil.CTU_FindObject(token.session, data, ascii(missing), found));
        }
        assertAnswers(CKR.GENERAL_ERROR, CTUtil.CTU_FindObject(token.session,
                new CK_OBJECT_CLASS(CKO.SECRET_KEY), ascii("wanted"), found));
        assertAnswers(CKR.ARGUMENTS_BAD, CTUtil.CTU_FindObject(token.session, data, ascii("wanted"), null));
        assertEquals(77, found.m_value);
        assertAnswers(CKR.OK, CTUtil.CTU_FindObject(token.session, data, ascii("wanted\0ignored"), found));
        assertEquals(object, found);

        CK_ATTRIBUTE_TYPE label = new CK_ATTRIBUTE_TYPE(CKA.LABEL);
        assertAnswers(CKR.OK, CTUtil.CTU_SetAttributeValue(token.session, found, label, "new label", 3));
        assertArrayEquals(ascii("new"), token.read(object, CKA.LABEL));
        assertAnswers(CKR.ATTRIBUTE_READ_ONLY, CTUtil.CTU_SetAttributeValue(token.session, found,
                new CK_ATTRIBUTE_TYPE(CKA.TOKEN), new CK_BBOOL(true), 1));
    }

    // What is read, with which capacity, the answer, and the length told (-7: untouched).
    @ParameterizedTest
    @CsvSource({
        "LABEL,  8, OK, 5", "LABEL, 5, OK, 5", "LABEL, 0, OK, 5", "LABEL, 4, ATTRIBUTE_TYPE_INVALID, -7",
        "VALUE, 8, ATTRIBUTE_SENSITIVE, -7", "MODULUS, 8, ATTRIBUTE_TYPE_INVALID, -7"})
    void oneAttributeIsReadOrRefused(String type, int capacity, String answer, long length) throws Exception {
        byte[] value = new byte[capacity];
        LongRef told = new LongRef(-7);
        CK_ATTRIBUTE_TYPE read = new CK_ATTRIBUTE_TYPE(CKA.class.getField(type).getLong(null));
        assertAnswers(CKR.class.getField(answer).getLong(null),
                CTUtil.CTU_GetAttributeValue(token.session, sensitiveKey(), read, value, capacity, told));
        assertEquals(length, told.value);
        boolean filled = answer.equals("OK") && capacity > 0;
        assertArrayEquals(filled ? Arrays.copyOf(ascii("label"), capacity) : new byte[capacity], value);
    }

    static Object[][] readableValues() {
        return new Object[][] {
            {CKA.KEY_TYPE, new CK_KEY_TYPE(77), 4, new CK_KEY_TYPE(CKK.GENERIC_SECRET)},
            {CKA.CLASS, new CK_OBJECT_CLASS(77), 4, new CK_OBJECT_CLASS(CKO.SECRET_KEY)},
            {CKA.TOKEN, new CK_BBOOL(true), 1, new CK_BBOOL(false)},
            {CKA.VALUE_LEN, new CK_ATTRIBUTE(0, 77).pValue, 4, 20L},
            {CKA.KEY_GEN_MECHANISM, new CK_MECHANISM_TYPE(77), 4, new CK_MECHANISM_TYPE(UNAVAILABLE)},
            {CKA.CLASS, new CK_OBJECT_HANDLE(77), 4, new CK_OBJECT_HANDLE(CKO.SECRET_KEY)}};
    }

    @ParameterizedTest
    @MethodSource("readableValues")
    void oneAttributeIsReadIntoAnObjectOfItsKind(long type, Object value, long capacity, Object expected) {
        CK_OBJECT_HANDLE key = token.secretKey(CKK.GENERIC_SECRET, new byte[20]);
        LongRef told = new LongRef();
        assertAnswers(CKR.OK, CTUtil.CTU_GetAttributeValue(token.session, key, new CK_ATTRIBUTE_TYPE(type),
                value, capacity, told));
        assertEquals(capacity, told.value);
        assertEquals(expected, value);
    }

    @Test
    void anObjectIsCopiedBetweenTokens() {
        CK_SESSION_HANDLE target = openSession(freshToken("target"), READ_WRITE);
        login(target, CKU.USER, USER_PIN).orThrow();
        CK_OBJECT_HANDLE key = token.secretKey(CKK.AES, ascii("sixteen bytes ok"));
        CK_ATTRIBUTE[] change = template(CKA.LABEL, "moved", CKA.SIGN, false);
        CK_OBJECT_HANDLE copy = new CK_OBJECT_HANDLE();
        assertAnswers(CKR.OK, Cryptoki.CT_CopyObject(target, token.session, key, change, 2, copy));

        CK_ATTRIBUTE value = CK_ATTRIBUTE.buffer(CKA.VALUE, 16);
        CK_ATTRIBUTE label = CK_ATTRIBUTE.buffer(CKA.LABEL, 16);
        CK_ATTRIBUTE sign = new CK_ATTRIBUTE(CKA.SIGN, true);
        CK_ATTRIBUTE[] template = {value, label, sign};
        Cryptoki.C_GetAttributeValue(target, copy, template, template.length).orThrow();
        assertArrayEquals(ascii("sixteen bytes ok"), value.getBytes());
        assertArrayEquals(ascii("moved"), label.getBytes());
        assertEquals(new CK_BBOOL(false), sign.pValue);

        CK_SESSION_HANDLE sameToken = openSession(token.slot, READ_WRITE);
        assertAnswers(CKR.OK, Cryptoki.CT_CopyObject(sameToken, token.session, key, change, 1, copy));
        assertArrayEquals(ascii("moved"), token.read(copy, CKA.LABEL));
        assertAnswers(CKR.ATTRIBUTE_SENSITIVE,
                Cryptoki.CT_CopyObject(target, token.session, sensitiveKey(), null, 0, copy));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.CT_CopyObject(target, token.session, key, null, 1, copy));
        Cryptoki.C_CloseSession(target).orThrow();
    }

    @Test
    void aTemplateMayBeHuge() {
        int count = 10_000;
        CK_OBJECT_HANDLE object = data("huge");
        CK_ATTRIBUTE[] labels = Stream.generate(() -> CK_ATTRIBUTE.buffer(CKA.LABEL, 8)).limit(count)
            .toArray(CK_ATTRIBUTE[]::new);
        assertAnswers(CKR.OK, getAttributes(object, labels));
        assertTrue(Stream.of(labels).allMatch(label -> Arrays.equals(ascii("huge"), label.getBytes())));

        CK_ATTRIBUTE[] same = Stream.generate(() -> new CK_ATTRIBUTE(CKA.LABEL, "huge")).limit(count)
            .toArray(CK_ATTRIBUTE[]::new);
        assertAnswers(CKR.OK, Cryptoki.C_SetAttributeValue(token.session, object, same, count));
        CK_OBJECT_HANDLE found = new CK_OBJECT_HANDLE();
        Cryptoki.C_FindObjectsInit(token.session, same, count).orThrow();
        Cryptoki.C_FindObjects(token.session, new CK_OBJECT_HANDLE[] {found}, 1, new LongRef()).orThrow();
        assertEquals(object, found);
        Cryptoki.C_FindObjectsFinal(token.session).orThrow();

        same[0] = new CK_ATTRIBUTE(CKA.CLASS, CKO.DATA);
        found.m_value = 77;
        assertAnswers(CKR.TEMPLATE_INCONSISTENT, Cryptoki.C_CreateObject(token.session, same, count, found));
        assertEquals(77, found.m_value);
    }
}
