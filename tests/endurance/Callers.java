// Short-lived native threads call Java's locking callbacks at the same time as Java threads, and the library is
// initialised and finalised many times.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

public final class Callers {
    static void work(int cycles, int threads) throws Exception {
        for (int i = 0; i < cycles; i++) {
            begin();
            Soak.together(threads, 0, Callers::seed);
            end();
        }
    }

    /** Reload calls this, and end, in a class loader of its own. */
    public static void begin() {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking()).orThrow();
        expect(Cryptoki.C_Initialize(null).is(CKR.CRYPTOKI_ALREADY_INITIALIZED), "initialised");
    }

    public static void end() {
        seed();
        Cryptoki.C_Finalize(null).orThrow();
        expect(Cryptoki.C_Finalize(null).is(CKR.CRYPTOKI_NOT_INITIALIZED), "finalised");
    }

    private static Void seed() {
        Cryptoki.C_SeedRandom(new CK_SESSION_HANDLE(), new byte[3], 3).orThrow(); // in three native threads, too
        return null;
    }

    static void expect(boolean condition, Object what) {
        if (!condition) {
            throw new IllegalStateException("Not as expected: " + what);
        }
    }
}
