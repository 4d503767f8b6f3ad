// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/frm_on_top.h"

#include "core/config_store.h"
#include "core/language_pack.h"
#include "platform/desktop/desktop_kind.h"
#include "platform/models/plain_tip.h"
#include "ui/kit/file_drops.h"
#include "ui/kit/twips.h"
#include "ui_frm_on_top.h"

#include <QApplication>
#include <QFileInfo>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QWindow>
#include <algorithm>

namespace
{
constexpr int Side = 52; // pixels
constexpr qreal Resting = 0.72;
constexpr qreal Corner = 54.0 / 240; // of the mark's ground, as it is drawn
const QString Section = QStringLiteral("Page");

QPainterPath Outline(const QRectF &place)
{
    QPainterPath path;
    path.addRoundedRect(place, place.width() * Corner, place.height() * Corner);
    return path;
}

bool Is_Welcome(const QMimeData &data)
{
    return data.hasUrls() || data.hasText() || data.hasHtml() || data.hasImage() ||
           data.hasFormat(QStringLiteral("text/rtf")) || data.hasFormat(QStringLiteral("application/rtf"));
}

QString Kept(const char *key)
{
    return GetIni(Section, QLatin1String(key));
}
} // namespace

Frm_OnTop::Frm_OnTop()
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      m_ui(std::make_unique<Ui::Frm_OnTop>())
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground, Desktop_Kind::Is_Composited());
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    setFixedSize(Side, Side);
    setWindowOpacity(Resting);
    setAccessibleName(windowTitle());
    m_ui->Image_ICO->setAttribute(Qt::WA_TransparentForMouseEvents);
    constexpr int Settled = 400; // milliseconds: a window on the move says each step
    m_placeSettled.setSingleShot(true);
    m_placeSettled.setInterval(Settled);
    connect(&m_placeSettled, &QTimer::timeout, this, &Frm_OnTop::Save_Place);
    const auto comeBack = [this] {
        if (isVisible())
            Come_On_Screen();
    };
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, comeBack, Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, comeBack, Qt::QueuedConnection);
    Take_Place();
}

Frm_OnTop::~Frm_OnTop()
{
    if (isVisible())
        Save_Place();
}

QMenu *Frm_OnTop::Menu() const
{
    return m_ui->Mnu_Frm_OnTop;
}

QAction *Frm_OnTop::Entry(const char *name) const
{
    return findChild<QAction *>(QLatin1String(name));
}

void Frm_OnTop::Show_Folder(const QString &name)
{
    QStringList lines{Filled(m_lang.GetString("_Drop_Here"), {name}), Limits_Of_Desktop()};
    lines.removeAll(QString());
    setToolTip(Plain_Tip(lines.join(QLatin1Char('\n'))));
}

QString Frm_OnTop::Limits_Of_Desktop() const
{
    return Desktop_Kind::Places_Windows() ? QString() : m_lang.GetString("_No_Top");
}

/// Where it was left; at first the lower right corner of the screen.
void Frm_OnTop::Take_Place()
{
    bool hasLeft = false;
    bool hasTop = false;
    constexpr int Far = 1'000'000; // twips
    const QPoint kept(Pixels(std::clamp(Kept("OnTop_Left").toInt(&hasLeft), -Far, Far)),
                      Pixels(std::clamp(Kept("OnTop_Top").toInt(&hasTop), -Far, Far)));
    constexpr int Away = 3 * Side;
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    move(hasLeft && hasTop ? kept : area.bottomRight() - QPoint(Away, Away));
    Come_On_Screen();
}

/// Where less than half of it is on a screen, it goes to the nearest place of the nearest one.
void Frm_OnTop::Come_On_Screen()
{
    const QRect place(pos(), size());
    const QList<QScreen *> screens = QGuiApplication::screens();
    const auto seen = [&](const QScreen *screen) {
        const QRect part = screen->availableGeometry() & place;
        return part.isEmpty() ? 0 : part.width() * part.height();
    };
    if (std::any_of(screens.begin(), screens.end(),
                    [&](const QScreen *screen) { return seen(screen) * 2 >= Side * Side; }))
        return;
    const auto brought = [&](const QScreen *screen) {
        const QRect area = screen->availableGeometry();
        return QPoint(std::clamp(place.x(), area.left(), std::max(area.left(), area.right() + 1 - Side)),
                      std::clamp(place.y(), area.top(), std::max(area.top(), area.bottom() + 1 - Side)));
    };
    const auto nearest =
        std::min_element(screens.begin(), screens.end(), [&](const QScreen *one, const QScreen *other) {
            return (brought(one) - place.topLeft()).manhattanLength() <
                   (brought(other) - place.topLeft()).manhattanLength();
        });
    if (nearest != screens.end())
        move(brought(*nearest));
}

