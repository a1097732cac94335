// A session with a token: login, objects, keys and cryptography.
package halvorn.zerlin.token;

import static halvorn.zerlin.Cryptoki.*;

import halvorn.zerlin.CK_ATTRIBUTE;
import halvorn.zerlin.CK_MECHANISM;
import halvorn.zerlin.CK_OBJECT_HANDLE;
import halvorn.zerlin.CK_SESSION_HANDLE;
import halvorn.zerlin.CK_SESSION_INFO;
import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.LongRef;
import halvorn.zerlin.constants.CKR;
import halvorn.zerlin.constants.CKS;
import halvorn.zerlin.constants.CK_RV;
import halvorn.zerlin.constants.CK_USER_TYPE;

import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.NoSuchElementException;
import java.util.function.BiFunction;

/**
 * A session with a token. Keys are the handles of the natives, so any line may be a native:
 * {@code Cryptoki.C_SignInit(session.handle(), mechanism, key)}.
 *
 * <p>Each description begins with the functions that the method calls, in order. Every return value that a method does
 * not expect is a {@link halvorn.zerlin.CryptokiException} that names the call; the {@code @throws} lines have the
 * usual values, and {@link halvorn.zerlin.Cryptoki Cryptoki} those that every native may return. No argument may be
 * null, unless its description says so: for a null array, template or stream the methods throw
 * {@code NullPointerException}; a null handle or mechanism is passed on, and the library refuses it. If a library reports a
 * result that is longer than its array, that is {@code CKR_BUFFER_TOO_SMALL}. If an operation that has begun fails, the
 * method ends it with its final function and drops the result, so that the session can be used again; a signature that
 * is given up so still counts as one.
 *
 * <p>A session is for one thread at a time. Handles and mechanisms may be shared by threads, but not a mechanism whose
 * parameter receives results. The login belongs to the token, not to one session: it ends with the program's last
 * session on the token, and then the handles of private objects are void. Handles of session objects end with the
 * session that created them.
 */
public final class Session implements AutoCloseable {
    CK_SESSION_HANDLE handle; // a pool takes it away from a session that was lost
    private final Calls.Output encryptFinal = (array, n) -> C_EncryptFinal(handle, array, n);
    private final Calls.Output decryptFinal = (array, n) -> C_DecryptFinal(handle, array, n);
    private final Calls.Output digestFinal = (array, n) -> C_DigestFinal(handle, array, n);
    private final Calls.Output signFinal = (array, n) -> C_SignFinal(handle, array, n);

    /**
     * Calls nothing: takes over a session that {@code C_OpenSession} has opened. {@link #close} closes it.
     *
     * @param handle the session, kept without a copy
     */
    public Session(CK_SESSION_HANDLE handle) {
        this.handle = handle;
    }

    /**
     * Calls nothing: returns the handle for natives.
     *
     * @return the handle; after {@link #close} a handle of value 0, which the library refuses
     */
    public CK_SESSION_HANDLE handle() {
        return handle;
    }

    /**
     * Calls {@code C_GetSessionInfo}.
     *
     * @return a new record
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_SESSION_HANDLE_INVALID} if the session is gone
     */
    public CK_SESSION_INFO info() {
        CK_SESSION_INFO info = new CK_SESSION_INFO();
        Calls.check("C_GetSessionInfo", C_GetSessionInfo(handle, info));
        return info;
    }

    /**
     * Calls {@code C_GetSessionInfo}: returns whether the user or the security officer is logged in.
     *
     * @return true if someone is
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_SESSION_HANDLE_INVALID} if the session is gone
     */
    public boolean isLoggedIn() {
        long state = info().state.m_value;
        return state != CKS.RO_PUBLIC_SESSION && state != CKS.RW_PUBLIC_SESSION;
    }

    /**
     * Calls {@code C_CloseSession}, once: a second {@code close} does nothing, and so cannot close another session that
     * got the same number. A session that is gone already is no error.
     */
    @Override
    public void close() {
        CK_SESSION_HANDLE open = handle;
        handle = new CK_SESSION_HANDLE();
        if (open.m_value != 0) {
            C_CloseSession(open).orThrow("C_CloseSession", CKR.SESSION_HANDLE_INVALID, CKR.SESSION_CLOSED,
                    CKR.DEVICE_REMOVED);
        }
    }

