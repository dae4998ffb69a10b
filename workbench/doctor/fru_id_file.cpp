// SPDX-License-Identifier: GPL-3.0-or-later
//
// The FRU ids of cards, as other programs are told them.  The library writes this file and reads it for its callers; the ids
// that it gives out do not come from it.
#include <algorithm>
#include <map>

#include "base/text.h"
#include "doctor/parts.h"
#include "oxa/specific_sensors.h"
#include "runtime/stored.h"

namespace workbench {
namespace {

constexpr char kFruId[] = "_FruId ", kSlotId[] = "_SlotId "; // behind the name of the card
constexpr char kTellsReaders[] = "tells other programs so";

struct Card {
    std::string section; // the catalogue's name
    std::string name;    // the record's
    std::optional<uint32_t> fru_id, slot;
    std::string Place() const {
        return "'" + Printable(name) + "'";
    }
};

const PurchaseCardRow *RowNamed(const std::string &section) {
    for (const PurchaseCardRow &row : gPurchaseCardInfo)
        if (section == row.acName)
            return &row;
    return nullptr;
}

// The card that a locator is of; none for those of power supplies and the sub card.
const PurchaseCardRow *RowOf(const KeptRecord &record) {
    const uint8_t *const slot = record.slot.data();
    for (const PurchaseCardRow &row : gPurchaseCardInfo)
        if (IsLocatorOf(slot, static_cast<uint8_t>(row.wDevType)) && slot[FRU_SDR_OEM] == row.ucOEM)
            return &row;
    return nullptr;
}

// Pools: four ids of cards, eight higher on machines with an offset, and on those one for each of eight slots.
bool IsGivenOut(const std::string &section, uint32_t id) {
    const bool by_slot = section == "SL200 Card" && id >= 1 && id <= 8;
    return by_slot || (id >= 33 && id <= 36) || (id >= 41 && id <= 44);
}

// "HGX UBB_FruId": the card of a key.
std::vector<Card> CardsOf(Examination &about, const IniSection &section) {
    std::vector<Card> out;
    std::map<std::string, size_t> places; // by name
    for (const IniKey &key : section.keys) {
        const bool fru = key.name.ends_with(kFruId), slot = key.name.ends_with(kSlotId);
        if (!fru && !slot) {
            about.Add(kFruIdFile, "foreign", "line " + std::to_string(key.line),
                      "key '" + Printable(key.name) + "'", "does not look at it", kLeftOut);
            continue;
        }
        const std::string name = key.name.substr(0, key.name.rfind('_'));
        const auto [place, is_new] = places.emplace(name, out.size());
        if (is_new)
            out.push_back({section.name, name, {}, {}});
        (fru ? out[place->second].fru_id : out[place->second].slot) = key.value;
    }
    return out;
}

std::vector<Card> ReadCards(Examination &about, const IniText &text) {
    std::vector<Card> out;
    for (const IniSection &section : text.sections) {
        if (RowNamed(section.name) == nullptr)
            about.Add(kFruIdFile, "foreign", "[" + Printable(section.name) + "]", "no card of the catalogue",
                      "does not look at it", kLeftOut);
        else
            for (Card &card : CardsOf(about, section))
                out.push_back(std::move(card));
    }
    return out;
}

// The locator that the file tells of: of several cards of one kind the last.
const KeptRecord *LocatorOf(const Examination &about, const std::string &name) {
    const KeptRecord *found = nullptr;
    for (const KeptRecord &record : about.repository)
        if (RowOf(record) != nullptr && NameOf(record.slot.data()) == name)
            found = &record;
    return found;
}

bool IsAsInRepository(const Examination &about, const Card &card) {
    const KeptRecord *const record = LocatorOf(about, card.name);
    return record != nullptr && card.fru_id == record->slot[FRU_SDR_FRU_ID] &&
           card.slot == record->slot[FRU_SDR_ENTITY_INSTANCE];
}

void JudgeAlone(Examination &about, const std::vector<Card> &cards) {
    std::map<uint32_t, const Card *> by_id;
    for (const Card &card : cards) {
        if (!card.fru_id || !card.slot)
            about.Add(kFruIdFile, "torn", card.Place(),
                      std::string("has no ") + (card.fru_id ? "slot" : "FRU id"), "tells other programs 0",
                      "as the repository has it, else left out");
        else if (!IsGivenOut(card.section, *card.fru_id) && !IsAsInRepository(about, card))
            about.Add(kFruIdFile, "foreign", card.Place(),
                      "FRU id " + std::to_string(*card.fru_id) + " is none that cards get", kTellsReaders,
                      "as the repository has it, else left out");
        else if (const auto [first, fresh] = by_id.emplace(*card.fru_id, &card); !fresh)
            about.Add(
                kFruIdFile, "twice", card.Place(),
                "FRU id " + std::to_string(*card.fru_id) + ", as " + first->second->Place(), kTellsReaders,
                about.has_repository && !IsAsInRepository(about, card) ? "as the repository has it" : "");
    }
}

void JudgeAgainstRepository(Examination &about, const std::vector<Card> &cards) {
    for (const Card &card : cards) {
        const KeptRecord *const record = LocatorOf(about, card.name);
        if (record == nullptr) {
            about.Add(kFruIdFile, "orphaned", card.Place(), "no locator of it is in the repository",
                      kTellsReaders, kLeftOut);
            continue;
        }
        const uint8_t fru_id = record->slot[FRU_SDR_FRU_ID], slot = record->slot[FRU_SDR_ENTITY_INSTANCE];
        if (card.fru_id && card.slot && (*card.fru_id != fru_id || *card.slot != slot))
            about.Add(kFruIdFile, "stale", card.Place(),
                      "FRU id " + std::to_string(*card.fru_id) + " in slot " + std::to_string(*card.slot) +
                          "; " + Shown(*record) + " has " + std::to_string(fru_id) + " in slot " +
                          std::to_string(slot),
                      kTellsReaders, "as the repository has it");
    }
    for (const KeptRecord &record : about.repository) {
        const PurchaseCardRow *const row = RowOf(record);
        if (row == nullptr)
            continue;
        if (const uint8_t id = record.slot[FRU_SDR_FRU_ID]; !IsGivenOut(row->acName, id))
            about.Add(kRepository, "foreign", "record " + std::to_string(record.id),
                      "FRU id " + std::to_string(id) + " is none that cards get",
                      "nothing: the library never reads the repository");
        const std::string name = NameOf(record.slot.data());
        const bool told =
            std::any_of(cards.begin(), cards.end(), [&](const Card &card) { return card.name == name; });
        if (const KeptRecord *const last = LocatorOf(about, name); last != &record)
            about.Add(kFruIdFile, "no-entry", "'" + Printable(name) + "'",
                      Shown(record) +
                          " of the repository: the file has one entry for all cards of a name, that of " +
                          Shown(*last),
                      "tells other programs of the last one only");
        else if (!told)
            about.Add(kFruIdFile, "no-entry", "'" + Printable(name) + "'",
                      Shown(record) + " of the repository has none", "tells other programs 0", "added");
    }
}

void Put(std::vector<IniSection> &sections, const std::string &section, const std::string &name,
         uint32_t fru_id, uint32_t slot) {
    auto found = std::find_if(sections.begin(), sections.end(),
                              [&](const IniSection &s) { return s.name == section; });
    if (found == sections.end())
        found = sections.insert(sections.end(), IniSection{section, 0, {}});
    found->keys.push_back({name + kFruId, fru_id, 0});
    found->keys.push_back({name + kSlotId, slot, 0});
}

void Mend(Examination &about, const std::vector<Card> &cards) {
    std::vector<IniSection> sections;
    if (about.has_repository) {
        for (const KeptRecord &record : about.repository)
            if (const PurchaseCardRow *const row = RowOf(record);
                row != nullptr && LocatorOf(about, NameOf(record.slot.data())) == &record)
                Put(sections, row->acName, NameOf(record.slot.data()), record.slot[FRU_SDR_FRU_ID],
                    record.slot[FRU_SDR_ENTITY_INSTANCE]);
    } else {
        for (const Card &card : cards)
            if (card.fru_id && card.slot && IsGivenOut(card.section, *card.fru_id))
                Put(sections, card.section, card.name, *card.fru_id, *card.slot);
    }
    MachineFile &mended = about.out.mended[kFruIdFile];
    if (mended.Has() || !sections.empty())
        mended.Put(WriteIni(sections));
}

} // namespace

void ExamineFruIdFile(Examination &about) {
    const IniText text = about.ReadLines(kFruIdFile, "tells other programs the number as it stands");
    const std::vector<Card> cards = ReadCards(about, text);
    if (about.File(kFruIdFile).Has())
        about.out.holds[kFruIdFile] = std::to_string(cards.size()) + (cards.size() == 1 ? " card" : " cards");
    JudgeAlone(about, cards);
    if (about.has_repository)
        JudgeAgainstRepository(about, cards);
    Mend(about, cards);
}

} // namespace workbench
