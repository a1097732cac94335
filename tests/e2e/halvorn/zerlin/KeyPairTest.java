// RSA and elliptic curve keys, made by the real soft token or brought into it, held against the JDK's own
// cryptography in both directions.
package halvorn.zerlin;

import static halvorn.zerlin.SoftToken.*;
import static org.junit.jupiter.api.Assertions.*;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.math.BigInteger;
import java.security.*;
import java.security.interfaces.ECPrivateKey;
import java.security.interfaces.ECPublicKey;
import java.security.interfaces.RSAPrivateCrtKey;
import java.security.spec.*;
import java.util.Arrays;
import java.util.HexFormat;

import javax.crypto.Cipher;
import javax.crypto.KeyAgreement;
import javax.crypto.spec.SecretKeySpec;

import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.RegisterExtension;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.MethodSource;

class KeyPairTest {
    @RegisterExtension
    static final SoftToken token = new SoftToken();

    private static final byte[] TEXT = ascii("the text that is signed");
    private static final byte[] OTHER_TEXT = ascii("another text");
    private static final String PSS = "RSASSA-PSS";
    private static final String P256 = "06082a8648ce3d030107";

    private static KeyPair jdkRsa;

    @BeforeAll
    static void makeAKeyInTheJdk() throws GeneralSecurityException {
        KeyPairGenerator generator = KeyPairGenerator.getInstance("RSA");
        generator.initialize(2048);
        jdkRsa = generator.generateKeyPair();
    }

    private static byte[] unsigned(BigInteger value) {
        byte[] bytes = value.toByteArray();
        return bytes[0] == 0 ? Arrays.copyOfRange(bytes, 1, bytes.length) : bytes;
    }

    private static CK_OBJECT_HANDLE importRsaPublic() {
        RSAPrivateCrtKey key = (RSAPrivateCrtKey) jdkRsa.getPrivate();
        return token.create(CKA.CLASS, CKO.PUBLIC_KEY, CKA.KEY_TYPE, CKK.RSA,
                CKA.ENCRYPT, true, CKA.VERIFY, true, CKA.WRAP, true,
                CKA.MODULUS, unsigned(key.getModulus()),
                CKA.PUBLIC_EXPONENT, unsigned(key.getPublicExponent()));
    }

    private static CK_OBJECT_HANDLE importRsaPrivate() {
        RSAPrivateCrtKey key = (RSAPrivateCrtKey) jdkRsa.getPrivate();
        return token.create(CKA.CLASS, CKO.PRIVATE_KEY, CKA.KEY_TYPE, CKK.RSA,
                CKA.DECRYPT, true, CKA.SIGN, true,
                CKA.EXTRACTABLE, true, CKA.SENSITIVE, true,
                CKA.MODULUS, unsigned(key.getModulus()),
                CKA.PUBLIC_EXPONENT, unsigned(key.getPublicExponent()),
                CKA.PRIVATE_EXPONENT, unsigned(key.getPrivateExponent()),
                CKA.PRIME_1, unsigned(key.getPrimeP()), CKA.PRIME_2, unsigned(key.getPrimeQ()),
                CKA.EXPONENT_1, unsigned(key.getPrimeExponentP()),
                CKA.EXPONENT_2, unsigned(key.getPrimeExponentQ()),
                CKA.COEFFICIENT, unsigned(key.getCrtCoefficient()));
    }

    static Object[][] rsaSignatures() {
        return new Object[][] {
            {new CK_MECHANISM(CKM.RSA_PKCS), "NONEwithRSA", null},
            {new CK_MECHANISM(CKM.SHA1_RSA_PKCS), "SHA1withRSA", null},
            {new CK_MECHANISM(CKM.SHA256_RSA_PKCS), "SHA256withRSA", null},
            {new CK_MECHANISM(CKM.SHA512_RSA_PKCS), "SHA512withRSA", null},
            {pss(CKM.SHA1_RSA_PKCS_PSS, CKM.SHA_1, CKG.MGF1_SHA1, 20), PSS, jdkPss("SHA-1", 20)},
            {pss(CKM.SHA256_RSA_PKCS_PSS, CKM.SHA256, CKG.MGF1_SHA256, 0), PSS, jdkPss("SHA-256", 0)},
            {pss(CKM.SHA384_RSA_PKCS_PSS, CKM.SHA384, CKG.MGF1_SHA384, 48), PSS, jdkPss("SHA-384", 48)},
            {pss(CKM.SHA512_RSA_PKCS_PSS, CKM.SHA512, CKG.MGF1_SHA512, 10), PSS, jdkPss("SHA-512", 10)}};
    }

