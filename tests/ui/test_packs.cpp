// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/text_editor.h"
#include "platform/desktop/plain_labels.h"
#include "support/no_shell.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/document/document_page.h"
#include "ui/document/frm_bookmark_admin.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/document/frm_file_admin.h"
#include "ui/exchange/frm_data_export_node_exe.h"
#include "ui/exchange/frm_data_export_node_files.h"
#include "ui/exchange/frm_file_import.h"
#include "ui/exchange/frm_transfer.h"
#include "ui/exchange/frm_transfer_conflicts.h"
#include "ui/folders/frm_add_class_ex.h"
#include "ui/folders/frm_icon.h"
#include "ui/folders/frm_node_choice.h"
#include "ui/folders/frm_node_icon.h"
#include "ui/folders/frm_nodes_pass.h"
#include "ui/folders/frm_nodes_search.h"
#include "ui/folders/frm_re_name_ex.h"
#include "ui/kit/ctrl_language.h"
#include "ui/kit/dialog_finish.h"
#include "ui/lists/frm_list_view.h"
#include "ui/lists/frm_list_view_color.h"
#include "ui/lists/frm_list_view_para.h"
#include "ui/lists/frm_list_view_tags.h"
#include "ui/lists/frm_list_view_vir_cate.h"
#include "ui/lists/frm_tag_add.h"
#include "ui/lists/search_pane.h"
#include "ui/lists/tag_pane.h"
#include "ui/program/frm_about.h"
#include "ui/program/frm_config.h"
#include "ui/program/frm_database.h"
#include "ui/program/frm_db_log.h"
#include "ui/program/frm_login.h"
#include "ui/program/frm_update_235.h"
#include "ui/program/frm_user_change_pwd.h"
#include "ui/program/frm_users.h"
#include "ui/tools/frm_date.h"
#include "ui/tools/frm_note.h"
#include "ui/tools/frm_on_top.h"
#include "ui/tools/frm_on_top_drop.h"
#include "ui/tools/frm_show_up.h"
#include "ui/tools/page_hand.h"
#include "ui/window/frm_keys.h"
#include "ui/window/frm_main.h"
#include "ui/writing/editor_bar.h"
#include "ui/writing/find_bar.h"
#include "ui/writing/frm_goto.h"
#include "ui/writing/frm_insert_table.h"
#include "ui/writing/frm_picture_size.h"
#include "ui/writing/frm_print.h"
#include "ui/writing/frm_spec_char.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDirIterator>
#include <QFontComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextTable>
#include <QToolButton>
#include <functional>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Longest_Text = 253;
const QSize Small_Screen(1024, 740);

struct Packs {
    Profile::Snapshot chinese{Pack_Folder() + u"/CHINESE.INI"_s};
    Profile::Snapshot english{Pack_Folder() + u"/English.ini"_s};
};

/// The dialogs of the folder tree, on a folder with a name of ordinary length.
std::unique_ptr<QWidget> New_Folder_Form(const QString &name)
{
    static Tree_Model tree;
    Add_Folder(u"00%1"_s.arg(Sql_Rows(u"select Cate_ID from Cate_Info"_s).size()), u"Quarterly plans 季度计划"_s);
    GetClassInfo_Ex(tree, App().Conn_Str, u"Zelqor"_s);
    if (name == u"Frm_AddClass_Ex")
        return std::make_unique<Frm_AddClass_Ex>(tree, 1, false);
    if (name == u"Frm_ReName_Ex")
        return std::make_unique<Frm_ReName_Ex>(tree, 1);
    if (name == u"Frm_icon")
        return std::make_unique<Frm_icon>(u"HOME.ICO"_s);
    if (name == u"Frm_Node_Icon")
        return std::make_unique<Frm_Node_Icon>(tree, 1);
    if (name == u"Frm_Nodes_Pass")
        return std::make_unique<Frm_Nodes_Pass>(u"001"_s, u"Quarterly plans 季度计划"_s);
    if (name == u"Frm_Nodes_Search")
        return std::make_unique<Frm_Nodes_Search>(tree);
    if (name == u"Frm_ListView_VirCate")
        return std::make_unique<Frm_ListView_VirCate>(u"{1}"_s);
    return std::make_unique<Frm_Node_Choice>(tree, QString(), u"Quarterly plans 季度计划"_s);
}

