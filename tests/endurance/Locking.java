// Java's locking callbacks, with counters.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;

import java.util.concurrent.atomic.AtomicLong;

final class Locking {
    final CK_C_INITIALIZE_ARGS arguments = CK_C_INITIALIZE_ARGS.javaLocking();
    private final AtomicLong locks = new AtomicLong();
    private final AtomicLong held = new AtomicLong();
    private final AtomicLong alive = new AtomicLong();

    Locking() {
        CK_C_INITIALIZE_ARGS java = CK_C_INITIALIZE_ARGS.javaLocking();
        arguments.createMutex = () -> {
            alive.incrementAndGet();
            return java.createMutex.CreateMutex();
        };
        arguments.lockMutex = mutex -> {
            locks.incrementAndGet();
            held.incrementAndGet();
            return java.lockMutex.LockMutex(mutex);
        };
        arguments.unlockMutex = mutex -> {
            held.decrementAndGet();
            return java.unlockMutex.UnlockMutex(mutex);
        };
        arguments.destroyMutex = mutex -> {
            alive.decrementAndGet();
            return java.destroyMutex.DestroyMutex(mutex);
        };
    }

    /** Fails unless mutexes were locked, and all are unlocked and destroyed. */
    void expectBalanced() {
        String counts = locks + " locks, " + held + " held, " + alive + " mutexes alive";
        System.out.println(counts);
        if (locks.get() == 0 || held.get() != 0 || alive.get() != 0) {
            throw new IllegalStateException("Not balanced: " + counts);
        }
    }
}
