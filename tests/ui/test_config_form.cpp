// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/settings_table.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "ui/kit/color_button.h"
#include "ui/program/config_mark.h"
#include "ui/program/frm_config.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFontComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace
{
const Database_Steps No_Database{[] {},
                                 [] {
                                     return Database_Check::Go_On;
                                 }};

/// Why a setting has no control here, where nothing in the program writes it either, or why nothing reads it.
const QHash<QString, QString> Reasons = {
    {u"Theme"_s, u"older versions had themes by number; kept as it stands in the file"_s},
    {u"H_RULER"_s, u"older versions had rulers; kept as it stands"_s},
    {u"V_RULER"_s, u"older versions had rulers; kept as it stands"_s},
    {u"M_AUTO"_s, u"a switch of older menus; kept as it stands"_s},
    {u"M_TOOL"_s, u"a switch of older menus; kept as it stands"_s},
    {u"FileHeight"_s, u"a height that older versions had; kept as it stands"_s},
    {u"Key_Name"_s, u"a key that older versions had; kept as it stands"_s},
    {u"TC_LEFT"_s, u"a place that older versions had; kept as it stands"_s},
    {u"TC_TOP"_s, u"a floor that is set in the file alone"_s},
    {u"COB_UPDATE"_s, u"the program asks nobody for new versions; kept as it stands"_s},
    {u"COB_UPDATE_DATE"_s, u"as COB_UPDATE"_s},
    {u"CH_Instance"_s, u"shown and kept; each program directory runs one instance whatever it says"_s},
    {u"CH_PicSaveDb"_s, u"a pasted picture is part of its text, which is stored in the database: nothing to choose"_s},
    {u"Op_OfficeType"_s, u"the desktop knows the program for an office file"_s},
    {u"Op_Editor"_s, u"there is one editor; the file alone can make new documents begin without a type"_s},
    {u"ViewMode"_s, u"the list shows rows; kept as it stands"_s},
    {u"CH_FLOAT"_s, u"read by the floating window"_s},
    {u"Cob_K9"_s, u"read by the floating window"_s},
    {u"Shift"_s, u"belongs to the key that calls the window"_s},
    {u"Key"_s, u"belongs to the key that calls the window"_s},
};

/// The program's sources without the settings' own room and the tables of the options.
QString Sources()
{
    QString all;
    QDirIterator files(QStringLiteral(ZELQOR_SOURCES), {u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        QFile file(path);
        const bool isTable = path.contains(u"/core/settings"_s) ||
                             (path.contains(u"/ui/program/config_"_s) && !path.endsWith(u"config_tools.cpp"_s));
        if (!isTable && file.open(QIODevice::ReadOnly))
            all += QString::fromUtf8(file.readAll());
    }
    return all;
}

/// A value that a control did not have before. @returns false for one that offers nothing else
bool Give_Another_Value(QWidget &control)
{
    if (auto *box = qobject_cast<QCheckBox *>(&control))
        box->toggle();
    else if (auto *option = qobject_cast<QRadioButton *>(&control))
        option->setChecked(true);
    else if (auto *font = qobject_cast<QFontComboBox *>(&control))
        font->setEditText(u"Some font"_s);
    else if (auto *list = qobject_cast<QComboBox *>(&control)) {
        if (list->count() < 2)
            return false;
        list->setCurrentIndex((list->currentIndex() + 1) % list->count());
    } else if (auto *number = qobject_cast<QSpinBox *>(&control))
        number->setValue(number->value() + 1);
    else if (auto *size = qobject_cast<QDoubleSpinBox *>(&control))
        size->setValue(size->value() + 0.5);
    else if (auto *color = qobject_cast<Color_Button *>(&control))
        color->Set_Number(u"255"_s);
    else if (auto *line = qobject_cast<QLineEdit *>(&control))
        line->setText(QFileInfo(line->text()).path() + u"/other"_s);
    return true;
}

QHash<QString, QString> In_Force()
{
    QHash<QString, QString> texts;
    for (const Setting &setting : Setting_Table())
        texts.insert(QLatin1String(setting.key), Text_Of(Config(), setting));
    return texts;
}

QList<QWidget *> Bound_Controls(const QWidget &form)
{
    QList<QWidget *> bound = form.findChildren<QWidget *>();
    bound.removeIf([](const QWidget *control) { return !control->property("Setting").isValid(); });
    return bound;
}

QLabel *Reason_Below(const QWidget &form)
{
    for (QLabel *label : form.findChildren<QLabel *>()) {
        if (label->property("Reason").isValid() && label->isVisibleTo(label->parentWidget()) &&
            !label->text().isEmpty())
            return label;
    }
    return nullptr;
}
} // namespace

class Test_Config_Form : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_program = std::make_unique<Test_Program>(); }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }
    void Each_Setting_Has_Its_Place();
    void Each_Value_Goes_Through_The_File();
    void Untouched_Settings_Stay_As_They_Are();
    void Pages_Are_Applied_And_Reset_By_Themselves();
    void A_Language_Waits_For_The_Next_Start();
    void A_File_That_Cannot_Be_Written_Is_Told();
    void What_Is_Refused_Says_Why_data();
    void What_Is_Refused_Says_Why();
    void Settings_Are_Found_data();
    void Settings_Are_Found();
    void What_Was_Healed_Is_Shown();

