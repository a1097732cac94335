// A small certificate authority: a root certificate that signs itself, a certificate signing request (CSR), and a
// server's certificate, signed by the root's key on the token. The JDK and openssl verify them.

import static halvorn.zerlin.token.Der.*;
import static token.FreshToken.ascii;

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import java.io.*;
import java.math.BigInteger;
import java.nio.file.*;
import java.security.cert.*;
import java.time.*;
import java.util.*;

public final class CertificateAuthority {
    private static final int BIT_STRING = 3, OCTET_STRING = 4, UTF8_STRING = 12, UTC_TIME = 23, SET = 0x31, DNS_NAME = 0x82;
    private static final byte[] TRUE = of(1, new byte[] {-1});
    private static final byte[] P256 = oid("1.2.840.10045.3.1.7"); // an elliptic curve
    private static final byte[] ECDSA_WITH_SHA256 = sequence(oid("1.2.840.10045.4.3.2"));

    private final Session session;

    private CertificateAuthority(Session session) {
        this.session = session;
    }

    public static void main(String[] arguments) throws Exception {
        try (Library library = Library.open(); Session session = Demo.token(library).openSession()) {
            session.login(CKU.USER, Demo.userPin());
            new CertificateAuthority(session).run();
        }
        System.out.println("\nFinished: nothing is left on the token.");
    }

    private void run() throws Exception {
        Demo.title("Make keys, certificates and a request");
        KeyPairHandles root = keyPair(), server = keyPair();
        Demo.row("key of the root", session.read(root.privateKey, CKA.KEY_TYPE, CKA.SENSITIVE, CKA.EXTRACTABLE));
        byte[] rootName = name("Example Root CA"), serverName = name("www.example.com");
        byte[] rootBytes = certificate(rootName, rootName, root.publicKey, root.privateKey,
                extension("2.5.29.19", sequence(TRUE)), // basic constraints: is an authority
                extension("2.5.29.15", of(BIT_STRING, new byte[] {1, 6}))); // key usage: signs certificates and CRLs
        byte[] request = signed(sequence(integer(BigInteger.ZERO), serverName,
                Keys.subjectPublicKeyInfo(session, server.publicKey), of(0xa0)), server.privateKey);
        byte[] serverBytes = certificate(rootName, serverName, server.publicKey, root.privateKey,
                extension("2.5.29.15", of(BIT_STRING, new byte[] {7, (byte) 0x80})), // key usage: signs data
                extension("2.5.29.17", sequence(of(DNS_NAME, ascii("www.example.com")))));

        CertificateFactory factory = CertificateFactory.getInstance("X.509");
        X509Certificate trusted = (X509Certificate) factory.generateCertificate(new ByteArrayInputStream(rootBytes));
        trusted.verify(trusted.getPublicKey()); // each of these throws if something is wrong
        Demo.checked("root", trusted.getSubjectX500Principal(), trusted.getBasicConstraints() >= 0);
        Certificate certificate = factory.generateCertificate(new ByteArrayInputStream(serverBytes));
        certificate.verify(trusted.getPublicKey());
        PKIXParameters trust = new PKIXParameters(Collections.singleton(new TrustAnchor(trusted, null)));
        trust.setRevocationEnabled(false);
        CertPathValidator.getInstance("PKIX").validate(factory.generateCertPath(Collections.singletonList(certificate)), trust);
        Demo.checked("path root to server", ((X509Certificate) certificate).getSubjectX500Principal(), true);

        Demo.title("What openssl says");
        Path file = Files.createTempFile("root", ".pem");
        file.toFile().deleteOnExit();
        Files.write(file, pem("CERTIFICATE", rootBytes));
        openssl(pem("CERTIFICATE REQUEST", request), "openssl", "req", "-verify", "-noout");
        openssl(pem("CERTIFICATE", serverBytes), "openssl", "verify", "-CAfile", file.toString());
    }

    // Session objects, which end with the session. An authority keeps its key: .yes(CKA.TOKEN), with a CKA.LABEL.
    private KeyPairHandles keyPair() {
        return session.generateKeyPair(new CK_MECHANISM(CKM.EC_KEY_PAIR_GEN), new Attributes().with(CKA.EC_PARAMS, P256),
                new Attributes().yes(CKA.SENSITIVE, CKA.SIGN).no(CKA.EXTRACTABLE));
    }

    private byte[] certificate(byte[] issuer, byte[] subject, CK_OBJECT_HANDLE key, CK_OBJECT_HANDLE signer,
            byte[]... extensions) {
        byte[] version3 = of(0xa0, integer(BigInteger.valueOf(2))), serial = integer(new BigInteger(1, session.random(16)));
        return signed(sequence(version3, serial, ECDSA_WITH_SHA256, issuer, sequence(time(-1), time(365)), subject,
                Keys.subjectPublicKeyInfo(session, key), of(0xa3, sequence(extensions))), signer);
    }

    // The form of everything that is signed: the content, the algorithm, and the signature.
    private byte[] signed(byte[] content, CK_OBJECT_HANDLE key) {
        byte[] digest = session.digest(new CK_MECHANISM(CKM.SHA256), content);
        byte[] signature = Keys.signatureToDer(session.sign(new CK_MECHANISM(CKM.ECDSA), key, digest));
        return sequence(content, ECDSA_WITH_SHA256, bitString(signature));
    }

    private static byte[] name(String commonName) {
        return sequence(of(SET, sequence(oid("2.5.4.3"), of(UTF8_STRING, ascii(commonName)))));
    }

    private static byte[] time(int daysFromNow) {
        ZonedDateTime time = ZonedDateTime.now(ZoneOffset.UTC).plusDays(daysFromNow);
        return of(UTC_TIME, ascii(String.format(Locale.ROOT, "%ty%<tm%<td%<tH%<tM%<tSZ", time)));
    }

    private static byte[] extension(String type, byte[] value) {
        return sequence(oid(type), TRUE, of(OCTET_STRING, value)); // TRUE: critical
    }

    private static byte[] pem(String type, byte[] bytes) {
        String text = Base64.getMimeEncoder(64, new byte[] {'\n'}).encodeToString(bytes);
        return ascii("-----BEGIN " + type + "-----\n" + text + "\n-----END " + type + "-----\n");
    }

    private static void openssl(byte[] input, String... command) throws Exception {
        Process process = new ProcessBuilder(command).redirectErrorStream(true).start();
        try (OutputStream in = process.getOutputStream()) {
            in.write(input);
        }
        String output = new BufferedReader(new InputStreamReader(process.getInputStream())).readLine();
        Demo.row("openssl " + command[1], output);
        if (process.waitFor() != 0) throw new IllegalStateException("openssl has found a fault");
    }
}