const QStringList Folder_Form_Names = {u"Frm_AddClass_Ex"_s, u"Frm_ReName_Ex"_s,       u"Frm_icon"_s,
                                       u"Frm_Node_Icon"_s,   u"Frm_Nodes_Pass"_s,      u"Frm_Nodes_Search"_s,
                                       u"Frm_Node_Choice"_s, u"Frm_ListView_VirCate"_s};

const QStringList Document_Page_Names = {u"Page_Attachments"_s, u"Page_Tags"_s, u"Page_Review"_s};

std::unique_ptr<QWidget> New_Form(const QString &name)
{
    static No_Shell shell;
    if (Folder_Form_Names.contains(name))
        return New_Folder_Form(name);
    if (name == u"Frm_Main")
        return std::make_unique<Frm_Main>();
    if (name == u"Frm_ListView")
        return std::make_unique<Frm_ListView>(shell);
    if (name == u"Frm_Doc_Standard")
        return std::make_unique<Frm_Doc_Standard>(shell);
    if (name == u"Editor_Bar")
        return std::make_unique<Editor_Bar>();
    if (name == u"Find_Bar")
        return std::make_unique<Find_Bar>();
    static Text_Editor editor;
    if (name == u"frm_GoTo")
        return std::make_unique<frm_GoTo>(editor);
    if (name == u"Frm_Insert_Table")
        return std::make_unique<Frm_Insert_Table>(editor);
    if (name == u"Frm_Picture_Size")
        return std::make_unique<Frm_Picture_Size>(editor);
    if (name == u"Frm_SpecChar")
        return std::make_unique<Frm_SpecChar>(editor);
    if (name == u"Frm_Print")
        return std::make_unique<Frm_Print>(*editor.document(), u"Title"_s);
    if (name == u"Search_Pane")
        return std::make_unique<Search_Pane>(shell);
    if (name == u"Frm_ListView_Para")
        return std::make_unique<Frm_ListView_Para>();
    if (name == u"Frm_ListView_Color")
        return std::make_unique<Frm_ListView_Color>(nullptr, QStringList());
    if (name == u"Frm_ListView_Tags")
        return std::make_unique<Frm_ListView_Tags>(QStringList());
    if (name == u"Frm_TagAdd")
        return std::make_unique<Frm_TagAdd>();
    if (name == u"Tag_Pane")
        return std::make_unique<Tag_Pane>(shell, nullptr);
    if (name == u"frmLogin")
        return std::make_unique<frmLogin>();
    if (name == u"Frm_Database")
        return std::make_unique<Frm_Database>();
    if (name == u"Frm_Config")
        return std::make_unique<Frm_Config>();
    if (name == u"Frm_Users")
        return std::make_unique<Frm_Users>();
    if (name == u"Frm_User_Change_PWD")
        return std::make_unique<Frm_User_Change_PWD>();
    if (name == u"Frm_DbLog")
        return std::make_unique<Frm_DbLog>();
    if (name == u"Frm_DataExport_Ex")
        return std::make_unique<Frm_DataExport_Ex>();
    if (name == u"Frm_DataInport_Ex")
        return std::make_unique<Frm_DataInport_Ex>();
    if (name == u"Frm_FileImport")
        return std::make_unique<Frm_FileImport>();
    if (name == u"Frm_DataExport_Node_Files")
        return std::make_unique<Frm_DataExport_Node_Files>();
    if (name == u"Frm_DataExport_Node_Exe")
        return std::make_unique<Frm_DataExport_Node_Exe>();
    if (name == u"Frm_Transfer_Conflicts")
        return std::make_unique<Frm_Transfer_Conflicts>(QStringList());
    if (name == u"Frm_Date")
        return std::make_unique<Frm_Date>(shell);
    if (name == u"Frm_OnTop")
        return std::make_unique<Frm_OnTop>();
    if (name == u"Frm_OnTop_Drop")
        return std::make_unique<Frm_OnTop_Drop>();
    if (name == u"Frm_Note")
        return std::make_unique<Frm_Note>();
    if (name == u"frm_ShowUp")
        return std::make_unique<frm_ShowUp>(Version_Notice{u"12.11.10"_s, QUrl(u"https://example.org/page"_s)});
    if (name == u"Page_Hand")
        return std::make_unique<Page_Hand>();
    if (name == u"Frm_BookMark_Admin")
        return std::make_unique<Frm_BookMark_Admin>(Bookmark());
    if (name == u"Frm_File_Admin")
        return std::make_unique<Frm_File_Admin>(&shell);
    if (const int page = static_cast<int>(Document_Page_Names.indexOf(name)); page >= 0) {
        static QWidget form;
        return Document_Pages()[static_cast<size_t>(page)].make(shell, form);
    }
    if (name == u"Frm_Keys")
        return std::make_unique<Frm_Keys>(std::vector<Key_Group>());
    if (name == u"Frm_Update_235")
        return std::make_unique<Frm_Update_235>();
    return std::make_unique<Frm_About>(Frm_About::Role::About);
}

