// The Cryptoki library: initialised and finalised, and its slots.
package halvorn.zerlin.token;

import static halvorn.zerlin.Cryptoki.*;

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import halvorn.zerlin.CK_INFO;
import halvorn.zerlin.CK_TOKEN_INFO;
import halvorn.zerlin.LongRef;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.NoSuchElementException;
import java.util.function.Predicate;
import java.util.stream.Collectors;

/**
 * The Cryptoki library, from {@code C_Initialize} to {@code C_Finalize}. A program has one; close its sessions and pools
 * before. Each description begins with the functions that the method calls, in order. Every return value that a method
 * does not expect is a {@link halvorn.zerlin.CryptokiException} that names the call.
 */
public final class Library implements AutoCloseable {
    private boolean closed;

    private Library() {
    }

    /**
     * Calls {@code C_Initialize}, with the locks of the operating system: any number of threads may use the library.
     *
     * @return the library, which the caller closes
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_CRYPTOKI_ALREADY_INITIALIZED}, {@code CKR_CANT_LOCK}
     */
    public static Library open() {
        return open(CK_C_INITIALIZE_ARGS.osLocking());
    }

    /**
     * Calls {@code C_Initialize}.
     *
     * @param arguments how the library locks; null if only one thread uses it
     * @return the library, which the caller closes
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_CRYPTOKI_ALREADY_INITIALIZED}, {@code CKR_CANT_LOCK}
     */
    public static Library open(CK_C_INITIALIZE_ARGS arguments) {
        Calls.check("C_Initialize", C_Initialize(arguments));
        return new Library();
    }

    /**
     * Calls {@code C_GetInfo}.
     *
     * @return a new record
     */
    public CK_INFO info() {
        CK_INFO info = new CK_INFO();
        Calls.check("C_GetInfo", C_GetInfo(info));
        return info;
    }

    /**
     * Calls {@code C_GetSlotList} twice: asks for the number, then for the list.
     *
     * @param tokenPresent true to list only slots that contain a token
     * @return a new list
     * @throws halvorn.zerlin.CryptokiException with {@code CKR_BUFFER_TOO_SMALL} if a slot appears between the calls
     */
    public List<Slot> slots(boolean tokenPresent) {
        LongRef count = new LongRef();
        Calls.check("C_GetSlotList", C_GetSlotList(tokenPresent, null, count));
        long[] ids = new long[(int) count.value];
        int filled = Calls.count("C_GetSlotList", C_GetSlotList(tokenPresent, ids, count), count.value, ids.length);
        return Arrays.stream(ids, 0, filled).mapToObj(Slot::new).collect(Collectors.toCollection(ArrayList::new));
    }

    /**
     * Calls {@code C_GetSlotList} twice, and {@code C_GetTokenInfo} for each slot: finds a token by its label.
     *
     * @param label the label, without the blanks that pad it
     * @return the slot of the token
     * @throws NoSuchElementException if no token has this label, or if several have it
     */
    public Slot token(String label) {
        return token("the label \"" + label + "\"", info -> info.getLabel().equals(label));
    }

    /**
     * Calls {@code C_GetSlotList} twice, and {@code C_GetTokenInfo} for each slot: finds a token by its serial number.
     *
     * @param serialNumber the serial number, without the blanks that pad it
     * @return the slot of the token
     * @throws NoSuchElementException if no token has this number, or if several have it
     */
    public Slot tokenBySerial(String serialNumber) {
        return token("the serial number \"" + serialNumber + "\"", info -> info.getSerialNumber().equals(serialNumber));
    }

    /**
     * Calls {@code C_Finalize}, once: a second {@code close} does nothing. No other thread may use the library.
     */
    @Override
    public void close() {
        if (!closed) {
            closed = true;
            Calls.check("C_Finalize", C_Finalize(null));
        }
    }

    private Slot token(String what, Predicate<CK_TOKEN_INFO> wanted) {
        List<Slot> slots = slots(true);
        slots.removeIf(slot -> !wanted.test(slot.tokenInfo()));
        if (slots.size() != 1) {
            throw new NoSuchElementException(slots.size() + " tokens instead of one have " + what);
        }
        return slots.get(0);
    }
}
