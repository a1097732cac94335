// Input and output of commands: files or pipes, with a progress bar on the terminal.
package halvorn.zerlin.cli;

import java.io.*;
import java.nio.file.*;
import java.util.*;
import java.util.concurrent.Callable;

final class Streams {
    /** The most that is read in one piece. */
    static final int SHORT = 1 << 16;

    static InputStream in(String file) throws IOException {
        boolean isFile = file != null && !file.equals("-");
        InputStream in = isFile ? Files.newInputStream(Paths.get(file)) : new FileInputStream(FileDescriptor.in);
        return new Progress(in, isFile ? Files.size(Paths.get(file)) : 0);
    }

    /** Reads all of a short file. */
    static byte[] read(String file) throws IOException {
        try (InputStream in = in(file)) {
            return read(in);
        }
    }

    /** Reads all of a short input. */
    static byte[] read(InputStream in) throws IOException {
        byte[] all = new byte[SHORT + 1];
        int length = 0;
        for (int n = in.read(all); n > 0; n = in.read(all, length, all.length - length)) {
            length += n;
        }
        Failure.when(length > SHORT, Failure.INPUT, "The input has more than " + SHORT + " bytes");
        byte[] input = Arrays.copyOf(all, length);
        Arrays.fill(all, (byte) 0);
        return input;
    }

    /** Writes a file, which gets its name when all is written, or standard output. */
    static void write(String file, TokenOptions.Work<OutputStream> work) throws Exception {
        Path target = file == null || file.equals("-") ? null : Paths.get(file).toAbsolutePath();
        if (target == null || Files.exists(target) && !Files.isRegularFile(target)) { // a pipe, or such as /dev/null
            try (OutputStream out = target != null ? Files.newOutputStream(target)
                    : new BufferedOutputStream(new FileOutputStream(FileDescriptor.out), SHORT)) {
                work.run(out);
            }
            return;
        }
        Path part = Files.createTempFile(target.getParent(), target.getFileName().toString(), ".part");
        try {
            try (OutputStream out = Files.newOutputStream(part)) {
                work.run(out);
            }
            Files.move(part, target, StandardCopyOption.REPLACE_EXISTING);
        } finally {
            Files.deleteIfExists(part);
        }
    }

    /** Shows the seconds on the terminal while something works. */
    static <T> T timed(String text, Callable<T> work) throws Exception {
        Thread clock = new Thread(() -> {
            try {
                for (int seconds = 0; Output.isTerminal(2); seconds++) {
                    System.err.print("\r" + text + ", " + seconds + " s\033[K");
                    Thread.sleep(1000);
                }
            } catch (InterruptedException done) {
                System.err.print("\r\033[K");
            }
        });
        clock.setDaemon(true);
        clock.start();
        try {
            return work.call();
        } finally {
            clock.interrupt();
            clock.join();
        }
    }

    /** Shows how much was read, once it is more than a MiB. */
    private static final class Progress extends FilterInputStream {
        private static final int MIB = 1 << 20;
        private static final String BAR = "##############################";
        private final boolean isShown = Output.isTerminal(2);
        private final long start = System.nanoTime();
        private final long size;
        private long done;
        private long last = start;

        Progress(InputStream in, long size) {
            super(in);
            this.size = size;
        }

        @Override
        public int read(byte[] bytes, int from, int length) throws IOException {
            int read = super.read(bytes, from, length);
            done += Math.max(0, read);
            long now = System.nanoTime();
            if (read < 0) {
                clear();
            } else if (isShown && done > MIB && now - last > 100_000_000) {
                last = now;
                double rate = done * 1e9 / MIB / (now - start);
                int left = size < MIB ? 30 : (int) Math.max(0, 30 - 30 * done / size);
                String bar = size < MIB ? "" : String.format("[%-30s] ", BAR.substring(left));
                System.err.printf(Locale.ROOT, "\r%s%d MiB, %.0f MiB/s\033[K", bar, done / MIB, rate);
            }
            return read;
        }

        @Override
        public void close() throws IOException {
            clear();
            super.close();
        }

        private void clear() {
            if (last != start) {
                System.err.print("\r\033[K");
                last = start;
            }
        }
    }
}
