// Mechanism parameter objects as the Cryptoki library sees them, and what is left of them afterwards.
#include "failures.h"
#include "helper/convToCK.h"
#include "jvm.h"
#include "param_text.h"

namespace {

using namespace jni;

constexpr jlong ANY_TYPE = 4225;

struct Params : JniTest {
    // One call with a parameter; answers what the Cryptoki library was given, as far as its length goes.
    std::string given(jobject parameter, std::string_view expected, jlong parameterLen)
    {
        std::string told = "not called";
        recorder::script().byteLimit = 0;
        recorder::script().C_EncryptInit = [&](auto, CK_MECHANISM_PTR made, auto) {
            told = tellNative(made->pParameter, expected);
            EXPECT_EQ(made->ulParameterLen, static_cast<CK_ULONG>(parameterLen));
            return CKR_OK;
        };
        const jobject jMechanism = mechanism(env, ANY_TYPE, parameter, parameterLen);
        const jobject returned =
            NATIVE(C_1EncryptInit)(env, nullptr, session(env), jMechanism, object(env, 7));
        if (returned != nullptr) {
            EXPECT_EQ(rvOf(env, returned), CKR_OK);
        }
        return told;
    }
    std::string given(const ParamRow& row)
    {
        return given(read(env, row.java), row.native, static_cast<jlong>(sizeOfNative(row.native)));
    }
};

TEST_F(Params, everyClassBecomesItsStructureAndNothingIsLeft)
{
    for (const ParamRow& row : PARAMS) {
        SCOPED_TRACE(row.java);
        const LocalFrame frame(env);
        const HeapWatch heap;
        EXPECT_EQ(given(row), row.native);
        EXPECT_EQ(heap.blocks.size(), 0U);
        for (const std::string& block : heap.freed) { // of templates the values alone are secret
            const bool isTemplate = block.size() == 2 * sizeof(CK_ATTRIBUTE) + 1;
            EXPECT_TRUE(isTemplate || block.find_first_not_of('\0') == block.npos) << "not overwritten";
        }
    }
}

const char* const NO_RANDOM = "RandomInfo=CK_SSL3_RANDOM_DATA{}";

// Nulls, short and long arrays, caps, and lengths that need not be those of the arrays.
const ParamRow EDGES[] = {
    {"CK_RSA_PKCS_OAEP_PARAMS{}", "ffffffff 00000000 ffffffff null 00000000"},
    {"CK_RSA_PKCS_PSS_PARAMS{hashAlg=30064771617 mgf=-1 sLen=8589934594}", "21020000 ffffffff 02000000"},
    {"-1L", "ffffffff"},
    {"CK_RC2_CBC_PARAMS{iv=[010203040506070809]}", "00000000 0102030405060708"},
    {"CK_RC2_CBC_PARAMS{}", "00000000 0000000000000000"},
    {"CK_PBE_PARAMS{}", "null null 00000000 null 00000000 00000000"},
    {"CK_PBE_PARAMS{pInitVector=[010203] pPassword=[] pSalt=[]}",
        "[010203] [] 00000000 [] 00000000 00000000"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS{hCertCount=0}",
        "null 00000000 null 00000000 null 00000000 null [00000000]"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS{hCert=(7 8) hCertCount=0}",
        "null 00000000 null 00000000 null 00000000 null [00000000]"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS{hCertCount=4294967298}",
        "null 00000000 null 00000000 null 00000000 null [02000000]"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS{hCert=(7 null 4294967305) hCertCount=1}",
        "null 00000000 null 00000000 null 00000000 [07000000ffffffff09000000] [01000000]"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS{passwordAuthSafe=[6175] passwordAuthSafeLen=9 passwordHMACLen=8 "
     "certAttr=(CK_ATTRIBUTE{type=3 pValue=[6d79] valueLen=2}) certAttrCount=4294967295 hCertCount=0}",
        "[6175] 09000000 null 08000000 (03000000 [6d79] 02000000) ffffffff null [00000000]"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS{certAttr=(CK_ATTRIBUTE{type=3 pValue=[6d79] valueLen=2}) hCertCount=0}",
        "null 00000000 null 00000000 (03000000 [6d79] 02000000) 00000000 null [00000000]"},
    {"CK_PKCS12_PBE_EXPORT_PARAMS{passwordAuthSafeLen=9 passwordHMAC=[686d61]}",
        "ffffffff null 09000000 [686d61] 00000000 ffffffff ffffffff ffffffff"},
    {"CK_KEY_WRAP_SET_OAEP_PARAMS{bBC=255}", "ff000000 null 00000000"},
    {std::string("CK_SSL3_MASTER_KEY_DERIVE_PARAMS{pVersion=CK_VERSION{} ") + NO_RANDOM + "}",
        "null 00000000 null 00000000 [0000]"},
    {std::string("CK_SSL3_KEY_MAT_PARAMS{pReturnedKeyMaterial=CK_SSL3_KEY_MAT_OUT{} ") + NO_RANDOM + "}",
        "00000000 00000000 00000000 00000000 null 00000000 null 00000000 "
        "(ffffffff ffffffff ffffffff ffffffff null null)"},
    {"CK_VERSION{major=255}", "ff00"},
    {"CK_KEY_DERIVATION_STRING_DATA{pData=[0102] len=7}", "[0102] 07000000"},
    {"CK_KEY_DERIVATION_STRING_DATA{}", "null 00000000"},
    {"CK_MECH_TYPE_AND_OBJECT{}", "ffffffff ffffffff"},
    {"CK_DES_CBC_PARAMS{iv=[010203040506070809] data=[11]}", "0102030405060708 1100000000000000"},
    {"CK_DES2_CBC_PARAMS{iv=[] data=[1112131415161718111213141516171821]}",
        "0000000000000000 11121314151617181112131415161718"},
    {"CK_DES3_CBC_PARAMS{iv=[010203040506]}",
        "0102030405060000 000000000000000000000000000000000000000000000000"},
    {"CK_PP_LOAD_SECRET_PARAMS{cConvert=256 cTimeout=300 prompt=[]}", "00ffff00 [00]"},
    {"CK_PP_LOAD_SECRET_PARAMS{cConvert=255 cTimeout=-200}", "00ff3800 null"},
    {"CK_TIMESTAMP_PARAMS{timestampFormat=-2}", "00000000 feffffff"},
    {"CK_REPLICATE_TOKEN_PARAMS{peerId=[0102]}", "01020000000000000000000000000000"},
    {"CK_ECIES_PARAMS{pSharedData1=[0102] pSharedData2=[03]}",
        "00000000 00000000 00000000 null 00000000 00000000 00000000 00000000 00000000 00000000 null"},
    {"CK_ECIES_PARAMS{ulSharedDataLen1=4 pSharedData1=[] ulSharedDataLen2=5}",
        "00000000 00000000 04000000 [] 00000000 00000000 00000000 00000000 00000000 05000000 null"},
    {"CK_ECDH1_DERIVE_PARAMS{pSharedData=[0102] pPublicData=[03]}", "00000000 00000000 null 00000000 null"},
    {"CK_ECDH1_DERIVE_PARAMS{ulSharedDataLen=4 ulPublicDataLen=5 pPublicData=[]}",
        "00000000 04000000 null 05000000 []"},
};

TEST_F(Params, whatIsMissingIsZeroAndWhatIsTooLongIsCut)
{
    for (const ParamRow& row : EDGES) {
        SCOPED_TRACE(row.java);
        const LocalFrame frame(env);
        const HeapWatch heap;
        EXPECT_EQ(given(row), row.native);
        EXPECT_EQ(heap.blocks.size(), 0U);
    }
}

TEST_F(Params, aLengthThatContradictsItsArrayAborts)
{
    struct Row {
        std::string java;
        const char* function;
        const char* expression;
    };
    const std::string master = "CK_SSL3_MASTER_KEY_DERIVE_PARAMS{";
    const std::string keyMat = "CK_SSL3_KEY_MAT_PARAMS{";
    const std::string random = "RandomInfo=CK_SSL3_RANDOM_DATA{pClientRandom=[01] ";
    const std::string badClient = random + "clientRandomLen=2}}";
    const std::string badServer = random + "clientRandomLen=1 serverRandomLen=1}}";
    const Row rows[] = {
        {"CK_RSA_PKCS_OAEP_PARAMS{pSourceData=[01020304] sourceDataLen=5}", "convertRsaPkcsOaepParams",
            "ckpParam->sourceDataLen == ckTemp"},
        {"CK_RSA_PKCS_OAEP_PARAMS{sourceDataLen=1}", "convertRsaPkcsOaepParams",
            "ckpParam->sourceDataLen == ckTemp"},
        {"CK_PBE_PARAMS{pPassword=[01]}", "convertPbeParams", "ckpParam->passwordLen == ckTemp"},
        {"CK_PBE_PARAMS{pSalt=[01] saltLen=2}", "convertPbeParams", "ckpParam->saltLen == ckTemp"},
        {"CK_KEY_WRAP_SET_OAEP_PARAMS{pX=[01] XLen=2}", "convertKeyWrapSetOaepParams",
            "ckpParam->XLen == ckTemp"},
        {master + badClient, "convertSsl3MasterKeyDeriveParams",
            "ckpParam->RandomInfo.clientRandomLen == ckTemp"},
        {master + badServer, "convertSsl3MasterKeyDeriveParams",
            "ckpParam->RandomInfo.serverRandomLen == ckTemp"},
        {keyMat + badClient, "convertSsl3KeyMatParams", "ckpParam->RandomInfo.clientRandomLen == ckTemp"},
        {keyMat + badServer, "convertSsl3KeyMatParams", "ckpParam->RandomInfo.serverRandomLen == ckTemp"},
        {"CK_ECIES_PARAMS{ulSharedDataLen1=2 pSharedData1=[01]}", "convertEcIesParams",
            "ckpParam->ulSharedDataLen1 == ckTemp || ckTemp == 0"},
        {"CK_ECIES_PARAMS{ulSharedDataLen2=1 pSharedData2=[0102]}", "convertEcIesParams",
            "ckpParam->ulSharedDataLen2 == ckTemp || ckTemp == 0"},
        {"CK_ECDH1_DERIVE_PARAMS{ulSharedDataLen=2 pSharedData=[01]}", "convertEcDhParams",
            "ckpParam->ulSharedDataLen == ckTemp || ckTemp == 0"},
        {"CK_ECDH1_DERIVE_PARAMS{ulPublicDataLen=4294967295 pPublicData=[01]}", "convertEcDhParams",
            "ckpParam->ulPublicDataLen == ckTemp || ckTemp == 0"},
    };
    for (const Row& row : rows) {
        const LocalFrame frame(env);
        const jobject parameter = read(env, row.java);
        EXPECT_EQ(
            lastWords([&] { given(parameter, "", 0); }), assertion("convToCK", row.function, row.expression))
            << row.java;
    }
}

TEST_F(Params, aParameterLenOtherThanTheStructuresSizeAborts)
{
    const char* const functions[] = {"freeRsaPkcsOaepParams", "freeRsaPkcsPssParams", "freeLongParam",
        "freeRc2CbcParams", "freeRc2MacGeneralParams", "freePbeParams", "freePKCS12PbeImportParams",
        "freePKCS12PbeExportParams", "freeKeyWrapSetOaepParams", "freeSsl3MasterKeyDeriveParams",
        "freeSsl3KeyMatParams", "freeVersionParam", "freeKeyDerivationStringData", "freeMechTypeAndObject",
        "freeDesCbcParams", "freeDes2CbcParams", "freeDes3CbcParams", "freePpLoadSecretParams",
        "freeTimestampParams", "freeReplicateTokenParams", "freeSecretShareParams", "freeEcIesParams",
        "freeEcDhParams"};
    static_assert(std::size(functions) == std::size(PARAMS));
    for (std::size_t i = 0; i < std::size(PARAMS); ++i) {
        const LocalFrame frame(env);
        std::string structure = PARAMS[i].java.substr(0, PARAMS[i].java.find('{'));
        if (structure == "5L") structure = "CK_ULONG";
        if (structure == "CK_MECH_TYPE_AND_OBJECT") structure = "CK_KEY_DERIVATION_STRING_DATA"; // wanted
        const std::string expression = "paramLen == sizeof(" + structure + ")";
        const jobject parameter = read(env, PARAMS[i].java);
        const auto size = static_cast<jlong>(sizeOfNative(PARAMS[i].native));
        for (const jlong wrong : {size - 1, size + 1, jlong{0}}) {
            EXPECT_EQ(lastWords([&] { given(parameter, "", wrong); }),
                assertion("convToCK", functions[i], expression));
        }
    }
}

TEST_F(Params, aPlaceForTheParameterIsRequired)
{
    const std::string expected = assertion("convToCK", "jMechanismParameterToCKMechanismParameter",
        "ckpParamPtr != ((void *)0) && ckpLength != ((void *)0)");
    CK_VOID_PTR parameter = nullptr;
    CK_ULONG length = 0;
    using zerlin::jMechanismParameterToCKMechanismParameter;
    EXPECT_EQ(lastWords([&] { jMechanismParameterToCKMechanismParameter(env, nullptr, nullptr, &length); }),
        expected);
    EXPECT_EQ(
        lastWords([&] { jMechanismParameterToCKMechanismParameter(env, nullptr, &parameter, nullptr); }),
        expected);
}

TEST_F(Params, whereverAJniCallFailsNothingIsLeft)
{
    for (const ParamRow& row : PARAMS) {
        SCOPED_TRACE(row.java);
        const int failed = failEachJniCall(env, [&] {
            const jobject jMechanism =
                mechanism(env, ANY_TYPE, read(env, row.java), static_cast<jlong>(sizeOfNative(row.native)));
            return [=, this, jSession = session(env), key = object(env, 7)] {
                NATIVE(C_1EncryptInit)(env, nullptr, jSession, jMechanism, key);
            };
        });
        EXPECT_GE(failed, 10);
    }
}

// Without memory for the structure itself the call goes on without a parameter. A structure within it has no
// such fate: what the Cryptoki library is to fill in must not be missing.
TEST_F(Params, whereverMemoryIsMissingNothingIsLeft)
{
    for (const ParamRow& row : PARAMS) {
        SCOPED_TRACE(row.java);
        Lines outcomes = failEachAllocation(env, [&] { return given(row); });
        ASSERT_FALSE(outcomes.empty());
        EXPECT_EQ(outcomes.front(), row.java == "5L" ? NO_MEMORY : "null");
        outcomes.erase(outcomes.begin());
        EXPECT_EQ(outcomes, Lines(outcomes.size(), NO_MEMORY));
    }
}

// The second attribute has no native form: what was made of the first is freed.
TEST_F(Params, aTemplateThatCannotBeConvertedLeavesNothing)
{
    const jobject parameter = read(env, PARAMS[6].java);
    const auto attributes =
        static_cast<jobjectArray>(getObject(env, parameter, "certAttr", "[Lhalvorn/zerlin/CK_ATTRIBUTE;"));
    setObject(env, env->GetObjectArrayElement(attributes, 1), "pValue", "Ljava/lang/Object;",
        make(env, "java/lang/Double", "(D)V", 1.0));
    const HeapWatch heap;
    EXPECT_EQ(given(parameter, "", 32), "not called");
    EXPECT_EQ(takeException(env),
        "java.lang.UnsupportedOperationException: No Conversion from java.lang.Double to a CK type");
    EXPECT_EQ(heap.blocks.size(), 0U);
}

} // namespace
