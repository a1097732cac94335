// Copies libzerlin.so into folders with different libcryptoki.so beside it and loads each in a class loader of its own,
// all in one JVM: which is used, and what the error says of those that cannot be.

import halvorn.zerlin.*;

import java.net.*;
import java.nio.file.*;
import java.util.*;

public final class Library {
    /** What each class loader runs: one Cryptoki call and one that asks for a name. Returns the results or the error. */
    public static String call() {
        try {
            return Cryptoki.C_GetAttributeValue(new CK_SESSION_HANDLE(), new CK_OBJECT_HANDLE(), new CK_ATTRIBUTE[0], 0)
                    + ", " + CTUtil.CTU_GetErrorValue("PIN incorrect".getBytes());
        } catch (UnsatisfiedLinkError e) {
            return e.getMessage();
        }
    }

    /** Arguments: a folder to work in, libzerlin.so, and the libraries to stand beside it. */
    public static void main(String[] arguments) throws Exception {
        Path work = Path.of(arguments[0]);
        String module = arguments[2], namesake = arguments[3], softtoken = arguments[4];
        URL jar = Cryptoki.class.getProtectionDomain().getCodeSource().getLocation();
        String first = work + "/namesake/libcryptoki.so";
        String taken = "libcryptoki.so is already loaded in this process, from " + first + ", and ";
        String[][] rows = { // a folder, the library beside libzerlin.so, the chosen library, and the result
            {"none", null, "", "libcryptoki.so: cannot open shared object file"},
            {"broken/zerlin", module, "", "libcryptoki.so: undefined symbol: C_Initialize"},
            {"broken", jar.getPath(), "", "libcryptoki.so: invalid ELF header"}, // the embedded one, above, does not replace it
            {"older", null, "", ", found an older one"},
            {"namesake", namesake, "", "0x80000005, CKR_PIN_INCORRECT"},
            {"other", softtoken, "", taken + "would be used instead of " + work + "/other/libcryptoki.so"},
            {"width", work + "/width.so", "", "0x80000005, CKR_PIN_INCORRECT"},
            {"same", first, "", "0x80000005, CKR_PIN_INCORRECT"},
            {"chosen", module, first, "0x80000005, CKR_PIN_INCORRECT"},
            {"another", null, softtoken, taken + "not from " + softtoken},
            {"embedded", null, "embedded", taken + "not from " + work + "/embedded/zerlin/"},
            {"relative", null, "libcryptoki.so", "halvorn.zerlin.cryptoki must be \"embedded\" or an absolute path"}};
        byte[] width = Files.readAllBytes(Path.of(namesake));
        width[4] ^= 3; // ELFCLASS32 or ELFCLASS64: the loader passes over the other
        Files.write(Files.createDirectories(work).resolve("width.so"), width);
        URL[] urls = {jar, Library.class.getProtectionDomain().getCodeSource().getLocation()};
        List<Object> loaders = new ArrayList<>(); // so that none is collected
        for (String[] row : rows) {
            Path folder = Files.createDirectories(work.resolve(row[0]));
            Path zerlin = folder.resolve("libzerlin.so");
            Files.copy(Path.of(row[0].equals("older") ? module : arguments[1]), zerlin, StandardCopyOption.REPLACE_EXISTING);
            Files.deleteIfExists(folder.resolve("libcryptoki.so"));
            if (row[1] != null) {
                Files.createLink(folder.resolve("libcryptoki.so"), Path.of(row[1]));
            }
            System.setProperty("halvorn.zerlin.library", zerlin.toString());
            System.setProperty("halvorn.zerlin.cryptoki", row[2]);
            URLClassLoader loader = new URLClassLoader(urls, null);
            loaders.add(loader);
            String result = (String) loader.loadClass("Library").getMethod("call").invoke(null);
            if (!result.contains(row[3])) {
                throw new IllegalStateException(row[0] + ": \"" + row[3] + "\" is not in: " + result);
            }
        }
    }
}
