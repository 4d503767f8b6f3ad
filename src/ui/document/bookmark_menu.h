// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/bookmarks.h"

#include <QList>
#include <QObject>

class Document_Tabs;
class Frm_Doc_Standard;
class QAction;
class QMenu;

/// The bookmarks' part of the edit menu: two commands, and one entry for each bookmark of the document on screen. The
/// first ones stand in the menu itself, the others in a menu below it that scrolls.
class Bookmark_Menu : public QObject
{
    Q_OBJECT

public:
    Bookmark_Menu(QMenu &menu, Document_Tabs &tabs, QWidget &window);

    /// Puts its entries behind those of the menu, which was cleared.
    void Add_To_Menu();

    void mnuTag_Add_Call();
    void mnuTag_Admin_Call();
    void MnuTagGoto_Call(int index);
    /// Makes the entries of a document's bookmarks anew; the separator above them stays.
    void Update_mnuTagGoto(const QString &code_id);

private:
    /// The document on screen if it can have bookmarks; says why it cannot.
    [[nodiscard]] Frm_Doc_Standard *Stored_Document() const;
    void Open_Dialog(const Frm_Doc_Standard &document, const Bookmark &preset);
    [[nodiscard]] QString Current_Id() const;

    QMenu &m_menu;
    Document_Tabs &m_tabs;
    QWidget &m_window;
    QAction *mnuTag_Add;
    QAction *mnuTag_Admin;
    QMenu *m_more;
    QList<QAction *> mnuTagGoto;
    Bookmark_List m_bookmarks;
};
