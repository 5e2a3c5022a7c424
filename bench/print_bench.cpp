// What it costs to read a report of 28 MB, and to print it to a text file.
#include "workplace.h"

#include "form/main_window.h"
#include "model/field_model.h"
#include "platform/items.h"
#include "print/print_panel.h"
#include "report/records.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace {

constexpr int Records = 200000;

// Values of 40 to 190 characters, in words.
std::string Report() {
    std::string text = "0,\"QuintaveV2\",\"BENCH.FTF\"\r\n";
    for (int i = 0; i < Records; ++i) {
        text += "2,1,\"Field " + std::to_string(i % 1000) + "\",\"";
        for (int word = 0; word < 5 + i % 20; ++word) text += "measured ";
        text += "\"\r\n";
    }
    return text;
}

void StartOnReport() {
    StartOn("1,50,\"TEXT\",\"Title\",\"\",\"\"\r\n");
    WriteIn("LONG.RPX", Report());
}

void CountBytes(benchmark::State &state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(Report().size()));
}

void ReadRecords(benchmark::State &state) {
    StartOnReport();
    for ([[maybe_unused]] auto turn : state) {
        ItemInput input = OpenReportText(Folder() + "LONG.RPX");
        if (!ReadReportHeader(input)) throw std::runtime_error("header");
        ReportRecord record;
        int count = 0;
        for (; !AtEnd(input); ++count) ReadReportRecord(input, record);
        if (count != Records) throw std::runtime_error("records");
    }
    CountBytes(state);
}

void PrintText(benchmark::State &state) {
    StartOnReport();
    ReportFileDir = Folder();
    ReportFileName = "out.txt";
    for ([[maybe_unused]] auto turn : state) PrintReportToFile(Folder() + "LONG.RPX");
    CountBytes(state);
}

} // namespace

BENCHMARK(ReadRecords)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(PrintText)->Unit(benchmark::kMillisecond)->Iterations(2);
