// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/page_review.h"

#include "ui/kit/command_keys.h"
#include "ui/kit/shell.h"
#include "ui_page_review.h"

#include <QAction>
#include <QFrame>
#include <algorithm>

Page_Review::Page_Review(Shell &shell, QWidget &form)
    : m_shell(shell), m_ui(std::make_unique<Ui::Page_Review>()), m_lang(*this, QStringLiteral("Page_Review"))
{
    m_ui->setupUi(this);
    Load_Lang();
    m_dates = {m_ui->Lab_Read_score_0, m_ui->Lab_Read_score_1, m_ui->Lab_Read_score_2, m_ui->Lab_Read_score_3};
    m_marker = new QFrame(this);
    m_marker->setObjectName(QStringLiteral("Pic_Read_score"));
    m_marker->setFrameShape(QFrame::Box);
    m_marker->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_marker->hide();
    QPushButton *buttons[] = {m_ui->Cmd_Read_score_0, m_ui->Cmd_Read_score_1, m_ui->Cmd_Read_score_2,
                              m_ui->Cmd_Read_score_3};
    for (int i = 0; i < static_cast<int>(std::size(buttons)); ++i) {
        connect(buttons[i], &QPushButton::clicked, this, [this, i] {
            Cmd_Read_score_Click(i);
            emit Scored();
        });
        auto *key = new QAction(buttons[i]->text(), this);
        key->setShortcut(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_F5 + i));
        key->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        Command_Keys::Of_Program().Give(*key, Command_Keys::Place::Text, QStringLiteral("Cmd_Read_score_%1").arg(i));
        form.addAction(key);
        connect(key, &QAction::triggered, buttons[i], &QPushButton::click);
    }
    connect(m_ui->Cob_Gene, &QComboBox::activated, this, &Page_Review::Cob_Gene_Click);
}

Page_Review::~Page_Review() = default;

void Page_Review::Load_Lang()
{
    m_lang.LoadControlsCaption();
    m_ui->Lab_LastRead->setText(m_chooser.last_read);
    emit Caption_Changed();
}

QString Page_Review::Caption() const
{
    return m_lang.GetString("_Tab");
}

void Page_Review::Show_Document(const QString &code_id, const QString & /*title*/)
{
    m_id = code_id;
    Fill();
}

void Page_Review::Document_Saved(const QString &code_id, const QString & /*title*/)
{
    m_id = code_id;
    Store();
}

void Page_Review::Fill()
{
    m_chooser = {};
    Get_Gene_List_Id(m_chooser, m_id);
    m_ui->Cob_Gene->clear();
    m_ui->Cob_Gene->addItems(m_chooser.items);
    m_ui->Cob_Gene->setCurrentIndex(m_chooser.chosen);
    setEnabled(!m_chooser.items.isEmpty());
    for (QLabel *label : m_dates)
        label->clear();
    m_next.clear();
    m_score = -1;
    m_marker->hide();
    Cob_Gene_Click();
}

void Page_Review::Cob_Gene_Click()
{
    m_chooser.chosen = m_ui->Cob_Gene->currentIndex();
    const Review_Dates dates = Dates_Of_Choice(m_chooser);
    m_ui->Lab_LastRead->setText(m_chooser.last_read);
    if (std::ranges::all_of(dates, &QString::isEmpty))
        return;
    for (size_t i = 0; i < m_dates.size(); ++i)
        m_dates[i]->setText(dates[i]);
    Cmd_Read_score_Click(0);
}

void Page_Review::Cmd_Read_score_Click(int index)
{
    m_score = index;
    m_next = m_dates[static_cast<size_t>(index)]->text();
    Place_Marker();
    Store();
    if (!m_id.isEmpty())
        m_shell.Document_Changed(m_id);
}

void Page_Review::Place_Marker()
{
    m_marker->setVisible(m_score >= 0);
    if (m_score >= 0)
        m_marker->setGeometry(m_dates[static_cast<size_t>(m_score)]->geometry());
}

void Page_Review::Store()
{
    Set_Gene_List_Id(m_chooser, m_id, m_next);
}

void Page_Review::resizeEvent(QResizeEvent *event)
{
    Document_Page::resizeEvent(event);
    QMetaObject::invokeMethod(this, &Page_Review::Place_Marker, Qt::QueuedConnection); // after the layout
}

void Page_Review::showEvent(QShowEvent *event)
{
    Document_Page::showEvent(event);
    QMetaObject::invokeMethod(this, &Page_Review::Place_Marker, Qt::QueuedConnection);
}
