// SPDX-License-Identifier: GPL-3.0-or-later
//
// Input: a description.  What can be read is built and told.
#include "base/errors.h"
#include "fuzz/platform.h"
#include "oxa/specific_sensors.h"
#include "runtime/description.h"
#include "simulator/simulator.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::Restart(sim::Board{});
    fuzz::Judge([&] {
        try {
            SpecificSensorParam param =
                workbench::Finish(workbench::LoadDescription(fuzz::AsFile(data, size)));
            workbench::DescriptionText(param);
            workbench::DescriptionJson(param);
            SDR_AddSpecificSensor(&param);
        } catch (const workbench::InputError &) {
        }
    });
    return 0;
}
