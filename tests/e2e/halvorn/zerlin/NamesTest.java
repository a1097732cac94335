// Names and values of constants as the native library tells them, held against the Java constants.
package halvorn.zerlin;

import static halvorn.zerlin.SoftToken.*;
import static java.nio.charset.StandardCharsets.US_ASCII;
import static org.junit.jupiter.api.Assertions.*;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.lang.reflect.Field;
import java.util.Arrays;
import java.util.List;
import java.util.function.Function;
import java.util.function.LongFunction;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.MethodSource;

class NamesTest {
    private static final long UNKNOWN = 4294967295L;

    interface ToName<T> {
        CK_RV call(T value, byte[] name, LongRef length);
    }

    /** The class of the constants, the prefix that their names may have, and the two natives. */
    record Kind<T extends TypedValue>(Class<?> constants, String prefix, LongFunction<T> make,
            ToName<T> toName, Function<byte[], TypedValue> toValue) {
        CK_RV name(Long value, byte[] name, LongRef length) {
            return toName.call(value == null ? null : make.apply(value), name, length);
        }

        String name(Long value) {
            return new String(bytes((array, length) -> name(value, array, length)), US_ASCII);
        }

        long value(String name) {
            TypedValue value = toValue.apply(ascii(name));
            assertEquals(make.apply(0).getClass(), value.getClass());
            return value.m_value;
        }

        @Override
        public String toString() {
            return constants.getSimpleName();
        }
    }

    static List<Kind<?>> kinds() {
        return List.of(
            new Kind<>(CKA.class, "CKA_", CK_ATTRIBUTE_TYPE::new, CTUtil::CTU_GetAttributeTypeString,
                CTUtil::CTU_GetAttributeTypeValue),
            new Kind<>(CKM.class, "CKM_", CK_MECHANISM_TYPE::new, CTUtil::CTU_GetMechanismTypeString,
                CTUtil::CTU_GetMechanismTypeValue),
            new Kind<>(CKK.class, "CKK_", CK_KEY_TYPE::new, CTUtil::CTU_GetKeyTypeString,
                CTUtil::CTU_GetKeyTypeValue),
            new Kind<>(CKO.class, "CKO_", CK_OBJECT_CLASS::new, CTUtil::CTU_GetObjectClassString,
                CTUtil::CTU_GetObjectClassValue),
            new Kind<>(CKR.class, "CKR_", CK_RV::new, CTUtil::CTU_GetErrorString, CTUtil::CTU_GetErrorValue),
            // The prefix of mechanisms for states: wanted.
            new Kind<>(CKS.class, "CKM_", CK_STATE::new, CTUtil::CTU_GetSessionStateString,
                CTUtil::CTU_GetSessionStateValue));
    }

    // Return values and states have texts of their own, the others the name of the Java constant.
    @ParameterizedTest
    @MethodSource("kinds")
    void aKnownNameLeadsBackToItsValue(Kind<?> kind) throws Exception {
        boolean javaNames = kind.constants != CKR.class && kind.constants != CKS.class;
        for (Field field : kind.constants.getFields()) {
            long value = field.getLong(null);
            String name = kind.name(value);
            if (name.endsWith(")")) {
                String kindOfMiss = value < 0x80000000L ? "UNKNOWN (0x" : "Vendor defined (0x";
                assertEquals(kindOfMiss + Long.toHexString(value) + ")", name, field.getName());
                continue;
            }
            assertEquals(value, kind.value(name), name);
            assertEquals(value, kind.value(kind.prefix + name), name);
            if (javaNames) {
                assertEquals(value, kind.constants.getField(name).getLong(null), name);
            }
        }
    }

    @ParameterizedTest
    @CsvSource({
        "CKA, 0x3, LABEL", "CKA, 0x40000600, UNKNOWN (0x40000600)", "CKA, 0x80000128, EXPORT",
        "CKM, 0x1082, AES_CBC", "CKM, 0x80000a00, ECIES", "CKM, 0x9999, UNKNOWN (0x9999)",
        "CKM, 0x80007777, Vendor defined (0x80007777)", "CKK, 0x1f, AES",
        "CKK, 0xffffffff, Vendor defined (0xffffffff)",
        "CKO, 0x4, SECRET_KEY", "CKR, 0xa4, PIN locked", "CKR, 0x0, success", "CKR, 0x150, buffer too small",
        "CKS, 0x1, Read Only User Functions", "CKS, 0x5, UNKNOWN (0x5)"})
    void aValueHasItsName(String constants, String value, String name) {
        Kind<?> kind = kind(constants);
        assertEquals(name, kind.name(Long.decode(value)));
        assertEquals(name.endsWith(")") ? UNKNOWN : Long.decode(value), kind.value(name));
    }

    private static Kind<?> kind(String constants) {
        return kinds().stream().filter(kind -> kind.toString().equals(constants)).findFirst().get();
    }

