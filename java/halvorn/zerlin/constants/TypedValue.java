// What the typed constant classes have in common: a PKCS#11 value that knows its own name.
package halvorn.zerlin.constants;

import java.lang.reflect.Field;
import java.lang.reflect.Modifier;
import java.util.HashMap;
import java.util.Map;
import java.util.concurrent.ConcurrentHashMap;

/**
 * A mutable holder of one PKCS#11 value of a certain kind: a return value, a mechanism type, a key type and
 * so on. The plain constants are {@code long}s ({@link CKM}, {@link CKA}, ...). An object of a subclass
 * passes one of them to a native or back.
 *
 * <p>The natives write into the objects that they are given. So create a new object for each use, do not
 * share one as a constant, and do not use it as a key of a hash map while a native may still change it.
 *
 * <p>The constants are unsigned 32-bit numbers, also in a 64-bit JVM and also those of a vendor.
 */
public abstract class TypedValue {
    private static final Map<Class<?>, Map<Long, String>> NAMES = new ConcurrentHashMap<>();

    /** The value. In a 32-bit JVM only the low 32 bits reach the library. */
    public long m_value;

    TypedValue() {
    }

    TypedValue(long value) {
        m_value = value;
    }

    // A method, not a field: the natives create these objects without running a constructor.
    abstract Class<?> constants();

    /**
     * Returns the value.
     *
     * @return the value
     */
    public long getValue() {
        return m_value;
    }

    /**
     * Changes the value. The natives call this method, so a method that overrides it must change the value
     * too.
     *
     * @param value the new value
     */
    public void setValue(long value) {
        m_value = value;
    }

    /**
     * Compares kind and value.
     *
     * @param other the object to compare with
     * @return true if the other object has the same class and the same value
     */
    @Override
    public boolean equals(Object other) {
        return other != null && getClass() == other.getClass() && m_value == ((TypedValue) other).m_value;
    }

    /**
     * Returns the hash code that belongs to {@link #equals}.
     *
     * @return the hash code of the value
     */
    @Override
    public int hashCode() {
        return Long.hashCode(m_value);
    }

    /**
     * Names the value; works without the native library.
     *
     * @return for example {@code "CKR_BUFFER_TOO_SMALL (0x150)"}, or {@code "0x80001234"} for a value without
     *         a name
     */
    @Override
    public String toString() {
        String name = NAMES.computeIfAbsent(constants(), TypedValue::namesIn).get(m_value);
        String hex = "0x" + Long.toHexString(m_value);
        return name == null ? hex : name + " (" + hex + ")";
    }

    private static Map<Long, String> namesIn(Class<?> constants) {
        Map<Long, String> names = new HashMap<>();
        for (Field field : constants.getDeclaredFields()) {
            int wanted = Modifier.PUBLIC | Modifier.STATIC;
            if (field.getType() == long.class && (field.getModifiers() & wanted) == wanted) {
                try {
                    names.putIfAbsent(field.getLong(null), constants.getSimpleName() + "_" + field.getName());
                } catch (IllegalAccessException e) {
                    // A value whose field cannot be read only has no name.
                }
            }
        }
        return names;
    }
}
