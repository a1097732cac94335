// The throughput of two threads compared with one, each with a session and arrays of its own: by the wall clock,
// which needs two idle cores, and by the threads' own clocks, which show whether a low figure comes from a busy
// machine or from threads that block each other.

import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.concurrent.atomic.AtomicInteger;
import java.util.function.Function;

final class TwoThreads {
    private final List<ExecutorService> threads =
            List.of(Executors.newSingleThreadExecutor(), Executors.newSingleThreadExecutor());
    private final List<Call> calls = new ArrayList<>();
    private final List<Sample> alone = new ArrayList<>();
    private final List<Sample> together = new ArrayList<>();
    private int batchSize;

    /** The nanoseconds of a batch. */
    private record Sample(double wall, double own) {
    }

    /** Creates the call twice, each in the thread that is to run it. */
    TwoThreads(Callable<Call> maker) throws Exception {
        for (ExecutorService thread : threads) {
            calls.add(thread.submit(maker).get());
        }
    }

    /** Measures all of them in turn, and ends their threads. */
    static void run(List<TwoThreads> all, Effort effort) throws Exception {
        for (TwoThreads pair : all) {
            pair.warmUp(effort);
        }
        for (int i = 0; i < effort.rounds() * effort.batches(); i++) {
            for (TwoThreads pair : all) {
                pair.alone.add(pair.time(1));
                pair.together.add(pair.time(2));
            }
        }
        for (TwoThreads pair : all) {
            pair.threads.forEach(ExecutorService::shutdown);
        }
    }

    double speedUp() {
        return speedUp(Sample::wall);
    }

    double speedUpByOwnTime() {
        return speedUp(Sample::own);
    }

    private double speedUp(Function<Sample, Double> clock) {
        return 2 * Timing.median(alone.stream().map(clock).toList())
                / Timing.median(together.stream().map(clock).toList());
    }

    private void warmUp(Effort effort) throws Exception {
        batchSize = 1000;
        Sample last = null;
        long end = System.nanoTime() + effort.warmUpNanos();
        while (System.nanoTime() < end) {
            last = time(2);
        }
        // Batches are longer than elsewhere, because two threads never start and end at exactly the same time.
        batchSize = (int) (8 * effort.batchNanos() * batchSize / last.own);
    }

    // Starts that many threads at once and returns the batch of the slowest.
    private Sample time(int count) throws Exception {
        AtomicInteger missing = new AtomicInteger(count);
        List<Future<Sample>> samples = new ArrayList<>();
        for (int i = 0; i < count; i++) {
            Call call = calls.get(i);
            samples.add(threads.get(i).submit(() -> {
                missing.decrementAndGet();
                while (missing.get() > 0) {
                    Thread.onSpinWait();
                }
                long wall = System.nanoTime();
                double own = Timing.time(call, batchSize);
                return new Sample(System.nanoTime() - wall, own);
            }));
        }
        double wall = 0;
        double own = 0;
        for (Future<Sample> sample : samples) {
            wall = Math.max(wall, sample.get().wall);
            own = Math.max(own, sample.get().own);
        }
        return new Sample(wall, own);
    }
}
