// Constants whose value depends on the size of the native type CK_ULONG.
package halvorn.zerlin.constants;

import halvorn.zerlin.NativeLibrary;

/**
 * The constants with the prefix {@code CK_}. Their values come from the native library, which the first use
 * of this class loads.
 */
public final class CK {
    static {
        NativeLibrary.load();
    }

    /**
     * {@code CK_UNAVAILABLE_INFORMATION}: the length of an attribute that cannot be read, and a count in
     * {@link halvorn.zerlin.CK_TOKEN_INFO} that the token does not report. It is a CK_ULONG of all ones:
     * 4294967295 in a 32-bit JVM, -1 in a 64-bit one.
     */
    public static final long UNAVAILABLE_INFORMATION = GetConstantValue("UNAVAILABLE_INFORMATION");

    private CK() {
    }

    /**
     * Returns the value of a constant. The only known name is {@code "UNAVAILABLE_INFORMATION"}.
     *
     * @param name the name without {@code CK_}, case-sensitive; must not be null
     * @return the value
     * @throws UnsupportedOperationException {@code "Constant ... not recognised"} for every other name
     * @throws NullPointerException if the name is null
     */
    public static native long GetConstantValue(String name);
}
