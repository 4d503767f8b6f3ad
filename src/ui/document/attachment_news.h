// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

/// Tells every page and the manager that a document's attachments are others now, whoever changed them.
class Attachment_News : public QObject
{
    Q_OBJECT

public:
    static Attachment_News &The()
    {
        static Attachment_News news;
        return news;
    }

signals:
    /// @param code_id  "" for those that wait for their document's first save
    void Changed(const QString &code_id);
};
