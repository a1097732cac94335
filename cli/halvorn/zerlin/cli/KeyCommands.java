// Keys: generated, imported, exported, wrapped, unwrapped, derived, copied, deleted.
package halvorn.zerlin.cli;

import static halvorn.zerlin.cli.Output.record;
import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.CK_ECDH1_DERIVE_PARAMS;
import halvorn.zerlin.token.*;

import picocli.CommandLine.*;

import java.io.IOException;
import java.math.BigInteger;
import java.security.*;
import java.security.interfaces.*;
import java.security.spec.PKCS8EncodedKeySpec;
import java.security.spec.X509EncodedKeySpec;
import java.util.*;

@Command(name = "key", description = "Make, move and delete keys.", footer = {"", "Example: zerlin key generate --help"})
final class KeyCommands extends Group {
    // The curves: names, and object identifiers.
    private static final String[][] CURVES = {{"p256", "1.2.840.10045.3.1.7"}, {"p384", "1.3.132.0.34"},
        {"p521", "1.3.132.0.35"}, {"secp256k1", "1.3.132.0.10"}};
    // What a key may be used for: the attributes of a public key, and of a private one; a secret key has both.
    private static final Object[][] USES = {{"sign", CKA.VERIFY, CKA.SIGN}, {"encrypt", CKA.ENCRYPT, CKA.DECRYPT},
        {"wrap", CKA.WRAP, CKA.UNWRAP}, {"derive", null, CKA.DERIVE}};

    /** What a new key is like. */
    static final class NewKey {
        @Option(names = {"-l", "--label"}, required = true, paramLabel = "TEXT", description = "The label.")
        private String label;

        @Option(names = "--id", paramLabel = "HEX", description = "The identifier; random without it.") private String id;

        @Option(names = {"-u", "--use"}, paramLabel = "USE", split = ",",
            description = "sign, encrypt, wrap, derive, with commas." + " Without it, AES and DES3 keys encrypt, others sign.")
        private List<String> uses;

        @Option(names = "--extractable", description = "The key may be wrapped.") private boolean extractable;

        @Option(names = {"-a", "--attribute"}, paramLabel = "NAME=VALUE",
            description = "Another one, of the private or secret key.")
        private Map<String, String> attributes;

        private byte[] newId(Session session) {
            return id == null ? session.random(8) : Output.unhex(id);
        }

        private Attributes template(long objectClass, long keyType, byte[] newId) {
            Attributes template = Attributes.of(objectClass).with(CKA.KEY_TYPE, keyType).with(CKA.LABEL, label)
                    .with(CKA.ID, newId).yes(CKA.TOKEN);
            boolean isPublic = objectClass == CKO.PUBLIC_KEY;
            if (!isPublic) {
                template.yes(CKA.PRIVATE, CKA.SENSITIVE).with(CKA.EXTRACTABLE, extractable);
            }
            List<String> wanted = uses != null ? uses
                : Arrays.asList(keyType == CKK.AES || keyType == CKK.DES3 ? "encrypt" : "sign");
            for (Object[] use : USES) {
                for (int side = 1; side <= 2; side++) {
                    if (use[side] != null && (objectClass == CKO.SECRET_KEY || isPublic == (side == 1))) {
                        template.with((Long) use[side], wanted.contains(use[0]));
                    }
                }
            }
            if (!wanted.stream().allMatch(use -> Arrays.stream(USES).anyMatch(row -> row[0].equals(use)))) {
                throw new Failure(Failure.USAGE, "A use is sign, encrypt, wrap or derive, not " + wanted);
            }
            if (attributes != null && !isPublic) {
                attributes.forEach((name, value) -> {
                    long type = Names.of(CKA.class, name);
                    Encoding encoding = Encoding.of(type);
                    template.with(type, encoding == Encoding.BOOLEAN ? (Object) Boolean.valueOf(value)
                        : encoding == Encoding.NUMBER ? (Object) Long.decode(value)
                        : encoding == Encoding.TEXT || encoding == Encoding.DATE ? value.getBytes(UTF_8) : Output.unhex(value));
                });
            }
            return template;
        }
    }

