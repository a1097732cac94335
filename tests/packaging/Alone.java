import halvorn.zerlin.NativeLibrary;
import java.nio.file.*;

// Prints the Cryptoki libraries that are mapped after the load.
public class Alone {
    public static void main(String[] arguments) throws Exception {
        Thread.currentThread().interrupt();
        NativeLibrary.load();
        Files.readAllLines(Paths.get("/proc/self/maps")).stream().filter(line -> line.contains("/libcryptoki.so"))
                .map(line -> line.replaceAll(".* (?=/)", "")).distinct().forEach(System.out::println);
    }
}
