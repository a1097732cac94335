// The values of attributes, as they are printed.
package halvorn.zerlin.cli;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

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
