// Lookups, what is remembered of them, and the field accessors.
#include "harness/failures.h"
#include "helper/javaNames.h"

namespace {

using namespace jni;
using namespace zerlin;

struct Jutil : JniTest {
    // How many calls that can fail the work makes.
    int calls(const std::function<void()>& work)
    {
        const Watched watched = watch(env, {}, work);
        EXPECT_TRUE(watched.globalRefs.empty()) << "which would keep a class loader alive";
        return watched.calls;
    }
};

TEST_F(Jutil, aNullObjectIsIgnoredAndAMissingFieldRaises)
{
    static constinit JavaClass noClass{"no/such/Class"};
    static constinit JavaField ofNoClass{noClass, "none", "I"};
    static constinit JavaField none{java::LONG_REF.cls, "none", "I"};
    const jobject ref = longRef(env, 5);
    EXPECT_TRUE(zerlin::SetIntField(env, nullptr, none, 1) && zerlin::SetLongField(env, nullptr, none, 1));
    for (const jobject object : {jobject{}, ref}) {
        const auto raised = [&] {
            return takeException(env).starts_with("java.lang.NoSuchFieldError") == (object != nullptr);
        };
        EXPECT_TRUE(zerlin::GetIntField(env, object, none) == -1 && raised());
        EXPECT_TRUE(zerlin::GetByteField(env, object, none) == -1 && raised());
        EXPECT_TRUE(zerlin::GetLongField(env, object, none) == 0xFFFFFFFF && raised());
        EXPECT_TRUE(zerlin::GetObjectField(env, object, none) == nullptr && raised());
        EXPECT_TRUE(zerlin::SetByteField(env, object, none, 1) == (object == nullptr) && raised());
    }
    EXPECT_EQ(zerlin::GetIntField(env, ref, ofNoClass), -1);
    EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: no/such/Class");
}

TEST_F(Jutil, onlySuccessesAreRemembered)
{
    for (int round = 0; round < 2; ++round) {
        const auto work = [&] {
            EXPECT_NE(FindClass(env, java::LONG_REF.cls), nullptr);
            EXPECT_NE(zerlin::GetFieldID(env, java::LONG_REF.value), nullptr);
            EXPECT_NE(zerlin::GetMethodID(env, java::STATE.setValue), nullptr);
        };
        for (int i = 0; i < 2; ++i) {
            watch(env, {.lookup = "halvorn/zerlin/LongRef"}, [&] { FindClass(env, java::LONG_REF.cls); });
            EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: halvorn/zerlin/LongRef");
        }
        EXPECT_EQ(calls(work), 6) << "two classes, two weak references, a field and a method";
        EXPECT_EQ(calls(work), 0);
        forgetLookups(env);
    }
}

} // namespace
