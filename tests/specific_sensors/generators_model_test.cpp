// SPDX-License-Identifier: GPL-3.0-or-later
//
// Every row of the information tables and every entry of the card tables, offered through the entry point,
// against what the independent model (tests/model/specific_sensors.py) says: status, name, every byte of the
// record that the repository got, and what is left in the description.
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "specific_sensors/generators_fixture.h"
#include "support/build_facts.h"
#include "support/profiles.h"

namespace {

using namespace generators;

using Words = std::vector<std::string>;

Words Split(const std::string &line, const std::string &separator) {
    Words parts;
    size_t begin = 0;
    for (size_t end = 0; end != std::string::npos; begin = end + separator.size()) {
        end = line.find(separator, begin);
        parts.push_back(line.substr(begin, end == std::string::npos ? end : end - begin));
    }
    return parts;
}
uint32_t Number(const std::string &text, int base = 10) {
    return static_cast<uint32_t>(std::stoul(text, nullptr, base));
}
uint8_t Byte(const std::string &text, int base = 10) {
    return static_cast<uint8_t>(Number(text, base));
}

// ---- the machine --------------------------------------------------------------------------------

// "machine custom=16 id=1234 ocp=4,5"
sim::Board Machine(const Words &words) {
    sim::Board board;
    board.custom_id = Number(words.at(1).substr(7));
    board.board_id = static_cast<uint16_t>(Number(words.at(2).substr(3), 16));
    const Words ocp = Split(words.at(3).substr(4), ",");
    board.ocp.count = Byte(ocp.at(0));
    board.ocp.present = Number(ocp.at(1));
    return board;
}

// False: the line tells nothing about the machine.
bool Furnish(sim::Board &board, const Words &words) {
    const std::string &what = words.at(0);
    if (what == "machine") {
        board = Machine(words);
    } else if (what == "pcie") {
        sim::PcieSlot slot;
        slot.slot = Byte(words.at(1));
        slot.location = Byte(words.at(2));
        slot.silk = words.at(3);
        board.pcie.slots.push_back(slot);
    } else if (what == "backplane") {
        board.disks.backplanes.push_back({Byte(words.at(1)), Byte(words.at(2)), words.at(3)});
    } else if (what == "conversion") {
        board.disks.conversion[Byte(words.at(1))] = Byte(words.at(2));
    } else if (what == "gpu") {
        const uint16_t vendor = static_cast<uint16_t>(Number(words.at(3), 16));
        board.gpus.push_back({Byte(words.at(1)), Number(words.at(2)), vendor});
    } else {
        return false;
    }
    return true;
}

// "threshold 3F 120 111 99 1 6 12 FAN3 F Speed": the name is the rest of the line.
bool AddThreshold(sim::Board &board, const std::string &line) {
    std::istringstream in(line);
    std::string word, mask;
    int values[6];
    in >> word >> mask;
    for (int &value : values) {
        in >> value;
    }
    sim::ThresholdEntry entry;
    std::getline(in >> std::ws, entry.name);
    entry.mask = Byte(mask, 16);
    uint8_t *const fields[] = {&entry.unr, &entry.uc, &entry.unc, &entry.lnr, &entry.lc, &entry.lnc};
    for (size_t i = 0; i < 6; ++i) {
        *fields[i] = static_cast<uint8_t>(values[i]);
    }
    board.thresholds.push_back(entry);
    return static_cast<bool>(in);
}

// ---- the offers ---------------------------------------------------------------------------------

struct Offer {
    SpecificSensorParam param = {};
    std::string row; // "0100/2/0", or "-"
    uint32_t status = 0;
    uint8_t slot_after = 0;
    std::string name; // or "atHyperTempSensorInfo[3]"
    Bytes record;     // without a name when the name is the catalogue's own
};

// "offer 0100 dev=2 sub=0 slot=3 bitmap=003F thresholds=110,100,90,10,5,2 hyst=0 brenmor=0 seq=1 port2=2"
SpecificSensorParam ParamOf(const std::string &text) {
    std::istringstream in(text);
    std::string word;
    SpecificSensorParam param = {};
    in >> word >> word;
    param.dwSensorDevType = Number(word, 16);
    std::map<std::string, std::string> values;
    while (in >> word) {
        const Words pair = Split(word, "=");
        values[pair.at(0)] = pair.at(1);
    }
    param.ucDeviceType = Byte(values.at("dev"));
    param.SubDeviceType = Byte(values.at("sub"));
    param.SlotId = Byte(values.at("slot"));
    param.wBitmap = static_cast<uint16_t>(Number(values.at("bitmap"), 16));
    param.ucHysteresis = Byte(values.at("hyst"));
    param.ucBrenmorSensorIndex = Byte(values.at("brenmor"));
    param.ucSensorSeq = Byte(values.at("seq"));
    param.ucSecondPort = Byte(values.at("port2"));
    const Words thresholds = Split(values.at("thresholds"), ",");
    uint8_t *const fields[] = {&param.ucUNR, &param.ucUC, &param.ucUNC,
                               &param.ucLNC, &param.ucLC, &param.ucLNR};
    for (size_t i = 0; i < 6; ++i) {
        *fields[i] = Byte(thresholds.at(i));
    }
    return param;
}

Offer OfferOf(const std::string &line) {
    const Words parts = Split(line, " | ");
    Offer offer;
    offer.param = ParamOf(parts.at(0));
    offer.row = parts.at(1);
    offer.status = Number(parts.at(2).substr(0, 4), 16);
    offer.slot_after = Byte(parts.at(2).substr(10));
    if (parts.size() > 3) {
        offer.name = parts.at(3);
        offer.record = Literal(parts.at(4));
    }
    return offer;
}

std::map<std::string, const CardSnrEntry *> CatalogueTables() {
#define TABLE(name)                                                                                          \
    { #name, name }
    return {
        TABLE(atBrenmorSensorInfo),
        TABLE(atHyperTempSensorInfo),
        TABLE(atHyperPowerSensorInfo),
        TABLE(atBirenRetimerTempSensorInfo),
        TABLE(atHGXNSWITCHTempSensorInfo),
        TABLE(atHGXPSWITCHTempSensorInfo),
        TABLE(atHGXRETIMERTempSensorInfo),
        TABLE(atHGXFPGATempSensorInfo),
        TABLE(atHGXHMCTempSensorInfo),
        TABLE(atHGXHSCTempSensorInfo),
        TABLE(atGIGAHYPER3FPGATempSensorInfo),
        TABLE(atMLUPcieRetimerTempSensorInfo),
        TABLE(atMLUSdrdesRetimerTempSensorInfo),
        TABLE(atMLUUBBTempSensorInfo),
        TABLE(atMLUUBBSfpTempSensorInfo),
        TABLE(atMLUInletTempSensorInfo),
        TABLE(atX2000BOXSensorInfo),
        TABLE(atHalvikTempSensorInfo),
        TABLE(atILURetimerTempSensorInfo),
        TABLE(atMETAXRetimerTempSensorInfo),
        TABLE(atMGXNSWITCHTempSensorInfo),
        TABLE(atMGXPSWITCHTempSensorInfo),
        TABLE(atMGXFPGATempSensorInfo),
        TABLE(atMGXHMCTempSensorInfo),
        TABLE(atNebulaMatrixSensorInfo),
        TABLE(atSP925DTempSensorInfo),
        TABLE(atOxaUbbPowerBrickTempSensorInfo),
        TABLE(atOxaUbbInletTempSensorInfo),
        TABLE(atOxaUbbOutletTempSensorInfo),
        TABLE(atMTRetimerTempSensorInfo),
        TABLE(atBR166RetimerTempSensorInfo),
    };
#undef TABLE
}

// "atHyperTempSensorInfo[3]" becomes the catalogue's name, and the record gets it.
void Complete(Offer &offer) {
    const size_t bracket = offer.name.find('[');
    if (bracket == std::string::npos) {
        return;
    }
    const uint32_t index = Number(offer.name.substr(bracket + 1));
    const CardSnrEntry &entry = CatalogueTables().at(offer.name.substr(0, bracket))[index];
    ASSERT_EQ(entry.ucSensorIndex, index) << "the model numbers the entries in table order";
    offer.name = std::string(entry.acName, strnlen(entry.acName, sizeof(entry.acName)));
    offer.record[SDR_RECORD_LENGTH] = static_cast<uint8_t>(43 + offer.name.size());
    offer.record[FULL_SDR_ID_TYPE_LEN] = static_cast<uint8_t>(0xC0 + offer.name.size());
    offer.record.insert(offer.record.end(), offer.name.begin(), offer.name.end());
}

// ---- offering -----------------------------------------------------------------------------------

struct Tally {
    size_t offers = 0;
    std::set<std::string> rows; // that gave a record with the name expected
    std::set<std::string> names;
};

void Check(Offer offer, const std::string &line, Tally &tally) {
    Complete(offer);
    const SpecificSensorParam before = offer.param;
    sim::Repository().clear();
    const uint32_t status = SDR_AddSpecificSensor(&offer.param);
    ++tally.offers;
    EXPECT_EQ(status, offer.status) << line;
    SpecificSensorParam after = before;
    after.SlotId = offer.slot_after;
    EXPECT_EQ(std::memcmp(&offer.param, &after, sizeof(after)), 0) << "description after " << line;
    if (offer.status != 0 || status != 0) {
        EXPECT_TRUE(sim::Repository().empty()) << line;
        return;
    }
    ASSERT_EQ(sim::Repository().size(), 1u) << line;
    Made made;
    made.record = sim::Repository()[0].bytes;
    EXPECT_EQ(made.Name(), offer.name) << line;
    EXPECT_TRUE(tests::SameSdr(offer.record, made.record)) << line;
    if (made.Name() == offer.name) {
        tally.rows.insert(offer.row);
        tally.names.insert(offer.name);
    }
}

Tally OfferAll(const std::string &file) {
    std::ifstream in(tests::InSource("tests/model/expected/specific/" + file + ".offers"));
    EXPECT_TRUE(in.is_open()) << "tests/model/specific_sensors.py writes " << file;
    sim::SetTracing(false); // thousands of lines that other tests look at
    gRegisterInfo = {};     // also when the tests share a process
    Tally tally;
    sim::Board board;
    bool started = false;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("threshold ")) {
            EXPECT_TRUE(AddThreshold(board, line)) << line;
        } else if (!Furnish(board, Split(line, " "))) {
            if (!started) {
                sim::Start(board);
            }
            started = true;
            Check(OfferOf(line), line, tally);
            continue;
        }
        EXPECT_THAT(sim::Violations(), testing::IsEmpty());
        started = false;
    }
    return tally;
}

