// What end-to-end tests and endurance programs share: shorthand for creating objects.
package token;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.CK_RV;

public final class TokenObjects {
    /** Whether the tokens are those of NSS. */
    public static final boolean IS_NSS = String.valueOf(System.getenv("ZERLIN_MODULE")).contains("softokn");

    /** Creates a template of alternating types and values. */
    public static CK_ATTRIBUTE[] template(Object... typesAndValues) {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[typesAndValues.length / 2];
        for (int i = 0; i < template.length; i++) {
            template[i] = new CK_ATTRIBUTE((Long) typesAndValues[2 * i], typesAndValues[2 * i + 1]);
        }
        return template;
    }

    /** Calls C_CreateObject with a template of alternating types and values. */
    public static CK_RV createObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE made, Object... typesAndValues) {
        return Cryptoki.C_CreateObject(session, template(typesAndValues), typesAndValues.length / 2, made);
    }
}
