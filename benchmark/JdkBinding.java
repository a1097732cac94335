// The operations through the binding inside the JDK, called as its own callers do.

import static java.lang.invoke.MethodType.methodType;
import static sun.security.pkcs11.wrapper.PKCS11Constants.*;

import java.lang.invoke.MethodHandle;
import java.lang.invoke.MethodHandles;

import sun.security.pkcs11.wrapper.CK_ATTRIBUTE;
import sun.security.pkcs11.wrapper.CK_C_INITIALIZE_ARGS;
import sun.security.pkcs11.wrapper.CK_MECHANISM;
import sun.security.pkcs11.wrapper.CK_RSA_PKCS_PSS_PARAMS;
import sun.security.pkcs11.wrapper.PKCS11;
import sun.security.pkcs11.wrapper.PKCS11Exception;

final class JdkBinding implements Binding {
    private static final MethodHandle FREE_HANDLE = findFreeHandle();

    private final PKCS11 p11;
    private final long session;
    private final byte[] data = new byte[DATA];
    private final byte[] encrypted = new byte[DATA];
    private final byte[] random = new byte[RANDOM];
    private final byte[] digest = new byte[DIGEST];
    private final CK_MECHANISM sha256 = new CK_MECHANISM(CKM_SHA256);
    private final CK_MECHANISM aesCbc = new CK_MECHANISM(CKM_AES_CBC, new byte[IV]);
    private final CK_MECHANISM aesKeyGen = new CK_MECHANISM(CKM_AES_KEY_GEN);
    private final CK_MECHANISM rsa = new CK_MECHANISM(CKM_SHA256_RSA_PKCS);
    private final CK_MECHANISM pss = new CK_MECHANISM(CKM_SHA256_RSA_PKCS_PSS);
    private final CK_ATTRIBUTE[] searchTemplate = {
        new CK_ATTRIBUTE(CKA_CLASS, CKO_SECRET_KEY),
        new CK_ATTRIBUTE(CKA_LABEL, new byte[LABEL])};
    private final CK_ATTRIBUTE[] keyTemplate = {
        new CK_ATTRIBUTE(CKA_CLASS, CKO_SECRET_KEY),
        new CK_ATTRIBUTE(CKA_KEY_TYPE, CKK_AES),
        new CK_ATTRIBUTE(CKA_VALUE_LEN, 32),
        new CK_ATTRIBUTE(CKA_TOKEN, false),
        new CK_ATTRIBUTE(CKA_ENCRYPT, true),
        new CK_ATTRIBUTE(CKA_DECRYPT, true),
        new CK_ATTRIBUTE(CKA_LABEL, new byte[LABEL]),
        new CK_ATTRIBUTE(CKA_ID, new byte[ID])};

    JdkBinding(PKCS11 p11) throws PKCS11Exception {
        this.p11 = p11;
        session = p11.C_OpenSession(SLOT, CKF_SERIAL_SESSION | CKF_RW_SESSION, null, null);
        pss.setParameter(new CK_RSA_PKCS_PSS_PARAMS("SHA-256", "MGF1", "SHA-256", DIGEST));
    }

    // Where the binding keeps a native mechanism (Java 17 does), the caller must free it.
    private static void free(CK_MECHANISM mechanism) {
        if (FREE_HANDLE == null) {
            return;
        }
        try {
            FREE_HANDLE.invokeExact(mechanism);
        } catch (Throwable e) {
            throw new IllegalStateException(e);
        }
    }

    private static MethodHandle findFreeHandle() {
        try {
            return MethodHandles.lookup().findVirtual(CK_MECHANISM.class, "freeHandle", methodType(void.class));
        } catch (ReflectiveOperationException e) {
            return null;
        }
    }

    /** Loads the Cryptoki library. With any other argument every call would be synchronized. */
    static PKCS11 load(String library) throws Exception {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        args.flags = CKF_OS_LOCKING_OK;
        return PKCS11.getInstance(library, "C_GetFunctionList", args, false);
    }

    @Override
    public Call call(Operation operation) {
        return switch (operation) {
            case SESSION_INFO -> () -> p11.C_GetSessionInfo(session);
            case TOKEN_INFO -> () -> p11.C_GetTokenInfo(SLOT);
            case MECHANISM_LIST -> () -> p11.C_GetMechanismList(SLOT);
            case RANDOM -> () -> p11.C_GenerateRandom(session, random);
            case DIGEST -> () -> p11.C_DigestSingle(session, sha256, data, 0, DATA, digest, 0, DIGEST);
            case ENCRYPT -> () -> {
                p11.C_EncryptInit(session, aesCbc, KEY);
                p11.C_Encrypt(session, 0, data, 0, DATA, 0, encrypted, 0, DATA);
            };
            case SIGN -> () -> {
                p11.C_SignInit(session, rsa, KEY);
                p11.C_Sign(session, data);
            };
            case GET_ATTRIBUTES -> () -> p11.C_GetAttributeValue(session, KEY, emptyTemplate(5));
            case SEARCH -> () -> {
                p11.C_FindObjectsInit(session, searchTemplate);
                p11.C_FindObjects(session, FOUND);
                p11.C_FindObjectsFinal(session);
            };
            case GENERATE_KEY -> () -> p11.C_GenerateKey(session, aesKeyGen, keyTemplate);
            case SESSION -> () -> p11.C_CloseSession(
                    p11.C_OpenSession(SLOT, CKF_SERIAL_SESSION | CKF_RW_SESSION, null, null));
            case SIGN_PSS -> () -> {
                p11.C_SignInit(session, pss, KEY);
                p11.C_Sign(session, data);
                free(pss);
            };
        };
    }

    @Override
    public Call encrypt(int bytes) {
        byte[] input = new byte[bytes];
        byte[] output = new byte[bytes];
        return () -> p11.C_Encrypt(session, 0, input, 0, bytes, 0, output, 0, bytes);
    }

    @Override
    public Call setAttributes(int count) {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[count];
        for (int i = 0; i < count; i++) {
            template[i] = switch (i % 5) {
                case 0 -> new CK_ATTRIBUTE(CKA_CLASS, CKO_SECRET_KEY);
                case 1 -> new CK_ATTRIBUTE(CKA_KEY_TYPE, CKK_AES);
                case 2 -> new CK_ATTRIBUTE(CKA_TOKEN, false);
                case 3 -> new CK_ATTRIBUTE(CKA_LABEL, new byte[LABEL]);
                default -> new CK_ATTRIBUTE(CKA_ID, new byte[ID]);
            };
        }
        return () -> p11.C_SetAttributeValue(session, KEY, template);
    }

    @Override
    public Call getAttributes(int count) {
        CK_ATTRIBUTE[] template = emptyTemplate(count);
        return () -> p11.C_GetAttributeValue(session, KEY, template);
    }

    // This binding creates the values itself.
    private static CK_ATTRIBUTE[] emptyTemplate(int count) {
        CK_ATTRIBUTE[] template = new CK_ATTRIBUTE[count];
        for (int i = 0; i < count; i++) {
            template[i] = new CK_ATTRIBUTE(switch (i % 5) {
                case 0 -> CKA_CLASS;
                case 1 -> CKA_KEY_TYPE;
                case 2 -> CKA_TOKEN;
                case 3 -> CKA_LABEL;
                default -> CKA_ID;
            });
        }
        return template;
    }
}
