#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace plum {

// Prints the measured times as a table: a row for each case, a column for each engine, times in
// milliseconds. A benchmark's name is "case/engine".
class RatioTable final : public benchmark::BenchmarkReporter
{
public:
    explicit RatioTable(std::vector<std::string> engines)
        : m_engines(std::move(engines))
    {
    }

    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

private:
    std::vector<std::string> m_engines;
    std::vector<std::string> m_cases; // in the order of measurement
    std::map<std::string, std::map<std::string, double>> m_times; // by case and engine
};

} // namespace plum
