// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/frm_bookmark_admin.h"

#include "core/process_state.h"
#include "core/trouble.h"
#include "platform/models/plain_tip.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_bookmark_admin.h"

#include <algorithm>

namespace
{
struct Tag_Column {
    const char *key;
    int width; ///< in average characters
};

constexpr Tag_Column Tag_Columns[] = {
    {"LV_Tag|Index|Item1", 22},
    {"LV_Tag|Index|Item2", 12},
    {"LV_Tag|Index|Item3", 30},
    {"LV_Tag|Index|Item4", 20},
};

void Say(const QString &text)
{
    Prompts::Message(text, App().App_Title, Prompts::Icon::Exclamation);
}

bool Agreed(const QString &question)
{
    return Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No, Prompts::Answer::No) ==
           Prompts::Answer::Yes;
}
} // namespace

Frm_BookMark_Admin::Frm_BookMark_Admin(const Bookmark &preset, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_BookMark_Admin>())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    Set_Up_List();
    Connect_Controls();
    Show_Bookmark(preset);
    m_ui->Txt_Tag_Name->setFocus();
}

Frm_BookMark_Admin::~Frm_BookMark_Admin() = default;

bool Frm_BookMark_Admin::Load(const QString &code_id)
{
    m_codeId = code_id;
    if (!m_list.Load(code_id)) {
        Say(Last_Trouble());
        return false;
    }
    Show_Rows(-1);
    return true;
}

void Frm_BookMark_Admin::Set_Up_List()
{
    std::vector<List_Column> columns;
    for (const Tag_Column &column : Tag_Columns)
        columns.push_back({QLatin1String(column.key), m_lang.GetString(column.key)});
    m_rows.Set_Columns(std::move(columns));
    m_ui->LV_Tag->setModel(&m_rows);
    m_ui->LV_Tag->setAccessibleName(windowTitle());
    for (int i = 0; i < static_cast<int>(std::size(Tag_Columns)); ++i)
        m_ui->LV_Tag->setColumnWidth(i, Tag_Columns[i].width * fontMetrics().averageCharWidth());
}

void Frm_BookMark_Admin::Connect_Controls()
{
    const auto take = [this](const QModelIndex &index) {
        if (index.isValid())
            Show_Bookmark(m_list.Rows()[static_cast<size_t>(index.row())]);
    };
    connect(m_ui->LV_Tag, &QTreeView::clicked, this, take);
    connect(m_ui->LV_Tag->selectionModel(), &QItemSelectionModel::currentChanged, this, take);
    connect(m_ui->Txt_LineNo, &QLineEdit::textEdited, this, &Frm_BookMark_Admin::Txt_LineNo_Change);
    connect(m_ui->Cmd_Add, &QPushButton::clicked, this, &Frm_BookMark_Admin::Cmd_Add_Click);
    connect(m_ui->Cmd_Tag_Update, &QPushButton::clicked, this, &Frm_BookMark_Admin::Cmd_Tag_Update_Click);
    connect(m_ui->Cmd_Tag_Delete, &QPushButton::clicked, this, &Frm_BookMark_Admin::Cmd_Tag_Delete_Click);
    connect(m_ui->Cmd_Tag_Up, &QPushButton::clicked, this, [this] { Show_Rows(m_list.Up(Selected_Row())); });
    connect(m_ui->Cmd_Tag_Down, &QPushButton::clicked, this, [this] { Show_Rows(m_list.Down(Selected_Row())); });
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_BookMark_Admin::reject);
}

void Frm_BookMark_Admin::Cmd_Add_Click()
{
    const std::optional<Bookmark> typed = Typed();
    if (!typed || !May_Take(typed->name, -1))
        return;
    Show_Rows(m_list.Add(*typed));
    m_ui->Txt_Tag_Name->setFocus(); // the next name takes the place of this one
    m_ui->Txt_Tag_Name->selectAll();
}

void Frm_BookMark_Admin::Cmd_Tag_Update_Click()
{
    const int row = Selected_Row();
    if (row < 0)
        return;
    const std::optional<Bookmark> typed = Typed();
    if (typed && May_Take(typed->name, row))
        Show_Rows(m_list.Update(row, *typed));
}

