// Loads the libraries that a jar brings along, from a folder that exists only while they are loaded.
package halvorn.zerlin;

import java.io.File;
import java.io.FileOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.nio.file.attribute.PosixFilePermissions;
import java.util.ArrayList;
import java.util.List;

/** The libraries of {@code zerlin-all.jar}; {@code zerlin.jar} has none. */
final class Bundled {
    private static final String[] ABIS = {"i386", "amd64"};
    private static final String EMBEDDED = "zerlin/libcryptoki.so";
    private static final String LIBRARY = "libzerlin.so";

    private Bundled() {
    }

    /** Returns the ABI of this JVM, one of {@link #ABIS}, or another text if there can be no library for it. */
    static String abi() {
        String arch = System.getProperty("os.arch");
        if (!"Linux".equals(System.getProperty("os.name"))) {
            return "not Linux";
        }
        return arch.matches("i[3-6]86|x86") ? "i386" : arch.equals("x86_64") ? "amd64" : arch;
    }

    /** Returns the ABIs that this jar has libraries for. */
    static List<String> abis() {
        List<String> found = new ArrayList<>();
        for (String abi : ABIS) {
            if (Bundled.class.getResource("native/" + abi + "/" + LIBRARY) != null) {
                found.add(abi);
            }
        }
        return found;
    }

    /** Loads the library for this JVM; returns false if this jar has none. */
    static boolean load() {
        String abi = abi();
        if (!abis().contains(abi)) {
            return false;
        }
        String parent = System.getProperty(NativeLibrary.WORKDIR_PROPERTY, System.getProperty("java.io.tmpdir"));
        Path folder = null;
        try {
            // Nobody else may replace a file before it is loaded.
            folder = Files.createTempDirectory(Paths.get(parent).toAbsolutePath(), "zerlin-",
                    PosixFilePermissions.asFileAttribute(PosixFilePermissions.fromString("rwx------")));
            Files.createDirectory(folder.resolve(EMBEDDED).getParent());
            for (String name : new String[] {LIBRARY, EMBEDDED}) {
                unpack("native/" + abi + "/" + name, folder.resolve(name).toFile());
            }
            // It looks for the embedded library before this returns.
            System.load(folder.resolve(LIBRARY).toString());
            return true;
        } catch (IOException e) {
            UnsatisfiedLinkError error = new UnsatisfiedLinkError("cannot unpack libzerlin.so in " + parent + ": " + e);
            error.initCause(e);
            throw error;
        } finally {
            remove(folder);
        }
    }

    // Not Files.copy, which in Java 8 fails on a thread that has been interrupted.
    private static void unpack(String resource, File file) throws IOException {
        try (InputStream in = Bundled.class.getResourceAsStream(resource);
                OutputStream out = new FileOutputStream(file)) {
            byte[] buffer = new byte[1 << 16];
            for (int length = in.read(buffer); length >= 0; length = in.read(buffer)) {
                out.write(buffer, 0, length);
            }
        }
    }

    // The system keeps a file that is in use. What cannot be removed has nothing secret.
    private static void remove(Path folder) {
        if (folder != null) {
            for (String name : new String[] {LIBRARY, EMBEDDED, new File(EMBEDDED).getParent(), ""}) {
                folder.resolve(name).toFile().delete();
            }
        }
    }
}
