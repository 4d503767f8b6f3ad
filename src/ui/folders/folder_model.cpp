// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/folder_model.h"

#include "core/settings.h"
#include "platform/models/plain_tip.h"
#include "tree/folder_ids.h"

#include <QMimeData>

QString Folder_Model::Editable_Name(const Tree_Node &node)
{
    return Is_Folder_Key(node.key) ? Caption_Name(node.caption) : node.caption;
}

Qt::ItemFlags Folder_Model::flags(const QModelIndex &index) const
{
    return Tree_Model::flags(index) | Qt::ItemIsEditable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
}

QVariant Folder_Model::data(const QModelIndex &index, int role) const
{
    if (index.isValid() && role == Qt::EditRole)
        return m_editText.isNull() ? Editable_Name(Node(Node_Of(index))) : m_editText;
    if (index.isValid() && role == Qt::ToolTipRole && Is_On(&Settings_Record::CH_Tree_ToolTips))
        return Plain_Tip(Node(Node_Of(index)).caption);
    return Tree_Model::data(index, role);
}

bool Folder_Model::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    emit Label_Edited(Node_Of(index), value.toString());
    return true;
}

QStringList Folder_Model::mimeTypes() const
{
    return {QStringLiteral("text/plain")};
}

QMimeData *Folder_Model::mimeData(const QModelIndexList &indexes) const
{
    auto data = std::make_unique<QMimeData>();
    if (!indexes.isEmpty())
        data->setText(Node(Node_Of(indexes.first())).key);
    return data.release();
}
