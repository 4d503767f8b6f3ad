// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_codepages.h"

#include <algorithm>
#include <iterator>

namespace Rtf
{
namespace
{
struct Charset_Row {
    int charset;
    int codePage;
};
constexpr Charset_Row charsets[] = {
    {0, 1252},
    {1, Document_Code_Page},
    {2, Symbol_Code_Page},
    {77, 10000},
    {128, 932},
    {129, 949},
    {130, 1361},
    {134, 936},
    {136, 950},
    {161, 1253},
    {162, 1254},
    {163, 1258},
    {177, 1255},
    {178, 1256},
    {186, 1257},
    {204, 1251},
    {222, 874},
    {238, 1250},
    {254, 437},
    {255, 850},
};

struct Code_Page_Row {
    int codePage;
    const char *name; ///< the converter's name
};
constexpr Code_Page_Row converters[] = {
    {437, "IBM437"},        {850, "IBM850"},        {852, "IBM852"},        {866, "IBM866"},
    {874, "windows-874"},   {932, "windows-31j"},   {936, "GBK"},           {949, "windows-949"},
    {950, "windows-950"},   {1250, "windows-1250"}, {1251, "windows-1251"}, {1252, "windows-1252"},
    {1253, "windows-1253"}, {1254, "windows-1254"}, {1255, "windows-1255"}, {1256, "windows-1256"},
    {1257, "windows-1257"}, {1258, "windows-1258"}, {10000, "macintosh"},   {10007, "x-mac-cyrillic"},
    {54936, "gb18030"},     {65001, "UTF-8"},
};

// Adobe's Symbol encoding from 0x21 on (https://www.unicode.org/Public/MAPPINGS/VENDORS/ADOBE/symbol.txt); 0 where a
// glyph has no sign of its own in Unicode.
constexpr char16_t symbolLow[] =
    u"!∀#∃%&∋()∗+,−./0123456789:;<=>?≅ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_\0αβχδεφγηιϕκλμνοπθρστυϖωξψζ{|}∼";
constexpr char16_t symbolHigh[] = u"€ϒ′≤⁄∞ƒ♣♦♥♠↔←↑→↓°±″≥×∝∂•÷≠≡≈…\0\0↵ℵℑℜ℘⊗⊕∅∩∪⊃⊇⊄⊂⊆∈∉∠∇®©™∏√⋅¬∧∨⇔⇐⇑⇒⇓◊〈®©™∑";

struct Glyph_Row {
    unsigned char glyph;
    char16_t shown;
};
// The signs of the Wingdings font that lists and notes use.
constexpr Glyph_Row wingdings[] = {
    {0x6C, u'●'}, {0x6E, u'■'}, {0x6F, u'□'}, {0x71, u'❑'}, {0x75, u'◆'}, {0x76, u'❖'}, {0x9F, u'•'}, {0xA7, u'▪'},
    {0xA8, u'◻'}, {0xD8, u'➢'}, {0xDF, u'←'}, {0xE0, u'→'}, {0xE8, u'➔'}, {0xFB, u'✗'}, {0xFC, u'✓'}, {0xFE, u'☑'},
};

template <std::size_t Size>
char16_t Glyph_From(const char16_t (&glyphs)[Size], int index)
{
    return index >= 0 && index < static_cast<int>(Size) - 1 ? glyphs[index] : u'\0';
}
} // namespace

int Code_Page_Of_Charset(int charset)
{
    const auto *row = std::find_if(std::begin(charsets), std::end(charsets),
                                   [&](const auto &each) { return each.charset == charset; });
    return row == std::end(charsets) ? Document_Code_Page : row->codePage;
}

bool Is_Double_Byte(int codePage)
{
    return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950 || codePage == 54936;
}

struct Code_Pages::Decoder {
    explicit Decoder(const char *name) : whole(name) {}

    QStringDecoder whole;
    std::array<char16_t, 256> single{}; ///< filled for code pages of single bytes only
    bool isSingle = false;
};

Code_Pages::Code_Pages() = default;
Code_Pages::~Code_Pages() = default;

Code_Pages::Decoder &Code_Pages::Decoder_For(int codePage)
{
    std::unique_ptr<Decoder> &slot = m_decoders[codePage];
    if (slot)
        return *slot;
    const auto *row = std::find_if(std::begin(converters), std::end(converters),
                                   [&](const auto &each) { return each.codePage == codePage; });
    slot = std::make_unique<Decoder>(row == std::end(converters) ? "windows-1252" : row->name);
    if (!slot->whole.isValid())
        slot = std::make_unique<Decoder>("ISO-8859-1");
    slot->isSingle = !Is_Double_Byte(codePage) && codePage != 65001;
    for (int i = 0; slot->isSingle && i < 256; ++i) {
        const char byte = static_cast<char>(i);
        const QString shown = slot->whole.decode(QByteArrayView(&byte, 1));
        slot->single[static_cast<std::size_t>(i)] = shown.isEmpty() ? u'\uFFFD' : shown.at(0).unicode();
    }
    return *slot;
}

void Code_Pages::Append(QString &text, QByteArrayView bytes, int codePage)
{
    Decoder &decoder = Decoder_For(codePage);
    if (!decoder.isSingle) {
        decoder.whole.resetState();
        text += decoder.whole.decode(bytes);
        decoder.whole.resetState();
        return;
    }
    const qsizetype before = text.size();
    text.resize(before + bytes.size());
    std::transform(bytes.begin(), bytes.end(), text.begin() + before,
                   [&](char byte) { return QChar(decoder.single[static_cast<unsigned char>(byte)]); });
}

void Code_Pages::Append_Mixed(QString &text, QByteArrayView bytes, int documentCodePage)
{
    const auto isHigh = [](char byte) {
        return static_cast<unsigned char>(byte) >= 0x80;
    };
    for (auto begin = bytes.begin(); begin != bytes.end();) {
        const bool high = isHigh(*begin);
        const auto end = std::find_if(begin, bytes.end(), [&](char byte) { return isHigh(byte) != high; });
        const bool paired = high && (end - begin) % 2 == 0;
        Append(text, QByteArrayView(begin, end), paired ? documentCodePage : 1252);
        begin = end;
    }
}

char16_t Symbol_Glyph(unsigned char glyph, const QString &font)
{
    char16_t shown = 0;
    if (glyph == ' ')
        return u' ';
    const auto isFont = [&](const char *name) {
        return font.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    };
    if (isFont("Symbol") || isFont("SymbolPS") || isFont("Symbol MT")) {
        shown = glyph < 0x80 ? Glyph_From(symbolLow, glyph - 0x21) : Glyph_From(symbolHigh, glyph - 0xA0);
    } else if (isFont("Wingdings")) { // others have signs of their own
        const auto *row = std::find_if(std::begin(wingdings), std::end(wingdings),
                                       [&](const auto &each) { return each.glyph == glyph; });
        shown = row == std::end(wingdings) ? u'\0' : row->shown;
    }
    return shown ? shown : static_cast<char16_t>(0xF000 + glyph);
}
} // namespace Rtf
