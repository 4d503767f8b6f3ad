// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/review.h"
#include "ui/document/document_page.h"
#include "ui/kit/ctrl_language.h"

class QFrame;
class QLabel;

namespace Ui
{
class Page_Review;
}

/// When the document is to be read again: its curve, and one of four scores. Filling the page chooses the easiest score
/// as a click does, and every choice is stored at once; a new document's goes with its first save.
class Page_Review final : public Document_Page
{
    Q_OBJECT

public:
    Page_Review(Shell &shell, QWidget &form);
    ~Page_Review() override;

    void Show_Document(const QString &code_id, const QString &title) override;
    void Document_Saved(const QString &code_id, const QString &title) override;
    [[nodiscard]] QString Caption() const override;
    void Load_Lang() override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void Fill();
    void Cob_Gene_Click();
    void Cmd_Read_score_Click(int index);
    void Place_Marker();
    void Store();

    Shell &m_shell;
    std::unique_ptr<Ui::Page_Review> m_ui;
    ctrlLanguage m_lang;
    std::array<QLabel *, 4> m_dates;
    QFrame *m_marker;
    Gene_Chooser m_chooser;
    QString m_id;
    QString m_next; ///< the date that the marker stands on, "" while it is hidden
    int m_score = -1;
};
