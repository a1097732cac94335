// Callers that declare more than they have, objects that change during a call, and libraries that report what
// is not there: nothing of the process is read or written for them.
#include "halvorn_zerlin_CTUtil.h"
#include "harness/failures.h"
#include "param_text.h"
#include "values.h"

#include <fstream>
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

// The most memory that the process has had since it was last asked, in KiB.
long takePeakMemory()
{
    std::ifstream status("/proc/self/status");
    long peak = -1;
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) peak = std::stol(line.substr(6));
    std::ofstream("/proc/self/clear_refs") << 5;
    return peak;
}

TEST_F(CarelessCallers, aBigCapacityCostsNoMemory)
{
    recorder::script().isQuiet = true;
    recorder::script().C_DecryptFinal = [](auto, CK_BYTE_PTR pLastPart, CK_ULONG_PTR pulLastPartLen) {
        std::memset(pLastPart, 0xaa, 8);
        *pulLastPartLen = 8;
        return CKR_OK;
    };
    const jbyteArray array = env->NewByteArray(8);
    const Call made = call(NATIVE(C_1DecryptFinal), session(env), array, longRef(env, 600 << 20));
    takePeakMemory();
    const long before = takePeakMemory();
    EXPECT_EQ(rvOf(env, made(env)), CKR_OK);
    EXPECT_LT(takePeakMemory(), before + (32 << 10));
    EXPECT_EQ(toVector(env, array), Bytes(8, 0xaa));
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

// What a member of a structure points to.
template <typename Structure, typename Pointer>
Structure structureWith(Pointer Structure::*member);
template <auto MEMBER>
const void* behind(const void* structure)
{
    return static_cast<const decltype(structureWith(MEMBER))*>(structure)->*MEMBER;
}

// The lengths and counts in parameters that no assertion ties to their arrays.
TEST_F(CarelessCallers, lengthsInParametersMeetZeroesAndThenAFence)
{
    using Import = CK_PKCS12_PBE_IMPORT_PARAMS;
    using Export = CK_PKCS12_PBE_EXPORT_PARAMS;
    using Derive = CK_ECDH1_DERIVE_PARAMS;
    const char* const import =
        "CK_PKCS12_PBE_IMPORT_PARAMS [6175] 5000 [686d61] -1 ( CK_ATTRIBUTE 3 [6d79] 6000 ) 700 ( 7 8 ) 900";
    const char* const keys = "CK_SSL3_KEY_MAT_PARAMS 0 0 8001 0 CK_SSL3_RANDOM_DATA null 0 null 0 "
                             "CK_SSL3_KEY_MAT_OUT 1 2 3 4 [010203] [01]";
    const struct {
        const char* java;
        jlong parameterLen;
        std::size_t size;     // of what is there
        std::size_t declared; // up to 64 KiB
        const void* (*find)(const void* parameter);
        jlong type = CKM_DES_CBC;
    } rows[] = {
        {"CK_KEY_DERIVATION_STRING_DATA [0102] 4000", 8, 2, 4000,
            behind<&CK_KEY_DERIVATION_STRING_DATA::pData>},
        {"CK_KEY_DERIVATION_STRING_DATA [0102] 4000", 8, 2, 4000,
            behind<&CK_KEY_DERIVATION_STRING_DATA::pData>, CKM_RSA_PKCS_KEY_PAIR_GEN},
        {import, 32, 2, 5000, behind<&Import::passwordAuthSafe>},
        {import, 32, 3, 65536, behind<&Import::passwordHMAC>},
        {import, 32, sizeof(CK_ATTRIBUTE), 700 * sizeof(CK_ATTRIBUTE), behind<&Import::certAttr>},
        {import, 32, 2, 6000,
            [](const void* made) { return behind<&CK_ATTRIBUTE::pValue>(behind<&Import::certAttr>(made)); }},
        {import, 32, 2 * sizeof(CK_ULONG), 900 * sizeof(CK_ULONG), behind<&Import::hCert>},
        {"CK_PKCS12_PBE_EXPORT_PARAMS 5 [6175] 5000 [686d61] 3 936 937 960", 32, 2, 5000,
            behind<&Export::passwordAuthSafe>},
        {"CK_PKCS12_PBE_EXPORT_PARAMS 5 [6175] 2 [686d61] 5000 936 937 960", 32, 3, 5000,
            behind<&Export::passwordHMAC>},
        {"CK_ECIES_PARAMS 1 2 4000 [] 3 4 5 6 7 0 null", 44, 0, 4000, behind<&CK_ECIES_PARAMS::pSharedData1>},
        {"CK_ECIES_PARAMS 1 2 0 null 3 4 5 6 7 -1 []", 44, 0, 65536, behind<&CK_ECIES_PARAMS::pSharedData2>},
        {"CK_ECDH1_DERIVE_PARAMS 1 4000 [] 0 null", 20, 0, 4000, behind<&Derive::pSharedData>},
        {"CK_ECDH1_DERIVE_PARAMS 1 0 null 65 []", 20, 0, 65, behind<&Derive::pPublicData>},
        // The mechanism says how long these are, or a number elsewhere in the parameter.
        {"CK_PBE_PARAMS [010203] null 0 null 0 1000", 24, 3, 8, behind<&CK_PBE_PARAMS::pInitVector>},
        {keys, 36, 3, 1001,
            [](const void* made) {
                return behind<&CK_SSL3_KEY_MAT_OUT::pIVClient>(
                    behind<&CK_SSL3_KEY_MAT_PARAMS::pReturnedKeyMaterial>(made));
            }},
    };
    recorder::script().isQuiet = true;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.java + (", of which there are " + std::to_string(row.size)));
        Zeroes zeroes;
        recorder::script().C_DigestInit = [&](auto, CK_MECHANISM_PTR made) {
            const auto* const place = static_cast<const char*>(row.find(made->pParameter));
            zeroes = zeroesFrom(place + row.size, 1 << 20);
            return CKR_OK;
        };
        const jobject jMechanism = mechanism(env, row.type, read(env, row.java), row.parameterLen);
        HeapWatch heap;
        EXPECT_EQ(rvOf(env, call(NATIVE(C_1DigestInit), session(env), jMechanism)(env)), CKR_OK);
        EXPECT_GE(zeroes.count, row.declared - row.size);
        EXPECT_LE(zeroes.count, row.declared - row.size + 15);
        EXPECT_TRUE(zeroes.endsInaccessible);
        while (!heap.blocks.empty())
            std::free(heap.blocks.begin()->first); // the parameter of type 0 is left over: deliberate
    }
    recorder::script().C_DigestInit = {};
}

