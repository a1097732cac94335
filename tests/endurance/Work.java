// What one thread does in its own session in every round: some hundred calls of every kind, wrong ones among
// them, with every result checked.

import static token.FreshToken.*;
import static token.Session.*;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.io.ByteArrayOutputStream;
import java.security.MessageDigest;
import java.util.Arrays;
import java.util.Random;

import token.Session;

final class Work {
    static final String LABEL = "endurance"; // of the token
    private static final int CALLS = 100; // in a round, about
    private static final int ROUNDS_BETWEEN_SLOW_CALLS = 64;
    private static final byte[] P256 = {6, 8, 0x2a, (byte) 0x86, 0x48, (byte) 0xce, 0x3d, 3, 1, 7};
    private static final CK_MECHANISM SHA256 = new CK_MECHANISM(CKM.SHA256);

    // Whether the Cryptoki library does what it is asked. The one that does nothing returns CKR_OK to every call.
    private final boolean isReal;
    // In SoftHSM 2.6.1 a search sometimes returns CKR_GENERAL_ERROR while another thread creates an object, if the
    // user is logged in or the object is stored on the token. So only a thread that works alone does either.
    private final boolean isAlone;
    private final long slot;
    private final Session own;
    private final CK_SESSION_HANDLE session;
    private final Random random;
    private final String label;
    private final CK_OBJECT_HANDLE[] ec = CK_OBJECT_HANDLE.array(2);
    private int rounds;

    Work(long slot, boolean isReal, boolean isAlone, int seed) {
        this.slot = slot;
        this.isReal = isReal;
        this.isAlone = isAlone;
        random = new Random(seed);
        label = "work " + seed;
        own = new Session(slot);
        session = own.handle;
        if (isAlone) {
            login(session, CKU.USER, USER_PIN).orThrow();
        }
    }

    long calls() {
        return (long) rounds * CALLS;
    }

    void round() throws Exception {
        try {
            information();
            names();
            objects();
            ciphers();
            digests();
            wrongCalls();
            if (rounds++ % ROUNDS_BETWEEN_SLOW_CALLS == 0) {
                keyPairs();
                parameters();
            }
            signatures();
        } catch (RuntimeException e) {
            throw new IllegalStateException(label + ", round " + rounds, e);
        }
    }

    private void information() {
        CK_SESSION_HANDLE other = openSession(slot, READ_WRITE);
        CK_SESSION_INFO info = new CK_SESSION_INFO();
        Cryptoki.C_GetSessionInfo(other, info).orThrow();
        expect(info.flags == READ_WRITE, "session info");
        Cryptoki.C_CloseSession(other).orThrow();
        expectReturns(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_CloseSession(other));
        Cryptoki.C_GetInfo(new CK_INFO()).orThrow();
        Cryptoki.C_GetSlotInfo(slot, new CK_SLOT_INFO()).orThrow();
        expect(tokenInfo(slot).getLabel().equals(LABEL), "token info");
        LongRef count = new LongRef();
        Cryptoki.C_GetMechanismList(slot, null, count).orThrow();
        Cryptoki.C_GetMechanismList(slot, CK_MECHANISM_TYPE.array((int) count.value), count).orThrow();
        Cryptoki.C_GetMechanismInfo(slot, new CK_MECHANISM_TYPE(CKM.AES_CBC), new CK_MECHANISM_INFO()).orThrow();
        byte[] bytes = new byte[32];
        Cryptoki.C_SeedRandom(session, bytes, bytes.length).orThrow();
        Cryptoki.C_GenerateRandom(session, bytes, bytes.length).orThrow();
        expect(!Arrays.equals(bytes, new byte[32]), "random bytes");
    }

    private void names() {
        CK_MECHANISM_TYPE type = new CK_MECHANISM_TYPE(CKM.AES_CBC);
        byte[] name = bytes((array, length) -> CTUtil.CTU_GetMechanismTypeString(type, array, length));
        always(Arrays.equals(ascii("AES_CBC"), name), "name");
        always(type.equals(CTUtil.CTU_GetMechanismTypeValue(name)), "value of a name");
        CK_RV unknown = new CK_RV(0x80001234L);
        expect(bytes((array, length) -> CTUtil.CTU_GetErrorString(unknown, array, length)).length > 12, "error name");
        expectReturns(CKR.DATA_LEN_RANGE, CTUtil.CTU_GetMechanismTypeString(type, new byte[1], new LongRef(1)));
    }

