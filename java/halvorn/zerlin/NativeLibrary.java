// Loads libzerlin once. If that fails, the error says in plain words what is wrong and what to do.
package halvorn.zerlin;

import java.io.File;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;

/**
 * The native library {@code libzerlin.so}. {@link Cryptoki}, {@link CTUtil} and
 * {@link halvorn.zerlin.constants.CK CK} load it when they are first used, so a program need not call
 * {@link #load}. If such a load fails, only the first use of the class throws the error that says what is
 * wrong; later uses throw {@code NoClassDefFoundError}. A program that wants to see the first error more
 * often calls {@link #load} before it uses those classes.
 *
 * <p>If the system property {@value #PROPERTY} is set, the library is the file that it names. Otherwise
 * {@code zerlin-all.jar} unpacks the library that it brings for this JVM into a new folder that only this user
 * can read, and removes the folder when the library is loaded; with {@code zerlin.jar} the JVM searches for
 * the library on {@code java.library.path}.
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

    /**
     * The system property that may contain the directory in which {@code zerlin-all.jar} unpacks its libraries,
     * for machines whose temporary directory must not contain code that runs (noexec). The default is
     * {@code java.io.tmpdir}.
     */
    public static final String WORKDIR_PROPERTY = "halvorn.zerlin.workdir";

    /** The version of these classes, which libzerlin.so must have too. */
    static final String VERSION = "3.10.0";

    private static final Pattern PLATFORMS = Pattern.compile("Linux (i[3-6]86|x86|amd64|x86_64)");

    // What the text of the system's loader or of the JVM says, as a regular expression, and what to do: the first that
    // fits is shown. What the JVM says about libzerlin.so may be in the user's language, but for "Possible cause".
    private static final String[][] ADVICE = {
        {"(\\S+): wrong ELF class: ELFCLASS(\\d+)",
            "$1 is a $2-bit library, and this JVM is WIDTH-bit: use a library and a JVM of the same width."},
        {"(\\S+): .*Possible cause: can't load",
            "$1 is a library for another processor, and this JVM is WIDTH-bit: use a library and a JVM of the same kind."},
        {"llegal native access",
            "this JVM refuses native code: start it with --enable-native-access=ALL-UNNAMED, or with"
            + " --enable-native-access=halvorn.zerlin if zerlin.jar is on the module path."},
        {"/zerlin/libcryptoki\\.so: cannot open",
            "the embedded libcryptoki.so was not found: install libzerlin-softtoken, or use zerlin-all.jar."},
        {"^libcryptoki\\.so: cannot open",
            "libcryptoki.so, the PKCS#11 library of the HSM, was not found: put it beside libzerlin.so or in a"
            + " directory of LD_LIBRARY_PATH, or name its file with -D" + CRYPTOKI_PROPERTY + "=<the file>."},
        {"(\\S+): undefined symbol: C[_T]",
            "$1 does not have all functions that are needed: if it is an ordinary PKCS#11 module, start with -D"
            + CRYPTOKI_PROPERTY + "=embedded and name the module in the environment variable ZERLIN_MODULE."},
        {"in java\\.library\\.path|Can't load library",
            "libzerlin.so was not found: start the JVM with -Djava.library.path=<its directory> or with -D" + PROPERTY
            + "=<the file>."},
        {"already loaded in this process", "a JVM serves one HSM library: use one JVM for each."},
        {"already loaded",
            "libzerlin.so serves one class loader at a time: load zerlin.jar in one class loader that all its users"
            + " share."},
        {"Expecting an absolute path", PROPERTY + " must be an absolute path."},
        {"needs libzerlin\\.so",
            "zerlin.jar and libzerlin.so must be of the same version: take both from one package."},
        {"cannot unpack",
            "zerlin-all.jar needs a directory in which this user may write 2 MB, and run code: name one with -D"
            + WORKDIR_PROPERTY + "=<the directory>."},
        {"failed to map segment|Operation not permitted",
            "the file system of the library forbids to run code (noexec): put the library elsewhere; with"
            + " zerlin-all.jar name another directory with -D" + WORKDIR_PROPERTY + "=<the directory>."},
        {"(?i)relocating|ld-linux|GLIBC|musl",
            "the library needs glibc 2.34 and the C++ library of GCC 5 or later, which Debian 12 has: it does not run on"
            + " musl (Alpine Linux) or on older systems."},
        {"^(/\\S+): cannot open shared object file",
            "$1 was not found or cannot be read: correct " + CRYPTOKI_PROPERTY + "."},
        {"(\\S+): cannot open shared object file",
            "a library that is needed has not found $1: install it, or name its directory in LD_LIBRARY_PATH."},
    };

    // In this encoding Java hands file names to the system.
    private static final Charset FILE_NAMES = Charset.forName(System.getProperty("sun.jnu.encoding", "UTF-8"));

    private static volatile boolean loaded;
    private static volatile boolean comparesVersions;

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
            if (file != null) {
                System.load(file);
            } else if (!Bundled.load()) {
                System.loadLibrary("zerlin");
            }
            if (!comparesVersions) {
                throw new UnsatisfiedLinkError(
                        "zerlin.jar " + VERSION + " needs libzerlin.so " + VERSION + ", found an older one");
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

    // JNI_OnLoad calls this with the version and the file of the library. Returns the Cryptoki library that is chosen, or
    // null.
    static byte[] onLoad(byte[] version, byte[] file) {
        comparesVersions = true;
        String found = new String(version, StandardCharsets.US_ASCII);
        if (!found.equals(VERSION)) {
            throw new UnsatisfiedLinkError("zerlin.jar " + VERSION + " needs libzerlin.so " + VERSION + ", found "
                    + found + " at " + new String(file, FILE_NAMES));
        }
        String cryptoki = System.getProperty(CRYPTOKI_PROPERTY, "");
        if (cryptoki.isEmpty()) {
            return null;
        }
        if (!cryptoki.equals("embedded") && !new File(cryptoki).isAbsolute()) {
            throw new UnsatisfiedLinkError(
                    CRYPTOKI_PROPERTY + " must be \"embedded\" or an absolute path, and not " + cryptoki);
        }
        return cryptoki.getBytes(FILE_NAMES);
    }

    private static UnsatisfiedLinkError explained(Throwable cause) {
        String text = explain(cause.getMessage(), System.getProperty("os.name") + " " + System.getProperty("os.arch"),
                System.getProperty("sun.arch.data.model", "unknown"));
        List<String> abis = Bundled.abis();
        if (!abis.isEmpty() && !abis.contains(Bundled.abi())) {
            text += "\n- this zerlin-all.jar has the libraries for " + String.join(" and ", abis)
                    + " only, and this JVM is " + Bundled.abi() + ".";
        }
        UnsatisfiedLinkError clear = new UnsatisfiedLinkError(text);
        clear.initCause(cause);
        return clear;
    }

    static String explain(String loaderText, String platform, String width) {
        StringBuilder text = new StringBuilder("Cannot load the native library of Zerlin: ").append(loaderText);
        if (!PLATFORMS.matcher(platform).matches()) {
            text.append("\n- this JVM is for ").append(platform)
                    .append(", and the library is for Linux on i386 and amd64: use such a JVM.");
        }
        for (String[] row : ADVICE) {
            Matcher matcher = Pattern.compile(row[0]).matcher(loaderText);
            if (matcher.find()) {
                String advice = row[1].replace("WIDTH", width);
                for (int group = 1; group <= matcher.groupCount(); group++) {
                    advice = advice.replace("$" + group, matcher.group(group));
                }
                return text.append("\n- ").append(advice).toString();
            }
        }
        return text.toString();
    }
}