// A parameterLen above the structure's size ends the process after the call, unless an exception is pending.
TEST_F(CarelessCallers, aStructureDeclaredTooLongMeetsZeroesAndThenAFence)
{
    initialiseWithCallbacks(env);
    Zeroes zeroes;
    recorder::script().isQuiet = true;
    recorder::script().C_DigestInit = [&](auto, CK_MECHANISM_PTR made) {
        EXPECT_EQ(static_cast<CK_RSA_PKCS_PSS_PARAMS*>(made->pParameter)->sLen, 20U);
        zeroes = zeroesFrom(static_cast<const char*>(made->pParameter) + 12, 1 << 20);
        env->ThrowNew(find(env, "java/lang/IllegalStateException"), "from within");
        return CKR_OK;
    };
    const jobject pss = read(env, "CK_RSA_PKCS_PSS_PARAMS 544 1 20");
    EXPECT_EQ(call(NATIVE(C_1DigestInit), session(env), mechanism(env, 13, pss, 4000))(env), nullptr);
    EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
    EXPECT_GE(zeroes.count, 4000U - 12);
    EXPECT_TRUE(zeroes.endsInaccessible);
}

struct CarelessDerivations : CarelessCallers {
    // Derives a key. Within the call the Cryptoki library works on the parameter.
    template <typename Structure>
    void derive(CK_MECHANISM_TYPE type, jobject parameter, const std::function<void(Structure&)>& work)
    {
        recorder::script().isQuiet = true;
        recorder::script().C_DeriveKey = [&](auto, CK_MECHANISM_PTR made, auto...) {
            work(*static_cast<Structure*>(made->pParameter));
            return CKR_OK;
        };
        const jobject jMechanism =
            mechanism(env, static_cast<jlong>(type), parameter, jlong{sizeof(Structure)});
        const jobject key = object(env, 1);
        EXPECT_EQ(rvOf(env, call(NATIVE(C_1DeriveKey), session(env), jMechanism, key, nullptr, 0, key)(env)),
            CKR_OK);
        recorder::script().C_DeriveKey = {}; // it refers to local variables
    }
};

