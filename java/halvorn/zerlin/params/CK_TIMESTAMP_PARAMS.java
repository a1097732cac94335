// The parameter for signing with a time stamp.
package halvorn.zerlin.params;

import halvorn.zerlin.CK_BBOOL;

/**
 * The parameter of {@code CKM_SHA1_RSA_PKCS_TIMESTAMP}, a vendor mechanism that signs with a time stamp.
 */
public class CK_TIMESTAMP_PARAMS {
    /** Whether the time stamp counts milliseconds; null means false. */
    public CK_BBOOL useMilliseconds = new CK_BBOOL();
    /** The format of the time stamp, a number that the vendor defines. */
    public long timestampFormat;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_TIMESTAMP_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param useMilliseconds whether the time stamp counts milliseconds
     * @param timestampFormat the format of the time stamp, a number that the vendor defines
     */
    public CK_TIMESTAMP_PARAMS(boolean useMilliseconds, long timestampFormat) {
        this.useMilliseconds.m_value = useMilliseconds;
        this.timestampFormat = timestampFormat;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_TIMESTAMP_PARAMS[useMilliseconds=" + useMilliseconds
                + ", timestampFormat=" + timestampFormat + "]";
    }
}
