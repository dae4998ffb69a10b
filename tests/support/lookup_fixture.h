// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the tests of the name lookups and of the layout's small functions share: a simulated board and the two
// facts that hold in every test: the lines name this unit, and no invariant is
// broken.
#ifndef OXA_TESTS_SUPPORT_LOOKUP_FIXTURE_H
#define OXA_TESTS_SUPPORT_LOOKUP_FIXTURE_H

#include <cstring>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "oxa/platform.h"
#include "oxa/specific_sensors.h"
#include "simulator/simulator.h"
#include "support/log_lines.h"

using tests::LogLines;

inline SnrQuery Query(uint32_t sensor_class, int device_type, int sub_type, const std::string &name = "") {
    SnrQuery query = {};
    query.dwSensorDevType = sensor_class;
    query.ucDeviceType = static_cast<uint8_t>(device_type);
    query.SubDeviceType = static_cast<uint8_t>(sub_type);
    query.wBitmap = 0x1234;
    std::strncpy(query.acName, name.c_str(), sizeof(query.acName) - 1);
    return query;
}

inline std::string Name(const SnrQuery &query) {
    return std::string(query.acName, strnlen(query.acName, sizeof(query.acName)));
}

class Lookup : public testing::Test {
protected:
    void Board(uint32_t custom_id, uint16_t board_id = 0) {
        sim::Board board;
        board.custom_id = custom_id;
        board.board_id = board_id;
        sim::Start(board);
    }
    void SetUp() override {
        Board(CUSTOM_ID_DEFAULT);
    }
    void TearDown() override {
        LogLines("gen_specific_sensor_data.c");
        EXPECT_THAT(sim::Violations(), testing::IsEmpty());
    }
    // The slot stands at the front of the machine and carries this silk text.
    static void AddSlot(uint8_t slot, const std::string &silk, uint8_t location = 1) {
        sim::PcieSlot pcie;
        pcie.slot = slot;
        pcie.location = location;
        pcie.silk = silk;
        sim::CurrentBoard().pcie.slots.push_back(pcie);
    }
    static void Fail(const std::string &call) {
        sim::Fault fault;
        fault.call = call;
        sim::AddFault(fault);
    }
};

#endif
