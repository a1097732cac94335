// Compares the Java constant classes, include/zerlin/cryptoki.h and the names in the native library.
package halvorn.zerlin;

import static halvorn.zerlin.TestToken.bytes;
import static java.nio.charset.StandardCharsets.US_ASCII;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static token.FreshToken.ascii;

import halvorn.zerlin.constants.*;

import java.io.IOException;
import java.lang.reflect.Field;
import java.nio.file.*;
import java.util.*;
import java.util.regex.*;

import org.junit.jupiter.api.Test;

class ConstantsTest {
    private static final List<Class<?>> CLASSES = List.of(CKA.class, CKC.class, CKD.class, CKF.class,
            CKG.class, CKH.class, CKK.class, CKM.class, CKO.class, CKR.class, CKS.class, CKU.class,
            CKZ.class);

    // CKN_ has no class, because this library passes on no notification callbacks.
    private static final Pattern DEFINE =
            Pattern.compile("^#define ((?!CKN_)CK[A-Z]_\\w+)\\s+(0x[0-9A-F]+)UL\\b", Pattern.MULTILINE);

    @Test
    void headerAndClassesAgree() throws IllegalAccessException, IOException {
        Map<String, Long> header = new TreeMap<>();
        Matcher define = DEFINE.matcher(Files.readString(Paths.get(System.getProperty("zerlin.header"))));
        while (define.find()) {
            header.put(define.group(1), Long.decode(define.group(2)));
        }
        Map<String, Long> java = new TreeMap<>();
        for (Class<?> holder : CLASSES) {
            for (Field field : holder.getFields()) {
                java.put(holder.getSimpleName() + "_" + field.getName(), field.getLong(null));
            }
        }
        Map<String, Long> onlyJava = new TreeMap<>(java);
        onlyJava.entrySet().removeAll(header.entrySet());
        header.entrySet().removeAll(java.entrySet());
        assertEquals("only header {}, only Java {}", "only header " + header + ", only Java " + onlyJava);
    }

    @Test
    void aMechanismsNameLeadsBackToItsValue() throws Exception {
        for (Field field : CKM.class.getFields()) {
            CK_MECHANISM_TYPE type = new CK_MECHANISM_TYPE(field.getLong(null));
            String name = new String(bytes((array, length) ->
                    CTUtil.CTU_GetMechanismTypeString(type, array, length)), US_ASCII);
            if (name.endsWith(")")) {
                String miss = type.m_value < 0x80000000L ? "UNKNOWN (0x" : "Vendor defined (0x";
                assertEquals(miss + Long.toHexString(type.m_value) + ")", name, field.getName());
            } else {
                assertEquals(type.m_value, CKM.class.getField(name).getLong(null), name);
                assertEquals(type, CTUtil.CTU_GetMechanismTypeValue(ascii(name)));
                assertEquals(type, CTUtil.CTU_GetMechanismTypeValue(ascii("CKM_" + name)));
            }
        }
    }
}
