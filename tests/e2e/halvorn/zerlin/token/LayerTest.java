// The layer over a real module, beside the JDK's own cryptography.
package halvorn.zerlin.token;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;
import static token.TokenObjects.IS_NSS;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

import java.io.*;
import java.lang.reflect.Field;
import java.math.BigInteger;
import java.security.MessageDigest;
import java.security.PublicKey;
import java.security.Signature;
import java.time.LocalDate;
import java.util.*;

import javax.crypto.Cipher;
import javax.crypto.Mac;
import javax.crypto.spec.IvParameterSpec;
import javax.crypto.spec.SecretKeySpec;

import org.junit.jupiter.api.*;
import org.junit.jupiter.api.function.Executable;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.*;

class LayerTest {
    private static final byte[] IV = ascii("0123456789abcdef");
    private static final byte[] VALUE = ascii("a key of 24 bytes.......");
    private static final byte[] LONG = new Random(1).ints(200_001).collect(ByteArrayOutputStream::new,
            ByteArrayOutputStream::write, (a, b) -> { }).toByteArray();
    private static final CK_MECHANISM SHA256 = new CK_MECHANISM(CKM.SHA256);
    private static final CK_MECHANISM RSA_SHA256 = new CK_MECHANISM(CKM.SHA256_RSA_PKCS);
    private static final CK_MECHANISM CBC_PAD = new CK_MECHANISM(CKM.AES_CBC_PAD, IV);
    static Slot slot;
    static Session session;
    private static Library library;
    private static CK_OBJECT_HANDLE aes;
    private static KeyPairHandles rsa;

    /** Opens the library, which other tests may have left initialised, and returns a token with PINs. */
    static Slot open(String label) {
        Cryptoki.C_Finalize(null);
        library = Library.open();
        return new Slot(create(label));
    }

    static CK_OBJECT_HANDLE secretKey(long type, byte[] value) {
        return session.create(Attributes.of(CKO.SECRET_KEY).with(CKA.KEY_TYPE, type).with(CKA.VALUE, value)
                .yes(CKA.ENCRYPT, CKA.DECRYPT, CKA.SIGN, CKA.VERIFY, CKA.WRAP, CKA.UNWRAP, CKA.DERIVE, CKA.EXTRACTABLE)
                .no(CKA.TOKEN, CKA.SENSITIVE));
    }

    @BeforeAll
    static void logIn() {
        slot = open("layer");
        session = slot.openWritableSession();
        assertFalse(session.isLoggedIn());
        session.login(CKU.USER, USER_PIN.clone());
        aes = secretKey(CKK.AES, VALUE);
        rsa = session.generateKeyPair(new CK_MECHANISM(CKM.RSA_PKCS_KEY_PAIR_GEN), new Attributes()
                .with(CKA.MODULUS_BITS, 1024).with(CKA.PUBLIC_EXPONENT, BigInteger.valueOf(65537)).yes(CKA.VERIFY),
                new Attributes().yes(CKA.SIGN, CKA.EXTRACTABLE).no(CKA.SENSITIVE).with(CKA.ID, new byte[] {0, 5}));
    }

    @AfterAll
    static void closeTwice() {
        for (AutoCloseable open : new AutoCloseable[] {session, session, library, library}) {
            assertDoesNotThrow(open::close);
        }
        assertEquals(new CK_RV(), Cryptoki.C_Initialize(null)); // it was finalised
        Cryptoki.C_Finalize(null);
    }

