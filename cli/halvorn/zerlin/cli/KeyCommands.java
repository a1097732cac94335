// Keys: generated, imported, exported, wrapped, unwrapped, derived, copied, deleted.
package halvorn.zerlin.cli;

import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.CK_ECDH1_DERIVE_PARAMS;
import halvorn.zerlin.token.*;

import picocli.CommandLine.*;

import java.io.IOException;
import java.math.BigInteger;
import java.security.*;
import java.security.interfaces.*;
import java.security.spec.*;
import java.util.*;
import java.util.stream.Collectors;

@Command(name = "key", description = "Make, move and delete keys.", footer = {"", "Example: zerlin key generate --help"})
final class KeyCommands extends Group {
    static final String ED25519 = "1.3.101.112";
    // What can be generated: its name with the bits, the type of the key, the mechanism, and the curve.
    private static final Object[][] TYPES = {
        {"aes(\\d{3})", CKK.AES, CKM.AES_KEY_GEN, null},
        {"des3", CKK.DES3, CKM.DES3_KEY_GEN, null},
        {"generic(\\d{1,5})", CKK.GENERIC_SECRET, CKM.GENERIC_SECRET_KEY_GEN, null},
        {"rsa(\\d{3,5})", CKK.RSA, CKM.RSA_PKCS_KEY_PAIR_GEN, null},
        {"ecp256", CKK.EC, CKM.EC_KEY_PAIR_GEN, "1.2.840.10045.3.1.7"},
        {"ecp384", CKK.EC, CKM.EC_KEY_PAIR_GEN, "1.3.132.0.34"},
        {"ecp521", CKK.EC, CKM.EC_KEY_PAIR_GEN, "1.3.132.0.35"},
        {"ecsecp256k1", CKK.EC, CKM.EC_KEY_PAIR_GEN, "1.3.132.0.10"},
        {"ed25519", CKK.EC_EDWARDS, CKM.EC_EDWARDS_KEY_PAIR_GEN, ED25519},
    };
    // What a key may be used for: the attributes of a public key, and of a private one; a secret key has both.
    private static final Object[][] USES = {{"sign", CKA.VERIFY, CKA.SIGN}, {"encrypt", CKA.ENCRYPT, CKA.DECRYPT},
        {"wrap", CKA.WRAP, CKA.UNWRAP}, {"derive", null, CKA.DERIVE}};

    /** What a new key is like. */
    static final class NewKey {
        @Option(names = {"-l", "--label"}, required = true, paramLabel = "TEXT", description = "The label.")
        private String label;

        @Option(names = "--id", paramLabel = "HEX", description = "The identifier; random without it.") private String id;

        @Option(names = {"-u", "--use"}, paramLabel = "USE", split = ",",
            description = "sign, encrypt, wrap, derive, with commas. Without it, AES and DES3 keys encrypt, others sign.")
        private List<String> uses;

        @Option(names = "--extractable", description = "The key may be wrapped.") private boolean extractable;

        @Option(names = {"-a", "--attribute"}, paramLabel = "NAME=VALUE",
            description = "Another one, of the private or secret key.")
        private Map<String, String> attributes = new LinkedHashMap<>();

        /** Adds what was asked for to a template that has the class and the type of the key. */
        private Attributes complete(OpenToken token, Attributes template) {
            id = id == null ? Output.hex(token.session.random(8)) : id; // one for both keys of a pair
            template.with(CKA.LABEL, label).with(CKA.ID, Output.unhex(id)).yes(CKA.TOKEN);
            long objectClass = template.number(CKA.CLASS);
            long keyType = template.number(CKA.KEY_TYPE);
            List<String> wanted = uses != null ? uses
                : Arrays.asList(keyType == CKK.AES || keyType == CKK.DES3 ? "encrypt" : "sign");
            boolean areKnown = Arrays.stream(USES).map(use -> use[0]).collect(Collectors.toList()).containsAll(wanted);
            Failure.when(!areKnown, Failure.USAGE, "A use is sign, encrypt, wrap or derive, not " + wanted);
            for (Object[] use : USES) {
                if (use[1] != null && objectClass != CKO.PRIVATE_KEY) {
                    template.with((Long) use[1], wanted.contains(use[0]));
                }
                if (objectClass != CKO.PUBLIC_KEY) {
                    template.with((Long) use[2], wanted.contains(use[0]));
                }
            }
            if (objectClass != CKO.PUBLIC_KEY) {
                template.yes(CKA.PRIVATE, CKA.SENSITIVE).with(CKA.EXTRACTABLE, extractable);
                attributes.forEach((name, value) -> template.with(Names.of(CKA.class, name), value(name, value)));
            }
            return template;
        }

