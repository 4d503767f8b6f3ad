// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <functional>
#include <vector>

class QAction;

/// The checkable entries of the main window that stand for a setting: a click writes the setting, a setting that was
/// changed elsewhere is shown by Check_All().
class View_Entries : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// @param shown  told on and off each time the entry changes, after the setting
    void Bind(QAction &entry, const char *setting, std::function<void(bool on)> shown);
    /// Gives each entry the state that its setting has now.
    void Check_All();

private:
    struct Row {
        QAction *entry;
        const char *setting;
    };
    std::vector<Row> m_rows;
};
