// Everything as it ships, over the soft token: objects, copies between tokens, PINs and logins, and cryptography
// that is compared with published vectors and the JDK. What the examples show and check is not repeated here.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;
import static token.Session.*;

import halvorn.zerlin.constants.*;

import java.util.*;
import java.util.stream.Stream;

import javax.crypto.Cipher;
import javax.crypto.spec.*;

import org.junit.jupiter.api.*;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.aggregator.ArgumentsAccessor;
import org.junit.jupiter.params.provider.*;
import token.FreshToken;
import token.Session;

class SoftTokenTest {
    private static final HexFormat HEX = HexFormat.of();
    private static Session own;
    private static Session other; // on another token

    @BeforeAll
    static void logIn() {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
        own = new Session(FreshToken.create("own"));
        other = new Session(FreshToken.create("other"));
        login(own.handle, CKU.USER, USER_PIN).orThrow();
        login(other.handle, CKU.USER, USER_PIN).orThrow();
    }

    @AfterAll
    static void finish() {
        Cryptoki.C_Finalize(null).orThrow();
    }

    private static void assertReturns(long expected, CK_RV answer) {
        assertEquals(new CK_RV(expected), answer);
    }

    // One call in which the token returns some attributes and refuses others.
    @Test
    void aPartlyRefusedTemplateDeliversTheOtherValues() {
        CK_OBJECT_HANDLE key = own.create(template(CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, CKK.AES,
                CKA.VALUE, new byte[16], CKA.LABEL, "label", CKA.SENSITIVE, true, CKA.PRIVATE, false,
                CKA.START_DATE, new CK_DATE(2024, 7, 15).toBytes(),
                CKA.ALLOWED_MECHANISMS, new long[] {CKM.AES_CBC, CKM.AES_ECB}));
        CK_MECHANISM_TYPE[] mechanisms = CK_MECHANISM_TYPE.array(3);
        CK_ATTRIBUTE[] all = template(CKA.VALUE, new byte[16], CKA.LABEL, new byte[3],
                CKA.MODULUS, new byte[9], CKA.START_DATE, new CK_DATE(), CKA.KEY_TYPE, new CK_KEY_TYPE(),
                CKA.TOKEN, new CK_BBOOL(true), CKA.ALLOWED_MECHANISMS, mechanisms, CKA.LABEL, null,
                CKA.VALUE_LEN, 0L);
        assertFalse(Cryptoki.C_GetAttributeValue(own.handle, key, all, all.length).is(CKR.OK));
        // Deliberate: the month is read from the year.
        assertEquals("2024-20-15 CKK_AES (0x1f) CK_FALSE 16",
                all[3].pValue + " " + all[4].pValue + " " + all[5].pValue + " " + all[8].pValue);
        assertEquals(Set.of(CKM.AES_CBC, CKM.AES_ECB), Set.of(mechanisms[0].m_value, mechanisms[1].m_value));
        assertEquals(0, mechanisms[2].m_value);
        long none = CK.UNAVAILABLE_INFORMATION;
        assertArrayEquals(new long[] {none, none, none, 8, 4, 1, 8, 5, 4},
                Stream.of(all).mapToLong(attribute -> attribute.valueLen).toArray());
        assertArrayEquals(new byte[3], (byte[]) all[1].pValue);
    }

    // The page size need not divide the number of objects.
    @ParameterizedTest
    @ValueSource(ints = {1, 7, 500})
    void aSearchDeliversEveryObjectOnce(int page) {
        CK_ATTRIBUTE[] data = template(CKA.LABEL, "pages of " + page, CKA.CLASS, CKO.DATA);
        Set<CK_OBJECT_HANDLE> expected = new HashSet<>();
        for (int i = 0; i < 40; i++) {
            expected.add(own.create(data));
        }
        Cryptoki.C_FindObjectsInit(own.handle, data, 2).orThrow();
        LongRef count = new LongRef();
        Set<CK_OBJECT_HANDLE> found = new HashSet<>();
        do {
            CK_OBJECT_HANDLE[] handles = CK_OBJECT_HANDLE.array(page);
            Cryptoki.C_FindObjects(own.handle, handles, page, count).orThrow();
            for (int i = 0; i < page; i++) {
                assertEquals(i < count.value, handles[i].m_value != 0 && found.add(handles[i]));
            }
        } while (count.value > 0);
        Cryptoki.C_FindObjectsFinal(own.handle).orThrow();
        assertEquals(expected, found);
    }

