// A key ceremony: two sites get a common key encryption key (KEK), and under it one sends a key to the other. The sites
// compare check values, by telephone; no secret key is ever seen outside a token. Duties are split: the security officer
// hands out tokens and cannot use keys, the user makes keys and cannot hand out tokens.

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CryptokiException;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.CK_RSA_PKCS_OAEP_PARAMS;
import halvorn.zerlin.token.*;

import java.util.Arrays;

import token.FreshToken;

public final class KeyCeremony {
    public static void main(String[] arguments) {
        try (Library library = Library.open();
                Session here = prepare(library, Demo.TOKEN_LABEL);
                Session there = prepare(library, "Zerlin other site")) {
            Demo.title("The KEK travels under a public key of the other site");
            KeyPairHandles pair = there.generateKeyPair(new CK_MECHANISM(CKM.RSA_PKCS_KEY_PAIR_GEN),
                    new Attributes().with(CKA.MODULUS_BITS, 2048).with(CKA.PUBLIC_EXPONENT, new byte[] {1, 0, 1}),
                    new Attributes().yes(CKA.SENSITIVE, CKA.UNWRAP).no(CKA.EXTRACTABLE));
            Attributes numbers = there.read(pair.publicKey, CKA.MODULUS, CKA.PUBLIC_EXPONENT); // public: may be sent
            CK_OBJECT_HANDLE publicKey = here.create(Attributes.of(CKO.PUBLIC_KEY).with(CKA.KEY_TYPE, CKK.RSA)
                    .with(CKA.MODULUS, numbers.bytes(CKA.MODULUS))
                    .with(CKA.PUBLIC_EXPONENT, numbers.bytes(CKA.PUBLIC_EXPONENT)).yes(CKA.WRAP));
            // A KEK wraps and unwraps, and signs for its check value alone. EXTRACTABLE lets it travel this once.
            CK_OBJECT_HANDLE kek = here.generateKey(new CK_MECHANISM(CKM.AES_KEY_GEN),
                    aes("KEK").with(CKA.VALUE_LEN, 32).yes(CKA.EXTRACTABLE, CKA.WRAP, CKA.UNWRAP));
            CK_MECHANISM oaep = new CK_MECHANISM(CKM.RSA_PKCS_OAEP,
                    new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null));
            byte[] wrapped = here.wrap(oaep, publicKey, kek);
            Demo.row("wrapped KEK", Demo.hex(wrapped));
            CK_OBJECT_HANDLE kekThere = there.unwrap(oaep, pair.privateKey, wrapped,
                    aes("KEK").yes(CKA.WRAP, CKA.UNWRAP));
            compare("check value of the KEK", checkValue(here, kek), checkValue(there, kekThere));
            here.write(kek, new Attributes().no(CKA.EXTRACTABLE)); // for ever: no token allows the way back

            Demo.title("A data key travels under the KEK");
            CK_OBJECT_HANDLE key = here.generateKey(new CK_MECHANISM(CKM.AES_KEY_GEN),
                    aes("data key").with(CKA.VALUE_LEN, 32).yes(CKA.EXTRACTABLE, CKA.ENCRYPT));
            CK_MECHANISM keyWrap = new CK_MECHANISM(CKM.AES_KEY_WRAP_STD);
            wrapped = here.wrap(keyWrap, kek, key);
            Demo.row("wrapped data key", Demo.hex(wrapped));
            CK_OBJECT_HANDLE keyThere = there.unwrap(keyWrap, kekThere, wrapped,
                    aes("data key").yes(CKA.DECRYPT));
            compare("its check value", checkValue(here, key), checkValue(there, keyThere));
            byte[] iv = here.random(16);
            byte[] secret = here.encrypt(new CK_MECHANISM(CKM.AES_CBC_PAD, iv), key, "It works".getBytes());
            byte[] text = there.decrypt(new CK_MECHANISM(CKM.AES_CBC_PAD, iv), keyThere, secret);
            Demo.row("encrypted here", "decrypted there: " + new String(text));

            Demo.title("All attributes of the KEK, without its value");
            System.out.println("  " + here.readAll(kek).toString().replace(", ", ",\n      "));
            attempt("wrap it again", () -> here.wrap(oaep, publicKey, kek));

            Demo.title("Destroy what the ceremony has left on the tokens");
            for (Session session : Arrays.asList(here, there)) {
                for (CK_OBJECT_HANDLE object : session.find(new Attributes().yes(CKA.TOKEN))) {
                    Demo.row("destroyed", session.read(object, CKA.LABEL).text(CKA.LABEL));
                    session.destroy(object); // a real ceremony keeps them
                }
            }
        }
        System.out.println("\nFinished: sessions closed, library finalised.");
    }

    // The officer initialises the token and gives the user a first PIN, which the user replaces by one of their own.
    private static Session prepare(Library library, String label) {
        byte[] firstPin = "first-secret".getBytes();
        Slot slot = Demo.newOrLabelled(library, label);
        Demo.title("Token \"" + label + "\", slot " + slot.id());
        slot.initToken(FreshToken.SO_PIN.clone(), label); // PINs are overwritten after use
        Session session = slot.openWritableSession();
        session.login(CKU.SO, FreshToken.SO_PIN.clone());
        session.initPin(firstPin.clone());
        attempt("key by the officer", () -> session.generateKey(new CK_MECHANISM(CKM.AES_KEY_GEN),
                aes("officer's").with(CKA.VALUE_LEN, 32)));
        session.logout();
        session.login(CKU.USER, firstPin.clone());
        session.setPin(firstPin, Demo.userPin());
        attempt("PIN by the user", () -> session.initPin("new-secret".getBytes()));
        return session;
    }

    // What a template does not say, the token decides: some allow everything. So say no first; a later yes replaces it.
    private static Attributes aes(String label) {
        return Attributes.of(CKO.SECRET_KEY).with(CKA.KEY_TYPE, CKK.AES).with(CKA.LABEL, label)
                .no(CKA.ENCRYPT, CKA.DECRYPT, CKA.WRAP, CKA.UNWRAP, CKA.VERIFY, CKA.DERIVE, CKA.EXTRACTABLE)
                .yes(CKA.TOKEN, CKA.PRIVATE, CKA.SENSITIVE, CKA.SIGN);
    }

    // The check value of an AES key is the start of a MAC over zeros. This is all that SIGN is used for.
    private static byte[] checkValue(Session session, CK_OBJECT_HANDLE key) {
        return Arrays.copyOf(session.sign(new CK_MECHANISM(CKM.AES_CMAC), key, new byte[16]), 5);
    }

    private static void compare(String name, byte[] here, byte[] there) {
        Demo.row(name, Demo.hex(here) + " here, " + Demo.hex(there) + " there");
        if (!Arrays.equals(here, there)) {
            throw new IllegalStateException(name + " differs: these are two different keys");
        }
    }

    // Tokens differ in what they forbid: a ceremony tries it.
    private static void attempt(String what, Runnable forbidden) {
        try {
            forbidden.run();
            Demo.row(what, "ALLOWED by this token");
        } catch (CryptokiException e) {
            Demo.row(what, "refused, " + e.getCall() + ": " + e.getRV());
        }
    }
}
