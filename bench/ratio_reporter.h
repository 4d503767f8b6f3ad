// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <benchmark/benchmark.h>

/// Prints each time as a multiple of the floor that was measured before it, the last one whose name ends in "_Floor".
class Ratio_Reporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            const double time = run.GetAdjustedRealTime();
            if (run.benchmark_name().ends_with("_Floor"))
                m_floor = time;
            else if (m_floor > 0)
                GetOutputStream() << run.benchmark_name() << " / floor = " << time / m_floor << "\n";
        }
    }

private:
    double m_floor = 0;
};
