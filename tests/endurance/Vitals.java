// The figures that would grow in a process that leaks.

import java.lang.management.ManagementFactory;
import java.util.Locale;
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
    private final long heap;
    /** Global JNI references, weak ones too. */
    private final long references;
    private final long threads;

    Vitals() throws Exception {
        System.gc();
        Matcher threadPrint = ask(REFERENCES, "threadPrint");
        references = Long.parseLong(threadPrint.group(1)) + Long.parseLong(threadPrint.group(2));
        threads = ManagementFactory.getThreadMXBean().getThreadCount();
        heap = heapInUse() - Long.parseLong(ask(JVM_MALLOC, "vmNativeMemory", "summary", "scale=B").group(1));
    }

    /** Fails if these figures are greater than those by more than what is allowed, or if there are more threads. */
    void expectNoGrowthSince(Vitals before, int kibibytes, int moreReferences) {
        System.out.println("from " + before + " to " + this);
        if (heap > before.heap + kibibytes * 1024L || references > before.references + moreReferences
                || threads > before.threads) {
            throw new IllegalStateException("Grown: " + kibibytes + " KiB and " + moreReferences
                    + " references are allowed");
        }
    }

    @Override
    public String toString() {
        return String.format(Locale.ROOT, "%.1f KiB, %d references, %d threads", heap / 1024.0, references, threads);
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

    private static native long heapInUse();
}
