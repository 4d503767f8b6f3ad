// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QRectF>
#include <QTextCursor>
#include <QTextTable>

class QMouseEvent;
class QPainter;
class Text_Editor;

/// What the mouse pulls to another size in a pane: the corner of the selected picture, and the lines between the
/// columns of a table. Each pull is one undo step.
class Size_Grips : public QObject
{
    Q_OBJECT

public:
    explicit Size_Grips(Text_Editor &editor);

    /// The picture at a place of the viewport, selected; a cursor without selection when there is none.
    [[nodiscard]] QTextCursor Picture_At(const QPoint &place) const;
    /// Whether a cursor selects one picture and nothing else.
    [[nodiscard]] static bool Is_Picture(const QTextCursor &cursor);
    /// Where the selected picture stands in the viewport; empty when none is selected.
    [[nodiscard]] QRectF Picture_Place() const;

    /// Each answers whether the event was taken, so that the pane does nothing else with it.
    bool Press(const QMouseEvent &event);
    bool Move(const QMouseEvent &event);
    bool Release(const QMouseEvent &event);
    /// Draws the frame of the selected picture, and what is pulled.
    void Paint(QPainter &painter) const;

private:
    enum class Pull { None, Picture, Column };
    /// An upright line of a table, by the column behind it; the outer one is behind all columns.
    struct Column_Line {
        QTextTable *table = nullptr;
        int column = 0;
        qreal x = 0; ///< in the viewport
    };

    [[nodiscard]] QRectF Place_Of(const QTextCursor &picture) const;
    [[nodiscard]] QRectF Grip() const;
    [[nodiscard]] Column_Line Line_At(const QPoint &place) const;
    [[nodiscard]] QList<Column_Line> Column_Lines(QTextTable &table) const;
    [[nodiscard]] QSizeF Pulled_Size() const;
    void Resize_Columns();

    Text_Editor &m_editor;
    Pull m_pull = Pull::None;
    Column_Line m_line;
    QPointF m_from;
    QPointF m_at;
    bool m_free = false; ///< Shift: without the picture's proportions
};
