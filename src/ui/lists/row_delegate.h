// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

class List_Model;

/// How a row of the document list looks: the type's icon before the title, stars that are not set in a quiet colour, in
/// comfortable rows the summary below the title, and the places of a search with their key marked.
class Row_Delegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool grid = false;
    bool comfortable = false;
    int key_length = 0; ///< of the key that lines of places begin with

    /// Finds the columns that look different from others.
    void Read_Columns(const List_Model &list);
    [[nodiscard]] int Title_Column() const { return m_title; }
    [[nodiscard]] static bool Is_Place(const QModelIndex &index);
    /// Paints the line of a place over the width of the whole row. @param title  its cell in the column of titles,
    /// which begins at `left`
    void Paint_Place(QPainter &painter, const QStyleOptionViewItem &row, const QModelIndex &title, int left) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    void Paint_Stars(QPainter &painter, const QStyleOptionViewItem &cell, const QString &stars) const;
    void Paint_Title(QPainter &painter, const QStyleOptionViewItem &cell, const QString &summary) const;
    void Paint_Grid(QPainter &painter, const QStyleOptionViewItem &cell) const;

    int m_title = -1;
    int m_star = -1;
    int m_done = -1;
    int m_explain = -1;
    int m_type = -1;
    int m_file = -1;
    int m_update = -1;
};
