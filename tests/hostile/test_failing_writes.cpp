// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "documents/document_deletion.h"
#include "documents/document_store.h"
#include "documents/drafts.h"
#include "exchange/document_export.h"
#include "hostile/failing_files.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/errors/run_time_error.h"
#include "platform/profile/profile.h"
#include "storage/database_lifecycle.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "tree/folder_moving.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <cerrno>
#include <functional>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
/// One program and what is written in it, first as it was, then as it is to be.
struct Desk {
    Desk()
    {
        Sql_Run(u"create table Gone (Bytes memo)"_s);
        Sql_Run(u"insert into Gone values ('%1')"_s.arg(QString(Room, u'x')));
        Sql_Run(u"drop table Gone"_s);
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Folder(u"001001"_s, u"Below"_s);
        Add_Folder(u"002"_s, u"Home"_s);
        form.memo->setPlainText(u"old memo"_s);
        AddCodeContent_Ex_Standard(form, u"0"_s);
        Write_Draft();
        Back_Up();
        Profile::Write(program.Path(u"Config.ini"_s), u"Col"_s, u"KEYS"_s, u"old,"_s);
        program.Write(u"new.ini"_s, "[new]");
        program.Write(u"page.htm"_s, "the old page");
        form.content->setPlainText(u"new text "_s.repeated(4000));
        form.memo->setPlainText(u"new memo"_s);
    }

    void Write_Draft() { draft.Write(form, true, {}); }
    [[nodiscard]] QString In_Draft() const
    {
        const QDir folder(program.Path(u"data/Zelqor.db-drafts"_s));
        const QString name = folder.entryList({u"*.draft"_s}, QDir::Files).value(0);
        const QByteArray bytes = program.Bytes(u"data/Zelqor.db-drafts/"_s + name);
        const bool whole = bytes.contains("create_date") && bytes.contains("title"); // the first and the last keys
        return u"%1 %2"_s.arg(whole).arg(bytes.size());
    }
    [[nodiscard]] static QString In_Database()
    {
        QString rows;
        for (const QStringList &row :
             Sql_Rows(u"select Code_Title,Code_Content,Code_Memo,Code_UpdateNum,Code_Content_IO,Code_Memo_IO "
                      "from Code_Info order by Code_Title"_s))
            rows += row.join(u'|') + u'\n';
        return rows;
    }
    [[nodiscard]] QString In_Backup() const
    {
        const QString file = program.Path(u"backup/zelqor_2026-03-05.db"_s);
        Recordset rows;
        rows.Open(u"select Code_Content from Code_Info order by Code_Content"_s, File_Conn_Str(file));
        QString all;
        for (; !rows.Eof(); rows.MoveNext())
            all += rows[0].Text().left(8) + u'|';
        Database_Engine::Let_Go(File_Conn_Str(file));
        return all;
    }

    [[nodiscard]] static QString In_Folders()
    {
        QString rows;
        for (const QStringList &row : Sql_Rows(u"select Cate_ID,Cate_Name from Cate_Info order by Cate_ID"_s) +
                                          Sql_Rows(u"select Cate_ID,Code_Title from Code_Info order by Code_Title"_s))
            rows += row.join(u'|') + u'\n';
        return rows;
    }

    static constexpr qint64 Room = 500'000; ///< bytes that a compaction gives back
    Test_Program program;
    Test_Form form{u"old text"_s};
    Draft draft;
};

bool Throws(const std::function<void()> &body)
{
    try {
        body();
    } catch (const Run_Time_Error &) {
        return true;
    }
    return false;
}

struct Action {
    const char *name;
    bool (*run)(Desk &);      ///< @returns whether a failure was told
    QString (*state)(Desk &); ///< of what is written
    bool tells_by_log = false;
};

