// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_page_texts.h"
#include "platform/richtext/rtf_reader.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>

namespace Rtf
{
template <auto Field>
void Reader::Char_Number(int)
{
    m_state.chr.*Field = std::clamp(m_parameter, -1, 1 << 20);
}
template <auto Field>
void Reader::Para_Length(int)
{
    m_state.para.*Field = Length();
}
template <auto Field>
void Reader::Para_Flag(int value)
{
    m_state.para.*Field = value && (!m_hasParameter || m_parameter);
}
template <auto Field>
void Reader::Picture_Number(int)
{
    m_picture.*Field = m_parameter;
}
template <auto Field>
void Reader::Cell_Flag(int)
{
    m_cell.*Field = true;
}
template <auto Field>
void Reader::Cell_Number(int)
{
    m_cell.*Field = Length();
}
template <auto Field>
void Reader::Row_Number(int)
{
    m_row.*Field = Length();
}

namespace
{
/// What Border_Of takes: whose borders, and a bit for each side.
constexpr int Of_Sides(auto owner, std::initializer_list<Side> sides)
{
    int mask = 0;
    for (const Side side : sides)
        mask |= 1 << side;
    return static_cast<int>(owner) << 8 | mask;
}
} // namespace

/// What control words mean (Rich Text Format 1.9.1, "Contents of an RTF File" and its appendix). A word that is not
/// here changes nothing, and its group is skipped where \* stands before it.
struct Words {
    using R = Reader;
    static bool Is_Sign(const Word_Row &row)
    {
        return row.action == &R::Character && row.value > ' ' && row.value != 0x2028;
    }
    using D = Reader::Destination;
    using O = Reader::Border_Owner;
    using K = Reader::Script_Kind;
    using C = Char_Style;
    using P = Para_Style;
    using S = Picture_Source;

