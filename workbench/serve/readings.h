// SPDX-License-Identifier: GPL-3.0-or-later
//
// Readings as people write them, and the files in which they do.
#ifndef OXA_WORKBENCH_SERVE_READINGS_H
#define OXA_WORKBENCH_SERVE_READINGS_H

#include <string>
#include <vector>

#include "serve/sensors.h"

namespace workbench {

// The raw reading that a text means: "51", "0x33" are the byte itself (of a discrete sensor the bits of its states),
// "51 C", "2.36 V" a value in the sensor's unit, which becomes the nearest count.  InputError, naming the sensor and
// what it can hold, for anything else.
unsigned ParseReading(const Decoded &sensor, const std::string &text);

// People write to the files in readings(), ipmi_sim reads those in raw().
class ReadingFiles {
public:
    explicit ReadingFiles(const std::string &folder); // makes both
    ~ReadingFiles();
    ReadingFiles(const ReadingFiles &) = delete;
    ReadingFiles &operator=(const ReadingFiles &) = delete;
    const std::string &readings() const {
        return readings_;
    }
    const std::string &raw() const {
        return raw_;
    }
    void Put(const ServedSensor &sensor); // with the reading of the start
    // Hands on what was written since the last time.  What no sensor can hold stays where it is and is told on
    // standard error.
    void Pass(const std::vector<ServedSensor> &sensors);

private:
    void PassOne(const std::vector<ServedSensor> &sensors, const std::string &file);
    std::string readings_, raw_;
    int watch_ = -1;
};

} // namespace workbench
#endif
