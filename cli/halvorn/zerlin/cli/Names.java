// Names of constants in any common spelling: CKM_SHA256_RSA_PKCS, sha256-rsa-pkcs, Sha256RsaPkcs, 0x40.
package halvorn.zerlin.cli;

import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.token.Slot;

import java.lang.reflect.Field;
import java.util.Locale;

final class Names {
    /** Returns the value of a name; case, blanks, hyphens and underscores do not matter, nor does the prefix. */
    static long of(Class<?> constants, String name) {
        String plain = plain(name);
        if (plain.matches("0X[0-9A-F]{1,8}|[0-9]{1,9}")) {
            return Long.decode(plain);
        }
        String prefix = constants.getSimpleName();
        String wanted = plain.startsWith(prefix) ? plain.substring(prefix.length()) : plain;
        for (Field field : constants.getFields()) {
            if (field.getType() == long.class && plain(field.getName()).equals(wanted)) {
                try {
                    return field.getLong(null);
                } catch (IllegalAccessException e) {
                    throw new IllegalStateException(e);
                }
            }
        }
        throw new IllegalArgumentException("There is no " + prefix + "_" + name.toUpperCase(Locale.ROOT).replace('-', '_')
                + (constants == CKM.class ? "; \"zerlin mechanisms\" lists those of a token" : ""));
    }

    /** Returns the mechanism of a name: where the vendor and the standard differ, the one that the token has. */
    static long mechanism(Slot slot, String name) {
        long value = of(CKM.class, name);
        String standard = CKM.nameOf(value) + "_STD";
        try {
            return slot.supports(value, 0) ? value : CKM.of(standard);
        } catch (IllegalArgumentException noOther) {
            return value;
        }
    }

    private static String plain(String name) {
        return name.toUpperCase(Locale.ROOT).replaceAll("[-_ ]", "");
    }
}
