// Signatures: made and verified.
package halvorn.zerlin.cli;

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.token.Keys;

import java.io.*;
import java.security.GeneralSecurityException;
import java.security.MessageDigest;
import java.security.interfaces.ECPublicKey;

final class Sign {
    private static final int WHOLE = 1 << 16;

    static int sign(DataOptions data, OutputFile output, boolean plain) throws Exception {
        return data.options.withToken(data.uri(), false, true, token -> {
            CK_OBJECT_HANDLE key = token.find(data.uri(), CKO.PRIVATE_KEY, CKO.SECRET_KEY);
            long type = data.mechanism.type(token, key, MechanismOptions.SIGN);
            try (InputStream in = Streams.in(data.input)) {
                byte[] signature = sign(token, key, data.mechanism.mechanism(type, null), in);
                output.write(Values.mechanism(type).startsWith("CKM_ECDSA") && !plain
                    ? Keys.signatureToDer(signature) : signature);
            }
            return 0;
        });
    }

    static int verify(DataOptions data, String signatureFile, boolean plain) throws Exception {
        return data.options.withToken(data.uri(), false, false, token -> {
            CK_OBJECT_HANDLE key = token.find(data.uri(), CKO.PUBLIC_KEY, CKO.SECRET_KEY);
            long type = data.mechanism.type(token, key, MechanismOptions.SIGN);
            byte[] signature = Streams.read(signatureFile, WHOLE);
            boolean valid;
            try (InputStream in = Streams.in(data.input)) {
                byte[] numbers = Values.mechanism(type).startsWith("CKM_ECDSA") && !plain
                    ? plain(token, key, signature) : signature;
                valid = numbers != null && verify(token, key, data.mechanism.mechanism(type, null), in, numbers);
            }
            Output.line(data.options.json ? Output.json(Output.record("valid", valid)) : valid ? "valid" : "invalid");
            return valid ? 0 : Failure.NO;
        });
    }

    static byte[] sign(OpenToken token, CK_OBJECT_HANDLE key, CK_MECHANISM mechanism, InputStream in)
            throws IOException, GeneralSecurityException {
        InputStream data = hashed(token, mechanism, in);
        return MechanismOptions.isWhole(mechanism.mechanism.m_value)
            ? token.session.sign(mechanism, key, Streams.read(data, WHOLE)) : token.session.sign(mechanism, key, data);
    }

    private static boolean verify(OpenToken token, CK_OBJECT_HANDLE key, CK_MECHANISM mechanism, InputStream in,
            byte[] signature) throws IOException, GeneralSecurityException {
        InputStream data = hashed(token, mechanism, in);
        return MechanismOptions.isWhole(mechanism.mechanism.m_value)
            ? token.session.verify(mechanism, key, Streams.read(data, WHOLE), signature)
            : token.session.verify(mechanism, key, data, signature);
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

    // Returns null if the signature is no DER: it is wrong then.
    private static byte[] plain(OpenToken token, CK_OBJECT_HANDLE key, byte[] der) throws GeneralSecurityException {
        int bits = ((ECPublicKey) Keys.publicKey(token.session, key)).getParams().getOrder().bitLength();
        try {
            return Keys.signatureFromDer(der, (bits + 7) / 8);
        } catch (IllegalArgumentException wrong) {
            return null;
        }
    }
}