    // Login and PINs

    /**
     * Calls {@code C_Login} without a PIN: the user enters it at the token's own PIN pad.
     *
     * @param user a value of {@link halvorn.zerlin.constants.CKU CKU}
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_PIN_INCORRECT}, {@code CKR_FUNCTION_CANCELED};
     *         {@code CKR_ARGUMENTS_BAD} if the token has no PIN pad; {@code CKR_USER_ALREADY_LOGGED_IN}: the PIN was
     *         not checked
     */
    public void login(long user) {
        Calls.check("C_Login", C_Login(handle, new CK_USER_TYPE(user), null, 0));
    }

    /**
     * Calls {@code C_Login}. All sessions of this program with the token are logged in then.
     *
     * @param user a value of {@link halvorn.zerlin.constants.CKU CKU}
     * @param pin  the PIN; wiped, also if the call fails
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_PIN_INCORRECT}, {@code CKR_PIN_LOCKED};
     *         {@code CKR_USER_ALREADY_LOGGED_IN}: the PIN was not checked
     */
    public void login(long user, byte[] pin) {
        Calls.withPins("C_Login", () -> C_Login(handle, new CK_USER_TYPE(user), pin, pin.length), pin);
    }

    /**
     * Calls {@code C_Login}, as {@link #login(long, byte[])}.
     *
     * @param user a value of {@link halvorn.zerlin.constants.CKU CKU}
     * @param pin  the PIN, which the token receives in UTF-8; wiped, and its UTF-8 form too, also if the call fails
     * @throws halvorn.zerlin.CryptokiException as {@link #login(long, byte[])}
     */
    public void login(long user, char[] pin) {
        login(user, Calls.utf8(pin));
    }

    /**
     * Calls {@code C_Logout}. All sessions of this program with the token are logged out then, and handles of private
     * objects are void.
     *
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_USER_NOT_LOGGED_IN}
     */
    public void logout() {
        Calls.check("C_Logout", C_Logout(handle));
    }

    /**
     * Calls {@code C_InitPIN}: sets the PIN of the user. The security officer must be logged in.
     *
     * @param pin the new PIN; wiped, also if the call fails
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_USER_NOT_LOGGED_IN}, {@code CKR_PIN_LEN_RANGE}
     */
    public void initPin(byte[] pin) {
        Calls.withPins("C_InitPIN", () -> C_InitPIN(handle, pin, pin.length), pin);
    }

    /**
     * Calls {@code C_InitPIN}, as {@link #initPin(byte[])}.
     *
     * @param pin the new PIN, which the token receives in UTF-8; wiped, and its UTF-8 form too, also if the call fails
     * @throws halvorn.zerlin.CryptokiException as {@link #initPin(byte[])}
     */
    public void initPin(char[] pin) {
        initPin(Calls.utf8(pin));
    }

    /**
     * Calls {@code C_SetPIN}: changes the PIN of who is logged in, or of the user if nobody is.
     *
     * @param oldPin the present PIN; wiped, also if the call fails
     * @param newPin the new PIN; wiped, also if the call fails
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_PIN_INCORRECT}, {@code CKR_PIN_LEN_RANGE},
     *         {@code CKR_SESSION_READ_ONLY}
     */
    public void setPin(byte[] oldPin, byte[] newPin) {
        Calls.withPins("C_SetPIN", () -> C_SetPIN(handle, oldPin, oldPin.length, newPin, newPin.length), oldPin, newPin);
    }

    /**
     * Calls {@code C_SetPIN}, as {@link #setPin(byte[], byte[])}.
     *
     * @param oldPin the present PIN, which the token receives in UTF-8; wiped, and its UTF-8 form too
     * @param newPin the new PIN; the same holds for it
     * @throws halvorn.zerlin.CryptokiException as {@link #setPin(byte[], byte[])}
     */
    public void setPin(char[] oldPin, char[] newPin) {
        setPin(Calls.utf8(oldPin), Calls.utf8(newPin));
    }

    // Objects

