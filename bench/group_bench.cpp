// What it costs to insert an occurrence in front of 10,000 others, beside copying as many bytes between two files.
#include "workplace.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "groups/table_commands.h"
#include "model/field_model.h"
#include "model/work_files.h"
#include "platform/files.h"
#include "support/user.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace {

constexpr Integer Occurrences = 10000;
constexpr Integer OccurrenceBytes = 500;

std::string Store() {
    return GroupStoreHeader(OccurrenceBytes, Occurrences) +
           std::string(static_cast<std::size_t>(Occurrences) * OccurrenceBytes, 'x');
}

void InsertAtTheFront(benchmark::State &state) {
    StartOn("1,2,\"GROUP START\",\"Samples\",\"\",\"\"\r\n2,500,\"TEXT\",\"Note\",\"\",\"\"\r\n1,0,\"GROUP "
            "END\",\"\",\"\",\"\"\r\n");
    for ([[maybe_unused]] auto turn : state) {
        state.PauseTiming();
        WriteIn(GroupFileName(1), Store());
        OpenGroup(1);
        FldChange_Click(Top);
        state.ResumeTiming();
        TblFldInsert_Click();
        state.PauseTiming();
        if (GroupOccurrenceCount != Occurrences + 1) throw std::runtime_error("insert");
        GrpExit_Click();
        state.ResumeTiming();
    }
}

void CopyTheSameBytes(benchmark::State &state) {
    WriteIn("from.bin", Store());
    for ([[maybe_unused]] auto turn : state) CopyPlainly(Folder() + "from.bin", Folder() + "to.bin", Flush::No);
}

} // namespace

BENCHMARK(CopyTheSameBytes)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(InsertAtTheFront)->Unit(benchmark::kMillisecond)->Iterations(5);
