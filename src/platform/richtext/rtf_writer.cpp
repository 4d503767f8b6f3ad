// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_writer.h"

#include "platform/pictures/raster.h"
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"
#include "platform/richtext/picture_bytes.h"
#include "platform/richtext/rich_text.h"
#include "platform/richtext/rtf_borders.h"
#include "platform/richtext/rtf_formats.h"
#include "platform/richtext/rtf_model.h"
#include "platform/richtext/rtf_page_texts.h"
#include "platform/richtext/rtf_pictures.h"

#include <QFont>
#include <QImage>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Rtf
{
namespace
{
// What stands after the final brace. The coder that keeps documents may lose or overwrite its stream's last bytes.
constexpr qsizetype tailLength = 64;

struct Property {
    bool isSet;
    const char *word;
};

/// The picture's bytes in a format that RTF has, with the word for it; other image files become PNG.
const char *Prepare(QByteArray &bytes)
{
    switch (Kind_Of_File(bytes)) {
    case Picture_Kind::Jpeg:
        return "\\jpegblip";
    case Picture_Kind::Device_Independent:
        bytes.remove(0, Bitmap_File_Header);
        return "\\dibitmap0";
    case Picture_Kind::Windows_Metafile:
        return "\\wmetafile8";
    case Picture_Kind::Enhanced_Metafile:
        return "\\emfblip";
    case Picture_Kind::Png:
        return "\\pngblip";
    default:
        break;
    }
    if (const QImage image = Raster::Decode(bytes); !image.isNull())
        bytes = Rich_Text::Picture_Bytes(QVariant(image));
    return "\\pngblip";
}

QSizeF Shown_Size(const QTextImageFormat &format, const QByteArray &bytes)
{
    double width = format.width(), height = format.height();
    if (width > 0 && height > 0)
        return {width, height};
    const QSize own = Pixel_Size(bytes);
    if (own.isEmpty())
        return {std::max(width, height), std::max(width, height)};
    if (width > 0)
        return {width, width * own.height() / own.width()};
    if (height > 0)
        return {height * own.width() / own.height(), height};
    return own;
}

double Point_Size(const QTextCharFormat &format, const QFont &font)
{
    static constexpr double factors[] = {0.7, 0.8, 1.0, 1.2, 1.5, 2.0, 2.4}; // of HTML's sizes 1 to 7
    const double own = font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * 0.75;
    const int step = format.intProperty(QTextFormat::FontSizeAdjustment);
    return format.hasProperty(QTextFormat::FontPointSize) ? own : own * factors[std::clamp(step + 2, 0, 6)];
}

int Half_Points(double pointSize)
{
    return static_cast<int>(std::lround(pointSize * 2));
}

/// By blocks of Unicode; the surrogates are those of planes 2 and 3.
bool Is_East_Asian(QChar c)
{
    const char16_t unit = c.unicode();
    return (unit >= 0x2E80 && unit < 0xD7FF) || (unit >= 0xD840 && unit < 0xD8C0) ||
           (unit >= 0xF900 && unit < 0xFB00) || (unit >= 0xFE30 && unit < 0xFE50) || (unit >= 0xFF00 && unit < 0xFFF0);
}

/// Likewise, from Hebrew to Arabic; the surrogates are those of the scripts from U+10800 and U+1E800. QTextDocument has
/// U+FDD0 and U+FDD1 for the ends of tables and cells.
bool Is_Right_To_Left(QChar c)
{
    const char16_t unit = c.unicode();
    return (unit >= 0x590 && unit < 0x900) || (unit >= 0xFB1D && unit < 0xFDD0) || (unit >= 0xFDF0 && unit < 0xFE00) ||
           (unit >= 0xFE70 && unit < 0xFEFF) || unit == 0xD802 || unit == 0xD803 || unit == 0xD83A || unit == 0xD83B;
}

const char *Underline_Word(const QTextCharFormat &format)
{
    const auto style = format.underlineStyle() == QTextCharFormat::SpellCheckUnderline ? QTextCharFormat::WaveUnderline
                                                                                       : format.underlineStyle();
    const auto kept = static_cast<std::size_t>(format.intProperty(Rich_Text::Underline_Property));
    if (kept < std::size(Underline_Rows) && Underline_Rows[kept].style == style)
        return Underline_Rows[kept].word;
    const auto *row = std::find_if(std::begin(Underline_Rows), std::end(Underline_Rows),
                                   [&](const Underline_Row &each) { return each.style == style; });
    return row->word;
}

void Append_If(QByteArray &out, const char *word, int number)
{
    if (number)
        Append_Word(out, word, number);
}

/// An argument of a field's instruction.
QString Quoted(QString text)
{
    text.replace(u'\\', QLatin1String("\\\\")).replace(u'"', QLatin1String("\\\""));
    return u'"' + text + u'"';
}

QByteArray Line_Height_Words(const QTextBlockFormat &format)
{
    QByteArray out;
    switch (format.lineHeightType()) {
    case QTextBlockFormat::ProportionalHeight:
        Append_Word(out, "\\sl", static_cast<int>(std::lround(format.lineHeight() * 2.4)));
        return out + "\\slmult1";
    case QTextBlockFormat::FixedHeight:
        Append_Word(out, "\\sl", -Twips(format.lineHeight()));
        return out + "\\slmult0";
    case QTextBlockFormat::MinimumHeight:
        Append_Word(out, "\\sl", Twips(format.lineHeight()));
        return out + "\\slmult0";
    default:
        return out;
    }
}

QByteArray Tab_Words(const QTextBlockFormat &format)
{
    QByteArray out;
    const QList<QTextOption::Tab> tabs = format.tabPositions();
    const QByteArray leaders = format.property(Rich_Text::Tab_Leaders).toByteArray();
    for (qsizetype i = 0; i < tabs.size(); ++i) {
        static constexpr const char *kinds[] = {"", "\\tqr", "\\tqc", "\\tqdec"};
        out += kinds[tabs[i].type];
        const std::size_t leader = i < leaders.size() ? static_cast<unsigned char>(leaders[i]) : 0;
        out += leader < std::size(Leader_Words) ? Leader_Words[leader] : "";
        Append_Word(out, "\\tx", Twips(tabs[i].position));
    }
    return out;
}
} // namespace

bool Is_Rest(const QTextBlock &block)
{
    return block.blockFormat().boolProperty(Rich_Text::Rest_Of_Paragraph) &&
           block.previous().length() > Rich_Text::Longest_Block;
}

Writer::Writer(const QTextDocument &document) : m_document(document)
{
    const QString text = document.toRawText();
    m_hasEastAsian = std::any_of(text.begin(), text.end(), Is_East_Asian);
    m_hasRightToLeft = std::any_of(text.begin(), text.end(), Is_Right_To_Left);
}

QByteArray Writer::Write()
{
    m_tables.Font_Number(m_document.defaultFont().family());
    Write_Frame(*m_document.rootFrame(), 0);
    const QTextFrameFormat root = m_document.rootFrame()->frameFormat();
    return "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\r\n" + m_tables.Bytes() +
           root.property(Rich_Text::Head_Property).toByteArray() +
           Write_Page_Texts(root.property(Rich_Text::Page_Texts_Property).toStringList()) + m_out + '}' +
           QByteArray("\r\n").repeated(tailLength / 2);
}

bool Writer::Is_Filler(const QTextFrame::iterator &first)
{
    const QTextBlock block = first.currentBlock();
    QTextFrame::iterator second = first;
    return block.length() == 1 && block.blockFormat().boolProperty(Rich_Text::Filler) && (++second).currentFrame();
}

void Writer::Write_Frame(const QTextFrame &frame, int nesting)
{
    Write_Flow(frame.begin(), frame.end(), nesting, "\\par");
}

/// @param end the word behind the last paragraph
void Writer::Write_Flow(const QTextFrame::iterator &begin, const QTextFrame::iterator &end, int nesting,
                        const char *last)
{
    bool mayBeFiller = true; // at the beginning, or between two tables
    for (auto it = begin; it != end;) {
        const auto current = it;
        ++it;
        if (const QTextFrame *child = current.currentFrame()) {
            if (const auto *table = qobject_cast<const QTextTable *>(child))
                Write_Table(*table, nesting + 1);
            else
                Write_Frame(*child, nesting);
        } else if (current.currentBlock().isValid() && !(mayBeFiller && Is_Filler(current))) {
            const bool goesOn = it != end && Is_Rest(it.currentBlock());
            Write_Block(current.currentBlock(), nesting, goesOn ? "" : it == end ? last : "\\par");
        }
        mayBeFiller = current.currentFrame() != nullptr;
    }
}

void Writer::Write_Block(const QTextBlock &block, int nesting, const char *end)
{
    if (!std::exchange(m_goesOn, *end == '\0'))
        Write_Block_Properties(block, nesting);
    Write_Fragments(block);
    if (m_goesOn)
        return Close_Look();
    QTextCharFormat mark = block.charFormat();
    if (mark.objectType() == QTextFormat::TableCellObject) { // the cell's background, not the text's
        mark.clearProperty(QTextFormat::BackgroundBrush);
        mark.clearProperty(QTextFormat::TextVerticalAlignment);
    }
    const bool isChanged = mark.objectType() != QTextFormat::NoObject;
    mark.clearProperty(QTextFormat::ObjectType); // a new paragraph has its mark from the object before it
    Write_Bookmarks(mark);
    Select(mark, isChanged ? -1 : block.charFormatIndex());
    m_out += end;
    Close_Look();
    m_out += "\r\n";
}

void Writer::Write_Block_Properties(const QTextBlock &block, int nesting)
{
    const QTextBlockFormat format = block.blockFormat();
    m_out += "\\pard";
    if (format.headingLevel() > 0) {
        const int style = m_tables.Heading_Style(format.headingLevel());
        Append_Word(m_out, "\\s", style);
        Append_Word(m_out, "\\outlinelevel", style - 1);
    }
    if (nesting > 0) {
        m_out += "\\intbl";
        Append_Word(m_out, "\\itap", nesting);
    }
    const bool isLeftward = block.textDirection() == Qt::RightToLeft;
    if (isLeftward || format.layoutDirection() == Qt::LeftToRight)
        m_out += isLeftward ? "\\rtlpar" : "\\ltrpar";
    const Qt::Alignment align = format.alignment();
    const bool isMirrored = isLeftward && !(align & Qt::AlignAbsolute);
    m_out += align & Qt::AlignHCenter                     ? "\\qc"
             : align & Qt::AlignJustify                   ? "\\qj"
             : bool(align & Qt::AlignRight) != isMirrored ? "\\qr"
             : isLeftward                                 ? "\\ql"
                                                          : "";
    Write_Indents(block);
    Append_If(m_out, "\\ri", Twips(format.rightMargin()));
    Append_If(m_out, "\\sb", Twips(format.topMargin()));
    Append_If(m_out, "\\sa", Twips(format.bottomMargin()));
    m_out += Line_Height_Words(format) + Tab_Words(format);
    Write_Paragraph_Borders(format);
    if (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
        m_out += "\\pagebb";
    if (format.boolProperty(Rich_Text::Keep_With_Next))
        m_out += "\\keepn";
}

/// A horizontal rule is a paragraph with a line below it; its background is the line's colour.
void Writer::Write_Paragraph_Borders(const QTextBlockFormat &format)
{
    if (format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth))
        return Write_Border(
            "\\brdrb",
            {.style = QTextFrameFormat::BorderStyle_Solid, .width = 1, .space = 0, .brush = format.background()});
    static constexpr std::array<const char *, 4> sides{"\\brdrt", "\\brdrb", "\\brdrl", "\\brdrr"};
    for (std::size_t side = 0; side < sides.size(); ++side) {
        const Shown_Border border = Border_Of(format, side);
        Write_Border(sides[side], border);
        if (border.Is_Line())
            Append_If(m_out, "\\brsp", Twips(border.space));
    }
    Append_If(m_out, "\\cbpat", m_tables.Color_Number(format.background()));
}

void Writer::Write_Indents(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    const int first = Twips(format.textIndent());
    const QTextList *list = block.textList();
    if (!list) {
        Append_If(m_out, "\\fi", first);
        Append_If(m_out, "\\li", Left_Of(block));
        return;
    }
    QByteArray label; // what readers show that know no lists
    Written_Items &items = m_items[list];
    if (items.count++ == 0)
        items.rule = Rich_Text::Rule_In_Place(*list);
    Append_Escaped(label, Rich_Text::Item_Label(items.rule, items.count));
    const List_Tables::Place place = m_tables.Lists().Place_Of(*list);
    Append_Word(m_out, "\\ls", place.number);
    Append_Word(m_out, "\\ilvl", place.level);
    const int hanging = First_Of(list->format(), format);
    Append_Word(m_out, "\\fi", first - Label_Room(hanging) + hanging);
    Append_Word(m_out, "\\li", Left_Of(block));
    m_out += "{\\listtext " + label + "\\tab}";
}

void Writer::Write_Fragments(const QTextBlock &block)
{
    m_note = 0;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const QTextCharFormat format = fragment.charFormat();
        const bool isHidden = format.objectType() == Rich_Text::Hidden_Object;
        const qsizetype bracket = Switch_Note(it);
        Switch_Link(format);
        Write_Bookmarks(format);
        Select(format, fragment.charFormatIndex());
        if (!isHidden && !format.isImageFormat()) {
            Write_Text(fragment.text().sliced(bracket));
            continue;
        }
        for (int i = 0; i < fragment.length(); ++i) {
            if (format.hasProperty(QTextFormat::ImageName))
                Write_Picture(format.toImageFormat());
            else if (isHidden)
                Write_Text(format.stringProperty(Rich_Text::Hidden_Text));
        }
    }
    Switch_Link({});
}

