// The parameter of sharing a secret.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_SECRET_SHARE_WITH_ATTRIBUTES}, a vendor mechanism.
 */
public class CK_SECRET_SHARE_PARAMS {
    /** The number of shares to make. */
    public long n;
    /** The number of shares that recover the secret. */
    public long m;

    /** Makes an empty parameter. */
    public CK_SECRET_SHARE_PARAMS() {
    }

    /**
     * Makes a parameter.
     *
     * @param n the number of shares to make
     * @param m the number of shares that recover the secret
     */
    public CK_SECRET_SHARE_PARAMS(long n, long m) {
        this.n = n;
        this.m = m;
    }

    /**
     * Tells all fields; of byte arrays only the length.
     *
     * @return one line
     */
    @Override
    public String toString() {
        return "CK_SECRET_SHARE_PARAMS[n=" + n + ", m=" + m + "]";
    }
}
