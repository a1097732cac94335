// Mechanisms that are passed to the Cryptoki library: parameters that are no structure, and when parameters
// are freed.
#include "harness/failures.h"
#include "harness/jvm.h"
#include "param_text.h"
#include "values.h"

namespace {

using namespace jni;

struct Mechanisms : JniTest {};

TEST_F(Mechanisms, aParameterWithoutAStructureIsABareValue)
{
    struct Row {
        jobject parameter;
        jlong parameterLen;
        const char* shown;
    };
    const Row rows[] = {
        {bytes(env, {1, 2, 3, 4}), -1, "[01020304..], 0xffffffff"},
        {make(env, "java/lang/Boolean", "(Z)V", jboolean{JNI_TRUE}), 1, "[01], 1"},
        {string(env, "abc"), 4, "[61626300], 4"},
        {object(env, 0x700000009), 4, "[09000000], 4"},
        {mechanismType(env, 544), 4, "[20020000], 4"},
    };
    recorder::script().byteLimit = 4;
    for (const Row& row : rows) {
        const jobject jMechanism = mechanism(env, 0x780000001, row.parameter, row.parameterLen);
        const std::string line = std::string("C_DigestInit(41, {0x80000001, ") + row.shown + "})";
        const HeapWatch heap;
        expectCall(env, call(NATIVE(C_1DigestInit), session(env), jMechanism), line);
        EXPECT_EQ(heap.blocks.size(), 0U);
    }
}

// The one deliberate leak. The test frees the memory, so that the leak checker does not report it.
TEST_F(Mechanisms, theParameterOfTypeZeroIsNeverFreed)
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

// The deepest nesting of conversions: a value of an unknown class in a template in a parameter.
TEST_F(Mechanisms, nestedConversionsHoldFewReferencesAtOnce)
{
    const jobject label = attribute(env, 3, bytes(env, "abc"), 3);
    const jobject unknown = attribute(env, 3, longRef(env, 1), 4);
    const jobject parameter = alloc(env, "halvorn/zerlin/params/CK_PKCS12_PBE_IMPORT_PARAMS");
    for (std::size_t known = 0; known < 8; ++known) {
        std::vector<jobject> elements(known, label);
        elements.push_back(unknown);
        setObject(env, parameter, "certAttr", "[Lhalvorn/zerlin/CK_ATTRIBUTE;", attributes(env, elements));
        const Call made = call(NATIVE(C_1DigestInit), session(env), mechanism(env, 1, parameter, 32));
        const Watched watched = watch(env, {}, [&] { EXPECT_EQ(made(env), nullptr); });
        EXPECT_LE(watched.maxLocalRefs, 16U);
        EXPECT_EQ(takeException(env).substr(0, 39), "java.lang.UnsupportedOperationException");
    }
}

TEST_F(Mechanisms, aPendingExceptionIsKeptAndTheParameterIsFreed)
{
    initialiseWithCallbacks(env);
    recorder::script().byteLimit = 0;
    recorder::script().C_DigestInit = [this](auto, auto) {
        env->ThrowNew(find(env, "java/lang/IllegalStateException"), "from within");
        return CKR_OK;
    };
    for (const ParamRow& row : PARAMS) {
        const jobject jMechanism = mechanism(env, 4225, read(env, row.java), row.size);
        const jobject jSession = session(env);
        const HeapWatch heap;
        EXPECT_EQ(NATIVE(C_1DigestInit)(env, nullptr, jSession, jMechanism), nullptr);
        EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
        EXPECT_EQ(heap.blocks.size(), 0U);
    }
}

} // namespace
