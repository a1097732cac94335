// Mechanisms from native to Java: what a mechanism has returned through its parameter, back into the caller's
// parameter object; and new Java mechanisms, which no native asks for.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToJava.h"
#include "helper/elements.h"
#include "helper/javaNames.h"
#include "helper/parameters.h"
#include "util/assertion.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

// A native structure and the caller's Java object for it; parameter is the object of the whole parameter.
struct WritingBack {
    JNIEnv* env;
    const CK_BYTE* data;
    std::size_t outerSize; // of the outermost structure; 0 if nobody knows what was made for it
    jobject object;
    jobject parameter;
    CK_ULONG parameterLen; // as the Java mechanism declares it
};

// What a pointer of the structure points to. It is not followed where it is not the one that was made, and
// not more is read than was made.
Made pointedAt(const WritingBack& back, std::size_t offset)
{
    const CK_BYTE* const place = back.data + offset;
    CK_BYTE_PTR const pointer = pointerAt(place);
    if (back.outerSize == 0) return {pointer, ~std::size_t{0}};
    const Made made = madeAt(place, back.outerSize);
    return made.data == pointer ? made : Made{nullptr, 0};
}

// Every writer returns false with an exception pending. Null objects and null pointers are left alone.

// Fills the byte[] that the field holds, with the length at most.
bool fillBytes(const WritingBack& back, const Member& member, CK_ULONG length)
{
    JNIEnv* const env = back.env;
    const LocalRef<jbyteArray> array(env, GetByteArrayField(env, back.object, member.field));
    if (array == nullptr) return !env->ExceptionCheck();
    const Made source = pointedAt(back, member.offset);
    return CopyCKByteArrayToJByteArray(env, source.data, std::min<CK_ULONG>(length, source.size), array);
}

bool fillKeyIV(const WritingBack& back, const Member& member)
{
    const CK_ULONG bits = GetLongField(back.env, back.parameter, java::SSL3_KEY_MAT.IVSizeInBits);
    if (hasFailed(back.env, bits)) return false;
    return fillBytes(back, member, bytesOfBits(bits));
}

// Sets the number in the object that the field holds: a handle or a LongRef.
bool setHeldNumber(const WritingBack& back, const Member& member, JavaField& held, CK_ULONG value)
{
    JNIEnv* const env = back.env;
    const LocalRef<jobject> holder(env, GetObjectField(env, back.object, member.field));
    if (holder == nullptr) return !env->ExceptionCheck();
    return SetLongField(env, holder, held, value);
}

bool writeBackMember(const WritingBack& back, const Member& member);

bool writeBackPointed(const WritingBack& back, const Member& member)
{
    JNIEnv* const env = back.env;
    const CK_BYTE* const pointed = pointedAt(back, member.offset).data;
    if (pointed == nullptr) return true;
    // A version is written only where the declared length has room for one: deliberate.
    const bool isVersion = &member.structure->cls == &java::VERSION.cls;
    if (isVersion && back.parameterLen < sizeof(CK_VERSION)) return true;
    const LocalRef<jobject> object(env, GetObjectField(env, back.object, member.field));
    if (object == nullptr) return !env->ExceptionCheck();
    const std::size_t outerSize = back.outerSize == 0 ? 0 : member.structure->size;
    const WritingBack nested{env, pointed, outerSize, object, back.parameter, back.parameterLen};
    return std::ranges::all_of(
        member.structure->members, [&](const Member& part) { return writeBackMember(nested, part); });
}

bool writeBackHandleCount(const WritingBack& back, const Member& member)
{
    const CK_BYTE* const count = pointedAt(back, member.offset).data;
    return count == nullptr || setHeldNumber(back, member, java::LONG_REF.value, numberAt(count));
}

bool writeBackHandles(const WritingBack& back, const Member& member)
{
    JNIEnv* const env = back.env;
    const CK_BYTE* const count = pointedAt(back, member.detail).data;
    const Made source = pointedAt(back, member.offset);
    if (count == nullptr || source.data == nullptr) return true;
    const LocalRef<jobjectArray> handles(env, GetObjectArrayField(env, back.object, member.field));
    if (handles == nullptr) return !env->ExceptionCheck();
    const CK_ULONG readable = source.size / sizeof(CK_OBJECT_HANDLE);
    const jsize length = elementsToCopy(env, handles, std::min(numberAt(count), readable));
    for (jsize i = 0; i < length; ++i) {
        const LocalRef<jobject> handle(env, env->GetObjectArrayElement(handles, i));
        if (env->ExceptionCheck()) return false;
        const CK_BYTE* const value = source.data + static_cast<CK_ULONG>(i) * sizeof(CK_OBJECT_HANDLE);
        if (!CopyCKObjectPtrToJObjectPrimitive(env, value, sizeof(CK_OBJECT_HANDLE), handle)) return false;
    }
    return true;
}