void Writer::Write_Text(const QString &text)
{
    if (std::exchange(m_afterWord, false))
        m_out += ' ';
    qsizetype begin = 0; // of a paragraph of hidden text
    for (qsizetype end = text.indexOf(u'\n'); end >= 0; end = text.indexOf(u'\n', begin)) {
        Append_Escaped(m_out, QStringView(text).sliced(begin, end - begin));
        m_out += "\\par ";
        begin = end + 1;
    }
    Append_Escaped(m_out, QStringView(text).sliced(begin));
}

/// A bookmark is only a place here, told once, however far its format was copied.
void Writer::Write_Bookmarks(const QTextCharFormat &format)
{
    if (!format.isAnchor())
        return;
    for (const QString &name : format.anchorNames()) {
        if (name.isEmpty() || m_bookmarks.contains(name))
            continue;
        m_bookmarks.insert(name);
        for (const char *word : {"{\\*\\bkmkstart ", "{\\*\\bkmkend "}) {
            m_out += word;
            Append_Escaped(m_out, name);
            m_out += '}';
        }
        m_afterWord = false;
    }
}

/// Opens, changes or closes the field that makes text a link.
void Writer::Switch_Link(const QTextCharFormat &format)
{
    const QString target = format.isAnchor() ? format.anchorHref() : QString();
    const QString tip = target.isEmpty() ? QString() : format.toolTip();
    if (target == m_link && tip == m_linkTip)
        return;
    Close_Look();
    if (!m_link.isEmpty())
        m_out += "}}";
    m_link = target;
    m_linkTip = tip;
    if (target.isEmpty())
        return;
    const bool isPlace = target.startsWith(u'#');
    m_out += "{\\field{\\*\\fldinst HYPERLINK ";
    Append_Escaped(m_out, (isPlace ? QStringLiteral("\\l ") : QString()) + Quoted(isPlace ? target.sliced(1) : target));
    if (!tip.isEmpty())
        Append_Escaped(m_out, QStringLiteral(" \\o ") + Quoted(tip));
    m_out += "}{\\fldrslt";
}

