// Lookups and their memory, the field accessors, class names and the exceptions that the library throws.
#include "conversion_cases.h"
#include "faulty_env.h"
#include "helper/jutil.h"

#include <atomic>
#include <cstdlib>
#include <functional>
#include <latch>
#include <thread>
#include <utility>

namespace {

using namespace cases;
using namespace jni;

struct Jutil : JniTest {
    // How many calls that can fail the work makes.
    int calls(const std::function<void()>& work)
    {
        const Watched watched = watch(env, {}, work);
        EXPECT_TRUE(watched.violations.empty());
        EXPECT_TRUE(watched.globalRefs.empty()) << "which would keep a class loader alive";
        return watched.calls;
    }
};

constexpr const char* NO_SUCH_FIELD = "java.lang.NoSuchFieldError";

std::string takeExceptionClass(JNIEnv* env)
{
    const std::string text = takeException(env);
    return text.substr(0, text.find(':'));
}

// What the accessors are called with that cannot be read; only a missing field leaves an exception.
struct Unreadable {
    jclass cls;
    jobject object;
    std::string exception = "";
};

std::vector<Unreadable> unreadable(JNIEnv* env, jclass cls, jobject object)
{
    return {{nullptr, object}, {cls, nullptr}, {find(env, "java/lang/Object"), object, NO_SUCH_FIELD}};
}

// A pair of accessors, tried on a new object of that class; the expected values follow what is stored.
template <typename Value, typename Plain>
void tryAccessors(JNIEnv* env, const char* path, Literal field,
    Value (*get)(JNIEnv*, jclass, jobject, Literal), bool (*set)(JNIEnv*, jclass, jobject, Literal, Value),
    Plain (*plainGet)(JNIEnv*, jobject, const char*), void (*plainSet)(JNIEnv*, jobject, const char*, Plain),
    Plain stored, Value read, Plain storedAgain)
{
    SCOPED_TRACE(path);
    const jclass cls = find(env, path);
    const jobject object = make(env, path);
    plainSet(env, object, field.text, stored);
    EXPECT_EQ(get(env, cls, object, field), read);
    for (const Unreadable& bad : unreadable(env, cls, object)) {
        EXPECT_EQ(get(env, bad.cls, bad.object, field), static_cast<Value>(-1));
        EXPECT_EQ(takeExceptionClass(env), bad.exception);
        set(env, bad.cls, bad.object, field, Value{3});
        EXPECT_EQ(takeExceptionClass(env), bad.exception);
    }
    EXPECT_EQ(plainGet(env, object, field.text), stored);
    set(env, cls, object, field, read);
    EXPECT_EQ(plainGet(env, object, field.text), storedAgain);
}

TEST_F(Jutil, numberFields)
{
    tryAccessors<jint, jint>(env, "java/util/concurrent/atomic/AtomicInteger", "value", zerlin::GetIntField,
        zerlin::SetIntField, getInt, setInt, -7, -7, -7);
    tryAccessors<CK_ULONG, jlong>(env, "halvorn/zerlin/LongRef", "value", zerlin::GetLongField,
        zerlin::SetLongField, getLong, setLong, 0x5FFFFFFFF, ALL_ONES, 4294967295);
    tryAccessors<jbyte, jbyte>(
        env, VERSION, "minor", zerlin::GetByteField, zerlin::SetByteField, getByte, setByte, -56, -56, -56);
}

TEST_F(Jutil, objectFields)
{
    const jobject date = DATES[0].make(env);
    const jobject list = make(env, "java/util/ArrayList");
    const auto year = [&](jclass cls, jobject object) { return GetByteArrayField(env, cls, object, "year"); };
    const auto elements = [&](jclass cls, jobject object) {
        return GetObjectArrayField(env, cls, object, "elementData", "[Ljava/lang/Object;");
    };
    EXPECT_EQ(toVector(env, year(find(env, "halvorn/zerlin/CK_DATE"), date)), (Bytes{'2', '0', '2', '4'}));
    EXPECT_TRUE(env->IsSameObject(elements(find(env, "java/util/ArrayList"), list),
        getObject(env, list, "elementData", "[Ljava/lang/Object;")));
    for (const Unreadable& bad : unreadable(env, find(env, "halvorn/zerlin/LongRef"), date)) {
        EXPECT_EQ(year(bad.cls, bad.object), nullptr);
        EXPECT_EQ(takeExceptionClass(env), bad.exception);
        EXPECT_EQ(elements(bad.cls, bad.object), nullptr);
        EXPECT_EQ(takeExceptionClass(env), bad.exception);
    }
}

TEST_F(Jutil, lookupsAreRemembered)
{
    const jobject ref = make(env, "halvorn/zerlin/LongRef");
    const jobject state = holder(env, STATE, 0);
    const auto work = [&] {
        SetLongField(env, FindClass(env, "halvorn/zerlin/LongRef"), ref, "value", 5);
        setLongValue(env, FindClass(env, "halvorn/zerlin/constants/CK_STATE"), state, 6);
        EXPECT_FALSE(env->ExceptionCheck());
    };
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(getLong(env, ref, "value"), 0);
        // In both rounds: two classes, two weak references, a field, a method and its call.
        EXPECT_EQ(calls(work), 7);
        EXPECT_EQ(calls(work), 1) << "the call alone";
        EXPECT_EQ(getLong(env, ref, "value"), 5);
        EXPECT_EQ(getLong(env, state, "m_value"), 6);
        setLong(env, ref, "value", 0);
        forgetLookups(env);
    }
}