    /**
     * Calls {@code C_CreateObject}.
     *
     * @param template the attributes of the new object
     * @return a new handle
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_TEMPLATE_INCOMPLETE},
     *         {@code CKR_TEMPLATE_INCONSISTENT}, {@code CKR_SESSION_READ_ONLY}
     */
    public CK_OBJECT_HANDLE create(Attributes template) {
        return make("C_CreateObject", template, (t, made) -> C_CreateObject(handle, t, t.length, made));
    }

    /**
     * Calls {@code C_CopyObject}.
     *
     * @param object   the object to copy
     * @param template the attributes in which the copy differs
     * @return a new handle, of the copy
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_OBJECT_HANDLE_INVALID},
     *         {@code CKR_TEMPLATE_INCONSISTENT}, {@code CKR_ATTRIBUTE_READ_ONLY}
     */
    public CK_OBJECT_HANDLE copy(CK_OBJECT_HANDLE object, Attributes template) {
        return make("C_CopyObject", template, (t, made) -> C_CopyObject(handle, object, t, t.length, made));
    }

    /**
     * Calls {@code C_DestroyObject}.
     *
     * @param object the object
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_OBJECT_HANDLE_INVALID}, {@code CKR_SESSION_READ_ONLY}
     */
    public void destroy(CK_OBJECT_HANDLE object) {
        Calls.check("C_DestroyObject", C_DestroyObject(handle, object));
    }

    /**
     * Calls {@code C_FindObjectsInit}, {@code C_FindObjects} until it reports no more objects, and
     * {@code C_FindObjectsFinal}, which is called even if the search fails. There is no upper limit: the list holds all
     * that the library finds.
     *
     * @param wanted the attributes that an object must have to be found; an empty set finds every object
     * @return a new list of new handles; empty if there is no such object
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_OPERATION_ACTIVE} if a search that a native has begun
     *         is active, {@code CKR_ATTRIBUTE_VALUE_INVALID}
     */
    public List<CK_OBJECT_HANDLE> find(Attributes wanted) {
        CK_ATTRIBUTE[] template = wanted.toArray();
        List<CK_OBJECT_HANDLE> found = new ArrayList<>();
        LongRef count = new LongRef();
        return Calls.operation("C_FindObjectsInit", C_FindObjectsInit(handle, template, template.length), () -> {
            do {
                CK_OBJECT_HANDLE[] page = CK_OBJECT_HANDLE.array(64);
                CK_RV rv = C_FindObjects(handle, page, page.length, count);
                found.addAll(Arrays.asList(page).subList(0, Calls.count("C_FindObjects", rv, count.value, page.length)));
            } while (count.value > 0);
            Calls.check("C_FindObjectsFinal", C_FindObjectsFinal(handle));
            return found;
        }, (array, length) -> C_FindObjectsFinal(handle));
    }

    /**
     * Calls what {@link #find} calls, and expects one object.
     *
     * @param wanted the attributes that the object must have
     * @return its handle
     * @throws NoSuchElementException if there is none, or if there are several
     * @throws halvorn.zerlin.CryptokiException as {@link #find}
     */
    public CK_OBJECT_HANDLE findOne(Attributes wanted) {
        List<CK_OBJECT_HANDLE> found = find(wanted);
        if (found.size() != 1) {
            throw new NoSuchElementException(found.size() + " objects instead of one have " + wanted);
        }
        return found.get(0);
    }

