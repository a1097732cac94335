// Certificates: stored and read.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import picocli.CommandLine.*;

import java.io.ByteArrayInputStream;
import java.security.cert.*;
import java.util.*;

@Command(name = "cert", description = "Store and read certificates.", footer = {"", "Example: zerlin cert list"})
final class CertCommands extends Group {
    @Command(name = "list", description = "List the certificates of a token.",
            footer = {"", "Example: zerlin cert list --json"})
    void list(@Mixin TokenOptions options) throws Exception {
        options.open(new Uri(), false, false, token -> {
            List<Map<String, Object>> rows = new ArrayList<>();
            for (CK_OBJECT_HANDLE object : token.session.find(Attributes.of(CKO.CERTIFICATE))) {
                X509Certificate certificate = parse(token.session.read(object, CKA.VALUE).bytes(CKA.VALUE));
                rows.add(Output.record("subject", certificate.getSubjectX500Principal().getName(),
                        "issuer", certificate.getIssuerX500Principal().getName(),
                        "notAfter", certificate.getNotAfter().toInstant().toString(), "uri", token.uri(object)));
            }
            Output.print(options.json, rows);
        });
    }

    @Command(name = "export", description = "Write a certificate as PEM.",
            footer = {"", "Example: zerlin cert export invoices -o invoices.crt"})
    void export(@Mixin ObjectOptions options, @Mixin OutputFile output) throws Exception {
        options.open(false, false, (token, object) -> output.write(
                KeyCommands.pem("CERTIFICATE", token.session.read(object, CKA.VALUE).bytes(CKA.VALUE))), CKO.CERTIFICATE);
    }

    @Command(name = "import", description = "Store a certificate, with the identifier of the private key of its label.",
            footer = {"", "Example: zerlin cert import invoices.crt --label invoices"})
    void importCertificate(@Mixin TokenOptions options, @Parameters(paramLabel = "FILE",
            description = "The file; - is standard input.") String file, @Option(names = {"-l", "--label"}, required = true,
            paramLabel = "TEXT", description = "The label.") String label) throws Exception {
        X509Certificate certificate = parse(Streams.read(file));
        options.open(new Uri(), true, true, token -> {
            Attributes template = Attributes.of(CKO.CERTIFICATE).with(CKA.CERTIFICATE_TYPE, CKC.X_509).with(CKA.LABEL, label)
                    .with(CKA.SUBJECT, certificate.getSubjectX500Principal().getEncoded())
                    .with(CKA.ISSUER, certificate.getIssuerX500Principal().getEncoded())
                    .with(CKA.SERIAL_NUMBER, Der.integer(certificate.getSerialNumber()))
                    .with(CKA.VALUE, certificate.getEncoded()).yes(CKA.TOKEN).no(CKA.PRIVATE);
            for (CK_OBJECT_HANDLE key : token.session.find(Attributes.of(CKO.PRIVATE_KEY).with(CKA.LABEL, label))) {
                template.with(CKA.ID, token.session.read(key, CKA.ID).bytes(CKA.ID));
            }
            KeyCommands.made(options, token, token.session.create(template));
        });
    }

    // Reads PEM or DER.
    private static X509Certificate parse(byte[] bytes) throws CertificateException {
        return (X509Certificate) CertificateFactory.getInstance("X.509").generateCertificate(new ByteArrayInputStream(bytes));
    }
}
