// Every native that calls the Cryptoki library, one row for natives with the same kinds of arguments. The
// kinds are named as in src/jni/arguments.h; those that do not differ here share a name. A kind says which
// Java arguments it takes, and what the library gets for them.
#pragma once

#include "harness/param_text.h"
#include "harness/values.h"

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
Made makeArgument(JNIEnv* env, const Kind& kind, std::size_t place, jsize size);

struct Native {
    std::string name;
    Call native;
    std::vector<Kind> kinds;

    // Its line is not the native's name and arguments: it makes other Cryptoki calls.
    bool isUtility() const { return name.starts_with("CTU_"); }

    // Its line, with another text in one place.
    std::string line(JNIEnv* env, std::size_t changed = 99, const std::string& other = {}) const;

    Call prepare(JNIEnv* env, jsize size = 0) const;

    // Where the Java arguments of a kind begin.
    std::size_t start(std::size_t place) const
    {
        return place == 0 ? 0 : start(place - 1) + kinds[place - 1].javaCount();
    }
};

const std::vector<Native>& natives();

} // namespace jni
