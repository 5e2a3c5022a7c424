// What heavy work costs, and how that grows with its size up to the 16-bit limits.
#include "operations.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

void Measure(benchmark::State &state, const Operation &operation) {
    for ([[maybe_unused]] auto turn : state) {
        state.PauseTiming();
        operation.Prepare(static_cast<int>(state.range(0)));
        state.ResumeTiming();
        operation.Run();
    }
}

// Each run stands alone: the table takes the least of several, which other work on the machine disturbs least.
const bool Registered = [] {
    for (const Operation &operation : Operations()) {
        const auto measure = [&operation](benchmark::State &state) { Measure(state, operation); };
        benchmark::RegisterBenchmark(("growth: " + std::string(operation.Name)).c_str(), measure)
            ->Arg(4000)
            ->Arg(8000)
            ->Arg(16000)
            ->Arg(32000)
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

} // namespace
