// The information records as data, for the routines that carry them in either direction.
#pragma once

#include <cstddef>

#include "helper/jutil.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

enum class RecordFieldKind { Number, Text, Version, State };

struct RecordField {
    Literal name;
    RecordFieldKind kind;
    std::size_t offset;
    CK_ULONG width; // of text, in bytes
};

inline constexpr RecordField INFO_FIELDS[] = {
    {"cryptokiVersion", RecordFieldKind::Version, offsetof(CK_INFO, cryptokiVersion), 0},
    {"manufacturerID", RecordFieldKind::Text, offsetof(CK_INFO, manufacturerID), 32},
    {"flags", RecordFieldKind::Number, offsetof(CK_INFO, flags), 0},
    {"libraryDescription", RecordFieldKind::Text, offsetof(CK_INFO, libraryDescription), 32},
    {"libraryVersion", RecordFieldKind::Version, offsetof(CK_INFO, libraryVersion), 0},
};

inline constexpr RecordField SLOT_INFO_FIELDS[] = {
    {"slotDescription", RecordFieldKind::Text, offsetof(CK_SLOT_INFO, slotDescription), 64},
    {"manufacturerID", RecordFieldKind::Text, offsetof(CK_SLOT_INFO, manufacturerID), 32},
    {"flags", RecordFieldKind::Number, offsetof(CK_SLOT_INFO, flags), 0},
    {"hardwareVersion", RecordFieldKind::Version, offsetof(CK_SLOT_INFO, hardwareVersion), 0},
    {"firmwareVersion", RecordFieldKind::Version, offsetof(CK_SLOT_INFO, firmwareVersion), 0},
};

inline constexpr RecordField TOKEN_INFO_FIELDS[] = {
    {"label", RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, label), 32},
    {"manufacturerID", RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, manufacturerID), 32},
    {"model", RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, model), 16},
    {"serialNumber", RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, serialNumber), 16},
    {"flags", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, flags), 0},
    {"maxSessionCount", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulMaxSessionCount), 0},
    {"sessionCount", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulSessionCount), 0},
    {"maxRwSessionCount", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulMaxRwSessionCount), 0},
    {"rwSessionCount", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulRwSessionCount), 0},
    {"maxPinLen", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulMaxPinLen), 0},
    {"minPinLen", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulMinPinLen), 0},
    {"totalPublicMemory", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulTotalPublicMemory), 0},
    {"freePublicMemory", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulFreePublicMemory), 0},
    {"totalPrivateMemory", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulTotalPrivateMemory), 0},
    {"freePrivateMemory", RecordFieldKind::Number, offsetof(CK_TOKEN_INFO, ulFreePrivateMemory), 0},
    {"hardwareVersion", RecordFieldKind::Version, offsetof(CK_TOKEN_INFO, hardwareVersion), 0},
    {"firmwareVersion", RecordFieldKind::Version, offsetof(CK_TOKEN_INFO, firmwareVersion), 0},
    {"utcTime", RecordFieldKind::Text, offsetof(CK_TOKEN_INFO, utcTime), 16},
};

inline constexpr RecordField SESSION_INFO_FIELDS[] = {
    {"slotID", RecordFieldKind::Number, offsetof(CK_SESSION_INFO, slotID), 0},
    {"state", RecordFieldKind::State, offsetof(CK_SESSION_INFO, state), 0},
    {"flags", RecordFieldKind::Number, offsetof(CK_SESSION_INFO, flags), 0},
    {"deviceError", RecordFieldKind::Number, offsetof(CK_SESSION_INFO, ulDeviceError), 0},
};

inline constexpr RecordField MECHANISM_INFO_FIELDS[] = {
    {"minKeySize", RecordFieldKind::Number, offsetof(CK_MECHANISM_INFO, ulMinKeySize), 0},
    {"maxKeySize", RecordFieldKind::Number, offsetof(CK_MECHANISM_INFO, ulMaxKeySize), 0},
    {"flags", RecordFieldKind::Number, offsetof(CK_MECHANISM_INFO, flags), 0},
};

} // namespace zerlin