TEST_F(Jutil, onlySuccessesAreRemembered)
{
    struct Row {
        const char* missing;
        std::function<bool()> isFound;
        std::string exception;
    };
    const auto ref = [&] { return FindClass(env, "halvorn/zerlin/LongRef"); };
    const auto state = [&] { return FindClass(env, "halvorn/zerlin/constants/CK_STATE"); };
    const Row rows[] = {
        {"halvorn/zerlin/LongRef", [&] { return ref() != nullptr; }, "java.lang.NoClassDefFoundError: "},
        {"value", [&] { return zerlin::GetFieldID(env, ref(), "value", "J") != nullptr; },
            "java.lang.NoSuchFieldError: "},
        {"setValue", [&] { return zerlin::GetMethodID(env, state(), "setValue", "(J)V") != nullptr; },
            "java.lang.NoSuchMethodError: "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.missing);
        for (int i = 0; i < 2; ++i) {
            bool isFound = true;
            const auto look = [&] { isFound = row.isFound(); };
            EXPECT_TRUE(watch(env, {.lookup = row.missing}, look).violations.empty());
            EXPECT_FALSE(isFound);
            EXPECT_EQ(takeException(env), row.exception + row.missing);
        }
        EXPECT_TRUE(row.isFound());
        EXPECT_EQ(calls(row.isFound), 0);
    }
    env->ThrowNew(find(env, "java/lang/RuntimeException"), "earlier");
    const auto look = [&] {
        EXPECT_EQ(FindClass(env, "halvorn/zerlin/CK_INFO"), nullptr);
        EXPECT_EQ(zerlin::GetFieldID(env, ref(), "value", "I"), nullptr);
    };
    EXPECT_EQ(calls(look), 0) << "with an exception pending";
    EXPECT_EQ(takeException(env), "java.lang.RuntimeException: earlier");
}

// A reference that is not from FindClass may name another class later on, with the same field elsewhere.
TEST_F(Jutil, foreignClassReferencesAreNotRemembered)
{
    jclass used[2] = {};
    for (int i = 0; i < 2; ++i) {
        const LocalFrame frame(env);
        const char* const path = i == 0 ? "halvorn/zerlin/CK_INFO" : "halvorn/zerlin/CK_TOKEN_INFO";
        const jclass cls = used[i] = find(env, path);
        const jobject object = make(env, path);
        EXPECT_EQ(calls([&] { SetLongField(env, cls, object, "flags", 5); }), 1);
        EXPECT_EQ(calls([&] { SetLongField(env, cls, object, "flags", 6); }), 1);
        EXPECT_EQ(getLong(env, object, "flags"), 6);
    }
    EXPECT_EQ(used[0], used[1]) << "the JVM used to give the freed reference out again";
}

// More addresses of the same few texts than any program has.
template <std::size_t>
constexpr char STRING_PATH[] = "java/lang/String";
template <std::size_t>
constexpr char METHOD_NAME[] = "indexOf";

