// Signatures: made and verified.
package halvorn.zerlin.cli;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.Keys;

import java.io.*;
import java.security.*;
import java.security.interfaces.ECPublicKey;

final class Sign {
    static int sign(DataOptions data, OutputFile output, boolean plain) throws Exception {
        return data.key.open(data.options, false, true, (token, key) -> {
            try (InputStream in = Streams.in(data.input)) {
                CK_MECHANISM how = data.mechanism.mechanism(token, key, MechanismOptions.SIGN);
                return output.write(sign(token, key, how, in, plain));
            }
        }, CKO.PRIVATE_KEY, CKO.SECRET_KEY);
    }

    static int verify(DataOptions data, String signatureFile, boolean plain) throws Exception {
        return data.key.open(data.options, false, false, (token, key) -> {
            byte[] signature = Streams.read(signatureFile);
            try (InputStream in = Streams.in(data.input)) {
                CK_MECHANISM how = data.mechanism.mechanism(token, key, MechanismOptions.SIGN);
                boolean valid = isValid(token, key, how, in, signature, plain);
                Output.line(data.options.json ? Output.json(Output.record("valid", valid)) : valid ? "valid" : "invalid");
                return valid ? 0 : Failure.NO;
            }
        }, CKO.PUBLIC_KEY, CKO.SECRET_KEY);
    }

    static byte[] sign(OpenToken token, CK_OBJECT_HANDLE key, CK_MECHANISM how, InputStream in, boolean plain)
            throws IOException, GeneralSecurityException {
        InputStream data = hashed(token, how, in);
        byte[] signature = MechanismOptions.isWhole(how) ? token.session.sign(how, key, Streams.read(data))
            : token.session.sign(how, key, data);
        return plain || !isEcdsa(how) ? signature : Keys.signatureToDer(signature);
    }

    private static boolean isValid(OpenToken token, CK_OBJECT_HANDLE key, CK_MECHANISM how, InputStream in, byte[] signature,
            boolean plain) throws IOException, GeneralSecurityException {
        byte[] numbers = plain || !isEcdsa(how) ? signature : plain(token, key, signature);
        InputStream data = hashed(token, how, in);
        return numbers != null && (MechanismOptions.isWhole(how)
            ? token.session.verify(how, key, Streams.read(data), numbers)
            : token.session.verify(how, key, data, numbers));
    }

    private static boolean isEcdsa(CK_MECHANISM how) {
        return Values.mechanism(how.mechanism.m_value).startsWith("CKM_ECDSA");
    }

    // For ECDSA the command hashes itself where the token does not.
    private static InputStream hashed(OpenToken token, CK_MECHANISM how, InputStream in)
            throws IOException, GeneralSecurityException {
        String name = Values.mechanism(how.mechanism.m_value).replaceAll("_STD$", "");
        if (!name.matches("CKM_ECDSA_SHA\\d+") || token.slot.supports(how.mechanism.m_value, 0)) {
            return in;
        }
        how.mechanism.m_value = CKM.ECDSA;
        MessageDigest digest = MessageDigest.getInstance(name.replace("CKM_ECDSA_SHA", "SHA-"));
        byte[] part = new byte[Streams.SHORT];
        for (int length = in.read(part); length >= 0; length = in.read(part)) {
            digest.update(part, 0, length);
        }
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
