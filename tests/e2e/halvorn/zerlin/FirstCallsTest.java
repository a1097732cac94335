// Initialisation and locking, slots and tokens, PINs and sessions, on the real soft token.
package halvorn.zerlin;

import static halvorn.zerlin.TestToken.*;
import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;

import halvorn.zerlin.constants.*;

import java.security.MessageDigest;
import java.util.*;
import java.util.concurrent.*;
import java.util.concurrent.atomic.AtomicLong;

import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import token.FreshToken;

class FirstCallsTest {
    // This also removes callbacks that a failed C_Initialize left registered.
    @AfterEach
    void finish() {
        Cryptoki.C_Initialize(null);
        Cryptoki.C_Finalize(null).orThrow();
    }

    @Test
    void theLibraryIsInitialisedAndFinalisedOnce() {
        CK_C_INITIALIZE_ARGS oneMissing = CK_C_INITIALIZE_ARGS.javaLocking();
        oneMissing.lockMutex = null;
        assertReturns(CKR.ARGUMENTS_BAD, Cryptoki.C_Initialize(oneMissing));
        assertReturns(CKR.CRYPTOKI_NOT_INITIALIZED, Cryptoki.C_GetInfo(new CK_INFO()));
        assertReturns(CKR.OK, Cryptoki.C_Initialize(null));
        assertReturns(CKR.CRYPTOKI_ALREADY_INITIALIZED, Cryptoki.C_Initialize(null));
        assertReturns(CKR.OK, Cryptoki.C_Finalize(null));
        assertReturns(CKR.CRYPTOKI_NOT_INITIALIZED, Cryptoki.C_Finalize(null));
    }

    @Test
    void mutexesAreMadeLockedAndDestroyedInJava() {
        CK_C_INITIALIZE_ARGS java = CK_C_INITIALIZE_ARGS.javaLocking();
        CK_C_INITIALIZE_ARGS watched = CK_C_INITIALIZE_ARGS.javaLocking();
        Set<Object> alive = ConcurrentHashMap.newKeySet();
        AtomicLong locked = new AtomicLong();
        watched.createMutex = () -> {
            Object mutex = java.createMutex.CreateMutex();
            alive.add(mutex);
            return mutex;
        };
        watched.destroyMutex = mutex -> alive.remove(mutex) ? CKR.OK : CKR.MUTEX_BAD;
        watched.lockMutex = mutex -> {
            locked.incrementAndGet();
            return java.lockMutex.LockMutex(mutex);
        };
        Cryptoki.C_Initialize(watched).orThrow();
        openSession(FreshToken.create("watched"), READ_WRITE);
        assertTrue(locked.get() > 0 && !alive.isEmpty());
        Cryptoki.C_Finalize(null).orThrow();
        assertEquals(Collections.emptySet(), alive);
    }

    @Test
    void aLoginHoldsInEverySession() {
        Cryptoki.C_Initialize(null).orThrow();
        long slot = FreshToken.create("sessions");
        CK_SESSION_HANDLE reader = openSession(slot, READ_ONLY);
        CK_SESSION_HANDLE writer = openSession(slot, READ_WRITE);
        assertReturns(CKR.PIN_INCORRECT, login(reader, CKU.USER, SO_PIN));
        assertReturns(CKR.OK, login(reader, CKU.USER, USER_PIN));
        CK_SESSION_INFO info = new CK_SESSION_INFO();
        assertReturns(CKR.OK, Cryptoki.C_GetSessionInfo(writer, info));
        assertEquals(new CK_STATE(CKS.RW_USER_FUNCTIONS), info.state);
        assertReturns(CKR.OK, Cryptoki.C_CloseAllSessions(slot));
        assertReturns(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_CloseSession(reader));
    }

    @Test
    void threadsWorkSideBySide() throws Exception {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking()).orThrow();
        long slot = FreshToken.create("threads");
        Callable<Void> work = () -> {
            for (int i = 0; i < 150; i++) {
                CK_SESSION_HANDLE session = openSession(slot, READ_ONLY);
                byte[] text = new byte[i * 7];
                Cryptoki.C_DigestInit(session, new CK_MECHANISM(CKM.SHA256)).orThrow();
                byte[] digest = bytes((array, length) ->
                        Cryptoki.C_Digest(session, text, text.length, array, length));
                assertArrayEquals(MessageDigest.getInstance("SHA-256").digest(text), digest);
                Cryptoki.C_CloseSession(session).orThrow();
            }
            return null;
        };
        ExecutorService executor = Executors.newFixedThreadPool(8);
        for (Future<Void> done : executor.invokeAll(Collections.nCopies(8, work), 2, TimeUnit.MINUTES)) {
            done.get();
        }
        executor.shutdown();
    }
}
