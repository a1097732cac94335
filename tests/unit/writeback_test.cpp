// Mechanism parameters from native to Java: the results that key-producing calls leave in the caller's
// parameter object, whatever the Cryptoki library and the caller have changed meanwhile, and the new objects
// that are made of a native mechanism.
#include "digest.h"
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "param_text.h"
#include "values.h"

#include <set>

namespace {

using namespace jni;
using WriteBack = JniTest;

struct Row {
    const char* name;
    jlong type;
    std::string before;         // the caller's parameter
    std::string written;        // what the Cryptoki library writes there
    std::string after;          // what the caller's mechanism has then
    std::string exchanged = {}; // the parameter that the caller puts there during the call, with length 1
};

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

TEST_F(WriteBack, resultsGoIntoTheCallersObjects)
{
    const std::string none = " null 0 null 0 0", random = "CK_SSL3_RANDOM_DATA null 0 null 0 ";
    const std::string zeroes(180, '0'); // more bytes than the caller's array had before the call
    const std::string pbe = "CK_PBE_PARAMS ", vector = pbe + "[0102030405060708]" + none;
    const std::string pss = "CK_RSA_PKCS_PSS_PARAMS 1 2 3", six(2 * sizeof(CK_PBE_PARAMS), '6');
    const std::string keys = "CK_SSL3_KEY_MAT_PARAMS 0 0 25 0 " + random + "CK_SSL3_KEY_MAT_OUT ";
    const std::string fourKeys = keys + "1 2 3 4 [0000000000] [0000000000]";
    const std::string version = "CK_SSL3_MASTER_KEY_DERIVE_PARAMS " + random + "CK_VERSION ";
    const std::string import = "CK_PKCS12_PBE_IMPORT_PARAMS null 0 null 0 null 0 ",
                      two = import + "( 1 2 ) 2";
    const std::string wrap = "CK_KEY_WRAP_SET_OAEP_PARAMS 0 ";
    const jlong PBE = CKM_PBE_MD2_DES_CBC, KEYS = CKM_SSL3_KEY_AND_MAC_DERIVE,
                VERSION = CKM_SSL3_MASTER_KEY_DERIVE, WRAP = CKM_KEY_WRAP_SET_OAEP,
                IMPORT = CKM_PKCS12_PBE_IMPORT;
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
        {"a wrapped set as long as reported", WRAP, wrap + "[0102] 2", "- [aa] 1", wrap + "[aa02] 1"},
        {"three handles of four, one of them null", IMPORT, import + "( 0 null 0 6 ) 4",
            "- - - - - - ( 7 8 9 10 ) ( 3 )", import + "( 7 null 9 6 ) 3"},
        {"more handles than there were", IMPORT, two, "- - - - - - - ( 1000 )", import + "( 1 2 0 ) 1000",
            import + "( 0 0 0 ) 3"},
        {"another pointer to handles", IMPORT, two, "- - - - - - @", two},
        {"another pointer to their count", IMPORT, two, "- - - - - - - @", two}};
    const char* const anyObject = "Ljava/lang/Object;";
    const jobject on = session(env), key = object(env, 1);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        jobject jMechanism = nullptr;
        CK_RV rv = CKR_OK;
        recorder::script().byteLimit = 0;
        recorder::script().answer = [&](std::span<const recorder::Argument> all) {
            std::istringstream words(row.written);
            write(static_cast<CK_BYTE*>(static_cast<CK_MECHANISM_PTR>(all[1].data)->pParameter), words);
            if (!row.exchanged.empty()) {
                setObject(env, jMechanism, "pParameter", anyObject, read(env, row.exchanged));
                setLong(env, jMechanism, "parameterLen", 1);
            }
            return rv;
        };
        const auto prepare = [&](std::size_t number) {
            jMechanism = mechanism(env, row.type, read(env, row.before),
                rowOf(row.before[0] == '[' ? row.after : row.before).size);
            const Call producers[] = {call(NATIVE(C_1GenerateKey), on, jMechanism, nullptr, 0, key),
                call(NATIVE(C_1GenerateKeyPair), on, jMechanism, nullptr, 0, nullptr, 0, key, key),
                call(NATIVE(C_1UnwrapKey), on, jMechanism, key, bytes(env, {1}), 1, nullptr, 0, key),
                call(NATIVE(C_1DeriveKey), on, jMechanism, key, nullptr, 0, key)};
            return producers[number % 4];
        };
        for (std::size_t number = 0; number < 8; ++number) {
            const LocalFrame frame(env);
            rv = number < 4 ? CKR_DEVICE_ERROR : CKR_OK;
            EXPECT_EQ(rvOf(env, prepare(number)(env)), rv);
            const std::string& unwritten = row.exchanged.empty() ? row.before : row.exchanged;
            EXPECT_EQ(show(env, getObject(env, jMechanism, "pParameter", anyObject)),
                rv == CKR_OK ? row.after : unwritten);
        }
        if (row.exchanged.empty())
            failEachJniCall(env, [&] { return [this, made = prepare(0)] { return made(env); }; });
    }
}

TEST_F(WriteBack, mechanismAndSizeDecideTheClassOfANewParameter)
{
    std::set<std::string> classes;
    const jclass byteArray = find(env, "[B");
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
            if (env->IsInstanceOf(made, byteArray)) continue;
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
        EXPECT_TRUE(isMade);
        zerlin::FreeCKMechanismParameter(env, source, &raw);
    }
    std::string lines;
    for (const std::string& line : classes)
        lines += line;
    EXPECT_EQ(digest(lines), "57 lines, 1186305234") << lines;
}

} // namespace
