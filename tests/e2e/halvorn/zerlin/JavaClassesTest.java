// What users and the native side rely on in the Java classes. Needs no native library.
package halvorn.zerlin;

import static org.junit.jupiter.api.Assertions.*;

import halvorn.zerlin.constants.*;

import java.lang.reflect.*;
import java.util.Arrays;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.*;

class JavaClassesTest {
    // Z, B, I, J as in JNI, O an Object; the rest are classes: c/ constants, p/ params; [ an array.
    @ParameterizedTest
    @ValueSource(strings = {
        "LongRef: J value",
        "CK_SESSION_HANDLE CK_OBJECT_HANDLE c/CK_ATTRIBUTE_TYPE c/CK_CERTIFICATE_TYPE c/CK_HW_FEATURE_TYPE"
            + " c/CK_KEY_TYPE c/CK_MECHANISM_TYPE c/CK_OBJECT_CLASS c/CK_RSA_PKCS_OAEP_SOURCE_TYPE c/CK_RV"
            + " c/CK_STATE c/CK_USER_TYPE: J m_value",
        "CK_BBOOL: Z m_value",
        "CK_DATE: [B year month day",
        "CK_VERSION: B major minor",
        "CK_ATTRIBUTE: c/CK_ATTRIBUTE_TYPE type, O pValue, J valueLen",
        "CK_MECHANISM: c/CK_MECHANISM_TYPE mechanism, O pParameter, J parameterLen",
        "CK_INFO: CK_VERSION cryptokiVersion libraryVersion, [B manufacturerID libraryDescription, J flags",
        "CK_SLOT_INFO: [B slotDescription manufacturerID, J flags, CK_VERSION hardwareVersion"
            + " firmwareVersion",
        "CK_TOKEN_INFO: [B label manufacturerID model serialNumber utcTime, J flags maxSessionCount"
            + " sessionCount maxRwSessionCount rwSessionCount maxPinLen minPinLen totalPublicMemory"
            + " freePublicMemory totalPrivateMemory freePrivateMemory, CK_VERSION hardwareVersion"
            + " firmwareVersion",
        "CK_SESSION_INFO: J slotID flags deviceError, c/CK_STATE state",
        "CK_MECHANISM_INFO: J minKeySize maxKeySize flags",
        "p/CK_RSA_PKCS_OAEP_PARAMS: c/CK_MECHANISM_TYPE hashAlg, J mgf sourceDataLen,"
            + " c/CK_RSA_PKCS_OAEP_SOURCE_TYPE source, [B pSourceData",
        "p/CK_RSA_PKCS_PSS_PARAMS: c/CK_MECHANISM_TYPE hashAlg, J mgf sLen",
        "p/CK_RC2_CBC_PARAMS: J effectiveBits, [B iv",
        "p/CK_RC2_MAC_GENERAL_PARAMS: J effectiveBits macLength",
        "p/CK_PBE_PARAMS: [B pInitVector pPassword pSalt, J passwordLen saltLen iteration",
        "p/CK_PKCS12_PBE_IMPORT_PARAMS: [B passwordAuthSafe passwordHMAC, J passwordAuthSafeLen"
            + " passwordHMACLen certAttrCount, [CK_ATTRIBUTE certAttr, [CK_OBJECT_HANDLE hCert, LongRef"
            + " hCertCount",
        "p/CK_PKCS12_PBE_EXPORT_PARAMS: CK_OBJECT_HANDLE keyCert, [B passwordAuthSafe passwordHMAC, J"
            + " passwordAuthSafeLen passwordHMACLen, c/CK_MECHANISM_TYPE safeBagKgMech safeContentKgMech"
            + " hmacKgMech",
        "p/CK_KEY_WRAP_SET_OAEP_PARAMS: B bBC, [B pX, J XLen",
        "p/CK_SSL3_RANDOM_DATA: [B pClientRandom pServerRandom, J clientRandomLen serverRandomLen",
        "p/CK_SSL3_MASTER_KEY_DERIVE_PARAMS: p/CK_SSL3_RANDOM_DATA RandomInfo, CK_VERSION pVersion",
        "p/CK_SSL3_KEY_MAT_OUT: CK_OBJECT_HANDLE hClientMacSecret hServerMacSecret hClientKey hServerKey, [B"
            + " pIVClient pIVServer",
        "p/CK_SSL3_KEY_MAT_PARAMS: J macSizeInBits keySizeInBits IVSizeInBits, CK_BBOOL bIsExport,"
            + " p/CK_SSL3_RANDOM_DATA RandomInfo, p/CK_SSL3_KEY_MAT_OUT pReturnedKeyMaterial",
        "p/CK_KEY_DERIVATION_STRING_DATA: [B pData, J len",
        "p/CK_MECH_TYPE_AND_OBJECT: c/CK_MECHANISM_TYPE mechanism, CK_OBJECT_HANDLE hObj",
        "p/CK_DES_CBC_PARAMS p/CK_DES2_CBC_PARAMS p/CK_DES3_CBC_PARAMS: [B iv data",
        "p/CK_PP_LOAD_SECRET_PARAMS: CK_BBOOL bMaskInput, I cConvert cTimeout, [B prompt",
        "p/CK_TIMESTAMP_PARAMS: CK_BBOOL useMilliseconds, J timestampFormat",
        "p/CK_REPLICATE_TOKEN_PARAMS: [B peerId",
        "p/CK_SECRET_SHARE_PARAMS: J n m",
        "p/CK_ECIES_PARAMS: J dhPrimitive kdf ulSharedDataLen1 encScheme ulEncKeyLenInBits macScheme"
            + " ulMacKeyLenInBits ulMacLenInBits ulSharedDataLen2, [B pSharedData1 pSharedData2",
        "p/CK_ECDH1_DERIVE_PARAMS: J kdf ulSharedDataLen ulPublicDataLen, [B pSharedData pPublicData"})
    void theNativeSideFindsEveryField(String row) throws Exception {
        String[] sides = row.split(": ");
        for (String owner : sides[0].split(" ")) {
            for (String group : sides[1].split(", ")) {
                String[] words = group.split(" ");
                for (String name : Arrays.copyOfRange(words, 1, words.length)) {
                    Field field = Class.forName(path(owner).replace('/', '.')).getField(name);
                    assertEquals(signature(words[0]), field.getType().descriptorString(), field.toString());
                    assertEquals(Modifier.PUBLIC, field.getModifiers(), field.toString());
                }
            }
        }
    }