const QStringList Form_Names = {u"Frm_Main"_s,
                                u"Frm_ListView"_s,
                                u"Frm_Doc_Standard"_s,
                                u"frmLogin"_s,
                                u"Frm_Database"_s,
                                u"Frm_DbLog"_s,
                                u"Frm_Users"_s,
                                u"Frm_User_Change_PWD"_s,
                                u"Frm_About"_s,
                                u"Frm_Update_235"_s,
                                u"Editor_Bar"_s,
                                u"Find_Bar"_s,
                                u"frm_GoTo"_s,
                                u"Frm_Insert_Table"_s,
                                u"Frm_SpecChar"_s,
                                u"Frm_Print"_s,
                                u"Frm_Config"_s,
                                u"Search_Pane"_s,
                                u"Frm_Picture_Size"_s,
                                u"Frm_ListView_Para"_s,
                                u"Frm_ListView_Color"_s,
                                u"Frm_ListView_Tags"_s,
                                u"Frm_TagAdd"_s,
                                u"Tag_Pane"_s,
                                u"Frm_DataExport_Ex"_s,
                                u"Frm_DataInport_Ex"_s,
                                u"Frm_FileImport"_s,
                                u"Frm_DataExport_Node_Files"_s,
                                u"Frm_DataExport_Node_Exe"_s,
                                u"Frm_Transfer_Conflicts"_s,
                                u"Frm_BookMark_Admin"_s,
                                u"Frm_File_Admin"_s,
                                u"Frm_Date"_s,
                                u"Frm_Keys"_s,
                                u"Frm_OnTop"_s,
                                u"Frm_OnTop_Drop"_s,
                                u"Frm_Note"_s,
                                u"frm_ShowUp"_s,
                                u"Page_Hand"_s};

QString Read_Text(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList Captures(const QString &text, const char *pattern)
{
    QStringList found;
    auto matches = QRegularExpression(QLatin1String(pattern)).globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

QString Cut(const QWidget &control, const QString &text, const QSize &needed, const QSize &room)
{
    return needed.width() > room.width() || needed.height() > room.height()
               ? u"%1 '%2' needs %3x%4 in %5x%6"_s.arg(control.objectName(), text)
                     .arg(needed.width())
                     .arg(needed.height())
                     .arg(room.width())
                     .arg(room.height())
               : QString();
}

QSize Text_Size(const QWidget &control, const QString &text)
{
    return control.fontMetrics().size(Qt::TextShowMnemonic, text);
}

/// The texts that a control shows in parts: columns, tabs, the choice of a combo, the hint in a field.
QStringList Cut_Parts(const QWidget &control)
{
    QStringList cut;
    if (const auto *header = qobject_cast<const QHeaderView *>(&control)) {
        for (int i = 0; i < header->count(); ++i) {
            const QString text = header->model()->headerData(i, Qt::Horizontal).toString();
            if (!header->isSectionHidden(i))
                cut << Cut(control, text, {header->sectionSizeHint(i), 0}, {header->sectionSize(i), 0});
        }
    } else if (const auto *tabs = qobject_cast<const QTabBar *>(&control)) {
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->isTabVisible(i))
                cut << Cut(control, tabs->tabText(i), Text_Size(control, tabs->tabText(i)), tabs->tabRect(i).size());
        }
    } else if (const auto *combo = qobject_cast<const QComboBox *>(&control);
               combo != nullptr && qobject_cast<const QFontComboBox *>(combo) == nullptr) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        option.editable = combo->isEditable();
        const QRect room =
            combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo);
        for (int i = 0; i < combo->count(); ++i)
            cut << Cut(control, combo->itemText(i), Text_Size(control, combo->itemText(i)), room.size());
    } else if (const auto *line = qobject_cast<const QLineEdit *>(&control)) {
        cut << Cut(control, line->placeholderText(), Text_Size(control, line->placeholderText()), line->size());
    }
    cut.removeAll(QString());
    return cut;
}

