// Names of constants, read in any common spelling (CKM_SHA256_RSA_PKCS, sha256-rsa-pkcs, Sha256RsaPkcs, 0x40), and the values
// of attributes, as they are printed.
package halvorn.zerlin.cli;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import java.lang.reflect.Field;
import java.util.*;
import java.util.stream.Collectors;

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

    /** Returns a value for JSON and tables: text, number, boolean or list; whatever a token has put there. */
    static Object value(Attributes attributes, long type) {
        Encoding encoding = Encoding.of(type);
        int length = attributes.bytes(type).length;
        boolean isNumber = length >= 1 && length <= Long.BYTES;
        return encoding == Encoding.BOOLEAN && isNumber ? (Object) attributes.is(type)
            : encoding == Encoding.NUMBER && isNumber ? number(type, attributes.number(type))
            : encoding == Encoding.NUMBERS ? Arrays.stream(attributes.numbers(type)).mapToObj(Names::mechanism)
                    .collect(Collectors.toList())
            : encoding == Encoding.TEXT || encoding == Encoding.DATE ? attributes.text(type)
            : Output.hex(attributes.bytes(type));
    }

    private static Object number(long type, long value) {
        return value == CK.UNAVAILABLE_INFORMATION ? null
            : type == CKA.CLASS ? name(new CK_OBJECT_CLASS(value))
            : type == CKA.KEY_TYPE ? name(new CK_KEY_TYPE(value))
            : type == CKA.CERTIFICATE_TYPE ? name(new CK_CERTIFICATE_TYPE(value))
            : type == CKA.KEY_GEN_MECHANISM || type == CKA.MECHANISM_TYPE ? mechanism(value) : (Object) value;
    }

    static String mechanism(long value) {
        return name(new CK_MECHANISM_TYPE(value));
    }

    // The name without the number, or the number of a value that has no name.
    private static String name(TypedValue value) {
        return value.toString().replaceAll(" .*", "");
    }
}