    private static CK_MECHANISM pss(long type, long hash, long mgf, long saltLength) {
        return new CK_MECHANISM(type, new CK_RSA_PKCS_PSS_PARAMS(hash, mgf, saltLength));
    }

    private static PSSParameterSpec jdkPss(String hash, int saltLength) {
        return new PSSParameterSpec(hash, "MGF1", new MGF1ParameterSpec(hash), saltLength, 1);
    }

    @ParameterizedTest(name = "{0}")
    @MethodSource("rsaSignatures")
    void rsaSignaturesAgreeWithTheJdk(CK_MECHANISM mechanism, String name, PSSParameterSpec pss)
            throws Exception {
        Signature jdk = Signature.getInstance(name);
        if (pss != null) {
            jdk.setParameter(pss);
        }
        byte[] signature = token.sign(mechanism, importRsaPrivate(), TEXT);
        jdk.initVerify(jdkRsa.getPublic());
        jdk.update(TEXT);
        assertTrue(jdk.verify(signature));

        jdk.initSign(jdkRsa.getPrivate());
        jdk.update(TEXT);
        byte[] jdkSignature = jdk.sign();
        CK_OBJECT_HANDLE publicKey = importRsaPublic();
        assertAnswers(CKR.OK, token.verify(mechanism, publicKey, TEXT, jdkSignature));
        assertAnswers(CKR.SIGNATURE_INVALID, token.verify(mechanism, publicKey, OTHER_TEXT, jdkSignature));
        assertAnswers(CKR.SIGNATURE_LEN_RANGE, token.verify(mechanism, publicKey, TEXT, new byte[9]));
    }

