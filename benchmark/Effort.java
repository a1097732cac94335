// How much is measured: the rounds, the batches that each timing takes in a round, and their durations.
// Batches are short, so that most of them are undisturbed; the median ignores the others.

import java.util.List;

record Effort(int rounds, int batches, long batchNanos, long warmUpNanos) {
    private static final Effort FULL = new Effort(9, 25, 500_000, 250_000_000);
    private static final Effort QUICK = new Effort(5, 8, 500_000, 60_000_000);

    static Effort of(String[] arguments) {
        return List.of(arguments).contains("--quick") ? QUICK : FULL;
    }

    /**
     * Times all rows in one run. Within a row the timings take turns, batch by batch, so that a disturbance of
     * the machine affects all of them. Every round starts at another row. The first round does not count.
     */
    void run(List<List<Timing>> rows) throws Exception {
        for (List<Timing> row : rows) {
            for (Timing timing : row) {
                timing.warmUp(warmUpNanos, batchNanos);
            }
        }
        for (int round = 0; round <= rounds; round++) {
            for (int i = 0; i < rows.size(); i++) {
                List<Timing> row = rows.get((round + i) % rows.size());
                for (int turn = 0; turn < batches * row.size(); turn++) {
                    row.get((round + turn) % row.size()).batch(round > 0);
                }
            }
        }
    }
}
