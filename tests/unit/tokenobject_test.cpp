// The token object helpers and the reading and writing of one attribute: which calls they make, when they
// stop.
#include "../double/recorder.h"
#include "zerlin/attrutil.h"
#include "zerlin/tokenobject.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

constexpr CK_RV FAILURE = CKR_DEVICE_ERROR;

struct Tokenobject : testing::Test {
    void SetUp() override { recorder::reset(); }
    void TearDown() override { recorder::reset(); }
};

TEST_F(Tokenobject, objectsAreCreatedOnTheToken)
{
    recorder::script().C_CreateObject = [](auto, auto, auto, CK_OBJECT_HANDLE_PTR phObject) {
        *phObject = 9;
        return FAILURE;
    };
    CK_OBJECT_HANDLE object = 0;
    EXPECT_EQ(CT_CreateObject(5, 0x80000201, "my", &object), FAILURE);
    EXPECT_EQ(object, 9U);
    EXPECT_EQ(CT_CreatePublicObject(5, CKO_DATA, "", &object), FAILURE);
    EXPECT_EQ(recorder::calls(),
        (Lines{"C_CreateObject(5, {{0, [01020080], 4}, {3, [6d79], 2}, {1, [01], 1}, {2, [01], 1}}, 4, out)",
            "C_CreateObject(5, {{0, [00000000], 4}, {3, [], 0}, {1, [01], 1}, {2, [00], 1}}, 4, out)"}));
}

TEST_F(Tokenobject, theSearchStopsAtTheFirstFailure)
{
    const Lines search = {"C_FindObjectsInit(5, {{0, [04000000], 4}, {3, [6d79], 2}}, 2)",
        "C_FindObjects(5, out(1), out)", "C_FindObjectsFinal(5)"};
    const std::string rename = "C_SetAttributeValue(5, 9, {{3, [6e6577], 3}}, 1)";
    // How many objects there are, what the three calls answer, the result, how many of the calls are made.
    const std::tuple<CK_ULONG, std::array<CK_RV, 3>, CK_RV, int> rows[] = {
        {1, {0, 0, 0}, CKR_OK, 3},
        {0, {0, 0, 0}, CKR_GENERAL_ERROR, 3},
        {1, {FAILURE, 0, 0}, FAILURE, 1},
        {1, {0, FAILURE, 0}, FAILURE, 2},
        {1, {0, 0, FAILURE}, FAILURE, 3},
    };
    for (const auto& [found, answers, rv, made] : rows) {
        recorder::reset();
        recorder::Script& script = recorder::script();
        script.C_FindObjectsInit = [&](auto...) { return answers[0]; };
        script.C_FindObjects = [&](auto, CK_OBJECT_HANDLE_PTR phObject, auto, CK_ULONG_PTR pulObjectCount) {
            *phObject = 9;
            *pulObjectCount = found;
            return answers[1];
        };
        script.C_FindObjectsFinal = [&](auto...) { return answers[2]; };
        CK_OBJECT_HANDLE object = 0;
        Lines expected(search.begin(), search.begin() + made);
        EXPECT_EQ(CT_OpenObject(5, CKO_SECRET_KEY, "my", &object), rv);
        EXPECT_EQ(recorder::calls(), expected);
        EXPECT_EQ(object, made == 1 ? 0U : 9U);

        expected.insert(expected.end(), search.begin(), search.begin() + made);
        if (rv == CKR_OK) expected.push_back(rename);
        EXPECT_EQ(CT_RenameObject(5, CKO_SECRET_KEY, "my", "new"), rv);
        EXPECT_EQ(recorder::calls(), expected);
    }
    recorder::script().C_FindObjectsFinal = nullptr;
    recorder::script().C_SetAttributeValue = [](auto...) { return FAILURE; };
    EXPECT_EQ(CT_RenameObject(5, CKO_SECRET_KEY, "my", "new"), FAILURE);
}

TEST_F(Tokenobject, valuesAreReadWhenTheyFit)
{
    const std::string query = "C_GetAttributeValue(5, 9, {{17, null, 0}}, 1)";
    const std::string fetch = "C_GetAttributeValue(5, 9, {{17, [2e2e2e], 3}}, 1)";
    // The buffer's length, what the two calls answer, the result, the length told (77: none), the calls.
    const std::tuple<CK_ULONG, std::array<CK_RV, 2>, CK_RV, CK_ULONG, Lines> rows[] = {
        {0, {0, 0}, CKR_OK, 3, {query}},
        {2, {0, 0}, CKR_ATTRIBUTE_TYPE_INVALID, 3, {query}},
        {3, {0, 0}, CKR_OK, 3, {query, fetch}},
        {4, {0, 0}, CKR_OK, 3, {query, fetch}},
        {4, {FAILURE, 0}, FAILURE, 77, {query}},
        {4, {0, FAILURE}, FAILURE, 3, {query, fetch}},
    };
    for (const auto& [bufferLen, answers, rv, told, calls] : rows) {
        recorder::reset();
        recorder::script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
            const CK_RV answer = answers[pTemplate->pValue == nullptr ? 0 : 1];
            if (answer != CKR_OK) return answer;
            if (pTemplate->pValue != nullptr) std::copy_n("abc", 3, static_cast<char*>(pTemplate->pValue));
            pTemplate->ulValueLen = 3;
            return answer;
        };
        std::string buffer = "....";
        CK_ULONG length = 77;
        EXPECT_EQ(GetAttr(5, 9, CKA_VALUE, buffer.data(), bufferLen, &length), rv) << bufferLen;
        EXPECT_EQ(recorder::calls(), calls) << bufferLen;
        EXPECT_EQ(length, told) << bufferLen;
        EXPECT_EQ(buffer, rv == CKR_OK && bufferLen > 0 ? "abc." : "....");
        EXPECT_EQ(CT_ReadObject(5, 9, buffer.data(), bufferLen, &length), rv) << bufferLen;
        EXPECT_EQ(length, told == 77 ? 0 : told) << bufferLen;
        EXPECT_EQ(GetAttr(5, 9, CKA_VALUE, buffer.data(), bufferLen, nullptr), rv);
        EXPECT_EQ(CT_ReadObject(5, 9, buffer.data(), bufferLen, nullptr), rv);
        EXPECT_EQ(recorder::calls().size(), 4 * calls.size());
    }
}

TEST_F(Tokenobject, valuesAreWrittenAsTheyAre)
{
    CK_ULONG length = 77;
    EXPECT_EQ(SetAttr(5, 9, CKA_ID, "ab", 2), CKR_OK);
    recorder::script().result = FAILURE;
    EXPECT_EQ(CT_WriteObject(5, 9, "abc", 3, &length), FAILURE);
    EXPECT_EQ(length, 3U);
    EXPECT_EQ(CT_WriteObject(5, 9, nullptr, 4, nullptr), FAILURE);
    EXPECT_EQ(recorder::calls(), (Lines{"C_SetAttributeValue(5, 9, {{258, [6162], 2}}, 1)",
                                     "C_SetAttributeValue(5, 9, {{17, [616263], 3}}, 1)",
                                     "C_SetAttributeValue(5, 9, {{17, null, 4}}, 1)"}));
}

} // namespace
