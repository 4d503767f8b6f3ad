// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_model.h"

#include <QStringList>

namespace Rtf
{
/// Puts text and pictures together to paragraphs of the model: runs of one look, places of bookmarks, and styles that
/// the model has once each. A paragraph that becomes too long is cut; the next one then is its rest.
class Paragraph_Maker
{
public:
    explicit Paragraph_Maker(Model &model) : m_model(model) {}

    /// Adds text that has this style. @returns what is left, before which the paragraph must be cut
    [[nodiscard]] QStringView Add_Text(QStringView text, const Char_Style &style);
    /// Whether it must be cut before another picture.
    [[nodiscard]] bool Is_Full();
    void Add_Picture(Picture &&picture, const Char_Style &style);
    [[nodiscard]] bool Has_Content() const;

    /// A bookmark's place is the next text.
    void Begin_Bookmark() { m_anchors.append(QString()); }
    void Name_Bookmark(QStringView text) { m_anchors.last() += text; }

    /// Ends the paragraph, or this part of it. @param mark style of its end  @returns its index in the model
    int End(Para_Style style, const Char_Style &mark);
    int Cut(Para_Style style, const Char_Style &mark);

    /// Puts the paragraph aside for those of a text box in it, and takes it up again.
    void Begin_Inner();
    void End_Inner();

private:
    struct Content {
        std::vector<Run> runs;
        qsizetype length = 0; ///< in characters of a block; hidden text and a picture have one
        int restIn = -1;      ///< how many tables the paragraph stands in that it is the rest of; -1 for none
    };

    qsizetype Room_Left(QStringView text) const;
    void Append(QStringView text);
    void Append(char16_t unit);
    Char_Style Anchored(Char_Style style);
    void Open_Run(Char_Style style);
    void Close_Run();
    int Add_Paragraph(Para_Style &&style, const Char_Style &mark);
    int Interned(const Char_Style &style);
    int Interned(Para_Style style);

    Model &m_model;
    Content m_content;
    std::vector<Content> m_outer; ///< of the paragraphs that open text boxes belong to
    qsizetype m_runBegin = 0;
    bool m_runOpen = false;
    Char_Style m_runStyle;
    char16_t m_highSurrogate = 0;
    QStringList m_anchors; ///< bookmarks whose place is the next text
    QHash<Char_Style, int> m_charStyles;
    QHash<size_t, QList<int>> m_paraStyles;
    int m_paraStyle = -1;     ///< the last one that was asked for
    qsizetype m_tabCount = 0; ///< of all paragraph styles
};
} // namespace Rtf
