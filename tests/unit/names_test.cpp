// The natives that name constants and return the sizes of mechanism parameters.
#include "halvorn_zerlin_CK_MECHANISM.h"
#include "halvorn_zerlin_CTUtil.h"
#include "halvorn_zerlin_constants_CK.h"
#include "harness/failures.h"
#include "harness/jvm.h"
#include "param_text.h"

namespace {

using namespace jni;

struct NamedClass {
    const char* path;
    jobject(JNICALL* nameOf)(JNIEnv*, jclass, jobject, jbyteArray, jobject);
    jobject(JNICALL* valueOf)(JNIEnv*, jclass, jbyteArray);
    jlong value;
    std::string name;
    const char* prefix;
};
#define CTU(kind)                                                                                            \
    Java_halvorn_zerlin_CTUtil_CTU_1Get##kind##String, Java_halvorn_zerlin_CTUtil_CTU_1Get##kind##Value
const NamedClass NAMED_CLASSES[] = {
    {"halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", CTU(AttributeType), 3, "LABEL", "CKA_"},
    {"halvorn/zerlin/constants/CK_RV", CTU(Error), 0xa3, "PIN expiered", "CKR_"},
    {"halvorn/zerlin/constants/CK_KEY_TYPE", CTU(KeyType), 0x18, "CAST128", "CKK_"},
    {"halvorn/zerlin/constants/CK_MECHANISM_TYPE", CTU(MechanismType), 0x80000201, "MD4", "CKM_"},
    {"halvorn/zerlin/constants/CK_OBJECT_CLASS", CTU(ObjectClass), 0x80000202, "CRL", "CKO_"},
    {"halvorn/zerlin/constants/CK_STATE", CTU(SessionState), 1, "Read Only User Functions", "CKM_"},
};

struct Names : JniTest {
    // The return value, what becomes of an array of that many dots, or of none, and the length.
    std::string nameOf(const NamedClass& row, jobject value, int elements, jlong capacity)
    {
        const jobject length = longRef(env, capacity);
        const jbyteArray name = elements < 0 ? nullptr : bytes(env, std::string(elements, '.'));
        const CK_RV rv = rvOf(env, row.nameOf(env, nullptr, value, name, length));
        const Bytes written = name == nullptr ? Bytes() : toVector(env, name);
        return std::to_string(rv) + " " + std::string(written.begin(), written.end()) + " " +
               std::to_string(getLong(env, length, "value"));
    }
};

TEST_F(Names, eachKindHasItsOwnTable)
{
    for (const NamedClass& row : NAMED_CLASSES) {
        SCOPED_TRACE(row.path);
        const std::string name = row.name, length = ' ' + std::to_string(name.size());
        const int size = static_cast<int>(name.size());
        const jobject value = make(env, row.path, "(J)V", row.value + 0x7'0000'0000);
        EXPECT_EQ(nameOf(row, value, -1, 0), "0 " + length);
        EXPECT_EQ(nameOf(row, value, size, size), "0 " + name + length);
        EXPECT_EQ(nameOf(row, value, size, size - 1), "33 " + std::string(name.size(), '.') + length);
        EXPECT_EQ(nameOf(row, nullptr, 6, 5), "0 null.. 4");
        EXPECT_EQ(nameOf(row, nullptr, 4, -1), "33 .... 4");
        EXPECT_EQ(rvOf(env, row.nameOf(env, nullptr, value, nullptr, nullptr)), CKR_ARGUMENTS_BAD);
        EXPECT_EQ(rvOf(env, row.valueOf(env, nullptr, nullptr)), CKR_ARGUMENTS_BAD);

        const std::string known = text(env, {make(env, row.path, "(J)V", row.value)});
        const std::string unknown = text(env, {make(env, row.path, "(J)V", jlong{4294967295})});
        const auto valueOf = [&](const std::string& text) {
            return row.valueOf(env, nullptr, bytes(env, text));
        };
        for (const std::string& text : {name, row.prefix + name, name + '\0' + std::string(600, 'A')})
            EXPECT_EQ(jni::text(env, {valueOf(text)}), known) << text;
        for (const std::string& text : {name + ' ', std::string(512, 'A'), std::string(600, 'A')})
            EXPECT_EQ(jni::text(env, {valueOf(text)}), unknown) << text;
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
    for (const NamedClass& row : NAMED_CLASSES) {
        SCOPED_TRACE(row.path);
        const jobject value = make(env, row.path, "(J)V", row.value), length = longRef(env, 99);
        const jbyteArray name = bytes(env, row.name);
        const auto nameOf = [&] { return row.nameOf(env, nullptr, value, name, length); };
        const auto valueOf = [&] { return row.valueOf(env, nullptr, name); };
        EXPECT_GT(failEachJniCall(env, [&] { return nameOf; }), 0);
        EXPECT_GT(failEachJniCall(env, [&] { return valueOf; }), 0);
    }
    const auto constant = Java_halvorn_zerlin_constants_CK_GetConstantValue;
    const auto sizeOf = Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize;
    const jstring known = string(env, "UNAVAILABLE_INFORMATION"), other = string(env, "other");
    const jobject wrong = longs(env, {1});
    const std::function<jlong()> natives[] = {[&] { return constant(env, nullptr, known); },
        [&] { return constant(env, nullptr, other); }, [&] { return sizeOf(env, nullptr, other); },
        [&] { return sizeOf(env, nullptr, wrong); }};
    for (const auto& native : natives) {
        const auto expectZero = [&] { EXPECT_TRUE(native() == 0 || !env->ExceptionCheck()); };
        failEachJniCall(env, [&] { return expectZero; });
        for (const std::string& outcome : failEachAllocation(env, [&] { return expectZero(), ""; }))
            EXPECT_EQ(outcome, NO_MEMORY);
    }
}

} // namespace
