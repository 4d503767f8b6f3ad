// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/frm_list_view_color.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_list_view_color.h"
#include "views/line_colors.h"

#include <QColorDialog>
#include <QPainter>
#include <QToolButton>

namespace
{
constexpr int Swatch = 14;

/// The colours of Txt_Color 0 to 9, from what presses most to what is known best.
constexpr QRgb Presets[] = {0xffc62828, 0xffe65100, 0xffb8860b, 0xff2e7d32, 0xff607d8b,
                            0xff1565c0, 0xff6a1b9a, 0xff00838f, 0xff4e7d2e, 0xff8d6e63};

QIcon Swatch_Of(const QColor &color)
{
    QPixmap pixmap(Swatch, Swatch);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(pixmap.rect(), 3, 3);
    return pixmap;
}
} // namespace

Frm_ListView_Color::Frm_ListView_Color(QWidget *parent, QStringList codeIds)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_ListView_Color>()), m_codeIds(std::move(codeIds))
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    Show_Presets();
    if (!m_codeIds.isEmpty())
        m_style = Trap(QStringLiteral("Frm_ListView_Color\\Form_Load"),
                       [&] { return Style_From_Text(Line_Color_Of(m_codeIds.first())); });
    m_ui->Chk_Bold->setChecked(m_style && m_style->bold);
    m_ui->Chk_Italic->setChecked(m_style && m_style->italic);
    Show_Preview();
    const auto follow = [this](QCheckBox *box, bool Line_Style::*part) {
        connect(box, &QCheckBox::toggled, this, [this, part](bool on) {
            if (on && !m_style)
                m_style.emplace();
            if (m_style)
                (*m_style).*part = on;
            Show_Preview();
        });
    };
    follow(m_ui->Chk_Bold, &Line_Style::bold);
    follow(m_ui->Chk_Italic, &Line_Style::italic);
    const auto choose = [this](QColor Line_Style::*color, const QPushButton *button) {
        if (!m_style)
            m_style.emplace();
        Choose_Color((*m_style).*color, button->text().remove(QLatin1Char('&')));
    };
    connect(m_ui->Cmd_FontColor, &QPushButton::clicked, this,
            [this, choose] { choose(&Line_Style::item_color, m_ui->Cmd_FontColor); });
    connect(m_ui->Cmd_BackColor, &QPushButton::clicked, this,
            [this, choose] { choose(&Line_Style::sub_color, m_ui->Cmd_BackColor); });
    connect(m_ui->Cmd_DefaultColor, &QPushButton::clicked, this, [this] {
        m_ui->Chk_Bold->setChecked(false);
        m_ui->Chk_Italic->setChecked(false);
        m_style.reset();
        Show_Preview();
    });
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_ListView_Color::Cmd_Apply);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &QDialog::reject);
}

Frm_ListView_Color::~Frm_ListView_Color() = default;

void Frm_ListView_Color::Show_Presets()
{
    for (int i = 0; i < static_cast<int>(std::size(Presets)); ++i) {
        auto *button = findChild<QToolButton *>(QStringLiteral("Txt_Color_%1").arg(i));
        button->setIcon(Swatch_Of(QColor(Presets[i])));
        connect(button, &QToolButton::clicked, this, [this, i] { Choose_Preset(i); });
        m_presets.push_back(button);
    }
}

void Frm_ListView_Color::Choose_Preset(int number)
{
    const QColor color(Presets[number]);
    m_style = Line_Style{color, color, m_ui->Chk_Bold->isChecked(), m_ui->Chk_Italic->isChecked()};
    Show_Preview();
}

void Frm_ListView_Color::Choose_Color(QColor &color, const QString &title)
{
    const QColor chosen =
        QColorDialog::getColor(color.isValid() ? color : palette().color(QPalette::Text), this, title);
    if (chosen.isValid())
        color = chosen;
    Show_Preview();
}

void Frm_ListView_Color::Show_Preview()
{
    for (size_t i = 0; i < m_presets.size(); ++i)
        m_presets[i]->setChecked(m_style && m_style->sub_color == QColor(Presets[i]) &&
                                 m_style->item_color == m_style->sub_color);
    const QColor plain = palette().color(QPalette::Text);
    const auto name = [&](const QColor &color) {
        return (color.isValid() ? color : plain).name();
    };
    const Line_Style style = m_style.value_or(Line_Style());
    QFont font = m_ui->Lab_Preview->font();
    font.setBold(style.bold);
    font.setItalic(style.italic);
    m_ui->Lab_Preview->setFont(font);
    m_ui->Lab_Preview->setText(
        QStringLiteral("<span style='color:%1'>1</span>&nbsp;&nbsp;&nbsp;&nbsp;"
                       "<span style='color:%2'>★★★☆☆&nbsp;&nbsp;&nbsp;&nbsp;%3</span>")
            .arg(name(style.item_color), name(style.sub_color), m_lang.GetString("_Sample").toHtmlEscaped()));
}

void Frm_ListView_Color::Cmd_Apply()
{
    const bool stored = Trap(
        QStringLiteral("Frm_ListView_Color\\Cmd_Apply_Click"),
        [&] {
            const QColor plain = palette().color(QPalette::Text);
            QString text;
            if (m_style) {
                for (QColor *color : {&m_style->sub_color, &m_style->item_color})
                    *color = color->isValid() ? *color : plain;
                text = Style_To_Text(*m_style);
            }
            Store_Line_Color(m_codeIds, text);
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
    if (stored)
        emit Colors_Changed();
}
