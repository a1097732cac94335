// Hostile calls of all natives, over a module that lies (tests/fakes/lying_module.cpp), made worse by one of the rows.
// What must hold: the JVM goes on, no exception comes out but those that are documented, and honest calls on each
// thread return what they should. Each row runs in a JVM of its own (tools/attack runs them all):
//
//   run lying Attack <row> <seed> <seconds>
//
// Left out are the lengths that abort the process as documented, and what only the Cryptoki library itself can do
// wrong: reading beyond the 64 KiB behind a declared length, or writing through pointers of its own.

import halvorn.zerlin.*;
import halvorn.zerlin.constants.*;

import java.lang.instrument.*;
import java.lang.reflect.*;
import java.util.*;
import java.util.concurrent.ThreadLocalRandom;
import java.util.concurrent.atomic.*;
import java.util.regex.Pattern;

public final class Attack {
    // What happens beside the calls; run.in has the options of each.
    private enum Row { CHANGED, REENTERED, REINITIALISED, REDEFINED, MEMORY, STACKS }

    private static final CK_SESSION_HANDLE HONEST = new CK_SESSION_HANDLE(0x7A5EC0DE);
    private static final Pattern ALLOWED = Pattern.compile(
            "(?s)java.lang.(UnsupportedOperationException: |NullPointerException: the name|OutOfMemoryError"
            + "|StackOverflowError|IllegalMonitorStateException: hostile|NoClassDefFoundError: java/lang/Char).*");
    private static final Random SEEDS = new Random();
    private static final AtomicLong CALLS = new AtomicLong();
    private static final AtomicBoolean HAS_ATTACKER = new AtomicBoolean();

    private static Instrumentation instrumentation;
    private static volatile Row row; // null while all classes are loaded
    private static volatile long end = Long.MAX_VALUE;
    private static volatile Object[] inFlight = {};
    private static Object[] filled; // the memory in row MEMORY, of which each part holds the others

    public static void premain(String arguments, Instrumentation given) {
        instrumentation = given;
    }

    public static void main(String[] arguments) throws Exception {
        SEEDS.setSeed(Long.parseLong(arguments[3]));
        // The JVM never uses a class again whose initialisation ran out of stack.
        Class.forName(ClassNotFoundException.class.getName());
        for (int i = 0; i < 200; i++) {
            call(SEEDS, 2);
        }
        end = System.nanoTime() + (long) (Double.parseDouble(arguments[4]) * 1e9);
        row = Row.valueOf(arguments[2]);
        Hostile.action = row == Row.REENTERED ? Attack::reenter : Hostile.action;
        Soak.together(row == Row.MEMORY ? 2 : 5, row == Row.STACKS ? 1 : 0, Attack::work);
        checkHonestCall();
        System.out.println(row + ": " + CALLS + " calls");
        System.exit(0); // threads of the JVM's own do not matter
    }

    // The first thread attacks, the others call.
    private static Void work() throws Exception {
        boolean attacks = !HAS_ATTACKER.getAndSet(true);
        Random random = new Random(SEEDS.nextLong());
        while (System.nanoTime() < end) {
            try {
                if (attacks) {
                    attack(random);
                } else {
                    call(random, row == Row.STACKS ? Integer.MAX_VALUE : 64);
                    checkHonestCall();
                }
            } catch (OutOfMemoryError | StackOverflowError | IllegalMonitorStateException e) {
                filled = null; // the errors came outside of a native, the exception from a callback within C_Finalize
            }
        }
        return null;
    }

    private static void attack(Random random) throws Exception {
        Class<?> one = Hostile.CLASSES.get(random.nextInt(Hostile.CLASSES.size()));
        switch (row) {
            case CHANGED:
                Object[] arguments = inFlight;
                new Hostile(random).change(arguments[random.nextInt(arguments.length)]);
                break;
            case REINITIALISED: // ends the registration of callbacks that other threads are calling
                Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking());
                Cryptoki.C_Finalize(null);
                break;
            case REDEFINED:
                try (var in = one.getResourceAsStream(one.getName().replaceAll(".*[.]", "") + ".class")) {
                    instrumentation.redefineClasses(new ClassDefinition(one, in.readAllBytes()));
                }
                break;
            default:
                Thread.sleep(1);
        }
    }

    private static void call(Random random, int times) {
        filled = null;
        Method called = Hostile.NATIVES[random.nextInt(Hostile.NATIVES.length)];
        Object[] arguments = {};
        try {
            arguments = new Hostile(random).argumentsOf(called);
            inFlight = arguments;
            for (int size = 20_000; row == Row.MEMORY; size = Math.max(100, size - 40)) {
                filled = new Object[] {filled, new byte[size]};
            }
        } catch (ReflectiveOperationException e) {
            throw new IllegalStateException(e);
        } catch (OutOfMemoryError e) {
            // The calls begin with no memory at all.
        }
        call(called, arguments, times);
    }

    // Calls a native several times with the same arguments, which others may change.
    private static void call(Method called, Object[] arguments, int times) {
        filled = filled == null ? null : (Object[]) filled[0]; // each call has more memory, but less stack
        CALLS.incrementAndGet();
        try {
            called.invoke(null, arguments);
        } catch (ReflectiveOperationException e) {
            Callers.expect(ALLOWED.matcher("" + e.getCause()).matches(), called.getName() + ": " + e.getCause());
        }
        if (times > 1 && System.nanoTime() < end) {
            call(called, arguments, times - 1);
        }
    }

    // The module writes what only this thread expects.
    private static void checkHonestCall() {
        byte[] expected = new byte[3000];
        Arrays.fill(expected, (byte) ThreadLocalRandom.current().nextInt());
        CK_ATTRIBUTE[] template = {CK_ATTRIBUTE.buffer(CKA.LABEL, expected.length)};
        CK_RV answer = Cryptoki.C_GetAttributeValue(HONEST, new CK_OBJECT_HANDLE(expected[0]), template, 1);
        Callers.expect(answer.isOk() && Arrays.equals(expected, template[0].getBytes()), "an honest call: " + answer);
    }

    // What a callback or an overridden method does within a native.
    private static long reenter() {
        switch (ThreadLocalRandom.current().nextInt(6)) {
            case 0: throw new IllegalMonitorStateException("hostile");
            case 1: return Cryptoki.C_Finalize(null).getValue();
            case 2: return Cryptoki.C_Initialize(CK_C_INITIALIZE_ARGS.javaLocking()).getValue();
            case 3: checkHonestCall(); return 0;
            default: call(ThreadLocalRandom.current(), 1); return 0;
        }
    }
}
