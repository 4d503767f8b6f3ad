// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

/// What a library without folders and documents shows in place of an empty list: the three ways to begin.
class First_Steps : public QWidget
{
    Q_OBJECT

public:
    explicit First_Steps(QWidget *parent = nullptr);

signals:
    void Note_Wanted();
    void Files_Wanted();
    void Database_Wanted();
};
