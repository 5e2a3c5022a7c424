// The states that the history leads through: taken from the screen and put back onto it. The steps: history.h.
#pragma once

#include "model/entries_image.h"
#include "platform/runtime.h"

#include <memory>
#include <string>

struct TemplateKey {
    std::string Dir;
    std::string Name;
    std::uint64_t Mark = 0;
    bool operator==(const TemplateKey &) const = default;
};

// All entries, and the template they belong to.
struct KnownState {
    TemplateKey Of;
    EntriesImage Entries;
    long StoreChanges = 0; // up to which the stores were looked at
};

// What one state has where another one differs: everything where the template is another one.
struct Change {
    EntriesDifference Values;
    std::unique_ptr<KnownState> Whole;

    bool IsEmpty() const { return Values.IsEmpty() && Whole == nullptr; }
};

// The memory they take.
std::size_t Bytes(const EntriesImage &entries);
std::size_t Bytes(const Change &change);

KnownState StateNow();

// Brings what is known up to what the entries are now, and gives what was different.
Change TakeChange(KnownState &known);

// Puts the other state onto the screen and exchanges both; or not, after a message. The user's position is to be shown
// then, unless it was left.
enum class Exchanged { Done, Not, NotButShownAnew };
Exchanged ExchangeState(KnownState &known, Change &change);
