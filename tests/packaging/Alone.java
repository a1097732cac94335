import halvorn.zerlin.NativeLibrary;
import java.io.*;
import java.nio.file.*;
import java.nio.file.attribute.PosixFilePermissions;
import java.util.Properties;

// Prints who may use the folder of the unpacked library while it is loaded, and the Cryptoki libraries that are mapped then.
public class Alone {
    public static void main(String[] arguments) throws Exception {
        Thread.currentThread().interrupt();
        System.setProperties(new Properties(System.getProperties()) {
            @Override
            public String getProperty(String key, String value) {
                if (key.equals(NativeLibrary.CRYPTOKI_PROPERTY)) printFolders(); // the load asks for it
                return super.getProperty(key, value);
            }
        });
        NativeLibrary.load();
        Files.readAllLines(Paths.get("/proc/self/maps")).stream().filter(line -> line.contains("/libcryptoki.so"))
                .map(line -> line.replaceAll(".* (?=/)", "")).distinct().forEach(System.out::println);
    }

    static void printFolders() {
        try (DirectoryStream<Path> folders = Files.newDirectoryStream(Paths.get("work"))) {
            for (Path folder : folders) {
                System.out.println(PosixFilePermissions.toString(Files.getPosixFilePermissions(folder)));
            }
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
    }
}
