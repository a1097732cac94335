// The information records and the date as data, for the routines that carry them in either direction.
#pragma once

#include <cstddef>

#include "helper/javaNames.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

enum class RecordFieldKind { Number, Text, Version, State };

struct RecordField {
    JavaField& field;
    RecordFieldKind kind;
    std::size_t offset;
    CK_ULONG width; // of text, in bytes
};

inline constexpr RecordField INFO_FIELDS[] = {
    {java::INFO.cryptokiVersion, RecordFieldKind::Version, offsetof(CK_INFO, cryptokiVersion), 0},
    {java::INFO.manufacturerID, RecordFieldKind::Text, offsetof(CK_INFO, manufacturerID), 32},
    {java::INFO.flags, RecordFieldKind::Number, offsetof(CK_INFO, flags), 0},
    {java::INFO.libraryDescription, RecordFieldKind::Text, offsetof(CK_INFO, libraryDescription), 32},
    {java::INFO.libraryVersion, RecordFieldKind::Version, offsetof(CK_INFO, libraryVersion), 0},
};

inline constexpr RecordField SLOT_INFO_FIELDS[] = {
    {java::SLOT_INFO.slotDescription, RecordFieldKind::Text, offsetof(CK_SLOT_INFO, slotDescription), 64},
    {java::SLOT_INFO.manufacturerID, RecordFieldKind::Text, offsetof(CK_SLOT_INFO, manufacturerID), 32},
    {java::SLOT_INFO.flags, RecordFieldKind::Number, offsetof(CK_SLOT_INFO, flags), 0},
    {java::SLOT_INFO.hardwareVersion, RecordFieldKind::Version, offsetof(CK_SLOT_INFO, hardwareVersion), 0},
    {java::SLOT_INFO.firmwareVersion, RecordFieldKind::Version, offsetof(CK_SLOT_INFO, firmwareVersion), 0},
};

inline constexpr RecordField TOKEN_INFO_FIELDS[] = {
    {java::TOKEN_INFO.label, RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, label), 32},
    {java::TOKEN_INFO.manufacturerID, RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, manufacturerID), 32},
    {java::TOKEN_INFO.model, RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, model), 16},
    {java::TOKEN_INFO.serialNumber, RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, serialNumber), 16},
    {java::TOKEN_INFO.flags, RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, flags), 0},
    {java::TOKEN_INFO.maxSessionCount, RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulMaxSessionCount),
        0},
    {java::TOKEN_INFO.sessionCount, RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulSessionCount), 0},
    {java::TOKEN_INFO.maxRwSessionCount, RecordFieldKind::Number,
        offsetof(CK_TOKEN_INFO, ulMaxRwSessionCount), 0},
    {java::TOKEN_INFO.rwSessionCount, RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulRwSessionCount), 0},
    {java::TOKEN_INFO.maxPinLen, RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulMaxPinLen), 0},
    {java::TOKEN_INFO.minPinLen, RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulMinPinLen), 0},
    {java::TOKEN_INFO.totalPublicMemory, RecordFieldKind::Number,
        offsetof(CK_TOKEN_INFO, ulTotalPublicMemory), 0},
    {java::TOKEN_INFO.freePublicMemory, RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulFreePublicMemory),
        0},
    {java::TOKEN_INFO.totalPrivateMemory, RecordFieldKind::Number,
        offsetof(CK_TOKEN_INFO, ulTotalPrivateMemory), 0},
    {java::TOKEN_INFO.freePrivateMemory, RecordFieldKind::Number,
        offsetof(CK_TOKEN_INFO, ulFreePrivateMemory), 0},
    {java::TOKEN_INFO.hardwareVersion, RecordFieldKind::Version, offsetof(CK_TOKEN_INFO, hardwareVersion), 0},
    {java::TOKEN_INFO.firmwareVersion, RecordFieldKind::Version, offsetof(CK_TOKEN_INFO, firmwareVersion), 0},
    {java::TOKEN_INFO.utcTime, RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, utcTime), 16},
};

inline constexpr RecordField SESSION_INFO_FIELDS[] = {
    {java::SESSION_INFO.slotID, RecordFieldKind::Number, offsetof(CK_SESSION_INFO, slotID), 0},
    {java::SESSION_INFO.state, RecordFieldKind::State, offsetof(CK_SESSION_INFO, state), 0},
    {java::SESSION_INFO.flags, RecordFieldKind::Number, offsetof(CK_SESSION_INFO, flags), 0},
    {java::SESSION_INFO.deviceError, RecordFieldKind::Number, offsetof(CK_SESSION_INFO, ulDeviceError), 0},
};

inline constexpr RecordField MECHANISM_INFO_FIELDS[] = {
    {java::MECHANISM_INFO.minKeySize, RecordFieldKind::Number, offsetof(CK_MECHANISM_INFO, ulMinKeySize), 0},
    {java::MECHANISM_INFO.maxKeySize, RecordFieldKind::Number, offsetof(CK_MECHANISM_INFO, ulMaxKeySize), 0},
    {java::MECHANISM_INFO.flags, RecordFieldKind::Number, offsetof(CK_MECHANISM_INFO, flags), 0},
};

// The digits of a CK_DATE, as many as their width, and where the copies in place find or put them: those of
// the month at the year's first two, deliberate.
struct DatePiece {
    JavaField& field;
    std::size_t offset;
    std::size_t copiedOffset;
    CK_ULONG width;
};

inline constexpr DatePiece DATE_PIECES[] = {
    {java::DATE.year, offsetof(CK_DATE, year), offsetof(CK_DATE, year), sizeof(CK_DATE::year)},
    {java::DATE.month, offsetof(CK_DATE, month), offsetof(CK_DATE, year), sizeof(CK_DATE::month)},
    {java::DATE.day, offsetof(CK_DATE, day), offsetof(CK_DATE, day), sizeof(CK_DATE::day)},
};

} // namespace zerlin
