// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rich_text.h"

#include "platform/errors/run_time_error.h"
#include "platform/files/paths.h"
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/rtf_builder.h"
#include "platform/richtext/rtf_reader.h"
#include "platform/richtext/rtf_writer.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextOption>

#include <new>
#include <utility>

namespace
{
/// Sets the text and lets what could not be read follow its signs through editing.
void Set_Text(const QString &text, const QByteArrayList &unread, QTextDocument &document)
{
    document.clear();
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    qsizetype done = 0;
    for (const QByteArray &bytes : unread) {
        const qsizetype place = text.indexOf(QChar::ReplacementCharacter, done);
        QTextCharFormat format;
        format.setProperty(Rich_Text::Unread_Property, bytes);
        cursor.insertText(text.sliced(done, place - done), {});
        cursor.insertText(QString(QChar::ReplacementCharacter), format);
        done = place + 1;
    }
    cursor.insertText(text.sliced(done), {});
    cursor.endEditBlock();
}

QByteArrayList Unread(const QTextDocument &document)
{
    QByteArrayList unread;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QTextFragment fragment = at.fragment();
            unread.append(QByteArrayList(fragment.text().count(QChar::ReplacementCharacter),
                                         fragment.charFormat().property(Rich_Text::Unread_Property).toByteArray()));
        }
    }
    return unread;
}

/// Ends the work, not the program, where there is not enough memory for it.
template <class Body>
auto In_Memory(Body &&body)
{
    try {
        return body();
    } catch (const std::bad_alloc &) {
        throw Run_Time_Error(Error_Number::Out_Of_Memory, QStringLiteral("Out of memory"), Failure::Out_Of_Memory);
    }
}

void Set_Plain(const QByteArray &bytes, QTextDocument &document)
{
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    Rich_Text::Plain_Form form;
    const QString text = Rich_Text::Decode_Plain(bytes, &form);
    Set_Text(text, std::exchange(form.unread, {}), document);
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

void Rich_Text::Ask(const Stop &stop)
{
    if (stop && stop())
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Stopped"), Failure::Stopped);
}

bool Rich_Text::Read_Rtf(const QByteArray &bytes, QTextDocument &document, const Stop &stop)
{
    std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    if (rest.starts_with("\xEF\xBB\xBF"))
        rest.remove_prefix(3);
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    if (!rest.starts_with("{\\rtf"))
        return false;
    Rtf::Model model;
    In_Memory([&] { Rtf::Reader(rest, model).Read(stop); });
    try {
        In_Memory([&] { Rtf::Build_Document(model, document, stop); });
    } catch (const Run_Time_Error &) {
        document.clear();
        throw;
    }
    return true;
}

QString Rich_Text::Shown_Text(const QTextDocument &document)
{
    const QString plain = document.toPlainText();
    QString text;
    qsizetype done = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (!Rtf::Is_Rest(block))
            continue;
        text += QStringView(plain).sliced(done, block.position() - 1 - done);
        done = block.position();
    }
    text += QStringView(plain).sliced(done);
    return text.remove(QChar::ObjectReplacementCharacter);
}

int Rich_Text::Losses(const QTextDocument &document)
{
    return document.rootFrame()->frameFormat().intProperty(Losses_Property);
}

QByteArray Rich_Text::Write_Rtf(const QTextDocument &document)
{
    return In_Memory([&] { return Rtf::Writer(document).Write(); });
}

void Rich_Text::Set_Measures(QTextDocument &document, double tab)
{
    document.setIndentWidth(Indent_Width);
    QTextOption option = document.defaultTextOption();
    option.setTabStopDistance(tab);
    document.setDefaultTextOption(option);
}

void Rich_Text::Load_File(const QString &path, Format format, QTextDocument &document, const Stop &stop)
{
    const QByteArray bytes = Files::Read_Bytes(path);
    if (format == Format::Plain || !Read_Rtf(bytes, document, stop))
        In_Memory([&] { Set_Plain(bytes, document); });
}

void Rich_Text::Save_File(const QString &path, Format format, const QTextDocument &document)
{
    if (format == Format::Rtf) {
        Files::Write_Bytes(path, Write_Rtf(document), Files::Durability::Given);
        return;
    }
    auto form = document.rootFrame()->frameFormat().property(Plain_Form_Property).value<Plain_Form>();
    form.unread = Unread(document);
    Files::Write_Bytes(path, Encode_Plain(Plain_Text(document), form), Files::Durability::Given);
}
