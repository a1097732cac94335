// What one thread does in its own session in every round: some hundred calls of every kind, wrong ones among
// them, with every result checked.

import static token.FreshToken.*;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.io.ByteArrayOutputStream;
import java.security.MessageDigest;
import java.util.Arrays;
import java.util.Random;

final class Work {
    static final String LABEL = "endurance"; // of the token
    private static final byte[] P256 = {6, 8, 0x2a, (byte) 0x86, 0x48, (byte) 0xce, 0x3d, 3, 1, 7};
    private static final int ROUNDS_BETWEEN_SLOW_CALLS = 64;

    // Whether the Cryptoki library does what it is asked. The one that does nothing returns CKR_OK to every call.
    private final boolean isReal;
    // In SoftHSM 2.6.1 a search sometimes returns CKR_GENERAL_ERROR while another thread creates an object, if the
    // user is logged in or the object is stored on the token. So only a thread that works alone does either.
    private final boolean isAlone;
    private final long slot;
    private final CK_SESSION_HANDLE session;
    private final Random random;
    private final String label;
    private CK_OBJECT_HANDLE[] rsa;
    private CK_OBJECT_HANDLE[] ec;
    private int rounds;
    private long calls;

    Work(long slot, boolean isReal, boolean isAlone, int seed) {
        this.slot = slot;
        this.isReal = isReal;
        this.isAlone = isAlone;
        random = new Random(seed);
        label = "work " + seed;
        session = openSession(slot, READ_WRITE);
        if (isAlone) {
            login(session, CKU.USER, USER_PIN).orThrow();
        }
    }

    long calls() {
        return calls;
    }

    void round() throws Exception {
        try {
            makeAllCalls();
        } catch (RuntimeException e) {
            throw new IllegalStateException(label + ", round " + rounds, e);
        }
    }

    private void makeAllCalls() throws Exception {
        information();
        names();
        objects();
        ciphers();
        digests();
        keys();
        randomBytes();
        wrongCalls();
        if (rounds++ % ROUNDS_BETWEEN_SLOW_CALLS == 0) {
            keyPairs();
            parameters();
            if (isAlone) {
                tokenObject();
            }
        }
        signatures();
    }

    private void information() {
        CK_SESSION_HANDLE other = openSession(slot, READ_WRITE);
        CK_SESSION_INFO info = new CK_SESSION_INFO();
        ok(Cryptoki.C_GetSessionInfo(other, info));
        expect(info.flags == READ_WRITE, "session info");
        ok(Cryptoki.C_CloseSession(other));
        answers(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_CloseSession(other));
        ok(Cryptoki.C_GetInfo(new CK_INFO()));
        ok(Cryptoki.C_GetSlotInfo(slot, new CK_SLOT_INFO()));
        CK_TOKEN_INFO token = new CK_TOKEN_INFO();
        ok(Cryptoki.C_GetTokenInfo(slot, token));
        expect(token.getLabel().equals(LABEL), "token info");
        LongRef count = new LongRef();
        ok(Cryptoki.C_GetMechanismList(slot, null, count));
        ok(Cryptoki.C_GetMechanismList(slot, CK_MECHANISM_TYPE.array((int) count.value), count));
        ok(Cryptoki.C_GetMechanismInfo(slot, new CK_MECHANISM_TYPE(CKM.AES_CBC), new CK_MECHANISM_INFO()));
    }

    private void names() {
        CK_MECHANISM_TYPE type = new CK_MECHANISM_TYPE(CKM.AES_CBC);
        byte[] name = bytes((array, length) -> CTUtil.CTU_GetMechanismTypeString(type, array, length));
        always(Arrays.equals(ascii("AES_CBC"), name), "name");
        CK_MECHANISM_TYPE found = CTUtil.CTU_GetMechanismTypeValue(name);
        always(found.getValue() == CKM.AES_CBC, "value of a name");
        CK_ATTRIBUTE_TYPE none = CTUtil.CTU_GetAttributeTypeValue(ascii("no such name"));
        always(none.getValue() == CK.UNAVAILABLE_INFORMATION, "value of no name");
        CK_RV unknown = new CK_RV(0x80001234L);
        expect(bytes((array, length) -> CTUtil.CTU_GetErrorString(unknown, array, length)).length > 12, "error name");
        answers(CKR.DATA_LEN_RANGE, CTUtil.CTU_GetMechanismTypeString(type, new byte[1], new LongRef(1)));
        calls += 3;
    }

