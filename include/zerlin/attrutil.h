/**
 * @file
 * Attribute templates: finding and reading attributes, what kind of value a type has, copying between
 * templates, and sets of attributes that grow, shrink, compare and keep to the rules of which attribute of an
 * object may change. Valid C99 and C++.
 *
 * A template is an array of CK_ATTRIBUTE with its count beside it. Where CKA_WILDCARD (0xFFFF) is asked for,
 * the first attribute is found, whatever its type. Predicates answer 1 or 0. There is no state: threads only
 * have to keep from using one set at once.
 *
 * A programming error (marked "aborts") ends the process with a line on standard error that names the failed
 * expression, in every build.
 */
#ifndef ZERLIN_ATTRUTIL_H
#define ZERLIN_ATTRUTIL_H

#include "zerlin/cryptoki.h"
#include "zerlin/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * A set of attributes on the heap. It owns the array and every non-null pValue in it, all of them from
 * malloc: a pValue is a block of its own, of ulValueLen bytes. The bytes of a value are overwritten with 0xAA
 * before the value is freed or replaced. The writing routines below never make two entries of one type.
 */
typedef struct AttributeSet {
    CK_ATTRIBUTE* attrs; /**< null when empty */
    CK_ULONG count;
} AttributeSet;

/**
 * @name Lookup
 * @{
 */
/**
 * Finds the first attribute of a type.
 *
 * @param type   the type, or CKA_WILDCARD for the first attribute of any
 * @param array  the attributes; may be null when count is 0, else aborts
 * @param count  entries in array
 * @return the entry, the array's own, writable if the array is; null when there is none
 */
ZERLIN_EXPORT CK_ATTRIBUTE* FindAttribute(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count);

/**
 * FindAttribute in a set.
 *
 * @param set  a null one aborts
 * @return the entry, the set's own until the next write to the set; null when there is none
 */
ZERLIN_EXPORT CK_ATTRIBUTE* FindAttr(CK_ATTRIBUTE_TYPE type, const AttributeSet* set);

/**
 * Reads one attribute of an object on the token: C_GetAttributeValue for the length, then for the value.
 *
 * @param buffer     [out] the value; unused when bufferLen is 0
 * @param bufferLen  bytes in buffer; 0 asks for the length only
 * @param lengthOut  [out] the value's length as the token tells it, also when the buffer is too short, but
 * not when the token fails to tell; may be null
 * @return CKR_OK; CKR_ATTRIBUTE_TYPE_INVALID when the buffer is too short; else what the token answered
 */
ZERLIN_EXPORT CK_RV GetAttr(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type,
    void* buffer, CK_ULONG bufferLen, CK_ULONG* lengthOut);

/**
 * Writes one attribute of an object on the token.
 *
 * @param value     the bytes, passed to C_SetAttributeValue as they are
 * @param valueLen  bytes in value
 * @return what C_SetAttributeValue answered
 */
ZERLIN_EXPORT CK_RV SetAttr(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type,
    const void* value, CK_ULONG valueLen);
/** @} */

/**
 * @name Small integers
 * @{
 */
/**
 * The number that an attribute holds.
 *
 * @param attr  may be null
 * @return the unsigned value of 1 byte, 2 bytes or a CK_ULONG in the host's byte order; -1 for any other
 * length and without a value. As wide as a CK_ULONG: convert it to one to compare it with a vendor constant.
 */
ZERLIN_EXPORT CK_LONG numAttr(const CK_ATTRIBUTE* attr);
/** The same as numAttr. */
ZERLIN_EXPORT CK_LONG intAttr(const CK_ATTRIBUTE* attr);

/** numAttr of what FindAttribute finds; -1 when it finds nothing. */
ZERLIN_EXPORT CK_LONG numAttrLookup(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count);
/** The same as numAttrLookup. */
ZERLIN_EXPORT CK_LONG intAttrLookup(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count);
/** @} */

/**
 * @name Classification
 * By type and length alone: the value is not read and may be null. A null attribute is of no kind.
 * @{
 */
/** Is it of a boolean type, with a length of 1 byte to a CK_ULONG? */
ZERLIN_EXPORT int isBooleanAttr(const CK_ATTRIBUTE* attr);
/** Is it a class, certificate type, key type or hardware feature, with a length of 1 byte to a CK_ULONG? */
ZERLIN_EXPORT int isEnumeratedAttr(const CK_ATTRIBUTE* attr);
/** Is it a type whose values are numbers? Enumerated types are, boolean ones are not. */
ZERLIN_EXPORT int isNumericAttrType(CK_ATTRIBUTE_TYPE type);
/** Is it of a numeric type, with a length of 1 byte to a CK_ULONG; CKA_MECHANISM_LIST: of whole CK_ULONGs? */
ZERLIN_EXPORT int isNumericAttr(const CK_ATTRIBUTE* attr);
/**
 * Is the attribute a secret part of the object that the set describes?
 *
 * @param set   the object's attributes; without a CKA_CLASS, or null, nothing is sensitive
 * @param attr  of which only the type is looked at; may be null
 * @return 1 for the value and the private parts of a private key, never for a hardware feature, and for
 *         CKA_VALUE of every other class, data and public keys included
 */
