/**
 * @file
 * Attribute templates: find and read attributes, classify them, copy between templates, and keep sets of
 * attributes that can grow, shrink, be compared, and follow the rules on which attributes of an object may
 * change. Valid C99 and C++.
 *
 * A template is an array of CK_ATTRIBUTE (PKCS#11 section 9.4) and its count. Counts are in attributes,
 * lengths in bytes. The type CKA_WILDCARD (0xFFFF) finds the first attribute, whatever its type. A question
 * (is..., can...) returns 1 or 0.
 *
 * C_GetAttributeValue leaves the length CK_UNAVAILABLE_INFORMATION in an attribute that it could not read.
 * Here this length counts as 0 bytes: nothing of the value is read, copied, compared or overwritten, and a
 * value in a set is still freed. The length itself is compared, copied and reported as it is.
 *
 * A pointer argument must not be null unless its description says what null means. "Aborts" means: a
 * programming error ends the process, in every build, with a line on standard error that names the failed
 * expression.
 *
 * The library keeps no state for these functions. Any thread may call them, but two threads must not use the
 * same set at the same time.
 */
#ifndef ZERLIN_ATTRUTIL_H
#define ZERLIN_ATTRUTIL_H

#include "zerlin/cryptoki.h"
#include "zerlin/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * A set of attributes on the heap. It owns its array and every pValue that is not null. All of them come from
 * malloc: each pValue is a block of its own, of ulValueLen bytes. A value is overwritten with 0xAA before it
 * is freed or replaced, unless its length is CK_UNAVAILABLE_INFORMATION. No function below adds a second
 * entry of a type that the set has already.
 */
typedef struct AttributeSet {
    CK_ATTRIBUTE* attrs; /**< null if the set is empty; with any other count, null makes a lookup abort */
    CK_ULONG count;      /**< entries in attrs */
} AttributeSet;

/**
 * @name Lookup
 * @{
 */
/**
 * Finds the first attribute of a type.
 *
 * @param type   the type, or CKA_WILDCARD for the first attribute of any type
 * @param array  the attributes; may be null if count is 0, otherwise null aborts
 * @param count  attributes in array
 * @return a pointer into array, which may be written if the array may; null if there is none
 */
ZERLIN_EXPORT CK_ATTRIBUTE* FindAttribute(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count);

/**
 * Finds the first attribute of a type in a set.
 *
 * @param type  the type, or CKA_WILDCARD for the first attribute of any type
 * @param set   the set; null aborts
 * @return the entry, which the set owns and which is valid until the set is next written; null if there is
 *         none
 */
ZERLIN_EXPORT CK_ATTRIBUTE* FindAttr(CK_ATTRIBUTE_TYPE type, const AttributeSet* set);

/**
 * Reads one attribute of an object on the token. It calls C_GetAttributeValue (PKCS#11 section 11.7) for the
 * length and, if bufferLen is not 0, again for the value.
 *
 * @param session    the session
 * @param object     the object
 * @param type       the attribute
 * @param buffer     [out] the value; may be null if bufferLen is 0
 * @param bufferLen  capacity of buffer in bytes; 0 asks for the length only
 * @param lengthOut  [out] the value's length in bytes, also if the buffer is too short; unchanged if the
 *                   token does not report it; may be null
 * @return CKR_OK; CKR_ATTRIBUTE_TYPE_INVALID if the buffer is too short (not CKR_BUFFER_TOO_SMALL:
 *         deliberate); otherwise what C_GetAttributeValue returned
 */
ZERLIN_EXPORT CK_RV GetAttr(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type,
    void* buffer, CK_ULONG bufferLen, CK_ULONG* lengthOut);

/**
 * Writes one attribute of an object on the token by C_SetAttributeValue (PKCS#11 section 11.7).
 *
 * @param session   the session
 * @param object    the object
 * @param type      the attribute
 * @param value     the bytes; passed to C_SetAttributeValue as they are, also null
 * @param valueLen  bytes in value
 * @return what C_SetAttributeValue returned
 */
ZERLIN_EXPORT CK_RV SetAttr(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type,
    const void* value, CK_ULONG valueLen);
/** @} */

/**
 * @name Small integers
 * @{
 */
/**
 * Returns the number in an attribute.
 *
 * @param attr  the attribute, or null
 * @return the unsigned value of 1 byte, 2 bytes or a CK_ULONG, in the host's byte order; -1 for any other
 *         length, for a null pValue and for null. Convert the result to CK_ULONG before you compare it with
 *         a vendor constant: where a CK_LONG has 32 bits, values from 0x80000000 on are negative.
 */
ZERLIN_EXPORT CK_LONG numAttr(const CK_ATTRIBUTE* attr);
/** The same as numAttr. */
ZERLIN_EXPORT CK_LONG intAttr(const CK_ATTRIBUTE* attr);

