// SPDX-License-Identifier: GPL-3.0-or-later
// room: richtext
//
// Reading any bytes as RTF, saving what came of it and reading that again: no crash, and the saved text is stable.
// Plain bytes are written back as they were.
#include "platform/richtext/decorations.h"
#include "platform/richtext/rich_text.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTextDocument>

#include <cstdlib>

/// The font library's caches live as long as the program.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig";
}

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
    QTextDocument document, again, third;
    if (!Rich_Text::Read_Rtf(bytes, document) && !Rich_Text::Read_Rtf("{\\rtf1" + bytes, document))
        std::abort();
    if (!Rich_Text::Read_Rtf(Rich_Text::Write_Rtf(document), again))
        std::abort();
    const QByteArray saved = Rich_Text::Write_Rtf(again);
    if (!Rich_Text::Read_Rtf(saved, third) || Rich_Text::Write_Rtf(third) != saved)
        std::abort();
    if (Rich_Text::Shown_Text(again) != Rich_Text::Shown_Text(document))
        std::abort();
    QImage canvas(64, 64, QImage::Format_RGB32);
    QPainter painter(&canvas);
    Rich_Text::Paint_Decorations(painter, document, canvas.rect(), Qt::black);
    Rich_Text::Plain_Form form;
    const QString text = Rich_Text::Decode_Plain(bytes, &form);
    if (!text.isValidUtf16()) // half a character is not text
        return 0;
    const QByteArray encoded = Rich_Text::Encode_Plain(text, form);
    if (Rich_Text::Decode_Plain(encoded) != text)
        std::abort();
    if (encoded != bytes && !bytes.contains('\r')) // of several kinds of line ends one is kept
        std::abort();
    return 0;
}
