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
        return *phObject = 9, *pulObjectCount = 1, CKR_OK;
    };
    recorder::script().C_SetAttributeValue = [](auto...) { return CKR_DEVICE_ERROR; };
    CK_OBJECT_HANDLE object = 0;
    EXPECT_EQ(CT_CreateObject(5, CKO_DATA, "my", &object), CKR_OK);
    EXPECT_EQ(CT_CreatePublicObject(5, CKO_DATA, "", &object), CKR_OK);
    EXPECT_EQ(CT_RenameObject(5, CKO_DATA, "my", "new"), CKR_DEVICE_ERROR);
    EXPECT_EQ(CT_WriteObject(5, 9, "abc", 3, nullptr), CKR_DEVICE_ERROR);
    const std::string data = "{{0, [" + std::string(2 * sizeof(CK_ULONG), '0') + "], " +
                             std::to_string(sizeof(CK_ULONG)) + "}, {3, ";
    const std::vector<std::string> expected = {
        "C_CreateObject(5, " + data + "[6d79], 2}, {1, [01], 1}, {2, [01], 1}}, 4, out)",
        "C_CreateObject(5, " + data + "[], 0}, {1, [01], 1}, {2, [00], 1}}, 4, out)",
        "C_FindObjectsInit(5, " + data + "[6d79], 2}}, 2)", "C_FindObjects(5, out(1), out)",
        "C_FindObjectsFinal(5)", "C_SetAttributeValue(5, 9, {{3, [6e6577], 3}}, 1)",
        "C_SetAttributeValue(5, 9, {{17, [616263], 3}}, 1)"};
    EXPECT_EQ(recorder::takeCalls(), expected);
    recorder::script().C_FindObjects = {}; // finds nothing, so there is nothing to rename
    EXPECT_EQ(CT_RenameObject(5, CKO_DATA, "my", "new"), CKR_GENERAL_ERROR);
    EXPECT_EQ(recorder::takeCalls().size(), 3U);
}

// Of 6 bytes. The tests of CTU_GetAttributeValue cover GetAttr, which does the work.
TEST(Tokenobject, aValueIsReadOnlyIntoABufferThatHoldsIt)
{
    recorder::reset();
    recorder::script().C_GetAttributeValue = [](auto, auto, auto* attribute, auto) {
        if (attribute->pValue != nullptr) std::memcpy(attribute->pValue, "secret", 6);
        return attribute->ulValueLen = 6, CKR_OK;
    };
    for (const auto& [capacity, rv, result] : {std::tuple(5, CKR_ATTRIBUTE_TYPE_INVALID, "........"),
             {6, CKR_OK, "secret.."}, {7, CKR_OK, "secret.."}}) {
        std::string buffer(8, '.');
        CK_ULONG length = 77;
        EXPECT_EQ(CT_ReadObject(5, 9, buffer.data(), static_cast<CK_ULONG>(capacity), &length), rv);
        EXPECT_EQ(buffer, result);
        EXPECT_EQ(length, 6U);
    }
    EXPECT_EQ(recorder::calls.back(), "C_GetAttributeValue(5, 9, {{17, [2e2e2e2e2e2e], 6}}, 1)");
    recorder::reset();
}

} // namespace