class OffersOfProfile : public testing::TestWithParam<tests::NamedProfile> {
protected:
    void TearDown() override {
        EXPECT_THAT(sim::Violations(), testing::IsEmpty());
        sim::SetTracing(true);
    }
};

TEST_P(OffersOfProfile, EveryRowGivesTheModelsRecord) {
    const auto &[id, file] = GetParam();
    const Tally tally = OfferAll(file);
    std::set<std::string> rows = tally.rows;
    rows.erase("-");
    std::set<std::string> wanted;
    for (const SnrSpecificInfoRow &profile : g_atSnrSpecificInfo) {
        for (int row = 0; profile.dwCustomId == id && row < *profile.pucSnrCnt; ++row) {
            const SnrInfoRec &rec = profile.ptInfo[row];
            char text[32];
            std::snprintf(text, sizeof(text), "%04X/%u/%u", rec.dwSensorDevType, rec.ucDeviceType,
                          rec.SubDeviceType);
            wanted.insert(text);
        }
    }
    EXPECT_FALSE(wanted.empty());
    EXPECT_EQ(rows, wanted);
    RecordProperty("offers", static_cast<int>(tally.offers));
}

INSTANTIATE_TEST_SUITE_P(Profiles, OffersOfProfile, testing::ValuesIn(tests::NamedProfiles()),
                         [](const auto &info) { return info.param.folder; });

TEST(OffersOfCards, EveryEntryOfEveryFamilyGivesTheModelsRecord) {
    const Tally tally = OfferAll("cards");
    size_t entries = 0;
    std::set<std::string> missing;
    for (const CardSnrRow &family : g_atPurchaseCardSnrInfo) {
        for (int entry = 0; entry < family.ucCnt; ++entry, ++entries) {
            const char *const name = family.ptEntry[entry].acName;
            if (!tally.names.contains(std::string(name, strnlen(name, SENSOR_NAME_SIZE)))) {
                missing.insert(name);
            }
        }
    }
    EXPECT_EQ(entries, 129u);
    EXPECT_THAT(missing, testing::IsEmpty());
    EXPECT_THAT(sim::Violations(), testing::IsEmpty());
    sim::SetTracing(true);
}

} // namespace