        private static Object value(String name, String value) {
            Encoding encoding = Encoding.of(Names.of(CKA.class, name));
            Failure.when(encoding == Encoding.BOOLEAN && !value.matches("true|false"), Failure.USAGE,
                    name + " must be true or false, not " + value);
            return encoding == Encoding.BOOLEAN ? (Object) Boolean.valueOf(value)
                : encoding == Encoding.NUMBER ? (Object) Long.decode(value)
                : encoding == Encoding.TEXT || encoding == Encoding.DATE ? value.getBytes(UTF_8) : Output.unhex(value);
        }
    }

    /** The other key of wrapping and unwrapping. */
    static final class WrappingKey extends MechanismOptions {
        @Option(names = "--with", required = true, paramLabel = "KEY", description = "The key that wraps or unwraps it.")
        private String key;
    }

    @Command(name = "generate", description = "Generate a key or key pair.",
            footer = {"", "Example: zerlin key generate rsa-3072 --label invoices"})
    void generate(@Mixin TokenOptions options, @Mixin NewKey key, @Parameters(paramLabel = "TYPE", description = "aes-128 to"
            + " aes-256, des3, generic-256 (bits), rsa-2048 and more, ec-p256, ec-p384, ec-p521, ec-secp256k1, ed25519.")
            String name) throws Exception {
        String plain = name.toLowerCase(Locale.ROOT).replaceAll("[-_:]", "");
        Object[] row = Arrays.stream(TYPES).filter(one -> plain.matches((String) one[0])).findFirst()
                .orElseThrow(() -> noType(name));
        int bits = Integer.parseInt(plain.replaceAll("\\D", ""));
        long type = (Long) row[1];
        CK_MECHANISM mechanism = new CK_MECHANISM((Long) row[2]);
        boolean isPair = type == CKK.RSA || row[3] != null;
        options.open(new Uri(), true, true, token -> {
            Attributes template = key.complete(token, template(isPair ? CKO.PUBLIC_KEY : CKO.SECRET_KEY, type));
            if (type == CKK.RSA) {
                template.with(CKA.MODULUS_BITS, bits).with(CKA.PUBLIC_EXPONENT, BigInteger.valueOf(65537));
            } else if (isPair) {
                template.with(CKA.EC_PARAMS, Der.oid((String) row[3]));
            } else if (type != CKK.DES3) {
                template.with(CKA.VALUE_LEN, bits / 8);
            }
            if (isPair) {
                Attributes privateKey = key.complete(token, template(CKO.PRIVATE_KEY, type));
                KeyPairHandles pair = Streams.timed("Generating " + name,
                    () -> token.session.generateKeyPair(mechanism, template, privateKey));
                made(options, token, pair.privateKey, pair.publicKey);
            } else {
                made(options, token, token.session.generateKey(mechanism, template));
            }
        });
    }

    @Command(name = "delete", description = "Delete an object.",
            footer = {"", "Example: zerlin key delete \"pkcs11:object=invoices;type=private\""})
    void delete(@Mixin ObjectOptions options, @Option(names = {"-y", "--yes"}, description = "Do not ask.") boolean yes)
            throws Exception {
        options.open(true, true, (token, object) -> {
            Pins.confirm(yes, "Delete " + token.uri(object) + "?");
            token.session.destroy(object);
        });
    }

    @Command(name = "export", description = "Write a public key as PEM.",
            footer = {"", "Example: zerlin key export invoices -o invoices.pem"})
    void export(@Mixin ObjectOptions options, @Mixin OutputFile output) throws Exception {
        options.open(false, false, (token, key) -> output.write(pem("PUBLIC KEY", publicKeyInfo(token.session, key))),
                CKO.PUBLIC_KEY);
    }

    @Command(name = "import", description = "Store a key: PEM or DER, or the bytes of a secret key.",
            footer = {"", "Example: zerlin key import public partner.pem --label partner --use wrap"})
    void importKey(@Mixin TokenOptions options, @Mixin NewKey key,
            @Parameters(paramLabel = "TYPE", description = "public, private, aes, des3 or generic.") String type,
            @Parameters(paramLabel = "FILE", description = "The file; - is standard input.") String file) throws Exception {
        Attributes template = type.matches("public|private") ? template(read(file, type.equals("public")))
            : template(CKO.SECRET_KEY, type(type, "aes|des3|generic")).with(CKA.VALUE, Pins.secret(Streams.read(file)));
        options.open(new Uri(), true, true,
            token -> made(options, token, token.session.create(key.complete(token, template))));
    }

