// What it costs to insert an occurrence in front of 10,000 others, beside copying as many bytes between two files.
#include "workplace.h"

#include "groups/open_group.h"
#include "groups/table_commands.h"
#include "main/main_window.h"
#include "model/field_model.h"
#include "model/work_files.h"
#include "platform/console/user.h"
#include "platform/files.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>
#include <vector>

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

// Plain reads and writes of 64 kB each, which is what a copy of a file costs.
void CopyTheSameBytes(benchmark::State &state) {
    StartOn("1,50,\"TEXT\",\"Title\",\"\",\"\"\r\n");
    WriteIn("from.bin", Store());
    std::vector<char> block(1 << 16);
    const std::string from = Folder() + "from.bin";
    const std::string to = Folder() + "to.bin";
    for ([[maybe_unused]] auto turn : state) {
        const int in = open(from.c_str(), O_RDONLY);
        const int out = open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        for (ssize_t count = read(in, block.data(), block.size()); count > 0;
             count = read(in, block.data(), block.size()))
            if (write(out, block.data(), static_cast<std::size_t>(count)) != count) throw std::runtime_error("copy");
        close(in);
        close(out);
    }
}

} // namespace

BENCHMARK(CopyTheSameBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(InsertAtTheFront)->Unit(benchmark::kMillisecond);
