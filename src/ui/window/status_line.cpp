// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/status_line.h"

#include "core/language_pack.h"
#include "ui/kit/icons.h"

#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace
{
constexpr auto Message_Stays = 10s;
constexpr auto Undo_Stays = 20s;
} // namespace

Status_Line::Status_Line(QStatusBar &bar) : QObject(&bar), m_bar(bar), m_undoButton(new QPushButton(&bar))
{
    m_undoButton->setObjectName(QStringLiteral("Cmd_Undo_Last"));
    m_undoButton->setText(Pack_Text("Frm_Main", "_Undo"));
    m_undoButton->setIcon(Line_Icon(QStringLiteral("undo")));
    m_bar.addPermanentWidget(m_undoButton);
    m_undoButton->hide();
    m_offer.setSingleShot(true);
    m_offer.setInterval(Undo_Stays);
    connect(&m_offer, &QTimer::timeout, m_undoButton, &QWidget::hide);
    connect(m_undoButton, &QPushButton::clicked, this, &Status_Line::Take_Back);
}

void Status_Line::Say(const QString &text)
{
    m_undoButton->hide();
    m_undo = nullptr;
    m_bar.showMessage(text, static_cast<int>(std::chrono::milliseconds(Message_Stays).count()));
}

void Status_Line::Offer_Undo(const QString &done, std::function<void()> undo)
{
    m_bar.showMessage(done, static_cast<int>(std::chrono::milliseconds(Undo_Stays).count()));
    m_undo = std::move(undo);
    m_undoButton->show();
    m_offer.start();
}

void Status_Line::Take_Back()
{
    const std::function<void()> undo = std::exchange(m_undo, nullptr);
    Say(Pack_Text("Frm_Main", "_Undone"));
    if (undo)
        undo();
}

void Status_Line::Show_Facts(const QStringList &facts)
{
    while (m_facts.size() < facts.size()) {
        auto *label = new QLabel(&m_bar);
        label->setObjectName(QStringLiteral("Lab_Fact_%1").arg(m_facts.size()));
        m_bar.addPermanentWidget(label);
        m_facts << label;
    }
    for (qsizetype i = 0; i < m_facts.size(); ++i) {
        m_facts[i]->setText(facts.value(i));
        m_facts[i]->setVisible(!facts.value(i).isEmpty());
    }
}
