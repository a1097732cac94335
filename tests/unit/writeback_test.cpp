// Mechanism parameters from native to Java: the results that key-producing calls leave in the caller's
// parameter object, and the new objects that are made of a native mechanism.
#include "harness/failures.h"
#include "harness/jvm.h"
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "param_text.h"

namespace {

using namespace jni;

struct WriteBack : JniTest {
    Call producer(std::size_t number, jobject jMechanism)
    {
        const jobject on = session(env);
        const jobject key = object(env, 1);
        const Call calls[] = {
            call(NATIVE(C_1GenerateKey), on, jMechanism, nullptr, 0, key),
            call(NATIVE(C_1GenerateKeyPair), on, jMechanism, nullptr, 0, nullptr, 0, key, key),
            call(NATIVE(C_1UnwrapKey), on, jMechanism, key, bytes(env, {1}), 1, nullptr, 0, key),
            call(NATIVE(C_1DeriveKey), on, jMechanism, key, nullptr, 0, key),
        };
        return calls[number];
    }
};

// What the Cryptoki library leaves in a parameter of each class.
void writeIv(void* parameter)
{
    std::memset(static_cast<CK_PBE_PARAMS*>(parameter)->pInitVector, 0xaa, 8);
}
void writeKeys(void* parameter)
{
    CK_SSL3_KEY_MAT_OUT* const out = static_cast<CK_SSL3_KEY_MAT_PARAMS*>(parameter)->pReturnedKeyMaterial;
    *out = {11, 12, 13, 0xffffffff, out->pIVClient, out->pIVServer};
    std::memset(out->pIVClient, 0xaa, 5);
    std::memset(out->pIVServer, 0xbb, 5);
}
void writeVersion(void* parameter)
{
    *static_cast<CK_SSL3_MASTER_KEY_DERIVE_PARAMS*>(parameter)->pVersion = {3, 254};
}
void writeX(void* parameter)
{
    std::memset(static_cast<CK_KEY_WRAP_SET_OAEP_PARAMS*>(parameter)->pX, 0xaa, 2);
}
void writeCerts(void* parameter)
{
    const auto* const params = static_cast<CK_PKCS12_PBE_IMPORT_PARAMS*>(parameter);
    const CK_OBJECT_HANDLE handles[] = {7, 8, 9};
    std::copy_n(handles, params->hCert == nullptr ? 0 : 3, params->hCert);
    *params->hCertCount = 3;
}

struct WriteBackRow {
    jlong mechanism;
    jlong size;
    void (*write)(void* parameter);
    const char* before;
    const char* nativeBefore;
    const char* nativeAfter;
};
const WriteBackRow ROWS[] = {
    {CKM_PBE_MD2_DES_CBC, 24, writeIv, "CK_PBE_PARAMS [00000000000000000000] null 0 null 0 0",
        "[00000000000000000000]", "[aaaaaaaaaaaaaaaa0000]"},
    {CKM_SSL3_KEY_AND_MAC_DERIVE, 36, writeKeys,
        "CK_SSL3_KEY_MAT_PARAMS 0 0 25 0 CK_SSL3_RANDOM_DATA null 0 null 0 CK_SSL3_KEY_MAT_OUT 1 2 3 4 "
        "[0000000000] [0000000000]",
        "00000000 00000000 19000000 00000000 null 00000000 null 00000000 (01000000 02000000 03000000 "
        "04000000 [0000000000] [0000000000])",
        "00000000 00000000 19000000 00000000 null 00000000 null 00000000 (0b000000 0c000000 0d000000 "
        "ffffffff [aaaaaaaa00] [bbbbbbbb00])"},
    {CKM_SSL3_MASTER_KEY_DERIVE, 20, writeVersion,
        "CK_SSL3_MASTER_KEY_DERIVE_PARAMS CK_SSL3_RANDOM_DATA null 0 null 0 CK_VERSION 1 2",
        "null 00000000 null 00000000 [0102]", "null 00000000 null 00000000 [03fe]"},
    {CKM_KEY_WRAP_SET_OAEP, 12, writeX, "CK_KEY_WRAP_SET_OAEP_PARAMS 0 [0102] 2", "00000000 [0102] 02000000",
        "00000000 [aaaa] 02000000"},
    {CKM_PKCS12_PBE_IMPORT, 32, writeCerts,
        "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ( 0 null 0 6 ) 4",
        "null 00000000 null 00000000 null 00000000 [00000000ffffffff0000000006000000] [04000000]",
        "null 00000000 null 00000000 null 00000000 [07000000ffffffff09000000] [03000000]"},
};

// Results are written into the caller's own objects; on failure nothing is written.
TEST_F(WriteBack, resultsGoIntoTheCallersObjects)
{
    for (const WriteBackRow& row : ROWS) {
        SCOPED_TRACE(row.before);
        CK_RV rv = CKR_OK;
        const auto results = [&](CK_SESSION_HANDLE, CK_MECHANISM_PTR made, auto...) {
            row.write(made->pParameter);
            return rv;
        };
        recorder::script().byteLimit = 0;
        recorder::script().C_GenerateKey = results;
        recorder::script().C_GenerateKeyPair = results;
        recorder::script().C_UnwrapKey = results;
        recorder::script().C_DeriveKey = results;
        for (std::size_t number = 0; number < 4; ++number) {
            const jobject parameter = read(env, row.before);
            const Call made = producer(number, mechanism(env, row.mechanism, parameter, row.size));
            for (const char* const expected : {row.nativeBefore, row.nativeAfter}) {
                rv = expected == row.nativeBefore ? CKR_DEVICE_ERROR : CKR_OK;
                EXPECT_EQ(rvOf(env, made(env)), rv);
                EXPECT_EQ(given(env, parameter, row.size, expected), expected);
            }
            failEachJniCall(env, [&] {
                const jobject fresh = mechanism(env, row.mechanism, read(env, row.before), row.size);
                return [this, made = producer(number, fresh)] { return made(env); };
            });
        }
    }
}

TEST_F(WriteBack, mechanismAndSizeDecideTheClassOfANewParameter)
{
    std::vector<ParamRow> rows(std::begin(PARAMS), std::end(PARAMS));
    rows.push_back({"CK_OBJECT_HANDLE 9", 4, "09000000", "", {0x360, 0x80000364}});
    std::size_t count = 0;
    for (const ParamRow& row : rows) {
        const bool isDerive = row.makers.front() == 0x1043; // the length of its public key is unknown
        const char* const native = isDerive ? "01000000 02000000 [0102] 00000000 null" : row.native;
        for (const CK_ULONG type : row.makers) {
            SCOPED_TRACE(row.java + " of " + std::to_string(type));
            ++count;
            const jobject parameter = read(env, row.java);
            const jobject source = mechanism(env, static_cast<jlong>(type), parameter, row.size);
            CK_MECHANISM raw = zerlin::jMechanismToCKMechanism(env, source);
            const jobject made = zerlin::ckMechanismParameterToJMechanismParameter(env, &raw);
            EXPECT_TRUE(env->IsSameObject(env->GetObjectClass(made), env->GetObjectClass(parameter)));
            EXPECT_EQ(given(env, made, row.size, native), native);
            failEachJniCall(env, [&] { return [&] { zerlin::ckMechanismToJMechanism(env, &raw); }; });
            zerlin::FreeCKMechanismParameter(env, source, &raw);
            CK_BYTE bytesOnly[100] = {};
            raw = {type, bytesOnly, static_cast<CK_ULONG>(row.size) + 1};
            const jobject bare = zerlin::ckMechanismParameterToJMechanismParameter(env, &raw);
            EXPECT_EQ(toVector(env, static_cast<jbyteArray>(bare)), Bytes(raw.ulParameterLen));
        }
    }
    EXPECT_EQ(count, 57U);
}

} // namespace
