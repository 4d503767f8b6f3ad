// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/machine/machine.h"

#include <QLocale>
#include <QNetworkInterface>
#include <QRandomGenerator>
#include <QSysInfo>

namespace Machine
{
namespace
{
QDateTime fixedMoment;
QChar dateSeparator = QLatin1Char('-');
} // namespace

QDateTime Now()
{
    if (fixedMoment.isValid())
        return fixedMoment;
    return QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch());
}

void Fix_Clock(const QDateTime &moment)
{
    fixedMoment = moment;
}

QChar Date_Separator()
{
    return dateSeparator;
}

void Set_Date_Separator(QChar separator)
{
    dateSeparator = separator;
}

int Default_Locale_Id()
{
    const QLocale locale = QLocale::system();
    if (locale.language() != QLocale::Chinese)
        return 0x409;
    return locale.script() == QLocale::TraditionalHanScript ? 0x404 : 0x804;
}

QString Computer_Name()
{
    return QSysInfo::machineHostName();
}

QString Network_Address()
{
    for (const QNetworkInterface &interface : QNetworkInterface::allInterfaces()) {
        const bool loopback = interface.flags().testFlag(QNetworkInterface::IsLoopBack);
        if (!loopback && !interface.hardwareAddress().isEmpty())
            return interface.hardwareAddress();
    }
    return {};
}

int Random_Below(int limit)
{
    return QRandomGenerator::global()->bounded(limit);
}
} // namespace Machine
