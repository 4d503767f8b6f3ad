// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/coder.h"

#include "core/yield.h"
#include "platform/lzma/zelqorfun.h"

#include <QFileInfo>
#include <chrono>
#include <future>

bool Run_Coder(const char *command, const QString &input, const QString &output)
{
    const QByteArray from = input.toUtf8();
    const QByteArray to = output.toUtf8();
    constexpr qint64 Quickly_Coded = 1 << 20;
    if (QFileInfo(input).size() <= Quickly_Coded) {
        const bool written = zelqorfun(command, from.constData(), to.constData()) == 0;
        Yield();
        return written;
    }
    auto coding = std::async(std::launch::async, zelqorfun, command, from.constData(), to.constData());
    while (coding.wait_for(std::chrono::milliseconds(20)) != std::future_status::ready)
        Yield();
    return coding.get() == 0;
}
