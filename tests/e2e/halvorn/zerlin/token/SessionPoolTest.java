// A pool whose sessions and logins are lost while it works.
package halvorn.zerlin.token;

import static org.junit.jupiter.api.Assertions.*;
import static token.FreshToken.*;
import static token.TokenObjects.IS_NSS;

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

import java.util.*;
import java.util.concurrent.*;
import java.util.concurrent.atomic.AtomicInteger;

import org.junit.jupiter.api.*;
import org.junit.jupiter.api.function.Executable;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

class SessionPoolTest {
    private static final CK_MECHANISM HMAC = new CK_MECHANISM(CKM.SHA256_HMAC);
    private static final Attributes WANTED = Attributes.of(CKO.SECRET_KEY).with(CKA.LABEL, "pool");
    private static Slot slot;
    private final AtomicInteger starts = new AtomicInteger();
    private final SessionPool pool = new SessionPool(slot, 4, session -> {
        starts.incrementAndGet();
        session.login(CKU.USER, USER_PIN.clone());
        key = session.findOne(WANTED);
    });
    private volatile CK_OBJECT_HANDLE key;

    @BeforeAll
    static void makeKey() {
        slot = LayerTest.open("pool");
        try (Session session = slot.openWritableSession()) {
            session.login(CKU.USER, USER_PIN.clone());
            session.create(Attributes.of(CKO.SECRET_KEY).with(CKA.LABEL, "pool").with(CKA.KEY_TYPE, CKK.GENERIC_SECRET)
                    .with(CKA.VALUE, new byte[32]).yes(CKA.TOKEN, CKA.PRIVATE, CKA.SIGN));
        }
    }

    @AfterEach
    void closeTwice() {
        pool.close();
        pool.close();
        try (Session session = slot.openSession()) {
            assertFalse(session.isLoggedIn(), "a session of the pool is open");
        }
    }

    private byte[] sign(Session session) {
        return session.sign(HMAC, key, new byte[5]);
    }

    @Test
    void noJobIsLostWhenSessionsAreClosedBeneathTheirThreads() throws Exception {
        byte[] expected = pool.run(this::sign);
        AtomicInteger inUse = new AtomicInteger();
        ExecutorService threads = Executors.newFixedThreadPool(8);
        List<Future<byte[]>> results = new ArrayList<>();
        for (int i = 0; i < 400; i++) {
            AtomicInteger attempts = new AtomicInteger(i % 3);
            results.add(threads.submit(() -> pool.runAgainIfLost(session -> {
                assertTrue(inUse.incrementAndGet() <= 4);
                Thread.yield();
                inUse.decrementAndGet();
                if (attempts.getAndIncrement() == 0) Cryptoki.C_CloseSession(session.handle());
                return sign(session);
            })));
        }
        threads.shutdown();
        for (Future<byte[]> result : results) {
            assertArrayEquals(expected, result.get());
        }
        assertEquals(1, starts.get());
    }

    @Test
    void aLostLoginIsRenewedAndOnlyALostOneRepeatsTheWork() {
        byte[] expected = pool.run(this::sign);
        slot.closeAllSessions();
        assertTrue(assertThrows(CryptokiException.class, () -> pool.run(this::sign)).is(CKR.SESSION_HANDLE_INVALID));
        slot.closeAllSessions();
        assertArrayEquals(expected, pool.runAgainIfLost(this::sign));
        assertEquals(3, starts.get());

        AtomicInteger attempts = new AtomicInteger();
        assertArrayEquals(expected, pool.runAgainIfLost(session -> {
            CK_OBJECT_HANDLE stale = key;
            if (attempts.getAndIncrement() == 0) {
                session.logout();
                pool.run(other -> null); // logs in again, so that the handle may be another one
            }
            return session.sign(HMAC, attempts.get() == 1 ? stale : key, new byte[5]);
        }));
        assertEquals(4, starts.get());
        attempts.set(0);
        if (!IS_NSS) assertArrayEquals(expected, pool.runAgainIfLost(session -> { // NSS crashes
            if (attempts.getAndIncrement() == 0) session.logout();
            return sign(session);
        }));
        attempts.set(0);
        assertNotNull(pool.runAgainIfLost(session -> {
            if (attempts.incrementAndGet() == 1) throw new CryptokiException(new CK_RV(CKR.USER_NOT_LOGGED_IN));
            return session;
        }));
        attempts.set(0);
        assertThrows(CryptokiException.class, () -> pool.runAgainIfLost(session -> {
            attempts.incrementAndGet();
            return session.sign(HMAC, new CK_OBJECT_HANDLE(4711), new byte[5]);
        }));
        assertEquals(1, attempts.get());
    }

    @ParameterizedTest
    @ValueSource(booleans = {true, false})
    void workThatThrewClosesItsSessionAndNoneThatGotItsNumber(boolean fails) {
        Session[] next = new Session[1];
        assertThrows(IllegalStateException.class, () -> pool.run(session -> {
            next[0] = new Session(session.handle());
            throw new IllegalStateException();
        }));
        assertThrows(CryptokiException.class, next[0]::info);
        Executable work = () -> pool.run(lost -> {
            lost.close();
            Session before = slot.openSession();
            long number = before.handle().m_value + 1;
            before.close();
            lost.handle().m_value = number;
            next[0] = pool.run(session -> new Session(session.handle()));
            Assumptions.assumeTrue(next[0].handle().m_value == number, "the numbers do not count up");
            if (fails) throw new IllegalStateException();
            return null;
        });
        if (fails) assertThrows(IllegalStateException.class, work);
        else assertDoesNotThrow(work);
        assertDoesNotThrow(next[0]::info);
        pool.run(one -> pool.run(two -> { assertNotEquals(one.handle(), two.handle()); return null; }));
        slot.closeAllSessions(); // two that are idle
        assertNotNull(pool.runAgainIfLost(this::sign));
    }

    @ParameterizedTest
    @ValueSource(longs = {CKR.SESSION_HANDLE_INVALID, CKR.SESSION_CLOSED, CKR.DEVICE_REMOVED})
    void aLostSessionIsLeftAloneAndALateOneClosed(long value) {
        Session[] late = new Session[1];
        try (Session other = slot.openSession()) {
            assertThrows(CryptokiException.class, () -> pool.run(session -> {
                session.close();
                session.handle = other.handle(); // as if another session had got the number
                throw new CryptokiException(new CK_RV(value));
            }));
            assertDoesNotThrow(other::info);
            AtomicInteger attempts = new AtomicInteger();
            assertThrows(CryptokiException.class, () -> pool.runAgainIfLost(session -> {
                session.close();
                if (attempts.incrementAndGet() > 2) throw new IllegalStateException();
                throw new CryptokiException(new CK_RV(value));
            }));
            assertEquals(2, attempts.get());
            pool.run(session -> {
                pool.close();
                return late[0] = session;
            });
            assertThrows(CryptokiException.class, late[0]::info);
        }
    }

    @Test
    void aWrongPinIsTriedOnceAndClosesThePool() {
        AtomicInteger tries = new AtomicInteger();
        SessionPool wrong = new SessionPool(slot, 2, session -> {
            tries.incrementAndGet();
            session.login(CKU.USER, ascii("wrong"));
        });
        assertTrue(assertThrows(CryptokiException.class, () -> wrong.runAgainIfLost(this::sign)).is(CKR.PIN_INCORRECT));
        assertThrows(IllegalStateException.class, () -> wrong.run(this::sign));
        assertEquals(1, tries.get());
    }
}