template <std::size_t... I>
int wrongLookups(JNIEnv* env, std::index_sequence<I...>)
{
    const jclass cls = FindClass(env, "java/lang/String");
    const jclass other = FindClass(env, "java/lang/StringBuilder");
    const char* const signatures[] = {"(I)I", "(Ljava/lang/String;)I"};
    const jmethodID methods[] = {env->GetMethodID(cls, "indexOf", signatures[0]),
        env->GetMethodID(cls, "indexOf", signatures[1]), env->GetMethodID(other, "indexOf", signatures[1])};
    const auto isWrong = [&](jclass found, jmethodID first, jmethodID second, jmethodID third) {
        const bool isRight = env->IsSameObject(found, cls);
        if (env->GetObjectRefType(found) == JNILocalRefType) env->DeleteLocalRef(found);
        return !isRight || first != methods[0] || second != methods[1] || third != methods[2];
    };
    return (0 + ... +
            isWrong(FindClass(env, STRING_PATH<I>), zerlin::GetMethodID(env, cls, METHOD_NAME<I>, "(I)I"),
                zerlin::GetMethodID(env, cls, METHOD_NAME<I>, "(Ljava/lang/String;)I"),
                zerlin::GetMethodID(env, other, METHOD_NAME<I>, "(Ljava/lang/String;)I")));
}

TEST_F(Jutil, moreLookupsThanTheMemoryHolds)
{
    const auto look = [&] { EXPECT_EQ(wrongLookups(env, std::make_index_sequence<600>()), 0); };
    const int first = calls(look);
    const int second = calls(look);
    EXPECT_LT(second, first) << "what there was room for is still remembered";
    EXPECT_GT(second, 600);
    forgetLookups(env);
    EXPECT_EQ(calls(look), first);
    EXPECT_EQ(calls(look), second);
}

// One thread's first use of a class or field while others use it or meet it for the first time too.
TEST_F(Jutil, threadsMeetTheSameLookups)
{
    constexpr int threads = 8;
    std::atomic<int> wrong = 0;
    for (int round = 0; round < 25; ++round) {
        forgetLookups(env);
        std::latch start(threads);
        const auto work = [&](std::size_t first) {
            const AttachedThread thread;
            const LocalFrame frame(thread.env);
            start.arrive_and_wait();
            for (std::size_t i = 0; i < std::size(TYPED_CLASSES); ++i) {
                const TypedClass& typed = TYPED_CLASSES[(first + i) % std::size(TYPED_CLASSES)];
                const CK_ULONG value = first * 1000 + i;
                wrong += typed.toCK(thread.env, typed.toJava(thread.env, value)) != value;
            }
            for (const Record& record : RECORDS) {
                const Bytes native = record.bytes(record.fields.size());
                Bytes copied(record.size, UNTOUCHED);
                const jobject object = make(thread.env, record.path);
                record.toJava(thread.env, native.data(), object);
                record.toCK(thread.env, object, copied.data());
                wrong += copied != native || thread.env->ExceptionCheck();
            }
        };
        std::vector<std::jthread> running;
        for (std::size_t i = 0; i < threads; ++i) {
            running.emplace_back(work, i);
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(Jutil, classNames)
{
    for (const auto& [object, wanted] : {std::pair{make(env, VERSION), "halvorn.zerlin.CK_VERSION"},
             {holders(env, HANDLE, {1}), "[Lhalvorn.zerlin.CK_OBJECT_HANDLE;"}, {bytes(env, {1}), "[B"},
             {find(env, "java/lang/Object"), "java.lang.Class"}}) {
        char* const name = GetClassName(env, object);
        EXPECT_STREQ(name, wanted);
        std::free(name);
    }
}

TEST_F(Jutil, exceptions)
{
    const std::string prefix = "java.lang.UnsupportedOperationException: ";
    throwUnsupported(env, "Constant %s not recognised", "%s%n");
    EXPECT_EQ(takeException(env), prefix + "Constant %s%n not recognised");
    const std::string thousand(1000, 'x');
    throwUnsupported(env, "Can not copy from CK type to %s", thousand.c_str());
    EXPECT_EQ(takeException(env), prefix + "Can not copy from CK type to " + thousand);
    throwUnsupportedClass(env, "No Conversion from %s to a CK type", bytes(env, {1}));
    EXPECT_EQ(takeException(env), prefix + "No Conversion from [B to a CK type");
    throwOutOfMemory(env);
    EXPECT_EQ(takeExceptionClass(env), "java.lang.OutOfMemoryError");
}

} // namespace
