// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/config_page.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>
#include <vector>

class Config_Mark;
class QLabel;
class QListWidgetItem;
class QScrollArea;
namespace Ui
{
class Frm_Config;
}

/// The options of the program: pages, which know their settings themselves, a search over all of them, and the buttons.
/// Only what the user changed is written.
class Frm_Config : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Config(QWidget *parent = nullptr);
    ~Frm_Config() override;

signals:
    /// The settings have been written and are in force for whoever reads them next.
    void Settings_Changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Page {
        QListWidgetItem *entry;
        QScrollArea *area;
        Config_Page *page;
        QLabel *caption;
    };
    struct Hit {
        size_t page;
        Config_Hit hit;
    };

    void Add_Pages();
    void Add_Page(Config_Page *page, const char *name, const QString &words);
    void Name_Pages();
    void Connect_Controls();
    void Open_Page(int index);
    void Show_State();
    void Search(const QString &text);
    void Show_Hit(int index);
    [[nodiscard]] bool Store(Page &page);
    void Apply();
    void Take_All();
    [[nodiscard]] Page &Current();

    std::unique_ptr<Ui::Frm_Config> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_Config")};
    std::vector<Page> m_pages;
    std::unique_ptr<Config_Words> m_words; ///< read when the first search begins
    std::vector<Hit> m_hits;
    int m_hit = -1;
    Config_Mark *m_mark;
};
