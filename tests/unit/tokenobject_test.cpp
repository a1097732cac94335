// The helpers for objects on the token, and GetAttr and SetAttr below them: which calls they make, when they
// stop.
#include "fakes/recorder.h"
#include "zerlin/tokenobject.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(Tokenobject, eachHelperMakesItsCalls)
{
    recorder::reset();
    recorder::script().C_FindObjects = [](auto, auto phObject, auto, auto pulObjectCount) {
        *phObject = 9;
        *pulObjectCount = 1;
        return CKR_OK;
    };
    recorder::script().C_SetAttributeValue = [](auto...) { return CKR_DEVICE_ERROR; };
    CK_OBJECT_HANDLE object = 0;
    CK_ULONG length = 77;
    EXPECT_EQ(CT_CreateObject(5, 0x80000201, "my", &object), CKR_OK);
    EXPECT_EQ(CT_CreatePublicObject(5, CKO_DATA, "", &object), CKR_OK);
    EXPECT_EQ(CT_RenameObject(5, CKO_SECRET_KEY, "my", "new"), CKR_DEVICE_ERROR);
    EXPECT_EQ(CT_WriteObject(5, 9, "abc", 3, &length), CKR_DEVICE_ERROR);
    EXPECT_EQ(length, 3U);
    EXPECT_EQ(CT_WriteObject(5, 9, nullptr, 0, nullptr), CKR_DEVICE_ERROR);
    const std::vector<std::string> expected = {
        "C_CreateObject(5, {{0, [01020080], 4}, {3, [6d79], 2}, {1, [01], 1}, {2, [01], 1}}, 4, out)",
        "C_CreateObject(5, {{0, [00000000], 4}, {3, [], 0}, {1, [01], 1}, {2, [00], 1}}, 4, out)",
        "C_FindObjectsInit(5, {{0, [04000000], 4}, {3, [6d79], 2}}, 2)", "C_FindObjects(5, out(1), out)",
        "C_FindObjectsFinal(5)", "C_SetAttributeValue(5, 9, {{3, [6e6577], 3}}, 1)",
        "C_SetAttributeValue(5, 9, {{17, [616263], 3}}, 1)", "C_SetAttributeValue(5, 9, {{17, null, 0}}, 1)"};
    EXPECT_EQ(recorder::takeCalls(), expected);
    recorder::script().C_FindObjects = {}; // finds nothing, so there is nothing to rename
    EXPECT_EQ(CT_RenameObject(5, CKO_SECRET_KEY, "my", "new"), CKR_GENERAL_ERROR);
    EXPECT_EQ(recorder::takeCalls().size(), 3U);
}

// The tests of CTU_GetAttributeValue cover GetAttr, which does the work.
TEST(Tokenobject, aValueIsReadOnlyIntoABufferThatHoldsIt)
{
    recorder::reset();
    CK_RV rv = CKR_OK;
    recorder::script().C_GetAttributeValue = [&rv](auto, auto, auto* attribute, auto) {
        if (attribute->pValue != nullptr) std::memcpy(attribute->pValue, "secret", 6);
        attribute->ulValueLen = 6;
        return rv;
    };
    std::string buffer(8, '.');
    CK_ULONG length = 77;
    EXPECT_EQ(CT_ReadObject(5, 9, nullptr, 0, &length), CKR_OK);
    EXPECT_EQ(CT_ReadObject(5, 9, buffer.data(), 5, nullptr), CKR_ATTRIBUTE_TYPE_INVALID);
    EXPECT_EQ(buffer, "........");
    EXPECT_EQ(length, 6U);
    for (const CK_ULONG capacity : {6, 7}) {
        buffer = "........";
        EXPECT_EQ(CT_ReadObject(5, 9, buffer.data(), capacity, nullptr), CKR_OK) << capacity;
        EXPECT_EQ(buffer, "secret..");
        EXPECT_EQ(recorder::calls().back(), "C_GetAttributeValue(5, 9, {{17, [2e2e2e2e2e2e], 6}}, 1)");
    }
    rv = CKR_DEVICE_ERROR;
    EXPECT_EQ(CT_ReadObject(5, 9, buffer.data(), 6, &length), CKR_DEVICE_ERROR);
    EXPECT_EQ(length, 0U); // GetAttr leaves it alone
    recorder::reset();
}

} // namespace
