// Encryption, digests, signatures, key agreement, key wrapping and random numbers of a token. The JDK's own
// cryptography checks the results. For this some keys can be read that a real program would keep on the token.

import static token.FreshToken.*;

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKD;
import halvorn.zerlin.constants.CKG;
import halvorn.zerlin.constants.CKK;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.params.CK_ECDH1_DERIVE_PARAMS;
import halvorn.zerlin.params.CK_RSA_PKCS_OAEP_PARAMS;
import halvorn.zerlin.params.CK_RSA_PKCS_PSS_PARAMS;

import java.io.ByteArrayOutputStream;
import java.math.BigInteger;
import java.security.AlgorithmParameters;
import java.security.GeneralSecurityException;
import java.security.KeyFactory;
import java.security.KeyPair;
import java.security.KeyPairGenerator;
import java.security.MessageDigest;
import java.security.PublicKey;
import java.security.Signature;
import java.security.spec.ECGenParameterSpec;
import java.security.spec.ECParameterSpec;
import java.security.spec.ECPoint;
import java.security.spec.ECPublicKeySpec;
import java.security.spec.MGF1ParameterSpec;
import java.security.spec.PSSParameterSpec;
import java.security.spec.RSAPublicKeySpec;
import java.util.Arrays;

import javax.crypto.Cipher;
import javax.crypto.KeyAgreement;
import javax.crypto.spec.IvParameterSpec;
import javax.crypto.spec.SecretKeySpec;

import token.FreshToken;

public final class Cryptography {
    private static final byte[] TEXT = ascii("The quick brown fox jumps over the lazy dog.");
    /** The curve P-256 as an object identifier in DER. */
    private static final byte[] P256 = {6, 8, 0x2a, (byte) 0x86, 0x48, (byte) 0xce, 0x3d, 3, 1, 7};

    private final CK_SESSION_HANDLE session;

    private Cryptography(CK_SESSION_HANDLE session) {
        this.session = session;
    }

    public static void main(String[] arguments) throws Exception {
        Demo.inSession(CK_C_INITIALIZE_ARGS.osLocking(), session -> {
            // All objects created here are session objects, which end with the session.
            Cryptography cryptography = new Cryptography(session);
            cryptography.aes();
            cryptography.digest();
            cryptography.rsa();
            cryptography.ellipticCurve();
            cryptography.wrapping();
            cryptography.random();
        });
    }

    private void aes() throws GeneralSecurityException {
        Demo.title("AES-CBC");
        CK_OBJECT_HANDLE key = aesKey();
        byte[] iv = drawBytes(16);
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_CBC_PAD, iv);
        Cipher jdk = Cipher.getInstance("AES/CBC/PKCS5Padding");
        SecretKeySpec jdkKey = new SecretKeySpec(read(key, CKA.VALUE), "AES");
        jdk.init(Cipher.ENCRYPT_MODE, jdkKey, new IvParameterSpec(iv));
        byte[] expected = jdk.doFinal(TEXT);

        Cryptoki.C_EncryptInit(session, mechanism, key).orThrow();
        byte[] whole = bytes((array, length) ->
                Cryptoki.C_Encrypt(session, TEXT, TEXT.length, array, length));
        Demo.checked("in one part", Demo.hex(whole), Arrays.equals(expected, whole));

        Cryptoki.C_EncryptInit(session, mechanism, key).orThrow();
        ByteArrayOutputStream all = new ByteArrayOutputStream();
        for (int from = 0; from < TEXT.length; from += 20) {
            byte[] part = Arrays.copyOfRange(TEXT, from, Math.min(from + 20, TEXT.length));
            add(all, (array, length) -> Cryptoki.C_EncryptUpdate(session, part, part.length, array, length));
        }
        add(all, (array, length) -> Cryptoki.C_EncryptFinal(session, array, length));
        byte[] parts = all.toByteArray();
        Demo.checked("in parts of 20 bytes", Demo.hex(parts), Arrays.equals(expected, parts));