    static constexpr Word_Row formatting[] = {
        {"plain", &R::Plain},
        {"f", &R::Select_Font},
        {"fs", &R::Font_Size},
        {"loch", &R::Select_Script, int(K::Western)},
        {"hich", &R::Select_Script, int(K::Western)},
        {"ltrch", &R::Select_Script, int(K::Western)},
        {"dbch", &R::Select_Script, int(K::East_Asian)},
        {"rtlch", &R::Select_Script, int(K::Right_To_Left)},
        {"af", &R::Associated_Font},
        {"afs", &R::Associated_Size},
        {"ab", &R::Associated_Flag, Bold},
        {"ai", &R::Associated_Flag, Italic},
        {"b", &R::Flag, Bold},
        {"i", &R::Flag, Italic},
        {"strike", &R::Flag, Strike},
        {"striked", &R::Flag, Strike},
        {"v", &R::Flag, Hidden},
        {"deleted", &R::Flag, Deleted},
        {"caps", &R::Flag, All_Caps},
        {"scaps", &R::Flag, Small_Caps},
        {"ul", &R::Set_Underline, int(Underline::Single)},
        {"ulnone", &R::Set_Underline, int(Underline::None)},
        {"ulw", &R::Set_Underline, int(Underline::Words)},
        {"uldb", &R::Set_Underline, int(Underline::Double)},
        {"ulth", &R::Set_Underline, int(Underline::Thick)},
        {"uld", &R::Set_Underline, int(Underline::Dot)},
        {"ulthd", &R::Set_Underline, int(Underline::Thick_Dot)},
        {"uldash", &R::Set_Underline, int(Underline::Dash)},
        {"ulldash", &R::Set_Underline, int(Underline::Long_Dash)},
        {"ulthdash", &R::Set_Underline, int(Underline::Thick_Dash)},
        {"ulthldash", &R::Set_Underline, int(Underline::Thick_Long_Dash)},
        {"uldashd", &R::Set_Underline, int(Underline::Dash_Dot)},
        {"ulthdashd", &R::Set_Underline, int(Underline::Thick_Dash_Dot)},
        {"uldashdd", &R::Set_Underline, int(Underline::Dash_Dot_Dot)},
        {"ulthdashdd", &R::Set_Underline, int(Underline::Thick_Dash_Dot_Dot)},
        {"ulwave", &R::Set_Underline, int(Underline::Wave)},
        {"ulhwave", &R::Set_Underline, int(Underline::Heavy_Wave)},
        {"ululdbwave", &R::Set_Underline, int(Underline::Double_Wave)},
        {"ulc", &R::Char_Number<&C::underlineColor>},
        {"super", &R::Set_Script, int(Script::Super)},
        {"up", &R::Set_Script, int(Script::Super)},
        {"sub", &R::Set_Script, int(Script::Sub)},
        {"dn", &R::Set_Script, int(Script::Sub)},
        {"nosupersub", &R::Set_Script, int(Script::Normal)},
        {"cf", &R::Char_Number<&C::color>},
        {"cb", &R::Char_Number<&C::back>},
        {"chcbpat", &R::Char_Number<&C::back>},
        {"highlight", &R::Char_Number<&C::back>},
        {"expndtw", &R::Char_Spacing},
        {"charscalex", &R::Char_Stretch},
        {"pard", &R::Pard},
        {"ql", &R::Set_Align, int(Align::Left)},
        {"qr", &R::Set_Align, int(Align::Right)},
        {"qc", &R::Set_Align, int(Align::Center)},
        {"qj", &R::Set_Align, int(Align::Justify)},
        {"qd", &R::Set_Align, int(Align::Justify)},
        {"li", &R::Para_Length<&P::left>},
        {"ri", &R::Para_Length<&P::right>},
        {"fi", &R::Para_Length<&P::first>},
        {"sb", &R::Para_Length<&P::before>},
        {"sa", &R::Para_Length<&P::after>},
        {"sl", &R::Line_Height, 0},
        {"slmult", &R::Line_Height, 1},
        {"cbpat", &R::Para_Back},
        {"cfpat", &R::Para_Length<&P::pattern>},
        {"shading", &R::Para_Length<&P::shading>},
        {"keepn", &R::Para_Flag<&P::keepWithNext>, 1},
        {"rtlpar", &R::Set_Direction, int(Direction::Leftwards)},
        {"ltrpar", &R::Set_Direction, int(Direction::Rightwards)},
        {"pagebb", &R::Para_Flag<&P::pageBreakBefore>, 1},
        {"outlinelevel", &R::Outline},
        {"tqr", &R::Tab_Next, int(Tab_Kind::Right)},
        {"tqc", &R::Tab_Next, int(Tab_Kind::Center)},
        {"tqdec", &R::Tab_Next, int(Tab_Kind::Decimal)},
        {"tldot", &R::Tab_Leader, 1},
        {"tlmdot", &R::Tab_Leader, 2},
        {"tlhyph", &R::Tab_Leader, 3},
        {"tlul", &R::Tab_Leader, 4},
        {"tlth", &R::Tab_Leader, 5},
        {"tleq", &R::Tab_Leader, 6},
        {"tx", &R::Tab_Stop_At},
        {"ls", &R::List_Number},
        {"ilvl", &R::List_Depth},
        {"brdrt", &R::Border_Of, Of_Sides(O::Paragraph, {Top})},
        {"brdrb", &R::Border_Of, Of_Sides(O::Paragraph, {Bottom})},
        {"brdrl", &R::Border_Of, Of_Sides(O::Paragraph, {Left_Side})},
        {"brdrr", &R::Border_Of, Of_Sides(O::Paragraph, {Right_Side})},
        {"box", &R::Border_Of, Of_Sides(O::Paragraph, {Top, Bottom, Left_Side, Right_Side})},
        {"brdrbtw", &R::Border_Of, Of_Sides(O::Nothing, {})},
        {"brdrbar", &R::Border_Of, Of_Sides(O::Nothing, {})},
        {"chbrdr", &R::Border_Of, Of_Sides(O::Nothing, {})},
        {"brdrw", &R::Border_Width},
        {"brsp", &R::Border_Space},
        {"brdrcf", &R::Border_Color},
        {"brdrnone", &R::Border_Line, int(Line::None)},
        {"brdrnil", &R::Border_Line, int(Line::None)},
        {"brdrtbl", &R::Border_Line, int(Line::None)},
        {"brdrs", &R::Border_Line, int(Line::Solid)},
        {"brdrth", &R::Border_Line, int(Line::Solid)},
        {"brdrsh", &R::Border_Line, int(Line::Solid)},
        {"brdrhair", &R::Border_Line, int(Line::Solid)},
        {"brdrwavy", &R::Border_Line, int(Line::Solid)},
        {"brdrdot", &R::Border_Line, int(Line::Dotted)},
        {"brdrdash", &R::Border_Line, int(Line::Dashed)},
        {"brdrdashsm", &R::Border_Line, int(Line::Dashed)},
        {"brdrdashd", &R::Border_Line, int(Line::Dot_Dash)},
        {"brdrdashdotstr", &R::Border_Line, int(Line::Dot_Dash)},
        {"brdrdashdd", &R::Border_Line, int(Line::Dot_Dot_Dash)},
        {"brdrdb", &R::Border_Line, int(Line::Double)},
        {"brdrtriple", &R::Border_Line, int(Line::Double)},
        {"brdrtnthsg", &R::Border_Line, int(Line::Double)},
        {"brdrthtnsg", &R::Border_Line, int(Line::Double)},
        {"brdrtnthtnsg", &R::Border_Line, int(Line::Double)},
        {"brdrtnthmg", &R::Border_Line, int(Line::Double)},
        {"brdrthtnmg", &R::Border_Line, int(Line::Double)},
        {"brdrtnthtnmg", &R::Border_Line, int(Line::Double)},
        {"brdrtnthlg", &R::Border_Line, int(Line::Double)},
        {"brdrthtnlg", &R::Border_Line, int(Line::Double)},
        {"brdrtnthtnlg", &R::Border_Line, int(Line::Double)},
        {"brdrwavydb", &R::Border_Line, int(Line::Double)},
        {"brdrengrave", &R::Border_Line, int(Line::Groove)},
        {"brdremboss", &R::Border_Line, int(Line::Ridge)},
        {"brdrinset", &R::Border_Line, int(Line::Inset)},
        {"brdroutset", &R::Border_Line, int(Line::Outset)},
    };

