// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/review_groups.h"
#include "ui/kit/config_page.h"

#include <memory>

namespace Ui
{
class Config_Review;
}

/// The groups of the review: what is added or changed waits to be saved, a deletion is done at once.
class Config_Review : public Config_Page
{
    Q_OBJECT

public:
    explicit Config_Review(QWidget *parent = nullptr);
    ~Config_Review() override;

    void Show_Settings() override;
    [[nodiscard]] bool Is_Changed() const override { return m_changed; }
    void Save() override;
    [[nodiscard]] QList<Config_Hit> Find(const Config_Words &words, const QString &text) const override;

private:
    void Fill(int row);
    void Show_Group();
    void Check_One();
    void Put(int row);
    void Delete();
    [[nodiscard]] int Row() const;

    std::unique_ptr<Ui::Config_Review> m_ui;
    Group_Editor m_groups;
    bool m_changed = false;
    bool m_filling = false;
};
