// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rich_text.h"
#include "platform/richtext/rtf_codepages.h"
#include "platform/richtext/rtf_model.h"
#include "platform/richtext/rtf_paragraphs.h"
#include "platform/richtext/rtf_pictures.h"
#include "platform/richtext/rtf_tables.h"
#include "platform/richtext/rtf_tokens.h"

#include <string_view>
#include <vector>

namespace Rtf
{
class Reader;

/// One row of the table of control words: what a word does, and the constant that tells it from its siblings.
struct Word_Row {
    std::string_view name;
    void (Reader::*action)(int value);
    int value = 0;
};
/// The row of a control word, or nullptr for one that means nothing here.
const Word_Row *Find_Word(std::string_view name);
/// Whether the word sets character or paragraph properties, as the definition of a style may.
bool Is_Formatting(const Word_Row &row);
/// Whether the word stands for a sign that may be seen.
bool Is_Sign(const Word_Row &row);

/// Interprets RTF into a Model. Groups are kept on an own stack, so depth costs no program stack; time is linear and
/// memory in proportion to the input.
class Reader
{
public:
    Reader(std::string_view bytes, Model &model);
    /// @param stop asked now and then whether the reading is called off  @throws Run_Time_Error when it was
    void Read(const Rich_Text::Stop &stop);

private:
    friend struct Words;

    /// Where text goes that is met in a group.
    enum class Destination : quint8 {
        Body,
        Nothing,     ///< text is dropped, but groups inside may lead elsewhere
        Alternative, ///< the ANSI half of \upr
        Font_Table,
        Color_Table,
        Style_Sheet,
        List_Override,
        Level_Text,
        Field_Instruction,
        Page_Text, ///< a header or footer
        Bookmark,
        Info,
        Info_Text,
        Note_Origin, ///< who wrote a comment, and when
        Picture,
        Old_List_Before,
        Old_List_After,
    };
    /// What is left to do when a group ends.
    enum class Closer : quint8 {
        None,
        Fonts,
        Field,
        Picture,
        Note,
        Style,
        Level,
        Override,
        Old_List,
        Text_Box,
        Nested_Row
    };

    /// Which of a run's three sets of properties its text takes: RTF 1.9.1, "Associated Character Properties".
    enum class Script_Kind : quint8 { Western, East_Asian, Right_To_Left };
    /// Properties of East Asian or right-to-left text where they differ from the run's own.
    struct Associated {
        int font = -1;
        int halfPoints = 0;
        quint16 flags = 0;
    };
    struct State {
        Char_Style chr;
        Associated eastAsian, rightToLeft;
        Script_Kind script = Script_Kind::Western;
        Para_Style para;
        Destination destination = Destination::Body;
        Destination outside = Destination::Body; ///< of the \upr or \field that is open
        Closer closer = Closer::None;
        int unicodeSkip = 1;
        int field = -1;
        int nestingAround = 0; ///< tables that the text box stands in
        int codePage = Document_Code_Page;
        bool plainAnsi = false;
        quint16 flagsAround = 0; ///< that make a note or a text box hidden with the text that it belongs to
        bool inTable = false;
    };
    struct Style_Word {
        const Word_Row *row;
        int parameter;
        bool hasParameter;
    };
    struct Style {
        std::vector<Style_Word> words;
        QString name; ///< as much of it as tells of a heading
        int number = 0;
        int base = -1; ///< number of the style that this one adds to
        bool isCharacter = false;
    };
    struct Symbol {
        int code = -1; ///< of Unicode or of a glyph, -1 for none
        bool isUnicode = false;
        QString font;
    };
    struct Field {
        QString instruction; ///< empty once the link is known
        int link = -1;
        Destination outside = Destination::Body;
    };

    void Finish();
    void Open_Group();
    void Close_Group();
    void Run_Closer(Closer closer, const State &inner);
    void Do_Word(const Token &token);
    void Do_Symbol(unsigned char symbol);
    void Do_Text(std::string_view bytes);
    void Do_Byte(unsigned char byte);
    void Skip();

    void Flush();
    void Decode_Pending(QString &text);
    int Effective_Code_Page() const;
    Associated *Current_Associated();
    Char_Style Effective_Style() const;
    bool Is_Hidden() const { return ((m_state.chr.flags | m_state.flagsAround) & Out_Of_Sight) != 0; }
    void Font_Changed();
    QString Font_Name() const;
    void Emit(QStringView text);
    void Emit_Body(QStringView text);
    void Emit_Unit(char16_t unit);
    void Emit_Bracket(QStringView bracket);
    void End_Note(const State &inner);
    void Emit_Font_Name(QStringView text);
    void End_Page_Line();
    void Emit_Colors(QStringView text);
    void Hide_With_Text();
    Para_Style Paragraph_Style(int nesting);
    void End_Paragraph(int nesting);
    void Cut_Paragraph();
    void Place_Paragraph(int index, int nesting);
    int Nesting() const;

    void End_Picture();
    void Name_Heading();
    void End_Style();
    List_Level *Open_Level();
    void End_Level(const State &inner);
    void End_Override();
    void End_Old_List();
    void Apply_Style(int number, bool isCharacter);
    int Link_Of(const QString &instruction);
    static Symbol Symbol_Of(const QString &instruction);
    void End_Field(const State &inner);
    int Length() const;