    @Test
    void anObjectIsFoundChangedAndReadByItsLabel() {
        CK_OBJECT_CLASS data = new CK_OBJECT_CLASS(CKO.DATA);
        CK_OBJECT_HANDLE object = own.create(template(CKA.CLASS, CKO.DATA, CKA.LABEL, "wanted"));
        CK_OBJECT_HANDLE found = new CK_OBJECT_HANDLE(77);
        assertReturns(CKR.GENERAL_ERROR, CTUtil.CTU_FindObject(own.handle, data, ascii("want"), found));
        assertEquals(77, found.m_value);
        assertReturns(CKR.OK, CTUtil.CTU_FindObject(own.handle, data, ascii("wanted\0ignored"), found));
        assertEquals(object, found);

        CK_ATTRIBUTE_TYPE label = new CK_ATTRIBUTE_TYPE(CKA.LABEL);
        assertReturns(CKR.OK, CTUtil.CTU_SetAttributeValue(own.handle, found, label, "new label", 3));
        byte[] value = new byte[4];
        LongRef length = new LongRef(-7);
        assertReturns(CKR.ATTRIBUTE_TYPE_INVALID,
                CTUtil.CTU_GetAttributeValue(own.handle, found, label, value, 2, length));
        assertEquals(-7, length.value);
        assertReturns(CKR.OK, CTUtil.CTU_GetAttributeValue(own.handle, found, label, value, 4, length));
        assertEquals(3, length.value);
        assertArrayEquals(ascii("new\0"), value);
    }

    // Values that a token would not choose itself. SoftHSM 2.6.1 cannot read the dates of private objects.
    static Object[][] objects() {
        byte[] id = {1};
        byte[] date = new CK_DATE(2024, 7, 15).toBytes();
        Object[] key = {CKA.ID, id, CKA.LABEL, "key", CKA.DERIVE, true, CKA.SENSITIVE, false, CKA.EXTRACTABLE, true,
            CKA.WRAP_WITH_TRUSTED, true, CKA.ALLOWED_MECHANISMS, new long[] {CKM.AES_CBC}, CKA.DECRYPT, false,
            CKA.SIGN, false, CKA.UNWRAP, false};
        return new Object[][] {
            {CKA.CLASS, CKO.DATA, CKA.TOKEN, true, CKA.PRIVATE, false, CKA.MODIFIABLE, false, CKA.LABEL, "a",
                CKA.APPLICATION, "desk", CKA.OBJECT_ID, id, CKA.VALUE, "words"},
            {CKA.CLASS, CKO.DATA, CKA.PRIVATE, true, CKA.VALUE, "private words"},
            {CKA.CLASS, CKO.CERTIFICATE, CKA.CERTIFICATE_TYPE, CKC.X_509, CKA.SUBJECT, id, CKA.ISSUER, id,
                CKA.SERIAL_NUMBER, id, CKA.VALUE, id, CKA.ID, id, CKA.PRIVATE, false, CKA.CERTIFICATE_CATEGORY, 2L,
                CKA.START_DATE, date, CKA.END_DATE, date},
            {CKA.CLASS, CKO.PUBLIC_KEY, CKA.KEY_TYPE, CKK.RSA, CKA.SUBJECT, id, CKA.ID, id, CKA.DERIVE, true,
                CKA.ENCRYPT, false, CKA.VERIFY, false, CKA.VERIFY_RECOVER, false, CKA.WRAP, false, CKA.MODULUS, id,
                CKA.PUBLIC_EXPONENT, id, CKA.ALLOWED_MECHANISMS, new long[] {CKM.RSA_PKCS}},
            {CKA.CLASS, CKO.PUBLIC_KEY, CKA.KEY_TYPE, CKK.EC, CKA.EC_PARAMS, id, CKA.EC_POINT, id},
            with(key, CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, CKK.AES, CKA.VALUE, new byte[16], CKA.PRIVATE, false,
                CKA.ENCRYPT, false, CKA.VERIFY, false, CKA.WRAP, false, CKA.START_DATE, date, CKA.END_DATE, date),
            with(key, CKA.CLASS, CKO.PRIVATE_KEY, CKA.KEY_TYPE, CKK.RSA, CKA.SUBJECT, id,
                CKA.SIGN_RECOVER, false, CKA.ALWAYS_AUTHENTICATE, true, CKA.MODULUS, id, CKA.PUBLIC_EXPONENT, id,
                CKA.PRIVATE_EXPONENT, id, CKA.PRIME_1, id, CKA.PRIME_2, id, CKA.EXPONENT_1, id,
                CKA.EXPONENT_2, id, CKA.COEFFICIENT, id),
            with(key, CKA.CLASS, CKO.PRIVATE_KEY, CKA.KEY_TYPE, CKK.DSA, CKA.PRIME, id, CKA.SUBPRIME, id, CKA.BASE, id,
                CKA.VALUE, id),
            {CKA.CLASS, CKO.DOMAIN_PARAMETERS, CKA.KEY_TYPE, CKK.DSA, CKA.PRIME, id, CKA.SUBPRIME, id,
                CKA.BASE, id}};
    }

