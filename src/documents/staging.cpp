// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/staging.h"

#include "core/process_state.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"

#include <QFileInfo>
#include <algorithm>

Staging::Staging(int numbersBelow, const QStringList &suffixes)
    : m_folder(App().App_Path + QStringLiteral("data/temp/"))
{
    Files::Make_Directory(m_folder);
    Draw(numbersBelow);
    if (Clashes(suffixes)) {
        m_redrawn = true;
        Draw(numbersBelow);
    }
}

QString Staging::Path(const QString &suffix) const
{
    return m_folder + m_number + suffix;
}

void Staging::Drop(const QString &suffix) const
{
    if (QFileInfo::exists(Path(suffix)))
        Files::Delete_If_Present(Path(suffix));
}

void Staging::Draw(int numbersBelow)
{
    m_number = QString::number(Machine::Random_Below(numbersBelow));
}

bool Staging::Clashes(const QStringList &suffixes) const
{
    return std::any_of(suffixes.begin(), suffixes.end(),
                       [this](const QString &suffix) { return QFileInfo::exists(Path(suffix)); });
}
