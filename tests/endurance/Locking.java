// Java's locking callbacks, with counters.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;

import java.util.Set;
import java.util.concurrent.ConcurrentHashMap;
import java.util.concurrent.atomic.AtomicLong;

final class Locking {
    final CK_C_INITIALIZE_ARGS arguments = CK_C_INITIALIZE_ARGS.javaLocking();
    final AtomicLong made = new AtomicLong();
    final AtomicLong locked = new AtomicLong();
    private final AtomicLong unlocked = new AtomicLong();
    private final AtomicLong destroyed = new AtomicLong();
    /** The identifiers of the threads that locked. */
    final Set<Long> threads = ConcurrentHashMap.newKeySet();

    Locking() {
        CK_C_INITIALIZE_ARGS java = CK_C_INITIALIZE_ARGS.javaLocking();
        arguments.createMutex = () -> {
            made.incrementAndGet();
            return java.createMutex.CreateMutex();
        };
        arguments.lockMutex = mutex -> {
            threads.add(Thread.currentThread().getId());
            locked.incrementAndGet();
            return java.lockMutex.LockMutex(mutex);
        };
        arguments.unlockMutex = mutex -> {
            unlocked.incrementAndGet();
            return java.unlockMutex.UnlockMutex(mutex);
        };
        arguments.destroyMutex = mutex -> {
            destroyed.incrementAndGet();
            return java.destroyMutex.DestroyMutex(mutex);
        };
    }

    /** Fails unless every lock was followed by an unlock and every mutex was destroyed. */
    void expectBalanced() {
        String counts = made + " mutexes made, " + destroyed + " destroyed, " + locked + " times locked, "
                + unlocked + " times unlocked, on " + threads.size() + " threads";
        System.out.println(counts);
        if (locked.get() == 0 || locked.get() != unlocked.get() || made.get() != destroyed.get()) {
            throw new IllegalStateException("Not balanced: " + counts);
        }
    }
}
