// The commands that work on data: random, hashed, signed (certificate requests too), encrypted.
package halvorn.zerlin.cli;

import static halvorn.zerlin.cli.MechanismOptions.*;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import picocli.CommandLine.*;

import java.io.*;
import java.math.BigInteger;
import java.security.*;
import java.security.interfaces.ECPublicKey;
import java.util.*;
import java.util.concurrent.*;
import java.util.concurrent.atomic.LongAdder;

import javax.security.auth.x500.X500Principal;

/** The commands are public: picocli takes inherited ones only if they are. */
public class DataCommands extends Group {
    /** The key, the mechanism and the data. */
    static final class DataOptions extends ObjectOptions {
        @Mixin private MechanismOptions mechanism;

        @Option(names = {"-i", "--input"}, paramLabel = "FILE", description = "The data; else standard input.")
        private String input;
    }

    @Command(name = "random", description = "Print random bytes of the token, in hexadecimal digits.",
            footer = {"", "Example: zerlin random 32 -o seed.bin"})
    public void random(@Mixin TokenOptions options, @Parameters(paramLabel = "LENGTH", description = "The number of bytes.")
            long length, @Option(names = {"-o", "--output"}, paramLabel = "FILE",
            description = "Write bytes; - is standard output.") String output) throws Exception {
        Failure.when(length < 1 || output == null && length > 1 << 20, Failure.USAGE,
                "The length is at least 1, and at most 1048576 without --output");
        options.open(new Uri(), false, false, token -> {
            if (output == null) {
                String bytes = Output.hex(token.session.random((int) length));
                Output.line(options.json ? Output.Json.of(Output.record("random", bytes)) : bytes);
            } else {
                Streams.write(output, out -> {
                    for (long left = length; left > 0; left -= 4096) {
                        out.write(token.session.random((int) Math.min(left, 4096)));
                    }
                });
            }
        });
    }

    @Command(name = "digest", description = "Hash a file or standard input on the token.",
            footer = {"", "Example: zerlin digest -m sha512 report.pdf"})
    public void digest(@Mixin TokenOptions options, @Option(names = {"-m", "--mechanism"}, paramLabel = "NAME",
            defaultValue = "sha256", description = "Without it, ${DEFAULT-VALUE}.") String mechanism, @Parameters(
            arity = "0..1", paramLabel = "FILE", description = "The input; else standard input.") String file)
            throws Exception {
        options.open(new Uri(), false, false, token -> {
            long type = Names.mechanism(token.slot, mechanism);
            try (InputStream in = Streams.in(file)) {
                String digest = Output.hex(token.session.digest(new CK_MECHANISM(type), in));
                Output.line(!options.json ? digest + "  " + (file == null ? "-" : file)
                    : Output.Json.of(Output.record("mechanism", Names.mechanism(type), "file", file, "digest", digest)));
            }
        });
    }

    @Command(name = "sign", description = "Sign a file or standard input. A signature of ECDSA is written in DER.",
            footer = {"", "Example: zerlin sign invoices --pin-file pin -i report.pdf -o report.sig"})
    public void sign(@Mixin DataOptions data, @Mixin OutputFile output, @Option(names = "--plain",
            description = "Write the two numbers of ECDSA, not DER.") boolean plain) throws Exception {
        data.open(false, true, (token, key) -> {
            try (InputStream in = Streams.in(data.input)) {
                CK_MECHANISM how = data.mechanism.mechanism(token, key, SIGN);
                output.write(sign(token, key, how, in, plain));
            }
        }, CKO.PRIVATE_KEY, CKO.SECRET_KEY);
    }

