// The recording Cryptoki library: what the arguments of a call are, how each is noted, then the functions.
#include "fakes/recorder.h"

#include "cryptoki/functions.h"
#include "cryptoki/library.h"

#include <algorithm>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

using recorder::Argument;
using recorder::script;
using recorder::Script;

std::mutex linesMutex;
std::vector<std::string> lines;
std::atomic<const char*> last = "none";

std::string number(CK_ULONG value)
{
    char digits[2 * sizeof value + 3];
    std::snprintf(digits, sizeof digits, value < 0x80000000 ? "%lu" : "0x%lx", value);
    return digits;
}

std::string hex(const void* values, CK_ULONG length)
{
    if (values == nullptr) return "null";
    const CK_ULONG readable = std::min(length, script().byteLimit);
    std::string result = "[";
    for (CK_ULONG i = 0; i < readable; ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<const std::uint8_t*>(values)[i]);
        result += digits;
    }
    return result + (readable < length ? "..]" : "]");
}

std::string triple(CK_ULONG type, const void* values, CK_ULONG length)
{
    return "{" + number(type) + ", " + hex(values, length) + ", " + number(length) + "}";
}

std::string attributes(const CK_ATTRIBUTE* all, CK_ULONG count)
{
    std::string text;
    const CK_ULONG readable = std::min(count, script().attributeLimit);
    for (const CK_ATTRIBUTE* shown = all; shown != all + readable; ++shown)
        text += (text.empty() ? "" : ", ") + triple(shown->type, shown->pValue, shown->ulValueLen);
    return "{" + text + (readable < count ? ", ..}" : "}");
}

std::string initArgs(const CK_C_INITIALIZE_ARGS& arguments)
{
    const auto function = [](auto pointer) { return pointer == nullptr ? "null, " : "set, "; };
    return std::string("{") + function(arguments.CreateMutex) + function(arguments.DestroyMutex) +
           function(arguments.LockMutex) + function(arguments.UnlockMutex) + number(arguments.flags) + ", " +
           recorder::address(arguments.pReserved) + "}";
}

std::string text(const Argument& shown)
{
    const auto* const mechanism = static_cast<const CK_MECHANISM*>(shown.data);
    const bool isNull = shown.data == nullptr;
    switch (shown.form) {
    case Argument::Number:
        return number(shown.number);
    case Argument::Reference:
        return recorder::address(shown.data);
    case Argument::InitArgs:
        return isNull ? "null" : initArgs(*static_cast<const CK_C_INITIALIZE_ARGS*>(shown.data));
    case Argument::Mechanism:
        return isNull ? "null"
                      : triple(mechanism->mechanism, mechanism->pParameter, mechanism->ulParameterLen);
    case Argument::Template:
        return (isNull ? "null" : attributes(static_cast<const CK_ATTRIBUTE*>(shown.data), shown.number)) +
               ", " + number(shown.number);
    case Argument::Bytes:
        return hex(shown.data, shown.number) + ", " + number(shown.number);
    case Argument::Label:
        return hex(shown.data, script().labelLength);
    case Argument::Output:
        return isNull ? "null" : "out";
    case Argument::Outputs:
        return (isNull ? "null(" : "out(") + number(shown.number) + ")";
    }
    return {};
}

// What a parameter of a function is, as far as its type says.
template <typename T>
Argument single(T value)
{
    if constexpr (std::is_integral_v<T>) {
        return {Argument::Number, nullptr, value};
    } else if constexpr (std::is_same_v<T, CK_VOID_PTR> || std::is_same_v<T, CK_NOTIFY>) {
        return {Argument::Reference, reinterpret_cast<void*>(value)};
    } else {
        Argument::Form form = Argument::Output;
        if (std::is_same_v<T, CK_BYTE_PTR>) form = Argument::Label;
        if (std::is_same_v<T, CK_ATTRIBUTE_PTR>) form = Argument::Template;
        if (std::is_same_v<T, CK_MECHANISM_PTR>) form = Argument::Mechanism;
        return {form, value, 0, sizeof *value};
    }
}

