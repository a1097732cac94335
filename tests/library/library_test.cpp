// A C program that is linked with libzerlin.so, so that the loader knows our functions before all others.
// Prints what reading an attribute returns, twice, the value of an error's name, and whether the thread's
// locale is still the program's.
#include "zerlin/attrutil.h"
#include "zerlin/nametables.h"

#include <cstdio>
#include <locale.h>

int main()
{
    CK_BYTE value = 0;
    const CK_RV first = GetAttr(1, 2, CKA_LABEL, &value, sizeof value, nullptr);
    const CK_RV second = GetAttr(1, 2, CKA_LABEL, &value, sizeof value, nullptr);
    std::printf("%#lx %#lx %#lx %d\n", first, second, valError("PIN incorrect"),
        uselocale(nullptr) == LC_GLOBAL_LOCALE);
}
