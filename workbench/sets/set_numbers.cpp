// SPDX-License-Identifier: GPL-3.0-or-later
#include "sets/set_numbers.h"

#include <iterator>

#include "base/errors.h"

namespace workbench {
namespace {

// A LUN has the sensor numbers 1 to 254 (255 is reserved); LUN 2 belongs to system messages.
constexpr unsigned kNumbersPerLun = 254;
constexpr uint8_t kLuns[] = {0, 1, 3};

} // namespace

void SetRecordIds(StaticSet &set) {
    for (Sensor &sensor : set.sensors) {
        sensor.record[SDR_RECORD_ID] = static_cast<uint8_t>(sensor.ordinal);
        sensor.record[SDR_RECORD_ID + 1] = static_cast<uint8_t>(sensor.ordinal >> 8);
    }
}

void SetSensorNumbers(StaticSet &set, const std::string &who) {
    const size_t most = kNumbersPerLun * std::size(kLuns);
    if (set.sensors.size() > most)
        throw SetError(set.Label() + ": " + std::to_string(set.sensors.size()) + " sensors; " + who +
                       " has numbers for " + std::to_string(most));
    for (Sensor &sensor : set.sensors) {
        const unsigned index = sensor.ordinal - 1;
        sensor.record[SDR_SENSOR_NUM] = static_cast<uint8_t>(index % kNumbersPerLun + 1);
        sensor.record[SDR_OWNER_LUN] = kLuns[index / kNumbersPerLun];
        sensor.entry[4] = sensor.record[SDR_SENSOR_NUM]; // the entry repeats both
        sensor.entry[16] = sensor.record[SDR_OWNER_LUN];
    }
}

std::string RawText(const StaticSet &set) {
    std::string out;
    for (const Sensor &sensor : set.sensors)
        out.append(sensor.record.begin(), sensor.record.begin() + RecordSize(sensor.record));
    return out;
}

} // namespace workbench
