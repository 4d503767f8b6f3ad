// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/forms.h"

#include "platform/errors/run_time_error.h"

#include <QHash>

namespace Forms
{
namespace
{
QHash<QString, Row> &Table()
{
    static QHash<QString, Row> table;
    return table;
}
} // namespace

void Add(std::span<const Row> rows)
{
    for (const Row &row : rows)
        Table().insert(QLatin1String(row.name), row);
}

Outcome Show_Modal(const QString &name, const Opening &opening)
{
    const auto row = Table().constFind(name);
    if (row == Table().constEnd())
        throw Run_Time_Error(Error_Number::Missing_Component, QStringLiteral("No form ") + name,
                             Failure::Missing_Component);
    const std::unique_ptr<QDialog> form = row->make(opening);
    return form->exec() == QDialog::Accepted ? Outcome::Accepted : Outcome::Rejected;
}
} // namespace Forms