/// What a control shows without the room for it.
QStringList Cut_Texts(const QWidget &control)
{
    // The toolkit's own buttons that reach what found no room in a tool bar or a row of tabs.
    if (control.objectName() == u"qt_toolbar_ext_button" || control.objectName() == u"ScrollLeftButton")
        return {control.parentWidget()->objectName() + u" is too long"_s};
    QStringList cut = Cut_Parts(control);
    QString text;
    QSize needed = control.sizeHint();
    if (const auto *button = qobject_cast<const QAbstractButton *>(&control))
        text = button->text();
    if (const auto *tool = qobject_cast<const QToolButton *>(&control);
        tool != nullptr && tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !tool->icon().isNull())
        text.clear();
    if (const auto *label = qobject_cast<const QLabel *>(&control)) {
        text = label->text();
        if (label->wordWrap())
            needed = QSize(0, label->heightForWidth(control.width()));
    }
    const QString whole = text.isEmpty() ? QString() : Cut(control, text, needed, control.size());
    return whole.isEmpty() ? cut : cut << whole;
}

/// Shows a form as large as a small screen has room for, and looks at it with each of its pages in front.
void For_Each_Page(QWidget &form, const std::function<void()> &look)
{
    form.resize(form.size().boundedTo(Small_Screen));
    form.show();
    QApplication::processEvents();
    look();
    auto *pages = form.findChild<QListWidget *>(u"Lst_Pages"_s);
    for (int i = 0; pages != nullptr && i < pages->count(); ++i) {
        pages->setCurrentRow(i);
        QApplication::processEvents();
        look();
    }
    for (QTabWidget *tabs : form.findChildren<QTabWidget *>()) {
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            QApplication::processEvents();
            look();
        }
    }
}

/// The access key that a caption carries, "" for none.
QString Access_Key(const QString &caption)
{
    static const QRegularExpression key(u"&([^&\\s])"_s);
    return key.match(QString(caption).remove(u"&&"_s)).captured(1).toUpper();
}

/// Captions of the menu that share an access key.
QStringList Shared_Keys(const QStringList &captions)
{
    QHash<QString, QString> owners;
    QStringList shared;
    for (const QString &caption : captions) {
        const QString key = Access_Key(caption);
        if (!key.isEmpty() && owners.contains(key))
            shared << owners[key] + u" / "_s + caption;
        owners.insert(key, caption);
    }
    return shared;
}

QStringList Captions_Of(const QList<QAction *> &actions)
{
    QStringList captions;
    for (const QAction *action : actions) {
        if (!captions.contains(action->text()))
            captions << action->text();
    }
    return captions;
}

/// The captions of a window's page that answer to Alt: controls that are seen, and the menus.
QStringList Captions_Of_Page(const QWidget &form)
{
    QStringList captions;
    for (const QWidget *control : form.findChildren<QWidget *>()) {
        if (!control->isVisible())
            continue;
        if (const auto *button = qobject_cast<const QAbstractButton *>(control))
            captions << button->text();
        if (const auto *label = qobject_cast<const QLabel *>(control); label != nullptr && label->buddy() != nullptr)
            captions << label->text();
        if (const auto *bar = qobject_cast<const QMenuBar *>(control))
            captions << Captions_Of(bar->actions());
    }
    return captions;
}