    private static Object[] with(Object[] first, Object... more) {
        return Stream.concat(Stream.of(first), Stream.of(more)).toArray();
    }

    @ParameterizedTest
    @MethodSource("objects")
    void aCopyHasEveryAttributeOfItsSource(ArgumentsAccessor typesAndValues) throws Exception {
        CK_ATTRIBUTE[] template = template(typesAndValues.toArray());
        CK_OBJECT_HANDLE source = own.create(template);
        Map<String, String> expected = readAll(own, source);
        for (CK_ATTRIBUTE given : template) {
            assertTrue(expected.containsKey(given.type.toString()), given.type.toString());
        }
        for (Session target : List.of(own, other)) {
            CK_OBJECT_HANDLE copy = new CK_OBJECT_HANDLE();
            Cryptoki.CT_CopyObject(target.handle, own.handle, source, null, 0, copy).orThrow();
            assertEquals(expected, readAll(target, copy));
        }
    }

    private static Map<String, String> readAll(Session session, CK_OBJECT_HANDLE object) throws Exception {
        Map<String, String> found = new TreeMap<>();
        for (var constant : CKA.class.getFields()) {
            CK_ATTRIBUTE one = CK_ATTRIBUTE.buffer(constant.getLong(null), 100);
            if (Cryptoki.C_GetAttributeValue(session.handle, object, new CK_ATTRIBUTE[] {one}, 1).isOk()) {
                found.put(one.type.toString(), HEX.formatHex(one.getBytes()));
            }
        }
        return found;
    }

