// Every native that calls the Cryptoki library, one row each: its name and the kinds of its arguments, which
// are named as in src/jni/arguments.h. A kind says which Java arguments it takes, and what the library gets
// for them.
#pragma once

#include "halvorn_zerlin_CTUtil.h"
#include "param_text.h"
#include "values.h"

namespace jni {

// What an argument kind takes, and how it is treated.
struct Kind {
    enum Form {
        Number,
        Boolean,
        Pointer,
        Held,     // an object with a number
        Bytes,    // a byte[] and its length
        Label,    // a byte[] alone
        Template, // a CK_ATTRIBUTE[] and its count
        Value,    // a bare value and its length
        Served,   // the same, and a LongRef
        Mechanism,
        New,    // an object that receives a number
        Record, // an object that receives information
        Output, // an array, and a LongRef of its capacity and length
        Found,  // a CK_OBJECT_HANDLE[], its capacity, and a LongRef of its length
        Random, // a byte[] and its capacity
        InitArgs,
    } form;
    std::string_view path = {}; // of the object's class, or of the elements of an output
    enum Refused { Never, NullWithLength, Null, NullOrNoLength } refused = Never;
    bool isSecret = false;             // must be overwritten when the call is over
    const char* ofNull = "0xffffffff"; // the number of a null object
    CK_ULONG spare = 1;                // how many elements a buffer has more than were asked for

