// What users rely on in the Java classes, and what the native side relies on: needs no native library.
package halvorn.zerlin;

import static java.nio.charset.StandardCharsets.UTF_8;
import static org.junit.jupiter.api.Assertions.assertAll;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertNotSame;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import halvorn.zerlin.constants.*;
import halvorn.zerlin.params.*;

import java.lang.reflect.Array;
import java.lang.reflect.Constructor;
import java.lang.reflect.Field;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.net.URL;
import java.net.URLClassLoader;
import java.time.DateTimeException;
import java.time.LocalDate;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.concurrent.CountDownLatch;
import java.util.concurrent.TimeUnit;
import java.util.concurrent.atomic.AtomicLong;
import java.util.function.Function;
import java.util.stream.Collectors;
import java.util.stream.Stream;

import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.MethodSource;

class JavaClassesTest {
    // Z, B, I, J, [B as in JNI; a name alone is an object of that class; [name an array of them.
    private static final String[] NATIVE_FIELDS = {
        "LongRef: J value",
        "CK_SESSION_HANDLE: J m_value",
        "CK_OBJECT_HANDLE: J m_value",
        "CK_BBOOL: Z m_value",
        "CK_DATE: [B year month day",
        "CK_VERSION: B major minor",
        "constants/CK_ATTRIBUTE_TYPE: J m_value",
        "constants/CK_CERTIFICATE_TYPE: J m_value",
        "constants/CK_HW_FEATURE_TYPE: J m_value",
        "constants/CK_KEY_TYPE: J m_value",
        "constants/CK_MECHANISM_TYPE: J m_value",
        "constants/CK_OBJECT_CLASS: J m_value",
        "constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE: J m_value",
        "constants/CK_RV: J m_value",
        "constants/CK_STATE: J m_value",
        "constants/CK_USER_TYPE: J m_value",
        "CK_ATTRIBUTE: constants/CK_ATTRIBUTE_TYPE type, java/lang/Object pValue, J valueLen",
        "CK_MECHANISM: constants/CK_MECHANISM_TYPE mechanism, java/lang/Object pParameter, J parameterLen",
        "CK_INFO: CK_VERSION cryptokiVersion libraryVersion, [B manufacturerID libraryDescription, J flags",
        "CK_SLOT_INFO: [B slotDescription manufacturerID, J flags,"
            + " CK_VERSION hardwareVersion firmwareVersion",
        "CK_TOKEN_INFO: [B label manufacturerID model serialNumber utcTime,"
            + " J flags maxSessionCount sessionCount maxRwSessionCount rwSessionCount maxPinLen minPinLen"
            + " totalPublicMemory freePublicMemory totalPrivateMemory freePrivateMemory,"
            + " CK_VERSION hardwareVersion firmwareVersion",
        "CK_SESSION_INFO: J slotID flags deviceError, constants/CK_STATE state",
        "CK_MECHANISM_INFO: J minKeySize maxKeySize flags",
        "CK_C_INITIALIZE_ARGS: CK_C_INITIALIZE_ARGS$CK_CREATEMUTEX createMutex,"
            + " CK_C_INITIALIZE_ARGS$CK_DESTROYMUTEX destroyMutex,"
            + " CK_C_INITIALIZE_ARGS$CK_LOCKMUTEX lockMutex,"
            + " CK_C_INITIALIZE_ARGS$CK_UNLOCKMUTEX unlockMutex, J flags, java/lang/Object reserved",
        "params/CK_RSA_PKCS_OAEP_PARAMS: constants/CK_MECHANISM_TYPE hashAlg, J mgf sourceDataLen,"
            + " constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE source, [B pSourceData",
        "params/CK_RSA_PKCS_PSS_PARAMS: constants/CK_MECHANISM_TYPE hashAlg, J mgf sLen",
        "params/CK_RC2_CBC_PARAMS: J effectiveBits, [B iv",
        "params/CK_RC2_MAC_GENERAL_PARAMS: J effectiveBits macLength",
        "params/CK_PBE_PARAMS: [B pInitVector pPassword pSalt, J passwordLen saltLen iteration",
        "params/CK_PKCS12_PBE_IMPORT_PARAMS: [B passwordAuthSafe passwordHMAC, J passwordAuthSafeLen"
            + " passwordHMACLen certAttrCount,"
            + " [CK_ATTRIBUTE certAttr, [CK_OBJECT_HANDLE hCert, LongRef hCertCount",
        "params/CK_PKCS12_PBE_EXPORT_PARAMS: CK_OBJECT_HANDLE keyCert, [B passwordAuthSafe passwordHMAC,"
            + " J passwordAuthSafeLen passwordHMACLen,"
            + " constants/CK_MECHANISM_TYPE safeBagKgMech safeContentKgMech hmacKgMech",
        "params/CK_KEY_WRAP_SET_OAEP_PARAMS: B bBC, [B pX, J XLen",
        "params/CK_SSL3_RANDOM_DATA: [B pClientRandom pServerRandom, J clientRandomLen serverRandomLen",
        "params/CK_SSL3_MASTER_KEY_DERIVE_PARAMS: params/CK_SSL3_RANDOM_DATA RandomInfo, CK_VERSION pVersion",
        "params/CK_SSL3_KEY_MAT_OUT:"
            + " CK_OBJECT_HANDLE hClientMacSecret hServerMacSecret hClientKey hServerKey,"
            + " [B pIVClient pIVServer",
        "params/CK_SSL3_KEY_MAT_PARAMS: J macSizeInBits keySizeInBits IVSizeInBits, CK_BBOOL bIsExport,"
            + " params/CK_SSL3_RANDOM_DATA RandomInfo, params/CK_SSL3_KEY_MAT_OUT pReturnedKeyMaterial",
        "params/CK_KEY_DERIVATION_STRING_DATA: [B pData, J len",
        "params/CK_MECH_TYPE_AND_OBJECT: constants/CK_MECHANISM_TYPE mechanism, CK_OBJECT_HANDLE hObj",
        "params/CK_DES_CBC_PARAMS: [B iv data",
        "params/CK_DES2_CBC_PARAMS: [B iv data",
        "params/CK_DES3_CBC_PARAMS: [B iv data",
        "params/CK_PP_LOAD_SECRET_PARAMS: CK_BBOOL bMaskInput, I cConvert cTimeout, [B prompt",
        "params/CK_TIMESTAMP_PARAMS: CK_BBOOL useMilliseconds, J timestampFormat",
        "params/CK_REPLICATE_TOKEN_PARAMS: [B peerId",
        "params/CK_SECRET_SHARE_PARAMS: J n m",
        "params/CK_ECIES_PARAMS: J dhPrimitive kdf ulSharedDataLen1 encScheme ulEncKeyLenInBits macScheme"
            + " ulMacKeyLenInBits ulMacLenInBits ulSharedDataLen2, [B pSharedData1 pSharedData2",
        "params/CK_ECDH1_DERIVE_PARAMS: J kdf ulSharedDataLen ulPublicDataLen, [B pSharedData pPublicData",
    };

