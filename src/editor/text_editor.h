// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/view_scale.h"

#include <QTextEdit>
#include <QTimer>

class Legible_Colors;
class Picture_Handler;
class Size_Grips;

/// How a pane shows its text.
enum class Page_Look {
    Normal,  ///< a column in the middle of a wide pane, in the skin's colours
    Writing, ///< a column in the middle of the pane, in the skin's colours
    Paper,   ///< as it is printed: black on white, as wide as the page's text
};

/// A pane of rich text: the body of a document, its memo or its summary.
class Text_Editor : public QTextEdit
{
    Q_OBJECT

public:
    explicit Text_Editor(QWidget *parent = nullptr);
    ~Text_Editor() override;

    /// The looks of a pane that holds nothing yet: what is typed first has them. Nothing can be undone before.
    /// @param lineSpacing  in percent of a line
    void Start_In(const QString &family, qreal pointSize, int lineSpacing);
    /// Gives the lines of a text that was just put into the pane their distance on screen.
    void Wear_Distance();
    /// The size of plain text where the document has none to show it.
    [[nodiscard]] qreal Start_Size() const;
    /// Pastes the clipboard's text without its formats.
    void Paste_Plain();
    void Set_Page_Look(Page_Look look);
    /// How large the text is shown, in percent. The document stays as it is.
    void Set_Zoom(int percent);
    [[nodiscard]] int Zoom() const { return m_scale.Percent(); }
    /// Gives the text margins and a line that reads well however wide the pane is; else it fills the pane.
    void Use_Column(bool on);
    /// The colour behind the text where no paper is shown; an invalid one stands for the skin's.
    void Set_Ground(const QColor &ground);
    /// Whether one picture is selected and nothing else.
    [[nodiscard]] bool Has_Picture() const;
    /// The paragraph of the cursor, counted from 1; what "line" means to the commands.
    [[nodiscard]] int Line_Number() const;
    [[nodiscard]] int Line_Count() const;
    /// Puts the cursor at the start of a line, in view, and marks the line for a moment.
    /// @returns false, and nothing is changed, when there is no such line
    bool Go_To_Line(int line);

    /// Text and pictures of a clipboard or of a drag, put in place of the selection.
    void Insert_Data(const QMimeData &source);
    /// Nothing: a document shows the pictures that it holds.
    QVariant loadResource(int type, const QUrl &name) override;

signals:
    /// The user asks for the target of a link.
    void Link_Chosen(const QString &target);
    /// The context menu is wanted at a place of the screen.
    void Menu_Wanted(const QPoint &place);
    /// The wheel turned with Ctrl held: the text is wanted larger (1) or smaller (-1).
    void Zoom_Wanted(int step);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    [[nodiscard]] bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    [[nodiscard]] QMimeData *createMimeDataFromSelection() const override;

private:
    [[nodiscard]] QAction *Action_For(const QKeyEvent &event) const;
    void Mark_Line_Briefly();
    bool Handle_Tab(bool back);
    bool Pass_To_Text(QEvent &event);
    bool Leave_List();
    bool Handle_Return();
    void Insert_Document(QTextDocument &foreign, bool keepsLooks);
    void Fit();
    void Count_Pages();
    void Paint_Decorations(QPainter &painter, const QRect &area) const;
    void Paint_Page_Breaks(QPainter &painter) const;
    void Use_Look();
    void Follow_Focus(const QWidget *now);
    void Use_Surroundings();

    Legible_Colors *m_colors;
    Picture_Handler *m_pictures;
    Size_Grips *m_grips;
    QTimer m_pagesLater;
    QList<int> m_pageStarts; ///< where the pages but the first begin on paper
    Page_Look m_look = Page_Look::Normal;
    View_Scale m_scale;
    QColor m_ground;
    bool m_selectionShown = true; ///< while the keyboard is elsewhere
    qreal m_startSize = 0;        ///< in points
    bool m_isColumn = false;
    bool m_fitting = false;
};
