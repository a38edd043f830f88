#include "ratio_table.h"

#include <algorithm>
#include <cstdio>

namespace plum {

bool RatioTable::ReportContext(const Context &)
{
    return true;
}

void RatioTable::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        // With repetitions, the median alone.
        const bool counts
            = run.run_type == Run::RT_Aggregate ? run.aggregate_name == "median" : run.repetitions <= 1;
        if (!counts || run.error_occurred)
            continue;
        const std::string name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        const std::string place = name.substr(0, slash);
        if (std::ranges::find(m_cases, place) == m_cases.end())
            m_cases.push_back(place);
        // What the processor worked, so that other programs of the machine count less; real time where
        // another process does part of the work.
        const bool isReal = run.run_name.time_type.find("real_time") != std::string::npos;
        const double time = isReal ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        m_times[place][name.substr(slash + 1)] = time / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e3;
        std::fprintf(stderr, "%s\n", name.c_str());
    }
}

// The ratio is that of each further engine to the first one.
void RatioTable::Finalize()
{
    std::printf("| Case |");
    for (const std::string &engine : m_engines)
        std::printf(" %s ms |", engine.c_str());
    std::printf("\n|---|");
    for (std::size_t i = 0; i < m_engines.size(); ++i)
        std::printf("---|");
    std::printf("\n");
    for (const std::string &place : m_cases) {
        std::printf("| %s |", place.c_str());
        const std::map<std::string, double> &times = m_times[place];
        const auto own = times.find(m_engines.front());
        for (const std::string &engine : m_engines) {
            const auto time = times.find(engine);
            if (time == times.end())
                std::printf(" - |");
            else if (time == own || own == times.end())
                std::printf(" %.3g |", time->second);
            else
                std::printf(" %.3g (%.3gx) |", time->second, time->second / own->second);
        }
        std::printf("\n");
    }
}

} // namespace plum
