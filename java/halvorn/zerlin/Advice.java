// One sentence for each return value that a program can do something about; CryptokiException shows it.
package halvorn.zerlin;

import halvorn.zerlin.constants.CKR;

import java.util.HashMap;
import java.util.Map;

final class Advice {
    private static final Map<Long, String> SENTENCES = new HashMap<>();

    static {
        // Login and PIN
        put(CKR.PIN_INCORRECT, "the PIN is wrong; a few more wrong ones lock it, so ask for it again, once");
        put(CKR.PIN_INVALID, "the new PIN has characters that the token does not take; choose another");
        put(CKR.PIN_LEN_RANGE, "the PIN is too short or too long; see ulMinPinLen and ulMaxPinLen of CK_TOKEN_INFO");
        put(CKR.PIN_EXPIRED, "the PIN has expired; set a new one with C_SetPIN");
        put(CKR.PIN_LOCKED, "too many wrong PINs; the security officer sets a new PIN of the user with"
                + " C_InitPIN; if it is the security officer's own, see the token's manual");
        put(CKR.PIN_TOO_WEAK, "the new PIN is too easy to guess; choose another");
        put(CKR.PIN_ALREADY_INITIALIZED, "the token has a PIN already; change it with C_SetPIN");
        put(CKR.NEW_PIN_MODE, "set a new PIN first");
        put(CKR.USER_ALREADY_LOGGED_IN, "the login holds for all sessions of the program with the token; log in once,"
                + " or accept this value");
        put(CKR.USER_NOT_LOGGED_IN, "log in with C_Login first; the login ends with the last session on the token");
        put(CKR.USER_PIN_NOT_INITIALIZED, "the user has no PIN yet; the security officer sets it with C_InitPIN");
        put(CKR.USER_TYPE_INVALID, "take CKU.USER or CKU.SO, or CKU.CONTEXT_SPECIFIC after an init that asks for it");
        put(CKR.USER_ANOTHER_ALREADY_LOGGED_IN, "the other user is logged in; log out with C_Logout first");
        put(CKR.USER_TOO_MANY_TYPES, "the token cannot serve more users at once; log one out");
        put(CKR.SO_NOT_LOGGED_IN, "log in as security officer (CKU.SO) first");
        put(CKR.AUTHENTICATION_REQUIRED, "log in with C_Login first");
        put(CKR.ACCESS_DENIED, "the user who is logged in may not do this");
        put(CKR.OPERATION_NOT_PERMITTED, "the user who is logged in, or the token's settings, do not permit this");

        // Sessions
        put(CKR.SESSION_HANDLE_INVALID, "the session was closed, perhaps with all others of the token, or was never"
                + " opened; open a new one");
        put(CKR.SESSION_CLOSED, "the session was closed during the call; open a new one");
        put(CKR.SESSION_COUNT, "the token has no room for another session; close those that are not used");
        put(CKR.SESSION_EXISTS, "close all sessions on the token first");
        put(CKR.SESSION_READ_ONLY, "open the session with CKF.RW_SESSION");
        put(CKR.SESSION_READ_ONLY_EXISTS, "close the read-only sessions first: the security officer cannot"
                + " log in while one is open");
        put(CKR.SESSION_READ_WRITE_SO_EXISTS, "while the security officer is logged in, sessions need CKF.RW_SESSION");
        put(CKR.SESSION_PARALLEL_NOT_SUPPORTED, "open the session with CKF.SERIAL_SESSION");
        put(CKR.OPERATION_ACTIVE, "another operation of the session has not ended; end it, or use another session");
        put(CKR.OPERATION_CANCEL_FAILED, "the operation cannot be cancelled; end it, or close the session");
        put(CKR.OPERATION_NOT_INITIALIZED, "call the Init function first; a result or an error ends an operation");
        put(CKR.CRYPTOKI_NOT_INITIALIZED, "call C_Initialize first");
        put(CKR.CRYPTOKI_ALREADY_INITIALIZED, "the program has called C_Initialize already; accept this value");
        put(CKR.CANT_LOCK, "the library cannot lock in the way that C_Initialize asked for; after"
                + " osLocking() try javaLocking(); after callbacks let C_Initialize(null) and C_Finalize"
                + " succeed before you try osLocking(), or nothing locks");
        put(CKR.NEED_TO_CREATE_THREADS, "the library must create threads; leave out LIBRARY_CANT_CREATE_OS_THREADS");
        put(CKR.NO_EVENT, "nothing has happened in a slot; ask again later, or wait without CKF.DONT_BLOCK");

        // Slots and tokens
        put(CKR.SLOT_ID_INVALID, "there is no such slot; ask C_GetSlotList again, numbers change when a token is"
                + " initialised");
        put(CKR.TOKEN_NOT_PRESENT, "no token is in the slot");
        put(CKR.TOKEN_NOT_RECOGNIZED, "the token in the slot is unknown to the library, or is not initialised");
        put(CKR.TOKEN_NOT_INITIALIZED, "initialise the token first, with C_InitToken");
        put(CKR.TOKEN_WRITE_PROTECTED, "the token cannot be written");
        put(CKR.TOKEN_READ_ONLY, "the token cannot be written");
        put(CKR.NOT_ADMIN_TOKEN, "this works on the administration token only");
        put(CKR.DEVICE_ERROR, "the device has failed; look at its own log, then open new sessions");
        put(CKR.DEVICE_MEMORY, "the token is full; delete objects that are not needed");
        put(CKR.TOKEN_RESOURCE_EXCEEDED, "the token lacks a resource for this; close sessions and delete objects that"
                + " are not needed, then try again");
        put(CKR.DEVICE_REMOVED, "the token was removed, or the connection to it is lost; open new sessions");
        put(CKR.FIPS_SELF_TEST_FAILED, "a self-test has failed; call C_Finalize and C_Initialize, and see the"
                + " token's manual if it fails again");
        put(CKR.GENERAL_ERROR, "the library cannot say more; look at its log and its configuration");
        put(CKR.FUNCTION_FAILED, "the library cannot say more; look at its log");
        put(CKR.HOST_MEMORY, "not enough memory for the call; look whether a LongRef or a count holds a huge"
                + " number, such as CK.UNAVAILABLE_INFORMATION");
        put(CKR.FUNCTION_NOT_SUPPORTED, "the module does not have this function");
        put(CKR.FUNCTION_CANCELED, "the call was cancelled, for instance at the PIN pad");
        put(CKR.FUNCTION_REJECTED, "a person has refused the call");
        put(CKR.LIBRARY_LOAD_FAILED, "the library needs another one that it did not find");
        put(CKR.ARGUMENTS_BAD, "an argument is null or has an impossible value");

        // Mechanisms
        put(CKR.MECHANISM_INVALID, "the token does not have this mechanism, or not for this operation or"
                + " with this parameter; see C_GetMechanismInfo; if CKM has a second constant of that name,"
                + " with _STD, the token may know that one");
        put(CKR.MECHANISM_PARAM_INVALID, "the parameter has the wrong class, length or content for this mechanism");
        put(CKR.DOMAIN_PARAMS_INVALID, "the token does not take these domain parameters");
        put(CKR.CURVE_NOT_SUPPORTED, "the token does not have this curve");
        put(CKR.EXCEEDED_MAX_ITERATIONS, "the search for a suitable number took too long; try again, perhaps with other"
                + " parameters");
        put(CKR.RANDOM_NO_RNG, "the token has no random number generator");
        put(CKR.RANDOM_SEED_NOT_SUPPORTED, "the token's random number generator takes no seed");

        // Templates, objects, attributes
        put(CKR.TEMPLATE_INCOMPLETE, "the template lacks an attribute that this object must have");
        put(CKR.TEMPLATE_INCONSISTENT, "two attributes contradict each other, or the mechanism");
        put(CKR.ATTRIBUTE_TYPE_INVALID, "the object does not have one of the attributes, or cannot get it"
                + " from this template");
        put(CKR.ATTRIBUTE_VALUE_INVALID, "the value of an attribute is wrong, or has the wrong width: the class of"
                + " pValue decides it");
        put(CKR.ATTRIBUTE_READ_ONLY, "one of the attributes cannot be set, or not any more");
        put(CKR.ATTRIBUTE_SENSITIVE, "the value of one attribute does not leave the token; the others were read");
        put(CKR.ACTION_PROHIBITED, "an attribute of the object forbids this, such as CKA_DESTROYABLE");
        put(CKR.OBJECT_HANDLE_INVALID, "there is no such object for this session: it was deleted, or its session or"
                + " login has ended; find it again");
        put(CKR.OBJECT_READ_ONLY, "the object cannot be changed");
        put(CKR.INFORMATION_SENSITIVE, "the token does not give out this information");
        put(CKR.STATE_UNSAVEABLE, "the state of this operation cannot be saved");
        put(CKR.SAVED_STATE_INVALID, "this is not a state that this token has saved");

        // Keys
        put(CKR.KEY_HANDLE_INVALID, "there is no such key for this session: it was deleted, or its session or login has"
                + " ended; find it again");
        put(CKR.KEY_SIZE_RANGE, "the key is too short or too long for the mechanism; see C_GetMechanismInfo");
        put(CKR.KEY_TYPE_INCONSISTENT, "the mechanism needs a key of another type");
        put(CKR.KEY_FUNCTION_NOT_PERMITTED, "the key's attributes do not allow this: CKA_SIGN, CKA_DECRYPT and so on");
        put(CKR.KEY_NOT_WRAPPABLE, "the key cannot be wrapped in this way; see CKA_WRAP_WITH_TRUSTED");
        put(CKR.KEY_UNEXTRACTABLE, "the key must not leave the token: CKA_EXTRACTABLE is false");
        put(CKR.KEY_NEEDED, "the saved state needs its key");
        put(CKR.KEY_NOT_NEEDED, "the saved state needs no key; pass handle 0");
        put(CKR.KEY_CHANGED, "the saved state belongs to another key");
        put(CKR.KEY_INDIGESTIBLE, "the value of this key cannot be digested");
        put(CKR.KEY_OR_CERT_EXPIRED, "the key or its certificate has expired");
        put(CKR.KEY_EXHAUSTED, "the key has made all signatures that it can make; generate a new one");
        put(CKR.PUBLIC_KEY_INVALID, "the public key fails the token's checks");
        put(CKR.WRAPPED_KEY_INVALID, "the wrapped key is damaged, or was wrapped with another key or mechanism");
        put(CKR.WRAPPED_KEY_LEN_RANGE, "the wrapped key has an impossible length for the mechanism");
        put(CKR.WRAPPING_KEY_HANDLE_INVALID, "there is no such wrapping key for this session; find it again");
        put(CKR.WRAPPING_KEY_SIZE_RANGE, "the wrapping key is too short or too long for the mechanism");
        put(CKR.WRAPPING_KEY_TYPE_INCONSISTENT, "the mechanism needs a wrapping key of another type");
        put(CKR.UNWRAPPING_KEY_HANDLE_INVALID, "there is no such unwrapping key for this session; find it again");
        put(CKR.UNWRAPPING_KEY_SIZE_RANGE, "the unwrapping key is too short or too long for the mechanism");
        put(CKR.UNWRAPPING_KEY_TYPE_INCONSISTENT, "the mechanism needs an unwrapping key of another type");

        // Data and buffers
        put(CKR.BUFFER_TOO_SMALL, "the capacity is too small: the LongRef now holds the length that is"
                + " needed, and the operation goes on; for an attribute, valueLen was too small");
        put(CKR.DATA_INVALID, "the input has a wrong form for the mechanism");
        put(CKR.DATA_LEN_RANGE, "the input has a wrong length: with a block cipher it must fill whole blocks");
        put(CKR.ENCRYPTED_DATA_INVALID, "the cipher text is damaged, or belongs to another key, IV or mechanism");
        put(CKR.ENCRYPTED_DATA_LEN_RANGE, "the cipher text has an impossible length for the mechanism");
        put(CKR.AEAD_DECRYPT_FAILED, "the cipher text, its tag or the additional data was changed, or the key or"
                + " IV is another one");
        put(CKR.SIGNATURE_INVALID, "the signature does not belong to this data and key");
        put(CKR.SIGNATURE_LEN_RANGE, "a signature of this length cannot be of this key");
        put(CKR.MUTEX_BAD, "a mutex is not valid, or a locking callback failed or threw");
        put(CKR.MUTEX_NOT_LOCKED, "the callback UnlockMutex was called for a mutex that is not locked");
    }

    private Advice() {
    }

    private static void put(long rv, String sentence) {
        SENTENCES.put(rv, sentence);
    }

    /** Returns what to do, or null if there is nothing to say. */
    static String of(long rv) {
        return SENTENCES.get(rv);
    }
}
