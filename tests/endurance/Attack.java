// Hostile calls of all natives, over a module that lies (tests/fakes/lying_module.cpp), made worse by one of the rows.
// What must hold: the JVM goes on, no exception comes out but those that are documented, and honest calls on each
// thread return what they should. Each row runs in a JVM of its own, so that a crash names its row and seed:
//
//   run lying Attack <seconds> [<seed> [<row>]]     (tools/attack calls this with minutes)
//
// Left out are the lengths that abort the process as documented, and what only the Cryptoki library itself can do
// wrong: reading beyond the 64 KiB behind a declared length, or writing through pointers of its own.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.io.*;
import java.lang.instrument.*;
import java.lang.reflect.*;
import java.nio.file.*;
import java.util.*;
import java.util.concurrent.*;
import java.util.concurrent.atomic.*;
import java.util.jar.*;
import java.util.regex.*;

import token.FreshToken;

public final class Attack {
    // How many threads make calls, the size of their stacks, what another thread does meanwhile, options of the JVM.
    private enum Row {
        CHANGED(4, 0, Attack::changeArguments),
        REENTERED(4, 0, Attack::nothing),
        REINITIALISED(4, 0, Attack::reinitialise),
        REDEFINED(4, 0, Attack::redefineClasses, "-javaagent:@"),
        // The only row whose module is honest: Work checks every result.
        REDEFINED_SOFTTOKEN(1, 0, Attack::redefineClasses, "-javaagent:@"),
        MEMORY(1, 0, Attack::nothing, "-Xmx8m", "-XX:-UseTLAB", "-XX:-UseGCOverheadLimit", "-XX:-ClassUnloading"),
        STACKS(4, 1, Attack::nothing);

        final int threads;
        final long stackSize;
        final Attacker meanwhile;
        final String[] options;

        Row(int threads, long stackSize, Attacker meanwhile, String... options) {
            this.threads = threads;
            this.stackSize = stackSize;
            this.meanwhile = meanwhile;
            this.options = options;
        }
    }

    private interface Attacker {
        void attack(Attack attack) throws Exception;
    }

    private static final int SLICE = 20; // seconds of one JVM
    private static final CK_SESSION_HANDLE HONEST = new CK_SESSION_HANDLE(0x7A5EC0DE);
    private static final String[] COLLECTORS = {"-XX:+UseSerialGC", "-XX:+UseParallelGC", "-XX:+UseG1GC"};
    private static final Pattern ALLOWED = Pattern.compile(
            "(java.lang.(UnsupportedOperationException: |NullPointerException: the name|IllegalStateException: hostile"
            + "|NoClassDefFoundError: java/lang/Char)).*", Pattern.DOTALL);
    private static final Pattern CALLS = Pattern.compile("^[A-Z_]+: (\\d+) calls");

    private static Instrumentation instrumentation;
    private static long allCalls;

    private final Row row;
    private final double seconds;
    private final Random seeds;
    private final AtomicReferenceArray<Object[]> inFlight = new AtomicReferenceArray<>(4);
    private final int[] bottoms = new int[4]; // how many frames deep each thread last called
    private final byte[][] held;
    private final AtomicLong calls = new AtomicLong();
    private final AtomicLong raised = new AtomicLong();
    private final AtomicLong honest = new AtomicLong();
    private volatile Throwable failure;
    private long end;
    private final ThreadLocal<Integer> depth = ThreadLocal.withInitial(() -> 0);

    private Attack(Row row, long seed, double seconds) {
        this.row = row;
        this.seconds = seconds;
        seeds = new Random(seed);
        held = new byte[row == Row.MEMORY ? 100_000 : 0][];
    }

    public static void premain(String arguments, Instrumentation given) {
        instrumentation = given;
    }

    public static void main(String[] arguments) throws Exception {
        if (arguments[0].equals("row")) {
            new Attack(Row.valueOf(arguments[1]), Long.parseLong(arguments[2]), Double.parseDouble(arguments[3])).run();
            System.exit(0); // threads of the JVM's own do not matter
        }
        double seconds = Double.parseDouble(arguments[1]);
        long seed = arguments.length > 2 ? Long.parseLong(arguments[2]) : System.currentTimeMillis() / 1000;
        Row[] rows = arguments.length > 3 ? new Row[] {Row.valueOf(arguments[3])} : Row.values();
        double slice = Math.min(SLICE, seconds / rows.length);
        long end = System.nanoTime() + (long) (seconds * 1e9);
        int failed = 0;
        int done = 0;
        do {
            for (Row row : rows) {
                done++;
                if (!isSurvived(row, seed, slice)) {
                    failed++;
                    System.out.printf("FAILED: tools/attack %.1f %d %s repeats it%n", slice / 60, seed, row);
                }
            }
            seed++;
        } while (System.nanoTime() < end && failed < 10);
        System.out.printf("%d calls in %d rows, the last from seed %d; %d failed%n", allCalls, done, seed - 1, failed);
        System.exit(failed == 0 ? 0 : 1);
    }

