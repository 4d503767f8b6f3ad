// SPDX-License-Identifier: GPL-3.0-or-later
//
// How open documents follow what happens to their folders: a save writes the folder's id of now.

#include "core/error_log.h"
#include "documents/document_store.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui_frm_doc_standard.h"

void Frm_Doc_Standard::Follow_Folders(const QString &oldId, const QString &newId)
{
    QString chosen = m_ui->Comb_Cate->Chosen();
    if (!oldId.isEmpty()) {
        m_session->Follow_Folder(oldId, newId);
        if (chosen.startsWith(oldId))
            chosen = newId + chosen.mid(oldId.size());
    }
    m_ui->Comb_Cate->Fill();
    m_ui->Comb_Cate->Choose(chosen);
}

void Frm_Doc_Standard::Choose_Folder(const QString &id)
{
    m_ui->Comb_Cate->Choose(id);
    m_session->Set_Folder(m_ui->Comb_Cate->Chosen());
}

namespace
{
/// A database that cannot be asked has lost nothing.
bool Is_Gone(const QString &code_id)
{
    return !code_id.isEmpty() &&
           Trap(QStringLiteral("Document_Tabs\\Follow_Folders"), [&] { return !Is_Stored(code_id); });
}
} // namespace

void Document_Tabs::Follow_Folders(const QString &oldId, const QString &newId)
{
    for (int i = count() - 1; i > 0; --i) {
        Frm_Doc_Standard *document = Document_At(i);
        if (Is_Gone(document->Code_Id()) && !document->Is_Changed())
            Remove(document);
        else
            document->Follow_Folders(oldId, newId);
    }
}

void Document_Tabs::Follow_Documents(const QStringList &ids, const QString &folderId)
{
    for (const QString &id : ids) {
        if (const int tab = Find(id); tab > 0)
            Document_At(tab)->Choose_Folder(folderId);
    }
}
