// The mechanism of a command: its name, and the parameter that belongs to it.
package halvorn.zerlin.cli;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import picocli.CommandLine.Option;

import java.util.*;

class MechanismOptions {
    static final int SIGN = 1;
    static final int ENCRYPT = 2;
    static final int WRAP = 3;

    // What is used for a type of key: to sign, to encrypt, to wrap.
    private static final Object[][] DEFAULTS = {
        {CKK.RSA, "SHA256_RSA_PKCS", "RSA_PKCS_OAEP", "RSA_PKCS_OAEP"},
        {CKK.EC, "ECDSA_SHA256", null, null},
        {CKK.AES, "AES_CMAC", "AES_GCM", "AES_KEY_WRAP"},
        {CKK.EC_EDWARDS, "EDDSA", null, null},
        {CKK.GENERIC_SECRET, "SHA256_HMAC", null, null},
        {CKK.DES3, null, "DES3_CBC_PAD", null},
    };
    // These take their data in one piece.
    private static final List<Long> WHOLE = Arrays.asList(CKM.RSA_PKCS, CKM.RSA_X_509, CKM.RSA_PKCS_PSS, CKM.RSA_PKCS_OAEP,
            CKM.ECDSA, CKM.DSA, CKM.EDDSA);

    @Option(names = {"-m", "--mechanism"}, paramLabel = "NAME", description = "The mechanism; without it, the usual one.")
    private String name;

    @Option(names = "--hash", paramLabel = "NAME", description = "The hash of PSS (else sha256) and OAEP (else sha1).")
    private String hash;

    @Option(names = "--iv", paramLabel = "HEX", description = "The IV; without it, a random one begins the output.") String iv;

    @Option(names = "--aad", paramLabel = "HEX", description = "The additional data of AES-GCM.") private String aad;

    /** Returns the value of the mechanism for a use of a key. */
    long type(OpenToken token, CK_OBJECT_HANDLE key, int use) {
        if (name != null) {
            return Names.mechanism(token.slot, name);
        }
        long keyType = token.session.read(key, CKA.KEY_TYPE).number(CKA.KEY_TYPE);
        for (Object[] row : DEFAULTS) {
            if (row[0].equals(keyType) && row[use] != null) {
                return Names.mechanism(token.slot, (String) row[use]);
            }
        }
        throw new Failure(Failure.USAGE, "Name the --mechanism: keys of this type have no usual one");
    }

    CK_MECHANISM mechanism(OpenToken token, CK_OBJECT_HANDLE key, int use) {
        return mechanism(type(token, key, use), Output.unhex(iv));
    }

    static boolean isWhole(CK_MECHANISM how) {
        return WHOLE.contains(how.mechanism.m_value);
    }

    /** Returns the length of the initialization vector; 0 if the mechanism has none. */
    static int ivLength(long type) {
        String text = Names.mechanism(type);
        return type == CKM.AES_GCM ? 12 : !text.matches(".*_(CBC|CBC_PAD|CTR|OFB|OFB64|CFB|CFB1|CFB8|CFB64|CFB128|CTS)") ? 0
            : text.contains("DES") ? 8 : 16;
    }

    CK_MECHANISM mechanism(long type, byte[] vector) {
        String text = Names.mechanism(type);
        if (type == CKM.RSA_PKCS_OAEP) {
            String name = hash == null ? "sha1" : hash;
            return new CK_MECHANISM(type, new CK_RSA_PKCS_OAEP_PARAMS(Names.of(CKM.class, name),
                    Names.of(CKG.class, "MGF1" + name), null));
        } else if (text.endsWith("_RSA_PKCS_PSS") || type == CKM.RSA_PKCS_PSS) {
            String name = type != CKM.RSA_PKCS_PSS ? text.replaceAll("CKM_|_RSA.*", "") : hash == null ? "sha256" : hash;
            int bits = Integer.parseInt(name.replaceAll("(?i)sha[-_]?3[-_]|\\D", ""));
            return new CK_MECHANISM(type, new CK_RSA_PKCS_PSS_PARAMS(Names.of(CKM.class, name),
                    Names.of(CKG.class, "MGF1" + name), bits == 1 ? 20 : bits / 8));
        } else if (type == CKM.AES_GCM) {
            return new CK_MECHANISM(type, new CK_GCM_PARAMS(vector, Output.unhex(aad), 128));
        }
        return new CK_MECHANISM(type, type == CKM.AES_CTR ? new CK_AES_CTR_PARAMS(128, vector) : vector);
    }
}
