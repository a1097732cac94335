// The natives that name constants and tell the sizes of mechanism parameters.
#include "failures.h"
#include "halvorn_zerlin_CK_MECHANISM.h"
#include "halvorn_zerlin_CTUtil.h"
#include "halvorn_zerlin_constants_CK.h"
#include "jvm.h"
#include "param_text.h"

#include <limits>

namespace {

using namespace jni;

struct NameRow {
    const char* cls;
    jobject(JNICALL* nameOf)(JNIEnv*, jclass, jobject, jbyteArray, jobject);
    jobject(JNICALL* valueOf)(JNIEnv*, jclass, jbyteArray);
    jlong value;
    const char* name;
    const char* prefixed;
    jlong prefixedValue;
    const char* ofForeign; // the name of an object of another class
};
#define CTU(name) Java_halvorn_zerlin_CTUtil_CTU_1Get##name
const char* const FOREIGN = "Vendor defined (0xffffffff)";
const NameRow NAMES[] = {
    {"halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", CTU(AttributeTypeString), CTU(AttributeTypeValue), 3,
        "LABEL", "CKA_VALUE", 0x11, "CLASS"},
    {"halvorn/zerlin/constants/CK_RV", CTU(ErrorString), CTU(ErrorValue), 0xa3, "PIN expiered",
        "CKR_host memory", 2, FOREIGN},
    {"halvorn/zerlin/constants/CK_KEY_TYPE", CTU(KeyTypeString), CTU(KeyTypeValue), 0x18, "CAST128",
        "CKK_CAST5", 0x18, FOREIGN},
    {"halvorn/zerlin/constants/CK_MECHANISM_TYPE", CTU(MechanismTypeString), CTU(MechanismTypeValue),
        0x80000201, "MD4", "CKM_PBE_MD5_CAST5_CBC", 0x3a4, FOREIGN},
    {"halvorn/zerlin/constants/CK_OBJECT_CLASS", CTU(ObjectClassString), CTU(ObjectClassValue), 0x80000201,
        "CERTIFICATE_REQUEST", "CKO_DATA", 0, FOREIGN},
    {"halvorn/zerlin/constants/CK_STATE", CTU(SessionStateString), CTU(SessionStateValue), 4,
        "Read Write Security Officer Functions", "CKM_Read Only Public Session", 0, FOREIGN},
};

struct Names : JniTest {
    std::string nameOf(const NameRow& row, jobject value)
    {
        const jobject length = longRef(env, 100);
        const jbyteArray name = bytes(env, Bytes(100, 0));
        EXPECT_EQ(rvOf(env, row.nameOf(env, nullptr, value, name, length)), CKR_OK);
        const std::string text = reinterpret_cast<const char*>(toVector(env, name).data());
        EXPECT_EQ(getLong(env, length, "value"), static_cast<jlong>(text.size()));
        return text;
    }
    // The value of the row's own class that has the name.
    jlong valueOf(const NameRow& row, jbyteArray name)
    {
        const jobject value = row.valueOf(env, nullptr, name);
        check(env, row.name);
        EXPECT_TRUE(env->IsInstanceOf(value, find(env, row.cls))) << row.cls;
        return getLong(env, value, "m_value");
    }
    jlong sizeOf(jobject parameter)
    {
        return Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(env, nullptr, parameter);
    }
    jlong constant(jstring name)
    {
        return Java_halvorn_zerlin_constants_CK_GetConstantValue(env, nullptr, name);
    }
};

TEST_F(Names, eachKindHasItsOwnTable)
{
    for (const NameRow& row : NAMES) {
        SCOPED_TRACE(row.cls);
        const auto constantOf = [&](jlong value) { return make(env, row.cls, "(J)V", value); };
        EXPECT_EQ(nameOf(row, constantOf(row.value)), row.name);
        EXPECT_EQ(nameOf(row, constantOf(row.value + 0x7'0000'0000)), row.name);
        EXPECT_EQ(nameOf(row, constantOf(0x7fffffff)), "UNKNOWN (0x7fffffff)");
        EXPECT_EQ(nameOf(row, constantOf(0x80009999)), "Vendor defined (0x80009999)");
        EXPECT_EQ(nameOf(row, nullptr), "null");
        EXPECT_EQ(nameOf(row, longRef(env, 3)), row.ofForeign);

        const std::string name = row.name;
        EXPECT_EQ(valueOf(row, bytes(env, name)), row.value);
        EXPECT_EQ(valueOf(row, bytes(env, row.prefixed)), row.prefixedValue);
        EXPECT_EQ(valueOf(row, bytes(env, name + '\0' + "rest")), row.value);
        EXPECT_EQ(valueOf(row, bytes(env, name + '\0' + std::string(600, 'A'))), row.value);
        for (const std::string& unknown : {std::string(), name + " ", "cka_" + name, std::string(600, 'A')})
            EXPECT_EQ(valueOf(row, bytes(env, unknown)), 4294967295) << unknown;
        EXPECT_EQ(rvOf(env, row.valueOf(env, nullptr, nullptr)), CKR_ARGUMENTS_BAD);
    }
}

TEST_F(Names, theCapacityIsASigned64BitNumber)
{
    struct Row {
        int elements; // of the Java array; -1 for none
        jlong capacity;
        CK_RV rv;
        const char* written;
    };
    const Row rows[] = {
        {4, 4, CKR_OK, "null"},
        {6, 5, CKR_OK, "null.."},
        {2, 9, CKR_OK, "nu"},
        {0, 4, CKR_OK, ""},
        {4, 0x1'0000'0002, CKR_OK, "null"},
        {4, 3, CKR_DATA_LEN_RANGE, "...."},
        {4, 0, CKR_DATA_LEN_RANGE, "...."},
        {4, -1, CKR_DATA_LEN_RANGE, "...."},
        {4, std::numeric_limits<jlong>::min(), CKR_DATA_LEN_RANGE, "...."},
        {-1, -1, CKR_OK, ""},
        {-1, 0, CKR_OK, ""},
        {-1, 99, CKR_OK, ""},
    };
    for (const NameRow& names : NAMES) {
        for (const Row& row : rows) {
            const LocalFrame frame(env);
            const jobject length = longRef(env, row.capacity);
            const jbyteArray name =
                row.elements < 0 ? nullptr
                                 : bytes(env, std::string(static_cast<std::size_t>(row.elements), '.'));
            EXPECT_EQ(rvOf(env, names.nameOf(env, nullptr, nullptr, name, length)), row.rv);
            EXPECT_EQ(getLong(env, length, "value"), 4);
            if (name == nullptr) continue;
            const Bytes written = toVector(env, name);
            EXPECT_EQ(std::string(written.begin(), written.end()), row.written);
        }
        EXPECT_EQ(
            rvOf(env, names.nameOf(env, nullptr, nullptr, bytes(env, "x"), nullptr)), CKR_ARGUMENTS_BAD);
    }
}

TEST_F(Names, oneConstantIsKnown)
{
    EXPECT_EQ(constant(string(env, "UNAVAILABLE_INFORMATION")), 4294967295);
    for (const std::string name : {"unavailable_information", "CK_UNAVAILABLE_INFORMATION", "",
             "UNAVAILABLE_INFORMATION ", "UNAVAILABLE_INFORMATIO", "%s%n \xc3\xa9"}) {
        EXPECT_EQ(constant(string(env, name.c_str())), 0);
        EXPECT_EQ(takeException(env),
            "java.lang.UnsupportedOperationException: Constant " + name + " not recognised");
    }
    EXPECT_EQ(constant(nullptr), 0);
    EXPECT_EQ(takeException(env).substr(0, 31), "java.lang.NullPointerException:");
    const jstring known = string(env, "UNAVAILABLE_INFORMATION");
    env->ThrowNew(find(env, "java/lang/IllegalStateException"), "from before");
    EXPECT_EQ(constant(known), 0);
    EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from before");
}

TEST_F(Names, everyParameterHasTheSizeOfItsNativeForm)
{
    for (const ParamRow& row : PARAMS)
        EXPECT_EQ(sizeOf(read(env, row.java)), static_cast<jlong>(sizeOfNative(row.native))) << row.java;
    const jchar withNul[] = {'a', 0, 0xe9};
    struct Row {
        jobject parameter;
        jlong size;
    };
    const Row rows[] = {
        {nullptr, 0},
        {object(env, 5), 4},
        {bytes(env, ""), 0},
        {bytes(env, std::string(300, 'x')), 300},
        {string(env, ""), 0},
        {string(env, "abc"), 3},
        {env->NewString(withNul, 3), 5},
        {make(env, "java/lang/Boolean", "(Z)V", jboolean{JNI_FALSE}), 1},
        {env->NewCharArray(0), 0},
        {env->NewCharArray(7), 7},
    };
    for (const Row& row : rows)
        EXPECT_EQ(sizeOf(row.parameter), row.size);
}

TEST_F(Names, aParameterWithoutANativeFormHasNoSize)
{
    const std::pair<jobject, const char*> rows[] = {
        {make(env, "java/lang/Integer", "(I)V", jint{5}), "java.lang.Integer"},
        {env->NewIntArray(2), "[I"},
        {longs(env, {1}), "[J"},
        {mechanismType(env, 1), "halvorn.zerlin.constants.CK_MECHANISM_TYPE"},
        {make(env, "halvorn/zerlin/params/CK_SSL3_RANDOM_DATA"), "halvorn.zerlin.params.CK_SSL3_RANDOM_DATA"},
    };
    for (const auto& [parameter, name] : rows) {
        EXPECT_EQ(sizeOf(parameter), 0);
        EXPECT_EQ(
            takeException(env), std::string("java.lang.UnsupportedOperationException: No Conversion from ") +
                                    name + " to a CK type");
    }
}

TEST_F(Names, everyClassIsLookedForBeforeTheParameterIs)
{
    for (const char* path : {"halvorn/zerlin/params/CK_RSA_PKCS_OAEP_PARAMS", "java/lang/Boolean", "[C"}) {
        JNI_OnUnload(jvm(), nullptr);
        watch(env, {.lookup = path}, [&] { EXPECT_EQ(sizeOf(nullptr), 0); });
        EXPECT_EQ(takeException(env), std::string("java.lang.NoClassDefFoundError: ") + path);
    }
}

TEST_F(Names, whereverAJniCallFailsItsExceptionComesOut)
{
    const jobject integer = make(env, "java/lang/Integer", "(I)V", jint{5});
    const jobject version = make(env, "halvorn/zerlin/CK_VERSION");
    const jstring known = string(env, "UNAVAILABLE_INFORMATION");
    const jstring unknown = string(env, "unknown");
    const jbyteArray name = bytes(env, std::string(20, '.'));
    const jobject length = longRef(env, 20);
    const jclass unsupported = find(env, "java/lang/UnsupportedOperationException");
    // The refusals throw when no call fails.
    const auto refused = [&](jlong answer) {
        EXPECT_EQ(answer, 0);
        const jthrowable thrown = env->ExceptionOccurred();
        env->ExceptionClear();
        if (!env->IsInstanceOf(thrown, unsupported)) env->Throw(thrown);
    };
    const auto answers = [&](jlong answer, jlong expected) {
        EXPECT_EQ(answer, env->ExceptionCheck() ? 0 : expected);
    };
    std::vector<std::function<void()>> works = {
        [&] { answers(sizeOf(version), 2); },
        [&] { answers(constant(known), 4294967295); },
        [&] { refused(sizeOf(integer)); },
        [&] { refused(constant(unknown)); },
    };
    for (const NameRow& row : NAMES) {
        works.push_back([&] { row.nameOf(env, nullptr, nullptr, name, length); });
        works.push_back([&] { row.valueOf(env, nullptr, name); });
    }
    for (const auto& work : works)
        EXPECT_GE(failEachJniCall(env, [&] { return work; }), 2);
}

TEST_F(Names, withoutMemoryTheMessageIsAnother)
{
    const jobject integer = make(env, "java/lang/Integer", "(I)V", jint{5});
    const auto sized = [&] { return std::to_string(sizeOf(integer)); };
    EXPECT_EQ(failEachAllocation(env, sized), Lines(2, NO_MEMORY));
    const jstring unknown = string(env, "unknown");
    EXPECT_EQ(
        failEachAllocation(env, [&] { return std::to_string(constant(unknown)); }), Lines(2, NO_MEMORY));
    const jstring known = string(env, "UNAVAILABLE_INFORMATION");
    EXPECT_EQ(failEachAllocation(env, [&] { return std::to_string(constant(known)); }), Lines(1, NO_MEMORY));
}

} // namespace
