// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rich_text.h"

#include "platform/files/paths.h"
#include "platform/richtext/rtf_builder.h"
#include "platform/richtext/rtf_reader.h"

#include <QTextDocument>

namespace
{
void Set_Plain(const QByteArray &bytes, QTextDocument &document)
{
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    document.setPlainText(Rich_Text::Decode_Plain(bytes));
    document.setUndoRedoEnabled(undo);
    document.setModified(false);
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
    Rtf::Reader(rest, model).Run();
    Rtf::Build_Document(model, document);
    return true;
}

void Rich_Text::Load_File(const QString &path, Format format, QTextDocument &document)
{
    const QByteArray bytes = Files::Read_Bytes(path);
    if (format == Format::Plain || !Read_Rtf(bytes, document))
        Set_Plain(bytes, document);
}

void Rich_Text::Save_File(const QString &path, Format format, const QTextDocument &document)
{
    Files::Write_Bytes(path, format == Format::Rtf ? Write_Rtf(document) : document.toPlainText().toUtf8());
}
