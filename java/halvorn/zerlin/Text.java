// Turns the fields of the information classes into readable text.
package halvorn.zerlin;

import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.constants.CKF;

import java.util.StringJoiner;

final class Text {
    // The flags of each class, constants of CKF. One bit has different names in different classes.
    static final String[] SLOT_FLAGS = {
        "TOKEN_PRESENT", "REMOVABLE_DEVICE", "HW_SLOT"
    };
    static final String[] TOKEN_FLAGS = {
        "RNG", "WRITE_PROTECTED", "LOGIN_REQUIRED", "USER_PIN_INITIALIZED", "RESTORE_KEY_NOT_NEEDED",
        "CLOCK_ON_TOKEN", "PROTECTED_AUTHENTICATION_PATH", "DUAL_CRYPTO_OPERATIONS", "TOKEN_INITIALIZED",
        "SECONDARY_AUTHENTICATION", "USER_PIN_COUNT_LOW", "USER_PIN_FINAL_TRY", "USER_PIN_LOCKED",
        "USER_PIN_TO_BE_CHANGED", "SO_PIN_COUNT_LOW", "SO_PIN_FINAL_TRY", "SO_PIN_LOCKED",
        "SO_PIN_TO_BE_CHANGED", "ERROR_STATE"
    };
    static final String[] SESSION_FLAGS = {
        "RW_SESSION", "SERIAL_SESSION"
    };
    static final String[] MECHANISM_FLAGS = {
        "HW", "MESSAGE_ENCRYPT", "MESSAGE_DECRYPT", "MESSAGE_SIGN", "MESSAGE_VERIFY", "MULTI_MESSAGE",
        "ENCRYPT", "DECRYPT", "DIGEST", "SIGN", "SIGN_RECOVER", "VERIFY", "VERIFY_RECOVER", "GENERATE",
        "GENERATE_KEY_PAIR", "WRAP", "UNWRAP", "DERIVE", "EC_F_P", "EC_F_2M", "EC_ECPARAMETERS",
        "EC_NAMEDCURVE", "EC_UNCOMPRESS", "EC_COMPRESS", "EC_CURVENAME", "EXTENSION"
    };

    private static final long UNAVAILABLE_INFORMATION = NativeValue.ULONG_SIZE == 8 ? -1 : 0xFFFFFFFFL;

    private Text() {
    }

    // Removes the padding at the end. Tokens pad with blanks, some with NUL bytes.
    static String of(byte[] padded) {
        if (padded == null) {
            return "";
        }
        int end = padded.length;
        while (end > 0 && (padded[end - 1] == ' ' || padded[end - 1] == 0)) {
            end--;
        }
        return new String(padded, 0, end, UTF_8);
    }

    static String count(long count) {
        return count == UNAVAILABLE_INFORMATION ? "unavailable" : Long.toString(count);
    }

    // The names of the flags that are set and, in hexadecimal digits, the bits that have none.
    static String flags(long flags, String... names) {
        StringJoiner text = new StringJoiner("|");
        long unnamed = flags;
        for (String name : names) {
            long flag = CKF.of(name);
            if ((flags & flag) != 0) {
                text.add(name);
                unnamed &= ~flag;
            }
        }
        if (unnamed != 0) {
            text.add("0x" + Long.toHexString(unnamed));
        }
        return flags == 0 ? "0" : text.toString();
    }
}
