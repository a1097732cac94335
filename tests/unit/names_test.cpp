// The natives that name constants and return the sizes of mechanism parameters.
#include "halvorn_zerlin_CK_MECHANISM.h"
#include "halvorn_zerlin_CTUtil.h"
#include "halvorn_zerlin_constants_CK.h"
#include "harness/failures.h"
#include "harness/jvm.h"
#include "param_text.h"

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
};
#define CTU(name) Java_halvorn_zerlin_CTUtil_CTU_1Get##name
const NameRow NAMES[] = {
    {"halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", CTU(AttributeTypeString), CTU(AttributeTypeValue), 3,
        "LABEL", "CKA_VALUE", 0x11},
    {"halvorn/zerlin/constants/CK_RV", CTU(ErrorString), CTU(ErrorValue), 0xa3, "PIN expiered",
        "CKR_host memory", 2},
    {"halvorn/zerlin/constants/CK_KEY_TYPE", CTU(KeyTypeString), CTU(KeyTypeValue), 0x18, "CAST128",
        "CKK_CAST5", 0x18},
    {"halvorn/zerlin/constants/CK_MECHANISM_TYPE", CTU(MechanismTypeString), CTU(MechanismTypeValue),
        0x80000201, "MD4", "CKM_PBE_MD5_CAST5_CBC", 0x3a4},
    {"halvorn/zerlin/constants/CK_OBJECT_CLASS", CTU(ObjectClassString), CTU(ObjectClassValue), 0x80000201,
        "CERTIFICATE_REQUEST", "CKO_DATA", 0},
    {"halvorn/zerlin/constants/CK_STATE", CTU(SessionStateString), CTU(SessionStateValue), 4,
        "Read Write Security Officer Functions", "CKM_Read Only Public Session", 0},
};

struct Names : JniTest {
    // The return value, what becomes of an array of that many dots, and the length.
    std::string nameOf(const NameRow& row, jobject value, std::size_t elements, jlong capacity)
    {
        const jobject length = longRef(env, capacity);
        const jbyteArray name = bytes(env, std::string(elements, '.'));
        const CK_RV rv = rvOf(env, row.nameOf(env, nullptr, value, name, length));
        const Bytes written = toVector(env, name);
        return std::to_string(rv) + " " + std::string(written.begin(), written.end()) + " " +
               std::to_string(getLong(env, length, "value"));
    }
    // The value of that name, which must be of the row's class.
    jlong valueOf(const NameRow& row, const std::string& name)
    {
        const jobject value = row.valueOf(env, nullptr, bytes(env, name));
        EXPECT_TRUE(env->IsInstanceOf(value, find(env, row.cls))) << row.cls;
        return getLong(env, value, "m_value");
    }
};

TEST_F(Names, eachKindHasItsOwnTable)
{
    for (const NameRow& row : NAMES) {
        SCOPED_TRACE(row.cls);
        const std::string name = row.name;
        const jobject value = make(env, row.cls, "(J)V", row.value + 0x7'0000'0000);
        EXPECT_EQ(nameOf(row, value, name.size(), 99), "0 " + name + " " + std::to_string(name.size()));
        EXPECT_EQ(nameOf(row, nullptr, 6, 5), "0 null.. 4");
        EXPECT_EQ(nameOf(row, nullptr, 4, -1), "33 .... 4");

        EXPECT_EQ(valueOf(row, name), row.value);
        EXPECT_EQ(valueOf(row, row.prefixed), row.prefixedValue);
        EXPECT_EQ(valueOf(row, name + '\0' + std::string(600, 'A')), row.value);
        EXPECT_EQ(valueOf(row, name + " "), 4294967295);
    }
}

TEST_F(Names, onlyOneConstantIsKnown)
{
    const auto constant = Java_halvorn_zerlin_constants_CK_GetConstantValue;
    EXPECT_EQ(constant(env, nullptr, string(env, "UNAVAILABLE_INFORMATION")), 4294967295);
    EXPECT_EQ(constant(env, nullptr, string(env, "unknown")), 0);
    EXPECT_EQ(takeException(env), "java.lang.UnsupportedOperationException: Constant unknown not recognised");
}

TEST_F(Names, everyParameterHasTheSizeOfItsNativeForm)
{
    const auto sizeOf = [this](jobject parameter) {
        return Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(env, nullptr, parameter);
    };
    for (const ParamRow& row : PARAMS)
        EXPECT_EQ(sizeOf(read(env, row.java)), row.size) << row.java;
    EXPECT_EQ(sizeOf(nullptr), 0);
    EXPECT_EQ(sizeOf(string(env, "abc")), 3);
    EXPECT_EQ(sizeOf(make(env, "java/lang/Boolean", "(Z)V", jboolean{JNI_FALSE})), 1);
    EXPECT_EQ(sizeOf(env->NewCharArray(7)), 7);
    EXPECT_EQ(sizeOf(longs(env, {1})), 0);
    EXPECT_EQ(
        takeException(env), "java.lang.UnsupportedOperationException: No Conversion from [J to a CK type");
}

TEST_F(Names, eachFailureRaisesItsException)
{
    for (const NameRow& row : NAMES) {
        const jobject value = make(env, row.cls, "(J)V", row.value), length = longRef(env, 99);
        const jbyteArray name = bytes(env, row.name);
        const auto nameOf = [&] { return row.nameOf(env, nullptr, value, name, length); };
        const auto valueOf = [&] { return row.valueOf(env, nullptr, name); };
        EXPECT_GT(failEachJniCall(env, [&] { return nameOf; }), 0);
        EXPECT_GT(failEachJniCall(env, [&] { return valueOf; }), 0);
    }
    const auto expectZero = [this](const std::function<jlong()>& native) {
        const auto work = [&] { EXPECT_TRUE(native() == 0 || !env->ExceptionCheck()); };
        failEachJniCall(env, [&] { return work; });
        const auto answered = [&] { return work(), "survived"; };
        for (const std::string& outcome : failEachAllocation(env, answered))
            EXPECT_EQ(outcome, NO_MEMORY);
    };
    for (const char* const name : {"UNAVAILABLE_INFORMATION", "unknown"})
        expectZero([this, text = string(env, name)] {
            return Java_halvorn_zerlin_constants_CK_GetConstantValue(env, nullptr, text);
        });
    for (const jobject parameter : {jobject{string(env, "abc")}, jobject{longs(env, {1})}})
        expectZero([=, this] {
            return Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(env, nullptr, parameter);
        });
}

} // namespace
