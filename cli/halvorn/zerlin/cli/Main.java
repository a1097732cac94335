// The command zerlin: what its errors look like, and the commands that look at tokens; others have files of their own.
package halvorn.zerlin.cli;

import static halvorn.zerlin.cli.Output.record;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import picocli.CommandLine;
import picocli.CommandLine.*;

import java.io.*;
import java.lang.reflect.*;
import java.nio.file.*;
import java.util.*;
import java.util.stream.Stream;

@Command(name = "zerlin", description = "Look at PKCS#11 tokens and work with their keys.", version = "zerlin",
        subcommands = {TokenCommands.class, KeyCommands.class, CertCommands.class},
        synopsisSubcommandLabel = "COMMAND", footer = {"",
            "Exit codes: 0 done; 1 the answer is no (a wrong signature, or you said no); 2 usage; 3 no such token, object or"
            + " mechanism, or several; 4 PIN; 5 token or library; 6 input or output."})
public final class Main extends DataCommands {
    // The attributes of an object that a listing shows, and their names there.
    private static final long[] SHOWN = {CKA.CLASS, CKA.KEY_TYPE, CKA.LABEL, CKA.ID};
    private static final String[] SHOWN_NAMES = {"class", "keyType", "label", "id"};

    private static final String VERSION = NativeLibrary.class.getPackage().getImplementationVersion();

    @Option(names = "--version", versionHelp = true, description = "Show the version.") private boolean version;

    public static void main(String... arguments) {
        boolean verbose = Arrays.asList(arguments).contains("--verbose");
        CommandLine command = commandLine(Main.class, Arrays.asList(arguments));
        command.getCommandSpec().version("zerlin " + VERSION);
        command.setColorScheme(Help.defaultColorScheme(Output.hasColours() ? Help.Ansi.ON : Help.Ansi.OFF));
        command.setUsageHelpWidth(100).setUsageHelpLongOptionsMaxWidth(30);
        command.getHelpSectionMap().put(Model.UsageMessageSpec.SECTION_KEY_COMMAND_LIST,
                help -> help.commandList(new TreeMap<>(help.subcommands())));
        command.setParameterExceptionHandler((e, all) -> report(e, Failure.USAGE, verbose));
        command.setExecutionExceptionHandler((e, line, parsed) -> {
            Throwable cause = e instanceof ExecutionException ? e.getCause() : e; // picocli has wrapped an Error
            return report(cause, Failure.codeOf(cause), verbose);
        });
        System.exit(command.execute(arguments));
    }

    // Reads the annotations of the command that the arguments name, and those of all commands only if they name none.
    private static CommandLine commandLine(Class<?> group, List<String> arguments) {
        String name = arguments.isEmpty() ? "" : arguments.get(0);
        Command command = group.getAnnotation(Command.class);
        List<AnnotatedElement> all = new ArrayList<>(CommandLine.getCommandMethods(group, null));
        all.addAll(Arrays.asList(command.subcommands()));
        for (AnnotatedElement one : all) {
            if (one.getAnnotation(Command.class).name().equals(name)) {
                CommandLine named = one instanceof Method ? new CommandLine(one)
                    : commandLine((Class<?>) one, arguments.subList(1, arguments.size()));
                return new CommandLine(Model.CommandSpec.wrapWithoutInspection(group).name(command.name())
                        .addSubcommand(name, named));
            }
        }
        return new CommandLine(group);
    }

    private static int report(Throwable e, int code, boolean verbose) {
        String text = Failure.textOf(e);
        boolean isSaid = e instanceof Failure && text.isEmpty(); // by the output
        if (!isSaid) {
            System.err.println("zerlin: " + text);
        }
        if (!isSaid && verbose) {
            e.printStackTrace();
        }
        return code;
    }

    @Command(name = "info", description = "Show the JVM, the libraries and the module, and where they were found.",
            footer = {"", "Example: zerlin info"})
    void info(@Mixin TokenOptions options) throws Exception {
        Map<String, Object> record = record("command", VERSION,
                "java", System.getProperty("java.version") + " " + System.getProperty("java.vm.name"),
                "javaHome", System.getProperty("java.home"), "architecture", System.getProperty("os.arch"),
                "classes", new File(Cryptoki.class.getProtectionDomain().getCodeSource().getLocation().getPath()).getPath());
        try {
            NativeLibrary.load();
            String named = System.getProperty(NativeLibrary.CRYPTOKI_PROPERTY, "");
            record.put("library", mapped(".*/libzerlin\\.so( .*)?"));
            record.put("cryptoki", mapped(named.startsWith("/") ? ".*\\Q" + new File(named).getName() + "\\E( .*)?"
                : ".*/libcryptoki\\.so( .*)?"));
            record.put("module", System.getenv("ZERLIN_MODULE"));
            TokenOptions.withLibrary(library -> {
                CK_INFO info = library.info();
                record.putAll(record("moduleManufacturer", info.getManufacturerID(),
                        "moduleDescription", info.getLibraryDescription(), "moduleVersion", info.libraryVersion.toString(),
                        "cryptokiVersion", info.cryptokiVersion.toString(), "slots", library.slots(false).size(),
                        "tokens", library.slots(true).size()));
            });
        } finally {
            Output.print(options.json, record); // as far as it was found
        }
    }

