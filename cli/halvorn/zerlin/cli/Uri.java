// PKCS#11 URIs (RFC 7512): read, written, and compared with tokens.
package halvorn.zerlin.cli;

import static java.nio.charset.StandardCharsets.ISO_8859_1;
import static java.nio.charset.StandardCharsets.UTF_8;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;
import halvorn.zerlin.token.*;

import java.io.UnsupportedEncodingException;
import java.net.URLDecoder;
import java.util.*;

final class Uri {
    private static final List<String> TYPES = Arrays.asList("data", "cert", "public", "private", "secret-key");
    private static final List<Long> CLASSES = Arrays.asList(CKO.DATA, CKO.CERTIFICATE, CKO.PUBLIC_KEY, CKO.PRIVATE_KEY,
            CKO.SECRET_KEY);
    private static final String PLAIN = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:[]@!$'()*+,";
    private static final byte[] NOTHING = {};
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
        if (text != null && text.regionMatches(true, 0, "pkcs11:", 0, 7)) {
            int mark = (text + "?").indexOf('?');
            uri.read(text.substring(7, mark), ";", PATH);
            uri.read(text.substring(Math.min(text.length(), mark + 1)), "&", QUERY);
        } else if (text != null) {
            uri.values.put(attribute, latin1(text));
        }
        String type = uri.values.get("type");
        Failure.when(type != null && !TYPES.contains(type), Failure.USAGE,
                "The type of a PKCS#11 URI is one of " + TYPES + ", not " + type);
        return uri;
    }

    private void read(String part, String separator, List<String> known) {
        for (String pair : part.split(separator)) {
            int equals = pair.indexOf('=');
            String name = pair.substring(0, Math.max(0, equals));
            Failure.when(!pair.isEmpty() && (equals < 0 || !known.contains(name)), Failure.USAGE,
                    "A PKCS#11 URI has no attribute \"" + pair.split("=", 2)[0] + "\" there");
            Failure.when(!pair.isEmpty() && values.put(name, decode(name, pair.substring(equals + 1))) != null, Failure.USAGE,
                    "A PKCS#11 URI has an attribute once, not twice: " + name);
        }
    }

    // A text has its bytes as Latin-1; in a URI, a plus is a plus.
    private static String decode(String name, String text) {
        try {
            return URLDecoder.decode(latin1(text).replace("+", "%2B"), "ISO-8859-1");
        } catch (IllegalArgumentException | UnsupportedEncodingException e) {
            throw new IllegalArgumentException("In a PKCS#11 URI, two hexadecimal digits follow %: " + name, e);
        }
    }

    private static String latin1(String text) {
        return new String(text.getBytes(UTF_8), ISO_8859_1);
    }

    /** Returns an attribute as text; null if it is not there. */
    String get(String name) {
        String value = values.get(name);
        return value == null ? null : new String(value.getBytes(ISO_8859_1), UTF_8);
    }

    /** Returns whether this names the token in a slot. One that is not initialized must be named by its slot. */
    boolean matches(CK_INFO library, Slot slot) {
        CK_SLOT_INFO info = slot.info();
        CK_TOKEN_INFO token = slot.tokenInfo();
        String[][] rows = {{"token", token.getLabel()}, {"manufacturer", token.getManufacturerID()},
            {"serial", token.getSerialNumber()}, {"model", token.getModel()},
            {"library-manufacturer", library.getManufacturerID()}, {"library-description", library.getLibraryDescription()},
            {"library-version", library.libraryVersion.toString()}, {"slot-id", Long.toString(slot.id())},
            {"slot-description", info.getSlotDescription()}, {"slot-manufacturer", info.getManufacturerID()}};
        return (values.containsKey("slot-id") || (token.flags & CKF.TOKEN_INITIALIZED) != 0)
                && Arrays.stream(rows).allMatch(row -> !values.containsKey(row[0]) || get(row[0]).equals(row[1]));
    }

    /** Adds the attributes of the token that another URI names. */
    Uri in(Uri token) {
        Uri both = new Uri();
        both.values.putAll(values);
        token.values.forEach((name, value) -> {
            String before = both.values.putIfAbsent(name, value);
            Failure.when(before != null && !before.equals(value), Failure.USAGE,
                    "The URIs name two different tokens (" + name + ")");
        });
        return both;
    }

    /** Returns the template that finds the object. */
    Attributes template() {
        Attributes wanted = new Attributes();
        if (values.containsKey("type")) {
            wanted.with(CKA.CLASS, CLASSES.get(TYPES.indexOf(get("type"))));
        }
        if (values.containsKey("object")) {
            wanted.with(CKA.LABEL, get("object"));
        }
        if (values.containsKey("id")) {
            wanted.with(CKA.ID, values.get("id").getBytes(ISO_8859_1));
        }
        return wanted;
    }

    /** Writes the URI of an object, or of the token itself if there are no attributes. */
    static String write(CK_TOKEN_INFO token, Attributes object) {
        StringJoiner uri = new StringJoiner(";", "pkcs11:", "");
        add(uri, "token", token.getLabel().getBytes(UTF_8), PLAIN);
        add(uri, "serial", token.getSerialNumber().getBytes(UTF_8), PLAIN);
        add(uri, "object", object.has(CKA.LABEL) ? object.bytes(CKA.LABEL) : NOTHING, PLAIN);
        add(uri, "id", object.has(CKA.ID) ? object.bytes(CKA.ID) : NOTHING, "");
        int type = object.has(CKA.CLASS) ? CLASSES.indexOf(object.number(CKA.CLASS)) : -1;
        add(uri, "type", type < 0 ? NOTHING : TYPES.get(type).getBytes(UTF_8), PLAIN);
        return uri.toString();
    }

    // The bytes that are not plain are written as numbers: all of an identifier, as RFC 7512 asks.
    private static void add(StringJoiner uri, String name, byte[] value, String plain) {
        StringBuilder text = new StringBuilder(name + "=");
        for (byte b : value) {
            text.append(plain.indexOf(b) < 0 ? String.format("%%%02X", b & 0xFF) : (char) b);
        }
        if (value.length > 0) {
            uri.add(text);
        }
    }
}
