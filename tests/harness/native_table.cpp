#include "harness/native_table.h"
#include "halvorn_zerlin_CTUtil.h"

namespace jni {

Made makeArgument(JNIEnv* env, const Kind& kind, std::size_t place, jsize size)
{
    const Kind::Form form = kind.form;
    const auto number = static_cast<jlong>(40 + place), length = size == 0 ? number - 35 : jlong{size};
    const std::string data(static_cast<std::size_t>(length), static_cast<char>('a' + place));
    const std::string hex = "[" + recorder::hex(data.data(), data.size()) + "]";
    const std::string shown = std::to_string(number), shownData = hex + ", " + std::to_string(length);
    const auto object = [&](jlong value) { return make(env, kind.cls().c_str(), "(J)V", value); };
    if (form == Kind::Number) return {{pack(HIGH_HALF + number)}, shown};
    if (form == Kind::Boolean) return {{pack(jboolean{JNI_TRUE})}, "1"};
    if (form == Kind::Pointer) return {{pack(jobject{})}, "null"};
    if (form == Kind::Held || form == Kind::New)
        return {{pack(object(HIGH_HALF + number))}, form == Kind::Held ? shown : "out"};
    if (form == Kind::Record || form == Kind::InitArgs)
        return {{pack(make(env, kind.cls().c_str()))},
            form == Kind::Record ? "out" : "{null, null, null, null, 0, null}"};
    if (form == Kind::Label)
        return {{pack(bytes(env, size == 0 ? "label" : data))}, "[6c6162656c" + std::string(54, '0') + "]"};

    jobject array = bytes(env, kind.isOutput() ? "\7\7\7\7\7\7" : data);
    if (form == Kind::Bytes || form == Kind::Value)
        return {{pack(array), pack(HIGH_HALF + length)}, shownData};
    if (form == Kind::Served) return {{pack(array), pack(HIGH_HALF + length), pack(longRef(env, 99))}, ""};
    if (form == Kind::Mechanism)
        return {{pack(mechanism(env, number, array, length))}, "{" + shown + ", " + shownData + "}"};
    if (form == Kind::Template) {
        const jobject label = attribute(env, 3, array, length);
        return {{pack(attributes(env, {label, label})), pack(HIGH_HALF + 2)},
            "{{3, " + shownData + "}, {3, " + shownData + "}}, 2"};
    }
    const jlong capacity = HIGH_HALF + (size == 0 ? 4 : size);
    if (kind.path == "long")
        array = longs(env, {7, 7, 7, 7, 7, 7});
    else if (!kind.path.empty())
        array = objects(env, kind.cls().c_str(), std::vector(6, object(7)));
    if (form == Kind::Random) return {{pack(array), pack(capacity)}, "out(4)"};
    if (form == Kind::Found) return {{pack(array), pack(capacity), pack(longRef(env, 99))}, "out(4), out"};
    return {{pack(array), pack(longRef(env, capacity))}, "out(4)"};
}

std::string Native::line(JNIEnv* env, std::size_t changed, const std::string& other) const
{
    const LocalFrame frame(env);
    std::string text;
    for (std::size_t i = 0; i < kinds.size(); ++i)
        text += (i == 0 ? "" : ", ") + (i == changed ? other : makeArgument(env, kinds[i], i, 0).second);
    return name + "(" + text + ")";
}

Call Native::prepare(JNIEnv* env, jsize size) const
{
    Call made = native;
    made.arguments.clear();
    for (std::size_t i = 0; i < kinds.size(); ++i)
        std::ranges::copy(makeArgument(env, kinds[i], i, size).first, std::back_inserter(made.arguments));
    return made;
}

template <typename... Parameters>
Call withoutArguments(jobject(JNICALL* native)(JNIEnv*, jclass, Parameters...))
{
    return call(native, Parameters{}...);
}

const std::vector<Native>& natives()
{
    using namespace kinds;
    using kinds::Value;
    using Group = std::pair<std::vector<Kind>, std::vector<std::pair<const char*, Call>>>;
// clang-format off
#define C(name) {"C_" #name, withoutArguments(Java_halvorn_zerlin_Cryptoki_C_1##name)}
#define CT(name) {"CT_" #name, withoutArguments(Java_halvorn_zerlin_Cryptoki_CT_1##name)}
#define CTU(name) {"CTU_" #name, withoutArguments(Java_halvorn_zerlin_CTUtil_CTU_1##name)}
    static const Group GROUPS[] = {
        {{{Kind::InitArgs, "CK_C_INITIALIZE_ARGS"}}, {C(Initialize)}},
        {{Pointer}, {C(Finalize)}},
        {{{Kind::Record, "CK_INFO", Kind::Null}}, {C(GetInfo)}},
        {{Boolean, {Kind::Output, "long", Kind::Null}}, {C(GetSlotList)}},
        {{Number, {Kind::Record, "CK_SLOT_INFO", Kind::Null}}, {C(GetSlotInfo)}},
        {{Number, {Kind::Record, "CK_TOKEN_INFO", Kind::Null}}, {C(GetTokenInfo)}},
        {{Number, NewLong, Pointer}, {C(WaitForSlotEvent)}},
        {{Number, {Kind::Output, "constants/CK_MECHANISM_TYPE", Kind::Null}}, {C(GetMechanismList)}},
        {{Number, {Kind::Held, "constants/CK_MECHANISM_TYPE"}, {Kind::Record, "CK_MECHANISM_INFO", Kind::Null}},
            {C(GetMechanismInfo)}},
        {{Number, Pin, Label}, {C(InitToken)}},
        {{Session, Pin}, {C(InitPIN), C(SeedRandom)}},
        {{Session, Pin, Pin}, {C(SetPIN)}},
        {{Session, Number, ClearText, Label}, {CT(InitToken)}},
        {{Session, ClearText, Label}, {CT(ResetToken)}},
        {{Number, Number, Pointer, Pointer, {Kind::New, "CK_SESSION_HANDLE", Kind::Null}}, {C(OpenSession)}},
        {{Session}, {C(CloseSession), C(Logout), C(FindObjectsFinal), C(GetFunctionStatus), C(CancelFunction)}},
        {{Number}, {C(CloseAllSessions)}},
        {{Session, {Kind::Record, "CK_SESSION_INFO", Kind::Null}}, {C(GetSessionInfo)}},
        {{Session, {Kind::Output, {}, Kind::Null, true, "", 0}}, {C(GetOperationState)}},
        {{Session, {Kind::Bytes, {}, Kind::NullOrNoLength, true}, Object, Object}, {C(SetOperationState)}},
        {{Session, {Kind::Held, "constants/CK_USER_TYPE"}, Pin}, {C(Login)}},
        {{Session, Attributes, NewObject}, {C(CreateObject)}},
        {{Session, Object, Attributes, NewObject}, {C(CopyObject)}},
        {{Session, Session, Object, Attributes, NewObject}, {CT(CopyObject)}},
        {{Session, Object}, {C(DestroyObject), C(DigestKey)}},
        {{Session, Object, NewLong}, {C(GetObjectSize)}},
        {{Session, Object, Attributes}, {C(GetAttributeValue), C(SetAttributeValue)}},
        {{Session, Attributes}, {C(FindObjectsInit)}},
        {{Session, FoundObjects}, {C(FindObjects)}},
        {{Session, Mechanism, Object}, {C(EncryptInit), C(DecryptInit), C(SignInit), C(SignRecoverInit),
            C(VerifyInit), C(VerifyRecoverInit)}},
        {{Session, Mechanism}, {C(DigestInit)}},
        {{Session, ClearText, CipherOutput}, {C(Encrypt), C(EncryptUpdate), C(DigestEncryptUpdate),
            C(SignEncryptUpdate), C(Digest), C(Sign), C(SignRecover)}},
        {{Session, CipherText, ClearOutput}, {C(Decrypt), C(DecryptUpdate), C(DecryptDigestUpdate),
            C(DecryptVerifyUpdate), C(VerifyRecover)}},
        {{Session, CipherOutput}, {C(EncryptFinal), C(DigestFinal), C(SignFinal)}},
        {{Session, ClearOutput}, {C(DecryptFinal)}},
        {{Session, ClearText}, {C(DigestUpdate), C(SignUpdate), C(VerifyUpdate)}},
        {{Session, CipherText}, {C(VerifyFinal)}},
        {{Session, ClearText, CipherText}, {C(Verify)}},
        {{Session, Mechanism, Attributes, NewObject}, {C(GenerateKey)}},
        {{Session, Mechanism, Attributes, Attributes, NewObject, NewObject}, {C(GenerateKeyPair)}},
        {{Session, Mechanism, {.form = Kind::Held, .path = "CK_OBJECT_HANDLE", .ofNull = "0"}, Object, CipherOutput}, {C(WrapKey)}},
        {{Session, Mechanism, Object, WrappedKey, Attributes, NewObject}, {C(UnwrapKey)}},
        {{Session, Mechanism, Object, Attributes, {Kind::New, "CK_OBJECT_HANDLE"}}, {C(DeriveKey)}},
        {{Session, {Kind::Random, {}, Kind::NullWithLength, true, "", 0}}, {C(GenerateRandom)}},
        {{Session, {Kind::Held, "constants/CK_OBJECT_CLASS"}, LabelText, NewObject}, {CTU(FindObject)}},
        {{Session, Object, AttributeType, ServedValue}, {CTU(GetAttributeValue)}},
        {{Session, Object, AttributeType, Value}, {CTU(SetAttributeValue)}},
    };
#undef C
#undef CT
#undef CTU
    // clang-format on
    static std::vector<Native> all;
    if (all.empty())
        for (const auto& [kinds, calls] : GROUPS)
            for (const auto& [name, native] : calls)
                all.push_back({name, native, kinds});
    return all;
}

} // namespace jni
