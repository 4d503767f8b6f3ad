// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/check_model.h"
#include "ui/document/document_page.h"
#include "ui/kit/ctrl_language.h"

#include <QSet>

namespace Ui
{
class Page_Tags;
}

/// The document's tags. A tick is stored at once; those of a new document go with its first save.
class Page_Tags final : public Document_Page
{
    Q_OBJECT

public:
    Page_Tags(Shell &shell, QWidget &form);
    ~Page_Tags() override;

    void Show_Document(const QString &code_id, const QString &title) override;
    void Document_Saved(const QString &code_id, const QString &title) override;
    [[nodiscard]] QString Caption() const override;
    void Load_Lang() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void Fill();
    void Follow_Ticks(const QModelIndex &first);
    void Set_Tag(int tagId, bool on);
    void Cmd_AddTag_Click();

    Shell &m_shell;
    std::unique_ptr<Ui::Page_Tags> m_ui;
    ctrlLanguage m_lang;
    Check_Model m_list;
    QSet<QString> m_ticked; ///< keys of the lines that have a tick
    QString m_id;
};
