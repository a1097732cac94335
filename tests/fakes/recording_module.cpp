// A PKCS#11 module that notes the arguments of every call and returns 1000 plus the function's place in the
// list.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

#include <algorithm>
#include <utility>

// The arguments of the last call, read as words of the stack; those behind the function's own have no
// meaning.
extern "C" [[gnu::visibility("default")]] CK_ULONG lastArguments[8];
CK_ULONG lastArguments[8];

namespace {

using Word = CK_ULONG;

struct List {
    CK_VERSION version;
    CK_RV (*functions[68])(Word, Word, Word, Word, Word, Word, Word, Word);
};
static_assert(sizeof(List) == sizeof(CK_FUNCTION_LIST));

template <std::size_t place>
CK_RV answer(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h)
{
    std::ranges::copy(std::initializer_list<Word>{a, b, c, d, e, f, g, h}, lastArguments);
    return 1000 + place;
}

template <std::size_t... places>
List makeList(std::index_sequence<places...>)
{
    return {{2, 20}, {answer<places>...}};
}

List list = makeList(std::make_index_sequence<68>());

} // namespace

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR ppFunctionList)
{
    *ppFunctionList = reinterpret_cast<CK_FUNCTION_LIST_PTR>(&list);
    return CKR_OK;
}
