// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <span>

class Shell;

/// The forms that can be opened by name. Each wing has a table of those that others open, and nobody includes another
/// one's dialog.
namespace Forms
{
/// What a form is opened with; each form takes what concerns it.
struct Opening {
    QWidget *parent = nullptr;
    QString user = {};          ///< a login name
    QString connection = {};    ///< connection string of a database
    QStringList documents = {}; ///< ids
    /// Runs each time the open form has changed what its caller shows.
    std::function<void()> changed = {};
    /// Asked before; false leaves everything as it is.
    std::function<bool()> may_change = {};
    Shell *shell = nullptr; ///< of the main window
};

struct Row {
    const char *name;
    std::unique_ptr<QDialog> (*make)(const Opening &opening);
};

/// Adds a wing's table. Tables live as long as the program.
void Add(std::span<const Row> rows);

enum class Outcome { Accepted, Rejected };

/// Shows a form modally and waits.
/// @throws Run_Time_Error 339 when there is no form of that name, and what the form's load throws.
Outcome Show_Modal(const QString &name, const Opening &opening);

/// Makes of the usual kinds.
template <class Form>
std::unique_ptr<QDialog> Make(const Opening &opening)
{
    return std::make_unique<Form>(opening.parent);
}

/// One that tells when it has changed something.
template <class Form, auto Changed>
std::unique_ptr<QDialog> Make_Changing(const Opening &opening)
{
    auto form = std::make_unique<Form>(opening.parent);
    if (opening.changed)
        QObject::connect(form.get(), Changed, form.get(), opening.changed);
    return form;
}
} // namespace Forms
