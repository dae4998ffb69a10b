// SPDX-License-Identifier: GPL-3.0-or-later
//
// IPMI service library: profile id, liquid-cooling configuration, local sessions, and the repository and
// event log behind them: in memory, or of a BMC that a session of its own leads to.
#include <algorithm>
#include <cstring>

#include "simulator/bmc_session.h"
#include "simulator/platform_call.h"

namespace {

using namespace sim;

constexpr uint16_t kNotPresent = 0xCB; // IPMI: requested record is not there
constexpr uint16_t kOutOfSpace = 0xC4; // IPMI: repository or log is full
constexpr uint16_t kNoSession = 0xD4;  // IPMI: insufficient privilege

constexpr uint8_t kStorage = 0x0A; // network function
constexpr uint8_t kAddSdr = 0x24;
constexpr uint8_t kDeleteSdr = 0x26;
constexpr uint8_t kAddSelEntry = 0x44;

// Sessions that lead out of here, and the ids of the event records; guarded by the state's lock.
struct BackEnd {
    OpenBmcSession open;
    std::map<const IpmiLocalSession *, std::unique_ptr<BmcSession>> sessions;
    std::vector<uint16_t> event_ids;
};
BackEnd &TheBackEnd() {
    static BackEnd *const back_end = new BackEnd; // never destroyed: calls may come until the very end
    return *back_end;
}

// Opens the way to the BMC of a new local session; true when there is none to open.
bool ReachBmc(State &state, const IpmiLocalSession *session) {
    BackEnd &back_end = TheBackEnd();
    if (!back_end.open)
        return true;
    std::string reason;
    std::unique_ptr<BmcSession> opened = back_end.open(reason);
    if (opened == nullptr) {
        state.Note("BMC: no session: " + reason);
        return false;
    }
    back_end.sessions[session] = std::move(opened);
    return true;
}

struct Outcome {
    uint16_t code = 0; // completion code
    uint16_t record_id = 0;
};

// The outcome of a command at the BMC; nothing when the session stays in memory.
std::optional<Outcome> AskBmc(State &state, const IpmiLocalSession *session, uint8_t command,
                              std::span<const uint8_t> data) {
    const auto found = TheBackEnd().sessions.find(session);
    if (found == TheBackEnd().sessions.end())
        return std::nullopt;
    std::string reason;
    const auto answer = found->second->Send(kStorage, command, data, reason);
    if (!answer) {
        state.Note("BMC: no answer: " + reason);
        return Outcome{kIpmiFailed, 0};
    }
    Outcome outcome{(*answer)[0], 0};
    if (answer->size() >= 3)
        outcome.record_id = static_cast<uint16_t>((*answer)[1] | (*answer)[2] << 8);
    if (outcome.code != 0)
        state.Note("BMC: refused with " + Hex(answer->data(), 1) + "h");
    return outcome;
}

// A command needs an open session; without one it is refused and noted.
bool SessionIsOpen(Call &call, const char *command, const IpmiLocalSession *session) {
    if (call.state().sessions.contains(session))
        return true;
    call.state().Violate(std::string(command) + " without an open session");
    return false;
}

// Completion code and record id, as far as the response area reaches.
void Answer(uint8_t *response, size_t size, uint16_t code, uint16_t record_id) {
    const uint8_t bytes[4] = {static_cast<uint8_t>(code), static_cast<uint8_t>(record_id),
                              static_cast<uint8_t>(record_id >> 8), 0};
    std::memcpy(response, bytes, size);
}

// What all commands share: null pointers, faults and a missing session.  Nothing: the command may run.
std::optional<uint16_t> Refusal(Call &call, const char *command, const IpmiLocalSession *session,
                                std::initializer_list<const void *> pointers, uint8_t *response,
                                size_t size) {
    const bool refused = call.FailsOrNull(pointers);
    if (refused || !SessionIsOpen(call, command, session)) {
        if (response != nullptr)
            call.SpoilBuffer(response, size);
        return call.Return<uint16_t>(refused ? kIpmiFailed : kNoSession);
    }
    return std::nullopt;
}

// 0 and FFFFh name no record, and an id that is in use is not given twice.
uint16_t FreeId(State &state) {
    const auto used = [&state](uint16_t id) {
        return std::any_of(state.repository.begin(), state.repository.end(),
                           [id](const RepositoryRecord &record) { return record.id == id; });
    };
    while (state.next_record_id == 0 || state.next_record_id == 0xFFFF || used(state.next_record_id))
        ++state.next_record_id;
    return state.next_record_id;
}

Outcome StoreSdr(State &state, std::span<const uint8_t> sdr, std::optional<Outcome> at_bmc) {
    if (!at_bmc && state.repository.size() >= state.board.sdr_limit)
        return {kOutOfSpace, 0};
    const Outcome outcome = at_bmc ? *at_bmc : Outcome{0, FreeId(state)};
    if (outcome.code == 0) {
        ++state.next_record_id;
        state.repository.push_back({outcome.record_id, {sdr.begin(), sdr.end()}});
        state.Note(std::string(at_bmc ? "BMC " : "") + "repository: record " +
                   std::to_string(outcome.record_id) + " added: " + Hex(sdr.data(), sdr.size()));
    }
    return outcome;
}

Outcome RemoveSdr(State &state, uint16_t id, std::optional<Outcome> at_bmc) {
    const auto found = std::find_if(state.repository.begin(), state.repository.end(),
                                    [&](const RepositoryRecord &record) { return record.id == id; });
    const Outcome outcome =
        at_bmc.value_or(found == state.repository.end() ? Outcome{kNotPresent, 0} : Outcome{0, id});
    if (outcome.code == 0) {
        if (found != state.repository.end())
            state.repository.erase(found);
        state.Note(std::string(at_bmc ? "BMC " : "") + "repository: record " + std::to_string(id) +
                   " deleted");
    }
    return outcome;
}

Outcome StoreEvent(State &state, const uint8_t *record, std::optional<Outcome> at_bmc) {
    if (!at_bmc && state.event_log.size() >= state.board.sel_limit)
        return {kOutOfSpace, 0};
    const Outcome outcome = at_bmc.value_or(Outcome{0, static_cast<uint16_t>(state.event_log.size() + 1)});
    if (outcome.code == 0) {
        std::vector<uint16_t> &ids = TheBackEnd().event_ids;
        ids.resize(state.event_log.size()); // the log may have been emptied
        ids.push_back(outcome.record_id);
        state.event_log.emplace_back(record, record + SEL_RECORD_SIZE);
        state.Note(std::string(at_bmc ? "BMC " : "") + "event log: record " +
                   std::to_string(outcome.record_id) + " added: " + Hex(record, SEL_RECORD_SIZE));
    }
    return outcome;
}

} // namespace

