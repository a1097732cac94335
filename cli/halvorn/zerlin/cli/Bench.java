// How many signatures a second a token makes.
package halvorn.zerlin.cli;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.CKO;

import picocli.CommandLine.*;

import java.io.ByteArrayInputStream;
import java.util.*;
import java.util.concurrent.*;
import java.util.concurrent.atomic.LongAdder;

@Command(name = "bench", description = "Measure how many signatures a second the token makes with a key.",
        footer = {"", "Example: zerlin bench invoices --threads 4 --pin-file pin"})
final class Bench implements Callable<Integer> {
    @Mixin private TokenOptions options;
    @Mixin private MechanismOptions mechanism;
    @Mixin private KeyCommands.ObjectName key;

    @Option(names = "--threads", defaultValue = "4", paramLabel = "N", description = "The most threads: ${DEFAULT-VALUE}.")
    private int threads;

    @Option(names = "--seconds", defaultValue = "3", paramLabel = "N", description = "The time of each row: ${DEFAULT-VALUE}.")
    private int seconds;

    @Override
    public Integer call() throws Exception {
        if (threads < 1 || threads > 1000 || seconds < 1) {
            throw new Failure(Failure.USAGE, "--threads is from 1 to 1000, --seconds at least 1");
        }
        return key.open(options, false, true, (token, handle) -> {
            long type = mechanism.type(token, handle, MechanismOptions.SIGN);
            List<Map<String, Object>> rows = new ArrayList<>();
            for (int count = 1; count < 2 * threads; count *= 2) {
                int n = Math.min(count, threads);
                double rate = Streams.timed(n + " of " + threads + " threads", () -> measure(token, handle, type, n));
                rows.add(Output.record("mechanism", Values.mechanism(type), "threads", n, "signaturesPerSecond",
                        Math.round(rate * 10) / 10.0));
            }
            Output.print(options.json, rows);
            return 0;
        }, CKO.PRIVATE_KEY, CKO.SECRET_KEY);
    }

    private double measure(OpenToken token, CK_OBJECT_HANDLE handle, long type, int n) throws Exception {
        ExecutorService pool = Executors.newFixedThreadPool(n);
        try {
            LongAdder made = new LongAdder();
            long start = System.nanoTime();
            long end = start + seconds * 1_000_000_000L;
            Callable<Void> work = () -> {
                try (OpenToken own = new OpenToken(token.library, token.slot, false)) {
                    for (; System.nanoTime() < end; made.increment()) {
                        CK_MECHANISM how = mechanism.mechanism(type, null);
                        Sign.sign(own, handle, how, new ByteArrayInputStream(new byte[32]), true);
                    }
                }
                return null;
            };
            for (Future<Void> one : pool.invokeAll(Collections.nCopies(n, work))) {
                one.get();
            }
            return made.sum() * 1e9 / (System.nanoTime() - start);
        } catch (java.util.concurrent.ExecutionException e) {
            throw (Exception) e.getCause();
        } finally {
            pool.shutdown();
        }
    }
}
