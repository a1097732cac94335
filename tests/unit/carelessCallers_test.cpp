// Callers that declare more than they have, objects that change during a call, and libraries that report what
// is not there: nothing of the process is read or written for them.
#include "halvorn_zerlin_CTUtil.h"
#include "harness/failures.h"
#include "param_text.h"
#include "values.h"

#include <cerrno>
#include <unistd.h>

namespace {

using namespace jni;

// What stands in for a length that no test can afford; the calls on this thread alone.
jsize reportedLength = 0;

struct CarelessCallers : JniTest {
    // Makes the call while every array seems to have that many elements.
    jobject callWithLength(const Call& made, jsize length)
    {
        const JNINativeInterface_* const real = env->functions;
        JNINativeInterface_ table = *real;
        reportedLength = length;
        table.GetArrayLength = [](JNIEnv*, jarray) { return reportedLength; };
        env->functions = &table;
        const jobject rv = made(env);
        env->functions = real;
        return rv;
    }
};

// How many bytes from there on are zero before one that is not, or that nobody may read.
struct Zeroes {
    std::size_t count = 0;
    bool endsInaccessible = false;
};

Zeroes zeroesFrom(const void* place, std::size_t limit)
{
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    Zeroes zeroes;
    char byte = 0;
    for (const auto* next = static_cast<const char*>(place); zeroes.count < limit; ++next, ++zeroes.count) {
        zeroes.endsInaccessible = write(ends[1], next, 1) != 1;
        if (zeroes.endsInaccessible || read(ends[0], &byte, 1) != 1 || byte != 0) break;
    }
    close(ends[0]);
    close(ends[1]);
    return zeroes;
}

TEST_F(CarelessCallers, sizesThatWrapAreNotAllocated)
{
    const jobjectArray array = attributes(env, {attribute(env, 3, bytes(env, "x"), 1)});
    recorder::script().isQuiet = true;
    // 12 bytes each, or 1: both come to a few bytes in 32 bits.
    for (const jsize length : {357913942, 0x7FFFFFFF}) {
        EXPECT_EQ(callWithLength(call(NATIVE(C_1FindObjectsInit), session(env), array, 1), length), nullptr);
        EXPECT_EQ(takeException(env), NO_MEMORY) << length;
    }
    // A capacity that is too big for any buffer: no call, and the LongRef stays.
    for (const jlong capacity : {jlong{0x7FFFFFFF}, jlong{0x80000000}, jlong{0xFFFFFFFF}}) {
        const jobject length = longRef(env, capacity);
        EXPECT_EQ(rvOf(env, call(NATIVE(C_1GetSlotList), 0, longs(env, {1}), length)(env)), CKR_HOST_MEMORY);
        EXPECT_EQ(getLong(env, length, "value"), capacity);
    }
    EXPECT_EQ(recorder::calls().size(), 0U);
}

TEST_F(CarelessCallers, declaredLengthsMeetZeroesAndThenAFence)
{
    Zeroes behind;
    std::size_t misalignment = 0;
    // Within the call: the memory is gone afterwards.
    const auto look = [&](const void* buffer, std::size_t size) {
        behind = zeroesFrom(static_cast<const char*>(buffer) + size, 1 << 20);
        misalignment = reinterpret_cast<std::uintptr_t>(buffer) % 16;
        return CKR_OK;
    };
    recorder::Script& script = recorder::script();
    script.isQuiet = true;
    script.C_CreateObject = [&](auto, CK_ATTRIBUTE_PTR made, auto, auto) { return look(made->pValue, 8); };
    script.C_SetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR made, auto) {
        return look(made->pValue, 8);
    };
    script.C_FindObjectsInit = [&](auto, CK_ATTRIBUTE_PTR made, auto) { return look(made, sizeof *made); };
    script.C_DigestUpdate = [&](auto, CK_BYTE_PTR made, auto) { return look(made, 8); };
    script.C_DigestInit = [&](auto, CK_MECHANISM_PTR made) { return look(made->pParameter, 8); };

    const jbyteArray eight = bytes(env, "12345678");
    const jobject type = make(env, "halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", "(J)V", jlong{17});
    for (const jlong declared : {jlong{4000}, jlong{0xFFFFFFFF}}) {
        const jobjectArray one = attributes(env, {attribute(env, 17, eight, declared)});
        const jobjectArray empty = attributes(env, {attribute(env, 0, nullptr, 0)});
        const jobject iv = mechanism(env, jlong{44}, eight, declared);
        const auto bareValue = Java_halvorn_zerlin_CTUtil_CTU_1SetAttributeValue;
        const struct {
            const char* name;
            Call made;
            std::size_t element = 1; // its size, of what is declared
            std::size_t size = 8;    // of what is there
        } rows[] = {
            {"a value in a template", call(NATIVE(C_1CreateObject), session(env), one, 1, object(env, 0))},
            {"data", call(NATIVE(C_1DigestUpdate), session(env), eight, declared)},
            {"a bare parameter", call(NATIVE(C_1DigestInit), session(env), iv)},
            {"a bare value", call(bareValue, session(env), object(env, 1), type, eight, declared)},
            {"records", call(NATIVE(C_1FindObjectsInit), session(env), empty, declared), sizeof(CK_ATTRIBUTE),
                sizeof(CK_ATTRIBUTE)},
        };
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name + (", declared as " + std::to_string(declared)));
            const std::uint64_t all = static_cast<std::uint64_t>(declared) * row.element;
            const auto fenced = static_cast<std::size_t>(std::min<std::uint64_t>(all, 64 << 10));
            EXPECT_EQ(rvOf(env, row.made(env)), CKR_OK);
            EXPECT_GE(behind.count, fenced - row.size);
            EXPECT_LE(behind.count, fenced - row.size + 15);
            EXPECT_TRUE(behind.endsInaccessible);
            EXPECT_EQ(misalignment, 0U);
        }
    }
}

