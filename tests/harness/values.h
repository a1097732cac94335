// Attribute values as Java objects, one of each class, and the attributes that hold them.
#pragma once

#include "harness/failures.h"

namespace jni {

template <typename Array, typename Element>
Array filled(JNIEnv* env, Array array, void (JNIEnv::*set)(Array, jsize, jsize, const Element*),
    const std::vector<Element>& values)
{
    (env->*set)(array, 0, static_cast<jsize>(values.size()), values.data());
    return array;
}
std::string className(JNIEnv* env, jobject object);

constexpr CK_ULONG WORD = sizeof(CK_ULONG);
constexpr std::uint8_t UNTOUCHED = 0xEE; // fills what waits for a copy
inline const char* const REFUSED = "refused";

// The numbers as the Cryptoki library receives them.
Bytes words(const Longs& values);

// A value of one of the classes, and its native form.
struct Value {
    jobject object;
    Bytes native; // empty: not convertible
    CK_ULONG length = native.size();
    Bytes written = {};          // the shortest native value that is written back; empty: not writable
    std::string after = REFUSED; // the object's text then
    Bytes copied = native;       // the native form in memory that exists
};

std::vector<Value> values(JNIEnv* e);

CK_ATTRIBUTE native(CK_ULONG type, const Bytes& value);
jobject attribute(JNIEnv* env, jlong type, jobject value, jlong valueLen);
jobjectArray attributes(JNIEnv* env, const std::vector<jobject>& elements);

// "[CKA_LABEL (0x3), [1, 2]] 2"
std::string describe(JNIEnv* env, jobject attribute);

// Fails each JNI call and each allocation of a conversion in turn. The work returns whether no
// exception is pending.
void failEach(JNIEnv* env, const std::function<bool()>& work);

} // namespace jni
