// The entries on screen as items to be kept, and back. The file of these items: recovery_file.h.
#pragma once

#include "model/recovery_file.h"

#include <string>
#include <string_view>
#include <vector>

// The template, the report that Save writes to, and every value: an edit that is still open and the occurrence in hand
// included, the groups' stores not. Nothing changes by it.
std::string EntriesOnScreen();

// Writes these and the stores of all groups that hold something as the recovery file.
void WriteEntries(const std::string &entries);

// What the items say of the template they belong to, and of the report.
struct EntriesOrigin {
    std::string TemplateDir;
    std::string TemplateName;
    std::string TemplateMark;
    std::string Report;    // FileMark
    std::string ReportDir; // FileMarkDir
    std::string Caption;   // of the entry screen's frame
};

EntriesOrigin OriginOf(const std::vector<RecoveryItem> &items);

// Puts a value into a row of the field list, which is in view. Error 9 where there is no place for one.
void PlaceValue(Integer row, std::string_view value);

// Puts the entries on the screen of their template, which was just loaded. Error 9 for an item that has no place there;
// the errors of the groups' stores. After an error some are in their places, some not.
void PlaceEntries(const std::vector<RecoveryItem> &items);
