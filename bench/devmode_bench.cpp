// Times the framework's merge service against a plain copy of one record, in the same run.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>

#include "entry/devmode.h"
#include "ratio_reporter.h"

namespace {

OEMDEV MakeRecord() {
    OEMDEV rec;
    SetOEMDevDefault(rec);
    std::memset(&rec.payload, 0x5A, sizeof rec.payload);
    return rec;
}

void BM_MemcpyRecord(benchmark::State& state) {
    const OEMDEV in = MakeRecord();
    OEMDEV out;
    OEMDEV* dst = &out;
    const OEMDEV* src = &in;
    for (auto _ : state) {
        // Both addresses escape each round so the copy cannot be dropped or hoisted.
        benchmark::DoNotOptimize(dst);
        benchmark::DoNotOptimize(src);
        std::memcpy(dst, src, sizeof out);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_MemcpyRecord);

void BM_MergeService(benchmark::State& state) {
    const OEMDEV in = MakeRecord();
    OEMDEV out = MakeRecord();
    uint32_t cb = sizeof out;
    const DevModeCall call{true, reinterpret_cast<const uint8_t*>(&in), sizeof in, &out, &cb};
    for (auto _ : state) {
        benchmark::DoNotOptimize(&in);
        benchmark::DoNotOptimize(hrOEMDevMode(OEMDM_MERGE, call));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_MergeService);

}  // namespace

int main(int argc, char** argv) {
    constexpr double kTarget = 3.0;
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double base = reporter.times["BM_MemcpyRecord"];
    const double merge = reporter.times["BM_MergeService"];
    if (base <= 0 || merge <= 0) {
        std::printf("merge/memcpy ratio: not measured\n");
        return 1;
    }
    const double ratio = merge / base;
    std::printf("merge/memcpy ratio: %.2f (target <= %.1f): %s\n", ratio, kTarget,
                ratio <= kTarget ? "ok" : "over target");
    return ratio <= kTarget ? 0 : 1;
}
