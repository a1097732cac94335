// The natives of the benchmark's own small library, which measure what no binding can go below.

import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_RV;

final class Floor {
    static {
        System.loadLibrary("floor");
    }

    private Floor() {
    }

    /** The way from Java to native and back. */
    static native void empty();

    /** The return value that every native of the interface makes. */
    static native CK_RV newRv();

    /** The call of {@code setValue} on each element that C_GetMechanismList owes. */
    static native void setValues(CK_MECHANISM_TYPE[] elements, long value);

    /** One copy in and one copy out through fresh native memory. */
    static native void copyInAndOut(byte[] input, byte[] output);
}
