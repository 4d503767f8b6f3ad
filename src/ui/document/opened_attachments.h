// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/attachment_copy.h"

#include <QWidget>

/// The attachments that other programs have open. When the window comes to the front again, what was changed there is
/// stored, after a question.
class Opened_Attachments : public QObject
{
    Q_OBJECT

public:
    explicit Opened_Attachments(QWidget &window);

    /// Gives an attachment to the desktop: a file that may run only after a question, an unsafe address never.
    void Open(const Attachment &attachment);
    /// Asks for every copy that was changed whether it is to be stored.
    void Look_After();
    [[nodiscard]] QStringList Names() const;
    /// The document whose attachments had none yet was stored.
    void Adopt(const QString &code_id);

    /// Asks for the changed copies that earlier processes left. @returns the documents whose attachments were replaced
    static QStringList Offer_Left(QWidget *window);

signals:
    /// An attachment of this document was replaced.
    void Replaced(const QString &code_id);

private:
    void Open_Internal(const Attachment &attachment);
    void Open_Link(const Attachment &attachment);

    QWidget &m_window;
    std::vector<std::unique_ptr<Attachment_Copy>> m_copies;
    bool m_asking = false;
};
