// SPDX-License-Identifier: GPL-3.0-or-later
//
// Input: which file, what is asked for (eight bytes), then the file byte by byte.
#include <memory>

#include "base/errors.h"
#include "fuzz/entry_points.h"
#include "fuzz/platform.h"
#include "fuzz/reader.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "oxa/thresholds.h"
#include "simulator/simulator.h"
#include "thresholds/image.h"

namespace {

using fuzz::Reader;
using fuzz::Require;

void ReadStore(const std::vector<uint8_t> &file, const uint8_t (&asked)[8]) {
    sim::WriteFile("/var/tmp/extSDR.dat", file);
    uint8_t record[SDR_SLOT_SIZE] = {};
    const size_t slot = SDR_SLOT_SIZE * asked[0];
    if (slot + SDR_SLOT_SIZE <= file.size())
        std::copy_n(file.begin() + static_cast<std::ptrdiff_t>(slot), SDR_SLOT_SIZE, record);
    const int32_t exists = checkSensorExist(record);
    Require(exists == 0 || exists == 1, "neither stored nor not");
    const size_t room = file.size() / 2 + asked[1];
    const auto part = std::make_unique<uint8_t[]>(room + 1);
    const int32_t got = readExtSDRFile(part.get(), static_cast<uint32_t>(room));
    Require(got == static_cast<int32_t>(std::min(room, file.size())),
            "another number of bytes than the file has");
}

void ReadDeviceTable(const std::vector<uint8_t> &file) {
    sim::WriteFile("/var/tmp/extDevTab.dat", file);
    const size_t entries = std::min<size_t>(file.size() / DEV_TAB_ENTRY_SIZE, EXT_SLOT_MAX);
    Require(getExtDevTabCount() == entries, "another number of entries than the file has");
}

// What the workbench takes as an image has to be one for the library, too.
void ReadThresholds(std::vector<uint8_t> file, const uint8_t (&asked)[8]) {
    constexpr size_t kImage = sizeof(SensorThreshTable);
    if ((asked[0] & 1) != 0) // most inputs are short; of the whole size, too
        file.resize(kImage);
    sim::WriteFile("/conf/BMC1/sensor_threshold.dat", file);
    InitSdrThresholdInfoFromFile(asked[1]);
    uint8_t record[SDR_SLOT_SIZE] = {0, 0, 0x51, 0x01, 0x2B};
    record[SDR_READING_MASK] = asked[2];
    record[FULL_SDR_NAME - 1] = 0xC0 | 16;
    for (size_t n = 0; n < 16 && 6 + n < file.size(); ++n)
        record[FULL_SDR_NAME + n] = file[6 + n];
    ModifySensorThresholdByFile(record);
    const uint8_t six[8] = {asked[3], asked[4], asked[5], asked[6], asked[7], 0, 0, 0};
    const char name[16] = "A"; // the whole field is read
    SaveSdrThresholdInfoInFile(name, six, asked[2]);
    try {
        workbench::ParseThresholdImage("input", file);
    } catch (const workbench::InputError &) {
    }
}

void ReadRecordFile(const std::vector<uint8_t> &file, const uint8_t (&asked)[8]) {
    sim::WriteFile("/var/SpecificSDRRec", file);
    SDR_GetSepcificFruSDRRecID(10, asked[0]);
    SpecificSensorParam param{};
    param.dwSensorDevType = 0xFF0A;
    param.SlotId = asked[0];
    param.ucDeviceType = asked[0];
    SDR_DeleteSpecificSDR(&param);
    SDR_AddSpecificSensor(&param);
    SDR_UpdateSpecificSDRRecFile(asked[1] % 4 == 3 ? 11 : 10, asked[2], asked[3], asked[4] & 1);
}

void ReadCardIds(const std::vector<uint8_t> &file, const uint8_t (&asked)[8]) {
    sim::WriteFile("/var/tmp/purchaseCardFruId", file);
    const uint16_t type = gPurchaseCardInfo[asked[0] % std::size(gPurchaseCardInfo)].wDevType;
    uint8_t slot = 0, id = 0;
    LoadPurchaseCardFruId(type, "card", &slot, &id);
    SpecificSensorParam param{};
    param.dwSensorDevType = type;
    param.SlotId = asked[1];
    SDR_AddSpecificSensor(&param);
    SavePurchaseCardFruId(type, "card", asked[1], asked[2]);
    Require(LoadPurchaseCardFruId(type, "card", &slot, &id) == 0 && slot == asked[1] && id == asked[2],
            "a card's id is not what was saved");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    Reader input(data, size);
    const uint8_t which = input.Byte();
    uint8_t asked[8];
    input.Fill(asked, sizeof(asked));
    const std::vector<uint8_t> file = input.Rest();
    fuzz::Restart(sim::Board{});
    fuzz::Judge([&] {
        switch (which % 5) {
        case 0:
            return ReadStore(file, asked);
        case 1:
            return ReadDeviceTable(file);
        case 2:
            return ReadThresholds(file, asked);
        case 3:
            return ReadRecordFile(file, asked);
        default:
            return ReadCardIds(file, asked);
        }
    });
    return 0;
}
