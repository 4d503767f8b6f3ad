// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>

class QSortFilterProxyModel;
namespace Ui
{
class Frm_Node_Choice;
}

/// Lets the user choose a folder as the target of a move: by the tree, or by typing a part of its name.
class Frm_Node_Choice : public QDialog
{
    Q_OBJECT

public:
    /// @param movedKey  node that moves: neither it nor what lies below it is offered; "" for documents, which cannot
    ///                  lie in the root
    /// @param what      what moves, for display
    Frm_Node_Choice(const Tree_Model &tree, QString movedKey, const QString &what, QWidget *parent = nullptr);
    ~Frm_Node_Choice() override;

    [[nodiscard]] QString Chosen_Key() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Filter(const QString &text);
    [[nodiscard]] bool Is_Target(const QString &key) const;

    QString m_movedKey;
    Tree_Model m_tree; ///< a copy, without the counts and without what moves
    QSortFilterProxyModel *m_filter;
    std::unique_ptr<Ui::Frm_Node_Choice> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Node_Choice")};
};
