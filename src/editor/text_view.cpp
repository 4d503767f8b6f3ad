// SPDX-License-Identifier: GPL-3.0-or-later
//
// How a pane shows its text: its size, its width, its paper and its colours.

#include "core/settings.h"
#include "editor/legible_colors.h"
#include "editor/picture_handler.h"
#include "editor/printing.h"
#include "editor/text_editor.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

namespace
{
constexpr int Column_Width = 740;     // pixels: the longest line that reads well at the usual size
constexpr double Paper_Inches = 6.27; // an A4 page between its usual margins
constexpr int Least_Margin = 8;
constexpr int Top_Margin = 6;
constexpr int Side_Margin = 24; // pixels, where the text has room enough
} // namespace

void Text_Editor::Set_Page_Look(Page_Look look)
{
    if (look == m_look)
        return;
    m_look = look;
    m_pageStarts.clear();
    if (look == Page_Look::Paper)
        m_pagesLater.start();
    Use_Look();
    Fit();
}

void Text_Editor::Set_Zoom(int percent)
{
    if (percent == Zoom())
        return;
    m_scale.Set_Percent(percent);
    Fit();
    // The whole text is laid out anew, which is no change of it.
    const double place = verticalScrollBar()->value() / std::max(1.0, double(verticalScrollBar()->maximum()));
    document()->markContentsDirty(0, document()->characterCount());
    verticalScrollBar()->setValue(static_cast<int>(place * verticalScrollBar()->maximum()));
}

void Text_Editor::Use_Column(bool on)
{
    m_isColumn = on;
    Fit();
}

void Text_Editor::Set_Ground(const QColor &ground)
{
    if (ground == m_ground)
        return;
    m_ground = ground;
    Use_Look();
}

/// What the mouse does beside the column is meant for the line there.
bool Text_Editor::Pass_To_Text(QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto &mouse = static_cast<const QMouseEvent &>(event);
        const QPointF place = viewport()->mapFrom(this, mouse.position());
        QMouseEvent inside(mouse.type(), place, mouse.globalPosition(), mouse.button(), mouse.buttons(),
                           mouse.modifiers());
        return QCoreApplication::sendEvent(viewport(), &inside);
    }
    case QEvent::ContextMenu: {
        const auto &menu = static_cast<const QContextMenuEvent &>(event);
        if (menu.reason() != QContextMenuEvent::Mouse)
            return false;
        QContextMenuEvent inside(menu.reason(), viewport()->mapFrom(this, menu.pos()), menu.globalPos());
        return QCoreApplication::sendEvent(viewport(), &inside);
    }
    case QEvent::Wheel: {
        const auto &wheel = static_cast<const QWheelEvent &>(event);
        QWheelEvent inside(viewport()->mapFrom(this, wheel.position()), wheel.globalPosition(), wheel.pixelDelta(),
                           wheel.angleDelta(), wheel.buttons(), wheel.modifiers(), wheel.phase(), wheel.inverted());
        return QCoreApplication::sendEvent(viewport(), &inside);
    }
    default:
        return false;
    }
}

void Text_Editor::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier))
        return QTextEdit::wheelEvent(event);
    if (event->angleDelta().y() != 0)
        emit Zoom_Wanted(event->angleDelta().y() > 0 ? 1 : -1);
    event->accept();
}

void Text_Editor::Count_Pages()
{
    constexpr int Most_Characters = 200'000; // beyond that the count would be felt while typing
    m_pageStarts = document()->characterCount() <= Most_Characters ? Printing::Page_Starts(*document()) : QList<int>();
    viewport()->update();
}

/// A line where each page begins on paper, with the page's number.
void Text_Editor::Paint_Page_Breaks(QPainter &painter) const
{
    painter.setPen(QPen(Qt::gray, 1, Qt::DashLine));
    for (qsizetype i = 0; i < m_pageStarts.size(); ++i) {
        QTextCursor start(document());
        start.setPosition(std::min(m_pageStarts[i], document()->characterCount() - 1));
        const int y = cursorRect(start).top() - 2;
        if (y < 0 || y > viewport()->height())
            continue;
        painter.drawLine(0, y, viewport()->width(), y);
        painter.drawText(QRect(0, y + 2, viewport()->width() - 2, fontMetrics().height()),
                         Qt::AlignRight | Qt::AlignTop, QString::number(i + 2));
    }
}

/// Gives the text its width. What is left of the pane stands on both sides of it.
void Text_Editor::Fit()
{
    if (m_fitting)
        return;
    m_fitting = true;
    const double inches = Paper_Inches * logicalDpiX() * Zoom() / 100;
    const int wanted = m_look == Page_Look::Paper ? static_cast<int>(inches) : Column_Width;
    const int whole = contentsRect().width() - (verticalScrollBar()->isVisible() ? verticalScrollBar()->width() : 0);
    const bool fills = m_look == Page_Look::Normal && !m_isColumn;
    const int least = m_isColumn ? std::min(Side_Margin, whole / 16) : 0;
    const int margin = fills ? 0 : std::max(least, (whole - wanted) / 2 - Least_Margin);
    setViewportMargins(margin, m_isColumn ? Top_Margin : 0, margin, 0);
    m_pictures->Set_Room(std::max(Least_Margin, viewport()->width() - 4 * Least_Margin));
    m_fitting = false;
}

void Text_Editor::Use_Look()
{
    const QColor ground = m_look == Page_Look::Paper ? QColor(Qt::white) : m_ground;
    const QString text = Legible_Color(Qt::black, ground).name();
    QString style;
    if (ground.isValid())
        style = QStringLiteral("QTextEdit { background: %1; color: %2; }").arg(ground.name(), text);
    if (!m_selectionShown)
        style += QStringLiteral("QTextEdit:!active { selection-background-color: transparent; selection-color: %1; }")
                     .arg(ground.isValid() ? text : QApplication::palette(this).color(QPalette::Text).name());
    setStyleSheet(style);
    Use_Surroundings();
}

/// Boxes and buttons that the keyboard goes to may work on the selection; a list, a tree or another pane doesn't.
void Text_Editor::Follow_Focus(const QWidget *now)
{
    const bool isElsewhere =
        now != this && qobject_cast<const QAbstractScrollArea *>(now) != nullptr && now->window() == window();
    const bool hides = isElsewhere && textCursor().hasSelection() && Is_On(&Settings_Record::CH_HideSelect);
    if (hides == !m_selectionShown || (!hides && now != this && !isElsewhere))
        return;
    m_selectionShown = !hides;
    Use_Look();
}

void Text_Editor::Use_Surroundings()
{
    const QPalette skin = QApplication::palette(this);
    const QColor ground = m_look == Page_Look::Paper ? QColor(Qt::white) : m_ground;
    m_colors->Set_Surroundings(ground.isValid() ? Legible_Color(Qt::black, ground) : skin.color(QPalette::Text),
                               ground.isValid() ? ground : skin.color(QPalette::Base));
}
