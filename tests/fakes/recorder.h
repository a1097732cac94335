// A Cryptoki library that only notes each call and returns what the test has scripted. It is
// called as a real one is, through forward.cpp.
//
// A call is noted as one line, C_Login(5, 1, [31323334], 4). It is written while the call runs, so it stays
// valid when the caller's memory changes:
// - numbers: decimal
// - input bytes: [31323334] or null, then the length; [3132..] where a limit cut them
// - templates: {{0, [03000000], 4}, {3, [6d79], 2}} or null, then the count
// - mechanisms: {4226, [00010203], 4} or null
// - arguments of C_Initialize: {set, set, null, null, 2, null} for mutex functions, flags, pReserved; or null
// - output buffers: out(16), or null(16) without a buffer, for the pointer and the capacity
// - other outputs: out or null
// - references that are passed on untouched: recorder::address
#pragma once

#include "cryptoki/functions.h"

#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace recorder {

// An argument of a call. An array and its length, or its capacity, are one argument.
struct Argument {
    enum Form { Number, Reference, InitArgs, Mechanism, Template, Bytes, Label, Output, Outputs } form;
    void* data = nullptr;
    CK_ULONG number = 0;          // the value of a number; how many elements an array has
    CK_ULONG elementSize = 1;     // of an output
    CK_ULONG* reported = nullptr; // where the length of an output goes

    // What a parameter of a function is, as far as its type says.
    explicit Argument(CK_ULONG value) : form(Number), number(value) {}
    explicit Argument(CK_VOID_PTR value) : form(Reference), data(value) {}
    explicit Argument(CK_NOTIFY value) : form(Reference), data(reinterpret_cast<void*>(value)) {}
    explicit Argument(CK_MECHANISM_PTR value) : form(Mechanism), data(value) {}
    explicit Argument(CK_ATTRIBUTE_PTR value) : form(Template), data(value) {}
    explicit Argument(CK_BYTE_PTR value) : form(Label), data(value) {}
    template <typename T>
    explicit Argument(T* value) : form(Output), data(value), elementSize(sizeof *value)
    {
    }
};

// What the calls do. A handler runs after its call was noted, may write to the output pointers, and returns
// the value of the call. A function without a handler is answered by `answer`, or else returns `result` and
// writes nothing.
struct Script {
    CK_RV result = CKR_OK;
    std::function<CK_RV(std::span<const Argument>)> answer;
    std::function<void()> onCall; // before each call is noted

    // Calls are not noted: they use no memory and little of the stack.
    bool isQuiet = false;

    // How much is read of an input, because callers may declare more than there is.
    CK_ULONG labelLength = 32;
    CK_ULONG byteLimit = ~CK_ULONG{0};

#define HANDLER(name) std::function<decltype(::name)> name;
    ZERLIN_STANDARD_FUNCTIONS(HANDLER)
#undef HANDLER
};

// May be changed only while no call runs.
inline Script& script()
{
    static Script current;
    return current;
}

inline std::vector<std::string> calls;

// Returns the calls and forgets them; the script stays.
inline std::vector<std::string> takeCalls()
{
    return std::exchange(calls, {});
}

// Forgets the calls and the script.
inline void reset()
{
    calls.clear();
    script() = {};
}

// The text of an untouched reference, or "null".
std::string address(const void* reference);

// The bytes in hexadecimal: "0a00".
std::string hex(const void* values, std::size_t length);

} // namespace recorder
