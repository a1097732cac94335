// A C program that is linked with libzerlin.so, so that the loader knows our functions before all others.
// Prints what reading an attribute returns, twice, and the value of an error's name.
#include "zerlin/attrutil.h"
#include "zerlin/nametables.h"

#include <cstdio>

int main()
{
    CK_BYTE value = 0;
    const CK_RV first = GetAttr(1, 2, CKA_LABEL, &value, sizeof value, nullptr);
    const CK_RV second = GetAttr(1, 2, CKA_LABEL, &value, sizeof value, nullptr);
    std::printf("%#lx %#lx %#lx\n", first, second, valError("PIN incorrect"));
}
