// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "platform/database/database.h"
#include "support/test_program.h"
#include "tree/folder_passwords.h"
#include "users/scrambling.h"

#include <QRandomGenerator>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
QString Stored(const QString &id)
{
    return Sql_Cell(u"select Cate_pass from Cate_Info where Cate_ID='%1'"_s.arg(id));
}

QString Random_Password(QRandomGenerator &random)
{
    // Printable ASCII makes quotes, NULs and blanks of the scrambled form; the rest is of every script.
    const char32_t firsts[] = {0x21, 0x21, 0x21, 0xA1, 0x410, 0x4E00, 0x1F600};
    const int sizes[] = {94, 94, 94, 200, 60, 20000, 60};
    QString password;
    for (int length = random.bounded(1, 24); length > 0; --length) {
        const int script = random.bounded(7);
        const char32_t code = firsts[script] + static_cast<char32_t>(random.bounded(sizes[script]));
        password += QString::fromUcs4(&code, 1);
    }
    return password;
}
} // namespace

class Test_Folder_Passwords : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"a"_s);
        Add_Folder(u"001001"_s, u"b"_s);
        Add_Folder(u"002"_s, u"c"_s);
    }
    void cleanup() { m_program.reset(); }

    void Passwords_Are_Set_Changed_And_Cleared()
    {
        QCOMPARE(Set_Folder_Password(u"001001"_s, {}, u"child"_s, false), Password_Change::Done);
        QCOMPARE(Set_Folder_Password(u"001"_s, u"guess"_s, u"p"_s, false), Password_Change::Wrong_Old);
        QCOMPARE(Set_Folder_Password(u"001"_s, {}, u" 密 码 "_s, false), Password_Change::Done);
        QCOMPARE(Unscramble_Text(Stored(u"001"_s)), u"密 码"_s);
        QCOMPARE(Locked_Folders(App().Conn_Str), QSet<QString>({u"001"_s, u"001001"_s}));
        QCOMPARE(Set_Folder_Password(u"001"_s, {}, {}, true), Password_Change::Wrong_Old);
        QCOMPARE(Set_Folder_Password(u"001"_s, u"密 码  "_s, u"both"_s, true), Password_Change::Done);
        QCOMPARE(Unscramble_Text(Stored(u"001001"_s)), u"both"_s);
        QCOMPARE(Stored(u"002"_s), QString());
        QCOMPARE(Set_Folder_Password(u"001"_s, u"both"_s, u"  "_s, true), Password_Change::Done);
        QCOMPARE(Locked_Folders(App().Conn_Str), QSet<QString>());
        QCOMPARE(Set_Folder_Password(u"009"_s, {}, u"p"_s, false), Password_Change::No_Folder);
    }

    void A_Password_That_Would_Read_As_None_Is_Refused()
    {
        const QString blanks = Unscramble_Text(u"   "_s);
        QCOMPARE(Set_Folder_Password(u"001"_s, {}, blanks, false), Password_Change::Not_Storable);
        QCOMPARE(Stored(u"001"_s), QString());
    }

    /// Whatever the scrambled form holds, it comes back, locks the folder and opens with the password alone.
    void Any_Password_Is_Kept()
    {
        QRandomGenerator random(20260305);
        int quotes = 0;
        int nuls = 0;
        int blanks = 0;
        QString last;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (int i = 0; i < 4000; ++i) {
                const QString password = Random_Password(random);
                const QString scrambled = Scramble_Text(password);
                if (scrambled.trimmed().isEmpty())
                    continue;
                quotes += scrambled.contains(u'\'') ? 1 : 0;
                nuls += scrambled.contains(QChar(QChar::Null)) ? 1 : 0;
                blanks += scrambled.endsWith(u' ') || scrambled.startsWith(u' ') ? 1 : 0;
                QCOMPARE(Set_Folder_Password(u"001"_s, last, password, false), Password_Change::Done);
                QCOMPARE(Stored(u"001"_s), scrambled);
                QCOMPARE(Unscramble_Text(Stored(u"001"_s)), password);
                QCOMPARE(Sql_Cell(u"select count(*) from Cate_Info where Cate_pass = ''"_s), u"3"_s);
                last = password;
            }
        });
        QVERIFY2(quotes > 20 && nuls > 20 && blanks > 5, qPrintable(u"%1 %2 %3"_s.arg(quotes).arg(nuls).arg(blanks)));
    }
};

QTEST_GUILESS_MAIN(Test_Folder_Passwords)
#include "test_folder_passwords.moc"