    /**
     * Calls {@code C_GetAttributeValue} once, or twice if one of the attributes has no fixed length: the first call asks
     * for those lengths, and the second one reads those values.
     *
     * @param object the object
     * @param types  values of {@link halvorn.zerlin.constants.CKA CKA}
     * @return the attributes that could be read, in the order of {@code types}; without those that are sensitive, and
     *         without those that the object does not have. Its arrays belong to the caller, who wipes secret ones
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_OBJECT_HANDLE_INVALID}; one attribute that a module
     *         cannot read for another reason makes the whole call fail, so read the attributes one by one then
     */
    public Attributes read(CK_OBJECT_HANDLE object, long... types) {
        CK_ATTRIBUTE[] all = new CK_ATTRIBUTE[types.length];
        for (int i = 0; i < types.length; i++) {
            Encoding encoding = Encoding.of(types[i]);
            int capacity = encoding == null ? 0 : encoding.capacity();
            all[i] = new CK_ATTRIBUTE(types[i], capacity == 0 ? null : new byte[capacity], capacity);
        }
        getAttributes(object, all);
        CK_ATTRIBUTE[] rest = Arrays.stream(all).filter(a -> a.pValue == null && Calls.isAvailable(a.valueLen))
            .toArray(CK_ATTRIBUTE[]::new);
        for (CK_ATTRIBUTE attribute : rest) {
            attribute.pValue = new byte[(int) attribute.valueLen];
        }
        getAttributes(object, rest);
        Attributes values = new Attributes();
        for (int i = 0; i < types.length; i++) {
            byte[] value = (byte[]) all[i].pValue;
            if (value != null && Calls.isAvailable(all[i].valueLen)) {
                int length = Calls.count("C_GetAttributeValue", new CK_RV(), all[i].valueLen, value.length);
                values.put(types[i], length == value.length ? value : Arrays.copyOf(value, length));
            }
        }
        return values;
    }

    /**
     * Calls {@code C_GetAttributeValue} twice, as {@link #read}, with all attributes of the table {@link Encoding} but
     * those that may be secret, which it does not ask for.
     *
     * @param object the object
     * @return the attributes that could be read
     * @throws halvorn.zerlin.CryptokiException as {@link #read}
     */
    public Attributes readAll(CK_OBJECT_HANDLE object) {
        return read(object, Arrays.stream(Encoding.types()).filter(type -> Encoding.of(type) != Encoding.SECRET).toArray());
    }

    /**
     * Calls {@code C_SetAttributeValue}.
     *
     * @param object the object
     * @param values the attributes with their new values
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_ATTRIBUTE_READ_ONLY},
     *         {@code CKR_ATTRIBUTE_VALUE_INVALID}, {@code CKR_SESSION_READ_ONLY}
     */
    public void write(CK_OBJECT_HANDLE object, Attributes values) {
        CK_ATTRIBUTE[] template = values.toArray();
        Calls.check("C_SetAttributeValue", C_SetAttributeValue(handle, object, template, template.length));
    }

    // Keys

    /**
     * Calls {@code C_GenerateKey}.
     *
     * @param mechanism the mechanism; results are written into its parameter
     * @param template  the attributes of the new key
     * @return a new handle
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_MECHANISM_INVALID}, {@code CKR_TEMPLATE_INCOMPLETE},
     *         {@code CKR_TEMPLATE_INCONSISTENT}
     */
    public CK_OBJECT_HANDLE generateKey(CK_MECHANISM mechanism, Attributes template) {
        return make("C_GenerateKey", template, (t, made) -> C_GenerateKey(handle, mechanism, t, t.length, made));
    }

    /**
     * Calls {@code C_GenerateKeyPair}.
     *
     * @param mechanism  the mechanism; results are written into its parameter
     * @param publicKey  the attributes of the public key
     * @param privateKey the attributes of the private key
     * @return two new handles
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_MECHANISM_INVALID}, {@code CKR_TEMPLATE_INCOMPLETE},
     *         {@code CKR_TEMPLATE_INCONSISTENT}
     */
    public KeyPairHandles generateKeyPair(CK_MECHANISM mechanism, Attributes publicKey, Attributes privateKey) {
        CK_OBJECT_HANDLE publicHandle = new CK_OBJECT_HANDLE();
        CK_ATTRIBUTE[] publicTemplate = publicKey.toArray();
        CK_OBJECT_HANDLE privateHandle = make("C_GenerateKeyPair", privateKey, (t, made) -> C_GenerateKeyPair(handle,
                mechanism, publicTemplate, publicTemplate.length, t, t.length, publicHandle, made));
        return new KeyPairHandles(publicHandle, privateHandle);
    }