    std::size_t javaCount() const
    {
        return form == Served || form == Found                                                          ? 3
               : form == Bytes || form == Template || form == Value || form == Output || form == Random ? 2
                                                                                                        : 1;
    }
    bool isHeld() const { return form == Held || form == New; }
    bool isInput() const { return form >= Bytes && form <= Mechanism; }
    bool isOutput() const { return form == Output || form == Found || form == Random; }
    std::string cls() const { return "halvorn/zerlin/" + std::string(path); }
    const char* field() const { return path == "LongRef" ? "value" : "m_value"; }
};

namespace kinds {

constexpr Kind Slot{Kind::Number}, Flags = Slot, Number = Slot, Boolean{Kind::Boolean};
constexpr Kind Pointer{Kind::Pointer}, NotifyPointer = Pointer, InitArgs{Kind::InitArgs};
constexpr Kind Session{Kind::Held, "CK_SESSION_HANDLE"}, Object{Kind::Held, "CK_OBJECT_HANDLE"};
constexpr Kind Key = Object, UncheckedLastObject = Object;
constexpr Kind WrappingKey{.form = Kind::Held, .path = "CK_OBJECT_HANDLE", .ofNull = "0"};
constexpr Kind UserType{Kind::Held, "constants/CK_USER_TYPE"};
constexpr Kind MechanismType{Kind::Held, "constants/CK_MECHANISM_TYPE"};
constexpr Kind ObjectClass{Kind::Held, "constants/CK_OBJECT_CLASS"};
constexpr Kind AttributeType{Kind::Held, "constants/CK_ATTRIBUTE_TYPE"};
constexpr Kind ClearText{Kind::Bytes, {}, Kind::Never, true}, UncheckedPin = ClearText;
constexpr Kind CipherText{Kind::Bytes}, Signature = CipherText, WrappedKey{Kind::Bytes, {}, Kind::Null};
constexpr Kind Pin{Kind::Bytes, {}, Kind::NullWithLength, true}, Seed = Pin;
constexpr Kind OperationState{Kind::Bytes, {}, Kind::NullOrNoLength, true};
constexpr Kind Label{Kind::Label, {}, Kind::Never, true}, LabelText = Label;
constexpr Kind Attributes{Kind::Template, {}, Kind::NullWithLength, true}, ServedAttributes = Attributes;
constexpr Kind Value{Kind::Value, {}, Kind::Never, true}, ServedValue{Kind::Served, {}, Kind::Null, true};
constexpr Kind Mechanism{Kind::Mechanism, {}, Kind::Null, true}, ReturningMechanism = Mechanism;
constexpr Kind NewObject{Kind::New, "CK_OBJECT_HANDLE", Kind::Null},
    OptionalNewKey{Kind::New, "CK_OBJECT_HANDLE"};
constexpr Kind NewSession{Kind::New, "CK_SESSION_HANDLE", Kind::Null},
    NewLong{Kind::New, "LongRef", Kind::Null};
constexpr Kind LibraryInfo{Kind::Record, "CK_INFO", Kind::Null};
constexpr Kind SlotInfo{Kind::Record, "CK_SLOT_INFO", Kind::Null};
constexpr Kind TokenInfo{Kind::Record, "CK_TOKEN_INFO", Kind::Null};
constexpr Kind SessionInfo{Kind::Record, "CK_SESSION_INFO", Kind::Null};
constexpr Kind MechanismInfo{Kind::Record, "CK_MECHANISM_INFO", Kind::Null};
constexpr Kind ClearOutput{Kind::Output, {}, Kind::Null, true}, CipherOutput{Kind::Output, {}, Kind::Null};
constexpr Kind Digest = CipherOutput, SignatureOutput = CipherOutput,
               SlotList{Kind::Output, "long", Kind::Null};
constexpr Kind MechanismList{Kind::Output, "constants/CK_MECHANISM_TYPE", Kind::Null};
constexpr Kind StateOutput{.form = Kind::Output, .refused = Kind::Null, .isSecret = true, .spare = 0};
constexpr Kind FoundObjects{Kind::Found, "CK_OBJECT_HANDLE", Kind::Null};
constexpr Kind RandomBytes{
    .form = Kind::Random, .refused = Kind::NullWithLength, .isSecret = true, .spare = 0};

} // namespace kinds

// All numbers and lengths in one call differ, so that each can be found there: they depend on the argument's
// place.
inline std::string content(std::size_t place, std::size_t size)
{
    return std::string(size == 0 ? 5 + place : size, static_cast<char>('a' + place));
}

// The Java arguments. With a size all arrays and capacities have it, so that memory must be allocated.
inline std::vector<jvalue> javaArguments(JNIEnv* env, const Kind& kind, std::size_t place, jsize size)
{
    const auto number = static_cast<jlong>(40 + place);
    const std::string data = content(place, static_cast<std::size_t>(size));
    const auto length = static_cast<jlong>(data.size());
    const jlong capacity = size == 0 ? 4 : size;
    switch (kind.form) {
    case Kind::Number:
        return {pack(number)};
    case Kind::Boolean:
        return {pack(jboolean{JNI_TRUE})};
    case Kind::Pointer:
        return {pack(jobject{})};
    case Kind::Held:
    case Kind::New:
        return {pack(make(env, kind.cls().c_str(), "(J)V", number))};
    case Kind::Bytes:
        return {pack(bytes(env, data)), pack(length)};
    case Kind::Label:
        return {pack(bytes(env, size == 0 ? "label" : data))};
    case Kind::Template: {
        const jobject bits = attribute(env, 289, boxedLong(env, 2048), 4);
        return {pack(attributes(env, {attribute(env, 3, bytes(env, data), length), bits})), pack(jlong{2})};
    }
    case Kind::Value:
        return {pack(bytes(env, data)), pack(length)};
    case Kind::Served:
        return {pack(bytes(env, data)), pack(length), pack(longRef(env, 99))};
    case Kind::Mechanism:
        return {pack(mechanism(env, number, bytes(env, data), length))};
    case Kind::Record:
        return {pack(make(env, kind.cls().c_str()))};
    case Kind::Output:
        if (kind.path == "long") return {pack(longs(env, {7, 7, 7, 7, 7, 7})), pack(longRef(env, capacity))};
        if (kind.path == "constants/CK_MECHANISM_TYPE") {
            const jclass type = find(env, kind.cls().c_str());
            return {pack(env->NewObjectArray(6, type, mechanismType(env, 7))), pack(longRef(env, capacity))};
        }
        return {pack(bytes(env, {7, 7, 7, 7, 7, 7})), pack(longRef(env, capacity))};
    case Kind::Found: {
        const jobjectArray found = objects(env, kind.cls().c_str(), {object(env, 7), object(env, 7)});
        return {pack(found), pack(capacity), pack(longRef(env, 99))};
    }
    case Kind::Random:
        return {pack(bytes(env, {7, 7, 7, 7, 7, 7})), pack(capacity)};
    case Kind::InitArgs:
        return {pack(make(env, "halvorn/zerlin/CK_C_INITIALIZE_ARGS"))};
    }
    return {};
}

inline std::string hex(const std::string& text)
{
    return "[" + nativeText(text.data(), std::string(2 * text.size(), '.')) + "]";
}

// The argument in the recorder's line.
inline std::string shown(const Kind& kind, std::size_t place)
{
    const std::string number = std::to_string(40 + place), data = content(place, 0);
    const std::string length = std::to_string(data.size());
    switch (kind.form) {
    case Kind::Boolean:
        return "1";
    case Kind::Pointer:
        return "null";
    case Kind::Bytes:
        return hex(data) + ", " + length;
    case Kind::Label:
        return hex("label" + std::string(27, '\0'));
    case Kind::Template:
        return "{{3, " + hex(data) + ", " + length + "}, {289, [00080000], 4}}, 2";
    case Kind::Mechanism:
        return "{" + number + ", " + hex(data) + ", " + length + "}";
    case Kind::New:
    case Kind::Record:
        return "out";
    case Kind::Output:
    case Kind::Random:
        return "out(4)";
    case Kind::Found:
        return "out(4), out";
    case Kind::InitArgs:
        return "{null, null, null, null, 0, null}";
    default:
        return number;
    }
}

struct Native {
    std::string name;
    Call native;
    std::vector<Kind> kinds;