namespace sim {

void UseSessions(OpenBmcSession open) {
    const std::lock_guard lock(TheState().mutex);
    TheBackEnd().sessions.clear();
    TheBackEnd().open = std::move(open);
}

const std::vector<uint16_t> &EventRecordIds() {
    State &state = TheState();
    const std::lock_guard lock(state.mutex);
    std::vector<uint16_t> &ids = TheBackEnd().event_ids;
    ids.resize(state.event_log.size()); // the log may have been emptied
    return ids;
}

} // namespace sim

extern "C" {

int32_t IPMI_LoadCustomID(uint32_t *pdwCustomId) {
    Call call(Id("IPMI_LoadCustomID"));
    return Give(call, pdwCustomId, TheState().board.custom_id);
}

int32_t IPMI_GetCduManageConfig(IpmiCduManageConfig *ptConfig) {
    Call call(Id("IPMI_GetCduManageConfig"));
    return Give(call, ptConfig, {TheState().board.cdu_enable});
}

uint16_t LIBIPMI_Create_IPMI_Local_Session(IpmiLocalSession *ptSession, const char *pcUser,
                                           const char *pcPassword, uint8_t *pucPrivilege, uint32_t dwArg5,
                                           uint32_t dwArg6, uint32_t dwArg7) {
    Call call(Id("LIBIPMI_Create_IPMI_Local_Session"), "user", pcUser, "password", pcPassword, "privilege",
              pucPrivilege != nullptr ? *pucPrivilege : -1, "arg5", dwArg5, "arg6", dwArg6, "arg7", dwArg7);
    State &state = call.state();
    if (call.FailsOrNull({ptSession, pcUser, pcPassword, pucPrivilege})) {
        if (ptSession != nullptr)
            call.Spoil(ptSession);
        return call.Return<uint16_t>(kIpmiFailed);
    }
    const bool clean = std::all_of(std::begin(ptSession->aucRaw), std::end(ptSession->aucRaw),
                                   [](uint8_t byte) { return byte == 0; });
    if (!clean)
        state.Violate("LIBIPMI_Create_IPMI_Local_Session: the session block is not zero-filled");
    if (state.sessions.contains(ptSession))
        state.Violate("LIBIPMI_Create_IPMI_Local_Session: the session block already holds an open session");
    if (!ReachBmc(state, ptSession)) {
        call.Spoil(ptSession);
        return call.Return<uint16_t>(kIpmiFailed);
    }
    const uint32_t number = state.next_session++;
    state.sessions[ptSession] = number;
    std::memcpy(ptSession->aucRaw, &number, sizeof(number));
    return call.Return<uint16_t>(0);
}

uint16_t LIBIPMI_CloseSession(IpmiLocalSession *ptSession) {
    Call call(Id("LIBIPMI_CloseSession"), "session", SessionOf{ptSession});
    // the library has done its duty, whatever the service answers
    const bool fails = call.FailsOrNull({ptSession});
    if (!SessionIsOpen(call, "LIBIPMI_CloseSession", ptSession))
        return call.Return<uint16_t>(kNoSession);
    call.state().sessions.erase(ptSession);
    TheBackEnd().sessions.erase(ptSession);
    return call.Return<uint16_t>(fails ? kIpmiFailed : 0);
}

uint16_t IPMICMD_AddSDR(IpmiLocalSession *ptSession, const uint8_t *pucSDR, uint8_t ucLen, uint8_t *pucRes,
                        uint32_t dwArg) {
    Call call(Id("IPMICMD_AddSDR"), "session", SessionOf{ptSession}, "len", ucLen, "arg", dwArg);
    State &state = call.state();
    if (const auto refusal =
            Refusal(call, "IPMICMD_AddSDR", ptSession, {ptSession, pucSDR, pucRes}, pucRes, 3))
        return *refusal;
    if (ucLen > SDR_SLOT_SIZE) {
        state.Violate("IPMICMD_AddSDR: length " + std::to_string(ucLen) + " reaches beyond a slot");
        ucLen = SDR_SLOT_SIZE;
    }
    const std::span<const uint8_t> sdr(pucSDR, ucLen);
    const Outcome outcome = StoreSdr(state, sdr, AskBmc(state, ptSession, kAddSdr, sdr));
    Answer(pucRes, 3, outcome.code, outcome.record_id);
    return call.Return<uint16_t>(outcome.code);
}

uint16_t IPMICMD_DeleteSDR(IpmiLocalSession *ptSession, const uint8_t *pucReq, uint8_t *pucRes,
                           uint32_t dwArg) {
    Call call(Id("IPMICMD_DeleteSDR"), "session", SessionOf{ptSession}, "request", Bytes{pucReq, 4}, "arg",
              dwArg);
    State &state = call.state();
    if (const auto refusal =
            Refusal(call, "IPMICMD_DeleteSDR", ptSession, {ptSession, pucReq, pucRes}, pucRes, 4))
        return *refusal;
    // reservation id, then the record id, least significant byte first
    const uint16_t id = static_cast<uint16_t>(pucReq[2] | pucReq[3] << 8);
    const Outcome outcome = RemoveSdr(state, id, AskBmc(state, ptSession, kDeleteSdr, std::span(pucReq, 4)));
    Answer(pucRes, 4, outcome.code, outcome.record_id);
    return call.Return<uint16_t>(outcome.code);
}

uint16_t IPMICMD_AddSELEntry(IpmiLocalSession *ptSession, const uint8_t *pucRecord, uint8_t *pucRes,
                             uint32_t dwArg) {
    Call call(Id("IPMICMD_AddSELEntry"), "session", SessionOf{ptSession}, "record", Bytes{pucRecord, 16},
              "arg", dwArg);
    State &state = call.state();
    if (const auto refusal =
            Refusal(call, "IPMICMD_AddSELEntry", ptSession, {ptSession, pucRecord, pucRes}, pucRes, 3))
        return *refusal;
    const Outcome outcome = StoreEvent(
        state, pucRecord, AskBmc(state, ptSession, kAddSelEntry, std::span(pucRecord, SEL_RECORD_SIZE)));
    Answer(pucRes, 3, outcome.code, outcome.record_id);
    return call.Return<uint16_t>(outcome.code);
}

uint16_t LIBIPMI_HL_SendMsgToFRU(IpmiLocalSession *ptSession, const uint8_t *pucMsg, uint32_t dwArg) {
    Call call(Id("LIBIPMI_HL_SendMsgToFRU"), "session", SessionOf{ptSession}, "message", Bytes{pucMsg, 25},
              "arg", dwArg);
    if (const auto refusal =
            Refusal(call, "LIBIPMI_HL_SendMsgToFRU", ptSession, {ptSession, pucMsg}, nullptr, 0))
        return *refusal;
    call.state().Note("FRU service: message received: " + Hex(pucMsg, 25));
    return call.Return<uint16_t>(0);
}

} // extern "C"
