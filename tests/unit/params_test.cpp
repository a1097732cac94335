// Mechanisms and their parameters as the Cryptoki library receives them, and what is left of them afterwards.
#include "digest.h"
#include "param_text.h"
#include "values.h"

namespace {

using namespace jni;
using Params = JniTest;

const std::string NONE = std::to_string(~CK_ULONG{0});
const std::string LOW = std::to_string(static_cast<CK_ULONG>(0x1'00000009));

// Nulls, short and long arrays, limits, and lengths that may differ from those of their arrays.
const std::pair<std::string, std::string> EDGES[] = {
    {"CK_RSA_PKCS_OAEP_PARAMS null 0 null null 0", NONE + " 0 " + NONE + " null 0"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS [6175] 9 null 8 null 0 ( 7 null 4294967305 ) 1",
        "[6175] 9 null 8 null 0 (7 " + NONE + " " + LOW + ") (1)"},
    {"CK_DES2_CBC_PARAMS [] [1112131415161718111213141516171821]",
        ".000000000000000011121314151617181112131415161718"},
    {"CK_PP_LOAD_SECRET_PARAMS null 255 -200 null", ".00ff38 null"},
    {"CK_REPLICATE_TOKEN_PARAMS [0102]", ".01020000000000000000000000000000"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ( 7 ) 0", "null 0 null 0 null 0 null (0)"},
    {"CK_ECIES_PARAMS 0 0 4 [] 0 0 0 0 0 5 null", "0 0 4 [] 0 0 0 0 0 5 null"},
};

// Also when the Cryptoki library calls back into Java and an exception is pending.
TEST_F(Params, everyClassBecomesItsStructureAndNothingIsLeft)
{
    initialiseWithCallbacks(env);
    std::vector<ParamRow> rows(std::begin(PARAMS), std::end(PARAMS));
    for (const auto& [java, native] : EDGES)
        rows.push_back({java, rowOf(java).size, native});
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

TEST_F(Params, aLengthThatContradictsItsArrayOrItsStructureAborts)
{
    std::vector<std::pair<std::string, bool>> rows = {{"CK_RSA_PKCS_OAEP_PARAMS 1 1 1 null 1", false},
        {"CK_PBE_PARAMS null [01] 0 null 0 0", false}, {"CK_PBE_PARAMS null null 0 [01] 2 0", false},
        {"CK_KEY_WRAP_SET_OAEP_PARAMS 0 [01] 2", false},
        {"CK_SSL3_MASTER_KEY_DERIVE_PARAMS CK_SSL3_RANDOM_DATA [01] 2 null 0 null", false},
        {"CK_SSL3_KEY_MAT_PARAMS 0 0 0 0 CK_SSL3_RANDOM_DATA [01] 1 null 1 null", false},
        {"CK_ECIES_PARAMS 0 0 2 [01] 0 0 0 0 0 0 null", false},
        {"CK_ECIES_PARAMS 0 0 0 null 0 0 0 0 0 1 [0102]", false},
        {"CK_ECDH1_DERIVE_PARAMS 0 0 null 2 [01]", false}};
    for (const ParamRow& row : PARAMS)
        rows.emplace_back(row.java, true);
    std::string lines; // deliberate: CK_MECH_TYPE_AND_OBJECT is named CK_KEY_DERIVATION_STRING_DATA
    for (const auto& [java, isLonger] : rows)
        lines += lastWords([&] { given(env, read(env, java), rowOf(java).size + isLonger, ""); });
    EXPECT_EQ(digest(lines), "32 lines, 1233226504") << lines;
}

// Without memory for the structure itself the call goes on with a null parameter. A nested structure must not
// be missing, because the Cryptoki library writes into it.
TEST_F(Params, aFailedJniCallOrAllocationLeavesNothing)
{
    recorder::script().byteLimit = 0; // the lines would differ by addresses
    // The deepest nesting of conversions: values of an unknown class in a template in a parameter.
    std::string nested = "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 ( ";
    for (int i = 0; i < 8; ++i)
        nested += "CK_ATTRIBUTE 3 [61] 1 ";
    std::vector<ParamRow> rows(std::begin(PARAMS), std::end(PARAMS));
    rows.push_back(
        {nested + "CK_ATTRIBUTE 3 CK_VERSION 3 1 4 ) 9 null null", sizeof(CK_PKCS12_PBE_IMPORT_PARAMS)});
    for (const ParamRow& row : rows) {
        SCOPED_TRACE(row.java);
        const jobject large = read(env, filled(row.java, 2600, "78"));
        const jobject jMechanism = mechanism(env, 4225, large, row.size);
        failEachJniCall(env, [&, jSession = session(env), key = object(env, 7)] {
            return [=, this] { return NATIVE(C_1EncryptInit)(env, nullptr, jSession, jMechanism, key); };
        });
        if (&row == &rows.back()) continue;
        Lines outcomes = failEachAllocation(env, [&] { return given(env, large, row.size, row.native); });
        const auto arrays = [](const std::string& text) { return std::ranges::count(text, '['); };
        EXPECT_GE(outcomes.size(), std::min(arrays(row.java), arrays(row.native)));
        if (!outcomes.empty() && outcomes[0] == "null") outcomes[0] = NO_MEMORY;
        EXPECT_EQ(outcomes, Lines(outcomes.size(), NO_MEMORY));
    }
    EXPECT_EQ(given(env, read(env, rows.back().java), rows.back().size, ""), "not called");
    EXPECT_TRUE(takeException(env).starts_with("java.lang.UnsupportedOperationException"));
}

// The one deliberate leak. The test frees the memory, so that the leak checker does not report it.
TEST_F(Params, theParameterOfTypeZeroIsNeverFreed)
{
    HeapWatch heap;
    const jobject parameter = read(env, PARAMS[2].java);
    const jobject jMechanism = mechanism(env, CKM_RSA_PKCS_KEY_PAIR_GEN, parameter, 1);
    EXPECT_EQ(rvOf(env, NATIVE(C_1DigestInit)(env, nullptr, session(env), jMechanism)), CKR_OK);
    ASSERT_EQ(heap.blocks.size(), 1U);
    std::free(heap.blocks.begin()->first);
}

} // namespace
