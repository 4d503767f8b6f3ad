// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>

#include <array>
#include <map>
#include <memory>

namespace Rtf
{
/// Numbers below are Windows code page identifiers. Two have a meaning of their own here.
inline constexpr int Document_Code_Page = 0; ///< whatever \ansicpg, \mac, \pc or \pca said
inline constexpr int Symbol_Code_Page = 42;  ///< bytes are glyph numbers of a symbol font

/// The code page that a font's \fcharset asks for (RTF 1.9.1, "Font Table").
int Code_Page_Of_Charset(int charset);
bool Is_Double_Byte(int codePage);

/// Turns bytes of any supported code page into text. Decoders are made once and kept.
class Code_Pages
{
public:
    Code_Pages();
    ~Code_Pages();
    Code_Pages(const Code_Pages &) = delete;
    Code_Pages &operator=(const Code_Pages &) = delete;

    /// Appends the text that `bytes` have in `codePage`; an unknown code page reads as 1252.
    void Append(QString &text, QByteArrayView bytes, int codePage);
    /// Appends text of a font that was declared Western in a document of a double-byte code page: some writers do
    /// so for every font. High bytes that follow each other in pairs are the document's, single ones are 1252.
    void Append_Mixed(QString &text, QByteArrayView bytes, int documentCodePage);

private:
    struct Decoder;
    Decoder &Decoder_For(int codePage);

    std::map<int, std::unique_ptr<Decoder>> m_decoders;
};

/// What a symbol font's glyph shows, as Unicode; U+F000 + glyph where Unicode has no such sign or the font is unknown.
char16_t Symbol_Glyph(unsigned char glyph, const QString &font);
} // namespace Rtf
