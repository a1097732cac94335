// Which Java values have a native form, that is, bytes that the Cryptoki library receives for them, and
// how long that form is.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.TypedValue;

final class NativeValue {
    static final long UNKNOWN = -1;

    // The width of a CK_ULONG in bytes: the library has the JVM's own width.
    static final int ULONG_SIZE = isJvm64Bit() ? 8 : 4;
    private static final int DATE_SIZE = 8;

    private NativeValue() {
    }

    private static boolean isJvm64Bit() {
        String model = System.getProperty("sun.arch.data.model", System.getProperty("os.arch", ""));
        return model.contains("64");
    }

    // The length of the native form in bytes; UNKNOWN for a class that is not a bare value.
    static long length(Object value) {
        if (value == null) {
            return 0;
        }
        if (value instanceof byte[]) {
            return ((byte[]) value).length;
        }
        if (value instanceof String) {
            return modifiedUtf8Length((String) value);
        }
        if (value instanceof Long || value instanceof Integer || value instanceof TypedValue
                || value instanceof CK_OBJECT_HANDLE || value instanceof CK_SESSION_HANDLE) {
            return ULONG_SIZE;
        }
        if (value instanceof CK_BBOOL || value instanceof Boolean || value instanceof Byte) {
            return 1;
        }
        if (value instanceof CK_DATE) {
            return DATE_SIZE;
        }
        if (value instanceof CK_MECHANISM_TYPE[]) {
            return (long) ULONG_SIZE * ((CK_MECHANISM_TYPE[]) value).length;
        }
        if (value instanceof long[]) {
            return (long) ULONG_SIZE * ((long[]) value).length;
        }
        if (value instanceof int[]) {
            return (long) ULONG_SIZE * ((int[]) value).length;
        }
        if (value instanceof boolean[]) {
            return ((boolean[]) value).length;
        }
        if (value instanceof char[]) {
            return ((char[]) value).length;
        }
        return UNKNOWN;
    }

    // The object that an attribute keeps: the value itself, unless it is an int[] or a shared box.
    static Object forAttribute(Object value) {
        return withoutSharedBox(withoutIntArray(value));
    }

    // Replaces a box that valueOf returns to everybody by a new one with the same value: what a native writes
    // into a shared box, it changes for the whole JVM.
    @SuppressWarnings({"deprecation", "removal"}) // valueOf would return the shared box again
    private static Object withoutSharedBox(Object value) {
        if (value == Boolean.TRUE || value == Boolean.FALSE) {
            return new Boolean((Boolean) value);
        }
        if (value instanceof Long && value == Long.valueOf((Long) value)) {
            return new Long((Long) value);
        }
        if (value instanceof Integer && value == Integer.valueOf((Integer) value)) {
            return new Integer((Integer) value);
        }
        if (value instanceof Byte && value == Byte.valueOf((Byte) value)) {
            return new Byte((Byte) value);
        }
        return value;
    }

    // Replaces an int[] by a long[] with the same numbers. Of an int[] the natives pass only the 1st, 3rd,
    // 5th ... element.
    static Object withoutIntArray(Object value) {
        if (!(value instanceof int[])) {
            return value;
        }
        int[] ints = (int[]) value;
        long[] longs = new long[ints.length];
        for (int i = 0; i < ints.length; i++) {
            longs[i] = ints[i];
        }
        return longs;
    }

    // Describes a value in full, but a string or an array, which may be secret, only by its length.
    static String describe(Object value) {
        if (value instanceof String || value != null && value.getClass().isArray()) {
            return value.getClass().getSimpleName() + " of " + length(value) + " bytes";
        }
        return String.valueOf(value);
    }

    // The length in modified UTF-8, the form in which the JVM passes strings to native code: NUL takes two
    // bytes, and each half of a surrogate pair takes three.
    private static long modifiedUtf8Length(String text) {
        long length = 0;
        for (int i = 0; i < text.length(); i++) {
            char c = text.charAt(i);
            length += c != 0 && c < 0x80 ? 1 : c < 0x800 ? 2 : 3;
        }
        return length;
    }
}
