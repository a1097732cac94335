// Holds the Java constant classes and include/zerlin/cryptoki.h together: same names, same values, both ways.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.assertEquals;

import halvorn.zerlin.constants.CKA;
import halvorn.zerlin.constants.CKC;
import halvorn.zerlin.constants.CKD;
import halvorn.zerlin.constants.CKF;
import halvorn.zerlin.constants.CKG;
import halvorn.zerlin.constants.CKH;
import halvorn.zerlin.constants.CKK;
import halvorn.zerlin.constants.CKM;
import halvorn.zerlin.constants.CKO;
import halvorn.zerlin.constants.CKR;
import halvorn.zerlin.constants.CKS;
import halvorn.zerlin.constants.CKU;
import halvorn.zerlin.constants.CKZ;
import java.io.IOException;
import java.lang.reflect.Field;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import java.util.TreeSet;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.junit.jupiter.api.Test;

class ConstantsTest {
    private static final List<Class<?>> CLASSES = Arrays.asList(CKA.class, CKC.class, CKD.class, CKF.class,
            CKG.class, CKH.class, CKK.class, CKM.class, CKO.class, CKR.class, CKS.class, CKU.class, CKZ.class);

    // CKN_ has no class: this library takes no notification callbacks.
    private static final Pattern DEFINE =
            Pattern.compile("^#define ((?!CKN_)CK[A-Z]_\\w+)\\s+(0x[0-9A-F]+)UL\\b", Pattern.MULTILINE);

    @Test
    void headerAndClassesAgree() throws IllegalAccessException, IOException {
        Map<String, Long> header = headerConstants();
        Map<String, Long> java = javaConstants();
        TreeSet<String> names = new TreeSet<>(header.keySet());
        names.addAll(java.keySet());

        List<String> differences = new ArrayList<>();
        for (String name : names) {
            if (!java.containsKey(name)) {
                differences.add(name + " is missing in Java");
            } else if (!header.containsKey(name)) {
                differences.add(name + " is missing in the header");
            } else if (!header.get(name).equals(java.get(name))) {
                differences.add(String.format("%s is 0x%X in the header and 0x%X in Java", name, header.get(name),
                        java.get(name)));
            }
        }
        assertEquals("", String.join("\n", differences), "constants that differ");
    }

    private static Map<String, Long> headerConstants() throws IOException {
        String path = System.getProperty("zerlin.header");
        if (path == null) {
            throw new IllegalStateException("set -Dzerlin.header to the path of cryptoki.h");
        }
        Map<String, Long> constants = new TreeMap<>();
        Matcher define = DEFINE.matcher(new String(Files.readAllBytes(Paths.get(path)), StandardCharsets.UTF_8));
        while (define.find()) {
            constants.put(define.group(1), Long.decode(define.group(2)));
        }
        return constants;
    }

    private static Map<String, Long> javaConstants() throws IllegalAccessException {
        Map<String, Long> constants = new TreeMap<>();
        for (Class<?> holder : CLASSES) {
            for (Field field : holder.getFields()) {
                constants.put(holder.getSimpleName() + "_" + field.getName(), field.getLong(null));
            }
        }
        return constants;
    }
}
