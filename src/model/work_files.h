// The work files in the resource directory: choice lists, group stores, temporary reports.
#pragma once

#include "model/template_reader.h"
#include "platform/runtime.h"

#include <string>

// "LST" (or "GRP"), the last five digits of 100000 + element, ".XXX".
std::string ChoiceFileName(Integer element);
std::string GroupFileName(Integer element);

// The bytes of a work file, by its name. The errors of ReadFile.
std::string ReadWorkFile(const std::string &name);

// From now on work files are in memory alone: for a program that nobody else's can concern and that opens no group.
void HoldWorkFiles();

bool WorkFilesAreHeld();

// Where they are: the new bytes of one.
void HoldWorkFile(std::string name, std::string bytes);

// Deletes all *.XXX and then all *.$$$ of the resource directory.
void DeleteWorkFiles();

// Puts the choice lists and blank group stores of a template in the place of all work files. Where a new one cannot be
// written, or its name is not to be had, it throws and the old ones are all there.
void ReplaceWorkFiles(const TemplateContent &content);

// The temporary name a work file is written under before it takes its own; the next start deletes what is left of one.
std::string StagedName(const std::string &name);

// The header of a group store: the two counts, little-endian.
std::string GroupStoreHeader(Integer itemCount, Integer occurrenceCount);

// A store of one blank occurrence.
std::string BlankStore(Integer itemCount);

// What the user is told of a work file that could not be used.
std::string WorkFileErrorText(Integer error);
