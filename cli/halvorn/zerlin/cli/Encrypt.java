// Data encrypted and decrypted, in streams of any size.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CKO;

import picocli.CommandLine.*;

import java.io.DataInputStream;
import java.io.InputStream;
import java.util.Arrays;
import java.util.concurrent.Callable;

@Command(name = "encrypt", description = "Encrypt a file or standard input; the output begins with the initialization vector"
        + " unless --iv names one.", footer = {"", "Example: zerlin encrypt files --pin-file pin <report.pdf >report.enc"})
class Encrypt implements Callable<Integer> {
    private static final int WHOLE = 1 << 16;

    @Mixin private TokenOptions options;
    @Mixin private MechanismOptions mechanism;

    @Parameters(paramLabel = "KEY", description = "The PKCS#11 URI or the label of the key.")
    private String key;

    @Option(names = {"-i", "--input"}, paramLabel = "FILE", description = "The input; without it, standard input.")
    private String input;

    @Mixin private OutputFile output;

    @Override
    public Integer call() throws Exception {
        return run(true);
    }

    final int run(boolean encrypts) throws Exception {
        Uri uri = Uri.of(key, "object");
        return options.withToken(uri, false, true, token -> {
            CK_OBJECT_HANDLE handle = token.find(uri, encrypts ? CKO.PUBLIC_KEY : CKO.PRIVATE_KEY, CKO.SECRET_KEY);
            long type = mechanism.type(token, handle, MechanismOptions.ENCRYPT);
            int ivLength = mechanism.iv == null ? MechanismOptions.ivLength(type) : 0;
            try (InputStream in = Streams.in(input)) {
                byte[] iv = ivLength == 0 ? mechanism.vector()
                    : encrypts ? token.session.random(ivLength) : new byte[ivLength];
                if (!encrypts && ivLength > 0) {
                    new DataInputStream(in).readFully(iv);
                }
                CK_MECHANISM with = mechanism.mechanism(type, iv);
                output.write(out -> {
                    out.write(iv == null ? new byte[0] : iv, 0, encrypts ? ivLength : 0);
                    if (MechanismOptions.isWhole(type)) {
                        byte[] data = Streams.read(in, WHOLE);
                        byte[] result = encrypts ? token.session.encrypt(with, handle, data)
                            : token.session.decrypt(with, handle, data);
                        out.write(result);
                        Arrays.fill(encrypts ? data : result, (byte) 0);
                    } else if (encrypts) {
                        token.session.encrypt(with, handle, in, out);
                    } else {
                        token.session.decrypt(with, handle, in, out);
                    }
                });
            }
            return 0;
        });
    }

    @Command(name = "decrypt", description = "Decrypt what encrypt has written. Discard the output of a decrypt that fails: a"
            + " file does not appear then, but a pipe has had a part.",
            footer = {"", "Example: zerlin decrypt files --pin-file pin -i report.enc -o report.pdf"})
    static final class Decrypt extends Encrypt {
        @Override
        public Integer call() throws Exception {
            return run(false);
        }
    }
}
