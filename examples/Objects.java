// Objects on a token: create them from a template, find them by label, read and change their attributes, copy them,
// ask for their size and destroy them.

import static token.FreshToken.*;

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.CTUtil;
import halvorn.zerlin.Cryptoki;
import halvorn.zerlin.LongRef;
import halvorn.zerlin.constants.CK;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKK;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.constants.CKR;
import halvorn.zerlin.constants.CK_ATTRIBUTE_TYPE;
import halvorn.zerlin.constants.CK_KEY_TYPE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_OBJECT_CLASS;
import halvorn.zerlin.constants.CK_RV;

import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

public final class Objects {
    private static final String APPLICATION = "Zerlin example";

    public static void main(String[] arguments) throws Exception {
        Demo.inSession(CK_C_INITIALIZE_ARGS.javaLocking(), session -> {
            List<CK_OBJECT_HANDLE> made = new ArrayList<>();
            try {
                make(session, made);
                Demo.title("Find objects by class and label");
                CK_OBJECT_HANDLE settings = find(session, CKO.DATA, "settings");
                CK_OBJECT_HANDLE key = find(session, CKO.SECRET_KEY, "my key");
                find(session, CKO.SECRET_KEY, "settings");
                read(session, key);
                change(session, settings);
                made.add(copy(session, settings));
                measure(session, settings, key);
            } finally {
                destroy(session, made);
            }
        });
    }

    private static void make(CK_SESSION_HANDLE session, List<CK_OBJECT_HANDLE> made) {
        Demo.title("Make objects");
        // A data object that stays on the token. Texts become UTF-8, numbers a CK_ULONG, booleans 1 byte.
        CK_ATTRIBUTE[] settings = {
            new CK_ATTRIBUTE(CKA.CLASS, CKO.DATA),
            new CK_ATTRIBUTE(CKA.TOKEN, true),
            new CK_ATTRIBUTE(CKA.LABEL, "settings"),
            new CK_ATTRIBUTE(CKA.APPLICATION, APPLICATION),
            new CK_ATTRIBUTE(CKA.VALUE, "colour=blue")};
        made.add(create(session, "data object", settings));

        // A key that lives as long as the session, and whose value never leaves the token.
        CK_ATTRIBUTE[] key = {
            new CK_ATTRIBUTE(CKA.CLASS, CKO.SECRET_KEY),
            new CK_ATTRIBUTE(CKA.KEY_TYPE, CKK.AES),
            new CK_ATTRIBUTE(CKA.LABEL, "my key"),
            new CK_ATTRIBUTE(CKA.ID, new byte[] {1, 2, 3, 4}),
            new CK_ATTRIBUTE(CKA.VALUE, ascii("sixteen bytes ok")),
            new CK_ATTRIBUTE(CKA.ENCRYPT, true),
            new CK_ATTRIBUTE(CKA.SENSITIVE, true),
            new CK_ATTRIBUTE(CKA.EXTRACTABLE, false),
            new CK_ATTRIBUTE(CKA.ALLOWED_MECHANISMS, new long[] {CKM.AES_CBC, CKM.AES_CBC_PAD})};
        made.add(create(session, "AES key", key));
    }

    private static CK_OBJECT_HANDLE create(CK_SESSION_HANDLE session, String name, CK_ATTRIBUTE[] template) {
        CK_OBJECT_HANDLE object = new CK_OBJECT_HANDLE();
        Cryptoki.C_CreateObject(session, template, template.length, object).orThrow();
        Demo.row(name, object);
        return object;
    }

    private static CK_OBJECT_HANDLE find(CK_SESSION_HANDLE session, long objectClass, String label) {
        CK_OBJECT_HANDLE object = new CK_OBJECT_HANDLE();
        CK_RV answer =
            CTUtil.CTU_FindObject(session, new CK_OBJECT_CLASS(objectClass), ascii(label), object);
        // CKR_GENERAL_ERROR also means that there is no such object.
        answer.orThrow(CKR.GENERAL_ERROR);
        Demo.row(label, answer.isOk() ? object : answer);
        return object;
    }

