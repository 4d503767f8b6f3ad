// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/attachment_copy.h"

#include <QFileSystemWatcher>
#include <QPointer>
#include <QTimer>
#include <QWidget>

/// The attachments that other programs have open, for one window of the program. What was changed there is stored,
/// after a question: once the program that has the file lets go of it or, where that is not known, when the window
/// comes to the front again, or is there when the file is written.
class Opened_Attachments : public QObject
{
    Q_OBJECT

public:
    /// Those of the window that a widget lives in.
    static Opened_Attachments &Of(QWidget &widget);

    /// Gives an attachment to the desktop: a file that may run only after a question, an unsafe address never.
    void Open(const Attachment &attachment);
    /// Asks for every copy that was changed whether it is to be stored.
    void Look_After();
    /// The questions may also come while this form is modal.
    void Allow_With(QWidget &form) { m_form = &form; }
    [[nodiscard]] QStringList Names() const;
    /// The document whose attachments had none yet was stored.
    void Adopt(const QString &code_id);

    /// Asks for the changed copies that earlier processes left. @returns the documents whose attachments were replaced
    static QStringList Offer_Left(QWidget *window);

signals:
    /// What is being waited for, to be shown.
    void Told(const QString &text);

private:
    explicit Opened_Attachments(QWidget &window);
    void Open_Internal(const Attachment &attachment);
    void Open_Link(const Attachment &attachment);
    [[nodiscard]] bool May_Ask() const;
    void Look_At(Attachment_Copy &copy);
    void Settle();

    QWidget &m_window;
    QPointer<QWidget> m_form;
    std::vector<std::unique_ptr<Attachment_Copy>> m_copies;
    QFileSystemWatcher m_watcher; ///< of their folders: programs that save a file anew put another one in its place
    QTimer m_settle;
    bool m_asking = false;
};
