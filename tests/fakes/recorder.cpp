// The recording Cryptoki library: how each kind of argument is noted, then the functions themselves.
#include "fakes/recorder.h"

#include "cryptoki/library.h"

#include <algorithm>
#include <atomic>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <tuple>
#include <utility>

namespace {

using recorder::script;

std::mutex linesMutex;
std::vector<std::string> lines;
std::atomic<const char*> last = "none";

// One or two arguments: their text in the line, and their values for the handler.
template <typename... Raw>
struct Shown {
    std::string text;
    std::tuple<Raw...> raw;
};

std::string number(CK_ULONG value)
{
    if (script().isQuiet) return {};
    char digits[2 * sizeof value + 3];
    std::snprintf(digits, sizeof digits, value < 0x80000000 ? "%lu" : "0x%lx", value);
    return digits;
}

std::string hex(const void* values, CK_ULONG length)
{
    if (script().isQuiet) return {};
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

auto in(CK_ULONG value)
{
    return Shown{number(value), std::tuple(value)};
}

auto in(CK_MECHANISM_PTR shown)
{
    const std::string text =
        shown == nullptr ? "null" : triple(shown->mechanism, shown->pParameter, shown->ulParameterLen);
    return Shown{text, std::tuple(shown)};
}

auto in(CK_BYTE_PTR values, CK_ULONG length)
{
    return Shown{hex(values, length) + ", " + number(length), std::tuple(values, length)};
}

auto in(CK_ATTRIBUTE_PTR attributes, CK_ULONG count)
{
    std::string text;
    const CK_ULONG readable = attributes == nullptr ? 0 : std::min(count, script().attributeLimit);
    for (const CK_ATTRIBUTE* shown = attributes; !script().isQuiet && shown != attributes + readable; ++shown)
        text += (text.empty() ? "" : ", ") + triple(shown->type, shown->pValue, shown->ulValueLen);
    text = attributes == nullptr ? "null" : "{" + text + (readable < count ? ", ..}" : "}");
    return Shown{text + ", " + number(count), std::tuple(attributes, count)};
}

auto label(CK_UTF8CHAR_PTR values)
{
    return Shown{hex(values, script().labelLength), std::tuple(values)};
}

auto initArgs(CK_VOID_PTR passed)
{
    if (passed == nullptr) return Shown{std::string("null"), std::tuple(passed)};
    const auto& arguments = *static_cast<const CK_C_INITIALIZE_ARGS*>(passed);
    const auto function = [](auto pointer) { return pointer == nullptr ? "null, " : "set, "; };
    const std::string text = std::string("{") + function(arguments.CreateMutex) +
                             function(arguments.DestroyMutex) + function(arguments.LockMutex) +
                             function(arguments.UnlockMutex) + number(arguments.flags) + ", " +
                             recorder::address(arguments.pReserved) + "}";
    return Shown{text, std::tuple(passed)};
}

template <typename Pointer>
auto reference(Pointer pointer)
{
    return Shown{recorder::address(reinterpret_cast<const void*>(pointer)), std::tuple(pointer)};
}

template <typename T>
auto out(T* value)
{
    return Shown{std::string(value == nullptr ? "null" : "out"), std::tuple(value)};
}

template <typename Element>
auto out(Element* elements, CK_ULONG capacity)
{
    return Shown{out(elements).text + "(" + number(capacity) + ")", std::tuple(elements, capacity)};
}

template <typename Element>
auto out(Element* elements, CK_ULONG_PTR capacity)
{
    return Shown{out(elements, *capacity).text, std::tuple(elements, capacity)};
}

template <typename Function, typename... Arguments>
CK_RV note(const char* name, const std::function<Function>& handler, const Arguments&... arguments)
{
    last = name;
    if (script().onCall) script().onCall();
    if (!script().isQuiet) {
        std::string line;
        ((line += (line.empty() ? "" : ", ") + arguments.text), ...);
        const std::lock_guard lock(linesMutex);
        lines.push_back(name + ("(" + line + ")"));
    }
    return handler ? std::apply(handler, std::tuple_cat(arguments.raw...)) : script().result;
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

// The functions. Those of a common form need only a name.

#define SESSION CK_ULONG session
#define MECHANISM CK_MECHANISM_PTR mechanism
#define ATTRIBUTES CK_ATTRIBUTE_PTR attributes, CK_ULONG count
#define DATA CK_BYTE_PTR data, CK_ULONG length
#define RESULT CK_BYTE_PTR result, CK_ULONG_PTR capacity

#define RECORD(name, parameters, ...)                                                                        \
    CK_RV name parameters                                                                                    \
    {                                                                                                        \
        return note(#name, script().name, __VA_ARGS__);                                                      \
    }
#define ID(name) RECORD(name, (CK_ULONG id), in(id))
#define INIT(name) RECORD(name, (SESSION, MECHANISM, CK_ULONG key), in(session), in(mechanism), in(key))
#define IN(name) RECORD(name, (SESSION, DATA), in(session), in(data, length))
#define OUT(name) RECORD(name, (SESSION, RESULT), in(session), out(result, capacity))
#define IN_OUT(name)                                                                                         \
    RECORD(name, (SESSION, DATA, RESULT), in(session), in(data, length), out(result, capacity))

ID_FUNCTIONS(ID)
INIT_FUNCTIONS(INIT)
IN_FUNCTIONS(IN)
OUT_FUNCTIONS(OUT)
IN_OUT_FUNCTIONS(IN_OUT)

RECORD(C_Initialize, (CK_VOID_PTR args), initArgs(args))
RECORD(C_Finalize, (CK_VOID_PTR reserved), reference(reserved))
RECORD(C_GetInfo, (CK_INFO_PTR info), out(info))
RECORD(
    C_GetSlotList, (CK_BBOOL present, CK_ULONG_PTR slots, CK_ULONG_PTR count), in(present), out(slots, count))
RECORD(C_GetSlotInfo, (CK_ULONG slot, CK_SLOT_INFO_PTR info), in(slot), out(info))
RECORD(C_GetTokenInfo, (CK_ULONG slot, CK_TOKEN_INFO_PTR info), in(slot), out(info))
RECORD(
    C_GetMechanismList, (CK_ULONG slot, CK_ULONG_PTR types, CK_ULONG_PTR count), in(slot), out(types, count))
RECORD(C_GetMechanismInfo, (CK_ULONG slot, CK_ULONG type, CK_MECHANISM_INFO_PTR info), in(slot), in(type),
    out(info))
RECORD(C_InitToken, (CK_ULONG slot, DATA, CK_BYTE_PTR name), in(slot), in(data, length), label(name))
RECORD(C_SetPIN, (SESSION, CK_BYTE_PTR old, CK_ULONG length1, DATA), in(session), in(old, length1),
    in(data, length))
RECORD(C_OpenSession,
    (CK_ULONG slot, CK_ULONG flags, CK_VOID_PTR data, CK_NOTIFY notify, CK_ULONG_PTR session), in(slot),
    in(flags), reference(data), reference(notify), out(session))
RECORD(C_GetSessionInfo, (SESSION, CK_SESSION_INFO_PTR info), in(session), out(info))
RECORD(C_SetOperationState, (SESSION, DATA, CK_ULONG key1, CK_ULONG key2), in(session), in(data, length),
    in(key1), in(key2))
RECORD(C_Login, (SESSION, CK_ULONG user, DATA), in(session), in(user), in(data, length))
RECORD(
    C_CreateObject, (SESSION, ATTRIBUTES, CK_ULONG_PTR made), in(session), in(attributes, count), out(made))
RECORD(C_CopyObject, (SESSION, CK_ULONG object, ATTRIBUTES, CK_ULONG_PTR made), in(session), in(object),
    in(attributes, count), out(made))
RECORD(C_DestroyObject, (SESSION, CK_ULONG object), in(session), in(object))
RECORD(C_GetObjectSize, (SESSION, CK_ULONG object, CK_ULONG_PTR size), in(session), in(object), out(size))
RECORD(C_GetAttributeValue, (SESSION, CK_ULONG object, ATTRIBUTES), in(session), in(object),
    in(attributes, count))
RECORD(C_SetAttributeValue, (SESSION, CK_ULONG object, ATTRIBUTES), in(session), in(object),
    in(attributes, count))
RECORD(C_FindObjectsInit, (SESSION, ATTRIBUTES), in(session), in(attributes, count))
RECORD(C_FindObjects, (SESSION, CK_ULONG_PTR objects, CK_ULONG capacity, CK_ULONG_PTR count), in(session),
    out(objects, capacity), out(count))
RECORD(C_DigestInit, (SESSION, MECHANISM), in(session), in(mechanism))
RECORD(C_DigestKey, (SESSION, CK_ULONG key), in(session), in(key))
RECORD(C_Verify, (SESSION, DATA, CK_BYTE_PTR signature, CK_ULONG length2), in(session), in(data, length),
    in(signature, length2))
RECORD(C_GenerateKey, (SESSION, MECHANISM, ATTRIBUTES, CK_ULONG_PTR key), in(session), in(mechanism),
    in(attributes, count), out(key))
RECORD(C_GenerateKeyPair,
    (SESSION, MECHANISM, CK_ATTRIBUTE_PTR publics, CK_ULONG count1, CK_ATTRIBUTE_PTR privates,
        CK_ULONG count2, CK_ULONG_PTR key1, CK_ULONG_PTR key2),
    in(session), in(mechanism), in(publics, count1), in(privates, count2), out(key1), out(key2))
RECORD(C_WrapKey, (SESSION, MECHANISM, CK_ULONG key1, CK_ULONG key2, RESULT), in(session), in(mechanism),
    in(key1), in(key2), out(result, capacity))
RECORD(C_UnwrapKey, (SESSION, MECHANISM, CK_ULONG key, DATA, ATTRIBUTES, CK_ULONG_PTR made), in(session),
    in(mechanism), in(key), in(data, length), in(attributes, count), out(made))
RECORD(C_DeriveKey, (SESSION, MECHANISM, CK_ULONG key, ATTRIBUTES, CK_ULONG_PTR made), in(session),
    in(mechanism), in(key), in(attributes, count), out(made))
RECORD(C_GenerateRandom, (SESSION, DATA), in(session), out(data, length))
RECORD(C_WaitForSlotEvent, (CK_ULONG flags, CK_ULONG_PTR slot, CK_VOID_PTR reserved), in(flags), out(slot),
    reference(reserved))
RECORD(CT_CopyObject, (SESSION, CK_ULONG session2, CK_ULONG object, ATTRIBUTES, CK_ULONG_PTR made),
    in(session), in(session2), in(object), in(attributes, count), out(made))
RECORD(CT_InitToken, (SESSION, CK_ULONG value, DATA, CK_BYTE_PTR name), in(session), in(value),
    in(data, length), label(name))
RECORD(CT_ResetToken, (SESSION, DATA, CK_BYTE_PTR name), in(session), in(data, length), label(name))

// The recorder is always there.
std::string zerlin::loadLibrary()
{
    return {};
}

void zerlin::unloadLibrary() {}
