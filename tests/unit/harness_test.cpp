// What the other tests rely on: a complaint of the JVM is seen, a call that was told to fail fails, and a
// line of the recorder says what was passed. With the JDK's own classes only.
#include "double/recorder.h"
#include "faulty_env.h"
#include "jni_helpers.h"
#include "jvm.h"

#include <array>

namespace {

using namespace jni;
using Lines = std::vector<std::string>;

struct Harness : JniTest {};

TEST_F(Harness, aCallWithAnExceptionPendingIsAWarning)
{
    EXPECT_EQ(env->FindClass("no/such/Class"), nullptr);
    env->FindClass("java/lang/Object");
    EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: no/such/Class");
    EXPECT_NE(takeJniWarnings().find("WARNING in native method"), std::string::npos);
    EXPECT_EQ(takeJniWarnings(), "");
}

// Stops at the first exception, as every native must.
void useDate(JNIEnv* env)
{
    const jclass cls = env->FindClass("java/util/Date");
    if (env->ExceptionCheck()) return;
    const jmethodID constructor = env->GetMethodID(cls, "<init>", "(J)V");
    if (env->ExceptionCheck()) return;
    const jobject made = env->NewObject(cls, constructor, jlong{7});
    if (env->ExceptionCheck()) return;
    env->GetFieldID(cls, "fastTime", "J");
    env->DeleteLocalRef(made);
    env->DeleteLocalRef(cls);
}

TEST_F(Harness, eachCallFailsInItsTurn)
{
    Lines failed;
    do {
        const int call = static_cast<int>(failed.size()) + 1;
        const Watched watched = watch(env, {.call = call}, [&] { useDate(env); });
        EXPECT_EQ(takeException(env), watched.failed.empty() ? "" : "java.lang.RuntimeException: injected");
        EXPECT_EQ(watched.violations, Lines{});
        failed.push_back(watched.failed);
    } while (!failed.back().empty() && failed.size() < 10);
    EXPECT_EQ(failed, (Lines{"FindClass", "GetMethodID", "NewObjectV", "GetFieldID", ""}));
}

TEST_F(Harness, aLookupFailsByName)
{
    const std::array<std::array<std::string, 3>, 3> rows = {{
        {"java/util/Date", "FindClass", "java.lang.NoClassDefFoundError: java/util/Date"},
        {"<init>", "GetMethodID", "java.lang.NoSuchMethodError: <init>"},
        {"fastTime", "GetFieldID", "java.lang.NoSuchFieldError: fastTime"},
    }};
    for (const auto& [missing, function, exception] : rows) {
        EXPECT_EQ(watch(env, {.lookup = missing}, [&] { useDate(env); }).failed, function);
        EXPECT_EQ(takeException(env), exception);
    }
    useDate(env);
    EXPECT_EQ(takeException(env), "") << "the real environment is back";
}

TEST_F(Harness, whatIsHeldAndMisusedIsSeen)
{
    const jbyteArray array = bytes(env, {1, 2});
    jobject kept = nullptr;
    jobject global = nullptr;
    jbyte* elements = nullptr;
    const Watched held = watch(env, {}, [&] {
        env->DeleteLocalRef(env->NewStringUTF("gone"));
        kept = env->NewStringUTF("kept");
        env->DeleteLocalRef(env->NewLocalRef(array));
        elements = env->GetByteArrayElements(array, nullptr);
        env->ReleaseByteArrayElements(array, elements, JNI_COMMIT);
        global = env->NewGlobalRef(array);
    });
    EXPECT_EQ(held.localRefs, std::vector<jobject>{kept});
    EXPECT_EQ(held.maxLocalRefs, 2U);
    EXPECT_EQ(held.buffers, std::vector<const void*>{elements});
    EXPECT_EQ(held.globalRefs, std::vector<jobject>{global});
    EXPECT_EQ(held.violations, Lines{});
    env->ReleaseByteArrayElements(array, elements, 0);
    env->DeleteGlobalRef(global);

    const Watched misused = watch(env, {}, [&] {
        jbyte* const again = env->GetByteArrayElements(array, nullptr);
        env->ReleaseByteArrayElements(array, again, JNI_ABORT);
        env->DeleteGlobalRef(env->NewGlobalRef(array));
        env->FindClass("no/such/Class");
        env->GetArrayLength(array);
        env->DeleteLocalRef(array);
    });
    EXPECT_TRUE(misused.buffers.empty());
    EXPECT_TRUE(misused.globalRefs.empty());
    ASSERT_EQ(misused.violations.size(), 2U);
    EXPECT_EQ(misused.violations[0], "GetArrayLength with an exception pending");
    takeException(env);
    takeJniWarnings();
}

TEST_F(Harness, aLineSaysWhatWasPassed)
{
    CK_BYTE data[] = {0x31, 0x32, 0x33};
    CK_BYTE parameter[] = {0xaa};
    CK_BYTE result[16] = {};
    CK_ATTRIBUTE attributes[] = {{3, data, 2}, {0x80000001, nullptr, 0xffffffff}};
    CK_MECHANISM mechanism = {0x1082, parameter, 1};
    CK_ULONG number = 16;
    CK_C_INITIALIZE_ARGS arguments = {};
    arguments.LockMutex = [](CK_VOID_PTR) -> CK_RV { return 0; };
    arguments.flags = CKF_OS_LOCKING_OK;
    CK_BYTE label[32] = {0x6c};
    const std::string reference = recorder::address(data);

    C_Initialize(nullptr);
    C_Initialize(&arguments);
    C_Finalize(data);
    C_GetSlotList(CK_TRUE, &number, &number);
    C_InitToken(1, nullptr, 4, label);
    C_Login(0xffffffff, 1, data, 3);
    C_CreateObject(5, attributes, 2, &number);
    C_FindObjectsInit(5, nullptr, 0);
    C_FindObjects(5, nullptr, 9, &number);
    C_EncryptInit(5, &mechanism, 6);
    C_Encrypt(5, data, 0, nullptr, &number);
    C_EncryptFinal(5, result, &number);
    C_GenerateRandom(5, result, 3);
    C_DeriveKey(5, nullptr, 6, attributes, 1, nullptr);
    recorder::script().byteLimit = 1;
    recorder::script().attributeLimit = 1;
    recorder::script().labelLength = 0;
    CT_InitToken(5, 6, data, 9, label);
    C_SetAttributeValue(5, 6, attributes, 9);
    data[0] = 0; // too late for the lines

    EXPECT_EQ(
        recorder::calls(), (Lines{
                               "C_Initialize(null)",
                               "C_Initialize({null, null, set, null, 2, null})",
                               "C_Finalize(" + reference + ")",
                               "C_GetSlotList(1, out(16))",
                               "C_InitToken(1, null, 4, [6c" + std::string(62, '0') + "])",
                               "C_Login(0xffffffff, 1, [313233], 3)",
                               "C_CreateObject(5, {{3, [3132], 2}, {0x80000001, null, 0xffffffff}}, 2, out)",
                               "C_FindObjectsInit(5, null, 0)",
                               "C_FindObjects(5, null(9), out)",
                               "C_EncryptInit(5, {4226, [aa], 1}, 6)",
                               "C_Encrypt(5, [], 0, null(16))",
                               "C_EncryptFinal(5, out(16))",
                               "C_GenerateRandom(5, out(3))",
                               "C_DeriveKey(5, null, 6, {{3, [3132], 2}}, 1, null)",
                               "CT_InitToken(5, 6, [31..], 9, [])",
                               "C_SetAttributeValue(5, 6, {{3, [31..], 2}, ..}, 9)",
                           }));
}

TEST_F(Harness, theScriptAnswers)
{
    CK_ULONG size = 0;
    recorder::script().result = CKR_DEVICE_ERROR;
    recorder::script().C_GetObjectSize = [](CK_SESSION_HANDLE, CK_OBJECT_HANDLE,
                                             CK_ULONG_PTR pulSize) -> CK_RV {
        *pulSize = recorder::calls().size();
        return CKR_OK;
    };
    EXPECT_EQ(C_Logout(1), CKR_DEVICE_ERROR);
    EXPECT_EQ(C_GetObjectSize(1, 2, &size), CKR_OK);
    EXPECT_EQ(size, 2U) << "a handler runs after its call was noted";
    recorder::reset();
    EXPECT_EQ(C_GetObjectSize(1, 2, &size), CKR_OK);
    EXPECT_EQ(size, 2U) << "no handler, nothing written";
    EXPECT_EQ(recorder::calls(), Lines{"C_GetObjectSize(1, 2, out)"});
}

} // namespace
