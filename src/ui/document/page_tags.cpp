// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/page_tags.h"

#include "core/trouble.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"
#include "ui_page_tags.h"
#include "views/tags.h"

#include <QStyledItemDelegate>

namespace
{
/// A line has room for its box, which skins draw larger than the text.
class Box_Delegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        constexpr int Air = 4;
        const int box = option.widget->style()->pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget);
        return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, box + Air});
    }
};
} // namespace

Page_Tags::Page_Tags(Shell &shell, QWidget & /*form*/)
    : m_shell(shell), m_ui(std::make_unique<Ui::Page_Tags>()), m_lang(*this, QStringLiteral("Page_Tags"))
{
    m_ui->setupUi(this);
    Load_Lang();
    m_ui->Lsv_Tags->setModel(&m_list);
    m_ui->Lsv_Tags->setWrapping(true);
    m_ui->Lsv_Tags->setItemDelegate(new Box_Delegate(this));
    connect(&m_list, &Check_Model::dataChanged, this, &Page_Tags::Follow_Ticks);
    connect(m_ui->Chk_All_Tags, &QCheckBox::toggled, this, &Page_Tags::Fill);
    connect(m_ui->Cmd_AddTag, &QPushButton::clicked, this, &Page_Tags::Cmd_AddTag_Click);
    m_ui->Img_Tool_Action_2->setIcon(Line_Icon(QStringLiteral("take")));
    connect(m_ui->Img_Tool_Action_2, &QToolButton::clicked, this, [this] {
        emit Selection_Wanted(m_ui->Key_Tag);
        Cmd_AddTag_Click();
    });
    connect(m_ui->Key_Tag, &QLineEdit::returnPressed, this, &Page_Tags::Cmd_AddTag_Click);
}

Page_Tags::~Page_Tags() = default;

void Page_Tags::Load_Lang()
{
    m_lang.LoadControlsCaption();
    emit Caption_Changed();
}

QString Page_Tags::Caption() const
{
    return m_lang.GetString("_Tab");
}

void Page_Tags::Show_Document(const QString &code_id, const QString & /*title*/)
{
    m_id = code_id;
    m_ui->Chk_All_Tags->setHidden(m_id.isEmpty()); // there all are shown
    m_ticked.clear();
    Fill();
}

/// A new document gets what was ticked for it.
void Page_Tags::Document_Saved(const QString &code_id, const QString & /*title*/)
{
    const QSet<QString> chosen = m_id.isEmpty() ? m_ticked : QSet<QString>();
    if (m_id == code_id)
        return;
    m_id = code_id;
    m_ui->Chk_All_Tags->show();
    for (const QString &key : chosen)
        Set_Tag(Tag_Of_Key(key), true);
    Fill();
}

/// Tags are made and deleted elsewhere too.
void Page_Tags::showEvent(QShowEvent *event)
{
    Document_Page::showEvent(event);
    Fill();
}

void Page_Tags::Fill()
{
    if (!isVisible())
        return;
    const bool isNew = m_id.isEmpty();
    Load_Doc_Tags(m_list, m_id, isNew || m_ui->Chk_All_Tags->isChecked());
    const QSet<QString> before = isNew ? m_ticked : QSet<QString>();
    m_ticked.clear();
    const QSignalBlocker blocker(m_list);
    for (int i = 0; i < m_list.Count(); ++i) {
        const QString &key = m_list.Item(i).key;
        if (before.contains(key))
            m_list.Set_State(i, Qt::Checked);
        if (m_list.Item(i).state == Qt::Checked)
            m_ticked.insert(key);
    }
}

void Page_Tags::Follow_Ticks(const QModelIndex &first)
{
    const Check_Item &item = m_list.Item(first.row());
    const bool on = item.state == Qt::Checked;
    if (on == m_ticked.contains(item.key))
        return;
    if (on)
        m_ticked.insert(item.key);
    else
        m_ticked.remove(item.key);
    if (m_id.isEmpty())
        return;
    Set_Tag(Tag_Of_Key(item.key), on);
    // A list that could not be stored shows what is stored.
    if (!Last_Trouble().isEmpty())
        QMetaObject::invokeMethod(this, &Page_Tags::Fill, Qt::QueuedConnection);
}

void Page_Tags::Set_Tag(int tagId, bool on)
{
    const bool done = on ? Add_Doc_Tag(tagId, m_id) : Remove_Doc_Tag(tagId, m_id);
    if (!done)
        m_shell.Set_Status(Last_Trouble());
    m_shell.Document_Changed(m_id);
}

/// What is typed becomes a tag of the document, new or known; what could not be made stays in the field.
void Page_Tags::Cmd_AddTag_Click()
{
    const QString name = m_ui->Key_Tag->text().trimmed();
    if (name.isEmpty())
        return;
    const int tag = Add_Tag(name);
    if (tag == 0)
        return m_shell.Set_Status(Last_Trouble());
    m_ui->Key_Tag->clear();
    if (m_id.isEmpty())
        m_ticked.insert(Tag_Key(tag));
    else
        Set_Tag(tag, true);
    Fill();
}