    private void objects() {
        byte[] value = data(1 + random.nextInt(300));
        CK_OBJECT_HANDLE object = create(template(CKA.CLASS, CKO.DATA, CKA.LABEL, label, CKA.PRIVATE, false,
                CKA.VALUE, value));
        CK_OBJECT_HANDLE found = new CK_OBJECT_HANDLE();
        ok(CTUtil.CTU_FindObject(session, new CK_OBJECT_CLASS(CKO.DATA), ascii(label), found));
        expect(found.getValue() == object.getValue(), "found object");
        CK_ATTRIBUTE[] read = {CK_ATTRIBUTE.buffer(CKA.VALUE, 300),
            new CK_ATTRIBUTE(CKA.CLASS, new CK_OBJECT_CLASS()), new CK_ATTRIBUTE(CKA.PRIVATE, true),
            CK_ATTRIBUTE.buffer(CKA.MODULUS, 8), new CK_ATTRIBUTE(CKA.LABEL, null)};
        answers(CKR.ATTRIBUTE_TYPE_INVALID, Cryptoki.C_GetAttributeValue(session, object, read, read.length));
        expect(Arrays.equals(value, read[0].getBytes()), "value read");
        CK_ATTRIBUTE[] change = template(CKA.LABEL, label + " changed");
        ok(Cryptoki.C_SetAttributeValue(session, object, change, 1));
        CK_OBJECT_HANDLE copy = new CK_OBJECT_HANDLE();
        ok(Cryptoki.C_CopyObject(session, object, change, 1, copy));
        ok(Cryptoki.C_FindObjectsInit(session, change, 1));
        LongRef count = new LongRef();
        ok(Cryptoki.C_FindObjects(session, CK_OBJECT_HANDLE.array(5), 5, count));
        expect(count.value == 2, "objects found: " + count.value);
        ok(Cryptoki.C_FindObjectsFinal(session));
        ok(Cryptoki.C_GetObjectSize(session, object, new LongRef()));
        ok(Cryptoki.C_DestroyObject(session, object));
        ok(Cryptoki.C_DestroyObject(session, copy));
        answers(CKR.OBJECT_HANDLE_INVALID, Cryptoki.C_DestroyObject(session, object));
    }

