// Mechanisms and their parameters as the Cryptoki library receives them, and what is left of them afterwards.
#include "digest.h"
#include "halvorn_zerlin_CK_MECHANISM.h"
#include "harness/native_table.h"
#include "helper/convToCK.h"
#include "helper/convToJava.h"

#include <numeric>
#include <set>

namespace {

using namespace jni;
using Params = JniTest;

// Nulls, short and long arrays, limits, and lengths that may differ from those of their arrays.
const std::string NONE = std::to_string(~CK_ULONG{0});
const std::string LOW = std::to_string(static_cast<CK_ULONG>(0x1'00000009));
const std::pair<std::string, std::string> EDGES[] = {
    {"CK_RSA_PKCS_OAEP_PARAMS null 0 null null 0", NONE + " 0 " + NONE + " null 0"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS [6175] 9 null 8 null 0 ( 7 null 4294967305 ) 1",
        "[6175] 9 null 8 null 0 ( 7 " + NONE + " " + LOW + " ) ( 1 )"},
    {"CK_DES2_CBC_PARAMS [] [1112131415161718111213141516171821]",
        ".000000000000000011121314151617181112131415161718"},
    {"CK_PP_LOAD_SECRET_PARAMS null 255 -200 null", ".00ff38 null"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ( 7 ) 0", "null 0 null 0 null 0 null ( 0 )"},
    {"CK_ECIES_PARAMS 0 0 4 [] 0 0 0 0 0 5 null", "0 0 4 [] 0 0 0 0 0 5 null"},
    {"CK_AES_CTR_PARAMS 1 [0102]", "1 .01020000000000000000000000000000"},
    {"CK_HKDF_PARAMS null null null 0 null 0 null null 0", ".0000 " + NONE + " 0 null 0 " + NONE + " null 0"},
    {"CK_X9_42_DH1_DERIVE_PARAMS 1 0 [01] 4 []", "1 0 null 4 []"},
    {"CK_RSA_AES_KEY_WRAP_PARAMS 256 null", "256 null"}};

// Also when the Cryptoki library calls back into Java and an exception is pending.
TEST_F(Params, everyClassBecomesItsStructureAndOnlyThatOfTypeZeroIsLeft)
{
    initialiseWithCallbacks(env);
    std::vector<ParamRow> rows(std::begin(PARAMS), std::end(PARAMS));
    for (const auto& [java, native] : EDGES)
        rows.push_back({rowOf(java).size, java, native});
    for (const ParamRow& row : rows) {
        SCOPED_TRACE(row.java);
        const LocalFrame frame(env);
        const jobject jMechanism = mechanism(env, 4225, read(env, row.java), row.size);
        const HeapWatch heap;
        EXPECT_EQ(given(env, read(env, row.java), row.size, row.native), row.native);
        script().C_DigestInit = [this](auto, auto) {
            env->ThrowNew(find(env, "java/lang/IllegalStateException"), "from within");
            return CKR_OK;
        };
        EXPECT_EQ(call(NATIVE(C_1DigestInit), session(env), jMechanism)(env), nullptr);
        EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
        // The conversion functions themselves return memory from malloc.
        CK_MECHANISM converted = zerlin::jMechanismToCKMechanism(env, jMechanism);
        zerlin::FreeCKMechanismParameter(env, jMechanism, &converted);
        EXPECT_EQ(heap.blocks.size(), 0U);
        for (const std::string& block : heap.freed)
            EXPECT_EQ(block.find_first_not_of('\0'), block.npos) << "not overwritten";
    }
    // The one deliberate leak. The test frees the memory, so that the leak checker does not report it.
    HeapWatch heap;
    script().C_DigestInit = {};
    const jobject parameter = read(env, PARAMS[2].java);
    const jobject jMechanism = mechanism(env, CKM_RSA_PKCS_KEY_PAIR_GEN, parameter, 1);
    EXPECT_EQ(rvOf(env, NATIVE(C_1DigestInit)(env, nullptr, session(env), jMechanism)), CKR_OK);
    ASSERT_EQ(heap.blocks.size(), 1U);
    std::free(heap.blocks.begin()->first);
}

TEST_F(Params, aLengthThatContradictsItsArrayOrItsStructureAborts)
{
    const char* const rows[] = {"CK_RSA_PKCS_OAEP_PARAMS 1 1 1 null 1", "CK_PBE_PARAMS null [01] 0 null 0 0",
        "CK_PBE_PARAMS null null 0 [01] 2 0", "CK_KEY_WRAP_SET_OAEP_PARAMS 0 [01] 2",
        "CK_SSL3_MASTER_KEY_DERIVE_PARAMS CK_SSL3_RANDOM_DATA [01] 2 null 0 null",
        "CK_SSL3_KEY_MAT_PARAMS 0 0 0 0 CK_SSL3_RANDOM_DATA [01] 1 null 1 null",
        "CK_ECIES_PARAMS 0 0 2 [01] 0 0 0 0 0 0 null", "CK_ECIES_PARAMS 0 0 0 null 0 0 0 0 0 1 [0102]",
        "CK_ECDH1_DERIVE_PARAMS 0 0 null 2 [01]", "CK_GCM_PARAMS [01] 2 0 null 0 0",
        "CK_GCM_PARAMS null 0 0 [01] 0 0", "CK_GCM_PARAMS_OLD null 1 null 0 0",
        "CK_GCM_PARAMS_OLD [01] 1 [01] 2 0", "CK_CCM_PARAMS 0 [01] 2 null 0 0",
        "CK_CCM_PARAMS 0 null 0 [] 1 0", "CK_SALSA20_CHACHA20_POLY1305_PARAMS [01] 0 null 0",
        "CK_SALSA20_CHACHA20_POLY1305_PARAMS [01] 1 null 1", "CK_HKDF_PARAMS 0 0 0 0 [01] 2 0 null 0",
        "CK_HKDF_PARAMS 0 0 0 0 [01] 1 0 [01] 0", "CK_EDDSA_PARAMS 0 1 [0102]",
        "CK_X9_42_DH1_DERIVE_PARAMS 0 1 [0102] 0 null", "CK_X9_42_DH1_DERIVE_PARAMS 0 0 null 2 [01]",
        "CK_RSA_AES_KEY_WRAP_PARAMS 0 CK_RSA_PKCS_OAEP_PARAMS 1 1 1 [01] 2"};
    std::string lines; // deliberate: CK_MECH_TYPE_AND_OBJECT is named CK_KEY_DERIVATION_STRING_DATA
    for (const char* java : rows)
        lines += lastWords([&] { given(env, read(env, java), rowOf(java).size, ""); });
    for (const ParamRow& row : PARAMS)
        lines += lastWords([&] { given(env, read(env, row.java), row.size + 1, ""); });
    EXPECT_EQ(digest(lines), "55 lines, 1571724787") << lines;
}

// Without memory for the structure itself the call goes on with a null parameter. A nested structure must not
// be missing, because the Cryptoki library writes into it.
TEST_F(Params, aFailedJniCallOrAllocationLeavesNothing)
{
    script().byteLimit = 0; // the lines would differ by addresses
    std::vector<ParamRow> rows(std::begin(PARAMS), std::end(PARAMS));
    // The deepest nesting of conversions: a value of an unknown class in a template in a parameter.
    rows.push_back({sizeof(CK_PKCS12_PBE_IMPORT_PARAMS),
        "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 ( CK_ATTRIBUTE 3 CK_VERSION 3 1 4 ) 1 null null"});
    for (const ParamRow& row : rows) {
        SCOPED_TRACE(row.java);
        const jobject large = read(env, filled(row.java, 2600, 'x'));
        const jobject jMechanism = mechanism(env, 4225, large, row.size);
        failEachJniCall(env, [&, jSession = session(env), key = object(env, 7)] {
            return [=, this] { return NATIVE(C_1EncryptInit)(env, nullptr, jSession, jMechanism, key); };
        });
        if (&row == &rows.back()) continue;
        const Lines others = failEachAllocation(env, [&] { return given(env, large, row.size, row.native); });
        EXPECT_EQ(others, Lines(others.size(), "null"));
        EXPECT_LE(others.size(), 1U);
    }
    EXPECT_EQ(given(env, read(env, rows.back().java), rows.back().size, ""), "not called");
    EXPECT_TRUE(takeException(env).starts_with("java.lang.UnsupportedOperationException"));
}

// The classes of modern mechanisms are looked up where a parameter would otherwise be refused. A jar may lack
// some or all of them.
TEST_F(Params, modernClassesAreLookedUpLastAndMayBeMissing)
{
    static const JNINativeInterface_* const real = env->functions;
    static std::string asked, missing; // a letter for each lookup; what the names of missing classes contain
    JNINativeInterface_ table = *real;
    table.FindClass = [](JNIEnv* e, const char* path) {
        const bool isModern = std::ranges::any_of(MODERN,
            [&](const ParamRow& row) { return path == "halvorn/zerlin/params/" + classOf(row.java); });
        asked += isModern ? 'm' : 'o';
        return real->FindClass(e, isModern && std::strstr(path, missing.c_str()) ? "missing" : path);
    };
    // What the work looks up with no lookup remembered, and the exception.
    const auto lookups = [&](const std::function<void()>& work) {
        JNI_OnUnload(jvm(), nullptr);
        asked.clear();
        env->functions = &table;
        work();
        env->functions = real;
        return asked + ' ' + takeException(env);
    };
    const auto expectSeen = [](const std::string& seen, const std::string& pattern) {
        EXPECT_TRUE(testing::internal::RE::FullMatch(seen, pattern)) << seen << " is not " << pattern;
    };
    for (const char* const part : {"CK_", "PARAMS_OLD", "none"}) {
        missing = part;
        const LocalFrame frame(env);
        std::vector<std::pair<jobject, jlong>> all = {{make(env, "java/lang/Double", "(D)V", 1.5), 8}};
        for (const ParamRow& row : PARAMS)
            all.emplace_back(read(env, row.java), row.size);
        for (const Value& value : values(env))
            if (!value.native.empty()) all.emplace_back(value.object, value.length);
        for (const auto& [parameter, size] : all) {
            const LocalFrame inner(env);
            const std::string name = className(env, parameter);
            SCOPED_TRACE(name + " without " + missing);
            const bool isModern = std::ranges::any_of(MODERN,
                [&](const ParamRow& row) { return name == "halvorn.zerlin.params." + classOf(row.java); });
            const bool isRefused = !isModern ? name == "java.lang.Double" : name.find(missing) != name.npos;
            const std::string refusal =
                "java.lang.UnsupportedOperationException: No Conversion from " + name + " to a CK type";
            const std::string last = isRefused ? "m[mo]{8,12} " + refusal : isModern ? "m[mo]{0,9} " : " ";
            const jobject jMechanism = mechanism(env, 4225, parameter, size);
            CK_MECHANISM converted{};
            expectSeen(lookups([&] { converted = zerlin::jMechanismToCKMechanism(env, jMechanism); }),
                (isModern || isRefused ? "o{49}" : "o+") + last);
            asked.clear();
            env->functions = &table;
            zerlin::FreeCKMechanismParameter(env, jMechanism, &converted);
            env->functions = real;
            EXPECT_EQ(asked, "");
            // The size query does not know all values.
            const std::string measured = lookups([&, given = parameter] {
                Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(env, nullptr, given);
            });
            if (isModern || isRefused) expectSeen(measured, "o{28}" + last);
            converted = {4225, nullptr, static_cast<CK_ULONG>(size)};
            expectSeen(
                lookups([&] { zerlin::FreeCKMechanismParameter(env, jMechanism, &converted); }), "o+ ");
            const jobjectArray values = attributes(env, {attribute(env, 3, parameter, size)});
            const Call made = call(NATIVE(C_1FindObjectsInit), session(env), values, 1);
            const std::string found = lookups([&] { made(env); });
            expectSeen(found, isModern || isRefused ? "o+ " + refusal : "o+ .*");
        }
    }
}

// From native to Java: the results that key-producing calls leave in the caller's parameter object, whatever
// the Cryptoki library and the caller have changed meanwhile, and new objects of a native mechanism.
using WriteBack = JniTest;

// Numbers, bytes and what pointers point to; - leaves a number or a pointer alone, and @ moves a pointer.
void write(CK_BYTE* place, std::istream& words)
{
    static CK_BYTE elsewhere[64] = {0xee, 0xee, 0xee, 0xee};
    for (std::string word; words >> word && word != ")"; place += WORD) {
        CK_BYTE* pointer = elsewhere;
        if (word != "@") std::memcpy(&pointer, place, WORD);
        if (word == "(") write(pointer, words);
        for (std::size_t i = 1; word[0] == '[' && i + 1 < word.size(); i += 2)
            *pointer++ = static_cast<CK_BYTE>(std::stoul(word.substr(i, 2), nullptr, 16));
        const CK_ULONG number = std::isdigit(word[0]) ? std::stoul(word) : 0;
        if (number != 0 || word == "@")
            std::memcpy(place, word == "@" ? static_cast<void*>(&pointer) : &number, WORD);
    }
}

const std::string_view RETURNING[] = {"C_GenerateKey", "C_GenerateKeyPair", "C_UnwrapKey", "C_DeriveKey"};

TEST_F(WriteBack, resultsGoIntoTheCallersObjects)
{
    const std::string none = " null 0 null 0 0", random = "CK_SSL3_RANDOM_DATA null 0 null 0 ";
    const std::string zeroes(180, '0'); // more bytes than the caller's array had before the call
    const std::string pbe = "CK_PBE_PARAMS ", vector = pbe + "[0102030405060708]" + none;
    const std::string pss = "CK_RSA_PKCS_PSS_PARAMS 1 2 3", six(2 * sizeof(CK_PBE_PARAMS), '6');
    const std::string keys = "CK_SSL3_KEY_MAT_PARAMS 0 0 25 0 " + random + "CK_SSL3_KEY_MAT_OUT ";
    const std::string fourKeys = keys + "1 2 3 4 [0000000000] [0000000000]";
    const std::string version = "CK_SSL3_MASTER_KEY_DERIVE_PARAMS " + random + "CK_VERSION ";
    const std::string import = "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ";
    const std::string two = import + "( 1 2 ) 2", wrap = "CK_KEY_WRAP_SET_OAEP_PARAMS 0 ";
    const jlong PBE = CKM_PBE_MD2_DES_CBC, KEYS = CKM_SSL3_KEY_AND_MAC_DERIVE;
    const jlong VERSION = CKM_SSL3_MASTER_KEY_DERIVE, IMPORT = CKM_PKCS12_PBE_IMPORT;
    // The name, the type, the caller's parameter, what the Cryptoki library writes there, what the caller's
    // mechanism has then, and the parameter that the caller puts there during the call, with length 1.
    struct Row {
        const char* name;
        jlong type;
        std::string before, written, after, exchanged = {};
    };
    const Row rows[] = {{"8 bytes of a longer vector", PBE, pbe + "[00000000000000000000]" + none,
                            "[aaaaaaaaaaaaaaaaaaaa]", pbe + "[aaaaaaaaaaaaaaaa0000]" + none},
        {"a longer array", PBE, pbe + "[010203]" + none, "", pbe + "[010203" + zeroes + "]" + none,
            pbe + "[000000" + zeroes + "]" + none},
        {"another pointer to a vector", PBE, vector, "@", vector},
        {"another class", PBE, vector, "", pss, pss},
        {"bytes that become a structure", PBE, "[" + six + "]", "", vector, vector},
        {"25 bits are 4 bytes", KEYS, fourKeys,
            "- - - - - - - - ( 11 12 13 4294967295 [aaaaaaaaaa] [bbbbbbbbbb] )",
            keys + "11 12 13 4294967295 [aaaaaaaa00] [bbbbbbbb00]"},
        {"another pointer to keys", KEYS, fourKeys, "- - - - - - - - @", fourKeys},
        {"a version", VERSION, version + "1 2", "- - - - [03fe]", version + "3 -2"},
        {"no room for a version", VERSION, version + "1 2", "", version + "5 6", version + "5 6"},
        {"a wrapped set as long as reported", CKM_KEY_WRAP_SET_OAEP, wrap + "[0102] 2", "- [aa] 1",
            wrap + "[aa02] 1"},
        {"three handles of four, one of them null", IMPORT, import + "( 0 null 0 6 ) 4",
            "- - - - - - ( 7 8 9 10 ) ( 3 )", import + "( 7 null 9 6 ) 3"},
        {"more handles than there were", IMPORT, two, "- - - - - - - ( 1000 )", import + "( 1 2 0 ) 1000",
            import + "( 0 0 0 ) 3"},
        {"another pointer to handles", IMPORT, two, "- - - - - - @", two},
        {"another pointer to their count", IMPORT, two, "- - - - - - - @", two}};
    for (const auto& [name, type, before, written, after, exchanged] : rows) {
        for (const Native& native : natives()) {
            if (native.kinds.size() < 2 || native.kinds[1].form != Kind::Mechanism) continue;
            SCOPED_TRACE(native.name + ", " + name);
            const LocalFrame frame(env);
            Call made = native.prepare(env);
            jobject& jMechanism = made.arguments[1].l;
            CK_RV rv = CKR_DEVICE_ERROR;
            script().byteLimit = 0;
            script().answer = [&](Arguments all) {
                std::istringstream words(written);
                write(static_cast<CK_BYTE*>(static_cast<CK_MECHANISM_PTR>(all[1].data)->pParameter), words);
                if (exchanged.empty()) return rv;
                setObject(env, jMechanism, "pParameter", "Ljava/lang/Object;", read(env, exchanged));
                return setLong(env, jMechanism, "parameterLen", 1), rv;
            };
            const auto prepare = [&] {
                const jlong size = rowOf(before[0] == '[' ? after : before).size;
                jMechanism = mechanism(env, type, read(env, before), size);
                return [&] { return made(env); };
            };
            const std::string kept = exchanged.empty() ? before : exchanged;
            for (const std::string& expected :
                {kept, std::ranges::count(RETURNING, native.name) ? after : kept}) {
                EXPECT_EQ(rvOf(env, prepare()()), rv);
                EXPECT_EQ(
                    show(env, getObject(env, jMechanism, "pParameter", "Ljava/lang/Object;")), expected);
                rv = CKR_OK;
            }
            if (exchanged.empty() && native.name == RETURNING[0]) failEachJniCall(env, prepare);
        }
    }
}

TEST_F(WriteBack, mechanismAndSizeDecideTheClassOfANewParameter)
{
    std::set<std::string> classes;
    for (const ParamRow& row : PARAMS) {
        SCOPED_TRACE(row.java);
        const jobject expected = read(env, row.java), source = mechanism(env, 4225, expected, row.size);
        CK_MECHANISM raw = zerlin::jMechanismToCKMechanism(env, source);
        bool isMade = false;
        for (CK_ULONG type = 0; type < 0x80000b00; type += type == 0x1100 ? 0x7fffef00 : 1) {
            const LocalFrame frame(env);
            CK_BYTE zeroes[100] = {};
            const CK_MECHANISM empty = {type, zeroes, raw.ulParameterLen};
            jobject made = zerlin::ckMechanismParameterToJMechanismParameter(env, &empty);
            if (env->IsInstanceOf(made, find(env, "[B"))) continue;
            classes.insert(std::to_string(type) + " " + className(env, made) + "\n");
            if (isMade || className(env, made) != className(env, expected)) continue;
            isMade = true;
            raw.mechanism = type;
            made = zerlin::ckMechanismParameterToJMechanismParameter(env, &raw);
            // Deliberate: the length of a new CK_ECDH1_DERIVE_PARAMS' public key is unknown.
            const std::string native = row.java.starts_with("CK_ECDH1") ? "1 2 [0102] 0 null" : row.native;
            EXPECT_EQ(given(env, made, row.size, native), native);
            failEachJniCall(env, [&] { return [&] { zerlin::ckMechanismToJMechanism(env, &raw); }; });
        }
        EXPECT_EQ(isMade, &row < MODERN.data());
        zerlin::FreeCKMechanismParameter(env, source, &raw);
    }
    const std::string lines = std::accumulate(classes.begin(), classes.end(), std::string());
    EXPECT_EQ(digest(lines), "57 lines, 1186305234") << lines;
}

} // namespace
