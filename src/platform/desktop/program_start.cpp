// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/program_start.h"

#include <QFileInfo>
#include <QProcess>

bool Desktop::Start_Program(const QString &path)
{
    const QFileInfo program(path);
    return QProcess::startDetached(program.absoluteFilePath(), {}, program.absolutePath());
}
