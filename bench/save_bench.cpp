// What it costs to save a report of 10 MB, beside copying it with the same flushing to the disk.
#include "workplace.h"

#include "model/field_model.h"
#include "platform/files.h"
#include "report/save_command.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace {

constexpr int Fields = 16000;
constexpr std::size_t ValueLength = 600;

void SaveIn(const std::string &name) {
    ReportFileDir = Folder();
    ReportFileName = name;
    if (!WriteReportFile()) throw std::runtime_error("save");
}

void StartOnValues() {
    StartOn(ManyFields(Fields));
    for (std::string &value : RowValue) value.assign(ValueLength, 'x');
}

void SaveUnderANewName(benchmark::State &state) {
    StartOnValues();
    for ([[maybe_unused]] auto turn : state) {
        SaveIn("NEW.RPX");
        state.PauseTiming();
        DeleteFile(Folder() + "NEW.RPX");
        state.ResumeTiming();
    }
}

// Until the new version is whole on the disk, the earlier one is kept there as well.
void SaveAgain(benchmark::State &state) {
    StartOnValues();
    SaveIn("AGAIN.RPX");
    for ([[maybe_unused]] auto turn : state) SaveIn("AGAIN.RPX");
}

void CopyTheReport(benchmark::State &state) {
    StartOnValues();
    SaveIn("FROM.RPX");
    for ([[maybe_unused]] auto turn : state) {
        CopyPlainly(Folder() + "FROM.RPX", Folder() + "TO.RPX", Flush::Yes);
        state.PauseTiming();
        DeleteFile(Folder() + "TO.RPX");
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(CopyTheReport)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(SaveUnderANewName)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(SaveAgain)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
