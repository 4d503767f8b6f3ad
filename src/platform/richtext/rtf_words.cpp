// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_words.h"

#include "platform/richtext/rtf_page_texts.h"
#include "platform/richtext/rtf_reader.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <type_traits>

namespace Rtf
{
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
    using D = Destination;
    using O = Row_Reader::Border_Owner;
    using K = Script_Kind;
    using C = Char_Style;
    using L = Look_Reader;
    using P = Paragraph_Words;
    using Y = Para_Style;
    using S = Picture_Source;

    template <typename Part>
    static Part &Part_Of(Reader &reader)
    {
        if constexpr (std::is_same_v<Part, Look_Reader>)
            return reader.m_looks;
        else if constexpr (std::is_same_v<Part, Paragraph_Words>)
            return reader.m_paragraphWords;
        else if constexpr (std::is_same_v<Part, Row_Reader>)
            return reader.m_rows;
        else if constexpr (std::is_same_v<Part, List_Reader>)
            return reader.m_lists;
        else if constexpr (std::is_same_v<Part, Style_Sheet>)
            return reader.m_styles;
        else if constexpr (std::is_same_v<Part, Page_Parts>)
            return reader.m_page;
        else if constexpr (std::is_same_v<Part, Field_Reader>)
            return reader.m_fields;
        else if constexpr (std::is_same_v<Part, Note_Reader>)
            return reader.m_notes;
        else
            return reader;
    }
    template <typename Part>
    static void Call(Reader &reader, void (Part::*method)(), int /*value*/)
    {
        (Part_Of<Part>(reader).*method)();
    }
    template <typename Part>
    static void Call(Reader &reader, void (Part::*method)(int), int value)
    {
        (Part_Of<Part>(reader).*method)(value);
    }
    /// Runs a method of the reader or of one of its parts.
    template <auto Method>
    static void Do(Reader &reader, int value)
    {
        Call(reader, Method, value);
    }

    static bool Is_Sign(const Word_Row &row)
    {
        return row.action == &Do<&Reader::Character> && row.value > ' ' && row.value != 0x2028;
    }