    @ParameterizedTest
    @MethodSource("kinds")
    void aNameIsWrittenAsFarAsThereIsRoom(Kind<?> kind) {
        LongRef length = new LongRef();
        byte[] array = ascii("untouched");
        assertAnswers(CKR.OK, kind.name(0x77777777L, null, length));
        assertEquals("UNKNOWN (0x77777777)".length(), length.value);
        length.value = 19;
        assertAnswers(CKR.DATA_LEN_RANGE, kind.name(0x77777777L, array, length));
        assertEquals(20, length.value);
        assertArrayEquals(ascii("untouched"), array);
        assertAnswers(CKR.OK, kind.name(0x77777777L, array, length));
        assertArrayEquals(ascii("UNKNOWN ("), array);
        byte[] longer = new byte[30];
        length.value = 30;
        assertAnswers(CKR.OK, kind.name(null, longer, length));
        assertEquals(4, length.value);
        assertArrayEquals(Arrays.copyOf(ascii("null"), 30), longer);
        assertAnswers(CKR.ARGUMENTS_BAD, kind.name(0L, longer, null));
    }

    @ParameterizedTest
    @MethodSource("kinds")
    void aNullNameIsABadArgumentWhateverTheKind(Kind<?> kind) {
        TypedValue answer = kind.toValue.apply(null);
        assertEquals(new CK_RV(CKR.ARGUMENTS_BAD), answer);
    }

    @Test
    void aCallerThatExpectsItsOwnKindForANullNameFails() {
        assertThrows(ClassCastException.class, () -> {
            CK_KEY_TYPE type = CTUtil.CTU_GetKeyTypeValue(null);
            throw new AssertionError("a " + type.getClass());
        });
    }

    // Case counts, a NUL ends a name, and an endless one is unknown like any other.
    static Object[][] namesLookedUp() {
        return new Object[][] {
            {"AES", CKK.AES}, {"CKK_AES", CKK.AES}, {"aes", UNKNOWN}, {"CKM_AES", UNKNOWN},
            {"CKK_CKK_AES", UNKNOWN}, {"", UNKNOWN}, {"AES ", UNKNOWN}, {"AES\0 and more", CKK.AES},
            {"\0AES", UNKNOWN}, {"A".repeat(100_000), UNKNOWN}};
    }

    @ParameterizedTest
    @MethodSource("namesLookedUp")
    void aNameIsLookedUpAsItStands(String name, long value) {
        assertEquals(value, kind("CKK").value(name));
    }

    @Test
    void theOneConstantOfTheLibraryIsKnown() {
        assertEquals(UNKNOWN, CK.UNAVAILABLE_INFORMATION);
        assertEquals(UNKNOWN, CK.GetConstantValue("UNAVAILABLE_INFORMATION"));
        for (String name : new String[] {"", "CK_UNAVAILABLE_INFORMATION", "unavailable_information"}) {
            String message = assertThrows(UnsupportedOperationException.class,
                    () -> CK.GetConstantValue(name)).getMessage();
            assertEquals("Constant " + name + " not recognised", message);
        }
    }

    // The sizes of the 32-bit structures.
    static Object[][] parameterSizes() {
        return new Object[][] {
            {new CK_RSA_PKCS_OAEP_PARAMS(), 20}, {new CK_RSA_PKCS_PSS_PARAMS(), 12},
            {new CK_RC2_CBC_PARAMS(), 12}, {new CK_RC2_MAC_GENERAL_PARAMS(), 8}, {new CK_PBE_PARAMS(), 24},
            {new CK_PKCS12_PBE_IMPORT_PARAMS(), 32}, {new CK_PKCS12_PBE_EXPORT_PARAMS(), 32},
            {new CK_KEY_WRAP_SET_OAEP_PARAMS(), 12},
            {new CK_SSL3_MASTER_KEY_DERIVE_PARAMS(), 20}, {new CK_SSL3_KEY_MAT_PARAMS(), 36},
            {new CK_KEY_DERIVATION_STRING_DATA(), 8}, {new CK_MECH_TYPE_AND_OBJECT(), 8},
            {new CK_DES_CBC_PARAMS(), 16}, {new CK_DES2_CBC_PARAMS(), 24}, {new CK_DES3_CBC_PARAMS(), 32},
            {new CK_PP_LOAD_SECRET_PARAMS(), 8}, {new CK_TIMESTAMP_PARAMS(), 8},
            {new CK_REPLICATE_TOKEN_PARAMS(), 16}, {new CK_SECRET_SHARE_PARAMS(), 8},
            {new CK_ECIES_PARAMS(), 44}, {new CK_ECDH1_DERIVE_PARAMS(), 20}, {new CK_VERSION(), 2}};
    }

    @ParameterizedTest(name = "{0}")
    @MethodSource("parameterSizes")
    void aMechanismKnowsTheSizeOfItsParameter(Object parameter, long size) {
        assertEquals(size, new CK_MECHANISM(CKM.AES_CBC, parameter).parameterLen);
    }

    @Test
    void aParameterWithoutANativeFormIsRefused() {
        String message = assertThrows(UnsupportedOperationException.class,
                () -> new CK_MECHANISM(CKM.AES_CBC, new Thread())).getMessage();
        assertEquals("No Conversion from java.lang.Thread to a CK type", message);
    }
}
