// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/machine_files.h"

#include <map>
#include <set>

#include "replay/asked.h"
#include "simulator/calls.h"

namespace workbench {
namespace {

// Follows the files that are open through the calls of a capture.
class Files {
public:
    explicit Files(CapturedMachine &machine) : machine_(machine) {}

    void Take(const CapturedCall &call) {
        if (call.name == "sigwrap_open_mode" && ResultOf(call) >= 0)
            open_[ResultOf(call)] = InBytes(call, 0);
        else if (call.name == "oxa_fopen_s" && ResultOf(call) == 0)
            OpenStream(call);
        else if (call.name == "sigwrap_read" && ResultOf(call) > 0)
            Found(open_[InNumber(call, 0)], OutBytes(call, 0));
        else if (call.name == "fread")
            Found(open_[call.in.size() > 3 ? call.in[3].number : 0], OutBytes(call, 0));
        else if (call.name == "sigwrap_write")
            known_.insert(open_[InNumber(call, 0)]);
        else if (call.name == "fwrite")
            known_.insert(open_[call.in.size() > 3 ? call.in[3].number : 0]);
        else if (call.name == "access" && ResultOf(call) == 0)
            Found(InBytes(call, 0), "");
        else if (call.name == "IniLoadFile" || call.name == "OXA_IniLoadFile")
            ini_ = InBytes(call, 0);
        else if (call.name == "IniGetUInt")
            FoundKey(call);
        else if (call.name == "IniSetUInt")
            known_.insert(ini_ + '\0' + InBytes(call, 1) + '\0' + InBytes(call, 2));
    }

    void Finish() {
        for (const auto &[path, sections] : keys_) {
            std::string text;
            for (const auto &[section, keys] : sections) {
                text += "[" + section + "]\n";
                for (const auto &[key, value] : keys)
                    text += key + "=" + std::to_string(value) + "\n";
            }
            Put(path, text);
        }
    }

private:
    void OpenStream(const CapturedCall &call) {
        const std::string &path = InBytes(call, 1);
        open_[call.out.empty() ? 0 : call.out[0].number] = path;
        if (InBytes(call, 2).starts_with("w"))
            known_.insert(path);
    }
    void Put(const std::string &path, const std::string &content) {
        machine_.board.files[path] = {content.begin(), content.end()};
    }
    void Found(const std::string &path, const std::string &content) {
        if (!path.empty() && known_.insert(path).second)
            Put(path, content);
    }
    void FoundKey(const CapturedCall &call) {
        const std::string &section = InBytes(call, 1), &key = InBytes(call, 2);
        const bool fresh = known_.insert(ini_ + '\0' + section + '\0' + key).second;
        if (fresh && ResultOf(call) !=
                         static_cast<int64_t>(InNumber(call, 3))) // not the value of a key that is not there
            keys_[ini_][section][key] = static_cast<uint32_t>(ResultOf(call));
    }

    CapturedMachine &machine_;
    std::map<int64_t, std::string> open_; // descriptors and streams
    std::string ini_;
    std::set<std::string> known_; // paths, and keys of INI files, whose first content is settled
    std::map<std::string, std::map<std::string, std::map<std::string, uint32_t>>> keys_;
};

// Calls that work on files, locks and sessions, and the result that is no failure.
bool WentWrong(const CapturedCall &call) {
    static const std::set<std::string> good_is_zero = {
        "OAL_SemCreate", "OAL_SemLockByKey", "OAL_SemUnLockByKey",
        "sigwrap_write", "ftruncate",        "LIBIPMI_Create_IPMI_Local_Session"};
    const int64_t result = ResultOf(call);
    if (call.name == "sigwrap_open_mode" || call.name == "lseek")
        return result < 0;
    if (call.name == "sigwrap_read")
        return result < 0;
    return good_is_zero.contains(call.name) && result != 0;
}

// A pass that asks the same counts the calls in the same way; other entries have no such order.
void AddOccurrences(const CapturedEntry &pass, CapturedMachine &machine) {
    std::map<std::string, uint32_t> calls;
    for (const CapturedCall &call : pass.calls) {
        const uint32_t number = ++calls[call.name];
        if (!call.ended || !WentWrong(call))
            continue;
        sim::Fault fault{.call = call.name, .occurrence = number};
        if (ResultOf(call) != -1)
            fault.result = ResultOf(call);
        fault.errno_value = call.error.value_or(0);
        machine.faults.push_back(fault);
    }
    for (const CapturedCall &call : pass.calls) {
        const size_t id = sim::FindCall(call.name);
        if (id != sim::kCallCount && sim::kCalls[id].bounded)
            machine.unsaid.push_back(CallText(call) + ": did not do what a sound one does");
    }
}

} // namespace

void AddFiles(const Capture &capture, CapturedMachine &machine) {
    Files files(machine);
    const CapturedEntry *pass = nullptr;
    for (const CapturedEntry &entry : capture.entries) {
        for (const CapturedCall &call : entry.calls)
            if (call.ended)
                files.Take(call);
        if (pass == nullptr && !ProfileOfDriver(entry.name).empty())
            pass = &entry;
    }
    files.Finish();
    if (pass != nullptr)
        AddOccurrences(*pass, machine);
}

} // namespace workbench
