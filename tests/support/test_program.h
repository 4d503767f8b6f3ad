// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/prompts/prompts.h"

#include <QDateTime>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

/// A program directory made for one test: its own settings, its own database, a fixed clock and scripted prompts.
/// Everything process-wide is as at a start when it is made, and is let go when it ends.
class Test_Program
{
public:
    enum class Start {
        Bare,     ///< an empty directory and nothing read
        Prepared, ///< settings read from a new Config.ini, a new database with the root's facts, the Chinese pack
    };

    explicit Test_Program(Start start = Start::Prepared);
    ~Test_Program();
    Test_Program(const Test_Program &) = delete;
    Test_Program &operator=(const Test_Program &) = delete;

    /// The moment at which the clock stands.
    static QDateTime Now();
    /// Full path of a file below the program directory.
    [[nodiscard]] QString Path(const QString &name) const;
    /// Bytes of a file below the program directory; "" when it is missing.
    [[nodiscard]] QByteArray Bytes(const QString &name) const;
    void Write(const QString &name, const QByteArray &bytes) const;
    /// Sources of the records in Error.log.
    [[nodiscard]] QStringList Logged() const;

    Prompt_Script prompts;

private:
    QTemporaryDir m_folder;
};

/// The folder of the language packs.
QString Pack_Folder();
/// Runs a statement on the database in force.
void Sql_Run(const QString &statement);
/// All rows of a statement, as text.
QList<QStringList> Sql_Rows(const QString &statement);
/// The first cell, "" when there is no row.
QString Sql_Cell(const QString &statement);
/// Adds a folder; its order number is `order`, or that of its id's last segment.
void Add_Folder(const QString &id, const QString &name, int order = -1, const QString &password = {});
/// Adds a document row with plain text only.
void Add_Document(const QString &id, const QString &folder, const QString &title, const QString &more = {});
