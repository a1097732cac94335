// The figures that would grow in a process that leaks.

import java.lang.management.ManagementFactory;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

import javax.management.ObjectName;

/** The figures of the process at one moment. */
final class Vitals {
    private static final Pattern REFERENCES = Pattern.compile("JNI global refs: (\\d+), weak refs: (\\d+)");
    private static final Pattern JVM_MALLOC = Pattern.compile("malloc: (\\d+) #\\d+");

    static {
        System.loadLibrary("vitals");
    }

    /** Bytes allocated with malloc, less the JVM's own. Needs -XX:NativeMemoryTracking. */
    final long heap;
    /** Global JNI references. */
    final long references;
    /** Weak global JNI references. */
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

    // Runs a command of jcmd.
    private static Matcher ask(Pattern pattern, String command, String... arguments) throws Exception {
        String answer = (String) ManagementFactory.getPlatformMBeanServer().invoke(
                new ObjectName("com.sun.management:type=DiagnosticCommand"), command, new Object[] {arguments},
                new String[] {String[].class.getName()});
        Matcher matcher = pattern.matcher(answer);
        if (!matcher.find()) {
            throw new IllegalStateException("This JVM does not report " + pattern);
        }
        return matcher;
    }

    long allReferences() {
        return references + weakReferences;
    }

    private static native long heapInUse();
}
