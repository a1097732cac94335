// The parameter for splitting a secret into shares.
package halvorn.zerlin.params;

/**
 * The parameter of {@code CKM_SECRET_SHARE_WITH_ATTRIBUTES}, a vendor mechanism that splits a secret into
 * shares.
 */
public class CK_SECRET_SHARE_PARAMS {
    /** The number of shares to create. */
    public long n;
    /** The number of shares that are needed to recover the secret. */
    public long m;

    /** Creates a parameter whose fields are to be set one by one. */
    public CK_SECRET_SHARE_PARAMS() {
    }

    /**
     * Creates a parameter.
     *
     * @param n the number of shares to create
     * @param m the number of shares that are needed to recover the secret
     */
    public CK_SECRET_SHARE_PARAMS(long n, long m) {
        this.n = n;
        this.m = m;
    }

    /**
     * Describes all fields; of byte arrays, which may be secret, only the length.
     *
     * @return the description, on one line
     */
    @Override
    public String toString() {
        return "CK_SECRET_SHARE_PARAMS[n=" + n + ", m=" + m + "]";
    }
}
