// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/error_log.h"
#include "core/process_state.h"
#include "core/runtime_files.h"
#include "documents/document_store.h"
#include "documents/drafts.h"
#include "documents/outside_file.h"
#include "platform/desktop/single_instance.h"
#include "platform/errors/run_time_error.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "storage/database_lifecycle.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "tree/stored_icons.h"

#include <QCborMap>
#include <QCborValue>
#include <QDir>
#include <QDirIterator>
#include <QTest>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
/// What somebody else has prepared: a program's directory, and the folder of another person that it points to.
struct Trap_Set {
    Trap_Set()
    {
        Add_Folder(u"001"_s, u"Work"_s);
        Write(u"kept.ini"_s, "[mine]");
        QDir(victim.path()).mkpath(u"deep/temp"_s);
        Write(u"deep/temp/kept.txt"_s, "mine");
    }
    void Write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(victim.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write");
    }
    /// Puts a link in the program's directory, in the place of what stands there.
    void Link(const QString &name, const QString &target) const
    {
        const QString link = program.Path(name);
        QDir().mkpath(QFileInfo(link).path());
        if (QFileInfo(link).isDir())
            QDir(link).removeRecursively();
        QFile::remove(link);
        if (!QFile::link(victim.filePath(target), link))
            qFatal("cannot link");
    }
    /// Every name, right and byte of the other person's folder.
    [[nodiscard]] QString Victim() const
    {
        QStringList all;
        QDirIterator entries(victim.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            QFile file(entries.next());
            const bool isFile = entries.fileInfo().isFile() && file.open(QIODevice::ReadOnly);
            all << entries.filePath() + QString::number(file.permissions(), 16) +
                       QString::fromUtf8(isFile ? file.readAll() : QByteArray());
        }
        all.sort();
        return all.join(u'\n');
    }

    Test_Program program;
    QTemporaryDir victim;
};

void Plant_Copy(const Trap_Set &set, const QString &id)
{
    const QString copy = u"data/Zelqor.db-drafts/999999-dead_1.copy/"_s;
    const QCborMap record{{u"id"_s, id},         {u"title"_s, u"t"_s},       {u"folder"_s, u"001"_s},
                          {u"type"_s, u"INI"_s}, {u"file"_s, u"kept.ini"_s}, {u"digest"_s, QByteArray("x")}};
    set.program.Write(copy + u"record.cbor"_s, record.toCborValue().toCbor());
    set.Link(copy + u"kept.ini"_s, u"kept.ini"_s);
}

struct Row {
    const char *name;
    void (*act)(const Trap_Set &);
};