    @Command(name = "generate", description = "Generate a key or key pair.",
            footer = {"", "Example: zerlin key generate rsa-3072 --label invoices"})
    int generate(@Mixin TokenOptions options, @Mixin NewKey key, @Parameters(paramLabel = "TYPE", description = "aes-128 to"
            + " aes-256, des3, generic-256 (bits), rsa-2048 and more, ec-p256, ec-p384, ec-p521, ec-secp256k1.") String name)
            throws Exception {
        String[] type = name.toLowerCase(Locale.ROOT).replaceFirst("^(ec|[a-z]+)[-_:]?", "$1 ").split(" ");
        String size = type.length < 2 ? "" : type[1].replaceAll("[-_]", "");
        boolean isPair = type[0].matches("rsa|ec");
        if (!(type[0] + size).matches("des3?3|(aes|generic|rsa)\\d{2,5}|ec.+")) {
            throw new Failure(Failure.USAGE, "There is no key type " + name + ": --help lists them");
        }
        return options.withToken(new Uri(), true, true, token -> {
            byte[] id = key.newId(token.session);
            if (!isPair) {
                long keyType = type[0].equals("aes") ? CKK.AES : type[0].equals("des") ? CKK.DES3 : CKK.GENERIC_SECRET;
                Attributes template = key.template(CKO.SECRET_KEY, keyType, id);
                CK_MECHANISM mechanism = new CK_MECHANISM(keyType == CKK.AES ? CKM.AES_KEY_GEN
                    : keyType == CKK.DES3 ? CKM.DES3_KEY_GEN : CKM.GENERIC_SECRET_KEY_GEN);
                return made(options, token, token.session.generateKey(mechanism, keyType == CKK.DES3 ? template
                    : template.with(CKA.VALUE_LEN, Integer.parseInt(size) / 8)));
            }
            boolean isRsa = type[0].equals("rsa");
            Attributes template = key.template(CKO.PUBLIC_KEY, isRsa ? CKK.RSA : CKK.EC, id);
            if (isRsa) {
                template.with(CKA.MODULUS_BITS, Integer.parseInt(size)).with(CKA.PUBLIC_EXPONENT, BigInteger.valueOf(65537));
            } else {
                template.with(CKA.EC_PARAMS, Der.oid(Arrays.stream(CURVES).filter(row -> row[0].equals(size)).findFirst()
                        .orElseThrow(() -> new Failure(Failure.USAGE, "There is no curve " + size))[1]));
            }
            KeyPairHandles pair = Streams.timed("Generating " + name, () -> token.session.generateKeyPair(
                    new CK_MECHANISM(isRsa ? CKM.RSA_PKCS_KEY_PAIR_GEN : CKM.EC_KEY_PAIR_GEN), template,
                    key.template(CKO.PRIVATE_KEY, isRsa ? CKK.RSA : CKK.EC, id)));
            return made(options, token, pair.privateKey, pair.publicKey);
        });
    }

    @Command(name = "delete", description = "Delete an object.",
            footer = {"", "Example: zerlin key delete \"pkcs11:object=invoices;type=private\""})
    int delete(@Mixin TokenOptions options,
            @Parameters(paramLabel = "URI", description = "The URI or the label of the object.") String name,
            @Option(names = {"-y", "--yes"}, description = "Do not ask.") boolean yes) throws Exception {
        Uri uri = Uri.of(name, "object");
        return options.withToken(uri, true, true, token -> {
            CK_OBJECT_HANDLE object = token.find(uri);
            Pins.confirm(yes, "Delete " + token.uri(object) + "?");
            token.session.destroy(object);
            return 0;
        });
    }

    @Command(name = "export", description = "Write a public key as PEM.",
            footer = {"", "Example: zerlin key export invoices -o invoices.pem"})
    int export(@Mixin TokenOptions options,
            @Parameters(paramLabel = "KEY", description = "The URI or the label of the key.") String name,
            @Mixin OutputFile output) throws Exception {
        Uri uri = Uri.of(name, "object");
        return options.withToken(uri, false, false, token -> {
            byte[] info = Keys.subjectPublicKeyInfo(token.session, token.find(uri, CKO.PUBLIC_KEY));
            output.write(pem("PUBLIC KEY", info));
            return 0;
        });
    }

