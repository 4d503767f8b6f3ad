// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/shell.h"

/// A main window that does nothing, for panes on their own; a test overrides what it wants to hear.
struct No_Shell : Shell {
    void Set_Status(const QString & /*text*/) override {}
    [[nodiscard]] QString Selected_Folder() const override { return {}; }
    void Folder_Changed(const QString & /*id*/) override {}
    void Document_Changed(const QString & /*code_id*/) override {}
    void Open_Document(const QString & /*code_id*/) override {}
    void Open_Document_At(const QString & /*code_id*/, const QString & /*key*/, qint64 /*place*/) override {}
    [[nodiscard]] bool Is_Open(const QString & /*code_id*/) const override { return false; }
    [[nodiscard]] QString Document_On_Screen() const override { return {}; }
    void Delete_Documents(const QStringList & /*ids*/, Asked_In /*place*/) override {}
    void New_Document() override {}
    [[nodiscard]] QString Neighbour(const QString & /*code_id*/, int /*step*/) const override { return {}; }
    void Select_In_List(const QString & /*code_id*/) override {}
    void Panes_Changed() override {}
    int Import_Files(const QStringList & /*paths*/, const QString & /*folderId*/) override { return 0; }
    void List_Documents(const QString & /*where*/) override {}
    void Focus_List() override {}
    void Reload_All() override {}
    void Documents_Moved(const QStringList & /*codeIds*/, const QString & /*folderId*/) override {}
    void Folder_Renumbered(const QString & /*oldId*/, const QString & /*newId*/) override {}
    void Colors_Chosen(const QStringList & /*codeIds*/) override {}
    void Move_Documents(const QStringList & /*codeIds*/) override {}
    void Lock() override {}
};
