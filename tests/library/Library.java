// Copies libzerlin.so into folders with different libcryptoki.so beside it and loads each in a class loader of its own,
// all in one JVM: which is used, and what the error says of those that cannot be.

import java.io.File;
import java.net.URL;
import java.net.URLClassLoader;
import java.nio.file.*;
import java.util.ArrayList;
import java.util.List;
import java.util.function.Supplier;

final class Library {
    private static final List<Object> LOADED = new ArrayList<>(); // so that no class loader is collected

    private Library() {
    }

    /** Arguments: a folder to work in, libzerlin.so, and the libraries to stand beside it. */
    public static void main(String[] arguments) throws Exception {
        Path work = Files.createTempDirectory(Path.of(arguments[0]), "library");
        Path zerlin = Path.of(arguments[1]);
        Path ordinaryModule = Path.of(arguments[2]);
        Path namesake = Path.of(arguments[3]);
        Path softtoken = Path.of(arguments[4]);
        Path text = Files.writeString(work.resolve("no library"), "no library\n");
        try {
            expect(use(folder(work, "none", zerlin, null)), "libcryptoki.so: cannot open shared object file",
                    "put it beside libzerlin.so or in a directory of LD_LIBRARY_PATH");
            expect(use(folder(work, "module", zerlin, ordinaryModule)),
                    "libcryptoki.so: undefined symbol: C_Initialize");
            expect(use(folder(work, "text", zerlin, text)), "file too short");
            Path first = folder(work, "namesake", zerlin, namesake);
            expect(use(first), "0x80000005", ", CKR_PIN_INCORRECT");
            expect(use(folder(work, "other", zerlin, softtoken)),
                    "libcryptoki.so is already loaded in this process, from " + work + "/namesake/libcryptoki.so,"
                            + " and would be used instead of " + work + "/other/libcryptoki.so");
            Path second = folder(work, "again", zerlin, null);
            Files.createLink(second.resolve("libcryptoki.so"), first.resolve("libcryptoki.so"));
            expect(use(second), "0x80000005", ", CKR_PIN_INCORRECT");
        } finally {
            delete(work.toFile());
        }
    }

    private static Path folder(Path work, String name, Path zerlin, Path cryptoki) throws Exception {
        Path folder = Files.createDirectory(work.resolve(name));
        Files.copy(zerlin, folder.resolve("libzerlin.so"));
        if (cryptoki != null) {
            Files.copy(cryptoki, folder.resolve("libcryptoki.so"));
        }
        return folder;
    }

    private static String use(Path folder) throws Exception {
        List<URL> places = new ArrayList<>();
        for (String place : System.getProperty("java.class.path").split(File.pathSeparator)) {
            places.add(Path.of(place).toUri().toURL());
        }
        URLClassLoader loader = new URLClassLoader(places.toArray(new URL[0]), ClassLoader.getPlatformClassLoader());
        LOADED.add(loader);
        System.setProperty("halvorn.zerlin.library", folder.resolve("libzerlin.so").toString());
        try {
            return (String) ((Supplier<?>) loader.loadClass("LibraryGuest").getDeclaredConstructor().newInstance()).get();
        } catch (UnsatisfiedLinkError e) {
            return e.getMessage();
        }
    }

    private static void expect(String text, String... parts) {
        for (String part : parts) {
            if (!text.contains(part)) {
                throw new IllegalStateException("\"" + part + "\" is not in: " + text);
            }
        }
    }

    private static void delete(File file) {
        for (File inner : file.isDirectory() ? file.listFiles() : new File[0]) {
            delete(inner);
        }
        file.delete();
    }
}
