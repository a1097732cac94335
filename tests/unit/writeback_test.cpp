// Mechanism parameters from native to Java: the results that key-producing calls leave in the caller's
// parameter object, whatever the Cryptoki library and the caller have changed meanwhile, and the new objects
// that are made of a native mechanism.
#include "harness/failures.h"
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "param_text.h"

namespace {

using namespace jni;

template <typename Structure>
struct Case {
    const char* name;
    std::string before;         // the caller's parameter
    void (*work)(Structure&);   // what the Cryptoki library does with it
    std::string after;          // what the caller's mechanism has then
    std::string exchanged = {}; // the parameter that the caller puts there during the call
    jlong exchangedLen = sizeof(Structure);
};

struct WriteBack : JniTest {
    std::size_t sweeps = 0;

    Call producer(std::size_t number, jobject jMechanism)
    {
        const jobject on = session(env), key = object(env, 1);
        const Call calls[] = {
            call(NATIVE(C_1GenerateKey), on, jMechanism, nullptr, 0, key),
            call(NATIVE(C_1GenerateKeyPair), on, jMechanism, nullptr, 0, nullptr, 0, key, key),
            call(NATIVE(C_1UnwrapKey), on, jMechanism, key, bytes(env, {1}), 1, nullptr, 0, key),
            call(NATIVE(C_1DeriveKey), on, jMechanism, key, nullptr, 0, key),
        };
        return calls[number % 4];
    }

