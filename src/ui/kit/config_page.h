// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QWidget>
#include <functional>
#include <span>

class Config_Words;

/// What a search in the options finds: a control, and what makes it seen on its page.
struct Config_Hit {
    QWidget *control;
    std::function<void()> show = {};
};

/// A page of the options. It shows what is in force, and keeps what the user changes until that is saved. A page with a
/// section of its own in the language packs has its caption as its window title.
class Config_Page : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Comes after the texts of the language pack.
    virtual void Show_Settings() {}
    /// Shows what a new installation has; it is saved like any other change.
    virtual void Show_Defaults() {}
    [[nodiscard]] virtual bool Has_Defaults() const { return false; }
    [[nodiscard]] virtual bool Is_Changed() const = 0;
    /// The first control that holds what cannot be saved; nullptr when all can.
    [[nodiscard]] virtual QWidget *Refused() const { return nullptr; }
    /// Writes what the user changed and puts it in force.
    /// @throws Run_Time_Error; what was written before it is no change any more
    virtual void Save() = 0;
    /// The controls that answer to a text.
    [[nodiscard]] virtual QList<Config_Hit> Find(const Config_Words & /*words*/, const QString & /*text*/) const
    {
        return {};
    }

signals:
    /// What the user does to the page.
    void Edited();
};

/// The pages that the wings bring: one row each.
namespace Config_Pages
{
struct Row {
    const char *name;
    Config_Page *(*make)(QWidget *parent);
};

/// Adds a wing's table, once. Tables live as long as the program.
void Add(std::span<const Row> rows);
QList<Row> All();

template <class Page>
Config_Page *Make(QWidget *parent)
{
    return new Page(parent);
}
} // namespace Config_Pages