    static Stream<String> nativeFields() {
        return Stream.of(NATIVE_FIELDS);
    }

    @ParameterizedTest
    @MethodSource("nativeFields")
    void theNativeSideFindsEveryField(String row) throws Exception {
        Class<?> type = classAt(row.substring(0, row.indexOf(':')));
        for (String group : row.substring(row.indexOf(':') + 2).split(", ")) {
            String[] words = group.split(" ");
            for (String name : Arrays.copyOfRange(words, 1, words.length)) {
                Field field = type.getField(name);
                assertEquals(signature(words[0]), signature(field.getType()), type + "." + name);
                assertEquals(Modifier.PUBLIC, field.getModifiers(), type + "." + name);
            }
        }
    }

    @ParameterizedTest
    @CsvSource({
        "CK_BBOOL, setValue, (Z)V",
        "constants/TypedValue, setValue, (J)V",
        "CK_C_INITIALIZE_ARGS$CK_CREATEMUTEX, CreateMutex, ()Ljava/lang/Object;",
        "CK_C_INITIALIZE_ARGS$CK_DESTROYMUTEX, DestroyMutex, (Ljava/lang/Object;)J",
        "CK_C_INITIALIZE_ARGS$CK_LOCKMUTEX, LockMutex, (Ljava/lang/Object;)J",
        "CK_C_INITIALIZE_ARGS$CK_UNLOCKMUTEX, UnlockMutex, (Ljava/lang/Object;)J"})
    void theNativeSideFindsEveryMethod(String type, String name, String signature) throws Exception {
        List<String> found = new ArrayList<>();
        for (Method method : classAt(type).getMethods()) {
            if (method.getName().equals(name)) {
                found.add(signature(method));
            }
        }
        assertEquals(Collections.singletonList(signature), found);
    }

