// The vendor's functions on a real token.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;
import static token.TokenObjects.*;

import halvorn.zerlin.constants.*;

import org.junit.jupiter.api.*;

class SoftTokenTest {
    private static CK_SESSION_HANDLE own;

    @BeforeAll
    static void logIn() {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow(CKR.CRYPTOKI_ALREADY_INITIALIZED);
        own = openSession(create("own"), READ_WRITE);
        login(own, CKU.USER, USER_PIN).orThrow();
    }

    @Test
    void objectsAreCopiedToOtherTokensAndTokensInitialised() {
        CK_SESSION_HANDLE other = openSession(create("other"), READ_WRITE);
        login(other, CKU.USER, USER_PIN).orThrow();
        CK_ATTRIBUTE[] open = template(CKA.MODULUS_BITS, 1024L, CKA.PUBLIC_EXPONENT, new byte[] {1, 0, 1});
        CK_ATTRIBUTE[] secret = template(CKA.SENSITIVE, false, CKA.EXTRACTABLE, true);
        CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKeyPair(own, new CK_MECHANISM(CKM.RSA_PKCS_KEY_PAIR_GEN), open, open.length, secret,
                secret.length, new CK_OBJECT_HANDLE(), key).orThrow();
        CK_OBJECT_HANDLE copy = new CK_OBJECT_HANDLE();
        Cryptoki.CT_CopyObject(other, own, key, null, 0, copy).orThrow();
        byte[][] exponents = {new byte[128], new byte[128]};
        Cryptoki.C_GetAttributeValue(own, key, template(CKA.PRIVATE_EXPONENT, exponents[0]), 1).orThrow();
        Cryptoki.C_GetAttributeValue(other, copy, template(CKA.PRIVATE_EXPONENT, exponents[1]), 1).orThrow();
        assertArrayEquals(exponents[0], exponents[1]);
        if (IS_NSS) return; // its C_InitToken looks at neither PIN nor label
        byte[] label = CK_TOKEN_INFO.paddedLabel("third");
        Cryptoki.CT_InitToken(own, find("never initialised"), SO_PIN, SO_PIN.length, label).orThrow();
        CK_SESSION_HANDLE third = openSession(create("third"), READ_WRITE);
        assertEquals(new CK_RV(CKR.PIN_INCORRECT), Cryptoki.CT_ResetToken(third, USER_PIN, USER_PIN.length, null));
        third = openSession(find("third"), READ_WRITE);
        Cryptoki.CT_ResetToken(third, SO_PIN, SO_PIN.length, null).orThrow();
        assertEquals(0, tokenInfo(find("third")).flags & CKF.USER_PIN_INITIALIZED);
    }
}
