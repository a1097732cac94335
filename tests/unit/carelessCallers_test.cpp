// Callers that declare more than they have, objects that change during a call, and libraries that report what
// is not there: nothing of the process is read or written for them.
#include "harness/failures.h"
#include "harness/param_text.h"
#include "harness/values.h"

#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace jni;
using CarelessCallers = JniTest;

// How many bytes from there on can be read, up to 1 MiB.
std::size_t readableFrom(const void* place)
{
    std::FILE* const file = std::tmpfile();
    const auto written = write(fileno(file), place, 1 << 20);
    std::fclose(file);
    return written < 0 ? 0 : static_cast<std::size_t>(written);
}

TEST_F(CarelessCallers, sizesThatWrapAreNotAllocated)
{
    const jobjectArray array = attributes(env, {attribute(env, 3, bytes(env, "x"), 1)});
    const Call made = call(NATIVE(C_1FindObjectsInit), session(env), array, 1);
    const JNINativeInterface_* const real = env->functions;
    JNINativeInterface_ table = *real;
    // A length that no test can afford: in 32 bits its records would come to a few bytes.
    table.GetArrayLength = [](JNIEnv*, jarray) { return 357913942; };
    env->functions = &table;
    EXPECT_EQ(made(env), nullptr);
    env->functions = real;
    EXPECT_EQ(takeException(env), NO_MEMORY);
    EXPECT_EQ(recorder::calls.size(), 0U);
}

// The library reports all of the output as written.
TEST_F(CarelessCallers, whatIsNotWrittenIsZero)
{
    script().isQuiet = true;
    const jbyteArray data = env->NewByteArray(2000);     // leaves little room on the stack
    for (const jsize size : {100, 1000, 3000, 600000}) { // on the stack, in a chunk, from malloc, mapped
        const jbyteArray array = bytes(env, Bytes(static_cast<std::size_t>(size), 7));
        call(NATIVE(C_1Encrypt), session(env), data, 2000, array, longRef(env, size))(env);
        Bytes left(static_cast<std::size_t>(size), 7);
        env->GetByteArrayRegion(array, 0, size, reinterpret_cast<jbyte*>(left.data()));
        EXPECT_EQ(left, Bytes(left.size())) << size;
    }
}

TEST_F(CarelessCallers, aBigCapacityCostsNoMemory)
{
    script().C_DecryptFinal = [](auto, auto, CK_ULONG_PTR pulLastPartLen) {
        return *pulLastPartLen = 8, CKR_OK;
    };
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    for (int i = 0; i < 4; ++i) { // more than the memory of a 32-bit process
        const Call made =
            call(NATIVE(C_1DecryptFinal), session(env), bytes(env, "12345678"), longRef(env, 1 << 30));
        EXPECT_EQ(rvOf(env, made(env)), CKR_OK);
    }
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss, before.ru_maxrss + (400 << 10)); // KiB, the most so far
}

// Where a label lies, a longer one has been before.
TEST_F(CarelessCallers, aShortLabelIsFollowedByZeroes)
{
    std::string got;
    script().isQuiet = true;
    script().answer = [&got](Arguments all) {
        got.assign(static_cast<const char*>(all.back().data), 32);
        return CKR_OK;
    };
    for (const std::string& label : {std::string(40, 'x'), std::string("label")}) {
        const jbyteArray array = bytes(env, label);
        const std::string expected = (label + std::string(27, '\0')).substr(0, 32);
        for (const Call& made : {call(NATIVE(C_1InitToken), 0, nullptr, 0, array),
                 call(NATIVE(CT_1InitToken), session(env), 0, nullptr, 0, array),
                 call(NATIVE(CT_1ResetToken), session(env), nullptr, 0, array)}) {
            made(env);
            EXPECT_EQ(got, expected) << label;
        }
    }
}

TEST_F(CarelessCallers, noParameterLenAbortsBesideABadValue)
{
    const jobject wrong = mechanism(env, 0xD, make(env, "halvorn/zerlin/params/CK_RSA_PKCS_PSS_PARAMS"), 3);
    const jobjectArray bad =
        attributes(env, {attribute(env, 3, make(env, "java/lang/Double", "(D)V", 1.5), 8)});
    EXPECT_EQ(call(NATIVE(C_1GenerateKey), session(env), wrong, bad, 1, object(env, 0))(env), nullptr);
    EXPECT_EQ(takeException(env),
        "java.lang.UnsupportedOperationException: No Conversion from java.lang.Double to a CK type");
}