/**
 * Finds an attribute and returns its number.
 *
 * @param type   as in FindAttribute
 * @param array  as in FindAttribute
 * @param count  as in FindAttribute
 * @return numAttr of the attribute; -1 if there is none
 */
ZERLIN_EXPORT CK_LONG numAttrLookup(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count);
/** The same as numAttrLookup. */
ZERLIN_EXPORT CK_LONG intAttrLookup(CK_ATTRIBUTE_TYPE type, const CK_ATTRIBUTE* array, CK_ULONG count);
/** @} */

/**
 * @name Classification
 * Only the type and the length decide. The value is not read and may be null. For a null attribute the result
 * is 0.
 * @{
 */
/** Is it of a boolean type, with a length from 1 byte to sizeof(CK_ULONG)? */
ZERLIN_EXPORT int isBooleanAttr(const CK_ATTRIBUTE* attr);
/**
 * Is it a CKA_CLASS, CKA_CERTIFICATE_TYPE, CKA_KEY_TYPE or CKA_HW_FEATURE_TYPE, with a length from 1 byte to
 * sizeof(CK_ULONG)?
 */
ZERLIN_EXPORT int isEnumeratedAttr(const CK_ATTRIBUTE* attr);
/** Are the values of this type numbers? Enumerated types count as numbers, boolean types do not. */
ZERLIN_EXPORT int isNumericAttrType(CK_ATTRIBUTE_TYPE type);
/**
 * Is it of a numeric type, with a length from 1 byte to sizeof(CK_ULONG)? The length of a CKA_MECHANISM_LIST
 * must instead be a multiple of sizeof(CK_ULONG), and not 0.
 */
ZERLIN_EXPORT int isNumericAttr(const CK_ATTRIBUTE* attr);
/**
 * Is the attribute a secret part of the object that the set describes?
 *
 * @param set   the object's attributes; if it is null or has no CKA_CLASS, nothing is secret
 * @param attr  the attribute, or null; only its type is read
 * @return for a private key, 1 for CKA_VALUE and the private RSA components; for a hardware feature always
 *         0; for every other class 1 for CKA_VALUE, also of data and public keys: deliberate
 */
ZERLIN_EXPORT int isSensitiveAttr(const AttributeSet* set, const CK_ATTRIBUTE* attr);
/** @} */

/**
 * @name Copying between templates
 * The caller owns all arrays and values.
 * @{
 */
/**
 * Copies a value into the target's buffer. A number of at most sizeof(CK_ULONG) bytes is converted to the
 * width of the target instead.
 *
 * @param target  the attribute to write; it must have the source's type, otherwise this aborts. Before:
 *                ulValueLen is the capacity of pValue in bytes. After: it is the source's length, except
 *                that a number leaves it unchanged. If pValue is null, here or in the source, only the
 *                length is copied.
 * @param source  the attribute to read
 * @return CKR_OK; CKR_BUFFER_TOO_SMALL if the capacity is less than the source's length; CKR_GENERAL_ERROR
 *         if the capacity for a number is not 1 byte, 2 bytes or sizeof(CK_ULONG). On an error nothing is
 *         changed.
 */
ZERLIN_EXPORT CK_RV at_assign(CK_ATTRIBUTE* target, const CK_ATTRIBUTE* source);

/**
 * Calls at_assign for each pair of attributes. A failed copy does not stop the others.
 *
 * @param targetArray  each target has the type of its source, or CKA_WILDCARD, which is replaced by that
 *                     type
 * @param sourceArray  the attributes to read
 * @param count        attributes in each array
 * @return the result of the last copy only, whatever the others returned: deliberate; CKR_OK for count 0;
 *         CKR_GENERAL_ERROR at the first pair whose types differ, where it stops
 */
ZERLIN_EXPORT CK_RV TransferAttr(CK_ATTRIBUTE* targetArray, const CK_ATTRIBUTE* sourceArray, CK_ULONG count);
/** @} */

/**
 * @name Creating and freeing sets
 * The caller owns a returned set and frees it with FreeAttributeSet.
 * @{
 */
/**
 * Creates a set of count entries, all zero. The caller fills them in, with values from malloc.
 *
 * @param count  number of entries
 * @return the set; null if memory for the set cannot be allocated. If only its array cannot be allocated,
 *         attrs is null although count is not 0: check attrs before you fill it in.
 */
ZERLIN_EXPORT AttributeSet* NewAttributeSet(CK_ULONG count);

/** Overwrites every value with 0xAA, then frees the values, the array and the set. Null does nothing. */
ZERLIN_EXPORT void FreeAttributeSet(AttributeSet* set);