void Writer::Select(const QTextCharFormat &format, int index)
{
    const auto known = m_propertiesOf.constFind(index);
    const QByteArray properties = known != m_propertiesOf.constEnd() ? *known : Char_Properties(format);
    if (index >= 0 && known == m_propertiesOf.constEnd())
        m_propertiesOf.insert(index, properties);
    if (properties == m_selected)
        return;
    Close_Look();
    m_out += '{' + properties;
    m_afterWord = true;
    m_selected = properties;
}

/// Every look has a group of its own: some readers keep what follows \super for the end of its group.
void Writer::Close_Look()
{
    if (!m_selected.isEmpty())
        m_out += '}';
    m_selected.clear();
    m_afterWord = false;
}

/// The same font, size and style for the other scripts, for which \f, \fs, \b and \i do not hold everywhere.
QByteArray Writer::Associated_Properties(const QFont &font, int number, double pointSize)
{
    QByteArray out;
    if (m_hasRightToLeft) {
        Append_Word(out, "\\rtlch\\af", number);
        Append_Word(out, "\\afs", Half_Points(pointSize));
        out += QByteArray(font.bold() ? "\\ab" : "") + (font.italic() ? "\\ai" : "") + "\\ltrch";
    }
    if (m_hasEastAsian)
        Append_Word(out, "\\dbch\\af", number);
    return m_hasEastAsian ? out + "\\loch" : out;
}

