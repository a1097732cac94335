// Zerlin beside the PKCS#11 binding inside the JDK: the same operations in one JVM, in one run, over one
// Cryptoki library that does nothing, so that only the bindings are compared.
//
// Arguments: the file of that library, the nanoseconds that SoftTokenCipher printed (or nothing), a file that gets the
// ratios for the chart, and --quick.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.EnumMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.TreeMap;

import sun.security.pkcs11.wrapper.PKCS11;

final class Bench {
    private static final int[] PAYLOADS = {64 << 10, 1 << 20};
    private static final int[] TEMPLATES = {1, 10, 100, 1_000, 10_000};

    private final Effort effort;
    private final PKCS11 p11;
    private final ZerlinBinding zerlin = new ZerlinBinding();
    private final Binding jdk;
    private final List<List<Timing>> rows = new ArrayList<>();

    // Each list holds Zerlin's timing, the JDK's, and for some rows the floor; of the layer, its timing and the natives'.
    private final Map<Operation, List<Timing>> operations = new EnumMap<>(Operation.class);
    private final Map<Integer, List<Timing>> payloads = new TreeMap<>();
    private final Map<Integer, List<Timing>> templatesSet = new TreeMap<>();
    private final Map<Integer, List<Timing>> templatesGot = new TreeMap<>();
    private final Map<Layer, List<Timing>> layer = new EnumMap<>(Layer.class);
    private final Timing nothing;
    private final Timing emptyNative;
    private final Timing newRv;

    private int targets;
    private int met;

    private Bench(Effort effort, PKCS11 p11) throws Exception {
        this.effort = effort;
        this.p11 = p11;
        jdk = new JdkBinding(p11);
        CK_MECHANISM_TYPE[] mechanisms = CK_MECHANISM_TYPE.array(Binding.MECHANISMS);
        for (Operation operation : Operation.values()) {
            operations.put(operation, operation == Operation.MECHANISM_LIST
                    ? row(zerlin.call(operation), jdk.call(operation), () -> Floor.setValues(mechanisms, 0))
                    : row(zerlin.call(operation), jdk.call(operation)));
        }
        for (int bytes : PAYLOADS) {
            byte[] input = new byte[bytes];
            byte[] output = new byte[bytes];
            payloads.put(bytes, row(zerlin.encrypt(bytes), jdk.encrypt(bytes),
                    () -> Floor.copyInAndOut(input, output)));
        }
        for (int count : TEMPLATES) {
            templatesSet.put(count, row(zerlin.setAttributes(count), jdk.setAttributes(count)));
            templatesGot.put(count, row(zerlin.getAttributes(count), jdk.getAttributes(count)));
        }
        for (Layer method : Layer.values()) {
            layer.put(method, row(method.calls(zerlin)));
        }
        nothing = row(() -> { }).get(0);
        emptyNative = row(Floor::empty).get(0);
        newRv = row(Floor::newRv).get(0);
    }

    public static void main(String[] arguments) throws Exception {
        Locale.setDefault(Locale.ROOT);
        String library = arguments[0];
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
        PKCS11 p11 = JdkBinding.load(library);
        requireOnly(library);

        Bench bench = new Bench(Effort.of(arguments), p11);
        bench.printMachine();
        bench.effort.run(bench.rows);
        bench.printOperations();
        bench.printFloors();
        bench.printPayloads(arguments[1]);
        bench.printTemplates();
        bench.printLayer();
        bench.printThreads();
        bench.writeRatios(Path.of(arguments[2]));
        System.out.printf("%nTargets met: %d of %d.%n", bench.met, bench.targets);
    }

    // Both bindings must use the same library, or the comparison means nothing.
    private static void requireOnly(String library) throws Exception {
        List<String> loaded = Files.readAllLines(Path.of("/proc/self/maps")).stream()
                .filter(line -> line.endsWith("/libcryptoki.so"))
                .map(line -> line.substring(line.indexOf('/')))
                .distinct().toList();
        if (!loaded.equals(List.of(Path.of(library).toRealPath().toString()))) {
            throw new IllegalStateException("The process has loaded " + loaded + ", not only " + library);
        }
    }

    private List<Timing> row(Call... calls) {
        List<Timing> row = new ArrayList<>();
        for (Call call : calls) {
            row.add(new Timing(call));
        }
        rows.add(row);
        return row;
    }

    private void printMachine() throws Exception {
        String cpu = Files.readAllLines(Path.of("/proc/cpuinfo")).stream()
                .filter(line -> line.startsWith("model name"))
                .map(line -> line.substring(line.indexOf(':') + 1).strip())
                .findFirst().orElse("unknown processor");
        String load = Files.readString(Path.of("/proc/loadavg")).split(" ")[0];
        System.out.printf("%s, %d cores, load %s; %s %s (%s)%n", cpu,
                Runtime.getRuntime().availableProcessors(), load, System.getProperty("java.vm.name"),
                System.getProperty("java.runtime.version"), System.getProperty("os.arch"));
        System.out.printf("ns for one call; medians of %d batches in %d rounds of rotating order%n",
                effort.rounds() * effort.batches(), effort.rounds());
    }

