// Ciphers, digests, signatures, key wrapping and key agreement of the real soft token, compared with published
// vectors and the JDK's own cryptography.
package halvorn.zerlin;

import static halvorn.zerlin.TestToken.*;
import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.io.ByteArrayOutputStream;
import java.math.BigInteger;
import java.security.*;
import java.security.interfaces.RSAPrivateCrtKey;
import java.security.spec.*;
import java.util.*;

import javax.crypto.*;
import javax.crypto.spec.*;

import org.junit.jupiter.api.*;
import org.junit.jupiter.api.extension.RegisterExtension;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.*;

class CryptoTest {
    @RegisterExtension
    static final TestToken token = new TestToken();

    private static final HexFormat HEX = HexFormat.of();
    private static final byte[] TEXT = ascii("the text that is signed");
    private static final CK_OBJECT_HANDLE RSA_PUBLIC = new CK_OBJECT_HANDLE();
    private static final CK_OBJECT_HANDLE RSA_PRIVATE = new CK_OBJECT_HANDLE();
    private static PublicKey jdkRsa;

    @BeforeAll
    static void makeAnRsaKeyPair() throws GeneralSecurityException {
        CK_ATTRIBUTE[] forPublic = template(CKA.MODULUS_BITS, 2048, CKA.PUBLIC_EXPONENT, new byte[] {1, 0, 1},
                CKA.ENCRYPT, true, CKA.VERIFY, true);
        CK_ATTRIBUTE[] forPrivate = template(CKA.DECRYPT, true, CKA.SIGN, true);
        Cryptoki.C_GenerateKeyPair(token.session, new CK_MECHANISM(CKM.RSA_PKCS_KEY_PAIR_GEN), forPublic, 4,
                forPrivate, 2, RSA_PUBLIC, RSA_PRIVATE).orThrow();
        BigInteger modulus = new BigInteger(1, token.read(RSA_PUBLIC, CKA.MODULUS));
        RSAPublicKeySpec rsa = new RSAPublicKeySpec(modulus, BigInteger.valueOf(0x10001));
        jdkRsa = KeyFactory.getInstance("RSA").generatePublic(rsa);
    }

    private static byte[] someBytes(int length) {
        byte[] bytes = new byte[length];
        new Random(length).nextBytes(bytes);
        return bytes;
    }

    // NIST SP 800-38A, F.1.1, and RFC 4493, example 2.
    @Test
    void cipherTextAndMacMatchPublishedVectors() {
        CK_OBJECT_HANDLE key = token.secretKey(CKK.AES, HEX.parseHex("2b7e151628aed2a6abf7158809cf4f3c"));
        byte[] text = HEX.parseHex("6bc1bee22e409f96e93d7e117393172a");
        byte[] cipherText = token.encrypt(new CK_MECHANISM(CKM.AES_ECB), key, text);
        byte[] mac = token.sign(new CK_MECHANISM(CKM.AES_CMAC), key, text);
        assertEquals("3ad77bb40d7a3660a89ecaf32466ef97", HEX.formatHex(cipherText));
        assertEquals("070a16b46b4d4144f79bdd9dd04a287c", HEX.formatHex(mac));
    }

    // FIPS 180.
    @ParameterizedTest
    @CsvSource({"SHA_1, a9993e364706816aba3e25717850c26c9cd0d89d",
        "SHA256, ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
        "SHA384, cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358baeca134c825a7"})
    void digestsMatchPublishedVectors(String mechanism, String expected) throws Exception {
        CK_MECHANISM digest = new CK_MECHANISM(CKM.class.getField(mechanism).getLong(null));
        Cryptoki.C_DigestInit(token.session, digest).orThrow();
        assertEquals(expected, HEX.formatHex(token.whole(Cryptoki::C_Digest, ascii("abc"))));
    }

    @ParameterizedTest
    @CsvSource({"SHA1_RSA_PKCS, SHA1withRSA", "SHA256_RSA_PKCS, SHA256withRSA", "RSA_PKCS, NONEwithRSA"})
    void anImportedRsaKeySignsAsInTheJdk(String mechanism, String name) throws Exception {
        KeyPairGenerator generator = KeyPairGenerator.getInstance("RSA");
        generator.initialize(1024);
        KeyPair pair = generator.generateKeyPair();
        RSAPrivateCrtKey key = (RSAPrivateCrtKey) pair.getPrivate();
        CK_OBJECT_HANDLE imported = token.create(template(CKA.CLASS, CKO.PRIVATE_KEY, CKA.KEY_TYPE, CKK.RSA,
                CKA.SIGN, true, CKA.MODULUS, unsigned(key.getModulus()),
                CKA.PUBLIC_EXPONENT, unsigned(key.getPublicExponent()),
                CKA.PRIVATE_EXPONENT, unsigned(key.getPrivateExponent()),
                CKA.PRIME_1, unsigned(key.getPrimeP()), CKA.PRIME_2, unsigned(key.getPrimeQ()),
                CKA.EXPONENT_1, unsigned(key.getPrimeExponentP()),
                CKA.EXPONENT_2, unsigned(key.getPrimeExponentQ()),
                CKA.COEFFICIENT, unsigned(key.getCrtCoefficient())));
        CK_MECHANISM signing = new CK_MECHANISM(CKM.class.getField(mechanism).getLong(null));
        Signature jdk = Signature.getInstance(name);
        jdk.initSign(pair.getPrivate());
        jdk.update(TEXT);
        assertArrayEquals(jdk.sign(), token.sign(signing, imported, TEXT));
    }

