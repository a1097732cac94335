// A PKCS#11 module that notes the arguments of every call and answers with the function's place in the list,
// counted from 1000; the vendor functions count from 2000. The environment variable MODULE_DOUBLE makes it a
// poorer one.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

// What the last call was given, as words of the stack; those past the function's own arguments are noise.
extern "C" [[gnu::visibility("default")]] CK_ULONG lastArguments[8];
CK_ULONG lastArguments[8];

namespace {

using Word = CK_ULONG;
using Answer = CK_RV (*)(Word, Word, Word, Word, Word, Word, Word, Word);

constexpr std::size_t FUNCTIONS = 68;
constexpr std::size_t GET_INFO = 2;
constexpr std::size_t WAIT_FOR_SLOT_EVENT = 67;

struct List {
    CK_VERSION version;
    Answer functions[FUNCTIONS];
};
static_assert(sizeof(List) == sizeof(CK_FUNCTION_LIST));

template <std::size_t place>
CK_RV answer(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h)
{
    std::ranges::copy(std::initializer_list<Word>{a, b, c, d, e, f, g, h}, lastArguments);
    return 1000 + place;
}

Word word(void* pointer)
{
    return reinterpret_cast<Word>(pointer);
}

template <std::size_t... places>
List makeList(CK_VERSION version, std::index_sequence<places...>)
{
    return {version, {answer<places>...}};
}

List list = makeList({2, 20}, std::make_index_sequence<FUNCTIONS>());

} // namespace

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR ppFunctionList)
{
    const char* const named = std::getenv("MODULE_DOUBLE");
    const std::string_view kind = named != nullptr ? named : "";
    if (kind == "failing") return CKR_HOST_MEMORY;
    if (kind == "of 1.0") list.version = {1, 0};
    if (kind == "of 2.0 with C_GetInfo alone") {
        // The list of that version ends before C_WaitForSlotEvent; what stands there is something else.
        list = {.version = {2, 0}, .functions = {}};
        list.functions[GET_INFO] = answer<GET_INFO>;
        list.functions[WAIT_FOR_SLOT_EVENT] = answer<WAIT_FOR_SLOT_EVENT>;
    }
    *ppFunctionList = reinterpret_cast<CK_FUNCTION_LIST_PTR>(&list);
    return CKR_OK;
}

CK_RV CT_CopyObject(CK_SESSION_HANDLE hSession1, CK_SESSION_HANDLE hSession2, CK_OBJECT_HANDLE hObject,
    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phNewObject)
{
    return 1000 + answer<0>(hSession1, hSession2, hObject, word(pTemplate), ulCount, word(phNewObject), 0, 0);
}

CK_RV CT_InitToken(CK_SESSION_HANDLE hSession, CK_ULONG ulValue, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen,
    CK_UTF8CHAR_PTR pLabel)
{
    return 1000 + answer<1>(hSession, ulValue, word(pPin), ulPinLen, word(pLabel), 0, 0, 0);
}

CK_RV CT_ResetToken(
    CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_UTF8CHAR_PTR pLabel)
{
    return 1000 + answer<2>(hSession, word(pPin), ulPinLen, word(pLabel), 0, 0, 0, 0);
}
