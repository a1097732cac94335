// PINs: from a file, from a file descriptor, or from the terminal without echo.
package halvorn.zerlin.cli;

import static java.nio.charset.StandardCharsets.UTF_8;

import java.io.*;
import java.nio.file.Files;
import java.util.*;

final class Pins {
    private static final File TERMINAL = new File("/dev/tty");
    private static final List<byte[]> SECRETS = new ArrayList<>();

    /** Remembers a secret, which is wiped at the end of the command, however that ends. */
    static byte[] secret(byte[] bytes) {
        SECRETS.add(bytes);
        return bytes;
    }

    static void wipe() {
        SECRETS.forEach(secret -> Arrays.fill(secret, (byte) 0));
    }

    /** Reads the first line of a file. */
    static byte[] read(String file) throws IOException {
        try (InputStream in = new FileInputStream(file)) {
            return line(in);
        }
    }

    // The buffer is large enough not to leave a smaller one behind.
    private static byte[] line(InputStream in) throws IOException {
        byte[] buffer = secret(new byte[1024]);
        int length = 0;
        for (int b = in.read(); b >= 0 && b != '\n'; b = in.read()) {
            Failure.when(length == buffer.length, Failure.PIN, "The PIN is too long");
            buffer[length++] = (byte) b;
        }
        return secret(Arrays.copyOf(buffer, length > 0 && buffer[length - 1] == '\r' ? length - 1 : length));
    }

    /** Asks for a PIN at the terminal, which standard input need not be. */
    static byte[] ask(String question) throws IOException {
        String before = stty("-g");
        Failure.when(before == null, Failure.PIN,
                "A PIN is needed, and there is no terminal to ask for it: use --pin-file or --pin-fd");
        Thread restore = new Thread(() -> stty(before));
        Runtime.getRuntime().addShutdownHook(restore);
        try {
            stty("-echo");
            return answer(question);
        } finally {
            stty(before);
            Runtime.getRuntime().removeShutdownHook(restore);
            write("\n");
        }
    }

    /** Asks whether to go on; without a terminal, the option must have said so. */
    static void confirm(boolean yes, String question) throws IOException {
        if (yes) {
            return;
        }
        Failure.when(stty("-g") == null, Failure.USAGE, "There is no terminal to ask \"" + question + "\": use --yes");
        String answer = new String(answer(question + " [y/N] "), UTF_8).trim();
        Failure.when(!answer.matches("(?i)y|yes"), Failure.NO, "Nothing was done");
    }

    // What a token has put into its label must not move the cursor.
    private static byte[] answer(String question) throws IOException {
        write(question.replaceAll("\\p{Cntrl}", "?"));
        try (InputStream in = new FileInputStream(TERMINAL)) {
            return line(in);
        }
    }

    private static void write(String text) throws IOException {
        Files.write(TERMINAL.toPath(), text.getBytes(UTF_8));
    }

    // Sets the terminal; returns what stty prints, or null if there is no terminal.
    private static String stty(String argument) {
        try {
            Process process = new ProcessBuilder("stty", argument).redirectInput(TERMINAL)
                    .redirectError(new File("/dev/null")).start();
            String line = new BufferedReader(new InputStreamReader(process.getInputStream(), UTF_8)).readLine();
            return process.waitFor() == 0 ? String.valueOf(line) : null;
        } catch (IOException | InterruptedException noTerminal) {
            return null;
        }
    }
}
