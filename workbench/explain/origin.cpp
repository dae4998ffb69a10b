// SPDX-License-Identifier: GPL-3.0-or-later
//
// Where the bytes come from that differ from sensor to sensor of one kind: from the kind's rules, and from what the index
// of the row's group counts.
#include "explain/explain.h"

#include "base/text.h"
#include "sets/rows.h"

namespace workbench {
namespace {

using oxa::Behaviour;
using oxa::Client;
using oxa::Gate;
using oxa::InstanceRule;

constexpr const char *kCpuNumber = "CPU number from 0";

std::string Index(const Row &row) {
    const char *text = row.Words().pcIndex;
    return text == nullptr ? "" : text;
}

std::string EntryIndex(const Row &row) {
    const char *text = row.Words().pcEntryIndex;
    return text == nullptr ? Index(row) : text;
}

std::string InstanceText(const Row &row) {
    const uint8_t base = row.Kind().tHead.auc[SDR_ENTITY_INSTANCE];
    switch (row.Kind().tDoes.eInstance) {
    case InstanceRule::kAdd:
    case InstanceRule::kAddOnly:
        return Hex(base) + " + " + Index(row);
    case InstanceRule::kAddOrKeep:
        return Hex(base) + " + " + Index(row) + "; " + Hex(base) + " for an index above " +
               std::to_string(0xFF - base);
    case InstanceRule::kCpu:
        return Hex(base) + " + " + kCpuNumber;
    case InstanceRule::kSlot:
    case InstanceRule::kSlotAndByte29:
        return Index(row);
    case InstanceRule::kNone:
    case InstanceRule::kIndexOnly:
    case InstanceRule::kAllOnes:
    case InstanceRule::kCpuIndexOnly:
    case InstanceRule::kCpuClientOnly:
        break;
    }
    return (row.Kind().tDoes.ucFlags & oxa::kRelativeOnSmallBoard) != 0
               ? Hex(base) + ", with bit 7 on the small board"
               : "";
}

std::string EntryIndexText(const Row &row) {
    switch (row.Kind().tDoes.eInstance) {
    case InstanceRule::kAdd:
    case InstanceRule::kAddOrKeep:
    case InstanceRule::kIndexOnly:
    case InstanceRule::kSlot:
    case InstanceRule::kSlotAndByte29:
        return EntryIndex(row);
    case InstanceRule::kCpu:
    case InstanceRule::kCpuIndexOnly:
        return kCpuNumber;
    case InstanceRule::kAllOnes:
        return "no index";
    case InstanceRule::kNone:
    case InstanceRule::kAddOnly:
    case InstanceRule::kCpuClientOnly:
        break;
    }
    return "";
}

std::string ClientText(Client client) {
    switch (client) {
    case Client::kNone:
        break;
    case Client::kCpuRegulator:
        return "bus client of the CPU's voltage regulator";
    case Client::kInlet:
        return "bus client of the inlet sensor";
    case Client::kSwitch:
        return "bus client of the switch-board instance";
    }
    return "";
}

// A voltage that the platform describes: conversion, masks and limits.
std::string VoltageText(unsigned offset) {
    switch (offset) {
    case SDR_ASSERT_MASK:
    case SDR_DEASSERT_MASK:
    case SDR_READING_MASK:
    case SDR_READING_MASK + 1:
        return "the platform's threshold mask of this voltage";
    case FULL_SDR_M_VALUE_LS_8_BITS:
        return "the platform's M of this voltage";
    case FULL_SDR_B_VALUE_LS_8_BITS:
        return "the platform's B of this voltage";
    case FULL_SDR_EXPONENTS:
        return "the platform's exponents of this voltage";
    case FULL_SDR_UNR:
    case FULL_SDR_UC:
    case FULL_SDR_UNC:
    case FULL_SDR_LNR:
    case FULL_SDR_LC:
    case FULL_SDR_LNC:
        return "the platform's limit of this voltage";
    default:
        return "";
    }
}

std::string AccuracyText(Gate gate) {
    switch (gate) {
    case Gate::kDimmAccuracy:
        return "memory power accuracy of the platform";
    case Gate::kDiskAccuracy:
        return "disk power accuracy of the platform";
    case Gate::kFanAccuracy:
        return "fan power accuracy of the platform";
    default:
        return "";
    }
}

std::string RecordText(const Row &row, unsigned offset) {
    const Behaviour &does = row.Kind().tDoes;
    if (offset == SDR_ENTITY_INSTANCE)
        return InstanceText(row);
    if (does.eGate == Gate::kCpuVoltage)
        return VoltageText(offset);
    if (offset == FULL_SDR_M_VALUE_LS_8_BITS && row.Kind().tHead.auc[SDR_RECORD_TYPE] == oxa::kRecordFull)
        return AccuracyText(does.eGate);
    if (offset == COMPACT_SDR_SLOT && does.eInstance == InstanceRule::kSlotAndByte29)
        return Index(row);
    return "";
}

std::string EntryText(const Row &row, unsigned offset) {
    const Behaviour &does = row.Kind().tDoes;
    switch (offset) {
    case offsetof(DevTabEntry, ucItem):
        return (does.ucFlags & oxa::kIndexInItem) != 0
                   ? std::to_string(does.tDevice.ucItem) + " + " + Index(row)
                   : "";
    case offsetof(DevTabEntry, ucIndex):
        return EntryIndexText(row);
    case offsetof(DevTabEntry, ucBus):
    case offsetof(DevTabEntry, ucAddr):
        return ClientText(does.eClient);
    default:
        return "";
    }
}

} // namespace

std::string Origin(const Row *row, char where, unsigned offset) {
    if (row == nullptr)
        return "";
    return where == 'S' ? RecordText(*row, offset) : EntryText(*row, offset);
}

} // namespace workbench
