// Everything as it ships, over the soft token: templates, copies between tokens, and the vendor's functions. The
// examples and the endurance programs check the other functions and, with the JDK's help, the cryptography.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;
import static token.Session.*;

import halvorn.zerlin.constants.*;

import java.util.*;
import java.util.stream.Stream;

import org.junit.jupiter.api.*;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.aggregator.ArgumentsAccessor;
import org.junit.jupiter.params.provider.MethodSource;
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
        long ulong = NativeValue.ULONG_SIZE;
        assertArrayEquals(new long[] {none, none, none, 8, ulong, 1, 2 * ulong, 5, ulong},
                Stream.of(all).mapToLong(attribute -> attribute.valueLen).toArray());
        assertArrayEquals(new byte[3], (byte[]) all[1].pValue);
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
}
