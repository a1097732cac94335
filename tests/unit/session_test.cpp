// The natives for sessions, logins and saved states: what is particular to them.
#include "jvm.h"
#include "natives.h"

#include <malloc.h>

namespace {

using namespace jni;

struct Session : JniTest {};

TEST_F(Session, referencesArePassedAsTheyAre)
{
    const jobject any = string(env, "any object");
    const jobject other = string(env, "another one");
    expectCall(env, call(NATIVE(C_1OpenSession), -1, -1, any, other, session(env)),
        "C_OpenSession(0xffffffff, 0xffffffff, " + recorder::address(any) + ", " + recorder::address(other) +
            ", out)");
}

TEST_F(Session, aStateHasABufferOfExactlyTheCapacity)
{
    std::size_t size = 0;
    recorder::script().C_GetOperationState = [&](auto, CK_BYTE_PTR state, auto) {
        size = malloc_usable_size(state);
        return CKR_OK;
    };
    call(NATIVE(C_1GetOperationState), session(env), bytes(env, ""), longRef(env, 12))(env);
    EXPECT_EQ(size, 12U) << "one of the sizes that the heap does not round up";
}

TEST_F(Session, aNewHandleIsWrittenBack)
{
    recorder::script().C_OpenSession = [](auto, auto, auto, auto, CK_SESSION_HANDLE_PTR handle) {
        *handle = 0xffffffff;
        return CKR_OK;
    };
    const jobject handle = session(env);
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1OpenSession), 1, 4, nullptr, nullptr, handle)(env)), CKR_OK);
    EXPECT_EQ(getLong(env, handle, "m_value"), 4294967295);
}

TEST_F(Session, informationIsWrittenBackWithTheStateInPlace)
{
    recorder::script().C_GetSessionInfo = [](CK_SESSION_HANDLE, CK_SESSION_INFO_PTR info) {
        *info = {.slotID = 1, .state = CKS_RW_USER_FUNCTIONS, .flags = 6, .ulDeviceError = 0xffffffff};
        return CKR_OK;
    };
    const jobject info = make(env, "halvorn/zerlin/CK_SESSION_INFO");
    const jobject state = getObject(env, info, "state", "Lhalvorn/zerlin/constants/CK_STATE;");
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1GetSessionInfo), session(env), info)(env)), CKR_OK);
    EXPECT_EQ(text(env, {info}), "[CK_SESSION_INFO[slotID=1, state=CKS_RW_USER_FUNCTIONS (0x3), flags=0x6, "
                                 "deviceError=4294967295]]");
    EXPECT_EQ(getLong(env, state, "m_value"), 3);
}

} // namespace
