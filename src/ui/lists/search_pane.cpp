// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/search_pane.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/icons.h"
#include "ui/kit/node_delegate.h"
#include "ui/kit/numbers.h"
#include "ui/kit/shell.h"
#include "ui_search_pane.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace
{
/// Folders named in the scope of a search; the rest is counted.
constexpr qsizetype Most_Names = 6;
constexpr int Field_Role = Qt::UserRole;

QString Named(const QStringList &names, const QString &more)
{
    if (names.size() <= Most_Names)
        return Pack_List(names);
    return Pack_List(names.mid(0, Most_Names)) + more.arg(names.size() - Most_Names);
}
} // namespace

Search_Pane::Search_Pane(Shell &shell, QWidget *parent)
    : QWidget(parent), m_shell(shell), m_ui(std::make_unique<Ui::Search_Pane>()),
      m_lang(*this, QStringLiteral("Search_Pane"))
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_ui->Trv_Find->setModel(&m_folders);
    m_ui->Trv_Find->setItemDelegate(new Node_Delegate(this));
    m_ui->Trv_Find->setAccessibleName(m_lang.GetString("_Folders"));
    m_ui->Lsv_Find->setAccessibleName(m_lang.GetString("_Fields"));
    m_ui->Cob_FindKey->setAccessibleName(m_ui->Cmd_FindTxt->text());
    m_ui->Cob_FindKey->lineEdit()->setPlaceholderText(m_lang.GetString("_IniFindKey", "Frm_Main"));
    m_ui->Cob_FindKey->lineEdit()->setClearButtonEnabled(true);
    m_ui->Cob_FindKey->setCompleter(nullptr);
    m_ui->Cmd_FindTxt->setIcon(Line_Icon(QStringLiteral("find")));
    m_ui->Chk_Lsv_Detail->setChecked(Is_On(&Settings_Record::CH_Lsv_Detail));
    m_ui->Cob_FindKey->addItems(Config().KEYS.split(QLatin1Char(','), Qt::SkipEmptyParts));
    m_ui->Cob_FindKey->setCurrentIndex(-1);
    Fill_Fields();
    Show_Running(false);
    Connect_Controls();
    Add_Folds();
}

Search_Pane::~Search_Pane() = default;

void Search_Pane::Copy_Folders(const Tree_Model &tree)
{
    m_folders.Copy(tree);
    for (int i = 0; i < m_folders.Node_Count(); ++i)
        m_ui->Trv_Find->setExpanded(m_folders.Index_Of(i), m_folders.Node(i).expanded);
    Show_Folds();
}

void Search_Pane::Start_Typing()
{
    m_ui->Cob_FindKey->setFocus();
    m_ui->Cob_FindKey->lineEdit()->selectAll();
}

void Search_Pane::Save_History()
{
    const QComboBox &keys = *m_ui->Cob_FindKey;
    const int most = Config().KEYS_NUM.toInt();
    QString history;
    for (int i = keys.count() - 1; i >= std::max(0, keys.count() - most); --i)
        history += keys.itemText(i) + QLatin1Char(',');
    Keep_Setting(&Settings_Record::KEYS_NUM, Config().KEYS_NUM);
    Keep_Setting(&Settings_Record::KEYS, history);
}

void Search_Pane::Cmd_FindTxt()
{
    m_typing.stop();
    const QString typed = m_ui->Cob_FindKey->currentText();
    const QString key = Search_Key(typed);
    if (key.isEmpty() || typed == m_lang.GetString("_IniFindKey", "Frm_Main")) {
        Prompts::Message(m_lang.GetString("_FindKey", "Frm_Main"), App().App_Title);
        Start_Typing();
        return;
    }
    const Search_Request request = Request_On_Screen();
    if (!request.everywhere && request.folders.isEmpty()) {
        Prompts::Message(m_lang.GetString("_No_Folder"), App().App_Title);
        return;
    }
    Start(key, request);
    Remember_Key(key);
}

void Search_Pane::Search_Quietly()
{
    const QString key = Search_Key(Key());
    const Search_Request request = Request_On_Screen();
    const bool same = m_result != nullptr && m_result->key == key && m_where == Search_Where(request);
    if (!key.isEmpty() && !same && (request.everywhere || !request.folders.isEmpty()))
        Start(key, request);
}

void Search_Pane::Start(const QString &key, const Search_Request &request)
{
    m_result = std::make_shared<Search_Result>();
    m_result->key = key;
    m_result->fields = request.fields;
    m_result->scope = Scope_Of(request);
    m_where = Search_Where(request);
    m_limit = Search_Limit;
    emit Search_Started();
    Run();
}

