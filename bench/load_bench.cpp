// What it costs to load a template and a report, and how that grows with their size.
#include "workplace.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int FieldsPerSection = 40;

// Sections of forty fields each, every field with a title of its own.
std::string Fields(long count) {
    std::string text;
    for (long i = 0; i < count; ++i) {
        if (i % FieldsPerSection == 0)
            text += "1,-1,\"\",\"Section " + std::to_string(i / FieldsPerSection) + "\",\"\",\"\"\r\n";
        text += "2,200,\"TEXT\",\"Field " + std::to_string(i) + "\",\"\",\"\"\r\n";
    }
    return text;
}

// Two records for each of the fields, one after the other.
std::string Records(long fields) {
    std::string text = "0,\"QuintaveV2\",\"BENCH.FTF\"\r\n";
    for (int instance = 0; instance < 2; ++instance)
        for (long i = 0; i < fields; ++i) {
            if (i % FieldsPerSection == 0)
                text += "1,-1,\"Section " + std::to_string(i / FieldsPerSection) + "\",\"\"\r\n";
            text += "2,1,\"Field " + std::to_string(i) + "\",\"value number " + std::to_string(i) + "\"\r\n";
        }
    return text;
}

void LoadTemplate(benchmark::State &state) {
    const std::string fields = Fields(state.range(0));
    for ([[maybe_unused]] auto turn : state) StartOn(fields);
}

// Records into fields: 16,000 fields and 32,000 records, and half of both.
void LoadReport(benchmark::State &state) {
    const std::string fields = Fields(state.range(0));
    WriteIn("BENCH.RPX", Records(state.range(0)));
    for ([[maybe_unused]] auto turn : state) {
        state.PauseTiming();
        StartOn(fields);
        state.ResumeTiming();
        LoadReportIn("BENCH.RPX");
    }
}

} // namespace

BENCHMARK(LoadTemplate)->Arg(8000)->Arg(16000)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadReport)->Arg(8000)->Arg(16000)->Unit(benchmark::kMillisecond);
