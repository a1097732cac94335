// The form of each attribute: which Java values it takes, and how it is read.
package halvorn.zerlin.token;

import halvorn.zerlin.constants.CKA;

import java.math.BigInteger;
import java.time.LocalDate;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/**
 * The encoding of an attribute's value: of the attributes of the standard, and of those of the vendor whose form is
 * known. {@link Attributes#with} checks values with it. No method calls a native.
 */
public enum Encoding {
    /** One byte, 0 or 1: takes {@code Boolean}, read with {@link Attributes#is}. */
    BOOLEAN(Arrays.asList(Boolean.class), CKA.TOKEN, CKA.PRIVATE, CKA.MODIFIABLE, CKA.COPYABLE, CKA.DESTROYABLE, CKA.TRUSTED,
            CKA.SENSITIVE, CKA.EXTRACTABLE, CKA.LOCAL, CKA.NEVER_EXTRACTABLE, CKA.ALWAYS_SENSITIVE, CKA.ALWAYS_AUTHENTICATE,
            CKA.WRAP_WITH_TRUSTED, CKA.ENCRYPT, CKA.DECRYPT, CKA.WRAP, CKA.UNWRAP, CKA.SIGN, CKA.SIGN_RECOVER, CKA.VERIFY,
            CKA.VERIFY_RECOVER, CKA.DERIVE, CKA.SECONDARY_AUTH, CKA.RESET_ON_INIT, CKA.HAS_RESET, CKA.COLOR,
            CKA.SIGN_LOCAL_CERT, CKA.EXPORT, CKA.EXPORTABLE, CKA.DELETABLE, CKA.IMPORT, CKA.PURGE, CKA.EVENT_LOG_FULL,
            CKA.TAMPER_CMD, CKA.RTC_AAC_ENABLED, CKA.VERIFY_OS),

    /** A CK_ULONG: takes {@code Long} and {@code Integer}, read with {@link Attributes#number}. */
    NUMBER(Arrays.asList(Long.class, Integer.class), CKA.CLASS, CKA.KEY_TYPE, CKA.CERTIFICATE_TYPE, CKA.HW_FEATURE_TYPE,
            CKA.KEY_GEN_MECHANISM, CKA.MECHANISM_TYPE, CKA.NAME_HASH_ALGORITHM, CKA.CERTIFICATE_CATEGORY,
            CKA.JAVA_MIDP_SECURITY_DOMAIN, CKA.PROFILE_ID, CKA.MODULUS_BITS, CKA.PRIME_BITS, CKA.SUBPRIME_BITS, CKA.VALUE_BITS,
            CKA.VALUE_LEN, CKA.AUTH_PIN_FLAGS, CKA.PIXEL_X, CKA.PIXEL_Y, CKA.RESOLUTION, CKA.CHAR_ROWS, CKA.CHAR_COLUMNS,
            CKA.BITS_PER_PIXEL, CKA.USAGE_COUNT, CKA.USAGE_LIMIT, CKA.KEY_SIZE, CKA.SERIAL_NUMBER_INT, CKA.RECORD_COUNT,
            CKA.RECORD_NUMBER, CKA.SECURITY_MODE, CKA.TRANSPORT_MODE, CKA.BATCH, CKA.HW_STATUS, CKA.FREE_MEM,
            CKA.APPLICATION_COUNT, CKA.RTC_AAC_GUARD_SECONDS, CKA.RTC_AAC_GUARD_COUNT, CKA.AAC_GUARD_DURATION, CKA.SLOT_ID,
            CKA.MAX_SESSIONS, CKA.MIN_PIN_LEN, CKA.MAX_PIN_FAIL, CKA.FLAGS, CKA.ROM_SPACE, CKA.RAM_SPACE, CKA.FM_STATUS,
            CKA.FM_STARTUP_STATUS, CKA.FM_ID),

