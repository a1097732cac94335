// A mechanism and its parameter, with constructors that set the parameter's length right.
package halvorn.zerlin;

import halvorn.zerlin.constants.CK_MECHANISM_TYPE;

/**
 * A mechanism with its parameter (PKCS#11 v2.20, 9.5).
 *
 * <p>A parameter is null, an object of a class of {@link halvorn.zerlin.params}, a {@link CK_VERSION}, or a
 * bare value of a class that {@link CK_ATTRIBUTE} lists: a {@code byte[]} for an initialisation vector, a
 * {@code Long} for a length, a {@link CK_OBJECT_HANDLE} for a second key. Do not change the object while a
 * native works with it.
 *
 * <pre>{@code
 * new CK_MECHANISM(CKM.AES_CBC_PAD, iv)
 * new CK_MECHANISM(CKM.RSA_PKCS_OAEP, new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null))
 * }</pre>
 */
public class CK_MECHANISM {
    /** The mechanism's type; a null arrives as 4294967295. */
    public CK_MECHANISM_TYPE mechanism;
    /**
     * The parameter, or null for none. Do not set an {@code int[]}: the native side loses every second element
     * of it.
     */
    public Object pParameter;
    /**
     * The length of the parameter's native form in bytes. Leave it to the constructors: with a wrong value
     * for a parameter class, a {@link CK_VERSION} or a {@code Long}, the process is aborted when the
     * parameter is freed; with one too great for a {@code byte[]} or another bare value, the library reads
     * beyond it.
     */
    public long parameterLen;

    /** Makes a mechanism of type 0, {@code CKM_RSA_PKCS_KEY_PAIR_GEN}, without a parameter. */
    public CK_MECHANISM() {
        this(0);
    }

    /**
     * Makes a mechanism without a parameter.
     *
     * @param type a value of {@link halvorn.zerlin.constants.CKM CKM}
     */
    public CK_MECHANISM(long type) {
        this(type, null);
    }

    /**
     * Makes a mechanism with a parameter and the length that belongs to it.
     *
     * @param type      a value of {@link halvorn.zerlin.constants.CKM CKM}
     * @param parameter the parameter, kept as it is (an {@code int[]} as an equal {@code long[]}), or null
     * @throws UnsupportedOperationException when the parameter's class has no native form
     * @throws UnsatisfiedLinkError when the parameter's class is not a bare value, so that the native library
     *         must tell its size, and that library cannot be loaded
     */
    public CK_MECHANISM(long type, Object parameter) {
        this(new CK_MECHANISM_TYPE(type), parameter);
    }

    /**
     * Makes a mechanism with a parameter and the length that belongs to it.
     *
     * @param type      the type, kept as it is
     * @param parameter the parameter, kept as it is (an {@code int[]} as an equal {@code long[]}), or null
     * @throws UnsupportedOperationException when the parameter's class has no native form
     * @throws UnsatisfiedLinkError when the parameter's class is not a bare value, so that the native library
     *         must tell its size, and that library cannot be loaded
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
     * Tells the size of a parameter's native form. This class does not load the native library by itself:
     * call {@link NativeLibrary#load} before, unless {@link Cryptoki} was used.
     *
     * @param parameter an object of a parameter class, {@link CK_VERSION}, {@link CK_OBJECT_HANDLE},
     *                  {@code Long}, {@code Boolean}, {@code byte[]}, {@code char[]}, {@code String}, or null
     * @return the size in bytes, 0 for null; of an array or a string the length of its native form
     * @throws UnsupportedOperationException {@code "No Conversion from ... to a CK type"} for every other
     *         class, some that are good parameters included ({@code Integer}, {@code CK_BBOOL})
     */
    public static native long getMechanismParameterSize(Object parameter);

    /**
     * Tells type, parameter and length; of bytes and text, which may be secret, only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_MECHANISM[mechanism=" + mechanism + ", pParameter=" + NativeValue.describe(pParameter)
                + ", parameterLen=" + parameterLen + "]";
    }
}
