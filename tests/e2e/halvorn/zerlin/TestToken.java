// A new token with a session for one test class, and shorthand that the tests share.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static token.FreshToken.*;

import halvorn.zerlin.constants.*;

import java.util.Arrays;
import java.util.stream.Stream;

import org.junit.jupiter.api.extension.*;
import token.FreshToken;

final class TestToken implements BeforeAllCallback, AfterAllCallback {
    /** A read/write session in which the user is logged in. */
    CK_SESSION_HANDLE session;

    @Override
    public void beforeAll(ExtensionContext context) {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
        session = openSession(FreshToken.create(context.getDisplayName()), READ_WRITE);
        login(session, CKU.USER, USER_PIN).orThrow();
    }

    @Override
    public void afterAll(ExtensionContext context) {
        Cryptoki.C_Finalize(null).orThrow();
    }

    /** Fails unless the call returned that value; the message names both values. */
    static void assertReturns(long expected, CK_RV answer) {
        assertEquals(new CK_RV(expected), answer);
    }

    /** Creates a template of alternating types and values. For input only, because values may be shared objects. */
    static CK_ATTRIBUTE[] template(Object... typesAndValues) {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[typesAndValues.length / 2];
        for (int i = 0; i < template.length; i++) {
            template[i] = new CK_ATTRIBUTE((Long) typesAndValues[2 * i], typesAndValues[2 * i + 1]);
        }
        return template;
    }

    CK_OBJECT_HANDLE create(CK_ATTRIBUTE... template) {
        CK_OBJECT_HANDLE object = new CK_OBJECT_HANDLE();
        Cryptoki.C_CreateObject(session, template, template.length, object).orThrow();
        return object;
    }

    /** The template of a secret key that can be read and used for everything, with more types and values. */
    static CK_ATTRIBUTE[] secretKeyTemplate(long keyType, Object... more) {
        Object[] first = {CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, keyType, CKA.SENSITIVE, false,
            CKA.EXTRACTABLE, true, CKA.ENCRYPT, true, CKA.DECRYPT, true, CKA.SIGN, true, CKA.VERIFY, true,
            CKA.WRAP, true, CKA.UNWRAP, true, CKA.DERIVE, true};
        return template(Stream.concat(Stream.of(first), Stream.of(more)).toArray());
    }

    CK_OBJECT_HANDLE secretKey(long keyType, byte[] value) {
        return create(secretKeyTemplate(keyType, CKA.VALUE, value));
    }

    byte[] read(CK_OBJECT_HANDLE object, long type) {
        CK_ATTRIBUTE value = CK_ATTRIBUTE.buffer(type, 1000);
        Cryptoki.C_GetAttributeValue(session, object, new CK_ATTRIBUTE[] {value}, 1).orThrow();
        return value.getBytes();
    }

    /** A native with an output array, such as C_SignFinal, with its other arguments bound. */
    interface Output {
        CK_RV call(byte[] array, LongRef length);
    }

    /** A native that makes bytes out of bytes, such as C_Encrypt. */
    interface Transformation {
        CK_RV call(CK_SESSION_HANDLE session, byte[] input, long inputLen, byte[] output, LongRef outputLen);
    }

    /** Asks for the length, then for the bytes. */
    static byte[] bytes(Output output) {
        LongRef length = new LongRef();
        output.call(null, length).orThrow();
        byte[] bytes = new byte[(int) length.value];
        output.call(bytes, length).orThrow();
        return Arrays.copyOf(bytes, (int) length.value);
    }

    byte[] whole(Transformation native_, byte[] input) {
        return bytes((array, length) -> native_.call(session, input, input.length, array, length));
    }

    byte[] encrypt(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        Cryptoki.C_EncryptInit(session, mechanism, key).orThrow();
        return whole(Cryptoki::C_Encrypt, data);
    }

    byte[] decrypt(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        Cryptoki.C_DecryptInit(session, mechanism, key).orThrow();
        return whole(Cryptoki::C_Decrypt, data);
    }

    byte[] sign(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        Cryptoki.C_SignInit(session, mechanism, key).orThrow();
        return whole(Cryptoki::C_Sign, data);
    }

    CK_RV verify(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data, byte[] signature) {
        Cryptoki.C_VerifyInit(session, mechanism, key).orThrow();
        return Cryptoki.C_Verify(session, data, data.length, signature, signature.length);
    }
}
