// What end-to-end tests and endurance programs share: a session, and shorthand for what they do in it.
package token;

import static token.FreshToken.*;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

/** A read/write session. Every call that fails throws. */
public final class Session {
    /** Whether the tokens are those of NSS. */
    public static final boolean IS_NSS = String.valueOf(System.getenv("ZERLIN_MODULE")).contains("softokn");
    public final CK_SESSION_HANDLE handle;

    public Session(long slot) {
        handle = openSession(slot, READ_WRITE);
    }

    /** A native that makes bytes out of bytes, such as C_Encrypt. */
    public interface Transformation {
        CK_RV call(CK_SESSION_HANDLE session, byte[] in, long inLen, byte[] out, LongRef outLen);
    }

    /** Creates a template of alternating types and values. */
    public static CK_ATTRIBUTE[] template(Object... typesAndValues) {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[typesAndValues.length / 2];
        for (int i = 0; i < template.length; i++) {
            template[i] = new CK_ATTRIBUTE((Long) typesAndValues[2 * i], typesAndValues[2 * i + 1]);
        }
        return template;
    }

    public CK_OBJECT_HANDLE create(CK_ATTRIBUTE... template) {
        CK_OBJECT_HANDLE object = new CK_OBJECT_HANDLE();
        Cryptoki.C_CreateObject(handle, template, template.length, object).orThrow();
        return object;
    }

    public byte[] whole(Transformation native_, byte[] in) {
        return bytes((array, length) -> native_.call(handle, in, in.length, array, length));
    }
}