bool writeBackMember(const WritingBack& back, const Member& member)
{
    const CK_BYTE* const place = back.data + member.offset;
    switch (member.kind) {
    case MemberKind::Number:
        return SetLongField(back.env, back.object, member.field, numberAt(place));
    case MemberKind::Byte:
        return SetByteField(back.env, back.object, member.field, static_cast<jbyte>(*place));
    case MemberKind::ObjectHandle:
        return setHeldNumber(back, member, java::OBJECT_HANDLE.m_value, numberAt(place));
    case MemberKind::Bytes:
        return fillBytes(back, member, numberAt(back.data + member.detail));
    case MemberKind::InitVector:
        return fillBytes(back, member, PBE_IV_LENGTH);
    case MemberKind::KeyIV:
        return fillKeyIV(back, member);
    case MemberKind::Pointed:
        return writeBackPointed(back, member);
    case MemberKind::HandleCount:
        return writeBackHandleCount(back, member);
    case MemberKind::Handles:
        return writeBackHandles(back, member);
    default:
        return true; // no mechanism returns a member of another kind
    }
}

// The Java object that is being made of a structure; root is the outermost structure.
struct Creating {
    JNIEnv* env;
    jobject object;
    const CK_BYTE* data;
    const CK_BYTE* root;
};

// Stores a new object in a field and deletes its reference. False with an exception pending.
bool store(const Creating& creating, const Member& member, jobject value)
{
    const LocalRef<jobject> local(creating.env, value);
    if (creating.env->ExceptionCheck()) return false; // the object may be there all the same
    return SetObjectField(creating.env, creating.object, member.field, local);
}

bool storeBytes(const Creating& creating, const Member& member, const CK_BYTE* bytes, CK_ULONG length)
{
    return store(creating, member, ckByteArrayToJByteArray(creating.env, bytes, length));
}

jobject newObject(JNIEnv* env, const Structure& structure, const CK_BYTE* data, const CK_BYTE* root);

// False with an exception pending.
bool createMember(const Creating& creating, const Member& member)
{
    JNIEnv* const env = creating.env;
    const CK_BYTE* const place = creating.data + member.offset;
    switch (member.kind) {
    case MemberKind::Number:
        return SetLongField(env, creating.object, member.field, numberAt(place));
    case MemberKind::NumberIn:
        return true;
    case MemberKind::MechanismType:
        return store(creating, member, ckMechanismTypeToJMechanismType(env, numberAt(place)));
    case MemberKind::OaepSource:
        return store(creating, member, ckRsaPkcsOaepSourceTypeToJRsaPkcsOaepSourceType(env, numberAt(place)));
    case MemberKind::ObjectHandle:
        return store(creating, member, ckObjectHandleToJObjectHandle(env, numberAt(place)));
    case MemberKind::BBool:
        return store(creating, member, ckBBoolToJBBool(env, *place));
    case MemberKind::Byte:
        return SetByteField(env, creating.object, member.field, static_cast<jbyte>(*place));
    case MemberKind::CappedInt:
        return SetIntField(env, creating.object, member.field, *place);
    case MemberKind::Array:
        return storeBytes(creating, member, place, member.detail);
    case MemberKind::Bytes:
    case MemberKind::BytesIfCounted:
        return storeBytes(creating, member, pointerAt(place), numberAt(creating.data + member.detail));
    case MemberKind::InitVector:
        return storeBytes(creating, member, pointerAt(place), PBE_IV_LENGTH);
    case MemberKind::KeyIV:
        return storeBytes(
            creating, member, pointerAt(place), bytesOfBits(numberAt(creating.root + member.detail)));
    case MemberKind::Text: {
        const auto* const text = reinterpret_cast<const char*>(pointerAt(place));
        return storeBytes(creating, member, pointerAt(place), text == nullptr ? 0 : std::strlen(text) + 1);
    }
    case MemberKind::Nested:
        return store(creating, member, newObject(env, *member.structure, place, creating.root));
    case MemberKind::Pointed:
        return store(creating, member, newObject(env, *member.structure, pointerAt(place), creating.root));
    case MemberKind::Attributes:
        return store(creating, member,
            ckAttributeArrayToJAttributeArray(env, reinterpret_cast<const CK_ATTRIBUTE*>(pointerAt(place)),
                numberAt(creating.data + member.detail)));
    case MemberKind::HandleCount:
        return pointerAt(place) == nullptr ||
               store(creating, member, LongRefObj(env, numberAt(pointerAt(place))));
    case MemberKind::Handles: {
        const CK_BYTE* const count = pointerAt(creating.data + member.detail);
        return count == nullptr ||
               store(creating, member,
                   ckObjHandleArrayToJObjHandleArray(
                       env, reinterpret_cast<const CK_OBJECT_HANDLE*>(pointerAt(place)), numberAt(count)));
    }
    }
    return true;
}