TEST_F(CarelessCallers, labelsHaveRoomForTheirStandardLength)
{
    recorder::script().isQuiet = true;
    Zeroes behind;
    recorder::script().C_InitToken = [&](auto, auto, auto, CK_UTF8CHAR_PTR pLabel) {
        EXPECT_EQ(std::memcmp(pLabel, "label", 5), 0);
        behind = zeroesFrom(pLabel + 5, 27);
        return CKR_OK;
    };
    call(NATIVE(C_1InitToken), 0, nullptr, 0, bytes(env, "label"))(env);
    EXPECT_EQ(behind.count, 27U);
}

// The library reports a length beyond the value, and changes its pointer; the caller has put a longer array
// there.
TEST_F(CarelessCallers, attributesAreWrittenBackFromTheirOwnBuffersOnly)
{
    const jobject attr = attribute(env, 17, bytes(env, "1234"), 4);
    const jbyteArray longer = env->NewByteArray(100000);
    recorder::script().isQuiet = true;
    recorder::script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
        std::memcpy(pTemplate->pValue, "abcd", 4);
        pTemplate->ulValueLen = 100000;
        pTemplate->pValue = &pTemplate;
        setObject(env, attr, "pValue", "Ljava/lang/Object;", longer);
        return CKR_OK;
    };
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1GetAttributeValue), session(env), object(env, 1),
                            attributes(env, {attr}), 1)(env)),
        CKR_OK);
    EXPECT_EQ(getLong(env, attr, "valueLen"), 100000);
    Bytes expected(100000);
    std::memcpy(expected.data(), "abcd", 4);
    EXPECT_EQ(toVector(env, longer), expected);
}

// A length that is no multiple of the elements' leaves mechanism types alone, also when it is above their
// size.
TEST_F(CarelessCallers, anUnavailableLengthLeavesMechanismTypesAlone)
{
    const jobject type = mechanismType(env, 0x1'80000abc);
    const jobject types = objects(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", {type});
    const jobject attr = attribute(env, 0x40000600, types, 4);
    recorder::script().isQuiet = true;
    recorder::script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
        pTemplate->ulValueLen = CK_UNAVAILABLE_INFORMATION;
        return CKR_ATTRIBUTE_SENSITIVE;
    };
    call(NATIVE(C_1GetAttributeValue), session(env), object(env, 1), attributes(env, {attr}), 1)(env);
    EXPECT_EQ(getLong(env, attr, "valueLen"), 0xFFFFFFFF);
    EXPECT_EQ(getLong(env, type, "m_value"), 0x1'80000abc) << "not even the same value is written";
}

// A byte[] parameter that becomes a CK_PBE_PARAMS during the call is not read as that structure.
TEST_F(CarelessCallers, aParameterThatChangesItsClassIsNotWrittenBack)
{
    const jobject changed = mechanism(env, jlong{0x3A1}, bytes(env, "an address of 24 bytes!!"), 24);
    const jobject pbe = make(env, "halvorn/zerlin/params/CK_PBE_PARAMS");
    setObject(env, pbe, "pInitVector", "[B", bytes(env, "12345678"));
    recorder::script().isQuiet = true;
    recorder::script().C_GenerateKey = [&](auto...) {
        setObject(env, changed, "pParameter", "Ljava/lang/Object;", pbe);
        return CKR_OK;
    };
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1GenerateKey), session(env), changed, nullptr, 0, object(env, 0))(env)),
        CKR_OK);
    EXPECT_EQ(toVector(env, static_cast<jbyteArray>(getObject(env, pbe, "pInitVector", "[B"))), [] {
        const std::string_view text = "12345678";
        return Bytes(text.begin(), text.end());
    }());
}

// The exception of a bad value comes out; the wrong length of a parameter beside it does not end the process.
TEST_F(CarelessCallers, noLengthAbortsWhileAnExceptionIsPending)
{
    const jobject pss = make(env, "halvorn/zerlin/params/CK_RSA_PKCS_PSS_PARAMS");
    const jobject wrong = mechanism(env, jlong{0xD}, pss, 3);
    const jobject real = make(env, "java/lang/Double", "(D)V", 1.5);
    const jobjectArray array = attributes(env, {attribute(env, 3, real, 8)});
    EXPECT_EQ(call(NATIVE(C_1GenerateKey), session(env), wrong, array, 1, object(env, 0))(env), nullptr);
    EXPECT_EQ(takeException(env),
        "java.lang.UnsupportedOperationException: No Conversion from java.lang.Double to a CK type");
}

} // namespace
