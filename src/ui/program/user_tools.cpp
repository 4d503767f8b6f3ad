// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/user_tools.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QMenu>
#include <QProcess>
#include <QUrl>

namespace
{
constexpr const char *Own_Entry = "User_Tool";
constexpr qsizetype Most_Tools = 30;
} // namespace

QList<User_Tool> Tools_Of_Text(const QString &text)
{
    const QStringList parts = text.split(u'|');
    QList<User_Tool> tools;
    for (qsizetype i = 0; i + 1 < parts.size() && tools.size() < Most_Tools; i += 2) {
        const User_Tool tool{parts[i].trimmed(), parts[i + 1].trimmed()};
        if (!tool.name.isEmpty() && !tool.path.isEmpty())
            tools << tool;
    }
    return tools;
}

QString Text_Of_Tools(const QList<User_Tool> &tools)
{
    QStringList parts;
    for (const User_Tool &tool : tools)
        parts << tool.name << tool.path;
    return parts.join(u'|');
}

void Fill_User_Tools(QMenu &menu)
{
    for (QAction *action : menu.actions()) {
        if (action->property(Own_Entry).isValid())
            delete action;
    }
    const QList<User_Tool> tools = Tools_Of_Text(Config().User_Tools);
    if (tools.isEmpty())
        return;
    menu.addSeparator()->setProperty(Own_Entry, true);
    for (const User_Tool &tool : tools) {
        QAction *action = menu.addAction(QString(tool.name).replace(u'&', QStringLiteral("&&")));
        action->setProperty(Own_Entry, true);
        QObject::connect(action, &QAction::triggered, &menu, [tool] { Start_Tool(tool); });
    }
}

void Start_Tool(const User_Tool &tool)
{
    const QFileInfo file(Files::Native_Path(tool.path));
    const bool isProgram = file.isFile() && file.isExecutable();
    const bool started = isProgram
                             ? QProcess::startDetached(file.absoluteFilePath(), {}, file.absolutePath())
                             : file.exists() && QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
    if (!started)
        Prompts::Message(Filled(Pack_Text("Frm_Config", "_No_Tool"), {tool.path}), App().App_Title,
                         Prompts::Icon::Exclamation);
}
