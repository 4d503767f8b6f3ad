// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/review_session.h"
#include "ui/document/document_tabs.h"

class QMenu;

/// The command that opens what is due, one document after the other: each one is read, edited where that is wanted, and
/// scored, and the next one comes. Whoever leaves it loses nothing, as each score is stored at once.
class Review_Walk : public QObject
{
    Q_OBJECT

public:
    /// Puts the command into a menu.
    Review_Walk(QMenu &menu, Document_Tabs &tabs, Shell &shell);

private:
    void Begin();
    void Open_Next();
    void Take_Score(const QString &code_id);

    Document_Tabs &m_tabs;
    Shell &m_shell;
    Review_Session m_session;
    QString m_id; ///< of the document that waits for its score, "" while nothing is reviewed
};
