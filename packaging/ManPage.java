// Writes the manual page of the command zerlin and its completion in bash, from the command itself:
// ManPage VERSION PAGE COMPLETION
import picocli.AutoComplete;
import picocli.CommandLine;
import picocli.CommandLine.Model.ArgSpec;
import picocli.CommandLine.Model.CommandSpec;
import picocli.CommandLine.Model.OptionSpec;
import picocli.CommandLine.Model.PositionalParamSpec;

import java.nio.file.Files;
import java.nio.file.Paths;
import java.util.*;

public final class ManPage {
    private static final Set<String> COMMON = new HashSet<>();

    public static void main(String[] arguments) throws Exception {
        System.setOut(new java.io.PrintStream(arguments[1]));
        CommandLine zerlin = new CommandLine(Class.forName("halvorn.zerlin.cli.Main"));
        System.out.println(".TH ZERLIN 1 \"\" \"Zerlin " + arguments[0] + "\"\n.SH NAME\nzerlin \\- look at PKCS#11 tokens and work"
                + " with their keys\n.SH SYNOPSIS\n.B zerlin\n.I COMMAND\n[\\fIOPTIONS\\fR]\n.SH DESCRIPTION");
        System.out.println(text(String.join(" ", zerlin.getCommandSpec().usageMessage().description())));
        System.out.println(text("Tokens and objects are named by PKCS#11 URIs (RFC 7512), which every listing prints, or by their"
                + " labels."));
        System.out.println(".SH OPTIONS OF ALL COMMANDS");
        for (OptionSpec option : zerlin.getSubcommands().get("slots").getCommandSpec().options()) {
            print(option, option.names());
            COMMON.add(option.longestName());
        }
        System.out.println(".SH COMMANDS");
        print(zerlin);
        System.out.println(".SH EXIT STATUS\n" + text(String.join(" ", zerlin.getCommandSpec().usageMessage().footer()).trim()));
        System.out.println(".SH ENVIRONMENT\nThe Cryptoki library and its module are chosen as by every program that uses Zerlin:\n"
                + "LD_LIBRARY_PATH, ZERLIN_MODULE, ZERLIN_MODULE_ARGS. ZERLIN_JAVA names another JVM, JAVA_OPTIONS has options\n"
                + "for it. NO_COLOR switches colours off.");
        // The shell reads the completion and does not run it: no interpreter is named.
        Files.write(Paths.get(arguments[2]), AutoComplete.bash("zerlin", zerlin).replaceFirst("^#!.*\n", "").getBytes("UTF-8"));
    }

    private static void print(CommandLine group) {
        for (CommandLine command : new TreeMap<>(group.getSubcommands()).values()) {
            CommandSpec spec = command.getCommandSpec();
            if (!command.getSubcommands().isEmpty()) {
                print(command);
                continue;
            }
            StringBuilder line = new StringBuilder(".SS ").append(text(spec.qualifiedName()));
            spec.positionalParameters().forEach(one -> line.append(' ').append(text(one.paramLabel())));
            System.out.println(line + "\n" + text(String.join(" ", spec.usageMessage().description())));
            for (PositionalParamSpec parameter : spec.positionalParameters()) {
                print(parameter, parameter.paramLabel());
            }
            for (OptionSpec option : spec.options()) {
                if (!COMMON.contains(option.longestName())) {
                    print(option, option.names());
                }
            }
            System.out.println(".PP\n" + text(String.join(" ", spec.usageMessage().footer()).trim()));
        }
    }

    private static void print(ArgSpec argument, String... names) {
        boolean hasValue = argument.isOption() && argument.arity().max() > 0;
        System.out.println(".TP\n.B " + text(String.join(", ", names) + (hasValue ? " " + argument.paramLabel() : "")) + "\n"
                + text(String.join(" ", argument.description()).replace("${DEFAULT-VALUE}", "" + argument.defaultValue())));
    }

    private static String text(String text) {
        return text.replace("\\", "\\e").replace("-", "\\-").replaceAll("(?m)^([.'])", "\\\\&$1");
    }
}