// The lengths and counts in parameters are those that no assertion ties to their arrays. A parameterLen above
// the structure's size ends the process after the call, unless an exception is pending.
TEST_F(CarelessCallers, declaredLengthsMeetZeroesAndThenAFence)
{
    // What is declared, the call, the size of what is there, the declared size, of which at most 64 KiB are
    // there, and which word points to it, in what the one before points to.
    using Places = std::vector<std::size_t>;
    std::vector<std::tuple<std::string, Call, std::size_t, std::uint64_t, Places>> rows;
    const jobject on = session(env), key = object(env, 1);
    const jbyteArray eight = bytes(env, "12345678");
    const jobjectArray empty = attributes(env, {attribute(env, 0, nullptr, 0)});
    const std::size_t ONE = sizeof(CK_ATTRIBUTE);
    for (const jlong length : {jlong{4000}, jlong{0xFFFFFFFF}}) {
        const jobjectArray one = attributes(env, {attribute(env, 17, eight, length)});
        const jobject cipher = mechanism(env, 44, eight, length);
        const auto size = static_cast<std::uint64_t>(length);
        rows.push_back({"a value", call(NATIVE(C_1CreateObject), on, one, 1, key), 8, size, Places{1}});
        rows.push_back({"data", call(NATIVE(C_1DigestUpdate), on, eight, length), 8, size, Places{}});
        rows.push_back({"a bare parameter", call(NATIVE(C_1DigestInit), on, cipher), 8, size, Places{1}});
        rows.push_back(
            {"records", call(NATIVE(C_1FindObjectsInit), on, empty, length), ONE, size * ONE, Places{}});
    }
    const auto add = [&](const std::string& java, std::size_t size, std::size_t declared,
                         const Places& places, jlong longer = 0) {
        const jobject jMechanism = mechanism(env, CKM_DES_CBC, read(env, java), rowOf(java).size + longer);
        rows.push_back({java, call(NATIVE(C_1DigestInit), on, jMechanism), size, declared, places});
    };
    add("CK_KEY_DERIVATION_STRING_DATA [0102] 4000", 2, 4000, {1, 0});
    const char* const import =
        "CK_PKCS12_PBE_IMPORT_PARAMS [6175] 5000 [686d61] -1 ( CK_ATTRIBUTE 3 [6d79] 6000 ) 700 ( 7 8 ) 900";
    add(import, 2, 5000, {1, 0});
    add(import, 3, 65536, {1, 2});
    add(import, ONE, 700 * ONE, {1, 4});
    add(import, 2, 6000, {1, 4, 1});
    add(import, 2 * WORD, 900 * WORD, {1, 6});
    add("CK_ECIES_PARAMS 1 2 4000 [] 3 4 5 6 7 -1 []", 0, 4000, {1, 3});
    // The mechanism says how long these are, or a number elsewhere in the parameter.
    add("CK_PBE_PARAMS [010203] null 0 null 0 1000", 3, 8, {1, 0});
    const char* const keys = "CK_SSL3_KEY_MAT_PARAMS 0 0 8001 0 CK_SSL3_RANDOM_DATA null 0 null 0 "
                             "CK_SSL3_KEY_MAT_OUT 1 2 3 4 [010203] [01]";
    add(keys, 3, 1001, {1, 8, 4});
    add("CK_RSA_PKCS_PSS_PARAMS 544 1 20", sizeof(CK_RSA_PKCS_PSS_PARAMS),
        sizeof(CK_RSA_PKCS_PSS_PARAMS) + 4000, {1}, 4000);

    initialiseWithCallbacks(env);
    script().isQuiet = true;
    for (const auto& [name, made, size, declared, places] : rows) {
        SCOPED_TRACE(name + ", declared as " + std::to_string(declared));
        const auto fenced = static_cast<std::size_t>(std::min<std::uint64_t>(declared, 64 << 10));
        script().answer = [&](Arguments all) {
            const auto isInput = [](const auto& one) { return one.form >= Argument::Mechanism; };
            const char* place = static_cast<const char*>(std::ranges::find_if(all, isInput)->data);
            for (const std::size_t word : places)
                std::memcpy(&place, place + word * WORD, WORD);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(place) % 16, 0U);
            const std::size_t readable = readableFrom(place);
            EXPECT_EQ(readable / 16, (fenced + 15) / 16);
            EXPECT_EQ(std::count(place + size, place + std::min(readable, fenced), 0),
                static_cast<std::ptrdiff_t>(fenced - size));
            env->ThrowNew(find(env, "java/lang/IllegalStateException"), "from within");
            return CKR_OK;
        };
        const HeapWatch heap;
        EXPECT_EQ(made(env), nullptr);
        EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
        EXPECT_TRUE(heap.blocks.empty());
    }
}

// The library reports a length beyond the value, and changes its pointer; the caller has put a longer array
// there. A length that is no multiple of the elements' leaves mechanism types alone.
TEST_F(CarelessCallers, attributesAreWrittenBackFromTheirOwnBuffersOnly)
{
    const jobject type = mechanismType(env, 0x1'80000abc);
    const jobject types = objects(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", {type});
    const jobject attr = attribute(env, 17, bytes(env, "1234"), 8),
                  other = attribute(env, 0x40000600, types, WORD);
    const jbyteArray longer = env->NewByteArray(10);
    script().isQuiet = true;
    script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
        std::memcpy(pTemplate->pValue, "abcdefgh", 8);
        pTemplate[0] = {17, &pTemplate, 100000};
        pTemplate[1].ulValueLen = CK_UNAVAILABLE_INFORMATION;
        setObject(env, attr, "pValue", "Ljava/lang/Object;", longer);
        return CKR_DEVICE_ERROR; // results are written back whatever the return value
    };
    call(NATIVE(C_1GetAttributeValue), session(env), object(env, 1), attributes(env, {attr, other}), 2)(env);
    EXPECT_EQ(getLong(env, attr, "valueLen"), 100000);
    EXPECT_EQ(text(env, {longer}), "[[97, 98, 99, 100, 101, 102, 103, 104, 0, 0]]");
    EXPECT_EQ(getLong(env, other, "valueLen"), static_cast<jlong>(CK_UNAVAILABLE_INFORMATION));
    EXPECT_EQ(getLong(env, type, "m_value"), 0x1'80000abc) << "not even the same value is written";
}

} // namespace