QString Search_Pane::Key() const
{
    return m_ui->Cob_FindKey->currentText();
}

void Search_Pane::Set_Key(const QString &key)
{
    m_typing.stop();
    m_ui->Cob_FindKey->setEditText(key);
    if (key.isEmpty())
        m_result = nullptr;
}

bool Search_Pane::Is_Worth_Searching(const QString &key)
{
    constexpr char16_t First_Of_The_East = 0x2E80;
    const QString sought = key.trimmed();
    return sought.size() > 1 || (sought.size() == 1 && sought.front().unicode() >= First_Of_The_East);
}

void Search_Pane::List_More()
{
    constexpr int Times = 10;
    if (m_result == nullptr || m_run.Is_Running())
        return;
    m_limit *= Times;
    Run();
}

void Search_Pane::Run()
{
    m_shell.Set_Status(m_lang.GetString("_LookIng", "Frm_Main"));
    Show_Running(true);
    m_run.Start(m_where, m_result->key, m_limit);
}

void Search_Pane::Stop_Now()
{
    if (!m_run.Is_Running())
        return;
    m_run.Forget();
    Search_Outcome stopped;
    stopped.stopped = true;
    Show_Outcome(stopped);
}

void Search_Pane::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_run.Is_Running())
        m_run.Stop();
    else
        QWidget::keyPressEvent(event);
}

void Search_Pane::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // Only now the skin has given the rows their height: all fields are seen, and the folders have the rest.
    const QListWidget &fields = *m_ui->Lsv_Find;
    const int row = fields.sizeHintForRow(0) + 2 * fields.spacing();
    m_ui->Lsv_Find->setMaximumHeight(fields.count() * row + 2 * (fields.frameWidth() + fields.spacing()));
}

void Search_Pane::Add_Folds()
{
    const struct {
        QToolButton *fold;
        QWidget *folded;
    } rows[] = {{m_ui->Cmd_Fold_Folders, m_ui->Trv_Find}, {m_ui->Cmd_Fold_Fields, m_ui->Lsv_Find}};
    for (const auto &row : rows) {
        row.folded->hide();
        row.fold->setArrowType(Qt::RightArrow);
        connect(row.fold, &QToolButton::toggled, this, [row](bool open) {
            row.folded->setVisible(open);
            row.fold->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
        });
    }
    const auto changed = [this] {
        Show_Folds();
        if (Is_Worth_Searching(Key()) && m_result != nullptr)
            m_typing.start();
    };
    connect(&m_folders, &QAbstractItemModel::dataChanged, this, changed);
    connect(m_ui->Lsv_Find, &QListWidget::itemChanged, this, changed);
    Show_Folds();
}

/// Each line says what is ticked below it.
void Search_Pane::Show_Folds()
{
    const QString all = m_lang.GetString("_Fold_All");
    const QStringList folders = m_folders.Ticked_Names();
    QStringList fields;
    for (int i = 0; i < m_ui->Lsv_Find->count(); ++i) {
        if (m_ui->Lsv_Find->item(i)->checkState() == Qt::Checked)
            fields << m_ui->Lsv_Find->item(i)->text();
    }
    const bool everywhere = m_folders.Root_Ticked();
    const bool everyField = fields.size() == m_ui->Lsv_Find->count();
    m_ui->Cmd_Fold_Folders->setText(
        Filled(m_lang.GetString("_Fold_Folders"), {everywhere ? all : Grouped(folders.size())}));
    m_ui->Cmd_Fold_Fields->setText(
        Filled(m_lang.GetString("_Fold_Fields"), {everyField ? all : Grouped(fields.size())}));
}

