// Loads the classes and the library, uses them with locking callbacks, and lets the JVM collect them. Each time the
// library must be unmapped. Meanwhile a second class loader tries the same file, which must change nothing for the
// first one.

import java.lang.ref.WeakReference;
import java.lang.reflect.InvocationTargetException;
import java.net.*;
import java.nio.charset.StandardCharsets;
import java.nio.file.*;

final class Reload {
    static void work(int times) throws Exception {
        Path file = Path.of(System.getProperty("java.library.path").split(":")[0], "libzerlin.so");
        Path link = file.resolveSibling("again.libzerlin.so");
        for (int i = 0; i < times; i++) {
            WeakReference<ClassLoader> loader = new WeakReference<>(load());
            // To the JVM a hard link is another library, of which the system maps nothing new.
            Files.deleteIfExists(link);
            Files.createLink(link, file);
            System.setProperty("halvorn.zerlin.library", link.toString());
            try {
                load();
                Callers.expect(false, "loaded twice");
            } catch (InvocationTargetException e) {
                Callers.expect(e.getCause().getMessage().contains("serves one class loader at a time"), e.getCause());
            }
            System.clearProperty("halvorn.zerlin.library");
            System.gc();
            // The Cryptoki library may call back until C_Finalize.
            Callers.expect(loader.get() != null && isMapped(), "the callbacks are gone while they are registered");
            loader.get().loadClass("Callers").getMethod("end").invoke(null);
            long end = System.nanoTime() + 20_000_000_000L;
            while (loader.get() != null || isMapped()) {
                Callers.expect(System.nanoTime() < end, loader.get() != null ? "classes stay" : "the library stays");
                System.gc();
                Thread.sleep(1);
            }
        }
    }

    private static ClassLoader load() throws Exception {
        String[] places = System.getProperty("java.class.path").split(":");
        URL[] urls = {new URL("file:" + places[0]), new URL("file:" + places[1])};
        ClassLoader loader = new URLClassLoader(urls, ClassLoader.getPlatformClassLoader());
        loader.loadClass("Callers").getMethod("begin").invoke(null);
        return loader;
    }

    private static boolean isMapped() throws Exception {
        String maps = Files.readString(Path.of("/proc/self/maps"), StandardCharsets.ISO_8859_1);
        return maps.contains("/libzerlin.so") || maps.contains("/libcryptoki.so");
    }
}