    // Its line is not the native's name and arguments: it makes other Cryptoki calls.
    bool isUtility() const { return name.starts_with("CTU_"); }

    // Its line, with another text in one place.
    std::string line(std::size_t changed = ~std::size_t{0}, const std::string& other = {}) const
    {
        std::string text;
        for (std::size_t i = 0; i < kinds.size(); ++i)
            text += (i == 0 ? "" : ", ") + (i == changed ? other : shown(kinds[i], i));
        return name + "(" + text + ")";
    }

    Call prepare(JNIEnv* env, jsize size = 0) const
    {
        Call made = native;
        made.arguments.clear();
        for (std::size_t i = 0; i < kinds.size(); ++i)
            for (const jvalue& next : javaArguments(env, kinds[i], i, size))
                made.arguments.push_back(next);
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
    struct Group {
        std::vector<Kind> kinds;
        std::vector<std::pair<const char*, Call>> natives;
    };
// clang-format off
#define C(name) {"C_" #name, withoutArguments(Java_halvorn_zerlin_Cryptoki_C_1##name)}
#define CT(name) {"CT_" #name, withoutArguments(Java_halvorn_zerlin_Cryptoki_CT_1##name)}
#define CTU(name) {"CTU_" #name, withoutArguments(Java_halvorn_zerlin_CTUtil_CTU_1##name)}
    static const Group GROUPS[] = {
        {{InitArgs}, {C(Initialize)}},
        {{Pointer}, {C(Finalize)}},
        {{LibraryInfo}, {C(GetInfo)}},
        {{Boolean, SlotList}, {C(GetSlotList)}},
        {{Slot, SlotInfo}, {C(GetSlotInfo)}},
        {{Slot, TokenInfo}, {C(GetTokenInfo)}},
        {{Flags, NewLong, Pointer}, {C(WaitForSlotEvent)}},
        {{Slot, MechanismList}, {C(GetMechanismList)}},
        {{Slot, MechanismType, MechanismInfo}, {C(GetMechanismInfo)}},
        {{Slot, Pin, Label}, {C(InitToken)}},
        {{Session, Pin}, {C(InitPIN)}},
        {{Session, Pin, Pin}, {C(SetPIN)}},
        {{Session, Number, UncheckedPin, Label}, {CT(InitToken)}},
        {{Session, UncheckedPin, Label}, {CT(ResetToken)}},
        {{Slot, Flags, Pointer, NotifyPointer, NewSession}, {C(OpenSession)}},
        {{Session}, {C(CloseSession), C(Logout), C(FindObjectsFinal), C(GetFunctionStatus),
            C(CancelFunction)}},
        {{Slot}, {C(CloseAllSessions)}},
        {{Session, SessionInfo}, {C(GetSessionInfo)}},
        {{Session, StateOutput}, {C(GetOperationState)}},
        {{Session, OperationState, Key, Key}, {C(SetOperationState)}},
        {{Session, UserType, Pin}, {C(Login)}},
        {{Session, Attributes, NewObject}, {C(CreateObject)}},
        {{Session, Object, Attributes, NewObject}, {C(CopyObject)}},
        {{Session, Session, Object, Attributes, NewObject}, {CT(CopyObject)}},
        {{Session, Object}, {C(DestroyObject)}},
        {{Session, Object, NewLong}, {C(GetObjectSize)}},
        {{Session, Object, ServedAttributes}, {C(GetAttributeValue)}},
        {{Session, UncheckedLastObject, Attributes}, {C(SetAttributeValue)}},
        {{Session, Attributes}, {C(FindObjectsInit)}},
        {{Session, FoundObjects}, {C(FindObjects)}},
        {{Session, Mechanism, Key}, {C(EncryptInit), C(DecryptInit), C(SignInit), C(SignRecoverInit),
            C(VerifyInit), C(VerifyRecoverInit)}},
        {{Session, Mechanism}, {C(DigestInit)}},
        {{Session, ClearText, CipherOutput}, {C(Encrypt), C(EncryptUpdate), C(DigestEncryptUpdate),
            C(SignEncryptUpdate)}},
        {{Session, CipherText, ClearOutput}, {C(Decrypt), C(DecryptUpdate), C(DecryptDigestUpdate),
            C(DecryptVerifyUpdate)}},
        {{Session, ClearText, Digest}, {C(Digest)}},
        {{Session, ClearText, SignatureOutput}, {C(Sign), C(SignRecover)}},
        {{Session, Signature, ClearOutput}, {C(VerifyRecover)}},
        {{Session, CipherOutput}, {C(EncryptFinal)}},
        {{Session, ClearOutput}, {C(DecryptFinal)}},
        {{Session, Digest}, {C(DigestFinal)}},
        {{Session, SignatureOutput}, {C(SignFinal)}},
        {{Session, ClearText}, {C(DigestUpdate), C(SignUpdate), C(VerifyUpdate)}},
        {{Session, Signature}, {C(VerifyFinal)}},
        {{Session, ClearText, Signature}, {C(Verify)}},
        {{Session, Key}, {C(DigestKey)}},
        {{Session, ReturningMechanism, Attributes, NewObject}, {C(GenerateKey)}},
        {{Session, ReturningMechanism, Attributes, Attributes, NewObject, NewObject}, {C(GenerateKeyPair)}},
        {{Session, Mechanism, WrappingKey, Key, CipherOutput}, {C(WrapKey)}},
        {{Session, ReturningMechanism, Key, WrappedKey, Attributes, NewObject}, {C(UnwrapKey)}},
        {{Session, ReturningMechanism, Key, Attributes, OptionalNewKey}, {C(DeriveKey)}},
        {{Session, Seed}, {C(SeedRandom)}},
        {{Session, RandomBytes}, {C(GenerateRandom)}},
        {{Session, ObjectClass, LabelText, NewObject}, {CTU(FindObject)}},
        {{Session, Object, AttributeType, ServedValue}, {CTU(GetAttributeValue)}},
        {{Session, Object, AttributeType, Value}, {CTU(SetAttributeValue)}},
    };
#undef C
#undef CT
#undef CTU
    // clang-format on
    static const std::vector<Native> all = [] {
        std::vector<Native> made;
        for (const Group& group : GROUPS)
            for (const auto& [name, native] : group.natives)
                made.push_back({name, native, group.kinds});
        return made;
    }();
    return all;
}

} // namespace jni
