// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QString>
#include <QStringList>
#include <vector>

struct List_Column {
    QString key;
    QString caption;
};

/// One row of a list: a text for each column, and what the logic keeps with it.
struct List_Row {
    QStringList texts;
    QString tag;         ///< the row's id
    QString tag2;        ///< the id of its folder
    QString tag3;        ///< its display style as stored
    QString tool_tip;    ///< "" for none
    int tip_column = -1; ///< the tool tip is shown over the first and this column only; -1: over every column
    /// A line of the row above: a place in its document's text, counted from 0 in UTF-16 units. -1 for a row of its
    /// own.
    qint64 place = -1;
    QColor item_color;
    QColor sub_color;
    bool bold = false;
};

/// The list that the logic fills row by row and a view shows. Columns are found by key, without regard to case.
class List_Model : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int Tag_Role = Qt::UserRole;
    static constexpr int Place_Role = Qt::UserRole + 1;

    using QAbstractTableModel::QAbstractTableModel;

    void Set_Columns(std::vector<List_Column> columns);
    [[nodiscard]] const std::vector<List_Column> &Columns() const { return m_columns; }
    /// -1 when there is no such column.
    [[nodiscard]] int Column(const QString &key) const;
    void Set_Column_Caption(int column, const QString &caption);

    /// Replaces all rows in one step.
    void Replace(std::vector<List_Row> rows);
    /// The same, but rows that stand in front already stay what they are for a view: chosen, and in their place.
    void Extend(std::vector<List_Row> rows);
    void Clear() { Replace({}); }
    [[nodiscard]] int Row_Count() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] const List_Row &Row(int row) const { return m_rows[static_cast<size_t>(row)]; }
    /// First row with that tag, -1 when there is none.
    [[nodiscard]] int Find(const QString &tag) const;
    void Set_Row(int row, const List_Row &content);
    void Add(List_Row row);
    void Remove(int row);
    /// Sorts by the text shown in a column, as a Chinese dictionary does; equal texts keep their order, and the lines
    /// of a row stay below it.
    void Sort_By(int column, bool ascending);

    /// Rows may be dragged away.
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<List_Column> m_columns;
    std::vector<List_Row> m_rows;
};
