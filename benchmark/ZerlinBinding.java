// The operations through Zerlin.

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.CK_SESSION_INFO;
import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.LongRef;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKG;
import halvorn.zerlin.constants.CKK;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.constants.CK_KEY_TYPE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_OBJECT_CLASS;
import halvorn.zerlin.params.CK_RSA_PKCS_PSS_PARAMS;

final class ZerlinBinding implements Binding {
    final CK_SESSION_HANDLE session = openSession();
    private final CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE(KEY);
    private final LongRef length = new LongRef();
    private final byte[] data = new byte[DATA];
    private final byte[] encrypted = new byte[DATA];
    private final byte[] random = new byte[RANDOM];
    private final byte[] digest = new byte[DIGEST];
    private final byte[] signature = new byte[SIGNATURE];
    private final CK_MECHANISM_TYPE[] mechanisms = CK_MECHANISM_TYPE.array(MECHANISMS);
    private final CK_MECHANISM sha256 = new CK_MECHANISM(CKM.SHA256);
    private final CK_MECHANISM aesCbc = new CK_MECHANISM(CKM.AES_CBC, new byte[IV]);
    private final CK_MECHANISM aesKeyGen = new CK_MECHANISM(CKM.AES_KEY_GEN);
    private final CK_MECHANISM rsa = new CK_MECHANISM(CKM.SHA256_RSA_PKCS);
    private final CK_MECHANISM pss = new CK_MECHANISM(
            CKM.SHA256_RSA_PKCS_PSS, new CK_RSA_PKCS_PSS_PARAMS(CKM.SHA256, CKG.MGF1_SHA256, DIGEST));
    private final CK_ATTRIBUTE[] searchTemplate = {
        new CK_ATTRIBUTE(CKA.CLASS, new CK_OBJECT_CLASS(CKO.SECRET_KEY)),
        new CK_ATTRIBUTE(CKA.LABEL, new byte[LABEL])};
    private final CK_ATTRIBUTE[] keyTemplate = {
        new CK_ATTRIBUTE(CKA.CLASS, new CK_OBJECT_CLASS(CKO.SECRET_KEY)),
        new CK_ATTRIBUTE(CKA.KEY_TYPE, new CK_KEY_TYPE(CKK.AES)),
        new CK_ATTRIBUTE(CKA.VALUE_LEN, 32),
        new CK_ATTRIBUTE(CKA.TOKEN, false),
        new CK_ATTRIBUTE(CKA.ENCRYPT, true),
        new CK_ATTRIBUTE(CKA.DECRYPT, true),
        new CK_ATTRIBUTE(CKA.LABEL, new byte[LABEL]),
        new CK_ATTRIBUTE(CKA.ID, new byte[ID])};

    private static CK_SESSION_HANDLE openSession() {
        CK_SESSION_HANDLE session = new CK_SESSION_HANDLE();
        Cryptoki.C_OpenSession(SLOT, CKF.SERIAL_SESSION | CKF.RW_SESSION, null, null, session).orThrow();
        return session;
    }

    @Override
    public Call call(Operation operation) {
        return switch (operation) {
            case SESSION_INFO -> () -> Cryptoki.C_GetSessionInfo(session, new CK_SESSION_INFO()).orThrow();
            case TOKEN_INFO -> () -> Cryptoki.C_GetTokenInfo(SLOT, new CK_TOKEN_INFO()).orThrow();
            case MECHANISM_LIST -> () ->
                    Cryptoki.C_GetMechanismList(SLOT, mechanisms, capacity(MECHANISMS)).orThrow();
            case RANDOM -> () -> Cryptoki.C_GenerateRandom(session, random, RANDOM).orThrow();
            case DIGEST -> () -> {
                Cryptoki.C_DigestInit(session, sha256).orThrow();
                Cryptoki.C_Digest(session, data, DATA, digest, capacity(DIGEST)).orThrow();
            };
            case ENCRYPT -> () -> {
                Cryptoki.C_EncryptInit(session, aesCbc, key).orThrow();
                Cryptoki.C_Encrypt(session, data, DATA, encrypted, capacity(DATA)).orThrow();
            };
            case SIGN -> () -> sign(rsa);
            case GET_ATTRIBUTES -> () -> {
                CK_ATTRIBUTE[] template = template(5);
                Cryptoki.C_GetAttributeValue(session, key, template, template.length).orThrow();
            };
            case SEARCH -> this::search;
            case GENERATE_KEY -> () -> Cryptoki.C_GenerateKey(
                    session, aesKeyGen, keyTemplate, keyTemplate.length, new CK_OBJECT_HANDLE()).orThrow();
            case SESSION -> () -> Cryptoki.C_CloseSession(openSession()).orThrow();
            case SIGN_PSS -> () -> sign(pss);
        };
    }

    @Override
    public Call encrypt(int bytes) {
        byte[] input = new byte[bytes];
        byte[] output = new byte[bytes];
        return () -> Cryptoki.C_Encrypt(session, input, bytes, output, capacity(bytes)).orThrow();
    }

    @Override
    public Call setAttributes(int count) {
        CK_ATTRIBUTE[] template = template(count);
        return () -> Cryptoki.C_SetAttributeValue(session, key, template, count).orThrow();
    }

    @Override
    public Call getAttributes(int count) {
        CK_ATTRIBUTE[] template = template(count);
        return () -> Cryptoki.C_GetAttributeValue(session, key, template, count).orThrow();
    }

    Call decrypt() {
        return () -> {
            Cryptoki.C_DecryptInit(session, aesCbc, key).orThrow();
            Cryptoki.C_Decrypt(session, encrypted, DATA, data, capacity(DATA)).orThrow();
        };
    }

    private LongRef capacity(int bytes) {
        length.value = bytes;
        return length;
    }

    private void sign(CK_MECHANISM mechanism) {
        Cryptoki.C_SignInit(session, mechanism, key).orThrow();
        Cryptoki.C_Sign(session, data, DATA, signature, capacity(SIGNATURE)).orThrow();
    }

    private void search() {
        Cryptoki.C_FindObjectsInit(session, searchTemplate, searchTemplate.length).orThrow();
        CK_OBJECT_HANDLE[] found = CK_OBJECT_HANDLE.array(FOUND);
        Cryptoki.C_FindObjects(session, found, FOUND, length).orThrow();
        Cryptoki.C_FindObjectsFinal(session).orThrow();
    }

    // Repeats class, key type, token, label and id.
    private static CK_ATTRIBUTE[] template(int count) {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[count];
        for (int i = 0; i < count; i++) {
            template[i] = switch (i % 5) {
                case 0 -> new CK_ATTRIBUTE(CKA.CLASS, new CK_OBJECT_CLASS());
                case 1 -> new CK_ATTRIBUTE(CKA.KEY_TYPE, new CK_KEY_TYPE());
                case 2 -> new CK_ATTRIBUTE(CKA.TOKEN, false);
                case 3 -> CK_ATTRIBUTE.buffer(CKA.LABEL, LABEL);
                default -> CK_ATTRIBUTE.buffer(CKA.ID, ID);
            };
        }
        return template;
    }
}