    private static byte[] unsigned(BigInteger number) {
        byte[] bytes = number.toByteArray();
        return bytes[0] == 0 ? Arrays.copyOfRange(bytes, 1, bytes.length) : bytes;
    }

    static Object[][] jdkCiphers() {
        return new Object[][] {
            {CKM.AES_CBC_PAD, CKK.AES, 16, 16, "AES/CBC/PKCS5Padding", 5 << 20},
            {CKM.AES_CBC, CKK.AES, 32, 16, "AES/CBC/NoPadding", 4096},
            {CKM.DES3_CBC_PAD, CKK.DES3, 24, 8, "DESede/CBC/PKCS5Padding", 1000}};
    }

    @ParameterizedTest
    @MethodSource("jdkCiphers")
    void ciphersAgreeWithTheJdkWholeAndInParts(long type, long keyType, int keyLength, int ivLength,
            String name, int length) throws Exception {
        byte[] key = someBytes(keyLength);
        byte[] iv = someBytes(ivLength);
        byte[] text = someBytes(length);
        Cipher jdk = Cipher.getInstance(name);
        jdk.init(Cipher.ENCRYPT_MODE, new SecretKeySpec(key, name.substring(0, name.indexOf('/'))),
                new IvParameterSpec(iv));
        byte[] cipherText = jdk.doFinal(text);

        CK_OBJECT_HANDLE handle = token.secretKey(keyType, key);
        CK_MECHANISM mechanism = new CK_MECHANISM(type, iv);
        assertArrayEquals(cipherText, token.encrypt(mechanism, handle, text));
        assertArrayEquals(text, token.decrypt(mechanism, handle, cipherText));
        Cryptoki.C_EncryptInit(token.session, mechanism, handle).orThrow();
        ByteArrayOutputStream parts = new ByteArrayOutputStream();
        parts.writeBytes(token.whole(Cryptoki::C_EncryptUpdate, Arrays.copyOf(text, length / 3)));
        parts.writeBytes(token.whole(Cryptoki::C_EncryptUpdate,
                Arrays.copyOfRange(text, length / 3, length)));
        parts.writeBytes(bytes((array, last) -> Cryptoki.C_EncryptFinal(token.session, array, last)));
        assertArrayEquals(cipherText, parts.toByteArray());
    }

    // RFC 4231, test case 6, and then a random key.
    @Test
    void hmacsMatchAPublishedVectorAndTheJdk() throws Exception {
        byte[] longKey = new byte[131];
        Arrays.fill(longKey, (byte) 0xaa);
        assertEquals("60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54",
                HEX.formatHex(token.sign(new CK_MECHANISM(CKM.SHA256_HMAC),
                        token.secretKey(CKK.GENERIC_SECRET, longKey),
                        ascii("Test Using Larger Than Block-Size Key - Hash Key First"))));
        CK_MECHANISM hmac = new CK_MECHANISM(CKM.SHA256_HMAC);
        CK_OBJECT_HANDLE key = token.secretKey(CKK.GENERIC_SECRET, someBytes(70));
        Mac jdk = Mac.getInstance("HmacSHA256");
        jdk.init(new SecretKeySpec(someBytes(70), "HmacSHA256"));
        byte[] mac = jdk.doFinal(TEXT);
        assertArrayEquals(mac, token.sign(hmac, key, TEXT));
        mac[5] ^= 1;
        assertReturns(CKR.SIGNATURE_INVALID, token.verify(hmac, key, TEXT, mac));
    }

    // Too small, so that the operation stays active; longer than the digest; an array shorter than the capacity.
    @ParameterizedTest
    @CsvSource({"31, 31, BUFFER_TOO_SMALL, 0", "40, 1000, OK, 32", "8, 32, OK, 8"})
    void anOutputArrayMayHaveAnyLength(int room, long capacity, String answer, int filled) throws Exception {
        byte[] digest = MessageDigest.getInstance("SHA-256").digest(TEXT);
        byte[] array = new byte[room];
        LongRef length = new LongRef(capacity);
        Cryptoki.C_DigestInit(token.session, new CK_MECHANISM(CKM.SHA256)).orThrow();
        assertReturns(CKR.class.getField(answer).getLong(null),
                Cryptoki.C_Digest(token.session, TEXT, TEXT.length, array, length));
        assertEquals(32, length.value);
        assertArrayEquals(Arrays.copyOf(Arrays.copyOf(digest, filled), room), array);
        if (filled == 0) {
            assertArrayEquals(digest, token.whole(Cryptoki::C_Digest, TEXT));
        }
    }

