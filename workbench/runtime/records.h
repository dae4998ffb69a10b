// SPDX-License-Identifier: GPL-3.0-or-later
//
// Records of a repository, sensors and FRU device locators, as libfreeipmi reads them.
#ifndef OXA_WORKBENCH_RUNTIME_RECORDS_H
#define OXA_WORKBENCH_RUNTIME_RECORDS_H

#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "sets/decode.h"
#include "simulator/simulator.h"

namespace workbench {

using Bytes = std::vector<uint8_t>;

// A record of any of the three types that the library builds.
struct RecordView {
    uint16_t id = 0;
    Bytes bytes;      // with the id in the first two; as many as its length byte says
    size_t extra = 0; // bytes that were sent behind it
    std::string name;
    std::optional<Sensor> sensor;   // what `decoded` was read from
    std::optional<Decoded> decoded; // of sensor records
    uint8_t fru_id = 0;             // of locators
    uint8_t entity_id = 0, entity_instance = 0;
    bool IsLocator() const {
        return !decoded;
    }
};

// Header and body as the length byte tells it; 0 without a header.
size_t RecordSize(const Bytes &bytes);

// SetError when libfreeipmi refuses it.
RecordView ViewRecord(const sim::RepositoryRecord &record);
std::vector<RecordView> ViewRecords(const std::vector<sim::RepositoryRecord> &records);

std::string KindText(const RecordView &view); // "full", "compact", "FRU locator"
// "NVME3_Temp: Temperature of Drive Backplane 0x03, UNC 60 °C, UC 65 °C"
std::string RecordText(const RecordView &view);
std::string RecordTable(const std::vector<RecordView> &views, bool colour); // header line first
Json RecordJson(const RecordView &view);

// "2 records (1 full, 1 FRU locator)"
std::string CountText(const std::vector<RecordView> &views);

} // namespace workbench
#endif
