// The option that names the output of a command.
package halvorn.zerlin.cli;

import picocli.CommandLine.Option;

import java.io.OutputStream;

final class OutputFile {
    @Option(names = {"-o", "--output"}, paramLabel = "FILE", description = "The output file; without it, standard output.")
    private String file;

    /** Writes all of the output. */
    void write(byte[] bytes) throws Exception {
        write(out -> out.write(bytes));
    }

    void write(TokenOptions.Work<OutputStream> work) throws Exception {
        Streams.write(file, work);
    }
}
