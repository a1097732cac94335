// Eight threads, each with a session of its own, work at the same time and check their results, with Java's locks
// and with those of the operating system.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.*;

import token.FreshToken;

final class Threads {
    static final int THREADS = 8;

    private Threads() {
    }

    public static void main(String[] arguments) throws Exception {
        int rounds = Integer.parseInt(arguments[1]);
        Locking locking = new Locking();
        System.out.println(work(rounds, locking.arguments) + " calls with Java's locks");
        locking.expectBalanced();
        System.out.println(work(rounds, CK_C_INITIALIZE_ARGS.osLocking()) + " calls with the system's locks");
    }

    private static long work(int rounds, CK_C_INITIALIZE_ARGS arguments) throws Exception {
        Cryptoki.C_Initialize(arguments).orThrow();
        long slot = FreshToken.slots()[0];
        FreshToken.initialise(slot, Work.LABEL);
        CK_SESSION_HANDLE session = FreshToken.openSession(slot, FreshToken.READ_WRITE);
        List<Callable<Long>> works = new ArrayList<>();
        for (int i = 0; i < THREADS; i++) {
            Work work = new Work(slot, true, false, i);
            works.add(() -> {
                for (int round = 0; round < rounds; round++) {
                    work.round();
                }
                return work.calls();
            });
        }
        long calls;
        try {
            calls = together(works);
        } finally {
            Cryptoki.C_Finalize(null).orThrow();
        }
        CK_RV[] answers = {Cryptoki.C_GetInfo(new CK_INFO()), Cryptoki.C_CloseSession(session),
            Cryptoki.C_GetSlotList(true, null, new LongRef()), Cryptoki.C_Finalize(null),
            Cryptoki.C_DigestInit(session, new CK_MECHANISM(CKM.SHA256)),
            Cryptoki.C_GenerateRandom(session, new byte[8], 8)};
        for (CK_RV answer : answers) {
            if (!answer.is(CKR.CRYPTOKI_NOT_INITIALIZED)) {
                throw new IllegalStateException("After C_Finalize: " + answer);
            }
        }
        return calls;
    }

    /** Runs each on its own thread and returns the sum of the results. */
    static long together(List<Callable<Long>> works) throws Exception {
        ExecutorService executor = Executors.newFixedThreadPool(works.size());
        long sum = 0;
        try {
            for (Future<Long> done : executor.invokeAll(works)) {
                sum += done.get();
            }
        } finally {
            executor.shutdown();
            executor.awaitTermination(1, TimeUnit.MINUTES);
        }
        return sum;
    }
}