QByteArray Writer::Char_Properties(const QTextCharFormat &format)
{
    const QFont font = format.font().resolve(m_document.defaultFont());
    const auto script = format.verticalAlignment();
    const bool isHidden = format.objectType() == Rich_Text::Hidden_Object;
    const int hidden = isHidden ? format.intProperty(Rich_Text::Hidden_Kind) : 0;
    const double spacing = font.letterSpacingType() == QFont::AbsoluteSpacing ? font.letterSpacing() : 0;
    const double pointSize = Point_Size(format, font);
    const bool isUnshown =
        format.hasProperty(Rich_Text::Unshown_Font) && !format.hasProperty(QTextFormat::FontFamilies);
    const int number = m_tables.Font_Number(isUnshown ? format.stringProperty(Rich_Text::Unshown_Font) : font.family());
    QByteArray out = "\\plain" + Associated_Properties(font, number, pointSize);
    Append_Word(out, "\\f", number);
    Append_Word(out, "\\fs", Half_Points(pointSize));
    const Property properties[] = {{font.bold(), "\\b"},
                                   {font.italic(), "\\i"},
                                   {font.strikeOut(), "\\strike"},
                                   {font.capitalization() == QFont::AllUppercase, "\\caps"},
                                   {font.capitalization() == QFont::SmallCaps, "\\scaps"},
                                   {script == QTextCharFormat::AlignSuperScript, "\\super"},
                                   {script == QTextCharFormat::AlignSubScript, "\\sub"},
                                   {(hidden & Hidden) != 0, "\\v"},
                                   {(hidden & Deleted) != 0, "\\deleted"},
                                   {true, Underline_Word(format)}};
    for (const Property &property : properties) {
        if (property.isSet)
            out += property.word;
    }
    Append_If(out, "\\cf", m_tables.Color_Number(format.foreground()));
    if (const int back = m_tables.Color_Number(format.background())) {
        Append_Word(out, "\\chcbpat", back);
        Append_Word(out, "\\highlight", back);
    }
    if (format.underlineColor().isValid())
        Append_Word(out, "\\ulc", m_tables.Color_Number(format.underlineColor().rgb()));
    Append_If(out, "\\expndtw", Twips(spacing));
    if (font.stretch() != 0 && font.stretch() != 100)
        Append_Word(out, "\\charscalex", font.stretch());
    return out;
}

