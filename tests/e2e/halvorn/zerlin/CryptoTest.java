// Ciphers, digests, MACs, key wrapping and random numbers of the real soft token, held against published
// vectors and the JDK's own cryptography.
package halvorn.zerlin;

import static halvorn.zerlin.SoftToken.*;
import static org.junit.jupiter.api.Assertions.*;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.security.MessageDigest;
import java.util.Arrays;
import java.util.HexFormat;
import java.util.Random;
import java.util.function.Supplier;

import javax.crypto.Cipher;
import javax.crypto.Mac;
import javax.crypto.spec.IvParameterSpec;
import javax.crypto.spec.SecretKeySpec;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.RegisterExtension;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.MethodSource;

class CryptoTest {
    @RegisterExtension
    static final SoftToken token = new SoftToken();

    private static final String NIST_KEY_128 = "2b7e151628aed2a6abf7158809cf4f3c";
    private static final String NIST_KEY_192 = "8e73b0f7da0e6452c810f32b809079e562f8ead2522c6b7b";
    private static final String NIST_KEY_256 =
        "603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4";
    private static final String NIST_IV = "000102030405060708090a0b0c0d0e0f";
    private static final String NIST_TEXT = "6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
        + "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710";

    private static byte[] hex(String digits) {
        return HexFormat.of().parseHex(digits);
    }

    private static byte[] someBytes(int length) {
        byte[] bytes = new byte[length];
        new Random(length).nextBytes(bytes);
        return bytes;
    }

    // NIST SP 800-38A, F.1 and F.2: key, initialisation vector or null, cipher text.
    static Object[][] nistCiphers() {
        return new Object[][] {
            {NIST_KEY_128, null, "3ad77bb40d7a3660a89ecaf32466ef97f5d3d58503b9699de785895a96fdbaaf"
                + "43b1cd7f598ece23881b00e3ed0306887b0c785e27e8ad3f8223207104725dd4"},
            {NIST_KEY_192, null, "bd334f1d6e45f25ff712a214571fa5cc974104846d0ad3ad7734ecb3ecee4eef"
                + "ef7afd2270e2e60adce0ba2face6444e9a4b41ba738d6c72fb16691603c18e0e"},
            {NIST_KEY_256, null, "f3eed1bdb5d2a03c064b5a7e3db181f8591ccb10d410ed26dc5ba74a31362870"
                + "b6ed21b99ca6f4f9f153e7b1beafed1d23304b7a39f9f3ff067d8d8f9e24ecc7"},
            {NIST_KEY_128, NIST_IV, "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
                + "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7"},
            {NIST_KEY_192, NIST_IV, "4f021db243bc633d7178183a9fa071e8b4d9ada9ad7dedf4e5e738763f69145a"
                + "571b242012fb7ae07fa9baac3df102e008b0e27988598881d920a9e64f5615cd"},
            {NIST_KEY_256, NIST_IV, "f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d"
                + "39f23369a9d9bacfa530e26304231461b2eb05e2c39be9fcda6c19078c6a9d1b"}};
    }

    @ParameterizedTest
    @MethodSource("nistCiphers")
    void aesGivesThePublishedCipherText(String key, String iv, String cipherText) {
        CK_MECHANISM mechanism =
            iv == null ? new CK_MECHANISM(CKM.AES_ECB) : new CK_MECHANISM(CKM.AES_CBC, hex(iv));
        CK_OBJECT_HANDLE aes = token.secretKey(CKK.AES, hex(key));
        assertArrayEquals(hex(cipherText), token.encrypt(mechanism, aes, hex(NIST_TEXT)));
        assertArrayEquals(hex(NIST_TEXT), token.decrypt(mechanism, aes, hex(cipherText)));
    }

