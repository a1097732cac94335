// The mechanism parameter structures as data: which Java field belongs to which native member. One routine a
// direction walks the rows of a structure: it reads a Java parameter object, creates one, writes results back
// into one, frees the native structure. The rows and tables are in parameters.cpp, the routines in
// parameters_toCK.cpp and parameters_toJava.cpp.
#pragma once

#include <cstddef>
#include <span>

#include <jni.h>

#include "helper/elements.h"
#include "helper/jutil.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

enum class MemberKind {
    Number,        // long
    NumberIn,      // the same, but it is never written to Java
    MechanismType, // an object that holds a CK_ULONG, as the next two
    OaepSource,
    ObjectHandle,
    BBool,          // a CK_BBOOL object
    Byte,           // byte
    CappedInt,      // int, as a byte: above 255 it is 255, a negative one keeps its low 8 bits
    Array,          // byte[], in place
    Bytes,          // byte[], behind a pointer
    BytesIfCounted, // the same, but only where the length that comes before it is not 0
    InitVector,     // the same, 8 bytes whose length no member holds
    KeyIV,          // the same, as long as the IVSizeInBits of the whole parameter says
    Text,           // the same, with a closing NUL
    Nested,         // a structure in place
    Pointed,        // a structure behind a pointer
    Attributes,     // CK_ATTRIBUTE[], behind a pointer; the last member of its kind in a structure
    HandleCount,    // a LongRef, behind a pointer
    Handles,        // CK_OBJECT_HANDLE[], behind a pointer, only where the HandleCount before it is not 0
};

struct Structure;

struct Member {
    JavaField& field;
    MemberKind kind;
    std::size_t offset;
    std::size_t detail = 0;          // an Array's width; where the length or count of what is pointed to lies
    const char* assertion = nullptr; // what ties a length to the array that was copied before it
    const Structure* structure = nullptr;
    bool isReturned = false; // a mechanism that returns results writes one here
};

struct Structure {
    const char* name; // of the native structure
    JavaClass& cls;
    std::size_t size;
    std::span<const Member> members; // none: the parameter is one CK_ULONG
    // The names under which assertions are reported; null for a structure that is only a part of others.
    const char* convert = nullptr;
    const char* free = nullptr;
    const char* create = nullptr;    // that of convert where null
    const char* freedName = nullptr; // the native structure as its release names it; name where null
};

// The length of a PBE mechanism's initialisation vector.
constexpr CK_ULONG PBE_IV_LENGTH = 8;

// Two shadows lie behind every structure that was made of a Java object, each of the structure's own size.
// Where the structure has a pointer, the first has the pointer that was made, and the second the size in
// bytes of what it points to. The Cryptoki library may change the structure, but not these.
struct Made {
    CK_BYTE_PTR data;
    std::size_t size;
};

// What was made for a pointer of the structure; outerSize is that of the outermost structure around it.
inline Made madeAt(const CK_BYTE* place, std::size_t outerSize)
{
    static_assert(sizeof(std::size_t) == sizeof(CK_ULONG) && sizeof(CK_BYTE_PTR) == sizeof(CK_ULONG));
    return {pointerAt(place + outerSize), numberAt(place + 2 * outerSize)};
}

// Finds the classes of all parameters. False with an exception pending.
bool findParameterClasses(JNIEnv* env);

// The structure of a Java parameter by its class, or null. The classes have been found.
const Structure* structureOf(JNIEnv* env, jobject parameter);

// The same for a parameter that would otherwise be refused: that of a modern mechanism. Only here are their
// classes looked up, and one that the jar does not have is no error. Null with an exception pending.
const Structure* modernStructureOf(JNIEnv* env, jobject parameter);

// The same by those of their classes that have been found, or null.
const Structure* knownModernStructureOf(JNIEnv* env, jobject parameter);

// The structure of a native parameter by its mechanism and size, or null.
const Structure* structureOf(CK_MECHANISM_TYPE mechanism, CK_ULONG size);

// The structure through which a mechanism returns results, or null.
const Structure* structureReturnedBy(CK_MECHANISM_TYPE mechanism);

} // namespace zerlin
