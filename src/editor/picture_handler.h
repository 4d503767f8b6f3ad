// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QImage>
#include <QTextObjectInterface>

class QTextImageFormat;

/// Draws the pictures of a document that is edited on screen. A picture wider than the room is shown smaller, in its
/// own proportions; its format keeps the size that the document gives it.
class Picture_Handler : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    /// @param document  the document whose layout takes the handler
    Picture_Handler(QTextDocument &document, QObject *parent);

    /// Width in pixels that a picture may take; 0 for any.
    void Set_Room(int width) { m_room = width; }

    QSizeF intrinsicSize(QTextDocument *document, int position, const QTextFormat &format) override;
    void drawObject(QPainter *painter, const QRectF &place, QTextDocument *document, int position,
                    const QTextFormat &format) override;

private:
    QImage Image_Of(QTextDocument &document, const QString &name);

    int m_room = 0;
    QCache<QString, QImage> m_images;
};

/// The size that a document gives a picture, in pixels: what its format says, the other side in proportion.
QSizeF Picture_Size(const QTextImageFormat &format, QSize own);