    private void objects() {
        byte[] value = data(1 + random.nextInt(300));
        boolean isStored = isAlone && rounds % ROUNDS_BETWEEN_SLOW_CALLS == 0;
        CK_OBJECT_HANDLE object = own.create(template(CKA.CLASS, CKO.DATA, CKA.LABEL, label, CKA.PRIVATE, false,
                CKA.TOKEN, isStored, CKA.VALUE, value));
        CK_OBJECT_HANDLE found = new CK_OBJECT_HANDLE();
        CTUtil.CTU_FindObject(session, new CK_OBJECT_CLASS(CKO.DATA), ascii(label), found).orThrow();
        expect(found.equals(object), "found object");
        CK_ATTRIBUTE[] read = template(CKA.VALUE, new byte[300], CKA.CLASS, new CK_OBJECT_CLASS(), CKA.PRIVATE, true,
                CKA.MODULUS, new byte[8], CKA.LABEL, null);
        expectReturns(CKR.ATTRIBUTE_TYPE_INVALID,
                Cryptoki.C_GetAttributeValue(session, object, read, read.length));
        expect(Arrays.equals(value, read[0].getBytes()), "value read");
        CK_ATTRIBUTE[] change = template(CKA.LABEL, label + " changed");
        Cryptoki.C_SetAttributeValue(session, object, change, 1).orThrow();
        CK_OBJECT_HANDLE copy = new CK_OBJECT_HANDLE();
        Cryptoki.C_CopyObject(session, object, change, 1, copy).orThrow();
        Cryptoki.C_FindObjectsInit(session, change, 1).orThrow();
        LongRef count = new LongRef();
        Cryptoki.C_FindObjects(session, CK_OBJECT_HANDLE.array(5), 5, count).orThrow();
        expect(count.value == 2, "objects found: " + count.value);
        Cryptoki.C_FindObjectsFinal(session).orThrow();
        Cryptoki.C_GetObjectSize(session, object, new LongRef()).orThrow();
        destroy(object, copy);
        expectReturns(CKR.OBJECT_HANDLE_INVALID, Cryptoki.C_DestroyObject(session, object));
    }

