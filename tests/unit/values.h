// Attribute values as Java objects, one of each class, and the attributes that hold them.
#pragma once

#include "harness/natives.h"

namespace jni {

inline jobject boxedLong(JNIEnv* env, jlong value)
{
    return make(env, "java/lang/Long", "(J)V", value); // a fresh one: the library overwrites it
}
inline jobject bbool(JNIEnv* env, bool value)
{
    return make(env, "halvorn/zerlin/CK_BBOOL", "(Z)V", static_cast<jboolean>(value));
}
template <typename Array, typename Element>
jobject filled(Array array, JNIEnv* env, void (JNIEnv::*set)(Array, jsize, jsize, const Element*),
    const std::vector<Element>& values)
{
    (env->*set)(array, 0, static_cast<jsize>(values.size()), values.data());
    return array;
}

// A value of one of the classes, and its native form.
struct Value {
    jobject object;
    Bytes native; // empty: not convertible
    CK_ULONG length;
    Bytes written;     // the shortest native value that is written back; empty: not writable
    const char* after; // the object's text then, or the class that is refused
};

inline std::vector<Value> values(JNIEnv* e)
{
    const jlong BIG = 0x1'80000abc;
    const Bytes ABC = {0xbc, 0x0a, 0x00, 0x80}, FEDC = {0x98, 0xba, 0xdc, 0xfe};
    const jobject date =
        make(e, "halvorn/zerlin/CK_DATE", "([B[B[B)V", bytes(e, "2024"), bytes(e, "07"), bytes(e, "15"));
    const jobject types = objects(
        e, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", {mechanismType(e, BIG), mechanismType(e, 1)});
    std::vector<Value> all = {{bytes(e, {7, 8, 255, 7}), {7, 8, 255, 7}, 4, {9}, "[[9, 8, -1, 7]]"},
        {boxedLong(e, BIG), ABC, 4, FEDC, "[4275878552]"}, {bbool(e, false), {0}, 1, {1}, "[CK_TRUE]"},
        {make(e, "java/lang/Boolean", "(Z)V", JNI_TRUE), {1}, 1, {0}, "[false]"},
        // Deliberate: the month is written over the year's first two bytes, and read from there.
        {date, {'0', '7', '2', '4', 0, 0, '1', '5'}, 8, {'1', '9', '9', '8', '1', '2', '3', '1'},
            "[1998-19-31]"},
        {object(e, BIG), ABC, 4, FEDC, "[object 4275878552]"},
        {session(e, BIG), ABC, 4, FEDC, "[session 4275878552]"},
        {types, {0xbc, 0x0a, 0x00, 0x80, 1, 0, 0, 0}, 8, FEDC, "[[0xfedcba98, CKM_RSA_PKCS (0x1)]]"},
        // The length of a number array counts elements.
        {longs(e, {1, 0x1'fffffffe}), {1, 0, 0, 0, 0xfe, 0xff, 0xff, 0xff}, 2, {}, "[J"},
        {string(e, "my\xc3\xa9"), {'m', 'y', 0xc3, 0xa9, 0}, 4, {}, "java.lang.String"},
        {make(e, "java/lang/Integer", "(I)V", -2), {0xfe, 0xff, 0xff, 0xff}, 4, {}, "java.lang.Integer"},
        // Read as a long[] of the same memory; what lies behind the array counts as zero.
        {filled(e->NewIntArray(3), e, &JNIEnv::SetIntArrayRegion, {1, 9, -2}),
            {1, 0, 0, 0, 0xfe, 0xff, 0xff, 0xff, 0, 0, 0, 0}, 3, {}, "[I"},
        {filled(e->NewBooleanArray(2), e, &JNIEnv::SetBooleanArrayRegion, {1, 0}), {1, 0}, 2, {}, "[Z"},
        {filled(e->NewCharArray(2), e, &JNIEnv::SetCharArrayRegion, {'a', 0x1ff}), {'a', 0xff}, 2, {}, "[C"},
        {make(e, "java/lang/Byte", "(B)V", -1), {255}, 1, {}, "java.lang.Byte"},
        // Deliberate: its converter looks for a class that does not exist.
        {make(e, "java/lang/Character", "(C)V", 'a'), {}, 0, {}, "java.lang.Character"}};
    for (const std::string name : {"ATTRIBUTE_TYPE", "CERTIFICATE_TYPE", "HW_FEATURE_TYPE", "KEY_TYPE",
             "MECHANISM_TYPE", "OBJECT_CLASS", "RSA_PKCS_OAEP_SOURCE_TYPE", "RV", "STATE", "USER_TYPE"})
        all.push_back({make(e, ("halvorn/zerlin/constants/CK_" + name).c_str(), "(J)V", BIG), ABC, 4, FEDC,
            "[0xfedcba98]"});
    return all;
}

inline CK_ATTRIBUTE native(CK_ULONG type, const Bytes& value)
{
    return {type, const_cast<CK_BYTE*>(value.data()), value.size()};
}
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
    return objects(env, "halvorn/zerlin/CK_ATTRIBUTE", elements);
}

// "[CKA_LABEL (0x3), [1, 2]] 2"
inline std::string describe(JNIEnv* env, jobject attribute)
{
    const jobject type = getObject(env, attribute, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;");
    return text(env, {type, getObject(env, attribute, "pValue", "Ljava/lang/Object;")}) + " " +
           std::to_string(getLong(env, attribute, "valueLen"));
}

// The values of the handles, types, lengths and counts that a native reads, in its order.
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

} // namespace jni
