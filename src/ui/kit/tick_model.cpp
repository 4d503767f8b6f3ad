// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/tick_model.h"

#include "platform/models/list_model.h"

Tick_Model::Tick_Model(List_Model &list, QObject *parent) : QIdentityProxyModel(parent), m_list(list)
{
    setSourceModel(&list);
}

QString Tick_Model::Tag(const QModelIndex &index) const
{
    return m_list.Row(index.row()).tag;
}

void Tick_Model::Tick(const QString &tag, bool on)
{
    const int row = m_list.Find(tag);
    if (row < 0 || m_ticked.contains(tag) == on)
        return;
    if (on)
        m_ticked.insert(tag);
    else
        m_ticked.remove(tag);
    emit dataChanged(index(row, 0), index(row, 0), {Qt::CheckStateRole});
    emit Ticks_Changed();
}

void Tick_Model::Tick_All(bool on)
{
    m_ticked.clear();
    for (int row = 0; on && row < m_list.Row_Count(); ++row)
        m_ticked.insert(m_list.Row(row).tag);
    if (m_list.Row_Count() > 0)
        emit dataChanged(index(0, 0), index(m_list.Row_Count() - 1, 0), {Qt::CheckStateRole});
    emit Ticks_Changed();
}

void Tick_Model::Forget_Missing()
{
    QSet<QString> there;
    for (int row = 0; row < m_list.Row_Count(); ++row)
        there.insert(m_list.Row(row).tag);
    m_ticked.intersect(there);
    emit Ticks_Changed();
}

Qt::ItemFlags Tick_Model::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags usual = QIdentityProxyModel::flags(index);
    return index.column() == 0 ? usual | Qt::ItemIsUserCheckable : usual;
}

QVariant Tick_Model::data(const QModelIndex &index, int role) const
{
    if (role == Qt::CheckStateRole && index.isValid() && index.column() == 0)
        return m_ticked.contains(Tag(index)) ? Qt::Checked : Qt::Unchecked;
    return QIdentityProxyModel::data(index, role);
}

bool Tick_Model::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid())
        return false;
    Tick(Tag(index), value.toInt() == Qt::Checked);
    return true;
}
