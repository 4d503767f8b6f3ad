// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/odbc_text.h"
#include "platform/database/sql_translator.h"
#include "platform/database/sql_values.h"

#include <functional>
#include <memory>

/// A kept connection to a server through the platform's ODBC manager, in Unicode.
class Odbc_Link
{
public:
    /// One run of a text of statements, with the results of each.
    class Run;

    Odbc_Link();
    ~Odbc_Link();
    Odbc_Link(const Odbc_Link &) = delete;
    Odbc_Link &operator=(const Odbc_Link &) = delete;

    [[nodiscard]] static QStringList Installed_Drivers();
    /// @throws Run_Time_Error.
    void Connect(const Odbc_Text::Parts &parts);
    /// The system on the other side is one of the kind that the server flavour speaks with.
    [[nodiscard]] bool Is_Postgres() const;
    /// Something failed that a connection does not outlive.
    [[nodiscard]] bool Is_Lost() const { return m_lost; }

    /// How many texts went over all links of the process so far, one round trip each.
    static qint64 Round_Trips();

private:
    friend class Run;
    void *m_environment = nullptr;
    void *m_connection = nullptr;
    bool m_connected = false;
    bool m_lost = false;
};

class Odbc_Link::Run
{
public:
    /// Runs statements in one round trip. While it waits, a watch of this thread is asked whether it is to go on, and
    /// the patience of this thread is told how long it takes (see database.h).
    /// @throws Run_Time_Error of the first statement that fails; those behind it do not run.
    Run(std::shared_ptr<Odbc_Link> link, const QString &statements);
    ~Run();
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    /// Goes to the result of the next statement. @throws Run_Time_Error
    void Next_Result();
    [[nodiscard]] int Columns() const;
    [[nodiscard]] qint64 Changed_Rows() const;
    bool Fetch();
    /// @param column  counted from 0; to be read in their order
    Cell Read(size_t column, Value_Type type);
    QString Text(size_t column) { return Sql_Value::To_Text(Read(column, Value_Type::Text)); }

private:
    void Execute();
    void Check(int code);

    std::shared_ptr<Odbc_Link> m_link;
    QString m_text;
    void *m_statement = nullptr;
    int m_code = 0;
};