    static constexpr Word_Row formatting[] = {
        {"plain", Do<&L::Plain>},
        {"f", Do<&L::Select_Font>},
        {"fs", Do<&L::Font_Size>},
        {"loch", Do<&L::Select_Script>, int(K::Western)},
        {"hich", Do<&L::Select_Script>, int(K::Western)},
        {"ltrch", Do<&L::Select_Script>, int(K::Western)},
        {"dbch", Do<&L::Select_Script>, int(K::East_Asian)},
        {"rtlch", Do<&L::Select_Script>, int(K::Right_To_Left)},
        {"af", Do<&L::Associated_Font>},
        {"afs", Do<&L::Associated_Size>},
        {"ab", Do<&L::Associated_Flag>, Bold},
        {"ai", Do<&L::Associated_Flag>, Italic},
        {"b", Do<&L::Flag>, Bold},
        {"i", Do<&L::Flag>, Italic},
        {"strike", Do<&L::Flag>, Strike},
        {"striked", Do<&L::Flag>, Strike},
        {"v", Do<&L::Flag>, Hidden},
        {"deleted", Do<&L::Flag>, Deleted},
        {"caps", Do<&L::Flag>, All_Caps},
        {"scaps", Do<&L::Flag>, Small_Caps},
        {"ul", Do<&L::Set_Underline>, int(Underline::Single)},
        {"ulnone", Do<&L::Set_Underline>, int(Underline::None)},
        {"ulw", Do<&L::Set_Underline>, int(Underline::Words)},
        {"uldb", Do<&L::Set_Underline>, int(Underline::Double)},
        {"ulth", Do<&L::Set_Underline>, int(Underline::Thick)},
        {"uld", Do<&L::Set_Underline>, int(Underline::Dot)},
        {"ulthd", Do<&L::Set_Underline>, int(Underline::Thick_Dot)},
        {"uldash", Do<&L::Set_Underline>, int(Underline::Dash)},
        {"ulldash", Do<&L::Set_Underline>, int(Underline::Long_Dash)},
        {"ulthdash", Do<&L::Set_Underline>, int(Underline::Thick_Dash)},
        {"ulthldash", Do<&L::Set_Underline>, int(Underline::Thick_Long_Dash)},
        {"uldashd", Do<&L::Set_Underline>, int(Underline::Dash_Dot)},
        {"ulthdashd", Do<&L::Set_Underline>, int(Underline::Thick_Dash_Dot)},
        {"uldashdd", Do<&L::Set_Underline>, int(Underline::Dash_Dot_Dot)},
        {"ulthdashdd", Do<&L::Set_Underline>, int(Underline::Thick_Dash_Dot_Dot)},
        {"ulwave", Do<&L::Set_Underline>, int(Underline::Wave)},
        {"ulhwave", Do<&L::Set_Underline>, int(Underline::Heavy_Wave)},
        {"ululdbwave", Do<&L::Set_Underline>, int(Underline::Double_Wave)},
        {"ulc", Do<&L::Number<&C::underlineColor>>},
        {"super", Do<&L::Set_Script>, int(Script::Super)},
        {"up", Do<&L::Set_Script>, int(Script::Super)},
        {"sub", Do<&L::Set_Script>, int(Script::Sub)},
        {"dn", Do<&L::Set_Script>, int(Script::Sub)},
        {"nosupersub", Do<&L::Set_Script>, int(Script::Normal)},
        {"cf", Do<&L::Number<&C::color>>},
        {"cb", Do<&L::Number<&C::back>>},
        {"chcbpat", Do<&L::Number<&C::back>>},
        {"highlight", Do<&L::Number<&C::back>>},
        {"expndtw", Do<&L::Spacing>},
        {"charscalex", Do<&L::Stretch>},
        {"pard", Do<&P::Pard>},
        {"ql", Do<&P::Set_Align>, int(Align::Left)},
        {"qr", Do<&P::Set_Align>, int(Align::Right)},
        {"qc", Do<&P::Set_Align>, int(Align::Center)},
        {"qj", Do<&P::Set_Align>, int(Align::Justify)},
        {"qd", Do<&P::Set_Align>, int(Align::Justify)},
        {"li", Do<&P::Length<&Y::left>>},
        {"ri", Do<&P::Length<&Y::right>>},
        {"fi", Do<&P::Length<&Y::first>>},
        {"sb", Do<&P::Length<&Y::before>>},
        {"sa", Do<&P::Length<&Y::after>>},
        {"sl", Do<&P::Line_Height>},
        {"slmult", Do<&P::Line_Multiple>},
        {"cbpat", Do<&P::Back>},
        {"cfpat", Do<&P::Length<&Y::pattern>>},
        {"shading", Do<&P::Length<&Y::shading>>},
        {"keepn", Do<&P::Flag<&Y::keepWithNext>>},
        {"rtlpar", Do<&P::Set_Direction>, int(Direction::Leftwards)},
        {"ltrpar", Do<&P::Set_Direction>, int(Direction::Rightwards)},
        {"pagebb", Do<&P::Flag<&Y::pageBreakBefore>>},
        {"outlinelevel", Do<&P::Outline>},
        {"tqr", Do<&P::Tab_Next>, int(Tab_Kind::Right)},
        {"tqc", Do<&P::Tab_Next>, int(Tab_Kind::Center)},
        {"tqdec", Do<&P::Tab_Next>, int(Tab_Kind::Decimal)},
        {"tldot", Do<&P::Tab_Leader>, 1},
        {"tlmdot", Do<&P::Tab_Leader>, 2},
        {"tlhyph", Do<&P::Tab_Leader>, 3},
        {"tlul", Do<&P::Tab_Leader>, 4},
        {"tlth", Do<&P::Tab_Leader>, 5},
        {"tleq", Do<&P::Tab_Leader>, 6},
        {"tx", Do<&P::Tab_Stop_At>},
        {"ls", Do<&List_Reader::Number>},
        {"ilvl", Do<&List_Reader::Depth>},
        {"brdrt", Do<&Row_Reader::Border_Of>, Of_Sides(O::Paragraph, {Top})},
        {"brdrb", Do<&Row_Reader::Border_Of>, Of_Sides(O::Paragraph, {Bottom})},
        {"brdrl", Do<&Row_Reader::Border_Of>, Of_Sides(O::Paragraph, {Left_Side})},
        {"brdrr", Do<&Row_Reader::Border_Of>, Of_Sides(O::Paragraph, {Right_Side})},
        {"box", Do<&Row_Reader::Border_Of>, Of_Sides(O::Paragraph, {Top, Bottom, Left_Side, Right_Side})},
        {"brdrbtw", Do<&Row_Reader::Border_Of>, Of_Sides(O::Nothing, {})},
        {"brdrbar", Do<&Row_Reader::Border_Of>, Of_Sides(O::Nothing, {})},
        {"chbrdr", Do<&Row_Reader::Border_Of>, Of_Sides(O::Nothing, {})},
        {"brdrw", Do<&Row_Reader::Border_Width>},
        {"brsp", Do<&Row_Reader::Border_Space>},
        {"brdrcf", Do<&Row_Reader::Border_Color>},
        {"brdrnone", Do<&Row_Reader::Border_Line>, int(Line::None)},
        {"brdrnil", Do<&Row_Reader::Border_Line>, int(Line::None)},
        {"brdrtbl", Do<&Row_Reader::Border_Line>, int(Line::None)},
        {"brdrs", Do<&Row_Reader::Border_Line>, int(Line::Solid)},
        {"brdrth", Do<&Row_Reader::Border_Line>, int(Line::Solid)},
        {"brdrsh", Do<&Row_Reader::Border_Line>, int(Line::Solid)},
        {"brdrhair", Do<&Row_Reader::Border_Line>, int(Line::Solid)},
        {"brdrwavy", Do<&Row_Reader::Border_Line>, int(Line::Solid)},
        {"brdrdot", Do<&Row_Reader::Border_Line>, int(Line::Dotted)},
        {"brdrdash", Do<&Row_Reader::Border_Line>, int(Line::Dashed)},
        {"brdrdashsm", Do<&Row_Reader::Border_Line>, int(Line::Dashed)},
        {"brdrdashd", Do<&Row_Reader::Border_Line>, int(Line::Dot_Dash)},
        {"brdrdashdotstr", Do<&Row_Reader::Border_Line>, int(Line::Dot_Dash)},
        {"brdrdashdd", Do<&Row_Reader::Border_Line>, int(Line::Dot_Dot_Dash)},
        {"brdrdb", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrtriple", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrtnthsg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrthtnsg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrtnthtnsg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrtnthmg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrthtnmg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrtnthtnmg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrtnthlg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrthtnlg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrtnthtnlg", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrwavydb", Do<&Row_Reader::Border_Line>, int(Line::Double)},
        {"brdrengrave", Do<&Row_Reader::Border_Line>, int(Line::Groove)},
        {"brdremboss", Do<&Row_Reader::Border_Line>, int(Line::Ridge)},
        {"brdrinset", Do<&Row_Reader::Border_Line>, int(Line::Inset)},
        {"brdroutset", Do<&Row_Reader::Border_Line>, int(Line::Outset)},
    };

    static constexpr Word_Row structure[] = {
        // the document and its tables
        {"ansi", Do<&L::Document_Pages>, 1252},
        {"mac", Do<&L::Document_Pages>, 10000},
        {"pc", Do<&L::Document_Pages>, 437},
        {"pca", Do<&L::Document_Pages>, 850},
        {"ansicpg", Do<&L::Document_Pages>, 0},
        {"deff", Do<&L::Default_Font>},
        {"fonttbl", Do<&L::Begin_Fonts>},
        {"fcharset", Do<&L::Font_Charset>},
        {"cpg", Do<&L::Font_Code_Page>},
        {"falt", Do<&R::Skip>},
        {"panose", Do<&R::Skip>},
        {"fontemb", Do<&R::Skip>},
        {"colortbl", Do<&R::To_Destination>, int(D::Color_Table)},
        {"red", Do<&L::Color_Part>, 16},
        {"green", Do<&L::Color_Part>, 8},
        {"blue", Do<&L::Color_Part>, 0},
        {"stylesheet", Do<&R::To_Destination>, int(D::Style_Sheet)},
        {"s", Do<&R::Style_Number>, 0},
        {"cs", Do<&R::Style_Number>, 1},
        {"sbasedon", Do<&Style_Sheet::Based_On>},
        {"listtable", Do<&R::To_Destination>, int(D::Nothing)},
        {"list", Do<&List_Reader::Begin_List>},
        {"listlevel", Do<&List_Reader::Begin_Level>},
        {"levelnfc", Do<&List_Reader::Level_Kind>},
        {"levelnfcn", Do<&List_Reader::Level_Kind>},
        {"levelstartat", Do<&List_Reader::Level_Start>},
        {"leveltext", Do<&R::To_Destination>, int(D::Level_Text)},
        {"levelnumbers", Do<&R::Skip>},
        {"listname", Do<&R::Skip>},
        {"listid", Do<&List_Reader::List_Id>},
        {"listoverridetable", Do<&R::To_Destination>, int(D::Nothing)},
        {"listoverride", Do<&List_Reader::Begin_Override>},
        {"lfolevel", Do<&List_Reader::Begin_Override_Level>},
        // what is not part of the text
        {"info", Do<&R::To_Destination>, int(D::Info)},
        {"title", Do<&Page_Parts::Info_Field>, 0},
        {"subject", Do<&Page_Parts::Info_Field>, 1},
        {"author", Do<&Page_Parts::Info_Field>, 2},
        {"manager", Do<&Page_Parts::Info_Field>, 3},
        {"company", Do<&Page_Parts::Info_Field>, 4},
        {"operator", Do<&Page_Parts::Info_Field>, 5},
        {"category", Do<&Page_Parts::Info_Field>, 6},
        {"keywords", Do<&Page_Parts::Info_Field>, 7},
        {"doccomm", Do<&Page_Parts::Info_Field>, 8},
        {"paperw", Do<&Page_Parts::Page_Measure>, 0},
        {"paperh", Do<&Page_Parts::Page_Measure>, 1},
        {"margl", Do<&Page_Parts::Page_Measure>, 2},
        {"margr", Do<&Page_Parts::Page_Measure>, 3},
        {"margt", Do<&Page_Parts::Page_Measure>, 4},
        {"margb", Do<&Page_Parts::Page_Measure>, 5},
        {"gutter", Do<&Page_Parts::Page_Measure>, 6},
        {"landscape", Do<&Page_Parts::Page_Measure>, 7},
        {"deftab", Do<&Page_Parts::Page_Measure>, Default_Tab_Measure},
        {"header", Do<&Page_Parts::Begin_Page_Text>, 0},
        {"headerl", Do<&Page_Parts::Begin_Page_Text>, 1},
        {"headerr", Do<&Page_Parts::Begin_Page_Text>, 2},
        {"headerf", Do<&Page_Parts::Begin_Page_Text>, 3},
        {"footer", Do<&Page_Parts::Begin_Page_Text>, 4},
        {"footerl", Do<&Page_Parts::Begin_Page_Text>, 5},
        {"footerr", Do<&Page_Parts::Begin_Page_Text>, 6},
        {"footerf", Do<&Page_Parts::Begin_Page_Text>, 7},
        {"chpgn", Do<&Page_Parts::Page_Number>},
        {"atnid", Do<&Note_Reader::Note_Source>, 0},
        {"atnauthor", Do<&Note_Reader::Note_Source>, 1},
        {"atndate", Do<&Note_Reader::Note_Source>, 2},
        {"listtext", Do<&R::Skip_Label>},
        {"pntext", Do<&R::Skip>},
        {"objdata", Do<&R::Object_Data>},
        {"objclass", Do<&R::Skip>},
        {"objname", Do<&R::Skip>},
        {"bkmkstart", Do<&R::Begin_Bookmark>},
        {"bkmkend", Do<&R::Skip>},
        {"xe", Do<&R::Skip>},
        {"tc", Do<&R::Skip>},
        {"filetbl", Do<&R::Skip>},
        {"private", Do<&R::Skip>},
        {"template", Do<&R::Skip>},
        {"background", Do<&R::Skip>},
        {"nonesttables", Do<&R::Skip>},
        // characters
        {"par", Do<&R::Paragraph_Mark>},
        {"page", Do<&R::Page_Break>},
        {"sect", Do<&R::Section>},
        {"sbknone", Do<&R::Same_Page>},
        {"sbkcol", Do<&R::Same_Page>},
        {"line", Do<&R::Character>, 0x2028},
        {"tab", Do<&R::Character>, '\t'},
        {"emdash", Do<&R::Character>, 0x2014},
        {"endash", Do<&R::Character>, 0x2013},
        {"emspace", Do<&R::Character>, 0x2003},
        {"enspace", Do<&R::Character>, 0x2002},
        {"qmspace", Do<&R::Character>, 0x2005},
        {"bullet", Do<&R::Character>, 0x2022},
        {"lquote", Do<&R::Character>, 0x2018},
        {"rquote", Do<&R::Character>, 0x2019},
        {"ldblquote", Do<&R::Character>, 0x201C},
        {"rdblquote", Do<&R::Character>, 0x201D},
        {"zwj", Do<&R::Character>, 0x200D},
        {"zwnj", Do<&R::Character>, 0x200C},
        {"zwbo", Do<&R::Character>, 0x200B},
        {"zwnbo", Do<&R::Character>, 0x2060},
        {"ltrmark", Do<&R::Character>, 0x200E},
        {"rtlmark", Do<&R::Character>, 0x200F},
        {"u", Do<&R::Unicode>},
        {"uc", Do<&R::Unicode_Skip>},
        {"upr", Do<&R::Alternative>},
        {"ud", Do<&R::Alternative_Unicode>},
        // old lists
        {"pn", Do<&List_Reader::Begin_Old_List>},
        {"pnlvlblt", Do<&List_Reader::Old_List_Kind>, 23},
        {"pnlvlbody", Do<&List_Reader::Old_List_Kind>, 0},
        {"pnlvl", Do<&List_Reader::Old_List_Level>},
        {"pnf", Do<&L::Select_Font>},
        {"pnlvlcont", Do<&List_Reader::Old_List_Kind>, -1},
        {"pndec", Do<&List_Reader::Old_List_Kind>, 0},
        {"pnucrm", Do<&List_Reader::Old_List_Kind>, 1},
        {"pnlcrm", Do<&List_Reader::Old_List_Kind>, 2},
        {"pnucltr", Do<&List_Reader::Old_List_Kind>, 3},
        {"pnstart", Do<&List_Reader::Old_List_Start>},
        {"pnlcltr", Do<&List_Reader::Old_List_Kind>, 4},
        {"pntxtb", Do<&R::To_Destination>, int(D::Old_List_Before)},
        {"pntxta", Do<&R::To_Destination>, int(D::Old_List_After)},
        {"pnseclvl", Do<&R::Skip>},
        // fields, notes, objects and shapes
        {"field", Do<&Field_Reader::Begin_Field>},
        {"fldinst", Do<&R::To_Destination>, int(D::Field_Instruction)},
        {"fldrslt", Do<&Field_Reader::Field_Result>},
        {"footnote", Do<&Note_Reader::Begin_Note>, int(Note_Kind::Footnote)},
        {"ftnalt", Do<&Note_Reader::End_Notes>},
        {"annotation", Do<&Note_Reader::Begin_Note>, int(Note_Kind::Comment)},
        {"moMath", Do<&R::Ignore>},
        {"shpinst", Do<&R::Drawing>},
        {"shpgrp", Do<&R::To_Destination>, int(D::Nothing)},
        {"sn", Do<&R::Skip>},
        {"shprslt", Do<&R::Skip>},
        {"shptxt", Do<&R::Text_Box>},
        {"do", Do<&R::Drawing>},
        {"dptxbxtext", Do<&R::Text_Box>},
        // pictures
        {"pict", Do<&R::Begin_Picture>},
        {"shppict", Do<&R::Shape_Picture>, 0},
        {"nonshppict", Do<&R::Shape_Picture>, 1},
        {"picprop", Do<&R::Skip>},
        {"blipuid", Do<&R::Skip>},
        {"pngblip", Do<&R::Picture_Format>, int(Picture_Kind::Png)},
        {"jpegblip", Do<&R::Picture_Format>, int(Picture_Kind::Jpeg)},
        {"dibitmap", Do<&R::Picture_Format>, int(Picture_Kind::Device_Independent)},
        {"wbitmap", Do<&R::Picture_Format>, int(Picture_Kind::Device_Dependent)},
        {"wmetafile", Do<&R::Picture_Format>, int(Picture_Kind::Windows_Metafile)},
        {"emfblip", Do<&R::Picture_Format>, int(Picture_Kind::Enhanced_Metafile)},
        {"picw", Do<&R::Picture_Number<&S::width>>},
        {"pich", Do<&R::Picture_Number<&S::height>>},
        {"picwgoal", Do<&R::Picture_Number<&S::goalWidth>>},
        {"pichgoal", Do<&R::Picture_Number<&S::goalHeight>>},
        {"picscalex", Do<&R::Picture_Number<&S::scaleX>>},
        {"picscaley", Do<&R::Picture_Number<&S::scaleY>>},
        {"piccropl", Do<&R::Picture_Number<&S::cropLeft>>},
        {"piccropt", Do<&R::Picture_Number<&S::cropTop>>},
        {"piccropr", Do<&R::Picture_Number<&S::cropRight>>},
        {"piccropb", Do<&R::Picture_Number<&S::cropBottom>>},
        {"wbmbitspixel", Do<&R::Picture_Number<&S::bitsPerPixel>>},
        {"wbmwidthbytes", Do<&R::Picture_Number<&S::rowBytes>>},
        // tables
        {"intbl", Do<&P::In_Table>},
        {"itap", Do<&P::Nest>},
        {"trowd", Do<&Row_Reader::Begin_Row>},
        {"cellx", Do<&Row_Reader::Cell_Edge>},
        {"cell", Do<&R::Cell_Mark>, 0},
        {"nestcell", Do<&R::Cell_Mark>, 1},
        {"row", Do<&R::Row_Mark>, 0},
        {"nestrow", Do<&R::Row_Mark>, 1},
        {"nesttableprops", Do<&Row_Reader::Nested_Properties>},
        {"clmgf", Do<&Row_Reader::Cell_Flag<&Cell_Definition::mergeFirst>>},
        {"clmrg", Do<&Row_Reader::Cell_Flag<&Cell_Definition::merged>>},
        {"clvmgf", Do<&Row_Reader::Cell_Flag<&Cell_Definition::verticalFirst>>},
        {"clvmrg", Do<&Row_Reader::Cell_Flag<&Cell_Definition::verticalMerged>>},
        {"clvertalt", Do<&Row_Reader::Cell_Vertical>, 0},
        {"clvertalc", Do<&Row_Reader::Cell_Vertical>, 1},
        {"clvertalb", Do<&Row_Reader::Cell_Vertical>, 2},
        {"clcbpat", Do<&Row_Reader::Cell_Number<&Cell_Definition::back>>},
        {"clcfpat", Do<&Row_Reader::Cell_Number<&Cell_Definition::pattern>>},
        {"clshdng", Do<&Row_Reader::Cell_Number<&Cell_Definition::shading>>},
        {"clwWidth", Do<&Row_Reader::Cell_Number<&Cell_Definition::width>>},
        {"clftsWidth", Do<&Row_Reader::Cell_Width_Kind>},
        {"trleft", Do<&Row_Reader::Row_Number<&Row_Definition::left>>},
        {"trgaph", Do<&Row_Reader::Row_Number<&Row_Definition::gap>>},
        {"trpaddl", Do<&Row_Reader::Row_Number<&Row_Definition::padding>>},
        {"trspdl", Do<&Row_Reader::Row_Number<&Row_Definition::spacing>>},
        {"trwWidth", Do<&Row_Reader::Row_Number<&Row_Definition::width>>},
        {"trftsWidth", Do<&Row_Reader::Row_Width_Kind>},
        {"trql", Do<&Row_Reader::Row_Align>, int(Align::Left)},
        {"trqr", Do<&Row_Reader::Row_Align>, int(Align::Right)},
        {"trqc", Do<&Row_Reader::Row_Align>, int(Align::Center)},
        {"trhdr", Do<&Row_Reader::Row_Header>},
        {"clpadl", Do<&Row_Reader::Cell_Padding>, Top}, // word processors agree that these two have changed places
        {"clpadt", Do<&Row_Reader::Cell_Padding>, Left_Side},
        {"clpadb", Do<&Row_Reader::Cell_Padding>, Bottom},
        {"clpadr", Do<&Row_Reader::Cell_Padding>, Right_Side},
        {"clbrdrt", Do<&Row_Reader::Border_Of>, Of_Sides(O::Cell, {Top})},
        {"clbrdrb", Do<&Row_Reader::Border_Of>, Of_Sides(O::Cell, {Bottom})},
        {"clbrdrl", Do<&Row_Reader::Border_Of>, Of_Sides(O::Cell, {Left_Side})},
        {"clbrdrr", Do<&Row_Reader::Border_Of>, Of_Sides(O::Cell, {Right_Side})},
        {"trbrdrt", Do<&Row_Reader::Border_Of>, Of_Sides(O::Row, {Top})},
        {"trbrdrb", Do<&Row_Reader::Border_Of>, Of_Sides(O::Row, {Bottom})},
        {"trbrdrl", Do<&Row_Reader::Border_Of>, Of_Sides(O::Row, {Left_Side})},
        {"trbrdrr", Do<&Row_Reader::Border_Of>, Of_Sides(O::Row, {Right_Side})},
        {"trbrdrh", Do<&Row_Reader::Border_Of>, Of_Sides(O::Row, {Top, Bottom})},
        {"trbrdrv", Do<&Row_Reader::Border_Of>, Of_Sides(O::Row, {Left_Side, Right_Side})},
        {"cldglu", Do<&Row_Reader::Border_Of>, Of_Sides(O::Nothing, {})},
        {"cldgll", Do<&Row_Reader::Border_Of>, Of_Sides(O::Nothing, {})},
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
