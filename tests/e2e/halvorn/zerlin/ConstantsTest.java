// Compares the Java constant classes, include/zerlin/cryptoki.h and the names in the native library.
package halvorn.zerlin;

import static java.nio.charset.StandardCharsets.US_ASCII;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static token.FreshToken.*;

import halvorn.zerlin.constants.*;

import java.io.IOException;
import java.lang.reflect.Field;
import java.nio.file.*;
import java.util.*;
import java.util.function.Function;
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

    /** A native that names a value. */
    private interface Name<T> {
        CK_RV call(T value, byte[] name, LongRef length);
    }

    private <T extends TypedValue> void assertNamesLeadBack(Class<?> constants, Function<Long, T> type, Name<T> naming,
            Function<byte[], TypedValue> valueOf) throws Exception {
        for (Field field : constants.getFields()) {
            T value = type.apply(field.getLong(null));
            String name = new String(bytes((array, length) -> naming.call(value, array, length)), US_ASCII);
            if (name.endsWith(")")) {
                String miss = value.m_value < 0x80000000L ? "UNKNOWN (0x" : "Vendor defined (0x";
                assertEquals(miss + Long.toHexString(value.m_value) + ")", name, field.getName());
            } else {
                assertEquals(value.m_value, constants.getField(name).getLong(null), name);
                assertEquals(value, valueOf.apply(ascii(name)), name);
                assertEquals(value, valueOf.apply(ascii(constants.getSimpleName() + "_" + name)), name);
            }
        }
    }

    @Test
    void aConstantsNameLeadsBackToItsValue() throws Exception {
        assertNamesLeadBack(CKM.class, CK_MECHANISM_TYPE::new, CTUtil::CTU_GetMechanismTypeString,
                CTUtil::CTU_GetMechanismTypeValue);
        assertNamesLeadBack(CKA.class, CK_ATTRIBUTE_TYPE::new, CTUtil::CTU_GetAttributeTypeString,
                CTUtil::CTU_GetAttributeTypeValue);
        assertNamesLeadBack(CKK.class, CK_KEY_TYPE::new, CTUtil::CTU_GetKeyTypeString, CTUtil::CTU_GetKeyTypeValue);
        assertNamesLeadBack(CKO.class, CK_OBJECT_CLASS::new, CTUtil::CTU_GetObjectClassString,
                CTUtil::CTU_GetObjectClassValue);
    }
}