    private void ciphers() {
        CK_OBJECT_HANDLE key = secretKey(CKK.AES, data(32));
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_CBC_PAD, data(16));
        byte[] clear = data(rounds % 16 == 0 ? 70_000 : random.nextInt(200));
        Cryptoki.C_EncryptInit(session, mechanism, key).orThrow();
        byte[] secret = own.whole(Cryptoki::C_Encrypt, clear);
        Cryptoki.C_DecryptInit(session, mechanism, key).orThrow();
        expect(Arrays.equals(clear, own.whole(Cryptoki::C_Decrypt, secret)), "decrypted");
        Cryptoki.C_EncryptInit(session, mechanism, key).orThrow();
        ByteArrayOutputStream parts = new ByteArrayOutputStream();
        parts.writeBytes(own.whole(Cryptoki::C_EncryptUpdate, clear));
        parts.writeBytes(bytes((array, length) -> Cryptoki.C_EncryptFinal(session, array, length)));
        expect(Arrays.equals(secret, parts.toByteArray()), "encrypted in parts");
        destroy(key);
    }

    private void digests() throws Exception {
        byte[] text = data(random.nextInt(500));
        byte[] expected = MessageDigest.getInstance("SHA-256").digest(text);
        Cryptoki.C_DigestInit(session, SHA256).orThrow();
        expectReturns(CKR.BUFFER_TOO_SMALL,
                Cryptoki.C_Digest(session, text, text.length, new byte[5], new LongRef(5)));
        expect(Arrays.equals(expected, own.whole(Cryptoki::C_Digest, text)), "digest");
    }

    // Nested parameters, and parameters with results written back. No soft token supports these mechanisms.
    private void parameters() {
        byte[] bytes = data(28);
        CK_ATTRIBUTE[] certificate = template(CKA.LABEL, label);
        CK_MECHANISM[] mechanisms = {
            new CK_MECHANISM(CKM.ECDH1_DERIVE_STD, new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, bytes)),
            new CK_MECHANISM(CKM.PBE_MD2_DES_CBC, new CK_PBE_PARAMS(bytes, bytes, 10)),
            new CK_MECHANISM(CKM.SSL3_KEY_AND_MAC_DERIVE, new CK_SSL3_KEY_MAT_PARAMS(8, 8, 64, false, bytes, bytes)),
            new CK_MECHANISM(CKM.SSL3_MASTER_KEY_DERIVE, new CK_SSL3_MASTER_KEY_DERIVE_PARAMS(bytes, bytes)),
            new CK_MECHANISM(CKM.PKCS12_PBE_IMPORT, new CK_PKCS12_PBE_IMPORT_PARAMS(bytes, bytes, certificate, 3))};
        for (CK_MECHANISM mechanism : mechanisms) {
            CK_RV answer = Cryptoki.C_DeriveKey(session, mechanism, ec[1], null, 0, new CK_OBJECT_HANDLE());
            expect(!answer.isOk(), "derived by " + mechanism);
        }
    }

    private void wrongCalls() {
        CK_SESSION_HANDLE wrong = new CK_SESSION_HANDLE(0x7fffffff);
        expectReturns(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_GetSessionInfo(wrong, new CK_SESSION_INFO()));
        expectReturns(CKR.USER_TYPE_INVALID, login(session, 9, USER_PIN));
        CK_MECHANISM cipher = new CK_MECHANISM(CKM.AES_CBC, new byte[16]);
        CK_RV answer = Cryptoki.C_EncryptInit(session, cipher, new CK_OBJECT_HANDLE(0x7ffffffe));
        expectReturns(CKR.OBJECT_HANDLE_INVALID, answer);
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
        if (rounds > 1) {
            destroy(ec);
        }
        CK_ATTRIBUTE[] forPublic = template(CKA.EC_PARAMS, P256, CKA.VERIFY, true);
        CK_ATTRIBUTE[] forPrivate = template(CKA.PRIVATE, false, CKA.SIGN, true, CKA.DERIVE, true);
        Cryptoki.C_GenerateKeyPair(session, new CK_MECHANISM(CKM.EC_KEY_PAIR_GEN), forPublic, forPublic.length,
                forPrivate, forPrivate.length, ec[0], ec[1]).orThrow();
    }

    private void signatures() {
        byte[] text = data(32);
        CK_OBJECT_HANDLE key = secretKey(CKK.GENERIC_SECRET, data(40));
        signed(new CK_MECHANISM(CKM.SHA256_HMAC), key, key, text);
        destroy(key);
        if (rounds % 8 == 0) {
            signed(new CK_MECHANISM(CKM.ECDSA), ec[1], ec[0], text);
        }
    }

    private void signed(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, CK_OBJECT_HANDLE check, byte[] text) {
        Cryptoki.C_SignInit(session, mechanism, key).orThrow();
        byte[] signature = own.whole(Cryptoki::C_Sign, text);
        for (long expected : new long[] {CKR.OK, CKR.SIGNATURE_INVALID}) {
            Cryptoki.C_VerifyInit(session, mechanism, check).orThrow();
            expectReturns(expected, Cryptoki.C_Verify(session, text, text.length, signature, signature.length));
            signature[7] ^= 1;
        }
    }

    private CK_OBJECT_HANDLE secretKey(long type, byte[] value) {
        return own.create(template(CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, type, CKA.VALUE, value, CKA.PRIVATE, false,
                CKA.ENCRYPT, true, CKA.DECRYPT, true, CKA.SIGN, true, CKA.VERIFY, true));
    }

    private void destroy(CK_OBJECT_HANDLE... objects) {
        for (CK_OBJECT_HANDLE object : objects) {
            Cryptoki.C_DestroyObject(session, object).orThrow();
        }
    }

    private byte[] data(int length) {
        byte[] data = new byte[length];
        random.nextBytes(data);
        return data;
    }

    private void expectReturns(long expected, CK_RV answer) {
        expect(answer.is(expected), new CK_RV(expected) + ", but it was " + answer);
    }

    private void refuses(Runnable call) {
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