    // All producers write the results of each case back, on CKR_OK alone. The first case is also swept.
    template <typename Structure>
    void expectWrittenBack(CK_MECHANISM_TYPE type, const std::vector<Case<Structure>>& cases)
    {
        const char* const anyObject = "Ljava/lang/Object;";
        for (const Case<Structure>& row : cases) {
            SCOPED_TRACE(row.name);
            jobject jMechanism = nullptr;
            CK_RV rv = CKR_OK;
            const auto results = [&](auto, CK_MECHANISM_PTR made, auto...) {
                row.work(*static_cast<Structure*>(made->pParameter));
                if (!row.exchanged.empty()) {
                    setObject(env, jMechanism, "pParameter", anyObject, read(env, row.exchanged));
                    setLong(env, jMechanism, "parameterLen", row.exchangedLen);
                }
                return rv;
            };
            recorder::Script& script = recorder::script();
            script.byteLimit = 0;
            script.C_GenerateKey = results;
            script.C_GenerateKeyPair = results;
            script.C_UnwrapKey = results;
            script.C_DeriveKey = results;
            const auto prepare = [&](std::size_t number) {
                const jobject parameter = read(env, row.before);
                jMechanism = mechanism(env, static_cast<jlong>(type), parameter, sizeof(Structure));
                return producer(number, jMechanism);
            };
            for (std::size_t number = 0; number < 8; ++number) {
                const LocalFrame frame(env);
                rv = number < 4 ? CKR_DEVICE_ERROR : CKR_OK;
                EXPECT_EQ(rvOf(env, prepare(number)(env)), rv);
                const std::string& unwritten = row.exchanged.empty() ? row.before : row.exchanged;
                EXPECT_EQ(show(env, getObject(env, jMechanism, "pParameter", anyObject)),
                    rv == CKR_OK ? row.after : unwritten);
            }
            if (&row != cases.data()) continue;
            ++sweeps;
            failEachJniCall(env, [&] { return [this, made = prepare(sweeps)] { return made(env); }; });
            recorder::reset(); // it refers to local variables
        }
    }
};

// Leaves another address in place of the pointers.
template <auto... MEMBERS>
const auto redirect = [](auto& structure) {
    static CK_BYTE elsewhere[64];
    std::memset(elsewhere, 0xee, sizeof elsewhere);
    const auto set = [](auto*& pointer) {
        pointer = reinterpret_cast<std::remove_reference_t<decltype(pointer)>>(elsewhere);
    };
    (set(structure.*MEMBERS), ...);
};

const std::string ZEROES(180, '0'); // more bytes than the caller's arrays had before the call

TEST_F(WriteBack, initialisationVectors)
{
    const std::string pbe = "CK_PBE_PARAMS [0102030405060708] null 0 [01] 1 0";
    const std::string other = "CK_RSA_PKCS_PSS_PARAMS 1 2 3";
    expectWrittenBack<CK_PBE_PARAMS>(CKM_PBE_MD2_DES_CBC,
        {{"8 bytes of a longer one", "CK_PBE_PARAMS [00000000000000000000] null 0 null 0 0",
             [](auto& made) { std::memset(made.pInitVector, 0xaa, 10); },
             "CK_PBE_PARAMS [aaaaaaaaaaaaaaaa0000] null 0 null 0 0"},
            {"a longer array", "CK_PBE_PARAMS [010203] null 0 null 0 0", [](auto&) {},
                "CK_PBE_PARAMS [010203" + ZEROES + "] null 0 null 0 0",
                "CK_PBE_PARAMS [000000" + ZEROES + "] null 0 null 0 0"},
            {"other pointers", pbe, redirect<&CK_PBE_PARAMS::pInitVector, &CK_PBE_PARAMS::pSalt>, pbe},
            {"another class", pbe, [](auto&) {}, other, other},
            {"bytes that become a structure", "[" + std::string(48, '6') + "]", [](auto&) {}, pbe, pbe}});
}

TEST_F(WriteBack, keysAndInitialisationVectorsOfSSL3)
{
    const auto keys = [](const std::string& bits, const std::string& out) {
        return "CK_SSL3_KEY_MAT_PARAMS 0 0 " + bits +
               " 0 CK_SSL3_RANDOM_DATA null 0 null 0 CK_SSL3_KEY_MAT_OUT " + out;
    };
    using Params = CK_SSL3_KEY_MAT_PARAMS;
    expectWrittenBack<Params>(CKM_SSL3_KEY_AND_MAC_DERIVE,
        {{"25 bits are 4 bytes", keys("25", "1 2 3 4 [0000000000] [0000000000]"),
             [](auto& made) {
                 CK_SSL3_KEY_MAT_OUT* const out = made.pReturnedKeyMaterial;
                 *out = {11, 12, 13, 0xffffffff, out->pIVClient, out->pIVServer};
                 std::memset(out->pIVClient, 0xaa, 5);
                 std::memset(out->pIVServer, 0xbb, 5);
             },
             keys("25", "11 12 13 4294967295 [aaaaaaaa00] [bbbbbbbb00]")},
            {"longer arrays", keys("24", "1 2 3 4 [010203] [040506]"), [](auto&) {},
                keys("800", "1 2 3 4 [010203] [040506" + ZEROES + "]"),
                keys("800", "0 0 0 0 [000000] [000000" + ZEROES + "]")},
            {"another pointer to a vector", keys("16", "1 2 3 4 [0102] [0304]"),
                [](auto& made) {
                    made.pReturnedKeyMaterial->hServerKey = 9;
                    redirect<&CK_SSL3_KEY_MAT_OUT::pIVClient>(*made.pReturnedKeyMaterial);
                },
                keys("16", "1 2 3 9 [0102] [0304]")},
            {"another pointer to all", keys("16", "1 2 3 4 [0102] [0304]"),
                redirect<&Params::pReturnedKeyMaterial>, keys("16", "1 2 3 4 [0102] [0304]")}});
}

TEST_F(WriteBack, versions)
{
    const std::string master =
        "CK_SSL3_MASTER_KEY_DERIVE_PARAMS CK_SSL3_RANDOM_DATA null 0 null 0 CK_VERSION ";
    using Params = CK_SSL3_MASTER_KEY_DERIVE_PARAMS;
    expectWrittenBack<Params>(CKM_SSL3_MASTER_KEY_DERIVE,
        {{"both numbers", master + "1 2",
             [](auto& made) {
                 *made.pVersion = {3, 254};
             },
             master + "3 -2"},
            {"another pointer", master + "1 2", redirect<&Params::pVersion>, master + "1 2"},
            {"room in the declared length", master + "1 2", [](auto&) {}, master + "1 2", master + "5 6", 2},
            {"no room", master + "1 2", [](auto&) {}, master + "5 6", master + "5 6", 1}});
}

TEST_F(WriteBack, wrappedSets)
{
    const std::string wrap = "CK_KEY_WRAP_SET_OAEP_PARAMS 0 ";
    using Params = CK_KEY_WRAP_SET_OAEP_PARAMS;
    expectWrittenBack<Params>(CKM_KEY_WRAP_SET_OAEP,
        {{"as long as it reports", wrap + "[0102] 2",
             [](auto& made) {
                 std::memset(made.pX, 0xaa, 2);
                 made.XLen = 1;
             },
             wrap + "[aa02] 1"},
            {"longer than it was", wrap + "[0102] 2", [](auto& made) { made.XLen = 92; },
                wrap + "[0102" + ZEROES + "] 92", wrap + "[0000" + ZEROES + "] 7"},
            {"another pointer", wrap + "[0102] 2", redirect<&Params::pX>, wrap + "[0102] 2"}});
}

TEST_F(WriteBack, handlesAndTheirCount)
{
    const std::string import = "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ";
    const std::string three = import + "( 0 0 0 ) 3", two = import + "( 1 2 ) 2";
    using Params = CK_PKCS12_PBE_IMPORT_PARAMS;
    expectWrittenBack<Params>(CKM_PKCS12_PBE_IMPORT,
        {{"three of four, one of them null", import + "( 0 null 0 6 ) 4",
             [](auto& made) {
                 const CK_OBJECT_HANDLE handles[] = {7, 8, 9, 10};
                 std::copy_n(handles, 4, made.hCert);
                 *made.hCertCount = 3;
             },
             import + "( 7 null 9 6 ) 3"},
            {"more than there were", two, [](auto& made) { *made.hCertCount = 1000; },
                import + "( 1 2 0 ) 1000", three},
            {"no longer any", two, [](auto& made) { *made.hCertCount = 0; }, import + "( 0 0 0 ) 0", three},
            {"another pointer to them", two, redirect<&Params::hCert>, two},
            {"another pointer to their count", two, redirect<&Params::hCertCount>, two}});
}

TEST_F(WriteBack, mechanismAndSizeDecideTheClassOfANewParameter)
{
    std::vector<ParamRow> rows(std::begin(PARAMS), std::end(PARAMS));
    rows.push_back({"CK_OBJECT_HANDLE 9", 4, "09000000", "", {0x360, 0x80000364}});
    std::size_t count = 0;
    for (const ParamRow& row : rows) {
        const bool isDerive = row.makers.front() == 0x1043; // the length of its public key is unknown
        const char* const native = isDerive ? "01000000 02000000 [0102] 00000000 null" : row.native;
        const jobject parameter = read(env, row.java);
        for (const CK_ULONG type : row.makers) {
            SCOPED_TRACE(row.java + " of " + std::to_string(type));
            ++count;
            const LocalFrame frame(env);
            const jobject source = mechanism(env, static_cast<jlong>(type), parameter, row.size);
            CK_MECHANISM raw = zerlin::jMechanismToCKMechanism(env, source);
            const jobject made = zerlin::ckMechanismParameterToJMechanismParameter(env, &raw);
            EXPECT_TRUE(env->IsSameObject(env->GetObjectClass(made), env->GetObjectClass(parameter)));
            EXPECT_EQ(given(env, made, row.size, native), native);
            if (type == row.makers.front())
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