    @Test
    void pssParametersReachTheToken() {
        CK_OBJECT_HANDLE key = importRsaPrivate();
        for (CK_MECHANISM wrong : new CK_MECHANISM[] {new CK_MECHANISM(CKM.SHA256_RSA_PKCS_PSS),
            pss(CKM.SHA256_RSA_PKCS_PSS, CKM.SHA_1, CKG.MGF1_SHA256, 32),
            pss(CKM.SHA256_RSA_PKCS_PSS, CKM.SHA256, CKG.MGF1_SHA1, 32)}) {
            assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_SignInit(token.session, wrong, key));
        }
        CK_MECHANISM tooMuchSalt = pss(CKM.SHA256_RSA_PKCS_PSS, CKM.SHA256, CKG.MGF1_SHA256, 4000);
        assertAnswers(CKR.MECHANISM_INVALID, Cryptoki.C_SignInit(token.session, tooMuchSalt, key));
    }

    static Object[][] rsaEncryptions() {
        return new Object[][] {
            {new CK_MECHANISM(CKM.RSA_PKCS), "RSA/ECB/PKCS1Padding", 50},
            {oaep(null), "RSA/ECB/OAEPWithSHA-1AndMGF1Padding", 50},
            {new CK_MECHANISM(CKM.RSA_X_509), "RSA/ECB/NoPadding", 256}};
    }

    private static CK_MECHANISM oaep(byte[] label) {
        return new CK_MECHANISM(CKM.RSA_PKCS_OAEP,
                new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, label));
    }

    @ParameterizedTest(name = "{0}")
    @MethodSource("rsaEncryptions")
    void rsaEncryptionAgreesWithTheJdk(CK_MECHANISM mechanism, String name, int length) throws Exception {
        byte[] text = new byte[length];
        Arrays.fill(text, 1, length, (byte) 0x5a);
        Cipher jdk = Cipher.getInstance(name);
        jdk.init(Cipher.ENCRYPT_MODE, jdkRsa.getPublic());
        assertArrayEquals(text, token.decrypt(mechanism, importRsaPrivate(), jdk.doFinal(text)));
        jdk.init(Cipher.DECRYPT_MODE, jdkRsa.getPrivate());
        assertArrayEquals(text, jdk.doFinal(token.encrypt(mechanism, importRsaPublic(), text)));
    }

    @Test
    void oaepParametersReachTheToken() {
        CK_OBJECT_HANDLE key = importRsaPublic();
        CK_RSA_PKCS_OAEP_PARAMS sha256 = new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA256, CKG.MGF1_SHA256, null);
        CK_RSA_PKCS_OAEP_PARAMS noSource = new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null);
        noSource.source.m_value = 0;
        // This token knows OAEP with SHA-1 and without a label only.
        for (CK_MECHANISM refused : new CK_MECHANISM[] {
            new CK_MECHANISM(CKM.RSA_PKCS_OAEP), new CK_MECHANISM(CKM.RSA_PKCS_OAEP, sha256),
            new CK_MECHANISM(CKM.RSA_PKCS_OAEP, noSource), oaep(ascii("label"))}) {
            assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_EncryptInit(token.session, refused, key));
        }
    }

    @Test
    void anRsaKeyPairIsMadeAsTheTemplatesSay() throws Exception {
        CK_ATTRIBUTE[] publicTemplate = template(CKA.MODULUS_BITS, 1024, CKA.LABEL, "pair",
                CKA.PUBLIC_EXPONENT, new byte[] {1, 0, 1}, CKA.VERIFY, true);
        CK_ATTRIBUTE[] privateTemplate = template(CKA.SIGN, true, CKA.ID, new byte[] {7});
        CK_MECHANISM generate = new CK_MECHANISM(CKM.RSA_PKCS_KEY_PAIR_GEN);
        CK_OBJECT_HANDLE publicKey = new CK_OBJECT_HANDLE();
        CK_OBJECT_HANDLE privateKey = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKeyPair(token.session, generate, publicTemplate, 4, privateTemplate, 2, publicKey,
                privateKey).orThrow();
        BigInteger modulus = new BigInteger(1, token.read(publicKey, CKA.MODULUS));
        assertEquals(1024, modulus.bitLength());
        assertArrayEquals(ascii("pair"), token.read(publicKey, CKA.LABEL));
        assertArrayEquals(new byte[] {7}, token.read(privateKey, CKA.ID));
        CK_ATTRIBUTE madeBy = new CK_ATTRIBUTE(CKA.KEY_GEN_MECHANISM, new CK_MECHANISM_TYPE(77));
        Cryptoki.C_GetAttributeValue(token.session, privateKey, new CK_ATTRIBUTE[] {madeBy}, 1).orThrow();
        assertEquals(new CK_MECHANISM_TYPE(CKM.RSA_PKCS_KEY_PAIR_GEN), madeBy.pValue);

        Signature jdk = Signature.getInstance("SHA256withRSA");
        jdk.initVerify(KeyFactory.getInstance("RSA").generatePublic(
                new RSAPublicKeySpec(modulus, BigInteger.valueOf(0x10001))));
        jdk.update(TEXT);
        Cryptoki.C_SignInit(token.session, new CK_MECHANISM(CKM.SHA256_RSA_PKCS), privateKey).orThrow();
        Cryptoki.C_SignUpdate(token.session, TEXT, 5).orThrow();
        byte[] rest = Arrays.copyOfRange(TEXT, 5, TEXT.length);
        Cryptoki.C_SignUpdate(token.session, rest, rest.length).orThrow();
        assertTrue(jdk.verify(bytes((array, length) ->
                Cryptoki.C_SignFinal(token.session, array, length))));

        publicKey.m_value = 77;
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_GenerateKeyPair(token.session, generate, publicTemplate,
                4, null, 1, publicKey, privateKey));
        assertAnswers(CKR.TEMPLATE_INCOMPLETE, Cryptoki.C_GenerateKeyPair(token.session, generate, null, 0,
                null, 0, publicKey, privateKey));
        assertEquals(77, publicKey.m_value);
    }

    @Test
    void keysAreWrappedForTheJdk() throws Exception {
        byte[] aes = ascii("0123456789abcdef");
        CK_OBJECT_HANDLE wrapping = token.secretKey(CKK.AES, aes);
        byte[] wrapped = bytes((array, length) ->
                Cryptoki.C_WrapKey(token.session, oaep(null), importRsaPublic(), wrapping, array, length));
        assertArrayEquals(aes, unwrap("RSA/ECB/OAEPWithSHA-1AndMGF1Padding", jdkRsa.getPrivate(), wrapped,
                Cipher.SECRET_KEY).getEncoded());

        CK_MECHANISM pad = new CK_MECHANISM(CKM.AES_KEY_WRAP_PAD_STD);
        byte[] wrappedRsa = bytes((array, length) ->
                Cryptoki.C_WrapKey(token.session, pad, wrapping, importRsaPrivate(), array, length));
        assertEquals(jdkRsa.getPrivate(),
                unwrap("AESWrapPad", new SecretKeySpec(aes, "AES"), wrappedRsa, Cipher.PRIVATE_KEY));

        CK_ATTRIBUTE[] template =
            template(CKA.CLASS, CKO.PRIVATE_KEY, CKA.KEY_TYPE, CKK.RSA, CKA.SIGN, true);
        CK_OBJECT_HANDLE unwrapped = new CK_OBJECT_HANDLE();
        Cryptoki.C_UnwrapKey(token.session, pad, wrapping, wrappedRsa, wrappedRsa.length, template, 3,
                unwrapped).orThrow();
        CK_MECHANISM pkcs = new CK_MECHANISM(CKM.SHA256_RSA_PKCS);
        assertArrayEquals(token.sign(pkcs, importRsaPrivate(), TEXT), token.sign(pkcs, unwrapped, TEXT));
    }

    private static Key unwrap(String name, Key key, byte[] wrapped, int kind)
            throws GeneralSecurityException {
        Cipher jdk = Cipher.getInstance(name);
        jdk.init(Cipher.UNWRAP_MODE, key);
        return jdk.unwrap(wrapped, kind == Cipher.PRIVATE_KEY ? "RSA" : "AES", kind);
    }

    @ParameterizedTest
    @CsvSource({"secp256r1, " + P256 + ", SHA-256", "secp384r1, 06052b81040022, SHA-384"})
    void ecdsaAgreesWithTheJdk(String curve, String oid, String hash) throws Exception {
        byte[] params = HexFormat.of().parseHex(oid);
        byte[] digest = MessageDigest.getInstance(hash).digest(TEXT);
        CK_MECHANISM ecdsa = new CK_MECHANISM(CKM.ECDSA);
        CK_OBJECT_HANDLE publicKey = new CK_OBJECT_HANDLE();
        CK_OBJECT_HANDLE privateKey = ecKeyPair(params, publicKey);
        Signature jdk = Signature.getInstance("NONEwithECDSAinP1363Format");
        jdk.initVerify(jdkPublic(curve, token.read(publicKey, CKA.EC_POINT)));
        jdk.update(digest);
        assertTrue(jdk.verify(token.sign(ecdsa, privateKey, digest)));

        KeyPair pair = jdkEcPair(curve);
        jdk.initSign(pair.getPrivate());
        jdk.update(digest);
        byte[] signature = jdk.sign();
        CK_OBJECT_HANDLE imported = token.create(CKA.CLASS, CKO.PUBLIC_KEY, CKA.KEY_TYPE, CKK.EC,
                CKA.VERIFY, true, CKA.EC_PARAMS, params, CKA.EC_POINT, octets(point(pair)));
        assertAnswers(CKR.OK, token.verify(ecdsa, imported, digest, signature));
        assertAnswers(CKR.SIGNATURE_INVALID, token.verify(ecdsa, publicKey, digest, signature));

        CK_OBJECT_HANDLE importedPrivate = token.create(CKA.CLASS, CKO.PRIVATE_KEY, CKA.KEY_TYPE, CKK.EC,
                CKA.SIGN, true, CKA.EC_PARAMS, params,
                CKA.VALUE, unsigned(((ECPrivateKey) pair.getPrivate()).getS()));
        byte[] own = token.sign(ecdsa, importedPrivate, digest);
        assertAnswers(CKR.OK, token.verify(ecdsa, imported, digest, own));
    }

    @Test
    void bothSidesDeriveTheSameSecret() throws Exception {
        byte[] params = HexFormat.of().parseHex(P256);
        CK_OBJECT_HANDLE publicKey = new CK_OBJECT_HANDLE();
        CK_OBJECT_HANDLE privateKey = ecKeyPair(params, publicKey);
        KeyPair other = jdkEcPair("secp256r1");
        CK_OBJECT_HANDLE derived = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] template = secretKeyTemplate(CKK.GENERIC_SECRET, CKA.VALUE_LEN, 32);
        CK_MECHANISM ecdh = new CK_MECHANISM(CKM.ECDH1_DERIVE_STD,
                new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, point(other)));
        Cryptoki.C_DeriveKey(token.session, ecdh, privateKey, template, template.length, derived).orThrow();

        KeyAgreement jdk = KeyAgreement.getInstance("ECDH");
        jdk.init(other.getPrivate());
        jdk.doPhase(jdkPublic("secp256r1", token.read(publicKey, CKA.EC_POINT)), true);
        assertArrayEquals(jdk.generateSecret(), token.read(derived, CKA.VALUE));

        // A derivation function, and a point that is none.
        for (CK_ECDH1_DERIVE_PARAMS wrong : new CK_ECDH1_DERIVE_PARAMS[] {
            new CK_ECDH1_DERIVE_PARAMS(CKD.SHA256_KDF, ascii("shared"), point(other)),
            new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, new byte[0]), new CK_ECDH1_DERIVE_PARAMS()}) {
            CK_RV answer = Cryptoki.C_DeriveKey(token.session, new CK_MECHANISM(CKM.ECDH1_DERIVE_STD, wrong),
                    privateKey, template, template.length, derived);
            boolean refused = answer.is(CKR.MECHANISM_PARAM_INVALID) || answer.is(CKR.ARGUMENTS_BAD);
            assertTrue(refused, answer.toString());
        }
    }

    private static CK_OBJECT_HANDLE ecKeyPair(byte[] params, CK_OBJECT_HANDLE publicKey) {
        CK_OBJECT_HANDLE privateKey = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKeyPair(token.session, new CK_MECHANISM(CKM.EC_KEY_PAIR_GEN),
                template(CKA.EC_PARAMS, params, CKA.VERIFY, true), 2,
                template(CKA.SIGN, true, CKA.DERIVE, true), 2, publicKey, privateKey).orThrow();
        return privateKey;
    }

    private static KeyPair jdkEcPair(String curve) throws GeneralSecurityException {
        KeyPairGenerator generator = KeyPairGenerator.getInstance("EC");
        generator.initialize(new ECGenParameterSpec(curve));
        return generator.generateKeyPair();
    }

    /** The key whose point is told as a DER octet string of 04, X and Y. */
    private static PublicKey jdkPublic(String curve, byte[] octets) throws GeneralSecurityException {
        AlgorithmParameters parameters = AlgorithmParameters.getInstance("EC");
        parameters.init(new ECGenParameterSpec(curve));
        int half = (octets.length - 3) / 2;
        BigInteger x = new BigInteger(1, Arrays.copyOfRange(octets, 3, 3 + half));
        BigInteger y = new BigInteger(1, Arrays.copyOfRange(octets, 3 + half, octets.length));
        return KeyFactory.getInstance("EC").generatePublic(
                new ECPublicKeySpec(new ECPoint(x, y), parameters.getParameterSpec(ECParameterSpec.class)));
    }

    /** The point as 04, X and Y, from the end of the JDK's own encoding of the key. */
    private static byte[] point(KeyPair pair) {
        int size = ((ECPublicKey) pair.getPublic()).getParams().getCurve().getField().getFieldSize() / 8;
        byte[] encoded = pair.getPublic().getEncoded();
        return Arrays.copyOfRange(encoded, encoded.length - 2 * size - 1, encoded.length);
    }

    private static byte[] octets(byte[] point) {
        byte[] octets = new byte[point.length + 2];
        octets[0] = 4;
        octets[1] = (byte) point.length;
        System.arraycopy(point, 0, octets, 2, point.length);
        return octets;
    }
}
