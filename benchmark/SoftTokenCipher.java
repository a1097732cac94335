// AES-CBC on 1 MiB over the soft token, in its own process, because one process has one Cryptoki library.
// Prints the median in nanoseconds of C_EncryptInit + C_Encrypt.

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.LongRef;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKM;

import java.util.List;

import token.FreshToken;

final class SoftTokenCipher {
    private static final int BYTES = 1 << 20;

    private SoftTokenCipher() {
    }

    public static void main(String[] arguments) throws Exception {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
        long slot = FreshToken.create("benchmark");
        CK_SESSION_HANDLE session = FreshToken.openSession(slot, FreshToken.READ_WRITE);
        CK_ATTRIBUTE[] template = {
            new CK_ATTRIBUTE(CKA.VALUE_LEN, 32),
            new CK_ATTRIBUTE(CKA.PRIVATE, false),
            new CK_ATTRIBUTE(CKA.ENCRYPT, true)};
        CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKey(session, new CK_MECHANISM(CKM.AES_KEY_GEN), template, template.length, key)
                .orThrow();

        CK_MECHANISM aesCbc = new CK_MECHANISM(CKM.AES_CBC, new byte[16]);
        byte[] data = new byte[BYTES];
        byte[] encrypted = new byte[BYTES];
        Timing timing = new Timing(() -> {
            Cryptoki.C_EncryptInit(session, aesCbc, key).orThrow();
            Cryptoki.C_Encrypt(session, data, BYTES, encrypted, new LongRef(BYTES)).orThrow();
        });
        Effort.of(arguments).run(List.of(List.of(timing)));
        System.out.println(Math.round(timing.median()));
    }
}
