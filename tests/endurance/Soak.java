// Makes a given number of mixed calls, and after each tenth of them looks at memory, references and threads. Fails
// if they have grown.
//
// Every tenth ends with C_Finalize, because only then the soft token frees what it keeps of destroyed objects.
// What is still allocated afterwards has leaked.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.Cryptoki;

import java.util.Locale;

import token.FreshToken;

final class Soak {
    // The JVM's own memory varies by some ten KiB: block sizes are rounded, and some tables grow once.
    private static final long HEAP_SLACK = 64 * 1024;
    // The JVM has references of its own, for example for waiting compilations.
    private static final long REFERENCE_SLACK = 8;

    private final boolean isReal;
    private int seed;

    private Soak(boolean isReal) {
        this.isReal = isReal;
    }

    public static void main(String[] arguments) throws Exception {
        long calls = (long) (1e6 * Double.parseDouble(arguments[1]));
        System.exit(new Soak(arguments[0].equals("softtoken")).run(calls) ? 0 : 1);
    }

    private boolean run(long calls) throws Exception {
        Cryptoki.C_Initialize(null).orThrow();
        FreshToken.initialise(FreshToken.slots()[0], Work.LABEL);
        Cryptoki.C_Finalize(null).orThrow();
        // Afterwards every class is loaded and most methods are compiled.
        work(calls / 10);
        new Vitals();

        System.out.printf("%8s %10s %14s %14s %12s%n", "", "calls", "heap, KiB", "JNI references", "threads");
        Vitals first = null;
        Vitals last = null;
        long done = 0;
        for (int tenth = 1; tenth <= 10; tenth++) {
            done += work(calls / 10);
            last = new Vitals();
            first = first == null ? last : first;
            System.out.printf(Locale.ROOT, "%7d. %10d %14.1f %14d %12d%n", tenth, done, last.heap / 1024.0,
                    last.allReferences(), last.threads);
        }
        long grown = last.heap - first.heap;
        long kept = last.allReferences() - first.allReferences();
        boolean isFlat = grown <= HEAP_SLACK && kept <= REFERENCE_SLACK && last.threads <= first.threads;
        System.out.printf(Locale.ROOT, "%s: %+.1f KiB (%.2f bytes a call), %+d references between the first and the"
                + " last tenth; %.0f KiB and %d references are allowed%n", isFlat ? "flat" : "GROWN", grown / 1024.0,
                grown / (0.9 * calls), kept, HEAP_SLACK / 1024.0, REFERENCE_SLACK);
        return isFlat;
    }

    private long work(long calls) throws Exception {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking()).orThrow();
        try {
            Work work = new Work(FreshToken.slots()[0], isReal, true, seed++);
            while (work.calls() < calls) {
                work.round();
            }
            return work.calls();
        } finally {
            Cryptoki.C_Finalize(null).orThrow();
        }
    }
}