    static constexpr Word_Row structure[] = {
        // the document and its tables
        {"ansi", &R::Document_Pages, 1252},
        {"mac", &R::Document_Pages, 10000},
        {"pc", &R::Document_Pages, 437},
        {"pca", &R::Document_Pages, 850},
        {"ansicpg", &R::Document_Pages, 0},
        {"deff", &R::Default_Font},
        {"fonttbl", &R::Begin_Fonts},
        {"fcharset", &R::Font_Charset},
        {"cpg", &R::Font_Code_Page},
        {"falt", &R::Skip_Group},
        {"panose", &R::Skip_Group},
        {"fontemb", &R::Skip_Group},
        {"colortbl", &R::To_Destination, int(D::Color_Table)},
        {"red", &R::Color_Part, 16},
        {"green", &R::Color_Part, 8},
        {"blue", &R::Color_Part, 0},
        {"stylesheet", &R::To_Destination, int(D::Style_Sheet)},
        {"s", &R::Style_Number, 0},
        {"cs", &R::Style_Number, 1},
        {"sbasedon", &R::Based_On},
        {"listtable", &R::To_Destination, int(D::Nothing)},
        {"list", &R::Begin_List},
        {"listlevel", &R::Begin_Level},
        {"levelnfc", &R::Level_Kind},
        {"levelnfcn", &R::Level_Kind},
        {"levelstartat", &R::Level_Start},
        {"leveltext", &R::To_Destination, int(D::Level_Text)},
        {"levelnumbers", &R::Skip_Group},
        {"listname", &R::Skip_Group},
        {"listid", &R::List_Id},
        {"listoverridetable", &R::To_Destination, int(D::Nothing)},
        {"listoverride", &R::Begin_Override},
        {"lfolevel", &R::Begin_Override_Level},
        // what is not part of the text
        {"info", &R::To_Destination, int(D::Info)},
        {"title", &R::Info_Field, 0},
        {"subject", &R::Info_Field, 1},
        {"author", &R::Info_Field, 2},
        {"manager", &R::Info_Field, 3},
        {"company", &R::Info_Field, 4},
        {"operator", &R::Info_Field, 5},
        {"category", &R::Info_Field, 6},
        {"keywords", &R::Info_Field, 7},
        {"doccomm", &R::Info_Field, 8},
        {"paperw", &R::Page_Measure, 0},
        {"paperh", &R::Page_Measure, 1},
        {"margl", &R::Page_Measure, 2},
        {"margr", &R::Page_Measure, 3},
        {"margt", &R::Page_Measure, 4},
        {"margb", &R::Page_Measure, 5},
        {"gutter", &R::Page_Measure, 6},
        {"landscape", &R::Page_Measure, 7},
        {"deftab", &R::Page_Measure, Default_Tab_Measure},
        {"header", &R::Begin_Page_Text, 0},
        {"headerl", &R::Begin_Page_Text, 1},
        {"headerr", &R::Begin_Page_Text, 2},
        {"headerf", &R::Begin_Page_Text, 3},
        {"footer", &R::Begin_Page_Text, 4},
        {"footerl", &R::Begin_Page_Text, 5},
        {"footerr", &R::Begin_Page_Text, 6},
        {"footerf", &R::Begin_Page_Text, 7},
        {"chpgn", &R::Page_Number},
        {"atnid", &R::Note_Source, 0},
        {"atnauthor", &R::Note_Source, 1},
        {"atndate", &R::Note_Source, 2},
        {"listtext", &R::Skip_Label},
        {"pntext", &R::Skip_Group},
        {"objdata", &R::Object_Data},
        {"objclass", &R::Skip_Group},
        {"objname", &R::Skip_Group},
        {"bkmkstart", &R::Begin_Bookmark},
        {"bkmkend", &R::Skip_Group},
        {"xe", &R::Skip_Group},
        {"tc", &R::Skip_Group},
        {"filetbl", &R::Skip_Group},
        {"private", &R::Skip_Group},
        {"template", &R::Skip_Group},
        {"background", &R::Skip_Group},
        {"nonesttables", &R::Skip_Group},
        // characters
        {"par", &R::Paragraph_Mark},
        {"page", &R::Page_Break},
        {"sect", &R::Section},
        {"sbknone", &R::Same_Page},
        {"sbkcol", &R::Same_Page},
        {"line", &R::Character, 0x2028},
        {"tab", &R::Character, '\t'},
        {"emdash", &R::Character, 0x2014},
        {"endash", &R::Character, 0x2013},
        {"emspace", &R::Character, 0x2003},
        {"enspace", &R::Character, 0x2002},
        {"qmspace", &R::Character, 0x2005},
        {"bullet", &R::Character, 0x2022},
        {"lquote", &R::Character, 0x2018},
        {"rquote", &R::Character, 0x2019},
        {"ldblquote", &R::Character, 0x201C},
        {"rdblquote", &R::Character, 0x201D},
        {"zwj", &R::Character, 0x200D},
        {"zwnj", &R::Character, 0x200C},
        {"zwbo", &R::Character, 0x200B},
        {"zwnbo", &R::Character, 0x2060},
        {"ltrmark", &R::Character, 0x200E},
        {"rtlmark", &R::Character, 0x200F},
        {"u", &R::Unicode},
        {"uc", &R::Unicode_Skip},
        {"upr", &R::Alternative},
        {"ud", &R::Alternative_Unicode},
        // old lists
        {"pn", &R::Begin_Old_List},
        {"pnlvlblt", &R::Old_List_Kind, 23},
        {"pnlvlbody", &R::Old_List_Kind, 0},
        {"pnlvl", &R::Old_List_Level},
        {"pnf", &R::Select_Font},
        {"pnlvlcont", &R::Old_List_Kind, -1},
        {"pndec", &R::Old_List_Kind, 0},
        {"pnucrm", &R::Old_List_Kind, 1},
        {"pnlcrm", &R::Old_List_Kind, 2},
        {"pnucltr", &R::Old_List_Kind, 3},
        {"pnstart", &R::Old_List_Start},
        {"pnlcltr", &R::Old_List_Kind, 4},
        {"pntxtb", &R::To_Destination, int(D::Old_List_Before)},
        {"pntxta", &R::To_Destination, int(D::Old_List_After)},
        {"pnseclvl", &R::Skip_Group},
        // fields, notes, objects and shapes
        {"field", &R::Begin_Field},
        {"fldinst", &R::To_Destination, int(D::Field_Instruction)},
        {"fldrslt", &R::Field_Result},
        {"footnote", &R::Begin_Note, int(Note_Kind::Footnote)},
        {"ftnalt", &R::End_Notes},
        {"annotation", &R::Begin_Note, int(Note_Kind::Comment)},
        {"moMath", &R::Ignore},
        {"shpinst", &R::Drawing},
        {"shpgrp", &R::To_Destination, int(D::Nothing)},
        {"sn", &R::Skip_Group},
        {"shprslt", &R::Skip_Group},
        {"shptxt", &R::Text_Box},
        {"do", &R::Drawing},
        {"dptxbxtext", &R::Text_Box},
        // pictures
        {"pict", &R::Begin_Picture},
        {"shppict", &R::Shape_Picture, 0},
        {"nonshppict", &R::Shape_Picture, 1},
        {"picprop", &R::Skip_Group},
        {"blipuid", &R::Skip_Group},
        {"pngblip", &R::Picture_Format, int(Picture_Kind::Png)},
        {"jpegblip", &R::Picture_Format, int(Picture_Kind::Jpeg)},
        {"dibitmap", &R::Picture_Format, int(Picture_Kind::Device_Independent)},
        {"wbitmap", &R::Picture_Format, int(Picture_Kind::Device_Dependent)},
        {"wmetafile", &R::Picture_Format, int(Picture_Kind::Windows_Metafile)},
        {"emfblip", &R::Picture_Format, int(Picture_Kind::Enhanced_Metafile)},
        {"picw", &R::Picture_Number<&S::width>},
        {"pich", &R::Picture_Number<&S::height>},
        {"picwgoal", &R::Picture_Number<&S::goalWidth>},
        {"pichgoal", &R::Picture_Number<&S::goalHeight>},
        {"picscalex", &R::Picture_Number<&S::scaleX>},
        {"picscaley", &R::Picture_Number<&S::scaleY>},
        {"piccropl", &R::Picture_Number<&S::cropLeft>},
        {"piccropt", &R::Picture_Number<&S::cropTop>},
        {"piccropr", &R::Picture_Number<&S::cropRight>},
        {"piccropb", &R::Picture_Number<&S::cropBottom>},
        {"wbmbitspixel", &R::Picture_Number<&S::bitsPerPixel>},
        {"wbmwidthbytes", &R::Picture_Number<&S::rowBytes>},
        // tables
        {"intbl", &R::In_Table},
        {"itap", &R::Nest},
        {"trowd", &R::Row_Begin},
        {"cellx", &R::Cell_Edge},
        {"cell", &R::Cell_Mark, 0},
        {"nestcell", &R::Cell_Mark, 1},
        {"row", &R::Row_Mark, 0},
        {"nestrow", &R::Row_Mark, 1},
        {"nesttableprops", &R::Nested_Properties},
        {"clmgf", &R::Cell_Flag<&Cell_Definition::mergeFirst>},
        {"clmrg", &R::Cell_Flag<&Cell_Definition::merged>},
        {"clvmgf", &R::Cell_Flag<&Cell_Definition::verticalFirst>},
        {"clvmrg", &R::Cell_Flag<&Cell_Definition::verticalMerged>},
        {"clvertalt", &R::Cell_Vertical, 0},
        {"clvertalc", &R::Cell_Vertical, 1},
        {"clvertalb", &R::Cell_Vertical, 2},
        {"clcbpat", &R::Cell_Number<&Cell_Definition::back>},
        {"clcfpat", &R::Cell_Number<&Cell_Definition::pattern>},
        {"clshdng", &R::Cell_Number<&Cell_Definition::shading>},
        {"clwWidth", &R::Cell_Number<&Cell_Definition::width>},
        {"clftsWidth", &R::Cell_Width_Kind},
        {"trleft", &R::Row_Number<&Row_Definition::left>},
        {"trgaph", &R::Row_Number<&Row_Definition::gap>},
        {"trpaddl", &R::Row_Number<&Row_Definition::padding>},
        {"trspdl", &R::Row_Number<&Row_Definition::spacing>},
        {"trwWidth", &R::Row_Number<&Row_Definition::width>},
        {"trftsWidth", &R::Row_Width_Kind},
        {"trql", &R::Row_Align, int(Align::Left)},
        {"trqr", &R::Row_Align, int(Align::Right)},
        {"trqc", &R::Row_Align, int(Align::Center)},
        {"trhdr", &R::Row_Header},
        {"clpadl", &R::Cell_Padding, Top}, // word processors agree that these two have changed places
        {"clpadt", &R::Cell_Padding, Left_Side},
        {"clpadb", &R::Cell_Padding, Bottom},
        {"clpadr", &R::Cell_Padding, Right_Side},
        {"clbrdrt", &R::Border_Of, Of_Sides(O::Cell, {Top})},
        {"clbrdrb", &R::Border_Of, Of_Sides(O::Cell, {Bottom})},
        {"clbrdrl", &R::Border_Of, Of_Sides(O::Cell, {Left_Side})},
        {"clbrdrr", &R::Border_Of, Of_Sides(O::Cell, {Right_Side})},
        {"trbrdrt", &R::Border_Of, Of_Sides(O::Row, {Top})},
        {"trbrdrb", &R::Border_Of, Of_Sides(O::Row, {Bottom})},
        {"trbrdrl", &R::Border_Of, Of_Sides(O::Row, {Left_Side})},
        {"trbrdrr", &R::Border_Of, Of_Sides(O::Row, {Right_Side})},
        {"trbrdrh", &R::Border_Of, Of_Sides(O::Row, {Top, Bottom})},
        {"trbrdrv", &R::Border_Of, Of_Sides(O::Row, {Left_Side, Right_Side})},
        {"cldglu", &R::Border_Of, Of_Sides(O::Nothing, {})},
        {"cldgll", &R::Border_Of, Of_Sides(O::Nothing, {})},
    };
};

namespace
{
/// An open-addressing index of both tables by a hash of the name.
class Word_Index
{
public:
    Word_Index()
    {
        for (const Word_Row &row : Words::formatting)
            Insert(row);
        for (const Word_Row &row : Words::structure)
            Insert(row);
    }

