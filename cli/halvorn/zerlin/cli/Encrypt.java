// Data encrypted and decrypted, in streams of any size.
package halvorn.zerlin.cli;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.token.Session;

import java.io.*;

final class Encrypt {
    static int run(DataOptions data, OutputFile output, boolean encrypts) throws Exception {
        return data.key.open(data.options, false, true, (token, key) -> {
            long type = data.mechanism.type(token, key, MechanismOptions.ENCRYPT);
            int ivLength = data.mechanism.iv == null ? MechanismOptions.ivLength(type) : 0; // in the stream
            try (InputStream in = Streams.in(data.input)) {
                byte[] iv = data.mechanism.iv != null ? Output.unhex(data.mechanism.iv) : ivLength == 0 ? null
                    : encrypts ? token.session.random(ivLength) : new byte[ivLength];
                if (ivLength > 0 && !encrypts) {
                    new DataInputStream(in).readFully(iv);
                }
                CK_MECHANISM how = data.mechanism.mechanism(type, iv);
                return output.write(out -> {
                    out.write(encrypts && ivLength > 0 ? iv : new byte[0]);
                    stream(token.session, how, key, in, out, encrypts);
                });
            }
        }, encrypts ? CKO.PUBLIC_KEY : CKO.PRIVATE_KEY, CKO.SECRET_KEY);
    }

    private static void stream(Session session, CK_MECHANISM how, CK_OBJECT_HANDLE key, InputStream in, OutputStream out,
            boolean encrypts) throws IOException {
        if (MechanismOptions.isWhole(how)) {
            byte[] data = Pins.secret(Streams.read(in));
            out.write(Pins.secret(encrypts ? session.encrypt(how, key, data) : session.decrypt(how, key, data)));
        } else if (encrypts) {
            session.encrypt(how, key, in, out);
        } else {
            session.decrypt(how, key, in, out);
        }
    }
}