void Frm_BookMark_Admin::Cmd_Tag_Delete_Click()
{
    const int row = Selected_Row();
    if (row < 0)
        return;
    const QString name = m_list.Rows()[static_cast<size_t>(row)].name;
    if (!Agreed(m_lang.GetString("_TagName") + name + m_lang.GetString("_TagDel")))
        return;
    m_list.Delete(row);
    Show_Bookmark({});
    Show_Rows(std::min(row, static_cast<int>(m_list.Rows().size()) - 1));
}

/// Digits only: anything else is told and taken back.
void Frm_BookMark_Admin::Txt_LineNo_Change(const QString &text)
{
    const bool digits = std::all_of(text.begin(), text.end(),
                                    [](QChar one) { return one >= QLatin1Char('0') && one <= QLatin1Char('9'); });
    if (digits) {
        m_lineNo = text;
        return;
    }
    m_ui->Txt_LineNo->setText(m_lineNo);
    Say(m_lang.GetString("_LineNo"));
}

void Frm_BookMark_Admin::Show_Bookmark(const Bookmark &bookmark)
{
    m_ui->Txt_Tag_Name->setText(bookmark.name);
    m_ui->Txt_LineNo->setText(bookmark.line);
    m_ui->Txt_Selected->setText(bookmark.selected);
    m_ui->Txt_Title->setText(bookmark.title);
    m_lineNo = bookmark.line;
}

std::optional<Bookmark> Frm_BookMark_Admin::Typed()
{
    const Bookmark typed{m_ui->Txt_Tag_Name->text().trimmed(), m_ui->Txt_LineNo->text(), m_ui->Txt_Selected->text(),
                         m_ui->Txt_Title->text()};
    const Bookmark_Refusal refusal = Bookmark_List::Check(typed);
    if (refusal == Bookmark_Refusal::None)
        return typed;
    Say(Refusal_Text(refusal));
    QLineEdit *wrong = refusal == Bookmark_Refusal::No_Line ? m_ui->Txt_LineNo : m_ui->Txt_Tag_Name;
    wrong->setFocus();
    wrong->selectAll();
    return std::nullopt;
}

bool Frm_BookMark_Admin::May_Take(const QString &name, int except)
{
    return m_list.Find(name, except) < 0 ||
           Agreed(m_lang.GetString("_TagName") + name + m_lang.GetString("_TagReplace"));
}

void Frm_BookMark_Admin::Show_Rows(int row)
{
    std::vector<List_Row> rows;
    for (const Bookmark &bookmark : m_list.Rows()) {
        List_Row shown;
        for (const QString &text : {bookmark.name, bookmark.line, bookmark.selected, bookmark.title})
            shown.texts << text.simplified();
        shown.tool_tip = Plain_Tip(bookmark.selected);
        rows.push_back(std::move(shown));
    }
    m_rows.Replace(std::move(rows));
    m_ui->LV_Tag->setCurrentIndex(m_rows.index(row, 0));
    const bool any = m_rows.Row_Count() > 0;
    for (QPushButton *button : {m_ui->Cmd_Tag_Update, m_ui->Cmd_Tag_Delete, m_ui->Cmd_Tag_Up, m_ui->Cmd_Tag_Down})
        button->setEnabled(any);
}

int Frm_BookMark_Admin::Selected_Row() const
{
    return m_ui->LV_Tag->currentIndex().row();
}

/// A name that was typed and is in no row would be lost. @returns whether the form may close
bool Frm_BookMark_Admin::Settle_Typed()
{
    const QString name = m_ui->Txt_Tag_Name->text().trimmed();
    if (name.isEmpty() || m_list.Find(name) >= 0)
        return true;
    switch (Prompts::Ask(m_lang.GetString("_Untaken").arg(name), App().App_Title, Prompts::Choice::Yes_No_Cancel)) {
    case Prompts::Answer::Yes:
        Cmd_Add_Click();
        return m_list.Find(name) >= 0;
    case Prompts::Answer::No:
        return true;
    default:
        return false;
    }
}

void Frm_BookMark_Admin::done(int result)
{
    if (!Settle_Typed())
        return;
    if (m_list.Store(m_codeId) || Agreed(m_lang.GetString("_Lost") + QLatin1Char('\n') + Last_Trouble()))
        QDialog::done(result);
}
