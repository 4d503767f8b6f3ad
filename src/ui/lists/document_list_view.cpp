// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/document_list_view.h"

#include "core/language_pack.h"
#include "platform/models/list_model.h"
#include "ui/kit/drag_label.h"
#include "ui/kit/numbers.h"
#include "ui/lists/list_header.h"
#include "ui/lists/row_delegate.h"

#include <QApplication>
#include <QDateTime>
#include <QDrag>
#include <QHelpEvent>
#include <QMimeData>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <set>

Document_List_View::Document_List_View(QWidget *parent) : QTreeView(parent), m_rows(new Row_Delegate(this))
{
    setItemDelegate(m_rows);
    setHeader(new List_Header(this));
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
    m_rows->grid = on;
    viewport()->update();
}

void Document_List_View::Set_Comfortable(bool on)
{
    m_rows->comfortable = on;
    scheduleDelayedItemsLayout();
}

void Document_List_View::Read_Columns(const List_Model &list)
{
    m_rows->Read_Columns(list);
}

void Document_List_View::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QModelIndex title = index.siblingAtColumn(m_rows->Title_Column());
    if (!title.isValid() || !Row_Delegate::Is_Place(index))
        return QTreeView::drawRow(painter, option, index);
    QStyleOptionViewItem row = option;
    row.rect = QRect(0, option.rect.top(), viewport()->width(), option.rect.height());
    row.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(title));
    row.showDecorationSelected = true;
    if (alternatingRowColors() && index.row() % 2 == 1)
        painter->fillRect(row.rect, row.palette.alternateBase());
    m_rows->Paint_Place(*painter, row, title, columnViewportPosition(title.column()));
}

void Document_List_View::Set_Key_Length(qsizetype length)
{
    m_rows->key_length = static_cast<int>(length);
    viewport()->update();
}

QStringList Document_List_View::Selected_Ids() const
{
    // A row counts as chosen by what is seen of it: hidden columns are not in a selection.
    std::set<int> rows;
    for (const QItemSelectionRange &range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.insert(row);
    }
    QStringList ids;
    for (const int row : rows) {
        const QString id = model()->index(row, 0).data(List_Model::Tag_Role).toString();
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
    const QString title = currentIndex().siblingAtColumn(m_searchColumn).data().toString();
    Label_Drag(drag, ids.size() == 1 ? title : Pack_Text("Frm_Main", "_DocumentsToMove").arg(Grouped(ids.size())));
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
