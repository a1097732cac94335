// Signatures: made and verified.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.token.Keys;

import picocli.CommandLine.*;

import java.io.*;
import java.security.GeneralSecurityException;
import java.security.MessageDigest;
import java.security.interfaces.ECPublicKey;
import java.util.concurrent.Callable;

@Command(name = "sign", description = "Sign a file or standard input. A signature of ECDSA is written in DER.",
        footer = {"", "Example: zerlin sign invoices --pin-file pin -i report.pdf -o report.sig"})
final class Sign implements Callable<Integer> {
    private static final int WHOLE = 1 << 16;

    @Mixin private TokenOptions options;
    @Mixin private MechanismOptions mechanism;

    @Parameters(paramLabel = "KEY", description = "The PKCS#11 URI or the label of the key.")
    private String key;

    @Option(names = {"-i", "--input"}, paramLabel = "FILE", description = "The data; without it, standard input.")
    private String input;

    @Mixin private OutputFile output;

    @Option(names = "--plain", description = "Write a signature of ECDSA as its two numbers, as PKCS#11 has it.")
    private boolean plain;

    @Override
    public Integer call() throws Exception {
        Uri uri = Uri.of(key, "object");
        return options.withToken(uri, false, true, token -> {
            CK_OBJECT_HANDLE handle = token.find(uri, CKO.PRIVATE_KEY, CKO.SECRET_KEY);
            long type = mechanism.type(token, handle, MechanismOptions.SIGN);
            try (InputStream in = Streams.in(input)) {
                byte[] signature = sign(token, handle, mechanism.mechanism(type, null), in);
                boolean isDer = isEcdsa(type) && !plain;
                output.write(isDer ? Keys.signatureToDer(signature) : signature);
            }
            return 0;
        });
    }

    private static boolean isEcdsa(long type) {
        return Values.mechanism(type).startsWith("CKM_ECDSA");
    }

    // For ECDSA the command hashes itself where the token does not.
    private static InputStream hashed(OpenToken token, CK_MECHANISM mechanism, InputStream in)
            throws IOException, GeneralSecurityException {
        String name = Values.mechanism(mechanism.mechanism.m_value).replaceAll("_STD$", "");
        if (!name.matches("CKM_ECDSA_SHA\\d+") || token.slot.supports(mechanism.mechanism.m_value, 0)) {
            return in;
        }
        MessageDigest digest = MessageDigest.getInstance(name.replace("CKM_ECDSA_SHA", "SHA-"));
        byte[] part = new byte[WHOLE];
        for (int length = in.read(part); length >= 0; length = in.read(part)) {
            digest.update(part, 0, length);
        }
        mechanism.mechanism.m_value = CKM.ECDSA;
        return new ByteArrayInputStream(digest.digest());
    }

    static byte[] sign(OpenToken token, CK_OBJECT_HANDLE key, CK_MECHANISM mechanism, InputStream in)
            throws IOException, GeneralSecurityException {
        InputStream data = hashed(token, mechanism, in);
        return MechanismOptions.isWhole(mechanism.mechanism.m_value)
            ? token.session.sign(mechanism, key, Streams.read(data, WHOLE)) : token.session.sign(mechanism, key, data);
    }

    @Command(name = "verify", description = "Verify a signature; the exit code is 1 if it is wrong.",
            footer = {"", "Example: zerlin verify invoices report.sig -i report.pdf"})
    static final class Verify implements Callable<Integer> {
        @Mixin private TokenOptions options;
        @Mixin private MechanismOptions mechanism;

        @Parameters(paramLabel = "KEY", description = "The PKCS#11 URI or the label of the key.")
        private String key;

        @Parameters(paramLabel = "SIGNATURE", description = "The file with the signature.")
        private String signatureFile;

        @Option(names = {"-i", "--input"}, paramLabel = "FILE", description = "The data; without it, standard input.")
        private String input;

        @Option(names = "--plain", description = "The signature of ECDSA is not DER, but its two numbers.")
        private boolean plain;

        @Override
        public Integer call() throws Exception {
            Uri uri = Uri.of(key, "object");
            return options.withToken(uri, false, false, token -> {
                CK_OBJECT_HANDLE handle = token.find(uri, CKO.PUBLIC_KEY, CKO.SECRET_KEY);
                long type = mechanism.type(token, handle, MechanismOptions.SIGN);
                byte[] signature = Streams.read(signatureFile, WHOLE);
                boolean valid;
                try (InputStream in = Streams.in(input)) {
                    byte[] plainSignature = isEcdsa(type) && !plain ? plain(token, handle, signature) : signature;
                    valid = plainSignature != null && verify(token, handle, mechanism.mechanism(type, null), in, plainSignature);
                }
                Output.line(options.json ? Output.json(Output.record("valid", valid)) : valid ? "valid" : "invalid");
                return valid ? 0 : Failure.NO;
            });
        }

        // Returns null if the signature is no DER: it is wrong then.
        private static byte[] plain(OpenToken token, CK_OBJECT_HANDLE key, byte[] der) throws GeneralSecurityException {
            int bits = ((ECPublicKey) Keys.publicKey(token.session, key)).getParams().getOrder().bitLength();
            try {
                return Keys.signatureFromDer(der, (bits + 7) / 8);
            } catch (IllegalArgumentException wrong) {
                return null;
            }
        }

        private static boolean verify(OpenToken token, CK_OBJECT_HANDLE key, CK_MECHANISM mechanism, InputStream in,
                byte[] signature) throws IOException, GeneralSecurityException {
            InputStream data = hashed(token, mechanism, in);
            return MechanismOptions.isWhole(mechanism.mechanism.m_value)
                ? token.session.verify(mechanism, key, Streams.read(data, WHOLE), signature)
                : token.session.verify(mechanism, key, data, signature);
        }
    }
}