const Row Rows[] = {
    {"a copy among the drafts that is a link",
     [](const Trap_Set &set) {
         set.Link(u"data/Zelqor.db-drafts/999999-dead_1.copy"_s, u"deep"_s);
         Outside_File::Take_Back_Left();
     }},
    {"a link in a copy that is removed",
     [](const Trap_Set &set) {
         set.Link(u"data/Zelqor.db-drafts/999999-dead_1.copy/x"_s, u"deep"_s);
         Outside_File::Take_Back_Left();
         QVERIFY(!QFileInfo::exists(set.program.Path(u"data/Zelqor.db-drafts/999999-dead_1.copy"_s)));
     }},
    {"the drafts' folder",
     [](const Trap_Set &set) {
         set.Link(u"data/Zelqor.db-drafts"_s, u"deep"_s);
         QVERIFY_THROWS_EXCEPTION(Run_Time_Error, Draft().Write(Test_Form(u"text"_s), false, {}));
         QVERIFY(Left_Drafts().isEmpty());
     }},
    {"a record that names another file",
     [](const Trap_Set &set) {
         set.program.Write(u"a.ini"_s, "[a]");
         const QString id =
             AddCodeContent_File_Ex(set.program.Path(u"a.ini"_s), u"001"_s, u"0"_s, u"t"_s, u"ini"_s, false);
         Plant_Copy(set, id);
         Outside_File::Take_Back_Left();
         Plant_Copy(set, u"{1}"_s);
         Outside_File::Take_Back_Left();
         QCOMPARE(Sql_Rows(u"select Code_Content from Code_Info"_s), QList<QStringList>{{u"[a]"_s}});
     }},
    {"an icon",
     [](const Trap_Set &set) {
         set.Link(u"data/ico/x.png"_s, u"kept.ini"_s);
         Sql_Run(u"insert into tab_file(file_name,file_type,file_cont) values ('x.png',3,'bytes')"_s);
         Write_Stored_Icons();
     }},
    {"the icons' folder",
     [](const Trap_Set &set) {
         set.Link(u"data/ico"_s, u"deep"_s);
         Sql_Run(u"insert into tab_file(file_name,file_type,file_cont) values ('x.png',3,'bytes')"_s);
         Write_Stored_Icons();
         QVERIFY_THROWS_EXCEPTION(Run_Time_Error, Load_Runtime_File());
     }},
    {"the staging folder",
     [](const Trap_Set &set) {
         set.Link(u"data/temp"_s, u"deep/temp"_s);
         Files::Delete_Files(set.program.Path(u"data/temp"_s), u"*"_s);
         Test_Form form(u"text"_s);
         QVERIFY(!AddCodeContent_Ex_Standard(form, u"0"_s));
     }},
    {"a folder on the way to the staging files",
     [](const Trap_Set &set) {
         QVERIFY(QDir().rename(set.program.Path(u"data"_s), set.program.Path(u"other"_s)));
         set.Link(u"data"_s, u"deep"_s);
         Files::Delete_Files(set.program.Path(u"data/temp"_s), u"*"_s);
     }},
    {"a staging file",
     [](const Trap_Set &set) {
         set.Link(u"data/temp/zip.db"_s, u"kept.ini"_s);
         const QTextDocument text(u"text"_s);
         QVERIFY(AddCodeContent_Ex(text, u"001"_s, u"0"_s, u"t"_s, u"RTF"_s).isEmpty());
     }},
    {"a scratch file",
     [](const Trap_Set &set) {
         const QString path = set.program.Path(u"data/temp/1zip.cc"_s);
         set.Link(u"data/temp/1zip.cc"_s, u"kept.ini"_s);
         QVERIFY_THROWS_EXCEPTION(Run_Time_Error, Files::Write_Bytes(path, "x", Files::Durability::Scratch));
         QFile::remove(path);
         QVERIFY(::link(qPrintable(set.victim.filePath(u"kept.ini"_s)), qPrintable(path)) == 0 || errno == EXDEV);
         Files::Write_Bytes(path, "x", Files::Durability::Scratch);
     }},
    {"a backup",
     [](const Trap_Set &set) {
         set.Link(u"backup/zelqor_2026-03-05.db"_s, u"kept.ini"_s);
         Resume_Next(Back_Up);
         set.Link(u"backup"_s, u"deep"_s);
         Resume_Next(Back_Up);
     }},
    {"the settings and the log",
     [](const Trap_Set &set) {
         set.Link(u"Config.ini"_s, u"kept.ini"_s);
         set.Link(u"Error.log"_s, u"kept.ini"_s);
         WriteIni(u"Col"_s, u"KEYS"_s, u"x"_s);
         QCOMPARE(GetIni(u"mine"_s, u"x"_s), QString());
     }},
    {"a file that the program carries",
     [](const Trap_Set &set) {
         set.Link(u"Lang/CHINESE.INI"_s, u"kept.ini"_s);
         Load_Runtime_File(); // the link goes, as a pack of another length does
         QVERIFY(Files::Is_File(set.program.Path(u"Lang/CHINESE.INI"_s)));
     }},
};
} // namespace

