// The earlier version of a report, kept while a save replaces it.
#pragma once

#include <string>

// Copies a report before it is replaced: the copy's path, "" where there is nothing to keep or no room for a new file.
// Where the last save of the report was not completed the copy made then is the one. Throws where it cannot be made for
// another reason.
std::string KeepEarlierVersion(const std::string &path);

// The report is whole: what was kept of it is no longer needed.
void DropEarlierVersion(const std::string &path, const std::string &kept);