    // FIPS 180-4: the digest of "abc".
    @ParameterizedTest
    @CsvSource({
        "SHA_1,  a9993e364706816aba3e25717850c26c9cd0d89d",
        "SHA224, 23097d223405d8228642a477bda255b32aadbce4bda0b3f7e36c9da7",
        "SHA256, ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
        "SHA512, ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
            + "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f"})
    void digestsAreThePublishedOnes(String mechanism, String digest) throws Exception {
        long type = CKM.class.getField(mechanism).getLong(null);
        assertArrayEquals(hex(digest), token.digest(type, ascii("abc")));
    }

    // RFC 4231, test case 6, and RFC 4493, examples 1 and 4.
    static Object[][] publishedMacs() {
        String longKey = "aa".repeat(131);
        String text = HexFormat.of().formatHex(ascii(
                "Test Using Larger Than Block-Size Key - Hash Key First"));
        return new Object[][] {
            {CKM.SHA224_HMAC, longKey, text, "95e9a0db962095adaebe9b2d6f0dbce2d499f112f2d2b7273fa6870e"},
            {CKM.SHA256_HMAC, longKey, text,
                "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54"},
            {CKM.SHA512_HMAC, longKey, text,
                "80b24263c7c1a3ebb71493c1dd7be8b49b46d1f41b4aeec1121b013783f8f352"
                + "6b56d037e05f2598bd0fd2215d6a1e5295e64f73f63f0aec8b915a985d786598"},
            {CKM.AES_CMAC, NIST_KEY_128, "", "bb1d6929e95937287fa37d129b756746"},
            {CKM.AES_CMAC, NIST_KEY_128, NIST_TEXT, "51f0bebf7e3b9d92fc49741779363cfe"}};
    }

    @ParameterizedTest
    @MethodSource("publishedMacs")
    void macsAreThePublishedOnes(long type, String key, String text, String mac) {
        CK_MECHANISM mechanism = new CK_MECHANISM(type);
        long keyType = type == CKM.AES_CMAC ? CKK.AES : CKK.GENERIC_SECRET;
        CK_OBJECT_HANDLE handle = token.secretKey(keyType, hex(key));
        assertArrayEquals(hex(mac), token.sign(mechanism, handle, hex(text)));
        byte[] wrong = hex(mac);
        wrong[5] ^= 1;
        assertAnswers(CKR.OK, token.verify(mechanism, handle, hex(text), hex(mac)));
        assertAnswers(CKR.SIGNATURE_INVALID, token.verify(mechanism, handle, hex(text), wrong));
        assertAnswers(CKR.SIGNATURE_LEN_RANGE, token.verify(mechanism, handle, hex(text), new byte[3]));
    }

    static Object[][] jdkCiphers() {
        return new Object[][] {
            {CKM.AES_CBC, CKK.AES, 32, 16, "AES/CBC/NoPadding", 4096},
            {CKM.AES_CBC_PAD, CKK.AES, 24, 16, "AES/CBC/PKCS5Padding", 4093},
            {CKM.AES_CBC_PAD, CKK.AES, 16, 16, "AES/CBC/PKCS5Padding", 5 << 20},
            {CKM.AES_ECB, CKK.AES, 16, 0, "AES/ECB/NoPadding", 4096},
            {CKM.DES3_CBC_PAD, CKK.DES3, 24, 8, "DESede/CBC/PKCS5Padding", 1000}};
    }