    // Runs a row in a JVM of its own.
    private static boolean isSurvived(Row row, long seed, double seconds) throws Exception {
        Path agent = Files.createTempFile("attack", ".jar");
        Manifest manifest = new Manifest();
        manifest.getMainAttributes().putValue("Manifest-Version", "1.0");
        manifest.getMainAttributes().putValue("Premain-Class", "Attack");
        manifest.getMainAttributes().putValue("Can-Redefine-Classes", "true");
        new JarOutputStream(Files.newOutputStream(agent), manifest).close();
        List<String> command = new ArrayList<>(List.of("timeout", "--signal=ABRT", Math.round(seconds + 120) + "",
                System.getProperty("java.home") + "/bin/java", "-XX:+ErrorFileToStdout", "-XX:-CreateCoredumpOnCrash",
                COLLECTORS[row == Row.MEMORY ? 0 : (int) (seed % COLLECTORS.length)],
                "-cp", System.getProperty("java.class.path"),
                "-Djava.library.path=" + System.getProperty("java.library.path")));
        for (String option : row.options) {
            command.add(option.replace("@", agent.toString()));
        }
        Collections.addAll(command, "Attack", "row", row.name(), seed + "", seconds + "");
        ProcessBuilder builder = new ProcessBuilder(command).redirectErrorStream(true);
        builder.environment().put("GLIBC_TUNABLES", "glibc.malloc.perturb=165"); // freed memory changes
        if (row == Row.REDEFINED_SOFTTOKEN) {
            builder.environment().remove("ZERLIN_MODULE");
        }
        try {
            Process process = builder.start();
            for (String line : (Iterable<String>) process.inputReader().lines()::iterator) {
                System.out.println(line);
                Matcher figure = CALLS.matcher(line);
                allCalls += figure.find() ? Long.parseLong(figure.group(1)) : 0;
            }
            return process.waitFor() == 0;
        } finally {
            Files.delete(agent);
        }
    }

    private void run() throws Exception {
        try (JarFile jar = new JarFile(System.getProperty("java.class.path").split(":")[0])) {
            for (JarEntry entry : Collections.list(jar.entries())) {
                if (entry.getName().endsWith(".class")) { // initialised while there is memory and stack
                    Class.forName(entry.getName().replace('/', '.').replace(".class", ""));
                }
            }
        }
        // The JVM never uses a class again whose initialisation ran out of stack.
        Class.forName(ClassNotFoundException.class.getName());
        for (int i = 0; i < 50 && row != Row.REDEFINED_SOFTTOKEN; i++) {
            call(0, new Random(seeds.nextLong())); // loads all classes
        }
        if (row == Row.REENTERED) {
            Hostile.callback = this::reenter;
        }
        end = System.nanoTime() + (long) (seconds * 1e9);
        List<Thread> threads = new ArrayList<>();
        for (int i = 0; i < row.threads; i++) {
            int thread = i;
            Random random = new Random(seeds.nextLong());
            threads.add(thread(attack -> attack.work(thread, random)));
        }
        threads.add(thread(row.meanwhile));
        threads.forEach(Thread::start);
        for (Thread thread : threads) {
            thread.join();
        }
        if (failure != null) {
            throw new IllegalStateException(row.toString(), failure);
        }
        if (row != Row.REDEFINED_SOFTTOKEN) {
            checkHonestCalls();
        }
        System.out.printf("%s: %d calls, %d exceptions, %d honest calls%n", row, calls.get(), raised.get(),
                honest.get());
    }

    // No executor, because running out of memory breaks it.
    private Thread thread(Attacker task) {
        return new Thread(null, () -> {
            try {
                task.attack(this);
            } catch (Throwable thrown) {
                failure = thrown;
            }
        }, "attack", row.stackSize);
    }

    private boolean isOver() {
        return System.nanoTime() > end;
    }

