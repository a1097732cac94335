// A PKCS#11 module that hands each call over to its user: to onCall, with the place of the function in the
// list (the vendor's functions, if it has them, follow) and its arguments.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"

#include <utility>

using Word = CK_ULONG;

// For the user to set. The arguments are words of the stack; those behind the function's own have no meaning.
extern "C" {
extern CK_RV (*onCall)(std::size_t place, const Word* arguments);
extern CK_FUNCTION_LIST* offeredList;
}
#pragma GCC visibility pop

namespace {

template <std::size_t place>
CK_RV call(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h)
{
    const Word arguments[] = {a, b, c, d, e, f, g, h};
    return onCall(place, arguments);
}

struct List {
    CK_VERSION version;
    decltype(&call<0>) functions[68];
};
static_assert(sizeof(List) == sizeof(CK_FUNCTION_LIST));

template <std::size_t... places>
List makeList(std::index_sequence<places...>)
{
    return {{2, 20}, {call<places>...}};
}

List list = makeList(std::make_index_sequence<68>());

} // namespace

CK_RV (*onCall)(std::size_t place, const Word* arguments);
CK_FUNCTION_LIST* offeredList = reinterpret_cast<CK_FUNCTION_LIST*>(&list);

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR ppFunctionList)
{
    *ppFunctionList = offeredList;
    return CKR_OK;
}

#ifdef VENDOR_FUNCTIONS
CK_RV CT_CopyObject(CK_SESSION_HANDLE to, CK_SESSION_HANDLE from, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_PTR t,
    CK_ULONG n, CK_OBJECT_HANDLE_PTR copy)
{
    return call<68>(to, from, object, Word(t), n, Word(copy), 0, 0);
}

CK_RV CT_InitToken(
    CK_SESSION_HANDLE s, CK_ULONG slot, CK_UTF8CHAR_PTR pin, CK_ULONG length, CK_UTF8CHAR_PTR label)
{
    return call<69>(s, slot, Word(pin), length, Word(label), 0, 0, 0);
}

CK_RV CT_ResetToken(CK_SESSION_HANDLE s, CK_UTF8CHAR_PTR pin, CK_ULONG length, CK_UTF8CHAR_PTR label)
{
    return call<70>(s, Word(pin), length, Word(label), 0, 0, 0, 0);
}
#endif
