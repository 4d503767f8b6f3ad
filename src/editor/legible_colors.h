// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QObject>
#include <QTextLayout>

class QTextBlock;
class QTextDocument;

/// The colour to show for text of one colour on a ground: the colour itself where it can be read, else a lighter or
/// darker one of the same hue, at the worst white or black.
QColor Legible_Color(const QColor &text, const QColor &ground);

/// Keeps a document readable on a ground of any colour: text whose colour hardly differs from what is behind it is
/// shown in another one. Only the layout is told; the document, its undo history and its mark stay as they are.
class Legible_Colors : public QObject
{
    Q_OBJECT

public:
    explicit Legible_Colors(QTextDocument &document, QObject *parent);

    /// The colours of text and ground that stand where the document says nothing.
    void Set_Surroundings(const QColor &text, const QColor &ground);
    /// Shows one block anew, after something else changed its layout's formats.
    void Refresh(const QTextBlock &block) const;

private:
    void Refresh_Range(int from, int length) const;
    [[nodiscard]] QColor Ground_Of(const QTextBlock &block) const;
    [[nodiscard]] QList<QTextLayout::FormatRange> Ranges(const QTextBlock &block) const;

    QTextDocument &m_document;
    QColor m_text;
    QColor m_ground;
};
