// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/config_rows.h"

#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "tree/tree_loading.h"
#include "ui/kit/color_button.h"
#include "ui/program/config_values.h"
#include "ui/program/config_words.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QFontComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

namespace
{
constexpr int Margin = 16, Line_Space = 8, Column_Space = 12;
constexpr int Options_In_A_Line = 3;
constexpr int Widest_List = 320, Color_Width = 180, Number_Width = 84;

QString Words(const char *words)
{
    return QString::fromUtf8(words);
}

QStringList Entries(const char *words)
{
    return Words(words).split(u'|').mid(1);
}

bool Is_Path(Shown_As as)
{
    return as == Shown_As::Folder || as == Shown_As::File;
}

QStringList Installed_Languages()
{
    QStringList names;
    for (const Files::Entry &entry : Files::Entries(App().App_Path + QStringLiteral("Lang"))) {
        if (!entry.is_folder && entry.name.endsWith(QLatin1String(".ini"), Qt::CaseInsensitive))
            names << QFileInfo(entry.name).completeBaseName();
    }
    names.sort();
    return names;
}
} // namespace

Rows_Page::Rows_Page(std::span<const Config_Row> rows, QWidget *parent)
    : Config_Page(parent), m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(Margin, Line_Space, Margin, Margin);
    m_grid->setHorizontalSpacing(Column_Space);
    m_grid->setVerticalSpacing(Line_Space);
    m_grid->setColumnStretch(1, 1);
    for (const Config_Row &row : rows)
        Add_Row(row);
    m_grid->setRowStretch(m_grid->rowCount(), 1);
}

void Rows_Page::Add_Row(const Config_Row &row)
{
    if (row.as == Shown_As::Heading || row.as == Shown_As::Hint)
        return Add_Words(row);
    if (row.as == Shown_As::Options)
        return Add_Options(row);
    Add_Control(row, Make_Control(row));
}

void Rows_Page::Add_Words(const Config_Row &row)
{
    auto *label = new QLabel(Words(row.words), this);
    label->setObjectName(QLatin1String(row.name));
    label->setWordWrap(row.as == Shown_As::Hint);
    const int line = m_grid->rowCount();
    if (row.as == Shown_As::Hint) {
        label->setForegroundRole(QPalette::PlaceholderText);
        m_grid->addWidget(label, line, 0, 1, 2);
        return;
    }
    QFont font = label->font();
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    if (line > 1)
        m_grid->setRowMinimumHeight(line, Line_Space + fontMetrics().height());
    m_grid->addWidget(label, line, 0, 1, 2, Qt::AlignBottom);
}

/// A control has its line to itself, or stands in the one that is begun.
void Rows_Page::Add_Control(const Config_Row &row, QWidget *control)
{
    if ((row.traits & Beside) == 0) {
        const int line = m_grid->rowCount();
        m_line = new QHBoxLayout;
        m_line->setSpacing(Line_Space);
        const bool isLabelled = *row.label != '\0';
        if (isLabelled) {
            auto *label = new QLabel(Words(row.words).section(u'|', 0, 0), this);
            label->setObjectName(QLatin1String(row.label));
            label->setBuddy(control->focusProxy() != nullptr ? control->focusProxy() : control);
            m_grid->addWidget(label, line, 0);
        }
        m_grid->addLayout(m_line, line, isLabelled ? 1 : 0, 1, isLabelled ? 1 : 2);
        m_reason = new QLabel(this);
        m_reason->setWordWrap(true);
        m_reason->setProperty("Reason", true);
        m_reason->hide();
        m_grid->addWidget(m_reason, line + 1, isLabelled ? 1 : 0, 1, isLabelled ? 1 : 2);
    } else if (m_line->count() > 0) { // the stretch behind the control before
        delete m_line->takeAt(m_line->count() - 1);
    }
    m_line->addWidget(control, Is_Path(row.as) ? 1 : 0);
    if (Is_Path(row.as)) {
        auto *browse = new QPushButton(QStringLiteral("浏览..."), this);
        browse->setObjectName(QStringLiteral("Cmd_") + QLatin1String(row.name).mid(4));
        connect(browse, &QPushButton::clicked, this, [this, &row] { Browse(row); });
        m_line->addWidget(browse);
    }
    m_line->addStretch(Is_Path(row.as) ? 0 : 1);
    Bind(row, control);
}