const Action Actions[] = {
    {"a setting",
     [](Desk &desk) {
         return Throws([&] { Profile::Write(desk.program.Path(u"Config.ini"_s), u"Col"_s, u"KEYS"_s, u"new,"_s); });
     },
     [](Desk &desk) {
         return QString::fromUtf8(desk.program.Bytes(u"Config.ini"_s));
     }},
    {"a draft", [](Desk &desk) { return Throws([&] { desk.Write_Draft(); }); },
     [](Desk &desk) {
         return desk.In_Draft();
     }},
    {"a save", [](Desk &desk) { return !AddCodeContent_Ex_Standard(desk.form, desk.form.code_id); },
     [](Desk &) {
         return Desk::In_Database();
     }},
    {"an import",
     [](Desk &desk) {
         return AddCodeContent_File_Ex(desk.program.Path(u"new.ini"_s), u"001"_s, u"0"_s, u"new"_s, u"ini"_s, false)
             .isEmpty();
     },
     [](Desk &) {
         return Desk::In_Database();
     }},
    {"a compaction", [](Desk &) { return Throws([] { Compact_Database(Database_Path(), {}); }); },
     [](Desk &) {
         return Desk::In_Database() + (QFileInfo(Database_Path()).size() > Desk::Room ? u"wide"_s : u"narrow"_s);
     }},
    {"a move of a folder", [](Desk &) { return Mod_Cate_Action(u"001"_s, u"002"_s).isEmpty(); },
     [](Desk &) {
         return Desk::In_Database() + Desk::In_Folders();
     }},
    {"a deletion", [](Desk &desk) { return !DelCode_Ex(desk.form.code_id); },
     [](Desk &) {
         return Desk::In_Database() + Desk::In_Folders();
     }},
    {"a backup", [](Desk &) { return !Resume_Next(Back_Up); }, [](Desk &desk) { return desk.In_Backup(); }, true},
};
} // namespace

/// Whatever write of an action fails, by a full disk or a bad one, once or from then on: what stood stands whole, or
/// what was to be written does, and a failure is told. The same holds for a kill before any of the writes.
class Test_Failing_Writes : public QObject
{
    Q_OBJECT

private slots:
    void Nothing_Is_Lost_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("error");
        QTest::addColumn<bool>("on");
        for (int action = 0; action < int(std::size(Actions)); ++action) {
            QTest::addRow("%s, disk full", Actions[action].name) << action << ENOSPC << false;
            if (!Actions[action].tells_by_log) // which finds no room either
                QTest::addRow("%s, disk full from then on", Actions[action].name) << action << ENOSPC << true;
            QTest::addRow("%s, disk bad", Actions[action].name) << action << EIO << false;
        }
    }
    void Nothing_Is_Lost()
    {
        QFETCH(int, action);
        QFETCH(int, error);
        QFETCH(bool, on);
        const Action &tried = Actions[action];
        const auto fail = [&](Desk &desk, int at) {
            Failing_Files_Arm(desk.program.Path(u""_s).toUtf8().constData(), at, error, on);
            const bool told = tried.run(desk);
            Failing_Files_Disarm();
            return Outcome{QString::fromUtf8(Failing_Files_Met()), told};
        };
        Try_Each_Call(tried, fail);
    }

    void A_Kill_Leaves_All_Or_Nothing_data()
    {
        QTest::addColumn<int>("action");
        for (int action = 0; action < int(std::size(Actions)); ++action)
            QTest::newRow(Actions[action].name) << action;
    }
    void A_Kill_Leaves_All_Or_Nothing()
    {
        QFETCH(int, action);
        const Action &tried = Actions[action];
        const auto kill = [&](Desk &desk, int at) {
            const pid_t child = fork();
            if (child == 0) {
                Failing_Files_Arm(desk.program.Path(u""_s).toUtf8().constData(), at, Failing_Files_Kill);
                tried.run(desk);
                _exit(0);
            }
            int end = 0;
            waitpid(child, &end, 0);
            return Outcome{WIFSIGNALED(end) ? u"kill at call %1"_s.arg(at) : QString(), true};
        };
        Try_Each_Call(tried, kill);
    }

private:
    struct Outcome {
        QString call; ///< what did not happen, "" when there was no such call
        bool told = false;
    };

    /// Lets `harm` meet the first call of an action, then the second, until there are no more.
    static void Try_Each_Call(const Action &tried, const std::function<Outcome(Desk &, int at)> &harm)
    {
        int met = 0;
        QString written;
        QList<std::pair<QString, QString>> seen; ///< the call, and what stood behind it
        std::optional<Desk> desk;
        for (int at = 1;; ++at) {
            if (!desk) {
                desk.emplace();
                if (qstrcmp(tried.name, "a backup") == 0)
                    AddCodeContent_Ex_Standard(desk->form, desk->form.code_id);
            }
            const QString old = tried.state(*desk);
            Database_Engine::Let_Go();
            const Outcome outcome = harm(*desk, at);
            Database_Engine::Let_Go();
            written = tried.state(*desk);
            if (outcome.call.isEmpty())
                break;
            ++met;
            QVERIFY2(outcome.told || written != old, qPrintable(u"not told: "_s + outcome.call));
            if (written == old)
                continue;
            seen.append({outcome.call, written});
            desk.reset();
        }
        for (const auto &[call, state] : seen)
            QVERIFY2(state == written, qPrintable(u"neither old nor new: "_s + call));
        QVERIFY(met > 3);
    }
};

QTEST_MAIN(Test_Failing_Writes)
#include "test_failing_writes.moc"
