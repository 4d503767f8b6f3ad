// SPDX-License-Identifier: GPL-3.0-or-later
//
// The main window's way to any place.

#include "core/language_pack.h"
#include "editor/editor_commands.h"
#include "editor/text_editor.h"
#include "tree/folder_ids.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/folders/tree_pane.h"
#include "ui/window/frm_anywhere.h"
#include "ui/window/frm_main.h"
#include "ui/window/left_tabs.h"
#include "views/tags.h"

#include <QAction>
#include <QMenu>
#include <QRegularExpression>

std::vector<Place> Frm_Main::Command_Places() const
{
    static const QRegularExpression menuOnly(QStringLiteral("\\(&\\w\\)|&|\\.\\.\\.$"));
    std::vector<Place> places;
    for (const QAction *action : findChildren<QAction *>()) {
        const QString text = QString(action->text()).remove(menuOnly);
        if (action->objectName().isEmpty() || text.isEmpty() || action->menu() != nullptr || action->isSeparator())
            continue;
        places.push_back({.kind = Place_Kind::Command,
                          .key = action->objectName(),
                          .text = text,
                          .detail = action->shortcut().toString(QKeySequence::NativeText),
                          .why_not = action->isEnabled() ? QString() : Pack_Text("Frm_Main", "_Not_Now")});
    }
    return places;
}

void Frm_Main::Go_Anywhere()
{
    Frm_Anywhere box(Command_Places(), this);
    if (box.exec() == QDialog::Accepted && box.Chosen())
        Go_To(*box.Chosen());
}

void Frm_Main::Go_To(const Place &place)
{
    switch (place.kind) {
    case Place_Kind::Command:
        if (auto *action = findChild<QAction *>(place.key))
            action->trigger();
        return;
    case Place_Kind::Document:
        return Open_Document(place.key);
    case Place_Kind::Folder:
        m_left->Show_Page("Left_Tree", true);
        m_tree->Select_Folder(GetKeyPart(place.key, Key_Part::After_Underscore));
        return m_tabs->Show_List();
    case Place_Kind::Tag:
        return List_Documents(Tag_Where(Tag_Of_Key(place.key)));
    case Place_Kind::Bookmark:
        Open_Document(place.key.section(QLatin1Char('/'), 0, 0));
        if (const Frm_Doc_Standard *document = m_tabs->Current_Document())
            document->Commands().Editors().first()->Go_To_Line(place.key.section(QLatin1Char('/'), 1).toInt());
        return;
    }
}
