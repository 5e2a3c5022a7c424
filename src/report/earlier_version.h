// The earlier version of a report, kept while a save replaces it, and longer where the new one may hold less.
#pragma once

#include <string>

// A load of this report is over: whether all of it has come into the entries. Where not, the next save over it keeps
// the earlier version.
void NoteLoaded(const std::string &path, bool whole);

// One save over a report, from before it is opened until it is whole.
class EarlierVersion {
public:
    // Copies the report, where there is anything to keep and room for a new file. Where the last save of it was not
    // completed, and nobody has put another one there since, the copy made then is the one. Throws where the copy
    // cannot be made for another reason.
    explicit EarlierVersion(std::string path);
    ~EarlierVersion();
    EarlierVersion(const EarlierVersion &) = delete;
    EarlierVersion &operator=(const EarlierVersion &) = delete;

    // The report is open, and no longer what it was.
    void Begin() { begun = true; }

    // The new one is whole and holds so many values: the copies go. One stays, and its path is given, where the earlier
    // version was not loaded in full or held more values.
    std::string End(long values);

private:
    std::string path;
    std::string copy;  // "" for none
    bool made = false; // by this save
    bool begun = false;
    bool ended = false;
};
