// The argument of C_Initialize: how the Cryptoki library locks; with callbacks that use the locks of Java.
package halvorn.zerlin;

import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKR;

import java.util.concurrent.Semaphore;
import java.util.concurrent.atomic.AtomicBoolean;

/**
 * The argument of {@link Cryptoki#C_Initialize} (PKCS#11 v2.20, 9.7 and 11.4). A program with several threads
 * needs one:
 *
 * <pre>{@code
 * Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
 * }</pre>
 *
 * <p>The library uses the four callbacks to lock. Set all of them or none. The library may call them from any
 * thread. A thread that the library itself has started is attached to the JVM for the duration of the call.
 *
 * <p>The binding keeps an object with callbacks until {@link Cryptoki#C_Finalize} succeeds and reads its
 * fields at every callback, so do not change them in that time.
 *
 * <p>A callback should report a failure with its return value. If it throws, the library receives
 * {@code CKR_MUTEX_BAD}, and so do all later callbacks on the same thread while the exception is pending. A
 * native of {@link Cryptoki} that runs on the thread throws the exception when the library returns. A thread
 * of the library itself stays attached to the JVM with its exception: deliberate. The process then does not
 * end when {@code main} returns, but only when that thread ends, so end the program with {@code System.exit}.
 *
 * <p><b>Warning.</b> If {@code C_Initialize} returns {@code CKR_CANT_LOCK} for callbacks, do not just try
 * {@link #osLocking} instead: it would reach the library as "only one thread". See
 * {@link Cryptoki#C_Initialize}.
 */
public class CK_C_INITIALIZE_ARGS {
    /** Creates mutexes; null for no callback. */
    public CK_CREATEMUTEX createMutex;
    /** Destroys mutexes; null for no callback. */
    public CK_DESTROYMUTEX destroyMutex;
    /** Locks mutexes; null for no callback. */
    public CK_LOCKMUTEX lockMutex;
    /** Unlocks mutexes; null for no callback. */
    public CK_UNLOCKMUTEX unlockMutex;
    /** Bits such as {@code CKF_OS_LOCKING_OK}, see {@link CKF}. The library receives them unchanged. */
    public long flags;
    /** Must be null. An object reaches the library as a pointer that is not null, which it refuses. */
    public Object reserved;

    /** Creates an argument without callbacks and flags: only one thread may use the library. */
    public CK_C_INITIALIZE_ARGS() {
    }

    /**
     * Creates an argument that lets the library lock with the operating system's means.
     *
     * @return a new argument with {@code CKF_OS_LOCKING_OK} and without callbacks
     */
    public static CK_C_INITIALIZE_ARGS osLocking() {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        args.flags = CKF.OS_LOCKING_OK;
        return args;
    }

    /**
     * Creates an argument that lets the library lock with Java's means. Any thread may unlock a mutex.
     * Unlocking a mutex that nobody holds returns {@code CKR_MUTEX_NOT_LOCKED}. Call
     * {@link Cryptoki#C_Finalize} before the program ends: SoftHSM 2.6.1 aborts a process that ends without
     * it.
     *
     * @return a new argument with four callbacks and no flags
     */
    public static CK_C_INITIALIZE_ARGS javaLocking() {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        args.createMutex = JavaMutex::new;
        args.destroyMutex = mutex -> mutex instanceof JavaMutex ? CKR.OK : CKR.MUTEX_BAD;
        args.lockMutex = mutex -> mutex instanceof JavaMutex ? ((JavaMutex) mutex).lock() : CKR.MUTEX_BAD;
        args.unlockMutex = mutex -> mutex instanceof JavaMutex ? ((JavaMutex) mutex).unlock() : CKR.MUTEX_BAD;
        return args;
    }

    /** Creates a mutex. */
    public interface CK_CREATEMUTEX {
        /**
         * Creates a mutex that is not locked.
         *
         * @return an object that stands for the mutex; for null the library receives {@code CKR_MUTEX_BAD}
         */
        Object CreateMutex();
    }

    /** Destroys a mutex. */
    public interface CK_DESTROYMUTEX {
        /**
         * Destroys a mutex. Afterwards the binding no longer refers to the object, unless this method throws.
         *
         * @param pMutex the object that {@link CK_CREATEMUTEX#CreateMutex} returned
         * @return a value of {@link CKR}, which the library receives
         */
        long DestroyMutex(Object pMutex);
    }

    /** Locks a mutex. */
    public interface CK_LOCKMUTEX {
        /**
         * Waits until the mutex is not locked, and locks it.
         *
         * @param pMutex the object that {@link CK_CREATEMUTEX#CreateMutex} returned
         * @return a value of {@link CKR}, which the library receives
         */
        long LockMutex(Object pMutex);
    }

    /** Unlocks a mutex. */
    public interface CK_UNLOCKMUTEX {
        /**
         * Unlocks the mutex.
         *
         * @param pMutex the object that {@link CK_CREATEMUTEX#CreateMutex} returned
         * @return a value of {@link CKR}, which the library receives; {@code CKR_MUTEX_NOT_LOCKED} if the
         *         mutex is not locked
         */
        long UnlockMutex(Object pMutex);
    }

    // Not a ReentrantLock, because PKCS#11 lets a thread unlock what another thread has locked.
    private static final class JavaMutex {
        private final Semaphore free = new Semaphore(1);
        private final AtomicBoolean locked = new AtomicBoolean();

        long lock() {
            free.acquireUninterruptibly();
            locked.set(true);
            return CKR.OK;
        }

        long unlock() {
            if (!locked.compareAndSet(true, false)) {
                return CKR.MUTEX_NOT_LOCKED;
            }
            free.release();
            return CKR.OK;
        }
    }
}
