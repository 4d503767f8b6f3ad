// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/frm_show_up.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "ui_frm_show_up.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVariantAnimation>

namespace
{
constexpr int Sliding = 350; // milliseconds
constexpr int Staying = 20'000;
constexpr int Edge = 12; // pixels between the notice and the edges of the screen
} // namespace

frm_ShowUp::frm_ShowUp(const Version_Notice &notice)
    : QFrame(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      m_ui(std::make_unique<Ui::frm_ShowUp>()), m_slide(new QVariantAnimation(this))
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_DeleteOnClose);
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_ui->Lab_What->setText(Filled(m_lang.GetString("_New_Version"),
                                   {App().App_Title, notice.version, Version_Text(), notice.page.host()}));
    setAccessibleName(m_ui->Lab_What->text());
    m_stay.setSingleShot(true);
    m_stay.setInterval(Staying);
    m_slide->setDuration(Sliding);
    m_slide->setEasingCurve(QEasingCurve::OutCubic);
    connect(m_slide, &QVariantAnimation::valueChanged, this, [this](const QVariant &top) { move(x(), top.toInt()); });
    connect(&m_stay, &QTimer::timeout, this, [this] { Slide(false); });
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Cmd_Page, &QPushButton::clicked, this, [this, page = notice.page] {
        emit Page_Wanted(page);
        close();
    });
}

frm_ShowUp::~frm_ShowUp() = default;

void frm_ShowUp::Slide_In()
{
    adjustSize();
    Slide(true);
    show();
    m_stay.start();
}

void frm_ShowUp::Slide(bool in)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    const int shown = area.bottom() + 1 - height() - Edge;
    const int gone = screen->geometry().bottom() + 1;
    move(area.right() + 1 - width() - Edge, in ? gone : y());
    m_slide->setStartValue(y());
    m_slide->setEndValue(in ? shown : gone);
    if (!in)
        connect(m_slide, &QVariantAnimation::finished, this, &QWidget::close);
    m_slide->start();
}

void frm_ShowUp::enterEvent(QEnterEvent *event)
{
    QFrame::enterEvent(event);
    m_stay.stop();
}

void frm_ShowUp::leaveEvent(QEvent *event)
{
    QFrame::leaveEvent(event);
    m_stay.start();
}

void frm_ShowUp::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QFrame::keyPressEvent(event);
}
