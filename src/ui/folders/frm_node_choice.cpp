// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/frm_node_choice.h"

#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "ui/kit/node_delegate.h"
#include "ui_frm_node_choice.h"

#include <QKeyEvent>
#include <QSortFilterProxyModel>

Frm_Node_Choice::Frm_Node_Choice(const Tree_Model &tree, QString movedKey, const QString &what, QWidget *parent)
    : QDialog(parent), m_movedKey(std::move(movedKey)), m_filter(new QSortFilterProxyModel(this)),
      m_ui(std::make_unique<Ui::Frm_Node_Choice>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->Lab_What->setText(Lang.GetString("_What").replace(QLatin1String("%1"), what));
    m_ui->Trv_Choice->setAccessibleName(windowTitle());
    Copy_Tree(tree, m_tree);
    if (!m_movedKey.isEmpty())
        m_tree.Remove_If([this](const Tree_Node &node) { return node.key == m_movedKey; });
    m_filter->setSourceModel(&m_tree);
    m_filter->setRecursiveFilteringEnabled(true);
    m_filter->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_ui->Trv_Choice->setModel(m_filter);
    m_ui->Trv_Choice->setItemDelegate(new Node_Delegate(this));
    m_ui->Trv_Choice->expandToDepth(1);
    m_ui->Trv_Choice->setCurrentIndex(m_filter->index(0, 0));
    m_ui->Txt_Find->installEventFilter(this);
    m_ui->Txt_Find->setFocus();
    const auto enable = [this] {
        m_ui->Cmd_OK->setEnabled(Is_Target(Chosen_Key()));
    };
    enable();
    connect(m_ui->Trv_Choice->selectionModel(), &QItemSelectionModel::currentChanged, this, enable);
    connect(m_ui->Txt_Find, &QLineEdit::textChanged, this, &Frm_Node_Choice::Filter);
    connect(m_ui->Cmd_OK, &QPushButton::clicked, this, &Frm_Node_Choice::accept);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Node_Choice::reject);
}

Frm_Node_Choice::~Frm_Node_Choice() = default;

QString Frm_Node_Choice::Chosen_Key() const
{
    return m_ui->Trv_Choice->currentIndex().data(Tree_Model::Key_Role).toString();
}

bool Frm_Node_Choice::Is_Target(const QString &key) const
{
    return Is_Folder_Key(key) || (!m_movedKey.isEmpty() && key == Root_Key);
}

/// The arrows walk through the tree while the name is being typed.
bool Frm_Node_Choice::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->Txt_Find && event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent *>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
            QCoreApplication::sendEvent(m_ui->Trv_Choice, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void Frm_Node_Choice::Filter(const QString &text)
{
    m_filter->setFilterFixedString(text.trimmed());
    if (text.trimmed().isEmpty())
        return;
    m_ui->Trv_Choice->expandAll();
    // The first folder that has the text itself, not only something below it.
    const QModelIndexList hits = m_filter->match(m_filter->index(0, 0), Qt::DisplayRole, text.trimmed(), 1,
                                                 Qt::MatchContains | Qt::MatchRecursive);
    if (!hits.isEmpty())
        m_ui->Trv_Choice->setCurrentIndex(hits.first());
}
