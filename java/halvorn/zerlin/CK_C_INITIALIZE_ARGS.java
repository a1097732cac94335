// The argument of C_Initialize: how the Cryptoki library is to lock, with ready-made callbacks.
package halvorn.zerlin;

import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKR;

import java.util.concurrent.Semaphore;
import java.util.concurrent.atomic.AtomicBoolean;

/**
 * The argument of {@link Cryptoki#C_Initialize} (PKCS#11 v2.20, 9.7 and 11.4). A program of several threads
 * needs one:
 *
 * <pre>{@code
 * Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.osLocking()).orThrow();
 * }</pre>
 *
 * <p>Set all four callbacks or none. The library calls them from any thread, threads of its own included,
 * which are attached to the JVM for the call. A callback that throws answers {@code CKR_MUTEX_BAD}, and its
 * exception stays pending on that thread: below a native of {@link Cryptoki}, that native then throws it. The
 * object stays registered until {@link Cryptoki#C_Finalize} succeeds and its fields are read at every
 * callback, so do not change them meanwhile.
 */
public class CK_C_INITIALIZE_ARGS {
    /** Makes mutexes; null for none. */
    public CK_CREATEMUTEX createMutex;
    /** Destroys mutexes; null for none. */
    public CK_DESTROYMUTEX destroyMutex;
    /** Locks mutexes; null for none. */
    public CK_LOCKMUTEX lockMutex;
    /** Unlocks mutexes; null for none. */
    public CK_UNLOCKMUTEX unlockMutex;
    /** Bits such as {@code CKF_OS_LOCKING_OK}, see {@link CKF}; handed on unchanged. */
    public long flags;
    /** Must be null; any object reaches the library as a pointer that is not null, which it refuses. */
    public Object reserved;

    /** Makes an argument without callbacks and flags: only one thread may use the library. */
    public CK_C_INITIALIZE_ARGS() {
    }

    /**
     * Lets the library lock with the operating system's own means.
     *
     * @return a new argument with {@code CKF_OS_LOCKING_OK} and without callbacks
     */
    public static CK_C_INITIALIZE_ARGS osLocking() {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        args.flags = CKF.OS_LOCKING_OK;
        return args;
    }

    /**
     * Lets the library lock with Java's means. Any thread may unlock; unlocking a mutex that nobody holds
     * answers {@code CKR_MUTEX_NOT_LOCKED}.
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

    /** Makes a mutex. */
    public interface CK_CREATEMUTEX {
        /**
         * Makes a mutex, unlocked.
         *
         * @return any object that stands for the mutex; null answers {@code CKR_MUTEX_BAD}
         */
        Object CreateMutex();
    }

    /** Destroys a mutex. */
    public interface CK_DESTROYMUTEX {
        /**
         * Destroys a mutex; the native side lets go of the object afterwards.
         *
         * @param pMutex the object that {@link CK_CREATEMUTEX#CreateMutex} returned
         * @return a value of {@link CKR}, handed to the library
         */
        long DestroyMutex(Object pMutex);
    }

    /** Locks a mutex. */
    public interface CK_LOCKMUTEX {
        /**
         * Waits until the mutex is free and locks it.
         *
         * @param pMutex the object that {@link CK_CREATEMUTEX#CreateMutex} returned
         * @return a value of {@link CKR}, handed to the library
         */
        long LockMutex(Object pMutex);
    }

    /** Unlocks a mutex. */
    public interface CK_UNLOCKMUTEX {
        /**
         * Unlocks the mutex.
         *
         * @param pMutex the object that {@link CK_CREATEMUTEX#CreateMutex} returned
         * @return a value of {@link CKR}, {@code CKR_MUTEX_NOT_LOCKED} when it is not locked; handed to the
         *         library
         */
        long UnlockMutex(Object pMutex);
    }

    // Not a ReentrantLock: PKCS#11 lets one thread unlock what another has locked.
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