private:
    std::unique_ptr<Test_Program> m_program;
};

/// Each one is shown here, written somewhere in the program, or has its reason; and each is read, or has its reason.
void Test_Config_Form::Each_Setting_Has_Its_Place()
{
    Frm_Config form;
    QSet<QString> shown;
    for (const QWidget *control : Bound_Controls(form)) {
        shown << control->property("Setting").toString();
        if (const auto *list = qobject_cast<const QComboBox *>(control); list != nullptr && !list->isEditable())
            QVERIFY2(list->currentIndex() >= 0 || list->count() == 0, qPrintable(list->objectName()));
    }
    const QString sources = Sources();
    for (const Setting &setting : Setting_Table()) {
        const QString key = QLatin1String(setting.key);
        const QRegularExpression written(
            u"([Kk]eep(_Setting|_Switch)?|Setting_Of|Toggle_Pane)\\((&Settings_Record::|\")%1\\b|\\{\"%1\", m_ui|Bind\\([^,]+, \"%1\""_s
                .arg(key));
        const QRegularExpression read(u"Config\\(\\)\\.%1\\b|Is_On\\(&Settings_Record::%1\\b|\", \"%1\","_s.arg(key));
        const bool hasReason = Reasons.contains(key);
        QVERIFY2(shown.contains(key) || hasReason || sources.contains(written), setting.key);
        QVERIFY2(hasReason || sources.contains(read), setting.key);
    }
}

void Test_Config_Form::Each_Value_Goes_Through_The_File()
{
    QHash<QString, QString> wanted;
    {
        Frm_Config form;
        for (QWidget *control : Bound_Controls(form)) {
            if (control->objectName() != u"Comb_Language" && control->objectName() != u"Opt_Skin_0")
                Give_Another_Value(*control);
        }
        Get<QPushButton>(form, "Cmd_OK").click();
        QCOMPARE(form.result(), static_cast<int>(QDialog::Accepted));
        wanted = In_Force();
    }
    Config() = {};
    GetConfigInfo(No_Database);
    const QHash<QString, QString> read = In_Force();
    const QHash<QString, QString> fresh = [] {
        QHash<QString, QString> texts;
        for (const Setting &setting : Setting_Table())
            texts.insert(QLatin1String(setting.key), Initial_Value(setting));
        return texts;
    }();
    Frm_Config again;
    for (const QWidget *control : Bound_Controls(again)) {
        const QString key = control->property("Setting").toString();
        QCOMPARE(key + u'=' + read[key], key + u'=' + wanted[key]);
        if (control->objectName() != u"Comb_Language" && control->objectName() != u"Comb_K9")
            QVERIFY2(read[key] != fresh[key], qPrintable(key));
    }
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

void Test_Config_Form::Pages_Are_Applied_And_Reset_By_Themselves()
{
    Frm_Config form;
    const QSignalSpy changed(&form, &Frm_Config::Settings_Changed);
    auto &pages = Get<QListWidget>(form, "Lst_Pages");
    auto &apply = Get<QPushButton>(form, "Cmd_Apply");
    QVERIFY(!apply.isEnabled());
    Get<QRadioButton>(form, "Opt_Skin_2").setChecked(true);
    Get<QSpinBox>(form, "Spn_Max").setValue(7);
    pages.setCurrentRow(1);
    apply.click();
    QCOMPARE(changed.size(), 1);
    QCOMPARE(GetIni(u"Col"_s, u"CH_Style_Classic"_s), u"2"_s);
    QCOMPARE(Config().CH_Style_Classic, u"2"_s);
    QVERIFY(!Get<QLabel>(form, "Lab_Note").text().isEmpty() && !apply.isEnabled());
    QCOMPARE(Config().MAX_RECORD, 46); // its page is still to be applied, and says so
    QVERIFY(pages.item(2)->text().endsWith(u'•') && !pages.item(1)->text().endsWith(u'•'));
    Get<QPushButton>(form, "Cmd_Default").click();
    QVERIFY(Get<QRadioButton>(form, "Opt_Skin_1").isChecked());
    QCOMPARE(Get<QSpinBox>(form, "Spn_Max").value(), 7);
    Get<QPushButton>(form, "Cmd_OK").click();
    QCOMPARE(Config().MAX_RECORD, 7);
    QCOMPARE(GetIni(u"Col"_s, u"CH_Style_Classic"_s), u"1"_s);
}

void Test_Config_Form::A_Language_Waits_For_The_Next_Start()
{
    m_program->Write(u"Lang/Klingon.ini"_s, "[Frm_Main]\n");
    m_program->Write(u"Lang/notes.txt"_s, "no pack");
    const QString inForce = Config().LANGUAGE;
    Frm_Config form;
    auto &languages = Get<QComboBox>(form, "Comb_Language");
    QVERIFY(languages.findText(u"notes"_s) < 0);
    languages.setCurrentText(u"Klingon"_s);
    QCOMPARE(Reason_Below(form)->text(), Pack_Text("Frm_Config", "_Restart"));
    Get<QPushButton>(form, "Cmd_Apply").click();
    QVERIFY(Reason_Below(form) != nullptr);
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
    QCOMPARE(changed.size(), 0);
    QCOMPARE(Config().CH_Style_Classic, u"1"_s);
    QCOMPARE(form.result(), static_cast<int>(QDialog::Rejected));
}

void Test_Config_Form::What_Is_Refused_Says_Why_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("why");
    for (const QString &field : {u"Txt_Backup"_s, u"Txt_Pic"_s}) {
        QTest::addRow("%s, a drive", qPrintable(field)) << field << u"D:\\x"_s << u"_Why_Folder"_s;
        QTest::addRow("%s, relative", qPrintable(field)) << field << u"x"_s << u"_Why_Folder"_s;
        QTest::addRow("%s, nothing", qPrintable(field)) << field << u" "_s << u"_Why_Folder"_s;
        QTest::addRow("%s, a device", qPrintable(field)) << field << u"/dev/null"_s << u"_Why_No_Folder"_s;
        QTest::addRow("%s, below a device", qPrintable(field)) << field << u"/dev/null/x"_s << u"_Why_No_Folder"_s;
    }
    QTest::newRow("an export to a folder") << u"Txt_Export"_s << u"/dev"_s << u"_Why_File"_s;
    QTest::newRow("a number too small") << u"Spn_Max"_s << u"0"_s << u"_Why_Number"_s;
    QTest::newRow("no number") << u"Spn_Auto"_s << u""_s << u"_Why_Number"_s;
    QTest::newRow("no font") << u"Comb_Font_0"_s << u""_s << u"_Why_Font"_s;
}

