// The option that names the output of a command.
package halvorn.zerlin.cli;

import picocli.CommandLine.Option;

import java.io.IOException;

final class OutputFile {
    @Option(names = {"-o", "--output"}, paramLabel = "FILE", description = "The output file; without it, standard output.")
    private String file;

    /** Writes all of the output; returns the exit code. */
    int write(byte[] bytes) throws IOException {
        return write(out -> out.write(bytes));
    }

    int write(Streams.Writer writer) throws IOException {
        Streams.write(file, writer);
        return 0;
    }
}
