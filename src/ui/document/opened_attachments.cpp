// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/opened_attachments.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "documents/attachment_place.h"
#include "documents/file_content.h"
#include "editor/links.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/work_window.h"

#include <QApplication>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <QUrl>
#include <algorithm>

namespace
{
QString Text(const char *key)
{
    return Pack_Text("Page_Attachments", key);
}

void Report(const QString &text)
{
    Prompts::Message(text, App().App_Title, Prompts::Icon::Exclamation);
}

bool Agrees(const QString &question, Prompts::Answer preset = Prompts::Answer::Yes)
{
    return Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No, preset) == Prompts::Answer::Yes;
}

bool May_Be_Shown(const QString &name)
{
    const QString type = QFileInfo(name).suffix().toUpper();
    return Is_Shown_Outside(type) ||
           Agrees(Pack_Text("Frm_Doc_Standard", "_Outside_Run").arg(name, type), Prompts::Answer::No);
}

void Start(const QUrl &address, const QString &shown)
{
    if (!Links::Start(address))
        Report(Pack_Text("Frm_Doc_Standard", "_OpenError") + QLatin1Char('\n') + shown);
}

/// @returns whether the copy is in its attachment's place now
bool Store_After_Question(Attachment_Copy &copy, QWidget *window)
{
    if (!Agrees(copy.Of().name + QLatin1Char('\n') + Text("_Changed"))) {
        copy.Give_Up();
        return false;
    }
    Saved_Attachment saved;
    Long_Work::Run(window, copy.Of().name, [&](Work &work) { saved = copy.Take_Back(work); });
    if (saved.id != 0)
        Prompts::Message(Text("_Replaced"), App().App_Title);
    else if (!saved.stopped)
        Report(copy.Of().name + QLatin1Char('\n') + Error_Text(saved.trouble));
    return saved.id != 0;
}
} // namespace

Opened_Attachments::Opened_Attachments(QWidget &window) : QObject(&window), m_window(window)
{
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive && QApplication::activeModalWidget() == nullptr)
            Look_After();
    });
}

void Opened_Attachments::Open(const Attachment &attachment)
{
    Trap(
        QStringLiteral("Frm_Doc_Standard\\Open_Attachment"),
        [&] { attachment.type == Attachment_Type::Internal ? Open_Internal(attachment) : Open_Link(attachment); },
        [&] { Report(attachment.name + QLatin1Char('\n') + Error_Text(Err())); });
}

void Opened_Attachments::Open_Internal(const Attachment &attachment)
{
    if (!May_Be_Shown(attachment.name))
        return;
    auto open = std::find_if(m_copies.begin(), m_copies.end(),
                             [&](const auto &copy) { return copy->Of().id == attachment.id; });
    if (open == m_copies.end()) {
        auto copy = std::make_unique<Attachment_Copy>(attachment);
        bool whole = false;
        Long_Work::Run(&m_window, attachment.name, [&](Work &work) { whole = copy->Write(work); });
        if (!whole)
            return;
        open = m_copies.insert(m_copies.end(), std::move(copy));
    }
    Start(QUrl::fromLocalFile((*open)->Path()), attachment.name);
}

void Opened_Attachments::Open_Link(const Attachment &attachment)
{
    const Attachment_Place::Place place = Attachment_Place::Expanded(attachment.path);
    if (place.kind == Attachment_Place::Kind::Page)
        return Attachment_Place::Is_Safe_Address(place.target)
                   ? Start(QUrl(place.target.trimmed()), place.target)
                   : Report(Pack_Text("Editor_Bar", "_Link_Refused").arg(place.target));
    const QFileInfo target(place.target);
    const bool folder = place.kind == Attachment_Place::Kind::Folder;
    if (folder ? !target.isDir() : !target.exists())
        return Report(place.target + Pack_Text("Frm_Doc_Standard", "_NoExist"));
    if (folder || May_Be_Shown(target.fileName()))
        Start(QUrl::fromLocalFile(place.target), place.target);
}

void Opened_Attachments::Look_After()
{
    if (m_asking)
        return;
    const QScopedValueRollback asking(m_asking, true);
    for (const auto &copy : m_copies) {
        Trap(
            QStringLiteral("Frm_Doc_Standard\\Look_After"),
            [&] {
                if (copy->Is_Changed() && Store_After_Question(*copy, &m_window))
                    emit Replaced(copy->Of().document);
            },
            [&] { Report(copy->Of().name + QLatin1Char('\n') + Error_Text(Err())); });
    }
}

QStringList Opened_Attachments::Names() const
{
    QStringList names;
    for (const auto &copy : m_copies)
        names << copy->Of().name;
    return names;
}

void Opened_Attachments::Adopt(const QString &code_id)
{
    for (const auto &copy : m_copies)
        Trap(QStringLiteral("Frm_Doc_Standard\\Adopt"), [&] { copy->Adopt(code_id); });
}

QStringList Opened_Attachments::Offer_Left(QWidget *window)
{
    QStringList documents;
    for (const auto &copy : Attachment_Copy::Left()) {
        Trap(QStringLiteral("Frm_Doc_Standard\\Offer_Left"), [&] {
            if (Store_After_Question(*copy, window))
                documents << copy->Of().document;
        });
    }
    return documents;
}
