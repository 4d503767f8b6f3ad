// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <span>

/// A page of the options that shows more than settings: what a wing has of its own. Its window title is its caption.
class Config_Page : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Writes what the user changed and puts it in force; nothing where nothing was changed.
    virtual void Save() = 0;
};

/// The pages that the wings bring.
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
