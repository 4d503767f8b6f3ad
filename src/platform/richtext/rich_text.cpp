// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rich_text.h"

#include "platform/files/paths.h"
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/rtf_builder.h"
#include "platform/richtext/rtf_reader.h"

#include <QTextDocument>
#include <QTextFrame>
#include <QTextOption>

namespace
{
void Set_Plain(const QByteArray &bytes, QTextDocument &document)
{
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    Rich_Text::Plain_Form form;
    document.setPlainText(Rich_Text::Decode_Plain(bytes, &form));
    QTextFrameFormat root = document.rootFrame()->frameFormat();
    root.setProperty(Rich_Text::Plain_Form_Property, QVariant::fromValue(form));
    document.rootFrame()->setFrameFormat(root);
    document.setUndoRedoEnabled(undo);
    document.setModified(false);
}

/// The text as it was typed: QTextDocument::toPlainText takes no-break blanks for usual ones. Pictures leave nothing.
QString Plain_Text(const QTextDocument &document)
{
    QString text = document.toRawText();
    text.remove(QChar::ObjectReplacementCharacter);
    for (QChar &c : text) {
        const char16_t unit = c.unicode(); // U+FDD0 and U+FDD1 stand where a table or its cell begins and ends
        if (unit == QChar::ParagraphSeparator || unit == QChar::LineSeparator || unit == 0xFDD0 || unit == 0xFDD1)
            c = QLatin1Char('\n');
    }
    return text;
}
} // namespace

bool Rich_Text::Read_Rtf(const QByteArray &bytes, QTextDocument &document)
{
    std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    if (rest.starts_with("\xEF\xBB\xBF"))
        rest.remove_prefix(3);
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    if (!rest.starts_with("{\\rtf"))
        return false;
    Rtf::Model model;
    Rtf::Reader(rest, model).Read();
    Rtf::Build_Document(model, document);
    return true;
}

QString Rich_Text::Shown_Text(const QTextDocument &document)
{
    return document.toPlainText().remove(QChar::ObjectReplacementCharacter);
}

void Rich_Text::Set_Measures(QTextDocument &document, double tab)
{
    document.setIndentWidth(Indent_Width);
    QTextOption option = document.defaultTextOption();
    option.setTabStopDistance(tab);
    document.setDefaultTextOption(option);
}

void Rich_Text::Load_File(const QString &path, Format format, QTextDocument &document)
{
    const QByteArray bytes = Files::Read_Bytes(path);
    if (format == Format::Plain || !Read_Rtf(bytes, document))
        Set_Plain(bytes, document);
}

void Rich_Text::Save_File(const QString &path, Format format, const QTextDocument &document)
{
    const QVariant form = document.rootFrame()->frameFormat().property(Plain_Form_Property);
    Files::Write_Bytes(path, format == Format::Rtf ? Write_Rtf(document)
                                                   : Encode_Plain(Plain_Text(document), form.value<Plain_Form>()));
}