    private static Attributes template(long objectClass, long keyType) {
        return Attributes.of(objectClass).with(CKA.KEY_TYPE, keyType);
    }

    private static Attributes template(Key key) throws GeneralSecurityException, IOException {
        boolean isPrivate = key instanceof PrivateKey;
        Attributes template = template(isPrivate ? CKO.PRIVATE_KEY : CKO.PUBLIC_KEY, key instanceof RSAKey ? CKK.RSA : CKK.EC);
        if (key instanceof RSAPublicKey) {
            return template.with(CKA.MODULUS, ((RSAPublicKey) key).getModulus())
                    .with(CKA.PUBLIC_EXPONENT, ((RSAPublicKey) key).getPublicExponent());
        } else if (key instanceof RSAPrivateCrtKey) {
            RSAPrivateCrtKey rsa = (RSAPrivateCrtKey) key;
            return template.with(CKA.MODULUS, rsa.getModulus()).with(CKA.PUBLIC_EXPONENT, rsa.getPublicExponent())
                    .with(CKA.PRIVATE_EXPONENT, rsa.getPrivateExponent()).with(CKA.PRIME_1, rsa.getPrimeP())
                    .with(CKA.PRIME_2, rsa.getPrimeQ()).with(CKA.EXPONENT_1, rsa.getPrimeExponentP())
                    .with(CKA.EXPONENT_2, rsa.getPrimeExponentQ()).with(CKA.COEFFICIENT, rsa.getCrtCoefficient());
        }
        AlgorithmParameters curve = AlgorithmParameters.getInstance("EC");
        curve.init(((ECKey) key).getParams());
        return template.with(CKA.EC_PARAMS, curve.getEncoded()).with(isPrivate ? CKA.VALUE : CKA.EC_POINT,
                isPrivate ? ((ECPrivateKey) key).getS() : Der.of(4, point(key)));
    }

    @Command(name = "wrap", description = "Write a key, encrypted with another one.",
            footer = {"", "Example: zerlin key wrap files --with partner --pin-file pin -o files.wrapped"})
    void wrap(@Mixin ObjectOptions options, @Mixin WrappingKey with, @Mixin OutputFile output) throws Exception {
        options.open(false, true, (token, key) -> {
            CK_OBJECT_HANDLE wrapping = token.find(Uri.of(with.key, "object"), CKO.PUBLIC_KEY, CKO.SECRET_KEY);
            CK_MECHANISM how = with.mechanism(token, wrapping, MechanismOptions.WRAP);
            output.write(token.session.wrap(how, wrapping, key));
        }, CKO.SECRET_KEY, CKO.PRIVATE_KEY);
    }

    @Command(name = "unwrap", description = "Store a key that was encrypted with another one.",
            footer = {"", "Example: zerlin key unwrap aes files.wrapped --with invoices --label files"})
    void unwrap(@Mixin TokenOptions options, @Mixin NewKey key, @Mixin WrappingKey with,
            @Parameters(paramLabel = "TYPE", description = "aes, des3 or generic; rsa or ec for private keys.") String type,
            @Parameters(paramLabel = "FILE", description = "The wrapped key; - is standard input.") String file)
            throws Exception {
        long keyType = type(type, "aes|des3|generic|rsa|ec");
        long objectClass = type.matches("rsa|ec") ? CKO.PRIVATE_KEY : CKO.SECRET_KEY;
        byte[] wrapped = Streams.read(file);
        Uri uri = Uri.of(with.key, "object");
        options.open(uri, true, true, token -> {
            CK_OBJECT_HANDLE unwrapping = token.find(uri, CKO.PRIVATE_KEY, CKO.SECRET_KEY);
            CK_MECHANISM how = with.mechanism(token, unwrapping, MechanismOptions.WRAP);
            Attributes template = key.complete(token, template(objectClass, keyType));
            made(options, token, token.session.unwrap(how, unwrapping, wrapped, template));
        });
    }

