// Reports that are given to the program: as its argument, as the file manager does it, by the resource table, or by
// another program that was started second (platform/hand_over.h).
#pragma once

#include <string>

// The report to open at the start: the program's argument, else the one that the resource table names. False for none.
bool FindStartReport(const std::string &argument, std::string &directory, std::string &name);

// Loads the template that the report's header names: from the resource directory, or else from beside the report. False
// where there is none, where the present template has that name, or after the message of one that cannot be loaded.
bool LoadTemplateOfReport(const std::string &directory, const std::string &name);

// Loads the report on top of what is on screen; without a template it is told that there is nothing to load it into.
void OpenGivenReport(const std::string &directory, const std::string &name);

// Another program has handed over a report, "" for none; it is opened as soon as nothing else goes on.
void ReceiveReport(const std::string &report);

// Event of GivenTimer: opens the report that waits longest, as Add does. Where nothing was entered or opened yet, it
// brings its template.
void GivenTimer_Timer();
