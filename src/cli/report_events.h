// A report as a sequence of what begins and ends in it, read without a template.
#pragma once

#include "platform/runtime.h"

#include <cstddef>
#include <string>
#include <vector>

struct ItemInput;

enum class Part : unsigned char { Section, Group, Occurrence, Field, End };

// Sections and groups hold what follows up to their End, groups hold occurrences only. A Field has no End.
struct ReportEvent {
    Part Is = Part::Field;
    Integer Level = 0;
    std::string Title{};               // of an occurrence: its group's
    std::vector<std::string> Values{}; // instances of a field; their lines end in CR LF
};

struct ReportEvents {
    std::string Template;
    std::vector<ReportEvent> Events;
};

// Reads the report of a command; false after the message of why it cannot be read.
bool ReadReportEvents(const std::string &path, ReportEvents &report);
