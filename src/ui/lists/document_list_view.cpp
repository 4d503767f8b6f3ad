// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/document_list_view.h"

#include "platform/models/list_model.h"
#include "ui/kit/readable_color.h"

#include <QApplication>
#include <QDateTime>
#include <QDrag>
#include <QHelpEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>
#include <utility>

namespace
{
const QString Place_Indent = QStringLiteral("    "); ///< before the text of a place, in its title

class Row_Delegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    bool grid = false;
    int key_length = 0; ///< of the key that lines of places begin with

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (key_length > 0 && Is_Place(index) && index.data().toString().startsWith(Place_Indent))
            Paint_Place(painter, option, index);
        else
            QStyledItemDelegate::paint(painter, option, index);
        if (!grid)
            return;
        painter->save();
        QColor line = option.palette.color(QPalette::Text);
        line.setAlpha(40);
        painter->setPen(line);
        painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
        painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
        painter->restore();
    }

protected:
    static bool Is_Place(const QModelIndex &index) { return index.data(List_Model::Place_Role).toLongLong() >= 0; }

    /// The line as it is, the key in it bold.
    void Paint_Place(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
    {
        QStyleOptionViewItem line = option;
        initStyleOption(&line, index);
        const QString text = std::exchange(line.text, QString());
        const QStyle &style = line.widget == nullptr ? *QApplication::style() : *line.widget->style();
        style.drawControl(QStyle::CE_ItemViewItem, &line, painter, line.widget);
        line.text = text;
        const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &line, line.widget) + 1;
        const QRect room =
            style.subElementRect(QStyle::SE_ItemViewItemText, &line, line.widget).adjusted(margin, 0, -margin, 0);
        QTextCharFormat marked;
        marked.setFontWeight(QFont::Bold);
        const QString key = text.mid(Place_Indent.size(), key_length);
        QFont bold = line.font;
        bold.setBold(true);
        const int wider = QFontMetrics(bold).horizontalAdvance(key) - line.fontMetrics.horizontalAdvance(key);
        QTextLayout layout(line.fontMetrics.elidedText(text, line.textElideMode, room.width() - wider), line.font);
        layout.setFormats({{static_cast<int>(Place_Indent.size()), key_length, marked}});
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        const bool chosen = line.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->setClipRect(room);
        painter->setPen(line.palette.color(chosen ? QPalette::HighlightedText : QPalette::Text));
        layout.draw(painter, QPointF(room.left(), room.top() + (room.height() - layout.boundingRect().height()) / 2));
        painter->restore();
    }

    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (Is_Place(index)) {
            QColor muted = option->palette.color(QPalette::Text);
            muted.setAlphaF(0.65F);
            option->palette.setColor(QPalette::Text, muted);
            option->text.replace(QLatin1Char('\n'), QLatin1Char(' '));
            option->text.replace(QChar::LineSeparator, QLatin1Char(' '));
        } else if (index.data(Qt::ForegroundRole).isValid()) {
            const QColor stored = option->palette.color(QPalette::Text);
            option->palette.setColor(QPalette::Text, Readable(stored, option->palette.color(QPalette::Base)));
        }
    }
};
} // namespace

Document_List_View::Document_List_View(QWidget *parent) : QTreeView(parent)
{
    setItemDelegate(new Row_Delegate(this));
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
}

void Document_List_View::Set_Empty_Text(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void Document_List_View::Set_Grid(bool on)
{
    static_cast<Row_Delegate *>(itemDelegate())->grid = on;
    viewport()->update();
}

void Document_List_View::Set_Key_Length(qsizetype length)
{
    static_cast<Row_Delegate *>(itemDelegate())->key_length = static_cast<int>(length);
    viewport()->update();
}

QStringList Document_List_View::Selected_Ids() const
{
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex &a, const QModelIndex &b) { return a.row() < b.row(); });
    QStringList ids;
    for (const QModelIndex &row : rows) {
        const QString id = row.data(List_Model::Tag_Role).toString();
        if (!ids.contains(id))
            ids << id;
    }
    return ids;
}

void Document_List_View::keyboardSearch(const QString &search)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now - m_lastTyped > QApplication::keyboardInputInterval())
        m_typed.clear();
    m_lastTyped = now;
    m_typed += search;
    if (model() == nullptr || model()->rowCount() == 0)
        return;
    // The same letter again and again walks through the rows that begin with it.
    const bool repeated = m_typed.count(m_typed.at(0)) == m_typed.size();
    const QString sought = repeated ? m_typed.left(1) : m_typed;
    const int start = std::max(0, currentIndex().row()) + (repeated && currentIndex().isValid() ? 1 : 0);
    const QModelIndex from = model()->index(start % model()->rowCount(), m_searchColumn);
    const QModelIndexList found = model()->match(from, Qt::DisplayRole, sought, 1, Qt::MatchStartsWith | Qt::MatchWrap);
    if (!found.isEmpty())
        setCurrentIndex(found.first().siblingAtColumn(0));
}

void Document_List_View::startDrag(Qt::DropActions /*actions*/)
{
    const QStringList ids = Selected_Ids();
    if (ids.isEmpty())
        return;
    auto *payload = new QMimeData;
    payload->setText(QStringLiteral("LIST") + ids.join(QLatin1Char('/')) + QLatin1Char('/'));
    payload->setData(QStringLiteral("application/x-zelqor-documents"), ids.join(QLatin1Char('\n')).toUtf8());
    QDrag drag(this);
    drag.setMimeData(payload);
    drag.exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
}

bool Document_List_View::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && Tip_Of) {
        const auto &help = static_cast<QHelpEvent &>(*event);
        const QModelIndex row = indexAt(help.pos());
        const QString tip = row.isValid() ? Tip_Of(row) : QString();
        if (!tip.isEmpty()) {
            QToolTip::showText(help.globalPos(), tip, viewport(), visualRect(row));
            return true;
        }
    }
    return QTreeView::viewportEvent(event);
}

void Document_List_View::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (m_emptyText.isEmpty() || model() == nullptr || model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    constexpr int margin = 40;
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
                     m_emptyText);
}
