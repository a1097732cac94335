// Constants whose value depends on the width of the native CK_ULONG.
package halvorn.zerlin.constants;

import halvorn.zerlin.NativeLibrary;

/**
 * The constants of the {@code CK_} prefix, asked of the native library, which the first use of this class
 * loads.
 */
public final class CK {
    static {
        NativeLibrary.load();
    }

    /**
     * {@code CK_UNAVAILABLE_INFORMATION}: the length of an attribute that cannot be read, and a count of
     * {@link halvorn.zerlin.CK_TOKEN_INFO} that the token does not tell. 4294967295, never -1.
     */
    public static final long UNAVAILABLE_INFORMATION = GetConstantValue("UNAVAILABLE_INFORMATION");

    private CK() {
    }

    /**
     * Looks a constant up by its name without the prefix. The only name known is
     * {@code "UNAVAILABLE_INFORMATION"}.
     *
     * @param name the name, case-sensitive, without {@code CK_}
     * @return the value, 0 to 4294967295
     * @throws UnsupportedOperationException {@code "Constant ... not recognised"} for every other name
     * @throws NullPointerException for null
     */
    public static native long GetConstantValue(String name);
}
