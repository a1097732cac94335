// A PKCS#11 module that hands each call over to its user: to onCall, with the place of the function in the
// list (the vendor's functions, if it has them, follow) and its arguments.
#include <cstddef>
#include <utility>

using Word = unsigned long;

// For the user to set. The arguments are words of the stack; those behind the function's own have no meaning.
Word (*onCall)(std::size_t place, const Word* arguments);

template <std::size_t place>
Word call(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h)
{
    const Word arguments[] = {a, b, c, d, e, f, g, h};
    return onCall(place, arguments);
}

// A CK_FUNCTION_LIST.
struct List {
    unsigned char version[2] = {2, 20};
    decltype(&call<0>) functions[68];

    template <std::size_t... places>
    explicit List(std::index_sequence<places...>) : functions{call<places>...}
    {
    }
};
List list(std::make_index_sequence<68>{});
List* offeredList = &list;

extern "C" Word C_GetFunctionList(List** ppFunctionList)
{
    *ppFunctionList = offeredList;
    return 0;
}

#ifdef VENDOR_FUNCTIONS
#define FUNCTION(name, place)                                                                                \
    extern "C" Word name(Word a, Word b, Word c, Word d, Word e, Word f, Word g, Word h)                     \
    {                                                                                                        \
        return call<place>(a, b, c, d, e, f, g, h);                                                          \
    }
FUNCTION(CT_CopyObject, 68)
FUNCTION(CT_InitToken, 69)
FUNCTION(CT_ResetToken, 70)
#endif
