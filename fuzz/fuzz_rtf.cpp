// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rich_text.h"

#include <QGuiApplication>
#include <QTextDocument>

#include <cstdlib>

/// Reading any bytes as RTF, saving what came of it and reading that again: no crash, and the saved text is stable.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv); // QTextDocument asks it for fonts
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QTextDocument document, again;
    if (!Rich_Text::Read_Rtf(bytes, document) && !Rich_Text::Read_Rtf("{\\rtf1" + bytes, document))
        std::abort();
    if (!Rich_Text::Read_Rtf(Rich_Text::Write_Rtf(document), again))
        std::abort();
    if (again.toPlainText() != document.toPlainText())
        std::abort();
    Rich_Text::Decode_Plain(bytes);
    return 0;
}
