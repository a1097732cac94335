// The constants with the prefix CKG_: those of cryptoki.h, in its order, and those that only the standard has.
package halvorn.zerlin.constants;

/**
 * Mask generation functions, for the {@code mgf} of OAEP and PSS parameters. Each name ends with the hash
 * function that it uses.
 */
public final class CKG {
    /** {@code CKG_MGF1_SHA1} */
    public static final long MGF1_SHA1 = 0x1L;
    /** {@code CKG_MGF1_SHA256} */
    public static final long MGF1_SHA256 = 0x2L;
    /** {@code CKG_MGF1_SHA384} */
    public static final long MGF1_SHA384 = 0x3L;
    /** {@code CKG_MGF1_SHA512} */
    public static final long MGF1_SHA512 = 0x4L;
    /** {@code CKG_MGF1_SHA224} */
    public static final long MGF1_SHA224 = 0x5L;

    // Of the standard up to v3.1, and not in cryptoki.h
    /** {@code CKG_MGF1_SHA3_224} */
    public static final long MGF1_SHA3_224 = 0x6L;
    /** {@code CKG_MGF1_SHA3_256} */
    public static final long MGF1_SHA3_256 = 0x7L;
    /** {@code CKG_MGF1_SHA3_384} */
    public static final long MGF1_SHA3_384 = 0x8L;
    /** {@code CKG_MGF1_SHA3_512} */
    public static final long MGF1_SHA3_512 = 0x9L;
    /** {@code CKG_NO_GENERATE}, a generator of IVs for messages: the caller passes the whole IV. */
    public static final long NO_GENERATE = 0x0L;
    /** {@code CKG_GENERATE}, a generator of IVs for messages: the token generates the IV in its own way. */
    public static final long GENERATE = 0x1L;
    /** {@code CKG_GENERATE_COUNTER}, a generator of IVs for messages: the token counts. */
    public static final long GENERATE_COUNTER = 0x2L;
    /** {@code CKG_GENERATE_RANDOM}, a generator of IVs for messages: the token takes random bytes. */
    public static final long GENERATE_RANDOM = 0x3L;
    /**
     * {@code CKG_GENERATE_COUNTER_XOR}, a generator of IVs for messages: the token counts and XORs the
     * counter with the IV.
     */
    public static final long GENERATE_COUNTER_XOR = 0x4L;

    private CKG() {
    }

    /**
     * Returns the value of a name; works without the native library.
     *
     * @param name for example {@code "CKG_MGF1_SHA256"} or {@code "MGF1_SHA256"}, case-sensitive; must
     *             not be null
     * @return the value
     * @throws IllegalArgumentException if there is no such name; the message says the nearest one
     */
    public static long of(String name) {
        return Names.of(CKG.class, name);
    }

    /**
     * Returns the name of a value; works without the native library.
     *
     * @param value the value
     * @return for example {@code "CKG_MGF1_SHA256"}; null if there is none. Some values have several names for
     *         different places; this is the first one of this class
     */
    public static String nameOf(long value) {
        return Names.nameOf(CKG.class, value);
    }
}