    const Word_Row *Find(std::string_view name) const
    {
        for (std::size_t slot = Hash(name);; ++slot) {
            const Word_Row *row = m_slots[slot % slotCount];
            if (!row || row->name == name)
                return row;
        }
    }

private:
    static constexpr std::size_t slotCount = 1024;
    static_assert(std::size(Words::formatting) + std::size(Words::structure) < slotCount / 2);

    static std::size_t Hash(std::string_view name)
    {
        std::size_t hash = name.size();
        for (const char c : name.substr(0, 16))
            hash = hash * 31 + static_cast<unsigned char>(c);
        return hash;
    }

    void Insert(const Word_Row &row)
    {
        std::size_t slot = Hash(row.name);
        while (m_slots[slot % slotCount])
            ++slot;
        m_slots[slot % slotCount] = &row;
    }

    std::array<const Word_Row *, slotCount> m_slots{};
};
} // namespace

const Word_Row *Find_Word(std::string_view name)
{
    static const Word_Index index;
    return index.Find(name);
}

bool Is_Sign(const Word_Row &row)
{
    return Words::Is_Sign(row);
}

bool Is_Formatting(const Word_Row &row)
{
    return std::any_of(std::begin(Words::formatting), std::end(Words::formatting),
                       [&](const Word_Row &each) { return &each == &row; });
}
} // namespace Rtf