    private static void read(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE key) {
        Demo.title("Read attributes of the key in one call");
        // Each value is written into the object given here, so every object must be a new one.
        CK_ATTRIBUTE[] template = {
            new CK_ATTRIBUTE(CKA.CLASS, new CK_OBJECT_CLASS()),
            new CK_ATTRIBUTE(CKA.KEY_TYPE, new CK_KEY_TYPE()),
            new CK_ATTRIBUTE(CKA.ENCRYPT, false),
            new CK_ATTRIBUTE(CKA.VALUE_LEN, 0),
            CK_ATTRIBUTE.buffer(CKA.LABEL, 64),
            CK_ATTRIBUTE.buffer(CKA.VALUE, 64),
            new CK_ATTRIBUTE(CKA.ALLOWED_MECHANISMS, CK_MECHANISM_TYPE.array(2)),
            new CK_ATTRIBUTE(CKA.ID, null)};
        // The value is sensitive and is not returned. All other attributes are.
        CK_RV answer = Cryptoki.C_GetAttributeValue(session, key, template, template.length);
        Demo.row("C_GetAttributeValue", answer);
        for (CK_ATTRIBUTE attribute : template) {
            Demo.row(attribute.type.toString().split(" ")[0], describe(attribute));
        }
    }

    private static String describe(CK_ATTRIBUTE attribute) {
        if (attribute.valueLen == CK.UNAVAILABLE_INFORMATION) {
            return "refused, length unavailable";
        }
        if (attribute.pValue == null) {
            return attribute.valueLen + " bytes, only the length was asked for";
        }
        if (attribute.pValue instanceof byte[]) {
            return '"' + new String(attribute.getBytes(), StandardCharsets.UTF_8) + '"';
        }
        if (attribute.pValue instanceof Object[]) {
            return Arrays.toString((Object[]) attribute.pValue);
        }
        return attribute.pValue.toString();
    }

    private static void change(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE settings) {
        Demo.title("Change the label of the data object");
        Demo.row("before", label(session, settings));
        byte[] label = ascii("old settings");
        CTUtil.CTU_SetAttributeValue(session, settings, new CK_ATTRIBUTE_TYPE(CKA.LABEL), label, label.length)
            .orThrow();
        Demo.row("after", label(session, settings));
    }

    private static String label(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object) {
        byte[] label = new byte[64];
        LongRef length = new LongRef();
        CTUtil.CTU_GetAttributeValue(session, object, new CK_ATTRIBUTE_TYPE(CKA.LABEL), label, label.length,
                length).orThrow();
        return new String(label, 0, (int) length.value, StandardCharsets.UTF_8);
    }

    private static CK_OBJECT_HANDLE copy(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE settings) {
        Demo.title("Copy the data object");
        CK_ATTRIBUTE[] differences = {
            new CK_ATTRIBUTE(CKA.LABEL, "copied settings"), new CK_ATTRIBUTE(CKA.TOKEN, false)};
        CK_OBJECT_HANDLE copy = new CK_OBJECT_HANDLE();
        Cryptoki.C_CopyObject(session, settings, differences, differences.length, copy).orThrow();
        Demo.row("copy", copy + ", label \"" + label(session, copy) + "\"");
        Demo.row("objects of the example", count(session));
        return copy;
    }

    private static int count(CK_SESSION_HANDLE session) {
        CK_ATTRIBUTE[] wanted = {new CK_ATTRIBUTE(CKA.APPLICATION, APPLICATION)};
        Cryptoki.C_FindObjectsInit(session, wanted, wanted.length).orThrow();
        int count = 0;
        LongRef found = new LongRef();
        CK_OBJECT_HANDLE[] page = CK_OBJECT_HANDLE.array(10);
        do {
            Cryptoki.C_FindObjects(session, page, page.length, found).orThrow();
            count += (int) found.value;
        } while (found.value > 0);
        Cryptoki.C_FindObjectsFinal(session).orThrow();
        return count;
    }

    private static void measure(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE... objects) {
        Demo.title("Measure");
        for (CK_OBJECT_HANDLE object : objects) {
            LongRef size = new LongRef();
            Cryptoki.C_GetObjectSize(session, object, size).orThrow();
            boolean told = size.value != CK.UNAVAILABLE_INFORMATION;
            Demo.row(object.toString(), told ? size + " bytes" : "the token does not tell its size");
        }
    }

    private static void destroy(CK_SESSION_HANDLE session, List<CK_OBJECT_HANDLE> made) {
        Demo.title("Destroy");
        for (CK_OBJECT_HANDLE object : made) {
            Demo.row(object.toString(), Cryptoki.C_DestroyObject(session, object).orThrow());
        }
        Demo.row("objects of the example", count(session));
    }
}
