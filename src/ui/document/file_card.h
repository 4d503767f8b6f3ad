// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>

class QLabel;
class QToolButton;

/// What stands above the text of a document that keeps a file: its name, what it is, and the button that opens it. The
/// pane below is the preview: the file's text, or its picture.
class File_Card : public QFrame
{
    Q_OBJECT

public:
    explicit File_Card(QWidget *parent = nullptr);

    /// What the card says of a file.
    struct Facts {
        QString name;
        QString type;    ///< upper-case
        qint64 size = 0; ///< in bytes, 0 where it is not known
        QString path;    ///< "" for a file that the database holds
    };
    void Show_File(const Facts &file);
    [[nodiscard]] QToolButton &Opener() const { return *m_open; }

private:
    QLabel *m_icon;
    QLabel *m_name;
    QLabel *m_facts;
    QToolButton *m_open;
};