/**
 * Creates a set of copies. The copy of an attribute without a value has none either, but the same length.
 *
 * @param array  the attributes; may be null if count is 0
 * @param count  attributes in array
 * @return the set; null if memory cannot be allocated
 */
ZERLIN_EXPORT AttributeSet* DupAttributes(const CK_ATTRIBUTE* array, CK_ULONG count);
/**
 * Copies a set.
 *
 * @param set  the set, or null
 * @return the copy; null if set is null or memory cannot be allocated
 */
ZERLIN_EXPORT AttributeSet* DupAttributeSet(const AttributeSet* set);

/**
 * Overwrites every value with 0xAA, then frees the values and the array.
 *
 * @param array  attributes from malloc, with values from malloc; null does nothing
 * @param count  attributes in array
 */
ZERLIN_EXPORT void FreeAttributes(CK_ATTRIBUTE* array, CK_ULONG count);
/** Frees as FreeAttributes does, but overwrites nothing: for values that are not secret. */
ZERLIN_EXPORT void FreeAttributesNoClear(CK_ATTRIBUTE* array, CK_ULONG count);
/** @} */

/**
 * @name Reading and writing sets
 * A value to be written is copied; it may be the value of an entry of the same set. A null value with a
 * length that is not 0 writes an entry of that length without a value. Writing to a null set returns
 * CKR_HOST_MEMORY.
 * @{
 */
/**
 * Reads a value into a buffer of fixed size.
 *
 * @param out        [out] outSize bytes: the value, cut, or filled up with zeros. Unchanged if 0 is
 *                   returned. May be null if outSize is 0.
 * @param outSize    bytes in out
 * @param lengthOut  [out] the value's own length in bytes, before any cut; may be null
 * @param type       the attribute
 * @param set        the set, or null
 * @return 1; 0 if the set is null or has no such attribute
 */
ZERLIN_EXPORT int ReadAttr(
    void* out, CK_ULONG outSize, CK_ULONG* lengthOut, CK_ATTRIBUTE_TYPE type, const AttributeSet* set);

/**
 * Reads CKA_CLASS, then CKA_KEY_TYPE.
 *
 * @param set         the set, or null
 * @param classOut    [out] the class; unchanged if the set has none
 * @param keyTypeOut  [out] the key type; unchanged if the set lacks either attribute
 * @return CKR_OK; CKR_KEY_HANDLE_INVALID if the set is null or lacks either attribute
 */
ZERLIN_EXPORT CK_RV GetObjectClassAndKeyType(
    const AttributeSet* set, CK_OBJECT_CLASS* classOut, CK_KEY_TYPE* keyTypeOut);

/** Calls doWriteAttr in mode 0, which always writes, and ignores its result. */
ZERLIN_EXPORT void WriteAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set);
/** Calls doWriteAttr in mode 1: the rules for copying an object. */
ZERLIN_EXPORT CK_RV CopyAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set);
/** Calls doWriteAttr in mode 2: the rules for changing an object. */
ZERLIN_EXPORT CK_RV AddAttr(const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set);

/**
 * Replaces the value of the set's entry of a type, or appends an entry if there is none.
 *
 * @param value  the bytes to copy; null writes an entry without a value
 * @param len    bytes in value; 0 writes an entry without a value
 * @param type   the attribute
 * @param set    the set to change
 * @param mode   0 always writes. 1 and 2 replace an existing entry only if canModifyAttr allows it, 1 with
 *               its copyMode.
 * @return CKR_OK, also if a change is refused but the entry has that very value already;
 *         CKR_ATTRIBUTE_READ_ONLY if the change is refused; CKR_HOST_MEMORY if set is null or memory cannot
 *         be allocated. Without memory an entry is not appended, but an existing entry loses its value and
 *         has the new length.
 */
ZERLIN_EXPORT CK_RV doWriteAttr(
    const void* value, CK_ULONG len, CK_ATTRIBUTE_TYPE type, AttributeSet* set, int mode);

/**
 * May the value of this entry of the set change?
 *
 * @param set       the whole object: its class, key type, CKA_SENSITIVE and CKA_TRUSTED decide; or null
 * @param attr      the entry of the set, with its present value; or null
 * @param copyMode  not 0 while an object is copied: CKA_TOKEN, CKA_PRIVATE and CKA_MODIFIABLE may then
 *                  change
 * @return 1 or 0; 0 if set or attr is null
 */
ZERLIN_EXPORT int canModifyAttr(const AttributeSet* set, const CK_ATTRIBUTE* attr, int copyMode);

