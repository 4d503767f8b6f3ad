// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/test_program.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/machine/machine.h"
#include "storage/database_lifecycle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
/// In memory where the machine has a place for it: how fast a disk is shall not matter to a test.
QString Folder_Template()
{
    const QString memory = u"/dev/shm"_s;
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u"/zelqor-test-XXXXXX"_s;
}

void Forget_Everything()
{
    Database_Engine::Let_Go();
    App() = {};
    Config() = {};
    Language() = {};
    Clear_Pending();
    Machine::Set_Date_Separator(u'-');
    Database_Engine::Set_Date_Separator(u'-');
}

void Prepare()
{
    GetConfigInfo(Database_Steps_For_Start());
    Language().Load(Pack_Folder(), u"CHINESE"_s);
    App().Date_Sep = u"-"_s;
    App().Date_Delim = u"#"_s;
    App().Com_Name = u"Zelqor"_s;
    App().Com_Icon = u"ZELQOR.ICO"_s;
    App().Curr_User = u"Zelqor"_s;
    Add_Folder(u"000"_s, u"回收站"_s, 999);
}
} // namespace

Test_Program::Test_Program(Start start) : m_folder(Folder_Template())
{
    Forget_Everything();
    App().App_Path = m_folder.path() + u'/';
    Files::Guard(App().App_Path);
    Machine::Fix_Clock(Now());
    if (start == Start::Prepared)
        Prepare();
}

Test_Program::~Test_Program()
{
    Forget_Everything();
    Machine::Fix_Clock({});
}

QDateTime Test_Program::Now()
{
    return {QDate(2026, 3, 5), QTime(10, 20, 30)};
}

QString Test_Program::Path(const QString &name) const
{
    return m_folder.filePath(name);
}

QByteArray Test_Program::Bytes(const QString &name) const
{
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Test_Program::Write(const QString &name, const QByteArray &bytes) const
{
    const QString path = Path(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

QStringList Test_Program::Logged() const
{
    QStringList sources;
    const QString label = u"     Source = "_s;
    for (const QString &line : QString::fromUtf8(Bytes(u"Error.log"_s)).split(u"\r\n"_s)) {
        if (line.startsWith(label))
            sources << line.mid(label.size());
    }
    return sources;
}

QString Pack_Folder()
{
    return QStringLiteral(ZELQOR_PACKS);
}

void Sql_Run(const QString &statement)
{
    Run_Statement(statement, App().Conn_Str);
}

QList<QStringList> Sql_Rows(const QString &statement)
{
    Recordset rows;
    rows.Open(statement, App().Conn_Str);
    QList<QStringList> table;
    for (; !rows.Eof(); rows.MoveNext()) {
        QStringList row;
        for (int i = 0; i < rows.Field_Count(); ++i)
            row << rows[i].Text();
        table << row;
    }
    return table;
}

QString Sql_Cell(const QString &statement)
{
    return Sql_Rows(statement).value(0).value(0);
}

void Add_Folder(const QString &id, const QString &name, int order, const QString &password)
{
    const int number = order < 0 ? id.right(3).toInt() : order;
    Recordset row;
    row.LockType = Lock_Type::Optimistic;
    row.Open(u"Select top 1 * From Cate_Info"_s, App().Conn_Str);
    row.AddNew();
    row[u"Cate_ID"_s].Set(id);
    row[u"Cate_Name"_s].Set(name);
    row[u"Order_Id"_s].Set(number);
    row[u"Cate_Exp"_s].Set(u"1"_s);
    row[u"Icon_Name"_s].Set(u"home.ico"_s);
    row[u"Cate_pass"_s].Set(password);
    row.Update();
}

void Add_Document(const QString &id, const QString &folder, const QString &title, const QString &more)
{
    Sql_Run(u"insert into Code_Info(Code_ID,Cate_ID,Code_Title) values ('%1','%2','%3')"_s.arg(id, folder, title));
    if (!more.isEmpty())
        Sql_Run(u"update Code_Info set %1 where Code_ID='%2'"_s.arg(more, id));
}
