// SPDX-License-Identifier: GPL-3.0-or-later
//
// IPMI service library: profile id, liquid-cooling configuration, local sessions, and the repository and
// event log behind them (in memory).
#include "simulator/internal.h"

namespace {

using namespace sim;

constexpr uint16_t kNotPresent = 0xCB; // IPMI: requested record is not there
constexpr uint16_t kOutOfSpace = 0xC4; // IPMI: repository or log is full
constexpr uint16_t kNoSession = 0xD4;  // IPMI: insufficient privilege

// A command needs an open session; without one it is refused and noted.
bool SessionIsOpen(Call &call, const char *command, const IpmiLocalSession *session) {
    if (call.state().sessions.contains(session)) {
        return true;
    }
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
        if (response != nullptr) {
            call.SpoilBuffer(response, size);
        }
        return call.Return<uint16_t>(refused ? kIpmiFailed : kNoSession);
    }
    return std::nullopt;
}

} // namespace

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
        if (ptSession != nullptr) {
            call.Spoil(ptSession);
        }
        return call.Return<uint16_t>(kIpmiFailed);
    }
    const bool clean = std::all_of(std::begin(ptSession->aucRaw), std::end(ptSession->aucRaw),
                                   [](uint8_t byte) { return byte == 0; });
    if (!clean) {
        state.Violate("LIBIPMI_Create_IPMI_Local_Session: the session block is not zero-filled");
    }
    if (state.sessions.contains(ptSession)) {
        state.Violate("LIBIPMI_Create_IPMI_Local_Session: the session block already holds an open session");
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
    if (!SessionIsOpen(call, "LIBIPMI_CloseSession", ptSession)) {
        return call.Return<uint16_t>(kNoSession);
    }
    call.state().sessions.erase(ptSession);
    return call.Return<uint16_t>(fails ? kIpmiFailed : 0);
}

uint16_t IPMICMD_AddSDR(IpmiLocalSession *ptSession, const uint8_t *pucSDR, uint8_t ucLen, uint8_t *pucRes,
                        uint32_t dwArg) {
    Call call(Id("IPMICMD_AddSDR"), "session", SessionOf{ptSession}, "len", ucLen, "arg", dwArg);
    State &state = call.state();
    if (const auto refusal =
            Refusal(call, "IPMICMD_AddSDR", ptSession, {ptSession, pucSDR, pucRes}, pucRes, 3)) {
        return *refusal;
    }
    if (ucLen > SDR_SLOT_SIZE) {
        state.Violate("IPMICMD_AddSDR: length " + std::to_string(ucLen) + " reaches beyond a slot");
        ucLen = SDR_SLOT_SIZE;
    }
    if (state.repository.size() >= state.board.sdr_limit) {
        Answer(pucRes, 3, kOutOfSpace, 0);
        return call.Return<uint16_t>(kOutOfSpace);
    }
    const uint16_t id = state.next_record_id++;
    state.repository.push_back({id, {pucSDR, pucSDR + ucLen}});
    state.Note("repository: record " + std::to_string(id) + " added: " + Hex(pucSDR, ucLen));
    Answer(pucRes, 3, 0, id);
    return call.Return<uint16_t>(0);
}

uint16_t IPMICMD_DeleteSDR(IpmiLocalSession *ptSession, const uint8_t *pucReq, uint8_t *pucRes,
                           uint32_t dwArg) {
    Call call(Id("IPMICMD_DeleteSDR"), "session", SessionOf{ptSession}, "request", Bytes{pucReq, 4}, "arg",
              dwArg);
    State &state = call.state();
    if (const auto refusal =
            Refusal(call, "IPMICMD_DeleteSDR", ptSession, {ptSession, pucReq, pucRes}, pucRes, 4)) {
        return *refusal;
    }
    // reservation id, then the record id, least significant byte first
    const uint16_t id = static_cast<uint16_t>(pucReq[2] | pucReq[3] << 8);
    const auto found = std::find_if(state.repository.begin(), state.repository.end(),
                                    [&](const RepositoryRecord &record) { return record.id == id; });
    if (found == state.repository.end()) {
        Answer(pucRes, 4, kNotPresent, 0);
        return call.Return<uint16_t>(kNotPresent);
    }
    state.repository.erase(found);
    state.Note("repository: record " + std::to_string(id) + " deleted");
    Answer(pucRes, 4, 0, id);
    return call.Return<uint16_t>(0);
}

uint16_t IPMICMD_AddSELEntry(IpmiLocalSession *ptSession, const uint8_t *pucRecord, uint8_t *pucRes,
                             uint32_t dwArg) {
    Call call(Id("IPMICMD_AddSELEntry"), "session", SessionOf{ptSession}, "record", Bytes{pucRecord, 16},
              "arg", dwArg);
    State &state = call.state();
    if (const auto refusal =
            Refusal(call, "IPMICMD_AddSELEntry", ptSession, {ptSession, pucRecord, pucRes}, pucRes, 3)) {
        return *refusal;
    }
    if (state.event_log.size() >= state.board.sel_limit) {
        Answer(pucRes, 3, kOutOfSpace, 0);
        return call.Return<uint16_t>(kOutOfSpace);
    }
    state.event_log.emplace_back(pucRecord, pucRecord + 16);
    const uint16_t id = static_cast<uint16_t>(state.event_log.size());
    state.Note("event log: record " + std::to_string(id) + " added: " + Hex(pucRecord, 16));
    Answer(pucRes, 3, 0, id);
    return call.Return<uint16_t>(0);
}

uint16_t LIBIPMI_HL_SendMsgToFRU(IpmiLocalSession *ptSession, const uint8_t *pucMsg, uint32_t dwArg) {
    Call call(Id("LIBIPMI_HL_SendMsgToFRU"), "session", SessionOf{ptSession}, "message", Bytes{pucMsg, 25},
              "arg", dwArg);
    if (const auto refusal =
            Refusal(call, "LIBIPMI_HL_SendMsgToFRU", ptSession, {ptSession, pucMsg}, nullptr, 0)) {
        return *refusal;
    }
    call.state().Note("FRU service: message received: " + Hex(pucMsg, 25));
    return call.Return<uint16_t>(0);
}

} // extern "C"