    private void work(int thread, Random random) throws Exception {
        if (row == Row.REDEFINED_SOFTTOKEN) {
            workHonestly();
            return;
        }
        for (int i = 0; !isOver(); i++) {
            try {
                call(thread, random);
                if (i % 4 == 0) {
                    checkHonestCalls();
                }
            } catch (OutOfMemoryError | StackOverflowError e) { // not within a native
                Arrays.fill(held, null);
                raised.incrementAndGet();
            }
        }
    }

    private void workHonestly() throws Exception {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking()).orThrow();
        FreshToken.initialise(FreshToken.slots()[0], Work.LABEL);
        Work work = new Work(FreshToken.slots()[0], true, true, seeds.nextInt());
        while (!isOver()) {
            work.round();
        }
        calls.set(work.calls());
        Cryptoki.C_Finalize(null).orThrow();
    }

    // Calls a native several times with the same arguments, which others may change.
    private void call(int thread, Random random) {
        int index = random.nextInt(Hostile.NATIVES.length);
        Hostile hostile;
        try {
            hostile = new Hostile(random.nextLong(), index);
        } catch (ReflectiveOperationException e) {
            throw new IllegalStateException(e);
        }
        inFlight.set(thread, hostile.arguments);
        int filled = row == Row.MEMORY && end != 0 ? exhaustMemory() : 0;
        int times = end == 0 ? 4 : filled > 0 ? 8 : row == Row.REINITIALISED ? 2000 : 32;
        for (int i = 0; i < times && (end == 0 || !isOver()); i++) {
            int frames = row == Row.STACKS ? bottoms[thread] + random.nextInt(20) : 0;
            for (int k = 0; k < 4 && filled > 0; k++) {
                held[--filled] = null; // each call has more room
            }
            calls.incrementAndGet();
            Throwable thrown = callBelow(frames, Hostile.NATIVES[index], hostile.arguments);
            bottoms[thread] = Math.max(0, thrown instanceof StackOverflowError ? frames - random.nextInt(60) : frames);
            raised.addAndGet(thrown == null ? 0 : 1);
            boolean isAllowed = thrown == null || thrown instanceof OutOfMemoryError
                    || thrown instanceof StackOverflowError;
            if (!isAllowed && !ALLOWED.matcher(thrown.toString()).matches()) {
                throw new IllegalStateException(Hostile.NATIVES[index].getName(), thrown);
            }
        }
        Arrays.fill(held, null);
    }

    // Leaves that many frames less of the stack to the native, and returns what it has thrown.
    private static Throwable callBelow(int frames, Method made, Object[] arguments) {
        try {
            if (frames > 0) {
                return callBelow(frames - 1, made, arguments);
            }
            return made.invoke(null, arguments) != null ? null : new NullPointerException("no result");
        } catch (InvocationTargetException e) {
            return e.getCause();
        } catch (IllegalArgumentException e) {
            return null; // Java itself checks the classes of arguments
        } catch (Throwable e) {
            return e;
        }
    }

    // Calls that the module answers properly, with one value that no other thread has.
    private void checkHonestCalls() {
        int value = ThreadLocalRandom.current().nextInt();
        LongRef size = new LongRef();
        CK_RV answer = Cryptoki.C_GetObjectSize(HONEST, new CK_OBJECT_HANDLE(value), size);
        CK_ATTRIBUTE[] template = {new CK_ATTRIBUTE(CKA.VALUE, 0L), CK_ATTRIBUTE.buffer(CKA.LABEL, 3000)};
        CK_RV served = Cryptoki.C_GetAttributeValue(HONEST, new CK_OBJECT_HANDLE(), template, 2);
        byte[] label = new byte[3000];
        Arrays.fill(label, (byte) 0x5A);
        if (!answer.isOk() || size.value != (~value & 0xFFFFFFFFL) || !served.isOk()
                || (Long) template[0].pValue != 0x5A5A5A5AL || !Arrays.equals(label, template[1].getBytes())) {
            throw new IllegalStateException("An honest call has failed");
        }
        honest.addAndGet(2);
    }

    private static void nothing(Attack attack) {
    }

    // Ends the registration of callbacks that other threads are calling.
    private static void reinitialise(Attack attack) {
        while (!attack.isOver()) {
            try {
                Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking());
                Cryptoki.C_Finalize(null);
            } catch (IllegalStateException e) {
                attack.raised.incrementAndGet(); // by a callback that another thread has registered
            }
        }
    }

    private static void redefineClasses(Attack attack) throws Exception {
        List<ClassDefinition> all = new ArrayList<>();
        for (Class<?> loaded : instrumentation.getAllLoadedClasses()) {
            if (loaded.getName().startsWith("halvorn.zerlin.") && instrumentation.isModifiableClass(loaded)
                    && !Proxy.isProxyClass(loaded)) {
                String file = loaded.getName().replaceAll(".*[.]", "") + ".class";
                try (InputStream in = loaded.getResourceAsStream(file)) {
                    all.add(new ClassDefinition(loaded, in.readAllBytes()));
                }
            }
        }
        while (!attack.isOver()) {
            instrumentation.redefineClasses(all.get(ThreadLocalRandom.current().nextInt(all.size())));
        }
    }

    // Fills the heap, in the end with small objects, and returns how many there are.
    private int exhaustMemory() {
        int filled = 0;
        for (int size : new int[] {20_000, 500, 8}) {
            try {
                for (; true; filled++) {
                    held[filled] = new byte[size];
                }
            } catch (OutOfMemoryError e) {
                continue;
            }
        }
        return filled;
    }

    // What a callback or an overridden method does within a native.
    private long reenter() {
        Random random = ThreadLocalRandom.current();
        depth.set(depth.get() + 1);
        try {
            switch (depth.get() > 3 ? 0 : random.nextInt(6)) {
                case 0: throw new IllegalStateException("hostile");
                case 1: return Cryptoki.C_Finalize(null).getValue();
                case 2: return Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking()).getValue();
                case 3: checkHonestCalls(); return 0;
                default: call(random.nextInt(row.threads), random); return 0;
            }
        } finally {
            depth.set(depth.get() - 1);
        }
    }

    private static void changeArguments(Attack attack) throws Exception {
        Random random = new Random(attack.seeds.nextLong());
        while (!attack.isOver()) {
            Object[] arguments = attack.inFlight.get(random.nextInt(attack.row.threads));
            if (arguments != null && arguments.length > 0) {
                change(arguments[random.nextInt(arguments.length)], random);
            }
        }
    }

    private static long absurd(Random random) {
        long[] all = {0, 1, 3, 4, 8, -1, random.nextInt(5000), 70000, 1L << 31, (1L << 32) - 1, Long.MIN_VALUE};
        return all[random.nextInt(all.length)];
    }

    private static Object value(Random random) {
        Object[] all = {null, new byte[random.nextInt(5000)], new byte[8], new CK_BBOOL(), new CK_DATE(), "text",
            CK_MECHANISM_TYPE.array(random.nextInt(40)), new CK_OBJECT_HANDLE(), new CK_KEY_TYPE(),
            new CK_PBE_PARAMS()};
        return all[random.nextInt(all.length)];
    }

    // Changes one thing somewhere in an argument.
    private static void change(Object target, Random random) throws Exception {
        if (target == null || target.getClass().getName().matches("java\\.lang\\..*|.*(Proxy|params\\.).*")) {
            return; // lengths in parameters are asserted
        } else if (target instanceof byte[]) {
            random.nextBytes((byte[]) target);
        } else if (target instanceof Object[]) {
            Object[] array = (Object[]) target;
            int i = array.length == 0 ? -1 : random.nextInt(array.length);
            if (i >= 0 && random.nextInt(4) != 0) {
                change(array[i], random);
            } else if (i >= 0) {
                Object other = array[random.nextInt(array.length)];
                array[random.nextInt(array.length)] = random.nextBoolean() ? other : null;
                array[i] = other;
            }
        } else if (target instanceof CK_MECHANISM && Hostile.structureOf(((CK_MECHANISM) target).pParameter) != null) {
            // The length stays that of the structure, which comes back at the end.
            CK_MECHANISM mechanism = (CK_MECHANISM) target;
            Object structure = mechanism.pParameter;
            // XLen, which is asserted, comes back into whatever object of the class is there.
            boolean isKept = structure instanceof Long || structure instanceof CK_KEY_WRAP_SET_OAEP_PARAMS;
            Object[] others = {null, new byte[(int) Math.min(mechanism.parameterLen & 0xFFF, 100)],
                isKept ? structure : structure.getClass().getDeclaredConstructor().newInstance()};
            mechanism.pParameter = others[random.nextInt(others.length)];
            change(mechanism.mechanism, random);
            mechanism.pParameter = structure;
        } else if (!target.getClass().isArray()) {
            Field[] fields = Hostile.fields(target.getClass());
            Field field = fields[random.nextInt(fields.length)];
            if (field.getType() == long.class) {
                field.setLong(target, absurd(random));
            } else if (field.getType() == Object.class && target instanceof CK_ATTRIBUTE) {
                field.set(target, value(random));
            } else {
                change(field.get(target), random);
            }
        }
    }
}
