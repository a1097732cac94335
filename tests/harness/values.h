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
inline std::string className(JNIEnv* env, jobject object)
{
    const std::string shown = text(env, {env->GetObjectClass(object)}); // "[class java.lang.Long]"
    return shown.substr(7, shown.size() - 8);
}

constexpr CK_ULONG WORD = sizeof(CK_ULONG);
constexpr std::uint8_t UNTOUCHED = 0xEE; // fills what waits for a copy
inline const char* const REFUSED = "refused";

// The numbers as the Cryptoki library receives them.
inline Bytes words(const Longs& values)
{
    Bytes native(WORD * values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        std::memcpy(&native[WORD * i], &values[i], WORD); // the low bytes come first
    return native;
}

// A value of one of the classes, and its native form.
struct Value {
    jobject object;
    Bytes native; // empty: not convertible
    CK_ULONG length = native.size();
    Bytes written = {};          // the shortest native value that is written back; empty: not writable
    std::string after = REFUSED; // the object's text then
    Bytes copied = native;       // the native form in memory that exists
};

inline std::vector<Value> values(JNIEnv* e)
{
    const jlong BIG = 0x1'80000abc;
    const Bytes NUMBER = words({BIG}), OTHER = words({0xfedcba98});
    const jobject types = objects(e, "halvorn/zerlin/constants/CK_MECHANISM_TYPE",
        {mechanismType(e, BIG), mechanismType(e, 1), mechanismType(e, 2)});
    std::vector<Value> all = {{bytes(e, {7, 8, 255, 7, 6}), {7, 8, 255, 7, 6}, 5, {9}, "[[9, 8, -1, 7, 6]]"},
        {make(e, "java/lang/Long", "(J)V", BIG), NUMBER, WORD, OTHER, "[4275878552]"},
        {make(e, "halvorn/zerlin/CK_BBOOL"), {0}, 1, {1}, "[CK_TRUE]"},
        {make(e, "java/lang/Boolean", "(Z)V", JNI_TRUE), {1}, 1, {0}, "[false]"},
        // Deliberate: the month is written over the year's first two bytes, and read from there.
        {make(e, "halvorn/zerlin/CK_DATE", "(III)V", 2024, 7, 15), {'0', '7', '2', '4', 0, 0, '1', '5'}, 8,
            {'1', '9', '9', '8', '1', '2', '3', '1'}, "[1998-19-31]",
            {'0', '7', '2', '4', UNTOUCHED, UNTOUCHED, '1', '5'}},
        {object(e, BIG), NUMBER, WORD, OTHER, "[object 4275878552]"},
        {session(e, BIG), NUMBER, WORD, OTHER, "[session 4275878552]"},
        {types, words({BIG, 1, 2}), 3 * WORD, OTHER,
            "[[0xfedcba98, CKM_RSA_PKCS (0x1), CKM_RSA_9796 (0x2)]]"},
        // The length of a number array counts elements.
        {longs(e, {1, 0x1'fffffffe}), words({1, 0x1'fffffffe}), 2},
        {string(e, "my\xc3\xa9"), {'m', 'y', 0xc3, 0xa9, 0}, 4},
        {make(e, "java/lang/Integer", "(I)V", -2), words({-2})},
        // Read as a long[] of the same memory; what lies behind the array counts as zero.
        {filled(e, e->NewIntArray(3), &JNIEnv::SetIntArrayRegion, {1, 9, -2}),
            words({0x9'00000001, 0xfffffffe, 0}), 3, {}, REFUSED, words({1, 9, -2})},
        {filled(e, e->NewBooleanArray(2), &JNIEnv::SetBooleanArrayRegion, {1, 0}), {1, 0}},
        {filled(e, e->NewCharArray(2), &JNIEnv::SetCharArrayRegion, {'a', 0x1ff}), {'a', 0xff}},
        {make(e, "java/lang/Byte", "(B)V", -1), {255}},
        // Deliberate: its converter looks for a class that does not exist.
        {make(e, "java/lang/Character", "(C)V", 0x2161), {}, 0, {}, REFUSED, {'a'}},
        {make(e, "java/lang/Double", "(D)V", 1.5), {}}, {objects(e, "[B", {}), {}}};
    for (const std::string name : {"ATTRIBUTE_TYPE", "CERTIFICATE_TYPE", "HW_FEATURE_TYPE", "KEY_TYPE",
             "MECHANISM_TYPE", "OBJECT_CLASS", "RSA_PKCS_OAEP_SOURCE_TYPE", "RV", "STATE", "USER_TYPE"})
        all.push_back({make(e, ("halvorn/zerlin/constants/CK_" + name).c_str(), "(J)V", BIG), NUMBER, WORD,
            OTHER, "[0xfedcba98]"});
    return all;
}

inline CK_ATTRIBUTE native(CK_ULONG type, const Bytes& value)
{
    return {type, const_cast<CK_BYTE*>(value.data()), value.size()};
}
inline jobject attribute(JNIEnv* env, jlong type, jobject value, jlong valueLen)
{
    const char* const path = "halvorn/zerlin/CK_ATTRIBUTE";
    const jobject made = make(env, path, "(JLjava/lang/Object;J)V", type, nullptr, valueLen);
    setObject(env, made, "pValue", "Ljava/lang/Object;", value); // the constructor would replace an int[]
    return made;
}
inline jobjectArray attributes(JNIEnv* env, const std::vector<jobject>& elements)
{
    return objects(env, "halvorn/zerlin/CK_ATTRIBUTE", elements);
}

// "[CKA_LABEL (0x3), [1, 2]] 2"
inline std::string describe(JNIEnv* env, jobject attribute)
{
    const jobject type = getObject(env, attribute, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;");
    return text(env, {type, getObject(env, attribute, "pValue", "Ljava/lang/Object;")}) + " " +
           std::to_string(getLong(env, attribute, "valueLen"));
}

// Fails each JNI call and each allocation of a conversion in turn. The work returns whether no
// exception is pending.
inline void failEach(JNIEnv* env, const std::function<bool()>& work)
{
    const auto checked = [&] {
        const bool isDone = work();
        EXPECT_EQ(isDone, !env->ExceptionCheck());
    };
    failEachJniCall(env, [&] { return checked; });
    EXPECT_EQ(failEachAllocation(env, [&] { return checked(), "survived"; }), Lines{});
}

} // namespace jni