    @ParameterizedTest
    @CsvSource({"0x1085,AES/CBC/PKCS5Padding,1", "0x1082,AES/CBC/NoPadding,16", "0x1081,AES/ECB/NoPadding,16",
        "0x136,DESede/CBC/PKCS5Padding,1", "0x133,DESede/CBC/NoPadding,8", "0x132,DESede/ECB/NoPadding,8"})
    void cipherTextIsThatOfTheJdk(String type, String name, int step) throws Exception {
        boolean isAes = name.startsWith("AES");
        byte[] iv = name.contains("ECB") ? null : isAes ? IV : Arrays.copyOf(IV, 8);
        CK_MECHANISM mechanism = new CK_MECHANISM(Long.decode(type), iv);
        CK_OBJECT_HANDLE key = isAes ? aes : secretKey(CKK.DES3, VALUE);
        Cipher cipher = Cipher.getInstance(name);
        for (int length : new int[] {step, 15 * step, 16 * step, 1008, 200_000}) {
            byte[] clear = Arrays.copyOf(LONG, length);
            cipher.init(Cipher.ENCRYPT_MODE, new SecretKeySpec(VALUE, isAes ? "AES" : "DESede"),
                    iv == null ? null : new IvParameterSpec(iv));
            byte[] expected = cipher.doFinal(clear);
            assertEquals(expected.length, Calls.encryptedLength(mechanism, length));
            assertArrayEquals(expected, session.encrypt(mechanism, key, clear));
            assertArrayEquals(clear, session.decrypt(mechanism, key, expected));
            ByteArrayOutputStream out = new ByteArrayOutputStream();
            assertEquals(expected.length, session.encrypt(mechanism, key, new ByteArrayInputStream(clear), out));
            assertArrayEquals(expected, out.toByteArray());
            out.reset();
            assertEquals(length, session.decrypt(mechanism, key, new ByteArrayInputStream(expected), out));
            assertArrayEquals(clear, out.toByteArray());
        }
    }

    @Test
    void digestsAndSignaturesAreThoseOfTheJdk() throws Exception {
        byte[] digest = MessageDigest.getInstance("SHA-256").digest(LONG);
        assertArrayEquals(digest, session.digest(SHA256, LONG));
        assertArrayEquals(digest, session.digest(SHA256, new ByteArrayInputStream(LONG)));
        Mac mac = Mac.getInstance("HmacSHA256");
        mac.init(new SecretKeySpec(digest, "HmacSHA256"));
        assertArrayEquals(mac.doFinal(LONG), session.sign(new CK_MECHANISM(CKM.SHA256_HMAC),
                secretKey(CKK.GENERIC_SECRET, digest), new ByteArrayInputStream(LONG)));

        PublicKey rsaKey = Keys.publicKey(session, rsa.publicKey);
        byte[] signature = session.sign(RSA_SHA256, rsa.privateKey, LONG);
        assertTrue(verifiedByJdk("SHA256withRSA", rsaKey, LONG, signature));
        assertArrayEquals(signature, session.sign(RSA_SHA256, rsa.privateKey, new ByteArrayInputStream(LONG)));
        for (byte[] candidate : new byte[][] {signature, session.digest(SHA256, LONG), new byte[128]}) {
            boolean isRight = candidate == signature;
            assertEquals(isRight, session.verify(RSA_SHA256, rsa.publicKey, LONG, candidate));
            assertEquals(isRight, session.verify(RSA_SHA256, rsa.publicKey, new ByteArrayInputStream(LONG), candidate));
        }

        CK_MECHANISM ecdsa = new CK_MECHANISM(CKM.ECDSA);
        KeyPairHandles ec = session.generateKeyPair(new CK_MECHANISM(CKM.EC_KEY_PAIR_GEN), new Attributes()
                .with(CKA.EC_PARAMS, Der.oid("1.2.840.10045.3.1.7")), new Attributes().yes(CKA.SIGN));
        PublicKey ecKey = Keys.publicKey(session, ec.publicKey);
        assertArrayEquals(ecKey.getEncoded(), Keys.subjectPublicKeyInfo(session, ec.publicKey));
        for (int i = 0; i < 20; i++) { // numbers with high bits and with leading zeros
            byte[] rs = session.sign(ecdsa, ec.privateKey, digest);
            byte[] der = Keys.signatureToDer(rs);
            assertTrue(verifiedByJdk("NONEwithECDSA", ecKey, digest, der));
            assertArrayEquals(rs, Keys.signatureFromDer(der, 32));
            assertThrows(IllegalArgumentException.class, () -> Keys.signatureFromDer(Arrays.copyOf(der, 60), 32));
        }
    }

    private static boolean verifiedByJdk(String algorithm, PublicKey key, byte[] data, byte[] signature) throws Exception {
        Signature verifier = Signature.getInstance(algorithm);
        verifier.initVerify(key);
        verifier.update(data);
        return verifier.verify(signature);
    }

