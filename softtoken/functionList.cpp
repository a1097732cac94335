// The list of the functions that this library exports.
#include "module.h"

namespace {

constexpr CK_FUNCTION_LIST LIST = [] {
    CK_FUNCTION_LIST list{};
    list.version = {2, 20};
    list.C_GetFunctionList = C_GetFunctionList;
#define ZERLIN_SET(name) list.name = name;
    ZERLIN_STANDARD_FUNCTIONS(ZERLIN_SET)
#undef ZERLIN_SET
    return list;
}();

} // namespace

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR ppFunctionList)
{
    if (!softtoken::isUsable()) return CKR_GENERAL_ERROR;
    if (ppFunctionList == nullptr) return CKR_ARGUMENTS_BAD;
    *ppFunctionList = const_cast<CK_FUNCTION_LIST_PTR>(&LIST);
    return CKR_OK;
}