jobject newObject(JNIEnv* env, const Structure& structure, const CK_BYTE* data, const CK_BYTE* root)
{
    if (data == nullptr) return nullptr;
    const jclass cls = FindClass(env, structure.cls);
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const Creating creating{env, object, data, root};
    if (std::ranges::all_of(
            structure.members, [&](const Member& member) { return createMember(creating, member); })) {
        return object;
    }
    env->DeleteLocalRef(object);
    return nullptr;
}

jobject newParameter(JNIEnv* env, const Structure& structure, const CK_BYTE* data, CK_ULONG parameterLen)
{
    if (parameterLen != structure.size) {
        char expression[80];
        std::snprintf(expression, sizeof expression, "parameterLen == sizeof(%s)", structure.name);
        const char* const function = structure.create != nullptr ? structure.create : structure.convert;
        assertThat(false, expression, "convToJava", function);
    }
    if (!structure.members.empty()) return newObject(env, structure, data, data);
    const CK_ULONG number = numberAt(data);
    return &structure.cls == &java::LONG.cls ? ckULongPtrToJLongObject(env, &number)
                                             : ckObjectHandleToJObjectHandle(env, number);
}

// outerSize is that of the native parameter, or 0.
bool writeParameterBack(
    JNIEnv* env, const CK_MECHANISM& source, const Structure* made, std::size_t outerSize, jobject target)
{
    const jclass cls = FindClass(env, java::MECHANISM.cls);
    if (cls == nullptr) return false;
    if (source.pParameter == nullptr || target == nullptr || !env->IsInstanceOf(target, cls)) return true;
    const LocalRef<jobject> parameter(env, GetObjectField(env, target, java::MECHANISM.pParameter));
    if (parameter == nullptr) return !env->ExceptionCheck();
    const CK_ULONG parameterLen = GetLongField(env, target, java::MECHANISM.parameterLen);
    if (hasFailed(env, parameterLen)) return false;

    // By the mechanism; and only where the native parameter has this structure and the Java object is still
    // of its class.
    const Structure* const structure = structureReturnedBy(source.mechanism);
    if (structure == nullptr || structure != made) return true;
    if (FindClass(env, structure->cls) == nullptr) return false;
    if (!IsInstanceOf(env, parameter, structure->cls)) return true;
    const auto* const data = static_cast<const CK_BYTE*>(source.pParameter);
    const WritingBack back{env, data, outerSize, parameter, parameter, parameterLen};
    return std::ranges::all_of(structure->members,
        [&](const Member& member) { return !member.isReturned || writeBackMember(back, member); });
}

} // namespace

bool writeMechanismBack(JNIEnv* env, const CK_MECHANISM& source, const Structure& made, jobject target)
{
    return writeParameterBack(env, source, &made, made.size, target);
}

bool CopyCKMechanismToJMechanism(JNIEnv* env, const CK_MECHANISM* source, jobject target)
{
    if (FindClass(env, java::MECHANISM.cls) == nullptr) return false;
    return source == nullptr ||
           writeParameterBack(env, *source, structureReturnedBy(source->mechanism), 0, target);
}

jobject ckMechanismParameterToJMechanismParameter(JNIEnv* env, const CK_MECHANISM* mechanism)
{
    if (mechanism == nullptr || mechanism->pParameter == nullptr) return nullptr;
    const auto* const data = static_cast<const CK_BYTE*>(mechanism->pParameter);
    const Structure* const structure = structureOf(mechanism->mechanism, mechanism->ulParameterLen);
    if (structure != nullptr) {
        const jobject parameter = newParameter(env, *structure, data, mechanism->ulParameterLen);
        if (parameter != nullptr || env->ExceptionCheck()) return parameter;
    }
    return ckByteArrayToJByteArray(env, data, mechanism->ulParameterLen);
}

jobject ckMechanismToJMechanism(JNIEnv* env, const CK_MECHANISM* mechanism)
{
    if (mechanism == nullptr) return nullptr;
    const jclass cls = FindClass(env, java::MECHANISM.cls);
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const LocalRef<jobject> type(env, ckMechanismTypeToJMechanismType(env, mechanism->mechanism));
    if (env->ExceptionCheck()) return nullptr;
    if (!SetObjectField(env, object, java::MECHANISM.mechanism, type)) return nullptr;
    const LocalRef<jobject> parameter(env, ckMechanismParameterToJMechanismParameter(env, mechanism));
    if (env->ExceptionCheck()) return nullptr;
    if (!SetObjectField(env, object, java::MECHANISM.pParameter, parameter)) return nullptr;
    return SetLongField(env, object, java::MECHANISM.parameterLen, mechanism->ulParameterLen) ? object
                                                                                              : nullptr;
}

} // namespace zerlin
