// Names for values and values for names: mechanisms, object classes, key types, attributes, session states
// and return values, as the native library knows them.

import static token.FreshToken.*;

import halvorn.zerlin.CTUtil;
import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKK;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.constants.CKR;
import halvorn.zerlin.constants.CKS;
import halvorn.zerlin.constants.CK_ATTRIBUTE_TYPE;
import halvorn.zerlin.constants.CK_KEY_TYPE;
import halvorn.zerlin.constants.CK_MECHANISM_TYPE;
import halvorn.zerlin.constants.CK_OBJECT_CLASS;
import halvorn.zerlin.constants.CK_RV;
import halvorn.zerlin.constants.CK_STATE;
import halvorn.zerlin.constants.TypedValue;

import java.nio.charset.StandardCharsets;

import token.FreshToken;

public final class Names {
    // The names need neither an initialised library nor a token.
    public static void main(String[] arguments) {
        Demo.title("Mechanisms");
        for (long value : new long[] {CKM.RSA_PKCS, CKM.AES_CBC_PAD, CKM.SHA256, CKM.ECIES, 0x80007777L}) {
            CK_MECHANISM_TYPE type = new CK_MECHANISM_TYPE(value);
            show(value, (array, length) -> CTUtil.CTU_GetMechanismTypeString(type, array, length));
        }

        Demo.title("Object classes");
        for (long value : new long[] {CKO.DATA, CKO.CERTIFICATE, CKO.SECRET_KEY, CKO.CRL}) {
            CK_OBJECT_CLASS objectClass = new CK_OBJECT_CLASS(value);
            show(value, (array, length) -> CTUtil.CTU_GetObjectClassString(objectClass, array, length));
        }

        Demo.title("Key types");
        for (long value : new long[] {CKK.RSA, CKK.EC, CKK.AES, CKK.SEED}) {
            CK_KEY_TYPE type = new CK_KEY_TYPE(value);
            show(value, (array, length) -> CTUtil.CTU_GetKeyTypeString(type, array, length));
        }

        Demo.title("Attributes");
        for (long value : new long[] {CKA.LABEL, CKA.MODULUS, CKA.EC_POINT, CKA.USAGE_LIMIT}) {
            CK_ATTRIBUTE_TYPE type = new CK_ATTRIBUTE_TYPE(value);
            show(value, (array, length) -> CTUtil.CTU_GetAttributeTypeString(type, array, length));
        }

        Demo.title("Session states");
        for (long value : new long[] {CKS.RO_PUBLIC_SESSION, CKS.RW_USER_FUNCTIONS, CKS.RW_SO_FUNCTIONS}) {
            CK_STATE state = new CK_STATE(value);
            show(value, (array, length) -> CTUtil.CTU_GetSessionStateString(state, array, length));
        }

        Demo.title("Return values");
        for (long value : new long[] {CKR.OK, CKR.PIN_INCORRECT, CKR.BUFFER_TOO_SMALL, CKR.TIME_STAMP}) {
            CK_RV rv = new CK_RV(value);
            show(value, (array, length) -> CTUtil.CTU_GetErrorString(rv, array, length));
        }

        lookUp();
    }

    // Each look-up returns an object of its own class; TypedValue.toString() names it as in the Java classes.
    private static void lookUp() {
        Demo.title("Look up by name");
        CK_MECHANISM_TYPE mechanism = CTUtil.CTU_GetMechanismTypeValue(ascii("CKM_AES_CBC"));
        Demo.row("CKM_AES_CBC", mechanism);
        CK_KEY_TYPE keyType = CTUtil.CTU_GetKeyTypeValue(ascii("AES"));
        Demo.row("AES", keyType);
        CK_ATTRIBUTE_TYPE attribute = CTUtil.CTU_GetAttributeTypeValue(ascii("EC_PARAMS"));
        Demo.row("EC_PARAMS", attribute);
        CK_OBJECT_CLASS objectClass = CTUtil.CTU_GetObjectClassValue(ascii("CKO_PRIVATE_KEY"));
        Demo.row("CKO_PRIVATE_KEY", objectClass);
        CK_STATE state = CTUtil.CTU_GetSessionStateValue(ascii("Read Only User Functions"));
        Demo.row("Read Only User Functions", state);
        Demo.row("PIN locked", CTUtil.CTU_GetErrorValue(ascii("PIN locked")));
        TypedValue unknown = CTUtil.CTU_GetKeyTypeValue(ascii("no such key type"));
        Demo.row("no such key type", unknown);
    }

    private static void show(long value, FreshToken.Output name) {
        Demo.row("0x" + Long.toHexString(value), new String(bytes(name), StandardCharsets.US_ASCII));
    }
}
