// States from the screen and back (history_states.h).
#include "main/history_states.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "main/recovery_entries.h"
#include "main/template_command.h"
#include "model/cells.h"
#include "model/field_model.h"
#include "model/store.h"
#include "model/template_reader.h"
#include "model/text_files.h"
#include "model/work_files.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "screen/instances.h"
#include "screen/selected_field.h"
#include "screen/selection.h"

#include <algorithm>
#include <utility>

namespace {

TemplateKey KeyNow() { return {TemplateDir, TemplateName, TemplateMark}; }

Cells BlankStoreOf(Integer head) { return BlankCells(static_cast<std::size_t>(LengthOf(head))); }

std::size_t InHand() { return static_cast<std::size_t>(GroupLoadedOccurrence); }

// The occurrence in hand in its place, which is stored when it is left.
void PutInHand(Cells &occurrences, Integer head) {
    if (InHand() >= CountIn(occurrences)) return;
    if (OccurrenceIn(occurrences, Members(head), InHand()) == GroupItems) return;
    PutOccurrence(occurrences, Members(head), InHand(), GroupItems);
}

// A group's occurrences with the one in hand.
Cells OccurrencesOf(Integer head) {
    Cells occurrences;
    ReadStore(head, occurrences);
    if (GroupIsOpen() && head == GroupHead()) PutInHand(occurrences, head);
    Tighten(occurrences, Members(head));
    return occurrences;
}

bool IsOneBlank(const Cells &occurrences) { return CountIn(occurrences) == 1 && IsBlank(occurrences); }

// What is known of a store that was not written yet: it is blank.
void KnowStore(EntriesImage &known, Integer head) { known.Stores.try_emplace(head, BlankStoreOf(head)); }

// The first occurrence that differs in the texts of its members, and where it is only one of them that member.
void NameMember(StoreDifference &part, const Cells &before, const Cells &now) {
    const GroupMembers &members = Members(part.Head);
    if (CountIn(before) != CountIn(now)) return;
    std::string room;
    std::string otherRoom;
    int differing = 0;
    for (std::size_t k = 0; k < CountIn(now) && differing < 2; ++k) {
        for (std::size_t i = 0; i < members.size(); ++i) {
            if (RTrim(MemberIn(before, members, k, i, room)) == RTrim(MemberIn(now, members, k, i, otherRoom)))
                continue;
            if (++differing == 1) {
                part.Occurrence = k;
                part.Member = members[i].Element;
            }
        }
    }
    if (differing > 1) part.Member = 0;
}

// What is known of a store and what it is now, in which members and occurrences have no place of their own.
void TakeWide(EntriesImage &known, Integer head, const Cells &now, EntriesDifference &former) {
    const Cells before = known.Stores[head];
    TakeStore(known, head, now, former);
    if (before != now) NameMember(former.Stores.back(), before, now);
}

// False where the store cannot be read now; it is looked at again.
bool TakeWrittenStore(EntriesImage &known, Integer head, EntriesDifference &former) {
    Cells now;
    if (FaultOf([&] { now = OccurrencesOf(head); }) != 0) return false;
    KnowStore(known, head);
    if (now.Wide || known.Stores[head].Wide)
        TakeWide(known, head, now, former);
    else
        TakeStore(known, head, now, former);
    return true;
}

void TakeStores(KnownState &known, EntriesDifference &former) {
    const long changes = StoreChanges();
    bool all = true;
    for (const Integer head : WrittenStores())
        if (StoreHasChangedSince(known.StoreChanges, head)) all = TakeWrittenStore(known.Entries, head, former) && all;
    for (auto &[head, occurrences] : known.Entries.Stores)
        if (!WrittenStores().contains(head) && !(GroupIsOpen() && head == GroupHead()) && !IsOneBlank(occurrences))
            TakeStore(known.Entries, head, BlankStoreOf(head), former);
    if (all) known.StoreChanges = changes;
}

// The occurrence in hand, where its store has not changed.
void TakeInHand(EntriesImage &known, EntriesDifference &former) {
    const Integer head = GroupHead();
    KnowStore(known, head);
    const Cells &store = known.Stores[head];
    if (InHand() >= CountIn(store)) return;
    if (!store.Wide && !GroupItems.Wide) {
        TakePart(known, head, InHand() * store.Record, store.Record, GroupItems.Bytes, former);
        return;
    }
    if (OccurrenceIn(store, Members(head), InHand()) == GroupItems) return;
    Cells now = store;
    PutInHand(now, head);
    Tighten(now, Members(head));
    TakeWide(known, head, now, former);
}

} // namespace

KnownState StateNow() {
    KnownState state{KeyNow(), {RowValue, {}}, 0};
    EntriesDifference none;
    TakeStores(state, none);
    return state;
}

Change TakeChange(KnownState &known) {
    Change change;
    if (!(known.Of == KeyNow())) {
        change.Whole = std::make_unique<KnownState>(std::exchange(known, StateNow()));
        return change;
    }
    TakeRows(known.Entries, RowValue, change.Values);
    TakeStores(known, change.Values);
    if (GroupIsOpen()) TakeInHand(known.Entries, change.Values);
    return change;
}

