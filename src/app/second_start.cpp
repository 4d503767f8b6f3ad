// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/second_start.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/process_state.h"
#include "platform/files/paths.h"

namespace
{
/// Among the temporary files, which go when the program ends.
QString Told_File()
{
    return App().App_Path + QStringLiteral("data/temp/second.start");
}

void Write_File(const QByteArray &bytes)
{
    if (!Resume_Next([&] { Files::Write_Bytes(Told_File(), bytes, Files::Durability::Scratch); }))
        Clear_Pending();
}
} // namespace

Second_Start::Second_Start(const std::function<void()> &told)
{
    if (!Resume_Next([] { Files::Make_Directory(App().App_Path + QStringLiteral("data/temp")); }))
        Clear_Pending();
    Write_File("0");
    if (!Exists(Told_File()))
        return;
    m_watcher.addPath(Told_File());
    QObject::connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_watcher, [told] {
        if (Exists(Told_File()))
            told();
    });
}

void Second_Start::Tell()
{
    if (Exists(Told_File()))
        Write_File("1");
}
