// What one thread does in its own session in every round: calls of every kind, a wrong one among them, with their
// results checked.

import static token.FreshToken.*;
import static token.TokenObjects.*;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.security.MessageDigest;
import java.util.Arrays;
import java.util.Random;

final class Work {
    // Whether the Cryptoki library does what it is asked. The one that does nothing returns CKR_OK to every call.
    private final boolean isReal;
    private final long slot;
    private final CK_SESSION_HANDLE session;
    private final Random random = new Random();

    Work(long slot, boolean isReal) {
        this.slot = slot;
        this.isReal = isReal;
        session = openSession(slot, READ_WRITE);
    }

    void round() throws Exception {
        CK_SESSION_HANDLE other = openSession(slot, READ_ONLY);
        Cryptoki.C_CloseSession(other).orThrow();
        expect(Cryptoki.C_CloseSession(other).is(CKR.SESSION_HANDLE_INVALID));
        expect(tokenInfo(slot).getLabel().equals("endurance"));
        Cryptoki.C_GetMechanismList(slot, CK_MECHANISM_TYPE.array(200), new LongRef(200)).orThrow();

        byte[] value = data(32 + random.nextInt(32));
        byte[] label = data(16);
        CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE();
        createObject(session, key, CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, CKK.GENERIC_SECRET, CKA.VALUE, value,
                CKA.SENSITIVE, false, CKA.EXTRACTABLE, true, CKA.PRIVATE, false, CKA.LABEL, label).orThrow();
        CK_ATTRIBUTE[] read = template(CKA.VALUE, new byte[64], CKA.CLASS, new CK_OBJECT_CLASS(), CKA.MODULUS,
                new byte[8]);
        expect(Cryptoki.C_GetAttributeValue(session, key, read, 3).is(CKR.ATTRIBUTE_TYPE_INVALID));
        expect(Arrays.equals(value, read[0].getBytes()));

        byte[] text = data(random.nextInt(64) == 0 ? 70_000 : random.nextInt(500));
        Cryptoki.C_DigestInit(session, new CK_MECHANISM(CKM.SHA256)).orThrow();
        expect(Cryptoki.C_Digest(session, text, text.length, new byte[5], new LongRef(5)).is(CKR.BUFFER_TOO_SMALL));
        byte[] expected = MessageDigest.getInstance("SHA-256").digest(text);
        byte[] digest = bytes((out, length) -> Cryptoki.C_Digest(session, text, text.length, out, length));
        expect(Arrays.equals(expected, digest));
        // No soft token supports these, one of which is nested, and one of which has its results written back.
        for (CK_MECHANISM mechanism : new CK_MECHANISM[] {
            new CK_MECHANISM(CKM.PKCS12_PBE_IMPORT, new CK_PKCS12_PBE_IMPORT_PARAMS(text, label, read, 3)),
            new CK_MECHANISM(CKM.SSL3_KEY_AND_MAC_DERIVE, new CK_SSL3_KEY_MAT_PARAMS(8, 8, 64, false, text, text))}) {
            expect(!Cryptoki.C_DeriveKey(session, mechanism, key, read, 3, new CK_OBJECT_HANDLE()).isOk());
        }
        Cryptoki.C_DestroyObject(session, key).orThrow();
        read[1].pValue = new StringBuilder();
        try {
            Cryptoki.C_CreateObject(session, read, 3, key);
            expect(false);
        } catch (UnsupportedOperationException e) {
            expect(Cryptoki.C_DestroyObject(session, key).is(CKR.OBJECT_HANDLE_INVALID));
        }
    }

    private byte[] data(int length) {
        byte[] data = new byte[length];
        random.nextBytes(data);
        return data;
    }

    private void expect(boolean condition) {
        Callers.expect(condition || !isReal, "a result");
    }
}
