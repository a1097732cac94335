// Modern mechanisms and their parameters, against the JDK's own cryptography.
package halvorn.zerlin.token;

import static halvorn.zerlin.constants.CKF.*;
import static halvorn.zerlin.token.LayerTest.*;
import static org.junit.jupiter.api.Assertions.*;
import static org.junit.jupiter.api.DynamicTest.dynamicTest;
import static token.FreshToken.ascii;
import static token.TokenObjects.IS_NSS;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.security.*;
import java.security.spec.*;
import java.util.stream.Stream;

import javax.crypto.*;
import javax.crypto.spec.*;

import org.junit.jupiter.api.*;
import org.junit.jupiter.api.function.Executable;

class ModernMechanismsTest {
    private static final byte[] SECRET = bytesOf(32);
    private static final byte[] TEXT = bytesOf(41);

    @BeforeAll
    static void logIn() {
        LayerTest.logIn();
    }

    @AfterAll
    static void close() {
        LayerTest.closeTwice();
    }

    private static byte[] bytesOf(int length) {
        return ascii("not alike".repeat(40).substring(0, length));
    }

    private static DynamicTest test(long mechanism, Object parameter, Executable body) {
        return dynamicTest(new CK_MECHANISM_TYPE(mechanism) + " " + parameter, () -> {
            Assumptions.assumeTrue(slot.supports(mechanism, 0), "the module does not have it");
            body.execute();
        });
    }

    // Both encrypt alike, and the token decrypts it.
    private static DynamicTest cipher(long type, Object parameter, String name, AlgorithmParameterSpec spec, byte[] aad) {
        return test(type, parameter, () -> {
            CK_MECHANISM mechanism = new CK_MECHANISM(type, parameter);
            CK_OBJECT_HANDLE key = secretKey(name.startsWith("AES") ? CKK.AES : CKK.CHACHA20, SECRET);
            Cipher jdk = Cipher.getInstance(name);
            jdk.init(Cipher.ENCRYPT_MODE, new SecretKeySpec(SECRET, name.replaceFirst("[/-].*", "")), spec);
            if (aad != null) jdk.updateAAD(aad);
            byte[] encrypted = jdk.doFinal(TEXT);
            assertArrayEquals(encrypted, session.encrypt(mechanism, key, TEXT));
            assertArrayEquals(TEXT, session.decrypt(mechanism, key, encrypted));
        });
    }

    private static DynamicTest gcm(int ivLength, byte[] aad, int tagBits) {
        byte[] iv = bytesOf(ivLength);
        GCMParameterSpec spec = new GCMParameterSpec(tagBits, iv);
        return cipher(CKM.AES_GCM, new CK_GCM_PARAMS(iv, aad, tagBits), "AES/GCM/NoPadding", spec, aad);
    }

    private static byte[] hmac(byte[] key, byte[] data) throws GeneralSecurityException {
        Mac mac = Mac.getInstance("HmacSHA256");
        mac.init(new SecretKeySpec(key, "HmacSHA256"));
        return mac.doFinal(data);
    }

    // Of one block. The salt of a type without data or key is null.
    private static DynamicTest hkdf(long type, boolean extracts, boolean expands, long saltType, byte[] salt) {
        byte[] data = saltType == HKDF_SALT_DATA ? salt : null;
        CK_HKDF_PARAMS parameter = new CK_HKDF_PARAMS(extracts, expands, CKM.SHA256, saltType, data, null, ascii("info"));
        return test(type, parameter, () -> {
            byte[] expected = extracts ? hmac(salt == null ? new byte[32] : salt, SECRET) : SECRET;
            parameter.hSaltKey = saltType == HKDF_SALT_KEY ? secretKey(CKK.GENERIC_SECRET, salt) : null;
            Attributes wanted = type == CKM.HKDF_DATA ? Attributes.of(CKO.DATA)
                : Attributes.of(CKO.SECRET_KEY).with(CKA.KEY_TYPE, CKK.GENERIC_SECRET).no(CKA.SENSITIVE).yes(CKA.EXTRACTABLE);
            CK_OBJECT_HANDLE key = session.derive(new CK_MECHANISM(type, parameter), secretKey(CKK.GENERIC_SECRET, SECRET),
                wanted.with(CKA.VALUE_LEN, 32).no(CKA.TOKEN));
            assertArrayEquals(expands ? hmac(expected, ascii("info\1")) : expected,
                session.read(key, CKA.VALUE).bytes(CKA.VALUE));
        });
    }

    @TestFactory
    Stream<DynamicTest> theJdkReturnsTheSame() {
        byte[] iv = bytesOf(12);
        byte[] block = bytesOf(16);
        long kwp = IS_NSS ? CKM.AES_KEY_WRAP_KWP : CKM.AES_KEY_WRAP_PAD_STD; // of NSS, the latter is another padding
        CK_GCM_PARAMS_OLD old = new CK_GCM_PARAMS_OLD(iv, block, 128);
        return Stream.of(gcm(12, null, 128), gcm(12, bytesOf(20), 128), gcm(16, bytesOf(1), 96), gcm(1, bytesOf(300), 120),
            // NSS takes both structures, SoftHSM only the one of today.
            IS_NSS ? cipher(CKM.AES_GCM, old, "AES/GCM/NoPadding", new GCMParameterSpec(128, iv), block)
                : dynamicTest("old", () -> assertEquals(new CK_RV(CKR.ARGUMENTS_BAD), Cryptoki.C_EncryptInit(session.handle(),
                    new CK_MECHANISM(CKM.AES_GCM, old), secretKey(CKK.AES, SECRET)))),
            cipher(CKM.AES_CTR, new CK_AES_CTR_PARAMS(128, block), "AES/CTR/NoPadding", new IvParameterSpec(block), null),
            cipher(CKM.AES_CTR, new CK_AES_CTR_PARAMS(32, block), "AES/CTR/NoPadding", new IvParameterSpec(block), null),
            cipher(CKM.CHACHA20_POLY1305, new CK_SALSA20_CHACHA20_POLY1305_PARAMS(iv, block), "ChaCha20-Poly1305",
                new IvParameterSpec(iv), block),
            hkdf(CKM.HKDF_DERIVE, true, true, HKDF_SALT_DATA, block), hkdf(CKM.HKDF_DATA, true, true, HKDF_SALT_KEY, block),
            hkdf(CKM.HKDF_DERIVE, false, true, HKDF_SALT_NULL, null), hkdf(CKM.HKDF_DATA, true, false, HKDF_SALT_NULL, null),
            test(kwp, "AES-KWP", () -> {
                byte[] wrapped = session.wrap(new CK_MECHANISM(kwp), secretKey(CKK.AES, SECRET), secretKey(CKK.AES, block));
                Cipher jdk = Cipher.getInstance("AES/KWP/NoPadding");
                jdk.init(Cipher.UNWRAP_MODE, new SecretKeySpec(SECRET, "AES"));
                assertArrayEquals(block, jdk.unwrap(wrapped, "AES", Cipher.SECRET_KEY).getEncoded());
            }));
    }
}