void Rows_Page::Add_Options(const Config_Row &row)
{
    const QStringList entries = Entries(row.words);
    auto *options = new QGridLayout;
    options->setHorizontalSpacing(Margin);
    options->setVerticalSpacing(Line_Space);
    for (int i = 0; i < static_cast<int>(entries.size()); ++i) {
        auto *option = new QRadioButton(entries[i], this);
        option->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(row.name)).arg(i));
        option->setProperty("Name", QLatin1String(row.name));
        option->setProperty("Index", i);
        options->addWidget(option, i / Options_In_A_Line, i % Options_In_A_Line);
        Bind(row, option);
    }
    options->setColumnStretch(Options_In_A_Line, 1);
    m_grid->addLayout(options, m_grid->rowCount(), 0, 1, 2);
}

QWidget *Rows_Page::Make_Control(const Config_Row &row)
{
    const Numbers &numbers = Setting_Of(row.setting).numbers;
    QWidget *control = nullptr;
    switch (row.as) {
    case Shown_As::Switch:
        control = new QCheckBox(Words(row.words), this);
        break;
    case Shown_As::Number: {
        auto *box = new QSpinBox(this);
        box->setRange(static_cast<int>(numbers.least), static_cast<int>(numbers.most));
        control = box;
        break;
    }
    case Shown_As::Size: {
        auto *box = new QDoubleSpinBox(this);
        box->setRange(numbers.least, numbers.most);
        box->setDecimals(1);
        box->setSingleStep(0.5);
        control = box;
        break;
    }
    case Shown_As::Color:
        control = new Color_Button(this);
        static_cast<Color_Button *>(control)->setText(Words(row.words));
        control->setMinimumWidth(Color_Width);
        break;
    case Shown_As::Folder:
    case Shown_As::File:
        control = new QLineEdit(this);
        break;
    default:
        control = Make_List(row);
    }
    if (row.as == Shown_As::Number || row.as == Shown_As::Size)
        control->setMinimumWidth(Number_Width);
    control->setObjectName(QLatin1String(row.name));
    return control;
}

QWidget *Rows_Page::Make_List(const Config_Row &row)
{
    if (row.as == Shown_As::Font) {
        auto *fonts = new QFontComboBox(this);
        fonts->setMaximumWidth(Widest_List);
        return fonts;
    }
    auto *list = new QComboBox(this);
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list->setMaximumWidth(Widest_List);
    list->setProperty("lang_ok", row.as == Shown_As::Choice);
    list->addItems(Entries(row.words));
    return list;
}

void Rows_Page::Bind(const Config_Row &row, QWidget *control)
{
    const Setting &setting = Setting_Of(row.setting);
    control->setProperty("Setting", QLatin1String(setting.key));
    m_bound.append({&row, &setting, control, m_reason});
    const qsizetype index = m_bound.size() - 1;
    Config_Values::Watch(*control, *this, [this, index] {
        Check(m_bound[index]);
        emit Edited();
    });
}

/// The language control has given the lists their words by now; behind each entry stands its value.
void Rows_Page::Fill_Lists()
{
    for (const Bound &bound : m_bound) {
        auto *list = qobject_cast<QComboBox *>(bound.control);
        if (bound.row->as == Shown_As::Language && list->count() == 0) {
            for (const QString &name : Installed_Languages())
                list->addItem(name, name);
        } else if (bound.row->as == Shown_As::Kept_In && list->count() == 0) {
            Folder_Combo folders{QLatin1String(bound.row->name), {}};
            Reload_Cate(folders);
            for (qsizetype i = 0; i < folders.items.size(); ++i)
                list->addItem(folders.items[i], Cate_ID_List().value(i));
        } else if (bound.row->as == Shown_As::Choice) {
            for (int i = 0; i < list->count(); ++i)
                list->setItemData(i, QString::number(static_cast<int>(bound.setting->numbers.least) + i));
        }
    }
}

void Rows_Page::Show_Settings()
{
    Fill_Lists();
    for (Bound &bound : m_bound) {
        const QString text = bound.row->as == Shown_As::Language
                                 ? GetIni(QLatin1String(bound.setting->section), QLatin1String(bound.setting->key))
                                 : Text_Of(Config(), *bound.setting);
        Config_Values::Show(*bound.control, *bound.setting, text);
        bound.shown = Config_Values::Of(*bound.control, *bound.setting);
        Check(bound);
    }
}

