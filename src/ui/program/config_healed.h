// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/config_page.h"

class QLabel;
class QTreeWidget;

/// What the start of the program had to heal in the file of the settings.
class Config_Healed : public Config_Page
{
    Q_OBJECT

public:
    explicit Config_Healed(QWidget *parent = nullptr);

    void Show_Settings() override;
    [[nodiscard]] bool Is_Changed() const override { return false; }
    void Save() override {}
    [[nodiscard]] QList<Config_Hit> Find(const Config_Words &words, const QString &text) const override;

private:
    QLabel *m_words;
    QTreeWidget *m_list;
};
