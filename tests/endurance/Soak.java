// Does one kind of work eleven times. Fails if a result is wrong, or if memory, references or threads have grown since
// the second time.
//
// The work on a token is done by some threads in their own sessions, in turn with Java's locks and with those of the
// operating system. It ends with C_Finalize, because only then the soft token frees what it keeps of destroyed
// objects. What is still allocated afterwards has leaked.

import halvorn.zerlin.*;

import java.lang.management.ManagementFactory;
import java.util.*;
import java.util.concurrent.*;
import java.util.concurrent.atomic.AtomicReference;
import java.util.regex.*;

import javax.management.ObjectName;

import token.FreshToken;

final class Soak {
    // For each thread. The JVM's own memory varies by some ten KiB, because block sizes are rounded and some tables
    // grow once. It has references of its own, for example for waiting compilations.
    private static final long[] ALLOWED = {65536, 8, 0};

    static {
        System.loadLibrary("heap");
    }

    /** Arguments: the library (run.in), the kind of work, how much of it, how many threads. */
    public static void main(String[] arguments) throws Exception {
        int much = Integer.parseInt(arguments[2]);
        int threads = Integer.parseInt(arguments[3]);
        long[] second = {};
        for (int time = 1; time <= 11; time++) {
            switch (arguments[1]) {
                case "Callers": Callers.work(much, threads); break;
                case "Reload": Reload.work(much); break;
                default: work(arguments[0].equals("softtoken"), much, threads, time % 2 == 0);
            }
            long[] now = vitals();
            second = time <= 2 ? now : second;
            for (int i = 0; i < now.length; i++) {
                Callers.expect(now[i] <= second[i] + ALLOWED[i] * threads, "bytes, references, threads have grown from "
                        + Arrays.toString(second) + " to " + Arrays.toString(now));
            }
        }
    }

    private static void work(boolean isReal, int rounds, int threads, boolean isJavaLocking) throws Exception {
        Cryptoki.C_Initialize(isJavaLocking ? CK_C_INITIALIZE_ARGS.javaLocking() : CK_C_INITIALIZE_ARGS.osLocking())
                .orThrow();
        long slot = FreshToken.slots()[0];
        FreshToken.initialise(slot, "endurance");
        together(threads, 0, () -> {
            Work work = new Work(slot, isReal);
            for (int round = 0; round < rounds; round++) {
                work.round();
            }
            return null;
        });
        Cryptoki.C_Finalize(null).orThrow();
    }

    /** Runs the same on some threads, also when there is no memory left; the stack size 0 stands for the usual one. */
    static void together(int threads, long stackSize, Callable<Void> work) throws Exception {
        AtomicReference<Throwable> failure = new AtomicReference<>();
        List<Thread> all = new ArrayList<>();
        for (int i = 0; i < threads; i++) {
            all.add(new Thread(null, () -> {
                try {
                    work.call();
                } catch (Throwable e) {
                    failure.set(e);
                }
            }, "together", stackSize));
            all.get(i).start();
        }
        for (Thread one : all) {
            one.join();
        }
        if (failure.get() != null) {
            throw new ExecutionException(failure.get());
        }
    }

    // Allocated bytes that are not the JVM's own, global references, weak ones too, and threads.
    private static long[] vitals() throws Exception {
        return new long[] {heapInUse() - ask("vmNativeMemory", "\\A(?s:.)*?malloc: (\\d+) #", "summary", "scale=B"),
            ask("threadPrint", "(?:global|weak) refs: (\\d+)"), ManagementFactory.getThreadMXBean().getThreadCount()};
    }

    // Runs a command of jcmd and returns the sum of the numbers in its answer.
    private static long ask(String command, String pattern, String... arguments) throws Exception {
        System.gc();
        String answer = (String) ManagementFactory.getPlatformMBeanServer().invoke(
                new ObjectName("com.sun.management:type=DiagnosticCommand"), command, new Object[] {arguments},
                new String[] {String[].class.getName()});
        return Pattern.compile(pattern).matcher(answer).results().mapToLong(found -> Long.parseLong(found.group(1)))
                .sum();
    }

    // Bytes allocated with malloc; those of the JVM's own are counted only with -XX:NativeMemoryTracking.
    private static native long heapInUse();
}
