// Locking callbacks for the tests, which note each call.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;

public final class TestCallbacks {
    private static final StringBuffer calls = new StringBuffer();

    private TestCallbacks() {
    }

    // Sets the callbacks whose initials are given: create, destroy, lock, unlock. CreateMutex returns the mutex,
    // the others return the answer.
    public static CK_C_INITIALIZE_ARGS answering(String initials, Object mutex, long answer) {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        calls.setLength(0);
        args.createMutex = !initials.contains("c") ? null : () -> {
            note("CreateMutex", "", 0);
            return mutex;
        };
        args.destroyMutex = !initials.contains("d") ? null : given -> note("DestroyMutex", given, answer);
        args.lockMutex = !initials.contains("l") ? null : given -> note("LockMutex", given, answer);
        args.unlockMutex = !initials.contains("u") ? null : given -> note("UnlockMutex", given, answer);
        return args;
    }

    // Every callback throws its own name.
    public static CK_C_INITIALIZE_ARGS throwing() {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        calls.setLength(0);
        args.createMutex = () -> fail("CreateMutex", "");
        args.destroyMutex = given -> fail("DestroyMutex", given);
        args.lockMutex = given -> fail("LockMutex", given);
        args.unlockMutex = given -> fail("UnlockMutex", given);
        return args;
    }

    // LockMutex calls C_Finalize and then throws its name.
    public static CK_C_INITIALIZE_ARGS finalising() {
        CK_C_INITIALIZE_ARGS args = answering("", null, 0);
        args.lockMutex = given -> {
            finalise();
            return fail("LockMutex", given);
        };
        return args;
    }

    // The test that uses it says which function this is.
    private static native void finalise();

    // The calls since the last time: "CreateMutex() LockMutex(m) ".
    public static String takeCalls() {
        String taken = calls.toString();
        calls.setLength(0);
        return taken;
    }

    private static long note(String name, Object mutex, long answer) {
        calls.append(name + "(" + mutex + ") ");
        return answer;
    }

    private static long fail(String name, Object mutex) {
        note(name, mutex, 0);
        throw new IllegalStateException(name);
    }
}