    @Test
    void aWrappedKeyLongerThanTheGuessIsUnwrapped() {
        CK_MECHANISM mechanism = IS_NSS ? CBC_PAD : new CK_MECHANISM(CKM.AES_KEY_WRAP_PAD_STD);
        byte[] wrapped = session.wrap(mechanism, aes, rsa.privateKey);
        assertTrue(wrapped.length > 512, "" + wrapped.length);
        CK_OBJECT_HANDLE copy = session.unwrap(mechanism, aes, wrapped, Attributes.of(CKO.PRIVATE_KEY)
                .with(CKA.KEY_TYPE, CKK.RSA).yes(CKA.SIGN).no(CKA.TOKEN));
        assertArrayEquals(session.sign(RSA_SHA256, rsa.privateKey, IV), session.sign(RSA_SHA256, copy, IV));
    }

    // Fails behind the first part.
    private static InputStream broken() {
        return new SequenceInputStream(new ByteArrayInputStream(LONG, 0, 70_000), new InputStream() {
            @Override
            public int read() throws IOException {
                throw new IOException("broken");
            }
        });
    }

    @Test
    void aSessionCanBeUsedAgainAfterEachFailure() throws Exception {
        byte[] signature = session.sign(RSA_SHA256, rsa.privateKey, IV);
        CK_MECHANISM cbc = new CK_MECHANISM(CKM.AES_CBC, IV);
        OutputStream full = new PipedOutputStream(); // not connected: every write fails
        Map<String, Executable> failures = new LinkedHashMap<>();
        failures.put("C_Encrypt: CKR_DATA_LEN_RANGE", () -> session.encrypt(cbc, aes, new byte[15]));
        failures.put(": CKR_DATA_LEN_RANGE",
                () -> session.encrypt(cbc, aes, new ByteArrayInputStream(VALUE), new ByteArrayOutputStream()));
        failures.put("C_Decrypt: CKR_", () -> session.decrypt(CBC_PAD, aes, new byte[15]));
        failures.put("C_SignInit: CKR_", () -> session.sign(new CK_MECHANISM(0x7654), aes, IV));
        failures.put("C_Sign: CKR_", () -> session.sign(new CK_MECHANISM(CKM.RSA_PKCS), rsa.privateKey, new byte[300]));
        failures.put("1 broken", () -> session.encrypt(CBC_PAD, aes, broken(), new ByteArrayOutputStream()));
        failures.put("2 broken", () -> session.decrypt(CBC_PAD, aes, broken(), new ByteArrayOutputStream()));
        failures.put("3 broken", () -> session.digest(SHA256, broken()));
        failures.put("4 broken", () -> session.sign(RSA_SHA256, rsa.privateKey, broken()));
        failures.put("5 broken", () -> session.verify(RSA_SHA256, rsa.publicKey, broken(), signature));
        failures.put("Pipe not", () -> session.encrypt(CBC_PAD, aes, new ByteArrayInputStream(LONG), full));
        failures.put("1 null", () -> session.verify(RSA_SHA256, rsa.publicKey, IV, null));
        failures.put("2 null", () -> session.digest(SHA256, (InputStream) null));
        failures.put("C_GetAttributeValue: CKR_OBJECT_HANDLE", () -> session.read(new CK_OBJECT_HANDLE(77), CKA.CLASS));
        failures.put("C_SetAttributeValue: CKR_OBJECT_HANDLE",
                () -> session.write(new CK_OBJECT_HANDLE(77), new Attributes().with(CKA.LABEL, "none")));
        failures.put("C_DestroyObject: CKR_OBJECT_HANDLE", () -> session.destroy(new CK_OBJECT_HANDLE(77)));
        failures.forEach((text, failure) -> {
            String message = String.valueOf(assertThrows(Exception.class, failure, text).getMessage());
            assertTrue(message.contains(text.replaceFirst("^\\d (null)?", "")), message);
            assertArrayEquals(IV, session.decrypt(CBC_PAD, aes, session.encrypt(CBC_PAD, aes, IV)), text);
            assertEquals(32, session.digest(SHA256, IV).length, text);
            assertArrayEquals(signature, session.sign(RSA_SHA256, rsa.privateKey, IV), text);
            assertTrue(session.verify(RSA_SHA256, rsa.publicKey, IV, signature), text);
        });
    }

