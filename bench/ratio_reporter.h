// RatioReporter: the console report that also keeps each benchmark's time, for printed ratios.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

// Keeps each benchmark's time per iteration so the ratio can be printed after the run.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            times[run.benchmark_name()] = run.GetAdjustedCPUTime();
    }
    std::map<std::string, double> times;
};
