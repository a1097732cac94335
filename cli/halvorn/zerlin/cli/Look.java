// The commands that look at the machine and at tokens.
package halvorn.zerlin.cli;

import static halvorn.zerlin.cli.Output.record;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.Attributes;
import halvorn.zerlin.token.Slot;

import picocli.CommandLine.*;

import java.io.File;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Paths;
import java.util.*;
import java.util.concurrent.Callable;
import java.util.stream.Stream;

final class Look {
    private Look() {
    }

    @Command(name = "info", description = "Show the JVM, the libraries and the module: their versions, and where they were"
            + " found.", footer = {"", "Example: zerlin info"})
    static final class Info implements Callable<Integer> {
        @Mixin private TokenOptions options;

        @Override
        public Integer call() throws Exception {
            Map<String, Object> record = record("command", Main.version(),
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
                return TokenOptions.withLibrary(library -> {
                    CK_INFO info = library.info();
                    record.put("moduleManufacturer", info.getManufacturerID());
                    record.put("moduleDescription", info.getLibraryDescription());
                    record.put("moduleVersion", info.libraryVersion.toString());
                    record.put("cryptokiVersion", info.cryptokiVersion.toString());
                    record.put("slots", library.slots(false).size());
                    record.put("tokens", library.slots(true).size());
                    return 0;
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
    }

    @Command(name = "slots", description = "List the slots and their tokens.",
            footer = {"", "Example: zerlin slots --json"})
    static final class Slots implements Callable<Integer> {
        @Mixin private TokenOptions options;

        @Override
        public Integer call() throws Exception {
            return TokenOptions.withLibrary(library -> {
                List<Map<String, Object>> rows = new ArrayList<>();
                for (Slot slot : library.slots(false)) {
                    boolean hasToken = (slot.info().flags & CKF.TOKEN_PRESENT) != 0;
                    CK_TOKEN_INFO token = hasToken ? slot.tokenInfo() : new CK_TOKEN_INFO();
                    boolean isReady = hasToken && (token.flags & CKF.TOKEN_INITIALIZED) != 0;
                    rows.add(record("slot", slot.id(), "token", hasToken ? token.getLabel() : null,
                            "model", hasToken ? token.getModel() : null, "serial", hasToken ? token.getSerialNumber() : null,
                            "state", !hasToken ? "empty" : isReady ? "initialized" : "uninitialized",
                            "uri", isReady ? Uri.write(token, null) : "pkcs11:slot-id=" + slot.id()));
                    if (options.json) {
                        rows.get(rows.size() - 1).put("flags", hasToken ? Output.flags(token.toString()) : new ArrayList<>());
                    }
                }
                Output.print(options.json, rows);
                return 0;
            });
        }
    }

    @Command(name = "mechanisms", description = "List the mechanisms of a token, and what they can do.",
            footer = {"", "Example: zerlin mechanisms --of aes-gcm"})
    static final class Mechanisms implements Callable<Integer> {
        @Mixin private TokenOptions options;

        @Option(names = "--of", paramLabel = "NAME", description = "Only this mechanism, in any spelling.")
        private String name;

        @Override
        public Integer call() throws Exception {
            return options.withToken(false, token -> {
                List<Map<String, Object>> rows = new ArrayList<>();
                long only = name == null ? -1 : Names.mechanism(token.slot, name);
                for (CK_MECHANISM_TYPE type : token.slot.mechanisms()) {
                    if (name == null || type.m_value == only) {
                        CK_MECHANISM_INFO info = new CK_MECHANISM_INFO();
                        Cryptoki.C_GetMechanismInfo(token.slot.id(), new CK_MECHANISM_TYPE(type.m_value), info)
                                .orThrow("C_GetMechanismInfo");
                        rows.add(record("mechanism", Values.mechanism(type.m_value),
                                "value", "0x" + Long.toHexString(type.m_value), "minKeySize", info.minKeySize,
                                "maxKeySize", info.maxKeySize, "flags", Output.flags(info.toString())));
                    }
                }
                Output.print(options.json, rows);
                if (rows.isEmpty()) {
                    throw new Failure(Failure.NOT_FOUND, "The token does not have " + Values.mechanism(only));
                }
                return 0;
            });
        }
    }

    @Command(name = "objects", description = "List the objects of a token; those that are private too after a login.",
            footer = {"", "Example: zerlin objects --login"})
    static final class Objects implements Callable<Integer> {
        @Mixin private TokenOptions options;

        @Parameters(arity = "0..1", paramLabel = "URI", description = "Only the objects that this URI, or this label, fits.")
        private String uri;

        @Option(names = "--all-attributes", description = "Show all attributes that can be read, but for secret ones.")
        private boolean all;

        @Override
        public Integer call() throws Exception {
            Uri wanted = Uri.of(uri, "object");
            return options.withToken(wanted, false, false, token -> {
                List<Map<String, Object>> rows = new ArrayList<>();
                for (CK_OBJECT_HANDLE object : token.session.find(wanted.template())) {
                    Attributes values = all ? token.session.readAll(object)
                        : token.session.read(object, CKA.CLASS, CKA.KEY_TYPE, CKA.LABEL, CKA.ID);
                    Map<String, Object> row = record();
                    if (all) {
                        for (long type : values.types()) {
                            row.put(CKA.nameOf(type), Values.of(values, type));
                        }
                    } else {
                        row.put("class", value(values, CKA.CLASS));
                        row.put("keyType", value(values, CKA.KEY_TYPE));
                        row.put("label", value(values, CKA.LABEL));
                        row.put("id", value(values, CKA.ID));
                    }
                    row.put("uri", Uri.write(token.info, values));
                    rows.add(row);
                }
                if (all && !options.json) {
                    for (Map<String, Object> row : rows) {
                        Output.print(false, row);
                        Output.line("");
                    }
                } else {
                    Output.print(options.json, rows);
                }
                return 0;
            });
        }

        private static Object value(Attributes values, long type) {
            return values.has(type) ? Values.of(values, type) : null;
        }
    }
}
