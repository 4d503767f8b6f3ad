// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/frm_list_view.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/settings.h"
#include "core/system_log.h"
#include "ui/kit/file_drops.h"
#include "ui/kit/icons.h"
#include "ui/kit/numbers.h"
#include "ui/kit/shell.h"
#include "ui/kit/twips.h"
#include "ui/kit/view_look.h"
#include "ui/lists/list_header.h"
#include "ui_frm_list_view.h"
#include "views/column_setup.h"
#include "views/list_columns.h"
#include "views/list_style.h"
#include "views/search_hit.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTimer>
#include <algorithm>

namespace
{
const QString Title_Key = QStringLiteral("Lsv_Code_Info_Title");
constexpr int Least_Title = 180; // pixels
constexpr int Skin_Padding = 10; ///< that a caption gets when the skin is put on the form
constexpr Kept_Value Widths{"Col", "ListViewPara"};
constexpr Kept_Value Order{"Col", "ListViewOrder"};
constexpr Kept_Value Row_Lines{"Col", "ListViewRows"};           ///< "2" for rows of two lines
constexpr Kept_Value Widths_Language{"Col", "ListViewLanguage"}; ///< whose captions the widths were chosen for
} // namespace

Frm_ListView::Frm_ListView(Shell &shell, QWidget *parent)
    : QWidget(parent), m_shell(shell), m_ui(std::make_unique<Ui::Frm_ListView>()),
      m_lang(*this, QStringLiteral("Frm_ListView"))
{
    m_ui->setupUi(this);
    m_ui->Lsv_Code_Info->setModel(&m_list);
    Load_Lang();
    Apply_Look();
    Apply_Columns();
    Add_Commands();
    Connect_Controls();
    m_comfortable = Row_Lines.Read() == QLatin1String("2");
    m_ui->Pic_Page_Facts->hide();
    Set_Heading({});
    setAcceptDrops(true);
    ShowPageInfo({});
}

Frm_ListView::~Frm_ListView() = default;

void Frm_ListView::Load_Lang()
{
    m_lang.LoadControlsCaption();
    m_ui->Cmd_More->setText(m_lang.GetString("_Cmd_More"));
    m_list.Set_Columns(Captioned_Columns());
    m_ui->Lsv_Code_Info->Read_Columns(m_list);
    m_ui->Lsv_Code_Info->Set_Search_Column(m_list.Column(Title_Key));
    m_ui->Lsv_Code_Info->Set_Empty_Text(Empty_Hint());
}

QString Frm_ListView::Empty_Hint() const
{
    return m_lang.GetString("_Empty_Folder") + QLatin1Char('\n') + m_lang.GetString("_Empty_Hint");
}

void Frm_ListView::Connect_Controls()
{
    const struct {
        QToolButton *button;
        const char *icon;
        std::function<int()> page;
    } pageButtons[] = {
        {m_ui->Lbl_FirstPage, "first",
         [] {
             return 1;
         }},
        {m_ui->Lbl_PreviousPage, "previous",
         [this] {
             return m_page - 1;
         }},
        {m_ui->Lbl_NextPage, "next",
         [this] {
             return m_page + 1;
         }},
        {m_ui->Lbl_LastPage, "last",
         [this] {
             return static_cast<int>(m_info.last_page);
         }},
    };
    for (const auto &row : pageButtons) {
        row.button->setIcon(Line_Icon(QLatin1String(row.icon)));
        row.button->setAccessibleName(row.button->toolTip());
        connect(row.button, &QToolButton::clicked, this, [this, page = row.page] { Go_To_Page(page()); });
    }
    connect(m_ui->Cmd_More, &QPushButton::clicked, this, &Frm_ListView::More_Wanted);
    connect(m_ui->Txt_Page, &QLineEdit::returnPressed, this, &Frm_ListView::Go_To_Typed_Page);
    Document_List_View *list = m_ui->Lsv_Code_Info;
    list->Tip_Of = [this](const QModelIndex &row) {
        return Hit_Tip_Of(row);
    };
    connect(list, &QTreeView::doubleClicked, this, &Frm_ListView::Open_Row);
    connect(list, &QTreeView::customContextMenuRequested, this, &Frm_ListView::Show_Menu);
    connect(list->selectionModel(), &QItemSelectionModel::currentChanged, this, &Frm_ListView::Show_Picture);
    connect(m_ui->Cmd_Page_Facts, &QToolButton::toggled, m_ui->Pic_Page_Facts, &QWidget::setVisible);
    connect(m_ui->Cmd_Clear_Search, &QPushButton::clicked, this, &Frm_ListView::Search_Left);
    list->viewport()->installEventFilter(this);
    QHeaderView *header = list->header();
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int /*before*/, int /*after*/) {
        if (column != m_list.Column(Title_Key))
            Fit_Title();
    });
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QHeaderView::customContextMenuRequested, this, &Frm_ListView::Show_Column_Menu);
    connect(header, &QHeaderView::sectionClicked, this, &Frm_ListView::Sort_By);
}

