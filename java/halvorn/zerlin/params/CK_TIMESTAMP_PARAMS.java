// The parameter of signing with a time stamp.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_BBOOL;

/**
 * The parameter of {@code CKM_SHA1_RSA_PKCS_TIMESTAMP}, a vendor mechanism.
 */
public class CK_TIMESTAMP_PARAMS {
    /** Whether the time stamp counts milliseconds. */
    public CK_BBOOL useMilliseconds = new CK_BBOOL();
    /** The format of the time stamp, a number of the vendor. */
    public long timestampFormat;

    /** Makes an empty parameter. */
    public CK_TIMESTAMP_PARAMS() {
    }

    /**
     * Makes a parameter.
     *
     * @param useMilliseconds whether the time stamp counts milliseconds
     * @param timestampFormat the format of the time stamp, a number of the vendor
     */
    public CK_TIMESTAMP_PARAMS(boolean useMilliseconds, long timestampFormat) {
        this.useMilliseconds.m_value = useMilliseconds;
        this.timestampFormat = timestampFormat;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_TIMESTAMP_PARAMS[useMilliseconds=" + useMilliseconds
                + ", timestampFormat=" + timestampFormat + "]";
    }
}
