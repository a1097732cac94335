// CTU_FindObject: the first object of a class and label.
#include "halvorn_zerlin_CTUtil.h"
#include "helper/copyToCK.h"
#include "jni/frame.h"
#include "util/fileVersion.h"
#include "zerlin/tokenobject.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

namespace {

// The label with a closing NUL; the empty one for a null array.
struct Label {
    CK_BYTE_PTR data;

    Label(JNIEnv* env, jbyteArray array)
    {
        const auto length = array == nullptr ? 0 : static_cast<CK_ULONG>(env->GetArrayLength(array));
        data = static_cast<CK_BYTE_PTR>(std::calloc(length + 1, 1));
        CopyJByteArrayToCKByteArray(env, array, data, length);
    }
    Label(const Label&) = delete;
    Label& operator=(const Label&) = delete;
    ~Label() { std::free(data); }
};

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1FindObject(
    JNIEnv* env, jclass, jobject hSession, jobject objectClass, jbyteArray label, jobject phObject)
{
    if (FindClass(env, java::OBJECT_HANDLE.cls) == nullptr) return nullptr;
    if (phObject == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_CLASS objectClassValue = jObjectClassToCKObjectClass(env, objectClass);
    if (hasFailed(env, objectClassValue)) return nullptr;
    const Label text(env, label);
    if (env->ExceptionCheck()) return nullptr;
    if (text.data == nullptr) return ckRVToJRV(env, CKR_HOST_MEMORY);

    CK_OBJECT_HANDLE object = 0;
    const CK_RV rv =
        CT_OpenObject(session, objectClassValue, reinterpret_cast<const char*>(text.data), &object);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK) SetLongField(env, phObject, java::OBJECT_HANDLE.m_value, object);
    return result(env, rv);
}