    @Test
    void aLibraryThatReportsNonsenseIsNotBelieved() throws Exception {
        long[][] lies = {{0, 9}, {0, -1}, {0, 1L << 40}, {CKR.BUFFER_TOO_SMALL, 9}, {CKR.BUFFER_TOO_SMALL, 0},
            {CKR.BUFFER_TOO_SMALL, 1L << 31}};
        for (long[] lie : lies) {
            List<byte[]> arrays = new ArrayList<>();
            assertTrue(assertThrows(CryptokiException.class, () -> Calls.output("C_Decrypt", 8, true, (array, n) -> {
                arrays.add(array == null ? new byte[0] : array);
                Arrays.fill(arrays.get(arrays.size() - 1), (byte) 1);
                n.value = lie[1];
                return new CK_RV(lie[0]);
            })).is(CKR.BUFFER_TOO_SMALL), Arrays.toString(lie));
            arrays.forEach(array -> assertArrayEquals(new byte[array.length], array));
        }
        assertEquals(0, Calls.output("C_Decrypt", 0, true, (array, n) -> { // an empty array asks for the length
            n.value = array.length - 1;
            return new CK_RV();
        }).length);
        LongRef ended = new LongRef();
        assertThrows(CryptokiException.class, () -> Calls.single("C_SignInit", new CK_RV(), "C_Sign", 8, false,
                (array, n) -> new CK_RV(CKR.DATA_LEN_RANGE), (array, n) -> new CK_RV(++ended.value)));
        assertEquals(1, ended.value);
        assertThrows(IOException.class, () -> Calls.operation("C_SignInit", new CK_RV(),
                () -> { throw new IOException(); }, (array, n) -> { throw new OutOfMemoryError(); }));
        byte[] point = Arrays.copyOf(new byte[] {4, 63}, 65); // as if an OCTET STRING of 63 bytes
        assertArrayEquals(point, Keys.point(point));
        assertArrayEquals(point, Keys.point(Der.of(4, point)));
        assertEquals("Attributes[CKA_LABEL (0x3)=a?b?]", new Attributes().with(CKA.LABEL, "a\nb\u2028").toString());
        Attributes empty = new Attributes().with(CKA.ID, new byte[0]);
        assertEquals("Attributes[CKA_ID (0x102)=0 bytes]", empty.toString());
        assertThrows(IllegalArgumentException.class, () -> empty.number(CKA.ID));
        assertThrows(IllegalArgumentException.class, () -> empty.with(CKA.ID, BigInteger.ONE.negate()));
    }

    @Test
    void derAndSignaturesHaveTheRightLengths() {
        int[][] lengths = {{127, 129}, {128, 131}, {255, 258}, {256, 260}, {65_535, 65_539}, {65_536, 65_541}};
        for (int[] length : lengths) {
            byte[] der = Der.of(4, new byte[length[0]]);
            assertEquals(length[1], der.length);
            if (length[0] < 65_536) assertEquals(length[0], Der.contents(der, 4)[0].length);
        }
        byte[] rs = {0, 1, (byte) 0x80, 7};
        byte[] der = {0x30, 8, 2, 1, 1, 2, 3, 0, (byte) 0x80, 7};
        assertArrayEquals(der, Keys.signatureToDer(rs));
        assertArrayEquals(rs, Keys.signatureFromDer(der, 2));
        byte[] longer = Arrays.copyOf(der, 11);
        byte[] negative = {0x30, 6, 2, 1, 1, 2, 1, -1};
        byte[] set = {0x31, 6, 2, 1, 1, 2, 1, 1};
        for (Executable wrong : new Executable[] {() -> Keys.signatureFromDer(der, 1),
            () -> Keys.signatureFromDer(longer, 2), () -> Keys.signatureFromDer(negative, 2),
            () -> Keys.signatureFromDer(set, 2)}) {
            assertThrows(IllegalArgumentException.class, wrong);
        }
        assertArrayEquals(new byte[] {6, 3, (byte) 0x88, 0x37, 3}, Der.oid("2.999.3"));
    }

    @Test
    void buffersOfStreamsAreWiped() throws Exception {
        List<byte[]> buffers = new ArrayList<>();
        InputStream in = new FilterInputStream(new ByteArrayInputStream(LONG)) {
            @Override
            public int read(byte[] part) throws IOException {
                buffers.add(part);
                return super.read(part);
            }
        };
        session.encrypt(CBC_PAD, aes, in, new FilterOutputStream(new ByteArrayOutputStream()) {
            @Override
            public void write(byte[] part, int from, int length) {
                buffers.add(part);
            }
        });
        assertEquals(10, buffers.size()); // five reads and five writes
        buffers.forEach(buffer -> assertArrayEquals(new byte[buffer.length], buffer));
    }