    private void ciphers() {
        CK_OBJECT_HANDLE key = secretKey(CKK.AES, data(32));
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_CBC_PAD, data(16));
        byte[] clear = data(rounds % 16 == 0 ? 70_000 : random.nextInt(200));
        ok(Cryptoki.C_EncryptInit(session, mechanism, key));
        byte[] secret = whole(Cryptoki::C_Encrypt, clear);
        ok(Cryptoki.C_DecryptInit(session, mechanism, key));
        expect(Arrays.equals(clear, whole(Cryptoki::C_Decrypt, secret)), "decrypted");
        ok(Cryptoki.C_EncryptInit(session, mechanism, key));
        ByteArrayOutputStream parts = new ByteArrayOutputStream();
        parts.writeBytes(whole(Cryptoki::C_EncryptUpdate, clear));
        parts.writeBytes(bytes((array, length) -> Cryptoki.C_EncryptFinal(session, array, length)));
        expect(Arrays.equals(secret, parts.toByteArray()), "encrypted in parts");
        ok(Cryptoki.C_DestroyObject(session, key));
    }

    private void digests() throws Exception {
        byte[] text = data(random.nextInt(500));
        byte[] expected = MessageDigest.getInstance("SHA-256").digest(text);
        ok(Cryptoki.C_DigestInit(session, new CK_MECHANISM(CKM.SHA256)));
        answers(CKR.BUFFER_TOO_SMALL, Cryptoki.C_Digest(session, text, text.length, new byte[5], new LongRef(5)));
        expect(Arrays.equals(expected, whole(Cryptoki::C_Digest, text)), "digest");
        ok(Cryptoki.C_DigestInit(session, new CK_MECHANISM(CKM.SHA256)));
        ok(Cryptoki.C_DigestUpdate(session, text, text.length));
        expect(Arrays.equals(expected, bytes((a, length) -> Cryptoki.C_DigestFinal(session, a, length))), "digest");
    }

    private void keys() {
        CK_OBJECT_HANDLE wrapping = secretKey(CKK.AES, data(16));
        CK_MECHANISM wrap = new CK_MECHANISM(CKM.AES_KEY_WRAP_STD);
        CK_ATTRIBUTE[] template = keyTemplate(CKK.AES, CKA.VALUE_LEN, 32);
        CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE();
        ok(Cryptoki.C_GenerateKey(session, new CK_MECHANISM(CKM.AES_KEY_GEN), template, template.length, key));
        byte[] wrapped = bytes((a, length) -> Cryptoki.C_WrapKey(session, wrap, wrapping, key, a, length));
        CK_OBJECT_HANDLE unwrapped = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] without = keyTemplate(CKK.AES);
        ok(Cryptoki.C_UnwrapKey(session, wrap, wrapping, wrapped, wrapped.length, without, without.length,
                unwrapped));
        expect(Arrays.equals(read(key), read(unwrapped)), "unwrapped key");
        for (CK_OBJECT_HANDLE object : new CK_OBJECT_HANDLE[] {wrapping, key, unwrapped}) {
            ok(Cryptoki.C_DestroyObject(session, object));
        }
    }

    private void randomBytes() {
        byte[] bytes = new byte[32];
        ok(Cryptoki.C_SeedRandom(session, bytes, bytes.length));
        ok(Cryptoki.C_GenerateRandom(session, bytes, bytes.length));
        expect(!Arrays.equals(bytes, new byte[32]), "random bytes");
    }

    private void wrongCalls() {
        CK_SESSION_HANDLE wrong = new CK_SESSION_HANDLE(0x7fffffff);
        answers(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_GetSessionInfo(wrong, new CK_SESSION_INFO()));
        answers(CKR.USER_TYPE_INVALID, login(session, 9, USER_PIN));
        CK_MECHANISM cipher = new CK_MECHANISM(CKM.AES_CBC, new byte[16]);
        CK_RV answer = Cryptoki.C_EncryptInit(session, cipher, new CK_OBJECT_HANDLE(0x7ffffffe));
        answers(CKR.OBJECT_HANDLE_INVALID, answer);
        always(Cryptoki.C_GetSlotInfo(slot, null).is(CKR.ARGUMENTS_BAD), "no argument");
        CK_ATTRIBUTE[] unsupported = template(CKA.LABEL, label);
        unsupported[0].pValue = new StringBuilder();
        refuses(() -> Cryptoki.C_CreateObject(session, unsupported, 1, new CK_OBJECT_HANDLE()));
        CK_MECHANISM odd = new CK_MECHANISM(CKM.AES_CBC);
        odd.pParameter = new StringBuilder();
        odd.parameterLen = 4;
        refuses(() -> Cryptoki.C_DigestInit(session, odd));
    }

    private void keyPairs() {
        destroy(rsa);
        destroy(ec);
        if (rsa == null || rounds % (16 * ROUNDS_BETWEEN_SLOW_CALLS) == 1) { // an RSA key takes longest
            rsa = pair(CKM.RSA_PKCS_KEY_PAIR_GEN, template(CKA.MODULUS_BITS, 1024, CKA.PUBLIC_EXPONENT,
                    new byte[] {1, 0, 1}, CKA.VERIFY, true));
        }
        ec = pair(CKM.EC_KEY_PAIR_GEN, template(CKA.EC_PARAMS, P256, CKA.VERIFY, true));
        CK_ATTRIBUTE[] point = {CK_ATTRIBUTE.buffer(CKA.EC_POINT, 100)};
        ok(Cryptoki.C_GetAttributeValue(session, ec[0], point, 1));
        byte[] octets = isReal ? Arrays.copyOfRange(point[0].getBytes(), 2, 67) : new byte[65];
        CK_MECHANISM ecdh = new CK_MECHANISM(CKM.ECDH1_DERIVE_STD,
                new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, octets));
        CK_ATTRIBUTE[] template = keyTemplate(CKK.GENERIC_SECRET, CKA.VALUE_LEN, 32);
        CK_OBJECT_HANDLE derived = new CK_OBJECT_HANDLE();
        ok(Cryptoki.C_DeriveKey(session, ecdh, ec[1], template, template.length, derived));
        expect(read(derived).length == 32, "derived key");
        ok(Cryptoki.C_DestroyObject(session, derived));
    }

    private CK_OBJECT_HANDLE[] pair(long type, CK_ATTRIBUTE[] forPublic) {
        CK_OBJECT_HANDLE[] made = CK_OBJECT_HANDLE.array(2);
        CK_ATTRIBUTE[] forPrivate = template(CKA.PRIVATE, false, CKA.SIGN, true, CKA.DERIVE, true);
        ok(Cryptoki.C_GenerateKeyPair(session, new CK_MECHANISM(type), forPublic, forPublic.length, forPrivate,
                forPrivate.length, made[0], made[1]));
        return made;
    }

    private void destroy(CK_OBJECT_HANDLE[] pair) {
        if (pair == null || pair == rsa && rounds % (16 * ROUNDS_BETWEEN_SLOW_CALLS) != 1) {
            return;
        }
        for (CK_OBJECT_HANDLE object : pair) {
            ok(Cryptoki.C_DestroyObject(session, object));
        }
    }

    private void signatures() {
        byte[] text = data(40);
        CK_OBJECT_HANDLE key = secretKey(CKK.GENERIC_SECRET, data(40));
        verified(new CK_MECHANISM(CKM.SHA256_HMAC), key, key, text);
        ok(Cryptoki.C_DestroyObject(session, key));
        if (rounds % 8 == 0) {
            verified(new CK_MECHANISM(CKM.SHA256_RSA_PKCS_PSS,
                    new CK_RSA_PKCS_PSS_PARAMS(CKM.SHA256, CKG.MGF1_SHA256, 32)), rsa[1], rsa[0], text);
            verified(new CK_MECHANISM(CKM.ECDSA), ec[1], ec[0], Arrays.copyOf(text, 32));
        }
    }

    private void verified(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, CK_OBJECT_HANDLE check, byte[] text) {
        ok(Cryptoki.C_SignInit(session, mechanism, key));
        byte[] signature = whole(Cryptoki::C_Sign, text);
        ok(Cryptoki.C_VerifyInit(session, mechanism, check));
        ok(Cryptoki.C_Verify(session, text, text.length, signature, signature.length));
        signature[7] ^= 1;
        ok(Cryptoki.C_VerifyInit(session, mechanism, check));
        answers(CKR.SIGNATURE_INVALID, Cryptoki.C_Verify(session, text, text.length, signature, signature.length));
    }

    // Nested parameters, and parameters with results written back. No soft token supports these mechanisms.
    private void parameters() {
        byte[] bytes = data(28);
        CK_ATTRIBUTE[] certificate = template(CKA.LABEL, label);
        CK_MECHANISM[] mechanisms = {
            new CK_MECHANISM(CKM.PBE_MD2_DES_CBC, new CK_PBE_PARAMS(bytes, bytes, 10)),
            new CK_MECHANISM(CKM.SSL3_KEY_AND_MAC_DERIVE,
                    new CK_SSL3_KEY_MAT_PARAMS(8, 8, 64, false, bytes, bytes)),
            new CK_MECHANISM(CKM.SSL3_MASTER_KEY_DERIVE, new CK_SSL3_MASTER_KEY_DERIVE_PARAMS(bytes, bytes)),
            new CK_MECHANISM(CKM.PKCS12_PBE_IMPORT,
                    new CK_PKCS12_PBE_IMPORT_PARAMS(bytes, bytes, certificate, 3))};
        for (CK_MECHANISM mechanism : mechanisms) {
            CK_RV answer = Cryptoki.C_DeriveKey(session, mechanism, ec[1], null, 0, new CK_OBJECT_HANDLE());
            expect(!answer.isOk(), "derived by " + mechanism);
            calls++;
        }
    }

    private void tokenObject() {
        CK_OBJECT_HANDLE object = create(template(CKA.CLASS, CKO.DATA, CKA.TOKEN, true, CKA.LABEL, label,
                CKA.VALUE, data(100)));
        ok(Cryptoki.C_DestroyObject(session, object));
    }

    private CK_OBJECT_HANDLE create(CK_ATTRIBUTE[] template) {
        CK_OBJECT_HANDLE object = new CK_OBJECT_HANDLE();
        ok(Cryptoki.C_CreateObject(session, template, template.length, object));
        return object;
    }

    private CK_OBJECT_HANDLE secretKey(long type, byte[] value) {
        return create(keyTemplate(type, CKA.VALUE, value));
    }

    private byte[] read(CK_OBJECT_HANDLE key) {
        CK_ATTRIBUTE[] value = {CK_ATTRIBUTE.buffer(CKA.VALUE, 64)};
        ok(Cryptoki.C_GetAttributeValue(session, key, value, 1));
        return value[0].getBytes();
    }

    private static CK_ATTRIBUTE[] keyTemplate(long type, Object... more) {
        CK_ATTRIBUTE[] fixed = template(CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, type, CKA.PRIVATE, false,
                CKA.SENSITIVE, false, CKA.EXTRACTABLE, true, CKA.ENCRYPT, true, CKA.DECRYPT, true, CKA.SIGN, true,
                CKA.VERIFY, true, CKA.WRAP, true, CKA.UNWRAP, true);
        CK_ATTRIBUTE[] all = Arrays.copyOf(fixed, fixed.length + more.length / 2);
        System.arraycopy(template(more), 0, all, fixed.length, more.length / 2);
        return all;
    }

    private static CK_ATTRIBUTE[] template(Object... typesAndValues) {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[typesAndValues.length / 2];
        for (int i = 0; i < template.length; i++) {
            template[i] = new CK_ATTRIBUTE((Long) typesAndValues[2 * i], typesAndValues[2 * i + 1]);
        }
        return template;
    }

    /** A call that fills an array, with its other arguments bound. */
    private interface Output {
        CK_RV call(byte[] array, LongRef length);
    }

    private interface Transformation {
        CK_RV call(CK_SESSION_HANDLE session, byte[] in, long inLen, byte[] out, LongRef outLen);
    }

    private byte[] bytes(Output output) {
        LongRef length = new LongRef();
        ok(output.call(null, length));
        byte[] bytes = new byte[(int) length.value];
        ok(output.call(bytes, length));
        return Arrays.copyOf(bytes, (int) length.value);
    }

    private byte[] whole(Transformation native_, byte[] in) {
        return bytes((array, length) -> native_.call(session, in, in.length, array, length));
    }

    private byte[] data(int length) {
        byte[] data = new byte[length];
        random.nextBytes(data);
        return data;
    }

    private void ok(CK_RV answer) {
        calls++;
        answer.orThrow();
    }

    private void answers(long expected, CK_RV answer) {
        calls++;
        expect(answer.is(expected), new CK_RV(expected) + ", but it was " + answer);
    }

    private void refuses(Runnable call) {
        calls++;
        try {
            call.run();
        } catch (UnsupportedOperationException e) {
            return;
        }
        always(false, "a refusal");
    }

    private void expect(boolean condition, String what) {
        always(condition || !isReal, what);
    }

    private void always(boolean condition, String what) {
        if (!condition) {
            throw new IllegalStateException("Not as expected: " + what);
        }
    }
}