void Frm_OnTop::Save_Place()
{
    if (!Desktop_Kind::Places_Windows())
        return;
    WriteIni(Section, QStringLiteral("OnTop_Left"), QString::number(Twips(x())));
    WriteIni(Section, QStringLiteral("OnTop_Top"), QString::number(Twips(y())));
}

/// Where windows cannot be seen through, what lies around the mark is cut away.
void Frm_OnTop::Shape()
{
    const bool composited = testAttribute(Qt::WA_TranslucentBackground) && Desktop_Kind::Is_Composited();
    if (composited)
        clearMask();
    else
        setMask(QRegion(Outline(QRectF(rect()).adjusted(1, 1, -1, -1)).toFillPolygon().toPolygon()));
}

void Frm_OnTop::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    Shape();
    Come_On_Screen();
}

void Frm_OnTop::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_placeSettled.stop();
    if (!event->spontaneous())
        Save_Place();
}

/// Closed by the desktop, it is switched off like by its menu.
void Frm_OnTop::closeEvent(QCloseEvent *event)
{
    if (!event->spontaneous())
        return QWidget::closeEvent(event);
    event->ignore();
    Entry("Mnu_OnTop_Float")->trigger();
}

void Frm_OnTop::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    if (isVisible())
        m_placeSettled.start();
}

void Frm_OnTop::mousePressEvent(QMouseEvent *event)
{
    m_move = event->button() == Qt::LeftButton ? Move::Possible : Move::None;
    m_pressed = event->position().toPoint();
}

/// The desktop moves the window, with its edges and over all its screens; where it does not, the window moves itself.
void Frm_OnTop::mouseMoveEvent(QMouseEvent *event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint way = event->position().toPoint() - m_pressed;
    if (m_move == Move::Possible && way.manhattanLength() >= QApplication::startDragDistance())
        m_move = windowHandle()->startSystemMove() ? Move::Of_Desktop : Move::Own;
    if (m_move == Move::Own)
        move(pos() + way);
}

void Frm_OnTop::mouseReleaseEvent(QMouseEvent * /*event*/)
{
    m_move = Move::None;
    Come_On_Screen();
}

void Frm_OnTop::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit Window_Wanted();
}

void Frm_OnTop::contextMenuEvent(QContextMenuEvent *event)
{
    Menu()->popup(event->reason() == QContextMenuEvent::Mouse ? event->globalPos() : mapToGlobal(rect().center()));
}

void Frm_OnTop::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space)
        emit Window_Wanted();
    else
        QWidget::keyPressEvent(event);
}

void Frm_OnTop::enterEvent(QEnterEvent *event)
{
    QWidget::enterEvent(event);
    setWindowOpacity(1);
}

void Frm_OnTop::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    setWindowOpacity(Resting);
}

void Frm_OnTop::Set_Lit(bool lit)
{
    m_lit = lit;
    setWindowOpacity(lit ? 1 : Resting);
    update();
}

void Frm_OnTop::dragEnterEvent(QDragEnterEvent *event)
{
    if (!Is_Welcome(*event->mimeData()))
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Set_Lit(true);
}

void Frm_OnTop::dragLeaveEvent(QDragLeaveEvent * /*event*/)
{
    Set_Lit(false);
}

void Frm_OnTop::dropEvent(QDropEvent *event)
{
    Set_Lit(false);
    event->setDropAction(Qt::CopyAction); // whatever was asked, nothing is taken away where it came from
    event->accept();
    const QStringList files = Dropped_Files(*event->mimeData());
    if (files.isEmpty())
        emit Content_Dropped(*event->mimeData());
    else // the other program waits for the answer, not for the store
        QTimer::singleShot(0, this, [this, files] { emit Files_Dropped(files); });
}

void Frm_OnTop::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    constexpr qreal Rim = 3;
    const bool marked = m_lit || hasFocus();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(palette().window());
    painter.setPen(QPen(palette().color(marked ? QPalette::Highlight : QPalette::Mid), marked ? Rim : 1));
    painter.drawPath(Outline(QRectF(rect()).adjusted(Rim / 2, Rim / 2, -Rim / 2, -Rim / 2)));
}