/// The menu that a pane of text opens in a table.
QStringList Context_Menu(const QWidget &form)
{
    auto *pane = form.findChild<Text_Editor *>(u"Txt_Content"_s);
    if (pane == nullptr)
        return {};
    pane->setReadOnly(false);
    QTextCursor cursor = pane->textCursor();
    cursor.insertTable(1, 1);
    pane->setTextCursor(cursor);
    emit pane->Menu_Wanted({});
    const auto *menu = qobject_cast<const QMenu *>(QApplication::activePopupWidget());
    const QStringList captions = menu == nullptr ? QStringList() : Captions_Of(menu->actions());
    if (menu != nullptr)
        QApplication::activePopupWidget()->close();
    return captions;
}
} // namespace

class Test_Packs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Keep_Labels_Plain();
        Finish_Dialogs();
    }
    void init();
    void cleanup() { m_program.reset(); }
    void Packs_Hold_The_Same_Keys();
    void English_Is_English();
    void Keys_In_The_Code_Are_There_data();
    void Keys_In_The_Code_Are_There();
    void Captions_Are_There_data() { Each_Form(); }
    void Captions_Are_There();
    void No_Caption_Is_Cut_data() { Each_Form(); }
    void No_Caption_Is_Cut();
    void Access_Keys_Are_Unique_data() { Each_Form(); }
    void Access_Keys_Are_Unique();
    void Labels_Show_Text_As_It_Is_data() { Each_Form(); }
    void Labels_Show_Text_As_It_Is();
    void Foreign_Content_Has_One_Door_data();
    void Foreign_Content_Has_One_Door();

private:
    static void Each_Form();

    std::unique_ptr<Test_Program> m_program;
};

void Test_Packs::init()
{
    m_program = std::make_unique<Test_Program>();
    Load_Root_Facts();
}

void Test_Packs::Each_Form()
{
    QTest::addColumn<QString>("form");
    for (const QString &form : Form_Names + Folder_Form_Names + Document_Page_Names)
        QTest::newRow(qPrintable(form)) << form;
}

void Test_Packs::Packs_Hold_The_Same_Keys()
{
    const Packs packs;
    QCOMPARE(packs.english.Sections(), packs.chinese.Sections());
    for (const char *file : {"/CHINESE.INI", "/English.ini"}) // a blank at the edge is dropped unless it is quoted
        QCOMPARE(Captures(Read_Text(Pack_Folder() + QLatin1String(file)), R"x((?m)^([^=\n]+=(?: .*|.* )\r?)$)x"),
                 QStringList());
    for (const QString &section : packs.chinese.Sections()) {
        QCOMPARE(packs.english.Keys(section), packs.chinese.Keys(section));
        for (const QString &key : packs.chinese.Keys(section)) {
            const QString chinese = packs.chinese.Value(section, key);
            const QString english = packs.english.Value(section, key);
            const QByteArray where = (section + u' ' + key).toUtf8();
            // English needs no word for the unit of a year, a month or a day in the tree of dates.
            static const QRegularExpression unit(u"^_(Year|Month|Day)$"_s);
            QVERIFY2(!chinese.trimmed().isEmpty() && chinese.size() <= Longest_Text, where.constData());
            QVERIFY2(!english.trimmed().isEmpty() || unit.match(key).hasMatch(), where.constData());
            QVERIFY2(english.size() <= Longest_Text, where.constData());
            QVERIFY2(chinese.count(u"%1"_s) == english.count(u"%1"_s), where.constData());
            QVERIFY2(chinese.count(u'|') == english.count(u'|'), where.constData());
        }
    }
}

