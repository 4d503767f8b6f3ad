// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_form.h"
#include "documents/drafts.h"

#include <QTextDocument>
#include <QTimer>

class QLineEdit;
class Text_Editor;

/// Keeps what is typed in a form of a title and a text as a draft, so that the next start offers it after a kill.
class Kept_Note : public QObject
{
    Q_OBJECT

public:
    Kept_Note(QLineEdit &title, Text_Editor &text);
    /// What was typed last is kept too.
    ~Kept_Note() override;

    /// Nothing is typed, or nothing any more.
    [[nodiscard]] bool Is_Empty() const;
    /// Writes the draft now; an empty note has none.
    void Keep();
    /// The text is stored or given up.
    void Remove();

signals:
    /// The draft could not be written: the text lives in the window only.
    void Not_Kept();

private:
    QLineEdit &m_title;
    Text_Editor &m_text;
    Draft m_draft;
    QTimer m_later;
    QTextDocument m_none; ///< of the panes that a note has not
};
