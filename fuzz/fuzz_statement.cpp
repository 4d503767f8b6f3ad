// SPDX-License-Identifier: GPL-3.0-or-later
// room: database
//
// Any text as a statement: it runs or is refused with an error of the engine, and what the translator makes is always
// text that SQLite accepts.
#include "platform/database/database.h"
#include "platform/database/engine_error.h"
#include "platform/database/recordset.h"

#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace
{
const QString &Connection_String()
{
    static const QTemporaryDir folder(u"/dev/shm/zelqor-fuzz-XXXXXX"_s);
    static const QString connection = [] {
        const QString string = Database_Engine::File_Connection_String(folder.filePath(u"fuzz.db"_s));
        Database_Engine::Create_File(string);
        Run_Statement(u"create table a (i AutoIncrement PRIMARY KEY, t Text(20), n Long, d DateTime, m memo)"_s,
                      string);
        Run_Statement(u"insert into a(t,n,d,m) values ('text',1,#2024-01-02#,'memo')"_s, string);
        return string;
    }();
    return connection;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr size_t longest = 2000;
    if (size > longest) {
        return 0;
    }
    const QString statement = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const bool changesTables = statement.contains(u"create"_s, Qt::CaseInsensitive) ||
                               statement.contains(u"alter"_s, Qt::CaseInsensitive) ||
                               statement.contains(u"drop"_s, Qt::CaseInsensitive);
    if (changesTables || statement.contains(u"insert"_s, Qt::CaseInsensitive)) {
        return 0; // the file is to stay as it is
    }
    try {
        Recordset rows;
        rows.LockType = Lock_Type::Optimistic;
        rows.Open(statement, Connection_String());
        for (int i = 0; rows.Is_Open() && !rows.Eof() && i < 10; ++i) {
            rows.MoveNext();
        }
    } catch (const Run_Time_Error &error) {
        // The engine's own words name the rule; the database's own complaint means that bad SQL was made.
        if (error.description.contains(u"near \""_s) || error.description.contains(u"no such"_s)) {
            std::fprintf(stderr, "%s\n%s\n", qPrintable(statement), error.what());
            std::abort();
        }
    }
    return 0;
}
