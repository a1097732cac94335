// Mechanisms on their way to the Cryptoki library and back to the heap: the parameter by its class, the
// length that counts, and who frees when.
#include "failures.h"
#include "helper/convToCK.h"
#include "jvm.h"
#include "param_text.h"

namespace {

using namespace jni;

struct Mechanisms : JniTest {
    std::string line(jobject jMechanism, const std::string& shown)
    {
        const std::string expected = "C_DigestInit(41, " + shown + ")";
        const HeapWatch heap;
        expectCall(env, call(NATIVE(C_1DigestInit), session(env), jMechanism), expected);
        EXPECT_EQ(heap.blocks.size(), 0U);
        return expected;
    }
    jobject boxed(const char* path, const char* signature, auto value)
    {
        return make(env, path, signature, value);
    }
};

TEST_F(Mechanisms, aParameterWithoutAStructureIsABareValue)
{
    const jcharArray chars = env->NewCharArray(2);
    const jchar letters[] = {'a', 0x162};
    env->SetCharArrayRegion(chars, 0, 2, letters);
    struct Row {
        jobject parameter;
        jlong parameterLen;
        const char* shown;
    };
    const Row rows[] = {
        {nullptr, 0, "null, 0"},
        {nullptr, 7, "null, 7"},
        {bytes(env, {1, 2, 3, 4}), 4, "[01020304], 4"},
        {bytes(env, {1, 2, 3, 4}), 2, "[0102], 2"},
        {bytes(env, {1, 2, 3, 4}), 9, "[01020304..], 9"},
        {bytes(env, {1, 2, 3, 4}), -1, "[01020304..], 0xffffffff"},
        {bytes(env, ""), 0, "[], 0"},
        {boxed("java/lang/Integer", "(I)V", jint{-2}), 4, "[feffffff], 4"},
        {boxed("java/lang/Boolean", "(Z)V", jboolean{JNI_TRUE}), 1, "[01], 1"},
        {boxed("java/lang/Byte", "(B)V", jbyte{-2}), 1, "[fe], 1"},
        {string(env, "abc"), 4, "[61626300], 4"},
        {longs(env, {1}), 4, "[01000000], 4"},
        {chars, 2, "[6162], 2"},
        {object(env, 0x700000009), 4, "[09000000], 4"},
        {mechanismType(env, 544), 4, "[20020000], 4"},
    };
    recorder::script().byteLimit = 4;
    for (const Row& row : rows) {
        line(mechanism(env, 4225, row.parameter, row.parameterLen), std::string("{4225, ") + row.shown + "}");
    }
}

TEST_F(Mechanisms, theTypeIsTheObjectsValue)
{
    line(mechanism(env, 0x780000001, nullptr, 0), "{0x80000001, null, 0}");
    line(mechanism(env, jobject{}, bytes(env, {1}), 1), "{0xffffffff, [01], 1}");
    const CK_MECHANISM none = zerlin::jMechanismToCKMechanism(env, nullptr);
    EXPECT_EQ(none.mechanism, 0U);
    EXPECT_EQ(none.pParameter, nullptr);
    EXPECT_EQ(none.ulParameterLen, 0U);
}

TEST_F(Mechanisms, aParameterOfAnUnknownClassIsRefused)
{
    struct Row {
        jobject parameter;
        const char* exception;
    };
    const Row rows[] = {
        {boxed("java/lang/Double", "(D)V", 1.0),
            "java.lang.UnsupportedOperationException: No Conversion from java.lang.Double to a CK type"},
        {mechanism(env, 1, nullptr, 0), "java.lang.UnsupportedOperationException: No Conversion from "
                                        "halvorn.zerlin.CK_MECHANISM to a CK type"},
        {boxed("java/lang/Character", "(C)V", jchar{'a'}), "java.lang.NoClassDefFoundError: java/lang/Char"},
    };
    for (const Row& row : rows) {
        const HeapWatch heap;
        const jobject jMechanism = mechanism(env, 4225, row.parameter, 4);
        EXPECT_EQ(NATIVE(C_1DigestInit)(env, nullptr, session(env), jMechanism), nullptr);
        EXPECT_EQ(takeException(env), row.exception);
        EXPECT_EQ(heap.blocks.size(), 0U);
    }
    EXPECT_EQ(recorder::calls(), Lines{});
}

// The one leak that is accepted: freed here, so that the leak checker has nothing to say.
TEST_F(Mechanisms, theParameterOfTypeZeroIsNeverFreed)
{
    recorder::script().byteLimit = 0;
    for (const jobject parameter : {read(env, "[01]"), read(env, PARAMS[1].java)}) {
        HeapWatch heap;
        const jobject jMechanism = mechanism(env, jlong{CKM_RSA_PKCS_KEY_PAIR_GEN}, parameter, 99);
        EXPECT_EQ(rvOf(env, NATIVE(C_1DigestInit)(env, nullptr, session(env), jMechanism)), CKR_OK);
        ASSERT_EQ(heap.blocks.size(), 1U);
        std::free(heap.blocks.begin()->first);
    }
}

TEST_F(Mechanisms, aPendingExceptionIsKeptAndTheParameterIsFreedAllTheSame)
{
    std::vector<jobject> parameters = {bytes(env, {1, 2})};
    for (const ParamRow& row : PARAMS)
        parameters.push_back(read(env, row.java));
    recorder::script().C_DigestInit = [this](auto, auto) {
        env->ThrowNew(find(env, "java/lang/IllegalStateException"), "from within");
        return CKR_OK;
    };
    recorder::script().byteLimit = 0;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const LocalFrame frame(env);
        const CK_ULONG size = i == 0 ? 2 : sizeOfNative(PARAMS[i - 1].native);
        const jobject jMechanism = mechanism(env, 4225, parameters[i], static_cast<jlong>(size));
        const jobject jSession = session(env);
        const HeapWatch heap;
        for (const bool remembers : {true, false}) {
            const Watched watched = watch(env, {},
                [&] { EXPECT_EQ(NATIVE(C_1DigestInit)(env, nullptr, jSession, jMechanism), nullptr); });
            EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
            EXPECT_EQ(watched.violations, Lines{});
            EXPECT_EQ(heap.blocks.size(), 0U);
            if (remembers) JNI_OnUnload(jvm(), nullptr);
        }
    }
}

TEST_F(Mechanisms, freeingTakesTheClassFromTheJavaObject)
{
    const jobject jMechanism = mechanism(env, 4225, read(env, "5L"), 4);
    CK_MECHANISM native = {4225, nullptr, 4};
    zerlin::FreeCKMechanismParameter(env, jMechanism, &native);
    native = zerlin::jMechanismToCKMechanism(env, jMechanism);
    ASSERT_NE(native.pParameter, nullptr);
    const HeapWatch heap;
    setObject(env, jMechanism, "pParameter", "Ljava/lang/Object;", nullptr);
    zerlin::FreeCKMechanismParameter(env, jMechanism, &native);
    EXPECT_EQ(*static_cast<CK_ULONG*>(native.pParameter), 5U) << "there is no parameter to free";
    setObject(env, jMechanism, "pParameter", "Ljava/lang/Object;", bytes(env, {1}));
    native.ulParameterLen = 99; // of a bare value no length is required
    zerlin::FreeCKMechanismParameter(env, jMechanism, &native);
}

} // namespace