    /**
     * Calls {@code C_WrapKey}, and again if the wrapped key is longer than 512 bytes: encrypts a key with another one.
     *
     * @param mechanism   the mechanism
     * @param wrappingKey the key to encrypt with
     * @param key         the key to be encrypted
     * @return the wrapped key, a new array
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_KEY_UNEXTRACTABLE}, {@code CKR_KEY_NOT_WRAPPABLE},
     *         {@code CKR_MECHANISM_INVALID}
     */
    public byte[] wrap(CK_MECHANISM mechanism, CK_OBJECT_HANDLE wrappingKey, CK_OBJECT_HANDLE key) {
        return Calls.output("C_WrapKey", Calls.RESULT, false,
                (array, length) -> C_WrapKey(handle, mechanism, wrappingKey, key, array, length));
    }

    /**
     * Calls {@code C_UnwrapKey}: decrypts a wrapped key and creates a key from it.
     *
     * @param mechanism     the mechanism; results are written into its parameter
     * @param unwrappingKey the key to decrypt with
     * @param wrapped       the wrapped key
     * @param template      the attributes of the new key
     * @return a new handle
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_WRAPPED_KEY_INVALID},
     *         {@code CKR_TEMPLATE_INCONSISTENT}, {@code CKR_MECHANISM_INVALID}
     */
    public CK_OBJECT_HANDLE unwrap(CK_MECHANISM mechanism, CK_OBJECT_HANDLE unwrappingKey, byte[] wrapped,
            Attributes template) {
        return make("C_UnwrapKey", template, (t, made) -> C_UnwrapKey(handle, mechanism, unwrappingKey, wrapped,
                wrapped.length, t, t.length, made));
    }

    /**
     * Calls {@code C_DeriveKey}.
     *
     * @param mechanism the mechanism; results are written into its parameter
     * @param base      the key to derive from
     * @param template  the attributes of the new key
     * @return a new handle; its value is 0 for a mechanism that returns its keys in its parameter
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_MECHANISM_PARAM_INVALID},
     *         {@code CKR_TEMPLATE_INCONSISTENT}, {@code CKR_MECHANISM_INVALID}
     */
    public CK_OBJECT_HANDLE derive(CK_MECHANISM mechanism, CK_OBJECT_HANDLE base, Attributes template) {
        return make("C_DeriveKey", template, (t, made) -> C_DeriveKey(handle, mechanism, base, t, t.length, made));
    }

    // Cryptography

    /**
     * Calls {@code C_EncryptInit} and {@code C_Encrypt}, the latter again if the result is longer than guessed. The
     * guess suffices for AES and DES3 in CBC, CBC_PAD and ECB and for AES in CTR and GCM.
     *
     * @param mechanism the mechanism
     * @param key       the key to encrypt with
     * @param data      the clear text
     * @return the cipher text, a new array
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_MECHANISM_INVALID}, {@code CKR_KEY_HANDLE_INVALID},
     *         {@code CKR_DATA_LEN_RANGE}
     */
    public byte[] encrypt(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        int guess = Calls.encryptedLength(mechanism, data.length);
        return Calls.single("C_EncryptInit", C_EncryptInit(handle, mechanism, key), "C_Encrypt", guess, false,
                (array, n) -> C_Encrypt(handle, data, data.length, array, n), encryptFinal);
    }

    /**
     * Calls {@code C_EncryptInit}, {@code C_EncryptUpdate} for each 64 KiB, and {@code C_EncryptFinal}. Its buffers are
     * wiped.
     *
     * @param mechanism the mechanism
     * @param key       the key to encrypt with
     * @param in        the clear text, read to its end and not closed
     * @param out       receives the cipher text; not closed
     * @return the length of the cipher text in bytes
     * @throws IOException if a stream throws it; the encryption is ended
     * @throws halvorn.zerlin.CryptokiException as {@link #encrypt(CK_MECHANISM, CK_OBJECT_HANDLE, byte[])}
     */
    public long encrypt(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, InputStream in, OutputStream out)
            throws IOException {
        return Calls.operation("C_EncryptInit", C_EncryptInit(handle, mechanism, key), () -> Calls.pass(in, out,
                "C_EncryptUpdate", (data, length, array, n) -> C_EncryptUpdate(handle, data, length, array, n),
                "C_EncryptFinal", encryptFinal), encryptFinal);
    }

