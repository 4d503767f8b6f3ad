// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/frm_list_view_tags.h"

#include "core/language_pack.h"
#include "core/trouble.h"
#include "ui_frm_list_view_tags.h"
#include "views/tagged_documents.h"
#include "views/tags.h"

#include <QKeyEvent>

Frm_ListView_Tags::Frm_ListView_Tags(QStringList codeIds, QWidget *parent)
    : QDialog(parent), m_codeIds(std::move(codeIds)), m_ui(std::make_unique<Ui::Frm_ListView_Tags>()),
      m_lang(*this, QStringLiteral("Frm_ListView_Tags"))
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_ui->Lab_What->setText(Filled(m_lang.GetString("_What"), {QString::number(m_codeIds.size())}));
    m_ui->Lab_Trouble->hide();
    Load_Selection_Tags(m_tags, m_codeIds);
    m_shown.setSourceModel(&m_tags);
    m_shown.setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_ui->Lsv_Tags->setModel(&m_shown);
    m_ui->Lsv_Tags->setAccessibleName(windowTitle());
    m_ui->Txt_Filter->installEventFilter(this);
    m_ui->Txt_Filter->setFocus();
    connect(m_ui->Txt_Filter, &QLineEdit::textChanged, this,
            [this](const QString &typed) { m_shown.setFilterFixedString(Tag_Name(typed)); });
    connect(m_ui->Cmd_OK, &QPushButton::clicked, this, &Frm_ListView_Tags::Cmd_OK_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_ListView_Tags::reject);
}

Frm_ListView_Tags::~Frm_ListView_Tags() = default;

bool Frm_ListView_Tags::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Down) {
        m_ui->Lsv_Tags->setFocus();
        m_ui->Lsv_Tags->setCurrentIndex(m_shown.index(0, 0));
        return true;
    }
    // Enter in an empty field is the form's own.
    if ((key != Qt::Key_Return && key != Qt::Key_Enter) || Tag_Name(m_ui->Txt_Filter->text()).isEmpty())
        return QDialog::eventFilter(watched, event);
    Take_Typed();
    return true;
}

void Frm_ListView_Tags::Take_Typed()
{
    const QString name = Tag_Name(m_ui->Txt_Filter->text());
    const int tag = Add_Tag(name);
    if (tag == 0)
        return Show_Trouble(Last_Trouble());
    int row = m_tags.Find(Tag_Key(tag));
    if (row < 0) {
        row = m_tags.Count();
        m_tags.Add({Tag_Key(tag), name});
        emit Tags_Changed();
    }
    m_tags.Set_State(row, Qt::Checked);
    Show_Trouble({});
    m_ui->Txt_Filter->clear();
    m_ui->Lsv_Tags->scrollTo(m_shown.mapFromSource(m_tags.index(row)));
}

void Frm_ListView_Tags::Cmd_OK_Click()
{
    const bool done = Apply_Selection_Tags(m_tags, m_codeIds).done;
    const QString trouble = Last_Trouble();
    emit Tags_Changed();
    if (done)
        return accept();
    Show_Trouble(trouble);
}

void Frm_ListView_Tags::Show_Trouble(const QString &trouble)
{
    m_ui->Lab_Trouble->setText(trouble);
    m_ui->Lab_Trouble->setVisible(!trouble.isEmpty());
}
