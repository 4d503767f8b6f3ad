// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/models/check_model.h"

#include <algorithm>

void Check_Model::Replace(std::vector<Check_Item> items)
{
    beginResetModel();
    m_items = std::move(items);
    endResetModel();
}

void Check_Model::Add(Check_Item item)
{
    beginInsertRows({}, Count(), Count());
    m_items.push_back(std::move(item));
    endInsertRows();
}

int Check_Model::Find(const QString &key) const
{
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [&](const Check_Item &one) { return one.key == key; });
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

void Check_Model::Set_State(int row, Qt::CheckState state)
{
    m_items[static_cast<size_t>(row)].state = state;
    emit dataChanged(index(row), index(row), {Qt::CheckStateRole});
}

QStringList Check_Model::Changed_To(Qt::CheckState state) const
{
    QStringList keys;
    for (const Check_Item &item : m_items) {
        if (item.state == state && item.before != state)
            keys << item.key;
    }
    return keys;
}

Qt::ItemFlags Check_Model::flags(const QModelIndex &index) const
{
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable;
}

int Check_Model::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Count();
}

QVariant Check_Model::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Check_Item &item = Item(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return item.text;
    case Qt::CheckStateRole:
        return item.state;
    case Key_Role:
        return item.key;
    default:
        return {};
    }
}

bool Check_Model::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid())
        return false;
    Set_State(index.row(), value.toInt() == Qt::Unchecked ? Qt::Unchecked : Qt::Checked);
    return true;
}
