// Makes a given number of mixed calls, and looks at memory, references and threads after each tenth of them. Fails if
// they have grown since the first.
//
// Every tenth ends with C_Finalize, because only then the soft token frees what it keeps of destroyed objects.
// What is still allocated afterwards has leaked.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.Cryptoki;

import token.FreshToken;

final class Soak {
    private Soak() {
    }

    public static void main(String[] arguments) throws Exception {
        boolean isReal = arguments[0].equals("softtoken");
        long calls = (long) (1e6 * Double.parseDouble(arguments[1]));
        Cryptoki.C_Initialize(null).orThrow();
        FreshToken.initialise(FreshToken.slots()[0], Work.LABEL);
        Cryptoki.C_Finalize(null).orThrow();
        // Afterwards every class is loaded and most methods are compiled.
        work(calls / 10, isReal, 0);
        new Vitals();

        Vitals first = null;
        for (int tenth = 1; tenth <= 10; tenth++) {
            work(calls / 10, isReal, tenth);
            Vitals now = new Vitals();
            first = tenth == 1 ? now : first;
            // The JVM's own memory varies by some ten KiB, because block sizes are rounded and some tables grow once.
            // It has references of its own, for example for waiting compilations.
            now.expectNoGrowthSince(first, 64, 8);
        }
    }

    private static void work(long calls, boolean isReal, int seed) throws Exception {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking()).orThrow();
        try {
            Work work = new Work(FreshToken.slots()[0], isReal, true, seed);
            while (work.calls() < calls) {
                work.round();
            }
        } finally {
            Cryptoki.C_Finalize(null).orThrow();
        }
    }
}