// The library reports more than there is, and the caller has put longer arrays there.
TEST_F(CarelessDerivations, resultsComeFromTheirOwnBuffersOnly)
{
    constexpr jsize LENGTH = 100000;
    const auto newArray = [&](jobject target, const char* name) {
        const jbyteArray longer = env->NewByteArray(LENGTH);
        setObject(env, target, name, "[B", longer);
        return longer;
    };
    const auto startingWith = [](Bytes bytes) { return bytes.resize(LENGTH), bytes; };

    const jobject wrapSet = read(env, "CK_KEY_WRAP_SET_OAEP_PARAMS 0 [0102] 2");
    jbyteArray longer = nullptr;
    derive<CK_KEY_WRAP_SET_OAEP_PARAMS>(CKM_KEY_WRAP_SET_OAEP, wrapSet, [&](auto& made) {
        std::memset(made.pX, 0xaa, 2);
        made.XLen = LENGTH;
        longer = newArray(wrapSet, "pX");
    });
    EXPECT_EQ(getLong(env, wrapSet, "XLen"), LENGTH);
    EXPECT_EQ(toVector(env, longer), startingWith({0xaa, 0xaa}));

    const jobject keys = read(env,
        "CK_SSL3_KEY_MAT_PARAMS 0 0 24 0 CK_SSL3_RANDOM_DATA null 0 null 0 CK_SSL3_KEY_MAT_OUT 1 2 3 4 "
        "[000000] [000000]");
    derive<CK_SSL3_KEY_MAT_PARAMS>(CKM_SSL3_KEY_AND_MAC_DERIVE, keys, [&](auto& made) {
        std::memset(made.pReturnedKeyMaterial->pIVServer, 0xbb, 3);
        setLong(env, keys, "IVSizeInBits", jlong{8} * LENGTH);
        longer = newArray(
            getObject(env, keys, "pReturnedKeyMaterial", "Lhalvorn/zerlin/params/CK_SSL3_KEY_MAT_OUT;"),
            "pIVServer");
    });
    EXPECT_EQ(toVector(env, longer), startingWith({0xbb, 0xbb, 0xbb}));

    const jobject pbe = read(env, "CK_PBE_PARAMS [010203] null 0 null 0 1000");
    derive<CK_PBE_PARAMS>(CKM_PBE_MD5_DES_CBC, pbe, [&](auto&) { longer = newArray(pbe, "pInitVector"); });
    EXPECT_EQ(toVector(env, longer), startingWith({1, 2, 3}));

    const jobject import = read(env, "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ( 1 2 ) 2");
    const std::vector<jobject> handles(1000, object(env, 5));
    const char* const handleClass = "halvorn/zerlin/CK_OBJECT_HANDLE";
    std::vector<jobject> found = {object(env, 0), object(env, 0)};
    derive<CK_PKCS12_PBE_IMPORT_PARAMS>(CKM_PKCS12_PBE_IMPORT, import, [&](auto& made) {
        made.hCert[0] = 17;
        made.hCert[1] = 18;
        *made.hCertCount = 1000;
        found.insert(found.end(), handles.begin(), handles.end());
        setObject(
            env, import, "hCert", "[Lhalvorn/zerlin/CK_OBJECT_HANDLE;", objects(env, handleClass, found));
    });
    const jobject count = getObject(env, import, "hCertCount", "Lhalvorn/zerlin/LongRef;");
    EXPECT_EQ(getLong(env, count, "value"), 1000);
    EXPECT_EQ(getLong(env, found[0], "m_value"), 17);
    EXPECT_EQ(getLong(env, found[1], "m_value"), 18);
    EXPECT_EQ(getLong(env, handles[0], "m_value"), 5);
}

