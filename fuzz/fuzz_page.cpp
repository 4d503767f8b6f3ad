// SPDX-License-Identifier: GPL-3.0-or-later
// room: html
#include "platform/html/bounded_page.h"

#include <QString>

/// A page keeps no tag that loads or runs, however it is spelled.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString page = Html::Bounded(QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)));
    for (const char *tag : {"<link", "<script", "<base", "<iframe", "<object", "<!", "<?"}) {
        if (page.contains(QLatin1String(tag), Qt::CaseInsensitive))
            qFatal("%s stays", tag);
    }
    return 0;
}