void Frm_ListView::Show_Source(Page_Source source, int page, const QString &emptyText)
{
    m_source = std::move(source);
    m_page = page;
    m_searchKey.clear();
    Set_Heading({});
    m_emptyText = emptyText.isEmpty() ? Empty_Hint() : emptyText;
    m_ui->Lsv_Code_Info->Set_Empty_Text({}); // nothing is known while a password is asked
    Fill();
    m_ui->Lsv_Code_Info->scrollToTop();
}

void Frm_ListView::Set_Search(const QString &key, const QStringList &fields)
{
    m_searchKey = key;
    m_searchFields = fields;
    Set_Heading(Filled(m_lang.GetString("_Searched"), {key}));
    Show_Range();
    m_ui->Lsv_Code_Info->Set_Key_Length(key.size());
}

QString Frm_ListView::Hit_Tip_Of(const QModelIndex &row) const
{
    if (m_searchKey.isEmpty())
        return {};
    return Trap(QStringLiteral("Frm_ListView\\Hit_Tip_Of"), [&] {
        const auto hit = Hit_Of(row.data(List_Model::Tag_Role).toString(), m_searchKey, m_searchFields,
                                row.data(List_Model::Place_Role).toLongLong());
        return hit ? Hit_Tip(*hit) : QString();
    });
}

void Frm_ListView::Show_Text(const QString &text)
{
    m_source = nullptr;
    Set_Heading({});
    m_list.Clear();
    m_ui->Lsv_Code_Info->Set_Empty_Text(text);
    ShowPageInfo({});
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
    QAbstractItemView &rows = *m_ui->Lsv_Code_Info;
    const int row = rows.currentIndex().row();
    Fill();
    if (row >= 0 && !rows.currentIndex().isValid())
        rows.setCurrentIndex(m_list.index(std::min(row, m_list.Row_Count() - 1), 0));
}

void Frm_ListView::Fill()
{
    if (!m_source)
        return;
    const QString current = m_ui->Lsv_Code_Info->currentIndex().data(List_Model::Tag_Role).toString();
    Page_Info info = m_source(m_list, m_page);
    if (m_page > info.last_page) {
        m_page = static_cast<int>(info.last_page);
        info = m_source(m_list, m_page);
    }
    ShowPageInfo(info);
    m_ui->Lsv_Code_Info->Set_Empty_Text(Empty_Text(info.state));
    if (m_sortColumn > 0)
        m_list.Sort_By(m_sortColumn, m_ascending);
    Select_Document(current);
}

QString Frm_ListView::Empty_Text(Page_Info::State state) const
{
    switch (state) {
    case Page_Info::State::Failed:
        return m_lang.GetString("_List_Failed");
    case Page_Info::State::Locked:
        return m_lang.GetString("_Locked_Folder");
    case Page_Info::State::Listed:
        break;
    }
    return m_emptyText;
}

void Frm_ListView::Select_Document(const QString &code_id)
{
    const int row = code_id.isEmpty() ? -1 : m_list.Find(code_id);
    if (row >= 0)
        m_ui->Lsv_Code_Info->setCurrentIndex(m_list.index(row, 0));
}

QString Frm_ListView::Neighbour(const QString &code_id, int step) const
{
    int row = m_list.Find(code_id);
    if (row < 0)
        return {};
    const auto isThere = [this, &row] {
        return row >= 0 && row < m_list.Row_Count();
    };
    do
        row += step;
    while (isThere() && m_list.Row(row).place >= 0);
    return isThere() ? m_list.Row(row).tag : QString();
}

