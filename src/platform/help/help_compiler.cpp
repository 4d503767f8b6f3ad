// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/help/help_compiler.h"

#include "platform/files/paths.h"

#include <QFileInfo>

QString Help::Compiler()
{
    return Programs::Find({QStringLiteral("chmcmd")});
}

Programs::End Help::Compile(const QString &project, const std::function<bool()> &goOn)
{
    Programs::Call call;
    call.program = Compiler();
    call.arguments = {Files::Short_Path(project)};
    call.folder = QFileInfo(project).path();
    const Programs::Bounds bounds{.time = 300'000, .processor_seconds = 600, .file_size = Q_INT64_C(1) << 30};
    return Programs::Run(call, bounds, goOn).end;
}
