// The file that unsaved entries are kept in: numbered items, and a checksum at the end by which any damage shows. What
// the items mean: main/recovery_entries.h; when there is such a file: main/recovery.h.
#pragma once

#include "platform/checksum.h"
#include "platform/files.h"
#include "platform/runtime.h"

#include <string>
#include <string_view>
#include <vector>

// Its name in the resource directory. No pattern that work files are deleted by matches it.
inline constexpr std::string_view RecoveryName = "quintave.rec";

struct RecoveryItem {
    std::string_view Kind; // a word
    Integer Number = 0;
    std::string_view Bytes;
};

// The line in front of an item's bytes; behind them stands a line feed.
std::string ItemLine(std::string_view kind, Integer number, std::size_t length);

// Appends a whole item.
void AddItem(std::string &items, std::string_view kind, Integer number, std::string_view bytes);

// Writes the file beside the former one and puts it in its place once it is whole. It is not waited for the disk: a
// file that a power failure has cut short is found damaged.
class RecoveryWriter {
public:
    RecoveryWriter();
    void Write(std::string_view bytes); // whole items in the end
    void Close();

private:
    OutputFile file;
    Checksum sum;
};

// Deletes what a writer that failed has left, where that can be.
void DeleteUnfinishedRecovery();

// A whole file as its items, which look into its bytes. False where it is damaged; the errors of ReadFile (files.h).
bool ReadRecoveryFile(std::string &bytes, std::vector<RecoveryItem> &items);
