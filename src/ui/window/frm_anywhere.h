// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"
#include "views/anywhere.h"

#include <QDialog>
#include <QThread>
#include <memory>
#include <optional>

class QTreeWidgetItem;
namespace Ui
{
class Frm_Anywhere;
}

/// The box from which one goes to any document, folder, tag, bookmark or command by what is remembered of its name. The
/// database is read in a thread; commands are there at once.
class Frm_Anywhere : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Anywhere(const std::vector<Place> &commands, QWidget *parent = nullptr);
    ~Frm_Anywhere() override;

    /// Where to go, once it was accepted.
    [[nodiscard]] const std::optional<Place> &Chosen() const { return m_chosen; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Load(const std::vector<Place> &commands);
    void Show_Places();
    void Choose(QTreeWidgetItem *row);
    [[nodiscard]] QString Kind_Text(Place_Kind kind) const;

    std::unique_ptr<Ui::Frm_Anywhere> m_ui;
    ctrlLanguage m_lang;
    std::shared_ptr<Place_Index> m_index; ///< that is looked into
    std::vector<const Place *> m_found;
    std::optional<Place> m_chosen;
    std::unique_ptr<QThread> m_loader;
};