void Test_Packs::English_Is_English()
{
    static const QRegularExpression chineseSign(u"[\\x{2E80}-\\x{9FFF}\\x{F900}-\\x{FAFF}\\x{FF00}-\\x{FFEF}]"_s);
    const Packs packs;
    for (const QString &section : packs.english.Sections()) {
        for (const QString &key : packs.english.Keys(section))
            QVERIFY2(!packs.english.Value(section, key).contains(chineseSign), qPrintable(section + u' ' + key));
    }
}

void Test_Packs::Keys_In_The_Code_Are_There_data()
{
    QTest::addColumn<QString>("path");
    QDirIterator files(QStringLiteral(ZELQOR_SOURCES), {u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (!Captures(Read_Text(path), R"x("(_[A-Z]\w*)")x").isEmpty())
            QTest::newRow(qPrintable(path.section(u'/', -2))) << path;
    }
}

/// A key asked of the form's own control stands in the form's section, one asked with a section in that one, and one
/// that stands in a table in one of the sections that the file speaks of. A key may be the head of numbered ones.
void Test_Packs::Keys_In_The_Code_Are_There()
{
    QFETCH(QString, path);
    const Packs packs;
    const QString code = Read_Text(path);
    const QString withHeader = code + Read_Text(QString(path).replace(u".cpp"_s, u".h"_s));
    const QString form = Captures(withHeader, R"x(ang[({]\*this, QStringLiteral\("(\w+)"\))x").value(0);
    const auto holds = [&](const QString &section, const QString &key) {
        const QStringList keys = packs.chinese.Keys(section);
        return std::any_of(keys.begin(), keys.end(), [&](const QString &one) {
            return one == key || (one.startsWith(key) && one.back().isDigit());
        });
    };
    for (const QString &key : Captures(code, R"x(ang\.GetString\("(_\w+)"\))x"))
        QVERIFY2(holds(form, key), qPrintable(form + u' ' + key));

    static const QRegularExpression named(
        uR"x(GetString\("(?<k>_\w+)",\s*"(?<s>\w+)"\)|Pack_Text\("(?<t>\w+)",\s*"(?<l>_\w+)"\))x"_s);
    for (auto found = named.globalMatch(code); found.hasNext();) {
        const QRegularExpressionMatch call = found.next();
        const QString section = call.captured(u"s") + call.captured(u"t");
        const QString key = call.captured(u"k") + call.captured(u"l");
        QVERIFY2(holds(section, key), qPrintable(section + u' ' + key));
    }

    const QStringList words = Captures(withHeader, R"x("(\w+)")x");
    for (const QString &key : Captures(code, R"x("(_[A-Z]\w*)")x")) {
        const bool known = std::any_of(words.begin(), words.end(), [&](const QString &w) { return holds(w, key); });
        QVERIFY2(known, qPrintable(key));
    }
}

/// A form shows its design-time words when there is no pack: they are the Chinese ones, and none is missing. The pack
/// names no control that the form doesn't have.
void Test_Packs::Captions_Are_There()
{
    QFETCH(QString, form);
    Language() = {};
    const std::unique_ptr<QWidget> bare = New_Form(form);
    const QString path = m_program->Path(form);
    ctrlLanguage(*bare, form).WriteIniFileFormIDEform(path);
    const Profile::Snapshot written(path);
    const Packs packs;
    // Titles, versions and counts are made at run time.
    static const QRegularExpression filledByCode(
        uR"x(^(Frm_Main/Frm_Main|.*/lblVersion.*|Frm_Update_235/Lab_Total.*|.*/Chk_ListViewPara.*|.*/Lab_Preview.*|.*/(Cmd_Icon|Lab_(Page_Infor|Code|Cate|Node|What|Title|CateName|Day))[|_].*|.*\|Text)$)x"_s);
    for (const QString &key : written.Keys(form)) {
        const QString words = written.Value(form, key);
        if (!words.isEmpty() && !filledByCode.match(form + u'/' + key).hasMatch())
            QCOMPARE(key + u'=' + packs.chinese.Value(form, key), key + u'=' + words);
    }

    QStringList controls;
    for (const QObject *object : bare->findChildren<QObject *>())
        controls << object->objectName() << object->property("Name").toString();
    for (const QString &key : packs.chinese.Keys(form)) {
        if (key.contains(u'|'))
            QVERIFY2(controls.contains(key.section(u'|', 0, 0)), qPrintable(key));
    }
}

void Test_Packs::No_Caption_Is_Cut()
{
    QFETCH(QString, form);
    QStringList cut;
    for (const QString &language : {u"CHINESE"_s, u"English"_s}) {
        Language().Load(Pack_Folder(), language);
        const std::unique_ptr<QWidget> shown = New_Form(form);
        For_Each_Page(*shown, [&] {
            for (const QWidget *control : shown->findChildren<QWidget *>()) {
                if (control->isVisible())
                    cut << Cut_Texts(*control);
            }
            // A layout grows its form rather than cut a text.
            QCOMPARE(shown->size().boundedTo(Small_Screen), shown->size());
        });
    }
    cut.removeDuplicates();
    QCOMPARE(cut.join(u'\n'), QString());
}

void Test_Packs::Access_Keys_Are_Unique()
{
    QFETCH(QString, form);
    QStringList shared;
    for (const QString &language : {u"CHINESE"_s, u"English"_s}) {
        Language().Load(Pack_Folder(), language);
        const std::unique_ptr<QWidget> shown = New_Form(form);
        For_Each_Page(*shown, [&] { shared << Shared_Keys(Captions_Of_Page(*shown)); });
        for (const QLabel *label :
             qobject_cast<QDialog *>(shown.get()) == nullptr ? QList<QLabel *>() : shown->findChildren<QLabel *>()) {
            if (label->buddy() != nullptr && Access_Key(label->text()).isEmpty())
                shared << label->text() + u" has none"_s;
        }
        for (const QMenu *menu : shown->findChildren<QMenu *>())
            shared << Shared_Keys(Captions_Of(menu->actions()));
        shared << Shared_Keys(Context_Menu(*shown));
    }
    shared.removeDuplicates();
    QCOMPARE(shared.join(u'\n'), QString());
}

/// A name or a word of a pack that looks like a page is shown, not obeyed. What is written as a page is made by the
/// program from its own words.
void Test_Packs::Labels_Show_Text_As_It_Is()
{
    QFETCH(QString, form);
    const std::unique_ptr<QWidget> shown = New_Form(form);
    for (QLabel *label : shown->findChildren<QLabel *>()) {
        label->ensurePolished();
        QVERIFY2(label->textFormat() == Qt::PlainText || label->objectName() == u"Lab_Preview",
                 qPrintable(label->objectName()));
    }
}

void Test_Packs::Foreign_Content_Has_One_Door_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QStringList>("doors");
    QTest::newRow("pictures") << u"QImageReader \\w|fromData\\(|loadFromData\\(|QMovie"_s
                              << QStringList{u"raster.cpp"_s};
    QTest::newRow("pages") << u"setHtml\\(|insertHtml\\(|fromHtml\\("_s
                           << QStringList{u"web_page.cpp"_s, u"text_editor.cpp"_s, u"frm_about.cpp"_s};
    // A tip may be taken from another control, and a text's own one is made plain where it is shown; that of a hit is a
    // page of escaped words.
    QTest::newRow("tips")
        << u"(?<!format\\.set)(ToolTip|showText)\\((?!.*(Plain_Tip\\(|toolTip\\(\\)\\);|palette|QApplication))"_s
        << QStringList{u"document_list_view.cpp"_s};
    QTest::newRow("boxes") << u"QMessageBox box|QInputDialog box"_s << QStringList{u"prompts.cpp"_s};
}

/// What somebody else made comes in where it is looked at, and nowhere else.
void Test_Packs::Foreign_Content_Has_One_Door()
{
    QFETCH(QString, call);
    QFETCH(QStringList, doors);
    QStringList found;
    QDirIterator files(QStringLiteral(ZELQOR_SOURCES), {u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        if (Read_Text(files.next()).contains(QRegularExpression(call)))
            found << files.fileName();
    }
    found.sort();
    doors.sort();
    QCOMPARE(found, doors);
}

QTEST_MAIN(Test_Packs)
#include "test_packs.moc"
