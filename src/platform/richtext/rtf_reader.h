// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rich_text.h"
#include "platform/richtext/rtf_fields.h"
#include "platform/richtext/rtf_lists.h"
#include "platform/richtext/rtf_looks.h"
#include "platform/richtext/rtf_note_reader.h"
#include "platform/richtext/rtf_page_parts.h"
#include "platform/richtext/rtf_paragraph_words.h"
#include "platform/richtext/rtf_paragraphs.h"
#include "platform/richtext/rtf_pictures.h"
#include "platform/richtext/rtf_rows.h"
#include "platform/richtext/rtf_style_sheet.h"
#include "platform/richtext/rtf_tables.h"
#include "platform/richtext/rtf_tokens.h"

#include <string_view>
#include <vector>

namespace Rtf
{
struct Word_Row;

/// Interprets RTF into a Model. Groups are kept on an own stack, so depth costs no program stack; time is linear and
/// memory in proportion to the input. The reader itself follows groups, text and paragraphs; what words say of all else
/// is kept by its parts.
class Reader final : private Text_Flow
{
public:
    Reader(std::string_view bytes, Model &model);
    /// @param stop asked now and then whether the reading is called off  @throws Run_Time_Error when it was
    void Read(const Rich_Text::Stop &stop);

private:
    friend struct Words;

    void Finish();
    void Open_Group();
    void Close_Group();
    void Run_Closer(const State &inner);
    void Do_Word(const Token &token);
    void Do_Symbol(unsigned char symbol);
    void Do_Text(std::string_view bytes);
    void Do_Byte(unsigned char byte);
    void Run(const Word_Row &row);

    void Flush();
    void Decode_Pending(QString &text);
    void Emit(QStringView text) override;
    void Skip() override { m_tokens.Skip_Group(); }
    void Emit_Body(QStringView text);
    void Emit_Unit(char16_t unit);

    [[nodiscard]] int Nesting() const;
    Para_Style Paragraph_Style(int nesting);
    void End_Paragraph(int nesting);
    void End_Paragraph_Before_Break();
    void Cut_Paragraph();
    void Place_Paragraph(int index, int nesting);
    void End_Picture();

    // Actions of control words; a parameter is the constant of the word's row.
    void Ignore() {}
    void To_Destination(int destination) { m_state.destination = static_cast<Destination>(destination); }
    void Drawing();
    void Object_Data();
    void Skip_Label();
    void Character(int unit) { Emit_Unit(static_cast<char16_t>(unit)); }
    void Unicode();
    void Unicode_Skip();
    void Alternative();
    void Alternative_Unicode();
    void Style_Number(int isCharacter);
    void Begin_Bookmark();
    void Paragraph_Mark();
    void Page_Break();
    void Section();
    void Same_Page();
    void Cell_Mark(int isNested);
    void Row_Mark(int isNested);
    void Text_Box();
    void Begin_Picture();
    void Picture_Format(int kind);
    template <auto Field>
    void Picture_Number()
    {
        m_picture.*Field = m_reading.parameter.number;
    }
    void Shape_Picture(int isFallback);

    Tokenizer m_tokens;
    Reading m_reading;
    Model &m_model = m_reading.model;
    State &m_state = m_reading.state;

    Look_Reader m_looks{m_reading};
    Paragraph_Words m_paragraphWords{m_reading};
    Row_Reader m_rows{m_reading};
    List_Reader m_lists{m_reading};
    Style_Sheet m_styles{m_reading};
    Page_Parts m_page{m_reading, *this};
    Field_Reader m_fields{m_reading, *this, m_page};
    Note_Reader m_notes{m_reading, *this};
    Table_Stack m_tables;
    Paragraph_Maker m_paragraph; ///< that is read
    Code_Pages m_codePages;

    std::vector<State> m_stack;
    std::size_t m_depthBeyond = 0; ///< groups open beyond the deepest that is kept
    bool m_ignorable = false;      ///< \* has been met and its word is to come
    int m_toSkip = 0;              ///< characters left that stand for the last \u
    QByteArray m_pending;          ///< bytes not yet decoded: a character may be cut by \'hh
    QString m_decoded;
    Picture_Source m_picture;
    bool m_shapePictureTaken = false;
    bool m_pageBreak = false;
    bool m_sectionBreak = false; ///< it is a section's, which may yet say that there is none
};
} // namespace Rtf
