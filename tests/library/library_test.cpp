// A C program that is linked with libzerlin.so, so that the loader knows our functions before all others.
#include "zerlin/attrutil.h"
#include "zerlin/nametables.h"

#include <gtest/gtest.h>

namespace {

CK_RV readLabel()
{
    CK_BYTE value = 0;
    return GetAttr(1, 2, CKA_LABEL, &value, sizeof value, nullptr);
}

// Run with LD_LIBRARY_PATH on the library with functions named like ours.
TEST(Library, functionsOfTheSameNameAreNotMistakenForEachOther)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "AddressSanitizer refuses RTLD_DEEPBIND";
#endif
    EXPECT_EQ(readLabel(), 0x80000005);
    EXPECT_STREQ(strError(CKR_PIN_INCORRECT), "PIN incorrect");
    EXPECT_EQ(valError("PIN incorrect"), CKR_PIN_INCORRECT);
}

// Run where there is no libcryptoki.so. The reason is printed once.
TEST(Library, withoutACryptokiLibraryCallsFailAndAllElseWorks)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(readLabel(), CKR_GENERAL_ERROR);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "zerlin: cannot use libcryptoki.so (libcryptoki.so: cannot open shared object file: No such file or "
        "directory); put it beside libzerlin.so or in a folder of LD_LIBRARY_PATH\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(readLabel(), CKR_GENERAL_ERROR);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_STREQ(strError(CKR_PIN_INCORRECT), "PIN incorrect");
}

} // namespace
