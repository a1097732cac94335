// How long one call takes: batches of about the same duration, and the median over all of them. The clock is
// the thread's own, which stops while other programs use the processor.

import java.lang.management.ManagementFactory;
import java.lang.management.ThreadMXBean;
import java.util.ArrayList;
import java.util.Collections;
import java.util.List;

final class Timing {
    private static final ThreadMXBean CLOCK = ManagementFactory.getThreadMXBean();

    private final Call call;
    private final List<Double> samples = new ArrayList<>();
    private int batchSize = 1;

    Timing(Call call) {
        this.call = call;
    }

    /** Runs the call until the JVM has compiled it, then sizes the batches. */
    void warmUp(long warmUpNanos, long batchNanos) throws Exception {
        long end = System.nanoTime() + warmUpNanos;
        long last = 1;
        while (System.nanoTime() < end) {
            last = Math.max(1, time(call, batchSize));
            if (last < batchNanos / 2) {
                batchSize *= 2;
            }
        }
        batchSize = (int) Math.max(1, batchSize * batchNanos / last);
    }

    void batch(boolean counts) throws Exception {
        double each = (double) time(call, batchSize) / batchSize;
        if (counts) {
            samples.add(each);
        }
    }

    /** Nanoseconds for one call. */
    double median() {
        return median(samples);
    }

    static long time(Call call, int times) throws Exception {
        long start = CLOCK.getCurrentThreadCpuTime();
        for (int i = 0; i < times; i++) {
            call.run();
        }
        return CLOCK.getCurrentThreadCpuTime() - start;
    }

    static double median(List<Double> values) {
        List<Double> sorted = new ArrayList<>(values);
        Collections.sort(sorted);
        return (sorted.get((sorted.size() - 1) / 2) + sorted.get(sorted.size() / 2)) / 2;
    }
}
