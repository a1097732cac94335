// The parameter for loading a secret that is typed at a PIN pad.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_BBOOL;

/**
 * The parameter of {@code CKM_PP_LOAD_SECRET}, a vendor mechanism: a person types the secret at the PIN pad.
 */
public class CK_PP_LOAD_SECRET_PARAMS {
    /** Whether the PIN pad hides what is typed; null means false. */
    public CK_BBOOL bMaskInput = new CK_BBOOL();
    /**
     * How the typed characters become the secret, 0 to 255: a number that the vendor defines. A greater
     * number becomes 255, and of a negative one only the low 8 bits are used: deliberate.
     */
    public int cConvert;
    /**
     * How long the PIN pad waits, 0 to 255, in a unit that the vendor defines. A greater number becomes 255,
     * and of a negative one only the low 8 bits are used: deliberate.
     */
    public int cTimeout;
    /**
     * The text that the PIN pad shows, without a NUL byte at the end, which the binding adds. If it is null,
     * the library receives a null pointer.
     */
    public byte[] prompt = new byte[0];

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_PP_LOAD_SECRET_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param bMaskInput whether the PIN pad hides what is typed
     * @param cConvert   how the typed characters become the secret, 0 to 255: a number that the vendor
     *                   defines
     * @param cTimeout   how long the PIN pad waits, 0 to 255, in a unit that the vendor defines
     * @param prompt     the text that the PIN pad shows, without a NUL byte at the end
     */
    public CK_PP_LOAD_SECRET_PARAMS(boolean bMaskInput, int cConvert, int cTimeout, byte[] prompt) {
        this.bMaskInput.m_value = bMaskInput;
        this.cConvert = cConvert;
        this.cTimeout = cTimeout;
        this.prompt = prompt;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_PP_LOAD_SECRET_PARAMS[bMaskInput=" + bMaskInput + ", cConvert=" + cConvert
                + ", cTimeout=" + cTimeout + ", prompt=" + Bytes.describe(prompt) + "]";
    }
}
