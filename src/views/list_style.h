// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"

#include <QColor>
#include <QString>
#include <optional>

/// How a document's row and title look, as Code_LineColor keeps it: "sub-items' colour|item's colour|bold", the colours
/// as numbers 0xBBGGRR, and "|True" behind that for a title in italics. Text with fewer than three parts means the
/// default style.
struct Line_Style {
    QColor sub_color;
    QColor item_color;
    bool bold = false;
    bool italic = false; ///< of the title only
};

/// No value for the default style.
std::optional<Line_Style> Style_From_Text(const QString &stored);
QString Style_To_Text(const Line_Style &style);
/// Gives a row the style that its document has stored.
void Apply_Line_Color(List_Row &row, const QString &stored);

/// A colour as the file and the settings keep it; invalid where the text is no number of that kind.
QColor Stored_Color(const QString &number);
QString Color_Number(const QColor &color);
/// A background that the user chose; invalid for white, which stands for the skin's own.
QColor Chosen_Background(const QString &number);
