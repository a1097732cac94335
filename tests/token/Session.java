// What end-to-end tests and endurance programs share: a session, and shorthand for what they do in it.
package token;

import static token.FreshToken.*;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

import java.util.stream.Stream;

/** A read/write session. Every call that fails throws. */
public final class Session {
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

    /** Creates the template of a public secret key that can be read and used for everything. */
    public static CK_ATTRIBUTE[] keyTemplate(long keyType, Object... more) {
        return template(Stream.concat(Stream.of(CKA.CLASS, CKO.SECRET_KEY, CKA.KEY_TYPE, keyType, CKA.PRIVATE, false,
                CKA.SENSITIVE, false, CKA.EXTRACTABLE, true, CKA.ENCRYPT, true, CKA.DECRYPT, true, CKA.SIGN, true,
                CKA.VERIFY, true, CKA.WRAP, true, CKA.UNWRAP, true), Stream.of(more)).toArray());
    }

    public CK_OBJECT_HANDLE create(CK_ATTRIBUTE... template) {
        CK_OBJECT_HANDLE object = new CK_OBJECT_HANDLE();
        Cryptoki.C_CreateObject(handle, template, template.length, object).orThrow();
        return object;
    }

    public CK_OBJECT_HANDLE secretKey(long keyType, byte[] value) {
        return create(keyTemplate(keyType, CKA.VALUE, value));
    }

    public void destroy(CK_OBJECT_HANDLE... objects) {
        for (CK_OBJECT_HANDLE object : objects) {
            Cryptoki.C_DestroyObject(handle, object).orThrow();
        }
    }

    public byte[] read(CK_OBJECT_HANDLE object, long type) {
        CK_ATTRIBUTE value = CK_ATTRIBUTE.buffer(type, 1000);
        Cryptoki.C_GetAttributeValue(handle, object, new CK_ATTRIBUTE[] {value}, 1).orThrow();
        return value.getBytes();
    }

    public byte[] whole(Transformation native_, byte[] in) {
        return bytes((array, length) -> native_.call(handle, in, in.length, array, length));
    }

    public byte[] encrypt(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        Cryptoki.C_EncryptInit(handle, mechanism, key).orThrow();
        return whole(Cryptoki::C_Encrypt, data);
    }

    public byte[] decrypt(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        Cryptoki.C_DecryptInit(handle, mechanism, key).orThrow();
        return whole(Cryptoki::C_Decrypt, data);
    }

    public byte[] sign(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        Cryptoki.C_SignInit(handle, mechanism, key).orThrow();
        return whole(Cryptoki::C_Sign, data);
    }
}