// What a library leaves in place of the pointers that it got.
template <auto... MEMBERS>
const auto redirect = [](auto& structure) {
    static CK_BYTE elsewhere[64];
    std::memset(elsewhere, 0xee, sizeof elsewhere);
    const auto set = [](auto*& pointer) {
        pointer = reinterpret_cast<std::remove_reference_t<decltype(pointer)>>(elsewhere);
    };
    (set(structure.*MEMBERS), ...);
};

TEST_F(CarelessDerivations, pointersThatWereChangedAreNotFollowed)
{
    const auto unchanged = [&](jobject parameter, jlong size, const char* native) {
        EXPECT_EQ(given(env, parameter, size, native), native);
    };
    const jobject wrapSet = read(env, "CK_KEY_WRAP_SET_OAEP_PARAMS 0 [0102] 2");
    derive<CK_KEY_WRAP_SET_OAEP_PARAMS>(
        CKM_KEY_WRAP_SET_OAEP, wrapSet, redirect<&CK_KEY_WRAP_SET_OAEP_PARAMS::pX>);
    unchanged(wrapSet, 12, "00000000 [0102] 02000000");
    const jobject pbe = read(env, "CK_PBE_PARAMS [0102030405060708] null 0 [01] 1 0");
    derive<CK_PBE_PARAMS>(
        CKM_PBE_MD5_DES_CBC, pbe, redirect<&CK_PBE_PARAMS::pInitVector, &CK_PBE_PARAMS::pSalt>);
    unchanged(pbe, 24, "[0102030405060708] null 00000000 [01] 01000000 00000000");
    const jobject master =
        read(env, "CK_SSL3_MASTER_KEY_DERIVE_PARAMS CK_SSL3_RANDOM_DATA null 0 null 0 CK_VERSION 1 2");
    derive<CK_SSL3_MASTER_KEY_DERIVE_PARAMS>(
        CKM_SSL3_MASTER_KEY_DERIVE, master, redirect<&CK_SSL3_MASTER_KEY_DERIVE_PARAMS::pVersion>);
    unchanged(master, 20, "null 00000000 null 00000000 [0102]");
    const jobject import = read(env, "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ( 1 2 ) 2");
    const char* const imported = "null 00000000 null 00000000 null 00000000 [0100000002000000] [02000000]";
    derive<CK_PKCS12_PBE_IMPORT_PARAMS>(
        CKM_PKCS12_PBE_IMPORT, import, redirect<&CK_PKCS12_PBE_IMPORT_PARAMS::hCert>);
    unchanged(import, 32, imported);
    derive<CK_PKCS12_PBE_IMPORT_PARAMS>(
        CKM_PKCS12_PBE_IMPORT, import, redirect<&CK_PKCS12_PBE_IMPORT_PARAMS::hCertCount>);
    unchanged(import, 32, imported);
    const jobject keys = read(env,
        "CK_SSL3_KEY_MAT_PARAMS 0 0 16 0 CK_SSL3_RANDOM_DATA null 0 null 0 CK_SSL3_KEY_MAT_OUT 1 2 3 4 "
        "[0102] [0304]");
    derive<CK_SSL3_KEY_MAT_PARAMS>(CKM_SSL3_KEY_AND_MAC_DERIVE, keys, [](auto& made) {
        made.pReturnedKeyMaterial->hServerKey = 9;
        redirect<&CK_SSL3_KEY_MAT_OUT::pIVClient>(*made.pReturnedKeyMaterial);
    });
    derive<CK_SSL3_KEY_MAT_PARAMS>(
        CKM_SSL3_KEY_AND_MAC_DERIVE, keys, redirect<&CK_SSL3_KEY_MAT_PARAMS::pReturnedKeyMaterial>);
    unchanged(keys, 36,
        "00000000 00000000 10000000 00000000 null 00000000 null 00000000 (01000000 02000000 03000000 "
        "09000000 [0102] [0304])");
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