    @Command(name = "import", description = "Store a key: PEM or DER, or the bytes of a secret key.",
            footer = {"", "Example: zerlin key import public partner.pem --label partner --use wrap"})
    int importKey(@Mixin TokenOptions options, @Mixin NewKey key,
            @Parameters(paramLabel = "TYPE", description = "public, private, aes, des3 or generic.") String type,
            @Parameters(paramLabel = "FILE", description = "The file; - is standard input.") String file) throws Exception {
        byte[] bytes = Pins.secret(Streams.read(file, 1 << 16));
        long secretType = type.matches("public|private") ? -1 : secretType(type);
        Key read = secretType != -1 ? null : read(Pins.secret(unpem(bytes)), type.equals("public"));
        return options.withToken(new Uri(), true, true, token -> {
            byte[] id = key.newId(token.session);
            long keyType = secretType != -1 ? secretType : read instanceof RSAKey ? CKK.RSA : CKK.EC;
            Attributes template = key.template(read == null ? CKO.SECRET_KEY : read instanceof PublicKey ? CKO.PUBLIC_KEY
                : CKO.PRIVATE_KEY, keyType, id);
            if (read == null) {
                template.with(CKA.VALUE, bytes);
            } else if (read instanceof RSAPublicKey) {
                template.with(CKA.MODULUS, ((RSAPublicKey) read).getModulus())
                        .with(CKA.PUBLIC_EXPONENT, ((RSAPublicKey) read).getPublicExponent());
            } else if (read instanceof RSAPrivateCrtKey) {
                RSAPrivateCrtKey rsa = (RSAPrivateCrtKey) read;
                template.with(CKA.MODULUS, rsa.getModulus()).with(CKA.PUBLIC_EXPONENT, rsa.getPublicExponent())
                        .with(CKA.PRIVATE_EXPONENT, rsa.getPrivateExponent()).with(CKA.PRIME_1, rsa.getPrimeP())
                        .with(CKA.PRIME_2, rsa.getPrimeQ()).with(CKA.EXPONENT_1, rsa.getPrimeExponentP())
                        .with(CKA.EXPONENT_2, rsa.getPrimeExponentQ()).with(CKA.COEFFICIENT, rsa.getCrtCoefficient());
            } else {
                template.with(CKA.EC_PARAMS, ecParameters((ECKey) read)).with(read instanceof ECPrivateKey ? CKA.VALUE
                    : CKA.EC_POINT, read instanceof ECPrivateKey ? ((ECPrivateKey) read).getS() : Der.of(4, point(read)));
            }
            return made(options, token, token.session.create(template));
        });
    }

    @Command(name = "wrap", description = "Write a key, encrypted with another one.",
            footer = {"", "Example: zerlin key wrap files --with partner --pin-file pin -o files.wrapped"})
    int wrap(@Mixin TokenOptions options, @Mixin MechanismOptions mechanism,
            @Parameters(paramLabel = "KEY", description = "The URI or the label of the key.") String name,
            @Option(names = "--with", required = true, paramLabel = "KEY",
                description = "The key that encrypts it.") String with,
            @Mixin OutputFile output) throws Exception {
        Uri uri = Uri.of(name, "object");
        return options.withToken(uri, false, true, token -> {
            CK_OBJECT_HANDLE wrapping = token.find(Uri.of(with, "object"), CKO.PUBLIC_KEY, CKO.SECRET_KEY);
            CK_MECHANISM how = mechanism.wrapping(token, wrapping);
            byte[] wrapped = token.session.wrap(how, wrapping, token.find(uri, CKO.SECRET_KEY, CKO.PRIVATE_KEY));
            output.write(wrapped);
            return 0;
        });
    }

    @Command(name = "unwrap", description = "Store a key that was encrypted with another one.",
            footer = {"", "Example: zerlin key unwrap aes files.wrapped --with invoices --label files"})
    int unwrap(@Mixin TokenOptions options, @Mixin MechanismOptions mechanism, @Mixin NewKey key,
            @Parameters(paramLabel = "TYPE", description = "aes, des3 or generic; rsa or ec for private keys.") String type,
            @Parameters(paramLabel = "FILE", description = "The wrapped key; - is standard input.") String file,
            @Option(names = "--with", required = true, paramLabel = "KEY",
                description = "The key that decrypts it.") String with)
            throws Exception {
        boolean isPrivate = type.matches("rsa|ec");
        long keyType = isPrivate ? Names.of(CKK.class, type) : secretType(type);
        byte[] wrapped = Streams.read(file, 1 << 16);
        Uri uri = Uri.of(with, "object");
        return options.withToken(uri, true, true, token -> {
            CK_OBJECT_HANDLE unwrapping = token.find(uri, CKO.PRIVATE_KEY, CKO.SECRET_KEY);
            CK_MECHANISM how = mechanism.wrapping(token, unwrapping);
            return made(options, token, token.session.unwrap(how, unwrapping, wrapped,
                    key.template(isPrivate ? CKO.PRIVATE_KEY : CKO.SECRET_KEY, keyType, key.newId(token.session))));
        });
    }