    /**
     * Calls {@code C_DecryptInit} and {@code C_Decrypt}, the latter again if the clear text is longer than the cipher
     * text, which no usual mechanism does. A buffer that is longer than the result is wiped.
     *
     * @param mechanism the mechanism
     * @param key       the key to decrypt with
     * @param data      the cipher text
     * @return the clear text, a new array that the caller wipes
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_ENCRYPTED_DATA_INVALID},
     *         {@code CKR_ENCRYPTED_DATA_LEN_RANGE}, {@code CKR_KEY_HANDLE_INVALID}; SoftHSM reports wrong padding as
     *         {@code CKR_GENERAL_ERROR}
     */
    public byte[] decrypt(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        int guess = data.length;
        return Calls.single("C_DecryptInit", C_DecryptInit(handle, mechanism, key), "C_Decrypt", guess, true,
                (array, n) -> C_Decrypt(handle, data, data.length, array, n), decryptFinal);
    }

    /**
     * Calls {@code C_DecryptInit}, {@code C_DecryptUpdate} for each 64 KiB, and {@code C_DecryptFinal}. Its buffers are
     * wiped. <b>Warning.</b> Clear text is written to the stream before padding or tag were checked: use it only after
     * this method has returned.
     *
     * @param mechanism the mechanism
     * @param key       the key to decrypt with
     * @param in        the cipher text, read to its end and not closed
     * @param out       receives the clear text; not closed
     * @return the length of the clear text in bytes
     * @throws IOException if a stream throws it; the decryption is ended
     * @throws halvorn.zerlin.CryptokiException as {@link #decrypt(CK_MECHANISM, CK_OBJECT_HANDLE, byte[])}
     */
    public long decrypt(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, InputStream in, OutputStream out)
            throws IOException {
        return Calls.operation("C_DecryptInit", C_DecryptInit(handle, mechanism, key), () -> Calls.pass(in, out,
                "C_DecryptUpdate", (data, length, array, n) -> C_DecryptUpdate(handle, data, length, array, n),
                "C_DecryptFinal", decryptFinal), decryptFinal);
    }

    /**
     * Calls {@code C_DigestInit} and {@code C_Digest}, the latter again if the digest is longer than 64 bytes.
     *
     * @param mechanism the mechanism
     * @param data      the data
     * @return the digest, a new array
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_MECHANISM_INVALID}
     */
    public byte[] digest(CK_MECHANISM mechanism, byte[] data) {
        int length = data.length;
        return Calls.single("C_DigestInit", C_DigestInit(handle, mechanism), "C_Digest", Calls.DIGEST, false,
                (array, n) -> C_Digest(handle, data, length, array, n), digestFinal);
    }

    /**
     * Calls {@code C_DigestInit}, {@code C_DigestUpdate} for each 64 KiB, and {@code C_DigestFinal}.
     *
     * @param mechanism the mechanism
     * @param in        the data, read to its end and not closed
     * @return the digest, a new array
     * @throws IOException if the stream throws it; the digest is ended
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_MECHANISM_INVALID}
     */
    public byte[] digest(CK_MECHANISM mechanism, InputStream in) throws IOException {
        return Calls.operation("C_DigestInit", C_DigestInit(handle, mechanism), () -> {
            Calls.read(in, (part, n) -> Calls.check("C_DigestUpdate", C_DigestUpdate(handle, part, n)));
            return Calls.output("C_DigestFinal", Calls.DIGEST, false, digestFinal);
        }, digestFinal);
    }

    /**
     * Calls {@code C_SignInit} and {@code C_Sign}, the latter again if the signature is longer than 512 bytes. ECDSA
     * signatures are the numbers r and s; {@link Keys#signatureToDer} converts them.
     *
     * @param mechanism the mechanism
     * @param key       the private or secret key to sign with
     * @param data      the data
     * @return the signature or MAC, a new array
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_MECHANISM_INVALID}, {@code CKR_KEY_HANDLE_INVALID},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}, {@code CKR_DATA_LEN_RANGE}
     */
    public byte[] sign(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data) {
        int length = data.length;
        return Calls.single("C_SignInit", C_SignInit(handle, mechanism, key), "C_Sign", Calls.RESULT, false,
                (array, n) -> C_Sign(handle, data, length, array, n), signFinal);
    }

