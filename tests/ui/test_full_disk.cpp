// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "documents/document_store.h"
#include "support/no_shell.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>
#include <QTextEdit>
#include <optional>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr const char *Small_Disk = "/dev/shm"; // where a test has its program directory
constexpr const char *Disk_Options = "size=8m";
constexpr qint64 Disk_Bytes = 8 << 20;

bool Write_Text(const char *path, const QByteArray &text)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
}

/// A disk of three megabytes that only this process sees. @returns false where the machine allows none
bool Mount_Small_Disk()
{
    const QByteArray user = QByteArray::number(getuid()), group = QByteArray::number(getgid());
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return false;
        Write_Text("/proc/self/setgroups", "deny");
        if (!Write_Text("/proc/self/uid_map", "0 " + user + " 1") ||
            !Write_Text("/proc/self/gid_map", "0 " + group + " 1"))
            return false;
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", Small_Disk, "tmpfs", 0, Disk_Options) == 0;
}

/// Fills the disk but for some bytes.
bool Leave_Room(QFile &ballast, qint64 room)
{
    if (!ballast.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray block(4096, 'x');
    while (ballast.size() < Disk_Bytes && ballast.write(block) == block.size()) {
    }
    return ballast.size() < Disk_Bytes && ballast.resize(std::max<qint64>(ballast.size() - room, 0));
}

/// Text that no coder makes small.
QString Noise(int length)
{
    QRandomGenerator random(7);
    QString text(length, u' ');
    for (QChar &sign : text)
        sign = QChar(static_cast<char16_t>(random.bounded(0x4e00, 0x9fa5)));
    return text;
}
} // namespace

/// A save on a disk without room says so, keeps the text, the mark and the tab, and leaves the stored document whole;
/// with room again the same tab is saved.
class Test_Full_Disk : public QObject
{
    Q_OBJECT

public:
    bool mounted = false;

private slots:
    void initTestCase()
    {
        if (!mounted)
            QSKIP("this machine lets no process mount a disk of its own");
    }

    /// From no room at all upwards, so that each step of the save is once the one that finds none.
    void A_Save_Without_Room_Loses_Nothing()
    {
        Test_Program program;
        Add_Folder(u"001"_s, u"Work"_s);
        Test_Form form(u"first"_s);
        QVERIFY(AddCodeContent_Ex_Standard(form, u"0"_s));
        No_Shell shell;
        Document_Tabs tabs(shell, nullptr);
        tabs.Add_List(new QWidget, u"List"_s);
        tabs.Open(form.code_id);
        auto &content = *tabs.Current_Document()->findChild<QTextEdit *>(u"Txt_Content"_s);
        const QString text = Noise(60'000);
        content.setPlainText(text);
        content.document()->setModified(true);

        constexpr int Step = 150'000; // bytes
        int failures = 0;
        for (qint64 room = 0; tabs.Current_Document()->Is_Changed(); room += Step) {
            QVERIFY(room < Disk_Bytes);
            QDir(program.Path(u"data/temp"_s)).removeRecursively(); // what a failed save left there
            QFile ballast(program.Path(u"ballast"_s));
            QVERIFY(Leave_Room(ballast, room));
            program.prompts.Expect(Pack_Text("Mod_DataBase", "_SaveError"), u"ok"_s);
            if (!tabs.Save_Current()) {
                ++failures;
                QCOMPARE(program.prompts.Problems().join(u';'), QString());
                QVERIFY(tabs.Current_Document()->Is_Changed());
                QVERIFY(tabs.tabText(1).endsWith(u'*'));
                QCOMPARE(content.toPlainText(), text);
                QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), u"first"_s);
            }
            QVERIFY(ballast.remove());
        }
        program.prompts.Take(QString(), QString()); // the save that went well
        QVERIFY(failures > 3);
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), text);
    }
};

int main(int argc, char **argv)
{
    Test_Full_Disk test;
    test.mounted = Mount_Small_Disk(); // before the toolkit starts threads
    const QApplication application(argc, argv);
    return QTest::qExec(&test, argc, argv);
}
#include "test_full_disk.moc"