    @Test
    void tokensAreInitialisedAndResetFromSessions() {
        long empty = FreshToken.find("never initialised");
        byte[] label = CK_TOKEN_INFO.paddedLabel("third");
        assertReturns(CKR.OK, Cryptoki.CT_InitToken(own.handle, empty, SO_PIN, SO_PIN.length, label));
        long slot = FreshToken.find("third");
        assertEquals("third", tokenInfo(slot).getLabel());

        FreshToken.initialise(slot, "third");
        Session third = new Session(slot);
        CK_ATTRIBUTE[] data = template(CKA.CLASS, CKO.DATA, CKA.PRIVATE, false, CKA.TOKEN, true, CKA.LABEL, "gone");
        login(third.handle, CKU.USER, USER_PIN).orThrow();
        third.create(data);
        assertReturns(CKR.PIN_INCORRECT, Cryptoki.CT_ResetToken(third.handle, USER_PIN, USER_PIN.length, null));
        assertReturns(CKR.OK, Cryptoki.CT_ResetToken(new Session(slot).handle, SO_PIN, SO_PIN.length, null));
        assertEquals("third", tokenInfo(slot).getLabel());
        assertReturns(CKR.GENERAL_ERROR, CTUtil.CTU_FindObject(new Session(slot).handle,
                new CK_OBJECT_CLASS(CKO.DATA), ascii("gone"), new CK_OBJECT_HANDLE()));
    }

    @Test
    void aLoginHoldsInEverySessionOfTheToken() {
        long slot = FreshToken.create("logins");
        CK_SESSION_HANDLE reader = openSession(slot, READ_ONLY);
        CK_SESSION_HANDLE writer = openSession(slot, READ_WRITE);
        assertReturns(CKR.PIN_INCORRECT, login(reader, CKU.USER, SO_PIN));
        assertReturns(CKR.OK, login(reader, CKU.USER, USER_PIN));
        CK_SESSION_INFO info = new CK_SESSION_INFO();
        assertReturns(CKR.OK, Cryptoki.C_GetSessionInfo(writer, info));
        assertEquals(new CK_STATE(CKS.RW_USER_FUNCTIONS), info.state);
        assertReturns(CKR.OK, Cryptoki.C_CloseAllSessions(slot));
        assertReturns(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_CloseSession(reader));
    }

    // NIST SP 800-38A, F.1.1; RFC 4493, example 2; FIPS 180.
    @ParameterizedTest
    @CsvSource({
        "AES_ECB, 2b7e151628aed2a6abf7158809cf4f3c, 6bc1bee22e409f96e93d7e117393172a, 3ad77bb40d7a3660a89ecaf32466ef97",
        "AES_CMAC, 2b7e151628aed2a6abf7158809cf4f3c, 6bc1bee22e409f96e93d7e117393172a,"
            + "070a16b46b4d4144f79bdd9dd04a287c",
        "SHA_1, , 616263, a9993e364706816aba3e25717850c26c9cd0d89d"})
    void resultsMatchPublishedVectors(String name, String key, String text, String expected) throws Exception {
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.class.getField(name).getLong(null));
        byte[] in = HEX.parseHex(text);
        if (key == null) {
            Cryptoki.C_DigestInit(own.handle, mechanism).orThrow();
            assertEquals(expected, HEX.formatHex(own.whole(Cryptoki::C_Digest, in)));
            return;
        }
        CK_OBJECT_HANDLE handle = own.secretKey(CKK.AES, HEX.parseHex(key));
        byte[] out = name.endsWith("ECB") ? own.encrypt(mechanism, handle, in) : own.sign(mechanism, handle, in);
        assertEquals(expected, HEX.formatHex(out));
    }

    @Test
    void aMebibyteIsEncryptedAsByTheJdk() throws Exception {
        byte[] text = new byte[1 << 20];
        new Random(1).nextBytes(text);
        byte[] key = Arrays.copyOf(text, 32);
        byte[] iv = Arrays.copyOf(text, 16);
        Cipher jdk = Cipher.getInstance("AES/CBC/PKCS5Padding");
        jdk.init(Cipher.ENCRYPT_MODE, new SecretKeySpec(key, "AES"), new IvParameterSpec(iv));
        byte[] expected = jdk.doFinal(text);
        CK_OBJECT_HANDLE handle = own.secretKey(CKK.AES, key);
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_CBC_PAD, iv);
        assertArrayEquals(expected, own.encrypt(mechanism, handle, text));
        assertArrayEquals(text, own.decrypt(mechanism, handle, expected));
    }
}
