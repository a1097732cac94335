// What would creep upwards in a process that leaks.

import java.lang.management.ManagementFactory;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

import javax.management.ObjectName;

/** One look at the process. */
final class Vitals {
    private static final Pattern REFERENCES = Pattern.compile("JNI global refs: (\\d+), weak refs: (\\d+)");
    private static final Pattern JVM_MALLOC = Pattern.compile("malloc: (\\d+) #\\d+");

    static {
        System.loadLibrary("vitals");
    }

    /** Bytes that are held from malloc, by all but the JVM itself; with -XX:NativeMemoryTracking only. */
    final long heap;
    /** JNI references that are not local. */
    final long references;
    /** Weak ones. */
    final long weakReferences;
    final long threads;

    Vitals() throws Exception {
        System.gc();
        Matcher threadPrint = ask(REFERENCES, "threadPrint");
        references = Long.parseLong(threadPrint.group(1));
        weakReferences = Long.parseLong(threadPrint.group(2));
        threads = ManagementFactory.getThreadMXBean().getThreadCount();
        heap = heapInUse() - Long.parseLong(ask(JVM_MALLOC, "vmNativeMemory", "summary", "scale=B").group(1));
    }

    // What jcmd would be told.
    private static Matcher ask(Pattern pattern, String command, String... arguments) throws Exception {
        String answer = (String) ManagementFactory.getPlatformMBeanServer().invoke(
                new ObjectName("com.sun.management:type=DiagnosticCommand"), command, new Object[] {arguments},
                new String[] {String[].class.getName()});
        Matcher matcher = pattern.matcher(answer);
        if (!matcher.find()) {
            throw new IllegalStateException("This JVM does not tell " + pattern);
        }
        return matcher;
    }

    long allReferences() {
        return references + weakReferences;
    }

    private static native long heapInUse();
}