    @Command(name = "derive", description = "Agree on an AES key with another's public key (ECDH).",
            footer = {"", "Example: zerlin key derive mine --peer theirs.pem --label shared --bits 256"})
    int derive(@Mixin TokenOptions options, @Mixin NewKey key,
            @Parameters(paramLabel = "KEY", description = "The URI or the label of the private key.") String name,
            @Option(names = "--peer", required = true, paramLabel = "FILE",
                description = "The other's public key.") String peer,
            @Option(names = "--bits", defaultValue = "256",
                description = "The length of the new AES key: ${DEFAULT-VALUE}.") int bits) throws Exception {
        byte[] point = point(read(unpem(Streams.read(peer, 1 << 16)), true));
        Uri uri = Uri.of(name, "object");
        CK_ECDH1_DERIVE_PARAMS parameter = new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, null, point);
        return options.withToken(uri, true, true, token -> made(options, token, token.session.derive(
                new CK_MECHANISM(Names.mechanism(token.slot, "ECDH1_DERIVE"), parameter),
                token.find(uri, CKO.PRIVATE_KEY),
                key.template(CKO.SECRET_KEY, CKK.AES, key.newId(token.session)).with(CKA.VALUE_LEN, bits / 8))));
    }

    @Command(name = "copy", description = "Copy an object; to another token with the vendor's call.",
            footer = {"", "Example: zerlin key copy files --label files-2 --to \"pkcs11:token=Backup?pin-source=file:pin\""})
    int copy(@Mixin TokenOptions options,
            @Parameters(paramLabel = "URI", description = "The URI or the label of the object.") String name,
            @Option(names = {"-l", "--label"}, required = true, paramLabel = "TEXT", description = "The label of the copy.")
            String label,
            @Option(names = "--to", paramLabel = "TOKEN", description = "The label or the URI of the other token.") String to)
            throws Exception {
        Uri uri = Uri.of(name, "object");
        Attributes template = new Attributes().with(CKA.LABEL, label).yes(CKA.TOKEN);
        return options.withToken(uri, true, true, token -> {
            CK_OBJECT_HANDLE object = token.find(uri);
            if (to == null) {
                return made(options, token, token.session.copy(object, template));
            }
            return options.withOther(token, Uri.of(to, "token"), other -> made(options, other,
                    other.session.vendorCopy(token.session, object, template)));
        });
    }

    static int made(TokenOptions options, OpenToken token, CK_OBJECT_HANDLE... objects) throws IOException {
        List<Map<String, Object>> rows = new ArrayList<>();
        for (CK_OBJECT_HANDLE object : objects) {
            rows.add(record("uri", token.uri(object)));
            if (!options.json) {
                Output.line(token.uri(object));
            }
        }
        if (options.json) {
            Output.print(true, rows);
        }
        return 0;
    }

    private static long secretType(String type) {
        if (!type.matches("aes|des3|generic")) {
            throw new Failure(Failure.USAGE, "There is no key type " + type + ": --help lists them");
        }
        return type.equals("aes") ? CKK.AES : type.equals("des3") ? CKK.DES3 : CKK.GENERIC_SECRET;
    }

    static byte[] pem(String type, byte[] bytes) {
        return ("-----BEGIN " + type + "-----\n" + Base64.getMimeEncoder(64, new byte[] {'\n'}).encodeToString(bytes)
                + "\n-----END " + type + "-----\n").getBytes(UTF_8);
    }

    static byte[] unpem(byte[] bytes) {
        String text = new String(bytes, UTF_8);
        return !text.contains("-----BEGIN ") ? bytes
            : Base64.getMimeDecoder().decode(text.replaceAll("(?s).*?-----BEGIN [^\n]*\n([^-]*)-----.*", "$1"));
    }

    private static Key read(byte[] der, boolean isPublic) throws IOException {
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

    private static byte[] ecParameters(ECKey key) throws Exception {
        AlgorithmParameters parameters = AlgorithmParameters.getInstance("EC");
        parameters.init(key.getParams());
        return parameters.getEncoded();
    }

    private static byte[] point(Key key) {
        if (!(key instanceof ECPublicKey)) {
            throw new Failure(Failure.INPUT, "The other key is of no elliptic curve");
        }
        byte[] info = key.getEncoded();
        int bits = ((ECPublicKey) key).getParams().getCurve().getField().getFieldSize();
        return Arrays.copyOfRange(info, info.length - 1 - 2 * ((bits + 7) / 8), info.length);
    }
}
