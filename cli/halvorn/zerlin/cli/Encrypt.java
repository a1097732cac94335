// Data encrypted and decrypted, in streams of any size.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.token.Session;

import java.io.*;
import java.util.Arrays;

final class Encrypt {
    private static final int WHOLE = 1 << 16;

    static int run(DataOptions data, OutputFile output, boolean encrypts) throws Exception {
        return data.options.withToken(data.uri(), false, true, token -> {
            CK_OBJECT_HANDLE key = token.find(data.uri(), encrypts ? CKO.PUBLIC_KEY : CKO.PRIVATE_KEY, CKO.SECRET_KEY);
            long type = data.mechanism.type(token, key, MechanismOptions.ENCRYPT);
            int ivLength = data.mechanism.iv == null ? MechanismOptions.ivLength(type) : 0;
            try (InputStream in = Streams.in(data.input)) {
                byte[] iv = ivLength == 0 ? data.mechanism.vector() : encrypts ? token.session.random(ivLength)
                    : new byte[ivLength];
                if (!encrypts && ivLength > 0) {
                    new DataInputStream(in).readFully(iv);
                }
                CK_MECHANISM how = data.mechanism.mechanism(type, iv);
                output.write(out -> {
                    out.write(iv == null ? new byte[0] : iv, 0, encrypts ? ivLength : 0);
                    if (MechanismOptions.isWhole(type)) {
                        whole(token.session, how, key, Streams.read(in, WHOLE), out, encrypts);
                    } else if (encrypts) {
                        token.session.encrypt(how, key, in, out);
                    } else {
                        token.session.decrypt(how, key, in, out);
                    }
                });
            }
            return 0;
        });
    }

    private static void whole(Session session, CK_MECHANISM how, CK_OBJECT_HANDLE key, byte[] data, OutputStream out,
            boolean encrypts) throws IOException {
        byte[] result = encrypts ? session.encrypt(how, key, data) : session.decrypt(how, key, data);
        out.write(result);
        Arrays.fill(encrypts ? data : result, (byte) 0);
    }
}
