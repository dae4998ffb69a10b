// SPDX-License-Identifier: GPL-3.0-or-later
#include "runtime/stored.h"

#include <algorithm>

namespace workbench {
namespace {

size_t NameAt(uint8_t type) {
    return type == kFullRecord ? FULL_SDR_NAME : type == kLocatorRecord ? FRU_SDR_NAME : COMPACT_SDR_NAME;
}

} // namespace

bool IsSensorRecord(const uint8_t *record) {
    return record[SDR_RECORD_TYPE] == kFullRecord || record[SDR_RECORD_TYPE] == kCompactRecord;
}

std::string NameOf(const uint8_t *record) {
    const size_t at = NameAt(record[SDR_RECORD_TYPE]);
    const size_t length = std::min<size_t>(record[at - 1] & 0x3F, SDR_SLOT_SIZE - at);
    return {record + at, record + at + length};
}

std::string TypeAndName(const uint8_t *record) {
    const uint8_t type = record[SDR_RECORD_TYPE];
    return (type == kFullRecord      ? "full "
            : type == kLocatorRecord ? "locator "
                                     : "compact ") +
           NameOf(record);
}

bool IsLocatorOf(const uint8_t *record, uint8_t entity) {
    return record[SDR_RECORD_TYPE] == kLocatorRecord && record[FRU_SDR_ENTITY_ID] == entity;
}

bool EntryFits(const DevTabEntry &entry, const uint8_t *record) {
    return entry.ucSensorNum == record[SDR_SENSOR_NUM] && entry.ucEntityId == record[SDR_ENTITY_ID] &&
           entry.ucEntityInstance == record[SDR_ENTITY_INSTANCE] &&
           entry.ucSensorType == record[SDR_SENSOR_TYPE] && entry.ucEventType == record[SDR_EVENT_TYPE];
}

} // namespace workbench
