// The values of attributes, as they are printed.
package halvorn.zerlin.cli;

import static halvorn.zerlin.cli.Names.text;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.Attributes;
import halvorn.zerlin.token.Encoding;

import java.util.Arrays;
import java.util.stream.Collectors;

final class Values {
    /** Returns a value for JSON and tables: text, number, boolean or list; whatever a token has put there. */
    static Object of(Attributes attributes, long type) {
        Encoding encoding = Encoding.of(type);
        int length = attributes.bytes(type).length;
        boolean isNumber = length >= 1 && length <= Long.BYTES;
        return encoding == Encoding.BOOLEAN && isNumber ? (Object) attributes.is(type)
            : encoding == Encoding.NUMBER && isNumber ? number(type, attributes.number(type))
            : encoding == Encoding.NUMBERS ? Arrays.stream(attributes.numbers(type)).mapToObj(Values::mechanism)
                    .collect(Collectors.toList())
            : encoding == Encoding.TEXT || encoding == Encoding.DATE ? attributes.text(type)
            : Output.hex(attributes.bytes(type));
    }

    private static Object number(long type, long value) {
        return value == CK.UNAVAILABLE_INFORMATION ? null : type == CKA.CLASS ? text(CKO.nameOf(value), value)
            : type == CKA.KEY_TYPE ? text(CKK.nameOf(value), value)
            : type == CKA.CERTIFICATE_TYPE ? text(CKC.nameOf(value), value)
            : type == CKA.KEY_GEN_MECHANISM || type == CKA.MECHANISM_TYPE ? mechanism(value)
            : (Object) value;
    }

    static String mechanism(long value) {
        return text(CKM.nameOf(value), value);
    }
}