    /**
     * Calls {@code C_SignInit}, {@code C_SignUpdate} for each 64 KiB, and {@code C_SignFinal}.
     *
     * @param mechanism the mechanism
     * @param key       the private or secret key to sign with
     * @param in        the data, read to its end and not closed
     * @return the signature or MAC, a new array
     * @throws IOException if the stream throws it; the signature is ended and dropped
     * @throws halvorn.zerlin.CryptokiException as {@link #sign(CK_MECHANISM, CK_OBJECT_HANDLE, byte[])}
     */
    public byte[] sign(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, InputStream in) throws IOException {
        return Calls.operation("C_SignInit", C_SignInit(handle, mechanism, key), () -> {
            Calls.read(in, (part, n) -> Calls.check("C_SignUpdate", C_SignUpdate(handle, part, n)));
            return Calls.output("C_SignFinal", Calls.RESULT, false, signFinal);
        }, signFinal);
    }

    /**
     * Calls {@code C_VerifyInit} and {@code C_Verify}.
     *
     * @param mechanism the mechanism
     * @param key       the public or secret key to verify with
     * @param data      the data
     * @param signature the signature or MAC
     * @return true if it is right; false for {@code CKR_SIGNATURE_INVALID} and {@code CKR_SIGNATURE_LEN_RANGE}
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_MECHANISM_INVALID}, {@code CKR_KEY_HANDLE_INVALID},
     *         {@code CKR_KEY_FUNCTION_NOT_PERMITTED}
     */
    public boolean verify(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, byte[] data, byte[] signature) {
        int length = data.length;
        int signatureLength = signature.length;
        return Calls.operation("C_VerifyInit", C_VerifyInit(handle, mechanism, key),
                () -> Calls.isValid("C_Verify", C_Verify(handle, data, length, signature, signatureLength)),
                (array, n) -> C_VerifyFinal(handle, signature, signatureLength));
    }

    /**
     * Calls {@code C_VerifyInit}, {@code C_VerifyUpdate} for each 64 KiB, and {@code C_VerifyFinal}.
     *
     * @param mechanism the mechanism
     * @param key       the public or secret key to verify with
     * @param in        the data, read to its end and not closed
     * @param signature the signature or MAC
     * @return true if it is right; false for {@code CKR_SIGNATURE_INVALID} and {@code CKR_SIGNATURE_LEN_RANGE}
     * @throws IOException if the stream throws it; the verification is ended
     * @throws halvorn.zerlin.CryptokiException as {@link #verify(CK_MECHANISM, CK_OBJECT_HANDLE, byte[], byte[])}
     */
    public boolean verify(CK_MECHANISM mechanism, CK_OBJECT_HANDLE key, InputStream in, byte[] signature)
            throws IOException {
        int signatureLength = signature.length;
        return Calls.operation("C_VerifyInit", C_VerifyInit(handle, mechanism, key), () -> {
            Calls.read(in, (part, n) -> Calls.check("C_VerifyUpdate", C_VerifyUpdate(handle, part, n)));
            return Calls.isValid("C_VerifyFinal", C_VerifyFinal(handle, signature, signatureLength));
        }, (array, n) -> C_VerifyFinal(handle, signature, signatureLength));
    }

    /**
     * Calls {@code C_GenerateRandom}.
     *
     * @param length the number of bytes; not negative
     * @return a new array of that length
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_RANDOM_NO_RNG}
     */
    public byte[] random(int length) {
        byte[] bytes = new byte[length];
        Calls.check("C_GenerateRandom", C_GenerateRandom(handle, bytes, length));
        return bytes;
    }

    /**
     * Calls {@code C_SeedRandom}: mixes a seed into the token's random number generator.
     *
     * @param seed the seed; not wiped
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_RANDOM_SEED_NOT_SUPPORTED}, {@code CKR_RANDOM_NO_RNG}
     */
    public void seed(byte[] seed) {
        Calls.check("C_SeedRandom", C_SeedRandom(handle, seed, seed.length));
    }

