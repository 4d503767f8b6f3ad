// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/document/document_facts.h"

#include <QObject>
#include <QStringList>

class Document_Tabs;

/// What is to be known of the document on screen while one reads or writes, in words: when it was saved, how many words
/// it has, in which line the cursor is, whether it can be edited.
class Text_Facts : public QObject
{
    Q_OBJECT

public:
    explicit Text_Facts(Document_Tabs &tabs);

signals:
    /// One text for each fact; none while the list is on screen.
    void Changed(const QStringList &facts);

private:
    void Tell(const Document_Facts &facts);
};