    @Command(name = "verify", description = "Verify a signature; the exit code is 1 if it is wrong.",
            footer = {"", "Example: zerlin verify invoices report.sig -i report.pdf"})
    public void verify(@Mixin DataOptions data, @Parameters(index = "1", paramLabel = "SIGNATURE",
            description = "The file with it.") String file, @Option(names = "--plain",
            description = "It is two numbers, not DER.") boolean plain) throws Exception {
        data.open(false, false, (token, key) -> {
            byte[] signature = Streams.read(file);
            try (InputStream in = Streams.in(data.input)) {
                CK_MECHANISM how = data.mechanism.mechanism(token, key, SIGN);
                byte[] numbers = plain || !isEcdsa(how) ? signature : plain(token, key, signature);
                InputStream content = hashed(token, how, in);
                boolean valid = numbers != null && (isWhole(how)
                    ? token.session.verify(how, key, Streams.read(content), numbers)
                    : token.session.verify(how, key, content, numbers));
                Output.line(data.json ? Output.Json.of(Output.record("valid", valid)) : valid ? "valid" : "invalid");
                Failure.when(!valid, Failure.NO, "");
            }
        }, CKO.PUBLIC_KEY, CKO.SECRET_KEY);
    }

    private static byte[] sign(OpenToken token, CK_OBJECT_HANDLE key, CK_MECHANISM how, InputStream in, boolean plain)
            throws Exception {
        InputStream data = hashed(token, how, in);
        byte[] signature = isWhole(how) ? token.session.sign(how, key, Streams.read(data)) : token.session.sign(how, key, data);
        return plain || !isEcdsa(how) ? signature : Keys.signatureToDer(signature);
    }

    private static boolean isEcdsa(CK_MECHANISM how) {
        return Names.mechanism(how.mechanism.m_value).startsWith("CKM_ECDSA");
    }

