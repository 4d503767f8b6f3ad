// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/yield.h"

#include <QCoreApplication>

void Yield()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
