// Loads libzerlin once, and tells in plain words what is wrong when that fails.
package halvorn.zerlin;

/**
 * The native library {@code libzerlin.so}. {@link Cryptoki}, {@link CTUtil} and
 * {@link halvorn.zerlin.constants.CK CK} load it at their first use, so programs need not call {@link #load}
 * themselves. One that wants to report a failing load more than once calls it first: when the first use of
 * {@link Cryptoki} fails, later uses meet only the JVM's {@code NoClassDefFoundError}.
 *
 * <p>The library is looked for on {@code java.library.path}, or is the file that the system property
 * {@value #PROPERTY} names.
 */
public final class NativeLibrary {
    /** The system property that may hold the absolute path of the library's file. */
    public static final String PROPERTY = "halvorn.zerlin.library";

    private static volatile boolean loaded;

    private NativeLibrary() {
    }

    /**
     * Loads the library unless it is loaded. Any thread may call it, any number of times.
     *
     * @throws UnsatisfiedLinkError with the loader's own text, followed by what is missing and what to do,
     *         and the loader's error as its cause; again at every later call, unless the fault was mended
     */
    public static void load() {
        if (!loaded) {
            loadOrExplain();
        }
    }

    private static synchronized void loadOrExplain() {
        String file = System.getProperty(PROPERTY);
        try {
            if (file == null) {
                System.loadLibrary("zerlin");
            } else {
                System.load(file);
            }
            loaded = true;
        } catch (UnsatisfiedLinkError e) {
            UnsatisfiedLinkError clear = new UnsatisfiedLinkError(explain(e.getMessage(),
                    System.getProperty("os.arch"), System.getProperty("sun.arch.data.model", "unknown")));
            clear.initCause(e);
            throw clear;
        }
    }

    static String explain(String loaderText, String arch, String width) {
        String text = "Cannot load the native library of Zerlin: " + loaderText;
        if (!width.equals("32") || loaderText.contains("wrong ELF class")) {
            text += "\n- libzerlin.so is a 32-bit library: run this program in a 32-bit (i386) JVM;"
                    + " this one is " + width + "-bit, os.arch " + arch + ".";
        }
        if (loaderText.contains("libcryptoki.so: cannot open")) {
            text += "\n- libcryptoki.so, the PKCS#11 library beneath, was not found:"
                    + " put it beside libzerlin.so or in a directory of LD_LIBRARY_PATH.";
        }
        if (loaderText.contains("in java.library.path") || loaderText.contains("Can't load library")) {
            text += "\n- libzerlin.so was not found: start the JVM with -Djava.library.path=<its directory>"
                    + " or with -D" + PROPERTY + "=<the file>.";
        }
        if (loaderText.contains("Expecting an absolute path")) {
            text += "\n- " + PROPERTY + " must be an absolute path.";
        }
        return text;
    }
}
