// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/settings_table.h"
#include "ui/kit/config_page.h"

#include <QHash>
#include <optional>

class QGridLayout;
class QHBoxLayout;
class QLabel;

/// What a row of the options is shown as.
enum class Shown_As {
    Heading,  ///< of the rows below it
    Hint,     ///< a sentence below the control above it
    Switch,   ///< a box to tick
    Choice,   ///< a list whose entries stand for the numbers that the setting may have
    Options,  ///< the same as buttons, named with a number behind
    Language, ///< a list of the installed packs
    Kept_In,  ///< a list of the folders of the tree
    Number,
    Size, ///< of letters
    Font,
    Color,
    Folder,
    File,
    Count, ///< how many there are
};

/// How a row stands on its page.
enum Config_Trait : unsigned {
    Beside = 1,    ///< behind the control of the row above it
    At_Restart = 2 ///< says that a change waits for the next start
};

/// One row of a page: a setting and its control, or words.
struct Config_Row {
    Shown_As as;
    const char *name;  ///< of the control
    const char *words; ///< at design time; entries of a list stand behind them, "|" between
    Setting_Field setting = static_cast<QString Settings_Record::*>(nullptr);
    const char *label = ""; ///< name of the label in front; "" for a control that has its own words
    unsigned traits = 0;
};

/// A page that is a table of rows. What is typed is checked at once, and the reason against it stands below it.
class Rows_Page : public Config_Page
{
    Q_OBJECT

public:
    Rows_Page(std::span<const Config_Row> rows, QWidget *parent);

    void Show_Settings() override;
    void Show_Defaults() override;
    [[nodiscard]] bool Has_Defaults() const override { return true; }
    [[nodiscard]] bool Is_Changed() const override;
    [[nodiscard]] QWidget *Refused() const override;
    void Save() override;
    [[nodiscard]] QList<Config_Hit> Find(const Config_Words &words, const QString &text) const override;

private:
    struct Bound {
        const Config_Row *row;
        const Setting *setting;
        QWidget *control;
        QLabel *reason;     ///< shared by the controls of a line
        QString shown = {}; ///< what the control showed at first, or when it was last stored
    };

    void Add_Row(const Config_Row &row);
    void Add_Words(const Config_Row &row);
    void Add_Control(const Config_Row &row, QWidget *control);
    void Add_Options(const Config_Row &row);
    QWidget *Make_Control(const Config_Row &row);
    QWidget *Make_List(const Config_Row &row);
    QWidget *Make_Path(const Config_Row &row);
    void Bind(const Config_Row &row, QWidget *control);
    void Fill_Lists();
    void Check(const Bound &bound);
    void Browse(const Config_Row &row);
    [[nodiscard]] static bool Differs(const Bound &bound);
    static void Put_In_Force(const Bound &bound, const QString &value);

    QGridLayout *m_grid;
    QHBoxLayout *m_line = nullptr; ///< the controls of the present row
    QLabel *m_reason = nullptr;    ///< below them
    QList<Bound> m_bound;
};
