// Copies libzerlin.so into folders with different libcryptoki.so beside it and loads each in a class loader of its own,
// all in one JVM: which is used, and what the error says of those that cannot be.

import halvorn.zerlin.*;

import java.lang.reflect.InvocationTargetException;
import java.net.*;
import java.nio.file.*;
import java.util.*;

public final class Library {
    private static final String CHOICE = "halvorn.zerlin.cryptoki";
    private static final List<Object> LOADED = new ArrayList<>(); // so that no class loader is collected

    /** What each class loader runs: makes one Cryptoki call and asks for one name. */
    public static String call() {
        return Cryptoki.C_GetAttributeValue(new CK_SESSION_HANDLE(), new CK_OBJECT_HANDLE(), new CK_ATTRIBUTE[0], 0)
                + ", " + CTUtil.CTU_GetErrorValue("PIN incorrect".getBytes());
    }

    /** Arguments: a folder to work in, libzerlin.so, and the libraries to stand beside it. */
    public static void main(String[] arguments) throws Exception {
        Path work = Path.of(arguments[0]);
        expect("libcryptoki.so: cannot open shared object file", work, "none", arguments[1], null);
        expect("libcryptoki.so: undefined symbol: C_Initialize", work, "module", arguments[1], arguments[2]);
        expect("0x80000005, CKR_PIN_INCORRECT", work, "namesake", arguments[1], arguments[3]);
        expect("libcryptoki.so is already loaded in this process, from " + work + "/namesake/libcryptoki.so, and would be"
                + " used instead of " + work + "/other/libcryptoki.so", work, "other", arguments[1], arguments[4]);
        expect("0x80000005, CKR_PIN_INCORRECT", work, "same", arguments[1], work + "/namesake/libcryptoki.so");
        String taken = "libcryptoki.so is already loaded in this process, from " + work + "/namesake/libcryptoki.so,";
        System.setProperty(CHOICE, work + "/namesake/libcryptoki.so");
        expect("0x80000005, CKR_PIN_INCORRECT", work, "chosen", arguments[1], arguments[2]);
        System.setProperty(CHOICE, arguments[4]);
        expect(taken + " and would be used instead of " + arguments[4], work, "another", arguments[1], null);
        System.setProperty(CHOICE, "embedded");
        expect(taken + " and would be used instead of " + work + "/embedded/zerlin/", work, "embedded", arguments[1], null);
        System.setProperty(CHOICE, "libcryptoki.so");
        expect(CHOICE + " must be \"embedded\" or an absolute path", work, "relative", arguments[1], null);
    }

    private static void expect(String text, Path work, String name, String zerlin, String cryptoki) throws Exception {
        Path folder = Files.createDirectories(work.resolve(name));
        Files.copy(Path.of(zerlin), folder.resolve("libzerlin.so"), StandardCopyOption.REPLACE_EXISTING);
        Files.deleteIfExists(folder.resolve("libcryptoki.so"));
        if (cryptoki != null) {
            Files.createLink(folder.resolve("libcryptoki.so"), Path.of(cryptoki));
        }
        System.setProperty("halvorn.zerlin.library", folder.resolve("libzerlin.so").toString());
        URLClassLoader loader = new URLClassLoader(new URL[] {
            Cryptoki.class.getProtectionDomain().getCodeSource().getLocation(),
            Library.class.getProtectionDomain().getCodeSource().getLocation()}, null);
        LOADED.add(loader);
        String result;
        try {
            result = (String) loader.loadClass("Library").getMethod("call").invoke(null);
        } catch (InvocationTargetException e) {
            result = e.getCause().getMessage();
        }
        if (!result.contains(text)) {
            throw new IllegalStateException("\"" + text + "\" is not in: " + result);
        }
    }
}
