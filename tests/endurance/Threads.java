// Eight threads, each with a session of its own, work at the same time and check their results, with Java's locks
// and with those of the operating system.

import halvorn.zerlin.*;

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
        System.out.println(work(rounds, CK_C_INITIALIZE_ARGS.javaLocking()) + " calls with Java's locks");
        System.out.println(work(rounds, CK_C_INITIALIZE_ARGS.osLocking()) + " calls with the system's locks");
    }

    private static long work(int rounds, CK_C_INITIALIZE_ARGS arguments) throws Exception {
        Cryptoki.C_Initialize(arguments).orThrow();
        long slot = FreshToken.slots()[0];
        FreshToken.initialise(slot, Work.LABEL);
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
        try {
            return together(works);
        } finally {
            Cryptoki.C_Finalize(null).orThrow();
        }
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
