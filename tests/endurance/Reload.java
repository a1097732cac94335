// Loads the classes and the library, uses them with locking callbacks, and lets the JVM collect them, many times.
// Each time the library must be unmapped and leave nothing behind. Meanwhile a second class loader tries the same
// file, which must change nothing for the first one.

import java.lang.ref.WeakReference;
import java.net.URL;
import java.net.URLClassLoader;
import java.nio.charset.StandardCharsets;
import java.nio.file.*;
import java.util.ArrayList;
import java.util.List;

final class Reload {
    private Reload() {
    }

    public static void main(String[] arguments) throws Exception {
        int times = Integer.parseInt(arguments[1]);
        for (int i = 0; i < 5; i++) {
            loadAndDrop();
        }
        Vitals before = new Vitals();
        for (int i = 0; i < times; i++) {
            loadAndDrop();
        }
        new Vitals().expectNoGrowthSince(before, 64, 4);
    }

    private static void loadAndDrop() throws Exception {
        WeakReference<ClassLoader> loader = new WeakReference<>(loadAndUse());
        loadAgain();
        System.gc();
        // The Cryptoki library may call back until C_Finalize.
        expect(loader.get() != null && isMapped(), "the callbacks are gone while they are registered");
        guest(loader.get()).close();
        long end = System.nanoTime() + 20_000_000_000L;
        while (loader.get() != null || isMapped()) {
            expect(System.nanoTime() < end, loader.get() != null ? "the classes stay" : "the library stays mapped");
            System.gc();
            Thread.sleep(1);
        }
    }

    // The JVM refuses the same name itself. A hard link is another library to it, of which the system maps nothing new.
    private static void loadAgain() throws Exception {
        String[] places = System.getProperty("java.library.path").split(":");
        Path file = Path.of(places[0], "libzerlin.so");
        Path link = Path.of(places[1], "again.libzerlin.so");
        Files.deleteIfExists(link);
        Files.createLink(link, file);
        try {
            for (Path name : List.of(file, link)) {
                System.setProperty("halvorn.zerlin.library", name.toString());
                String error = "none";
                try {
                    loadAndUse();
                } catch (UnsatisfiedLinkError e) {
                    error = e.getMessage();
                }
                expect(error.contains("libzerlin.so") && error.contains("serves one class loader at a time"),
                        "the error of the second load of " + name + " is " + error);
            }
        } finally {
            System.clearProperty("halvorn.zerlin.library");
            Files.delete(link);
        }
    }

    private static ClassLoader loadAndUse() throws Exception {
        List<URL> places = new ArrayList<>();
        for (String place : System.getProperty("java.class.path").split(":")) {
            places.add(Path.of(place).toUri().toURL());
        }
        URLClassLoader loader = new URLClassLoader(places.toArray(new URL[0]),
                ClassLoader.getPlatformClassLoader());
        ((Runnable) guest(loader)).run();
        loader.close();
        return loader;
    }

    private static AutoCloseable guest(ClassLoader loader) throws Exception {
        return (AutoCloseable) loader.loadClass("ReloadGuest").getDeclaredConstructor().newInstance();
    }

    private static boolean isMapped() throws Exception {
        String maps = new String(Files.readAllBytes(Path.of("/proc/self/maps")), StandardCharsets.ISO_8859_1);
        return maps.contains("/libzerlin.so") || maps.contains("/libcryptoki.so");
    }

    private static void expect(boolean condition, String what) {
        if (!condition) {
            throw new IllegalStateException(what);
        }
    }
}
