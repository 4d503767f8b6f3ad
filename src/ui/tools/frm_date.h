// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tools/day_text.h"
#include "ui/kit/ctrl_language.h"
#include "views/day_marks.h"

#include <QDialog>
#include <memory>

class QPushButton;
class Shell;
namespace Ui
{
class Frm_Date;
}

/// The calendar, as a way into the library: a day's marks list the documents that were made, changed or read on it, or
/// are due then.
class Frm_Date : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Date(Shell &shell, QWidget *parent = nullptr);
    ~Frm_Date() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void Set_Up_Words();
    void Connect_Controls();
    void Show_Day(const QDate &day);
    void Show_Marks();
    void Show_Lunar(bool on);
    void Show_Lunar_Date(const QDate &day);
    void Fill_Lunar_Months(int number, bool leap);
    void Fill_Lunar_Days();
    [[nodiscard]] Lunar_Month Chosen_Lunar_Month() const;
    void Cmd_Lunar_Click();
    void Read_Marks();
    void List_Mark(const QDate &day, Day_Mark mark);
    [[nodiscard]] QList<QPushButton *> Mark_Buttons() const;

    Shell &m_shell;
    std::unique_ptr<Ui::Frm_Date> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_Date")};
    QDate m_marked;           ///< first day of the month whose marks were read
    Lunar_Month m_lunarMonth; ///< that the boxes of the lunar date show
};
