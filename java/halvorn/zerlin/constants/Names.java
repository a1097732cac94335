// The names of the constants of each class and their values, read from the class itself once.
package halvorn.zerlin.constants;

import java.lang.reflect.Field;
import java.lang.reflect.Modifier;
import java.util.Comparator;
import java.util.HashMap;
import java.util.Locale;
import java.util.Map;
import java.util.concurrent.ConcurrentHashMap;

final class Names {
    private static final Map<Class<?>, Names> ALL = new ConcurrentHashMap<>();

    private final String prefix;
    private final Map<String, Long> values = new HashMap<>();
    private final Map<Long, String> names = new HashMap<>();

    private Names(Class<?> constants) {
        prefix = constants.getSimpleName() + "_";
        for (Field field : constants.getDeclaredFields()) {
            int required = Modifier.PUBLIC | Modifier.STATIC;
            if (field.getType() == long.class && (field.getModifiers() & required) == required) {
                try {
                    values.put(prefix + field.getName(), field.getLong(null));
                    names.putIfAbsent(field.getLong(null), prefix + field.getName());
                } catch (IllegalAccessException e) {
                    // A value whose field cannot be read only has no name.
                }
            }
        }
    }

    private static Names in(Class<?> constants) {
        return ALL.computeIfAbsent(constants, Names::new);
    }

    /** Returns the first name that the class declares for the value, with its prefix, or null. */
    static String nameOf(Class<?> constants, long value) {
        return in(constants).names.get(value);
    }

    /** Returns the value of a name, with or without its prefix. */
    static long of(Class<?> constants, String name) {
        Names in = in(constants);
        String full = name.startsWith(in.prefix) ? name : in.prefix + name;
        Long value = in.values.get(full);
        if (value != null) {
            return value;
        }
        if (name.matches("CK[ACDFGHKMOPRSUZ]_.*") && !name.startsWith(in.prefix)) {
            throw new IllegalArgumentException(name + " does not begin with " + in.prefix + ": look it up with "
                    + name.substring(0, 3) + ".of");
        }
        String nearest = in.nearest(full);
        throw new IllegalArgumentException("There is no " + full + "; "
                + (nearest == null ? "see the constants of " + constants.getName() : "the nearest name is " + nearest));
    }

    private String nearest(String name) {
        int most = 1 + (name.length() - prefix.length()) / 3;
        return values.keySet().stream().filter(other -> distance(name, other, most) <= most)
                .min(Comparator.<String>comparingInt(other -> distance(name, other, most))
                        .thenComparing(Comparator.naturalOrder()))
                .orElse(null);
    }

    // How many characters must be changed, added or removed, whatever the case; above the limit, any greater number.
    private static int distance(String from, String to, int limit) {
        if (Math.abs(from.length() - to.length()) > limit) {
            return limit + 1;
        }
        String upper = from.toUpperCase(Locale.ROOT);
        int[] row = new int[to.length() + 1];
        for (int j = 0; j < row.length; j++) {
            row[j] = j;
        }
        for (int i = 1; i <= upper.length(); i++) {
            int diagonal = row[0];
            row[0] = i;
            for (int j = 1; j < row.length; j++) {
                int replaced = diagonal + (upper.charAt(i - 1) == to.charAt(j - 1) ? 0 : 1);
                diagonal = row[j];
                row[j] = Math.min(replaced, 1 + Math.min(row[j - 1], diagonal));
            }
        }
        return row[to.length()];
    }
}