    private static String path(String name) {
        return "halvorn/zerlin/" + name.replaceFirst("^c/", "constants/").replaceFirst("^p/", "params/");
    }

    private static String signature(String word) {
        String array = word.startsWith("[") ? "[" : "";
        String element = word.substring(array.length());
        String object = element.equals("O") ? "java/lang/Object" : path(element);
        return array + ("ZBIJ".contains(element) ? element : "L" + object + ";");
    }

    static Object[][] valuesAndLengths() {
        return new Object[][] {
            {null, 0}, {new byte[5], 5}, {"", 0}, {"a\0b", 4}, {"\u07ff\u0800", 5}, {"\ud83d\ude00", 6},
            {1L << 40, 4}, {1, 4}, {(byte) 1, 1}, {true, 1}, {new CK_BBOOL(true), 1},
            {new CK_DATE(2024, 7, 15), 8}, {new CK_OBJECT_HANDLE(1), 4}, {new CK_KEY_TYPE(CKK.AES), 4},
            {CK_MECHANISM_TYPE.array(3), 12}, {new long[2], 8}, {new boolean[3], 3}, {new char[3], 3}};
    }

    @ParameterizedTest
    @MethodSource("valuesAndLengths")
    void attributesAndMechanismsKnowTheLengthOfTheirValue(Object value, long length) {
        assertEquals(length, new CK_ATTRIBUTE(CKA.LABEL, value).valueLen);
        assertEquals(length, new CK_MECHANISM(CKM.AES_CBC, value).parameterLen);
    }

    @Test
    void numbersBecomeUnsharedObjects() {
        Object first = new CK_ATTRIBUTE(CKA.VALUE_LEN, 1).pValue;
        assertEquals(1L, first);
        assertNotSame(first, new CK_ATTRIBUTE(CKA.VALUE_LEN, 1).pValue);
    }

    @SuppressWarnings({"deprecation", "removal"}) // The constructors of boxes create what valueOf does not.
    static Object[][] boxes() {
        return new Object[][] {
            {Boolean.TRUE, true}, {Boolean.FALSE, true}, {1L, true}, {-128L, true}, {127, true},
            {(byte) -1, true}, {Long.MAX_VALUE, false}, {new Long(1), false}, {new Boolean(true), false},
            {new CK_BBOOL(true), false}, {new byte[2], false}, {"text", false}};
    }

    // A native would change a cached box for the whole JVM.
    @ParameterizedTest
    @MethodSource("boxes")
    void attributesReplaceOnlyTheBoxesThatTheJvmShares(Object value, boolean replaced) {
        CK_ATTRIBUTE[] attributes = {new CK_ATTRIBUTE(CKA.VALUE, value),
            new CK_ATTRIBUTE(new CK_ATTRIBUTE_TYPE(CKA.VALUE), value), new CK_ATTRIBUTE(CKA.VALUE, value, 4)};
        for (CK_ATTRIBUTE attribute : attributes) {
            assertEquals(value, attribute.pValue);
            assertEquals(replaced, attribute.pValue != value);
        }
        if (replaced) {
            assertNotSame(attributes[0].pValue, attributes[1].pValue);
        }
    }

    static Object[][] typedValuesAndTexts() {
        return new Object[][] {
            {new CK_RV(0x150), "CKR_BUFFER_TOO_SMALL (0x150)"}, {new CK_RV(0x80001234L), "0x80001234"},
            {new CK_MECHANISM_TYPE(0x1082), "CKM_AES_CBC (0x1082)"}, {new CK_USER_TYPE(1), "CKU_USER (0x1)"},
            {new CK_KEY_TYPE(0x1f), "CKK_AES (0x1f)"}, {new CK_ATTRIBUTE_TYPE(3), "CKA_LABEL (0x3)"},
            {new CK_OBJECT_CLASS(4), "CKO_SECRET_KEY (0x4)"}, {new CK_CERTIFICATE_TYPE(0), "CKC_X_509 (0x0)"},
            {new CK_STATE(4), "CKS_RW_SO_FUNCTIONS (0x4)"}};
    }

    @ParameterizedTest
    @MethodSource("typedValuesAndTexts")
    void aTypedValuesTextIsItsName(TypedValue value, String text) {
        assertEquals(text, value.toString());
    }

    @Test
    void orThrowAcceptsWhatTheCallerAccepts() {
        CK_RV bad = new CK_RV(CKR.PIN_INCORRECT);
        assertTrue(new CK_RV(CKR.OK).orThrow(CKR.CANCEL).is(CKR.OK));
        assertSame(bad, bad.orThrow(CKR.CANCEL, CKR.PIN_INCORRECT));
        CryptokiException thrown = assertThrows(CryptokiException.class, () -> bad.orThrow(CKR.CANCEL));
        assertEquals("CKR_PIN_INCORRECT (0xa0)", thrown.getMessage());
    }
}