    // s session, o object, m mechanism, t template, b byte[], j long, r LongRef, x Object, z boolean; the
    // rest by name.
    private static final String[] NATIVES = {
        "x C_Initialize C_Finalize", "CK_INFO C_GetInfo", "z,[J,r C_GetSlotList",
        "j,CK_SLOT_INFO C_GetSlotInfo",
        "j,CK_TOKEN_INFO C_GetTokenInfo", "j,r,x C_WaitForSlotEvent",
        "j,[constants/CK_MECHANISM_TYPE,r C_GetMechanismList",
        "j,constants/CK_MECHANISM_TYPE,CK_MECHANISM_INFO C_GetMechanismInfo", "j,b,j,b C_InitToken",
        "s,b,j C_InitPIN C_SeedRandom C_GenerateRandom C_DigestUpdate C_SignUpdate C_VerifyUpdate"
            + " C_VerifyFinal",
        "s,b,j,b,j C_SetPIN C_Verify", "s,j,b,j,b CT_InitToken", "s,b,j,b CT_ResetToken",
        "j,j,x,x,s C_OpenSession", "j C_CloseAllSessions",
        "s C_CloseSession C_Logout C_GetFunctionStatus C_CancelFunction C_FindObjectsFinal",
        "s,CK_SESSION_INFO C_GetSessionInfo",
        "s,b,r C_GetOperationState C_EncryptFinal C_DecryptFinal C_DigestFinal C_SignFinal",
        "s,b,j,o,o C_SetOperationState", "s,constants/CK_USER_TYPE,b,j C_Login", "s,t,j,o C_CreateObject",
        "s,o,t,j,o C_CopyObject", "s,s,o,t,j,o CT_CopyObject", "s,o C_DestroyObject C_DigestKey",
        "s,o,r C_GetObjectSize", "s,o,t,j C_GetAttributeValue C_SetAttributeValue", "s,t,j C_FindObjectsInit",
        "s,[CK_OBJECT_HANDLE,j,r C_FindObjects", "s,m C_DigestInit",
        "s,m,o C_EncryptInit C_DecryptInit C_SignInit C_SignRecoverInit C_VerifyInit C_VerifyRecoverInit",
        "s,b,j,b,r C_Encrypt C_EncryptUpdate C_Decrypt C_DecryptUpdate C_Digest C_Sign C_SignRecover"
            + " C_VerifyRecover C_DigestEncryptUpdate C_DecryptDigestUpdate C_SignEncryptUpdate"
            + " C_DecryptVerifyUpdate",
        "s,m,t,j,o C_GenerateKey", "s,m,t,j,t,j,o,o C_GenerateKeyPair", "s,m,o,o,b,r C_WrapKey",
        "s,m,o,b,j,t,j,o C_UnwrapKey", "s,m,o,t,j,o C_DeriveKey",
        "constants/CK_ATTRIBUTE_TYPE,b,r CTU_GetAttributeTypeString",
        "constants/CK_RV,b,r CTU_GetErrorString",
        "constants/CK_KEY_TYPE,b,r CTU_GetKeyTypeString",
        "constants/CK_MECHANISM_TYPE,b,r CTU_GetMechanismTypeString",
        "constants/CK_OBJECT_CLASS,b,r CTU_GetObjectClassString",
        "constants/CK_STATE,b,r CTU_GetSessionStateString",
        "b CTU_GetAttributeTypeValue CTU_GetErrorValue CTU_GetKeyTypeValue CTU_GetMechanismTypeValue"
            + " CTU_GetObjectClassValue CTU_GetSessionStateValue",
        "s,constants/CK_OBJECT_CLASS,b,o CTU_FindObject",
        "s,o,constants/CK_ATTRIBUTE_TYPE,x,j,r CTU_GetAttributeValue",
        "s,o,constants/CK_ATTRIBUTE_TYPE,x,j CTU_SetAttributeValue",
        "java/lang/String GetConstantValue", "x getMechanismParameterSize",
    };

    @Test
    void everyNativeIsDeclaredWithItsParametersInOrder() throws Exception {
        List<String> wanted = new ArrayList<>();
        for (String row : NATIVES) {
            String[] words = row.split(" ");
            for (String name : Arrays.copyOfRange(words, 1, words.length)) {
                wanted.add(name + Stream.of(words[0].split(",")).map(JavaClassesTest::parameter)
                        .collect(Collectors.joining("", "(", ")")));
            }
        }
        List<String> declared = new ArrayList<>();
        for (String type : new String[] {"Cryptoki", "CTUtil", "CK_MECHANISM", "constants/CK"}) {
            for (Method method : classAt(type).getDeclaredMethods()) {
                if (Modifier.isNative(method.getModifiers())) {
                    declared.add(method.getName() + signature(method).replaceAll("\\).*", ")"));
                }
            }
        }
        Collections.sort(wanted);
        Collections.sort(declared);
        assertEquals(87, wanted.size());
        assertEquals(String.join("\n", wanted), String.join("\n", declared));
    }

