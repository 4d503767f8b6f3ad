// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_codepages.h"
#include "platform/richtext/rtf_model.h"

#include <algorithm>

namespace Rtf
{
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

/// What a group inherits, and what its end takes back.
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

    [[nodiscard]] bool Is_Hidden() const { return ((chr.flags | flagsAround) & Out_Of_Sight) != 0; }
    /// What belongs to hidden text is hidden too, whatever its own words say.
    void Hide_With_Text() { flagsAround = static_cast<quint16>((flagsAround | chr.flags) & Out_Of_Sight); }
};

/// The number of the control word at hand.
struct Parameter {
    int number = 0;
    bool isGiven = false;

    /// Whether a word such as \b turns on: it does unless it says 0.
    [[nodiscard]] bool Is_On() const { return !isGiven || number != 0; }
    /// As a length, at most that of the widest page of word processors: 22 inches, in twips.
    [[nodiscard]] int Length() const { return std::clamp(number, -31'680, 31'680); }
};

/// What the parts of the reader share: the group that is read, the word's number, and the document so far.
struct Reading {
    Model &model;
    State state = {};
    Parameter parameter = {};
};

/// What a part asks of the reader around it.
class Text_Flow
{
public:
    /// Text that stands at this place of the file.
    virtual void Emit(QStringView text) = 0;
    /// The rest of the group is left out.
    virtual void Skip() = 0;

protected:
    ~Text_Flow() = default;
};

/// A part of the reader. It owns what it must remember from word to word; its public methods without a result are
/// mostly actions of control words, which take the constant of the word's row, if any.
class Reader_Part
{
public:
    explicit Reader_Part(Reading &reading)
        : m_model(reading.model), m_state(reading.state), m_parameter(reading.parameter)
    {
    }
    Reader_Part(const Reader_Part &) = delete;
    Reader_Part &operator=(const Reader_Part &) = delete;

protected:
    ~Reader_Part() = default;

    Model &m_model;
    State &m_state;
    const Parameter &m_parameter;
};
} // namespace Rtf
