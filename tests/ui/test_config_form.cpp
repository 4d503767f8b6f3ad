// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/settings_table.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "ui/kit/color_button.h"
#include "ui/program/frm_config.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

using namespace Qt::StringLiterals;

class Test_Config_Form : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_program = std::make_unique<Test_Program>(); }
    void cleanup() { m_program.reset(); }
    void Each_Control_Has_A_Setting();
    void Untouched_Settings_Stay_As_They_Are();
    void Changes_Are_Written_And_In_Force();
    void A_Language_Waits_For_The_Next_Start();
    void A_File_That_Cannot_Be_Written_Is_Told();
    void A_Folder_That_Takes_No_Files_Is_Refused();

private:
    std::unique_ptr<Test_Program> m_program;
};

/// A misspelled name would make the form's load fail; a list must have an entry for each value it can be given.
void Test_Config_Form::Each_Control_Has_A_Setting()
{
    Frm_Config form;
    int bound = 0;
    for (const QWidget *control : form.findChildren<QWidget *>()) {
        const QVariant name = control->property("Setting");
        if (!name.isValid())
            continue;
        ++bound;
        QCOMPARE(QLatin1String(Setting_Named(name.toString()).key), name.toString());
        if (const auto *list = qobject_cast<const QComboBox *>(control); list != nullptr && !list->isEditable())
            QVERIFY2(list->currentIndex() >= 0, qPrintable(name.toString()));
    }
    QVERIFY(bound > 30);
}

void Test_Config_Form::Untouched_Settings_Stay_As_They_Are()
{
    // Values that no control can show as they stand.
    Config().Cob_OrderBy = u"77"_s;
    Config().FontName_Tree = u"A font nobody has"_s;
    Config().CH_About = u"yes"_s;
    Config().COB_Auto_Save = u"half an hour"_s;
    Config().Col_Frm = u"red"_s;
    const QByteArray before = m_program->Bytes(u"Config.ini"_s);
    Frm_Config form;
    Get<QPushButton>(form, "Cmd_OK").click();
    QCOMPARE(m_program->Bytes(u"Config.ini"_s), before);
    QCOMPARE(Config().Cob_OrderBy, u"77"_s);
    QCOMPARE(Config().FontName_Tree, u"A font nobody has"_s);
    QCOMPARE(Config().Col_Frm, u"red"_s);
    QCOMPARE(form.result(), static_cast<int>(QDialog::Accepted));
}

void Test_Config_Form::Changes_Are_Written_And_In_Force()
{
    Frm_Config form;
    const QSignalSpy changed(&form, &Frm_Config::Settings_Changed);
    Get<QRadioButton>(form, "Opt_Skin_2").setChecked(true);
    Get<QSpinBox>(form, "Spn_Max").setValue(1);
    Get<QComboBox>(form, "Comb_Order").setCurrentIndex(7);
    Get<QCheckBox>(form, "Chk_Low").setChecked(false);
    Get<QCheckBox>(form, "Chk_Grid").setChecked(true);
    Get<Color_Button>(form, "Cmd_Color_Tree").Set_Number(u"255"_s);
    Get<QLineEdit>(form, "Txt_Backup").setText(u' ' + m_program->Path(u"存档"_s) + u' ');
    Get<QPushButton>(form, "Cmd_Apply").click();

    QCOMPARE(changed.size(), 1);
    const QList<std::array<QString, 4>> wanted = {
        {u"Col"_s, u"CH_Style_Classic"_s, u"2"_s, Config().CH_Style_Classic},
        {u"Page"_s, u"MAX_RECORD"_s, u"1"_s, QString::number(Config().MAX_RECORD)},
        {u"Col"_s, u"Cob_OrderBy"_s, u"8"_s, Config().Cob_OrderBy},
        {u"Col"_s, u"ShowLow"_s, u"FALSE"_s, Config().ShowLow},
        {u"Col"_s, u"CH_Lsv_Grid"_s, u"1"_s, Config().CH_Lsv_Grid},
        {u"Col"_s, u"Col_Frm"_s, u"255"_s, Config().Col_Frm},
        {u"Col"_s, u"Backup_Path"_s, m_program->Path(u"存档"_s), Config().Backup_Path.chopped(1)},
    };
    for (const auto &[section, key, file, record] : wanted) {
        QCOMPARE(key + u'=' + GetIni(section, key), key + u'=' + file);
        QCOMPARE(key + u'=' + record, key + u'=' + file);
    }
    QVERIFY(!Get<QLabel>(form, "Lab_Note").text().isEmpty());
}

void Test_Config_Form::A_Language_Waits_For_The_Next_Start()
{
    m_program->Write(u"Lang/Klingon.ini"_s, "[Frm_Main]\n");
    m_program->Write(u"Lang/notes.txt"_s, "no pack");
    const QString inForce = Config().LANGUAGE;
    Frm_Config form;
    m_program->prompts.Expect(Pack_Text("Frm_Config", "_Restart"), u"ok"_s);
    auto &languages = Get<QComboBox>(form, "Comb_Language");
    QVERIFY(languages.findText(u"notes"_s) < 0);
    languages.setCurrentText(u"Klingon"_s);
    Get<QPushButton>(form, "Cmd_Apply").click();
    Get<QPushButton>(form, "Cmd_OK").click();
    QCOMPARE(m_program->prompts.Problems(), QStringList());
    QCOMPARE(GetIni(u"Page"_s, u"LANGUAGE"_s), u"Klingon"_s);
    QCOMPARE(Config().LANGUAGE, inForce);
}

void Test_Config_Form::A_File_That_Cannot_Be_Written_Is_Told()
{
    const QString path = m_program->Path(u"Config.ini"_s);
    QVERIFY(QFile::remove(path) && QDir().mkdir(path));
    m_program->prompts.Expect(QString(), u"ok"_s);
    Frm_Config form;
    const QSignalSpy changed(&form, &Frm_Config::Settings_Changed);
    Get<QRadioButton>(form, "Opt_Skin_3").setChecked(true);
    Get<QPushButton>(form, "Cmd_OK").click();
    QCOMPARE(m_program->prompts.Problems(), QStringList());
    QCOMPARE(changed.size(), 0);
    QCOMPARE(form.result(), static_cast<int>(QDialog::Rejected));
}

void Test_Config_Form::A_Folder_That_Takes_No_Files_Is_Refused()
{
    const QByteArray before = m_program->Bytes(u"Config.ini"_s);
    for (const char *field : {"Txt_Backup", "Txt_Pic"}) {
        for (const QString &folder :
             {u"D:\\x"_s, u"x"_s, u"/dev/null"_s, u"/dev/null/x"_s, m_program->Path(u"Config.ini"_s)}) {
            Frm_Config form;
            m_program->prompts.Expect(Pack_Text("Error_Texts", "_Path_Access"), u"ok"_s);
            Get<QRadioButton>(form, "Opt_Skin_3").setChecked(true);
            Get<QLineEdit>(form, field).setText(folder);
            Get<QPushButton>(form, "Cmd_OK").click();
            QCOMPARE(m_program->prompts.Problems(), QStringList());
            QCOMPARE(m_program->Bytes(u"Config.ini"_s), before);
        }
    }
    QVERIFY(!QFileInfo::exists(u"D:"_s) && !QFileInfo::exists(u"x"_s));
}

QTEST_MAIN(Test_Config_Form)
#include "test_config_form.moc"
