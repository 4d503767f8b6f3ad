// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_config.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "core/settings_table.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/profile/profile.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/color_button.h"
#include "ui/kit/config_page.h"
#include "ui_frm_config.h"

#include <QFileInfo>

namespace
{
constexpr const char *Setting_Property = "Setting";
const QString Page = QStringLiteral("Page");
const QString Language_Key = QStringLiteral("Language");

QString Config_Path()
{
    return App().App_Path + QStringLiteral("Config.ini");
}

const Setting &Setting_Of(const QWidget &control)
{
    return Setting_Named(control.property(Setting_Property).toString());
}

void Show_Value(QWidget &control, const QString &text)
{
    if (auto *box = qobject_cast<QCheckBox *>(&control))
        box->setChecked(Is_On(Setting_Of(control), text));
    else if (auto *option = qobject_cast<QRadioButton *>(&control))
        option->setChecked(option->property("Index").toString() == text);
    else if (auto *font = qobject_cast<QFontComboBox *>(&control))
        font->setEditText(text);
    else if (auto *list = qobject_cast<QComboBox *>(&control))
        list->setCurrentIndex(text.toInt() - list->property("First").toInt());
    else if (auto *number = qobject_cast<QSpinBox *>(&control))
        number->setValue(qRound(text.toDouble()));
    else if (auto *color = qobject_cast<Color_Button *>(&control))
        color->Set_Number(text);
    else if (auto *line = qobject_cast<QLineEdit *>(&control))
        line->setText(text);
}

/// What a control says for its setting; null where it says nothing: an option that is not the chosen one, a list
/// without a chosen entry.
QString Value_Of(const QWidget &control)
{
    if (const auto *box = qobject_cast<const QCheckBox *>(&control))
        return Switch_Text(Setting_Of(control), box->isChecked());
    if (const auto *option = qobject_cast<const QRadioButton *>(&control))
        return option->isChecked() ? option->property("Index").toString() : QString();
    if (const auto *font = qobject_cast<const QFontComboBox *>(&control))
        return font->currentText().trimmed();
    if (const auto *list = qobject_cast<const QComboBox *>(&control))
        return list->currentIndex() < 0 ? QString()
                                        : QString::number(list->currentIndex() + list->property("First").toInt());
    if (const auto *number = qobject_cast<const QSpinBox *>(&control))
        return QString::number(number->value());
    if (const auto *color = qobject_cast<const Color_Button *>(&control))
        return color->Number();
    const auto *line = qobject_cast<const QLineEdit *>(&control);
    return line == nullptr ? QString() : line->text().trimmed();
}

QList<QWidget *> Bound_Controls(const QWidget &form)
{
    QList<QWidget *> bound = form.findChildren<QWidget *>();
    bound.removeIf([](const QWidget *control) { return !control->property(Setting_Property).isValid(); });
    return bound;
}
} // namespace

Frm_Config::Frm_Config(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Config>())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    Add_Pages();
    Show_Languages();
    Show_Settings();
    Connect_Controls();
}

Frm_Config::~Frm_Config() = default;

void Frm_Config::Add_Pages()
{
    for (const Config_Pages::Row &row : Config_Pages::All()) {
        Config_Page *page = row.make(this);
        m_ui->TabS_Config->addTab(page, page->windowTitle());
    }
}

void Frm_Config::Show_Languages()
{
    m_language = GetIni(Page, Language_Key);
    int present = -1; // a language without a pack is nobody's choice of another one
    QStringList names;
    for (const Files::Entry &entry : Files::Entries(App().App_Path + QStringLiteral("Lang"))) {
        if (!entry.is_folder && entry.name.endsWith(QLatin1String(".ini"), Qt::CaseInsensitive))
            names << QFileInfo(entry.name).completeBaseName();
    }
    names.sort();
    for (const QString &name : names) {
        m_ui->Comb_Language->addItem(name);
        if (name.compare(m_language, Qt::CaseInsensitive) == 0)
            present = m_ui->Comb_Language->count() - 1;
    }
    m_ui->Comb_Language->setCurrentIndex(present);
}

