// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/check_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <memory>

namespace Ui
{
class Frm_ListView_Tags;
}

/// Gives documents their tags: a box is half ticked where only some of the documents have the tag.
class Frm_ListView_Tags : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_ListView_Tags(QStringList codeIds, QWidget *parent = nullptr);
    ~Frm_ListView_Tags() override;

signals:
    void Tags_Changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Ticks the tag that is typed, which is made when it is new.
    void Take_Typed();
    void Cmd_OK_Click();
    void Show_Trouble(const QString &trouble);

    QStringList m_codeIds;
    std::unique_ptr<Ui::Frm_ListView_Tags> m_ui;
    ctrlLanguage m_lang;
    Check_Model m_tags;
    QSortFilterProxyModel m_shown;
};
