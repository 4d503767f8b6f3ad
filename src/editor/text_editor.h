// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextEdit>

/// A pane of rich text: the body of a document, its memo or its summary.
class Text_Editor : public QTextEdit
{
    Q_OBJECT

public:
    explicit Text_Editor(QWidget *parent = nullptr);

    /// The font of a pane that holds nothing yet: what is typed first is written in it. Nothing can be undone before.
    void Start_In_Font(const QString &family, qreal pointSize);
    /// Takes over what an input method still composes, as if the user had confirmed it.
    void Commit_Composition();

protected:
    void inputMethodEvent(QInputMethodEvent *event) override;

private:
    QString m_composed; ///< what the input method shows and has not given yet
};
