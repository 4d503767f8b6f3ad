// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/save_as_menu.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/printing.h"
#include "exchange/document_export.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/ctrl_language.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"
#include "ui/kit/work_window.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace
{
const QString Page = QStringLiteral("Page");
const QString Open_Path = QStringLiteral("OpenPath");
} // namespace

struct Save_As_Menu::Kind {
    const char *name;     ///< of the menu's entry; its caption has the usual key
    const char *words;    ///< key of what the dialog calls it
    const char *patterns; ///< the first one is what a name without suffix takes
};
const Save_As_Menu::Kind Save_As_Menu::Kinds[] = {
    {"Mnu_Export_Txt", "_Text", "*.txt"},       {"Mnu_Export_Rtf", "_Rich", "*.rtf"},
    {"Mnu_Export_Htm", "_Htm", "*.htm *.html"}, {"Mnu_Export_Mht", "_Mht", "*.mht *.mhtml"},
    {"Mnu_Export_Doc", "_Doc", "*.doc"},        {"Mnu_Export_Chm", "_Chm", "*.chm"},
    {"Mnu_Export_Docx", "_Docx", "*.docx"},     {"Mnu_Export_Odt", "_Odt", "*.odt"},
    {"Mnu_Export_Pdf", "_Pdf", "*.pdf"},        {"Mnu_Export_Md", "_Md", "*.md *.markdown"},
};

namespace
{
QString First_Suffix(const char *patterns)
{
    return QString::fromLatin1(patterns).section(QLatin1Char(' '), 0, 0).mid(1);
}

QString Filter(const char *words, const QString &patterns)
{
    return Pack_Text("Frm_Main", words) + QStringLiteral("(%1)|%1").arg(patterns);
}

/// The folder that was used last, "" when it is gone.
QString Last_Folder()
{
    const QString folder = Files::Native_Path(GetIni(Page, Open_Path));
    return !folder.isEmpty() && QFileInfo(folder).isDir() ? folder : QString();
}
} // namespace

Save_As_Menu::Save_As_Menu(QMenu &menu, Document_Tabs &tabs, Shell &shell, QWidget &window)
    : QObject(&window), m_menu(menu), m_tabs(tabs), m_shell(shell), m_window(window)
{
    m_menu.menuAction()->setIcon(Line_Icon(QStringLiteral("save-as")));
    Add_Command("SaveAs", "_Cmd_SaveAs", nullptr)->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    for (const Kind &kind : Kinds) {
        if (&kind == Kinds || qstrcmp(kind.name, "Mnu_Export_Docx") == 0)
            m_menu.addSeparator();
        Add_Command(kind.name, (QByteArray(kind.name) + "|Index|Caption").constData(), &kind);
    }
    connect(&m_tabs, &QTabWidget::currentChanged, this, &Save_As_Menu::Show_State);
    Show_State();
}

QAction *Save_As_Menu::Add_Command(const char *name, const char *caption, const Kind *kind)
{
    auto *action = new QAction(this);
    action->setObjectName(QLatin1String(name));
    Set_Caption(*action, Pack_Text("Frm_Main", caption));
    connect(action, &QAction::triggered, this, [this, kind] { Save(kind); });
    m_menu.addAction(action);
    return action;
}

void Save_As_Menu::Show_State()
{
    const bool is = m_tabs.Current_Document() != nullptr;
    m_menu.setEnabled(is);
    for (QAction *action : m_menu.actions())
        action->setEnabled(is);
}

/// The filters of all kinds, the one of a suffix first.
QStringList Save_As_Menu::All_Filters(const QString &suffix)
{
    QStringList filters;
    qsizetype first = -1;
    for (const Kind &kind : Kinds) {
        if (First_Suffix(kind.patterns) == suffix)
            first = filters.size();
        filters << Filter(kind.words, QLatin1String(kind.patterns));
    }
    if (first < 0)
        filters.prepend(Filter("_File", QLatin1Char('*') + suffix));
    else
        filters.move(first, 0);
    return filters;
}

QString Save_As_Menu::Ask_For_File(const Kind *kind) const
{
    Frm_Doc_Standard &document = *m_tabs.Current_Document();
    QString suffix = QStringLiteral(".rtf");
    if (kind != nullptr)
        suffix = First_Suffix(kind->patterns);
    else if (document.Is_Foreign()) // its own format keeps all of it
        suffix = QLatin1Char('.') + document.Form().type.toLower();
    const QStringList filters =
        kind != nullptr ? QStringList(Filter(kind->words, QLatin1String(kind->patterns))) : All_Filters(suffix);
    const QString name = Files::Name_For(document.Title(), Pack_Text("Frm_Doc_Standard", "_NewDoc")) + suffix;
    const QString folder = Last_Folder();
    return Prompts::Save_File(Pack_Text("Frm_Main", "_SaveAs"), folder.isEmpty() ? name : QDir(folder).filePath(name),
                              filters.join(QLatin1Char('|')));
}

void Save_As_Menu::Save(const Kind *kind)
{
    Frm_Doc_Standard *document = m_tabs.Current_Document();
    if (document == nullptr)
        return;
    document->Commit_Composition();
    const QString path = Ask_For_File(kind);
    if (path.isEmpty())
        return;
    WriteIni(Page, Open_Path, QFileInfo(path).path());
    Write(path);
}

void Save_As_Menu::Write(const QString &path)
{
    const Document_Form &form = m_tabs.Current_Document()->Form();
    Outgoing_Document document(*form.content);
    document.code_id = form.code_id;
    document.title = form.title;
    document.type = form.type;
    document.file = form.file;
    Export_Outcome outcome;
    const bool done = Trap(
        Export_Source(path),
        [&] {
            Long_Work::Run(&m_window, Pack_Text("Frm_Main", "_SaveAs"), [&](Work &work) {
                outcome = Export_Document(document, {path, Printing::Write_Pdf}, work);
            });
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
    if (!done)
        return;
    m_shell.Set_Status(outcome.stopped ? Pack_Text("Export_Document", "_Stopped") : path);
    if (!outcome.remark.isEmpty())
        Prompts::Message(outcome.remark, App().App_Title, Prompts::Icon::Information);
}