    private void printOperations() {
        title("The twelve operations", "Zerlin", "JDK", "ratio", "target");
        double logarithms = 0;
        for (Operation operation : Operation.values()) {
            double theirs = operations.get(operation).get(1).median();
            double ratio = line(operation.text, operations.get(operation).get(0).median(), theirs);
            if (operation == Operation.MECHANISM_LIST) {
                System.out.println("  see the floors");
            } else {
                check(ratio, limit(operation, theirs));
                logarithms += Math.log(ratio);
            }
        }
        double mean = Math.exp(logarithms / (Operation.values().length - 1));
        System.out.printf("%-70s %7.2f", "Geometric mean without the mechanism list", mean);
        check(mean, 0.7);
    }

    // One line for each bar: the ratio and the operation.
    private void writeRatios(Path file) throws Exception {
        List<String> lines = new ArrayList<>();
        operations.forEach((operation, pair) -> {
            if (operation != Operation.MECHANISM_LIST) {
                lines.add("%.2f\t%s".formatted(pair.get(0).median() / pair.get(1).median(), operation.text));
            }
        });
        Files.write(file, lines);
    }

    private static double limit(Operation operation, double theirs) {
        return switch (operation) {
            case GET_ATTRIBUTES, GENERATE_KEY -> 0.3;
            case TOKEN_INFO, SEARCH -> 0.5;
            default -> theirs < 250 ? 2.5 : 0.9;
        };
    }

    private void printFloors() {
        title("Floors", "Zerlin", "floor", "ratio", "target");
        floor("The benchmark's own loop, part of every figure", nothing);
        floor("An empty native call", emptyNative);
        floor("A native that makes a new CK_RV", newRv);
        List<Timing> list = operations.get(Operation.MECHANISM_LIST);
        check(line("C_GetMechanismList: 40 calls of setValue", list.get(0).median(), list.get(2).median()),
                1.2);
    }

    private static void floor(String name, Timing timing) {
        System.out.printf("%-46s %23.0f%n", name, timing.median());
    }

    private void printPayloads(String softToken) {
        title("C_Encrypt beside a copy in and a copy out", "Zerlin", "floor", "ratio", "target");
        payloads.forEach((bytes, timings) -> {
            long pinned = Math.round(timings.get(1).median());
            String name = (bytes >> 10) + " KiB (the JDK, which pins the array: " + pinned + ")";
            check(line(name, timings.get(0).median(), timings.get(2).median()), 1.25);
        });
        if (softToken.isEmpty()) {
            System.out.println("AES-CBC of 1 MiB on SoftHSM: not measured, the soft token did not run");
            return;
        }
        double ours = payloads.get(1 << 20).get(0).median();
        check(line("Its share of AES-CBC of 1 MiB on SoftHSM", ours, Double.parseDouble(softToken)), 0.1);
    }

    private void printTemplates() {
        title("For each attribute of a template", "Zerlin", "JDK", "ratio", "target");
        printTemplates("C_SetAttributeValue", templatesSet);
        printTemplates("C_GetAttributeValue", templatesGot);
    }

    private void printTemplates(String name, Map<Integer, List<Timing>> templates) {
        templates.forEach((count, pair) -> {
            line(name + " of " + count, pair.get(0).median() / count, pair.get(1).median() / count);
            System.out.println();
        });
        double growth = templates.get(10_000).get(0).median() / templates.get(10).get(0).median() / 1000;
        System.out.printf("%-70s %7.2f", name + ": each of 10000 beside each of 10", growth);
        check(growth, 1.2);
    }

    private void printLayer() {
        title("The Java layer", "layer", "natives", "ratio", "target");
        layer.forEach((method, pair) ->
                check(line(method.text, pair.get(0).median(), pair.get(1).median()), 1.25));
    }

    private void printThreads() throws Exception {
        Map<Operation, List<TwoThreads>> measured = new EnumMap<>(Operation.class);
        for (Operation operation : List.of(Operation.SESSION_INFO, Operation.ENCRYPT)) {
            measured.put(operation, List.of(new TwoThreads(() -> new ZerlinBinding().call(operation)),
                    new TwoThreads(() -> new JdkBinding(p11).call(operation))));
        }
        TwoThreads.run(measured.values().stream().flatMap(List::stream).toList(), effort);

        title("Throughput of two threads over that of one", "Zerlin", "JDK", "", "target");
        measured.forEach((operation, pair) -> {
            System.out.printf("%-46s %11.2f %11.2f %7s", operation.text, pair.get(0).speedUp(),
                    pair.get(1).speedUp(), "");
            verdict(pair.get(0).speedUp() >= 1.8, ">= 1.8");
            System.out.printf("%-46s %11.2f %11.2f%n", "    by the threads' own clocks",
                    pair.get(0).speedUpByOwnTime(), pair.get(1).speedUpByOwnTime());
        });
    }

    private static void title(String text, String first, String second, String third, String fourth) {
        System.out.printf("%n%-46s %11s %11s %7s  %s%n", text, first, second, third, fourth);
    }

    /** Starts a line and returns the ratio that it shows. */
    private static double line(String name, double ours, double theirs) {
        System.out.printf("%-46s %11.0f %11.0f %7.2f", name, ours, theirs, ours / theirs);
        return ours / theirs;
    }

    private void check(double value, double limit) {
        verdict(value <= limit, "<= " + limit);
    }

    private void verdict(boolean good, String target) {
        targets++;
        met += good ? 1 : 0;
        System.out.printf("  %-8s %s%n", target, good ? "ok" : "missed");
    }
}
