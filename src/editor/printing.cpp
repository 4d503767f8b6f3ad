// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/printing.h"

#include "editor/legible_colors.h"
#include "editor/line_distance.h"
#include "editor/picture_handler.h"
#include "platform/files/paths.h"
#include "platform/html/closed_door.h"
#include "platform/richtext/decorations.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

#include <memory>

namespace
{
constexpr double Margin = 20; // millimetres
constexpr double Footer_Points = 24;
constexpr int Pdf_Resolution = 1200; // that of the preview, so that both break the pages at the same places

/// The document laid out for a device: a copy, so that what is on screen doesn't move.
class Sheets
{
public:
    Sheets(const QTextDocument &document, QPagedPaintDevice &device)
        : m_copy(document.clone(&m_door)), m_page(device.width(), device.height()),
          m_footer(Footer_Points / 72 * device.logicalDpiY())
    {
        Line_Distance::Take(*m_copy);
        m_copy->documentLayout()->setPaintDevice(&device);
        auto *pictures = new Picture_Handler(*m_copy, m_copy.get());
        pictures->Set_Room(device.width());
        // What the screen's skin made white or black must not vanish on paper either.
        auto *colors = new Legible_Colors(*m_copy, m_copy.get());
        colors->Set_Surroundings(Qt::black, Qt::white);
        m_copy->setDocumentMargin(0);
        m_copy->setPageSize(QSizeF(m_page.width(), m_page.height() - m_footer));
    }

    [[nodiscard]] int Count() const { return m_copy->pageCount(); }

    void Paint(QPainter &painter, int number) const
    {
        const double height = m_copy->pageSize().height();
        painter.save();
        painter.translate(0, -(number - 1) * height);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = QRectF(0, (number - 1) * height, m_page.width(), height);
        context.palette.setColor(QPalette::Text, Qt::black);
        painter.setClipRect(context.clip);
        m_copy->documentLayout()->draw(&painter, context);
        Rich_Text::Paint_Decorations(painter, *m_copy, context.clip, Qt::black);
        painter.restore();
        painter.setPen(Qt::black);
        painter.setFont(QFont(m_copy->defaultFont().family(), 9));
        painter.drawText(QRectF(0, height, m_page.width(), m_footer), Qt::AlignHCenter | Qt::AlignBottom,
                         QStringLiteral("%1 / %2").arg(number).arg(Count()));
    }

    /// Where a page begins in the text.
    [[nodiscard]] int Start_Of(int number) const
    {
        const double top = (number - 1) * m_copy->pageSize().height();
        return m_copy->documentLayout()->hitTest(QPointF(0, top + 1), Qt::FuzzyHit);
    }

private:
    Html::Closed_Door m_door; ///< outlives the copy
    std::unique_ptr<QTextDocument> m_copy;
    QSizeF m_page;
    double m_footer;
};
} // namespace

void Printing::Set_Up_Page(QPagedPaintDevice &device)
{
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(Margin, Margin, Margin, Margin), QPageLayout::Millimeter));
}

int Printing::Print(const QTextDocument &document, QPagedPaintDevice &device, const Pages &pages)
{
    QPainter painter;
    if (!painter.begin(&device))
        return 0;
    const Sheets sheets(document, device);
    const int count = sheets.Count();
    const int last = pages.to > 0 ? std::min(pages.to, count) : count;
    for (int number = std::max(1, pages.from); number <= last; ++number) {
        if (number > std::max(1, pages.from))
            device.newPage();
        sheets.Paint(painter, number);
    }
    return count;
}

QList<int> Printing::Page_Starts(const QTextDocument &document)
{
    QBuffer nowhere;
    nowhere.open(QIODevice::WriteOnly);
    QPdfWriter device(&nowhere);
    device.setResolution(Pdf_Resolution);
    Set_Up_Page(device);
    const Sheets sheets(document, device);
    QList<int> starts;
    for (int number = 2; number <= sheets.Count(); ++number)
        starts << sheets.Start_Of(number);
    return starts;
}

void Printing::Write_Pdf(const QTextDocument &document, const QString &path, const QString &title)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(Pdf_Resolution);
    writer.setTitle(title);
    Set_Up_Page(writer);
    Print(document, writer);
    Files::Write_Bytes(path, bytes, Files::Durability::Given);
}