    // The library makes objects without running a constructor: all their fields are null.
    @ParameterizedTest
    @MethodSource("nativeFields")
    void anObjectMadeWithoutAConstructorCanBePrintedAndCompared(String row) throws Exception {
        Class<?> type = classAt(row.substring(0, row.indexOf(':')));
        Object first = withoutConstructor(type);
        Object second = withoutConstructor(type);
        assertFalse(first.toString().isEmpty());
        if (type.getMethod("equals", Object.class).getDeclaringClass() != Object.class) {
            assertEquals(first, second);
            assertEquals(first.hashCode(), second.hashCode());
            assertNotEquals(first, null);
        }
        for (Method method : type.getMethods()) {
            if (method.getName().startsWith("get") && method.getParameterCount() == 0) {
                method.invoke(first);
            }
        }
    }

    static Object[][] valuesAndLengths() {
        return new Object[][] {
            {null, 0}, {new byte[0], 0}, {new byte[5], 5}, {"", 0}, {"abc", 3}, {"a\0b", 4},
            {"\u007f\u0080", 3}, {"\u07ff\u0800", 5}, {"\uffff", 3}, {"\ud83d\ude00", 6}, {"\ud83d", 3},
            {Long.valueOf(1L << 40), 4}, {Integer.valueOf(1), 4}, {Byte.valueOf((byte) 1), 1},
            {Boolean.TRUE, 1}, {new CK_BBOOL(true), 1}, {new CK_DATE(2024, 7, 15), 8},
            {new CK_OBJECT_HANDLE(1), 4}, {new CK_SESSION_HANDLE(1), 4},
            {new CK_KEY_TYPE(CKK.AES), 4}, {new CK_STATE(), 4}, {CK_MECHANISM_TYPE.array(3), 12},
            {new long[] {1, 2}, 8}, {new boolean[3], 3}, {new char[3], 3}};
    }

