// Callers that declare more than they have, objects that change during a call, and libraries that report what
// is not there: nothing of the process is read or written for them.
#include "halvorn_zerlin_CTUtil.h"
#include "harness/failures.h"
#include "param_text.h"
#include "values.h"

#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace jni;

using CarelessCallers = JniTest;

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
    char page[4096]; // which can be read as a whole or not at all
    for (bool areZero = true; areZero && zeroes.count < limit;) {
        const char* const next = static_cast<const char*>(place) + zeroes.count;
        const std::size_t rest = sizeof page - reinterpret_cast<std::uintptr_t>(next) % sizeof page;
        const auto size = static_cast<ssize_t>(std::min(rest, limit - zeroes.count));
        zeroes.endsInaccessible = write(ends[1], next, static_cast<std::size_t>(size)) != size;
        if (zeroes.endsInaccessible || read(ends[0], page, static_cast<std::size_t>(size)) != size) break;
        const auto* const other = std::find_if(page, page + size, [](char byte) { return byte != 0; });
        zeroes.count += static_cast<std::size_t>(other - page);
        areZero = other == page + size;
    }
    close(ends[0]);
    close(ends[1]);
    return zeroes;
}

// Calls with a stack and a heap that are full of other bytes.
[[gnu::noinline]] void dirtyMemory()
{
    char room[1 << 15];
    std::memset(room, 0xee, sizeof room);
    __asm__ volatile("" : : "r"(room) : "memory");
    for (const std::size_t size : {16384, 3100}) { // a chunk, and what the tests ask malloc for
        void* const block = std::malloc(size);
        std::memset(block, 0xee, size);
        __asm__ volatile("" : : "r"(block) : "memory");
        std::free(block);
    }
}

// What stands in for a length that no test can afford; the call on this thread alone.
jsize reportedLength = 0;

TEST_F(CarelessCallers, sizesThatWrapAreNotAllocated)
{
    const jobjectArray array = attributes(env, {attribute(env, 3, bytes(env, "x"), 1)});
    const Call made = call(NATIVE(C_1FindObjectsInit), session(env), array, 1);
    const JNINativeInterface_* const real = env->functions;
    JNINativeInterface_ table = *real;
    table.GetArrayLength = [](JNIEnv*, jarray) { return reportedLength; };
    // 12 bytes each, or 1: both come to a few bytes in 32 bits.
    for (const jsize length : {357913942, 0x7FFFFFFF}) {
        reportedLength = length;
        env->functions = &table;
        const jobject rv = made(env);
        env->functions = real;
        EXPECT_EQ(rv, nullptr);
        EXPECT_EQ(takeException(env), NO_MEMORY) << length;
    }
    EXPECT_EQ(recorder::calls().size(), 0U);
}