ZERLIN_EXPORT int isSensitiveAttr(const AttributeSet* set, const CK_ATTRIBUTE* attr);
/** @} */

/**
 * @name Copying between templates of the caller's
 * @{
 */
/**
 * Copies a value into the caller's buffer. A number of up to a CK_ULONG takes the buffer's own width instead.
 *
 * @param target  of the source's type, else aborts. On entry ulValueLen is the room at pValue; afterwards it
 * is the source's length, except that a number leaves it as it is. Without a pValue, here or in the source,
 * only the length is given.
 * @return CKR_OK; CKR_BUFFER_TOO_SMALL with less room than the source's length; CKR_GENERAL_ERROR when a
 * number meets room of neither 1 byte, 2 bytes nor a CK_ULONG. Nothing is changed then.
 */
ZERLIN_EXPORT CK_RV at_assign(CK_ATTRIBUTE* target, const CK_ATTRIBUTE* source);

/**
 * at_assign, element by element. An element whose copy fails does not stop the others.
 *
 * @param targetArray  each of the type of its source, or CKA_WILDCARD, which becomes the source's type
 * @param count        entries in both arrays
 * @return the result of the last element, whatever the others had, CKR_OK for none; CKR_GENERAL_ERROR at the
 *         first types that do not agree, where it stops
 */
ZERLIN_EXPORT CK_RV TransferAttr(CK_ATTRIBUTE* targetArray, const CK_ATTRIBUTE* sourceArray, CK_ULONG count);
/** @} */

/**
 * @name Making and freeing sets
 * Whoever is given a set owns it and frees it with FreeAttributeSet.
 * @{
 */
/**
 * Makes a set of count entries, all zero: the caller fills them in, with values from malloc.
 *
 * @return the set; null when there is no memory. When there is none for its array alone, attrs is null
 * although count is not 0: look before you fill.
 */
ZERLIN_EXPORT AttributeSet* NewAttributeSet(CK_ULONG count);

/** Clears and frees every value, then the array and the set. A null set is left alone. */
ZERLIN_EXPORT void FreeAttributeSet(AttributeSet* set);

/**
 * Makes a set of copies. An entry without a value keeps its length and has none in the copy either.
 *
 * @param array  may be null when count is 0
 * @return the set; null when there is no memory
 */
ZERLIN_EXPORT AttributeSet* DupAttributes(const CK_ATTRIBUTE* array, CK_ULONG count);
/** DupAttributes of a set's entries; null for a null set. */
ZERLIN_EXPORT AttributeSet* DupAttributeSet(const AttributeSet* set);

/** Overwrites every value with 0xAA and frees it, then frees the array; all from malloc. Null: nothing. */
ZERLIN_EXPORT void FreeAttributes(CK_ATTRIBUTE* array, CK_ULONG count);
/** FreeAttributes without overwriting: for values that are no secret. */
ZERLIN_EXPORT void FreeAttributesNoClear(CK_ATTRIBUTE* array, CK_ULONG count);
/** @} */

/**
 * @name Reading and writing sets
 * The bytes given are copied, and may be an entry's own. A null value with a length that is not 0 makes an
 * entry of that length without a value. Null sets answer CKR_HOST_MEMORY.
 * @{
 */
/**
 * Reads a value into a buffer of fixed size.
 *
 * @param out        [out] outSize bytes: the value, cut or followed by zeros. Untouched when 0 is returned.
 * @param lengthOut  [out] the value's own length, before any cut; may be null
 * @return 1; 0 when the set is null or lacks the type
 */
ZERLIN_EXPORT int ReadAttr(
    void* out, CK_ULONG outSize, CK_ULONG* lengthOut, CK_ATTRIBUTE_TYPE type, const AttributeSet* set);

/**
 * Reads CKA_CLASS, then CKA_KEY_TYPE.
 *
 * @param classOut    [out] untouched when the set lacks the class
 * @param keyTypeOut  [out] untouched when the set lacks either
 * @return CKR_OK; CKR_KEY_HANDLE_INVALID when the set lacks either, or is null
 */
ZERLIN_EXPORT CK_RV GetObjectClassAndKeyType(
    const AttributeSet* set, CK_OBJECT_CLASS* classOut, CK_KEY_TYPE* keyTypeOut);

/** doWriteAttr in mode 0: whatever the rules say, and without an answer. */
ZERLIN_EXPORT void WriteAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set);
/** doWriteAttr in mode 1: as when an object is copied. */
ZERLIN_EXPORT CK_RV CopyAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set);
/** doWriteAttr in mode 2: as when an existing object is changed. */
ZERLIN_EXPORT CK_RV AddAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set);