void Frm_ListView::Refresh_Row(const QString &code_id)
{
    // A document that was just written belongs to what is listed, perhaps; a search is not run anew for it.
    if (m_list.Find(code_id) < 0 && m_searchKey.isEmpty())
        Reload();
    else
        Refresh_List_Row(m_list, code_id);
}

QStringList Frm_ListView::Selected_Ids() const
{
    return m_ui->Lsv_Code_Info->Selected_Ids();
}

void Frm_ListView::Open_Row(const QModelIndex &row)
{
    const QString id = row.data(List_Model::Tag_Role).toString();
    if (m_searchKey.isEmpty())
        m_shell.Open_Document(id);
    else
        m_shell.Open_Document_At(id, m_searchKey, row.row() - m_list.Find(id) - 1);
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
    if (files.isEmpty())
        return;
    // The drag's source waits for this event; questions and imports come after it.
    QTimer::singleShot(0, this, [this, files] {
        const int stored = m_shell.Import_Files(files, m_shell.Selected_Folder());
        if (stored > 0)
            Add_Log(Log_Type::Imported, m_lang.GetString("_File_Import") + QStringLiteral(" (%1)").arg(stored));
    });
}

void Frm_ListView::Apply_Columns()
{
    QHeaderView *header = m_ui->Lsv_Code_Info->header();
    header->setSectionsClickable(true);
    header->setSectionsMovable(true);
    header->setStretchLastSection(false);
    header->setMinimumSectionSize(Pixels(300));
    const QString kept = Widths.Read();
    const std::vector<int> widths = kept.isEmpty() ? First_Widths() : Widths_From_Text(kept);
    const bool chosen = Widths_Language.Read().compare(Config().LANGUAGE, Qt::CaseInsensitive) == 0;
    for (int i = 0; i < static_cast<int>(widths.size()); ++i) {
        const int width = Pixels(widths[static_cast<size_t>(i)]);
        header->setSectionHidden(i, width == 0);
        if (width > 0)
            header->resizeSection(i, chosen ? width : std::max(width, header->sectionSizeHint(i) + Skin_Padding));
    }
    const QString keptOrder = Order.Read();
    const std::vector<int> order = kept.isEmpty() && keptOrder.isEmpty() ? First_Order() : Order_From_Text(keptOrder);
    for (int place = 0; place < static_cast<int>(order.size()); ++place)
        header->moveSection(header->visualIndex(order[static_cast<size_t>(place)]), place);
}

void Frm_ListView::Fit_Title()
{
    QHeaderView *header = m_ui->Lsv_Code_Info->header();
    const int title = m_list.Column(Title_Key);
    if (m_fitting || title < 0 || !isVisible() || header->isSectionHidden(title))
        return;
    const QScopedValueRollback fitting(m_fitting, true);
    const int others = header->length() - header->sectionSize(title);
    header->resizeSection(title, std::max(Least_Title, m_ui->Lsv_Code_Info->viewport()->width() - others));
}

void Frm_ListView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    Fit_Title();
}

bool Frm_ListView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        Fit_Title();
    return QWidget::eventFilter(watched, event);
}

void Frm_ListView::Switch_Comfortable()
{
    m_comfortable = !m_comfortable;
    Row_Lines.Keep(QString::number(m_comfortable ? 2 : 1));
    m_ui->Lsv_Code_Info->Set_Comfortable(m_comfortable && m_searchKey.isEmpty());
}

void Frm_ListView::Set_Heading(const QString &text)
{
    // Lines of places have no summary to make room for.
    m_ui->Lsv_Code_Info->Set_Comfortable(m_comfortable && text.isEmpty());
    m_ui->Lab_Heading->setText(text);
    m_ui->Pic_Heading->setVisible(!text.isEmpty());
}

