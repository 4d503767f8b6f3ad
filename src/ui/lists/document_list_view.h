// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeView>
#include <functional>

class List_Model;
class Row_Delegate;

/// The document list on screen: what a list of documents does with keys, drags and an empty page.
class Document_List_View : public QTreeView
{
    Q_OBJECT

public:
    explicit Document_List_View(QWidget *parent = nullptr);

    /// What stands in the middle while there are no rows.
    void Set_Empty_Text(const QString &text);
    [[nodiscard]] QString Empty_Text() const { return m_emptyText; }
    /// Lines between rows and columns.
    void Set_Grid(bool on);
    /// Rows of two lines, with the summary below the title.
    void Set_Comfortable(bool on);
    /// The columns that look different from others are found anew.
    void Read_Columns(const List_Model &list);
    /// The tool tip of a row, asked for when it is wanted; "" leaves the row its own.
    std::function<QString(const QModelIndex &)> Tip_Of;
    /// The lines of places begin with the key that was found, behind some blanks: so many characters are marked.
    void Set_Key_Length(qsizetype length);
    /// Typing finds rows by the text of this column.
    void Set_Search_Column(int column) { m_searchColumn = column; }
    /// Ids of the selected documents, in the order on screen.
    [[nodiscard]] QStringList Selected_Ids() const;

    void keyboardSearch(const QString &search) override;

protected:
    void startDrag(Qt::DropActions actions) override;
    /// The line of a place goes over the whole width.
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    Row_Delegate *m_rows;
    QString m_emptyText;
    QString m_typed; ///< the letters of a search that goes on
    qint64 m_lastTyped = 0;
    int m_searchColumn = 0;
};
