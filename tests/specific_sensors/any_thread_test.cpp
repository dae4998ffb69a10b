// SPDX-License-Identifier: GPL-3.0-or-later
//
// What may be called from any thread at any time: eight threads at once get what a single one gets.  Event records have
// tests of their own (tests/events/threads_test.cpp).
#include <functional>
#include <map>
#include <thread>

#include "oxa/store.h"
#include "oxa/thresholds.h"
#include "specific_sensors/devtab_fixture.h"
#include "support/boards.h"

namespace {

using testing::Each;
using testing::IsEmpty;

constexpr size_t kThreads = 8;
constexpr size_t kRounds = 4;
constexpr uint8_t kTypes = 80; // device types, and some behind the last
constexpr char kSdrFile[] = "/var/tmp/extSDR.dat", kDevTabFile[] = "/var/tmp/extDevTab.dat";

using Answer = std::vector<uint8_t>;

// Results and out-parameters, one behind the other.
template <class... T> Answer All(const T &...values) {
    Answer out;
    const auto add = [&out](const auto &value) {
        const uint8_t *const begin = reinterpret_cast<const uint8_t *>(&value);
        out.insert(out.end(), begin, begin + sizeof value);
    };
    (add(values), ...);
    return out;
}

struct Question {
    std::string name;
    std::function<Answer()> ask;
};
using Questions = std::vector<Question>;

void AddDeviceTable(Questions &out) {
    const auto add = [&out](const devtab::Record &record) {
        out.push_back({"GenDevTable", [record] {
                           const devtab::Built built = devtab::Build(record);
                           return All(built.result, built.entry);
                       }});
    };
    for (uint8_t type = 0; type < kTypes; ++type) {
        for (const uint8_t sensor : {0x01, 0x02, 0x04, 0x08, 0x0B}) {
            add(devtab::FullRecord(sensor, type));
        }
        for (const uint8_t sensor : {0x0C, 0x0D, 0x15, 0x17}) {
            add(devtab::CompactRecord(sensor, 0x6F, 3, type));
        }
    }
}

void AddNames(Questions &out) {
    for (uint32_t i = 0; i < g_dwSdrCustomCnt; ++i) {
        const SnrSpecificInfoRow &table = g_atSnrSpecificInfo[i];
        for (uint8_t n = 0; n < *table.pucSnrCnt; ++n) {
            const SnrInfoRec &row = table.ptInfo[n];
            SnrQuery wanted{row.dwSensorDevType, row.ucDeviceType, row.SubDeviceType, 0, {}};
            out.push_back({"getCustomSensorInfo", [&table, wanted] {
                               SnrQuery query = wanted;
                               getCustomSensorInfo(&query, table.dwCustomId);
                               return All(query);
                           }});
            std::memcpy(wanted.acName, row.acName, sizeof row.acName);
            out.push_back({"modifyPcieSlotName", [wanted] {
                               uint8_t slot = 7; // a front slot
                               SnrQuery query = wanted;
                               modifyPcieSlotName(&slot, &query);
                               return All(slot, query);
                           }});
            out.push_back({"modifySablinGpuSensorName", [wanted] {
                               SnrQuery query = wanted;
                               const uint8_t length = modifySablinGpuSensorName(&query);
                               return All(length, query);
                           }});
            out.push_back({"strrpc", [&row] {
                               char name[SENSOR_NAME_SIZE] = {};
                               const uint8_t length = strrpc(name, row.acName, "*", "12");
                               return All(length, name);
                           }});
        }
    }
    for (const CardSnrRow &family : g_atPurchaseCardSnrInfo) {
        for (uint8_t n = 0; n < family.ucCnt; ++n) {
            out.push_back({"getNameInfo", [&family, n] {
                               SnrQuery query{};
                               const uint8_t length =
                                   getNameInfo(&query, family.ptEntry[n].ucSensorIndex, &family);
                               return All(length, query);
                           }});
        }
    }
}

void AddDeviceTypes(Questions &out) {
    for (uint8_t type = 0; type < kTypes; ++type) {
        out.push_back({"of a device type", [type] {
                           uint8_t instance = 5, m = 0, exponent = 0, power_m = 0, power_b = 0;
                           modifyEntityInstance(&instance, getentityid(type), type);
                           GetVoltAccuracy(type, &m, &exponent);
                           GetGpuPowerAccuracy(0x5502, type, 3, &power_m, &power_b);
                           return All(getentityid(type), useBrenmorSensorIndex(type), instance, m, exponent,
                                      power_m, power_b, ConvertIntToUnsignedChar(type - 40));
                       }});
    }
}

void AddCards(Questions &out) {
    for (const PurchaseCardRow &card : gPurchaseCardInfo) {
        out.push_back({"of a card", [&card] {
                           const char *const name = GetPurchaseCardName(card.wDevType);
                           char section[32] = {};
                           uint8_t oem = 0;
                           const int32_t result = GetPurchaseCardInfoSectionStr(card.wDevType, section);
                           FillSdrOEMValue(card.wDevType, &oem);
                           return All(name, result, section, oem);
                       }});
    }
}

void AddBoard(Questions &out) {
    for (uint8_t number = 0; number < 10; ++number) {
        out.push_back({"OXA_CheckifAddCpuSensorByIndex",
                       [number] { return All(OXA_CheckifAddCpuSensorByIndex(number)); }});
        out.push_back({"getFSlotInfo", [number] {
                           uint8_t front = 0;
                           const int32_t result = getFSlotInfo(number, &front);
                           return All(result, front);
                       }});
    }
    out.push_back(
        {"SendSubCardStatusToFRU", [] { return All(SendSubCardStatusToFRU(Answer(20, 3).data())); }});
    out.push_back({"isNeedRegisterHddSdr", [] { return All(isNeedRegisterHddSdr()); }});
    out.push_back({"GetSdrFruIdOffset", [] { return All(GetSdrFruIdOffset()); }});
}

void AddStore(Questions &out) {
    const auto add = [&out](const char *name, int32_t (*read)(uint8_t *, uint32_t)) {
        for (const uint32_t size : {1, 64, 640, 20000}) {
            out.push_back({name, [read, size] {
                               Answer bytes(size);
                               const Answer result = All(read(bytes.data(), size));
                               bytes.insert(bytes.end(), result.begin(), result.end());
                               return bytes;
                           }});
        }
    };
    add("readExtSDRFile", readExtSDRFile);
    add("readExtDevTabFile", readExtDevTabFile);
    out.push_back({"getExtDevTabCount", [] { return All(getExtDevTabCount()); }});
}

void AddThresholds(Questions &out) {
    for (const uint8_t mask : {0x18, 0x3F}) {
        out.push_back({"ModifySensorThresholdByFile", [mask] {
                           devtab::Record record = devtab::FullRecord(0x01, 2);
                           record[18] = mask;
                           record[47] = 0xC1;
                           record[48] = 'A';
                           ModifySensorThresholdByFile(record.data());
                           return All(record);
                       }});
    }
}

std::map<std::string, size_t> Lines() {
    std::map<std::string, size_t> counted;
    for (const sim::Event &event : sim::Trace()) {
        if (event.kind != sim::Kind::kCall) {
            ++counted[sim::Format(event)];
        }
    }
    return counted;
}

class AnyThread : public testing::Test {
protected:
    void SetUp() override {
        sim::Start(tests::LoadBoard("two_socket_2u"));
    }
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), IsEmpty());
    }
    // In eight threads at once.
    static void Run(const std::function<void(size_t thread)> &work) {
        std::vector<std::thread> threads;
        for (size_t thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back(work, thread);
        }
        for (std::thread &thread : threads) {
            thread.join();
        }
    }
};

