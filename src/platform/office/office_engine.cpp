// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/office/office_engine.h"

#include "platform/files/door.h"
#include "platform/files/paths.h"

#include <QFileInfo>
#include <QUrl>

namespace
{
int Time = 300'000;

/// What this engine calls the formats, where a suffix alone would leave it a choice.
struct Filter {
    const char *suffix;
    const char *name;
};
constexpr Filter Filters[] = {
    {"doc", "doc:MS Word 97"},
    {"docx", "docx:Office Open XML Text"},
    {"odt", "odt:writer8"},
    {"rtf", "rtf:Rich Text Format"},
};

QString Filter_For(const QString &suffix)
{
    for (const Filter &row : Filters) {
        if (suffix == QLatin1String(row.suffix))
            return QLatin1String(row.name);
    }
    return suffix;
}

/// Settings of the engine's own format: no macro runs, and nothing that a file links to is fetched.
constexpr const char *Settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="MacroSecurityLevel" oor:op="fuse"><value>3</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="DisableMacrosExecution" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="BlockUntrustedRefererLinks" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Writer/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>0</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>1</value></prop></item>
</oor:items>
)";

/// The engine keeps its settings, caches and scratch files below `home`, and has no display to open a window on.
Programs::Call Call_For(const QString &home, const QStringList &arguments)
{
    Programs::Call call;
    call.program = Office::Engine();
    call.arguments = QStringList{QStringLiteral("-env:UserInstallation=") +
                                     QString::fromLatin1(QUrl::fromLocalFile(home).toEncoded()),
                                 QStringLiteral("--headless"),
                                 QStringLiteral("--invisible"),
                                 QStringLiteral("--norestore"),
                                 QStringLiteral("--nologo"),
                                 QStringLiteral("--nodefault"),
                                 QStringLiteral("--nofirststartwizard"),
                                 QStringLiteral("--nolockcheck")} +
                     arguments;
    call.folder = home;
    for (const char *name : {"HOME", "TMPDIR", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        call.environment << QLatin1String(name) + QLatin1Char('=') + home;
    call.environment << QStringLiteral("SAL_USE_VCLPLUGIN=svp");
    for (const char *name :
         {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "SESSION_MANAGER", "http_proxy", "https_proxy"})
        call.not_environment << QLatin1String(name);
    return call;
}
} // namespace

QString Office::Engine()
{
    return Programs::Find({QStringLiteral("soffice"), QStringLiteral("libreoffice")});
}

Office::Converted Office::Convert(const QString &source, const QString &suffix, const QString &room,
                                  const std::function<bool()> &goOn)
{
    const QString home = room + QStringLiteral("/engine");
    const QString written = room + QStringLiteral("/written");
    Files::Make_Directory(home + QStringLiteral("/user"));
    Files::Make_Directory(written);
    Files::Write_Bytes(home + QStringLiteral("/user/registrymodifications.xcu"), Settings, Files::Durability::Staging);
    const Programs::Call call = Call_For(
        home, {QStringLiteral("--convert-to"), Filter_For(suffix), QStringLiteral("--outdir"), written, source});
    const Programs::Bounds bounds{.time = Time, .processor_seconds = 600, .file_size = Q_INT64_C(2) << 30};
    Converted converted{Programs::Run(call, bounds, goOn).end, {}};
    if (converted.end != Programs::End::Well)
        return converted;
    const QString path = written + QLatin1Char('/') + QFileInfo(source).completeBaseName() + QLatin1Char('.') + suffix;
    const std::optional<Files::Entry> file = Files::Look(path); // it says that all is well after a failure too
    if (file && !file->is_folder && file->size > 0)
        converted.path = path;
    else
        converted.end = Programs::End::Badly;
    return converted;
}

void Office::Set_Time(int milliseconds)
{
    Time = milliseconds;
}
