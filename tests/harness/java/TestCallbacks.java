// Locking callbacks for the tests, which note each call.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;

public final class TestCallbacks {
    private static final StringBuffer calls = new StringBuffer();

    // Sets the callbacks whose initials are given: create, destroy, lock, unlock. CreateMutex returns the mutex, the
    // others return the answer. With the initial t all throw their own names instead.
    public static CK_C_INITIALIZE_ARGS answering(String initials, Object mutex, long answer) {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        calls.setLength(0);
        args.createMutex = !initials.contains("c") ? null : () -> note("CreateMutex", "", initials, mutex);
        args.destroyMutex = !initials.contains("d") ? null : given -> note("DestroyMutex", given, initials, answer);
        args.lockMutex = !initials.contains("l") ? null : given -> note("LockMutex", given, initials, answer);
        args.unlockMutex = !initials.contains("u") ? null : given -> note("UnlockMutex", given, initials, answer);
        return args;
    }

    // The calls since the last time: "CreateMutex() LockMutex(m) ".
    public static String takeCalls() {
        String taken = calls.toString();
        calls.setLength(0);
        return taken;
    }

    private static <T> T note(String name, Object mutex, String initials, T answer) {
        calls.append(name + "(" + mutex + ") ");
        if (initials.contains("t")) {
            throw new IllegalStateException(name);
        }
        return answer;
    }
}
