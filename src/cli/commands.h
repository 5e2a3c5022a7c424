// The commands of quintave-cli, each in a .cpp of its own; their names and options: commands.cpp.
#pragma once

struct Arguments;

// Each gives the exit status.
int CheckTemplate(const Arguments &arguments);
int CheckReports(const Arguments &arguments);
int PrintReport(const Arguments &arguments);
int MergeReports(const Arguments &arguments);
int ExportReport(const Arguments &arguments);
int CompareReports(const Arguments &arguments);