void Search_Pane::Fill_Fields()
{
    for (const Search_Field &field : Search_Fields()) {
        auto *item = new QListWidgetItem(Caption_Of(field), m_ui->Lsv_Find);
        item->setData(Field_Role, QLatin1String(field.column));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
}

void Search_Pane::Connect_Controls()
{
    connect(m_ui->Cmd_FindTxt, &QToolButton::clicked, this, &Search_Pane::Cmd_FindTxt);
    connect(m_ui->Cob_FindKey->lineEdit(), &QLineEdit::returnPressed, this, &Search_Pane::Cmd_FindTxt);
    m_typing.setSingleShot(true);
    m_typing.setInterval(Typing_Pause);
    connect(&m_typing, &QTimer::timeout, this, &Search_Pane::Search_Quietly);
    connect(m_ui->Cob_FindKey->lineEdit(), &QLineEdit::textEdited, this, [this](const QString &key) {
        if (Is_Worth_Searching(key))
            m_typing.start();
        else
            m_typing.stop();
    });
    connect(m_ui->Cmd_Find_Stop, &QToolButton::clicked, this, [this] { m_run.Stop(); });
    connect(m_ui->Chk_Lsv_Detail, &QCheckBox::toggled, this,
            [](bool on) { Keep_Switch(&Settings_Record::CH_Lsv_Detail, on); });
    connect(&m_run, &Search_Run::Progressed, this, &Search_Pane::Show_Progress);
    connect(&m_run, &Search_Run::Found_Early, this,
            [this](const std::shared_ptr<Condition_Rows> &found) { Show_Early(*found); });
    connect(&m_run, &Search_Run::Finished, this,
            [this](const std::shared_ptr<Search_Outcome> &outcome) { Show_Outcome(*outcome); });
}

void Search_Pane::Show_Running(bool running)
{
    m_ui->Pic_Find_Progress->setVisible(running);
    if (running)
        m_ui->Prg_Find->setRange(0, 0);
}

void Search_Pane::Show_Progress(qint64 documents, qint64 all)
{
    m_ui->Prg_Find->setRange(0, static_cast<int>(all));
    m_ui->Prg_Find->setValue(static_cast<int>(std::min(documents, all)));
}

/// A search that began anew tells the same rows again.
void Search_Pane::Show_Early(Condition_Rows &found)
{
    if (found.rows.size() <= m_result->found.rows.size())
        return;
    m_result->found = std::move(found);
    m_result->old = false;
    emit Search_Goes_On(m_result);
}

void Search_Pane::Show_Outcome(Search_Outcome &outcome)
{
    Show_Running(false);
    if (!outcome.stopped) {
        m_result->found = std::move(outcome.found);
        m_result->old = false;
    }
    QString end = m_lang.GetString("_LookEnd", "Frm_Main");
    if (outcome.error.number != 0) {
        Err() = outcome.error;
        end = m_result->scope = Error_Text(Err());
        Prompts::Message(end, App().App_Title, Prompts::Icon::Exclamation);
        Error_Log(QStringLiteral("Frm_Main\\Cmd_FindTxt_Click"));
    }
    if (outcome.stopped)
        end = m_result->scope = m_lang.GetString(m_result->found.rows.empty() ? "_Stopped" : "_Stopped_Part");
    emit Search_Ended(m_result);
    m_shell.Set_Status(end);
}

Search_Request Search_Pane::Request_On_Screen()
{
    Search_Request request;
    request.key = m_ui->Cob_FindKey->currentText();
    request.everywhere = m_folders.Root_Ticked();
    request.folders = m_folders.Ticked_Ids();
    for (int i = 0; i < m_ui->Lsv_Find->count(); ++i) {
        const QListWidgetItem *item = m_ui->Lsv_Find->item(i);
        if (item->checkState() == Qt::Checked)
            request.fields << item->data(Field_Role).toString();
    }
    if (request.fields.isEmpty())
        m_ui->Lsv_Find->item(0)->setCheckState(Qt::Checked);
    return request;
}

QString Search_Pane::Scope_Of(const Search_Request &request) const
{
    QStringList fields;
    for (int i = 0; i < m_ui->Lsv_Find->count(); ++i) {
        if (m_ui->Lsv_Find->item(i)->checkState() == Qt::Checked)
            fields << m_ui->Lsv_Find->item(i)->text();
    }
    const QString folders = request.everywhere ? m_lang.GetString("_Everywhere")
                                               : Named(m_folders.Ticked_Names(), m_lang.GetString("_And_More"));
    return QStringList{m_lang.GetString("_Nothing_Found").arg(m_result->key), m_lang.GetString("_In_Folders") + folders,
                       m_lang.GetString("_In_Fields") + Pack_List(fields)}
        .join(QLatin1Char('\n'));
}

void Search_Pane::Remember_Key(const QString &key)
{
    QComboBox &keys = *m_ui->Cob_FindKey;
    for (int i = 0; i < keys.count(); ++i) {
        if (keys.itemText(i).trimmed() == key.trimmed())
            return;
    }
    const QString typed = keys.currentText();
    keys.addItem(key);
    keys.setEditText(typed);
}
