// SPDX-License-Identifier: GPL-3.0-or-later
//
// In what two sensor records, or two device-table entries, differ: one line for each field, expected value first,
// e.g. "byte 37, UC: 50 -> 48 °C".
#ifndef OXA_TESTS_SUPPORT_RECORD_DIFFER_H
#define OXA_TESTS_SUPPORT_RECORD_DIFFER_H

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/bytes.h"

namespace tests {

// The name of a full record, a compact record or an FRU locator, as far as the bytes go.
std::string NameOf(const Bytes &sdr);

struct Record {
    Bytes sdr;   // 64 bytes
    Bytes entry; // 32 bytes
    bool operator==(const Record &) const = default;

    std::string Name() const {
        return NameOf(sdr);
    }
};
std::ostream &operator<<(std::ostream &out, const Record &record);

std::vector<std::string> SdrDiff(const Bytes &expected, const Bytes &got);
std::vector<std::string> EntryDiff(const Bytes &expected, const Bytes &got);
std::vector<std::string> RecordDiff(const Record &expected, const Record &got);

// For EXPECT_TRUE: true, or what differs.
testing::AssertionResult SdrFailure(const Bytes &expected, const Bytes &got);
testing::AssertionResult EntryFailure(const Bytes &expected, const Bytes &got);
template <class Expected, class Got>
testing::AssertionResult SameSdr(const Expected &expected, const Got &got) {
    if (std::equal(expected.begin(), expected.end(), got.begin(), got.end()))
        return testing::AssertionSuccess();
    return SdrFailure({expected.begin(), expected.end()}, {got.begin(), got.end()});
}
template <class Expected, class Got>
testing::AssertionResult SameEntry(const Expected &expected, const Got &got) {
    if (std::equal(expected.begin(), expected.end(), got.begin(), got.end()))
        return testing::AssertionSuccess();
    return EntryFailure({expected.begin(), expected.end()}, {got.begin(), got.end()});
}
testing::AssertionResult SameRecord(const Record &expected, const Record &got);
// Of lists of different length only what is missing and what is too much is told.
testing::AssertionResult SameRecords(const std::vector<Record> &expected, const std::vector<Record> &got);

} // namespace tests
#endif