    @ParameterizedTest
    @MethodSource("valuesAndLengths")
    void attributesAndMechanismsKnowTheLengthOfTheirValue(Object value, long length) {
        CK_ATTRIBUTE attribute = new CK_ATTRIBUTE(CKA.LABEL, value);
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_CBC, value);
        assertAll(
            () -> assertEquals(CKA.LABEL, attribute.type.m_value),
            () -> assertSame(value, attribute.pValue),
            () -> assertEquals(length, attribute.valueLen),
            () -> assertEquals(CKM.AES_CBC, mechanism.mechanism.m_value),
            () -> assertSame(value, mechanism.pParameter),
            () -> assertEquals(length, mechanism.parameterLen));
    }

    @Test
    void anIntArrayBecomesALongArray() {
        int[] ints = {7, -1};
        for (CK_ATTRIBUTE attribute : new CK_ATTRIBUTE[] {
            new CK_ATTRIBUTE(CKA.VALUE, ints), new CK_ATTRIBUTE(CKA.VALUE, ints, 8)}) {
            assertArrayEquals(new long[] {7, -1}, (long[]) attribute.pValue);
            assertEquals(8, attribute.valueLen);
        }
        CK_MECHANISM mechanism = new CK_MECHANISM(CKM.AES_CBC, new int[1]);
        assertTrue(mechanism.pParameter instanceof long[] && mechanism.parameterLen == 4);
    }

    @Test
    void aValueWithoutANativeFormIsRefused() {
        for (Object value : new Object[] {'c', 1.5, new Object(), new Long[1], CK_OBJECT_HANDLE.array(1)}) {
            String text = assertThrows(IllegalArgumentException.class,
                () -> new CK_ATTRIBUTE(CKA.VALUE, value)).getMessage();
            assertTrue(text.contains(value.getClass().getName()) && text.contains("byte[]"), text);
        }
    }

    @Test
    void primitiveValuesGetObjectsThatNobodyShares() {
        CK_ATTRIBUTE[] numbers = {new CK_ATTRIBUTE(CKA.VALUE_LEN, 1), new CK_ATTRIBUTE(CKA.VALUE_LEN, 1L),
            new CK_ATTRIBUTE(new CK_ATTRIBUTE_TYPE(CKA.VALUE_LEN), 1L)};
        for (CK_ATTRIBUTE number : numbers) {
            assertEquals(1L, number.pValue);
            assertNotSame(Long.valueOf(1), number.pValue);
            assertEquals(4, number.valueLen);
        }
        assertNotSame(numbers[0].pValue, numbers[1].pValue);
        CK_ATTRIBUTE[] booleans = {new CK_ATTRIBUTE(CKA.TOKEN, true),
            new CK_ATTRIBUTE(new CK_ATTRIBUTE_TYPE(CKA.TOKEN), true)};
        for (CK_ATTRIBUTE bool : booleans) {
            assertEquals(new CK_BBOOL(true), bool.pValue);
            assertEquals(1, bool.valueLen);
        }
        assertNotSame(booleans[0].pValue, booleans[1].pValue);
    }

    @Test
    void bytesThatWereReadAreCutToTheirLength() {
        CK_ATTRIBUTE attribute = CK_ATTRIBUTE.buffer(CKA.VALUE, 4);
        assertEquals(4, attribute.valueLen);
        ((byte[]) attribute.pValue)[0] = 9;
        attribute.valueLen = 2;
        assertArrayEquals(new byte[] {9, 0}, attribute.getBytes());
        attribute.valueLen = 0xFFFFFFFFL;
        assertNull(attribute.getBytes());
    }

    @Test
    void arraysForListsAreFilledWithDifferentObjects() {
        CK_OBJECT_HANDLE[] handles = CK_OBJECT_HANDLE.array(2);
        CK_MECHANISM_TYPE[] types = CK_MECHANISM_TYPE.array(2);
        handles[0].m_value = 1;
        types[0].m_value = 1;
        assertEquals(0, handles[1].m_value);
        assertEquals(0, types[1].m_value);
    }

    static Object[][] typedValuesAndTexts() {
        return new Object[][] {
            {new CK_RV(0x150), "CKR_BUFFER_TOO_SMALL (0x150)"}, {new CK_RV(), "CKR_OK (0x0)"},
            {new CK_RV(0x80001234L), "0x80001234"}, {new CK_RV(0x7fffffff), "0x7fffffff"},
            {new CK_MECHANISM_TYPE(0x1082), "CKM_AES_CBC (0x1082)"},
            {new CK_KEY_TYPE(0x1f), "CKK_AES (0x1f)"}, {new CK_ATTRIBUTE_TYPE(3), "CKA_LABEL (0x3)"},
            {new CK_OBJECT_CLASS(4), "CKO_SECRET_KEY (0x4)"},
            {new CK_USER_TYPE(1), "CKU_USER (0x1)"}, {new CK_STATE(0), "CKS_RO_PUBLIC_SESSION (0x0)"},
            {new CK_CERTIFICATE_TYPE(0), "CKC_X_509 (0x0)"},
            {new CK_HW_FEATURE_TYPE(1), "CKH_MONOTONIC_COUNTER (0x1)"},
            {new CK_RSA_PKCS_OAEP_SOURCE_TYPE(1), "CKZ_DATA_SPECIFIED (0x1)"}};
    }

    @ParameterizedTest
    @MethodSource("typedValuesAndTexts")
    void aTypedValueTellsItsName(TypedValue value, String text) {
        assertEquals(text, value.toString());
    }

    @Test
    void valuesOfDifferentKindsDiffer() {
        assertNotEquals(new CK_RV(1), new CK_STATE(1));
        assertNotEquals(new CK_SESSION_HANDLE(1), new CK_OBJECT_HANDLE(1));
        assertNotEquals(new CK_RV(1), new CK_RV(2));
        assertEquals(new CK_RV(0xA0), new CK_RV(0xA0));
        assertNotEquals(new CK_VERSION(2, 1), new CK_VERSION(1, 2));
        assertNotEquals(new CK_DATE(2024, 7, 15), new CK_DATE(2024, 7, 16));
    }

    @Test
    void orThrowAcceptsWhatTheCallerAccepts() {
        CK_RV ok = new CK_RV(CKR.OK);
        CK_RV bad = new CK_RV(CKR.PIN_INCORRECT);
        assertSame(ok, ok.orThrow());
        assertSame(ok, ok.orThrow(CKR.CANCEL));
        assertSame(bad, bad.orThrow(CKR.CANCEL, CKR.PIN_INCORRECT));
        assertThrows(CryptokiException.class, () -> bad.orThrow(CKR.CANCEL));
        CryptokiException thrown = assertThrows(CryptokiException.class, bad::orThrow);
        assertEquals("CKR_PIN_INCORRECT (0xa0)", thrown.getMessage());
        assertEquals(bad, thrown.getRV());
    }

    @Test
    void aDateCrossesAsEightBytes() {
        CK_DATE date = new CK_DATE(LocalDate.of(987, 6, 5));
        assertArrayEquals("09870605".getBytes(), date.toBytes());
        assertEquals(date, CK_DATE.fromBytes(date.toBytes()));
        assertEquals("0987-06-05", date.toString());
        assertEquals(LocalDate.of(987, 6, 5), date.toLocalDate());
        assertArrayEquals(new byte[8], new CK_DATE().toBytes());
        assertThrows(IllegalArgumentException.class, () -> CK_DATE.fromBytes(new byte[7]));
        for (int[] d : new int[][] {{10000, 1, 1}, {-1, 1, 1}, {2023, 2, 29}}) {
            assertThrows(DateTimeException.class, () -> new CK_DATE(d[0], d[1], d[2]));
        }
    }

    @Test
    void informationRecordsAreReadable() {
        CK_TOKEN_INFO info = new CK_TOKEN_INFO();
        info.label = CK_TOKEN_INFO.paddedLabel("T\u00f6k en");
        info.serialNumber = new byte[] {'1', ' ', '2', 0, ' ', 0};
        info.maxSessionCount = 4294967295L;
        info.firmwareVersion = new CK_VERSION(2, 200);
        assertEquals(32, info.label.length);
        assertEquals("T\u00f6k en", info.getLabel());
        assertEquals("1 2", info.getSerialNumber());
        for (String part : new String[] {
            "label=T\u00f6k en, ", "firmwareVersion=2.200", "maxSessionCount=unavailable"}) {
            assertTrue(info.toString().contains(part), info.toString());
        }
        String longest = "12345678901234567890123456789\u20ac";
        assertArrayEquals(longest.getBytes(UTF_8), CK_TOKEN_INFO.paddedLabel(longest));
        assertThrows(IllegalArgumentException.class, () -> CK_TOKEN_INFO.paddedLabel(longest + " "));
    }

    private static final byte[] SECRET = "secret".getBytes();
    private static final byte[] THREE = new byte[3];

    static Object[][] parametersAndLengths() {
        CK_SSL3_KEY_MAT_PARAMS ssl = new CK_SSL3_KEY_MAT_PARAMS(1, 2, 65, true, SECRET, THREE);
        CK_ECIES_PARAMS ecies = new CK_ECIES_PARAMS(1, 2, SECRET, 3, 4, 5, 6, 7, null);
        return new Object[][] {
            {new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, SECRET), "hashAlg.m_value=544 mgf=1"
                + " source.m_value=1 sourceDataLen=6"},
            {new CK_RSA_PKCS_OAEP_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, null), "sourceDataLen=0"},
            {new CK_RSA_PKCS_PSS_PARAMS(CKM.SHA_1, CKG.MGF1_SHA1, 20), "hashAlg.m_value=544 mgf=1 sLen=20"},
            {new CK_RC2_CBC_PARAMS(128, SECRET), "effectiveBits=128 iv.length=6"},
            {new CK_RC2_MAC_GENERAL_PARAMS(128, 4), "effectiveBits=128 macLength=4"},
            {new CK_PBE_PARAMS(SECRET, THREE, 5), "passwordLen=6 saltLen=3 iteration=5 pInitVector.length=8"},
            {new CK_PKCS12_PBE_IMPORT_PARAMS(SECRET, THREE, new CK_ATTRIBUTE[2], 4), "passwordAuthSafeLen=6"
                + " passwordHMACLen=3 certAttrCount=2 hCert.length=4 hCertCount.value=4"},
            {new CK_PKCS12_PBE_EXPORT_PARAMS(new CK_OBJECT_HANDLE(9), SECRET, THREE, 1, 2, 3),
                "keyCert.m_value=9 passwordAuthSafeLen=6 passwordHMACLen=3 safeBagKgMech.m_value=1"
                + " safeContentKgMech.m_value=2 hmacKgMech.m_value=3"},
            {new CK_KEY_WRAP_SET_OAEP_PARAMS(200, SECRET), "bBC=-56 XLen=6"},
            {new CK_SSL3_MASTER_KEY_DERIVE_PARAMS(SECRET, THREE), "pVersion.major=0"},
            {ssl, "macSizeInBits=1 keySizeInBits=2 IVSizeInBits=65 bIsExport.m_value=true"},
            {ssl.RandomInfo, "clientRandomLen=6 serverRandomLen=3"},
            {ssl.pReturnedKeyMaterial, "pIVClient.length=9 pIVServer.length=9 hClientMacSecret.m_value=0"
                + " hServerMacSecret.m_value=0 hClientKey.m_value=0 hServerKey.m_value=0"},
            {new CK_KEY_DERIVATION_STRING_DATA(SECRET), "len=6"},
            {new CK_MECH_TYPE_AND_OBJECT(3, new CK_OBJECT_HANDLE(9)), "mechanism.m_value=3 hObj.m_value=9"},
            {new CK_DES_CBC_PARAMS(THREE, SECRET), "iv.length=3 data.length=6"},
            {new CK_DES2_CBC_PARAMS(THREE, SECRET), "iv.length=3 data.length=6"},
            {new CK_DES3_CBC_PARAMS(THREE, SECRET), "iv.length=3 data.length=6"},
            {new CK_PP_LOAD_SECRET_PARAMS(true, 1, 300, SECRET),
                "bMaskInput.m_value=true cConvert=1 cTimeout=300"},
            {new CK_TIMESTAMP_PARAMS(true, 2), "useMilliseconds.m_value=true timestampFormat=2"},
            {new CK_REPLICATE_TOKEN_PARAMS(SECRET), "peerId.length=6"},
            {new CK_SECRET_SHARE_PARAMS(5, 3), "n=5 m=3"},
            {ecies, "dhPrimitive=1 kdf=2 ulSharedDataLen1=6 encScheme=3 ulEncKeyLenInBits=4 macScheme=5"
                + " ulMacKeyLenInBits=6 ulMacLenInBits=7 ulSharedDataLen2=0"},
            {new CK_ECDH1_DERIVE_PARAMS(CKD.NULL, THREE, SECRET),
                "kdf=1 ulSharedDataLen=3 ulPublicDataLen=6"},
        };
    }

    @ParameterizedTest
    @MethodSource("parametersAndLengths")
    void parameterConstructorsSetEveryFieldAndTellNoSecret(Object parameter, String fields) throws Exception {
        for (String field : fields.split(" ")) {
            Object value = parameter;
            for (String name : field.substring(0, field.indexOf('=')).split("\\.")) {
                value = name.equals("length") ? Array.getLength(value)
                    : value.getClass().getField(name).get(value);
            }
            assertEquals(field.substring(field.indexOf('=') + 1), value.toString(), field);
        }
        assertFalse(parameter.toString().contains("secret") || parameter.toString().contains("115, 101"));
    }

    @Test
    void secretsInAttributesAndMechanismsAreNotTold() {
        for (Object value : new Object[] {SECRET, "secret", "secret".toCharArray()}) {
            String attribute = new CK_ATTRIBUTE(CKA.VALUE, value).toString();
            String mechanism = new CK_MECHANISM(CKM.AES_CBC, value).toString();
            assertTrue(attribute.contains("CKA_VALUE") && attribute.contains("of 6 bytes"), attribute);
            assertTrue(mechanism.contains("CKM_AES_CBC") && mechanism.contains("of 6 bytes"), mechanism);
            assertFalse((attribute + mechanism).contains("secret"));
        }
        assertTrue(new CK_ATTRIBUTE(CKA.CLASS, new CK_OBJECT_CLASS(4)).toString().contains("CKO_SECRET_KEY"));
    }

    @Test
    void javaLockingExcludesOtherThreads() throws Exception {
        CK_C_INITIALIZE_ARGS args = CK_C_INITIALIZE_ARGS.javaLocking();
        Object mutex = args.createMutex.CreateMutex();
        assertNotSame(mutex, args.createMutex.CreateMutex());
        assertEquals(0, args.flags);
        assertEquals(CKR.MUTEX_NOT_LOCKED, args.unlockMutex.UnlockMutex(mutex));
        assertEquals(CKR.OK, args.lockMutex.LockMutex(mutex));

        CountDownLatch locked = new CountDownLatch(1);
        AtomicLong answer = new AtomicLong(-1);
        Thread other = new Thread(() -> {
            answer.set(args.lockMutex.LockMutex(mutex));
            locked.countDown();
        });
        other.start();
        assertFalse(locked.await(50, TimeUnit.MILLISECONDS), "two threads hold the mutex");
        assertEquals(CKR.OK, args.unlockMutex.UnlockMutex(mutex));
        assertTrue(locked.await(10, TimeUnit.SECONDS));
        other.join();

        assertEquals(CKR.OK, answer.get());
        assertEquals(CKR.OK, args.unlockMutex.UnlockMutex(mutex), "any thread may unlock");
        assertEquals(CKR.MUTEX_NOT_LOCKED, args.unlockMutex.UnlockMutex(mutex));
        assertEquals(CKR.OK, args.destroyMutex.DestroyMutex(mutex));
        List<Function<Object, Long>> refusing = Arrays.asList(args.lockMutex::LockMutex,
            args.unlockMutex::UnlockMutex, args.destroyMutex::DestroyMutex);
        for (Function<Object, Long> call : refusing) {
            assertEquals(CKR.MUTEX_BAD, call.apply("no mutex"));
            assertEquals(CKR.MUTEX_BAD, call.apply(null));
        }
        assertEquals(CKF.OS_LOCKING_OK, CK_C_INITIALIZE_ARGS.osLocking().flags);
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', value = {
        "32 | no zerlin in java.library.path: [/lib] | -Djava.library.path | 32-bit",
        "32 | Can't load library: /opt/libzerlin.so | -Dhalvorn.zerlin.library | LD_LIBRARY_PATH",
        "32 | Expecting an absolute path of the library: libzerlin.so | must be an absolute path | 32-bit",
        "32 | /opt/libzerlin.so: libcryptoki.so: cannot open shared object file | LD_LIBRARY_PATH | java.lib",
        "64 | /opt/libzerlin.so: wrong ELF class: ELFCLASS32 (Possible) | 64-bit, os.arch test | java.lib",
        "64 | no zerlin in java.library.path: [/lib] | 32-bit library | LD_LIBRARY_PATH",
        "32 | /opt/libzerlin.so: undefined symbol: C_Sign | undefined symbol: C_Sign | 32-bit"})
    void aFailedLoadTellsWhatToDo(String width, String loaderText, String advice, String notAdvised) {
        String text = NativeLibrary.explain(loaderText, "test", width);
        assertTrue(text.contains(loaderText) && text.contains(advice), text);
        assertFalse(text.contains(notAdvised) && !loaderText.contains(notAdvised), text);
    }

    // In a class loader of its own, so that a library loaded by other tests does not matter.
    @Test
    void everyLoadAfterAFailureFailsWithTheSameText() throws Exception {
        String before = System.setProperty(NativeLibrary.PROPERTY, "/nowhere/libzerlin.so");
        URL[] classes = {NativeLibrary.class.getProtectionDomain().getCodeSource().getLocation()};
        try (URLClassLoader loader = new URLClassLoader(classes, null)) {
            Method load = loader.loadClass(NativeLibrary.class.getName()).getMethod("load");
            List<Throwable> errors = new ArrayList<>();
            for (int i = 0; i < 2; i++) {
                errors.add(assertThrows(InvocationTargetException.class, () -> load.invoke(null)).getCause());
            }
            for (Throwable error : errors) {
                assertTrue(error instanceof UnsatisfiedLinkError, error.toString());
                assertTrue(error.getMessage().contains(error.getCause().getMessage()), error.getMessage());
                assertEquals(errors.get(0).getMessage(), error.getMessage());
            }
        } finally {
            if (before == null) {
                System.clearProperty(NativeLibrary.PROPERTY);
            } else {
                System.setProperty(NativeLibrary.PROPERTY, before);
            }
        }
    }

    private static String path(String name) {
        return name.startsWith("java/") ? name : "halvorn/zerlin/" + name;
    }

    private static Class<?> classAt(String name) throws ClassNotFoundException {
        return Class.forName(path(name).replace('/', '.'), false, JavaClassesTest.class.getClassLoader());
    }

    private static String signature(String word) {
        boolean array = word.startsWith("[");
        String element = array ? word.substring(1) : word;
        return (array ? "[" : "") + (element.length() == 1 ? element : "L" + path(element) + ";");
    }

    private static String signature(Class<?> type) {
        String name = Array.newInstance(type, 0).getClass().getName().substring(1);
        return name.replace('.', '/');
    }

    private static String signature(Method method) {
        String result = method.getReturnType() == void.class ? "V" : signature(method.getReturnType());
        return Stream.of(method.getParameterTypes()).map(JavaClassesTest::signature)
            .collect(Collectors.joining("", "(", ")")) + result;
    }

    private static String parameter(String code) {
        switch (code) {
            case "s": return signature("CK_SESSION_HANDLE");
            case "o": return signature("CK_OBJECT_HANDLE");
            case "m": return signature("CK_MECHANISM");
            case "t": return signature("[CK_ATTRIBUTE");
            case "r": return signature("LongRef");
            case "x": return signature("java/lang/Object");
            case "b": return "[B";
            case "j": return "J";
            case "z": return "Z";
            default: return signature(code);
        }
    }

    private static Object withoutConstructor(Class<?> type) throws Exception {
        Class<?> factory = Class.forName("sun.reflect.ReflectionFactory");
        Object instance = factory.getMethod("getReflectionFactory").invoke(null);
        Constructor<?> none = (Constructor<?>) factory
            .getMethod("newConstructorForSerialization", Class.class, Constructor.class)
            .invoke(instance, type, Object.class.getDeclaredConstructor());
        return none.newInstance();
    }
}
