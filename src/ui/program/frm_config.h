// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <QHash>
#include <memory>

namespace Ui
{
class Frm_Config;
}

/// The options of the program. A control with the property `Setting` shows the setting of that name: a check box its
/// two words, an option button one value (its `Index`), a list the number of its entry (counted from its `First`), any
/// other control its text. Only what the user changed is written.
class Frm_Config : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Config(QWidget *parent = nullptr);
    ~Frm_Config() override;

signals:
    /// The settings have been written and are in force for whoever reads them next.
    void Settings_Changed();

private:
    void Add_Pages();
    void Show_Languages();
    void Show_Settings();
    void Connect_Controls();
    void Reset_Colors();
    bool Save();
    void Check_Folders();
    bool Write_Changes();
    [[nodiscard]] bool Language_Differs() const;

    std::unique_ptr<Ui::Frm_Config> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_Config")};
    QHash<const QWidget *, QString> m_shown; ///< what each control showed at first, or when it was last written
    QString m_language;                      ///< the pack that the next start takes
};
