// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/frm_note.h"

#include "arrivals/arrivals.h"
#include "core/settings.h"
#include "core/trouble.h"
#include "platform/desktop/desktop_kind.h"
#include "ui_frm_note.h"

#include <QApplication>
#include <QKeyEvent>

namespace
{
constexpr int One_Line = 100; // percent
constexpr int Longest_Title = 100;
} // namespace

Frm_Note::Frm_Note() : QDialog(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint), m_ui(std::make_unique<Ui::Frm_Note>())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_ui->Txt_Title->setMaxLength(Longest_Title);
    m_ui->Txt_Note->setAccessibleName(m_ui->Lab_Content->text().remove(QLatin1Char('&')));
    m_ui->Txt_Note->Start_In(Config().FontName_Cont, Config().FontSize_Cont.toInt(), One_Line);
    m_kept = std::make_unique<Kept_Note>(*m_ui->Txt_Title, *m_ui->Txt_Note);
    Tell({});
    for (QWidget *field : {static_cast<QWidget *>(m_ui->Txt_Title), static_cast<QWidget *>(m_ui->Txt_Note)})
        field->installEventFilter(this);
    connect(m_ui->Cmd_Save, &QPushButton::clicked, this, &Frm_Note::Cmd_Save_Click);
    connect(m_kept.get(), &Kept_Note::Not_Kept, this,
            [this] { Tell(m_lang.GetString("_Draft_Failed", "Frm_Doc_Standard")); });
}

Frm_Note::~Frm_Note() = default;

void Frm_Note::Call()
{
    if (!Desktop_Kind::Raises_Windows() && !isActiveWindow())
        hide();
    if (!isVisible()) // a window that waits for an answer would keep the keyboard from one that does not
        setWindowModality(QApplication::activeModalWidget() != nullptr ? Qt::ApplicationModal : Qt::NonModal);
    show();
    raise();
    activateWindow();
    m_ui->Txt_Note->setFocus();
}

void Frm_Note::Keep()
{
    m_kept->Keep();
}

bool Frm_Note::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto *key = static_cast<const QKeyEvent *>(event);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (!enter)
        return QDialog::eventFilter(watched, event);
    if (key->modifiers().testFlag(Qt::ControlModifier)) {
        Cmd_Save_Click();
        return true;
    }
    if (watched != m_ui->Txt_Title)
        return false;
    m_ui->Txt_Note->setFocus();
    return true;
}

void Frm_Note::hideEvent(QHideEvent *event)
{
    QDialog::hideEvent(event);
    if (!event->spontaneous())
        Keep();
}

void Frm_Note::Cmd_Save_Click()
{
    Tell({});
    if (m_kept->Is_Empty())
        return m_ui->Txt_Note->setFocus();
    const QString folder = Arrivals::Folder();
    const QString id = Arrivals::Take_Note(*m_ui->Txt_Note->document(), m_ui->Txt_Title->text(), folder);
    if (id.isEmpty())
        return Tell(m_lang.GetString("_Not_Stored") + Last_Trouble());
    m_ui->Txt_Title->clear();
    m_ui->Txt_Note->clear();
    m_ui->Txt_Note->Start_In(Config().FontName_Cont, Config().FontSize_Cont.toInt(), One_Line);
    m_kept->Remove();
    hide();
    emit Stored(id, folder);
}

void Frm_Note::Tell(const QString &trouble)
{
    m_ui->Lab_Trouble->setText(trouble);
    m_ui->Lab_Trouble->setVisible(!trouble.isEmpty());
}
