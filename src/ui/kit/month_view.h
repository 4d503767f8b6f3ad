// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "views/day_marks.h"

#include <QDate>
#include <QTableView>

class Month_Model;

/// A month of the calendar, one cell a day, in the words of the widget's locale. With the Chinese calendar on, lunar
/// days, solar terms and festivals stand below the numbers. All colours are those of the palette; a mark is told by its
/// shape.
///
/// Arrows go a day or a week, Page Up and Page Down a month, with Shift a year, Home and End to the month's ends, Ctrl
/// + Home to today.
class Month_View : public QTableView
{
    Q_OBJECT

public:
    explicit Month_View(QWidget *parent = nullptr);

    [[nodiscard]] QDate Day() const;
    void Set_Day(const QDate &day);
    void Set_Lunar(bool on);
    /// The marks of the days of the month on screen, and the words for the four marks, which are read out.
    void Set_Marks(const QHash<int, Day_Marks> &marks, const QStringList &words);
    [[nodiscard]] Day_Marks Marks_Of_Day() const;

    /// The sign of a mark, for a legend.
    [[nodiscard]] static QIcon Mark_Icon(int mark, const QWidget &where);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// Another day is chosen; its month is on screen.
    void Day_Chosen(const QDate &day);
    /// A day was clicked, or chosen with Enter.
    void Day_Taken(const QDate &day);
    /// A mark of a day was clicked.
    void Mark_Taken(const QDate &day, Day_Mark mark);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QDate Day_By_Key(const QKeyEvent &event) const;

    Month_Model *m_month;
    bool m_setting = false;
};
