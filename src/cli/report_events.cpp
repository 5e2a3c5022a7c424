// Reading a report into events (report_events.h).
#include "cli/report_events.h"

#include "cli/files.h"
#include "cli/messages.h"
#include "cli/rooms.h"
#include "model/text_files.h"
#include "report/records.h"

namespace {

// Every part that lies in others carries their titles; this many are more than any template has, and keep a damaged or
// hostile report from filling the memory.
constexpr std::size_t DeepestNesting = 100;

struct Open {
    Part Is;
    Integer Level;
    std::string Title;
};

struct Reading {
    std::vector<ReportEvent> &Events;
    std::vector<Open> Around{};
    bool InGroup = false;
};

void Begin(Reading &reading, Part part, const ReportRecord &record) {
    if (reading.Around.size() >= DeepestNesting) throw RuntimeError{Overflow};
    reading.Events.push_back({part, record.Level, record.Title});
    reading.Around.push_back({part, record.Level, record.Title});
}

void End(Reading &reading) {
    reading.Events.push_back({Part::End});
    if (reading.Around.back().Is == Part::Group) reading.InGroup = false;
    reading.Around.pop_back();
}

// Sections at the record's level or deeper end before it; an occurrence goes on until its marker says otherwise.
void EndSections(Reading &reading, Integer level) {
    while (!reading.Around.empty() && reading.Around.back().Is == Part::Section && reading.Around.back().Level >= level)
        End(reading);
}

void EndGroup(Reading &reading) {
    while (reading.InGroup) End(reading);
}

void BeginOccurrence(Reading &reading, const ReportRecord &record) {
    while (reading.InGroup && reading.Around.back().Is != Part::Group) End(reading);
    if (reading.InGroup && (reading.Around.back().Title != record.Title || reading.Around.back().Level != record.Level))
        EndGroup(reading);
    if (!reading.InGroup) {
        EndSections(reading, record.Level);
        Begin(reading, Part::Group, record);
        reading.InGroup = true;
    }
    Begin(reading, Part::Occurrence, record);
}

void AddValue(Reading &reading, const ReportRecord &record) {
    EndSections(reading, record.Level);
    std::vector<ReportEvent> &events = reading.Events;
    const bool goesOn = !events.empty() && events.back().Is == Part::Field && events.back().Level == record.Level &&
                        events.back().Title == record.Title;
    if (!goesOn) events.push_back({Part::Field, record.Level, record.Title});
    events.back().Values.push_back(record.Text);
}

void Take(Reading &reading, const ReportRecord &record) {
    if (record.Count == GroupEndMarker) {
        EndGroup(reading);
    } else if (record.Count == OccurrenceMarker) {
        BeginOccurrence(reading, record);
    } else if (record.Count < 0) {
        EndSections(reading, record.Level);
        Begin(reading, Part::Section, record);
    } else {
        AddValue(reading, record);
    }
}

void ReadRecords(ItemInput &input, std::size_t &recordAt, Reading &reading) {
    ReportRecord record;
    for (BeginRecord(input); !AtEnd(input); BeginRecord(input)) {
        recordAt = input.At;
        ReadReportRecord(input, record);
        Take(reading, record);
    }
    while (!reading.Around.empty()) End(reading);
}

} // namespace

bool ReadReportEvents(const std::string &path, ReportEvents &report) {
    ItemInput input;
    std::size_t recordAt = 0;
    bool isReport = false;
    const Integer fault = FaultOf([&] {
        input = ReportText(ReadInput(path));
        isReport = ReadReportHeader(input, &report.Template);
        Reading reading{report.Events};
        if (isReport) ReadRecords(input, recordAt, reading);
    });
    if (const long line = LineNotUtf8(input); line > 0) TellMessage(path, line, NotUtf8Here);
    LinePlace counted;
    if (fault != 0)
        TellMessage(path, recordAt == 0 ? 0 : LineAt(counted, input.Bytes, recordAt), "Error: " + ErrorText(fault));
    else if (!isReport)
        TellMessage(path, 1, "This File is not properly identified as a version 2 Quintave file!");
    return isReport && fault == 0;
}