        Cryptoki.C_DecryptInit(session, mechanism, key).orThrow();
        byte[] text = bytes((array, length) ->
                Cryptoki.C_Decrypt(session, expected, expected.length, array, length));
        Demo.checked("decrypted", '"' + new String(text, 0, 19) + "...\"", Arrays.equals(TEXT, text));
    }

    private static void add(ByteArrayOutputStream all, FreshToken.Output output) {
        byte[] part = bytes(output);
        all.write(part, 0, part.length);
    }

    private void digest() throws GeneralSecurityException {
        Demo.title("Digest");
        byte[] digest = sha256(TEXT);
        byte[] expected = MessageDigest.getInstance("SHA-256").digest(TEXT);
        Demo.checked("SHA-256", Demo.hex(digest), Arrays.equals(expected, digest));
    }

    private byte[] sha256(byte[] data) {
        Cryptoki.C_DigestInit(session, new CK_MECHANISM(CKM.SHA256)).orThrow();
        return bytes((array, length) -> Cryptoki.C_Digest(session, data, data.length, array, length));
    }

    private void rsa() throws GeneralSecurityException {
        Demo.title("RSA with 2048 bits");
        CK_ATTRIBUTE[] publicTemplate = {
            new CK_ATTRIBUTE(CKA.MODULUS_BITS, 2048),
            new CK_ATTRIBUTE(CKA.PUBLIC_EXPONENT, new byte[] {1, 0, 1})};
        CK_ATTRIBUTE[] privateTemplate = {
            new CK_ATTRIBUTE(CKA.SENSITIVE, true),
            new CK_ATTRIBUTE(CKA.SIGN, true),
            new CK_ATTRIBUTE(CKA.DECRYPT, true)};
        CK_OBJECT_HANDLE publicKey = new CK_OBJECT_HANDLE();
        CK_OBJECT_HANDLE privateKey = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKeyPair(session, new CK_MECHANISM(CKM.RSA_PKCS_KEY_PAIR_GEN),
                publicTemplate, publicTemplate.length, privateTemplate, privateTemplate.length,
                publicKey, privateKey).orThrow();
        PublicKey jdkKey = KeyFactory.getInstance("RSA").generatePublic(new RSAPublicKeySpec(
                new BigInteger(1, read(publicKey, CKA.MODULUS)),
                new BigInteger(1, read(publicKey, CKA.PUBLIC_EXPONENT))));

        Signature pkcs1 = Signature.getInstance("SHA256withRSA");
        byte[] signature = sign(new CK_MECHANISM(CKM.SHA256_RSA_PKCS), privateKey, TEXT);
        Demo.checked("PKCS #1 signature", Demo.hex(signature), verify(pkcs1, jdkKey, TEXT, signature));

        CK_MECHANISM pssMechanism = new CK_MECHANISM(CKM.SHA256_RSA_PKCS_PSS,
                new CK_RSA_PKCS_PSS_PARAMS(CKM.SHA256, CKG.MGF1_SHA256, 32));
        Signature pss = Signature.getInstance("RSASSA-PSS");
        pss.setParameter(new PSSParameterSpec("SHA-256", "MGF1", MGF1ParameterSpec.SHA256, 32, 1));
        signature = sign(pssMechanism, privateKey, TEXT);
        Demo.checked("PSS signature", Demo.hex(signature), verify(pss, jdkKey, TEXT, signature));

        CK_MECHANISM oaepMechanism = new CK_MECHANISM(CKM.RSA_PKCS_OAEP,
                new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null));
        Cipher oaep = Cipher.getInstance("RSA/ECB/OAEPWithSHA-1AndMGF1Padding");
        oaep.init(Cipher.ENCRYPT_MODE, jdkKey);
        byte[] encrypted = oaep.doFinal(TEXT);
        Cryptoki.C_DecryptInit(session, oaepMechanism, privateKey).orThrow();
        byte[] text = bytes((array, length) ->
                Cryptoki.C_Decrypt(session, encrypted, encrypted.length, array, length));
        Demo.checked("OAEP decryption", '"' + new String(text, 0, 19) + "...\"", Arrays.equals(TEXT, text));
    }

    private byte[] sign(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        Cryptoki.C_SignInit(session, mechanism, key).orThrow();
        return bytes((array, length) -> Cryptoki.C_Sign(session, data, data.length, array, length));
    }

    private static boolean verify(Signature jdk, PublicKey key, byte[] data, byte[] signature)
            throws GeneralSecurityException {
        jdk.initVerify(key);
        jdk.update(data);
        return jdk.verify(signature);
    }

    private void ellipticCurve() throws GeneralSecurityException {
        Demo.title("Elliptic curve P-256");
        CK_ATTRIBUTE[] publicTemplate = {new CK_ATTRIBUTE(CKA.EC_PARAMS, P256)};
        CK_ATTRIBUTE[] privateTemplate = {
            new CK_ATTRIBUTE(CKA.SENSITIVE, true),
            new CK_ATTRIBUTE(CKA.SIGN, true),
            new CK_ATTRIBUTE(CKA.DERIVE, true)};
        CK_OBJECT_HANDLE publicKey = new CK_OBJECT_HANDLE();
        CK_OBJECT_HANDLE privateKey = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKeyPair(session, new CK_MECHANISM(CKM.EC_KEY_PAIR_GEN),
                publicTemplate, publicTemplate.length, privateTemplate, privateTemplate.length,
                publicKey, privateKey).orThrow();
        PublicKey jdkKey = ecKey(read(publicKey, CKA.EC_POINT));

        // CKM_ECDSA signs a digest; the signature is the two numbers, one after the other.
        byte[] digest = sha256(TEXT);
        byte[] signature = sign(new CK_MECHANISM(CKM.ECDSA), privateKey, digest);
        Signature ecdsa = Signature.getInstance("SHA256withECDSAinP1363Format");
        Demo.checked("ECDSA signature", Demo.hex(signature), verify(ecdsa, jdkKey, TEXT, signature));

        KeyPairGenerator generator = KeyPairGenerator.getInstance("EC");
        generator.initialize(new ECGenParameterSpec("secp256r1"));
        KeyPair other = generator.generateKeyPair();
        KeyAgreement ecdh = KeyAgreement.getInstance("ECDH");
        ecdh.init(other.getPrivate());
        ecdh.doPhase(jdkKey, true);
        byte[] expected = ecdh.generateSecret();
        byte[] secret = read(derive(privateKey, other.getPublic()), CKA.VALUE);
        Demo.checked("ECDH shared secret", secret.length + " bytes", Arrays.equals(expected, secret));
    }

    private CK_OBJECT_HANDLE derive(CK_OBJECT_HANDLE privateKey, PublicKey other) {
        // The uncompressed point is the end of the JDK's encoding: 04, X and Y.
        byte[] encoded = other.getEncoded();
        byte[] point = Arrays.copyOfRange(encoded, encoded.length - 65, encoded.length);
        CK_ATTRIBUTE[] template = {
            new CK_ATTRIBUTE(CKA.CLASS, CKO.SECRET_KEY),
            new CK_ATTRIBUTE(CKA.KEY_TYPE, CKK.GENERIC_SECRET),
            new CK_ATTRIBUTE(CKA.VALUE_LEN, 32),
            new CK_ATTRIBUTE(CKA.SENSITIVE, false),
            new CK_ATTRIBUTE(CKA.EXTRACTABLE, true)};
        CK_OBJECT_HANDLE secret = new CK_OBJECT_HANDLE();
        // ECDH1_DERIVE is the vendor's mechanism; the name of the standard's ends in _STD.
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.ECDH1_DERIVE_STD,
                new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, point));
        Cryptoki.C_DeriveKey(session, mechanism, privateKey, template, template.length, secret).orThrow();
        return secret;
    }

    /** Creates the JDK's key from a point as tokens return it: a DER octet string of 04, X and Y. */
    private static PublicKey ecKey(byte[] octets) throws GeneralSecurityException {
        AlgorithmParameters parameters = AlgorithmParameters.getInstance("EC");
        parameters.init(new ECGenParameterSpec("secp256r1"));
        ECPoint point = new ECPoint(new BigInteger(1, Arrays.copyOfRange(octets, 3, 35)),
                new BigInteger(1, Arrays.copyOfRange(octets, 35, 67)));
        return KeyFactory.getInstance("EC").generatePublic(
                new ECPublicKeySpec(point, parameters.getParameterSpec(ECParameterSpec.class)));
    }

    private void wrapping() throws GeneralSecurityException {
        Demo.title("Wrap a key under another");
        CK_OBJECT_HANDLE wrappingKey = aesKey();
        CK_OBJECT_HANDLE key = aesKey();
        byte[] value = read(key, CKA.VALUE);
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_KEY_WRAP_STD);
        byte[] wrapped = bytes((array, length) ->
                Cryptoki.C_WrapKey(session, mechanism, wrappingKey, key, array, length));
        Cipher jdk = Cipher.getInstance("AESWrap");
        jdk.init(Cipher.UNWRAP_MODE, new SecretKeySpec(read(wrappingKey, CKA.VALUE), "AES"));
        byte[] unwrapped = jdk.unwrap(wrapped, "AES", Cipher.SECRET_KEY).getEncoded();
        Demo.checked("wrapped key", Demo.hex(wrapped), Arrays.equals(value, unwrapped));

        CK_ATTRIBUTE[] template = aesTemplate();
        CK_OBJECT_HANDLE again = new CK_OBJECT_HANDLE();
        Cryptoki.C_UnwrapKey(session, mechanism, wrappingKey, wrapped, wrapped.length,
                template, template.length, again).orThrow();
        byte[] valueAgain = read(again, CKA.VALUE);
        Demo.checked("unwrapped key", valueAgain.length + " bytes", Arrays.equals(unwrapped, valueAgain));
    }

    private CK_OBJECT_HANDLE aesKey() {
        CK_ATTRIBUTE[] template = Arrays.copyOf(aesTemplate(), aesTemplate().length + 1);
        template[template.length - 1] = new CK_ATTRIBUTE(CKA.VALUE_LEN, 32);
        CK_OBJECT_HANDLE key = new CK_OBJECT_HANDLE();
        Cryptoki.C_GenerateKey(session, new CK_MECHANISM(CKM.AES_KEY_GEN), template, template.length, key)
            .orThrow();
        return key;
    }

    private static CK_ATTRIBUTE[] aesTemplate() {
        return new CK_ATTRIBUTE[] {
            new CK_ATTRIBUTE(CKA.CLASS, CKO.SECRET_KEY),
            new CK_ATTRIBUTE(CKA.KEY_TYPE, CKK.AES),
            new CK_ATTRIBUTE(CKA.ENCRYPT, true),
            new CK_ATTRIBUTE(CKA.DECRYPT, true),
            new CK_ATTRIBUTE(CKA.WRAP, true),
            new CK_ATTRIBUTE(CKA.UNWRAP, true),
            // Readable, so that the JDK can check it.
            new CK_ATTRIBUTE(CKA.SENSITIVE, false),
            new CK_ATTRIBUTE(CKA.EXTRACTABLE, true)};
    }

    private void random() {
        Demo.title("Random bytes");
        byte[] first = drawBytes(16);
        byte[] second = drawBytes(16);
        Demo.row("two draws differ", !Arrays.equals(first, second));
    }

    private byte[] drawBytes(int length) {
        byte[] random = new byte[length];
        Cryptoki.C_GenerateRandom(session, random, length).orThrow();
        return random;
    }

    private byte[] read(CK_OBJECT_HANDLE object, long type) {
        CK_ATTRIBUTE value = CK_ATTRIBUTE.buffer(type, 512);
        Cryptoki.C_GetAttributeValue(session, object, new CK_ATTRIBUTE[] {value}, 1).orThrow();
        return value.getBytes();
    }
}
