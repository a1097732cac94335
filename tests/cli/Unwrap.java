// Unwraps AES keys with the JDK and prints them: java Unwrap.java ALGORITHM KEY WRAPPED, repeated; KEY and WRAPPED are files.

import java.nio.file.*;
import java.security.*;
import java.security.spec.PKCS8EncodedKeySpec;
import java.util.HexFormat;
import javax.crypto.Cipher;
import javax.crypto.spec.SecretKeySpec;

public final class Unwrap {
    public static void main(String[] arguments) throws Exception {
        for (int i = 0; i < arguments.length; i += 3) {
            byte[] bytes = Files.readAllBytes(Path.of(arguments[i + 1]));
            Key key = !arguments[i].startsWith("RSA") ? new SecretKeySpec(bytes, "AES")
                : KeyFactory.getInstance("RSA").generatePrivate(new PKCS8EncodedKeySpec(bytes));
            Cipher cipher = Cipher.getInstance(arguments[i]);
            cipher.init(Cipher.UNWRAP_MODE, key);
            Key unwrapped = cipher.unwrap(Files.readAllBytes(Path.of(arguments[i + 2])), "AES", Cipher.SECRET_KEY);
            System.out.println(HexFormat.of().formatHex(unwrapped.getEncoded()));
        }
    }
}
