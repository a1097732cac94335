// Locking callbacks for the tests, which note each call.

import halvorn.zerlin.CK_C_INITIALIZE_ARGS;
import java.util.function.ToLongFunction;

public final class TestCallbacks {
    private static final StringBuffer calls = new StringBuffer();

    private TestCallbacks() {
    }

    // Sets the callbacks whose initials are given: create, destroy, lock, unlock. CreateMutex returns the mutex,
    // the others return the answer.
    public static CK_C_INITIALIZE_ARGS answering(String initials, Object mutex, long answer) {
        return ending(initials, mutex, name -> answer);
    }

    // Every callback throws its own name.
    public static CK_C_INITIALIZE_ARGS throwing() {
        return ending("cdlu", "m", TestCallbacks::fail);
    }

    // The calls since the last time: "CreateMutex() LockMutex(m) ".
    public static String takeCalls() {
        String taken = calls.toString();
        calls.setLength(0);
        return taken;
    }

    // What the callbacks end with depends on their names.
    private static CK_C_INITIALIZE_ARGS ending(String initials, Object mutex, ToLongFunction<String> end) {
        CK_C_INITIALIZE_ARGS args = new CK_C_INITIALIZE_ARGS();
        calls.setLength(0);
        args.createMutex = !initials.contains("c") ? null : () -> {
            note("CreateMutex", "", end);
            return mutex;
        };
        args.destroyMutex = !initials.contains("d") ? null : given -> note("DestroyMutex", given, end);
        args.lockMutex = !initials.contains("l") ? null : given -> note("LockMutex", given, end);
        args.unlockMutex = !initials.contains("u") ? null : given -> note("UnlockMutex", given, end);
        return args;
    }

    private static long note(String name, Object mutex, ToLongFunction<String> end) {
        calls.append(name + "(" + mutex + ") ");
        return end.applyAsLong(name);
    }

    private static long fail(String name) {
        throw new IllegalStateException(name);
    }
}