/// @param shown in pixels  @param part what is shown of the picture, or empty for all of it
void Writer::Write_Picture_Size(const QSizeF &shown, const QRectF &part)
{
    if (part.isEmpty()) {
        Append_Word(m_out, "\\picwgoal", Twips(shown.width()));
        Append_Word(m_out, "\\pichgoal", Twips(shown.height()));
        return;
    }
    const int width = Twips(shown.width() / part.width()), height = Twips(shown.height() / part.height());
    Append_Word(m_out, "\\picwgoal", width);
    Append_Word(m_out, "\\pichgoal", height);
    const int left = static_cast<int>(std::lround(width * part.left()));
    const int top = static_cast<int>(std::lround(height * part.top()));
    Append_If(m_out, "\\piccropl", left);
    Append_If(m_out, "\\piccropt", top);
    Append_If(m_out, "\\piccropr", width - left - Twips(shown.width()));
    Append_If(m_out, "\\piccropb", height - top - Twips(shown.height()));
}

void Writer::Write_Picture(const QTextImageFormat &format)
{
    QByteArray bytes = Rich_Text::Picture_Bytes(m_document.resource(QTextDocument::ImageResource, QUrl(format.name())));
    const QSizeF shown = Shown_Size(format, bytes);
    const QSize own = Pixel_Size(bytes);
    const char *kind = Prepare(bytes);
    m_out += "{\\pict";
    m_out += kind;
    Append_Word(m_out, "\\picw", std::max(0, own.isValid() ? own.width() : 0));
    Append_Word(m_out, "\\pich", std::max(0, own.isValid() ? own.height() : 0));
    Write_Picture_Size(shown, format.property(Rich_Text::Picture_Part).toRectF());
    constexpr qsizetype bytesPerLine = 64;
    for (qsizetype at = 0; at < bytes.size(); at += bytesPerLine)
        m_out += "\r\n" + bytes.mid(at, bytesPerLine).toHex();
    m_out += '}';
    m_afterWord = false;
}
} // namespace Rtf