TEST_F(CarelessCallers, aBigCapacityCostsNoMemory)
{
    const auto peak = [] { // in KiB, of all the time so far
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    recorder::script().isQuiet = true;
    recorder::script().C_DecryptFinal = [](auto, CK_BYTE_PTR pLastPart, CK_ULONG_PTR pulLastPartLen) {
        std::memset(pLastPart, 0xaa, 8);
        return *pulLastPartLen = 8, CKR_OK;
    };
    const jbyteArray array = env->NewByteArray(8);
    const long before = peak();
    call(NATIVE(C_1DecryptFinal), session(env), array, longRef(env, 1 << 30))(env);
    EXPECT_LT(peak(), before + (400 << 10));
    EXPECT_EQ(toVector(env, array), Bytes(8, 0xaa));
}

// The library reports all of the output as written.
TEST_F(CarelessCallers, whatIsNotWrittenIsZero)
{
    recorder::script().isQuiet = true;
    const jbyteArray data = env->NewByteArray(2000);         // leaves little room on the stack
    for (const jsize capacity : {100, 1000, 3000, 600000}) { // on the stack, in a chunk, from malloc, mapped
        const jbyteArray array = bytes(env, Bytes(static_cast<std::size_t>(capacity), 7));
        const Call made = call(NATIVE(C_1Encrypt), session(env), data, 2000, array, longRef(env, capacity));
        dirtyMemory();
        made(env);
        EXPECT_EQ(toVector(env, array), Bytes(static_cast<std::size_t>(capacity))) << capacity;
    }
}

// What a member of a structure points to.
template <typename Structure, typename Pointer>
Structure structureWith(Pointer Structure::*member);
template <auto MEMBER>
const void* behind(const void* structure)
{
    return static_cast<const decltype(structureWith(MEMBER))*>(structure)->*MEMBER;
}
template <auto MEMBER, auto NEXT>
const void* behind(const void* structure)
{
    return behind<NEXT>(behind<MEMBER>(structure));
}
const void* itself(const void* place)
{
    return place;
}

// The lengths and counts in parameters are those that no assertion ties to their arrays. A parameterLen above
// the structure's size ends the process after the call, unless an exception is pending.
TEST_F(CarelessCallers, declaredLengthsMeetZeroesAndThenAFence)
{
    using Import = CK_PKCS12_PBE_IMPORT_PARAMS;
    using Export = CK_PKCS12_PBE_EXPORT_PARAMS;
    using Derive = CK_ECDH1_DERIVE_PARAMS;
    using Data = CK_KEY_DERIVATION_STRING_DATA;
    struct Row {
        std::string name;
        Call made;
        std::size_t size;                                // of what is there
        std::uint64_t declared;                          // at most 64 KiB of it are there
        const void* (*find)(const void* given) = itself; // in what the library gets
    };
    std::vector<Row> rows;
    const jobject on = session(env), key = object(env, 1);
    const jbyteArray eight = bytes(env, "12345678");
    const jobject type = make(env, "halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", "(J)V", jlong{17});
    const jobjectArray empty = attributes(env, {attribute(env, 0, nullptr, 0)});
    const auto setValue = Java_halvorn_zerlin_CTUtil_CTU_1SetAttributeValue;
    for (const jlong length : {jlong{4000}, jlong{0xFFFFFFFF}}) {
        const jobjectArray one = attributes(env, {attribute(env, 17, eight, length)});
        const auto declared = static_cast<std::uint64_t>(length);
        rows.insert(rows.end(),
            {{"a value in a template", call(NATIVE(C_1CreateObject), on, one, 1, key), 8, declared,
                 behind<&CK_ATTRIBUTE::pValue>},
                {"data", call(NATIVE(C_1DigestUpdate), on, eight, length), 8, declared},
                {"a bare parameter", call(NATIVE(C_1DigestInit), on, mechanism(env, 44, eight, length)), 8,
                    declared},
                {"a bare value", call(setValue, on, key, type, eight, length), 8, declared,
                    behind<&CK_ATTRIBUTE::pValue>},
                {"records", call(NATIVE(C_1FindObjectsInit), on, empty, length), sizeof(CK_ATTRIBUTE),
                    declared * sizeof(CK_ATTRIBUTE)}});
    }
    const auto add = [&](const std::string& java, std::size_t size, std::size_t declared, auto find,
                         jlong mechanismType = CKM_DES_CBC) {
        const auto named = [&](const ParamRow& row) {
            return java.starts_with(row.java.substr(0, row.java.find(' ')));
        };
        const jobject jMechanism =
            mechanism(env, mechanismType, read(env, java), std::ranges::find_if(PARAMS, named)->size);
        rows.push_back({java, call(NATIVE(C_1DigestInit), on, jMechanism), size, declared, find});
    };
    const char* const data = "CK_KEY_DERIVATION_STRING_DATA [0102] 4000";
    const char* const import =
        "CK_PKCS12_PBE_IMPORT_PARAMS [6175] 5000 [686d61] -1 ( CK_ATTRIBUTE 3 [6d79] 6000 ) 700 ( 7 8 ) 900";
    add(data, 2, 4000, behind<&Data::pData>);
    add(data, 2, 4000, behind<&Data::pData>, CKM_RSA_PKCS_KEY_PAIR_GEN);
    add(import, 2, 5000, behind<&Import::passwordAuthSafe>);
    add(import, 3, 65536, behind<&Import::passwordHMAC>);
    add(import, sizeof(CK_ATTRIBUTE), 700 * sizeof(CK_ATTRIBUTE), behind<&Import::certAttr>);
    add(import, 2, 6000, behind<&Import::certAttr, &CK_ATTRIBUTE::pValue>);
    add(import, 2 * sizeof(CK_ULONG), 900 * sizeof(CK_ULONG), behind<&Import::hCert>);
    const char* const exported = "CK_PKCS12_PBE_EXPORT_PARAMS 5 [6175] 5000 [686d61] 6000 936 937 960";
    add(exported, 2, 5000, behind<&Export::passwordAuthSafe>);
    add(exported, 3, 6000, behind<&Export::passwordHMAC>);
    const char* const ecies = "CK_ECIES_PARAMS 1 2 4000 [] 3 4 5 6 7 -1 []";
    add(ecies, 0, 4000, behind<&CK_ECIES_PARAMS::pSharedData1>);
    add(ecies, 0, 65536, behind<&CK_ECIES_PARAMS::pSharedData2>);
    add("CK_ECDH1_DERIVE_PARAMS 1 4000 [] 65 []", 0, 4000, behind<&Derive::pSharedData>);
    add("CK_ECDH1_DERIVE_PARAMS 1 4000 [] 65 []", 0, 65, behind<&Derive::pPublicData>);
    // The mechanism says how long these are, or a number elsewhere in the parameter.
    add("CK_PBE_PARAMS [010203] null 0 null 0 1000", 3, 8, behind<&CK_PBE_PARAMS::pInitVector>);
    add("CK_SSL3_KEY_MAT_PARAMS 0 0 8001 0 CK_SSL3_RANDOM_DATA null 0 null 0 CK_SSL3_KEY_MAT_OUT 1 2 3 4 "
        "[010203] [01]",
        3, 1001, behind<&CK_SSL3_KEY_MAT_PARAMS::pReturnedKeyMaterial, &CK_SSL3_KEY_MAT_OUT::pIVClient>);

    const jobject pss = mechanism(env, 13, read(env, "CK_RSA_PKCS_PSS_PARAMS 544 1 20"), 4000);
    rows.push_back({"a structure", call(NATIVE(C_1DigestInit), on, pss), 12, 4000});

    initialiseWithCallbacks(env);
    recorder::script().isQuiet = true;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name + ", declared as " + std::to_string(row.declared));
        Zeroes zeroes;
        recorder::script().answer = [&](std::span<const recorder::Argument> all) {
            using Form = recorder::Argument::Form;
            const auto isInput = [](const auto& one) {
                return one.form == Form::Mechanism || one.form == Form::Template || one.form == Form::Bytes;
            };
            const recorder::Argument& input = *std::ranges::find_if(all, isInput);
            const void* const given = input.form == Form::Mechanism
                                          ? static_cast<CK_MECHANISM_PTR>(input.data)->pParameter
                                          : input.data;
            const auto* const place = static_cast<const char*>(row.find(given));
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(place) % 16, 0U);
            zeroes = zeroesFrom(place + row.size, 1 << 20);
            env->ThrowNew(find(env, "java/lang/IllegalStateException"), "from within");
            return CKR_OK;
        };
        const auto fenced = static_cast<std::size_t>(std::min<std::uint64_t>(row.declared, 64 << 10));
        HeapWatch heap;
        EXPECT_EQ(row.made(env), nullptr);
        EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
        EXPECT_GE(zeroes.count, fenced - row.size);
        EXPECT_LE(zeroes.count, fenced - row.size + 15);
        EXPECT_TRUE(zeroes.endsInaccessible);
        while (!heap.blocks.empty())
            std::free(heap.blocks.begin()->first); // the parameter of type 0 is left over: deliberate
    }
}

TEST_F(CarelessCallers, labelsHaveRoomForTheirStandardLength)
{
    const jobject on = session(env);
    const jbyteArray label = bytes(env, "label");
    recorder::script().isQuiet = true;
    recorder::script().answer = [&](std::span<const recorder::Argument> all) {
        const std::string_view text(static_cast<const char*>(all.back().data), 32);
        EXPECT_EQ(text, "label" + std::string(27, '\0')) << recorder::lastCalled();
        return CKR_OK;
    };
    for (const Call& made : {call(NATIVE(C_1InitToken), 0, nullptr, 0, label),
             call(NATIVE(CT_1InitToken), on, 0, nullptr, 0, label),
             call(NATIVE(CT_1ResetToken), on, nullptr, 0, label)}) {
        dirtyMemory();
        made(env);
    }
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
    call(NATIVE(C_1GetAttributeValue), session(env), object(env, 1), attributes(env, {attr}), 1)(env);
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
