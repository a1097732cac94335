// Loads libzerlin once. If that fails, the error says in plain words what is wrong and what to do.
package halvorn.zerlin;

import java.io.File;
import java.nio.charset.StandardCharsets;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * The native library {@code libzerlin.so}. {@link Cryptoki}, {@link CTUtil} and
 * {@link halvorn.zerlin.constants.CK CK} load it when they are first used, so a program need not call
 * {@link #load}. If such a load fails, only the first use of the class throws the error that says what is
 * wrong; later uses throw {@code NoClassDefFoundError}. A program that wants to see the first error more
 * often calls {@link #load} before it uses those classes.
 *
 * <p>The JVM searches the library on {@code java.library.path}. If the system property {@value #PROPERTY} is
 * set, the library is the file that it names.
 *
 * <p>One file of the library serves one class loader at a time. A second class loader can load it when the
 * first one has been collected.
 *
 * <p><b>Warning.</b> Two copies of {@code libzerlin.so} in one JVM, each loaded by a class loader of its own,
 * do not get a {@code libcryptoki.so} each: the system's loader knows it by its name, and both use the one
 * that was loaded first. If the second copy would have found another file, calls and PINs would go to the
 * wrong HSM: it is refused. Use one JVM for each HSM library.
 */
public final class NativeLibrary {
    /** The system property that may contain the absolute path of the file of the library. */
    public static final String PROPERTY = "halvorn.zerlin.library";

    /**
     * The system property that may contain the absolute path of the file of the Cryptoki library, or the word
     * {@code embedded} for the one that comes with Zerlin and drives an ordinary PKCS#11 module.
     */
    public static final String CRYPTOKI_PROPERTY = "halvorn.zerlin.cryptoki";

    /** The version of these classes, which libzerlin.so must have too. */
    static final String VERSION = "3.10.0";

    private static final Pattern WRONG_WIDTH = Pattern.compile("(\\S+): wrong ELF class: ELFCLASS(\\d+)");

    private static volatile boolean loaded;

    private NativeLibrary() {
    }

    /**
     * Loads the library, unless it is loaded already. Any thread may call it, any number of times.
     *
     * @throws UnsatisfiedLinkError if the library cannot be loaded: its message has the text of the loader,
     *         what is missing and what to do, and its cause is the error of the loader; every later call
     *         tries again
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
            throw explained(e);
        } catch (RuntimeException e) {
            // From Java 24 on the JVM can be told to refuse native code; the class is not known to Java 8.
            if (!e.getClass().getName().equals("java.lang.IllegalCallerException")) {
                throw e;
            }
            throw explained(e);
        }
    }

    // The library calls this while it is loaded. Returns the value of the property, or null if nothing is chosen.
    private static byte[] onLoad(byte[] version, byte[] file) {
        String found = new String(version, StandardCharsets.US_ASCII);
        if (!found.equals(VERSION)) {
            throw new UnsatisfiedLinkError("zerlin.jar " + VERSION + " needs libzerlin.so " + VERSION + ", found "
                    + found + " at " + new String(file));
        }
        String cryptoki = System.getProperty(CRYPTOKI_PROPERTY, "");
        if (cryptoki.isEmpty()) {
            return null;
        }
        if (!cryptoki.equals("embedded") && !new File(cryptoki).isAbsolute()) {
            throw new UnsatisfiedLinkError(
                    CRYPTOKI_PROPERTY + " must be \"embedded\" or an absolute path, and not " + cryptoki);
        }
        return cryptoki.getBytes();
    }

    private static UnsatisfiedLinkError explained(Throwable cause) {
        UnsatisfiedLinkError clear = new UnsatisfiedLinkError(explain(cause.getMessage(),
                System.getProperty("os.arch"), System.getProperty("sun.arch.data.model", "unknown")));
        clear.initCause(cause);
        return clear;
    }

    static String explain(String loaderText, String arch, String width) {
        String text = "Cannot load the native library of Zerlin: " + loaderText;
        Matcher wrong = WRONG_WIDTH.matcher(loaderText);
        if (wrong.find()) {
            text += "\n- " + wrong.group(1) + " is a " + wrong.group(2) + "-bit library, and this JVM is " + width
                    + "-bit (os.arch " + arch + "): use a library and a JVM of the same width.";
        }
        if (loaderText.contains("llegal native access")) {
            text += "\n- this JVM refuses native code: start it with --enable-native-access=ALL-UNNAMED.";
        }
        if (loaderText.contains("libcryptoki.so: cannot open")) {
            text += "\n- libcryptoki.so, the PKCS#11 library that it needs, was not found:"
                    + " put it beside libzerlin.so or in a directory of LD_LIBRARY_PATH.";
        }
        if (loaderText.contains("in java.library.path") || loaderText.contains("Can't load library")) {
            text += "\n- libzerlin.so was not found: start the JVM with -Djava.library.path=<its directory>"
                    + " or with -D" + PROPERTY + "=<the file>.";
        }
        if (loaderText.contains("already loaded in another classloader")) {
            text += "\n- libzerlin.so serves one class loader at a time: load zerlin.jar in one class loader that"
                    + " all its users share.";
        }
        if (loaderText.contains("Expecting an absolute path")) {
            text += "\n- " + PROPERTY + " must be an absolute path.";
        }
        return text;
    }
}