void Rows_Page::Show_Defaults()
{
    for (const Bound &bound : m_bound)
        Config_Values::Show(*bound.control, *bound.setting, Initial_Value(*bound.setting));
}

/// What is typed into a box of numbers and is none of them is a change too, though the box has its old value still.
bool Rows_Page::Differs(const Bound &bound)
{
    if (const auto *box = qobject_cast<const QAbstractSpinBox *>(bound.control);
        box != nullptr && !box->hasAcceptableInput())
        return true;
    const QString value = Config_Values::Of(*bound.control, *bound.setting);
    return !value.isNull() && value != bound.shown;
}

bool Rows_Page::Is_Changed() const
{
    return std::ranges::any_of(m_bound, Differs);
}

QWidget *Rows_Page::Refused() const
{
    const auto refused = std::ranges::find_if(m_bound, [](const Bound &bound) {
        return Differs(bound) && !Config_Values::Reason_Against(*bound.row, *bound.control, *bound.setting).isEmpty();
    });
    return refused == m_bound.end() ? nullptr : refused->control;
}

void Rows_Page::Check(const Bound &bound)
{
    if (bound.reason == nullptr)
        return;
    QString reason;
    for (const Bound &one : m_bound) { // the first one of the line that is refused tells why
        if (one.reason == bound.reason && reason.isEmpty() && Differs(one))
            reason = Config_Values::Reason_Against(*one.row, *one.control, *one.setting);
    }
    const QString value = Config_Values::Of(*bound.control, *bound.setting);
    const QString inForce = Text_Of(Config(), *bound.setting);
    if (reason.isEmpty() && (bound.row->traits & At_Restart) != 0 && !value.isEmpty() &&
        value.compare(inForce, Qt::CaseInsensitive) != 0)
        reason = Pack_Text("Frm_Config", "_Restart");
    bound.reason->setText(reason);
    bound.reason->setVisible(!reason.isEmpty());
    bound.control->setAccessibleDescription(reason);
}

void Rows_Page::Save()
{
    for (const Bound &bound : m_bound) {
        if (bound.row->as == Shown_As::Folder && Differs(bound))
            Files::Prepare_Folder(Config_Values::Of(*bound.control, *bound.setting));
    }
    for (Bound &bound : m_bound) {
        if (!Differs(bound))
            continue;
        bound.shown = Config_Values::Of(*bound.control, *bound.setting);
        Put_In_Force(bound, bound.shown);
        Check(bound);
    }
    for (Bound &bound : m_bound) { // an option that was left is a change when it is taken again
        if (qobject_cast<QRadioButton *>(bound.control) != nullptr)
            bound.shown = Config_Values::Of(*bound.control, *bound.setting);
    }
}

void Rows_Page::Put_In_Force(const Bound &bound, const QString &value)
{
    const QString language = Config().LANGUAGE;
    Change(*bound.setting, value);
    Config().LANGUAGE = language; // open forms keep their words, so the record keeps the language of this run
    Config().Backup_Path = Files::With_Final_Separator(Config().Backup_Path);
    Config().Pic_Dir = Files::With_Final_Separator(Config().Pic_Dir);
}

void Rows_Page::Browse(const Config_Row &row)
{
    auto *line = findChild<QLineEdit *>(QLatin1String(row.name));
    const QString present = Files::Native_Path(line->text().trimmed());
    const QString title = Pack_Text("Frm_Config", row.as == Shown_As::Folder ? "_Folder" : "_File");
    const QString chosen = row.as == Shown_As::Folder ? Prompts::Folder(title, present)
                                                      : Prompts::Save_File(title, present, QStringLiteral("*.db|*.db"));
    if (!chosen.isEmpty())
        line->setText(chosen);
}

QList<Config_Hit> Rows_Page::Find(const Config_Words &words, const QString &text) const
{
    QList<Config_Hit> hits;
    QString options; // one hit for all of a setting
    for (const Bound &bound : m_bound) {
        const QString name = QLatin1String(bound.row->name);
        if (bound.row->as == Shown_As::Options && options == name)
            continue;
        const QStringList more{QLatin1String(bound.setting->key), Config_Values::Of(*bound.control, *bound.setting),
                               Text_Of(Config(), *bound.setting)};
        if (!words.Answer({name, QLatin1String(bound.row->label)}, text, more))
            continue;
        hits.append({bound.control});
        options = bound.row->as == Shown_As::Options ? name : QString();
    }
    return hits;
}
