// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

/// Headers and footers: a text document has no place for them, so their text is kept beside the body, paragraphs
/// parted by line feeds, and is written back. Page numbers are kept as the marks below.
namespace Rtf
{
/// The kinds, in the order in which their texts are kept: of all or the right-hand pages, the left-hand ones, the
/// right-hand ones, the first.
inline constexpr const char *Page_Text_Words[] = {"header", "headerl", "headerr", "headerf",
                                                  "footer", "footerl", "footerr", "footerf"};

/// Fields of the information on a document, and words on its page, in the order of Model::info and pageMeasures.
inline constexpr const char *Info_Words[] = {"title",    "subject",  "author",   "manager", "company",
                                             "operator", "category", "keywords", "doccomm"};
inline constexpr const char *Page_Measure_Words[] = {"paperw", "paperh", "margl",     "margr", "margt",
                                                     "margb",  "gutter", "landscape", "deftab"};
inline constexpr std::size_t Landscape_Measure = 7, Default_Tab_Measure = 8;

struct Model;
/// What a document's head says of it and its page, to be written back as it is.
QByteArray Head_Of(const Model &model);

inline constexpr char16_t Page_Number_Mark = u'\x1';
inline constexpr char16_t Page_Count_Mark = u'\x2';

/// Around text that is hidden.
inline constexpr char16_t Hidden_Begin_Mark = u'\x3';
inline constexpr char16_t Hidden_End_Mark = u'\x4';
/// Text as it stands in a header or footer, where these marks are no signs of its own.
QString Page_Text(QStringView text, bool isHidden);

/// The mark for a field's instruction; 0 where it asks for neither.
char16_t Page_Mark_Of(const QString &instruction);
/// The groups of all texts that are not empty, with what makes the pages different.
QByteArray Write_Page_Texts(const QStringList &texts);
} // namespace Rtf