    // The file of a library that is loaded. A file that was unpacked for the load is deleted already.
    private static String mapped(String file) throws IOException {
        try (Stream<String> lines = Files.lines(Paths.get("/proc/self/maps"))) {
            return lines.filter(line -> line.indexOf('/') > 0).map(line -> line.substring(line.indexOf('/')))
                    .filter(path -> path.matches(file)).findFirst().orElse(null);
        }
    }

    @Command(name = "slots", description = "List the slots and their tokens.", footer = {"", "Example: zerlin slots --json"})
    void slots(@Mixin TokenOptions options) throws Exception {
        TokenOptions.withLibrary(library -> {
            List<Map<String, Object>> rows = new ArrayList<>();
            for (Slot slot : library.slots(false)) {
                boolean hasToken = (slot.info().flags & CKF.TOKEN_PRESENT) != 0;
                CK_TOKEN_INFO token = hasToken ? slot.tokenInfo() : new CK_TOKEN_INFO();
                boolean isReady = hasToken && (token.flags & CKF.TOKEN_INITIALIZED) != 0;
                rows.add(record("slot", slot.id(), "token", hasToken ? token.getLabel() : null,
                        "model", hasToken ? token.getModel() : null, "serial", hasToken ? token.getSerialNumber() : null,
                        "state", !hasToken ? "empty" : isReady ? "initialized" : "uninitialized",
                        "uri", isReady ? Uri.write(token, new Attributes()) : "pkcs11:slot-id=" + slot.id()));
                if (options.json) {
                    rows.get(rows.size() - 1).put("flags", hasToken ? Output.flags(token.toString()) : new ArrayList<>());
                }
            }
            Output.print(options.json, rows);
        });
    }

    @Command(name = "mechanisms", description = "List the mechanisms of a token, and what they can do.",
            footer = {"", "Example: zerlin mechanisms --of aes-gcm"})
    void mechanisms(@Mixin TokenOptions options, @Option(names = "--of", paramLabel = "NAME",
            description = "Only this mechanism, in any spelling.") String name) throws Exception {
        options.open(new Uri(), false, false, token -> {
            List<Map<String, Object>> rows = new ArrayList<>();
            long only = name == null ? -1 : Names.mechanism(token.slot, name);
            for (CK_MECHANISM_TYPE type : token.slot.mechanisms()) {
                if (name == null || type.m_value == only) {
                    CK_MECHANISM_INFO info = new CK_MECHANISM_INFO();
                    Cryptoki.C_GetMechanismInfo(token.slot.id(), type, info).orThrow("C_GetMechanismInfo");
                    rows.add(record("mechanism", Names.mechanism(type.m_value),
                            "value", "0x" + Long.toHexString(type.m_value), "minKeySize", info.minKeySize,
                            "maxKeySize", info.maxKeySize, "flags", Output.flags(info.toString())));
                }
            }
            Output.print(options.json, rows);
            Failure.when(rows.isEmpty(), Failure.NOT_FOUND, "The token does not have " + Names.mechanism(only));
        });
    }

    @Command(name = "objects", description = "List the objects of a token; those that are private too after a login.",
            footer = {"", "Example: zerlin objects --login"})
    void objects(@Mixin TokenOptions options, @Parameters(arity = "0..1", paramLabel = "URI",
            description = "Only what this URI or label fits.") String uri, @Option(names = "--all-attributes",
            description = "Show all attributes that are not secret.") boolean all) throws Exception {
        Uri wanted = Uri.of(uri, "object");
        options.open(wanted, false, false, token -> {
            List<Map<String, Object>> rows = new ArrayList<>();
            for (CK_OBJECT_HANDLE object : token.session.find(wanted.template())) {
                Attributes values = all ? token.session.readAll(object) : token.session.read(object, SHOWN);
                long[] types = all ? values.types() : SHOWN;
                Map<String, Object> row = record();
                for (int i = 0; i < types.length; i++) {
                    row.put(all ? CKA.nameOf(types[i]) : SHOWN_NAMES[i],
                            values.has(types[i]) ? Names.value(values, types[i]) : null);
                }
                row.put("uri", Uri.write(token.info, values));
                if (all && !options.json) {
                    Output.print(false, row);
                    Output.line("");
                } else {
                    rows.add(row);
                }
            }
            Output.print(options.json, rows);
        });
    }
}
