// Methods of the Java layer beside the natives that they call, with arrays that the caller keeps.

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.token.Session;

enum Layer {
    DIGEST("digest of 1 KiB"),
    SIGN("sign of 1 KiB"),
    ENCRYPT("encrypt of 1 KiB"),
    DECRYPT("decrypt of 1 KiB"),
    READ("read of 5 attributes");

    private static final long[] TYPES = {CKA.CLASS, CKA.KEY_TYPE, CKA.TOKEN, CKA.LABEL, CKA.ID};

    final String text;

    Layer(String text) {
        this.text = text;
    }

    /** Returns the call of the layer and that of the natives, in one session. */
    Call[] calls(ZerlinBinding natives) {
        CK_SESSION_HANDLE handle = natives.session;
        Session session = new Session(handle);
        CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE(Binding.KEY);
        byte[] data = new byte[Binding.DATA];
        CK_MECHANISM sha256 = new CK_MECHANISM(CKM.SHA256);
        CK_MECHANISM rsa = new CK_MECHANISM(CKM.SHA256_RSA_PKCS);
        CK_MECHANISM aesCbc = new CK_MECHANISM(CKM.AES_CBC, new byte[Binding.IV]);
        return switch (this) {
            case DIGEST -> new Call[] {() -> session.digest(sha256, data), natives.call(Operation.DIGEST)};
            case SIGN -> new Call[] {() -> session.sign(rsa, key, data), natives.call(Operation.SIGN)};
            case ENCRYPT -> new Call[] {() -> session.encrypt(aesCbc, key, data), natives.call(Operation.ENCRYPT)};
            case DECRYPT -> new Call[] {() -> session.decrypt(aesCbc, key, data), natives.decrypt()};
            case READ -> new Call[] {() -> session.read(key, TYPES), () -> read(handle, key)};
        };
    }

    // Asks for the lengths first.
    private static void read(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE key) {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[TYPES.length];
        for (int i = 0; i < TYPES.length; i++) {
            template[i] = new CK_ATTRIBUTE(TYPES[i], (Object) null);
        }
        Cryptoki.C_GetAttributeValue(session, key, template, template.length).orThrow();
        for (CK_ATTRIBUTE attribute : template) {
            attribute.pValue = new byte[(int) attribute.valueLen];
        }
        Cryptoki.C_GetAttributeValue(session, key, template, template.length).orThrow();
    }
}
