// Mechanisms and their parameters as the Cryptoki library receives them, and what is left of them afterwards.
#include "harness/failures.h"
#include "param_text.h"
#include "values.h"

namespace {

using namespace jni;

using Params = JniTest;

// Nulls, short and long arrays, limits, and lengths that may differ from those of their arrays.
const ParamRow EDGES[] = {
    {"CK_RSA_PKCS_OAEP_PARAMS null 0 null null 0", 20, "ffffffff 00000000 ffffffff null 00000000"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS [6175] 9 null 8 null 0 ( 7 null 4294967305 ) 1", 32,
        "[6175] 09000000 null 08000000 null 00000000 [07000000ffffffff09000000] [01000000]"},
    {"CK_DES2_CBC_PARAMS [] [1112131415161718111213141516171821]", 24,
        "0000000000000000 11121314151617181112131415161718"},
    {"CK_PP_LOAD_SECRET_PARAMS null 255 -200 null", 8, "00ff3800 null"},
    {"CK_REPLICATE_TOKEN_PARAMS [0102]", 16, "01020000000000000000000000000000"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ( 7 ) 0", 32,
        "null 00000000 null 00000000 null 00000000 null [00000000]"},
    {"CK_ECIES_PARAMS 0 0 4 [] 0 0 0 0 0 5 null", 44,
        "00000000 00000000 04000000 [] 00000000 00000000 00000000 00000000 00000000 05000000 null"},
};

// Also when the Cryptoki library calls back into Java and an exception is pending.
TEST_F(Params, everyClassBecomesItsStructureAndNothingIsLeft)
{
    initialiseWithCallbacks(env);
    std::vector<ParamRow> rows(std::begin(PARAMS), std::end(PARAMS));
    rows.insert(rows.end(), std::begin(EDGES), std::end(EDGES));
    for (const ParamRow& row : rows) {
        SCOPED_TRACE(row.java);
        const LocalFrame frame(env);
        const jobject jMechanism = mechanism(env, 4225, read(env, row.java), row.size);
        const HeapWatch heap;
        EXPECT_EQ(given(env, read(env, row.java), row.size, row.native), row.native);
        recorder::script().C_DigestInit = [this](auto, auto) {
            env->ThrowNew(find(env, "java/lang/IllegalStateException"), "from within");
            return CKR_OK;
        };
        EXPECT_EQ(call(NATIVE(C_1DigestInit), session(env), jMechanism)(env), nullptr);
        EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
        EXPECT_EQ(heap.blocks.size(), 0U);
        for (const std::string& block : heap.freed)
            EXPECT_EQ(block.find_first_not_of('\0'), block.npos) << "not overwritten";
    }
}

TEST_F(Params, aLengthThatContradictsItsArrayAborts)
{
    const struct {
        const char* java;
        const char* function;
        const char* length;
    } rows[] = {
        {"CK_RSA_PKCS_OAEP_PARAMS 1 1 1 null 1", "convertRsaPkcsOaepParams", "sourceDataLen == ckTemp"},
        {"CK_PBE_PARAMS null [01] 0 null 0 0", "convertPbeParams", "passwordLen == ckTemp"},
        {"CK_PBE_PARAMS null null 0 [01] 2 0", "convertPbeParams", "saltLen == ckTemp"},
        {"CK_KEY_WRAP_SET_OAEP_PARAMS 0 [01] 2", "convertKeyWrapSetOaepParams", "XLen == ckTemp"},
        {"CK_SSL3_MASTER_KEY_DERIVE_PARAMS CK_SSL3_RANDOM_DATA [01] 2 null 0 null",
            "convertSsl3MasterKeyDeriveParams", "RandomInfo.clientRandomLen == ckTemp"},
        {"CK_SSL3_KEY_MAT_PARAMS 0 0 0 0 CK_SSL3_RANDOM_DATA [01] 1 null 1 null", "convertSsl3KeyMatParams",
            "RandomInfo.serverRandomLen == ckTemp"},
        {"CK_ECIES_PARAMS 0 0 2 [01] 0 0 0 0 0 0 null", "convertEcIesParams",
            "ulSharedDataLen1 == ckTemp || ckTemp == 0"},
        {"CK_ECIES_PARAMS 0 0 0 null 0 0 0 0 0 1 [0102]", "convertEcIesParams",
            "ulSharedDataLen2 == ckTemp || ckTemp == 0"},
        {"CK_ECDH1_DERIVE_PARAMS 0 0 null 2 [01]", "convertEcDhParams",
            "ulPublicDataLen == ckTemp || ckTemp == 0"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(lastWords([&] { given(env, read(env, row.java), 0, ""); }),
            assertion("convToCK", row.function, std::string("ckpParam->") + row.length));
}

TEST_F(Params, aParameterLenOtherThanTheStructuresSizeAborts)
{
    for (const ParamRow& row : PARAMS) {
        std::string structure = row.java.substr(0, row.java.find(' '));
        if (structure == "5") structure = "CK_ULONG";
        if (structure == "CK_MECH_TYPE_AND_OBJECT") structure = "CK_KEY_DERIVATION_STRING_DATA"; // deliberate
        const std::string function = std::string("free") + row.function;
        EXPECT_EQ(lastWords([&] { given(env, read(env, row.java), row.size + 1, ""); }),
            assertion("convToCK", function, "paramLen == sizeof(" + structure + ")"));
    }
}

// Without memory for the structure itself the call goes on with a null parameter. A nested structure must not
// be missing, because the Cryptoki library writes into it.
TEST_F(Params, aFailedJniCallOrAllocationLeavesNothing)
{
    recorder::script().byteLimit = 0; // the lines would differ by addresses
    const auto sweep = [this](jobject parameter, jlong size) {
        const jobject jMechanism = mechanism(env, 4225, parameter, size);
        failEachJniCall(env, [&, jSession = session(env), key = object(env, 7)] {
            return [=, this] { return NATIVE(C_1EncryptInit)(env, nullptr, jSession, jMechanism, key); };
        });
    };
    for (const ParamRow& row : PARAMS) {
        SCOPED_TRACE(row.java);
        const jobject large = read(env, filled(row.java, 2600, "78"));
        sweep(large, row.size);
        Lines outcomes = failEachAllocation(env, [&] { return given(env, large, row.size, row.native); });
        const auto arrays = [](const std::string& text) { return std::ranges::count(text, '['); };
        EXPECT_GE(outcomes.size(), std::min(arrays(row.java), arrays(row.native)));
        if (!outcomes.empty() && outcomes[0] == "null") outcomes[0] = NO_MEMORY;
        EXPECT_EQ(outcomes, Lines(outcomes.size(), NO_MEMORY));
    }
    // The deepest nesting of conversions: values of an unknown class in a template in a parameter.
    std::string known;
    for (int i = 0; i < 8; ++i)
        known += "CK_ATTRIBUTE 3 [61] 1 ";
    const jobject nested = read(env, "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 ( " + known +
                                         "CK_ATTRIBUTE 3 CK_VERSION 3 1 4 ) 9 null null");
    sweep(nested, 32);
    EXPECT_EQ(call(NATIVE(C_1DigestInit), session(env), mechanism(env, 1, nested, 32))(env), nullptr);
    EXPECT_EQ(takeException(env).substr(0, 39), "java.lang.UnsupportedOperationException");
}

TEST_F(Params, aParameterWithoutAStructureIsABareValue)
{
    const struct {
        jobject parameter;
        jlong parameterLen;
        const char* shown;
    } rows[] = {
        {bytes(env, {1, 2, 3, 4}), -1, "[01020304..], 0xffffffff"},
        {make(env, "java/lang/Boolean", "(Z)V", jboolean{JNI_TRUE}), 1, "[01], 1"},
        {string(env, "abc"), 4, "[61626300], 4"},
        {object(env, 0x700000009), 4, "[09000000], 4"},
        {mechanismType(env, 544), 4, "[20020000], 4"},
    };
    recorder::script().byteLimit = 4;
    for (const auto& row : rows) {
        const jobject jMechanism = mechanism(env, 0x780000001, row.parameter, row.parameterLen);
        const std::string line = std::string("C_DigestInit(41, {0x80000001, ") + row.shown + "})";
        const HeapWatch heap;
        expectCall(env, call(NATIVE(C_1DigestInit), session(env), jMechanism), line);
        EXPECT_EQ(heap.blocks.size(), 0U);
    }
}

// The one deliberate leak. The test frees the memory, so that the leak checker does not report it.
TEST_F(Params, theParameterOfTypeZeroIsNeverFreed)
{
    recorder::script().byteLimit = 0;
    for (const jobject parameter : {read(env, "[01]"), read(env, PARAMS[1].java)}) {
        HeapWatch heap;
        const jobject jMechanism = mechanism(env, CKM_RSA_PKCS_KEY_PAIR_GEN, parameter, 99);
        EXPECT_EQ(rvOf(env, NATIVE(C_1DigestInit)(env, nullptr, session(env), jMechanism)), CKR_OK);
        ASSERT_EQ(heap.blocks.size(), 1U);
        std::free(heap.blocks.begin()->first);
    }
}

} // namespace