    /** Several CK_ULONGs: takes {@code long[]}, read with {@link Attributes#numbers}. */
    NUMBERS(Arrays.asList(long[].class), CKA.ALLOWED_MECHANISMS, CKA.MECHANISM_LIST),

    /** Text in UTF-8: takes {@code String} and {@code byte[]}, read with {@link Attributes#text}. */
    TEXT(Arrays.asList(String.class, byte[].class), CKA.LABEL, CKA.APPLICATION, CKA.URL, CKA.CHAR_SETS, CKA.ENCODING_METHODS,
            CKA.MIME_TYPES, CKA.UNIQUE_ID, CKA.ISSUER_STR, CKA.SUBJECT_STR),

    /** Eight ASCII digits, or empty: takes {@code LocalDate} and {@code byte[]}, read with {@link Attributes#date}. */
    DATE(Arrays.asList(LocalDate.class, byte[].class), CKA.START_DATE, CKA.END_DATE),

    /**
     * An unsigned number, the most significant byte first: takes {@code BigInteger} and {@code byte[]}, read with
     * {@link Attributes#integer}.
     */
    INTEGER(Arrays.asList(BigInteger.class, byte[].class), CKA.MODULUS, CKA.PUBLIC_EXPONENT, CKA.PRIME, CKA.SUBPRIME, CKA.BASE),

    /** Bytes: takes {@code byte[]} and {@code BigInteger} (unsigned), read with {@link Attributes#bytes}. */
    BYTES(Arrays.asList(byte[].class, BigInteger.class), CKA.ID, CKA.OBJECT_ID, CKA.SUBJECT, CKA.ISSUER, CKA.SERIAL_NUMBER,
            CKA.AC_ISSUER, CKA.OWNER, CKA.ATTR_TYPES, CKA.EC_PARAMS, CKA.EC_POINT, CKA.PUBLIC_KEY_INFO, CKA.CHECK_VALUE,
            CKA.CHECK_VALUE_STD, CKA.HASH_OF_SUBJECT_PUBLIC_KEY, CKA.HASH_OF_ISSUER_PUBLIC_KEY, CKA.REQUIRED_CMS_ATTRIBUTES,
            CKA.DEFAULT_CMS_ATTRIBUTES, CKA.SUPPORTED_CMS_ATTRIBUTES),

    /** As {@link #BYTES}, but may be secret: {@link Session#readAll} and {@link Attributes#toString} leave it out. */
    SECRET(Arrays.asList(byte[].class, BigInteger.class), CKA.VALUE, CKA.PRIVATE_EXPONENT, CKA.PRIME_1, CKA.PRIME_2,
            CKA.EXPONENT_1, CKA.EXPONENT_2, CKA.COEFFICIENT, CKA.SEED, CKA.TMP_PIN);

    private static final Map<Long, Encoding> TABLE = new LinkedHashMap<>();

    static {
        for (Encoding encoding : values()) {
            for (long type : encoding.types) {
                TABLE.put(type, encoding);
            }
        }
    }

    private final List<Class<?>> classes;
    private final long[] types;

    Encoding(List<Class<?>> classes, long... types) {
        this.classes = classes;
        this.types = types;
    }

    /**
     * Returns the encoding of an attribute.
     *
     * @param type a value of {@link CKA}
     * @return the encoding; null if the attribute is not in the table
     */
    public static Encoding of(long type) {
        return TABLE.get(type);
    }

    /**
     * Lists the attributes of the table.
     *
     * @return a new array of values of {@link CKA}, sorted by encoding
     */
    public static long[] types() {
        return TABLE.keySet().stream().mapToLong(Long::longValue).toArray();
    }

    boolean takes(Object value) {
        return value != null && classes.contains(value.getClass());
    }

    /** The capacity in bytes that holds every value, in both widths; 0 if the length varies. */
    int capacity() {
        return this == BOOLEAN || this == NUMBER || this == DATE ? 8 : 0;
    }
}
