// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <benchmark/benchmark.h>
#include <map>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <vector>

/// One claim: a benchmark costs at most so many times its floor, which is measured in the same program.
struct Floor_Claim {
    const char *name;
    const char *floor;
    double most;
};

/// Prints each claim with what was measured, behind the benchmarks.
class Floor_Reporter : public benchmark::ConsoleReporter
{
public:
    explicit Floor_Reporter(std::vector<Floor_Claim> claims) : m_claims(std::move(claims)) {}

    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            m_times[run.run_name.function_name] = run.GetAdjustedRealTime();
    }
    void Finalize() override
    {
        for (const Floor_Claim &claim : m_claims) {
            if (m_times.count(claim.name) == 0 || m_times.count(claim.floor) == 0)
                continue;
            const double ratio = m_times[claim.name] / m_times[claim.floor];
            GetOutputStream() << claim.name << " / " << claim.floor << " = " << ratio << " (at most " << claim.most
                              << ")" << (ratio > claim.most ? "  MISSED" : "") << "\n";
        }
    }

private:
    std::vector<Floor_Claim> m_claims;
    std::map<std::string, double> m_times;
};

/// A database straight through SQLite.
class Raw_Database
{
public:
    explicit Raw_Database(const QString &file)
    {
        sqlite3_open_v2(file.toUtf8().constData(), &m_handle, SQLITE_OPEN_READONLY, nullptr);
    }
    ~Raw_Database()
    {
        for (sqlite3_stmt *statement : m_statements)
            sqlite3_finalize(statement);
        sqlite3_close(m_handle);
    }
    Raw_Database(const Raw_Database &) = delete;
    Raw_Database &operator=(const Raw_Database &) = delete;

    sqlite3_stmt *Prepare(const std::string &sql)
    {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_handle, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_handle));
        m_statements.push_back(statement);
        return statement;
    }
    /// Reads every column of every row and goes back to the start. @returns bytes read
    static qint64 Read_All(sqlite3_stmt *statement)
    {
        qint64 bytes = 0;
        const int columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int i = 0; i < columns; ++i) {
                benchmark::DoNotOptimize(sqlite3_column_text(statement, i));
                bytes += sqlite3_column_bytes(statement, i);
            }
        }
        sqlite3_reset(statement);
        return bytes;
    }

private:
    sqlite3 *m_handle = nullptr;
    std::vector<sqlite3_stmt *> m_statements;
};
