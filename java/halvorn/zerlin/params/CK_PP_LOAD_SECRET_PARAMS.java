// The parameter of loading a secret through a PIN pad.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_BBOOL;

/**
 * The parameter of {@code CKM_PP_LOAD_SECRET}, a vendor mechanism: the secret is typed at the PIN pad.
 */
public class CK_PP_LOAD_SECRET_PARAMS {
    /** Whether the PIN pad hides what is typed. */
    public CK_BBOOL bMaskInput = new CK_BBOOL();
    /**
     * How the typed characters become the secret, 0 to 255; more counts as 255, of a negative number the low
     * 8 bits are used.
     */
    public int cConvert;
    /**
     * How long the PIN pad waits, 0 to 255; more counts as 255, of a negative number the low 8 bits are used.
     */
    public int cTimeout;
    /** The text to show, without a terminating NUL, which is added. Never null. */
    public byte[] prompt = new byte[0];

    /** Makes an empty parameter. */
    public CK_PP_LOAD_SECRET_PARAMS() {
    }

    /**
     * Makes a parameter.
     *
     * @param bMaskInput whether the PIN pad hides what is typed
     * @param cConvert   how the typed characters become the secret, 0 to 255
     * @param cTimeout   how long the PIN pad waits, 0 to 255
     * @param prompt     the text to show, without a terminating NUL; not null
     */
    public CK_PP_LOAD_SECRET_PARAMS(boolean bMaskInput, int cConvert, int cTimeout, byte[] prompt) {
        this.bMaskInput.m_value = bMaskInput;
        this.cConvert = cConvert;
        this.cTimeout = cTimeout;
        this.prompt = prompt;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_PP_LOAD_SECRET_PARAMS[bMaskInput=" + bMaskInput + ", cConvert=" + cConvert
                + ", cTimeout=" + cTimeout + ", prompt=" + Bytes.describe(prompt) + "]";
    }
}
