// Mechanism parameters from native to Java: the results that key-producing calls leave in the caller's
// parameter object, and the new objects that are made of a native mechanism.
#include "failures.h"
#include "helper/convToJava.h"
#include "helper/copyToJava.h"
#include "jvm.h"
#include "param_text.h"

namespace {

using namespace jni;
using recorder::Script;
using zerlin::ckMechanismParameterToJMechanismParameter;
using zerlin::ckMechanismToJMechanism;
using zerlin::CopyCKMechanismToJMechanism;

struct WriteBack : JniTest {};

// Writes into a parameter as a Cryptoki library does: the words and what is behind pointers, where the text
// has no dot and the parameter no null.
void overwrite(void* parameter, std::string_view text)
{
    for (auto* data = static_cast<CK_BYTE*>(parameter); !text.empty();) {
        const std::string_view piece = takePiece(text);
        const std::string_view inner = piece.substr(1, piece.size() - 2);
        if (piece == " ") continue;
        Native native;
        CK_BYTE* pointer = nullptr;
        std::memcpy(&pointer, data, sizeof pointer);
        if (piece.front() == '(' && pointer != nullptr)
            overwrite(pointer, inner);
        else if (piece.front() == '[' && pointer != nullptr)
            std::memcpy(pointer, native.build(inner), inner.size() / 2);
        else if (piece.front() != '.' && piece.front() != '[')
            std::memcpy(data, native.build(piece), piece.size() / 2);
        data += sizeof pointer;
    }
}

template <auto Handler>
void script(const char* results, CK_RV rv)
{
    recorder::script().byteLimit = 0;
    recorder::script().*Handler = [=](CK_SESSION_HANDLE, CK_MECHANISM_PTR given, auto...) {
        overwrite(given->pParameter, results);
        return rv;
    };
}

struct Producer {
    void (*script)(const char* results, CK_RV rv);
    jobject (*produce)(JNIEnv* e, jobject jMechanism);
};
const Producer PRODUCERS[] = {
    {script<&Script::C_GenerateKey>,
        [](JNIEnv* e, jobject jMechanism) {
            return NATIVE(C_1GenerateKey)(e, nullptr, session(e), jMechanism, nullptr, 0, object(e, 1));
        }},
    {script<&Script::C_GenerateKeyPair>,
        [](JNIEnv* e, jobject jMechanism) {
            return NATIVE(C_1GenerateKeyPair)(
                e, nullptr, session(e), jMechanism, nullptr, 0, nullptr, 0, object(e, 1), object(e, 2));
        }},
    {script<&Script::C_UnwrapKey>,
        [](JNIEnv* e, jobject jMechanism) {
            return NATIVE(C_1UnwrapKey)(
                e, nullptr, session(e), jMechanism, object(e, 3), bytes(e, {1}), 1, nullptr, 0, object(e, 1));
        }},
    {script<&Script::C_DeriveKey>,
        [](JNIEnv* e, jobject jMechanism) {
            return NATIVE(C_1DeriveKey)(
                e, nullptr, session(e), jMechanism, object(e, 3), nullptr, 0, nullptr);
        }},
};

struct WriteBackRow {
    jlong mechanism;
    std::string before;
    const char* results; // that the Cryptoki library leaves
    std::string after;
};

std::string keyMaterial(const char* bits, const char* handles, const char* ivs)
{
    return std::string("CK_SSL3_KEY_MAT_PARAMS{") + bits + "pReturnedKeyMaterial=CK_SSL3_KEY_MAT_OUT{" +
           handles + ivs + "}}";
}

const char* const OLD = "hClientMacSecret=1 hServerMacSecret=2 hClientKey=3 hServerKey=4";
const char* const NEW = "hClientMacSecret=11 hServerMacSecret=12 hClientKey=13 hServerKey=4294967295";
const char* const NO_IVS = " pIVClient=[0000000000] pIVServer=[0000000000]";
const char* const KEYS = ". . . . . . . . (0b000000 0c000000 0d000000 ffffffff [aaaaaaaaaa] [bbbbbbbbbb])";
const std::string VERSION12 = "CK_SSL3_MASTER_KEY_DERIVE_PARAMS{pVersion=CK_VERSION{major=1 minor=2}}";
const std::string VERSION3 = "CK_SSL3_MASTER_KEY_DERIVE_PARAMS{pVersion=CK_VERSION{major=3 minor=254}}";
const std::string PBE8 = "CK_PBE_PARAMS{pInitVector=[0000000000000000]}";
const std::string WRAP_SET = "CK_KEY_WRAP_SET_OAEP_PARAMS{pX=[0102] XLen=2}";
const std::string IMPORT = "CK_PKCS12_PBE_IMPORT_PARAMS{";

const WriteBackRow ROWS[] = {
    {CKM_PBE_MD2_DES_CBC, PBE8, "[aaaaaaaaaaaaaaaa]", "CK_PBE_PARAMS{pInitVector=[aaaaaaaaaaaaaaaa]}"},
    {CKM_PBE_SHA1_RC2_40_CBC, "CK_PBE_PARAMS{pInitVector=[00000000000000000000]}", "[aaaaaaaaaaaaaaaaaaaa]",
        "CK_PBE_PARAMS{pInitVector=[aaaaaaaaaaaaaaaa0000]}"},
    {CKM_PBA_SHA1_WITH_SHA1_HMAC, "CK_PBE_PARAMS{pInitVector=[000000]}", "[aaaaaa]",
        "CK_PBE_PARAMS{pInitVector=[aaaaaa]}"},
    {CKM_PBE_SHA1_RC4_40, "CK_PBE_PARAMS{}", "[aa]", "CK_PBE_PARAMS{}"},
    {CKM_AES_CBC, PBE8, "[aaaaaaaaaaaaaaaa]", PBE8},
    {CKM_SSL3_KEY_AND_MAC_DERIVE, keyMaterial("", OLD, NO_IVS), KEYS, keyMaterial("", NEW, NO_IVS)},
    {CKM_SSL3_KEY_AND_MAC_DERIVE, keyMaterial("IVSizeInBits=24 ", OLD, NO_IVS), KEYS,
        keyMaterial("IVSizeInBits=24 ", NEW, " pIVClient=[aaaaaa0000] pIVServer=[bbbbbb0000]")},
    {CKM_SSL3_KEY_AND_MAC_DERIVE, keyMaterial("IVSizeInBits=25 ", OLD, NO_IVS), KEYS,
        keyMaterial("IVSizeInBits=25 ", NEW, " pIVClient=[aaaaaaaa00] pIVServer=[bbbbbbbb00]")},
    {CKM_SSL3_KEY_AND_MAC_DERIVE, keyMaterial("IVSizeInBits=65 ", OLD, NO_IVS), KEYS,
        keyMaterial("IVSizeInBits=65 ", NEW, " pIVClient=[aaaaaaaaaa] pIVServer=[bbbbbbbbbb]")},
    {CKM_SSL3_KEY_AND_MAC_DERIVE, keyMaterial("IVSizeInBits=-1 ", "hClientKey=3", ""), KEYS,
        keyMaterial("IVSizeInBits=-1 ", "hClientKey=13", "")},
    {CKM_TLS_KEY_AND_MAC_DERIVE, keyMaterial("IVSizeInBits=24 ", OLD, NO_IVS), KEYS,
        keyMaterial("IVSizeInBits=24 ", OLD, NO_IVS)},
    {CKM_SSL3_MASTER_KEY_DERIVE, VERSION12, ". . . . [03fe]", VERSION3},
    {CKM_SSL3_MASTER_KEY_DERIVE_DH, VERSION12, ". . . . [03fe]", VERSION12},
    {CKM_KEY_WRAP_SET_OAEP, WRAP_SET, ". [aaaa] 02000000", "CK_KEY_WRAP_SET_OAEP_PARAMS{pX=[aaaa] XLen=2}"},
    {CKM_KEY_WRAP_SET_OAEP, WRAP_SET, ". [aaaa] 01000000", "CK_KEY_WRAP_SET_OAEP_PARAMS{pX=[aa02] XLen=1}"},
    {CKM_KEY_WRAP_SET_OAEP, WRAP_SET, ". [aaaa] ffffffff",
        "CK_KEY_WRAP_SET_OAEP_PARAMS{pX=[aaaa] XLen=4294967295}"},
    {CKM_KEY_WRAP_SET_OAEP, "CK_KEY_WRAP_SET_OAEP_PARAMS{}", ". . 05000000",
        "CK_KEY_WRAP_SET_OAEP_PARAMS{XLen=5}"},
    {CKM_PKCS12_PBE_IMPORT, IMPORT + "hCert=(0 0) hCertCount=2}", ". . . . . . [0700000008000000] [03000000]",
        IMPORT + "hCert=(7 8) hCertCount=3}"},
    {CKM_PKCS12_PBE_IMPORT, IMPORT + "hCert=(0 null 0 6) hCertCount=4}",
        ". . . . . . [0700000008000000090000000a000000] [03000000]",
        IMPORT + "hCert=(7 null 9 6) hCertCount=3}"},
    {CKM_PKCS12_PBE_IMPORT, IMPORT + "hCert=(1 2) hCertCount=0}", ". . . . . . . [03000000]",
        IMPORT + "hCert=(1 2) hCertCount=3}"},
    {CKM_PKCS12_PBE_IMPORT, IMPORT + "hCertCount=0}", ". . . . . . . [03000000]", IMPORT + "hCertCount=3}"},
    {CKM_PKCS12_PBE_IMPORT, IMPORT + "}", ". . . . . . . [03000000]", IMPORT + "}"},
};

jobject mechanismOf(JNIEnv* e, jlong type, jobject parameter, const std::string& java)
{
    for (const ParamRow& row : PARAMS)
        if (java.starts_with(row.java.substr(0, row.java.find('{'))))
            return mechanism(e, type, parameter, static_cast<jlong>(sizeOfNative(row.native)));
    return nullptr;
}

// The caller's own objects are written to, and nothing at all on failure.
TEST_F(WriteBack, resultsGoIntoTheCallersObjects)
{
    for (const WriteBackRow& row : ROWS) {
        SCOPED_TRACE(row.before);
        for (const Producer& producer : PRODUCERS) {
            const LocalFrame frame(env);
            const jobject parameter = read(env, row.before);
            const jobject jMechanism = mechanismOf(env, row.mechanism, parameter, row.before);
            const std::string objects = identities(env, parameter);
            const HeapWatch heap;
            for (const CK_RV rv : {CKR_DEVICE_ERROR, CKR_OK}) {
                producer.script(row.results, rv);
                EXPECT_EQ(rvOf(env, producer.produce(env, jMechanism)), rv);
                EXPECT_EQ(tell(env, parameter), rv == CKR_OK ? row.after : row.before);
            }
            EXPECT_EQ(identities(env, parameter), objects);
            EXPECT_EQ(heap.blocks.size(), 0U);
        }
    }
}

TEST_F(WriteBack, aParameterThatDoesNotFitTheMechanismIsLeftAlone)
{
    std::vector<ParamRow> parameters = {{"[01020304]", "01020304"}, {"null", ""}};
    parameters.insert(parameters.end(), std::begin(PARAMS), std::end(PARAMS));
    recorder::script().byteLimit = 0;
    for (const WriteBackRow& mechanisms : ROWS) {
        for (const ParamRow& row : parameters) {
            const LocalFrame frame(env);
            const jobject parameter = read(env, row.java);
            const jobject jMechanism =
                mechanism(env, mechanisms.mechanism, parameter, static_cast<jlong>(sizeOfNative(row.native)));
            EXPECT_EQ(rvOf(env, PRODUCERS[0].produce(env, jMechanism)), CKR_OK);
            EXPECT_EQ(tell(env, parameter), row.java);
        }
    }
}

TEST_F(WriteBack, whatIsNullOrTooShortIsLeftAlone)
{
    struct Row {
        CK_ULONG mechanism;
        std::string java;
        jlong parameterLen;
        const char* native;
        std::string after = {}; // where something is written
    };
    const Row rows[] = {
        {CKM_PBE_MD2_DES_CBC, PBE8, 24, "null null 00000000 null 00000000 00000000"},
        {CKM_SSL3_KEY_AND_MAC_DERIVE, keyMaterial("IVSizeInBits=24 ", OLD, NO_IVS), 36,
            "00000000 00000000 40000000 00000000 null 00000000 null 00000000 null"},
        {CKM_SSL3_MASTER_KEY_DERIVE, VERSION12, 20, "null 00000000 null 00000000 null"},
        {CKM_SSL3_MASTER_KEY_DERIVE, VERSION12, 1, "null 00000000 null 00000000 [03fe]"},
        {CKM_SSL3_MASTER_KEY_DERIVE, VERSION12, 0, "null 00000000 null 00000000 [03fe]"},
        {CKM_SSL3_MASTER_KEY_DERIVE, VERSION12, 2, "null 00000000 null 00000000 [03fe]", VERSION3},
        {CKM_KEY_WRAP_SET_OAEP, WRAP_SET, 12, "00000000 null 02000000"},
        {CKM_PKCS12_PBE_IMPORT, IMPORT + "hCert=(1 2) hCertCount=2}", 32,
            "null 00000000 null 00000000 null 00000000 null [02000000]"},
        {CKM_PKCS12_PBE_IMPORT, IMPORT + "hCert=(1 2) hCertCount=2}", 32,
            "null 00000000 null 00000000 null 00000000 [0700000008000000] null"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.java);
        Native native;
        const CK_MECHANISM given = {row.mechanism, native.build(row.native), 0};
        const CK_MECHANISM without = {row.mechanism, nullptr, 0};
        const jobject parameter = read(env, row.java);
        const jobject jMechanism = mechanism(env, jlong{row.mechanism}, parameter, row.parameterLen);
        CopyCKMechanismToJMechanism(env, &given, jMechanism);
        CopyCKMechanismToJMechanism(env, &without, jMechanism);
        CopyCKMechanismToJMechanism(env, nullptr, jMechanism);
        CopyCKMechanismToJMechanism(env, &given, nullptr);
        CopyCKMechanismToJMechanism(env, &given, parameter); // of another class
        EXPECT_EQ(tell(env, parameter), row.after.empty() ? row.java : row.after);
    }
}

TEST_F(WriteBack, whereverAJniCallFailsTheRestStops)
{
    for (const WriteBackRow& row : ROWS) {
        SCOPED_TRACE(row.before);
        script<&Script::C_DeriveKey>(row.results, CKR_OK);
        failEachJniCall(env, [&] {
            const jobject jMechanism = mechanismOf(env, row.mechanism, read(env, row.before), row.before);
            return [=, this, jSession = session(env), baseKey = object(env, 3), key = object(env, 0)] {
                NATIVE(C_1DeriveKey)(env, nullptr, jSession, jMechanism, baseKey, nullptr, 0, key);
            };
        });
    }
}

// The mechanisms of which a new parameter object is made, by its class.
struct MadeRow {
    std::string parameter;
    std::vector<CK_ULONG> mechanisms;
};
const MadeRow MADE[] = {
    {"CK_DES_CBC_PARAMS", {0x80000501}},
    {"CK_DES2_CBC_PARAMS", {0x80000503}},
    {"CK_DES3_CBC_PARAMS", {0x80000503}},
    {"CK_KEY_DERIVATION_STRING_DATA", {0x362, 0x364}},
    {"CK_KEY_WRAP_SET_OAEP_PARAMS", {0x401}},
    {"CK_MECH_TYPE_AND_OBJECT", {0x80000955}},
    {"CK_OBJECT_HANDLE", {0x360, 0x80000364}},
    {"CK_PBE_PARAMS", {0x3a0, 0x3a4, 0x3a1, 0x3a5, 0x3a9, 0x3a8, 0x3a7, 0x3a6, 0x3ab, 0x3aa, 0x3c0}},
    {"CK_RC2_CBC_PARAMS", {0x102, 0x105}},
    {"CK_RC2_MAC_GENERAL_PARAMS", {0x104}},
    {"CK_RSA_PKCS_OAEP_PARAMS", {0x9}},
    {"CK_RSA_PKCS_PSS_PARAMS", {0xd}},
    {"CK_SSL3_KEY_MAT_PARAMS", {0x372}},
    {"CK_SSL3_MASTER_KEY_DERIVE_PARAMS", {0x371}},
    {"CK_VERSION", {0x370}},
    {"5L", {0x1084, 0x1089, 0x324, 0x123, 0x124, 0x135, 0x137, 0x80000135, 0x344, 0x202, 0x212, 0x242, 0x232,
               0x222, 0x380, 0x381, 0x365, 0x101, 0x80000101, 0x103, 0x800009d4}},
    {"CK_PP_LOAD_SECRET_PARAMS", {0x800009a0}},
    {"CK_TIMESTAMP_PARAMS", {0x80000600}},
    {"CK_REPLICATE_TOKEN_PARAMS", {0x800009e0}},
    {"CK_SECRET_SHARE_PARAMS", {0x800009f0}},
    {"CK_PKCS12_PBE_IMPORT_PARAMS", {0x800009f3}},
    {"CK_PKCS12_PBE_EXPORT_PARAMS", {0x800009f2}},
    {"CK_ECIES_PARAMS", {0x80000a00}},
    {"CK_ECDH1_DERIVE_PARAMS", {0x1043}},
};

// The object that is made is the one of which the native parameter comes, but for these.
ParamRow madeOf(const std::string& parameter)
{
    if (parameter == "CK_OBJECT_HANDLE") return {"CK_OBJECT_HANDLE{m_value=4294967295}", "ffffffff"};
    for (const ParamRow& row : PARAMS) {
        if (row.java.substr(0, row.java.find('{')) != parameter) continue;
        ParamRow made = row;
        const auto replace = [&](const std::string& part, const char* other) {
            made.java.replace(made.java.find(part), part.size(), other);
        };
        if (parameter == "CK_PP_LOAD_SECRET_PARAMS") replace("3f]", "3f00]"); // with its NUL
        if (parameter == "CK_ECDH1_DERIVE_PARAMS") replace("ulPublicDataLen=3 ", "");
        return made;
    }
    return {};
}

TEST_F(WriteBack, aNewParameterIsOfTheClassThatMechanismAndSizeTell)
{
    std::size_t count = 0;
    for (const MadeRow& row : MADE) {
        const ParamRow expected = madeOf(row.parameter);
        const CK_ULONG size = sizeOfNative(expected.native);
        for (const CK_ULONG type : row.mechanisms) {
            SCOPED_TRACE(row.parameter + " of " + std::to_string(type));
            const LocalFrame frame(env);
            ++count;
            Native native;
            const CK_MECHANISM given = {type, native.build(expected.native), size};
            EXPECT_EQ(tell(env, ckMechanismToJMechanism(env, &given)),
                "CK_MECHANISM{mechanism=" + std::to_string(type) + " pParameter=" + expected.java +
                    " parameterLen=" + std::to_string(size) + "}");
            std::vector<CK_BYTE> memory(100, 0xab);
            for (const CK_ULONG otherSize : {size - 1, size + 1, 0UL, 28UL, 100UL}) {
                const CK_MECHANISM other = {type, memory.data(), otherSize};
                EXPECT_EQ(tell(env, ckMechanismParameterToJMechanismParameter(env, &other)),
                    "[" + hex(memory.data(), otherSize) + "]");
            }
        }
    }
    EXPECT_EQ(count, 57U);
}

TEST_F(WriteBack, withoutARowTheParameterIsItsBytesAndWithoutAPointerNull)
{
    CK_ULONG memory[5] = {1, 2, 3, 4, 5};
    const CK_MECHANISM unknown = {0x80009999, memory, 20};
    EXPECT_EQ(tell(env, ckMechanismToJMechanism(env, &unknown)),
        "CK_MECHANISM{mechanism=2147522969 pParameter=[0100000002000000030000000400000005000000] "
        "parameterLen=20}");
    const CK_MECHANISM none = {CKM_RC2_ECB, nullptr, 0xffffffff};
    EXPECT_EQ(tell(env, ckMechanismToJMechanism(env, &none)),
        "CK_MECHANISM{mechanism=257 parameterLen=4294967295}");
    EXPECT_EQ(ckMechanismToJMechanism(env, nullptr), nullptr);
    EXPECT_EQ(ckMechanismParameterToJMechanismParameter(env, nullptr), nullptr);
}

TEST_F(WriteBack, nullPointersWithinANewParameterAreNull)
{
    struct Row {
        CK_ULONG mechanism;
        const char* native;
        const char* java;
    };
    const Row rows[] = {
        {CKM_RSA_PKCS_OAEP, "01000000 00000000 00000000 null 05000000",
            "CK_RSA_PKCS_OAEP_PARAMS{hashAlg=1 source=0 sourceDataLen=5}"},
        {CKM_PP_LOAD_SECRET, "02ff8000 null",
            "CK_PP_LOAD_SECRET_PARAMS{bMaskInput=0 cConvert=255 cTimeout=128}"},
        {CKM_SSL3_MASTER_KEY_DERIVE, "null 00000000 null 00000000 null",
            "CK_SSL3_MASTER_KEY_DERIVE_PARAMS{RandomInfo=CK_SSL3_RANDOM_DATA{}}"},
        {CKM_PKCS12_PBE_IMPORT, "null 00000000 null 00000000 null 00000000 null null",
            "CK_PKCS12_PBE_IMPORT_PARAMS{}"},
    };
    for (const Row& row : rows) {
        Native native;
        const CK_MECHANISM given = {row.mechanism, native.build(row.native), sizeOfNative(row.native)};
        EXPECT_EQ(tell(env, ckMechanismParameterToJMechanismParameter(env, &given)), row.java);
    }
}

TEST_F(WriteBack, whereverAJniCallFailsThereIsNoNewMechanism)
{
    for (const MadeRow& row : MADE) {
        SCOPED_TRACE(row.parameter);
        const LocalFrame frame(env);
        const ParamRow made = madeOf(row.parameter);
        Native native;
        const CK_MECHANISM given = {
            row.mechanisms.front(), native.build(made.native), sizeOfNative(made.native)};
        const int failed = failEachJniCall(env, [&] {
            return [&] {
                const jobject returned = ckMechanismToJMechanism(env, &given);
                EXPECT_EQ(returned == nullptr, env->ExceptionCheck() == JNI_TRUE);
            };
        });
        EXPECT_GT(failed, 5);
    }
}

} // namespace