/**
 * Overwrites an entry's value with 0xAA, frees it and removes the entry. Later entries move down by one. If
 * the set is then empty, its array is freed.
 *
 * @param type  the attribute
 * @param set   the set to change
 * @return CKR_OK; CKR_ATTRIBUTE_TYPE_INVALID if the set has no such attribute; CKR_HOST_MEMORY if set is
 *         null, or if the array could not be made smaller; in that case the entry is removed all the same
 */
ZERLIN_EXPORT CK_RV DelAttr(CK_ATTRIBUTE_TYPE type, AttributeSet* set);

/**
 * Copies the value of one type from one set to another, as WriteAttr does.
 *
 * @param type            the attribute
 * @param destinationSet  the set to change; null aborts
 * @param sourceSet       the set to read; null aborts
 * @return the destination's entry, which the destination owns; it is unchanged if the source has no such
 *         attribute. Null if neither set has one, or if memory for it cannot be allocated.
 */
ZERLIN_EXPORT CK_ATTRIBUTE* CopyAttribute(
    CK_ATTRIBUTE_TYPE type, AttributeSet* destinationSet, const AttributeSet* sourceSet);

/**
 * Creates a copy of the base set and changes it by CopyAttr of each extra attribute, in order.
 *
 * @param out    [out] the new set, owned by the caller; null on an error. But if extra is null and base is
 *               not, it is a copy of base, owned by the caller, although an error is returned.
 * @param base   the set to copy
 * @param extra  the attributes to write into the copy
 * @return CKR_OK; CKR_HOST_MEMORY if base or extra is null or memory cannot be allocated;
 *         CKR_TEMPLATE_INCONSISTENT if an extra attribute may not be changed
 */
ZERLIN_EXPORT CK_RV AddAttributeSets(AttributeSet** out, const AttributeSet* base, const AttributeSet* extra);

/**
 * Appends the extra attributes that the set does not have. Attributes that it has stay as they are.
 *
 * @param set    the set to change; may be null only if extra is null or empty
 * @param extra  the attributes to add; may be null
 * @return CKR_OK; CKR_ATTRIBUTE_READ_ONLY if the set's CKA_MODIFIABLE is 0 and extra is not empty;
 *         CKR_HOST_MEMORY if set is null, or if memory cannot be allocated: the attributes before that one
 *         are then appended
 */
ZERLIN_EXPORT CK_RV ConcatAttributeSets(AttributeSet* set, const AttributeSet* extra);
/** @} */

/**
 * @name Comparison
 * A missing value (null pValue) is less than any value of the same length.
 * @{
 */
/**
 * Compares a value with a buffer: first the lengths, then the bytes as memcmp does.
 *
 * @param attr    the attribute
 * @param buffer  the bytes to compare with; null is a missing value
 * @param len     bytes in buffer
 * @return -1 if the attribute is shorter, 1 if it is longer: the sign of the difference as a CK_LONG. At
 *         equal lengths less than, equal to or greater than 0.
 */
ZERLIN_EXPORT int attrcmpbuf(const CK_ATTRIBUTE* attr, const void* buffer, CK_ULONG len);
/** Calls attrcmpbuf of a with b's value. Types are not compared. */
ZERLIN_EXPORT int attrcmp(const CK_ATTRIBUTE* a, const CK_ATTRIBUTE* b);

/**
 * Compares two attributes.
 *
 * @param a              one attribute
 * @param b              the other
 * @param compareValues  0 compares the types only
 * @return 1 if the types differ; 2 if values are compared and lengths or bytes differ; otherwise 0
 */
ZERLIN_EXPORT int CmpAttributes(const CK_ATTRIBUTE* a, const CK_ATTRIBUTE* b, int compareValues);

/**
 * Searches a set for an attribute that CmpAttributes finds equal.
 *
 * @param set            the set; null is like an empty one
 * @param attr           the attribute to search for
 * @param compareValues  0 compares the types only
 * @return 0 if an entry is equal; otherwise the result of CmpAttributes for the last entry; 1 for an empty
 *         set
 */
ZERLIN_EXPORT int SearchAttribute(const AttributeSet* set, const CK_ATTRIBUTE* attr, int compareValues);

/**
 * Compares the types of two sets. Values are not compared. Null is like an empty set; no set may have a type
 * twice.
 *
 * @return 0 if both have the same types, in any order; 1 if their counts differ; otherwise 2
 */
ZERLIN_EXPORT int CmpAttributeSets(const AttributeSet* a, const AttributeSet* b);

/**
 * Is every attribute of a also in b, with the same value? Two values of CKA_LABEL are also the same if they
 * differ only by one NUL at the end.
 *
 * @param a  the attributes to search for; an empty set matches every b, but null matches only a null or
 *           empty b
 * @param b  the set to search; null is like an empty one
 */
ZERLIN_EXPORT int MatchAttributeSet(const AttributeSet* a, const AttributeSet* b);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
