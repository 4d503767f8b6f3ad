// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/opened_attachments.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "documents/attachment_place.h"
#include "documents/file_content.h"
#include "editor/links.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "ui/document/attachment_news.h"
#include "ui/kit/work_window.h"

#include <QApplication>
#include <QFileInfo>
#include <QProcess>
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

/// A file that the desktop has no program for goes to one that the user chooses.
/// @returns whether something has it now
bool Start(const QUrl &address, const QString &shown)
{
    if (Links::Start(address))
        return true;
    const QString failed = Pack_Text("Frm_Doc_Standard", "_OpenError") + QLatin1Char('\n') + shown;
    if (!address.isLocalFile() || !Agrees(failed + QLatin1Char('\n') + Text("_Choose_Program"), Prompts::Answer::No)) {
        if (!address.isLocalFile())
            Report(failed);
        return false;
    }
    const QString program = Prompts::Open_File(Text("_Program"), QStringLiteral("/usr/bin"));
    return !program.isEmpty() && QProcess::startDetached(program, {address.toLocalFile()});
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
        Report(copy.Of().name + QLatin1Char('\n') + Attachment_Trouble(saved.trouble));
    return saved.id != 0;
}

/// Looking at a long file takes a while.
bool Is_Changed(Attachment_Copy &copy, QWidget *window)
{
    constexpr qint64 Long_File = 32 << 20;
    if (copy.Bytes_To_Look_At() < Long_File)
        return copy.Is_Changed();
    bool changed = false;
    Long_Work::Run_To_End(window, copy.Of().name, [&] { changed = copy.Is_Changed(); });
    return changed;
}
} // namespace

Opened_Attachments &Opened_Attachments::Of(QWidget &widget)
{
    QWidget &window = *widget.window();
    auto *opened = window.findChild<Opened_Attachments *>({}, Qt::FindDirectChildrenOnly);
    return opened != nullptr ? *opened : *new Opened_Attachments(window);
}

Opened_Attachments::Opened_Attachments(QWidget &window) : QObject(&window), m_window(window)
{
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive && May_Ask())
            Look_After();
    });
    constexpr int Left_Alone = 1500; // a program writes a file in several steps
    m_settle.setSingleShot(true);
    m_settle.setInterval(Left_Alone);
    connect(&m_settle, &QTimer::timeout, this, &Opened_Attachments::Settle);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_settle, qOverload<>(&QTimer::start));
}

/// No other box is on screen.
bool Opened_Attachments::May_Ask() const
{
    const QWidget *modal = QApplication::activeModalWidget();
    return modal == nullptr || modal == m_form;
}

/// A folder of a copy was written: asks at once where the window is in front.
void Opened_Attachments::Settle()
{
    if (QGuiApplication::applicationState() == Qt::ApplicationActive && May_Ask())
        Look_After();
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
    const bool isNew = open == m_copies.end();
    auto made = isNew ? std::make_unique<Attachment_Copy>(attachment) : nullptr;
    Attachment_Copy &copy = isNew ? *made : **open;
    if (isNew || (copy.Is_Given_Up() && !copy.Is_In_Use())) {
        bool whole = false;
        Long_Work::Run(&m_window, attachment.name, [&](Work &work) { whole = copy.Write(work); });
        if (!whole)
            return;
    }
    if (isNew) {
        m_copies.push_back(std::move(made));
        m_watcher.addPath(copy.Directory());
    }
    if (Start(QUrl::fromLocalFile(copy.Path()), attachment.name))
        emit Told(Text("_Waiting").arg(attachment.name));
}

void Opened_Attachments::Open_Link(const Attachment &attachment)
{
    const Attachment_Place::Place place = Attachment_Place::Expanded(attachment.path);
    if (place.kind == Attachment_Place::Kind::Page)
        return Attachment_Place::Is_Safe_Address(place.target)
                   ? static_cast<void>(Start(QUrl(place.target.trimmed()), place.target))
                   : Report(Pack_Text("Editor_Bar", "_Link_Refused").arg(place.target));
    const QFileInfo target(place.target);
    const bool folder = place.kind == Attachment_Place::Kind::Folder;
    if (!Files::Is_Absolute(place.target) || (folder ? !target.isDir() : !target.exists()))
        return Report(place.target + Pack_Text("Frm_Doc_Standard", "_NoExist"));
    if (folder || May_Be_Shown(target.fileName()))
        Start(QUrl::fromLocalFile(place.target), place.target);
}

void Opened_Attachments::Look_After()
{
    if (m_asking)
        return;
    const QScopedValueRollback asking(m_asking, true);
    // Those of another database are found when it is opened by another start.
    std::erase_if(m_copies, [](const auto &copy) { return !copy->Is_Of_This_Database(); });
    for (const auto &copy : m_copies)
        Trap(
            QStringLiteral("Frm_Doc_Standard\\Look_After"), [&] { Look_At(*copy); },
            [&] { Report(copy->Of().name + QLatin1Char('\n') + Error_Text(Err())); });
}

void Opened_Attachments::Look_At(Attachment_Copy &copy)
{
    if (copy.Bytes_To_Look_At() == 0 && !copy.Is_Changed())
        return;
    if (copy.Is_In_Use()) {
        emit Told(Text("_Waiting").arg(copy.Of().name));
        return m_settle.start(); // nobody tells when a program ends
    }
    if (Is_Changed(copy, &m_window) && Store_After_Question(copy, &m_window))
        emit Attachment_News::The().Changed(copy.Of().document);
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