// Joins arrays with their lengths. Returns how many arguments are left.
std::size_t join(std::string_view name, std::span<Argument> all)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        Argument made = all[i];
        const Argument* const next = i + 1 < all.size() ? &all[i + 1] : nullptr;
        const bool isArray =
            made.form == Argument::Label || made.form == Argument::Template || made.form == Argument::Output;
        if (name == "C_Initialize") {
            made.form = Argument::InitArgs;
        } else if (isArray && next != nullptr && next->form == Argument::Number) {
            made.number = next->number;
            const bool isOutput = made.form == Argument::Output || name == "C_GenerateRandom";
            if (made.form != Argument::Template) made.form = isOutput ? Argument::Outputs : Argument::Bytes;
            ++i;
        } else if (isArray && next != nullptr && next->form == Argument::Output &&
                   name != "C_GenerateKeyPair") {
            made.reported = static_cast<CK_ULONG*>(next->data);
            made.number = *made.reported;
            made.form = Argument::Outputs;
            ++i;
        }
        all[count++] = made;
    }
    return count;
}

template <typename... Raw>
CK_RV note(const char* name, const std::function<CK_RV(Raw...)>& handler, Raw... raw)
{
    last = name;
    if (script().onCall) script().onCall();
    Argument all[sizeof...(Raw)];
    std::size_t count = 0;
    ((all[count++] = single(raw)), ...);
    const std::span arguments(all, join(name, all));
    if (!script().isQuiet) {
        std::string line;
        for (const Argument& argument : arguments)
            line += (line.empty() ? "" : ", ") + text(argument);
        const std::lock_guard lock(linesMutex);
        lines.push_back(name + ("(" + line + ")"));
    }
    if (handler) return handler(raw...);
    return script().answer ? script().answer(arguments) : script().result;
}

// The function that notes the calls of a standard function.
template <auto handler>
struct Noting;

template <typename... Raw, std::function<CK_RV(Raw...)> Script::*handler>
struct Noting<handler> {
    static inline const char* name = nullptr;
    static CK_RV call(Raw... raw) { return note(name, script().*handler, raw...); }
};

zerlin::Functions makeFunctions()
{
    zerlin::Functions made{};
#define NOTE(function)                                                                                       \
    Noting<& Script::function>::name = #function;                                                            \
    made.standard.function = Noting<&Script::function>::call;
    STANDARD_FUNCTIONS(NOTE)
#undef NOTE
    return made;
}

} // namespace

namespace recorder {

Script& script()
{
    static Script current;
    return current;
}

std::vector<std::string> calls()
{
    const std::lock_guard lock(linesMutex);
    return lines;
}

std::vector<std::string> takeCalls()
{
    const std::lock_guard lock(linesMutex);
    return std::exchange(lines, {});
}

const char* lastCalled()
{
    return last;
}

void reset()
{
    const std::lock_guard lock(linesMutex);
    lines.clear();
    script() = {};
}

std::string address(const void* reference)
{
    if (reference == nullptr) return "null";
    char digits[2 * sizeof reference + 2];
    std::snprintf(digits, sizeof digits, "@%" PRIxPTR, reinterpret_cast<std::uintptr_t>(reference));
    return digits;
}

} // namespace recorder

// The recorder is always there. forward.cpp passes the standard functions on to it.
std::atomic<const zerlin::Functions*> zerlin::foundFunctions;

const zerlin::Functions& zerlin::findFunctions()
{
    static const Functions noting = makeFunctions();
    return noting;
}

std::string zerlin::loadLibrary(const std::string&)
{
    return {};
}

void zerlin::unloadLibrary() {}

CK_RV CT_CopyObject(CK_SESSION_HANDLE hSession1, CK_SESSION_HANDLE hSession2, CK_OBJECT_HANDLE hObject,
    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phNewObject)
{
    return note("CT_CopyObject", script().CT_CopyObject, hSession1, hSession2, hObject, pTemplate, ulCount,
        phNewObject);
}

CK_RV CT_InitToken(CK_SESSION_HANDLE hSession, CK_ULONG ulValue, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen,
    CK_UTF8CHAR_PTR pLabel)
{
    return note("CT_InitToken", script().CT_InitToken, hSession, ulValue, pPin, ulPinLen, pLabel);
}

CK_RV CT_ResetToken(
    CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_UTF8CHAR_PTR pLabel)
{
    return note("CT_ResetToken", script().CT_ResetToken, hSession, pPin, ulPinLen, pLabel);
}
