// The recording Cryptoki library: how the arguments of a call are noted, then the functions.
#include "fakes/recorder.h"

#include "cryptoki/library.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace {

using recorder::Argument;
using recorder::script;
using zerlin::Functions;

std::string bytes(const void* values, CK_ULONG length)
{
    if (values == nullptr) return "null";
    const CK_ULONG readable = std::min(length, script().byteLimit);
    return "[" + recorder::hex(values, readable) + (readable < length ? "..]" : "]");
}

std::string triple(CK_ULONG type, const void* values, CK_ULONG length)
{
    return "{" + std::to_string(type) + ", " + bytes(values, length) + ", " + std::to_string(length) + "}";
}

std::string text(const CK_ATTRIBUTE* all, CK_ULONG count)
{
    std::string text;
    for (const CK_ATTRIBUTE& shown : std::span(all, count))
        text += (text.empty() ? "" : ", ") + triple(shown.type, shown.pValue, shown.ulValueLen);
    return "{" + text + "}";
}

std::string text(const CK_C_INITIALIZE_ARGS& arguments)
{
    const auto function = [](auto pointer) { return pointer == nullptr ? "null, " : "set, "; };
    return std::string("{") + function(arguments.CreateMutex) + function(arguments.DestroyMutex) +
           function(arguments.LockMutex) + function(arguments.UnlockMutex) + std::to_string(arguments.flags) +
           ", " + recorder::address(arguments.pReserved) + "}";
}

std::string text(const Argument& shown)
{
    const auto is = [&](Argument::Form form) { return shown.form == form; };
    const auto* const mechanism = static_cast<const CK_MECHANISM*>(shown.data);
    const std::string count = std::to_string(shown.number);
    if (is(Argument::Number)) return count;
    if (is(Argument::Reference)) return recorder::address(shown.data);
    if (is(Argument::Label)) return bytes(shown.data, script().labelLength);
    if (is(Argument::Bytes)) return bytes(shown.data, shown.number) + ", " + count;
    std::string made = shown.data == nullptr ? "null" : "out";
    if (is(Argument::Outputs)) return made + "(" + count + ")";
    if (is(Argument::Template) && shown.data != nullptr)
        made = text(static_cast<const CK_ATTRIBUTE*>(shown.data), shown.number);
    if (is(Argument::Template)) return made + ", " + count;
    if (is(Argument::Output) || shown.data == nullptr) return made;
    if (is(Argument::InitArgs)) return text(*static_cast<const CK_C_INITIALIZE_ARGS*>(shown.data));
    return triple(mechanism->mechanism, mechanism->pParameter, mechanism->ulParameterLen);
}

// Joins arrays with their lengths. Returns how many arguments are left.
std::size_t join(std::string_view name, std::span<Argument> all)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        Argument& made = all[count++] = all[i];
        const bool isInput = made.form == Argument::Label && name != "C_GenerateRandom";
        if (name == "C_Initialize") made.form = Argument::InitArgs;
        if (made.form < Argument::Template || i + 1 == all.size()) continue;
        const Argument& next = all[i + 1];
        if (next.form == Argument::Number) {
            made.number = next.number;
            if (made.form != Argument::Template) made.form = isInput ? Argument::Bytes : Argument::Outputs;
        } else if (next.form == Argument::Output && name != "C_GenerateKeyPair") {
            made.reported = static_cast<CK_ULONG*>(next.data);
            made.number = *made.reported;
            made.form = Argument::Outputs;
        } else {
            continue;
        }
        ++i;
    }
    return count;
}

template <typename Handler, typename... Raw>
CK_RV note(const char* name, const Handler& handler, Raw... raw)
{
    if (script().onCall) script().onCall();
    Argument all[] = {Argument(raw)...};
    const std::span arguments(all, join(name, all));
    if (!script().isQuiet) {
        std::string line;
        for (const Argument& argument : arguments)
            line += (line.empty() ? "" : ", ") + text(argument);
        recorder::calls.push_back(name + ("(" + line + ")"));
    }
    if constexpr (!std::is_null_pointer_v<Handler>)
        if (handler) return handler(raw...);
    return script().answer ? script().answer(arguments) : script().result;
}

} // namespace

std::string recorder::address(const void* reference)
{
    return reference == nullptr ? "null" : "@" + std::to_string(reinterpret_cast<std::uintptr_t>(reference));
}

std::string recorder::hex(const void* values, std::size_t length)
{
    std::string text;
    for (const CK_BYTE byte : std::span(static_cast<const CK_BYTE*>(values), length))
        text += {"0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16]};
    return text;
}

// The recorder is always there. forward.cpp passes the standard functions on to it, vendor.cpp the others.
std::atomic<const Functions*> zerlin::foundFunctions;

const Functions& zerlin::findFunctions()
{
    static const Functions noting = [] {
        Functions made{};
#define NOTE(name) made.standard.name = [](auto... raw) { return note(#name, script().name, raw...); };
        ZERLIN_STANDARD_FUNCTIONS(NOTE)
#undef NOTE
        made.copyObject = [](auto... raw) { return note("CT_CopyObject", nullptr, raw...); };
        made.initToken = [](auto... raw) { return note("CT_InitToken", nullptr, raw...); };
        made.resetToken = [](auto... raw) { return note("CT_ResetToken", nullptr, raw...); };
        return made;
    }();
    return noting;
}

std::string zerlin::loadLibrary(const std::string&)
{
    return {};
}

std::string zerlin::ownFile()
{
    return "the unit program";
}

void zerlin::unloadLibrary() {}
