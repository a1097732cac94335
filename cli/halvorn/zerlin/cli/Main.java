// The command zerlin: its commands, and what its errors look like.
package halvorn.zerlin.cli;

import halvorn.zerlin.NativeLibrary;

import picocli.CommandLine;
import picocli.CommandLine.Command;
import picocli.CommandLine.Help.Ansi;
import picocli.CommandLine.Option;

import java.util.Arrays;

@Command(name = "zerlin", description = "Look at PKCS#11 tokens and work with their keys.", version = "zerlin",
        subcommands = {Look.Info.class, Look.Slots.class, Look.Mechanisms.class, Look.Objects.class, Data.Random.class,
            Data.Digest.class, TokenCommands.class, KeyCommands.class, Sign.class, Sign.Verify.class, Encrypt.class,
            Encrypt.Decrypt.class, CertCommands.Csr.class, CertCommands.class, Bench.class},
        synopsisSubcommandLabel = "COMMAND", footer = {"",
            "Exit codes: 0 done; 1 the answer is no (a wrong signature, or you said no); 2 usage; 3 no such token, object or"
            + " mechanism, or several; 4 PIN; 5 token or library; 6 input or output."})
public final class Main extends Group {
    @Option(names = "--version", versionHelp = true, description = "Show the version.")
    private boolean version;

    private Main() {
    }

    public static void main(String[] arguments) {
        System.exit(run(arguments));
    }

    static CommandLine commandLine() {
        Ansi ansi = Output.hasColours() ? Ansi.ON : Ansi.OFF;
        CommandLine command = new CommandLine(new Main());
        command.getCommandSpec().version("zerlin " + version());
        return command.setColorScheme(CommandLine.Help.defaultColorScheme(ansi)).setUsageHelpWidth(100)
                .setUsageHelpLongOptionsMaxWidth(30);
    }

    static int run(String... arguments) {
        boolean verbose = Arrays.asList(arguments).contains("--verbose");
        CommandLine command = commandLine();
        command.setParameterExceptionHandler((e, all) -> report(e, Failure.USAGE, verbose));
        command.setExecutionExceptionHandler((e, line, parsed) -> report(e, Failure.codeOf(e), verbose));
        try {
            return command.execute(arguments);
        } catch (LinkageError e) {
            return report(e, Failure.TOKEN, verbose);
        }
    }

    static String version() {
        String version = NativeLibrary.class.getPackage().getImplementationVersion();
        return version == null ? "(unknown version)" : version;
    }

    private static int report(Throwable e, int code, boolean verbose) {
        System.err.println("zerlin: " + Failure.textOf(e));
        if (verbose) {
            e.printStackTrace();
        }
        return code;
    }
}