    @Test
    void attributesComeBackAsTheyWereSetAndSecretsStay() {
        LocalDate date = LocalDate.of(2031, 7, 9);
        BigInteger modulus = BigInteger.ONE.shiftLeft(1023).add(BigInteger.TEN);
        Attributes wanted = Attributes.of(CKO.PUBLIC_KEY).with(CKA.KEY_TYPE, CKK.RSA).with(CKA.MODULUS, modulus)
                .with(CKA.LABEL, "Schl\u00fcssel \ud83d\udd11").with(CKA.PUBLIC_EXPONENT, BigInteger.valueOf(3)).yes(CKA.VERIFY)
                .with(CKA.ID, new byte[] {0, 1}).with(CKA.START_DATE, date).no(CKA.TOKEN, CKA.ENCRYPT);
        CK_OBJECT_HANDLE object = session.create(wanted);
        Attributes read = session.read(object, wanted.types());
        assertEquals(wanted.toString(), read.toString());
        assertEquals(List.of(CKK.RSA, modulus, "Schl\u00fcssel \ud83d\udd11", true, false, date),
            List.of(read.number(CKA.KEY_TYPE), read.integer(CKA.MODULUS), read.text(CKA.LABEL), read.is(CKA.VERIFY), read.is(CKA.TOKEN),
                read.date(CKA.START_DATE)));
        assertEquals(128, read.bytes(CKA.MODULUS).length);
        assertNull(session.read(object, CKA.END_DATE).date(CKA.END_DATE));
        long[] mechanisms = {1, CKM.DES3_ECB_PAD};
        assertArrayEquals(mechanisms, new Attributes().with(CKA.MECHANISM_LIST, mechanisms).numbers(CKA.MECHANISM_LIST));
        assertTrue(session.readAll(object).toString().contains("CKA_ID (0x102)=0x0001, "));
        session.write(object, new Attributes().with(CKA.LABEL, "2"));
        assertEquals(object, session.findOne(new Attributes().with(CKA.LABEL, "2").with(CKA.MODULUS, modulus)));
        Session other = slot.openSession();
        session.vendorCopy(other, object, new Attributes());
        other.close(); // the copy is this session's
        assertEquals(2, session.find(new Attributes().with(CKA.LABEL, "2")).size());
        for (int i = 0; i < 65; i++) {
            session.copy(object, new Attributes().with(CKA.LABEL, "65"));
        }
        assertEquals(65, session.find(new Attributes().with(CKA.LABEL, "65")).size());
        for (String label : new String[] {"none", "2"}) {
            assertThrows(NoSuchElementException.class, () -> session.findOne(new Attributes().with(CKA.LABEL, label)));
        }

        CK_OBJECT_HANDLE sensitive = session.generateKey(new CK_MECHANISM(CKM.AES_KEY_GEN),
                new Attributes().with(CKA.VALUE_LEN, 32).yes(CKA.SENSITIVE));
        Attributes rest = session.read(sensitive, CKA.VALUE, CKA.MODULUS, CKA.VALUE_LEN, CKA.LABEL);
        assertArrayEquals(new long[] {CKA.VALUE_LEN, CKA.LABEL}, rest.types());
        assertThrows(NoSuchElementException.class, () -> rest.bytes(CKA.VALUE));
        for (CK_OBJECT_HANDLE readable : new CK_OBJECT_HANDLE[] {object, aes, rsa.publicKey, rsa.privateKey}) {
            Attributes all = session.readAll(readable);
            for (long type : all.types()) { // a module's values have the form of their encoding
                int length = all.bytes(type).length;
                assertTrue(Encoding.of(type) != Encoding.BOOLEAN || length == 1, all::toString);
                assertTrue(Encoding.of(type) != Encoding.NUMBER || length == wanted.bytes(CKA.CLASS).length, all::toString);
                assertFalse(type == CKA.VALUE || type >= CKA.PRIVATE_EXPONENT && type <= CKA.COEFFICIENT, all::toString);
            }
        }
        Attributes secret = session.read(aes, CKA.VALUE);
        assertArrayEquals(VALUE, secret.bytes(CKA.VALUE));
        assertEquals("Attributes[CKA_VALUE (0x11)=24 bytes]", secret.toString());
    }

