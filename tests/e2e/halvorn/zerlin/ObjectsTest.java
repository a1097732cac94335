// Objects on the real soft token: created, copied, found, read, changed and destroyed.
package halvorn.zerlin;

import static halvorn.zerlin.TestToken.*;
import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;

import halvorn.zerlin.constants.*;

import java.util.*;
import java.util.stream.Stream;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.RegisterExtension;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;
import token.FreshToken;

class ObjectsTest {
    @RegisterExtension
    static final TestToken token = new TestToken();

    private static CK_OBJECT_HANDLE data(String label) {
        return token.create(template(CKA.CLASS, CKO.DATA, CKA.LABEL, label));
    }

    // One call in which the token returns some attributes and refuses others.
    @Test
    void aPartlyRefusedTemplateDeliversTheOtherValues() {
        // Not private: SoftHSM 2.6.1 cannot read the date of a private object.
        CK_OBJECT_HANDLE key = token.create(template(CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, CKK.AES,
                CKA.VALUE, new byte[16], CKA.LABEL, "label", CKA.SENSITIVE, true, CKA.PRIVATE, false,
                CKA.START_DATE, new CK_DATE(2024, 7, 15).toBytes(),
                CKA.ALLOWED_MECHANISMS, new long[] {CKM.AES_CBC, CKM.AES_ECB}));
        CK_MECHANISM_TYPE[] mechanisms = CK_MECHANISM_TYPE.array(3);
        CK_ATTRIBUTE[] all = template(CKA.VALUE, new byte[16], CKA.LABEL, new byte[3],
                CKA.MODULUS, new byte[9], CKA.START_DATE, new CK_DATE(), CKA.KEY_TYPE, new CK_KEY_TYPE(),
                CKA.TOKEN, new CK_BBOOL(true), CKA.ALLOWED_MECHANISMS, mechanisms, CKA.LABEL, null,
                CKA.VALUE_LEN, null);
        all[8] = new CK_ATTRIBUTE(CKA.VALUE_LEN, 0);
        assertFalse(Cryptoki.C_GetAttributeValue(token.session, key, all, all.length).is(CKR.OK));
        // Deliberate: the month is read from the year.
        assertEquals("2024-20-15 CKK_AES (0x1f) CK_FALSE 16",
                all[3].pValue + " " + all[4].pValue + " " + all[5].pValue + " " + all[8].pValue);
        assertEquals(Set.of(CKM.AES_CBC, CKM.AES_ECB), Set.of(mechanisms[0].m_value, mechanisms[1].m_value));
        assertEquals(0, mechanisms[2].m_value);
        long none = 4294967295L;
        assertArrayEquals(new long[] {none, none, none, 8, 4, 1, 8, 5, 4},
                Stream.of(all).mapToLong(attribute -> attribute.valueLen).toArray());
        assertArrayEquals(new byte[3], (byte[]) all[1].pValue);
    }

    // 200 objects, page by page; the page size need not divide their number.
    @ParameterizedTest
    @ValueSource(ints = {1, 7, 500})
    void aSearchDeliversEveryObjectOnce(int page) {
        Set<CK_OBJECT_HANDLE> expected = new HashSet<>();
        for (int i = 0; i < 200; i++) {
            expected.add(data("pages of " + page));
        }
        Cryptoki.C_FindObjectsInit(token.session, template(CKA.LABEL, "pages of " + page), 1).orThrow();
        LongRef count = new LongRef();
        Set<CK_OBJECT_HANDLE> found = new HashSet<>();
        do {
            CK_OBJECT_HANDLE[] handles = CK_OBJECT_HANDLE.array(page);
            Cryptoki.C_FindObjects(token.session, handles, page, count).orThrow();
            for (int i = 0; i < page; i++) {
                assertEquals(i < count.value, handles[i].m_value != 0 && found.add(handles[i]));
            }
        } while (count.value > 0);
        Cryptoki.C_FindObjectsFinal(token.session).orThrow();
        assertEquals(expected, found);
    }

    @Test
    void anObjectIsFoundChangedAndReadByItsLabel() {
        CK_OBJECT_HANDLE object = data("wanted");
        CK_OBJECT_HANDLE found = new CK_OBJECT_HANDLE(77);
        CK_OBJECT_CLASS data = new CK_OBJECT_CLASS(CKO.DATA);
        assertReturns(CKR.GENERAL_ERROR, CTUtil.CTU_FindObject(token.session, data, ascii("want"), found));
        assertEquals(77, found.m_value);
        assertReturns(CKR.OK, CTUtil.CTU_FindObject(token.session, data, ascii("wanted\0ignored"), found));
        assertEquals(object, found);

        CK_ATTRIBUTE_TYPE label = new CK_ATTRIBUTE_TYPE(CKA.LABEL);
        assertReturns(CKR.OK, CTUtil.CTU_SetAttributeValue(token.session, found, label, "new label", 3));
        byte[] value = new byte[4];
        LongRef length = new LongRef(-7);
        assertReturns(CKR.ATTRIBUTE_TYPE_INVALID,
                CTUtil.CTU_GetAttributeValue(token.session, found, label, value, 2, length));
        assertEquals(-7, length.value);
        assertReturns(CKR.OK, CTUtil.CTU_GetAttributeValue(token.session, found, label, value, 4, length));
        assertEquals(3, length.value);
        assertArrayEquals(ascii("new\0"), value);
    }

    @Test
    void anObjectIsCopiedBetweenTokens() {
        CK_SESSION_HANDLE target = openSession(FreshToken.create("target"), READ_WRITE);
        login(target, CKU.USER, USER_PIN).orThrow();
        CK_OBJECT_HANDLE key = token.secretKey(CKK.AES, ascii("sixteen bytes ok"));
        CK_OBJECT_HANDLE copy = new CK_OBJECT_HANDLE();
        assertReturns(CKR.OK, Cryptoki.CT_CopyObject(target, token.session, key,
                template(CKA.LABEL, "moved"), 1, copy));
        CK_ATTRIBUTE[] read = template(CKA.VALUE, new byte[16], CKA.LABEL, new byte[5]);
        Cryptoki.C_GetAttributeValue(target, copy, read, 2).orThrow();
        assertArrayEquals(ascii("sixteen bytes ok"), read[0].getBytes());
        assertArrayEquals(ascii("moved"), read[1].getBytes());
    }

    @Test
    void aHugeTemplateIsReadAndWritten() {
        int count = 10_000;
        CK_OBJECT_HANDLE object = data("huge");
        CK_ATTRIBUTE[] labels = Stream.generate(() -> CK_ATTRIBUTE.buffer(CKA.LABEL, 8)).limit(count)
            .toArray(CK_ATTRIBUTE[]::new);
        assertReturns(CKR.OK, Cryptoki.C_GetAttributeValue(token.session, object, labels, count));
        assertTrue(Stream.of(labels).allMatch(label -> Arrays.equals(ascii("huge"), label.getBytes())));

        Arrays.fill(labels, new CK_ATTRIBUTE(CKA.LABEL, "changed"));
        assertReturns(CKR.OK, Cryptoki.C_SetAttributeValue(token.session, object, labels, count));
        assertArrayEquals(ascii("changed"), token.read(object, CKA.LABEL));
    }
}
