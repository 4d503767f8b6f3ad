// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class Document_Tabs;

/// What a document's tab offers to the right button: closing it, the others or all, and its folder in the tree.
class Tab_Menu : public QObject
{
    Q_OBJECT

public:
    explicit Tab_Menu(Document_Tabs &tabs);

signals:
    /// A document's folder is to be shown.
    void Folder_Wanted(const QString &codeId);

private:
    void Show(const QPoint &at);
    void Close_Others(const QWidget *stays);

    Document_Tabs &m_tabs;
};
