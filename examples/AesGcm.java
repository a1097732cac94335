// AES-GCM on the token: encrypts, and protects from changes what is encrypted and a header that stays readable. The
// JDK's cipher with the same key must get the same bytes.

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CryptokiException;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.CK_GCM_PARAMS;
import halvorn.zerlin.token.*;

import java.nio.charset.StandardCharsets;
import java.security.GeneralSecurityException;
import java.util.Arrays;

import javax.crypto.Cipher;
import javax.crypto.spec.GCMParameterSpec;
import javax.crypto.spec.SecretKeySpec;

public final class AesGcm {
    private static final byte[] TEXT = "Pay 100 to Alice".getBytes(StandardCharsets.UTF_8);
    private static final byte[] HEADER = "order 4711".getBytes(StandardCharsets.UTF_8);
    private static final int TAG_BITS = 128;

    public static void main(String[] arguments) throws GeneralSecurityException {
        // Everything that is opened here is closed at the end, in reverse order.
        try (Library library = Library.open(); Session session = Demo.token(library).openSession()) {
            session.login(CKU.USER, Demo.userPin());

            Demo.title("A key and an IV");
            // A session object: it ends with the session. Its value may be read, which is for the JDK's check alone:
            // other keys are SENSITIVE and not EXTRACTABLE.
            CK_OBJECT_HANDLE key = session.generateKey(new CK_MECHANISM(CKM.AES_KEY_GEN), Attributes.of(CKO.SECRET_KEY)
                    .with(CKA.VALUE_LEN, 32).yes(CKA.ENCRYPT, CKA.DECRYPT, CKA.EXTRACTABLE).no(CKA.SENSITIVE));
            byte[] iv = session.random(12); // never the same twice with one key
            Demo.row("key", session.read(key, CKA.KEY_TYPE, CKA.VALUE_LEN, CKA.ENCRYPT, CKA.DECRYPT));
            Demo.row("IV from the token", Demo.hex(iv));

            Demo.title("Encrypt and decrypt");
            byte[] sealed = session.encrypt(gcm(iv, HEADER), key, TEXT); // the tag is its end
            byte[] value = session.read(key, CKA.VALUE).bytes(CKA.VALUE);
            Cipher jdk = Cipher.getInstance("AES/GCM/NoPadding");
            jdk.init(Cipher.ENCRYPT_MODE, new SecretKeySpec(value, "AES"), new GCMParameterSpec(TAG_BITS, iv));
            jdk.updateAAD(HEADER);
            Demo.checked("cipher text and tag", Demo.hex(sealed), Arrays.equals(jdk.doFinal(TEXT), sealed));
            byte[] opened = session.decrypt(gcm(iv, HEADER), key, sealed);
            Demo.row("decrypted", new String(opened, StandardCharsets.UTF_8));

            Demo.title("Change one bit");
            refused(session, key, "of the cipher text", iv, HEADER, flipped(sealed, 0));
            refused(session, key, "of the tag", iv, HEADER, flipped(sealed, sealed.length - 1));
            refused(session, key, "of the header", iv, flipped(HEADER, 0), sealed);
            refused(session, key, "of the IV", flipped(iv, 0), HEADER, sealed);
        }
        System.out.println("\nFinished: nothing is left on the token.");
    }

    // The header is the "additional authenticated data" (AAD): protected, and not part of what is encrypted.
    private static CK_MECHANISM gcm(byte[] iv, byte[] header) {
        return new CK_MECHANISM(CKM.AES_GCM, new CK_GCM_PARAMS(iv, header, TAG_BITS));
    }

    private static void refused(Session session, CK_OBJECT_HANDLE key, String where, byte[] iv, byte[] header,
            byte[] sealed) {
        try {
            session.decrypt(gcm(iv, header), key, sealed);
        } catch (CryptokiException e) {
            Demo.row(where, "refused, " + e.getCall() + ": " + e.getRV());
            return;
        }
        throw new IllegalStateException("A change " + where + " was not noticed");
    }

    private static byte[] flipped(byte[] bytes, int index) {
        byte[] changed = bytes.clone();
        changed[index] ^= 1;
        return changed;
    }
}
