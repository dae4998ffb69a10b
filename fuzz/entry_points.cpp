// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/entry_points.h"

#include <memory>
#include <tuple>

#include "oxa/events.h"
#include "oxa/specific_sensors.h"
#include "oxa/store.h"
#include "oxa/thresholds.h"
#include "simulator/simulator.h"

namespace fuzz {
namespace {

// ---- arguments -----------------------------------------------------------------------------------------

// A block of its own size on the heap, so that a byte beyond its end is seen.
template <class T> std::unique_ptr<T> Own(Reader &arguments) {
    auto own = std::make_unique<T>();
    arguments.Fill(own.get(), sizeof(T));
    return own;
}
std::unique_ptr<uint8_t[]> OwnBytes(Reader &arguments, size_t size) {
    auto own = std::make_unique<uint8_t[]>(size);
    arguments.Fill(own.get(), size);
    return own;
}

SpecificSensorParam Description(Reader &arguments) {
    SpecificSensorParam param = arguments.Take<SpecificSensorParam>();
    const uint8_t pick = arguments.Byte(); // most class words have no generator
    if (pick != 255)
        param.dwSensorDevType = g_atAddSDRHndlrTab[pick % g_dwAddSDRHndlrCnt].dwSensorDevType;
    return param;
}

std::unique_ptr<SnrQuery> Query(Reader &arguments) {
    auto query = Own<SnrQuery>(arguments);
    query->acName[sizeof(query->acName) - 1] = '\0'; // a text, as its header says
    return query;
}

bool IsText(const char *text, size_t size) {
    return std::memchr(text, '\0', size) != nullptr;
}

// ---- run-time records ----------------------------------------------------------------------------------

// The length byte says how much follows the header, but for the sub card's locator: that is handed on with three bytes
// more than the record has.
bool LengthAgrees(const uint8_t *record, size_t length) {
    constexpr uint8_t kFruLocator = 0x11;
    constexpr size_t kHeader = 5, kSubCard = 24, kSubCardHandedOn = 27;
    const size_t said = record[SDR_RECORD_LENGTH] + kHeader;
    return said == length ||
           (record[SDR_RECORD_TYPE] == kFruLocator && said == kSubCard && length == kSubCardHandedOn);
}

void CallSpecific(Reader &arguments, void *function) {
    auto param = std::make_unique<SpecificSensorParam>(Description(arguments));
    const auto slot = std::make_unique<uint8_t[]>(SDR_SLOT_SIZE);
    const auto generate = reinterpret_cast<GenSpecificSDRFn>(function);
    const uint8_t length = generate(param.get(), slot.get(), param->dwSensorDevType);
    const bool none = length == GEN_SDR_FAILED || length == GEN_SDR_SKIPPED;
    Require(none || (length >= 16 && length <= SDR_SLOT_SIZE), "length " + std::to_string(length));
    Require(none || LengthAgrees(slot.get(), length),
            "length byte " + std::to_string(slot[SDR_RECORD_LENGTH]));
    // what a copy leaves that failed is the platform's doing
    const size_t written = !none ? length : sim::FaultWasHit() ? SDR_SLOT_SIZE : 0;
    for (size_t at = written; at < SDR_SLOT_SIZE; ++at)
        Require(slot[at] == 0, "byte " + std::to_string(at) + " is written behind the record");
}

void CallAdd(Reader &arguments, void *) {
    auto param = std::make_unique<SpecificSensorParam>(Description(arguments));
    const size_t before = sim::Repository().size();
    const uint32_t result = SDR_AddSpecificSensor(param.get());
    const size_t added = sim::Repository().size() - before;
    Require(result != OXA_OK || added == 1, "success without a record in the repository");
    Require(added <= 1, "more than one record for one description");
    if (added == 1) {
        const auto &record = sim::Repository().back().bytes;
        Require(record.size() >= 16 && record.size() <= SDR_SLOT_SIZE, "record of a wrong length");
        Require(LengthAgrees(record.data(), record.size()), "length byte of an added record");
    }
}

void CallDelete(Reader &arguments, void *) {
    auto param = Own<SpecificSensorParam>(arguments);
    if (arguments.Byte() != 255)
        param->dwSensorDevType = 0xFF0A;
    const size_t before = sim::Repository().size();
    SDR_DeleteSpecificSDR(param.get());
    Require(sim::Repository().size() <= before && sim::Repository().size() + 1 >= before,
            "a delete takes one record at most");
}

void CallSubCard(Reader &arguments, void *) {
    SendSubCardStatusToFRU(OwnBytes(arguments, 20).get());
}

void CallDevTable(Reader &arguments, void *) {
    const auto record = OwnBytes(arguments, SDR_SLOT_SIZE);
    DevTabEntry entry{};
    const int32_t result = GenDevTable(record.get(), &entry);
    Require(result == 0 || result == -1, "GenDevTable gives " + std::to_string(result));
}

// ---- names and lookups ---------------------------------------------------------------------------------

void CallNames(Reader &arguments, void *) {
    const uint32_t profile = arguments.Byte();
    auto query = Query(arguments);
    const uint8_t slot = arguments.Byte(), port = arguments.Byte();
    const uint8_t length = getSensorInfo(query.get(), slot, port);
    Require(IsText(query->acName, sizeof(query->acName)), "a name without an end");
    Require(length == 0 || length > 16 || std::strlen(query->acName) == length, "a name of another length");
    query = Query(arguments);
    getCustomSensorInfo(query.get(), profile);
    Require(IsText(query->acName, sizeof(query->acName)), "a pattern without an end");
}

void CallCardNames(Reader &arguments, void *) {
    auto query = Query(arguments);
    const SpecificSensorParam param = Description(arguments);
    const uint8_t index = arguments.Byte(), family = arguments.Byte();
    getPurchaseCardInfo(query.get(), &param, index);
    Require(IsText(query->acName, sizeof(query->acName)), "a card's name without an end");
    constexpr size_t kFamilies = sizeof(g_atPurchaseCardSnrInfo) / sizeof(g_atPurchaseCardSnrInfo[0]);
    getNameInfo(query.get(), index, &g_atPurchaseCardSnrInfo[family % kFamilies]);
    Require(IsText(query->acName, sizeof(query->acName)), "a family's name without an end");
}

void CallRenames(Reader &arguments, void *) {
    auto query = Query(arguments);
    uint8_t instance = arguments.Byte();
    modifyPcieSlotName(&instance, query.get());
    Require(IsText(query->acName, sizeof(query->acName)), "a front slot's name without an end");
    query = Query(arguments);
    modifySablinGpuSensorName(query.get());
    Require(IsText(query->acName, sizeof(query->acName)), "a GPU's name without an end");
    uint8_t slot = 0;
    const int32_t result = getFSlotInfo(arguments.Byte(), &slot);
    Require(result == 0 || result == -1, "getFSlotInfo gives " + std::to_string(result));
}

void CallTexts(Reader &arguments, void *) {
    const auto query = Query(arguments);
    const auto text = std::make_unique<char[]>(17);
    const uint8_t number = arguments.Byte();
    const uint32_t profile = arguments.Byte();
    getSilkInfo(query.get(), text.get(), number, profile, arguments.Byte() & 1);
    Require(IsText(text.get(), 17), "a silk text without an end");
    const std::string source = arguments.Text(20), pattern = arguments.Text(4), other = arguments.Text(6);
    strrpc(text.get(), source.c_str(), pattern.c_str(), other.c_str());
    Require(IsText(text.get(), 17), "a replaced text without an end");
}

void CallBytes(Reader &arguments, void *) {
    uint8_t a = 0, b = 0;
    const uint8_t type = arguments.Byte(), slot = arguments.Byte();
    GetSdrFruIdOffset();
    Require(SetSdrFruIdOffset(type) == type, "SetSdrFruIdOffset changes its argument");
    modifyEntityInstance(&a, getentityid(type), type);
    useBrenmorSensorIndex(type);
    GetVoltAccuracy(type, &a, &b);
    GetGpuPowerAccuracy(arguments.Take<uint16_t>(), type, slot, &a, &b);
    ConvertIntToUnsignedChar(arguments.Take<int32_t>());
    OXA_CheckifAddCpuSensorByIndex(slot);
}

// ---- FRU ids and disks ---------------------------------------------------------------------------------

void CallFruIds(Reader &arguments, void *) {
    const uint16_t type = arguments.Take<uint16_t>();
    const uint8_t pick = arguments.Byte(), slot = arguments.Byte(), id = arguments.Byte();
    constexpr size_t kCards = sizeof(gPurchaseCardInfo) / sizeof(gPurchaseCardInfo[0]);
    const uint16_t known = pick == 255 ? type : gPurchaseCardInfo[pick % kCards].wDevType;
    const std::string name = arguments.Text(44);
    const uint8_t given = GetNoUsedFruIdForPurchaseCard();
    SetFruValidState(given != 255 ? given : id);
    GetPurchaseCardName(known);
    const auto section = std::make_unique<char[]>(33);
    Require(GetPurchaseCardInfoSectionStr(known, section.get()) == -1 || IsText(section.get(), 33),
            "a section without an end");
    uint8_t oem = 0, stored_slot = 0, stored_id = 0;
    FillSdrOEMValue(known, &oem);
    const int32_t saved = SavePurchaseCardFruId(known, name.c_str(), slot, id);
    const int32_t loaded = LoadPurchaseCardFruId(known, name.c_str(), &stored_slot, &stored_id);
    Require(saved >= -1 && saved <= 0 && loaded >= -1 && loaded <= 0, "a result that no header tells");
}

void CallDisks(Reader &arguments, void *) {
    const uint32_t slot = arguments.Byte(), kind = arguments.Byte() % 4, type = arguments.Byte() % 4;
    Require(setHddRegisterInfo(slot, kind, type) == 0, "setHddRegisterInfo does not give 0");
    Require(isHasRegister(arguments.Take<int32_t>(), static_cast<int32_t>(kind)) <= 1, "neither yes nor no");
    Require(gRegisterInfo.registerSlotNum <= HDD_REGISTER_MAX, "more disks than the registry holds");
    const int32_t needed = isNeedRegisterHddSdr();
    Require(needed >= -1 && needed <= 1, "isNeedRegisterHddSdr gives " + std::to_string(needed));
    const uint8_t side = getNvmeFrontInfo(arguments.Take<int32_t>());
    Require(side == 4 || side == 5, "a disk neither front nor rear");
}

// ---- files ---------------------------------------------------------------------------------------------

void CallRecordFile(Reader &arguments, void *) {
    const uint32_t classes[] = {10, 11, 224, arguments.Byte()};
    const uint32_t entity = classes[arguments.Byte() % 4];
    const uint32_t instance = arguments.Byte(), id = arguments.Take<uint16_t>(), presence = arguments.Byte();
    SDR_UpdateSpecificSDRRecFile(entity, instance, id, presence);
    const uint16_t told =
        SDR_GetSepcificFruSDRRecID(static_cast<uint8_t>(entity), static_cast<uint8_t>(instance));
    const bool kept = entity == 10 && presence == 1;
    Require(sim::FaultWasHit() || told == (kept ? id : 0), "another record id than was stored");
}

void CallStore(Reader &arguments, void *) {
    const size_t size = arguments.Take<uint16_t>() % 20000;
    const std::vector<uint8_t> bytes = arguments.Bytes(256);
    const auto length = static_cast<uint32_t>(bytes.size());
    writeExtSDRFile(bytes.data(), length);
    writeExtDevTabFile(bytes.data(), length);
    const auto room = std::make_unique<uint8_t[]>(size + 1);
    const int32_t sdrs = readExtSDRFile(room.get(), static_cast<uint32_t>(size));
    const int32_t entries = readExtDevTabFile(room.get(), static_cast<uint32_t>(size));
    Require(sdrs >= -1 && sdrs <= static_cast<int32_t>(size), "more bytes than were asked for");
    Require(entries >= -1 && entries <= static_cast<int32_t>(size), "more bytes than were asked for");
}

void CallQuestions(Reader &arguments, void *) {
    const auto record = OwnBytes(arguments, SDR_SLOT_SIZE);
    const int32_t exists = checkSensorExist(record.get());
    Require(exists == 0 || exists == 1, "neither stored nor not");
    Require(getExtDevTabCount() <= EXT_SLOT_MAX, "more entries than the store holds");
}

void CallThresholds(Reader &arguments, void *) {
    InitSdrThresholdInfoFromFile(arguments.Byte());
    const auto name = OwnBytes(arguments, 16), six = OwnBytes(arguments, 8);
    const uint16_t mask = arguments.Take<uint16_t>();
    SaveSdrThresholdInfoInFile(reinterpret_cast<const char *>(name.get()), six.get(), mask);
    const auto record = OwnBytes(arguments, SDR_SLOT_SIZE);
    const std::vector<uint8_t> before(record.get(), record.get() + SDR_SLOT_SIZE);
    ModifySensorThresholdByFile(record.get());
    for (size_t at = 0; at < SDR_SLOT_SIZE; ++at)
        Require(record[at] == before[at] || (at >= 36 && at <= 41),
                "a byte beside the thresholds is changed");
}

// ---- events --------------------------------------------------------------------------------------------

void CallWriter(Reader &arguments, void *) {
    const auto record = OwnBytes(arguments, SEL_RECORD_SIZE);
    const size_t before = sim::EventLog().size();
    const uint32_t result = ipmi_add_sel_entry(record.get());
    Require(result == OXA_OK || result == OXA_FAILED, "the writer gives neither result");
    Require(sim::EventLog().size() == before + (result == OXA_OK ? 1 : 0) || sim::FaultWasHit(),
            "a record more or less than told");
}

template <class... Arguments> void CallBuilder(Reader &arguments, void *function) {
    const size_t before = sim::EventLog().size();
    const auto builder = reinterpret_cast<uint32_t (*)(Arguments...)>(function);
    const std::tuple<Arguments...> values{arguments.Take<Arguments>()...}; // braces: from left to right
    const uint32_t result = std::apply(builder, values);
    Require(result == OXA_OK || result == OXA_FAILED, "a builder gives neither result");
    Require(sim::EventLog().size() <= before + 1, "more than one event");
    Require(result == OXA_OK || sim::EventLog().size() == before || sim::FaultWasHit(),
            "a failure with an event");
}

void CallLeakage(Reader &arguments, void *) {
    const uint32_t kind = arguments.Byte() % 8;
    const LeakageInfo info = arguments.Take<LeakageInfo>();
    const uint32_t result = addLeakageSel(kind, &info);
    Require(result == OXA_OK || result == OXA_FAILED, "a builder gives neither result");
}

template <class... Arguments> EntryPoint Builder(const char *name, uint32_t (*function)(Arguments...)) {
    return {name, (size_t{0} + ... + sizeof(Arguments)), CallBuilder<Arguments...>,
            reinterpret_cast<void *>(function)};
}
EntryPoint Specific(const char *name, GenSpecificSDRFn function) {
    return {name, sizeof(SpecificSensorParam) + 1, CallSpecific, reinterpret_cast<void *>(function)};
}

std::vector<EntryPoint> All() {
    constexpr size_t kParam = sizeof(SpecificSensorParam);
    constexpr size_t kQuery = sizeof(SnrQuery);
    return {
#define SPECIFIC(name) Specific(#name, name)
        SPECIFIC(GenSpecificTempSDR),
        SPECIFIC(GenSpecificVoltSDR),
        SPECIFIC(GenSpecificPowerSDR),
        SPECIFIC(GenSpecificFanSpeedSDR),
        SPECIFIC(GenSpecificStatusSDR),
        SPECIFIC(GenSpecificCardStatusSDR),
        SPECIFIC(GenSablinGPUCardStatusSDR),
        SPECIFIC(GenMEMStatusSpecificSDR),
        SPECIFIC(GenFruOfPsuSpecificSDR),
        SPECIFIC(GenFruOfSubCardSpecificSDR),
        SPECIFIC(GenFruOfPurchaseCardSpecificSDR),
        SPECIFIC(GenFruOfSL200CardSpecificSDR),
#undef SPECIFIC
        {"SDR_AddSpecificSensor", kParam + 1, CallAdd},
        {"SDR_DeleteSpecificSDR", kParam + 1, CallDelete},
        {"SendSubCardStatusToFRU", 20, CallSubCard},
        {"GenDevTable", SDR_SLOT_SIZE, CallDevTable},
        {"getSensorInfo, getCustomSensorInfo", 2 * kQuery + 3, CallNames},
        {"getPurchaseCardInfo, getNameInfo", kQuery + kParam + 3, CallCardNames},
        {"modifyPcieSlotName, modifySablinGpuSensorName, getFSlotInfo", 2 * kQuery + 2, CallRenames},
        {"getSilkInfo, strrpc", kQuery + 33, CallTexts},
        {"small lookups", 8, CallBytes},
        {"FRU ids", 49, CallFruIds},
        {"disk registry", 11, CallDisks},
        {"record file", 6, CallRecordFile},
        {"extended store", 258, CallStore},
        {"checkSensorExist, getExtDevTabCount", SDR_SLOT_SIZE, CallQuestions},
        {"user thresholds", 27 + SDR_SLOT_SIZE, CallThresholds},
        {"ipmi_add_sel_entry", SEL_RECORD_SIZE, CallWriter},
        {"addLeakageSel", 3, CallLeakage},
#define BUILDER(name) Builder(#name, name)
        BUILDER(addMemPredictiveFault),
        BUILDER(addPOSTErrorSel),
        BUILDER(addS0PowerButtonSel),
        BUILDER(addGpuSlotErrorSel),
        BUILDER(addMinorCDUFaultSel),
        BUILDER(addMajorCDUFaultSel),
        BUILDER(addNETPortSEL),
        BUILDER(addControllerSEL),
        BUILDER(addDiskSEL),
        BUILDER(addLDSEL),
        BUILDER(addPEMSEL),
        BUILDER(addUsageSEL),
        BUILDER(addSELAlarm),
        BUILDER(addCPUError),
        BUILDER(addMemError),
        BUILDER(addI2CStatusSel),
        BUILDER(addTrapSELAlarm),
        BUILDER(addPowerDropSEL),
#undef BUILDER
    };
}

} // namespace

const std::vector<EntryPoint> &EntryPoints() {
    static const std::vector<EntryPoint> kAll = All();
    return kAll;
}

} // namespace fuzz