    // The vendor's extensions

    /**
     * Calls {@code CT_InitToken}: initialises a token from this session.
     *
     * @param value the second argument of the function, whose vendor defines its meaning
     * @param pin   the PIN; wiped, also if the call fails
     * @param label the label, at most 32 bytes in UTF-8; padded with blanks
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_FUNCTION_NOT_SUPPORTED}, {@code CKR_PIN_INCORRECT}
     * @throws IllegalArgumentException if the label is too long
     */
    public void vendorInitToken(long value, byte[] pin, String label) {
        Calls.withPins("CT_InitToken",
                () -> CT_InitToken(handle, value, pin, pin.length, CK_TOKEN_INFO.paddedLabel(label)), pin);
    }

    /**
     * Calls {@code CT_InitToken}, as {@link #vendorInitToken(long, byte[], String)}.
     *
     * @param value the second argument of the function, whose vendor defines its meaning
     * @param pin   the PIN, which the token receives in UTF-8; wiped, and its UTF-8 form too, also if the call fails
     * @param label the label, at most 32 bytes in UTF-8; padded with blanks
     * @throws halvorn.zerlin.CryptokiException as {@link #vendorInitToken(long, byte[], String)}
     * @throws IllegalArgumentException if the label is too long
     */
    public void vendorInitToken(long value, char[] pin, String label) {
        vendorInitToken(value, Calls.utf8(pin), label);
    }

    /**
     * Calls {@code CT_ResetToken}: resets the token of this session, which is gone then.
     *
     * @param pin   the PIN; wiped, also if the call fails
     * @param label the label, at most 32 bytes in UTF-8; padded with blanks
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_FUNCTION_NOT_SUPPORTED}, {@code CKR_PIN_INCORRECT}
     * @throws IllegalArgumentException if the label is too long
     */
    public void vendorResetToken(byte[] pin, String label) {
        Calls.withPins("CT_ResetToken", () -> CT_ResetToken(handle, pin, pin.length, CK_TOKEN_INFO.paddedLabel(label)),
                pin);
    }

    /**
     * Calls {@code CT_ResetToken}, as {@link #vendorResetToken(byte[], String)}.
     *
     * @param pin   the PIN, which the token receives in UTF-8; wiped, and its UTF-8 form too, also if the call fails
     * @param label the label, at most 32 bytes in UTF-8; padded with blanks
     * @throws halvorn.zerlin.CryptokiException as {@link #vendorResetToken(byte[], String)}
     * @throws IllegalArgumentException if the label is too long
     */
    public void vendorResetToken(char[] pin, String label) {
        vendorResetToken(Calls.utf8(pin), label);
    }

    /**
     * Calls {@code CT_CopyObject}: copies an object between two sessions. This session is the first argument of the
     * function; the vendor's library defines what each session is for. With the embedded library, this session receives
     * the copy.
     *
     * @param second   the second session, with the embedded library that of the object
     * @param object   the object to copy
     * @param template the attributes in which the copy differs
     * @return a new handle, of the copy
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_FUNCTION_NOT_SUPPORTED},
     *         {@code CKR_OBJECT_HANDLE_INVALID}
     */
    public CK_OBJECT_HANDLE vendorCopy(Session second, CK_OBJECT_HANDLE object, Attributes template) {
        return make("CT_CopyObject", template,
                (t, made) -> CT_CopyObject(handle, second.handle, object, t, t.length, made));
    }

    private void getAttributes(CK_OBJECT_HANDLE object, CK_ATTRIBUTE[] template) {
        if (template.length > 0) {
            C_GetAttributeValue(handle, object, template, template.length).orThrow("C_GetAttributeValue",
                    CKR.ATTRIBUTE_SENSITIVE, CKR.ATTRIBUTE_TYPE_INVALID);
        }
    }

    private static CK_OBJECT_HANDLE make(String call, Attributes template,
            BiFunction<CK_ATTRIBUTE[], CK_OBJECT_HANDLE, CK_RV> maker) {
        CK_OBJECT_HANDLE made = new CK_OBJECT_HANDLE();
        Calls.check(call, maker.apply(template.toArray(), made));
        return made;
    }
}
