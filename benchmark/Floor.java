// The natives of the benchmark's own small library, which measure the least that any binding must spend.

import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_RV;

final class Floor {
    static {
        System.loadLibrary("floor");
    }

    private Floor() {
    }

    /** The transition from Java to native code and back. */
    static native void empty();

    /** Creates the return value that every native of the interface creates. */
    static native CK_RV newRv();

    /** Calls {@code setValue} on each element, as C_GetMechanismList must. */
    static native void setValues(CK_MECHANISM_TYPE[] elements, long value);

    /** Copies the input to newly allocated native memory, and other native memory to the output. */
    static native void copyInAndOut(byte[] input, byte[] output);
}
