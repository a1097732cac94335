// Attribute values as Java objects, one of each class, and the attributes that hold them.
#pragma once

#include "natives.h"

namespace jni {

inline jobject boxedLong(JNIEnv* env, jlong value)
{
    return make(env, "java/lang/Long", "(J)V", value); // a fresh one: the library overwrites it
}
inline jobject bbool(JNIEnv* env, bool value)
{
    return make(env, "halvorn/zerlin/CK_BBOOL", "(Z)V", static_cast<jboolean>(value));
}
inline jobject date(JNIEnv* env, std::string_view year, std::string_view month, std::string_view day)
{
    return make(
        env, "halvorn/zerlin/CK_DATE", "([B[B[B)V", bytes(env, year), bytes(env, month), bytes(env, day));
}
inline jobjectArray mechanismTypes(JNIEnv* env, std::initializer_list<jlong> values)
{
    const jobjectArray array = env->NewObjectArray(
        static_cast<jsize>(values.size()), find(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE"), nullptr);
    jsize index = 0;
    for (const jlong value : values)
        env->SetObjectArrayElement(array, index++, mechanismType(env, value));
    return array;
}
inline jintArray ints(JNIEnv* env, std::initializer_list<jint> values)
{
    const jintArray array = env->NewIntArray(static_cast<jsize>(values.size()));
    env->SetIntArrayRegion(array, 0, static_cast<jsize>(values.size()), values.begin());
    return array;
}
inline jbooleanArray booleans(JNIEnv* env, std::initializer_list<jboolean> values)
{
    const jbooleanArray array = env->NewBooleanArray(static_cast<jsize>(values.size()));
    env->SetBooleanArrayRegion(array, 0, static_cast<jsize>(values.size()), values.begin());
    return array;
}
inline jcharArray chars(JNIEnv* env, std::initializer_list<jchar> values)
{
    const jcharArray array = env->NewCharArray(static_cast<jsize>(values.size()));
    env->SetCharArrayRegion(array, 0, static_cast<jsize>(values.size()), values.begin());
    return array;
}
inline jobject typed(JNIEnv* env, const char* path)
{
    return make(env, path, "(J)V", jlong{0x1'80000abc});
}

// A class that a value may have. The rows are in the order in which the classes are tried.
struct ValueClass {
    const char* path;
    jobject (*make)(JNIEnv* e, const char* path); // what the next two are of
    Bytes native;
    CK_ULONG length;
    // The shortest native value that is written back, and what the object tells then; and when more follows.
    Bytes written = {};
    const char* after = nullptr;
    const char* afterLonger = nullptr;
};

inline const Bytes ABC = {0xbc, 0x0a, 0x00, 0x80};
inline const Bytes FEDC = {0x98, 0xba, 0xdc, 0xfe};

inline constexpr std::size_t WRITABLE = 18, CONVERTIBLE = 25;
inline const ValueClass VALUES[] = {
    {"[B",
        [](JNIEnv* e, auto) -> jobject {
            return bytes(e, {7, 8, 255, 7});
        },
        {7, 8, 255, 7}, 4, {9}, "[[9, 8, -1, 7]]", "[[9, -18, -18, -18]]"},
    {"java/lang/Long", [](JNIEnv* e, auto) { return boxedLong(e, 0x1'80000abc); }, ABC, 4, FEDC,
        "[4275878552]"},
    {"halvorn/zerlin/CK_BBOOL", [](JNIEnv* e, auto) { return bbool(e, false); }, {0}, 1, {1}, "[CK_TRUE]"},
    // The month goes over the year's first two bytes, and comes from there: wanted.
    {"halvorn/zerlin/CK_DATE", [](JNIEnv* e, auto) { return date(e, "2024", "07", "15"); },
        {'0', '7', '2', '4', 0, 0, '1', '5'}, 8, {'1', '9', '9', '8', '1', '2', '3', '1'}, "[1998-19-31]"},
    {"halvorn/zerlin/CK_OBJECT_HANDLE", typed, ABC, 4, FEDC, "[object 4275878552]"},
    {"halvorn/zerlin/CK_SESSION_HANDLE", typed, ABC, 4, FEDC, "[session 4275878552]"},
    {"halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"halvorn/zerlin/constants/CK_CERTIFICATE_TYPE", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"halvorn/zerlin/constants/CK_HW_FEATURE_TYPE", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"halvorn/zerlin/constants/CK_KEY_TYPE", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"[Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;",
        [](JNIEnv* e, auto) -> jobject {
            return mechanismTypes(e, {0x1'80000abc, 0x80000abc});
        },
        {0xbc, 0x0a, 0x00, 0x80, 0xbc, 0x0a, 0x00, 0x80}, 8, FEDC, "[[0xfedcba98, 0x80000abc]]",
        "[[0x180000abc, 0x80000abc]]"},
    {"halvorn/zerlin/constants/CK_MECHANISM_TYPE", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"halvorn/zerlin/constants/CK_OBJECT_CLASS", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"halvorn/zerlin/constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"halvorn/zerlin/constants/CK_RV", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"halvorn/zerlin/constants/CK_STATE", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"halvorn/zerlin/constants/CK_USER_TYPE", typed, ABC, 4, FEDC, "[0xfedcba98]"},
    {"java/lang/Boolean",
        [](JNIEnv* e, auto) { return make(e, "java/lang/Boolean", "(Z)V", jboolean{JNI_TRUE}); }, {1}, 1, {0},
        "[false]"},
    // The lengths of number arrays count elements.
    {"[J",
        [](JNIEnv* e, auto) -> jobject {
            return longs(e, {1, -2, 0x1'00000003});
        },
        {1, 0, 0, 0, 0xfe, 0xff, 0xff, 0xff, 3, 0, 0, 0}, 3},
    {"java/lang/String", [](JNIEnv* e, auto) -> jobject { return string(e, "my\xc3\xa9"); },
        {'m', 'y', 0xc3, 0xa9, 0}, 4},
    {"java/lang/Integer", [](JNIEnv* e, auto) { return make(e, "java/lang/Integer", "(I)V", jint{-2}); },
        {0xfe, 0xff, 0xff, 0xff}, 4},
    // Read as the long[] of the same memory; what lies behind it counts as zero.
    {"[I",
        [](JNIEnv* e, auto) -> jobject {
            return ints(e, {1, 9, -2, 9, 3});
        },
        {1, 0, 0, 0, 0xfe, 0xff, 0xff, 0xff, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 5},
    {"[Z",
        [](JNIEnv* e, auto) -> jobject {
            return booleans(e, {JNI_TRUE, JNI_FALSE});
        },
        {1, 0}, 2},
    {"[C",
        [](JNIEnv* e, auto) -> jobject {
            return chars(e, {'a', 0x1ff});
        },
        {'a', 0xff}, 2},
    {"java/lang/Byte", [](JNIEnv* e, auto) { return make(e, "java/lang/Byte", "(B)V", jbyte{-1}); }, {255},
        1},
    // Its converter looks for a class that there is not: wanted. No value.
    {"java/lang/Character",
        [](JNIEnv* e, auto) { return make(e, "java/lang/Character", "(C)V", jchar{'a'}); }, {}, 0},
};

inline jobject attribute(JNIEnv* env, jlong type, jobject value, jlong valueLen)
{
    const jobject made = make(env, "halvorn/zerlin/CK_ATTRIBUTE");
    const jobject madeType = make(env, "halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", "(J)V", type);
    setObject(env, made, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;", madeType);
    setObject(env, made, "pValue", "Ljava/lang/Object;", value);
    setLong(env, made, "valueLen", valueLen);
    env->DeleteLocalRef(madeType);
    return made;
}
inline jobjectArray attributes(JNIEnv* env, const std::vector<jobject>& elements)
{
    const jobjectArray array = env->NewObjectArray(
        static_cast<jsize>(elements.size()), find(env, "halvorn/zerlin/CK_ATTRIBUTE"), nullptr);
    jsize index = 0;
    for (const jobject element : elements)
        env->SetObjectArrayElement(array, index++, element);
    return array;
}
// With a value of each of the first classes.
inline jobjectArray attributesOfAllClasses(JNIEnv* env, std::size_t classes)
{
    std::vector<jobject> all;
    for (std::size_t i = 0; i < classes; ++i)
        all.push_back(attribute(env, 3, VALUES[i].make(env, VALUES[i].path), 4));
    return attributes(env, all);
}
inline jobject valueOf(JNIEnv* env, jobject attribute)
{
    return getObject(env, attribute, "pValue", "Ljava/lang/Object;");
}

// "[CKA_LABEL (0x3), [1, 2]] 2"
inline std::string told(JNIEnv* env, jobject attribute)
{
    const jobject type = getObject(env, attribute, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;");
    return text(env, {type, valueOf(env, attribute)}) + " " +
           std::to_string(getLong(env, attribute, "valueLen"));
}

// The numbers of the handles, types, lengths and counts that a native reads, in its order.
inline Longs readBy(JNIEnv* env, const Call& made)
{
    static const JNINativeInterface_* real;
    static Longs read;
    real = env->functions;
    read.clear();
    JNINativeInterface_ table = *real;
    table.GetLongField = [](JNIEnv* e, jobject object, jfieldID field) {
        read.push_back(real->GetLongField(e, object, field));
        return read.back();
    };
    env->functions = &table;
    made(env);
    env->functions = real;
    return read;
}

// Takes back a pending exception of that class, and no other, without a call that may fail.
inline void takeBack(JNIEnv* env, jclass exception)
{
    const jthrowable pending = env->ExceptionOccurred();
    if (pending == nullptr) return;
    env->ExceptionClear();
    if (!env->IsInstanceOf(pending, exception)) env->Throw(pending);
    env->DeleteLocalRef(pending);
}

} // namespace jni