    @ParameterizedTest
    @MethodSource("jdkCiphers")
    void ciphersAgreeWithTheJdkWholeAndInParts(long type, long keyType, int keyLength, int ivLength,
            String name, int length) throws Exception {
        byte[] key = someBytes(keyLength);
        byte[] iv = ivLength == 0 ? null : someBytes(ivLength);
        byte[] text = someBytes(length);
        Cipher jdk = Cipher.getInstance(name);
        jdk.init(Cipher.ENCRYPT_MODE, new SecretKeySpec(key, name.substring(0, name.indexOf('/'))),
                iv == null ? null : new IvParameterSpec(iv));
        byte[] cipherText = jdk.doFinal(text);

        CK_OBJECT_HANDLE handle = token.secretKey(keyType, key);
        CK_MECHANISM mechanism = new CK_MECHANISM(type, iv);
        assertArrayEquals(cipherText, token.encrypt(mechanism, handle, text));
        assertArrayEquals(text, token.decrypt(mechanism, handle, cipherText));
        for (int part : new int[] {length / 20 + 1, length}) {
            Cryptoki.C_EncryptInit(token.session, mechanism, handle).orThrow();
            assertArrayEquals(cipherText, token.parts(Cryptoki::C_EncryptUpdate, (array, reported) ->
                    Cryptoki.C_EncryptFinal(token.session, array, reported), text, part));
            Cryptoki.C_DecryptInit(token.session, mechanism, handle).orThrow();
            assertArrayEquals(text, token.parts(Cryptoki::C_DecryptUpdate, (array, reported) ->
                    Cryptoki.C_DecryptFinal(token.session, array, reported), cipherText, part));
        }
    }

    @ParameterizedTest
    @CsvSource({
        "MD5, MD5, MD5_HMAC, HmacMD5", "SHA_1, SHA-1, SHA_1_HMAC, HmacSHA1",
        "SHA224, SHA-224, SHA224_HMAC, HmacSHA224", "SHA256, SHA-256, SHA256_HMAC, HmacSHA256",
        "SHA384, SHA-384, SHA384_HMAC, HmacSHA384", "SHA512, SHA-512, SHA512_HMAC, HmacSHA512"})
    void digestsAndHmacsAgreeWithTheJdk(String digest, String jdkDigest, String hmac, String jdkHmac)
            throws Exception {
        CK_MECHANISM digestMechanism = new CK_MECHANISM(CKM.class.getField(digest).getLong(null));
        CK_MECHANISM hmacMechanism = new CK_MECHANISM(CKM.class.getField(hmac).getLong(null));
        byte[] key = someBytes(70);
        CK_OBJECT_HANDLE handle = token.secretKey(CKK.GENERIC_SECRET, key);
        MessageDigest jdk = MessageDigest.getInstance(jdkDigest);
        Mac jdkMac = Mac.getInstance(jdkHmac);
        jdkMac.init(new SecretKeySpec(key, jdkHmac));
        for (int length : new int[] {0, 1, 100_000}) {
            byte[] text = someBytes(length);
            byte[] expected = jdk.digest(text);
            byte[] mac = jdkMac.doFinal(text);
            assertArrayEquals(expected, token.digest(digestMechanism.mechanism.m_value, text));
            assertArrayEquals(mac, token.sign(hmacMechanism, handle, text));
            assertAnswers(CKR.OK, token.verify(hmacMechanism, handle, text, mac));

            Cryptoki.C_DigestInit(token.session, digestMechanism).orThrow();
            Cryptoki.C_DigestUpdate(token.session, text, length / 3).orThrow();
            byte[] rest = Arrays.copyOfRange(text, length / 3, length);
            Cryptoki.C_DigestUpdate(token.session, rest, rest.length).orThrow();
            assertArrayEquals(expected, bytes((array, reported) ->
                    Cryptoki.C_DigestFinal(token.session, array, reported)));

            Cryptoki.C_SignInit(token.session, hmacMechanism, handle).orThrow();
            Cryptoki.C_SignUpdate(token.session, text, length / 3).orThrow();
            Cryptoki.C_SignUpdate(token.session, rest, rest.length).orThrow();
            assertArrayEquals(mac, bytes((array, reported) ->
                    Cryptoki.C_SignFinal(token.session, array, reported)));
            Cryptoki.C_VerifyInit(token.session, hmacMechanism, handle).orThrow();
            Cryptoki.C_VerifyUpdate(token.session, text, length).orThrow();
            assertAnswers(CKR.OK, Cryptoki.C_VerifyFinal(token.session, mac, mac.length));
        }
    }