void Frm_Config::Show_Settings()
{
    for (QWidget *control : Bound_Controls(*this)) {
        Show_Value(*control, Text_Of(Config(), Setting_Of(*control)));
        m_shown.insert(control, Value_Of(*control));
    }
}

void Frm_Config::Connect_Controls()
{
    const auto browse = [this](QLineEdit *path) {
        return [this, path] {
            const QString chosen =
                Prompts::Folder(m_lang.GetString("_Folder"), Files::Native_Path(path->text().trimmed()));
            if (!chosen.isEmpty())
                path->setText(chosen);
        };
    };
    connect(m_ui->Cmd_Pic, &QPushButton::clicked, this, browse(m_ui->Txt_Pic));
    connect(m_ui->Cmd_Backup, &QPushButton::clicked, this, browse(m_ui->Txt_Backup));
    connect(m_ui->Cmd_Colors, &QPushButton::clicked, this, &Frm_Config::Reset_Colors);
    connect(m_ui->Chk_Auto, &QCheckBox::toggled, m_ui->Spn_Auto, &QWidget::setEnabled);
    m_ui->Spn_Auto->setEnabled(m_ui->Chk_Auto->isChecked());
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_Config::Save);
    connect(m_ui->Cmd_OK, &QPushButton::clicked, this, [this] {
        if (Save())
            accept();
    });
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &QDialog::reject);
}

void Frm_Config::Reset_Colors()
{
    for (Color_Button *button : findChildren<Color_Button *>())
        button->Set_Number(Initial_Value(Setting_Of(*button)));
}

bool Frm_Config::Save()
{
    const bool newLanguage = Language_Differs();
    if (!Write_Changes())
        return false;
    m_ui->Lab_Note->setText(m_lang.GetString("_SetOK"));
    emit Settings_Changed();
    if (newLanguage)
        Prompts::Message(m_lang.GetString("_Restart"), App().App_Title);
    return true;
}

bool Frm_Config::Language_Differs() const
{
    const QString chosen = m_ui->Comb_Language->currentText();
    return !chosen.isEmpty() && chosen.compare(m_language, Qt::CaseInsensitive) != 0;
}

/// Open forms keep their words, so the record keeps the language that this run began with.
/// Folders that cannot be used are refused before anything is written.
void Frm_Config::Check_Folders()
{
    for (QWidget *control : Bound_Controls(*this)) {
        const QString value = Value_Of(*control);
        const QString key = QLatin1String(Setting_Of(*control).key);
        if (value == m_shown.value(control) || (key != QLatin1String("Backup_Path") && key != QLatin1String("Pic_Dir")))
            continue;
        control->setFocus();
        Files::Prepare_Folder(value);
    }
}

bool Frm_Config::Write_Changes()
{
    return Trap(
        QStringLiteral("Frm_Config\\Cmd_Apply_Click"),
        [this] {
            Check_Folders();
            for (QWidget *control : Bound_Controls(*this)) {
                const QString value = Value_Of(*control);
                const Setting &setting = Setting_Of(*control);
                if (value.isEmpty() || value == m_shown.value(control))
                    continue;
                Profile::Write(Config_Path(), QLatin1String(setting.section), QLatin1String(setting.key), value);
                Store(Config(), setting, value);
                m_shown.insert(control, value);
            }
            if (Language_Differs()) {
                Profile::Write(Config_Path(), Page, Language_Key, m_ui->Comb_Language->currentText());
                m_language = m_ui->Comb_Language->currentText();
            }
            for (Config_Page *page : findChildren<Config_Page *>())
                page->Save();
            Config().Backup_Path = Files::With_Final_Separator(Config().Backup_Path);
            Config().Pic_Dir = Files::With_Final_Separator(Config().Pic_Dir);
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
}
