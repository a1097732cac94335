// Initialisation and locking, slots and tokens, PINs and sessions, on the real soft token.
package halvorn.zerlin;

import static halvorn.zerlin.SoftToken.*;
import static org.junit.jupiter.api.Assertions.*;

import halvorn.zerlin.constants.*;

import java.security.MessageDigest;
import java.util.*;
import java.util.concurrent.*;
import java.util.concurrent.atomic.AtomicLong;
import java.util.stream.LongStream;

import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.MethodSource;

class FirstCallsTest {
    // Also drops callbacks that a refused C_Initialize left registered.
    @AfterEach
    void finish() {
        Cryptoki.C_Initialize(null);
        Cryptoki.C_Finalize(null).orThrow();
    }

    private static void initialise() {
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
    }

    static Object[][] initialisations() {
        CK_C_INITIALIZE_ARGS both = CK_C_INITIALIZE_ARGS.javaLocking();
        both.flags = CKF.OS_LOCKING_OK;
        CK_C_INITIALIZE_ARGS reserved = CK_C_INITIALIZE_ARGS.osLocking();
        reserved.reserved = "anything";
        CK_C_INITIALIZE_ARGS oneMissing = CK_C_INITIALIZE_ARGS.javaLocking();
        oneMissing.lockMutex = null;
        return new Object[][] {
            {"no argument", null, CKR.OK}, {"empty", new CK_C_INITIALIZE_ARGS(), CKR.OK},
            {"operating system", CK_C_INITIALIZE_ARGS.osLocking(), CKR.OK},
            {"Java", CK_C_INITIALIZE_ARGS.javaLocking(), CKR.OK}, {"either", both, CKR.OK},
            {"reserved is set", reserved, CKR.ARGUMENTS_BAD},
            {"a callback is missing", oneMissing, CKR.ARGUMENTS_BAD}};
    }

