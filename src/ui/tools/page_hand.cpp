// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/page_hand.h"

#include "core/config_store.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "ui/tools/version_check.h"
#include "ui_page_hand.h"

namespace
{
struct Modifier_Box {
    const char *name;
    Hot_Keys::Modifier modifier;
};

constexpr Modifier_Box Boxes[] = {
    {"Chk_Control_", Hot_Keys::Control},
    {"Chk_Alt_", Hot_Keys::Alt},
    {"Chk_Shift_", Hot_Keys::Shift},
    {"Chk_Logo_", Hot_Keys::Logo},
};

constexpr const char *Periods[] = {" ", "D", "W", "M"}; // as the entries of the box
constexpr Hand_Keys::Key All_Keys[] = {Hand_Keys::Window, Hand_Keys::Note};

void Write_Changed(QString &field, const char *section, const char *key, const QString &value)
{
    if (field == value)
        return;
    field = value;
    WriteIni(QLatin1String(section), QLatin1String(key), value);
}
} // namespace

Page_Hand::Page_Hand(QWidget *parent) : Config_Page(parent), m_ui(std::make_unique<Ui::Page_Hand>())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    for (const Hand_Keys::Key key : All_Keys)
        Show_Key(key);
    Show_Commands();
    m_ui->Cob_K9->Fill();
    m_ui->Cob_K9->Choose(Config().Cob_K9);
    const auto *period = std::find_if(std::begin(Periods), std::end(Periods),
                                      [](const char *one) { return Config().COB_UPDATE == QLatin1String(one); });
    m_ui->Comb_Update->setCurrentIndex(
        static_cast<int>(period == std::end(Periods) ? 0 : std::distance(std::begin(Periods), period)));
    m_ui->Txt_Address->setText(Version_Check::Address());
    m_ui->Txt_Address->setPlaceholderText(QStringLiteral("https://"));
    Show_Standings();
    if (Hand_Keys *running = Hand_Keys::Present())
        connect(running, &Hand_Keys::Standing_Changed, this, &Page_Hand::Show_Standings);
    for (const QCheckBox *box : findChildren<QCheckBox *>())
        connect(box, &QCheckBox::clicked, this, &Page_Hand::Edited);
    for (const QComboBox *box : findChildren<QComboBox *>())
        connect(box, &QComboBox::activated, this, &Page_Hand::Edited);
    connect(m_ui->Txt_Address, &QLineEdit::textEdited, this, &Page_Hand::Edited);
}

Page_Hand::~Page_Hand() = default;

template <class Control>
Control &Page_Hand::Of(const char *name, Hand_Keys::Key key) const
{
    return *findChild<Control *>(QLatin1String(name) + QString::number(key));
}

void Page_Hand::Show_Key(Hand_Keys::Key key)
{
    const QString row = Of<QLabel>("Lab_Key_", key).text().remove(QLatin1Char('&'));
    const Hot_Keys::Combination chosen = Hand_Keys::Chosen(key);
    for (const Modifier_Box &box : Boxes) {
        auto &control = Of<QCheckBox>(box.name, key);
        control.setChecked((chosen.modifiers & box.modifier) != 0);
        control.setAccessibleName(row + control.text());
    }
    auto &keys = Of<QComboBox>("Comb_Key_", key);
    keys.addItem(m_lang.GetString("_None"), 0);
    for (const int known : Hot_Keys::Known_Keys())
        keys.addItem(Hot_Keys::Key_Name(known), known);
    keys.setCurrentIndex(std::max(0, keys.findData(chosen.key)));
}

Hot_Keys::Combination Page_Hand::Typed(Hand_Keys::Key key) const
{
    Hot_Keys::Combination typed;
    for (const Modifier_Box &box : Boxes) {
        if (Of<QCheckBox>(box.name, key).isChecked())
            typed.modifiers |= box.modifier;
    }
    typed.key = Of<QComboBox>("Comb_Key_", key).currentData().toInt();
    return typed;
}

void Page_Hand::Show_Standings()
{
    const Hand_Keys *running = Hand_Keys::Present();
    for (const Hand_Keys::Key key : All_Keys)
        Of<QLabel>("Lab_Standing_", key).setText(running == nullptr ? QString() : running->Standing_Text(key));
}

/// For a key of the desktop's own, which works everywhere.
void Page_Hand::Show_Commands()
{
    const QString client = App().App_Path + QStringLiteral("zelqor-send");
    m_ui->Txt_Else->setPlainText(client + QStringLiteral(" --toggle\n") + client + QStringLiteral(" --note"));
    constexpr int Lines = 2;
    m_ui->Txt_Else->setFixedHeight(m_ui->Txt_Else->fontMetrics().lineSpacing() * (Lines + 1) +
                                   2 * m_ui->Txt_Else->frameWidth());
}

QString Page_Hand::Period() const
{
    return QLatin1String(Periods[std::max(0, m_ui->Comb_Update->currentIndex())]);
}

bool Page_Hand::Is_Changed() const
{
    const bool otherKeys = std::any_of(std::begin(All_Keys), std::end(All_Keys),
                                       [this](Hand_Keys::Key key) { return Typed(key) != Hand_Keys::Chosen(key); });
    const QString folder = m_ui->Cob_K9->Chosen();
    return otherKeys || (!folder.isEmpty() && folder != Config().Cob_K9) ||
           Config().COB_UPDATE.trimmed() != Period().trimmed() ||
           m_ui->Txt_Address->text().trimmed() != Version_Check::Address();
}

void Page_Hand::Save()
{
    Save_Keys();
    if (!m_ui->Cob_K9->Chosen().isEmpty())
        Write_Changed(Config().Cob_K9, "Col", "Cob_K9", m_ui->Cob_K9->Chosen());
    if (Config().COB_UPDATE.trimmed() != Period().trimmed())
        Write_Changed(Config().COB_UPDATE, "Page", "COB_UPDATE", Period());
    if (m_ui->Txt_Address->text().trimmed() != Version_Check::Address())
        Version_Check::Set_Address(m_ui->Txt_Address->text());
}

/// A key without any of the four would be taken from all programs; function keys and the like may stand alone.
void Page_Hand::Save_Keys()
{
    bool changed = false;
    for (const Hand_Keys::Key key : All_Keys) {
        Hot_Keys::Combination typed = Typed(key);
        const bool writes =
            (typed.key >= 'A' && typed.key <= 'Z') || (typed.key >= '0' && typed.key <= '9') || typed.key == ' ';
        if (writes && (typed.modifiers & ~Hot_Keys::Shift) == 0) {
            typed.modifiers |= Hot_Keys::Alt;
            Of<QCheckBox>("Chk_Alt_", key).setChecked(true);
        }
        if (typed == Hand_Keys::Chosen(key))
            continue;
        Hand_Keys::Choose(key, typed);
        changed = true;
    }
    if (Hand_Keys *running = Hand_Keys::Present(); changed && running != nullptr)
        running->Bind();
}
