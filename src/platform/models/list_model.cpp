// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/models/list_model.h"

#include "platform/models/plain_tip.h"

#include <QCollator>
#include <QFont>
#include <QLocale>
#include <algorithm>

void List_Model::Set_Columns(std::vector<List_Column> columns)
{
    beginResetModel();
    m_columns = std::move(columns);
    m_rows.clear();
    endResetModel();
}

int List_Model::Column(const QString &key) const
{
    for (size_t i = 0; i < m_columns.size(); ++i) {
        if (m_columns[i].key.compare(key, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

void List_Model::Set_Column_Caption(int column, const QString &caption)
{
    m_columns[static_cast<size_t>(column)].caption = caption;
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void List_Model::Replace(std::vector<List_Row> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void List_Model::Extend(std::vector<List_Row> rows)
{
    const bool more = !m_rows.empty() && rows.size() >= m_rows.size() &&
                      std::equal(m_rows.begin(), m_rows.end(), rows.begin(), [](const List_Row &a, const List_Row &b) {
                          return a.tag == b.tag && a.place == b.place;
                      });
    if (!more)
        return Replace(std::move(rows));
    const int before = Row_Count();
    const int after = static_cast<int>(rows.size());
    if (after > before)
        beginInsertRows({}, before, after - 1);
    m_rows = std::move(rows);
    if (after > before)
        endInsertRows();
    emit dataChanged(index(0, 0), index(before - 1, columnCount({}) - 1));
}

int List_Model::Find(const QString &tag) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const List_Row &row) { return row.tag == tag; });
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void List_Model::Set_Row(int row, const List_Row &content)
{
    m_rows[static_cast<size_t>(row)] = content;
    emit dataChanged(index(row, 0), index(row, columnCount({}) - 1));
}

void List_Model::Add(List_Row row)
{
    beginInsertRows({}, Row_Count(), Row_Count());
    m_rows.push_back(std::move(row));
    endInsertRows();
}

void List_Model::Remove(int row)
{
    if (row < 0 || row >= Row_Count())
        return;
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

void List_Model::Sort_By(int column, bool ascending)
{
    const QCollator collator(QLocale(QLocale::Chinese, QLocale::China));
    struct Group {
        QCollatorSortKey key;
        size_t first;
        size_t end; // behind its last line
    };
    std::vector<Group> groups;
    for (size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].place < 0 || groups.empty())
            groups.push_back({collator.sortKey(m_rows[i].texts.value(column)), i, i + 1});
        else
            groups.back().end = i + 1;
    }
    std::stable_sort(groups.begin(), groups.end(), [&](const Group &a, const Group &b) {
        const int order = a.key.compare(b.key);
        return ascending ? order < 0 : order > 0;
    });
    std::vector<List_Row> sorted;
    sorted.reserve(m_rows.size());
    std::vector<int> newPlace(m_rows.size());
    for (const Group &group : groups) {
        for (size_t i = group.first; i < group.end; ++i) {
            newPlace[i] = static_cast<int>(sorted.size());
            sorted.push_back(std::move(m_rows[i]));
        }
    }
    emit layoutAboutToBeChanged();
    m_rows = std::move(sorted);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex &old : before)
        after << index(newPlace[static_cast<size_t>(old.row())], old.column());
    changePersistentIndexList(before, after);
    emit layoutChanged();
}

Qt::ItemFlags List_Model::flags(const QModelIndex &index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
}

int List_Model::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Row_Count();
}

int List_Model::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant List_Model::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= Row_Count())
        return {};
    const List_Row &row = Row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return row.texts.value(index.column());
    case Tag_Role:
        return row.tag;
    case Place_Role:
        return row.place;
    case Qt::ToolTipRole: {
        const bool here = row.tip_column < 0 || index.column() == 0 || index.column() == row.tip_column;
        return row.tool_tip.isEmpty() || !here ? QVariant() : Plain_Tip(row.tool_tip);
    }
    case Qt::ForegroundRole: {
        const QColor &color = index.column() == 0 ? row.item_color : row.sub_color;
        return color.isValid() ? QVariant(color) : QVariant();
    }
    case Qt::FontRole: {
        if (!row.bold)
            return {};
        QFont font;
        font.setBold(true);
        return font;
    }
    default:
        return {};
    }
}

QVariant List_Model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= static_cast<int>(m_columns.size()))
        return {};
    return m_columns[static_cast<size_t>(section)].caption;
}