    @ParameterizedTest(name = "{0}")
    @MethodSource("initialisations")
    void theLibraryIsInitialisedAndFinalisedOnce(String name, CK_C_INITIALIZE_ARGS arguments, long answer) {
        CK_INFO info = new CK_INFO();
        assertAnswers(CKR.CRYPTOKI_NOT_INITIALIZED, Cryptoki.C_GetInfo(info));
        assertAnswers(answer, Cryptoki.C_Initialize(arguments));
        assertAnswers(answer == CKR.OK ? CKR.OK : CKR.CRYPTOKI_NOT_INITIALIZED, Cryptoki.C_GetInfo(info));
        if (answer == CKR.OK) {
            assertAnswers(CKR.CRYPTOKI_ALREADY_INITIALIZED, Cryptoki.C_Initialize(null));
            assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_Finalize(new Object()));
            assertAnswers(CKR.OK, Cryptoki.C_GetInfo(info));
            assertAnswers(CKR.OK, Cryptoki.C_Finalize(null));
        }
        assertAnswers(CKR.CRYPTOKI_NOT_INITIALIZED, Cryptoki.C_Finalize(null));
        assertAnswers(CKR.CRYPTOKI_NOT_INITIALIZED, Cryptoki.C_GetInfo(info));
    }

    @Test
    void mutexesAreMadeLockedAndDestroyedInJava() {
        CK_C_INITIALIZE_ARGS java = CK_C_INITIALIZE_ARGS.javaLocking();
        CK_C_INITIALIZE_ARGS watched = new CK_C_INITIALIZE_ARGS();
        Set<Object> alive = ConcurrentHashMap.newKeySet();
        AtomicLong made = new AtomicLong();
        AtomicLong locked = new AtomicLong();
        AtomicLong held = new AtomicLong();
        watched.createMutex = () -> {
            Object mutex = java.createMutex.CreateMutex();
            made.incrementAndGet();
            alive.add(mutex);
            return mutex;
        };
        watched.destroyMutex = mutex -> alive.remove(mutex) ? CKR.OK : CKR.MUTEX_BAD;
        watched.lockMutex = mutex -> {
            assertTrue(alive.contains(mutex));
            locked.incrementAndGet();
            held.incrementAndGet();
            return java.lockMutex.LockMutex(mutex);
        };
        watched.unlockMutex = mutex -> {
            assertTrue(alive.contains(mutex));
            held.decrementAndGet();
            return java.unlockMutex.UnlockMutex(mutex);
        };

        Cryptoki.C_Initialize(watched).orThrow();
        openSession(freshToken("watched"), READ_WRITE);
        assertTrue(made.get() > 0 && locked.get() > 0, made + " made, locked " + locked + " times");
        assertEquals(0, held.get(), "mutexes that are still locked");
        Cryptoki.C_Finalize(null).orThrow();
        assertEquals(Collections.emptySet(), alive, "of " + made + " mutexes");

        long before = made.get();
        Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
        slots();
        assertEquals(before, made.get(), "finalising forgets the callbacks");
    }

    @Test
    void anExceptionOfACallbackReachesTheCaller() {
        CK_C_INITIALIZE_ARGS arguments = CK_C_INITIALIZE_ARGS.javaLocking();
        Cryptoki.C_Initialize(arguments).orThrow();
        long slot = slots()[0];
        RuntimeException failure = new IllegalStateException("no lock today");
        CK_C_INITIALIZE_ARGS.CK_LOCKMUTEX usual = arguments.lockMutex;
        arguments.lockMutex = mutex -> {
            arguments.lockMutex = usual;
            throw failure;
        };
        assertSame(failure, assertThrows(IllegalStateException.class, () -> openSession(slot, READ_WRITE)));
    }

    @Test
    void aTokenTellsWhatItWasInitialisedWith() {
        initialise();
        CK_INFO library = new CK_INFO();
        Cryptoki.C_GetInfo(library).orThrow();
        assertEquals("2.40", library.cryptokiVersion.toString());
        assertEquals("3.10", library.libraryVersion.toString(), "the binding's own");

        long slot = slots()[0];
        CK_SLOT_INFO slotInfo = new CK_SLOT_INFO();
        Cryptoki.C_GetSlotInfo(slot, slotInfo).orThrow();
        assertEquals(CKF.TOKEN_PRESENT, slotInfo.flags & CKF.TOKEN_PRESENT);
        assertEquals(64, slotInfo.slotDescription.length);

        String label = "T\u00f6k\u20acn";
        CK_TOKEN_INFO info = tokenInfo(freshToken(label));
        long set = CKF.TOKEN_INITIALIZED | CKF.USER_PIN_INITIALIZED | CKF.LOGIN_REQUIRED | CKF.RNG;
        assertEquals(set, info.flags & set);
        assertEquals(label, info.getLabel());
        assertArrayEquals(CK_TOKEN_INFO.paddedLabel(label), info.label);
        assertTrue(info.minPinLen > 0 && info.minPinLen < info.maxPinLen, info.toString());
        assertEquals(16, info.getSerialNumber().length());

        CK_TOKEN_INFO untouched = new CK_TOKEN_INFO();
        assertAnswers(CKR.SLOT_ID_INVALID, Cryptoki.C_GetTokenInfo(0x12345678, untouched));
        assertEquals(new CK_TOKEN_INFO().toString(), untouched.toString());
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_GetTokenInfo(slot, null));
        assertAnswers(CKR.NO_EVENT, Cryptoki.C_WaitForSlotEvent(CKF.DONT_BLOCK, new LongRef(), null));
    }

    @Test
    void mechanismsAreListedAndDescribed() {
        initialise();
        long slot = slots()[0];
        LongRef count = new LongRef();
        Cryptoki.C_GetMechanismList(slot, null, count).orThrow();
        CK_MECHANISM_TYPE[] types = CK_MECHANISM_TYPE.array((int) count.value);
        Cryptoki.C_GetMechanismList(slot, types, count).orThrow();
        assertEquals(types.length, Arrays.stream(types).distinct().count());
        for (CK_MECHANISM_TYPE type : types) {
            assertAnswers(CKR.OK, Cryptoki.C_GetMechanismInfo(slot, type, new CK_MECHANISM_INFO()));
        }

        CK_MECHANISM_INFO info = new CK_MECHANISM_INFO();
        Cryptoki.C_GetMechanismInfo(slot, new CK_MECHANISM_TYPE(CKM.AES_KEY_GEN), info).orThrow();
        assertEquals("16 32 " + CKF.GENERATE, info.minKeySize + " " + info.maxKeySize + " " + info.flags);
        CK_MECHANISM_TYPE unknown = new CK_MECHANISM_TYPE(CKM.VISA_CVV);
        assertAnswers(CKR.MECHANISM_INVALID, Cryptoki.C_GetMechanismInfo(slot, unknown, info));
        assertAnswers(CKR.MECHANISM_INVALID, Cryptoki.C_GetMechanismInfo(slot, null, info));
    }

    @Test
    void aListTellsItsLengthWhateverTheCapacity() {
        initialise();
        freshToken("second");
        long[] slots = slots();
        LongRef count = new LongRef(1);
        long[] tooSmall = {-7};
        assertAnswers(CKR.BUFFER_TOO_SMALL, Cryptoki.C_GetSlotList(true, tooSmall, count));
        assertEquals(slots.length, count.value);
        assertArrayEquals(new long[] {-7}, tooSmall);

        long[] tooLarge = LongStream.generate(() -> -7).limit(1000).toArray();
        count.value = tooLarge.length;
        assertAnswers(CKR.OK, Cryptoki.C_GetSlotList(true, tooLarge, count));
        assertEquals(slots.length, count.value);
        assertArrayEquals(slots, Arrays.copyOf(tooLarge, slots.length));
        assertEquals(1000 - slots.length, Arrays.stream(tooLarge).filter(slot -> slot == -7).count());

        long[] cut = new long[1];
        count.value = slots.length;
        assertAnswers(CKR.OK, Cryptoki.C_GetSlotList(true, cut, count));
        assertEquals(slots[0], cut[0]);
        assertEquals(slots.length, count.value);

        CK_MECHANISM_TYPE[] types = CK_MECHANISM_TYPE.array(2);
        count.value = 1;
        assertAnswers(CKR.BUFFER_TOO_SMALL, Cryptoki.C_GetMechanismList(slots[0], types, count));
        count.value = 1000;
        assertAnswers(CKR.OK, Cryptoki.C_GetMechanismList(slots[0], types, count));
        assertTrue(count.value > 2 && !types[0].equals(types[1]), Arrays.toString(types));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_GetSlotList(true, tooLarge, null));
    }

    @Test
    void theLoginCountsInEverySession() {
        initialise();
        long slot = freshToken("sessions");
        CK_SESSION_HANDLE reader = openSession(slot, READ_ONLY);
        CK_SESSION_HANDLE writer = openSession(slot, READ_WRITE);
        assertState(CKS.RO_PUBLIC_SESSION, reader, slot, READ_ONLY);
        assertState(CKS.RW_PUBLIC_SESSION, writer, slot, READ_WRITE);
        assertAnswers(CKR.PIN_INCORRECT, login(reader, CKU.USER, SO_PIN));
        assertAnswers(CKR.USER_TYPE_INVALID, login(reader, 99, USER_PIN));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_Login(reader, new CK_USER_TYPE(CKU.USER), null, 4));
        assertAnswers(CKR.SESSION_READ_ONLY_EXISTS, login(writer, CKU.SO, SO_PIN));
        assertState(CKS.RO_PUBLIC_SESSION, reader, slot, READ_ONLY);

        assertAnswers(CKR.OK, login(reader, CKU.USER, USER_PIN));
        assertState(CKS.RO_USER_FUNCTIONS, reader, slot, READ_ONLY);
        assertState(CKS.RW_USER_FUNCTIONS, writer, slot, READ_WRITE);
        assertState(CKS.RW_USER_FUNCTIONS, openSession(slot, READ_WRITE), slot, READ_WRITE);
        assertAnswers(CKR.USER_ALREADY_LOGGED_IN, login(writer, CKU.USER, USER_PIN));
        assertAnswers(CKR.OK, Cryptoki.C_Logout(writer));
        assertState(CKS.RO_PUBLIC_SESSION, reader, slot, READ_ONLY);

        assertAnswers(CKR.OK, Cryptoki.C_CloseSession(reader));
        assertAnswers(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_CloseSession(reader));
        assertAnswers(CKR.OK, login(writer, CKU.SO, SO_PIN));
        assertState(CKS.RW_SO_FUNCTIONS, writer, slot, READ_WRITE);
        CK_SESSION_HANDLE refused = new CK_SESSION_HANDLE(77);
        assertAnswers(CKR.SESSION_READ_WRITE_SO_EXISTS,
                Cryptoki.C_OpenSession(slot, READ_ONLY, null, null, refused));
        assertEquals(77, refused.m_value);

        assertAnswers(CKR.OK, Cryptoki.C_CloseAllSessions(slot));
        for (CK_SESSION_HANDLE gone : new CK_SESSION_HANDLE[] {writer, null, new CK_SESSION_HANDLE()}) {
            assertAnswers(CKR.SESSION_HANDLE_INVALID, Cryptoki.C_GetSessionInfo(gone, new CK_SESSION_INFO()));
        }
        assertAnswers(CKR.SESSION_PARALLEL_NOT_SUPPORTED,
                Cryptoki.C_OpenSession(slot, 0, null, null, refused));
    }

    private static void assertState(long state, CK_SESSION_HANDLE session, long slot, long flags) {
        CK_SESSION_INFO info = new CK_SESSION_INFO();
        Cryptoki.C_GetSessionInfo(session, info).orThrow();
        assertEquals(new CK_STATE(state), info.state);
        assertEquals(slot, info.slotID);
        assertEquals(flags, info.flags);
    }

    @Test
    void pinsAreSetByWhomTheyBelongTo() {
        initialise();
        long slot = freshToken("pins");
        CK_SESSION_HANDLE session = openSession(slot, READ_WRITE);
        byte[] other = ascii("another-secret");
        assertAnswers(CKR.USER_NOT_LOGGED_IN, Cryptoki.C_InitPIN(session, other, other.length));
        assertAnswers(CKR.PIN_INCORRECT, Cryptoki.C_SetPIN(session, other, 9, other, other.length));
        assertAnswers(CKR.PIN_LEN_RANGE, Cryptoki.C_SetPIN(session, USER_PIN, USER_PIN.length, other, 3));
        // Only the first 7 bytes count: "another".
        assertAnswers(CKR.OK, Cryptoki.C_SetPIN(session, USER_PIN, USER_PIN.length, other, 7));
        assertAnswers(CKR.PIN_INCORRECT, login(session, CKU.USER, other));
        assertAnswers(CKR.OK, login(session, CKU.USER, ascii("another")));

        byte[] label = CK_TOKEN_INFO.paddedLabel("again");
        assertAnswers(CKR.SESSION_EXISTS, Cryptoki.C_InitToken(slot, SO_PIN, SO_PIN.length, label));
        Cryptoki.C_CloseSession(session).orThrow();
        assertAnswers(CKR.PIN_INCORRECT, Cryptoki.C_InitToken(slot, other, other.length, label));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_InitToken(slot, null, 4, label));
        assertEquals("pins", tokenInfo(slot).getLabel());
        assertAnswers(CKR.OK, Cryptoki.C_InitToken(slot, SO_PIN, SO_PIN.length, label));
        assertEquals("again", tokenInfo(slot).getLabel());
        assertEquals(0, tokenInfo(slot).flags & CKF.USER_PIN_INITIALIZED);
    }

    @Test
    void theVendorFunctionsInitialiseAndResetTokens() {
        initialise();
        long own = freshToken("own");
        long other = freshToken("other");
        CK_SESSION_HANDLE session = openSession(own, READ_WRITE);
        byte[] label = CK_TOKEN_INFO.paddedLabel("changed");
        assertAnswers(CKR.OK, Cryptoki.CT_InitToken(session, other, SO_PIN, SO_PIN.length, label));
        assertEquals("changed", tokenInfo(other).getLabel());
        assertAnswers(CKR.SESSION_HANDLE_INVALID, Cryptoki.CT_ResetToken(null, SO_PIN, SO_PIN.length, label));
        assertEquals("own", tokenInfo(own).getLabel());
        assertAnswers(CKR.OK, Cryptoki.CT_ResetToken(session, SO_PIN, SO_PIN.length, null));
        assertEquals("own", tokenInfo(own).getLabel());
        assertEquals(0, tokenInfo(own).flags & CKF.USER_PIN_INITIALIZED);
    }

    @Test
    void whatTheTokenCannotDoIsAnswered() {
        initialise();
        CK_SESSION_HANDLE session = openSession(slots()[0], READ_ONLY);
        CK_OBJECT_HANDLE none = new CK_OBJECT_HANDLE();
        byte[] state = new byte[16];
        long unsupported = CKR.FUNCTION_NOT_SUPPORTED;
        assertAnswers(unsupported, Cryptoki.C_GetOperationState(session, state, new LongRef(16)));
        assertAnswers(unsupported, Cryptoki.C_SetOperationState(session, state, 16, none, none));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_GetOperationState(session, state, null));
        assertAnswers(CKR.ARGUMENTS_BAD, Cryptoki.C_SetOperationState(session, null, 0, none, none));
        assertAnswers(CKR.FUNCTION_NOT_PARALLEL, Cryptoki.C_GetFunctionStatus(session));
        assertAnswers(CKR.FUNCTION_NOT_PARALLEL, Cryptoki.C_CancelFunction(session));
    }

    static Object[][] lockings() {
        return new Object[][] {
            {"operating system", CK_C_INITIALIZE_ARGS.osLocking()},
            {"Java", CK_C_INITIALIZE_ARGS.javaLocking()}};
    }

    @ParameterizedTest(name = "{0}")
    @MethodSource("lockings")
    void threadsWorkSideBySide(String locking, CK_C_INITIALIZE_ARGS arguments) throws Exception {
        Cryptoki.C_Initialize(arguments).orThrow();
        long slot = freshToken("threads");
        int threads = 8;
        int rounds = 150;
        Set<String> drawn = ConcurrentHashMap.newKeySet();
        Callable<Void> work = () -> {
            MessageDigest jdk = MessageDigest.getInstance("SHA-256");
            for (int i = 0; i < rounds; i++) {
                CK_SESSION_HANDLE session = openSession(slot, READ_ONLY);
                byte[] random = new byte[1 + i * 7];
                Cryptoki.C_GenerateRandom(session, random, random.length).orThrow();
                drawn.add(Arrays.toString(random));
                Cryptoki.C_DigestInit(session, new CK_MECHANISM(CKM.SHA256)).orThrow();
                assertArrayEquals(jdk.digest(random), bytes((array, length) ->
                        Cryptoki.C_Digest(session, random, random.length, array, length)));
                Cryptoki.C_CloseSession(session).orThrow();
            }
            return null;
        };
        ExecutorService executor = Executors.newFixedThreadPool(threads);
        List<Callable<Void>> all = Collections.nCopies(threads, work);
        for (Future<Void> done : executor.invokeAll(all, 2, TimeUnit.MINUTES)) {
            done.get();
        }
        executor.shutdown();
        // The first rounds draw so few bytes that they may well meet.
        assertTrue(drawn.size() > threads * (rounds - 2), drawn.size() + " different draws");
    }
}