    // For ECDSA the command hashes itself where the token does not.
    private static InputStream hashed(OpenToken token, CK_MECHANISM how, InputStream in) throws Exception {
        String name = Names.mechanism(how.mechanism.m_value).replaceAll("_STD$", "");
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

    @Command(name = "csr", description = "Write a certificate signing request for a key, as PEM.",
            footer = {"", "Example: zerlin csr invoices \"CN=Invoices,O=Example\" --pin-file pin -o invoices.csr"})
    public void csr(@Mixin TokenOptions options, @Mixin OutputFile output, @Parameters(index = "0", paramLabel = "KEY",
            description = "The URI or the label of the private key: RSA, EC, Ed25519.") String key, @Parameters(index = "1",
            paramLabel = "SUBJECT", description = "The name of the owner.") String subject) throws Exception {
        byte[] name = new X500Principal(subject).getEncoded();
        Uri uri = Uri.of(key, "object");
        options.open(uri, false, true, token -> {
            CK_OBJECT_HANDLE signer = token.find(uri, CKO.PRIVATE_KEY);
            Attributes known = token.session.read(signer, CKA.ID, CKA.KEY_TYPE);
            long type = known.number(CKA.KEY_TYPE);
            CK_OBJECT_HANDLE publicKey = type == CKK.RSA ? signer
                : token.session.findOne(Attributes.of(CKO.PUBLIC_KEY).with(CKA.ID, known.bytes(CKA.ID)));
            byte[] content = Der.sequence(Der.integer(BigInteger.ZERO), name,
                    KeyCommands.publicKeyInfo(token.session, publicKey), Der.of(0xa0));
            byte[] algorithm = type == CKK.RSA ? Der.sequence(Der.oid("1.2.840.113549.1.1.11"), Der.of(0x05))
                : Der.sequence(Der.oid(type == CKK.EC ? "1.2.840.10045.4.3.2" : KeyCommands.ED25519));
            byte[] signature = sign(token, signer, new MechanismOptions().mechanism(token, signer, SIGN),
                    new ByteArrayInputStream(content), false);
            output.write(KeyCommands.pem("CERTIFICATE REQUEST", Der.sequence(content, algorithm, Der.bitString(signature))));
        });
    }

    @Command(name = "encrypt", description = "Encrypt a file or standard input. The output begins with the IV unless --iv names"
            + " one.", footer = {"", "Example: zerlin encrypt files --pin-file pin <report.pdf >report.enc"})
    public void encrypt(@Mixin DataOptions data, @Mixin OutputFile output) throws Exception {
        encrypt(data, output, true);
    }

    @Command(name = "decrypt", description = "Decrypt what encrypt has written. If it fails, discard what a pipe has had.",
            footer = {"", "Example: zerlin decrypt files --pin-file pin -i report.enc -o report.pdf"})
    public void decrypt(@Mixin DataOptions data, @Mixin OutputFile output) throws Exception {
        encrypt(data, output, false);
    }

    private static void encrypt(DataOptions data, OutputFile output, boolean encrypts) throws Exception {
        data.open(false, true, (token, key) -> {
            long type = data.mechanism.type(token, key, ENCRYPT);
            byte[] iv = Output.unhex(data.mechanism.iv);
            int length = iv == null ? ivLength(type) : 0; // of the IV in the stream
            try (InputStream in = Streams.in(data.input)) {
                byte[] start = length > 0 && encrypts ? token.session.random(length) : new byte[length];
                if (!encrypts) {
                    new DataInputStream(in).readFully(start);
                }
                CK_MECHANISM how = data.mechanism.mechanism(type, length > 0 ? start : iv);
                output.write(out -> {
                    out.write(encrypts ? start : new byte[0]);
                    stream(token.session, how, key, in, out, encrypts);
                });
            }
        }, encrypts ? CKO.PUBLIC_KEY : CKO.PRIVATE_KEY, CKO.SECRET_KEY);
    }

    private static void stream(Session session, CK_MECHANISM how, CK_OBJECT_HANDLE key, InputStream in, OutputStream out,
            boolean encrypts) throws IOException {
        if (isWhole(how)) {
            byte[] data = Pins.secret(Streams.read(in));
            out.write(Pins.secret(encrypts ? session.encrypt(how, key, data) : session.decrypt(how, key, data)));
        } else if (encrypts) {
            session.encrypt(how, key, in, out);
        } else {
            session.decrypt(how, key, in, out);
        }
    }

    @Command(name = "bench", description = "Measure how many signatures a second the token makes with a key.",
            footer = {"", "Example: zerlin bench invoices --threads 4 --pin-file pin"})
    public void bench(@Mixin ObjectOptions options, @Mixin MechanismOptions mechanism, @Option(names = "--threads",
            defaultValue = "4", paramLabel = "N", description = "The most threads: ${DEFAULT-VALUE}.") int threads,
            @Option(names = "--seconds", defaultValue = "3", paramLabel = "N",
                description = "The time of each row: ${DEFAULT-VALUE}.") int seconds) throws Exception {
        Failure.when(threads < 1 || threads > 1000 || seconds < 1, Failure.USAGE,
                "--threads is from 1 to 1000, --seconds at least 1");
        options.open(false, true, (token, key) -> {
            long type = mechanism.type(token, key, SIGN);
            List<Map<String, Object>> rows = new ArrayList<>();
            for (int count = 1; count < 2 * threads; count *= 2) {
                int n = Math.min(count, threads);
                double rate = Streams.timed(n + " of " + threads + " threads", () -> rate(n, seconds, token,
                    own -> sign(own, key, mechanism.mechanism(type, null), new ByteArrayInputStream(new byte[32]), true)));
                rows.add(Output.record("mechanism", Names.mechanism(type), "threads", n, "signaturesPerSecond",
                        Math.round(rate * 10) / 10.0));
            }
            Output.print(options.json, rows);
        }, CKO.PRIVATE_KEY, CKO.SECRET_KEY);
    }

    // Returns how often a second the work is done by threads that have a session each.
    private static double rate(int threads, int seconds, OpenToken token, TokenOptions.Work<OpenToken> work) throws Exception {
        ExecutorService pool = Executors.newFixedThreadPool(threads);
        try {
            LongAdder done = new LongAdder();
            long start = System.nanoTime();
            long end = start + seconds * 1_000_000_000L;
            Callable<Void> loop = () -> {
                try (OpenToken own = new OpenToken(token.library, token.slot, false)) {
                    for (; System.nanoTime() < end; done.increment()) {
                        work.run(own);
                    }
                }
                return null;
            };
            for (Future<Void> one : pool.invokeAll(Collections.nCopies(threads, loop))) {
                one.get();
            }
            return done.sum() * 1e9 / (System.nanoTime() - start);
        } catch (java.util.concurrent.ExecutionException e) {
            throw (Exception) e.getCause();
        } finally {
            pool.shutdown();
        }
    }
}
