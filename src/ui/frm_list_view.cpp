// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/frm_list_view.h"

#include "ui/file_drops.h"
#include "ui/icons.h"
#include "ui/shell.h"
#include "ui_frm_list_view.h"
#include "views/list_columns.h"

#include <QDropEvent>
#include <QHeaderView>
#include <algorithm>

namespace
{
const QString Ascending_Mark = QStringLiteral("△");
const QString Descending_Mark = QStringLiteral("▽");
} // namespace

Frm_ListView::Frm_ListView(Shell &shell, QWidget *parent)
    : QWidget(parent), m_shell(shell), m_ui(std::make_unique<Ui::Frm_ListView>()),
      m_lang(*this, QStringLiteral("Frm_ListView"))
{
    m_ui->setupUi(this);
    m_ui->Lsv_Code_Info->setModel(&m_list);
    Load_Lang();
    Set_Up_Columns();
    setAcceptDrops(true);
    m_ui->Lbl_FirstPage->setIcon(Line_Icon(QStringLiteral("first")));
    m_ui->Lbl_PreviousPage->setIcon(Line_Icon(QStringLiteral("previous")));
    m_ui->Lbl_NextPage->setIcon(Line_Icon(QStringLiteral("next")));
    m_ui->Lbl_LastPage->setIcon(Line_Icon(QStringLiteral("last")));

    const auto lastPage = [this] {
        return static_cast<int>(m_info.labels[Page_Info::Pages]);
    };
    connect(m_ui->Lbl_FirstPage, &QToolButton::clicked, this, [this] { Go_To_Page(1); });
    connect(m_ui->Lbl_PreviousPage, &QToolButton::clicked, this, [this] { Go_To_Page(m_page - 1); });
    connect(m_ui->Lbl_NextPage, &QToolButton::clicked, this, [this] { Go_To_Page(m_page + 1); });
    connect(m_ui->Lbl_LastPage, &QToolButton::clicked, this, [this, lastPage] { Go_To_Page(lastPage()); });
    connect(m_ui->Txt_Page, &QLineEdit::returnPressed, this, [this] { Go_To_Page(m_ui->Txt_Page->text().toInt()); });
    connect(m_ui->Lsv_Code_Info, &QTreeView::activated, this,
            [this](const QModelIndex &index) { m_shell.Open_Document(index.data(List_Model::Tag_Role).toString()); });
    connect(m_ui->Lsv_Code_Info->header(), &QHeaderView::sectionClicked, this, &Frm_ListView::Sort_By);
    ShowPageInfo({});
}

Frm_ListView::~Frm_ListView() = default;

void Frm_ListView::Load_Lang()
{
    m_lang.LoadControlsCaption();
}

void Frm_ListView::Show_Source(Page_Source source, int page)
{
    m_source = std::move(source);
    m_page = page;
    Reload();
}

void Frm_ListView::Remove_Rows(const QStringList &codeIds)
{
    for (const QString &id : codeIds) {
        const int row = m_list.Find(id);
        if (row >= 0)
            m_list.Remove(row);
    }
}

void Frm_ListView::Focus_Rows()
{
    QAbstractItemView &rows = *m_ui->Lsv_Code_Info;
    rows.setFocus();
    if (!rows.currentIndex().isValid())
        rows.setCurrentIndex(m_list.index(0, 0, {}));
}

void Frm_ListView::Reload()
{
    if (!m_source)
        return;
    ShowPageInfo(m_source(m_list, m_page));
    if (m_sortColumn > 0)
        m_list.Sort_By(m_sortColumn, m_ascending);
}

void Frm_ListView::Refresh_Row(const QString &code_id)
{
    Refresh_List_Row(m_list, code_id);
}

QStringList Frm_ListView::Selected_Ids() const
{
    QStringList ids;
    for (const QModelIndex &row : m_ui->Lsv_Code_Info->selectionModel()->selectedRows())
        ids << row.data(List_Model::Tag_Role).toString();
    return ids;
}

void Frm_ListView::dragEnterEvent(QDragEnterEvent *event)
{
    if (!Dropped_Files(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void Frm_ListView::dropEvent(QDropEvent *event)
{
    const QStringList files = Dropped_Files(*event->mimeData());
    event->setAccepted(!files.isEmpty());
    if (!files.isEmpty())
        m_shell.Import_Files(files, m_shell.Selected_Folder());
}

void Frm_ListView::Set_Up_Columns()
{
    m_list.Set_Columns(Captioned_Columns());
    QHeaderView *header = m_ui->Lsv_Code_Info->header();
    header->setSectionsClickable(true);
    header->setStretchLastSection(false);
    const auto columns = Document_Columns();
    for (size_t i = 0; i < columns.size(); ++i)
        header->resizeSection(static_cast<int>(i),
                              std::max(columns[i].width, header->sectionSizeHint(static_cast<int>(i))));
}

void Frm_ListView::ShowPageInfo(const Page_Info &info)
{
    m_info = info;
    QLabel *labels[] = {m_ui->Lab_Page_Infor_0, m_ui->Lab_Page_Infor_1, m_ui->Lab_Page_Infor_2, m_ui->Lab_Page_Infor_3};
    for (size_t i = 0; i < info.labels.size(); ++i)
        labels[i]->setText(QString::number(info.labels[i]));
    m_ui->Txt_Page->setText(QString::number(m_page));
    const QList<QWidget *> bar{m_ui->Lbl_FirstPage, m_ui->Lbl_PreviousPage, m_ui->Txt_Page, m_ui->Lbl_NextPage,
                               m_ui->Lbl_LastPage};
    for (QWidget *control : bar)
        control->setEnabled(info.paging);
}

void Frm_ListView::Go_To_Page(int page)
{
    const int last = std::max(1, static_cast<int>(m_info.labels[Page_Info::Pages]));
    m_page = std::clamp(page, 1, last);
    Reload();
}

void Frm_ListView::Sort_By(int column)
{
    if (column == 0)
        return;
    m_ascending = column == m_sortColumn ? !m_ascending : true;
    m_sortColumn = column;
    for (int i = 1; i < static_cast<int>(m_list.Columns().size()); ++i) {
        QString caption = m_list.Columns()[static_cast<size_t>(i)].caption;
        caption.remove(Ascending_Mark).remove(Descending_Mark);
        if (i == column)
            caption += m_ascending ? Ascending_Mark : Descending_Mark;
        m_list.Set_Column_Caption(i, caption);
    }
    m_list.Sort_By(column, m_ascending);
}
