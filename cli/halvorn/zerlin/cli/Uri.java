// PKCS#11 URIs (RFC 7512): read, written, and compared with tokens.
package halvorn.zerlin.cli;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.token.Attributes;

import java.io.ByteArrayOutputStream;
import java.util.*;

final class Uri {
    private static final List<String> TYPES = Arrays.asList("data", "cert", "public", "private", "secret-key");
    private static final List<String> PATH = Arrays.asList("token", "manufacturer", "serial", "model", "object", "id", "type",
            "library-manufacturer", "library-description", "library-version", "slot-id",
            "slot-description", "slot-manufacturer");
    // The attributes behind the question mark. What a module-name or a module-path says is ignored: nothing is loaded.
    private static final List<String> QUERY = Arrays.asList("pin-source", "pin-value", "module-name", "module-path");

    // The bytes of each attribute, as Latin-1.
    private final Map<String, String> values = new LinkedHashMap<>();

    /** Reads a URI; any other text is the value of one attribute, such as the label of a token. */
    static Uri of(String text, String attribute) {
        Uri uri = new Uri();
        if (text == null) {
            return uri;
        }
        if (!text.regionMatches(true, 0, "pkcs11:", 0, 7)) {
            uri.values.put(attribute, new String(text.getBytes(UTF_8), ISO_8859_1));
            return uri;
        }
        int mark = (text + "?").indexOf('?');
        uri.read(text.substring(7, mark), ";", PATH);
        uri.read(text.substring(Math.min(text.length(), mark + 1)), "&", QUERY);
        String type = uri.values.get("type");
        if (type != null && !TYPES.contains(type)) {
            throw new IllegalArgumentException("The type of a PKCS#11 URI is one of " + TYPES + ", not " + type);
        }
        return uri;
    }

    private void read(String part, String separator, List<String> known) {
        for (String pair : part.split(separator)) {
            int equals = pair.indexOf('=');
            String name = pair.substring(0, Math.max(0, equals));
            if (!pair.isEmpty() && (equals < 0 || !known.contains(name))) {
                throw new IllegalArgumentException("A PKCS#11 URI has no attribute \"" + pair.split("=")[0] + "\" there");
            }
            if (!pair.isEmpty() && values.put(name, decode(pair.substring(equals + 1))) != null) {
                throw new IllegalArgumentException("A PKCS#11 URI has an attribute once, not twice: " + name);
            }
        }
    }

    private static String decode(String text) {
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        byte[] in = text.getBytes(UTF_8);
        for (int i = 0; i < in.length; i++) {
            if (in[i] == '%') {
                if (!text.matches("(?s)([^%]|%[0-9A-Fa-f]{2})*")) {
                    throw new IllegalArgumentException("In a PKCS#11 URI, two hexadecimal digits follow %: " + text);
                }
                bytes.write(Character.digit(in[i + 1], 16) << 4 | Character.digit(in[i + 2], 16));
                i += 2;
            } else {
                bytes.write(in[i]);
            }
        }
        return new String(bytes.toByteArray(), ISO_8859_1);
    }

    /** Returns an attribute as text; null if it is not there. */
    String get(String name) {
        String value = values.get(name);
        return value == null ? null : new String(value.getBytes(ISO_8859_1), UTF_8);
    }

    boolean matches(CK_INFO library, long slotId, CK_SLOT_INFO slot, CK_TOKEN_INFO token) {
        String[][] rows = {{"token", token.getLabel()}, {"manufacturer", token.getManufacturerID()},
            {"serial", token.getSerialNumber()}, {"model", token.getModel()},
            {"library-manufacturer", library.getManufacturerID()}, {"library-description", library.getLibraryDescription()},
            {"library-version", library.libraryVersion.toString()}, {"slot-id", Long.toString(slotId)},
            {"slot-description", slot.getSlotDescription()}, {"slot-manufacturer", slot.getManufacturerID()}};
        return Arrays.stream(rows).allMatch(row -> !values.containsKey(row[0]) || get(row[0]).equals(row[1]));
    }

    /** Adds the attributes of the token that another URI names. */
    Uri in(Uri token) {
        Uri both = new Uri();
        both.values.putAll(values);
        token.values.forEach((name, value) -> {
            String before = both.values.putIfAbsent(name, value);
            if (before != null && !before.equals(value)) {
                throw new IllegalArgumentException("The URIs name two different tokens (" + name + ")");
            }
        });
        return both;
    }

    /** Returns the template that finds the object. */
    Attributes template() {
        Attributes wanted = new Attributes();
        if (values.containsKey("type")) {
            wanted.with(CKA.CLASS, objectClass(get("type")));
        }
        if (values.containsKey("object")) {
            wanted.with(CKA.LABEL, get("object"));
        }
        if (values.containsKey("id")) {
            wanted.with(CKA.ID, values.get("id").getBytes(ISO_8859_1));
        }
        return wanted;
    }

    private static long objectClass(String type) {
        return new long[] {CKO.DATA, CKO.CERTIFICATE, CKO.PUBLIC_KEY, CKO.PRIVATE_KEY, CKO.SECRET_KEY}[TYPES.indexOf(type)];
    }

    static String write(CK_TOKEN_INFO token, Attributes object) {
        StringBuilder text = new StringBuilder("pkcs11:");
        add(text, "token", token.label, token.getLabel().getBytes(UTF_8));
        add(text, "serial", token.serialNumber, token.getSerialNumber().getBytes(UTF_8));
        if (object != null && object.has(CKA.LABEL)) {
            add(text, "object", object.bytes(CKA.LABEL), object.bytes(CKA.LABEL));
        }
        if (object != null && object.has(CKA.ID)) {
            add(text, "id", object.bytes(CKA.ID), null);
        }
        for (String type : TYPES) {
            if (object != null && object.has(CKA.CLASS) && object.number(CKA.CLASS) == objectClass(type)) {
                add(text, "type", new byte[1], type.getBytes(UTF_8));
            }
        }
        return text.toString();
    }

    // Without text, all bytes are written as numbers, as RFC 7512 asks for identifiers.
    private static void add(StringBuilder uri, String name, byte[] value, byte[] text) {
        if (value.length > 0 && (text == null || text.length > 0)) {
            uri.append(uri.length() == 7 ? "" : ";").append(name).append('=');
            for (byte b : text == null ? value : text) {
                boolean plain = text != null && (b >= '0' && b <= '9' || (b | 32) >= 'a' && (b | 32) <= 'z' && b > 0
                        || b > 0 && "-._~:[]@!$'()*+,".indexOf(b) >= 0);
                uri.append(plain ? Character.toString((char) b) : String.format("%%%02X", b & 0xFF));
            }
        }
    }
}
