// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/legible_colors.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

#include <cmath>

namespace
{
// The contrast ratio that large text needs (Web Content Accessibility Guidelines 2.1, success criterion 1.4.3).
constexpr double Least_Contrast = 3.0;

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor &color)
{
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

double Contrast(const QColor &one, const QColor &other)
{
    const double a = Luminance(one), b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor Solid(const QBrush &brush, const QColor &instead)
{
    return brush.style() == Qt::SolidPattern && brush.color().alpha() > 127 ? brush.color() : instead;
}
} // namespace

QColor Legible_Color(const QColor &text, const QColor &ground)
{
    if (Contrast(text, ground) >= Least_Contrast)
        return text;
    const QColor best = Contrast(Qt::white, ground) >= Contrast(Qt::black, ground) ? Qt::white : Qt::black;
    const bool lighter = best == QColor(Qt::white);
    constexpr int Steps = 10;
    for (int step = 1; step < Steps; ++step) {
        const auto share = static_cast<float>(step) / Steps;
        const float own = text.lightnessF();
        const float lightness = lighter ? own + (1 - own) * share : own * (1 - share);
        const QColor tried = QColor::fromHslF(std::max(0.0F, text.hslHueF()), text.hslSaturationF(), lightness);
        if (Contrast(tried, ground) >= Least_Contrast + 1)
            return tried;
    }
    return best;
}

Legible_Colors::Legible_Colors(QTextDocument &document, QObject *parent) : QObject(parent), m_document(document)
{
    document.documentLayout(); // without one a document tells of no changes
    connect(&document, &QTextDocument::contentsChange, this,
            [this](int from, int /*removed*/, int added) { Refresh_Range(from, added); });
}

void Legible_Colors::Set_Surroundings(const QColor &text, const QColor &ground)
{
    if (text == m_text && ground == m_ground)
        return;
    m_text = text;
    m_ground = ground;
    Refresh_Range(0, m_document.characterCount());
}

void Legible_Colors::Refresh(const QTextBlock &block) const
{
    QTextLayout &layout = *block.layout();
    QList<QTextLayout::FormatRange> ranges = Ranges(block);
    const int preeditAt = layout.preeditAreaPosition();
    const int preeditLength = static_cast<int>(layout.preeditAreaText().size());
    if (preeditLength > 0) {
        for (QTextLayout::FormatRange &range : ranges)
            range.start += range.start >= preeditAt ? preeditLength : 0;
        for (const QTextLayout::FormatRange &kept : layout.formats()) {
            if (kept.start >= preeditAt && kept.start < preeditAt + preeditLength)
                ranges << kept;
        }
    }
    if (ranges.isEmpty() && layout.formats().isEmpty())
        return;
    layout.setFormats(ranges);
    m_document.markContentsDirty(block.position(), block.length());
}

void Legible_Colors::Refresh_Range(int from, int length) const
{
    if (!m_text.isValid())
        return;
    const int end = from + length;
    for (QTextBlock block = m_document.findBlock(from); block.isValid() && block.position() <= end;
         block = block.next())
        Refresh(block);
}

QColor Legible_Colors::Ground_Of(const QTextBlock &block) const
{
    if (block.blockFormat().hasProperty(QTextFormat::BackgroundBrush))
        return Solid(block.blockFormat().background(), m_ground);
    const QTextCursor cursor(block);
    if (const QTextTable *table = cursor.currentTable(); table != nullptr) {
        const QColor whole = Solid(table->format().background(), m_ground);
        return Solid(table->cellAt(cursor).format().background(), whole);
    }
    return m_ground;
}

QList<QTextLayout::FormatRange> Legible_Colors::Ranges(const QTextBlock &block) const
{
    QList<QTextLayout::FormatRange> ranges;
    const QColor ground = Ground_Of(block);
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        if (ground == m_ground && !format.hasProperty(QTextFormat::ForegroundBrush) &&
            !format.hasProperty(QTextFormat::BackgroundBrush))
            continue;
        const QColor said = Solid(format.foreground(), m_text);
        const QColor shown = Legible_Color(said, Solid(format.background(), ground));
        if (shown == said)
            continue;
        QTextLayout::FormatRange range{it.fragment().position() - block.position(), it.fragment().length(), {}};
        range.format.setForeground(shown);
        ranges << range;
    }
    return ranges;
}