    @Test
    void everyAttributeHasItsEncodingAndRefusesOtherClasses() throws Exception {
        for (Field field : CKA.class.getFields()) {
            boolean isKnown = Encoding.of(field.getLong(null)) != null;
            assertTrue(isKnown || field.getLong(null) >= CKA.VENDOR_DEFINED
                    || field.getName().matches("WILDCARD|(UN)?WRAP_TEMPLATE|DERIVE_TEMPLATE"
                    + "|(OTP|GOST|X2RATCHET|HSS).*"), field.getName());
        }
        Object[] values = {true, 5L, 5, new long[] {5}, "text", LocalDate.MIN.withYear(1), BigInteger.TEN, new byte[] {7}, 'c'};
        String[] taken = {"100000000", "011000000", "000100000", "000010010", "000001010", "000000110", "000000110",
            "000000110"};
        for (long type : Encoding.types()) {
            for (int i = 0; i < values.length; i++) {
                Object value = values[i];
                Executable with = () -> new Attributes().with(type, value);
                if (taken[Encoding.of(type).ordinal()].charAt(i) == '1') assertDoesNotThrow(with);
                else assertThrows(IllegalArgumentException.class, with);
            }
        }
        assertEquals("CKA_VALUE_LEN (0x161) is NUMBER, not String", assertThrows(IllegalArgumentException.class,
                () -> new Attributes().with(CKA.VALUE_LEN, "32")).getMessage());
    }

    @Test
    void pinsAreWipedEvenIfTheCallFails() {
        char[] pin = "p\u00e4\u20ac\u20ac\u20ac\u20ac\u20ac\ud83d\udd11".toCharArray();
        byte[] utf8 = new String(pin).getBytes(UTF_8);
        byte[] old = USER_PIN.clone();
        session.setPin(new String(old).toCharArray(), pin);
        assertArrayEquals(new char[pin.length], pin);
        byte[][] pins = {utf8.clone(), old, ascii("wrong"), ascii("wrong"), SO_PIN.clone(), USER_PIN.clone(), SO_PIN.clone(),
            SO_PIN.clone()};
        session.setPin(pins[0], pins[1]);
        assertThrows(CryptokiException.class, () -> session.setPin(utf8, pins[2]));
        assertThrows(CryptokiException.class, () -> session.login(CKU.USER, pins[3]));
        String label = "x".repeat(33);
        assertThrows(IllegalArgumentException.class, () -> slot.initToken(pins[4], label));
        assertThrows(CryptokiException.class, () -> session.initPin(pins[5]));
        assertThrows(IllegalArgumentException.class, () -> session.vendorInitToken(0, pins[6], label));
        assertThrows(IllegalArgumentException.class, () -> session.vendorResetToken(pins[7], label));
        for (byte[] wiped : pins) {
            assertArrayEquals(new byte[wiped.length], wiped);
        }
        assertTrue(session.isLoggedIn());
    }

    @Test
    void slotsAreFoundAndAClosedSessionTouchesNoOther() {
        assertTrue(slot.supports(CKM.RSA_PKCS, CKF.SIGN | CKF.VERIFY));
        assertFalse(slot.supports(CKM.SHA256, CKF.SIGN) || slot.supports(CKM.SHA256, CKF.SIGN | CKF.DIGEST));
        assertFalse(slot.supports(0x7654, 0));
        assertTrue(slot.mechanisms().contains(new CK_MECHANISM_TYPE(CKM.RSA_PKCS)));
        String label = slot.tokenInfo().getLabel();
        if (IS_NSS) { // whose labels are alike
            assertThrows(NoSuchElementException.class, () -> library.token(label));
        } else {
            assertEquals(slot.id(), library.token(label).id());
            assertEquals(slot.id(), library.tokenBySerial(slot.tokenInfo().getSerialNumber()).id());
        }
        assertThrows(NoSuchElementException.class, () -> library.token("none"));
        Session closed = slot.openSession();
        CK_SESSION_HANDLE handle = closed.handle();
        closed.close();
        assertEquals(new CK_SESSION_HANDLE(), closed.handle());
        assertTrue(assertThrows(CryptokiException.class, closed::info).is(CKR.SESSION_HANDLE_INVALID));
        Session gone = new Session(handle);
        assertDoesNotThrow(gone::close);
    }
}
