// What it costs to keep unsaved entries, which the user must not feel: a template of 32,000 fields with a value in
// each, and a group of ten megabytes.
#include "workplace.h"

#include "form/main_window.h"
#include "main/recovery.h"
#include "main/recovery_entries.h"
#include "model/field_model.h"
#include "model/recovery_file.h"
#include "model/store.h"
#include "platform/console/progress.h"
#include "platform/files.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace {

constexpr int Rows = 32000;
constexpr long long Interval = 10000000; // longer than any share of the time that is kept free

std::string FieldsOf(int count) {
    std::string records;
    for (int row = 1; row <= count; ++row)
        records += "1,60,\"TEXT\",\"Field number " + std::to_string(row) + "\",\"\",\"\"\r\n";
    return records;
}

void FillRows() {
    for (Integer row = 0; row < NumRows; ++row)
        RowValue[row] = "A value of common length, number " + std::to_string(row);
    DataChanged = True;
}

// What was kept, by its size; the next start is not to offer it.
void Remove(long least) {
    const std::string path = Folder() + std::string(RecoveryName);
    if (FileSize(path) < least) throw std::runtime_error("nothing was kept");
    DeleteFile(path);
}

// One tick of the timer after a change.
void Keep(Integer &turn) {
    Progress.Clock += Interval;
    RowValue[0] = std::to_string(turn = static_cast<Integer>(turn % 1000 + 1));
    UserTicks(Quintave.RecoveryTimer);
}

void KeepValues(benchmark::State &state) {
    StartOn(FieldsOf(Rows));
    FillRows();
    Integer turn = 0;
    for ([[maybe_unused]] auto run : state) Keep(turn);
    Remove(Rows * 30L);
}

// Most ticks find that nothing has changed.
void LookAtUnchangedValues(benchmark::State &state) {
    StartOn(FieldsOf(Rows));
    FillRows();
    Integer turn = 0;
    Keep(turn);
    for ([[maybe_unused]] auto run : state) {
        Progress.Clock += Interval;
        UserTicks(Quintave.RecoveryTimer);
    }
    Remove(Rows * 30L);
}

void KeepTenMegabytes(benchmark::State &state) {
    constexpr std::size_t Occurrences = 20000;
    constexpr std::size_t Length = 500;
    StartOn(FieldsOf(10) + "1,2,\"GROUP START\",\"Samples\",\"\",\"\"\r\n2,500,\"TEXT\",\"Note\",\"\",\"\"\r\n1,0,"
                           "\"GROUP END\",\"\",\"\",\"\"\r\n");
    ReplaceStore(11, std::string(Occurrences * Length, 'x'));
    FillRows();
    Integer turn = 0;
    for ([[maybe_unused]] auto run : state) Keep(turn);
    Remove(10000000);
}

} // namespace

BENCHMARK(KeepValues)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LookAtUnchangedValues)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(KeepTenMegabytes)->Unit(benchmark::kMillisecond)->UseRealTime();