TEST_F(AnyThread, GetsWhatASingleOneGetsAndSaysTheSame) {
    sim::WriteFile(kSdrFile, Answer(640, 0x51));
    sim::WriteFile(kDevTabFile, Answer(320, 0x52));
    constexpr char kName[16] = {'A'};
    constexpr uint8_t kSaved[8] = {0, 8, 7, 0, 0, 0, 0, 0}; // UC 8, UNC 7
    SaveSdrThresholdInfoInFile(kName, kSaved, 0x18);
    Questions questions;
    AddDeviceTable(questions);
    AddNames(questions);
    AddDeviceTypes(questions);
    AddCards(questions);
    AddBoard(questions);
    AddStore(questions);
    AddThresholds(questions);
    GetSdrFruIdOffset(); // the first call is one thread's

    sim::ClearTrace();
    std::vector<Answer> alone;
    for (const Question &question : questions) {
        alone.push_back(question.ask());
    }
    EXPECT_EQ(alone[alone.size() - 2][37], 8); // the saved UC was laid over the record
    std::map<std::string, size_t> lines = Lines();
    EXPECT_GT(lines.size(), 20u);
    for (auto &[line, count] : lines) {
        count *= kThreads * kRounds;
    }

    sim::ClearTrace();
    std::array<std::vector<std::string>, kThreads> others;
    Run([&](size_t thread) {
        for (size_t n = 0; n < kRounds * questions.size(); ++n) {
            const size_t at = (n + thread * questions.size() / kThreads) % questions.size();
            if (questions[at].ask() != alone[at]) {
                others[thread].push_back(questions[at].name);
            }
        }
    });
    EXPECT_THAT(others, Each(IsEmpty()));
    EXPECT_EQ(Lines(), lines);
}

// Each thread writes slots and entries of its own, and of another number; whatever is read was written by one of them.
TEST_F(AnyThread, ReadsTheStoreAsOneThreadWroteIt) {
    const auto slots = [](size_t thread) { return Answer((thread + 1) * 64, static_cast<uint8_t>(thread)); };
    const auto entries = [](size_t thread) {
        return Answer((thread + 1) * 32, static_cast<uint8_t>(thread));
    };
    writeExtSDRFile(slots(0).data(), 64);
    writeExtDevTabFile(entries(0).data(), 32);
    std::array<std::vector<std::string>, kThreads> torn;
    Run([&](size_t thread) {
        const auto read = [&](int32_t (*function)(uint8_t *, uint32_t), const auto &written) {
            Answer bytes(16320);
            const int32_t size = function(bytes.data(), 16320);
            bytes.resize(size < 0 ? 0 : static_cast<size_t>(size));
            if (bytes.empty() || bytes != written(bytes[0])) {
                torn[thread].push_back(tests::Hex(bytes));
            }
        };
        for (int round = 0; round < 50; ++round) {
            const Answer records = slots(thread), table = entries(thread);
            writeExtSDRFile(records.data(), static_cast<uint32_t>(records.size()));
            read(readExtSDRFile, slots);
            writeExtDevTabFile(table.data(), static_cast<uint32_t>(table.size()));
            read(readExtDevTabFile, entries);
            if (const uint32_t count = getExtDevTabCount(); count < 1 || count > kThreads) {
                torn[thread].push_back(std::to_string(count));
            }
        }
    });
    EXPECT_THAT(torn, Each(IsEmpty()));
}

} // namespace