std::size_t Bytes(const EntriesImage &entries) {
    std::size_t bytes = sizeof entries;
    for (int row = 0; row <= entries.Rows.UpperBound(); ++row)
        bytes += sizeof(std::string) + entries.Rows[static_cast<Integer>(row)].capacity();
    for (const auto &[head, occurrences] : entries.Stores) bytes += occurrences.Bytes.capacity();
    return bytes;
}

std::size_t Bytes(const Change &change) {
    const EntriesDifference &values = change.Values;
    std::size_t bytes =
        values.Rows.capacity() * sizeof(values.Rows[0]) + values.Stores.capacity() * sizeof(values.Stores[0]);
    for (const auto &[row, value] : values.Rows) bytes += value.capacity();
    for (const StoreDifference &part : values.Stores) bytes += part.Bytes.capacity();
    return change.Whole == nullptr ? bytes : bytes + Bytes(change.Whole->Entries);
}

namespace {

// Nothing of the state that goes is committed any more once the other one has come.
void PutScreenAway() {
    if (GroupIsOpen())
        AbandonGroup();
    else
        ShowSelectedField(Restart, PutAwayOnly);
}

// The stores of a difference as a state has them.
std::map<Integer, Cells> StoresOf(const EntriesDifference &difference, const EntriesImage &state) {
    std::map<Integer, Cells> stores;
    for (const StoreDifference &part : difference.Stores) stores[part.Head] = state.Stores.at(part.Head);
    return stores;
}

bool ExchangeValues(KnownState &known, EntriesDifference &values) {
    const long changes = StoreChanges();
    Exchange(known.Entries, values);
    const Integer fault = FaultOf([&] { ReplaceStores(StoresOf(values, known.Entries)); });
    if (fault != 0) {
        Exchange(known.Entries, values);
        for (const StoreDifference &part : values.Stores)
            if (StoreHasChangedSince(changes, part.Head))
                FaultOf([&] { ReplaceStore(part.Head, known.Entries.Stores.at(part.Head)); });
        TellWorkFileError(fault);
        return false;
    }
    known.StoreChanges = StoreChanges();
    PutScreenAway();
    for (const auto &[row, value] : values.Rows) PlaceValue(row, known.Entries.Rows[row]);
    return true;
}

bool RefuseTemplate(const TemplateKey &key, const std::string &fault) {
    MsgBox("The Fields Template File " + NameText(key.Name) + " of these entries " + fault + "!" + NL + NL +
               "Nothing was changed.",
           CriticalIcon, "Quintave");
    return false;
}

// The template is there and has the elements that the entries were made for; otherwise after the message.
bool HasTemplate(const TemplateKey &key) {
    if (key.Name.empty()) return true;
    std::string name = FindName(key.Dir, key.Name);
    if (name.empty()) name = key.Name; // a directory that cannot be read tells nothing of its files
    bool same = false;
    const Integer fault = FaultOf([&] {
        std::string suffix;
        const std::string path = key.Dir + name;
        same = ReadTemplateHeader(path, suffix) && MarkOf(ReadTemplate(TemplateText(ReadFile(path)))) == key.Mark;
    });
    if (fault == FileNotFound || fault == PathNotFound) return RefuseTemplate(key, "was not found");
    if (fault != 0) MsgBox(UnreadableText(fault), CriticalIcon, "ERROR LOADING " + NameText(key.Name));
    return fault != 0 ? false : same || RefuseTemplate(key, "has changed since then");
}

bool LoadTemplateOf(const TemplateKey &key) {
    if (!key.Name.empty()) return LoadTemplateAt(key.Dir, key.Name);
    const TemplateKey former = KeyNow();
    TemplateDir = key.Dir;
    TemplateName.clear();
    if (LoadTemplateFile()) return true;
    TemplateDir = former.Dir;
    TemplateName = former.Name;
    return false;
}

void PlaceAll(const EntriesImage &entries) {
    std::map<Integer, Cells> stores;
    for (const auto &[head, occurrences] : entries.Stores)
        if (!IsOneBlank(occurrences)) stores[head] = occurrences;
    ReplaceStores(stores);
    for (Integer row = 0; row < NumRows; ++row)
        if (!entries.Rows[row].empty()) PlaceValue(row, entries.Rows[row]);
}

Exchanged ExchangeTemplates(KnownState &known, KnownState &other) {
    if (!HasTemplate(other.Of)) return Exchanged::Not;
    PutScreenAway();
    if (!LoadTemplateOf(other.Of)) return Exchanged::NotButShownAnew;
    const Integer fault = FaultOf([&] { PlaceAll(other.Entries); });
    if (fault != 0) {
        if (LoadTemplateOf(known.Of)) FaultOf([&] { PlaceAll(known.Entries); });
        TellWorkFileError(fault);
        return Exchanged::NotButShownAnew;
    }
    std::swap(known, other);
    known.StoreChanges = StoreChanges();
    return Exchanged::Done;
}

} // namespace

Exchanged ExchangeState(KnownState &known, Change &change) {
    if (change.Whole != nullptr) return ExchangeTemplates(known, *change.Whole);
    return ExchangeValues(known, change.Values) ? Exchanged::Done : Exchanged::Not;
}
