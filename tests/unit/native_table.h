// Every native that calls the Cryptoki library, one row for natives with the same kinds of arguments. The
// kinds are named as in src/jni/arguments.h; those that do not differ here share a name. A kind says which
// Java arguments it takes, and what the library gets for them.
#pragma once

#include "halvorn_zerlin_CTUtil.h"
#include "param_text.h"
#include "values.h"

namespace jni {

constexpr const char* ALL_ONES = sizeof(CK_ULONG) == 4 ? "4294967295" : "18446744073709551615";

// What an argument kind takes, and how it is treated. Held: an object with a number. Bytes: a byte[] and its
// length; a Label has none. Template: a CK_ATTRIBUTE[] and its count. Value: a bare value and its length, and
// Served: a LongRef besides. New: an object that receives a number. Record: one that receives information.
// Output: an array, and a LongRef of its capacity and length. Found: a CK_OBJECT_HANDLE[], its capacity, and
// a LongRef of its length. Random: a byte[] and its capacity.
struct Kind {
    // clang-format off
    enum Form { Number, Boolean, Pointer, InitArgs, Held, Bytes, Label, Template, Value, Served, Mechanism,
        New, Record, Output, Found, Random } form;
    // clang-format on
    std::string_view path = {}; // of the object's class, or of the elements of an output
    enum Refused { Never, NullWithLength, Null, NullOrNoLength } refused = Never;
    bool isSecret = false;         // must be overwritten when the call is over
    const char* ofNull = ALL_ONES; // the number of a null object
    CK_ULONG spare = 1;            // how many elements a buffer has more than were asked for

    std::size_t javaCount() const
    {
        return 1 + (form == Bytes || form == Template || form == Value || isOutput()) + (form == Found) +
               2 * (form == Served);
    }
    bool isInput() const { return form >= Bytes && form <= Mechanism; }
    bool isOutput() const { return form == Output || form == Found || form == Random; }
    bool hasLongRef() const { return form == Output || form == Found || form == Served; }
    std::string cls() const { return "halvorn/zerlin/" + std::string(path); }
};

namespace kinds {

constexpr Kind Number{Kind::Number}, Boolean{Kind::Boolean}, Pointer{Kind::Pointer};
constexpr Kind Session{Kind::Held, "CK_SESSION_HANDLE"}, Object{Kind::Held, "CK_OBJECT_HANDLE"};
constexpr Kind AttributeType{Kind::Held, "constants/CK_ATTRIBUTE_TYPE"};
constexpr Kind ClearText{Kind::Bytes, {}, Kind::Never, true}, CipherText{Kind::Bytes};
constexpr Kind WrappedKey{Kind::Bytes, {}, Kind::Null}, Pin{Kind::Bytes, {}, Kind::NullWithLength, true};
constexpr Kind Label{Kind::Label, {}, Kind::Never, true}, LabelText = Label;
constexpr Kind Attributes{Kind::Template, {}, Kind::NullWithLength, true};
constexpr Kind Value{Kind::Value, {}, Kind::Never, true}, ServedValue{Kind::Served, {}, Kind::Null, true};
constexpr Kind Mechanism{Kind::Mechanism, {}, Kind::Null, true};
constexpr Kind NewObject{Kind::New, "CK_OBJECT_HANDLE", Kind::Null};
constexpr Kind NewLong{Kind::New, "LongRef", Kind::Null};
constexpr Kind ClearOutput{Kind::Output, {}, Kind::Null, true}, CipherOutput{Kind::Output, {}, Kind::Null};
constexpr Kind FoundObjects{Kind::Found, "CK_OBJECT_HANDLE", Kind::Null};

} // namespace kinds

constexpr jlong HIGH_HALF = sizeof(CK_ULONG) == 4 ? 0x7'0000'0000 : 0; // of a jlong, which is ignored

// The Java arguments of a kind, and the argument in the recorder's line. All numbers and lengths in one call
// differ, so that each can be found there: they depend on the argument's place. With a size all arrays and
// capacities have it, so that memory must be allocated.
using Made = std::pair<std::vector<jvalue>, std::string>;
inline Made makeArgument(JNIEnv* env, const Kind& kind, std::size_t place, jsize size)
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

struct Native {
    std::string name;
    Call native;
    std::vector<Kind> kinds;

    // Its line is not the native's name and arguments: it makes other Cryptoki calls.
    bool isUtility() const { return name.starts_with("CTU_"); }

    // Its line, with another text in one place.
    std::string line(JNIEnv* env, std::size_t changed = 99, const std::string& other = {}) const
    {
        const LocalFrame frame(env);
        std::string text;
        for (std::size_t i = 0; i < kinds.size(); ++i)
            text += (i == 0 ? "" : ", ") + (i == changed ? other : makeArgument(env, kinds[i], i, 0).second);
        return name + "(" + text + ")";
    }

    Call prepare(JNIEnv* env, jsize size = 0) const
    {
        Call made = native;
        made.arguments.clear();
        for (std::size_t i = 0; i < kinds.size(); ++i)
            std::ranges::copy(makeArgument(env, kinds[i], i, size).first, std::back_inserter(made.arguments));
        return made;
    }

    // Where the Java arguments of a kind begin.
    std::size_t start(std::size_t place) const
    {
        return place == 0 ? 0 : start(place - 1) + kinds[place - 1].javaCount();
    }
};

template <typename... Parameters>
Call withoutArguments(jobject(JNICALL* native)(JNIEnv*, jclass, Parameters...))
{
    return call(native, Parameters{}...);
}

inline const std::vector<Native>& natives()
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
