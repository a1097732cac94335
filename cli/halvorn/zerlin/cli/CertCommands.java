// Certificates: requested, stored, read.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import picocli.CommandLine.*;

import java.io.ByteArrayInputStream;
import java.math.BigInteger;
import java.security.cert.*;
import java.util.*;

import javax.security.auth.x500.X500Principal;

@Command(name = "cert", description = "Store and read certificates.", footer = {"", "Example: zerlin cert list"})
final class CertCommands extends Group {
    @Command(name = "list", description = "List the certificates of a token.",
            footer = {"", "Example: zerlin cert list --json"})
    int list(@Mixin TokenOptions options) throws Exception {
        return options.withToken(new Uri(), false, false, token -> {
            List<Map<String, Object>> rows = new ArrayList<>();
            for (CK_OBJECT_HANDLE object : token.session.find(Attributes.of(CKO.CERTIFICATE))) {
                X509Certificate certificate = parse(token.session.read(object, CKA.VALUE).bytes(CKA.VALUE));
                rows.add(Output.record("subject", certificate.getSubjectX500Principal().getName(),
                        "issuer", certificate.getIssuerX500Principal().getName(),
                        "notAfter", certificate.getNotAfter().toInstant().toString(), "uri", token.uri(object)));
            }
            Output.print(options.json, rows);
            return 0;
        });
    }

    @Command(name = "export", description = "Write a certificate as PEM.",
            footer = {"", "Example: zerlin cert export invoices -o invoices.crt"})
    int export(@Mixin TokenOptions options, @Mixin KeyCommands.ObjectName name, @Mixin OutputFile output) throws Exception {
        return name.open(options, false, false, (token, object) -> output.write(
                KeyCommands.pem("CERTIFICATE", token.session.read(object, CKA.VALUE).bytes(CKA.VALUE))), CKO.CERTIFICATE);
    }

    @Command(name = "import", description = "Store a certificate, with the identifier of the private key of its label.",
            footer = {"", "Example: zerlin cert import invoices.crt --label invoices"})
    int importCertificate(@Mixin TokenOptions options,
            @Parameters(paramLabel = "FILE", description = "The file; - is standard input.") String file,
            @Option(names = {"-l", "--label"}, required = true, paramLabel = "TEXT", description = "The label.") String label)
            throws Exception {
        X509Certificate certificate = parse(Streams.read(file));
        return options.withToken(new Uri(), true, true, token -> {
            Attributes template = Attributes.of(CKO.CERTIFICATE).with(CKA.CERTIFICATE_TYPE, CKC.X_509).with(CKA.LABEL, label)
                    .with(CKA.SUBJECT, certificate.getSubjectX500Principal().getEncoded())
                    .with(CKA.ISSUER, certificate.getIssuerX500Principal().getEncoded())
                    .with(CKA.SERIAL_NUMBER, Der.integer(certificate.getSerialNumber()))
                    .with(CKA.VALUE, certificate.getEncoded()).yes(CKA.TOKEN).no(CKA.PRIVATE);
            for (CK_OBJECT_HANDLE key : token.session.find(Attributes.of(CKO.PRIVATE_KEY).with(CKA.LABEL, label))) {
                template.with(CKA.ID, token.session.read(key, CKA.ID).bytes(CKA.ID));
            }
            return KeyCommands.made(options, token, token.session.create(template));
        });
    }

    // Reads PEM or DER.
    private static X509Certificate parse(byte[] bytes) throws CertificateException {
        return (X509Certificate) CertificateFactory.getInstance("X.509").generateCertificate(new ByteArrayInputStream(bytes));
    }

    static int csr(TokenOptions options, OutputFile output, String key, String subject) throws Exception {
        byte[] name = new X500Principal(subject).getEncoded();
        Uri uri = Uri.of(key, "object");
        return options.withToken(uri, false, true, token -> {
            CK_OBJECT_HANDLE signer = token.find(uri, CKO.PRIVATE_KEY);
            Attributes known = token.session.read(signer, CKA.ID, CKA.KEY_TYPE);
            long type = known.number(CKA.KEY_TYPE);
            CK_OBJECT_HANDLE publicKey = type == CKK.RSA ? signer
                : token.session.findOne(Attributes.of(CKO.PUBLIC_KEY).with(CKA.ID, known.bytes(CKA.ID)));
            byte[] content = Der.sequence(Der.integer(BigInteger.ZERO), name,
                    KeyCommands.publicKeyInfo(token.session, publicKey), Der.of(0xa0));
            byte[] algorithm = type == CKK.RSA ? Der.sequence(Der.oid("1.2.840.113549.1.1.11"), Der.of(0x05))
                : Der.sequence(Der.oid(type == CKK.EC ? "1.2.840.10045.4.3.2" : KeyCommands.ED25519));
            byte[] signature = Sign.sign(token, signer, new MechanismOptions().mechanism(token, signer, MechanismOptions.SIGN),
                    new ByteArrayInputStream(content), false);
            return output.write(KeyCommands.pem("CERTIFICATE REQUEST",
                    Der.sequence(content, algorithm, Der.bitString(signature))));
        });
    }
}
