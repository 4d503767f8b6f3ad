// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/settings_table.h"
#include "platform/profile/profile.h"
#include "support/test_program.h"

#include <QFile>
#include <QTest>
#include <optional>
#include <set>

using namespace Qt::StringLiterals;

namespace
{
const Database_Steps No_Database{[] {},
                                 [] {
                                     return Database_Check::Go_On;
                                 }};

QString Text_Of(const Setting &setting)
{
    if (const auto *text = std::get_if<QString Settings_Record::*>(&setting.field))
        return Config().*(*text);
    if (const auto *number = std::get_if<qint16 Settings_Record::*>(&setting.field))
        return QString::number(Config().*(*number));
    return (Config().*std::get<QVariant Settings_Record::*>(setting.field)).toString();
}

QString In_File(const QString &section, const QString &key)
{
    return GetIni(section, key);
}
} // namespace

class Test_Settings : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(Test_Program::Start::Bare); }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void Each_Key_Has_A_Place_Of_Its_Own()
    {
        std::set<QString> keys;
        size_t covered = 0; // bytes of the record, the one small number being padded
        for (const Setting &setting : Setting_Table()) {
            QVERIFY2(keys.insert(QString::fromLatin1(setting.key).toUpper()).second, setting.key);
            covered += std::visit([](auto field) { return std::max(sizeof(Config().*field), alignof(QString)); },
                                  setting.field);
            Config() = {};
            Store(Config(), setting, u"7"_s);
            for (const Setting &other : Setting_Table()) {
                const bool same = &other == &setting;
                QVERIFY2((Text_Of(other) == u"7") == same, setting.key);
            }
        }
        QCOMPARE(covered, sizeof(Settings_Record));
    }

    void A_Missing_File_Is_Written_Whole()
    {
        GetConfigInfo(No_Database);
        const Profile::Snapshot file(m_program->Path(u"Config.ini"_s));
        QCOMPARE(file.Sections(),
                 QStringList({u"Page"_s, u"DataBase"_s, u"Else"_s, u"Col"_s, u"ViewMode"_s, u"RegKey"_s}));
        QCOMPARE(file.Keys(u"Page"_s).size(), 12);
        QCOMPARE(file.Value(u"Col"_s, u"Op_DB_Type"_s), u"0"_s);
        QCOMPARE(file.Value(u"DataBase"_s, u"Op_DB_Type"_s), u"0"_s);
        QVERIFY(!file.Contains(u"Col"_s, u"Tree_LastKey"_s));
        const struct {
            QString value;
            QString expected;
        } values[] = {{Config().CH_ByDate, u"FALSE"_s},
                      {Config().CH_Tags, u"TRUE"_s},
                      {Config().CH_Hot, u"FALSE"_s},
                      {Config().FontSize_Cont, u"10"_s},
                      {Config().ViewSum, u"False"_s},
                      {Config().FontName_Tree, u"宋体"_s},
                      {Config().DATABASE_NAME, u"\\data\\Zelqor.db"_s},
                      {Config().Backup_Date, u"2026-03-05"_s},
                      {Config().COB_UPDATE_DATE, u"2026-03-05 10:20:30"_s},
                      {Config().Backup_Path, App().App_Path + u"backup\\"_s},
                      {Config().Key, u"73"_s}};
        for (const auto &row : values)
            QCOMPARE(row.value, row.expected);
        QCOMPARE(Config().MAX_RECORD, 46);
        QCOMPARE(Config().Col_List.toInt(), 10019561);
        QVERIFY(Config().Pic_Dir.startsWith(App().App_Path + u"Pic"_s) &&
                Config().Pic_Dir.size() == App().App_Path.size() + 4);
        QVERIFY(Exists(App().App_Path + u"Pic"_s, Attr_Directory));
        QCOMPARE(m_program->Logged(), QStringList());
    }

    void Keys_Are_Healed_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("record"); ///< the value in the record
        QTest::addColumn<QString>("healed"); ///< the value in the file
        const auto row = [](const char *name, const char *file, const QString &section, const QString &key,
                            const QString &record, const QString &healed) {
            QTest::addRow("%s", name) << QByteArray(file) << section << key << record << healed;
        };
        const QString col = u"Col"_s;
        const QString page = u"Page"_s;
        row("by-date tab", "[Page]\r\nM_FILE=TRUE\r\n", col, u"CH_ByDate"_s, u"TRUE"_s, u"TRUE"_s);
        row("tags tab", "[Page]\r\nM_FILE=TRUE\r\n", col, u"CH_Tags"_s, u"FALSE"_s, u"FALSE"_s);
        row("hot tab", "[Page]\r\nM_FILE=TRUE\r\n", col, u"CH_Hot"_s, u"TRUE"_s, u"TRUE"_s);
        row("find tab", "[Page]\r\nM_FILE=TRUE\r\n", col, u"CH_Find"_s, u"TRUE"_s, u"TRUE"_s);
        row("content font", "[Page]\r\nM_FILE=TRUE\r\n", col, u"FontSize_Cont"_s, u"9"_s, u"9"_s);
        row("list font", "[Page]\r\nM_FILE=TRUE\r\n", col, u"FontSize_LSV"_s, u"10"_s, u"10"_s);
        row("digest pane after another healing", "[Page]\r\nM_FILE=TRUE\r\n", col, u"ViewSum"_s, u"False"_s,
            u"False"_s);
        row("language of older versions", "[Page]\r\nLANGUAGE=gb2312\r\n", page, u"LANGUAGE"_s, u"English"_s,
            u"English"_s);
        row("another language stands", "[Page]\r\nLANGUAGE=Deutsch\r\n", page, u"LANGUAGE"_s, u"Deutsch"_s,
            u"Deutsch"_s);
        row("no page size", "[Page]\r\nMAX_RECORD=0\r\n", page, u"MAX_RECORD"_s, u"46"_s, u"46"_s);
        row("a page size", "[Page]\r\nmax_record=120\r\n", page, u"MAX_RECORD"_s, u"120"_s, u"120"_s);
        row("no update check", "[Page]\r\nCOB_UPDATE= \r\n", page, u"COB_UPDATE"_s, u"W"_s, u"W"_s);
        row("two letters of update check", "[Page]\r\nCOB_UPDATE=DD\r\n", page, u"COB_UPDATE"_s, u"W"_s, u"W"_s);
        row("one blank", "[Col]\r\nBackup_Num= \r\n", col, u"Backup_Num"_s, u"7"_s, u"7"_s);
        row("short update date", "[Page]\r\nCOB_UPDATE_DATE=1\r\n", page, u"COB_UPDATE_DATE"_s,
            u"2026-03-05 10:20:30"_s, u"2026-03-05 10:20:30"_s);
        row("never healed", "[Page]\r\nM_FILE=TRUE\r\n", page, u"H_RULER"_s, u""_s, u""_s);
        row("page size of a word", "[Page]\r\nMAX_RECORD=many\r\n", page, u"MAX_RECORD"_s, u"46"_s, u"46"_s);
        row("page size too large", "[Page]\r\nMAX_RECORD=40000\r\n", page, u"MAX_RECORD"_s, u"46"_s, u"46"_s);
        row("order out of range", "[Col]\r\nCob_OrderBy=99\r\n", col, u"Cob_OrderBy"_s, u"2"_s, u"2"_s);
        row("order between two", "[Col]\r\nCob_OrderBy=2.5\r\n", col, u"Cob_OrderBy"_s, u"2"_s, u"2"_s);
        row("half a size", "[Col]\r\nFontSize_Tree=10.5\r\n", col, u"FontSize_Tree"_s, u"10.5"_s, u"10.5"_s);
        row("a drive for backups", "[Col]\r\nBackup_Path=C:\\Copies\r\n", col, u"Backup_Path"_s, u"%backup\\"_s,
            u"%backup\\"_s);
        row("misplaced dialect", "[Col]\r\nOp_DB_Sql=1\r\n", u"DataBase"_s, u"Op_DB_Sql"_s, u"0"_s, u"0"_s);
    }
    void Keys_Are_Healed()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, record);
        QFETCH(QString, healed);
        qputenv("LC_ALL", "C");
        m_program->Write(u"Config.ini"_s, file);
        GetConfigInfo(No_Database);
        for (const Setting &setting : Setting_Table()) {
            if (key == QLatin1String(setting.key))
                QCOMPARE(Text_Of(setting), record.replace(u'%', App().App_Path));
        }
        QCOMPARE(In_File(section, key), healed.replace(u'%', App().App_Path));
        QVERIFY(!Exists(m_program->Path(u"C:"_s), Attr_Directory));
    }

    /// Until the next reading the record says otherwise than the file.
    void The_Digest_Flag_Heals_To_True_In_The_Record()
    {
        GetConfigInfo(No_Database);
        WriteIni(u"Col"_s, u"ViewSum"_s, u""_s);
        GetConfigInfo(No_Database);
        QCOMPARE(Config().ViewSum, u"True"_s);
        QCOMPARE(In_File(u"Col"_s, u"ViewSum"_s), u"False"_s);
        GetConfigInfo(No_Database);
        QCOMPARE(Config().ViewSum, u"False"_s);
    }

    void A_File_That_Cannot_Be_Read_Is_Told()
    {
        m_program->Write(u"Config.ini/other"_s, "a folder in its place");
        const Pending_Error trouble = GetConfigInfo(No_Database);
        QVERIFY2(trouble.description.contains(u"Config.ini"_s), qPrintable(trouble.description));
        QCOMPARE(m_program->Logged(), QStringList(u"Main/GetConfigInfo"_s));
        QCOMPARE(Config().Cob_OrderBy + Config().CH_PATH, u"21"_s);
    }

    void A_File_That_Was_Whole_Is_Kept()
    {
        GetConfigInfo(No_Database);
        WriteIni(u"Col"_s, u"KEYS"_s, u"mine,"_s);
        GetConfigInfo(No_Database);
        const QByteArray good = m_program->Bytes(u"Config.ini"_s);
        QCOMPARE(m_program->Bytes(u"Config.bak"_s), good);
        m_program->Write(u"Config.ini"_s, QByteArray(1706, '\0'));
        GetConfigInfo(No_Database);
        QCOMPARE(m_program->Bytes(u"Config.bak"_s), good);
    }

    void The_Database_Is_Looked_For_Between_The_Checks()
    {
        m_program->Write(u"Config.ini"_s, "[DataBase]\r\nCH_PATH=\r\nEXPORT_NAME=\r\n[Else]\r\nTC_LEFT=\r\n");
        QStringList order;
        const auto note = [&](const QString &step) {
            order << step + u':' + In_File(u"DataBase"_s, u"EXPORT_NAME"_s) + u':' + In_File(u"Else"_s, u"TC_LEFT"_s);
        };
        int searches = 0;
        GetConfigInfo({[&] { note(u"paths"_s); },
                       [&] {
                           note(u"search"_s);
                           return ++searches == 1 ? Database_Check::Read_Again : Database_Check::Go_On;
                       }});
        const QString name = u"\\data\\Zelqor_bak.db"_s;
        QCOMPARE(order.first(), u"paths::"_s);
        QCOMPARE(order.filter(u"search"_s).first(), u"search:"_s + name + u':');
        QVERIFY(searches >= 2);
        QCOMPARE(order.last(), u"search:"_s + name + u":0"_s);
    }

    void Values_Are_Cut_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("own");
        QTest::addColumn<int>("foreign");
        QTest::addRow("short") << 100 << 100 << 100;
        QTest::addRow("129") << 129 << 129 << 128;
        QTest::addRow("513") << 513 << 512 << 128;
    }
    void Values_Are_Cut()
    {
        QFETCH(int, length);
        QFETCH(int, own);
        QFETCH(int, foreign);
        WriteIni(u"Col"_s, u"User_Tools"_s, QString(length, u'文'));
        QCOMPARE(GetIni(u"Col"_s, u"User_Tools"_s).size(), own);
        QCOMPARE(GetIniA(u"Col"_s, u"User_Tools"_s, m_program->Path(u"Config.ini"_s)).size(), foreign);
        GetConfigInfo(No_Database);
        QCOMPARE(Config().User_Tools.size(), own);
    }

    void A_Place_That_Refuses_The_File_Leaves_The_Defaults()
    {
        App().App_Path = m_program->Path(u"missing/"_s);
        GetConfigInfo(No_Database);
        QCOMPARE(Config().MAX_RECORD, 46);
        QCOMPARE(Config().ShowLow, u"TRUE"_s);
        WriteIni(u"Col"_s, u"KEYS"_s, u"a"_s);
        QCOMPARE(GetIni(u"Col"_s, u"KEYS"_s), QString());
    }
};

QTEST_GUILESS_MAIN(Test_Settings)
#include "test_settings.moc"