    // Actions of control words; `value` is the row's constant, the parameter is in m_parameter.
    void Ignore(int value);
    void To_Destination(int destination);
    void Skip_Group(int value);
    void Drawing(int value);
    void Object_Data(int value);
    void Skip_Label(int value);
    void Character(int unit);
    void Unicode(int value);
    void Unicode_Skip(int value);
    void Alternative(int value);
    void Alternative_Unicode(int value);
    void Document_Pages(int codePage);
    void Default_Font(int value);
    void Select_Font(int value);
    void Begin_Fonts(int value);
    void Select_Script(int script);
    void Associated_Font(int value);
    void Associated_Size(int value);
    void Associated_Flag(int flag);
    void Font_Charset(int value);
    void Font_Code_Page(int value);
    void Color_Part(int shift);
    void Plain(int value);
    void Flag(int flag);
    void Set_Underline(int kind);
    void Set_Script(int script);
    void Font_Size(int value);
    template <auto Field>
    void Char_Number(int value);
    template <auto Field>
    void Para_Length(int value);
    template <auto Field>
    void Para_Flag(int value);
    template <auto Field>
    void Picture_Number(int value);
    void Char_Spacing(int value);
    void Char_Stretch(int value);
    void Pard(int value);
    void Para_Back(int value);
    void Outline(int value);
    void In_Table(int value);
    void Set_Align(int align);
    void Set_Direction(int direction);
    void Line_Height(int multiple);
    void Tab_Next(int kind);
    void Tab_Leader(int leader);
    void Tab_Stop_At(int value);
    void Paragraph_Mark(int value);
    void Page_Break(int value);
    void Section(int value);
    void Nest(int value);
    void Style_Number(int isCharacter);
    void Based_On(int value);
    void Begin_List(int value);
    void Begin_Level(int value);
    void Level_Kind(int value);
    void Level_Start(int value);
    void List_Id(int value);
    void Begin_Override(int value);
    void Begin_Override_Level(int value);
    void List_Number(int value);
    void List_Depth(int value);
    void Begin_Old_List(int value);
    void Old_List_Kind(int kind);
    void Old_List_Start(int value);
    void Old_List_Level(int value);
    void Begin_Field(int value);
    void Field_Result(int value);
    void Same_Page(int value);
    void Begin_Note(int kind);
    void End_Notes(int value);
    void Note_Source(int field);
    void Begin_Page_Text(int kind);
    void Begin_Bookmark(int value);
    void Info_Field(int field);
    void Page_Measure(int index);
    void Page_Number(int value);
    void Begin_Picture(int value);
    void Picture_Format(int kind);
    void Shape_Picture(int isFallback);
    void Text_Box(int value);
    void Row_Begin(int value);
    void Cell_Edge(int value);
    void Cell_Mark(int nested);
    void Row_Mark(int nested);
    void Nested_Properties(int value);
    template <auto Field>
    void Cell_Flag(int value);
    void Cell_Padding(int side);
    void Cell_Vertical(int value);
    template <auto Field>
    void Cell_Number(int value);
    void Cell_Width_Kind(int value);
    template <auto Field>
    void Row_Number(int value);
    void Row_Width_Kind(int value);
    void Row_Header(int value);
    void Row_Align(int align);
    template <typename Change>
    void Change_Borders(Change &&change);
    void Border_Of(int target);
    void Border_Line(int line);
    void Border_Width(int value);
    void Border_Space(int value);
    void Border_Color(int value);

    Tokenizer m_tokens;
    Model &m_model;
    Table_Stack m_tables;
    Paragraph_Maker m_paragraph; ///< that is read
    Code_Pages m_codePages;
    State m_state;
    std::vector<State> m_stack;
    std::size_t m_depthBeyond = 0; ///< groups open beyond the deepest that is kept
    int m_parameter = 0;
    bool m_hasParameter = false;
    bool m_ignorable = false; ///< \* has been met and its word is to come
    int m_toSkip = 0;         ///< characters left that stand for the last \u
    QByteArray m_pending;     ///< bytes not yet decoded: a character may be cut by \'hh
    QString m_decoded;

    int m_documentCodePage = 1252;
    int m_defaultFont = -1;
    QHash<int, int> m_fontOfNumber;
    QRgb m_color = 0;
    QHash<qint64, Style> m_styles;
    Style m_style;
    QHash<int, int> m_listOfId;
    int m_overrideId = 0;
    int m_overrideNumber = 0;
    bool m_inOverride = false;
    std::vector<List_Level> m_overrideLevels;
    Old_List m_oldList;
    bool m_oldListContinues = false;
    std::vector<Field> m_fields;
    QHash<QString, int> m_links;
    int m_noteDepth = 0;
    std::array<QString, 3> m_noteOrigin; ///< of the comment that is to come, or is read
    std::size_t m_noteField = 0;
    int m_pageText = 0;        ///< the kind of header or footer that is read
    std::size_t m_info = 0;    ///< the field of the document's information likewise
    bool m_noteBegins = false; ///< blanks before its text are left out
    Picture_Source m_picture;
    bool m_shapePictureTaken = false;

    Row_Definition m_row;
    std::vector<Row_Definition> m_outerRows;
    Cell_Definition m_cell;
    Borders m_rowBorders{}; ///< what a cell has that says nothing of its own
    enum class Border_Owner : quint8 { Nothing, Paragraph, Cell, Row };
    Border_Owner m_borderOwner = Border_Owner::Nothing;
    int m_borderSides = 0;     ///< a bit for each Side that the next words are about
    int m_cellBordersSaid = 0; ///< likewise, those that the cell has told of
    Tab_Stop m_tab;            ///< what is said of the next one
    bool m_pageBreak = false;
    bool m_sectionBreak = false; ///< it is a section's, which may yet say that there is none
};
} // namespace Rtf