    @Test
    void aKeyIsDigestedWithoutLeavingTheToken() throws Exception {
        CK_OBJECT_HANDLE key = token.secretKey(CKK.GENERIC_SECRET, ascii("secret"));
        Cryptoki.C_DigestInit(token.session, new CK_MECHANISM(CKM.SHA256)).orThrow();
        assertAnswers(CKR.OK, Cryptoki.C_DigestUpdate(token.session, ascii("salt"), 4));
        assertAnswers(CKR.OK, Cryptoki.C_DigestKey(token.session, key));
        assertArrayEquals(MessageDigest.getInstance("SHA-256").digest(ascii("saltsecret")),
                bytes((array, length) -> Cryptoki.C_DigestFinal(token.session, array, length)));
    }

    @Test
    void aGeneratedKeyIsWrappedAndUnwrappedAsInTheJdk() throws Exception {
        // RFC 3394, 4.6
        byte[] wrappingKey = hex(NIST_IV + "101112131415161718191a1b1c1d1e1f");
        byte[] published = hex("00112233445566778899aabbccddeeff" + NIST_IV);
        CK_OBJECT_HANDLE wrapping = token.secretKey(CKK.AES, wrappingKey);
        assertArrayEquals(
                hex("28c9f404c4b810f4cbccb35cfb87f8263f5786e2d80ed326cbc7f0e71a99f43bfb988b9b7a02dd21"),
                wrap(CKM.AES_KEY_WRAP_STD, wrapping, token.secretKey(CKK.AES, published)));

        CK_OBJECT_HANDLE generated = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] template = secretKeyTemplate(CKK.AES, CKA.VALUE_LEN, 32);
        Cryptoki.C_GenerateKey(token.session, new CK_MECHANISM(CKM.AES_KEY_GEN), template, template.length,
                generated).orThrow();
        byte[] value = token.read(generated, CKA.VALUE);
        assertEquals(32, value.length);
        for (long type : new long[] {CKM.AES_KEY_WRAP_STD, CKM.AES_KEY_WRAP_PAD_STD}) {
            byte[] wrapped = wrap(type, wrapping, generated);
            Cipher jdk = Cipher.getInstance(type == CKM.AES_KEY_WRAP_STD ? "AESWrap" : "AESWrapPad");
            jdk.init(Cipher.UNWRAP_MODE, new SecretKeySpec(wrappingKey, "AES"));
            assertArrayEquals(value, jdk.unwrap(wrapped, "AES", Cipher.SECRET_KEY).getEncoded());

            CK_OBJECT_HANDLE unwrapped = new CK_OBJECT_HANDLE(77);
            CK_ATTRIBUTE[] aes = secretKeyTemplate(CKK.AES);
            CK_MECHANISM mechanism = new CK_MECHANISM(type);
            assertAnswers(CKR.WRAPPED_KEY_LEN_RANGE, Cryptoki.C_UnwrapKey(token.session, mechanism, wrapping,
                    wrapped, wrapped.length - 1, aes, aes.length, unwrapped));
            assertEquals(77, unwrapped.m_value);
            Cryptoki.C_UnwrapKey(token.session, mechanism, wrapping, wrapped, wrapped.length, aes, aes.length,
                    unwrapped).orThrow();
            assertArrayEquals(value, token.read(unwrapped, CKA.VALUE));
        }
        CK_OBJECT_HANDLE kept = token.create(CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, CKK.AES,
                CKA.VALUE, published);
        assertAnswers(CKR.KEY_UNEXTRACTABLE, Cryptoki.C_WrapKey(token.session,
                new CK_MECHANISM(CKM.AES_KEY_WRAP_STD), wrapping, kept, null, new LongRef()));
    }

    private static byte[] wrap(long type, CK_OBJECT_HANDLE wrapping, CK_OBJECT_HANDLE key) {
        return bytes((array, length) ->
                Cryptoki.C_WrapKey(token.session, new CK_MECHANISM(type), wrapping, key, array, length));
    }

    @Test
    void aKeyIsDerivedByEncryptingData() throws Exception {
        byte[] base = someBytes(16);
        byte[] text = someBytes(32);
        CK_OBJECT_HANDLE derived = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] template = secretKeyTemplate(CKK.AES, CKA.VALUE_LEN, 32);
        Cryptoki.C_DeriveKey(token.session,
                new CK_MECHANISM(CKM.AES_ECB_ENCRYPT_DATA, new CK_KEY_DERIVATION_STRING_DATA(text)),
                token.secretKey(CKK.AES, base), template, template.length, derived).orThrow();
        Cipher jdk = Cipher.getInstance("AES/ECB/NoPadding");
        jdk.init(Cipher.ENCRYPT_MODE, new SecretKeySpec(base, "AES"));
        assertArrayEquals(jdk.doFinal(text), token.read(derived, CKA.VALUE));
    }

    @Test
    void randomBytesDifferAndFillTheArray() {
        byte[] seed = ascii("a seed");
        assertAnswers(CKR.OK, Cryptoki.C_SeedRandom(token.session, seed, seed.length));
        byte[] first = new byte[32];
        byte[] second = new byte[40];
        assertAnswers(CKR.OK, Cryptoki.C_GenerateRandom(token.session, first, 32));
        assertAnswers(CKR.OK, Cryptoki.C_GenerateRandom(token.session, second, 32));
        assertFalse(Arrays.equals(first, Arrays.copyOf(second, 32)));
        assertArrayEquals(new byte[8], Arrays.copyOfRange(second, 32, 40));
        byte[] cut = new byte[3];
        assertAnswers(CKR.OK, Cryptoki.C_GenerateRandom(token.session, cut, 1000));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_GenerateRandom(token.session, null, 4));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_SeedRandom(token.session, null, 4));
    }

    @Test
    void anOutputArrayMayHaveAnyLength() {
        byte[] digest = token.digest(CKM.SHA256, ascii("abc"));
        byte[] array = new byte[40];
        Arrays.fill(array, (byte) 9);
        byte[] untouched = array.clone();
        Cryptoki.C_DigestInit(token.session, new CK_MECHANISM(CKM.SHA256)).orThrow();
        LongRef length = new LongRef(31);
        assertAnswers(CKR.BUFFER_TOO_SMALL, Cryptoki.C_Digest(token.session, ascii("abc"), 3, array, length));
        assertEquals(32, length.value);
        assertArrayEquals(untouched, array);

        // The operation went on. The array is longer than the digest, and the capacity longer still.
        length.value = 1 << 20;
        assertAnswers(CKR.OK, Cryptoki.C_Digest(token.session, ascii("abc"), 3, array, length));
        assertEquals(32, length.value);
        System.arraycopy(digest, 0, untouched, 0, 32);
        assertArrayEquals(untouched, array);

        Cryptoki.C_DigestInit(token.session, new CK_MECHANISM(CKM.SHA256)).orThrow();
        byte[] cut = new byte[8];
        length.value = 32;
        assertAnswers(CKR.OK, Cryptoki.C_Digest(token.session, ascii("abc"), 3, cut, length));
        assertEquals(32, length.value);
        assertArrayEquals(Arrays.copyOf(digest, 8), cut);
    }

    static Object[][] badInitialisations() {
        CK_MECHANISM untyped = new CK_MECHANISM(CKM.AES_ECB);
        untyped.mechanism = null;
        return new Object[][] {
            {CKR.ARGUMENTS_BAD, null}, {CKR.MECHANISM_INVALID, untyped},
            {CKR.MECHANISM_INVALID, new CK_MECHANISM(CKM.VISA_CVV)},
            {CKR.KEY_TYPE_INCONSISTENT, new CK_MECHANISM(CKM.RSA_PKCS)},
            {CKR.ARGUMENTS_BAD, new CK_MECHANISM(CKM.AES_CBC)},
            {CKR.ARGUMENTS_BAD, new CK_MECHANISM(CKM.AES_CBC, new byte[0])}};
    }

    @ParameterizedTest
    @MethodSource("badInitialisations")
    void aBadMechanismIsRefusedAndLeavesTheSessionFree(long answer, CK_MECHANISM mechanism) {
        CK_OBJECT_HANDLE key = token.secretKey(CKK.AES, new byte[16]);
        assertAnswers(answer, Cryptoki.C_EncryptInit(token.session, mechanism, key));
        assertAnswers(answer, Cryptoki.C_DecryptInit(token.session, mechanism, key));
        assertEquals(16, token.encrypt(new CK_MECHANISM(CKM.AES_ECB), key, new byte[16]).length);
    }

    @Test
    void badArgumentsAreAnswered() {
        CK_SESSION_HANDLE session = token.session;
        CK_OBJECT_HANDLE key = token.secretKey(CKK.AES, new byte[16]);
        CK_MECHANISM ecb = new CK_MECHANISM(CKM.AES_ECB);
        LongRef length = new LongRef(16);
        byte[] block = new byte[16];
        assertAnswers(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_EncryptInit(null, ecb, key));
        assertAnswers(CKR.OBJECT_HANDLE_INVALID, Cryptoki.C_EncryptInit(session, ecb, null));
        assertAnswers(CKR.OPERATION_NOT_INITIALIZED, Cryptoki.C_Encrypt(session, block, 16, block, length));
        Cryptoki.C_EncryptInit(session, ecb, key).orThrow();
        assertAnswers(CKR.OPERATION_ACTIVE, Cryptoki.C_EncryptInit(session, ecb, key));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_Encrypt(session, block, 16, block, null));
        assertAnswers(CKR.DATA_LEN_RANGE, Cryptoki.C_Encrypt(session, block, 15, block, length));

        CK_MECHANISM strange = new CK_MECHANISM(CKM.AES_CBC);
        strange.pParameter = new Thread();
        assertThrows(UnsupportedOperationException.class,
                () -> Cryptoki.C_EncryptInit(session, strange, key));
        CK_OBJECT_HANDLE made = new CK_OBJECT_HANDLE(77);
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_GenerateKey(session, null, null, 0, made));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_GenerateKey(session, ecb, null, 3, made));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_UnwrapKey(session, ecb, key, null, 0, null, 0, made));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_WrapKey(session, ecb, key, key, block, null));
        assertEquals(77, made.m_value);
    }

    static Object[][] unsupported() {
        CK_MECHANISM rsa = new CK_MECHANISM(CKM.RSA_PKCS);
        CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE(1);
        return new Object[][] {
            {"C_DigestEncryptUpdate", dual(Cryptoki::C_DigestEncryptUpdate)},
            {"C_DecryptDigestUpdate", dual(Cryptoki::C_DecryptDigestUpdate)},
            {"C_SignEncryptUpdate", dual(Cryptoki::C_SignEncryptUpdate)},
            {"C_DecryptVerifyUpdate", dual(Cryptoki::C_DecryptVerifyUpdate)},
            {"C_SignRecoverInit", call(() -> Cryptoki.C_SignRecoverInit(token.session, rsa, key))},
            {"C_SignRecover", dual(Cryptoki::C_SignRecover)},
            {"C_VerifyRecoverInit", call(() -> Cryptoki.C_VerifyRecoverInit(token.session, rsa, key))},
            {"C_VerifyRecover", dual(Cryptoki::C_VerifyRecover)}};
    }

    @ParameterizedTest(name = "{0}")
    @MethodSource("unsupported")
    void whatTheTokenCannotDoIsAnswered(String name, Supplier<CK_RV> call) {
        assertAnswers(CKR.FUNCTION_NOT_SUPPORTED, call.get());
    }

    private static Supplier<CK_RV> call(Supplier<CK_RV> call) {
        return call;
    }

    private static Supplier<CK_RV> dual(SoftToken.Transformation native_) {
        return () -> native_.call(token.session, new byte[16], 16, new byte[16], new LongRef(16));
    }
}