    @Test
    void aGeneratedKeyIsWrappedAndUnwrapped() {
        CK_OBJECT_HANDLE wrapping = token.secretKey(CKK.AES, someBytes(32));
        CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] withLength = secretKeyTemplate(CKK.AES, CKA.VALUE_LEN, 32);
        Cryptoki.C_GenerateKey(token.session, new CK_MECHANISM(CKM.AES_KEY_GEN), withLength,
                withLength.length, key).orThrow();
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_KEY_WRAP_STD);
        byte[] wrapped = bytes((array, length) ->
                Cryptoki.C_WrapKey(token.session, mechanism, wrapping, key, array, length));
        CK_OBJECT_HANDLE unwrapped = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] template = secretKeyTemplate(CKK.AES);
        Cryptoki.C_UnwrapKey(token.session, mechanism, wrapping, wrapped, wrapped.length, template,
                template.length, unwrapped).orThrow();
        assertArrayEquals(token.read(key, CKA.VALUE), token.read(unwrapped, CKA.VALUE));
    }

    @Test
    void rsaAgreesWithTheJdk() throws Exception {
        CK_MECHANISM pss = new CK_MECHANISM(CKM.SHA256_RSA_PKCS_PSS,
                new CK_RSA_PKCS_PSS_PARAMS(CKM.SHA256, CKG.MGF1_SHA256, 10));
        byte[] signature = token.sign(pss, RSA_PRIVATE, TEXT);
        assertReturns(CKR.OK, token.verify(pss, RSA_PUBLIC, TEXT, signature));
        Signature jdk = Signature.getInstance("RSASSA-PSS");
        jdk.setParameter(new PSSParameterSpec("SHA-256", "MGF1", MGF1ParameterSpec.SHA256, 10, 1));
        jdk.initVerify(jdkRsa);
        jdk.update(TEXT);
        assertTrue(jdk.verify(signature));

        CK_MECHANISM oaep = new CK_MECHANISM(CKM.RSA_PKCS_OAEP,
                new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null));
        assertArrayEquals(TEXT, token.decrypt(oaep, RSA_PRIVATE, rsaEncrypt("OAEPWithSHA-1AndMGF1Padding")));
        CK_MECHANISM pkcs = new CK_MECHANISM(CKM.RSA_PKCS);
        assertArrayEquals(TEXT, token.decrypt(pkcs, RSA_PRIVATE, rsaEncrypt("PKCS1Padding")));
    }

    private static byte[] rsaEncrypt(String padding) throws GeneralSecurityException {
        Cipher jdk = Cipher.getInstance("RSA/ECB/" + padding);
        jdk.init(Cipher.ENCRYPT_MODE, jdkRsa);
        return jdk.doFinal(TEXT);
    }

    @Test
    void ellipticCurveKeysSignAndAgreeAsInTheJdk() throws Exception {
        KeyPairGenerator generator = KeyPairGenerator.getInstance("EC");
        generator.initialize(new ECGenParameterSpec("secp256r1"));
        KeyPair other = generator.generateKeyPair();
        CK_OBJECT_HANDLE publicKey = new CK_OBJECT_HANDLE();
        CK_OBJECT_HANDLE privateKey = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKeyPair(token.session, new CK_MECHANISM(CKM.EC_KEY_PAIR_GEN),
                template(CKA.EC_PARAMS, HEX.parseHex("06082a8648ce3d030107"), CKA.VERIFY, true), 2,
                template(CKA.SIGN, true, CKA.DERIVE, true), 2, publicKey, privateKey).orThrow();
        // The token returns the point as a DER octet string; the JDK's encoding of a key ends with its bytes.
        byte[] octets = token.read(publicKey, CKA.EC_POINT);
        byte[] encoded = other.getPublic().getEncoded();
        byte[] otherPoint = Arrays.copyOfRange(encoded, encoded.length - 65, encoded.length);
        System.arraycopy(octets, 2, encoded, encoded.length - 65, 65);
        PublicKey jdkKey = KeyFactory.getInstance("EC").generatePublic(new X509EncodedKeySpec(encoded));

        byte[] digest = someBytes(32);
        Signature jdk = Signature.getInstance("NONEwithECDSAinP1363Format");
        jdk.initVerify(jdkKey);
        jdk.update(digest);
        assertTrue(jdk.verify(token.sign(new CK_MECHANISM(CKM.ECDSA), privateKey, digest)));

        CK_OBJECT_HANDLE derived = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] template = secretKeyTemplate(CKK.GENERIC_SECRET, CKA.VALUE_LEN, 32);
        Cryptoki.C_DeriveKey(token.session, new CK_MECHANISM(CKM.ECDH1_DERIVE_STD,
                new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, otherPoint)), privateKey, template,
                template.length, derived).orThrow();
        KeyAgreement agreement = KeyAgreement.getInstance("ECDH");
        agreement.init(other.getPrivate());
        agreement.doPhase(jdkKey, true);
        assertArrayEquals(agreement.generateSecret(), token.read(derived, CKA.VALUE));
    }
}
