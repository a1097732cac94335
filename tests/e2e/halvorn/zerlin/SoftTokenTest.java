// What no other program runs on a real token: the vendor's functions, the small natives of CTUtil, and mechanism
// parameters whose results the JDK checks.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;
import static token.TokenObjects.*;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;
import halvorn.zerlin.token.*;

import java.security.*;
import java.security.spec.*;
import java.util.Arrays;

import javax.crypto.Cipher;
import javax.crypto.KeyAgreement;

import org.junit.jupiter.api.*;

class SoftTokenTest {
    private static final byte[] TEXT = ascii("text");
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

    @Test
    void singleAttributesSizesAndNamesComeBack() {
        CK_OBJECT_HANDLE made = new CK_OBJECT_HANDLE();
        createObject(own, made, CKA.CLASS, CKO.DATA, CKA.TOKEN, false, CKA.LABEL, "settings").orThrow();
        CK_ATTRIBUTE_TYPE type = new CK_ATTRIBUTE_TYPE(CKA.LABEL);
        CTUtil.CTU_SetAttributeValue(own, made, type, TEXT, TEXT.length).orThrow();
        byte[] label = new byte[20];
        LongRef length = new LongRef();
        CTUtil.CTU_GetAttributeValue(own, made, type, label, label.length, length).orThrow();
        assertArrayEquals(TEXT, Arrays.copyOf(label, (int) length.value));
        CK_OBJECT_HANDLE found = new CK_OBJECT_HANDLE();
        CTUtil.CTU_FindObject(own, new CK_OBJECT_CLASS(CKO.DATA), TEXT, found).orThrow();
        assertEquals(made, found);
        Cryptoki.C_GetObjectSize(own, made, length).orThrow();
        assertNotEquals((long) TEXT.length, length.value);
        byte[] name = bytes((array, room) -> CTUtil.CTU_GetAttributeTypeString(type, array, room));
        assertEquals(type, CTUtil.CTU_GetAttributeTypeValue(name));
    }

    @Test
    void theJdkUnderstandsMechanismsWithParameters() throws Exception {
        Session session = new Session(own);
        KeyPairHandles rsa = session.generateKeyPair(new CK_MECHANISM(CKM.RSA_PKCS_KEY_PAIR_GEN),
                new Attributes().with(CKA.MODULUS_BITS, 1024).with(CKA.PUBLIC_EXPONENT, new byte[] {1, 0, 1}),
                new Attributes().yes(CKA.SIGN, CKA.DECRYPT));
        Signature pss = Signature.getInstance("RSASSA-PSS");
        pss.setParameter(new PSSParameterSpec("SHA-256", "MGF1", MGF1ParameterSpec.SHA256, 20, 1));
        pss.initVerify(Keys.publicKey(session, rsa.publicKey));
        pss.update(TEXT);
        assertTrue(pss.verify(session.sign(new CK_MECHANISM(CKM.SHA256_RSA_PKCS_PSS,
                new CK_RSA_PKCS_PSS_PARAMS(CKM.SHA256, CKG.MGF1_SHA256, 20)), rsa.privateKey, TEXT)));
        Cipher oaep = Cipher.getInstance("RSA/ECB/OAEPWithSHA-1AndMGF1Padding");
        oaep.init(Cipher.ENCRYPT_MODE, Keys.publicKey(session, rsa.publicKey));
        assertArrayEquals(TEXT, session.decrypt(new CK_MECHANISM(CKM.RSA_PKCS_OAEP,
                new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null)), rsa.privateKey, oaep.doFinal(TEXT)));

        KeyPairHandles ec = session.generateKeyPair(new CK_MECHANISM(CKM.EC_KEY_PAIR_GEN),
                new Attributes().with(CKA.EC_PARAMS, Der.oid("1.2.840.10045.3.1.7")), new Attributes().yes(CKA.DERIVE));
        KeyPairGenerator generator = KeyPairGenerator.getInstance("EC");
        generator.initialize(new ECGenParameterSpec("secp256r1"));
        KeyPair other = generator.generateKeyPair();
        KeyAgreement ecdh = KeyAgreement.getInstance("ECDH");
        ecdh.init(other.getPrivate());
        ecdh.doPhase(Keys.publicKey(session, ec.publicKey), true);
        byte[] encoded = other.getPublic().getEncoded(); // ends with the point: 04, X and Y
        CK_ECDH1_DERIVE_PARAMS point = new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null,
                Arrays.copyOfRange(encoded, encoded.length - 65, encoded.length));
        CK_OBJECT_HANDLE secret = session.derive(new CK_MECHANISM(CKM.ECDH1_DERIVE_STD, point), ec.privateKey,
                Attributes.of(CKO.SECRET_KEY).with(CKA.KEY_TYPE, CKK.GENERIC_SECRET).with(CKA.VALUE_LEN, 32)
                        .yes(CKA.EXTRACTABLE).no(CKA.SENSITIVE));
        assertArrayEquals(ecdh.generateSecret(), session.read(secret, CKA.VALUE).bytes(CKA.VALUE));
    }
}
