// The natives that name constants and return the sizes of mechanism parameters.
#include "halvorn_zerlin_CK_MECHANISM.h"
#include "halvorn_zerlin_constants_CK.h"
#include "native_table.h"

namespace {

using namespace jni;

struct Names : JniTest {};

constexpr jlong NONE{static_cast<jlong>(~CK_ULONG{0})};

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

TEST_F(Names, ofEachClassAreItsOwnAndLeadBackToItsValues)
{
    for (const auto& [path, nameOf, valueOf, number, name, prefix] : NAMED_CLASSES) {
        SCOPED_TRACE(path);
        const auto size = static_cast<jlong>(name.size());
        const jobject value = make(env, path, "(J)V", number + HIGH_HALF), length = longRef(env, 0);
        const jbyteArray room = bytes(env, name), null = bytes(env, "null..");
        const std::string dots(name.size(), '.');
        const std::tuple<jobject, jbyteArray, jlong, CK_RV, jbyteArray, jlong> rows[] = {
            {value, nullptr, 0, CKR_OK, nullptr, size},
            {value, bytes(env, dots), size, CKR_OK, room, size},
            {value, bytes(env, dots), size - 1, CKR_DATA_LEN_RANGE, bytes(env, dots), size},
            {nullptr, bytes(env, "......"), 5, CKR_OK, null, 4},
            {nullptr, bytes(env, "...."), -1, CKR_DATA_LEN_RANGE, bytes(env, "...."), 4},
        };
        for (const auto& [named, array, capacity, rv, after, lengthAfter] : rows) {
            setLong(env, length, "value", capacity);
            EXPECT_EQ(rvOf(env, nameOf(env, nullptr, named, array, length)), rv);
            EXPECT_EQ(text(env, {array, length}), text(env, {after, longRef(env, lengthAfter)}));
        }
        EXPECT_EQ(rvOf(env, nameOf(env, nullptr, value, nullptr, nullptr)), CKR_ARGUMENTS_BAD);
        EXPECT_EQ(rvOf(env, valueOf(env, nullptr, nullptr)), CKR_ARGUMENTS_BAD);

        for (const std::string& known : {name, prefix + name, name + '\0' + std::string(600, 'A')})
            EXPECT_EQ(getLong(env, valueOf(env, nullptr, bytes(env, known)), "m_value"), number) << known;
        for (const std::string& unknown : {name + ' ', std::string(512, 'A')})
            EXPECT_EQ(text(env, {valueOf(env, nullptr, bytes(env, unknown))}),
                text(env, {make(env, path, "(J)V", NONE)}));
        setLong(env, length, "value", 99);
        failEachJniCall(env, [&] { return [&] { return nameOf(env, nullptr, value, room, length); }; });
        failEachJniCall(env, [&] { return [&] { return valueOf(env, nullptr, room); }; });
    }
}

TEST_F(Names, onlyOneConstantIsKnownAndEveryParameterHasTheSizeOfItsNativeForm)
{
    const auto constant = [this](const char* name) {
        return Java_halvorn_zerlin_constants_CK_GetConstantValue(env, nullptr, string(env, name));
    };
    const auto sizeOf = [this](jobject parameter) {
        return Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(env, nullptr, parameter);
    };
    EXPECT_EQ(constant("UNAVAILABLE_INFORMATION"), NONE);
    EXPECT_EQ(constant("unknown"), 0);
    EXPECT_EQ(takeException(env), "java.lang.UnsupportedOperationException: Constant unknown not recognised");
    for (const ParamRow& row : PARAMS)
        EXPECT_EQ(sizeOf(read(env, row.java)), row.size) << row.java;
    EXPECT_EQ(sizeOf(nullptr), 0);
    EXPECT_EQ(sizeOf(string(env, "abc")), 3);
    EXPECT_EQ(sizeOf(longs(env, {1})), 0);
    EXPECT_EQ(
        takeException(env), "java.lang.UnsupportedOperationException: No Conversion from [J to a CK type");
    failEach(env, "constant", [&] { return constant("unknown"); });
    failEach(env, "size", [&, wrong = longs(env, {1})] { return sizeOf(wrong); });
}

} // namespace
