// The commands that work on data: random numbers, digests.
package halvorn.zerlin.cli;

import static halvorn.zerlin.cli.Output.record;

import halvorn.zerlin.CK_MECHANISM;

import picocli.CommandLine.*;

import java.io.InputStream;
import java.util.concurrent.Callable;

final class Data {
    private static final int PART = 4096;

    private Data() {
    }

    @Command(name = "random", description = "Print random bytes of the token, in hexadecimal digits.",
            footer = {"", "Example: zerlin random 32 -o seed.bin"})
    static final class Random implements Callable<Integer> {
        @Mixin private TokenOptions options;

        @Parameters(paramLabel = "LENGTH", description = "The number of bytes.")
        private long length;

        @Option(names = {"-o", "--output"}, paramLabel = "FILE", description = "Write the bytes themselves to FILE; - is"
                + " standard output.")
        private String output;

        @Override
        public Integer call() throws Exception {
            if (length < 1 || output == null && length > 1 << 20) {
                throw new Failure(Failure.USAGE, "The length is at least 1, and at most 1048576 without --output");
            }
            return options.withToken(false, token -> {
                if (output == null) {
                    String bytes = Output.hex(token.session.random((int) length));
                    Output.line(options.json ? Output.json(record("random", bytes)) : bytes);
                    return 0;
                }
                Streams.write(output, out -> {
                    for (long left = length; left > 0; left -= PART) {
                        out.write(token.session.random((int) Math.min(left, PART)));
                    }
                });
                return 0;
            });
        }
    }

    @Command(name = "digest", description = "Hash a file or standard input on the token.",
            footer = {"", "Example: zerlin digest -m sha512 report.pdf"})
    static final class Digest implements Callable<Integer> {
        @Mixin private TokenOptions options;

        @Option(names = {"-m", "--mechanism"}, paramLabel = "NAME", defaultValue = "sha256",
                description = "The mechanism; ${DEFAULT-VALUE} without it.")
        private String mechanism;

        @Parameters(arity = "0..1", paramLabel = "FILE", description = "The input; without it, standard input.")
        private String file;

        @Override
        public Integer call() throws Exception {
            return options.withToken(false, token -> {
                long type = Names.mechanism(token.slot, mechanism);
                try (InputStream in = Streams.in(file)) {
                    String digest = Output.hex(token.session.digest(new CK_MECHANISM(type), in));
                    Output.line(!options.json ? digest + "  " + (file == null ? "-" : file)
                        : Output.json(record("mechanism", Values.mechanism(type), "file", file, "digest", digest)));
                }
                return 0;
            });
        }
    }
}
