// A mechanism and its parameter. The constructors set the right length of the parameter.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

/**
 * A mechanism with its parameter (PKCS#11 v2.20, 9.5).
 *
 * <p>The parameter is null, an object of a class in {@link halvorn.zerlin.params}, a {@link CK_VERSION}, or a
 * bare value of a class that {@link CK_ATTRIBUTE} lists: for example a {@code byte[]} for an initialisation
 * vector, a {@code Long} for a length, a {@link CK_OBJECT_HANDLE} for a second key. Do not change the object
 * while a native works with it.
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.AES_CBC_PAD, iv)
 * new CK_MECHANISM(CKM.RSA_PKCS_OAEP, new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null))
 * }</pre>
 *
 * <p>The native memory of a parameter of a mechanism of type 0, {@code CKM_RSA_PKCS_KEY_PAIR_GEN}, is never
 * released: deliberate. That mechanism has no parameter, so leave {@link #pParameter} null.
 */
public class CK_MECHANISM {
    /** The type of the mechanism; null reaches the library as {@code CK_UNAVAILABLE_INFORMATION}. */
    public CK_MECHANISM_TYPE mechanism;
    /**
     * The parameter, or null for none. Do not assign an {@code int[]}: only its 1st, 3rd, 5th ... element
     * reach the library, followed by zeros: deliberate. The constructors replace an {@code int[]} by a
     * {@code long[]} with the same numbers.
     */
    public Object pParameter;
    /**
     * The length of the native form of the parameter in bytes. Let the constructors set it. A wrong length of
     * an object of a parameter class, a {@link CK_VERSION} or a {@code Long} aborts the process when the
     * native ends. A length that is too great for a {@code byte[]} or another bare value is not checked:
     * behind the parameter the library finds zeroes, up to 64 KiB, and crashes behind those.
     */
    public long parameterLen;

    /** Creates a mechanism of type 0, {@code CKM_RSA_PKCS_KEY_PAIR_GEN}, without a parameter. */
    public CK_MECHANISM() {
        this(0);
    }

    /**
     * Creates a mechanism without a parameter.
     *
     * @param type a value of {@link halvorn.zerlin.constants.CKM CKM}
     */
    public CK_MECHANISM(long type) {
        this(type, null);
    }

    /**
     * Creates a mechanism with a parameter and sets {@link #parameterLen} to the length of its native form.
     *
     * @param type      a value of {@link halvorn.zerlin.constants.CKM CKM}
     * @param parameter the parameter, kept without a copy (an {@code int[]} as a {@code long[]} with the same
     *                  numbers), or null
     * @throws UnsupportedOperationException if the class of the parameter has no native form
     * @throws UnsatisfiedLinkError if the native library cannot be loaded; it is needed unless the parameter
     *         is null or a bare value
     */
    public CK_MECHANISM(long type, Object parameter) {
        this(new CK_MECHANISM_TYPE(type), parameter);
    }

    /**
     * Creates a mechanism with a parameter and sets {@link #parameterLen} to the length of its native form.
     *
     * @param type      the type, kept without a copy
     * @param parameter the parameter, kept without a copy (an {@code int[]} as a {@code long[]} with the same
     *                  numbers), or null
     * @throws UnsupportedOperationException if the class of the parameter has no native form
     * @throws UnsatisfiedLinkError if the native library cannot be loaded; it is needed unless the parameter
     *         is null or a bare value
     */
    public CK_MECHANISM(CK_MECHANISM_TYPE type, Object parameter) {
        mechanism = type;
        pParameter = NativeValue.withoutIntArray(parameter);
        parameterLen = NativeValue.length(parameter);
        if (parameterLen == NativeValue.UNKNOWN) {
            NativeLibrary.load();
            parameterLen = getMechanismParameterSize(parameter);
        }
    }

    /**
     * Returns the size of the native form of a parameter. This class does not load the native library by
     * itself: call {@link NativeLibrary#load} before, unless {@link Cryptoki} was used.
     *
     * @param parameter an object of a parameter class, {@link CK_VERSION}, {@link CK_OBJECT_HANDLE},
     *                  {@code Long}, {@code Boolean}, {@code byte[]}, {@code char[]}, {@code String}, or null
     * @return the size in bytes, 0 for null; for an array or a {@code String} the length of its native form
     * @throws UnsupportedOperationException {@code "No Conversion from ... to a CK type"} for every other
     *         class, also for some classes that are good parameters ({@code Integer}, {@code CK_BBOOL}):
     *         deliberate; the constructors know the length of those
     * @throws UnsatisfiedLinkError if the native library is not loaded
     */
    public static native long getMechanismParameterSize(Object parameter);

    /**
     * Describes type, parameter and length; of bytes and text, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_MECHANISM[mechanism=" + mechanism + ", pParameter=" + NativeValue.describe(pParameter)
                + ", parameterLen=" + parameterLen + "]";
    }
}