/// Links, pipes and other people's files in the program's folders are neither followed, written nor emptied.
class Test_Links : public QObject
{
    Q_OBJECT

private slots:
    void Nothing_Behind_A_Link_Is_Touched_data()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(Rows)); ++row)
            QTest::newRow(Rows[row].name) << row;
    }
    void Nothing_Behind_A_Link_Is_Touched()
    {
        QFETCH(int, row);
        const Trap_Set set;
        const QString before = set.Victim();
        Rows[row].act(set);
        QCOMPARE(set.Victim(), before);
    }

    void What_Is_New_Is_For_Its_Owner_Only()
    {
        Test_Program program;
        ::umask(0022);
        Add_Folder(u"001"_s, u"Work"_s);
        Test_Form form(u"text"_s);
        QVERIFY(AddCodeContent_Ex_Standard(form, u"0"_s));
        Draft draft;
        draft.Write(form, true, {});
        program.Write(u"a.ini"_s, "[a]");
        QFile::setPermissions(program.Path(u"a.ini"_s), QFile::ReadOwner);
        const QString id = AddCodeContent_File_Ex(program.Path(u"a.ini"_s), u"001"_s, u"0"_s, u"t"_s, u"ini"_s, false);
        const Outside_File copy(id);
        Back_Up();
        Set_Pending(Run_Time_Error(1, u"x"_s));
        Error_Log(u"x"_s);
        QDirIterator entries(program.Path(u""_s), QDir::AllEntries | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        int files = 0;
        while (entries.hasNext()) {
            const QFileInfo entry(entries.next());
            const bool byEngine = entry.fileName().endsWith(u".lock"_s) || entry.fileName() == u"Zelqor.db"_s;
            QVERIFY2(byEngine || !(entry.permissions() & (QFile::ReadGroup | QFile::ReadOther)),
                     qPrintable(entry.filePath()));
            files += entry.isFile();
        }
        QVERIFY(files > 8);
        Files::Write_Bytes(program.Path(u"given.rtf"_s), "x", Files::Durability::Given);
        QVERIFY(QFileInfo(program.Path(u"given.rtf"_s)).permissions() & QFile::ReadOther);
    }

    void What_Is_No_File_Is_Refused_At_Once_data()
    {
        QTest::addColumn<QString>("path");
        for (const char *path : {"pipe", "/dev/zero", "/dev/null", "data", "none", "a\x01/../../x"})
            QTest::newRow(path) << QString::fromUtf8(path);
    }
    void What_Is_No_File_Is_Refused_At_Once()
    {
        QFETCH(QString, path);
        Test_Program program;
        Add_Folder(u"001"_s, u"Work"_s);
        ::mkfifo(qPrintable(program.Path(u"pipe"_s)), 0600);
        const QString file = path.startsWith(u'/') ? path : program.Path(path);
        for (const char *type : {"ini", "rtf", "docx", "pdf", "gif"})
            QCOMPARE(AddCodeContent_File_Ex(file, u"001"_s, u"0"_s, u"t"_s, QString::fromLatin1(type), false),
                     QString());
        QVERIFY_THROWS_EXCEPTION(Run_Time_Error, Files::Read_Bytes(file));
        QCOMPARE(Sql_Cell(u"select count(*) from Code_Info"_s), u"0"_s);
    }

    void A_Place_That_Another_User_Holds_Is_Told()
    {
        if (::geteuid() != 0)
            QSKIP("needs a second user");
        const Test_Program program(Test_Program::Start::Bare);
        const QByteArray folder = program.Path(u""_s).toUtf8();
        ::chmod(folder.constData(), 0755);
        int ready[2], leave[2];
        QVERIFY(::pipe(ready) == 0 && ::pipe(leave) == 0);
        const pid_t other = ::fork();
        if (other == 0) {
            const int place = ::setuid(65534) == 0 ? ::open(folder.constData(), O_RDONLY | O_DIRECTORY) : -1;
            char sign = ::flock(place, LOCK_EX | LOCK_NB) == 0 ? 'y' : 'n';
            (void)!::write(ready[1], &sign, 1);
            (void)!::read(leave[0], &sign, 1);
            ::_exit(0);
        }
        char sign = 'n';
        QVERIFY(::read(ready[0], &sign, 1) == 1 && sign == 'y');
        const Single_Instance second(program.Path(u""_s));
        (void)!::write(leave[1], "x", 1);
        ::waitpid(other, nullptr, 0);
        QVERIFY(!second.Is_Only_One() && second.Is_Held_By_Other_User());
        const Single_Instance first(program.Path(u""_s)), again(program.Path(u""_s));
        QVERIFY(first.Is_Only_One() && !again.Is_Only_One() && !again.Is_Held_By_Other_User());
    }
};

QTEST_MAIN(Test_Links)
#include "test_links.moc"