    @Command(name = "derive", description = "Agree on an AES key with another's public key (ECDH).",
            footer = {"", "Example: zerlin key derive mine --peer theirs.pem --label shared --bits 256"})
    void derive(@Mixin ObjectOptions options, @Mixin NewKey key, @Option(names = "--peer", required = true,
            paramLabel = "FILE", description = "The other's public key.") String peer, @Option(names = "--bits",
            paramLabel = "N", defaultValue = "256", description = "The length of the new AES key: ${DEFAULT-VALUE}.")
            int bits) throws Exception {
        byte[] point = point(read(peer, true));
        options.open(true, true, (token, base) -> {
            CK_MECHANISM mechanism = new CK_MECHANISM(Names.mechanism(token.slot, "ECDH1_DERIVE"),
                    new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, point));
            Attributes template = key.complete(token, template(CKO.SECRET_KEY, CKK.AES)).with(CKA.VALUE_LEN, bits / 8);
            made(options, token, token.session.derive(mechanism, base, template));
        }, CKO.PRIVATE_KEY);
    }

    @Command(name = "copy", description = "Copy an object; to another token with the vendor's call.",
            footer = {"", "Example: zerlin key copy files --label files-2 --to \"pkcs11:token=Backup?pin-source=file:pin\""})
    void copy(@Mixin ObjectOptions options, @Option(names = {"-l", "--label"}, required = true, paramLabel = "TEXT",
            description = "The label of the copy.") String label, @Option(names = "--to", paramLabel = "TOKEN",
            description = "The label or the URI of the other token.") String to) throws Exception {
        Attributes template = new Attributes().with(CKA.LABEL, label).yes(CKA.TOKEN);
        options.open(true, true, (token, object) -> {
            if (to == null) {
                made(options, token, token.session.copy(object, template));
            } else {
                options.open(token.library, Uri.of(to, "token"), true, true,
                    other -> made(options, other, other.session.vendorCopy(token.session, object, template)));
            }
        });
    }

    /** Prints the URIs of new objects. */
    static void made(TokenOptions options, OpenToken token, CK_OBJECT_HANDLE... objects) throws IOException {
        String[] uris = Arrays.stream(objects).map(token::uri).toArray(String[]::new);
        Output.line(!options.json ? String.join("\n", uris)
            : Output.Json.of(Arrays.stream(uris).map(uri -> Output.record("uri", uri)).collect(Collectors.toList())));
    }

    private static Failure noType(String name) {
        return new Failure(Failure.USAGE, "There is no key type " + name + ": --help lists them");
    }

    private static long type(String name, String known) {
        if (!name.matches(known)) {
            throw noType(name);
        }
        return Names.of(CKK.class, name.equals("generic") ? "GENERIC_SECRET" : name);
    }

    static byte[] pem(String type, byte[] bytes) {
        return ("-----BEGIN " + type + "-----\n" + Base64.getMimeEncoder(64, new byte[] {'\n'}).encodeToString(bytes)
                + "\n-----END " + type + "-----\n").getBytes(UTF_8);
    }

    /** Returns the DER of the SubjectPublicKeyInfo of a key; for Ed25519 that of RFC 8410, whose point some modules wrap. */
    static byte[] publicKeyInfo(Session session, CK_OBJECT_HANDLE key) {
        if (session.read(key, CKA.KEY_TYPE).number(CKA.KEY_TYPE) != CKK.EC_EDWARDS) {
            return Keys.subjectPublicKeyInfo(session, key);
        }
        byte[] point = session.read(key, CKA.EC_POINT).bytes(CKA.EC_POINT);
        Failure.when(point.length != 32 && point.length != 34, Failure.USAGE, "Of the Edwards curves, only Ed25519");
        return Der.sequence(Der.sequence(Der.oid(ED25519)),
                Der.bitString(Arrays.copyOfRange(point, point.length - 32, point.length)));
    }

    // Reads PEM or DER.
    private static Key read(String file, boolean isPublic) throws IOException {
        byte[] bytes = Pins.secret(Streams.read(file));
        String text = new String(bytes, UTF_8);
        byte[] der = Pins.secret(!text.contains("-----BEGIN ") ? bytes
            : Base64.getMimeDecoder().decode(text.replaceAll("(?s).*?-----BEGIN [^\n]*\n([^-]*)-----.*", "$1")));
        for (String algorithm : new String[] {"RSA", "EC"}) {
            try {
                KeyFactory factory = KeyFactory.getInstance(algorithm);
                return isPublic ? factory.generatePublic(new X509EncodedKeySpec(der))
                    : factory.generatePrivate(new PKCS8EncodedKeySpec(der));
            } catch (GeneralSecurityException other) {
                continue;
            }
        }
        throw new IOException("The input is no such key of RSA or of an elliptic curve");
    }

    private static byte[] point(Key key) {
        Failure.when(!(key instanceof ECPublicKey), Failure.INPUT, "The other key is of no elliptic curve");
        byte[] info = key.getEncoded();
        int bits = ((ECPublicKey) key).getParams().getCurve().getField().getFieldSize();
        return Arrays.copyOfRange(info, info.length - 1 - 2 * ((bits + 7) / 8), info.length);
    }
}
