// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

/// The main window's folder tree: its nodes can be dragged, dropped on and renamed in place. An edit shows the name
/// without the count.
class Folder_Model : public Tree_Model
{
    Q_OBJECT

public:
    using Tree_Model::Tree_Model;

    /// Rows of the document list on the move: one Code_ID a line, in UTF-8.
    static QString Documents_Format() { return QStringLiteral("application/x-zelqor-documents"); }

    /// What an edit of a node begins with: the name of a folder, the whole caption of the root, which counts nothing.
    static QString Editable_Name(const Tree_Node &node);
    /// The text that the next edit begins with, instead of the name.
    void Set_Edit_Text(const QString &text) { m_editText = text; }

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::CopyAction | Qt::MoveAction; }

signals:
    /// The user typed a name for a node.
    void Label_Edited(int node, const QString &text);

private:
    QString m_editText;
};
