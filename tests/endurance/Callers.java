// Short-lived native threads call Java's locking callbacks at the same time as Java threads, and the library is
// initialised and finalised thousands of times. No thread, reference or memory may be left.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.CKR;
import halvorn.zerlin.constants.CK_RV;

import java.util.Collections;
import java.util.concurrent.Callable;

final class Callers {
    private static final CK_SESSION_HANDLE SESSION = new CK_SESSION_HANDLE();
    private static final int NATIVE_THREADS = 3; // for each Java thread

    private Callers() {
    }

    public static void main(String[] arguments) throws Exception {
        int cycles = Integer.parseInt(arguments[1]);
        cycle(cycles / 10);
        Vitals before = new Vitals();
        cycle(cycles);
        new Vitals().expectNoGrowthSince(before, 32, 8);
    }

    private static void cycle(int cycles) throws Exception {
        Object[] ways = {CK_C_INITIALIZE_ARGS.javaLocking(), CK_C_INITIALIZE_ARGS.osLocking(), null};
        for (int i = 0; i < cycles; i++) {
            Cryptoki.C_Initialize(ways[i % ways.length]).orThrow();
            expect(Cryptoki.C_Initialize(ways[i % ways.length]).is(CKR.CRYPTOKI_ALREADY_INITIALIZED), "twice");
            Cryptoki.C_GetInfo(new CK_INFO()).orThrow();
            if (i % 60 == 0) {
                checkConcurrentCallbacks();
            }
            Cryptoki.C_Finalize(null).orThrow();
            expectNotInitialized(Cryptoki.C_GetInfo(new CK_INFO()));
            expectNotInitialized(seed());
            expectNotInitialized(Cryptoki.C_Finalize(null));
        }
    }

    private static void checkConcurrentCallbacks() throws Exception {
        LongRef turns = new LongRef();
        Cryptoki.C_GetObjectSize(SESSION, null, turns).orThrow();
        long before = turns.value;
        Callable<Long> twice = () -> {
            seed().orThrow();
            seed().orThrow();
            return 2L;
        };
        long seeds = Threads.together(Collections.nCopies(Threads.THREADS, twice));
        Cryptoki.C_GetObjectSize(SESSION, null, turns).orThrow();
        expect(turns.value - before == seeds * (NATIVE_THREADS + 1), "two threads held one mutex");
    }

    private static CK_RV seed() {
        return Cryptoki.C_SeedRandom(SESSION, new byte[NATIVE_THREADS], NATIVE_THREADS);
    }

    private static void expectNotInitialized(CK_RV answer) {
        expect(answer.is(CKR.CRYPTOKI_NOT_INITIALIZED), "after C_Finalize: " + answer);
    }

    private static void expect(boolean condition, String what) {
        if (!condition) {
            throw new IllegalStateException(what);
        }
    }
}