/**
 * Replaces the value of the entry of that type, or appends an entry.
 *
 * @param len   bytes in value; 0 makes an entry without a value
 * @param mode  0: always; 1 and 2: an existing entry only if canModifyAttr allows, in copy mode for 1
 * @return CKR_OK, also when a refused value is the one already there; CKR_ATTRIBUTE_READ_ONLY when refused;
 *         CKR_HOST_MEMORY when there is no memory: an appended entry is then missing, while a replaced one
 * has its new length and no value
 */
ZERLIN_EXPORT CK_RV doWriteAttr(
    const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set, int mode);

/**
 * May this entry of the set be given another value?
 *
 * @param set       the whole object: what may change depends on its class, key type, sensitivity and trust
 * @param attr      the entry in the set, with its present value
 * @param copyMode  not 0 while an object is copied, when CKA_TOKEN, CKA_PRIVATE and CKA_MODIFIABLE may change
 * @return 1 or 0; 0 when set or attr is null
 */
ZERLIN_EXPORT int canModifyAttr(const AttributeSet* set, const CK_ATTRIBUTE* attr, int copyMode);

/**
 * Clears and removes an entry; those behind it move down. An emptied set has no array.
 *
 * @return CKR_OK; CKR_ATTRIBUTE_TYPE_INVALID when the set lacks the type; CKR_HOST_MEMORY when the array
 * could not be shrunk, although the entry is gone
 */
ZERLIN_EXPORT CK_RV DelAttr(CK_ATTRIBUTE_TYPE type, AttributeSet* set);

/**
 * Writes the source's value of a type into the destination, whatever the rules say.
 *
 * @param destinationSet  a null one aborts, as does a null sourceSet
 * @return the destination's entry, old if the source has none; null when neither has one, or when there was
 * no memory to append it
 */
ZERLIN_EXPORT CK_ATTRIBUTE* CopyAttribute(
    CK_ATTRIBUTE_TYPE type, AttributeSet* destinationSet, const AttributeSet* sourceSet);

/**
 * Makes a new set: the base, changed by CopyAttr of each extra attribute in order.
 *
 * @param out    [out] the new set, the caller's; null on failure, except when only extra is null: then it is
 *               the copy of base, and the caller's
 * @return CKR_OK; CKR_HOST_MEMORY when base or extra is null or there is no memory; CKR_TEMPLATE_INCONSISTENT
 *         when an extra attribute may not be changed
 */
ZERLIN_EXPORT CK_RV AddAttributeSets(AttributeSet** out, const AttributeSet* base, const AttributeSet* extra);

/**
 * Adds the extra attributes that the set lacks. The others stay as they are in the set.
 *
 * @param set    may be null only when there is nothing to add
 * @param extra  may be null or empty
 * @return CKR_OK; CKR_ATTRIBUTE_READ_ONLY when the set's CKA_MODIFIABLE is 0 and extra is not empty;
 *         CKR_HOST_MEMORY when the set is null or there is no memory, where it stops
 */
ZERLIN_EXPORT CK_RV ConcatAttributeSets(AttributeSet* set, const AttributeSet* extra);
/** @} */

/**
 * @name Comparison
 * A value that is not there comes before any value of the same length.
 * @{
 */
/**
 * Compares a value with a buffer: first by length, then as memcmp does.
 *
 * @return -1 for the shorter and 1 for the longer attribute, by the sign of the difference taken as a
 * CK_LONG; at equal lengths less than, equal to or greater than 0
 */
ZERLIN_EXPORT int attrcmpbuf(const CK_ATTRIBUTE* attr, const void* buffer, CK_ULONG len);
/** attrcmpbuf of a with b's value; types are not compared. */
ZERLIN_EXPORT int attrcmp(const CK_ATTRIBUTE* a, const CK_ATTRIBUTE* b);

/** 1 when the types differ, 2 when compareValues is not 0 and the lengths or bytes differ, else 0. */
ZERLIN_EXPORT int CmpAttributes(const CK_ATTRIBUTE* a, const CK_ATTRIBUTE* b, int compareValues);

/** 0 when CmpAttributes of attr with some entry is 0, else its answer for the last entry; 1 for no entry. */
ZERLIN_EXPORT int SearchAttribute(const AttributeSet* set, const CK_ATTRIBUTE* attr, int compareValues);

/** 0 when both sets have the same types, 1 when their counts differ, else 2. Values are not compared. */
ZERLIN_EXPORT int CmpAttributeSets(const AttributeSet* a, const AttributeSet* b);

/**
 * Is every attribute of a in b, with the same value? A null set is like an empty one. Values of CKA_LABEL are
 * also the same when one of them is the other with a NUL at its end.
 */
ZERLIN_EXPORT int MatchAttributeSet(const AttributeSet* a, const AttributeSet* b);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
