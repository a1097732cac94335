// What a command prints: tables and records for people, JSON for scripts.
package halvorn.zerlin.cli;

import static java.nio.charset.StandardCharsets.UTF_8;

import com.fasterxml.jackson.core.*;
import com.fasterxml.jackson.core.json.JsonWriteFeature;

import java.io.*;
import java.math.BigInteger;
import java.nio.file.*;
import java.util.*;
import java.util.stream.*;

final class Output {
    private static final OutputStream OUT = new FileOutputStream(FileDescriptor.out);

    /** Returns whether one of the standard streams, by its number, is a terminal. */
    static boolean isTerminal(int descriptor) {
        try {
            return Files.readSymbolicLink(Paths.get("/proc/self/fd/" + descriptor)).toString()
                    .matches("/dev/(pts/|tty|console).*");
        } catch (IOException | RuntimeException unknown) {
            return false;
        }
    }

    static boolean hasColours() {
        String no = System.getenv("NO_COLOR");
        return (no == null || no.isEmpty()) && !"dumb".equals(System.getenv("TERM")) && isTerminal(1);
    }

    /** Returns a record of fields: names and values in turn. */
    static Map<String, Object> record(Object... fields) {
        Map<String, Object> record = new LinkedHashMap<>();
        for (int i = 0; i < fields.length; i += 2) {
            record.put((String) fields[i], fields[i + 1]);
        }
        return record;
    }

    static void line(String text) throws IOException {
        OUT.write((text + "\n").getBytes(UTF_8));
    }

    static void print(boolean json, Map<String, Object> record) throws IOException {
        if (json) {
            line(Json.of(record));
            return;
        }
        int width = record.keySet().stream().mapToInt(String::length).max().orElse(0);
        for (Map.Entry<String, Object> field : record.entrySet()) {
            line(bold(String.format("%-" + width + "s", field.getKey())) + "  " + text(field.getValue()));
        }
    }

    static void print(boolean json, List<Map<String, Object>> rows) throws IOException {
        if (json) {
            line(Json.of(rows));
            return;
        }
        if (rows.isEmpty()) {
            return;
        }
        Set<String> names = rows.get(0).keySet();
        String format = names.stream().map(name -> "%-" + rows.stream().mapToInt(row -> text(row.get(name)).length())
                .reduce(name.length(), Math::max) + "s  ").collect(Collectors.joining());
        line(bold(row(format, names.stream().map(name -> name.toUpperCase(Locale.ROOT)))));
        for (Map<String, Object> row : rows) {
            line(row(format, row.values().stream()));
        }
    }

    private static String row(String format, Stream<?> cells) {
        return String.format(format, cells.map(Output::text).toArray()).replaceAll(" +$", "");
    }

    private static String bold(String text) {
        return hasColours() ? "\033[1m" + text + "\033[0m" : text;
    }

    // What a token has put into a label must not move the cursor.
    private static String text(Object value) {
        String text = value == null ? "-" : value instanceof Collection
            ? ((Collection<?>) value).stream().map(String::valueOf).collect(Collectors.joining(",")) : value.toString();
        return text.isEmpty() ? "-" : text.replaceAll("\\p{Cntrl}", "?");
    }

    /** JSON in one line. The library is loaded with this class, that is, only if JSON is printed. */
    static final class Json {
        static String of(Object value) throws IOException {
            StringWriter text = new StringWriter();
            try (JsonGenerator out = JsonFactory.builder().enable(JsonWriteFeature.ESCAPE_NON_ASCII).build()
                    .createGenerator(text)) {
                write(out, value);
            }
            return text.toString();
        }

        private static void write(JsonGenerator out, Object value) throws IOException {
            if (value instanceof Map) {
                out.writeStartObject();
                for (Map.Entry<?, ?> field : ((Map<?, ?>) value).entrySet()) {
                    out.writeFieldName((String) field.getKey());
                    write(out, field.getValue());
                }
                out.writeEndObject();
            } else if (value instanceof Collection) {
                out.writeStartArray();
                for (Object element : (Collection<?>) value) {
                    write(out, element);
                }
                out.writeEndArray();
            } else {
                out.writeObject(value);
            }
        }
    }

    static String hex(byte[] bytes) {
        return IntStream.range(0, bytes.length).mapToObj(i -> String.format("%02x", bytes[i])).collect(Collectors.joining());
    }

    /** Returns the bytes of hexadecimal digits; null of null. */
    static byte[] unhex(String text) {
        if (text == null) {
            return null;
        }
        String digits = text.replaceAll("^0[xX]|[: ]", "");
        Failure.when(!digits.matches("([0-9A-Fa-f]{2})*"), Failure.USAGE, "These are not bytes in hexadecimal digits: " + text);
        byte[] bytes = new BigInteger("1" + digits, 16).toByteArray();
        return Arrays.copyOfRange(bytes, 1, bytes.length);
    }

    /** Returns the names of the flags in the text of a record, such as CK_TOKEN_INFO. */
    static List<String> flags(String text) {
        String flags = text.replaceAll(".*\\bflags=([^,\\]]*).*", "$1");
        return flags.equals("0") || flags.isEmpty() ? new ArrayList<>() : Arrays.asList(flags.split("\\|"));
    }
}
