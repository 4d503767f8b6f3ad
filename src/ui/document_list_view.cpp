// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document_list_view.h"

#include "platform/models/list_model.h"
#include "ui/readable_color.h"

#include <QApplication>
#include <QDateTime>
#include <QDrag>
#include <QMimeData>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

namespace
{
class Row_Delegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    bool grid = false;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
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
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(List_Model::Place_Role).toLongLong() >= 0) {
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