void Frm_ListView::Save_Columns()
{
    const QHeaderView *header = m_ui->Lsv_Code_Info->header();
    std::vector<int> widths;
    std::vector<int> order;
    for (int i = 0; i < header->count(); ++i) {
        widths.push_back(header->isSectionHidden(i) ? 0 : Twips(header->sectionSize(i)));
        order.push_back(header->logicalIndex(i));
    }
    Widths.Keep(Numbers_To_Text(widths));
    Order.Keep(Numbers_To_Text(order));
    Widths_Language.Keep(Config().LANGUAGE);
}

void Frm_ListView::Apply_Look()
{
    Document_List_View *list = m_ui->Lsv_Code_Info;
    list->Set_Grid(Is_On(&Settings_Record::CH_Lsv_Grid));
    Use_Setting_Font(*list, Config().FontName_LSV, Config().FontSize_LSV);
    Use_Setting_Background(*list, Config().Lsv_BColor);
}

void Frm_ListView::ShowPageInfo(const Page_Info &info)
{
    m_info = info;
    QLabel *labels[] = {m_ui->Lab_Page_Infor_0, m_ui->Lab_Page_Infor_1, m_ui->Lab_Page_Infor_2, m_ui->Lab_Page_Infor_3};
    for (size_t i = 0; i < info.labels.size(); ++i)
        labels[i]->setText(Grouped(info.labels[i]));
    Show_Range();
    m_ui->Pic_More->setVisible(info.unlisted > 0);
    const qint64 found = info.labels[Page_Info::Total];
    m_ui->Lab_More->setText(Filled(m_lang.GetString("_More"), {Grouped(found - info.unlisted), Grouped(found)}));
    m_ui->Txt_Page->setText(QString::number(m_page));
    const QList<QWidget *> bar{m_ui->Lbl_FirstPage, m_ui->Lbl_PreviousPage, m_ui->Txt_Page, m_ui->Lbl_NextPage,
                               m_ui->Lbl_LastPage};
    for (QWidget *control : bar)
        control->setEnabled(info.paging);
}

/// "47–92 of 1,600", beside the buttons that turn the page.
void Frm_ListView::Show_Range()
{
    const qint64 shown = m_info.labels[Page_Info::Shown];
    const qint64 total = std::max(m_info.labels[Page_Info::Total], shown);
    const qint64 before = m_info.paging ? (m_page - 1) * m_info.labels[Page_Info::Per_Page] : 0;
    const QString range = Filled(m_lang.GetString("_Range"), {Grouped(before + 1), Grouped(before + shown),
                                                              Grouped(std::max(total, before + shown))});
    m_ui->Cmd_Page_Facts->setText(shown > 0 ? range : QString());
    m_ui->Cmd_Page_Facts->setVisible(shown > 0);
    m_ui->Lab_Heading_Count->setText(Filled(m_lang.GetString("_Found"), {Grouped(total)}));
}

void Frm_ListView::Go_To_Page(int page)
{
    m_page = std::clamp(page, 1, static_cast<int>(m_info.last_page));
    Fill();
    m_ui->Lsv_Code_Info->scrollToTop();
}

/// What is no number leaves the page where it is.
void Frm_ListView::Go_To_Typed_Page()
{
    bool isNumber = false;
    const int page = m_ui->Txt_Page->text().toInt(&isNumber);
    if (isNumber)
        return Go_To_Page(page);
    m_ui->Txt_Page->setText(QString::number(m_page));
    m_ui->Txt_Page->selectAll();
}

void Frm_ListView::Sort_By(int column)
{
    if (column == 0)
        return;
    m_ascending = column == m_sortColumn ? !m_ascending : true;
    m_sortColumn = column;
    Mark_Sorted_Column();
    m_list.Sort_By(column, m_ascending);
}

void Frm_ListView::Mark_Sorted_Column()
{
    for (int i = 1; i < static_cast<int>(m_list.Columns().size()); ++i) {
        QString caption = m_list.Columns()[static_cast<size_t>(i)].caption;
        caption.remove(List_Header::Ascending_Mark).remove(List_Header::Descending_Mark);
        if (i == m_sortColumn)
            caption += m_ascending ? List_Header::Ascending_Mark : List_Header::Descending_Mark;
        m_list.Set_Column_Caption(i, caption);
    }
    QHeaderView *header = m_ui->Lsv_Code_Info->header();
    header->setSortIndicatorShown(true);
    header->setSortIndicator(m_sortColumn, m_ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}