void Test_Config_Form::What_Is_Refused_Says_Why()
{
    QFETCH(QString, control);
    QFETCH(QString, typed);
    QFETCH(QString, why);
    const QByteArray before = m_program->Bytes(u"Config.ini"_s);
    Frm_Config form;
    auto *field = form.findChild<QWidget *>(control);
    auto *line = qobject_cast<QLineEdit *>(field);
    (line != nullptr ? line : field->findChild<QLineEdit *>())->setText(typed);
    const QString words = Pack_Text("Frm_Config", why.toUtf8().constData()).section(u'%', 0, 0);
    QVERIFY(Reason_Below(form) != nullptr && Reason_Below(form)->text().startsWith(words));
    QVERIFY(field->accessibleDescription().startsWith(words));
    Get<QPushButton>(form, "Cmd_OK").click();
    QCOMPARE(form.result(), static_cast<int>(QDialog::Rejected));
    QVERIFY(field->isVisibleTo(&form)); // its page has come forward
    QCOMPARE(m_program->Bytes(u"Config.ini"_s), before);
}

void Test_Config_Form::Settings_Are_Found_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("control");
    QTest::newRow("a word of the language in force") << u"网格"_s << u"Chk_Grid"_s;
    QTest::newRow("a word of another language") << u"grid LINES"_s << u"Chk_Grid"_s;
    QTest::newRow("a key of the file") << u"cob_lines"_s << u"Comb_LineSpace"_s;
    QTest::newRow("an entry") << u"2.5"_s << u"Comb_LineSpace"_s;
    QTest::newRow("a value") << u"Zelqor_bak"_s << u"Txt_Export"_s;
    QTest::newRow("a group") << u"复习组"_s << u"Lsv_Gene"_s;
    QTest::newRow("nothing") << u"qqqq"_s << QString();
}

void Test_Config_Form::Settings_Are_Found()
{
    QFETCH(QString, text);
    QFETCH(QString, control);
    for (const QString &pack : {u"CHINESE.INI"_s, u"English.ini"_s}) {
        QFile file(Pack_Folder() + u'/' + pack);
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_program->Write(u"Lang/"_s + pack, file.readAll());
    }
    Frm_Config form;
    form.show();
    Get<QLineEdit>(form, "Txt_Search").setText(text);
    const auto &mark = *form.findChild<Config_Mark *>();
    QCOMPARE(mark.Control() == nullptr ? QString() : mark.Control()->objectName(), control);
    QVERIFY(control.isEmpty() || (mark.isVisible() && mark.geometry().contains(mark.Control()->geometry())));
}

void Test_Config_Form::What_Was_Healed_Is_Shown()
{
    m_program->Write(u"Config.ini"_s, m_program->Bytes(u"Config.ini"_s).replace("Cob_OrderBy=2", "Cob_OrderBy=99"));
    GetConfigInfo(No_Database);
    Frm_Config form;
    const auto &list = Get<QTreeWidget>(form, "Lsv_Healed");
    QCOMPARE(list.topLevelItemCount(), 1);
    const QTreeWidgetItem &row = *list.topLevelItem(0);
    QCOMPARE((QStringList{row.text(0), row.text(1), row.text(2)}), (QStringList{u"Cob_OrderBy"_s, u"99"_s, u"2"_s}));
}

QTEST_MAIN(Test_Config_Form)
#include "test_config_form.moc"
